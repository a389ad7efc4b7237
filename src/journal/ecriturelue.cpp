#include "journal/ecriturelue.h"

#include <algorithm>
#include <cassert>

#include "core/mouvements.h"
#include "core/valeurs.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// What simple and standard records have alike.
template <class Ecriture>
void LitCommun(CFenlorApp& app, const Ecriture& rec, EcritureLue& ecriture) {
  ecriture.stockes = {{rec.MontantFranc, rec.MontantEuro},
                      {rec.RepartitionFranc, rec.RepartitionEuro},
                      {rec.TaxeFranc, rec.TaxeEuro},
                      LitTexte(rec.CompteTaxe),
                      rec.TauxTaxe};
  SaisieEcriture& saisie = ecriture.saisie;
  saisie.compte = LitTexte(rec.Compte);
  if (saisie.compte.empty()) saisie.compte = LitTexte(rec.ComptePerso);
  MontantsSaisie& m = saisie.montants;
  m.ttc = MontantDeChamp(saisie.euro ? rec.MontantEuro : rec.MontantFranc);
  m.professionnel = MontantDeChamp(saisie.euro ? rec.RepartitionEuro : rec.RepartitionFranc);
  m.personnel = MontantDeChamp(m.ttc - m.professionnel);
  m.taux = app.Reglages.IsTVA() && rec.TauxTaxe > 0 ? f64{rec.TauxTaxe} : 0;
  m.ht = MontantDeChamp(MontantHT(m.professionnel, m.taux, true));
  m.tva = m.taux > 0 ? MontantDeChamp(m.professionnel - m.ht) : 0;
}

/// The lines of a standard entry, and the two marks that follow from them.
void LitLignes(CFenlorApp& app, const EcrStandard& rec, EcritureLue& ecriture) {
  assert(ecriture.lignes.empty());
  bool rapprochee = true, remise = true, banque = false;
  LineTresor lue{};
  for (u32 i = 0; app.Magasin.GetEcrLineTresor(i, rec, lue); ++i) {
    LigneTresorLue ligne;
    ligne.compte = LitTexte(lue.Compte);
    ligne.montant = MontantDeChamp(ecriture.saisie.euro ? lue.MontantEuro : lue.MontantFranc);
    ligne.paiement = lue.ModePaiement;
    ligne.stocke = {lue.MontantFranc, lue.MontantEuro};
    ligne.marques = {lue.Pointee != 0, lue.Rapprochee != 0, lue.Remise != 0, lue.Validee != 0};
    ecriture.lignes.push_back(ligne);
    Plan plan;
    if (!LitCompte(app, ligne.compte, plan) || plan.TypeTresorerie == 0) continue;
    banque = true;
    rapprochee = rapprochee && ligne.marques.rapprochee;
    remise = remise && ligne.marques.remise;
  }
  ecriture.marques.rapprochee = banque && rapprochee;
  ecriture.marques.remise = banque && remise;
}

}  // namespace

Refus LitEcriture(CFenlorApp& app, u32 mouvement, EcritureLue& ecriture, bool enEuro) {
  QVAPI& magasin = app.Magasin;
  LivresOuverts livres;
  if (const Refus r = livres.Ouvre(app)) return r;
  Mouvement entete;
  if (const Refus r = LitEntete(app, mouvement, entete)) return r;
  if (entete.Genre == GenreOD)
    return Refus(ErrChampInvalide, "mouvement", {"mouvement", "cette écriture est une opération diverse"_w});
  ecriture = {};
  SaisieEcriture& saisie = ecriture.saisie;
  LitSaisie(entete, enEuro, saisie);
  saisie.genre = entete.Genre;
  ecriture.liee = entete.LienId != 0;
  ecriture.marques.pointee = entete.Pointee != 0;
  ecriture.marques.validee = saisie.validee;
  if (entete.Genre == GenreSimple) {
    EcrSimple rec{};
    if (!magasin.ReadEcrSimple(app.PathExercice, mouvement, rec)) return app.EchecMagasin();
    LitCommun(app, rec, ecriture);
    saisie.tresorerie = LitTexte(rec.CompteTresorerie);
    saisie.paiement = rec.ModePaiement;
    ecriture.marques.rapprochee = rec.Rapprochee != 0;
    ecriture.marques.remise = rec.Remise != 0;
    return {};
  }
  CEcrStandard standard(app);
  if (!magasin.ReadEcrStandard(app.PathExercice, mouvement, standard.Rec)) return app.EchecMagasin();
  LitCommun(app, standard.Rec, ecriture);
  LitLignes(app, standard.Rec, ecriture);
  return {};
}

}  // namespace fenlor

#include "journal/odlue.h"

#include "journal/controles.h"
#include "journal/textes.h"
#include "store/texte1252.h"

namespace fenlor {

Refus LitOD(CFenlorApp& app, u32 mouvement, ODLue& od, bool enEuro) {
  QVAPI& magasin = app.Magasin;
  LivresOuverts livres;
  if (const Refus r = livres.Ouvre(app)) return r;
  Mouvement entete;
  if (const Refus r = LitEntete(app, mouvement, entete)) return r;
  if (entete.Genre != GenreOD)
    return Refus(ErrChampInvalide, "mouvement",
                 {"mouvement", "cette écriture n'est pas une opération diverse"_w});
  od = {};
  SaisieOD& saisie = od.saisie;
  LitSaisie(entete, enEuro, saisie);
  od.pointee = entete.Pointee != 0;
  od.liee = entete.LienId != 0;
  for (const Position position : magasin.LignesMouvement(app.PathExercice, mouvement)) {
    Line rec{};
    if (!magasin.ReadLines(app.PathExercice, position, rec)) return app.EchecMagasin();
    LigneODLue ligne;
    ligne.compte = LitTexte(rec.Compte);
    ligne.libelle = LitTexte(rec.Designation);
    (rec.Sens ? ligne.credit : ligne.debit) =
        MontantDeChamp(saisie.euro ? rec.MontantEuro : rec.MontantFranc);
    ligne.paiement = rec.ModePaiement;
    ligne.marques = {rec.Pointee != 0, rec.Rapprochee != 0, rec.Remise != 0, rec.Validee != 0};
    od.lignes.push_back(ligne);
  }
  return {};
}

void SuitLibelle(std::vector<LigneODLue>& lignes, const std::string& ancien, const std::string& nouveau) {
  for (LigneODLue& ligne : lignes)
    if (ligne.libelle == ancien) ligne.libelle = nouveau;
}

std::vector<LigneODSaisie> LignesSaisies(const std::vector<LigneODLue>& lignes) {
  return {lignes.begin(), lignes.end()};
}

}  // namespace fenlor

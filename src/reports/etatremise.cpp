#include "reports/etatremise.h"

#include <cassert>

#include "banque/remise.h"
#include "banque/textes.h"
#include "core/cles.h"
#include "core/erreursexercice.h"
#include "core/mouvements.h"
#include "core/valeurs.h"
#include "journal/controles.h"
#include "master/options.h"
#include "pages/fichiertampon.h"
#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

CEtatRemiseDoc::~CEtatRemiseDoc() {
  if (!m_fichier.empty()) App.Magasin.SystemeFichiers().Supprime(m_fichier);
}

void CEtatRemiseDoc::BuildEtat() {
  PoseTitre(Texte(TitreRemise));
  SetEtatEntete(EnteteRemise[AfficheDouble() ? 1 : 0]);
  if (App.PathExercice.empty()) return Abandonne(Refus(ErrAucunExercice));
  if (m_fichier.empty()) m_fichier = NomTemporaire();
  if (m_fichier.empty()) return Abandonne(Refus(ErrFichierRemise, "", {m_fichier}));
  CriteresRemise criteres = CriteresRemiseProposes(App);
  if (!Demandeur().DemandeRemise(m_fichier, criteres)) return Abandonne();
  m_criteres.du = criteres.du;
  m_criteres.au = criteres.au;
  m_criteres.compte = criteres.compte;
  if (const Refus refus = AppliqueRemise(App, m_fichier, criteres.date)) return Abandonne(refus);
  EcritTete(criteres);
  EcritCheques();
}

void CEtatRemiseDoc::EcritTete(const CriteresRemise& criteres) {
  Plan compte{};
  LivresOuverts livres;
  if (const Refus refus = livres.Ouvre(App)) return Abandonne(refus);
  LitCompte(App, criteres.compte, compte);
  const AdresseBanque banque = LitAdresseBanque(App, CompacteTexte(fenlor::LitTexte(compte.Code)));
  EtatPrintf(TeteRemise, {EchappeEtat(fenlor::LitTexte(compte.Designation)), StrDate(criteres.date),
                          StrDate(criteres.du), StrDate(criteres.au), EchappeEtat(banque.compte),
                          EchappeEtat(LitActivite(App).identification)});
}

void CEtatRemiseDoc::EcritCheques() {
  assert(!m_fichier.empty());
  const unsigned rang = AfficheDouble() ? 1 : 0;
  FichierRemise fichier(App, m_fichier);
  if (const Refus refus = fichier.Ouvre()) return Abandonne(refus);
  Travail travail(*this, AvancementRemise, fichier.Nombre());
  fichier.Ferme();
  const FormatEtat rangee(RangeeRemise[rang]), total(TotalBordereau[rang]);
  const auto montants = [&](const FormatEtat& format, const std::string& texte, f64 franc, f64 euro) {
    if (AfficheDouble())
      EtatPrintf(format, {texte, FormatFranc(franc), FormatEuro(euro)});
    else
      EtatPrintf(format, {texte, MontantAnnee(franc, euro)});
  };
  EcritEtat("\\H");
  u32 cheques = 0;
  f64 franc = 0, euro = 0;
  const Refus refus = ParcourtBordereau(App, m_fichier, [&](const Line& ligne, bool imprime) {
    if (imprime) {
      montants(rangee, EchappeEtat(NomDeLigne(ligne)), ligne.MontantFranc, ligne.MontantEuro);
      // In whole cents, so that a long slip comes to what its lines say.
      franc = Arrondi2(franc + ligne.MontantFranc);
      euro = Arrondi2(euro + ligne.MontantEuro);
      ++cheques;
    }
    travail.Pas();
    return EnCours();
  });
  if (refus) return Abandonne(refus);
  if (cheques == 0) return Abandonne();
  montants(total, cheques == 1 ? Texte(MotUnCheque) : TexteFormat(MotCheques, {std::to_string(cheques)}),
           franc, euro);
  EcritEtat("\\X");
}

}  // namespace fenlor

#include "reports/etatbiens.h"

#include <cassert>

#include "core/cles.h"
#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "reports/livresetat.h"
#include "reports/textes.h"

namespace fenlor {

void CEtatBiens::ParcourtBiens(SurArret arret,
                               const std::function<void(u32 rang, const Immobilisation& immo)>& suite) {
  assert(suite);
  CImmobilisations fichier(App, App.PathCabinet);
  CAmortissements corrections(App, App.PathCabinet);
  if (!fichier.OpenFile() || !corrections.OpenFile()) return Abandonne(EchecFichier());
  Travail travail(*this, AvancementEtatBiens, App.Magasin.QVNumberOfKey(fichier.NumCle));
  u32 rang = 0;
  ParcourtFichier<Immobilisation>(App, *this, fichier, 0, {}, {}, [&](const Immobilisation& lue) {
    const Immobilisation immo = lue;  // the schedule reads other records
    suite(++rang, immo);
    if (arret == SurArret::Garde) return travail.PasOuFin();
    travail.Pas();
    return EnCours();
  });
}

bool CEtatBiens::DebuteAnnexe(const TexteFixe& titre, const TexteFixe& entete, const TexteFixe& periode) {
  if (!DemandeCriteres(FormeCriteres::Periode, titre)) return false;
  SetEtatEntete(entete);
  SetEtatPied(PiedEtatBiens);
  if (App.PathExercice.empty()) Abandonne(Refus(ErrAucunExercice));
  EtatPrintf(AnnexeEtatBiens);
  EtatPrintf(DeclarantEtatBiens,
             {EchappeEtat(App.Reglages.LitIni(Texte(SecActivite), Texte(CleIdentification)))});
  EtatPrintf(periode, {StrDate(m_criteres.du), StrDate(m_criteres.au)});
  EcritEtat("\\H");
  return EnCours();
}

std::string CEtatBiens::EnFranc(f64 montant) { return FormatMontant(montant, 0); }
std::string CEtatBiens::EnEuro(f64 montant) { return FormatMontantEuro(montant, 2); }

std::string CEtatBiens::Rempli(const TexteFixe& format, std::initializer_list<ArgumentEtat> arguments) {
  std::string texte;
  RemplitEtat(texte, Texte(format), arguments);
  return texte;
}

}  // namespace fenlor

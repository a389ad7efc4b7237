#include "reports/etatslistes.h"

#include <vector>

#include "core/textes.h"
#include "core/valeurs.h"
#include "master/comptes.h"
#include "master/libelles.h"
#include "reports/livresetat.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

template <std::size_t N>
std::string TexteTape(const char (&champ)[N]) {
  return EchappeEtat(LitTexte(champ));
}
std::string CodeRubrique(const char (&champ)[4]) { return NormaliseRubrique(LitTexte(champ)); }

std::string Montant(bool euro, f64 montant) { return euro ? FormatEuro(montant) : FormatFranc(montant); }
std::string Solde(bool euro, f64 solde) { return euro ? FormatSoldeEuro(solde) : FormatSoldeFranc(solde); }

/// Without the noise of the last digits, so that a sum of nothing prints as nothing.
void Ajoute(f64& somme, f64 montant) { somme = Arrondi2(somme + montant) + 0.0; }

}  // namespace

bool CEtatPlanDoc::BuildEtat() {
  PoseTitre(Texte(m_type == Recette ? TitreComptesRecettes : TitreComptesDepenses));
  SetEtatEntete(EnteteListeComptes);
  SetEtatPied(PiedListe);
  LivresEtat livres(App);
  if (!livres.Ouvre() || EtatPrintf("\\H") < 0) return false;
  Travail travail(*this, AvancementListeComptes, livres.NombreComptes());
  const bool euro = OptionEuro();
  f64 total = 0;
  bool suit = true;
  const bool lu = livres.ComptesDuType(m_type, [&](const Plan& compte) {
    const f64 solde = SoldesDe(compte, euro).solde;
    Ajoute(total, solde);
    return suit = EtatPrintf(LigneListeComptes, {TexteTape(compte.Code), livres.CompteCourt(compte),
                                                 CodeRubrique(compte.Rubrique), TexteTape(compte.Designation),
                                                 Solde(euro, solde)}) >= 0 &&
                  travail.Pas();
  });
  return lu && suit && EtatPrintf(TotalListeComptes, {Solde(euro, total)}) >= 0 && EtatPrintf("\\X") >= 0;
}

bool CEtatListeSoldes::EcritListe(unsigned titre, bool tousTypes) {
  PoseTitre(Texte(titre));
  SetEtatEntete(EnteteListeTresorerie);
  SetEtatPied(PiedListeTresorerie);
  LivresEtat livres(App);
  if (!livres.Ouvre() || EtatPrintf("\\H") < 0) return false;
  Travail travail(*this, AvancementListeTresorerie, livres.NombreComptes());
  const bool euro = OptionEuro();
  SoldesCompte total;
  bool suit = true;
  const auto ecrit = [&](const Plan& compte) {
    const SoldesCompte s = SoldesDe(compte, euro);
    for (f64 SoldesCompte::*champ : {&SoldesCompte::debit, &SoldesCompte::credit, &SoldesCompte::solde,
                                     &SoldesCompte::rapproche, &SoldesCompte::reel})
      Ajoute(total.*champ, s.*champ);
    return suit = EtatPrintf(LigneListeTresorerie,
                             {TexteTape(compte.Code), livres.CompteCourt(compte),
                              TexteTape(compte.Designation), Montant(euro, s.debit), Montant(euro, s.credit),
                              Solde(euro, s.solde), Solde(euro, s.rapproche), Solde(euro, s.reel)}) >= 0 &&
                  travail.Pas();
  };
  const bool lu = tousTypes ? livres.Comptes(ecrit) : livres.ComptesDuType(Tresorerie, ecrit);
  return lu && suit &&
         EtatPrintf(TotalListeTresorerie,
                    {Montant(euro, total.debit), Montant(euro, total.credit), Solde(euro, total.solde),
                     Solde(euro, total.rapproche), Solde(euro, total.reel)}) >= 0 &&
         EtatPrintf("\\X") >= 0;
}

bool CEtatPlanComptableDoc::BuildEtat() { return EcritListe(TitrePlanComptable, true); }
bool CEtatTresorerieDoc::BuildEtat() { return EcritListe(TitreComptesTresorerie, false); }

bool CEtatRubriqueDoc::BuildEtat() {
  PoseTitre(Texte(TitreRubriques));
  SetEtatEntete(EnteteListeRubriques);
  SetEtatPied(PiedListe);
  if (App.PathExercice.empty()) return App.ReportErreur(ErrAucunExercice);
  CRubriques rubriques(App, App.PathExercice);
  if (!rubriques.OpenFile() || EtatPrintf("\\H") < 0) return false;
  Travail travail(*this, AvancementListeRubriques, App.Magasin.QVNumberOfKey(rubriques.NumCle));
  bool suit = true;
  const bool lu = App.Magasin.QVParcoursCle(rubriques.NumCle, {}, {}, [&](Position, const void* rec) {
    const Rubrique& rubrique = *static_cast<const Rubrique*>(rec);
    return suit = EtatPrintf(LigneListeRubriques,
                             {CodeRubrique(rubrique.Rubrique), TexteTape(rubrique.Designation)}) >= 0 &&
                  travail.Pas();
  });
  if (!lu) rubriques.Erreur(0, MessageLecture);
  return lu && suit && EtatPrintf("\\X") >= 0 && EtatPrintf(FinListe) >= 0;
}

bool CEtatLibelleDoc::BuildEtat() {
  PoseTitre(Texte(TitreLibelles));
  SetEtatEntete(EnteteListeLibelles);
  SetEtatPied(PiedListe);
  if (App.PathExercice.empty()) return App.ReportErreur(ErrAucunExercice);
  std::vector<std::string> libelles;
  if (!LitLibelles(App, libelles) || EtatPrintf("\\H") < 0) return false;
  Travail travail(*this, AvancementListeLibelles, static_cast<u32>(libelles.size()));
  for (const std::string& libelle : libelles)
    if (EtatPrintf(LigneListeLibelles, {EchappeEtat(libelle)}) < 0 || !travail.Pas()) return false;
  return EtatPrintf("\\X") >= 0 && EtatPrintf(FinListe) >= 0;
}

}  // namespace fenlor

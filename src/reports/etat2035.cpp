#include "reports/etat2035.h"

#include <algorithm>
#include <cassert>

#include "core/cles.h"
#include "core/valeurs.h"
#include "master/textes.h"
#include "reports/livresetat.h"
#include "reports/textes.h"
#include "store/definitions.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr int DerniereLignePrincipale = 99;
constexpr const char* chiffres = "0123456789";
constexpr std::size_t BouclesDites = 10;

/// First and last line of a block of the statement.
struct Bornes {
  int premier = 0, dernier = 0;
};

Bornes LitBornes(const CFenlorApp& app, unsigned bloc) {
  assert(bloc < std::size(Cle2035Recettes));
  std::string texte = app.Reglages.LitIni(Texte(Sec2035), Texte(Cle2035Recettes[bloc]));
  if (texte.find_first_of(chiffres) >= texte.find(',')) texte = Texte(Lignes2035Recettes[bloc]);
  assert(!EstVide(texte));
  const int premier = TexteVersEntier(ChampTexte(0, texte, ','));
  return {premier, std::max(premier, TexteVersEntier(ChampTexte(1, texte, ',')))};
}

/// A sub-line belongs to its main line.
i16 LignePrincipale(i16 ligne) {
  return ligne > DerniereLignePrincipale ? static_cast<i16>(ligne / 10) : ligne;
}

int NombreMois(Date debut, Date fin) {
  if (fin < debut) return 0;
  return static_cast<int>((Annee(fin) - Annee(debut)) * 12 + Mois(fin)) - static_cast<int>(Mois(debut)) + 1;
}

}  // namespace

void CEtat2035Doc::BuildEtat() {
  PoseTitre(TexteFormat(TitreEtat2035, {App.NomExercice}));
  SetEtatPied(PiedListe);
  Rubriques2035 rubriques(App);
  if (const Refus refus = rubriques.Lit()) return Abandonne(refus);
  AvertitBoucles(rubriques);

  CImmobilisations immobilisations(App, App.PathCabinet);
  if (!immobilisations.OpenFile()) return Abandonne(EchecFichier());
  Travail travail(*this, AvancementEtat2035,
                  App.Magasin.QVNumberOfKey(immobilisations.NumCle) + rubriques.Nombre());
  Variables2035 variables;
  const bool lues = CalculVariables2035(App, variables);
  if (App.Boite.IsAborted()) return Abandonne();
  if (!lues) return Abandonne(EchecFichier());
  rubriques.PoseVariables(variables);

  EcritTete();
  for (unsigned bloc = 0; bloc < NbBlocs && EnCours(); ++bloc) {
    EcritEtat("\\F");
    EcritBloc(static_cast<Bloc>(bloc), rubriques, travail);
  }
  EcritEtat("\\F");
}

void CEtat2035Doc::AvertitBoucles(const Rubriques2035& rubriques) {
  const std::vector<std::string>& boucles = rubriques.Boucles();
  if (boucles.empty()) return;
  std::string texte;
  for (std::size_t i = 0; i < std::min(boucles.size(), BouclesDites); ++i)
    texte += (i > 0 ? "\n" : "") + boucles[i];
  if (boucles.size() > BouclesDites) texte += "\n...";
  App.MessageId(BoutonsOk | IconeAttention, AvisBoucles2035, {texte});
}

void CEtat2035Doc::EcritTete() {
  const auto reglage = [this](const TexteFixe& section, const TexteFixe& cle) {
    return EchappeEtat(App.Reglages.LitIni(Texte(section), Texte(cle)));
  };
  const int mois = NombreMois(App.Reglages.GetDebutExercice(), App.Reglages.GetFinExercice());
  EtatPrintf(Etat2035Resultat);
  EtatPrintf(Etat2035Mois, {mois});
  EtatPrintf(Etat2035Annexe);
  EtatPrintf(Etat2035Declarant, {reglage(SecActivite, CleIdentification)});
  EtatPrintf(Etat2035Activite, {reglage(SecActivite, CleNatureActivite), reglage(SecActivite, CleDebut)});
  EtatPrintf(Etat2035Association,
             {reglage(SecAssociation, CleNumeroAssociation), reglage(SecAssociation, CleAnneeAssociation)});
}

std::vector<CEtat2035Doc::LigneFiscale> CEtat2035Doc::LitLignes(Bloc bloc) {
  std::vector<LigneFiscale> lignes;
  const Bornes bornes = LitBornes(App, bloc);
  CRubriques fichier(App, App.PathExercice);
  if (!fichier.OpenFile()) {
    Abandonne(EchecFichier());
    return lignes;
  }
  ParcourtFichier<Rubrique>(App, *this, fichier, IndiceRubriqueLigne, MakeRubriquesKey4(bornes.premier, {}),
                            {}, [&](const Rubrique& rubrique) {
                              const i16 ligne = LignePrincipale(rubrique.Ligne);
                              if (ligne > bornes.dernier) return false;
                              lignes.push_back({ligne, fenlor::LitTexte(rubrique.Designation),
                                                fenlor::LitTexte(rubrique.Rubrique)});
                              return true;
                            });
  return lignes;
}

void CEtat2035Doc::EcritBloc(Bloc bloc, Rubriques2035& rubriques, Travail& travail) {
  for (const LigneFiscale& ligne : LitLignes(bloc)) {
    if (!EnCours()) return;
    EcritLigne(bloc, ligne,
               {rubriques.ValeurRubriqueFranc(ligne.rubrique), rubriques.ValeurRubriqueEuro(ligne.rubrique)});
    travail.Pas();
  }
}

void CEtat2035Doc::EcritLigne(Bloc bloc, const LigneFiscale& ligne, MontantDouble montant) {
  const f64 franc = std::max(0.0, montant.franc), euro = std::max(0.0, montant.euro);
  const bool sansNumero = ligne.ligne == 0 || ligne.ligne > DerniereLignePrincipale;
  std::string premier = FormatMontant(franc, 0), second;
  if (AfficheDouble()) {
    second = FormatMontantEuro(euro, 0);
  } else if (AnneeEuro()) {
    premier = bloc == BlocRecettes ? FormatMontant(euro, 0) : FormatMontantEuro(euro, 0);
  }
  EtatPrintf(Etat2035Ligne, {sansNumero ? std::string() : std::to_string(ligne.ligne),
                             EchappeEtat(ligne.designation), ligne.rubrique, premier, second});
}

}  // namespace fenlor

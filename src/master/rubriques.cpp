#include "master/rubriques.h"

#include <algorithm>
#include <cassert>

#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "master/formule.h"
#include "master/textes.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

using G = GenreChamp;

constexpr int LigneMax = 999;

constexpr const char* TypesRubrique[] = {"recette", "depense", "resultat", "taxe"};
// clang-format off
constexpr ChampFiche ChampsRubrique[] = {
  {"code", Membre<&FicheRubrique::code>, G::Code, "Rubrique", 0, {"code", "Code, 3 caractères au plus"}},
  {"designation", Membre<&FicheRubrique::designation>, G::Texte, "Designation", 0,
   {"designation", "Désignation"}},
  {"ligne", Membre<&FicheRubrique::ligne>, G::Nombre, "Ligne", 5,
   {"ligne", "Ligne de l'état", "", "numéro de ligne incorrect"}},
  {"type", Membre<&FicheRubrique::type>, G::Choix, "TypeRubrique", 0, {"type", "Type"}, TypesRubrique},
  {"manuel", Membre<&FicheRubrique::manuel>, G::Drapeau, "Manuel"},
  {"formule", Membre<&FicheRubrique::formule>, G::Texte, "Formule", 0,
   {"formule", "Calcul automatique (vide : total des comptes)"}},
  {"montant", Membre<&FicheRubrique::montant>, G::MontantSigne, "Manuel", 16,
   {"montant", "Montant manuel", "formule"}},
};
// clang-format on

/// A code as it is shown: the blanks that fill it up say nothing, one in front does.
std::string SansFin(std::string code) {
  code.erase(code.find_last_not_of(' ') + 1);
  return code;
}

/// A heading other than that at `position` holds the code.
bool CodeDeRubriquePris(CFenlorApp& app, const std::string& code, Position position) {
  CRubriques rubriques(app, app.PathExercice);
  PoseTexte(rubriques.Rec->Rubrique, code);
  return ClePrise(rubriques, IndiceRubriqueCode, position);
}

/// One saving: the checks in their order, then the record.
class EnregistrementRubrique {
 public:
  EnregistrementRubrique(CFenlorApp& app, FicheRubrique& fiche)
      : m_app(app),
        m_fiche(fiche),
        m_code(NormaliseRubrique(fiche.code)),
        m_formule(CompacteTexte(fiche.formule)),
        m_rubriques(app, app.PathExercice) {}

  Refus Fait() {
    using E = EnregistrementRubrique;
    if (!m_rubriques.OpenFile()) return EchecFichier();
    return PremierRefus(*this, &E::Limites, &E::Ligne, &E::Code, &E::Boucle, &E::Ecrit);
  }

 private:
  Refus Limites() {
    FicheRubrique fiche = m_fiche;
    fiche.formule = m_formule;
    return ControleTextes(FicheRubrique::Table, &fiche);
  }

  Refus Ligne() {
    const std::string ligne = CompacteTexte(m_fiche.ligne);
    const int valeur = TexteVersEntier(ligne);
    const bool chiffres = ligne.find_first_not_of("0123456789") == std::string::npos;
    if (ligne.empty() || (chiffres && valeur >= 1 && valeur <= LigneMax)) return {};
    return Refus(ErrLigneRubrique, "ligne", {m_fiche.ligne});
  }

  Refus Code() {
    // A rebuild of the file drops headings whose code is blank.
    if (EstVide(m_code)) return Refus(ErrCodeRubriqueObligatoire, "code");
    // The heading that holds the code would be replaced without a word.
    if (CodeDeRubriquePris(m_app, m_code, m_fiche.position)) return Refus(ErrCodeExistant, "code");
    return {};
  }

  /// Formula of a heading as the file will have it.
  std::string FormuleDe(const std::string& code) {
    if (code == m_code) return m_formule;
    m_rubriques.ClearRec();
    PoseTexte(m_rubriques.Rec->Rubrique, code);
    return ClePrise(m_rubriques, IndiceRubriqueCode, m_fiche.position) && !m_rubriques.Rec->Manuel
               ? LitTexte(m_rubriques.Rec->Formule)
               : std::string();
  }

  Refus Boucle() {
    assert(!m_code.empty());
    if (m_fiche.manuel) return {};
    std::string chemin;
    for (const std::string& code : BoucleDeFormule(m_code, [this](const auto& c) { return FormuleDe(c); }))
      chemin += (chemin.empty() ? "" : " > ") + SansFin(code);
    return chemin.empty() ? Refus{} : Refus(ErrBoucleRubrique, "formule", {SansFin(m_code), chemin});
  }

  Refus Ecrit() {
    assert(!EstVide(m_code));
    FicheRubrique fiche = m_fiche;
    fiche.code = m_code;
    fiche.formule = m_formule;
    if (!fiche.manuel) fiche.montant = 0;
    m_rubriques.ClearRec();
    FicheVers(m_app, FicheRubrique::Table, &fiche, m_rubriques.Rec);
    if (const Refus refus = RemplaceEnregistrement(m_app, m_rubriques, fiche.position)) return refus;
    return LitFiche(m_app, fiche.position, m_fiche);
  }

  CFenlorApp& m_app;
  FicheRubrique& m_fiche;
  const std::string m_code, m_formule;
  CRubriques m_rubriques;
};

}  // namespace

const TableFiche FicheRubrique::Table{"Rubrique", ChampsRubrique};

Refus LitFiche(CFenlorApp& app, Position position, FicheRubrique& fiche) {
  CRubriques rubriques(app, app.PathExercice);
  if (const Refus refus = LitEnregistrement(rubriques, position)) return refus;
  FicheDepuis(app, FicheRubrique::Table, rubriques.Rec, &fiche);
  fiche.position = position;
  fiche.code = SansFin(fiche.code);
  return {};
}

std::vector<CompteAssocie> ComptesAssocies(CFenlorApp& app, const std::string& code) {
  std::vector<CompteAssocie> comptes;
  const std::string debut = NormaliseRubrique(code);
  CPlan plan(app, app.PathExercice);
  if (EstVide(debut) || !plan.OpenFile()) return comptes;
  const auto cle = static_cast<u16>(plan.NumCle + IndicePlanRubrique);
  app.Magasin.QVParcoursCle(cle, debut, debut + '\xFF', [&](Position position, const void* rec) {
    const Plan& compte = *static_cast<const Plan*>(rec);
    comptes.push_back({position, LitTexte(compte.Compte), {}, LitTexte(compte.Designation)});
    return true;
  });
  for (CompteAssocie& c : comptes) c.court = app.NumeroCourt(c.compte);
  return comptes;
}

Refus ControleCodeRubrique(CFenlorApp& app, const FicheRubrique& fiche) {
  const std::string code = NormaliseRubrique(fiche.code);
  return EstVide(code) || !CodeDeRubriquePris(app, code, fiche.position) ? Refus{}
                                                                         : Refus(ErrCodeExistant, "code");
}

Refus EnregistreFiche(CFenlorApp& app, FicheRubrique& fiche) {
  if (app.Reglages.IsFige()) return {};
  return EnregistrementRubrique(app, fiche).Fait();
}

Refus AvisFiche(CFenlorApp& app, const FicheRubrique& fiche) {
  if (fiche.manuel || app.Reglages.IsFige()) return {};
  const std::string propre = NormaliseRubrique(fiche.code);
  const auto connu = [&](const std::string& terme) {
    const std::string code = RubriqueDuTerme(terme);
    return EstVariable(terme) || (!code.empty() && (code == propre || CodeDeRubriquePris(app, code, 0)));
  };
  std::vector<std::string> inconnus;
  for (const TermeFormule& terme : TermesFormule(CompacteTexte(fiche.formule))) {
    const bool dit = std::find(inconnus.begin(), inconnus.end(), terme.texte) != inconnus.end();
    if (!dit && !terme.texte.empty() && !connu(terme.texte)) inconnus.push_back(terme.texte);
  }
  std::string liste;
  for (const std::string& terme : inconnus) liste += (liste.empty() ? "" : ", ") + terme;
  return liste.empty() ? Refus() : Refus::Avis(InfoTermesInconnus, {SansFin(propre), liste});
}

Refus SupprimeFiche(CFenlorApp& app, const FicheRubrique& supprimee) {
  if (const Refus r = app.ControleEcriture()) return r;
  FicheRubrique fiche;
  if (supprimee.position == 0) return {};
  if (const Refus refus = LitFiche(app, supprimee.position, fiche)) return refus;
  if (!ComptesAssocies(app, fiche.code).empty()) return Refus::Avis(InfoRubriqueUtilisee);
  if (const Refus refus = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionSupprimeRubrique, "",
                                      {SansFin(NormaliseRubrique(fiche.code))}))
    return refus;
  CRubriques rubriques(app, app.PathExercice);
  return SupprimeEnregistrement(rubriques, fiche.position);
}

}  // namespace fenlor

#include "master/rubriques.h"

#include <algorithm>

#include "core/erreurs.h"
#include "core/nomschamps.h"
#include "core/texte.h"
#include "core/valeurs.h"
#include "master/formule.h"
#include "master/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 CleCode = 0, ClePlanRubrique = 2;
constexpr int LigneMax = 999;

ResultatMaster Refuse(CFenlorApp& app, const TexteFixe& erreur, const char* champ,
                      std::initializer_list<std::string> arguments = {}) {
  app.ReportErreur(erreur, arguments);
  return {erreur, champ};
}

/// A code as it is shown: the blanks that fill it up say nothing, one in front does.
std::string SansFin(std::string code) {
  code.erase(code.find_last_not_of(' ') + 1);
  return code;
}

bool Lit(CFenlorApp& app, Position position, Rubrique& rubrique) {
  CRubriques rubriques(app, app.PathExercice);
  if (!rubriques.OpenFile() || !rubriques.ReadRec(position)) return false;
  rubrique = *rubriques.Rec;
  return true;
}

/// A heading other than that at `position` holds the code.
bool CodePris(CFenlorApp& app, const std::string& code, Position position) {
  CRubriques rubriques(app, app.PathExercice);
  PoseTexte(rubriques.Rec->Rubrique, code);
  return rubriques.OpenFile() && rubriques.Find(CleCode) && rubriques.GetPos() != position;
}

/// One saving: the checks in their order, then the record.
class Enregistrement {
 public:
  Enregistrement(CFenlorApp& app, FicheRubrique& fiche)
      : m_app(app),
        m_fiche(fiche),
        m_code(NormaliseRubrique(fiche.code)),
        m_formule(NormeTexte(fiche.formule)),
        m_rubriques(app, app.PathExercice) {}

  ResultatMaster Fait() {
    if (!m_rubriques.OpenFile()) return {ErrOuvertureFichier, ""};
    using Controle = ResultatMaster (Enregistrement::*)();
    for (const Controle controle :
         {&Enregistrement::Limites, &Enregistrement::Ligne, &Enregistrement::Code, &Enregistrement::Boucle})
      if (const ResultatMaster r = (this->*controle)(); !r) return r;
    return Ecrit();
  }

 private:
  ResultatMaster Limites() {
    const Rubrique& rec = *m_rubriques.Rec;
    const struct {
      const char* champ;
      std::size_t longueur, limite;
    } textes[] = {{"code", m_fiche.code.size(), sizeof rec.Rubrique - 1},
                  {"designation", m_fiche.designation.size(), sizeof rec.Designation - 1},
                  {"formule", m_formule.size(), sizeof rec.Formule - 1}};
    for (const auto& texte : textes)
      if (texte.longueur > texte.limite)
        return Refuse(m_app, ErrTexteTropLong, texte.champ,
                      {NomChamp(texte.champ), std::to_string(texte.limite)});
    return {};
  }

  ResultatMaster Ligne() {
    const std::string ligne = CompacteTexte(m_fiche.ligne);
    const int valeur = TexteVersEntier(ligne);
    const bool chiffres = ligne.find_first_not_of("0123456789") == std::string::npos;
    if (ligne.empty() || (chiffres && valeur >= 1 && valeur <= LigneMax)) return {};
    return Refuse(m_app, ErrLigneRubrique, "ligne", {m_fiche.ligne});
  }

  ResultatMaster Code() {
    // A rebuild of the file drops headings whose code is blank.
    if (EstVide(m_code)) return Refuse(m_app, ErrCodeRubriqueObligatoire, "code");
    // The heading that holds the code would be replaced without a word.
    if (CodePris(m_app, m_code, m_fiche.position)) return Refuse(m_app, ErrCodeExistant, "code");
    return {};
  }

  /// Formula of a heading as the file will have it.
  std::string FormuleDe(const std::string& code) {
    if (code == m_code) return m_formule;
    m_rubriques.ClearRec();
    PoseTexte(m_rubriques.Rec->Rubrique, code);
    const bool autre = m_rubriques.Find(CleCode) && m_rubriques.GetPos() != m_fiche.position;
    return autre && !m_rubriques.Rec->Manuel ? LitTexte(m_rubriques.Rec->Formule) : std::string();
  }

  ResultatMaster Boucle() {
    if (m_fiche.manuel) return {};
    std::string chemin;
    for (const std::string& code : BoucleDeFormule(m_code, [this](const auto& c) { return FormuleDe(c); }))
      chemin += (chemin.empty() ? "" : " > ") + SansFin(code);
    return chemin.empty() ? ResultatMaster{}
                          : Refuse(m_app, ErrBoucleRubrique, "formule", {SansFin(m_code), chemin});
  }

  ResultatMaster Ecrit() {
    QVAPI::Unite unite(m_app.Magasin);
    if (!m_rubriques.Delete(m_fiche.position)) return {ErrFichierIndexe, ""};
    m_rubriques.ClearRec();
    Rubrique& rec = *m_rubriques.Rec;
    PoseTexte(rec.Rubrique, m_code);
    PoseTexte(rec.Designation, m_fiche.designation);
    PoseTexte(rec.Formule, m_formule);
    rec.Ligne = static_cast<i16>(TexteVersEntier(m_fiche.ligne));
    rec.TypeRubrique = m_fiche.type;
    rec.Manuel = m_fiche.manuel;
    const f64 montant = m_fiche.manuel ? m_fiche.montant : 0;
    const f64 taux = m_app.Magasin.GetTauxEuro(m_app.Magasin.Today());
    const bool euro = m_app.Reglages.IsEuro();
    rec.ManuelEuro = euro ? montant : QVAPI::ConvertFrancToEuro(taux, montant);
    rec.ManuelFranc = euro ? QVAPI::ConvertEuroToFranc(taux, montant) : montant;
    if (!m_rubriques.Add()) return {ErrFichierIndexe, ""};
    if (!unite.Valide())
      return Refuse(m_app, ErrMagasin, "", {m_app.Magasin.QVErreurTexte(m_app.Magasin.QVFileErrorCode())});
    m_fiche.position = m_rubriques.GetPos();
    m_fiche.code = SansFin(m_code);
    m_fiche.formule = m_formule;
    m_fiche.ligne = EntierVersTexte(rec.Ligne);
    m_fiche.montant = montant;
    DitInconnus();
    return {};
  }

  /// A term may name a heading that is still to come: told, not refused.
  void DitInconnus() {
    if (m_fiche.manuel) return;
    std::vector<std::string> inconnus;
    for (const TermeFormule& terme : TermesFormule(m_formule)) {
      const bool dit = std::find(inconnus.begin(), inconnus.end(), terme.texte) != inconnus.end();
      if (!dit && !terme.texte.empty() && !EstConnu(terme.texte)) inconnus.push_back(terme.texte);
    }
    std::string liste;
    for (const std::string& terme : inconnus) liste += (liste.empty() ? "" : ", ") + terme;
    if (!liste.empty())
      m_app.MessageId(BoutonsOk | IconeAttention, InfoTermesInconnus, {SansFin(m_code), liste});
  }

  bool EstConnu(const std::string& terme) {
    if (EstVariable(terme)) return true;
    const std::string code = RubriqueDuTerme(terme);
    return !code.empty() && (code == m_code || CodePris(m_app, code, 0));
  }

  CFenlorApp& m_app;
  FicheRubrique& m_fiche;
  const std::string m_code, m_formule;
  CRubriques m_rubriques;
};

}  // namespace

std::string NormeTexte(std::string_view texte) { return CompacteTexte(texte); }

bool LitFicheRubrique(CFenlorApp& app, Position position, FicheRubrique& fiche) {
  Rubrique rec{};
  if (!Lit(app, position, rec)) return false;
  fiche = FicheRubrique{};
  fiche.position = position;
  fiche.code = SansFin(LitTexte(rec.Rubrique));
  fiche.designation = LitTexte(rec.Designation);
  fiche.ligne = EntierVersTexte(rec.Ligne);
  fiche.formule = LitTexte(rec.Formule);
  fiche.type = rec.TypeRubrique;
  fiche.manuel = rec.Manuel != 0;
  fiche.montant = app.Reglages.IsEuro() ? rec.ManuelEuro : rec.ManuelFranc;
  return true;
}

std::vector<CompteAssocie> ComptesAssocies(CFenlorApp& app, const std::string& code) {
  std::vector<CompteAssocie> comptes;
  const std::string debut = NormaliseRubrique(code);
  CPlan plan(app, app.PathExercice);
  if (EstVide(debut) || !plan.OpenFile()) return comptes;
  const auto cle = static_cast<u16>(plan.NumCle + ClePlanRubrique);
  app.Magasin.QVParcoursCle(cle, debut, debut + '\xFF', [&](Position position, const void* rec) {
    const Plan& compte = *static_cast<const Plan*>(rec);
    comptes.push_back({position, LitTexte(compte.Compte), {}, LitTexte(compte.Designation)});
    return true;
  });
  for (CompteAssocie& c : comptes) c.court = CompacteTexte(app.Magasin.GetShortCompte(c.compte));
  return comptes;
}

ResultatMaster ControleCodeRubrique(CFenlorApp& app, const FicheRubrique& fiche) {
  const std::string code = NormaliseRubrique(fiche.code);
  return EstVide(code) || !CodePris(app, code, fiche.position) ? ResultatMaster{}
                                                               : Refuse(app, ErrCodeExistant, "code");
}

ResultatMaster EnregistreRubrique(CFenlorApp& app, FicheRubrique& fiche) {
  if (app.Reglages.IsExerciceCloture()) return {};
  return Enregistrement(app, fiche).Fait();
}

ResultatMaster SupprimeRubrique(CFenlorApp& app, Position position) {
  if (app.Reglages.IsExerciceCloture()) return Refuse(app, ErrExerciceCloture, "");
  Rubrique rubrique{};
  if (position == 0) return {};
  if (!Lit(app, position, rubrique)) return {ErrFichierIndexe, ""};
  const std::string code = NormaliseRubrique(LitTexte(rubrique.Rubrique));
  if (!ComptesAssocies(app, code).empty()) {
    app.MessageId(BoutonsOk | IconeAttention, InfoRubriqueUtilisee);
    return {InfoRubriqueUtilisee, ""};
  }
  if (app.MessageId(BoutonsOuiNon | IconeQuestion, QuestionSupprimeRubrique, {SansFin(code)}) != RepOui)
    return {QuestionSupprimeRubrique, ""};
  CRubriques rubriques(app, app.PathExercice);
  return rubriques.OpenFile() && rubriques.Delete(position) ? ResultatMaster{}
                                                            : ResultatMaster{ErrFichierIndexe, ""};
}

std::vector<Position> PositionsRubriques(CFenlorApp& app) {
  std::vector<Position> positions;
  CRubriques rubriques(app, app.PathExercice);
  if (!rubriques.OpenFile()) return positions;
  app.Magasin.QVParcoursCle(rubriques.NumCle, {}, {}, [&](Position position, const void*) {
    positions.push_back(position);
    return true;
  });
  return positions;
}

}  // namespace fenlor

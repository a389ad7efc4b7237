#include <algorithm>

#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/verbefiche.h"
#include "master/rubriques.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

class VerbeRubrique : public VerbeFiche {
 public:
  using Fiche = FicheRubrique;
  static constexpr MotsVerbe Mots{"rubrique",
                                  "Ajoute, modifie, supprime ou liste des rubriques de l'état fiscal",
                                  "une rubrique",
                                  "Rubrique",
                                  "rubrique",
                                  "CODE",
                                  "Code de la rubrique",
                                  "Écrit les rubriques dans l'ordre de leur code",
                                  true};
  VerbeRubrique(Contexte& contexte, const OptionsFiche& options)
      : VerbeFiche(contexte, options, Mots, Fiche::Table, &m_fiche), m_rubriques(m_app, m_app.PathExercice) {}

 private:
  bool Trouve(const std::string& code) override {
    PoseTexte(m_rubriques.Rec->Rubrique, NormaliseRubrique(code));
    const std::string absente = "cette rubrique n'existe pas."_w;
    if (code.size() > sizeof m_rubriques.Rec->Rubrique - 1 || EstVide(code))
      return m_contexte.Invalide("rubrique", absente);
    return TrouveDans(m_rubriques, absente,
                      [this](Position position) { return LitFicheRubrique(m_app, position, m_fiche); });
  }
  bool Remplit() override {
    const bool montant = m_options.Donne("montant");
    if (montant || m_options.Donne("formule")) m_fiche.manuel = montant;
    return PoseOptions();
  }
  Refus Enregistre() override {
    Refus refus = EnregistreRubrique(m_app, m_fiche);
    if (!refus) m_app.Dit(AvisRubrique(m_app, m_fiche));
    return refus;
  }
  Refus Supprime() override { return SupprimeRubrique(m_app, m_fiche.position); }
  std::vector<std::pair<const char*, std::string>> Cles() override {
    return {{"Rubrique", NormaliseRubrique(m_fiche.code)}};
  }
  std::string Nom() override { return m_fiche.code; }

  int Liste() override {
    return VerbeFiche::Liste(m_rubriques, PositionsDe(m_app, m_rubriques),
                             {"Code", "Ligne", "Type", "Désignation"_w, "Calcul"}, 5,
                             [this](Position position) { return Ligne(position); });
  }
  std::vector<std::string> Ligne(Position position) {
    if (!LitFicheRubrique(m_app, position, m_fiche)) return {};
    const auto& types = Fiche::Table.Trouve("type")->mots;
    const auto type = static_cast<std::size_t>(m_fiche.type);
    std::string calcul = m_fiche.formule;
    if (m_fiche.manuel) calcul = FormatMontant(m_fiche.montant, 2, m_app.Reglages.SeparateurDecimal());
    if (m_fiche.manuel && calcul.empty()) calcul = "0";
    return {m_fiche.code, m_fiche.ligne, type < types.size() ? types[type] : "", m_fiche.designation, calcul};
  }

  Fiche m_fiche;
  CRubriques m_rubriques;
};

}  // namespace

void DeclareRubriques(LigneCommande& ligne) {
  DeclareVerbe<VerbeRubrique>(ligne, std::make_shared<OptionsFiche>());
}

}  // namespace fenlor

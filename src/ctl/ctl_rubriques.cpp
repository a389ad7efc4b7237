#include <algorithm>

#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/verbefiche.h"
#include "master/rubriques.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

class VerbeRubrique : public VerbeDe<FicheRubrique, CRubriques> {
 public:
  static constexpr MotsVerbe Mots{"rubrique",
                                  "Ajoute, modifie, supprime ou liste des rubriques de l'état fiscal",
                                  "une rubrique",
                                  "Rubrique",
                                  "rubrique",
                                  "CODE",
                                  "Code de la rubrique",
                                  "Écrit les rubriques dans l'ordre de leur code",
                                  true};
  VerbeRubrique(Contexte& contexte, const OptionsFiche& options) : VerbeDe(contexte, options, Mots) {}

 private:
  Refus Trouve(const std::string& code) override {
    const std::string absente = "cette rubrique n'existe pas."_w;
    PoseTexte(m_fichier.Rec->Rubrique, NormaliseRubrique(code));
    const bool possible = code.size() < sizeof m_fichier.Rec->Rubrique && !EstVide(code);
    return possible ? LitCle(absente) : RefusChamp(Mots.cle, absente);
  }
  bool Remplit() override {
    const bool montant = m_options.Donne("montant");
    if (montant || m_options.Donne("formule")) m_fiche.manuel = montant;
    return PoseOptions();
  }
  std::vector<std::pair<const char*, std::string>> Cles() override {
    return {{"Rubrique", NormaliseRubrique(m_fiche.code)}};
  }
  std::string Nom() override { return m_fiche.code; }

  int Liste() override {
    return VerbeFiche::Liste(m_fichier, PositionsDe(m_app, m_fichier),
                             {"Code", "Ligne", "Type", "Désignation"_w, "Calcul"}, 5,
                             [this](Position position) { return Ligne(position); });
  }
  std::vector<std::string> Ligne(Position position) {
    if (LitFiche(m_app, position, m_fiche)) return {};
    const auto& types = Fiche::Table.Trouve("type")->mots;
    const auto type = static_cast<std::size_t>(m_fiche.type);
    std::string calcul = m_fiche.formule;
    if (m_fiche.manuel) calcul = FormatMontant(m_fiche.montant, 2, m_app.Reglages.SeparateurDecimal());
    if (m_fiche.manuel && calcul.empty()) calcul = "0";
    return {m_fiche.code, m_fiche.ligne, type < types.size() ? types[type] : "", m_fiche.designation, calcul};
  }
};

}  // namespace

void DeclareRubriques(LigneCommande& ligne) {
  DeclareVerbe<VerbeRubrique>(ligne, std::make_shared<OptionsFiche>());
}

}  // namespace fenlor

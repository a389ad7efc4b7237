// Headings of the tests: their codes are none of the template's.
#pragma once

#include "core/valeurs.h"
#include "journal/cabinetmedical.h"
#include "master/rubriques.h"

namespace fenlor::test {

class RubriquesDeTest : public CabinetMedical {
 public:
  using CabinetMedical::CabinetMedical;

 protected:
  void Affecte(const std::string& compte, const std::string& code) {
    ChangeCompte(compte, [&](Plan& rec) { PoseTexte(rec.Rubrique, NormaliseRubrique(code)); });
  }
  static FicheRubrique Fiche(const std::string& code, const std::string& formule = {},
                             const std::string& ligne = {}) {
    FicheRubrique fiche;
    fiche.code = code;
    fiche.designation = "Rubrique " + code;
    fiche.formule = formule;
    fiche.ligne = ligne;
    return fiche;
  }
  /// Saves; number of the refusal and its field, "" when it is done.
  std::string Enregistre(FicheRubrique fiche) {
    Boite.Oublie();
    m_refus = EnregistreFiche(App(), fiche);
    return m_refus ? std::to_string(m_refus.numero) + ' ' + m_refus.champ : std::string();
  }
  Refus m_refus;  ///< of the last saving
  /// The stored record; of `TypeRubrique` -1 when there is none.
  Rubrique Lit(const std::string& code) {
    CRubriques rubriques(App(), App().PathExercice);
    PoseTexte(rubriques.Rec->Rubrique, code);
    if (!rubriques.OpenFile() || !rubriques.Find(0)) rubriques.Rec->TypeRubrique = -1;
    return *rubriques.Rec;
  }
  FicheRubrique Relit(const std::string& code) {
    CRubriques rubriques(App(), App().PathExercice);
    PoseTexte(rubriques.Rec->Rubrique, code);
    FicheRubrique fiche;
    EXPECT_TRUE(rubriques.OpenFile() && rubriques.Find(0) && !LitFiche(App(), rubriques.GetPos(), fiche))
        << code;
    return fiche;
  }
};

}  // namespace fenlor::test

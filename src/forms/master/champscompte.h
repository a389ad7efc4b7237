// Groups of fields that the forms of an account share. Each declares its fields and shows what an account
// has beside the values of its table.
#pragma once

#include <QCheckBox>
#include <initializer_list>
#include <utility>
#include <vector>

#include "master/comptes.h"
#include "ui/editeurs.h"
#include "ui/formulaire.h"

namespace fenlor {

/// Enables a field together with its label.
void PermetChamp(QWidget& champ, bool permis);
/// A field that can be read and copied, not typed; its label goes grey.
void FigeChamp(QLineEdit& champ, bool fige);

/// Derived figures in the exercice's currency; the tool tip has the other one.
class SoldesAffiches {
 public:
  struct Figure {
    const char* libelle;  ///< UTF-8
    const char* nom;
    f64 SoldesCompte::*montant;
    bool signe = true;  ///< "D " before a negative value
  };
  explicit SoldesAffiches(CFenlorApp& app) : m_app(app) {}
  /// Group "Soldes", two figures a row.
  void Declare(Formulaire& formulaire, std::initializer_list<Figure> figures);
  void Montre(const Plan& compte);
  /// Another value of one figure, not stored yet.
  void Pose(f64 SoldesCompte::*montant, f64 valeur);

 private:
  std::string Format(f64 valeur, bool signe) const;
  CFenlorApp& m_app;
  std::vector<std::pair<Figure, Lecture*>> m_figures;
};

/// Heading and VAT account.
class ChampsAffectation {
 public:
  explicit ChampsAffectation(CFenlorApp& app);
  /// The VAT list only when the exercice is subject.
  void Declare(Formulaire& formulaire);
  /// Without the VAT list, for a form that has its own place for it.
  void DeclareRubrique(Formulaire& formulaire);
  /// Fills both lists for that type of account, and selects.
  void Montre(const FicheCompte& fiche);
  /// No row at all, as in a form cleared for the next account.
  void Vide();
  void PermetRubrique(bool permis) { PermetChamp(m_rubrique, permis); }
  void PermetTVA(bool permis) { PermetChamp(m_tva, permis); }
  EditeurChoix& TVA() { return m_tva; }
  bool Assujetti() const { return m_assujetti; }

 private:
  CFenlorApp& m_app;
  const bool m_assujetti;
  EditeurChoix m_rubrique, m_tva;
};

/// Professional and personal share.
class ChampsRepartition {
 public:
  explicit ChampsRepartition(CFenlorApp& app);
  void Declare(Formulaire& formulaire);
  /// Shares that do not apply (`permis` false) are 100 and 0.
  void Montre(const FicheCompte& fiche, bool permis);

 private:
  void MontrePersonnelle();
  CFenlorApp& m_app;
  EditeurMontant m_professionnelle;
  Lecture m_personnelle;
};

/// Bank box, opening balance, and the figures that go with them.
class ChampsTresorerie {
 public:
  explicit ChampsTresorerie(CFenlorApp& app);
  void Declare(Formulaire& formulaire);
  void DeclareSoldes(Formulaire& formulaire);
  void Montre(const FicheCompte& fiche, const Plan& compte);
  void Permet(bool permis);
  QCheckBox& Banque() { return m_banque; }

 private:
  void ChangeInitial(const EditeurMontant& saisi, EditeurMontant& autre, int signe);
  CFenlorApp& m_app;
  QCheckBox m_banque;
  EditeurMontant m_debit, m_credit;
  SoldesAffiches m_soldes;
  f64 m_solde = 0;
};

}  // namespace fenlor

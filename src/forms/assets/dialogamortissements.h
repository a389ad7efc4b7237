// `CDialogAmortissements`: the years of an asset, and the real amount of each. `CDialogAmortissementsLine`:
// one year.
#pragma once

#include <functional>

#include "assets/detail.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

class ListeEditee;

class CDialogAmortissements : public CZNDialog {
  Q_OBJECT
 public:
  /// What `LitDetail` gave.
  CDialogAmortissements(ContexteUi& contexte, DetailAmortissements detail, QWidget* parent = nullptr);

 protected:
  bool Enregistre() override;
  void Pointe(const Refus& refus) override;

 private:
  void Declare();
  void Modifie(int ligne);
  void Retablit(int ligne);
  DetailAmortissements m_detail;
  Lecture m_designation, m_achat;
  ListeEditee* m_liste;
  FinDesLiens m_finLiens{*this};
};

class CDialogAmortissementsLine : public CZNDialog {
  Q_OBJECT
 public:
  /// A row of `detail`, which outlives the form. `change` is told the row in hand whenever one was changed or
  /// another one is shown.
  CDialogAmortissementsLine(ContexteUi& contexte, DetailAmortissements& detail, int ligne,
                            std::function<void(int ligne)> change, QWidget* parent = nullptr);

 protected:
  bool Enregistre() override;
  void Voisin(int pas) override;

 private:
  void Montre();
  LigneDetail& Ligne() { return m_detail.lignes[static_cast<std::size_t>(m_ligne)]; }
  DetailAmortissements& m_detail;
  int m_ligne;
  std::function<void(int)> m_change;
  Lecture m_annee, m_theorique;
  EditeurMontant m_reel;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

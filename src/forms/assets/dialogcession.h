// `CDialogCession` and `CDialogRebut`: the end of an asset, sold for a price or scrapped without one.
#pragma once

#include <functional>

#include "assets/cessions.h"
#include "ui/choixmonnaie.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

/// What both share: the asset, the date, the way back.
class FormeFin : public CZNDialog {
  Q_OBJECT
 public:
  /// Puts a changed asset away; the form stays open when that is refused.
  using Depot = std::function<Refus(const Immobilisation&)>;

 protected:
  /// `immo` is changed, once nothing was refused, when the form ends with OK or with "&Supprimer".
  FormeFin(ContexteUi& contexte, const TexteFixe& titre, const char* nom, Immobilisation& immo, Depot depot,
           QWidget* parent);

  const Immobilisation& Immo() const { return m_immo; }
  /// The rows of the asset and the date, with the label that it has here.
  Formulaire& Declare(Formulaire& formulaire, const QString& libelle);
  /// Last line of a constructor.
  void Ouvre(Date date);
  bool Enregistre() override;
  /// What is typed into the asset; the rule's refusal.
  virtual Refus Pose(Immobilisation& immo) = 0;
  /// What is typed, for "&Supprimer", which refuses nothing of it.
  virtual std::optional<FicheCession> Saisie() const { return std::nullopt; }

  EditeurDate m_date;

 private:
  bool Depose(const Immobilisation& immo);
  void Annule();
  Immobilisation& m_immo;
  Depot m_depot;
  Lecture m_designation, m_achat;
  FinDesLiens m_finLiens{*this};
};

class CDialogCession : public FormeFin {
  Q_OBJECT
 public:
  /// Precondition: `ControleCession` refuses nothing.
  CDialogCession(ContexteUi& contexte, Immobilisation& immo, Depot depot = {}, QWidget* parent = nullptr);

 protected:
  Refus Pose(Immobilisation& immo) override;
  std::optional<FicheCession> Saisie() const override;

 private:
  EditeurMontant m_prix;
  ChoixMonnaie m_monnaie;
  FinDesLiens m_finLiens{*this};
};

class CDialogRebut : public FormeFin {
  Q_OBJECT
 public:
  /// Precondition: `ControleRebut` refuses nothing.
  CDialogRebut(ContexteUi& contexte, Immobilisation& immo, Depot depot = {}, QWidget* parent = nullptr);

 protected:
  Refus Pose(Immobilisation& immo) override;

 private:
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

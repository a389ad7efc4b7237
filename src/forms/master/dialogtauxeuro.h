// `CDialogTauxEuro`: the table of conversion rates, and the form of one of its rows.
#pragma once

#include "master/tauxeuro.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"
#include "ui/listeeditee.h"

namespace fenlor {

class CDialogTauxEuro : public CZNDialog {
  Q_OBJECT
 public:
  explicit CDialogTauxEuro(ContexteUi& contexte, QWidget* parent = nullptr);

 protected:
  bool Enregistre() override;

 private:
  void Saisit(int modifie);
  void Supprime();
  std::vector<TauxEuro> m_lignes;
  ListeEditee m_liste;
  FinDesLiens m_finLiens{*this};
};

/// One row, checked against the others. Writes nothing.
class CDialogSaisieTaux : public CZNDialog {
  Q_OBJECT
 public:
  /// `modifie`: the row that it is, -1 for a new one, which is of today. `lignes` outlive the form.
  CDialogSaisieTaux(ContexteUi& contexte, const std::vector<TauxEuro>& lignes, int modifie,
                    QWidget* parent = nullptr);
  TauxEuro Valeur() const;

 protected:
  bool Enregistre() override;

 private:
  const std::vector<TauxEuro>& m_lignes;
  int m_modifie;
  EditeurDate m_date;
  EditeurMontant m_taux;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

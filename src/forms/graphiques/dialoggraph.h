// `CDialogGraph`: what a chart is to show.
#pragma once

#include <QRadioButton>
#include <array>
#include <vector>

#include "graphiques/serie.h"
#include "session/periodes.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"
#include "ui/tableliste.h"

namespace fenlor {

/// The accounts under the headings of their groups. A heading can be selected, and counts as a row.
class ListeComptesGraphique : public CZNListCtrl {
  Q_OBJECT
 public:
  /// The rows outlive the list.
  ListeComptesGraphique(ContexteUi& contexte, const std::vector<CompteGraphique>& lignes);

 protected:
  Allure AllureDe(int ligne) const override;

 private:
  const std::vector<CompteGraphique>& m_lignes;
};

class CDialogGraph : public CZNDialog {
  Q_OBJECT
 public:
  explicit CDialogGraph(ContexteUi& contexte, QWidget* parent = nullptr);
  ~CDialogGraph() override;

  /// Runs the form. False when there is no chart: it was cancelled, or its days are in the wrong order.
  bool Demande();
  /// After `Demande`.
  const SerieGraphique& Serie() const { return m_serie; }

 protected:
  bool Enregistre() override;

 private:
  void DeclarePeriode(Formulaire& formulaire);
  QRadioButton& Bouton(Periode periode) { return m_periodes[static_cast<std::size_t>(periode)]; }
  void Applique(Periode periode);

  const CadrePeriode m_cadre;
  std::vector<CompteGraphique> m_lignes;
  ListeComptesGraphique m_comptes;
  std::array<QRadioButton, 5> m_periodes;
  EditeurDate m_du, m_au;
  std::array<QRadioButton, 2> m_types;
  SerieGraphique m_serie;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

// `CEcrTotal`: an amount under a journal, and the two rows that they stand in.
#pragma once

#include <QLabel>
#include <array>

#include "journal/listejournal.h"

namespace fenlor {

class CEcrList;

/// Stores one amount and shows it; zero is empty.
class CEcrTotal : public QLabel {
  Q_OBJECT
 public:
  explicit CEcrTotal(const char* nom, QWidget* parent = nullptr);
  void PoseFranc(f64 montant);
  void PoseEuro(f64 montant);
  f64 Montant() const { return m_montant; }

 private:
  f64 m_montant = 0;
};

/// Totals of the month and of the selected rows, each figure under its column.
class BandeTotaux : public QWidget {
  Q_OBJECT
 public:
  explicit BandeTotaux(CEcrList& liste, QWidget* parent = nullptr);

  void PoseDessin(const QFont& police);
  void Montre(const TotauxListe& mois, const TotauxListe& selection);
  /// Puts the figures under the columns of now.
  void Place();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

 protected:
  void resizeEvent(QResizeEvent* evenement) override;

 private:
  struct Rangee {
    QLabel* titre;
    std::array<CEcrTotal*, 4> montants;  ///< Franc, Franc, Euro, Euro
  };
  Rangee FaitRangee(const TexteFixe& titre, const char* nom);
  static void MontreRangee(const Rangee& rangee, const TotauxListe& totaux);
  CEcrList& m_liste;
  std::array<Rangee, 2> m_rangees;
};

}  // namespace fenlor

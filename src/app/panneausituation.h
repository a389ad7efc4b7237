// The money on the start page: balances, results, what waits. Each figure opens what it is made of.
#pragma once

#include <QWidget>
#include <functional>

#include "session/situation.h"
#include "ui/fenetres.h"

class QGridLayout;

namespace fenlor {

/// Where a figure leads to: a window, a month of a journal, or a command.
struct Destination {
  u32 fenetre = 0;  ///< MasqueFenetre
  Date mois = 0;    ///< of a journal; 0: the one it was left at
  unsigned commande = 0;
};

class PanneauSituation : public QWidget {
  Q_OBJECT
 public:
  /// `ouvre` goes where a figure leads to.
  PanneauSituation(ContexteUi& contexte, std::function<void(const Destination&)> ouvre,
                   QWidget* parent = nullptr);
  /// Reads the books and shows them; hidden when they cannot be read, which is told where one works on them.
  void Actualise();

 private:
  class Tableau;
  void MontreTresorerie(Tableau& tableau);
  void MontreResultats(Tableau& tableau);
  void MontreAttente(Tableau& tableau);
  std::string Montant(f64 montant) const;
  ContexteUi& m_contexte;
  std::function<void(const Destination&)> m_ouvre;
  Situation m_situation;
  std::string m_exercice;  ///< path of the one it was read from
  QWidget* m_contenu = nullptr;
};

}  // namespace fenlor

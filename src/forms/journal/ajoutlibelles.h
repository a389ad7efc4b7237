// The label typed in a form of entries becomes one of the ready-made labels.
#pragma once

#include <QObject>
#include <string>
#include <vector>

#include "forms/journal/champsecriture.h"
#include "ui/fenetres.h"

namespace fenlor {

/// Ctrl+L in the field, or its context menu, adds what it holds to its list.
class AjoutLibelles : public QObject {
  Q_OBJECT
 public:
  /// The field belongs to `forme`, which outlives the object.
  AjoutLibelles(ContexteUi& contexte, ChampLibelle& champ, QWidget& forme);
  /// The form closes: the labels that were added go to the labels file, behind those that are there now.
  /// A failure has been told, and leaves the file as it is.
  void Ecrit();

 private:
  void Ajoute();
  void Menu(const QPoint& place);
  ContexteUi& m_contexte;
  ChampLibelle& m_champ;
  std::vector<std::string> m_ajoutes;
};

}  // namespace fenlor

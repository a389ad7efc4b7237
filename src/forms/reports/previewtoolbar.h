// `CPreviewToolBar`: the commands of a preview.
#pragma once

#include <QAction>
#include <QToolBar>

#include "ui/findesliens.h"
class QLabel;

namespace fenlor {

class FeuillesApercu;

class CPreviewToolBar : public QToolBar {
  Q_OBJECT
 public:
  /// The sheets outlive the bar; it moves in them, and follows what changes there.
  explicit CPreviewToolBar(FeuillesApercu& feuilles, QWidget* parent = nullptr);
  /// For pages that have one style only.
  void SansStyle() { m_soignee->setVisible(false); }
  void MontreStyle(bool soignee) { m_soignee->setChecked(soignee); }

 Q_SIGNALS:
  void Imprime();
  void Exporte();
  void AutreStyle();
  void Ferme();

 private:
  void Actualise();

  FeuillesApercu& m_feuilles;
  QAction *m_unePage, *m_deuxPages, *m_premiere, *m_precedente, *m_suivante, *m_derniere, *m_plus, *m_moins,
      *m_ajuste, *m_soignee;
  QLabel* m_page;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

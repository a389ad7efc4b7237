#include "ui/dialogabort.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/images.h"
#include "ui/texteqt.h"
#include "ui/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int largeurTexte = 46;  ///< in characters
constexpr int lignesTexte = 5;

}  // namespace

CDialogAbort::CDialogAbort(const QString& titre, bool annulable, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      m_texte(new QLabel(this)),
      m_pourcent(new QLabel(this)),
      m_barre(new QProgressBar(this)),
      m_annulable(annulable) {
  setObjectName(u"DialogAbort"_s);
  setWindowTitle(titre);
  m_texte->setObjectName(u"texte"_s);
  m_pourcent->setObjectName(u"pourcent"_s);
  m_barre->setObjectName(u"barre"_s);

  m_texte->setTextFormat(Qt::PlainText);
  m_texte->setWordWrap(true);
  m_texte->setAlignment(Qt::AlignCenter);
  m_texte->setMinimumSize(fontMetrics().averageCharWidth() * largeurTexte,
                          fontMetrics().lineSpacing() * lignesTexte);
  m_barre->setRange(0, 100);
  m_barre->setValue(0);
  m_barre->setTextVisible(false);
  m_barre->setAccessibleName(titre);
  m_pourcent->setMinimumWidth(fontMetrics().horizontalAdvance(TexteQ(FormatPourcent, {"100"})));
  m_pourcent->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_pourcent->setText(TexteQ(FormatPourcent, {"0"}));

  auto* colonne = new QVBoxLayout(this);
  colonne->setSpacing(fontMetrics().height() * 2 / 3);
  colonne->addWidget(m_texte, 1);
  auto* rangee = new QHBoxLayout;
  rangee->addWidget(m_barre, 1);
  rangee->addWidget(m_pourcent);
  colonne->addLayout(rangee);
  if (!annulable) return;
  auto* bas = new QHBoxLayout;
  auto* annuler = new QPushButton(Image("annuler"), u"A&nnuler"_s, this);
  annuler->setObjectName(u"annuler"_s);
  annuler->setDefault(true);
  connect(annuler, &QPushButton::clicked, this, [this] { m_arrete = true; });
  bas->addStretch(1);
  bas->addWidget(annuler);
  bas->addStretch(1);
  colonne->addLayout(bas);
}

void CDialogAbort::PoseTexte(const QString& texte) {
  m_texte->setText(texte);
  const int voulue = m_texte->heightForWidth(m_texte->minimumWidth());
  if (voulue > m_texte->minimumHeight()) m_texte->setMinimumHeight(voulue);
}

void CDialogAbort::MontreBarre(bool visible) {
  m_barre->setVisible(visible);
  m_pourcent->setVisible(visible);
}

void CDialogAbort::PosePourcent(unsigned pourcent) {
  m_barre->setValue(int(pourcent));
  m_pourcent->setText(TexteQ(FormatPourcent, {std::to_string(pourcent)}));
}

void CDialogAbort::reject() {
  if (m_annulable) m_arrete = true;
}

void CDialogAbort::closeEvent(QCloseEvent* evenement) {
  evenement->ignore();
  reject();
}

}  // namespace fenlor

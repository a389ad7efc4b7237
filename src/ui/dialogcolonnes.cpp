#include "ui/dialogcolonnes.h"

#include <QShortcut>
#include <algorithm>

#include "ui/casesvisibles.h"
#include "ui/formulaire.h"
#include "ui/texteqt.h"
#include "ui/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CDialogColonnes::CDialogColonnes(ContexteUi& contexte, TableListe& table, QWidget* parent)
    : CZNDialog(contexte, TexteQ(TitreColonnes), "DialogColonnes", parent), m_table(table) {
  m_monter.setText(u"&Monter"_s);
  m_monter.setToolTip(u"Alt+Haut"_s);
  m_descendre.setText(u"&Descendre"_s);
  m_descendre.setToolTip(u"Alt+Bas"_s);
  m_defaut.setText(u"Comme à l'o&rigine"_s);
  m_liste.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  Formulaire formulaire{Zone()};
  formulaire.Texte(u"De gauche à droite ; une case cochée montre la colonne."_s)
      .Seul(m_liste, "colonnes", true)
      .Rangee({&m_monter, &m_descendre, &m_defaut});
  m_liste.setAccessibleName(u"Colonnes"_s);
  m_monter.setObjectName(u"monter"_s);
  m_descendre.setObjectName(u"descendre"_s);
  m_defaut.setObjectName(u"origine"_s);
  connect(&m_monter, &QPushButton::clicked, this, [this] { Deplace(-1); });
  connect(&m_descendre, &QPushButton::clicked, this, [this] { Deplace(1); });
  connect(&m_defaut, &QPushButton::clicked, this, [this] {
    std::vector<TableListe::ColonneRangee> colonnes = m_table.Colonnes();
    std::sort(colonnes.begin(), colonnes.end(), [](const auto& a, const auto& b) { return a.rang < b.rang; });
    for (TableListe::ColonneRangee& colonne : colonnes) colonne.montree = true;
    Remplit(colonnes);
    m_origine = true;
  });
  const auto touche = [this](const QKeySequence& sequence, int pas) {
    connect(new QShortcut(sequence, &m_liste, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            this, [this, pas] { Deplace(pas); });
  };
  touche(Qt::ALT | Qt::Key_Up, -1);
  touche(Qt::ALT | Qt::Key_Down, 1);
  m_liste.setItemDelegate(new CasesVisibles(&m_liste));
  connect(&m_liste, &QListWidget::currentRowChanged, this, [this] { ActualiseBoutons(); });
  connect(&m_liste, &QListWidget::itemChanged, this, [this] { m_origine = false; });
  Remplit(m_table.Colonnes());
  Boutons(Mode::Simple);
}

void CDialogColonnes::Remplit(const std::vector<TableListe::ColonneRangee>& colonnes) {
  m_liste.clear();
  for (const TableListe::ColonneRangee& colonne : colonnes) {
    auto* ligne = new QListWidgetItem(colonne.titre, &m_liste);
    ligne->setData(Qt::UserRole, colonne.rang);
    ligne->setCheckState(colonne.montree ? Qt::Checked : Qt::Unchecked);
  }
  m_liste.setCurrentRow(0);
}

std::vector<TableListe::ColonneRangee> CDialogColonnes::Lues() const {
  std::vector<TableListe::ColonneRangee> colonnes;
  for (int i = 0; i < m_liste.count(); ++i) {
    const QListWidgetItem& ligne = *m_liste.item(i);
    colonnes.push_back({ligne.data(Qt::UserRole).toInt(), ligne.text(), ligne.checkState() == Qt::Checked});
  }
  return colonnes;
}

void CDialogColonnes::Deplace(int pas) {
  const int ligne = m_liste.currentRow(), vers = ligne + pas;
  if (ligne < 0 || vers < 0 || vers >= m_liste.count()) return;
  m_liste.insertItem(vers, m_liste.takeItem(ligne));
  m_liste.setCurrentRow(vers);
  m_origine = false;
}

void CDialogColonnes::ActualiseBoutons() {
  m_monter.setEnabled(m_liste.currentRow() > 0);
  m_descendre.setEnabled(m_liste.currentRow() >= 0 && m_liste.currentRow() + 1 < m_liste.count());
}

bool CDialogColonnes::Enregistre() {
  const std::vector<TableListe::ColonneRangee> lues = Lues();
  if (std::none_of(lues.begin(), lues.end(), [](const auto& colonne) { return colonne.montree; }))
    return Refuse(ErrAucuneColonne, m_liste);
  if (m_origine)
    m_table.RangeCommeALOrigine();
  else
    m_table.RangeColonnes(lues);
  return true;
}

}  // namespace fenlor

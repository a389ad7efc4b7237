#include "forms/journal/dialogmonth.h"

#include <QKeyEvent>
#include <algorithm>

#include "forms/journal/textes.h"
#include "session/periodes.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

namespace {

constexpr int moisParAn = 12;
constexpr std::size_t chiffresAnnee = 4;

std::string TexteAnnee(Date jour) {
  const std::string annee = std::to_string(Annee(jour));
  return std::string(chiffresAnnee - std::min(chiffresAnnee, annee.size()), '0') + annee;
}

}  // namespace

void DialogListeMois::Ouvre(int choisi) {
  m_liste.setMinimumHeight(moisParAn * m_liste.sizeHintForRow(0) + 2 * m_liste.frameWidth());
  m_liste.setMinimumWidth(m_liste.fontMetrics().averageCharWidth() * 40);
  m_liste.setAccessibleName(u"Mois"_s);
  m_liste.setCurrentRow(choisi);
  connect(&m_liste, &QListWidget::itemDoubleClicked, this, [this] { accept(); });
  Boutons(Mode::Simple);
}

bool DialogListeMois::EstChoisi() const {
  return m_liste.currentItem() && m_liste.currentItem()->isSelected();
}

void DialogListeMois::keyPressEvent(QKeyEvent* evenement) {
  const bool entree = evenement->key() == Qt::Key_Return || evenement->key() == Qt::Key_Enter;
  if (!entree || !m_liste.hasFocus() || evenement->modifiers() & ~Qt::KeypadModifier)
    return CZNDialog::keyPressEvent(evenement);
  evenement->accept();
  accept();
}

CDialogMonth::CDialogMonth(ContexteUi& contexte, int choisi, QWidget* parent)
    : DialogListeMois(contexte, u"Ecritures du mois de..."_s, "DialogMonth", parent) {
  Formulaire(Zone()).Seul(m_liste, "mois", true);
  for (const Date jour : MoisExercice(App()))
    m_liste.addItem(TexteQ(FormatMoisAnnee, {TexteAnnee(jour), NomMois(Mois(jour))}));
  Ouvre(choisi);
}

void CDialogMonth::accept() { EstChoisi() ? CZNDialog::accept() : reject(); }

ZNDialogChangeMois::ZNDialogChangeMois(ContexteUi& contexte, unsigned mois, QWidget* parent)
    : DialogListeMois(contexte, u"Changer le mois"_s, "DialogChangeMois", parent) {
  Formulaire(Zone())
      .Texte(u"Sélectionner le mois vers lequel vous désirez transférer ces écritures"_s)
      .Seul(m_liste, "mois", true);
  for (unsigned rang = 1; rang <= moisParAn; ++rang) m_liste.addItem(Q(NomMois(rang)));
  Ouvre(static_cast<int>(mois) - 1);
}

}  // namespace fenlor

#include "forms/journal/bornesmontants.h"

#include "session/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

void BornesMontants::Declare(Formulaire& formulaire, const QString& tous) {
  m_franc.setText(TexteQ(MotFranc));
  m_euro.setText(TexteQ(MotEuro));
  m_min.setAccessibleName(u"Montants : entre"_s);
  m_max.setAccessibleName(u"Montants : et"_s);
  formulaire.Groupe(u"Montants"_s)
      .Case(m_tous, tous, "tousMontants")
      .SurChangement([this] { Permet(); })
      .Champ(u"Entre : "_s, m_min, "montantMin")
      .Largeur(12)
      .Suite(u"et :"_s, m_max, "montantMax")
      .Largeur(12)
      .ACote(m_franc, "franc")
      .ACote(m_euro, "euro")
      .FinGroupe();
}

void BornesMontants::Pose(bool tous, bool euro) {
  m_tous.setChecked(tous);
  (euro ? m_euro : m_franc).setChecked(true);
  Permet();
}

void BornesMontants::PoseBornes(f64 min, f64 max) {
  m_min.Pose(min);
  m_max.Pose(max);
}

void BornesMontants::Permet() {
  for (QWidget* champ : std::initializer_list<QWidget*>{&m_min, &m_max, &m_franc, &m_euro})
    champ->setEnabled(!Tous());
}

}  // namespace fenlor

#include "ui/choixmonnaie.h"

#include <utility>

#include "ui/radios.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

ChoixMonnaie::ChoixMonnaie(CFenlorApp& app) : m_app(app) {
  UnDes({&m_franc, &m_euro});
  m_euro.setChecked(true);
}

void ChoixMonnaie::Declare(Formulaire& formulaire) {
  m_euro.setText(u"Euro"_s);
  formulaire.Groupe(u"Monnaie"_s).Case(m_franc, u"Franc"_s, "franc").ACote(m_euro, "euro").FinGroupe();
}

void ChoixMonnaie::Pose(bool euro) {
  Bouton(euro).setChecked(true);
  m_dite = euro;
}

bool ChoixMonnaie::Ouvre(Date date) {
  m_francPermis = date < m_app.Reglages.GetLimiteFranc();
  const bool passe = !m_francPermis && !Euro();
  if (passe) Pose(true);
  Montre();
  return passe;
}

void ChoixMonnaie::QuitteDate(Date date) {
  if (date < m_app.Reglages.GetLimiteFranc())
    m_francPermis = true;
  else if (Euro())
    m_francPermis = false;
  Montre();
}

void ChoixMonnaie::Permet(bool permis) {
  m_permis = permis;
  Montre();
}

void ChoixMonnaie::SurChangement(std::function<void()> action) {
  for (QRadioButton* bouton : {&m_franc, &m_euro})
    QObject::connect(bouton, &QRadioButton::clicked, bouton, [this, action] {
      if (std::exchange(m_dite, Euro()) != Euro()) action();
    });
}

void ChoixMonnaie::Montre() {
  m_franc.setEnabled(m_permis && m_francPermis);
  m_euro.setEnabled(m_permis);
}

}  // namespace fenlor

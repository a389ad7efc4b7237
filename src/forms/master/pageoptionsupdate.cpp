#include "forms/master/pageoptionsupdate.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int TailleApplication = 40;
}

CPageOptionsUpdate::CPageOptionsUpdate(ContexteUi& contexte)
    : CZNPage(contexte, u"Mises à jour"_s, "PageOptionsUpdate") {
  m_jours.setRange(1, 365);
  Formulaire{*this}
      .Groupe(u"Vérifier les mises à jour"_s)
      .Case(m_demarrage, u"Au &démarrage tous les :"_s, "demarrage")
      .ACote(m_jours, "jours")
      .Largeur(3)
      .ACote(*new QLabel(u"jours"_s))
      .Case(m_finSession, u"Uniquement en &fin de session"_s, "finSession")
      .Case(m_jamais, u"&Jamais"_s, "jamais")
      .FinGroupe()
      .Champ(u"&Application cible : "_s, m_application, "application")
      .Limite(TailleApplication)
      .Pousse();
  m_jours.setAccessibleName(u"Nombre de jours"_s);
  connect(&m_demarrage, &QRadioButton::toggled, &m_jours, &QWidget::setEnabled);
}

bool CPageOptionsUpdate::Charge() {
  const OptionsMiseAJour options = LitMiseAJour(App());
  m_demarrage.setChecked(options.mode == MiseAJourAuDemarrage);
  m_finSession.setChecked(options.mode == MiseAJourFinSession);
  m_jamais.setChecked(options.mode == MiseAJourJamais);
  m_jours.setEnabled(m_demarrage.isChecked());
  m_jours.setValue(options.jours);
  m_application.Pose(options.application);
  return true;
}

bool CPageOptionsUpdate::Enregistre() {
  const int mode = m_jamais.isChecked()       ? MiseAJourJamais
                   : m_finSession.isChecked() ? MiseAJourFinSession
                                              : MiseAJourAuDemarrage;
  if (EcritMiseAJour(App(), {mode, m_jours.value(), m_application.Valeur()})) return true;
  return App().Dit(App().EchecMagasin());
}

}  // namespace fenlor

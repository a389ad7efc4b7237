#include "forms/garde/pageprefsauvegardes.h"

#include "garde/optionssauvegarde.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPagePrefSauvegardes::CPagePrefSauvegardes(ContexteUi& contexte)
    : CZNPage(contexte, u"Sauvegardes"_s, "PagePrefSauvegardes"),
      m_formulaire(*this),
      m_dossier(m_formulaire,
                DestinationsIci(contexte.App, LitOptionsSauvegarde(contexte.App).dossier).dossiers,
                LitOptionsSauvegarde(contexte.App).dossier) {
  m_jours.setRange(1, ConservationMax);
  for (QSpinBox* nombre : {&m_semaines, &m_mois}) nombre->setRange(0, ConservationMax);
  m_formulaire
      .Case(m_finDeSession, u"A chaque &fin de session, sauvegarder tout le cabinet sans question"_s,
            "finDeSession")
      .Texte(
          u"Cette copie est protégée par le mot de passe de la dernière sauvegarde de la même session. Sans "
          u"sauvegarde protégée dans la session elle ne l'est pas : aucun mot de passe n'est retenu."_s)
      .Groupe(u"Garder la sauvegarde la plus récente de chacun des derniers"_s)
      .Champ(u"&Jours :"_s, m_jours, "jours")
      .Largeur(4)
      .Champ(u"Se&maines :"_s, m_semaines, "semaines")
      .Largeur(4)
      .Champ(u"Moi&s :"_s, m_mois, "mois")
      .Largeur(4)
      .FinGroupe()
      .Texte(
          u"Les autres sauvegardes du dossier sont retirées après chaque sauvegarde réussie ; la dernière "
          u"bonne reste toujours."_s)
      .Pousse();
}

bool CPagePrefSauvegardes::Charge() {
  const OptionsSauvegarde options = LitOptionsSauvegarde(App());
  m_finDeSession.setChecked(options.finDeSession);
  m_jours.setValue(static_cast<int>(options.conservation.jours));
  m_semaines.setValue(static_cast<int>(options.conservation.semaines));
  m_mois.setValue(static_cast<int>(options.conservation.mois));
  return true;
}

bool CPagePrefSauvegardes::Controle() {
  // A drive that is not there today may be chosen all the same, but not typed wrong: without it there is
  // none.
  const std::string dossier = m_dossier.Dossier();
  if (!Refuse(PrepareDestination(App(), DestinationsIci(App(), {}), dossier))) return false;
  if (dossier.empty() ? !m_finDeSession.isChecked() : dossier == LitOptionsSauvegarde(App()).dossier)
    return true;
  return Refuse(m_dossier.Controle());
}

bool CPagePrefSauvegardes::Enregistre() {
  const auto nombre = [](const QSpinBox& champ) { return static_cast<unsigned>(champ.value()); };
  OptionsSauvegarde options;
  options.dossier = m_dossier.Dossier();
  options.finDeSession = m_finDeSession.isChecked();
  options.conservation = {nombre(m_jours), nombre(m_semaines), nombre(m_mois)};
  return Refuse(EcritOptionsSauvegarde(App(), options));
}

}  // namespace fenlor

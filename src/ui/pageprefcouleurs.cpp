#include "ui/pageprefcouleurs.h"

#include "core/cles.h"
#include "core/textes.h"
#include "ui/texteqt.h"
#include "ui/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int largeurBoite = 14;  ///< in characters
constexpr TexteFixe cles[] = {CleCouleurBordures, CleCouleurImpaire, CleCouleurPaires, CleCouleurFond};

}  // namespace

CPagePrefCouleurs::CPagePrefCouleurs(ContexteUi& contexte)
    : CZNPage(contexte, u"Couleurs"_s, "PagePrefCouleurs") {
  Formulaire f{*this};
  f.Case(m_systeme, u"Utiliser les couleurs système par défaut"_s, "couleurSysteme");
  f.Groupe(u"Couleurs des journaux"_s)
      .Champ(u"Couleur des &bordures :"_s, m_couleurs[0], "bordures")
      .Largeur(largeurBoite)
      .Champ(u"Couleur des lignes &impaires :"_s, m_couleurs[1], "impaires")
      .Largeur(largeurBoite)
      .Champ(u"Couleur des lignes &paires :"_s, m_couleurs[2], "paires")
      .Largeur(largeurBoite)
      .Champ(u"Couleur du &fond :"_s, m_couleurs[3], "fond")
      .Largeur(largeurBoite)
      .FinGroupe()
      .Pousse();
  for (BoutonCouleur& couleur : m_couleurs)
    connect(&m_systeme, &QCheckBox::toggled, &couleur, &QWidget::setDisabled);
}

bool CPagePrefCouleurs::Charge() {
  const auto lit = [&](const TexteFixe& cle) {
    return App().Reglages.LitIni(Texte(SecPreferences), Texte(cle));
  };
  m_systeme.setChecked(Parametres::IsOui(lit(CleCouleurSysteme)));
  for (std::size_t i = 0; i < m_couleurs.size(); ++i) m_couleurs[i].Pose(CouleurReglee(App(), cles[i]));
  return true;
}

bool CPagePrefCouleurs::Enregistre() {
  std::vector<Profil::Changement> changements;
  const auto ecrit = [&](const TexteFixe& cle, const std::string& valeur) {
    changements.push_back({Texte(SecPreferences), Texte(cle), valeur});
  };
  ecrit(CleCouleurSysteme, Texte(m_systeme.isChecked() ? MotOui : MotNon));
  for (std::size_t i = 0; i < m_couleurs.size() && !m_systeme.isChecked(); ++i)
    ecrit(cles[i], EcritCouleur(m_couleurs[i].Couleur()));
  return App().Magasin.Reglages().Ecrit(changements) || DitEchecReglages(App());
}

}  // namespace fenlor

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
  m_jeu.addItems({u"Classique"_s, u"Couleurs du bureau"_s, u"Contraste élevé"_s});
  f.Champ(u"&Jeu de couleurs :"_s, m_jeu, "jeu")
      .Case(m_systeme, u"Utiliser les couleurs système par défaut"_s, "couleurSysteme");
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
  connect(&m_jeu, &QComboBox::currentIndexChanged, this, &CPagePrefCouleurs::Suit);
  connect(&m_systeme, &QCheckBox::toggled, this, [this](bool coche) {
    if (coche != (Jeu() == JeuCouleurs::Bureau)) m_jeu.setCurrentIndex(coche ? 1 : 0);
  });
}

void CPagePrefCouleurs::Suit() {
  m_systeme.setChecked(Jeu() == JeuCouleurs::Bureau);
  m_systeme.setEnabled(Jeu() != JeuCouleurs::Contraste);
  for (BoutonCouleur& couleur : m_couleurs) couleur.setEnabled(Jeu() == JeuCouleurs::Classique);
}

bool CPagePrefCouleurs::Charge() {
  m_jeu.setCurrentIndex(static_cast<int>(JeuRegle(App())));
  Suit();
  for (std::size_t i = 0; i < m_couleurs.size(); ++i) m_couleurs[i].Pose(CouleurReglee(App(), cles[i]));
  return true;
}

bool CPagePrefCouleurs::Enregistre() {
  std::vector<Profil::Changement> changements;
  const auto ecrit = [&](const TexteFixe& cle, const std::string& valeur) {
    changements.push_back({Texte(SecPreferences), Texte(cle), valeur});
  };
  const bool contraste = Jeu() == JeuCouleurs::Contraste;
  // "Couleur système" keeps what it says while the contrast rules.
  if (contraste || Parametres::IsOui(App().Reglages.LitIni(Texte(SecPreferences), Texte(CleContrasteEleve))))
    ecrit(CleContrasteEleve, Texte(contraste ? MotOui : MotNon));
  if (!contraste) ecrit(CleCouleurSysteme, Texte(Jeu() == JeuCouleurs::Bureau ? MotOui : MotNon));
  for (std::size_t i = 0; i < m_couleurs.size() && Jeu() == JeuCouleurs::Classique; ++i)
    ecrit(cles[i], EcritCouleur(m_couleurs[i].Couleur()));
  return App().Magasin.Reglages().Ecrit(changements) || DitEchecReglages(App());
}

}  // namespace fenlor

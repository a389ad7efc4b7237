#include "forms/master/dialogtauxeuro.h"

#include "core/valeurs.h"
#include "store/texte1252.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int TailleTaux = 10, TailleDate = 10, LargeurListe = 44, LignesListe = 8;
}

CDialogTauxEuro::CDialogTauxEuro(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, u"Taux de conversion à l'EURO"_s, "DialogTauxEuro", parent),
      m_lignes(LitTauxEuro(contexte.App)),
      m_liste(
          contexte, ListeEditee::Genre::Page, u"Taux de conversion"_s,
          {[this] { Saisit(-1); }, [this] { Saisit(m_liste.Table().RangChoisi()); }, [this] { Supprime(); },
           [](int ligne) {
             return ListeEditee::Permis{true, ligne >= 0, ligne >= 0};
           }}) {
  m_liste.Table().Suit<TauxEuro>(
      {{"Date de validité"_w, 40, [](const TauxEuro& t) { return StrDate(t.date); }},
       {"Taux", 60,
        [this](const TauxEuro& t) {
          return FormatMontant(t.taux, DecimalesTauxEuro, App().Reglages.SeparateurDecimal());
        },
        Cote::Droite}},
      m_lignes);
  Formulaire{Zone()}
      .Texte(u"Valeur d'un Euro en Francs, à partir de chaque date."_s)
      .Seul(m_liste, "taux", true);
  const QFontMetrics mesure(font());
  m_liste.setMinimumSize(LargeurListe * mesure.averageCharWidth(), LignesListe * mesure.height() * 3 / 2);
  Boutons(Mode::Simple);
  m_liste.Relit(0);
}

void CDialogTauxEuro::Saisit(int modifie) {
  CDialogSaisieTaux saisie(Contexte(), m_lignes, modifie, this);
  if (saisie.Execute()) m_liste.Relit(PlaceTauxEuro(m_lignes, saisie.Valeur(), modifie));
}

void CDialogTauxEuro::Supprime() {
  const int ligne = m_liste.Table().RangChoisi();
  m_lignes.erase(m_lignes.begin() + ligne);
  m_liste.Relit(ligne);
}

bool CDialogTauxEuro::Enregistre() { return EcritTauxEuro(App(), m_lignes) || DitEchecReglages(App()); }

CDialogSaisieTaux::CDialogSaisieTaux(ContexteUi& contexte, const std::vector<TauxEuro>& lignes, int modifie,
                                     QWidget* parent)
    : CZNDialog(contexte, u"Taux de conversion"_s, "DialogSaisieTaux", parent),
      m_lignes(lignes),
      m_modifie(modifie),
      m_taux(contexte.App.Reglages) {
  m_taux.PoseDecimales(DecimalesTauxEuro);
  Formulaire{Zone()}
      .Champ(u"&Date de validité :"_s, m_date, "date")
      .Limite(TailleDate)
      .Champ(u"&Taux :"_s, m_taux, "taux")
      .Limite(TailleTaux)
      .Pousse();
  const Date aujourdhui = App().Magasin.Today();
  m_date.PoseReference(aujourdhui);
  if (modifie < 0) {
    m_date.Pose(aujourdhui);
  } else {
    m_date.Pose(lignes[static_cast<std::size_t>(modifie)].date);
    m_taux.Pose(lignes[static_cast<std::size_t>(modifie)].taux);
  }
  Boutons(Mode::Simple);
}

TauxEuro CDialogSaisieTaux::Valeur() const { return {m_date.Valeur(), m_taux.Valeur()}; }

bool CDialogSaisieTaux::Enregistre() { return Refuse(ControleTauxEuro(m_lignes, Valeur(), m_modifie)); }

}  // namespace fenlor

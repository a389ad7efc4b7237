#include "forms/journal/dialogcorbeille.h"

#include <QPushButton>

#include "core/valeurs.h"
#include "store/texte1252.h"
#include "ui/tableliste.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int caracteres = 90;  ///< width of the list

TableColonnes<Suppression> Colonnes(bool euro) {
  return {{"Supprimée le"_w, 18, [](const Suppression& s) { return StrDate(s.date); }},
          {"Date", 16, [](const Suppression& s) { return StrDate(s.lignes.front().Date); }},
          {"Libellé"_w, 46, [](const Suppression& s) { return LitTexte(s.lignes.front().Libelle); }},
          {"Montant", 20,
           [euro](const Suppression& s) {
             return euro ? FormatEuro(s.Montant(true)) : FormatFranc(s.Montant(false));
           },
           Cote::Droite}};
}

}  // namespace

CDialogCorbeille::CDialogCorbeille(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, u"Corbeille"_s, "DialogCorbeille", parent), m_liste(new CZNListCtrl(contexte)) {
  App().Dit(LitCorbeille(App(), m_suppressions));
  m_liste->setAccessibleName(u"Ecritures supprimées"_s);
  m_liste->setSelectionMode(QAbstractItemView::ExtendedSelection);
  m_liste->Suit(Colonnes(App().Reglages.IsEuro()), m_suppressions);
  m_liste->Relit(m_suppressions.empty() ? -1 : 0);
  m_liste->setMinimumWidth(caracteres * m_liste->fontMetrics().averageCharWidth());
  Formulaire{Zone()}
      .Texte(
          u"Les écritures supprimées depuis 90 jours. \"Restaurer\" enregistre à nouveau celles qui sont "
          u"choisies."_s)
      .Seul(*m_liste, "liste", true);
  Boutons(Mode::Simple);
  auto* restaurer = findChild<QPushButton*>(u"ok"_s);
  restaurer->setText(u"&Restaurer"_s);
  restaurer->setEnabled(m_liste->LigneChoisie() >= 0);
  connect(m_liste, &TableListe::SelectionChangee, this,
          [this, restaurer] { restaurer->setEnabled(m_liste->LigneChoisie() >= 0); });
  AjouteAide();
}

CDialogCorbeille::~CDialogCorbeille() = default;

bool CDialogCorbeille::Enregistre() {
  for (const int rang : m_liste->RangsChoisis()) {
    u32 mouvement = 0;
    if (const Refus refus =
            RestaureSuppression(App(), m_suppressions.at(static_cast<std::size_t>(rang)).numero, mouvement))
      return Refuse(refus);
  }
  return true;
}

}  // namespace fenlor

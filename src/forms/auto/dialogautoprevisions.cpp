#include "forms/auto/dialogautoprevisions.h"

#include <numeric>

#include "auto/textes.h"
#include "core/valeurs.h"
#include "store/texte1252.h"
#include "ui/tableliste.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int caracteresPrevisions = 90, lignesVues = 16;
}

CDialogAutoPrevisions::CDialogAutoPrevisions(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, TexteQ(TitrePrevisions), "DialogAutoPrevisions", parent),
      m_liste(new CZNListCtrl(contexte)) {
  m_lu = App().Dit(CalculePrevisions(App(), m_previsions));
  DeclareListe();
  Formulaire{Zone()}.Seul(*m_liste, "liste", true);
  Boutons(Mode::Consultation);
  AjouteIssuesEtat();
  AjouteAide();
}

CDialogAutoPrevisions::~CDialogAutoPrevisions() = default;

void CDialogAutoPrevisions::showEvent(QShowEvent* evenement) {
  CZNDialog::showEvent(evenement);
  m_liste->setFocus(Qt::OtherFocusReason);
}

int CDialogAutoPrevisions::exec() { return m_lu ? CZNDialog::exec() : static_cast<int>(Rejected); }

void CDialogAutoPrevisions::DeclareListe() {
  m_liste->setAccessibleName(windowTitle());
  m_rangs.resize(m_previsions.lignes.size());
  std::iota(m_rangs.begin(), m_rangs.end(), std::size_t{0});
  const auto montant = [this](f64 LignePrevision::*champ) {
    return [this, champ](const std::size_t& rang) {
      return (m_previsions.euro ? FormatEuro : FormatFranc)(m_previsions.lignes[rang].*champ);
    };
  };
  m_liste->Suit<std::size_t>(
      {{"Mois", 20, [this](const std::size_t& rang) { return MoisPrevision(m_previsions, rang); }},
       {"Trésorerie"_w, 26,
        [this](const std::size_t& rang) { return TresoreriePrevision(m_previsions.lignes[rang]); }},
       {"Recettes", 18, montant(&LignePrevision::recettes), Cote::Droite},
       {"Dépenses"_w, 18, montant(&LignePrevision::depenses), Cote::Droite},
       {"Solde", 18, montant(&LignePrevision::solde), Cote::Droite}},
      m_rangs);
  m_liste->Relit(0);
  m_liste->setMinimumSize(caracteresPrevisions * m_liste->fontMetrics().averageCharWidth(),
                          lignesVues * m_liste->fontMetrics().height());
}

}  // namespace fenlor

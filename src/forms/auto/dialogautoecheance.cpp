#include "forms/auto/dialogautoecheance.h"

#include <QPushButton>
#include <numeric>

#include "auto/textes.h"
#include "core/valeurs.h"
#include "store/texte1252.h"
#include "ui/tableliste.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int caracteresEcheances = 90;  ///< width of the list

TableColonnes<EcheanceAnnoncee> Colonnes() {
  const auto montant = [](bool recette) {
    return [recette](const EcheanceAnnoncee& e) {
      if ((e.genre == JournalRecettes) != recette) return std::string();
      return e.euro ? FormatEuro(e.montant) : FormatFranc(e.montant);
    };
  };
  return {{"Date", 20, [](const EcheanceAnnoncee& e) { return StrDate(e.date); }},
          {"Libellé"_w, 20, [](const EcheanceAnnoncee& e) { return e.libelle; }},
          {"Trésorerie"_w, 20, [](const EcheanceAnnoncee& e) { return e.tresorerie; }},
          {"Recette", 20, montant(true), Cote::Droite},
          {"Dépense"_w, 20, montant(false), Cote::Droite}};
}

}  // namespace

CDialogAutoEcheance::CDialogAutoEcheance(ContexteUi& contexte, std::vector<EcheanceAnnoncee> annoncees,
                                         QWidget* parent)
    : CZNDialog(contexte, u"Transactions à échéances"_s, "DialogAutoEcheance", parent),
      m_annoncees(std::move(annoncees)),
      m_liste(new CZNListCtrl(contexte)) {
  m_liste->setAccessibleName(u"Transactions"_s);
  m_liste->setSelectionMode(QAbstractItemView::ExtendedSelection);
  m_liste->Suit(Colonnes(), m_annoncees);
  m_liste->Relit(-1);
  m_liste->setMinimumWidth(caracteresEcheances * m_liste->fontMetrics().averageCharWidth());
  Formulaire{Zone()}
      .Texte(
          u"Ces transactions sont à échéance. Cliquez sur \"Enregistrer\" pour transférer ces écritures dans "
          u"les journaux, cliquez sur \"Supprimer\" pour enlever les écritures sélectionnées de la liste."_s)
      .Seul(*m_liste, "liste", true);
  Boutons(Mode::Simple);
  findChild<QPushButton*>(u"ok"_s)->setText(u"&Enregistrer"_s);
  m_supprimer = &AjouteBouton(u"&Supprimer"_s, "supprimer");
  m_supprimer->setEnabled(false);
  connect(m_supprimer, &QPushButton::clicked, this, &CDialogAutoEcheance::Supprime);
  connect(m_liste, &TableListe::SelectionChangee, this,
          [this] { m_supprimer->setEnabled(m_liste->LigneChoisie() >= 0); });
  AjouteAide();
}

CDialogAutoEcheance::~CDialogAutoEcheance() = default;

void CDialogAutoEcheance::Supprime() {
  const std::vector<int> lignes = m_liste->RangsChoisis();
  std::vector<int> restees;
  for (std::size_t i = 0; i < lignes.size(); ++i) {
    const int rang = lignes[i] - static_cast<int>(i - restees.size());
    if (App().MessageId(BoutonsOuiNon | IconeQuestion, QuestionSupprimeEcheance) == RepOui)
      m_annoncees.erase(m_annoncees.begin() + rang);
    else
      restees.push_back(rang);
  }
  m_liste->Relit(-1);
  for (const int rang : restees)
    m_liste->selectionModel()->select(
        m_liste->model()->index(m_liste->Modele().LigneDe(static_cast<TableListe::Donnee>(rang)), 0),
        QItemSelectionModel::Select | QItemSelectionModel::Rows);
  m_supprimer->setEnabled(!restees.empty());
  m_liste->setFocus();
}

bool CDialogAutoEcheance::Enregistre() {
  std::vector<std::size_t> rangs(m_annoncees.size());
  std::iota(rangs.begin(), rangs.end(), std::size_t{0});
  BilanEcheances bilan;
  if (!Refuse(ConfirmeEcheances(App(), m_annoncees, rangs, bilan))) return false;
  for (const Refus& refus : bilan.refus) App().Dit(refus);
  return true;
}

void CalculeEcheances(ContexteUi& contexte, bool signaler, const std::function<void()>& avant) {
  CFenlorApp& app = contexte.App;
  BilanEcheances bilan;
  const Refus refus = CalculeEcheances(app, bilan);
  if (avant && (refus || !bilan.refus.empty() || !bilan.annoncees.empty())) avant();
  for (const Refus& unModele : bilan.refus) app.Dit(unModele);
  if (!app.Dit(refus)) return;
  contexte.Cadre.Actualise();
  if (!bilan.annoncees.empty())
    CDialogAutoEcheance(contexte, std::move(bilan.annoncees), contexte.Cadre.Cadre()).Execute();
  else if (signaler)
    app.MessageId(BoutonsOk | IconeInformation, MessageSansEcheance);
}

void CommandeEcheances(ContexteUi& contexte) { CalculeEcheances(contexte, true); }

}  // namespace fenlor

#include "ui/cznlistview.h"

#include <QVBoxLayout>

#include "core/valeurs.h"
#include "ui/dialogcolonnes.h"
#include "ui/textes.h"

namespace fenlor {

namespace {

constexpr int largeurMax = 9999;

/// Widths from 1 to 9999 separated by commas; empty when one is none.
std::vector<int> LitLargeurs(const std::string& texte) {
  std::vector<int> largeurs;
  for (unsigned i = 0; i < ComptePartie(texte, ','); ++i) {
    const std::string champ = ChampTexte(i, texte, ',');
    const bool nombre = champ.find_first_not_of("0123456789") == std::string::npos;
    const int largeur = nombre ? TexteVersEntier(champ) : 0;
    if (largeur < 1 || largeur > largeurMax) return {};
    largeurs.push_back(largeur);
  }
  return largeurs;
}

}  // namespace

void RestaureRangement(Vue& vue, TableListe& table) {
  if (CabinetOuvert(vue.App()))
    table.PoseRangement(vue.App().Reglages.LitIni(vue.Titre(), Texte(CleOrdreColonnes)));
}

void MontreColonnes(Vue& vue, TableListe& table) { CDialogColonnes(vue.Contexte(), table, &vue).exec(); }

void SauveRangement(Vue& vue, const TableListe& table) {
  if (!CabinetOuvert(vue.App())) return;
  const std::string rangement = table.Rangement();
  if (vue.App().Reglages.LitIni(vue.Titre(), Texte(CleOrdreColonnes)) != rangement)
    vue.App().Reglages.EcritIni(vue.Titre(), Texte(CleOrdreColonnes), rangement);
}

CZNListView::CZNListView(ContexteUi& contexte, const std::string& titre, u32 bit, TableListe* table)
    : Vue(contexte, titre, bit), m_table(table ? table : new TableListe(contexte)) {
  auto* disposition = new QVBoxLayout(this);
  disposition->setContentsMargins(0, 0, 0, 0);
  disposition->addWidget(m_table);
  m_table->setObjectName(QStringLiteral("table"));
  m_table->setAccessibleName(windowTitle());
  m_table->setFrameShape(QFrame::NoFrame);
  m_table->setContextMenuPolicy(Qt::CustomContextMenu);
  setFocusProxy(m_table);

  m_table->PoseTriable(true);
  // A list of its own kind may have titles over several columns.
  if (!table) m_table->PermetColonnes();
  m_table->SurActivation([this] { Active(); });
  Declare(
      {{CmdCopier, [this] { m_table->Copie(); }, [this] { return m_table->LigneChoisie() >= 0; }},
       {CmdCopierTout, [this] { m_table->CopieTout(); }, [this] { return m_table->Modele().NbLignes() > 0; }},
       {CmdFiltrer, [this] { m_table->OuvreFiltre(); }}});
  if (!table) Declare({{CmdColonnes, [this] { MontreColonnes(*this, *m_table); }}});
  connect(m_table, &TableListe::SelectionChangee, this, &Vue::EtatChange);
  connect(m_table, &QWidget::customContextMenuRequested, this, [this](const QPoint& point) {
    const std::vector<unsigned> menu = MenuContextuel();
    if (!menu.empty()) Q_EMIT MenuDemande(m_table->viewport()->mapToGlobal(point), menu);
  });
}

CZNListView::~CZNListView() { SauveLargeurs(); }

void CZNListView::Charge() {
  Vue::Charge();
  RestaureLargeurs();
  FillList();
  m_table->SelectionneLigne(0);
}

void CZNListView::Actualise() {
  m_table->Recharge([this] { FillList(); });
}

void CZNListView::AppliqueDessin() {
  m_table->ActualisePreferences();
  Actualise();
}

std::vector<unsigned> CZNListView::MenuContextuel() const {
  if (!Connait(CmdAjouter)) return {};
  return {CmdCopier, CmdCopierTout, CmdFiltrer, 0, CmdAjouter, CmdModifier, CmdSupprimer, 0, CmdAide};
}

void CZNListView::Active() {
  for (const unsigned commande : {CmdModifier, CmdAjouter})
    if (Disponible(commande)) return Execute(commande);
}

void CZNListView::RestaureLargeurs() {
  if (CabinetOuvert(App()))
    m_table->PoseLargeurs(LitLargeurs(App().Reglages.LitIni(Titre(), Texte(CleColonnes))));
  RestaureRangement(*this, *m_table);
}

void CZNListView::SauveLargeurs() {
  SauveRangement(*this, *m_table);
  if (!m_table->LargeursChangees() || !CabinetOuvert(App())) return;
  std::string texte;
  for (const int largeur : m_table->Largeurs()) texte += (texte.empty() ? "" : ",") + std::to_string(largeur);
  App().Reglages.EcritIni(Titre(), Texte(CleColonnes), texte);
}

}  // namespace fenlor

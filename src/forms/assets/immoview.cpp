#include "forms/assets/immoview.h"

#include <QScopedValueRollback>

#include "assets/cessions.h"
#include "assets/detail.h"
#include "assets/textes.h"
#include "core/erreursexercice.h"
#include "forms/assets/dialogacquisition.h"
#include "forms/assets/dialogamortissements.h"
#include "forms/assets/dialogcession.h"
#include "forms/assets/immolist.h"
#include "forms/assets/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

CImmoDoc::CImmoDoc(CFenlorApp& app)
    : m_immobilisations(app, app.PathCabinet), m_amortissements(app, app.PathCabinet) {
  m_immobilisations.OpenFile();
  m_amortissements.OpenFile();
}

bool CImmoDoc::Lit(Position position, Immobilisation& immo) {
  if (position == 0 || m_immobilisations.NbOuvertures == 0 || m_amortissements.NbOuvertures == 0)
    return false;
  if (!m_immobilisations.ReadRec(position)) return false;
  immo = *m_immobilisations.Rec;
  return true;
}

CImmoView::CImmoView(ContexteUi& contexte)
    : CZNListView(contexte, Texte(TitreRegistre), FenImmobilisations, new CImmoList(contexte)),
      m_document(contexte.App),
      m_liste(static_cast<CImmoList*>(&Table())) {
  m_liste->PoseTriable(false);
  m_liste->PoseLecture(
      [this](Position position, Immobilisation& immo) { return m_document.Lit(position, immo); });
  m_liste->PoseTexteVide(TexteQ(VideRegistre));
  m_liste->SurActivationAilleurs([this] { Ajoute(); });
  DeclareCommandes();
}

CImmoView::~CImmoView() = default;

void CImmoView::Charge() {
  Vue::Charge();
  Actualise();
}

void CImmoView::FillList() { m_liste->Remplit(LitRegistre(App(), m_document.Fichier())); }

Position CImmoView::Choisie() const { return static_cast<Position>(Table().DonneeChoisie()); }

void CImmoView::DeclareCommandes() {
  const auto choisie = [this] { return Choisie() != 0; };
  Declare({{CmdCopier, [this] { m_liste->Copie(); }, [this] { return m_liste->Modele().NbLignes() > 0; }},
           {CmdAjouter, [this] { Ajoute(); }},
           {CmdModifier, [this] { Modifie(); }, choisie},
           {CmdSupprimer, [this] { Supprime(); }, choisie},
           {CmdCession, [this] { Finit<CDialogCession>(ControleCession); }, choisie},
           {CmdRebut, [this] { Finit<CDialogRebut>(ControleRebut); }, choisie},
           {CmdDetailAmortissements, [this] { Detaille(); }, choisie}});
}

std::vector<unsigned> CImmoView::MenuContextuel() const {
  return {CmdCopier, CmdAjouter, CmdModifier, CmdSupprimer, 0, CmdCession, CmdRebut, CmdDetailAmortissements,
          0,         CmdAide};
}

void CImmoView::Saisit(FicheImmobilisation fiche) {
  CDialogAcquisition forme(Contexte(), std::move(fiche), this);
  bool enregistree = false;
  {
    const QScopedValueRollback suspendue(m_suspendue, true);
    enregistree = forme.Execute();
  }
  if (!enregistree) return;
  Actualise();
  m_liste->SelectionneLigne(m_liste->Modele().LigneDe(forme.Derniere()));
}

void CImmoView::Ajoute() {
  if (App().Dit(App().ControleEcriture())) Saisit(NouvelleImmobilisation(App()));
}

void CImmoView::Modifie() {
  FicheImmobilisation fiche;
  if (Choisie() == 0 || !App().Dit(LitFiche(App(), Choisie(), fiche))) return Ajoute();
  Saisit(fiche);
}

void CImmoView::Supprime() {
  App().Dit(SupprimeFiche(App(), FicheA<FicheImmobilisation>(Choisie())));
  Contexte().Cadre.Actualise();
}

template <class Forme>
void CImmoView::Finit(Refus (*controle)(const Immobilisation&)) {
  FicheImmobilisation fiche;
  if (!App().Dit(LitFiche(App(), Choisie(), fiche)) || !App().Dit(controle(fiche.rec))) return;
  const auto ecrit = [&](const Immobilisation& immo) {
    FicheImmobilisation changee = fiche;
    changee.rec = immo;
    return EcritImmobilisation(App(), changee);
  };
  Forme(Contexte(), fiche.rec, ecrit, this).Execute();
}

void CImmoView::Detaille() {
  DetailAmortissements detail;
  if (App().Dit(LitDetail(App(), Choisie(), detail)))
    CDialogAmortissements(Contexte(), detail, this).Execute();
}

}  // namespace fenlor

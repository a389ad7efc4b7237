#include "forms/assets/immoview.h"

#include "assets/textes.h"
#include "forms/assets/immolist.h"
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
  Declare({{CmdCopier, [this] { m_liste->Copie(); }, [this] { return m_liste->Modele().NbLignes() > 0; }}});
}

CImmoView::~CImmoView() = default;

void CImmoView::Charge() {
  Vue::Charge();
  Actualise();
}

void CImmoView::FillList() { m_liste->Remplit(LitRegistre(App(), m_document.Fichier())); }

Position CImmoView::Choisie() const { return static_cast<Position>(Table().DonneeChoisie()); }

std::vector<unsigned> CImmoView::MenuContextuel() const {
  return {CmdCopier, CmdAjouter, CmdModifier, CmdSupprimer, 0, CmdAide};
}

}  // namespace fenlor

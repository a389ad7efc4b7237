#include "forms/master/libelleview.h"

#include <QScopedValueRollback>
#include <algorithm>

#include "core/erreursexercice.h"
#include "core/texte.h"
#include "forms/master/dialoglibelle.h"
#include "forms/master/textes.h"
#include "master/libelles.h"
#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

CLibelleView::CLibelleView(ContexteUi& contexte) : CZNListView(contexte, Texte(TitreLibelles), FenLibelles) {
  Table().Modele().DerniereFixe(true);
  const auto choisi = [this] { return Table().DonneeChoisie() != 0; };
  Declare({{CmdAjouter, [this] { Saisit(true); }},
           {CmdModifier, [this] { Saisit(false); }, choisi},
           {CmdSupprimer, [this] { Supprime(); }, choisi}});
  // The order is the file's own.
  Table().PoseTriable(false);
  Table().Definit<std::string>({{"Libellés"_w, 300, [](const std::string& libelle) { return libelle; }}},
                               [this](ModeleListe::Donnee donnee, std::string& libelle) {
                                 const auto lu = m_libelles.find(donnee);
                                 if (lu != m_libelles.end()) libelle = lu->second;
                                 return lu != m_libelles.end();
                               });
}

void CLibelleView::Charge() {
  CZNListView::Charge();
  if (m_lu) return;
  const auto ferme = [this] { (parentWidget() ? parentWidget() : this)->close(); };
  QMetaObject::invokeMethod(this, ferme, Qt::QueuedConnection);
}

void CLibelleView::FillList() {
  std::vector<std::string> lus;
  m_lu = App().Dit(LitLibelles(App(), lus));
  if (!m_lu) return;
  m_libelles.clear();
  std::vector<LigneListe> lignes;
  for (std::string& libelle : lus) {
    m_libelles[++m_derniere] = std::move(libelle);
    lignes.push_back({m_derniere});
  }
  lignes.emplace_back();
  Table().Modele().Remplit(std::move(lignes));
}

bool CLibelleView::Relit() {
  Actualise();
  return m_lu;
}

int CLibelleView::NbLibelles() const {
  const ModeleListe& modele = Table().Modele();
  return modele.NbLignes() - (modele.NbLignes() > 0 && modele.DonneeDe(modele.NbLignes() - 1) == 0 ? 1 : 0);
}

std::string CLibelleView::Libelle(int ligne) const { return m_libelles.at(Table().Modele().DonneeDe(ligne)); }

std::vector<std::string> CLibelleView::Libelles() const {
  std::vector<std::string> libelles;
  for (const ModeleListe::Donnee donnee : Table().Modele().Toutes())
    if (donnee != 0) libelles.push_back(m_libelles.at(donnee));
  return libelles;
}

std::ptrdiff_t CLibelleView::Place(int ligne) const {
  return static_cast<std::ptrdiff_t>(std::min(Table().Modele().PlaceDe(ligne), m_libelles.size()));
}

bool CLibelleView::Insere(const std::string& libelle) {
  const int choisie = Table().LigneChoisie();
  const int ligne = choisie < 0 ? NbLibelles() : std::min(choisie, NbLibelles());
  std::vector<std::string> libelles = Libelles();
  libelles.insert(libelles.begin() + Place(ligne), libelle);
  if (!App().Dit(EcritLibelles(App(), libelles))) return false;
  // Where it stands among the hidden rows, the file says.
  if (Table().Modele().EstFiltre()) return Relit();
  m_libelles[++m_derniere] = libelle;
  Table().Modele().Insere(ligne, m_derniere);
  if (choisie >= 0) Table().SelectionneLigne(Table().LigneChoisie());
  Table().scrollTo(Table().Modele().index(ligne, 0));
  return true;
}

bool CLibelleView::Change(int ligne, const std::string& libelle) {
  std::vector<std::string> libelles = Libelles();
  libelles.at(static_cast<std::size_t>(Place(ligne))) = libelle;
  if (!App().Dit(EcritLibelles(App(), libelles))) return false;
  const ModeleListe::Donnee donnee = Table().Modele().DonneeDe(ligne);
  m_libelles[donnee] = libelle;
  Table().Modele().Change(ligne, donnee);
  return true;
}

void CLibelleView::Saisit(bool ajout) {
  if (ajout && !App().Dit(App().ControleEcriture())) return;
  if (!Relit() || (!ajout && Table().DonneeChoisie() == 0)) return;
  const QScopedValueRollback suspendue(m_suspendue, true);
  CDialogLibelle(Contexte(), *this, ajout ? -1 : Table().LigneChoisie()).exec();
}

void CLibelleView::Supprime() {
  if (!App().Dit(App().ControleEcriture())) return;
  if (!Relit() || Table().DonneeChoisie() == 0) return;
  const int ligne = Table().LigneChoisie();
  constexpr unsigned style = BoutonsOuiNon | IconeQuestion;
  if (App().MessageId(style, QuestionSupprimeLibelle, {Libelle(ligne)}) != RepOui) return;
  std::vector<std::string> libelles = Libelles();
  libelles.erase(libelles.begin() + Place(ligne));
  if (!App().Dit(EcritLibelles(App(), libelles))) return;
  m_libelles.erase(Table().Modele().DonneeDe(ligne));
  Table().Modele().Supprime(ligne);
  Table().SelectionneLigne(ligne);
}

}  // namespace fenlor

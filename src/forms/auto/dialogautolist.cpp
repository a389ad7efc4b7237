#include "forms/auto/dialogautolist.h"

#include "auto/modeleauto.h"
#include "auto/parcoursauto.h"
#include "auto/textes.h"
#include "core/valeurs.h"
#include "forms/auto/dialogautoecheance.h"
#include "forms/auto/dialogautoecriture.h"
#include "forms/auto/dialogautoprevisions.h"
#include "journal/controles.h"
#include "store/texte1252.h"
#include "ui/listeeditee.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int caracteres = 90, hauteurMinimale = 100;
const QString apercu = u"apercu"_s;  ///< issue of a report's form

std::string CodeTresorerie(CFenlorApp& app, const EcrituresAuto& modele) {
  Plan plan{};
  return LitCompte(app, LitTexte(modele.Tresorerie), plan) ? LitTexte(plan.Code) : std::string();
}

TableColonnes<EcrituresAuto> Colonnes(CFenlorApp& app) {
  const auto montant = [](bool recette) {
    return [recette](const EcrituresAuto& m) {
      if ((m.Genre == JournalRecettes) != recette) return std::string();
      return m.SaisieEuro ? FormatEuro(m.MontantEuro) : FormatFranc(m.MontantFranc);
    };
  };
  return {
      {"Libellé"_w, 20, [](const EcrituresAuto& m) { return LitTexte(m.Libelle); }},
      {"Périodicité"_w, 20, [](const EcrituresAuto& m) { return GetPeriodiciteString(PeriodiciteDe(m)); }},
      {"Trésorerie"_w, 20, [&app](const EcrituresAuto& m) { return CodeTresorerie(app, m); }},
      {"Recette", 20, montant(true), Cote::Droite},
      {"Dépense"_w, 20, montant(false), Cote::Droite}};
}

}  // namespace

CDialogAutoList::CDialogAutoList(ContexteUi& contexte, Edition edition, QWidget* parent)
    : CZNDialog(contexte, u"Liste des écritures automatiques"_s, "DialogAutoList", parent),
      m_edition(std::move(edition)) {
  DeclareListe();
  Formulaire{Zone()}.Seul(*m_liste, nullptr, true);
  QPushButton& previsions = AjouteBouton(u"&Prévisions..."_s, "previsions");
  previsions.setEnabled(!App().Reglages.IsFige());
  connect(&previsions, &QPushButton::clicked, this, &CDialogAutoList::Prevoit);
  Boutons(Mode::Consultation);
  AjouteAide();
  Charge(1);
}

CDialogAutoList::~CDialogAutoList() = default;

void CDialogAutoList::showEvent(QShowEvent* evenement) {
  CZNDialog::showEvent(evenement);
  m_liste->setFocus(Qt::OtherFocusReason);
}

void CDialogAutoList::DeclareListe() {
  m_liste = new ListeEditee(Contexte(), ListeEditee::Genre::Fiches, u"Ecritures automatiques"_s,
                            {[this] { Ajoute(); }, [this] { Modifie(); }, [this] { Supprime(); },
                             [this](int ligne) {
                               const bool permis = !App().Reglages.IsFige();
                               return ListeEditee::Permis{permis, permis && ligne >= 0, permis && ligne >= 0};
                             }});
  CZNListCtrl& table = m_liste->Table();
  table.Suit(Colonnes(App()), m_modeles);
  table.PoseBulle([this](int ligne) {
    const auto rang = static_cast<std::size_t>(m_liste->Table().RangDe(ligne));
    const Date date = ProchaineEcheance(m_modeles[rang]);
    return date ? TexteQ(BulleProchaine, {StrDate(date)}) : TexteQ(BulleSansProchaine);
  });
  table.setMinimumSize(caracteres * fontMetrics().averageCharWidth(), hauteurMinimale);
}

void CDialogAutoList::Charge(Position choisie) {
  App().Dit(ListeAutos(App(), m_modeles));
  m_liste->Relit(static_cast<int>(choisie) - 1);
}

Position CDialogAutoList::Voisin(int pas) const {
  const CZNListCtrl& table = m_liste->Table();
  const int choisie = table.LigneChoisie();
  return choisie < 0 ? 0 : static_cast<Position>(table.RangDe(choisie + pas) + 1);
}

void CDialogAutoList::VaVers(int pas) {
  pas < 0 ? m_liste->Table().LignePrecedente() : m_liste->Table().LigneSuivante();
}

void CDialogAutoList::Remplace(Position position) { Charge(position); }

void CDialogAutoList::Saisit(Position position) {
  CDialogAutoEcriture forme(Contexte(), this, position, this);
  forme.exec();
  if (forme.AChange()) Charge(forme.Derniere());
}

void CDialogAutoList::Ajoute() {
  if (App().Dit(ControleAjoutAuto(App()))) Saisit(0);
}

void CDialogAutoList::Modifie() {
  const std::vector<int> lignes = m_liste->Table().RangsChoisis();
  if (lignes.empty()) return;
  // The neighbours are those of one row.
  m_liste->Relit(lignes.front());
  Saisit(static_cast<Position>(lignes.front()) + 1);
}

/// Each row is asked about alone, and is the one that is selected meanwhile.
void CDialogAutoList::Supprime() {
  const std::vector<int> lignes = m_liste->Table().RangsChoisis();
  for (std::size_t i = 0, parties = 0; i < lignes.size(); ++i) {
    const Position numero = static_cast<Position>(lignes[i]) + 1 - static_cast<Position>(parties);
    m_liste->Relit(static_cast<int>(numero) - 1);
    if (!App().Dit(SupprimeFiche(App(), FicheA<FicheAuto>(numero)))) continue;
    ++parties;
    Charge(numero);
  }
}

void CDialogAutoList::Prevoit() {
  CDialogAutoPrevisions previsions(Contexte(), this);
  previsions.exec();
  m_apercu = previsions.Issue() == apercu;
  if (m_apercu)
    done(Accepted);
  else if (!previsions.Issue().isEmpty())
    m_edition(previsions.Issue());
}

void CommandeAutomatiques(ContexteUi& contexte, const CDialogAutoList::Edition& edition) {
  CDialogAutoList liste(contexte, edition, contexte.Cadre.Cadre());
  liste.exec();
  CalculeEcheances(contexte, false);
  if (liste.ApercuVoulu()) edition(apercu);
}

}  // namespace fenlor

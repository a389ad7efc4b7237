#include "forms/assets/dialogamortissements.h"

#include <QAbstractButton>
#include <QPushButton>
#include <cassert>

#include "forms/assets/textes.h"
#include "store/texte1252.h"
#include "ui/listeeditee.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int largeurListe = 60, largeurNom = 36, lignesVues = 12;  // characters, rows

}  // namespace

CDialogAmortissements::CDialogAmortissements(ContexteUi& contexte, DetailAmortissements detail,
                                             QWidget* parent)
    : CZNDialog(contexte, TexteQ(TitreDetail), "DialogAmortissements", parent), m_detail(std::move(detail)) {
  Declare();
  Boutons(Mode::Modification);
  AjouteAide();
  FigeSiCloture();
  m_liste->Relit(static_cast<int>(m_detail.lignes.size()) - 1);
}

void CDialogAmortissements::Declare() {
  m_liste = new ListeEditee(Contexte(), ListeEditee::Genre::LignesEnPetit, u"Années"_s,
                            {[] {}, [this] { Modifie(m_liste->Table().RangChoisi()); },
                             [this] { Retablit(m_liste->Table().RangChoisi()); },
                             [this](int ligne) {
                               const bool permis = ligne >= 0 && !App().Reglages.IsFige();
                               return ListeEditee::Permis{
                                   false, permis,
                                   permis && m_detail.lignes[static_cast<std::size_t>(ligne)].Corrigee()};
                             }});
  TableListe& table = m_liste->Table();
  table.setSelectionMode(QAbstractItemView::SingleSelection);
  const auto montant = [this](f64 LigneDetail::*champ) {
    return [this, champ](const LigneDetail& ligne) { return m_detail.Texte(ligne.*champ); };
  };
  table.Suit<LigneDetail>(
      {{"Année"_w, 20, [](const LigneDetail& ligne) { return std::to_string(ligne.annee); }, Cote::Centre},
       {"Théorique"_w, 40, montant(&LigneDetail::theorique), Cote::Droite},
       {"Réel"_w, 40, montant(&LigneDetail::reel), Cote::Droite}},
      m_detail.lignes);
  m_liste->setMinimumWidth(largeurListe * fontMetrics().averageCharWidth());
  m_liste->setMinimumHeight(lignesVues * fontMetrics().height());
  m_liste->findChild<QAbstractButton*>(u"supprimer"_s)
      ->setToolTip(u"Reprendre le montant théorique de l'année (Suppr)"_s);
  m_designation.Pose(LitTexte(m_detail.immo.Designation));
  m_achat.Pose(StrDate(m_detail.immo.DateAchat));
  m_designation.setWordWrap(true);
  Formulaire{Zone()}
      .Champ(u"Désignation :"_s, m_designation, "designation")
      .Largeur(largeurNom)
      .Champ(u"Date d'achat :"_s, m_achat, "dateAchat")
      .Seul(*m_liste, nullptr, true);
}

void CDialogAmortissements::Modifie(int ligne) {
  if (ligne < 0 || App().Reglages.IsFige()) return;
  CDialogAmortissementsLine(
      Contexte(), m_detail, ligne, [this](int choisie) { m_liste->Relit(choisie); }, this)
      .exec();
  Focalise(m_liste->Table());
}

void CDialogAmortissements::Retablit(int ligne) {
  if (ligne < 0 || App().Reglages.IsFige()) return;
  LigneDetail& annee = m_detail.lignes[static_cast<std::size_t>(ligne)];
  annee.reel = annee.theorique;
  m_liste->Relit(ligne);
}

bool CDialogAmortissements::Enregistre() { return Refuse(EnregistreDetail(App(), m_detail)); }

void CDialogAmortissements::Pointe(const Refus& refus) {
  if (refus.rang >= 0) m_liste->Table().SelectionneRang(refus.rang);
  Focalise(m_liste->Table());
}

CDialogAmortissementsLine::CDialogAmortissementsLine(ContexteUi& contexte, DetailAmortissements& detail,
                                                     int ligne, std::function<void(int)> change,
                                                     QWidget* parent)
    : CZNDialog(contexte, TexteQ(TitreAmortissement), "DialogAmortissementsLine", parent),
      m_detail(detail),
      m_ligne(ligne),
      m_change(std::move(change)),
      m_reel(App().Reglages) {
  Formulaire{Zone()}
      .Champ(u"Année :"_s, m_annee, "annee")
      .Champ(u"Amortissement théorique :"_s, m_theorique, "theorique")
      .Champ(u"Amortissement réel :"_s, m_reel, "reel")
      .Limite(16)
      .Pousse();
  Boutons(Mode::Modification, true);
  Montre();
}

void CDialogAmortissementsLine::Montre() {
  assert(m_ligne >= 0 && m_ligne < static_cast<int>(m_detail.lignes.size()));
  m_annee.Pose(std::to_string(Ligne().annee));
  m_theorique.Pose(m_detail.Texte(Ligne().theorique));
  m_reel.Pose(Ligne().reel);
  findChild<QPushButton*>(u"precedent"_s)->setEnabled(m_ligne > 0);
  findChild<QPushButton*>(u"suivant"_s)->setEnabled(m_ligne + 1 < static_cast<int>(m_detail.lignes.size()));
}

bool CDialogAmortissementsLine::Enregistre() {
  Ligne().reel = m_reel.Valeur();
  m_change(m_ligne);
  return true;
}

void CDialogAmortissementsLine::Voisin(int pas) {
  m_ligne += pas;
  m_change(m_ligne);
  Montre();
}

}  // namespace fenlor

#include "forms/journal/zonetresorerie.h"

#include <QBoxLayout>
#include <QPushButton>
#include <QStackedLayout>

#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "forms/journal/textes.h"
#include "forms/master/champscompte.h"
#include "store/texte1252.h"
#include "ui/listeeditee.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

ZoneTresorerie::ZoneTresorerie(ContexteUi& contexte, std::function<Ecriture()> ecriture, QWidget* parent)
    : QGroupBox(u"Trésorerie"_s, parent),
      m_contexte(contexte),
      m_app(contexte.App),
      m_ecriture(std::move(ecriture)),
      m_cloture(contexte.App.Reglages.IsFige()),
      m_pages(new QStackedLayout(this)) {
  setObjectName(u"zoneTresorerie"_s);
  m_champs.Charge(m_app);
  m_pages->addWidget(PageSimple());
  m_pages->addWidget(PageMultiple());
  Vide();
}

QWidget* ZoneTresorerie::PageSimple() {
  auto* page = new QWidget(this);
  auto* pile = new QVBoxLayout(page);
  auto* champs = new QWidget(page);
  Formulaire formulaire{*champs};
  champs->layout()->setContentsMargins(0, 0, 0, 0);
  m_champs.Declare(formulaire);
  pile->addWidget(champs);
  pile->addStretch(1);
  // Where "&Simplifiée" stands on the other page.
  m_multiple = new QPushButton(u"&Multiple"_s, page);
  m_multiple->setObjectName(u"multiple"_s);
  connect(m_multiple, &QPushButton::clicked, this, &ZoneTresorerie::PasseMultiple);
  pile->addWidget(m_multiple, 0, Qt::AlignRight);
  return page;
}

QWidget* ZoneTresorerie::PageMultiple() {
  auto* page = new QWidget(this);
  auto* pile = new QVBoxLayout(page);
  m_liste = new ListeEditee(m_contexte, ListeEditee::Genre::LignesEnPetit, u"Lignes de trésorerie"_s,
                            {[this] { Ajoute(); }, [this] { ModifieLigne(); }, [this] { Supprime(); },
                             [this](int ligne) {
                               const bool permis = m_permis || m_cloture;
                               return ListeEditee::Permis{permis, ligne >= 0, permis && ligne >= 0};
                             }},
                            page);
  const auto compte = [this](const LigneTresorLue& l) { return CompteDeNumero(m_comptes, l.compte); };
  const auto code = [this, compte](const LigneTresorLue& l) {
    const CompteOffert* offert = compte(l);
    return offert ? offert->code : m_app.Magasin.GetShortCompte(l.compte);
  };
  const auto libelle = [compte](const LigneTresorLue& l) {
    const CompteOffert* offert = compte(l);
    return offert ? offert->designation : std::string();
  };
  const auto paiement = [compte](const LigneTresorLue& l) {
    const CompteOffert* offert = compte(l);
    if (!offert || !offert->banque) return std::string();
    return Texte(l.paiement == PaiementAutre ? MotAutre : MotCheque);
  };
  const auto montant = [this](const LigneTresorLue& l) {
    return FormatMontant(l.montant, 2, m_app.Reglages.SeparateurDecimal());
  };
  m_liste->Table().Suit<LigneTresorLue>({{"Compte", 20, code},
                                         {"Libellé"_w, 40, libelle},
                                         {"Paiement", 20, paiement, Cote::Droite},
                                         {"Montant", 20, montant, Cote::Droite}},
                                        m_lignes.lignes);
  m_liste->Table().PoseTexteVide(TexteQ(AucuneLigneTresor));
  pile->addWidget(m_liste, 1);
  m_simplifiee = new QPushButton(u"&Simplifiée"_s, page);
  m_simplifiee->setObjectName(u"simplifiee"_s);
  connect(m_simplifiee, &QPushButton::clicked, this, &ZoneTresorerie::PasseSimple);
  m_liste->AjouteAuBout(*m_simplifiee);
  return page;
}

std::string ZoneTresorerie::Tresorerie() const {
  const CompteOffert* compte = m_champs.Choisi();
  return compte ? compte->compte : std::string{};
}

void ZoneTresorerie::Pose(const EcritureLue& ecriture) {
  const SaisieEcriture& saisie = ecriture.saisie;
  m_lignes = {};
  if (saisie.genre == GenreSimple) {
    m_marques = ecriture.marques;
    m_champs.Pose(saisie.tresorerie, saisie.paiement);
  } else {
    m_lignes.lignes = ecriture.lignes;
  }
  Remplit(0);
  PoseGenre(saisie.genre);
  m_modifiee = false;
}

void ZoneTresorerie::Vide(const std::string& tresorerie) {
  m_marques = {};
  m_champs.Pose(tresorerie, PaiementCheque);
  m_lignes = {};
  Remplit(-1);
  PoseGenre(GenreSimple);
  m_modifiee = false;
}

void ZoneTresorerie::ChoisitLigne(int rang) { m_liste->Table().SelectionneRang(rang); }

void ZoneTresorerie::Permet(bool permis) {
  m_permis = permis;
  m_champs.Permet(permis);
  m_multiple->setEnabled(permis);
  ActualiseBoutons();
}

void ZoneTresorerie::PoseGenre(i16 genre) {
  m_genre = genre;
  m_pages->setCurrentIndex(genre == GenreStandard ? 1 : 0);
}

void ZoneTresorerie::PasseMultiple() {
  m_lignes = {};
  const f64 ttc = m_ecriture().ttc;
  if (const CompteOffert* compte = m_champs.Choisi(); compte && ttc != 0) {
    LigneTresorLue ligne;
    ligne.compte = compte->compte;
    ligne.montant = ttc;
    ligne.paiement = m_champs.Paiement();
    ligne.marques = m_marques;
    m_lignes.lignes.push_back(ligne);
  }
  PoseGenre(GenreStandard);
  LignesChangees(0);
  m_liste->setFocus(Qt::OtherFocusReason);
}

void ZoneTresorerie::PasseSimple() {
  if (m_lignes.lignes.size() > 1) return;
  if (!m_lignes.lignes.empty()) {
    const LigneTresorLue& ligne = m_lignes.lignes.front();
    m_marques = ligne.marques;
    m_champs.Pose(ligne.compte, ligne.paiement);
  }
  m_lignes = {};
  PoseGenre(GenreSimple);
  LignesChangees(-1);
  m_champs.Code().setFocus(Qt::OtherFocusReason);
}

void ZoneTresorerie::Ajoute() {
  if (m_cloture) {
    m_app.Dit(m_app.ControleEcriture());
  } else if (m_permis) {
    OuvreLigne(false);
  }
}

void ZoneTresorerie::ModifieLigne() {
  if (m_liste->Table().LigneChoisie() >= 0) OuvreLigne(true);
}

void ZoneTresorerie::Supprime() {
  if (m_cloture) {
    m_app.Dit(m_app.ControleEcriture());
    return;
  }
  const std::vector<int> choisies = m_liste->Table().RangsChoisis();
  if (!m_permis || choisies.empty()) return;
  const int premiere = choisies.front();
  for (auto rang = choisies.rbegin(); rang != choisies.rend(); ++rang)
    m_lignes.lignes.erase(m_lignes.lignes.begin() + *rang);
  LignesChangees(premiere);
}

std::optional<LigneSuspendue> ZoneTresorerie::LigneOuverte() const {
  return m_ligneOuverte ? m_ligneOuverte->Suspendue() : std::nullopt;
}

void ZoneTresorerie::Retape(const SaisieSuspendue& reprise) {
  if (!reprise.tresorerie.empty()) m_champs.RetapeInconnu(reprise.tresorerie);
  if (!reprise.ligneOuverte || m_genre != GenreStandard) return;
  // Once the entry's form stands: it would come before it.
  QMetaObject::invokeMethod(
      this,
      [this, ligne = reprise.ligne] {
        m_liste->Relit(static_cast<int>(ligne.rang) - 1);
        OuvreLigne(ligne.rang != 0, ligne);
      },
      Qt::QueuedConnection);
}

void ZoneTresorerie::OuvreLigne(bool modification, const std::optional<LigneSuspendue>& reprise) {
  const Ecriture ecriture = m_ecriture();
  CDialogLineTresor::Ouverture ouverture;
  ouverture.date = ecriture.date;
  ouverture.tresorerie = Tresorerie();
  ouverture.ttc = ecriture.ttc;
  ouverture.euro = ecriture.euro;
  ouverture.modification = modification;
  ouverture.lecture = !m_permis;
  ouverture.change = [this, modification] {
    LignesChangees(modification ? m_lignes.choisie : static_cast<int>(m_lignes.lignes.size()) - 1);
  };
  m_lignes.choisie = modification ? m_liste->Table().RangChoisi() : -1;
  ouverture.reprise = reprise;
  CDialogLineTresor forme(m_contexte, m_lignes, ouverture, window());
  m_ligneOuverte = &forme;
  forme.exec();
  m_ligneOuverte = nullptr;
  m_liste->setFocus(Qt::OtherFocusReason);
}

void ZoneTresorerie::LignesChangees(int choisie) {
  m_modifiee = true;
  Remplit(choisie);
  if (m_change) m_change();
}

void ZoneTresorerie::Remplit(int choisie) {
  m_comptes = ComptesParCode(m_app, fenlor::Tresorerie);
  m_liste->Relit(choisie);
  ActualiseBoutons();
}

void ZoneTresorerie::ActualiseBoutons() {
  m_liste->ActualiseBoutons();
  m_simplifiee->setEnabled(m_permis && !m_cloture && m_lignes.lignes.size() < 2);
}

}  // namespace fenlor

#include "forms/banque/dialogremise.h"

#include <QPushButton>
#include <QShortcut>

#include "banque/textes.h"
#include "core/erreurssaisie.h"
#include "core/valeurs.h"
#include "forms/banque/chequelist.h"
#include "forms/journal/dialogecriture.h"
#include "forms/journal/dialogmouvement.h"
#include "master/options.h"
#include "reports/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CDialogRemise::CDialogRemise(ContexteUi& contexte, const std::string& fichier, CriteresRemise& criteres,
                             QWidget* parent)
    : CZNDialog(contexte, TexteQ(TitreRemise), "DialogRemise", parent),
      m_criteres(criteres),
      m_liste(contexte.App, fichier),
      m_table(new CChequeList(contexte)) {
  Formulaire formulaire{Zone()};
  DeclareBanque(formulaire);
  DeclareCriteres(formulaire);
  DeclareListe(formulaire);
  m_compte.Charge(App());
  MontreBanque();
  m_date.Pose(criteres.date);
  m_du.Pose(criteres.du);
  m_au.Pose(criteres.au);
  for (EditeurDate* date : {&m_date, &m_du, &m_au}) date->PoseReference(App().Reglages.GetDebutExercice());
  m_monnaies[static_cast<std::size_t>(criteres.monnaie)].setChecked(true);
  m_etat.setCurrentIndex(static_cast<int>(criteres.etat) - 1);
  Boutons(Mode::Simple);
  AjouteIssuesEtat();
  AjouteAide();
  m_montres.etat = EtatRemise{};
  Remplit();
}

CDialogRemise::~CDialogRemise() = default;

void CDialogRemise::DeclareBanque(Formulaire& formulaire) {
  formulaire.Champ(u"&Compte associé :"_s, m_compte, "compte")
      .SurChangement([this] {
        MontreBanque();
        Remplit();
      })
      .Champ(u"Nom et adresse :"_s, m_adresse, "adresse")
      .Champ(u"Numéro de compte :"_s, m_numero, "numero");
}

void CDialogRemise::DeclareCriteres(Formulaire& formulaire) {
  const auto remplit = [this] { Remplit(); };
  constexpr const char* noms[] = {"toutes", "franc", "euro"};
  const QString textes[] = {u"Toutes les monnaies"_s, u"En &Franc"_s, u"En &Euro"_s};
  formulaire.Champ(u"&Date de remise :"_s, m_date, "date")
      .Limite(10)
      .SurDepart(remplit)
      .Champ(u"Période d&u :"_s, m_du, "du")
      .Limite(10)
      .SurDepart(remplit)
      .Suite(u"au :"_s, m_au, "au")
      .Limite(10)
      .SurDepart(remplit)
      .Champ(u"Chè&ques :"_s, m_etat, "etat")
      .SurChangement(remplit);
  for (const TexteFixe& mot : MotEtatRemise) m_etat.Ajoute(Texte(mot));
  for (std::size_t i = 0; i < m_monnaies.size(); ++i) {
    m_monnaies[i].setText(textes[i]);
    formulaire.ACote(m_monnaies[i], noms[i]).SurChangement(remplit);
  }
}

void CDialogRemise::DeclareListe(Formulaire& formulaire) {
  const auto bouton = [this](const QString& texte, const char* nom, std::function<void()> action) {
    auto* b = new QPushButton(texte);
    b->setObjectName(QString::fromLatin1(nom));
    b->setAutoDefault(false);
    connect(b, &QPushButton::clicked, this, [agit = std::move(action)] { agit(); });
    return b;
  };
  // Their letters are those of "Imprimer" and "PDF", too.
  const auto avecTouche = [this](QPushButton* b, Qt::KeyboardModifiers avec) {
    const QKeySequence touche(QKeyCombination(avec, Qt::Key_I));
    connect(new QShortcut(touche, this), &QShortcut::activated, b, &QPushButton::click);
    b->setToolTip(touche.toString(QKeySequence::NativeText));
    return b;
  };
  m_table->setAccessibleName(u"Chèques"_s);
  m_table->Suit(ColonnesCheques(), m_liste.Cheques());
  m_table->PoseTexteVide(u"Aucun chèque pour ce compte, cette période et ce choix."_s);
  m_table->SurActivation([this] { ModifieEcriture(); });
  m_table->SurRemis([this](int ligne) { ApresCoche(m_liste.Bascule(static_cast<std::size_t>(ligne))); });
  m_table->SurImprime([this](int ligne) {
    m_liste.BasculeImprime(static_cast<std::size_t>(ligne));
    ApresCoche({});
  });
  formulaire.Seul(*m_table, "cheques", true).Astuce(u"Espace : remettre, I : imprimer, Entrée : modifier"_s);
  const auto imprimeTout = [this](bool imprime) {
    m_liste.ImprimeTout(imprime);
    ApresCoche({});
  };
  formulaire.Champ(u"Total Remise :"_s, m_total, "total");
  m_modifier = bouton(u"&Modifier"_s, "modifier", [this] { ModifieEcriture(); });
  formulaire.Rangee(
      {bouton(u"&Tout remettre"_s, "toutRemettre", [this] { ApresCoche(m_liste.RemetTout(true)); }),
       bouton(u"&Rien remettre"_s, "rienRemettre", [this] { ApresCoche(m_liste.RemetTout(false)); }),
       avecTouche(bouton(u"Tout &imprimer"_s, "toutImprimer", [=] { imprimeTout(true); }),
                  Qt::ControlModifier),
       avecTouche(bouton(u"Rien im&primer"_s, "rienImprimer", [=] { imprimeTout(false); }),
                  Qt::ControlModifier | Qt::ShiftModifier),
       m_modifier});
  connect(m_table, &TableListe::SelectionChangee, this,
          [this] { m_modifier->setEnabled(m_table->LigneChoisie() >= 0); });
}

void CDialogRemise::MontreBanque() {
  const CompteOffert* compte = m_compte.Choisi();
  const AdresseBanque banque =
      compte ? LitAdresseBanque(App(), CompacteTexte(compte->code)) : AdresseBanque();
  m_adresse.Pose(banque.identification);
  m_numero.Pose(banque.compte);
}

CriteresRemise CDialogRemise::Lus() const {
  CriteresRemise criteres;
  if (const CompteOffert* compte = m_compte.Choisi()) criteres.compte = compte->compte;
  criteres.date = m_date.Valeur();
  criteres.du = m_du.Valeur();
  criteres.au = m_au.Valeur();
  criteres.etat = static_cast<EtatRemise>(m_etat.currentIndex() + 1);
  for (std::size_t i = 0; i < m_monnaies.size(); ++i)
    if (m_monnaies[i].isChecked()) criteres.monnaie = static_cast<MonnaieRemise>(i);
  return criteres;
}

void CDialogRemise::Remplit() {
  CriteresRemise criteres = Lus();
  if (!criteres.date || !criteres.du || !criteres.au) return;
  if (criteres.etat != EtatRemise::RemisACetteDate) m_montres.date = criteres.date;
  if (criteres == m_montres) return;
  App().Dit(m_liste.Remplit(criteres));
  m_du.Pose(criteres.du);
  m_au.Pose(criteres.au);
  m_montres = criteres;
  Montre(static_cast<int>(m_liste.Cheques().size()) - 1);
}

void CDialogRemise::Montre(int choisie) {
  m_table->Relit(choisie);
  ApresCoche({});
  m_modifier->setEnabled(m_table->LigneChoisie() >= 0);
}

void CDialogRemise::ApresCoche(const Refus& refus) {
  App().Dit(refus);
  m_table->Redessine();
  const std::optional<f64> total = TotalRemise(m_liste.Cheques(), m_montres.monnaie);
  m_total.Pose(!total                                     ? std::string()
               : m_montres.monnaie == MonnaieRemise::Euro ? FormatEuro(*total)
                                                          : FormatFranc(*total));
}

void CDialogRemise::ModifieEcriture() {
  const int ligne = m_table->RangChoisi();
  if (ligne < 0) return;
  const Cheque& cheque = m_liste.Cheques()[static_cast<std::size_t>(ligne)];
  OuvertureEcriture ouverture;
  ouverture.journal = cheque.journal;
  ouverture.date = cheque.date;
  ouverture.tresorerie = m_montres.compte;
  ouverture.mouvement = cheque.mouvement;
  ouverture.consultation = true;
  if (cheque.genre == GenreOD)
    CDialogMouvement(Contexte(), ouverture, this).Execute();
  else
    CDialogEcriture(Contexte(), ouverture, this).Execute();
  App().Dit(m_liste.Relit());
  Montre(ligne);
  m_table->setFocus();
}

bool CDialogRemise::Enregistre() {
  for (EditeurDate* date : {&m_date, &m_du, &m_au})
    if (!IsDateOk(date->Valeur())) return Refuse(ErrDateIncorrecte, *date);
  Remplit();
  m_liste.Ferme();
  if (!m_compte.Choisi()) {
    reject();
    return false;
  }
  m_criteres = m_montres;
  m_criteres.date = m_date.Valeur();
  return true;
}

}  // namespace fenlor

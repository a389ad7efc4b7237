#include "forms/master/dialogplancomptable.h"

#include <QBoxLayout>
#include <QStackedWidget>

#include "store/texte1252.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

enum PageTaxe { PageAucune, PageListe, PageTaux };

}  // namespace

CDialogPlanComptable::CDialogPlanComptable(ContexteUi& contexte, SuiteFiches* vue, Position position,
                                           QWidget* parent)
    : DialogCompte(contexte, "DialogPlanComptable", FormeCompte::PlanComptable, Recette, vue, position,
                   parent),
      m_tresorerie(contexte.App),
      m_affectation(contexte.App),
      m_taux(contexte.App.Reglages),
      m_taxe(new QStackedWidget),
      m_repartition(contexte.App) {
  for (const std::string& type : {"Trésor"_w, "Recette"_w, "Dépense"_w, "T.V.A."_w, "Autres"_w})
    m_type.Ajoute(type);
  Formulaire formulaire = Champs();
  CodeEtNumero(formulaire, u"&Code :"_s, u"Com&pte :"_s);
  formulaire.Champ(u"Type de compte :"_s, m_type, "type").SurChangement([this] { ChangeType(); });
  formulaire.Champ(u"&Désignation :"_s, Designation(), "designation");
  m_tresorerie.Declare(formulaire);
  m_affectation.DeclareRubrique(formulaire);
  DeclareTaxe(formulaire);
  m_tresorerie.DeclareSoldes(formulaire);
  m_repartition.Declare(formulaire);
  formulaire.Pousse();
  Ouvre();
}

void CDialogPlanComptable::DeclareTaxe(Formulaire& formulaire) {
  auto* taux = new QWidget;
  Formulaire rangee{*taux, &FicheCompte::Table};
  taux->layout()->setContentsMargins(0, 0, 0, 0);
  rangee.Seul(m_taux, "taux").ACote(*new QLabel(u"%"_s));
  EditeurChoix& liste = m_affectation.TVA();
  liste.setObjectName(u"tva"_s);
  m_taxe->addWidget(new QWidget);
  m_taxe->addWidget(&liste);
  m_taxe->addWidget(taux);
  formulaire.Champ(u"T.V.A.:"_s, *m_taxe, nullptr);
  for (QWidget* champ : {static_cast<QWidget*>(&liste), static_cast<QWidget*>(&m_taux)})
    champ->setAccessibleName(m_taxe->accessibleName());
  for (QLabel* libelle : Zone().findChildren<QLabel*>())
    if (libelle->buddy() == m_taxe) m_libelleTaxe = libelle;
}

void CDialogPlanComptable::MontreTaxe(i16 type) {
  const bool liste = m_affectation.Assujetti() && type != Tva;
  m_taxe->setCurrentIndex(type == Tva ? PageTaux : liste ? PageListe : PageAucune);
  const bool permis = liste ? type == Recette || type == Depense : !ADesMouvements(Compte());
  m_affectation.PermetTVA(liste && permis);
  FigeChamp(m_taux, type == Tva && !permis);
  m_libelleTaxe->setBuddy(liste ? static_cast<QWidget*>(&m_affectation.TVA()) : &m_taux);
  m_libelleTaxe->setEnabled(permis);
  m_libelleTaxe->setText(m_taxe->currentIndex() == PageAucune ? QString() : u"T.V.A.:"_s);
}

void CDialogPlanComptable::Montre() {
  DialogCompte::Montre();
  m_tresorerie.Montre(EnMain(), Compte());
  MontreType(EnMain());
  PermetChamp(m_type, !ADesMouvements(Compte()));
}

void CDialogPlanComptable::ChangeType() {
  MontreType(Saisie());
  MontreTitre();
}

void CDialogPlanComptable::MontreType(const FicheCompte& fiche) {
  const bool affecte = fiche.type != Tresorerie;
  m_affectation.Montre(fiche);
  m_tresorerie.Permet(!affecte);
  m_affectation.PermetRubrique(affecte);
  MontreTaxe(fiche.type);
  m_repartition.Montre(fiche,
                       fiche.type == Depense && (Ajout() || !EstComptePersonnel(App(), EnMain().compte)));
}

void CDialogPlanComptable::Vide() {
  DialogCompte::Vide();
  m_affectation.Vide();
}

}  // namespace fenlor

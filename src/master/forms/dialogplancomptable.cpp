#include "master/forms/dialogplancomptable.h"

#include "store/texte1252.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int TailleTaux = 6;

/// Shows a field and its label, or neither.
void MontreChamp(QWidget& champ, bool visible) {
  champ.setVisible(visible);
  for (QLabel* libelle : champ.parentWidget()->findChildren<QLabel*>())
    if (libelle->buddy() == &champ) libelle->setVisible(visible);
}

}  // namespace

CDialogPlanComptable::CDialogPlanComptable(ContexteUi& contexte, ComptesView* vue, Position position,
                                           QWidget* parent)
    : DialogCompte(contexte, "DialogPlanComptable", FormeCompte::PlanComptable, Recette, vue, position,
                   parent),
      m_tresorerie(contexte.App),
      m_affectation(contexte.App),
      m_taux(contexte.App.Reglages),
      m_repartition(contexte.App) {
  for (const std::string& type : {"Trésor"_w, "Recette"_w, "Dépense"_w, "T.V.A."_w, "Autres"_w})
    m_type.Ajoute(type);
  Formulaire formulaire{Zone()};
  ChampCode(formulaire, u"&Code :"_s);
  ChampNumero(formulaire, u"Com&pte :"_s);
  formulaire.Champ(u"Type de compte :"_s, m_type, "type").SurChangement([this] { ChangeType(); });
  ChampDesignation(formulaire, u"&Désignation :"_s);
  m_tresorerie.Declare(formulaire);
  m_affectation.Declare(formulaire);
  DeclareTaux(formulaire);
  m_tresorerie.DeclareSoldes(formulaire);
  m_repartition.Declare(formulaire);
  formulaire.Pousse();
  Ouvre();
}

void CDialogPlanComptable::DeclareTaux(Formulaire& formulaire) {
  m_pourcent = new QLabel(u"%"_s);
  formulaire.Champ(u"T.V.A.:"_s, m_taux, "taux").Limite(TailleTaux).ACote(*m_pourcent);
}

void CDialogPlanComptable::Montre() {
  DialogCompte::Montre();
  m_type.setCurrentIndex(Fiche().type);
  m_tresorerie.Montre(Fiche(), Compte());
  m_taux.Pose(Fiche().tauxTVA);
  MontreType(Fiche());
  PermetChamp(m_type, !ADesMouvements(Compte()));
}

void CDialogPlanComptable::ChangeType() {
  FicheCompte fiche = Fiche();
  Lit(fiche);
  fiche.type = Type();
  MontreType(fiche);
  MontreTitre();
}

void CDialogPlanComptable::MontreType(const FicheCompte& fiche) {
  const bool affecte = fiche.type != Tresorerie, taxe = fiche.type == Tva;
  m_affectation.Montre(fiche);
  m_tresorerie.Permet(!affecte);
  m_affectation.PermetRubrique(affecte);
  m_affectation.PermetTVA(fiche.type == Recette || fiche.type == Depense);
  if (m_affectation.Assujetti()) MontreChamp(m_affectation.TVA(), !taxe);
  MontreChamp(m_taux, taxe);
  m_pourcent->setVisible(taxe);
  FigeChamp(m_taux, ADesMouvements(Compte()));
  m_repartition.Montre(fiche,
                       fiche.type == Depense && (Ajout() || !EstComptePersonnel(App(), Fiche().compte)));
}

void CDialogPlanComptable::Lit(FicheCompte& fiche) const {
  DialogCompte::Lit(fiche);
  m_tresorerie.Lit(fiche);
  m_affectation.Lit(fiche);
  m_repartition.Lit(fiche);
  if (Type() == Tva) fiche.tauxTVA = ValeurOuAncienne(m_taux, fiche.tauxTVA);
}

void CDialogPlanComptable::Vide() {
  DialogCompte::Vide();
  m_affectation.Vide();
}

}  // namespace fenlor

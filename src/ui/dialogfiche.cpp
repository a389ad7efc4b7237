#include "ui/dialogfiche.h"

#include <QPushButton>
#include <QRadioButton>
#include <algorithm>

#include "core/valeurs.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

template <class Editeur>
Editeur* Champ(const QWidget& zone, const char* nom) {
  return zone.findChild<Editeur*>(QLatin1String(nom));
}

/// Number of a choice's words, each a radio button.
QRadioButton* Bouton(const QWidget& zone, const ChampFiche& champ, int rang) {
  const auto place = static_cast<std::size_t>(std::clamp(rang, 0, static_cast<int>(champ.mots.size()) - 1));
  return champ.mots.empty() ? nullptr : Champ<QRadioButton>(zone, champ.mots[place]);
}

void Montre(const QWidget& zone, const ChampFiche& champ, const std::string& texte) {
  if (auto* ligne = Champ<EditeurTexte>(zone, champ.nom)) ligne->Pose(texte);
  if (auto* lignes = Champ<EditeurTexteLong>(zone, champ.nom)) lignes->Pose(texte);
  if (auto* choix = Champ<EditeurChoix>(zone, champ.nom)) choix->Choisit(texte);
}
void Montre(const QWidget& zone, const ChampFiche& champ, i16 rang) {
  if (auto* choix = Champ<EditeurChoix>(zone, champ.nom)) choix->setCurrentIndex(rang);
  if (auto* bouton = Bouton(zone, champ, rang)) bouton->setChecked(true);
}
void Montre(const QWidget& zone, const ChampFiche& champ, f64 valeur) {
  if (auto* montant = Champ<EditeurMontant>(zone, champ.nom)) montant->Pose(valeur);
}
void Montre(const QWidget& zone, const ChampFiche& champ, bool vrai) {
  if (auto* boite = Champ<QAbstractButton>(zone, champ.nom)) boite->setChecked(vrai);
}
void Montre(const QWidget& zone, const ChampFiche& champ, Date valeur) {
  if (auto* date = Champ<EditeurDate>(zone, champ.nom)) date->Pose(valeur);
}

void Lit(const QWidget& zone, const ChampFiche& champ, std::string& texte) {
  if (auto* ligne = Champ<EditeurTexte>(zone, champ.nom)) texte = ligne->Valeur();
  if (auto* lignes = Champ<EditeurTexteLong>(zone, champ.nom)) texte = lignes->Valeur();
  if (auto* choix = Champ<EditeurChoix>(zone, champ.nom)) texte = choix->Valeur();
}
void Lit(const QWidget& zone, const ChampFiche& champ, i16& rang) {
  if (auto* choix = Champ<EditeurChoix>(zone, champ.nom))
    rang = static_cast<i16>(std::max(0, choix->currentIndex()));
  for (std::size_t i = 0; i < champ.mots.size(); ++i)
    if (auto* bouton = Champ<QRadioButton>(zone, champ.mots[i]); bouton && bouton->isChecked())
      rang = static_cast<i16>(i);
}
void Lit(const QWidget& zone, const ChampFiche& champ, f64& valeur) {
  auto* montant = Champ<EditeurMontant>(zone, champ.nom);
  if (montant && montant->Refus() == 0 && montant->Valeur() != Arrondi2(valeur)) valeur = montant->Valeur();
}
void Lit(const QWidget& zone, const ChampFiche& champ, bool& vrai) {
  if (auto* boite = Champ<QAbstractButton>(zone, champ.nom)) vrai = boite->isChecked();
}
void Lit(const QWidget& zone, const ChampFiche& champ, Date& valeur) {
  if (auto* date = Champ<EditeurDate>(zone, champ.nom)) valeur = date->Valeur();
}

}  // namespace

DialogFiche::DialogFiche(ContexteUi& contexte, const char* nom, const TableFiche& table, void* fiche,
                         SuiteFiches* vue, Position position, QWidget* parent)
    : CZNDialog(contexte, {}, nom, parent),
      m_table(table),
      m_fiche(fiche),
      m_vue(vue),
      m_position(position),
      m_derniere(position) {}

int DialogFiche::exec() { return m_lu ? CZNDialog::exec() : static_cast<int>(Rejected); }

void DialogFiche::Ouvre() {
  if (Ajout())
    Commence();
  else
    m_lu = LitA(m_position);
  Boutons(Ajout() ? Mode::Ajout : Mode::Modification, true);
  Presente();
}

void DialogFiche::Presente() {
  Montre();
  MontreTitre();
  const auto permet = [this](const QString& nom, int pas) {
    if (auto* bouton = findChild<QPushButton*>(nom))
      bouton->setEnabled(!Ajout() && m_vue && m_vue->Voisin(pas) != 0);
  };
  permet(u"precedent"_s, -1);
  permet(u"suivant"_s, 1);
  FigeSiCloture();
}

void DialogFiche::MontreChamps() {
  for (const ChampFiche& champ : m_table.champs)
    std::visit([&](const auto* valeur) { fenlor::Montre(Zone(), champ, *valeur); }, champ.valeur(m_fiche));
}

void DialogFiche::LitChamps(void* fiche) {
  for (const ChampFiche& champ : m_table.champs) LitChamp(champ.nom, fiche);
}

void DialogFiche::LitChamp(const char* nom, void* fiche) {
  const auto* editeur = Champ<QWidget>(Zone(), nom);
  const ChampFiche* champ = m_table.Trouve(nom);
  if (champ && (!editeur || editeur->isEnabled()))
    std::visit([&](auto* valeur) { Lit(Zone(), *champ, *valeur); }, champ->valeur(fiche));
}

bool DialogFiche::Enregistre() {
  Position position = 0;
  if (const Refus refus = SauveSaisie(position)) return Refuse(refus);
  m_derniere = position;
  m_aChange = true;
  if (!Ajout()) {
    m_position = position;
    if (m_vue) m_vue->Remplace(position);
  }
  return true;
}

void DialogFiche::Vide() {
  Commence();
  Presente();
}

void DialogFiche::Voisin(int pas) {
  const Position position = m_vue ? m_vue->Voisin(pas) : 0;
  if (position == 0 || !LitA(position)) return;
  m_vue->VaVers(pas);
  m_position = m_derniere = position;
  Presente();
}

}  // namespace fenlor

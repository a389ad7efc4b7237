#include "ui/champsfiche.h"

#include <QRadioButton>
#include <algorithm>

#include "core/valeurs.h"
#include "ui/editeurs.h"
#include "ui/texteqt.h"

namespace fenlor {

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
  if (auto* date = Champ<EditeurDate>(zone, champ.nom)) date->setText(Q(texte));
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
  if (auto* date = Champ<EditeurDate>(zone, champ.nom)) texte = De1252(date->text());
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

void MontreChamps(const QWidget& zone, const TableFiche& table, const void* fiche) {
  for (const ChampFiche& champ : table.champs)
    std::visit([&](const auto* valeur) { Montre(zone, champ, *valeur); }, ValeurDe(champ, fiche));
}

void LitChamps(const QWidget& zone, const TableFiche& table, void* fiche) {
  for (const ChampFiche& champ : table.champs) LitChamp(zone, table, champ.nom, fiche);
}

void LitChamp(const QWidget& zone, const TableFiche& table, const char* nom, void* fiche) {
  const auto* editeur = Champ<QWidget>(zone, nom);
  const ChampFiche* champ = table.Trouve(nom);
  if (champ && (!editeur || editeur->isEnabled()))
    std::visit([&](auto* valeur) { Lit(zone, *champ, *valeur); }, champ->valeur(fiche));
}

}  // namespace fenlor

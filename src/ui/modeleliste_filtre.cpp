#include <cassert>
#include <cmath>

#include "core/valeurs.h"
#include "ui/modeleliste.h"

// The quick filter of a list: which rows hold all words, and what their amounts come to.

namespace fenlor {

void ModeleListe::OublieFiltre() {
  m_plies.clear();
  m_sommes.clear();
}

void ModeleListe::Ajoute(std::size_t colonne, const QString& texte, Somme& somme) {
  const qsizetype virgule = texte.lastIndexOf(QLatin1Char(','));
  const bool debit = texte.startsWith(QLatin1String("D "));
  const auto norme = virgule < 0 ? std::nullopt : NormeMontant(De1252(debit ? texte.mid(2) : texte));
  somme.autre = somme.autre || !norme || norme->empty();
  if (somme.autre) return;
  somme.montant = true;
  somme.solde = somme.solde || debit;
  somme.centimes += (debit ? -1 : 1) * std::llround(std::strtod(norme->c_str(), nullptr) * 100);
  m_unites[colonne] = texte.mid(virgule + 3).trimmed();
}

void ModeleListe::LitPourFiltre(Donnee donnee) {
  const VueLigne vue = m_lecture ? m_lecture(donnee) : VueLigne{};
  std::string& plie = m_plies.emplace_back();
  const std::size_t premiere = m_sommes.size();
  m_sommes.resize(premiere + m_titres.size());
  m_unites.resize(m_titres.size());
  for (const QStringList& rangee : vue.rangees)
    for (qsizetype i = 0; i < rangee.size(); ++i) {
      const auto colonne = static_cast<std::size_t>(i);
      const Titre& titre = m_titres.at(colonne);
      const QString texte = rangee[i].trimmed();
      if (texte.isEmpty()) continue;
      // A line end stands in no word.
      AjouteSansAccents(plie, De1252(titre.marque.isEmpty() ? texte : titre.marque) + '\n');
      if (titre.cote & Qt::AlignRight) Ajoute(colonne, texte, m_sommes[premiere + colonne]);
    }
}

bool ModeleListe::PrepareFiltre(std::size_t auPlus) {
  const std::vector<LigneListe>& toutes = EstFiltre() ? m_toutes : m_lignes;
  if (m_plies.size() > toutes.size()) OublieFiltre();
  for (; auPlus > 0 && m_plies.size() < toutes.size(); --auPlus) LitPourFiltre(toutes[m_plies.size()].donnee);
  return m_plies.size() < toutes.size();
}

void ModeleListe::Filtre() {
  while (PrepareFiltre(m_toutes.size())) continue;
  m_lignes.clear();
  m_places.clear();
  for (std::size_t i = 0; i < m_toutes.size(); ++i) {
    const auto tient = [&](const std::string& mot) { return m_plies[i].find(mot) != std::string::npos; };
    if (!std::all_of(m_mots.begin(), m_mots.end(), tient)) continue;
    m_lignes.push_back(m_toutes[i]);
    m_places.push_back(i);
  }
}

void ModeleListe::PoseFiltre(const QString& mots) {
  std::vector<std::string> plies;
  for (const QString& mot : mots.split(QLatin1Char(' '), Qt::SkipEmptyParts))
    AjouteSansAccents(plies.emplace_back(), De1252(mot));
  if (plies == m_mots) return;
  beginResetModel();
  if (!EstFiltre()) m_toutes = std::move(m_lignes);
  m_mots = std::move(plies);
  m_vues.clear();
  if (EstFiltre()) {
    Filtre();
  } else {
    m_lignes = std::move(m_toutes);
    m_toutes.clear();
    m_places.clear();
  }
  endResetModel();
}

std::size_t ModeleListe::PlaceDe(int ligne) const {
  if (!EstFiltre()) return static_cast<std::size_t>(ligne);
  return ligne < NbLignes() ? m_places[static_cast<std::size_t>(ligne)] : m_toutes.size();
}

std::vector<ModeleListe::Donnee> ModeleListe::Toutes() const {
  std::vector<Donnee> donnees;
  for (const LigneListe& ligne : EstFiltre() ? m_toutes : m_lignes) donnees.push_back(ligne.donnee);
  return donnees;
}

QString ModeleListe::Total(int colonne) {
  if (colonne < 0 || colonne >= columnCount()) return {};
  while (PrepareFiltre(static_cast<std::size_t>(NbToutes()))) continue;
  const auto rang = static_cast<std::size_t>(colonne);
  Somme total;
  for (int ligne = 0; ligne < NbLignes(); ++ligne) {
    const std::size_t cellule = PlaceDe(ligne) * m_titres.size() + rang;
    assert(cellule < m_sommes.size());
    const Somme& somme = m_sommes[cellule];
    if (somme.autre) return {};
    total.montant = total.montant || somme.montant;
    total.solde = total.solde || somme.solde;
    total.centimes += somme.centimes;
  }
  if (!total.montant) return {};
  const f64 valeur = static_cast<f64>(total.centimes) / 100;
  const QString texte = Q(total.solde ? FormatSoldeSaisie(valeur, 2, false) : FormatSaisie(valeur, 2, false));
  const QString& unite = m_unites[rang];
  return (texte.isEmpty() ? QStringLiteral("0,00") : texte) +
         (unite.isEmpty() ? QString() : QLatin1Char(' ') + unite);
}

}  // namespace fenlor

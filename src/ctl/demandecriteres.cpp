#include "ctl/demandecriteres.h"

#include <algorithm>

#include "core/erreurs.h"
#include "core/valeurs.h"
#include "ctl/optionscommunes.h"
#include "store/definitions.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr const char* TousLesComptes = "*";

constexpr unsigned GroupePeriode = GroupeJours | GroupeMois;

unsigned GroupesDe(FormeCriteres forme) {
  switch (forme) {
    case FormeCriteres::CompteEtPeriode:
      return GroupeCompte | GroupePeriode | GroupeAffichage;
    case FormeCriteres::PeriodeEtAffichage:
      return GroupePeriode | GroupeAffichage;
    case FormeCriteres::GenreEtPeriode:
      return GroupeGenre | GroupePeriode;
    case FormeCriteres::Periode:
      return GroupePeriode;
    case FormeCriteres::Compte:
      return GroupeCompte | GroupeAffichage;
  }
  return 0;
}

// In the order of their values.
constexpr const char* Genres[] = {"recettes", "depenses", "od", "toutes"};
constexpr const char* Centralisations[] = {"detaillee", "jour", "semaine", "mois"};
constexpr const char* Affichages[] = {"credit-debit", "montant"};

template <std::size_t N>
FormeOption FormeDe(const char* const (&mots)[N]) {
  return FormeMots({std::begin(mots), std::end(mots)});
}
template <std::size_t N>
int Rang(const char* const (&mots)[N], const std::string& mot) {
  return static_cast<int>(std::find(std::begin(mots), std::end(mots), mot) - std::begin(mots));
}

}  // namespace

void DeclareOptionsCriteres(Commande& commande, OptionsCriteres& o) {
  commande.Option("--du", o.du, FormeDate(), "Premier jour (par défaut : celui de l'exercice)")
      .Option("--au", o.au, FormeDate(), "Dernier jour (par défaut : celui de l'exercice)")
      .Option("--mois", o.mois, FormeMois(), "Le mois, au lieu de --du et --au")
      .Exclut("--du")
      .Exclut("--au")
      .Option("--compte", o.compte, {"COMPTE|tous"}, "Compte, par son code ou son numéro (par défaut : tous)")
      .Option("--genre", o.genre, FormeDe(Genres), "Écritures (par défaut : toutes)")
      .Option("--centralisation", o.centralisation, FormeDe(Centralisations),
              "Recettes (par défaut : détaillées)")
      .Option("--affichage", o.affichage, FormeDe(Affichages), "Colonnes (par défaut : credit-debit)");
}

std::string FauteOptionsCriteres(const OptionsCriteres& o) {
  if (o.centralisation && (o.genre == "depenses" || o.genre == "od"))
    return "--centralisation ne va pas avec --genre " + *o.genre;
  return {};
}

std::string OptionEnTrop(const OptionsCriteres& o, unsigned groupes) {
  const struct {
    const char* nom;
    bool donnee;
    GroupeCriteres groupe;
  } options[] = {{"--du", o.du.has_value(), GroupeJours},
                 {"--au", o.au.has_value(), GroupeJours},
                 {"--mois", o.mois.has_value(), GroupeMois},
                 {"--compte", o.compte.has_value(), GroupeCompte},
                 {"--genre", o.genre.has_value(), GroupeGenre},
                 {"--centralisation", o.centralisation.has_value(), GroupeGenre},
                 {"--affichage", o.affichage.has_value(), GroupeAffichage}};
  for (const auto& option : options)
    if (option.donnee && !(groupes & option.groupe)) return option.nom;
  return {};
}

bool DemandeurOptions::Prepare() {
  if (!m_options.compte || *m_options.compte == "tous") return true;
  const Ouverture plan(m_contexte.Magasin, FichierComptes);
  if (plan && m_comptes.Charge(m_contexte.App)) return true;
  m_contexte.RefuseMagasin();
  return false;
}

bool DemandeurOptions::Demande(FormeCriteres forme, const std::string&, unsigned comptes,
                               CriteresEtat& criteres) {
  m_groupes = GroupesDe(forme);
  if (!Faute().empty()) return false;
  const OptionsCriteres& o = m_options;
  if (o.mois) GetMonth(GetDate("01/" + *o.mois), criteres.du, criteres.au);
  if (o.du) criteres.du = GetDate(*o.du);
  if (o.au) criteres.au = GetDate(*o.au);
  if (o.genre) criteres.genre = Rang(Genres, *o.genre);
  if (o.centralisation) criteres.centralisation = Rang(Centralisations, *o.centralisation);
  if (o.affichage) criteres.affichage = AffichageCreditDebit + Rang(Affichages, *o.affichage);
  if (!(m_groupes & GroupeCompte) || PoseCompte(comptes, criteres.compte)) return true;
  m_refuse = true;
  return false;
}

bool DemandeurOptions::PoseCompte(unsigned comptes, std::string& compte) {
  if (!m_options.compte || *m_options.compte == "tous") {
    compte = TousLesComptes;
    if (comptes & MasqueAutres) return true;
    m_contexte.Refuse(ErrCompteObligatoire, {});
    return false;
  }
  const std::string texte = DepuisUtf8(*m_options.compte).value_or(std::string());
  constexpr i16 types[] = {Recette, Depense, Tresorerie, Tva, Autre};  // bit by bit
  const Plan* parNumero = m_comptes.ParNumero(QVAPI::GetLongCompte(texte));
  for (unsigned i = 0; i < std::size(types); ++i) {
    if (!(comptes & 1u << i)) continue;
    const Plan* plan = m_comptes.ParCode(types[i], texte);
    if (!plan && parNumero && parNumero->Type == types[i]) plan = parNumero;
    if (!plan) continue;
    compte = LitTexte(plan->Compte);
    return true;
  }
  return m_contexte.Invalide("compte", "aucun compte de cet état n'a ce code ou ce numéro."_w);
}

}  // namespace fenlor

#include "ctl/demandecriteres.h"

#include <algorithm>
#include <cassert>

#include "banque/textes.h"
#include "core/erreurssaisie.h"
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
      return GroupeCompte | GroupePeriode | GroupeAffichage | GroupeProgressif | GroupeMouvements;
    case FormeCriteres::PeriodeEtAffichage:
      return GroupePeriode | GroupeAffichage | GroupeMouvements;
    case FormeCriteres::GenreEtPeriode:
      return GroupeGenre | GroupePeriode;
    case FormeCriteres::Periode:
      return GroupePeriode;
    case FormeCriteres::Compte:
      return GroupeCompte | GroupeAffichage | GroupeMouvements;
    case FormeCriteres::Mouvements:
      return GroupeMouvements;
  }
  return 0;
}

// In the order of their values.
constexpr const char* Genres[] = {"recettes", "depenses", "od", "toutes"};
constexpr const char* Centralisations[] = {"detaillee", "jour", "semaine", "mois"};
constexpr const char* Affichages[] = {"credit-debit", "montant"};
constexpr const char* EtatsRemise[] = {"non-remis", "remis", "date", "tous"};

template <std::size_t N>
FormeOption FormeDe(const char* const (&mots)[N]) {
  return FormeMots({std::begin(mots), std::end(mots)});
}
template <std::size_t N>
int Rang(const char* const (&mots)[N], const std::string& mot) {
  return static_cast<int>(std::find(std::begin(mots), std::end(mots), mot) - std::begin(mots));
}

}  // namespace

void DeclareOptionsPeriode(Commande& commande, OptionsCriteres& o, bool tous) {
  commande.Option("--du", o.du, FormeDate(), "Premier jour (par défaut : celui de l'exercice)")
      .Option("--au", o.au, FormeDate(), "Dernier jour (par défaut : celui de l'exercice)")
      .Option("--mois", o.mois, FormeMois(), "Le mois, au lieu de --du et --au")
      .Exclut("--du")
      .Exclut("--au")
      .Option("--compte", o.compte, {tous ? "COMPTE|tous" : "COMPTE"},
              tous ? "Compte, par son code ou son numéro (par défaut : tous)"
                   : "Compte bancaire, par son code ou son numéro");
}

void DeclareOptionsRemise(Commande& commande, OptionsCriteres& o) {
  commande
      .Option("--cheques", o.cheques, FormeDe(EtatsRemise),
              "Chèques d'une remise : ceux-là seulement, date : remis à celle de --date")
      .Option("--date", o.date, FormeDate(), "Date de la remise (par défaut : aujourd'hui)")
      .Option("--monnaie", o.monnaie, FormeMonnaie(), "Monnaie des chèques (par défaut : toutes)");
}

void DeclareOptionsCriteres(Commande& commande, OptionsCriteres& o) {
  DeclareOptionsPeriode(commande, o, true);
  commande.Option("--genre", o.genre, FormeDe(Genres), "Écritures (par défaut : toutes)")
      .Option("--centralisation", o.centralisation, FormeDe(Centralisations),
              "Recettes (par défaut : détaillées)")
      .Option("--affichage", o.affichage, FormeDe(Affichages), "Colonnes (par défaut : credit-debit)")
      .Drapeau("--solde-progressif", o.progressif, "Extrait : le solde après chaque ligne");
  commande.Drapeau("--mouvementes", o.mouvementes, "Comptes mouvementés seulement");
  DeclareOptionsRemise(commande, o);
  commande.Drapeau("--remettre", o.remettre, "Remise : remet à cette date les chèques qu'elle imprime");
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
                 {"--affichage", o.affichage.has_value(), GroupeAffichage},
                 {"--mouvementes", o.mouvementes, GroupeMouvements},
                 {"--cheques", o.cheques.has_value(), GroupeRemise},
                 {"--date", o.date.has_value(), GroupeDateRemise},
                 {"--monnaie", o.monnaie.has_value(), GroupeRemise},
                 {"--solde-progressif", o.progressif, GroupeProgressif},
                 {"--remettre", o.remettre, GroupeRemise}};
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
  PosePeriode(criteres.du, criteres.au);
  criteres.mouvementes = o.mouvementes;
  if (o.genre) criteres.genre = Rang(Genres, *o.genre);
  if (o.centralisation) criteres.centralisation = Rang(Centralisations, *o.centralisation);
  criteres.soldeProgressif = o.progressif;
  if (o.affichage) criteres.affichage = AffichageCreditDebit + Rang(Affichages, *o.affichage);
  if (!(m_groupes & GroupeCompte) || PoseCompte(comptes, criteres.compte)) return true;
  m_refuse = true;
  return false;
}

void DemandeurOptions::PosePeriode(Date& du, Date& au) const {
  const OptionsCriteres& o = m_options;
  if (o.mois) GetMonth(GetDate("01/" + *o.mois), du, au);
  if (o.du) du = GetDate(*o.du);
  if (o.au) au = GetDate(*o.au);
}

bool DemandeurOptions::DemandeRemise(const std::string& fichier, CriteresRemise& criteres) {
  m_groupes = GroupeCompte | GroupePeriode | GroupeRemise | GroupeDateRemise;
  if (!Faute().empty()) return false;
  CFenlorApp& app = m_contexte.App;
  m_refuse = true;
  if (!PoseRemise(criteres, m_options.remettre ? EtatRemise::NonRemis : EtatRemise::RemisACetteDate))
    return false;
  ListeRemise liste(app, fichier);
  Refus refus = liste.Remplit(criteres);
  if (!refus && m_options.remettre) refus = liste.RemetTout(true);
  if (refus) return m_contexte.Refuse(refus) == StatutFait;
  liste.ImprimeTout(true);
  m_refuse = false;
  return true;
}

bool DemandeurOptions::PoseRemise(CriteresRemise& criteres, EtatRemise etat) {
  const OptionsCriteres& o = m_options;
  CFenlorApp& app = m_contexte.App;
  criteres.du = app.Reglages.GetDebutExercice();
  criteres.au = app.Reglages.GetFinExercice();
  criteres.date = o.date ? GetDate(*o.date) : app.Magasin.Today();
  PosePeriode(criteres.du, criteres.au);
  criteres.etat = o.cheques ? static_cast<EtatRemise>(Rang(EtatsRemise, *o.cheques) + 1) : etat;
  if (o.monnaie) criteres.monnaie = *o.monnaie == "euro" ? MonnaieRemise::Euro : MonnaieRemise::Franc;
  if (!PoseCompte(MasqueTresorerie, criteres.compte)) return false;
  const Plan* compte = m_comptes.ParNumero(criteres.compte);
  if (compte && compte->TypeTresorerie != 0) return true;
  m_contexte.Refuse(ErrCompteNonBancaire, {DepuisUtf8(*o.compte).value_or(std::string())});
  return false;
}

bool DemandeurOptions::PoseCompte(unsigned comptes, std::string& compte) {
  assert(comptes != 0 && (comptes & ~unsigned{MasqueTous}) == 0);
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

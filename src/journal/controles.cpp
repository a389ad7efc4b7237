#include "journal/controles.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "core/nomschamps.h"
#include "core/textes.h"
#include "journal/textes.h"
#include "store/definitions.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// The account that `lit` names is in the chart; else the question is asked until
/// it is, or until an answer brings nothing new.
Refus ControleCompteParticulier(CFenlorApp& app, const TexteFixe& texte, std::string (QVAPI::*lit)()) {
  assert(lit && texte != 0);
  Plan plan;
  std::string compte = (app.Magasin.*lit)();
  while (!LitCompte(app, compte, plan)) {
    const Refus reponse = app.Demande(BoutonsOkAnnuler | IconeAttention, RepOk, texte);
    if (reponse) return reponse;
    const std::string choisi = (app.Magasin.*lit)();
    if (choisi == compte && !LitCompte(app, choisi, plan)) return Refus::DejaDit(texte);
    compte = choisi;
  }
  return {};
}

std::string TexteDeChamp(f64 montant) {
  char tampon[352];
  std::snprintf(tampon, sizeof tampon, "%.2f", montant);
  return tampon;
}

}  // namespace

Refus Serie::Demande(unsigned style, unsigned sorte, const TexteFixe& texte,
                     std::initializer_list<std::string> arguments) {
  constexpr unsigned boutons = 15;
  if (m_toutes.contains(sorte)) return {};
  if (m_rangees > 1) style = (style & ~boutons) | BoutonsSerie;
  const int reponse = m_app.MessageId(style, texte, arguments);
  if (reponse == RepOui) return {};
  if (reponse == RepTous) {
    m_toutes.insert(sorte);
    if (!m_progression)
      m_progression.emplace(m_app.Boite, Texte(TitreApplication), Texte(TexteTraitement), true,
                            static_cast<u32>(m_rangees));
    return {};
  }
  if (m_rangees > 1 && reponse == RepAnnuler) m_arretee = true;
  return Refus::DejaDit(texte, "", arguments);
}

void Serie::Recommence() {
  m_faites = 0;
  m_arretee = false;
}

void Serie::Note(const Refus& refus) {
  assert(m_refusees <= m_rangees);
  if (!refus || refus.dit) return;
  if (m_refusees++ == 0) m_premier = refus;
}

Refus Serie::Issue() const {
  assert((m_refusees == 0) == (m_premier.numero == 0));
  return m_refusees < 2 ? m_premier : Refus(ErrSerie, "", {std::to_string(m_refusees), m_premier.texte});
}

bool Serie::Suivante() {
  assert(m_faites < m_rangees);
  if (m_progression) {
    m_app.Boite.SetPos(static_cast<u32>(m_faites));
    m_arretee = m_arretee || m_app.Boite.IsAborted();
  }
  ++m_faites;
  return !m_arretee;
}

Refus LivresOuverts::Ouvre(CFenlorApp& app) {
  assert(!m_plan && !m_journal);
  assert(!app.PathExercice.empty());
  // Whoever holds both open keeps them so until the rule is done.
  if (app.Magasin.GetOpenFlagPlan() && app.Magasin.GetOpenFlagJournal()) return {};
  m_plan = Ouverture(app.Magasin, FichierComptes, app.PathExercice);
  if (m_plan) m_journal = Ouverture(app.Magasin, FichierJournal, app.PathExercice);
  return m_journal ? Refus{} : app.EchecMagasin();
}

bool LitCompte(CFenlorApp& app, const std::string& compte, Plan& plan) {
  std::memset(&plan, 0, sizeof plan);
  if (compte.empty()) return false;
  PoseTexte(plan.Compte, QVAPI::GetLongCompte(compte));
  if (app.Magasin.GetOpenFlagPlan()) return app.Magasin.ReadPlan(plan, 0) != 0;
  const Ouverture fichier(app.Magasin, FichierComptes, app.PathExercice);
  return fichier && app.Magasin.ReadPlan(plan, 0) != 0;
}

Refus ControleExercice(CFenlorApp& app, LivresOuverts& livres) {
  if (app.PathExercice.empty()) return Refus(ErrAucunExercice);
  if (const Refus r = app.ControleEcriture()) return r;
  return livres.Ouvre(app);
}

bool ParcoursEcriture(CFenlorApp& app, u32 mouvement, const std::function<bool(const Line&)>& suite) {
  constexpr u16 cleMouvement = 79;  // entry, rank
  constexpr std::size_t chiffres = 10;
  const std::string debut = MakeJournalKey5(mouvement, 0, 0, 0).substr(0, chiffres);
  return app.Magasin.QVParcoursCle(cleMouvement, debut, debut + '\xFF', [&](Position, const void* rec) {
    return suite(*static_cast<const Line*>(rec));
  });
}

Refus LitEntete(CFenlorApp& app, u32 mouvement, Mouvement& entete) {
  entete = {};
  if (app.Magasin.ReadMouvements(app.PathExercice, mouvement, entete)) return {};
  return Refus(ErrEcritureInconnue, "mouvement", {std::to_string(mouvement)});
}

Refus ControleExistante(CFenlorApp& app, u32 mouvement, Permis permis, Mouvement& entete) {
  entete = {};
  if (mouvement == 0) return {};
  if (const Refus r = LitEntete(app, mouvement, entete)) return r;
  if (entete.Validee && !permis.validee)
    return Refus(ErrModificationValidee, "mouvement", {LitTexte(entete.Libelle)});
  if (entete.LienId && !permis.liee) return Refus(ErrEcritureQuorbane, "mouvement");
  return {};
}

Refus ControleLibelle(const std::string& libelle, int indice) {
  assert(indice >= -1);
  if (libelle.size() <= TailleLibelle) return {};
  return Refus(ErrTexteTropLong, "libelle", {NomChamp("libelle"), std::to_string(TailleLibelle)}, indice);
}

Refus ControleMontant(const char* champ, f64 montant, int indice) {
  assert(champ && *champ && indice >= -1);
  if (MontantTient(montant)) return {};
  return Refus(ErrChampInvalide, champ,
               {NomChamp(champ), "16 caractères au plus, deux décimales comprises"_w}, indice);
}

bool DansExercice(CFenlorApp& app, Date date) {
  return IsDateOk(date) && date >= app.Reglages.GetDebutExercice() && date <= app.Reglages.GetFinExercice();
}

Refus ControleDate(CFenlorApp& app, Date date, Date ancienne) {
  const bool memeMois = ancienne == 0 || (Annee(date) == Annee(ancienne) && Mois(date) == Mois(ancienne));
  return DansExercice(app, date) && memeMois ? Refus{} : Refus(ErrDateIncorrecte, "date");
}

Refus ControleFranc(CFenlorApp& app, bool euro, Date date) {
  if (euro) return {};
  const Date limite = app.Reglages.GetLimiteFranc();
  return date <= limite ? Refus{} : Refus(ErrFrancApresLimite, "monnaie", {StrDate(limite)});
}

Refus NumeroDe(CFenlorApp& app, i16 journal, u32 demande, Date date, const Mouvement& entete, u32& ligne) {
  ligne = demande ? demande : u32{entete.Ligne};
  if (entete.Mouvement == 0 || ligne == 0) {
    const u32 libre = app.Magasin.GetFreeJournalLine(app.PathExercice, static_cast<u16>(journal), {}, date);
    ligne = libre == 0 ? 0 : std::max(ligne, libre);
  }
  return ligne == 0 ? app.EchecDit() : Refus{};
}

DeuxMonnaies EnDeuxMonnaies(bool euro, f64 taux, f64 montant) {
  assert(taux > 0);
  if (euro) return {QVAPI::ConvertEuroToFranc(taux, montant), montant};
  return {montant, QVAPI::ConvertFrancToEuro(taux, montant)};
}

i64 CentimesDeChamp(f64 montant) { return std::llround(montant * 100); }

f64 MontantDeChamp(f64 montant) {
  // What "%.2f" writes and reads back is the nearest double to a whole number of cents: that of the exact
  // product, of which the computed one tells the same wherever it is not near a half.
  constexpr f64 exacts = 70368744177664;  // 2 to the 46th: the product misses by less than a hundredth
  const f64 centimes = montant * 100, entiers = std::nearbyint(centimes);
  if (std::fabs(centimes) < exacts && std::fabs(centimes - entiers) < 0.49) return entiers / 100 + 0.0;
  // Adding a positive zero clears the sign of "-0.00".
  return std::strtod(TexteDeChamp(montant).c_str(), nullptr) + 0.0;
}

bool MontantTient(f64 montant) {
  constexpr f64 certains = 1e11;  // twelve digits at most with what rounding adds, a sign and ".00"
  if (std::fabs(montant) < certains) return true;
  return std::isfinite(montant) && TexteDeChamp(montant).size() <= static_cast<std::size_t>(TailleMontant);
}

Refus CheckComptePerso(CFenlorApp& app) {
  return ControleCompteParticulier(app, ErrComptePersonnelAbsent, &QVAPI::GetComptePerso);
}

Refus CheckCompteEcartCredit(CFenlorApp& app) {
  return ControleCompteParticulier(app, ErrCompteEcartCredit, &QVAPI::GetCompteEcartCredit);
}

Refus CheckCompteEcartDebit(CFenlorApp& app) {
  return ControleCompteParticulier(app, ErrCompteEcartDebit, &QVAPI::GetCompteEcartDebit);
}

Refus CheckCompteVireTo(CFenlorApp& app) {
  return ControleCompteParticulier(app, ErrCompteVirementRecettes, &QVAPI::GetCompteVireTo);
}

Refus CheckCompteVireFrom(CFenlorApp& app) {
  return ControleCompteParticulier(app, ErrCompteVirementDepenses, &QVAPI::GetCompteVireFrom);
}

}  // namespace fenlor

#include "journal/controles.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/erreurs.h"
#include "core/nomschamps.h"
#include "core/textes.h"
#include "journal/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// The account that `lit` names is in the chart; else the question is asked until
/// it is, or until an answer brings nothing new.
ResultatSaisie ControleCompteParticulier(CFenlorApp& app, const TexteFixe& texte,
                                         std::string (QVAPI::*lit)()) {
  Plan plan;
  std::string compte = (app.Magasin.*lit)();
  while (!LitCompte(app, compte, plan)) {
    const ResultatSaisie reponse = Demande(app, BoutonsOkAnnuler | IconeAttention, RepOk, texte);
    if (!reponse) return reponse;
    const std::string choisi = (app.Magasin.*lit)();
    if (choisi == compte && !LitCompte(app, choisi, plan)) return {texte, "", -1, Texte(texte)};
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

ResultatSaisie RefuseDit(CFenlorApp& app, const TexteFixe& texte, const char* champ,
                         std::initializer_list<std::string> arguments, int indice) {
  app.ReportErreur(texte, arguments);
  return {texte, champ, indice, TexteFormat(texte, arguments)};
}

ResultatSaisie Demande(CFenlorApp& app, unsigned style, int attendue, const TexteFixe& texte,
                       const char* champ, std::initializer_list<std::string> arguments) {
  if (app.MessageId(style, texte, arguments) == attendue) return {};
  return {texte, champ, -1, TexteFormat(texte, arguments)};
}

Serie::~Serie() {
  if (m_progression) m_app.Boite.FermeProgress();
  if (m_refusees == 1) m_app.Boite.Erreur(m_premierRefus, m_texteRefus);
  if (m_refusees > 1) m_app.ReportErreur(ErrSerie, {std::to_string(m_refusees), m_texteRefus});
}

ResultatSaisie Serie::Demande(unsigned style, unsigned sorte, const TexteFixe& texte,
                              std::initializer_list<std::string> arguments) {
  constexpr unsigned boutons = 15;
  if (m_toutes.contains(sorte)) return {};
  if (m_rangees > 1) style = (style & ~boutons) | BoutonsSerie;
  const int reponse = m_app.MessageId(style, texte, arguments);
  if (reponse == RepOui) return {};
  if (reponse == RepTous) {
    m_toutes.insert(sorte);
    if (!m_progression)
      m_app.Boite.OuvreProgress(Texte(TitreApplication), Texte(TexteTraitement), true,
                                static_cast<u32>(m_rangees));
    m_progression = true;
    return {};
  }
  if (m_rangees > 1 && reponse == RepAnnuler) m_arretee = true;
  return {texte, "", -1, TexteFormat(texte, arguments)};
}

ResultatSaisie Serie::Refus(const TexteFixe& erreur, std::initializer_list<std::string> arguments) {
  if (m_rangees < 2) return fenlor::RefuseDit(m_app, erreur, "mouvement", arguments);
  const std::string texte = TexteFormat(erreur, arguments);
  if (m_refusees++ == 0) {
    m_premierRefus = erreur;
    m_texteRefus = texte;
  }
  return {erreur, "mouvement", -1, texte};
}

bool Serie::Suivante() {
  if (m_progression) {
    m_app.Boite.SetPos(static_cast<u32>(m_faites));
    m_arretee = m_arretee || m_app.Boite.IsAborted();
  }
  ++m_faites;
  return !m_arretee;
}

ResultatSaisie EchecMagasin(CFenlorApp& app) {
  const std::string texte = app.Magasin.QVErreurTexte(app.Magasin.QVFileErrorCode());
  return {ErrMagasin, "", -1, TexteFormat(ErrMagasin, {texte})};
}

ResultatSaisie RefusMagasin(CFenlorApp& app) {
  return RefuseDit(app, ErrMagasin, "", {app.Magasin.QVErreurTexte(app.Magasin.QVFileErrorCode())});
}

ResultatSaisie LivresOuverts::Ouvre(CFenlorApp& app) {
  // Whoever holds both open keeps them so until the rule is done.
  if (app.Magasin.GetOpenFlagPlan() && app.Magasin.GetOpenFlagJournal()) return {};
  m_plan = Ouverture(app.Magasin, FichierComptes, app.PathExercice);
  if (m_plan) m_journal = Ouverture(app.Magasin, FichierJournal, app.PathExercice);
  return m_journal ? ResultatSaisie{} : RefusMagasin(app);
}

bool LitCompte(CFenlorApp& app, const std::string& compte, Plan& plan) {
  std::memset(&plan, 0, sizeof plan);
  if (compte.empty()) return false;
  PoseTexte(plan.Compte, QVAPI::GetLongCompte(compte));
  if (app.Magasin.GetOpenFlagPlan()) return app.Magasin.ReadPlan(plan, 0) != 0;
  const Ouverture fichier(app.Magasin, FichierComptes, app.PathExercice);
  return fichier && app.Magasin.ReadPlan(plan, 0) != 0;
}

ResultatSaisie ControleExercice(CFenlorApp& app, LivresOuverts& livres) {
  if (app.PathExercice.empty()) return RefuseDit(app, ErrAucunExercice);
  if (app.Reglages.IsExerciceCloture()) return RefuseDit(app, ErrExerciceCloture);
  return livres.Ouvre(app);
}

ResultatSaisie ControleExistante(CFenlorApp& app, u32 mouvement, Permis permis, Mouvement& entete) {
  entete = {};
  if (mouvement == 0) return {};
  if (!app.Magasin.ReadMouvements(app.PathExercice, mouvement, entete))
    return RefuseDit(app, ErrEcritureInconnue, "mouvement", {std::to_string(mouvement)});
  if (entete.Validee && !permis.validee)
    return RefuseDit(app, ErrModificationValidee, "mouvement", {LitTexte(entete.Libelle)});
  if (entete.LienId && !permis.liee) return RefuseDit(app, ErrEcritureQuorbane, "mouvement");
  return {};
}

ResultatSaisie ControleLibelle(CFenlorApp& app, const std::string& libelle, int indice) {
  if (libelle.size() <= TailleLibelle) return {};
  return RefuseDit(app, ErrTexteTropLong, "libelle", {NomChamp("libelle"), std::to_string(TailleLibelle)},
                   indice);
}

ResultatSaisie ControleMontant(CFenlorApp& app, const char* champ, f64 montant, int indice) {
  if (MontantTient(montant)) return {};
  return RefuseDit(app, ErrChampInvalide, champ,
                   {NomChamp(champ), "16 caractères au plus, deux décimales comprises"_w}, indice);
}

bool DansExercice(CFenlorApp& app, Date date) {
  return IsDateOk(date) && date >= app.Reglages.GetDebutExercice() && date <= app.Reglages.GetFinExercice();
}

ResultatSaisie ControleDate(CFenlorApp& app, Date date, Date ancienne) {
  const bool memeMois = ancienne == 0 || (Annee(date) == Annee(ancienne) && Mois(date) == Mois(ancienne));
  return DansExercice(app, date) && memeMois ? ResultatSaisie{} : RefuseDit(app, ErrDateIncorrecte, "date");
}

ResultatSaisie ControleFranc(CFenlorApp& app, bool euro, Date date) {
  if (euro) return {};
  const Date limite = app.Reglages.GetLimiteFranc();
  return date <= limite ? ResultatSaisie{}
                        : RefuseDit(app, ErrFrancApresLimite, "monnaie", {StrDate(limite)});
}

ResultatSaisie NumeroDe(CFenlorApp& app, i16 journal, u32 demande, Date date, const Mouvement& entete,
                        u32& ligne) {
  ligne = demande ? demande : u32{entete.Ligne};
  if (entete.Mouvement == 0 || ligne == 0) {
    const u32 libre = app.Magasin.GetFreeJournalLine(app.PathExercice, static_cast<u16>(journal), {}, date);
    ligne = libre == 0 ? 0 : std::max(ligne, libre);
  }
  return ligne == 0 ? EchecMagasin(app) : ResultatSaisie{};
}

DeuxMonnaies EnDeuxMonnaies(bool euro, f64 taux, f64 montant) {
  if (euro) return {QVAPI::ConvertEuroToFranc(taux, montant), montant};
  return {montant, QVAPI::ConvertFrancToEuro(taux, montant)};
}

i64 CentimesDeChamp(f64 montant) { return std::llround(montant * 100); }

f64 MontantDeChamp(f64 montant) {
  // Adding a positive zero clears the sign of "-0.00".
  return std::strtod(TexteDeChamp(montant).c_str(), nullptr) + 0.0;
}

bool MontantTient(f64 montant) {
  return std::isfinite(montant) && TexteDeChamp(montant).size() <= static_cast<std::size_t>(TailleMontant);
}

ResultatSaisie CheckComptePerso(CFenlorApp& app) {
  return ControleCompteParticulier(app, ErrComptePersonnelAbsent, &QVAPI::GetComptePerso);
}

ResultatSaisie CheckCompteEcartCredit(CFenlorApp& app) {
  return ControleCompteParticulier(app, ErrCompteEcartCredit, &QVAPI::GetCompteEcartCredit);
}

ResultatSaisie CheckCompteEcartDebit(CFenlorApp& app) {
  return ControleCompteParticulier(app, ErrCompteEcartDebit, &QVAPI::GetCompteEcartDebit);
}

ResultatSaisie CheckCompteVireTo(CFenlorApp& app) {
  return ControleCompteParticulier(app, ErrCompteVirementRecettes, &QVAPI::GetCompteVireTo);
}

ResultatSaisie CheckCompteVireFrom(CFenlorApp& app) {
  return ControleCompteParticulier(app, ErrCompteVirementDepenses, &QVAPI::GetCompteVireFrom);
}

}  // namespace fenlor

#include "ctl/saisisseur.h"

#include <algorithm>
#include <cassert>
#include <optional>

#include "core/texte.h"
#include "journal/ecriturelue.h"
#include "journal/odlue.h"
#include "journal/textes.h"
#include "store/definitions.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr unsigned QuestionsOrdonnees[] = {QuestionSuppression,     QuestionRapprocher,
                                           QuestionDerapprocher,    QuestionValiderOD,
                                           QuestionValiderStandard, QuestionValiderSimple};

}  // namespace

Saisisseur::Saisisseur(Contexte& contexte)
    : m_contexte(contexte),
      m_app(contexte.App),
      m_fichierComptes(contexte.Magasin, FichierComptes),
      m_fichierJournal(contexte.Magasin, FichierJournal) {}

bool Saisisseur::Prepare() {
  m_contexte.Dialogue.Ordonne({std::begin(QuestionsOrdonnees), std::end(QuestionsOrdonnees)});
  m_euro = m_app.Reglages.IsEuro();
  return m_fichierComptes && m_fichierJournal && m_comptes.Charge(m_app);
}

ReponseSaisie Saisisseur::Traite(const Json& objet, const Refus& illisible, u32 numero) {
  const QVAPI::Instant instant(m_contexte.Magasin);
  ReponseSaisie reponse{numero, {}, illisible};
  DemandeSaisie demande;
  if (!reponse.refus) reponse.refus = LitDemande(objet, demande);
  if (!reponse.refus) reponse.refus = Execute(demande, reponse.faite);
  m_contexte.Oublie();
  return reponse;
}

Refus Saisisseur::Execute(const DemandeSaisie& demande, EcritureFaite& faite) {
  assert(demande.mouvement != 0 || demande.journal);
  Mouvement entete{};
  if (demande.mouvement != 0) {
    if (!m_app.Magasin.ReadMouvements(m_app.PathExercice, demande.mouvement, entete)) {
      const int code = m_app.Magasin.QVFileErrorCode();
      if (code != ErrEcritureAbsente) return m_contexte.DernierEchec();
      return Refus(ErrEcritureInconnue, "", {std::to_string(demande.mouvement)});
    }
    if (demande.journal && *demande.journal != entete.Journal)
      return RefusChamp("journal", "une écriture ne change pas de journal."_w);
    if (const Refus refus = ControleGenre(demande, entete.Journal, entete.Genre == GenreOD)) return refus;
  }
  faite = {demande.mouvement, entete.Ligne};
  if (demande.supprimer.value_or(false)) return SupprimeEcriture(m_app, demande.mouvement);

  const bool enregistre = demande.mouvement == 0 || demande.Contenu();
  std::optional<QVAPI::Unite> unite;
  if (enregistre + demande.pointer.has_value() + demande.rapprocher.has_value() +
          demande.valider.has_value() >
      1)
    unite.emplace(m_app.Magasin);
  if (entete.Validee && demande.valider && !*demande.valider) {
    if (const Refus refus = ValideEcriture(m_app, demande.mouvement, false)) return refus;
    entete.Validee = 0;
  }
  const bool od = demande.mouvement != 0 ? entete.Genre == GenreOD : *demande.journal == JournalOD;
  if (enregistre)
    if (const Refus refus = od ? EnregistreLibre(demande, faite) : Enregistre(demande, faite)) return refus;
  if (const Refus refus = Marque(demande, faite.mouvement)) return refus;
  return !unite || unite->Valide() ? Refus{} : m_contexte.DernierEchec();
}

Refus Saisisseur::Enregistre(const DemandeSaisie& demande, EcritureFaite& faite) {
  assert(m_fichierComptes && m_fichierJournal);
  const bool nouvelle = demande.mouvement == 0;
  SaisieEcriture saisie;
  if (nouvelle) {
    saisie.journal = *demande.journal;
    saisie.euro = m_euro;
  } else {
    EcritureLue lue;
    if (const Refus refus = LitEcriture(m_app, demande.mouvement, lue)) return refus;
    saisie = std::move(lue.saisie);
    saisie.tresoreries.assign(lue.lignes.begin(), lue.lignes.end());
  }
  PoseTresorerie(demande, saisie);
  if (demande.paiement && saisie.genre == GenreStandard) return RefusPaiement();
  saisie.paiement = demande.paiement.value_or(saisie.paiement);
  saisie.euro = demande.euro.value_or(saisie.euro);
  if (demande.date) saisie.date = GetDate(*demande.date);
  if (demande.libelle) saisie.libelle = *demande.libelle;
  if (demande.compte) saisie.compte = QVAPI::GetLongCompte(*demande.compte);
  if (demande.code) {
    const Plan* compte =
        m_comptes.ParCode(saisie.journal == JournalRecettes ? Recette : Depense, *demande.code);
    saisie.compte = compte ? LitTexte(compte->Compte) : std::string();
  }
  saisie.validee = demande.valider.value_or(saisie.validee);

  const Plan* compte = m_comptes.ParNumero(saisie.compte);
  const f64 ttc = demande.ttc.value_or(saisie.montants.ttc);
  if (!compte)
    saisie.montants.ttc = ttc;
  else if (demande.professionnel)
    saisie.montants = ChaineProfessionnel(m_app, *compte, ttc, *demande.professionnel);
  else if (demande.ttc || demande.compte || demande.code)
    saisie.montants = ChaineMontants(m_app, *compte, ttc);
  return EnregistreEcriture(m_app, saisie, faite);
}

/// The accounts that are asked for. What stays on an account that the entry has already, alone or in a line,
/// keeps its mode of payment; in one that becomes simple on another account that of the first line.
void Saisisseur::PoseTresorerie(const DemandeSaisie& demande, SaisieEcriture& saisie) const {
  assert(!demande.tresoreries || !demande.tresorerie);
  if (!demande.tresoreries && !demande.tresorerie) return;
  std::vector<LigneTresorSaisie> anciennes;
  if (saisie.genre == GenreStandard)
    anciennes = std::move(saisie.tresoreries);
  else if (!saisie.tresorerie.empty())
    anciennes.push_back({saisie.tresorerie, 0, saisie.paiement});
  const auto mode = [&](const std::string& compte, i16 sinon) {
    const auto ligne = std::find_if(anciennes.begin(), anciennes.end(),
                                    [&](const LigneTresorSaisie& l) { return l.compte == compte; });
    return ligne == anciennes.end() ? sinon : ligne->paiement;
  };
  saisie.tresoreries.clear();
  if (demande.tresorerie) {
    saisie.genre = GenreSimple;
    saisie.tresorerie = CompteTresorerie(*demande.tresorerie);
    saisie.paiement =
        mode(saisie.tresorerie, anciennes.empty() ? saisie.paiement : anciennes.front().paiement);
    return;
  }
  saisie.genre = GenreStandard;
  for (const DemandeTresor& tresor : *demande.tresoreries) {
    const std::string compte = CompteTresorerie(tresor.compte);
    saisie.tresoreries.push_back(
        {compte, tresor.montant, tresor.paiement.value_or(mode(compte, PaiementCheque))});
  }
}

Refus Saisisseur::EnregistreLibre(const DemandeSaisie& demande, EcritureFaite& faite) {
  assert(m_fichierComptes && m_fichierJournal);
  SaisieOD saisie;
  saisie.euro = m_euro;
  if (demande.mouvement != 0) {
    ODLue lue;
    if (const Refus refus = LitOD(m_app, demande.mouvement, lue)) return refus;
    saisie = std::move(lue.saisie);
    if (demande.libelle) SuitLibelle(lue.lignes, saisie.libelle, *demande.libelle);
    saisie.lignes = LignesSaisies(lue.lignes);
  }
  saisie.euro = demande.euro.value_or(saisie.euro);
  if (demande.date) saisie.date = GetDate(*demande.date);
  if (demande.libelle) saisie.libelle = *demande.libelle;
  saisie.validee = demande.valider.value_or(saisie.validee);
  if (demande.lignes) {
    saisie.lignes.clear();
    for (const DemandeLigneOD& ligne : *demande.lignes) {
      std::string compte = ligne.compte ? QVAPI::GetLongCompte(*ligne.compte) : std::string();
      if (ligne.code)
        if (const Plan* plan = m_comptes.ParCode(-1, *ligne.code)) compte = LitTexte(plan->Compte);
      saisie.lignes.push_back({std::move(compte), ligne.libelle, ligne.debit, ligne.credit, ligne.paiement});
    }
  }
  return EnregistreOD(m_app, saisie, faite);
}

Refus Saisisseur::Marque(const DemandeSaisie& demande, u32 mouvement) {
  assert(mouvement != 0);
  if (demande.pointer) {
    Mouvement entete{};
    if (!m_app.Magasin.ReadMouvements(m_app.PathExercice, mouvement, entete))
      return m_contexte.DernierEchec();
    if ((entete.Pointee != 0) != *demande.pointer)
      if (const Refus refus = PointeEcriture(m_app, mouvement)) return refus;
  }
  if (demande.rapprocher)
    if (const Refus refus = RapprocheEcriture(m_app, mouvement, *demande.rapprocher)) return refus;
  return demande.valider ? ValideEcriture(m_app, mouvement, *demande.valider) : Refus{};
}

std::string Saisisseur::CompteTresorerie(const std::string& texte) const {
  if (const Plan* compte = m_comptes.ParCode(Tresorerie, texte)) return LitTexte(compte->Compte);
  return QVAPI::GetLongCompte(texte);
}

}  // namespace fenlor

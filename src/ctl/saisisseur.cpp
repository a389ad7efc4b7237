#include "ctl/saisisseur.h"

#include <algorithm>
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

ReponseSaisie Saisisseur::Traite(const std::string& ligne, u32 numero) {
  ReponseSaisie reponse;
  reponse.entree = numero;
  Json objet;
  DemandeSaisie demande;
  RefusLigne refus = LitObjet(ligne, numero, objet);
  if (!refus) refus = LitDemande(objet, demande);
  if (refus) {
    reponse.erreur = refus.numero;
    reponse.texte = refus.texte;
    return reponse;
  }

  ResultatSaisie resultat = Execute(demande);
  reponse.mouvement = resultat.mouvement;
  reponse.ligne = resultat.ligne;
  reponse.erreur = resultat.erreur;
  reponse.texte = std::move(resultat.texte);
  if (reponse.erreur != 0 && reponse.texte.empty()) m_contexte.DernierEchec(reponse.erreur, reponse.texte);
  m_contexte.Oublie();
  return reponse;
}

ResultatSaisie Saisisseur::Execute(const DemandeSaisie& demande) {
  Mouvement entete{};
  if (demande.mouvement != 0) {
    if (!m_app.Magasin.ReadMouvements(m_app.PathExercice, demande.mouvement, entete)) {
      const int code = m_app.Magasin.QVFileErrorCode();
      if (code != ErrEcritureAbsente) return EchecMagasin();
      return Refuse(
          {ErrEcritureInconnue, TexteFormat(ErrEcritureInconnue, {std::to_string(demande.mouvement)})});
    }
    if (demande.journal && *demande.journal != entete.Journal)
      return Refuse(RefusChamp("journal", "une écriture ne change pas de journal."_w));
    if (RefusLigne refus = ControleGenre(demande, entete.Journal, entete.Genre == GenreOD))
      return Refuse(refus);
  }
  if (demande.supprimer.value_or(false)) return SupprimeEcriture(m_app, demande.mouvement);

  const bool enregistre = demande.mouvement == 0 || demande.Contenu();
  std::optional<QVAPI::Unite> unite;
  if (enregistre + demande.pointer.has_value() + demande.rapprocher.has_value() +
          demande.valider.has_value() >
      1)
    unite.emplace(m_app.Magasin);
  ResultatSaisie resultat;
  resultat.mouvement = demande.mouvement;
  resultat.ligne = entete.Ligne;
  if (entete.Validee && demande.valider && !*demande.valider) {
    const ResultatSaisie r = ValideEcriture(m_app, demande.mouvement, false);
    if (!r) return r;
    entete.Validee = 0;
  }
  const bool od = demande.mouvement != 0 ? entete.Genre == GenreOD : *demande.journal == JournalOD;
  if (enregistre) resultat = od ? EnregistreLibre(demande) : Enregistre(demande);
  if (!resultat) return resultat;
  if (const ResultatSaisie r = Marque(demande, resultat.mouvement); !r) return r;
  return !unite || unite->Valide() ? resultat : EchecMagasin();
}

ResultatSaisie Saisisseur::Enregistre(const DemandeSaisie& demande) {
  const bool nouvelle = demande.mouvement == 0;
  SaisieEcriture saisie;
  if (nouvelle) {
    saisie.journal = *demande.journal;
    saisie.euro = m_euro;
  } else {
    EcritureLue lue;
    if (const ResultatSaisie r = LitEcriture(m_app, demande.mouvement, lue); !r) return r;
    saisie = std::move(lue.saisie);
    saisie.tresoreries.assign(lue.lignes.begin(), lue.lignes.end());
  }
  PoseTresorerie(demande, saisie);
  if (demande.paiement && saisie.genre == GenreStandard) return Refuse(RefusPaiement());
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
  return EnregistreEcriture(m_app, saisie);
}

/// The accounts that are asked for. What stays on an account that the entry has already, alone or in a line,
/// keeps its mode of payment; in one that becomes simple on another account that of the first line.
void Saisisseur::PoseTresorerie(const DemandeSaisie& demande, SaisieEcriture& saisie) const {
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

ResultatSaisie Saisisseur::EnregistreLibre(const DemandeSaisie& demande) {
  SaisieOD saisie;
  saisie.euro = m_euro;
  if (demande.mouvement != 0) {
    ODLue lue;
    if (const ResultatSaisie r = LitOD(m_app, demande.mouvement, lue); !r) return r;
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
  return EnregistreOD(m_app, saisie);
}

ResultatSaisie Saisisseur::Marque(const DemandeSaisie& demande, u32 mouvement) {
  ResultatSaisie fait;
  if (demande.pointer) {
    Mouvement entete{};
    if (!m_app.Magasin.ReadMouvements(m_app.PathExercice, mouvement, entete)) return EchecMagasin();
    if ((entete.Pointee != 0) != *demande.pointer)
      if (ResultatSaisie r = PointeEcriture(m_app, mouvement); !r) return r;
  }
  if (demande.rapprocher)
    if (ResultatSaisie r = RapprocheEcriture(m_app, mouvement, *demande.rapprocher); !r) return r;
  if (demande.valider)
    if (ResultatSaisie r = ValideEcriture(m_app, mouvement, *demande.valider); !r) return r;
  return fait;
}

std::string Saisisseur::CompteTresorerie(const std::string& texte) const {
  if (const Plan* compte = m_comptes.ParCode(Tresorerie, texte)) return LitTexte(compte->Compte);
  return QVAPI::GetLongCompte(texte);
}

ResultatSaisie Saisisseur::Refuse(const RefusLigne& refus) const {
  ResultatSaisie r;
  r.erreur = refus.numero;
  r.texte = refus.texte;
  return r;
}

ResultatSaisie Saisisseur::EchecMagasin() {
  ResultatSaisie r;
  m_contexte.DernierEchec(r.erreur, r.texte);
  return r;
}

}  // namespace fenlor

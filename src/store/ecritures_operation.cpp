#include "store/ecritures_operation.h"

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <cstdlib>

#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u16 CleComptes = 69;
constexpr u16 CleJournalDate = 75;
constexpr u16 CleJournalMouvement = 79;

std::string SansBarreFinale(std::string dossier) {
  while (dossier.size() > 1 && dossier.back() == '/') dossier.pop_back();
  return dossier;
}

std::string DebutMouvement(u32 mouvement) {
  char texte[16];
  std::snprintf(texte, sizeof texte, "%010u", mouvement);
  return texte;
}

/// Key of `EtatQVAPI::derniereLigne`; 0 for what is not counted.
u32 MoisDe(unsigned journal, Date date) {
  if (journal < 1 || journal > 9 || Annee(date) > 9999 || Mois(date) > 15) return 0;
  return (journal << 24) | (Annee(date) << 4) | Mois(date);
}

}  // namespace

OperationEcriture::OperationEcriture(QVAPI& magasin, EtatQVAPI& etat, const std::string& exercice,
                                     Fichiers fichiers)
    : m_magasin(magasin), m_etat(etat) {
  if (!etat.moteur || !etat.moteur->EstOuvert()) {
    Refuse(ErrPasOuvert);
    return;
  }
  if (!Ouvre(FichierJournal, exercice, m_journal)) return;
  const std::string journal = moteur().CheminOuvert(FichierJournal);
  if (fichiers == JournalEtComptes && !Ouvre(FichierComptes, DossierDe(journal), m_comptes)) {
    return;
  }
  if (etat.cheminCompteurs != journal) etat.derniereLigneLue = 0;
  if (m_journal || etat.annulationsVues != moteur().NbAnnulations() || etat.cheminCompteurs != journal) {
    etat.OublieCompteurs();
    etat.annulationsVues = moteur().NbAnnulations();
    etat.cheminCompteurs = journal;
  }
  assert(moteur().EstOuvertFichier(FichierJournal));
  assert(fichiers == JournalSeul || moteur().EstOuvertFichier(FichierComptes));
  m_pret = true;
}

OperationEcriture::~OperationEcriture() {
  m_comptes = {};
  m_journal = {};
  if (m_code) m_etat.Refuse(m_code);
}

bool OperationEcriture::Ouvre(u16 numero, const std::string& dossier, Ouverture& fichier) {
  const std::string chemin = moteur().CheminOuvert(numero);
  if (!chemin.empty()) {
    if (dossier.empty() || SansBarreFinale(dossier) == SansBarreFinale(DossierDe(chemin))) return true;
    return Refuse(ErrPasOuvert);
  }
  fichier = Ouverture(m_magasin, numero, dossier);
  return fichier || Echoue();
}

bool OperationEcriture::Refuse(int code, const std::string& texte) {
  assert(code != ErrAucune);
  m_code = code;
  m_etat.Refuse(code);
  m_etat.DitErreur(texte.empty() ? m_magasin.QVEchecTexte() : texte);
  return false;
}

bool OperationEcriture::RefuseSansMot(int code) {
  m_code = code;
  return m_etat.Refuse(code);
}

bool OperationEcriture::Echoue() {
  const int code = m_magasin.QVFileErrorCode();
  return Refuse(code ? code : ErrCles);
}

bool OperationEcriture::RefuseAbsente(u32 mouvement) {
  return Refuse(ErrEcritureAbsente, "L'écriture "_w + std::to_string(mouvement) + " n'existe pas."_w);
}

bool OperationEcriture::TrouveCompte(const char* compte, Position& position) {
  const std::string numero(compte, strnlen(compte, sizeof(Plan::Compte)));
  Position& connue = m_etat.positionsComptes[numero];
  if (connue && connue <= moteur().NombreEmplacements(FichierComptes)) {
    const Plan* plan = VuePlan(connue);
    if (plan &&
        numero.compare(0, std::string::npos, plan->Compte, strnlen(plan->Compte, sizeof plan->Compte)) == 0) {
      position = connue;
      return true;
    }
  }
  moteur().PoseErreur(ErrAucune);
  position = connue = moteur().TrouveCle(CleComptes, MakePlanKey1(numero));
  return position || moteur().Erreur() == ErrAucune || moteur().Erreur() == ErrCleAbsente;
}

const Plan* OperationEcriture::VuePlan(Position position) {
  return reinterpret_cast<const Plan*>(moteur().Vue(FichierComptes, position));
}

const Line* OperationEcriture::VueLigne(Position position) {
  return reinterpret_cast<const Line*>(moteur().Vue(FichierJournal, position));
}

bool OperationEcriture::CompleteCompte(Line& ligne, bool designation) {
  Position position = 0;
  if (!TrouveCompte(ligne.Compte, position)) return Echoue();
  const Plan* plan = position ? VuePlan(position) : nullptr;
  if (!plan) {
    const std::string numero = LitTexte(ligne.Compte);
    return Refuse(ErrCompteAbsent, numero.empty()
                                       ? "Une ligne de l'écriture n'a pas de compte."_w
                                       : "Le compte "_w + numero + " n'existe pas dans le plan comptable."_w);
  }
  ligne.TypeCompte = plan->Type;
  if (designation) std::memcpy(ligne.Designation, plan->Designation, sizeof ligne.Designation);
  return true;
}

bool OperationEcriture::LitPositions(u32 mouvement, std::vector<Position>& positions) {
  positions.clear();
  moteur().PoseErreur(ErrAucune);
  std::string cle = DebutMouvement(mouvement);
  Position position = moteur().Borne(CleJournalMouvement, cle);
  while (position && QVAPI::GetMouvements(cle, 4) == mouvement) {
    positions.push_back(position);
    position = moteur().Suivant(CleJournalMouvement, cle);
  }
  return position || moteur().Erreur() == ErrAucune || moteur().Erreur() == ErrCleAbsente || Echoue();
}

bool OperationEcriture::LitEcriture(u32 mouvement, std::vector<Position>& positions,
                                    std::vector<Line>& lignes) {
  lignes.clear();
  if (!LitPositions(mouvement, positions)) return false;
  lignes.reserve(positions.size());
  for (const Position position : positions) {
    const Line* vue = VueLigne(position);
    if (!vue) return Refuse(ErrEndommage);
    lignes.push_back(*vue);
    lignes.back().Reserve0 = 0;
  }
  assert(lignes.size() == positions.size());
  return true;
}

Position OperationEcriture::AjouteLigne(const Line& ligne, EffetsComptes& effets) {
  assert(moteur().Profondeur() > 0 && ligne.Mouvement != 0);
  const Position position = moteur().Ajoute(FichierJournal, &ligne);
  if (!position || !moteur().AjouteCles(FichierJournal, position, &ligne, true)) {
    Echoue();
    return 0;
  }
  effets.Ajoute(ligne);
  return position;
}

bool OperationEcriture::RemplaceLignes(const std::vector<Position>& positions,
                                       const std::vector<Line>& anciennes, const std::vector<Line>& nouvelles,
                                       EffetsComptes& effets) {
  assert(moteur().Profondeur() > 0 && positions.size() == anciennes.size());
  for (const Line& ligne : anciennes) effets.Retire(ligne);
  for (const Line& ligne : nouvelles) effets.Ajoute(ligne);
  const std::size_t communes = std::min(anciennes.size(), nouvelles.size());
  for (std::size_t i = communes; i < anciennes.size(); ++i) {
    if (!moteur().SupprimeCles(FichierJournal, positions[i], &anciennes[i]) ||
        !moteur().Supprime(FichierJournal, positions[i])) {
      return Echoue();
    }
  }
  for (std::size_t i = 0; i < communes; ++i) {
    if (std::memcmp(&anciennes[i], &nouvelles[i], sizeof(Line)) == 0) continue;
    if (!moteur().Remplace(FichierJournal, positions[i], &nouvelles[i])) return Echoue();
  }
  for (std::size_t i = communes; i < nouvelles.size(); ++i) {
    const Position position = moteur().Ajoute(FichierJournal, &nouvelles[i]);
    if (!position || !moteur().AjouteCles(FichierJournal, position, &nouvelles[i], false)) return Echoue();
  }
  return true;
}

bool OperationEcriture::Applique(const EffetsComptes& effets) {
  assert(moteur().Profondeur() > 0);  // totals and lines are one unit
  for (const EffetsComptes::Poste& poste : effets.Postes()) {
    if (poste.cumuls == Cumuls{}) continue;
    Position position = 0;
    if (!TrouveCompte(poste.compte, position)) return Echoue();
    const Plan* vu = position ? VuePlan(position) : nullptr;
    if (!vu) continue;
    Plan plan = *vu;
    if (!AjouteCumuls(plan, poste.cumuls)) return Refuse(ErrValeur);
    if (std::memcmp(&plan, vu, sizeof plan) == 0) continue;
    if (!moteur().Ecrit(FichierComptes, position, &plan)) return Echoue();
  }
  return true;
}

bool OperationEcriture::DernierMouvement(u32& mouvement) {
  if (!m_etat.dernierMouvementConnu) {
    moteur().PoseErreur(ErrAucune);
    std::string cle;
    const Position position = moteur().Dernier(CleJournalMouvement, cle);
    if (!position && moteur().Erreur() != ErrAucune && moteur().Erreur() != ErrCleAbsente) return Echoue();
    m_etat.dernierMouvement = position ? QVAPI::GetMouvements(cle, 4) : 0;
    m_etat.dernierMouvementConnu = true;
  }
  mouvement = m_etat.dernierMouvement;
  return true;
}

bool OperationEcriture::MouvementExiste(u32 mouvement, bool& existe) {
  u32 dernier = 0;
  if (!DernierMouvement(dernier)) return false;
  existe = mouvement == dernier && dernier != 0;
  if (mouvement >= dernier) return true;
  std::vector<Position> positions;
  if (!LitPositions(mouvement, positions)) return false;
  existe = !positions.empty();
  return true;
}

bool OperationEcriture::RangLibre(u32 mouvement, u32& rang) {
  if (m_etat.mouvementRang != mouvement) {
    u32 dernier = 0;
    if (!DernierMouvement(dernier)) return false;
    u32 libre = 0;
    if (mouvement <= dernier) {
      std::vector<Position> positions;
      if (!LitPositions(mouvement, positions)) return false;
      if (!positions.empty()) {
        const Line* derniere = VueLigne(positions.back());
        if (!derniere) return Refuse(ErrEndommage);
        libre = derniere->Rang + 1;
      }
    }
    m_etat.mouvementRang = mouvement;
    m_etat.prochainRang = libre;
  }
  rang = m_etat.prochainRang;
  return true;
}

bool OperationEcriture::DerniereLigne(u16 journal, Date date, u32& ligne) {
  const u32 mois = MoisDe(journal, date);
  if (!mois) return Refuse(ErrValeur);
  if (const auto connue = m_etat.derniereLigne.find(mois); connue != m_etat.derniereLigne.end()) {
    ligne = connue->second;
    return true;
  }
  moteur().PoseErreur(ErrAucune);
  const std::string debut =
      MakeJournalKey1(journal, FaitDate(0, Mois(date), Annee(date)), 0, 0, "", 0).substr(0, 7);
  std::string cle = debut;
  u32 plusHaute = 0;
  Position position = moteur().Borne(CleJournalDate, cle);
  while (position && cle.compare(0, debut.size(), debut) == 0) {
    if (cle.size() >= 49) {
      plusHaute = std::max(plusHaute, static_cast<u32>(std::strtoul(cle.c_str() + 39, nullptr, 10)));
    }
    position = moteur().Suivant(CleJournalDate, cle);
  }
  if (!position && moteur().Erreur() != ErrAucune && moteur().Erreur() != ErrCleAbsente) return Echoue();
  ligne = m_etat.derniereLigne[mois] = plusHaute;
  return true;
}

void OperationEcriture::CompteAjout(const Line& ligne) {
  if (m_etat.dernierMouvementConnu)
    m_etat.dernierMouvement = std::max(m_etat.dernierMouvement, u32{ligne.Mouvement});
  const auto mois = m_etat.derniereLigne.find(MoisDe(static_cast<u16>(ligne.Journal), ligne.Date));
  if (mois != m_etat.derniereLigne.end()) mois->second = std::max(mois->second, u32{ligne.Ligne});
  if (m_etat.mouvementRang == ligne.Mouvement)
    m_etat.prochainRang = std::max(m_etat.prochainRang, u32{ligne.Rang} + 1);
}

void OperationEcriture::CompteRetrait(const Line& ligne, bool entreeReste) {
  if (!entreeReste && ligne.Mouvement == m_etat.dernierMouvement) m_etat.dernierMouvementConnu = false;
  const auto mois = m_etat.derniereLigne.find(MoisDe(static_cast<u16>(ligne.Journal), ligne.Date));
  if (mois != m_etat.derniereLigne.end() && ligne.Ligne >= mois->second) m_etat.derniereLigne.erase(mois);
  if (m_etat.mouvementRang == ligne.Mouvement) m_etat.mouvementRang = 0;
}

}  // namespace fenlor

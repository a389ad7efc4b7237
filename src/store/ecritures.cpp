#include <cassert>
#include <cstdlib>

#include "store/ecritures_lignes.h"
#include "store/ecritures_operation.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// No entry has it: behind it there is no next one.
constexpr u32 MouvementReserve = 0xFFFFFFFF;

/// Treasury lines of a record; false when its ticket does not hold them.
bool LignesTresor(const EtatQVAPI& etat, const EcrStandard& rec, std::span<const LineTresor>& tresor) {
  if (rec.NbLignesTresorerie == 0) return true;
  const auto table = etat.lignesTresor.find(u32{rec.LignesTresorerie});
  if (table == etat.lignesTresor.end() || table->second.size() < rec.NbLignesTresorerie) return false;
  tresor = {table->second.data(), rec.NbLignesTresorerie};
  return true;
}

int Deplie(EtatQVAPI&, const EcrSimple& rec, const std::string& perso, std::vector<Line>& lignes) {
  return DeplieEcriture(rec, perso, lignes);
}
int Deplie(EtatQVAPI& etat, const EcrStandard& rec, const std::string& perso, std::vector<Line>& lignes) {
  std::span<const LineTresor> tresor;
  return LignesTresor(etat, rec, tresor) ? DeplieEcriture(rec, tresor, perso, lignes) : int{ErrValeur};
}

/// Lines of the record with their accounts; a refusal has been told.
template <class Rec>
bool Prepare(QVAPI& magasin, EtatQVAPI& etat, OperationEcriture& op, const Rec& rec,
             std::vector<Line>& lignes) {
  std::string perso;
  if (!rec.ComptePerso[0] && AvecPersonnel(rec)) perso = magasin.GetComptePerso();
  if (const int code = Deplie(etat, rec, perso, lignes)) return op.Refuse(code);
  for (Line& ligne : lignes) {
    if (!op.CompleteCompte(ligne, true)) return false;
  }
  return true;
}

template <class Rec>
u32 AjouteEcriture(QVAPI& magasin, EtatQVAPI& etat, const std::string& exercice, Rec& rec) {
  OperationEcriture op(magasin, etat, exercice);
  std::vector<Line> lignes;
  if (!op || !Prepare(magasin, etat, op, rec, lignes)) return 0;
  u32 mouvement = rec.Mouvement;
  if (mouvement) {
    bool existe = false;
    if (!op.MouvementExiste(mouvement, existe)) return 0;
    if (existe) return op.Refuse(ErrValeur);
  } else {
    if (!op.DernierMouvement(mouvement)) return 0;
    if (++mouvement >= MouvementReserve) return op.Refuse(ErrCompteurMouvement);
  }
  QVAPI::Unite unite(magasin);
  EffetsComptes effets;
  for (Line& ligne : lignes) {
    ligne.Mouvement = mouvement;
    if (!op.AjouteLigne(ligne, effets)) return 0;
  }
  if (!op.Applique(effets)) return 0;
  if (!unite.Valide()) return op.Echoue();
  for (const Line& ligne : lignes) op.CompteAjout(ligne);
  assert(mouvement != 0 && !lignes.empty());
  rec.Mouvement = mouvement;
  rec.Genre = lignes.front().Genre;
  return mouvement;
}

template <class Rec>
bool ChangeEcriture(QVAPI& magasin, EtatQVAPI& etat, const std::string& exercice, u32 mouvement, Rec& rec) {
  OperationEcriture op(magasin, etat, exercice);
  std::vector<Position> positions;
  std::vector<Line> anciennes, nouvelles;
  if (!op || !op.LitEcriture(mouvement, positions, anciennes)) return false;
  if (anciennes.empty()) return op.RefuseAbsente(mouvement);
  if (anciennes.front().Genre == GenreOD) {
    return op.Refuse(ErrEcritureAbsente,
                     "L'écriture "_w + std::to_string(mouvement) + " est une opération diverse."_w);
  }
  if (!Prepare(magasin, etat, op, rec, nouvelles)) return false;
  assert(!nouvelles.empty() && positions.size() == anciennes.size());
  for (Line& ligne : nouvelles) ligne.Mouvement = mouvement;
  ReconduitMarques(anciennes, nouvelles);
  QVAPI::Unite unite(magasin);
  EffetsComptes effets;
  if (!op.RemplaceLignes(positions, anciennes, nouvelles, effets) || !op.Applique(effets)) return false;
  if (!unite.Valide()) return op.Echoue();
  for (const Line& ligne : anciennes) op.CompteRetrait(ligne, true);
  for (const Line& ligne : nouvelles) op.CompteAjout(ligne);
  rec.Mouvement = mouvement;
  rec.Genre = nouvelles.front().Genre;
  return true;
}

bool RetireEcriture(QVAPI& magasin, EtatQVAPI& etat, const std::string& exercice, u32 mouvement) {
  OperationEcriture op(magasin, etat, exercice);
  std::vector<Position> positions;
  std::vector<Line> lignes;
  if (!op || !op.LitEcriture(mouvement, positions, lignes)) return false;
  if (lignes.empty()) return op.RefuseAbsente(mouvement);
  QVAPI::Unite unite(magasin);
  EffetsComptes effets;
  if (!op.RemplaceLignes(positions, lignes, {}, effets) || !op.Applique(effets)) return false;
  if (!unite.Valide()) return op.Echoue();
  for (const Line& ligne : lignes) op.CompteRetrait(ligne, false);
  return true;
}

/// Changes the lines of an entry by `change(line)`, without any effect on accounts.
template <class Change>
bool ChangeLignes(QVAPI& magasin, EtatQVAPI& etat, const std::string& exercice, u32 mouvement, Change change,
                  bool sansRetour = false) {
  OperationEcriture op(magasin, etat, exercice, OperationEcriture::JournalSeul);
  std::vector<Position> positions;
  std::vector<Line> anciennes;
  if (!op || !op.LitEcriture(mouvement, positions, anciennes)) return false;
  if (anciennes.empty()) return op.RefuseAbsente(mouvement);
  std::vector<Line> nouvelles = anciennes;
  change(nouvelles);
  assert(nouvelles.size() == anciennes.size());
  QVAPI::Unite unite(magasin);
  if (sansRetour) unite.SansRetour();
  EffetsComptes sansEffet;
  if (!op.RemplaceLignes(positions, anciennes, nouvelles, sansEffet)) return false;
  if (!unite.Valide()) return op.Echoue();
  for (const Line& ligne : anciennes) op.CompteRetrait(ligne, true);
  for (const Line& ligne : nouvelles) op.CompteAjout(ligne);
  return true;
}

bool ValideLignes(QVAPI& magasin, EtatQVAPI& etat, const std::string& exercice, u32 mouvement, u32 valide) {
  const auto valider = [valide](std::vector<Line>& lignes) {
    for (Line& ligne : lignes) ligne.Validee = valide != 0;
  };
  return ChangeLignes(magasin, etat, exercice, mouvement, valider, true);
}

/// Rewrites one line with its effects. `nouvelle` has been normalised.
bool RemplaceLigne(QVAPI& magasin, OperationEcriture& op, Position position, const Line& ancienne,
                   const Line& nouvelle) {
  assert(position != 0);
  QVAPI::Unite unite(magasin);
  EffetsComptes effets;
  if (!op.RemplaceLignes({position}, {ancienne}, {nouvelle}, effets) || !op.Applique(effets)) return false;
  if (!unite.Valide()) return op.Echoue();
  op.CompteRetrait(ancienne, ancienne.Mouvement == nouvelle.Mouvement);
  op.CompteAjout(nouvelle);
  return true;
}

/// Lines of an entry for a reader; false, without a word when there is none.
bool LitPourLecture(OperationEcriture& op, u32 mouvement, std::vector<Line>& lignes) {
  std::vector<Position> positions;
  if (!op || !op.LitEcriture(mouvement, positions, lignes)) return false;
  return !lignes.empty() || op.RefuseSansMot(ErrEcritureAbsente);
}

}  // namespace

u32 QVAPI::AddEcrSimple(const std::string& exercice, EcrSimple& rec) {
  return AjouteEcriture(*this, *m_etat, exercice, rec);
}
u32 QVAPI::AddEcrStandard(const std::string& exercice, EcrStandard& rec) {
  return AjouteEcriture(*this, *m_etat, exercice, rec);
}
bool QVAPI::UpdateEcrSimple(const std::string& exercice, u32 mouvement, EcrSimple& rec) {
  return ChangeEcriture(*this, *m_etat, exercice, mouvement, rec);
}
bool QVAPI::UpdateEcrStandard(const std::string& exercice, u32 mouvement, EcrStandard& rec) {
  return ChangeEcriture(*this, *m_etat, exercice, mouvement, rec);
}

u32 QVAPI::ReadEcrSimple(const std::string& exercice, u32 mouvement, EcrSimple& rec) {
  OperationEcriture op(*this, *m_etat, exercice, OperationEcriture::JournalSeul);
  std::vector<Line> lignes;
  if (!LitPourLecture(op, mouvement, lignes)) return 0;
  if (lignes.front().Genre != GenreSimple) return op.RefuseSansMot(ErrEcritureAbsente);
  ReplieEcriture(lignes, rec);
  return mouvement;
}

u32 QVAPI::ReadEcrStandard(const std::string& exercice, u32 mouvement, EcrStandard& rec) {
  OperationEcriture op(*this, *m_etat, exercice, OperationEcriture::JournalSeul);
  std::vector<Line> lignes;
  if (!LitPourLecture(op, mouvement, lignes)) return 0;
  if (lignes.front().Genre != GenreStandard) return op.RefuseSansMot(ErrEcritureAbsente);
  std::vector<LineTresor> tresor;
  ReplieEcriture(lignes, rec, tresor);
  while (m_etat->prochainTicket == 0 || m_etat->lignesTresor.contains(m_etat->prochainTicket)) {
    ++m_etat->prochainTicket;
  }
  rec.LignesTresorerie = m_etat->prochainTicket++;
  m_etat->lignesTresor.emplace(u32{rec.LignesTresorerie}, std::move(tresor));
  return mouvement;
}

u32 QVAPI::ReadOpDiverses(const std::string& exercice, u32 mouvement, Mouvement& rec) {
  OperationEcriture op(*this, *m_etat, exercice, OperationEcriture::JournalSeul);
  std::vector<Line> lignes;
  if (!LitPourLecture(op, mouvement, lignes)) return 0;
  if (lignes.front().Genre != GenreOD) return op.RefuseSansMot(ErrEcritureAbsente);
  ReplieEcriture(lignes, rec);
  return mouvement;
}

u32 QVAPI::ReadMouvements(const std::string& exercice, u32 mouvement, Mouvement& rec) {
  OperationEcriture op(*this, *m_etat, exercice, OperationEcriture::JournalSeul);
  std::vector<Line> lignes;
  if (!LitPourLecture(op, mouvement, lignes)) return 0;
  ReplieEcriture(lignes, rec);
  return mouvement;
}

bool QVAPI::RemoveEcrSimple(const std::string& exercice, u32 mouvement) {
  return RetireEcriture(*this, *m_etat, exercice, mouvement);
}
bool QVAPI::RemoveEcrStandard(const std::string& exercice, u32 mouvement) {
  return RetireEcriture(*this, *m_etat, exercice, mouvement);
}
bool QVAPI::RemoveMouvements(const std::string& exercice, u32 mouvement) {
  return RetireEcriture(*this, *m_etat, exercice, mouvement);
}

bool QVAPI::UpdateMouvements(const std::string& exercice, u32 mouvement, const Mouvement& rec) {
  return ChangeLignes(*this, *m_etat, exercice, mouvement, [&rec](std::vector<Line>& lignes) {
    for (Line& ligne : lignes) {
      ligne.Date = ligne.DateLigne = rec.Date;
      ligne.Ligne = rec.Ligne;
      std::memcpy(ligne.Libelle, rec.Libelle, sizeof ligne.Libelle);
      ligne.Validee = rec.Validee != 0;
      ligne.Pointee = rec.Pointee != 0;
      std::memcpy(ligne.Tiers, rec.Tiers, sizeof ligne.Tiers);
      ligne.LienPoste = rec.LienPoste;
      ligne.LienA = rec.LienA;
      ligne.LienB = rec.LienB;
      ligne.LienId = rec.LienId;
      ligne.Reserve134 = rec.Reserve134;
      ligne.LienApplication = rec.LienApplication;
    }
  });
}

bool QVAPI::ValidEcrSimple(const std::string& exercice, u32 mouvement, u32 valide) {
  return ValideLignes(*this, *m_etat, exercice, mouvement, valide);
}
bool QVAPI::ValidEcrStandard(const std::string& exercice, u32 mouvement, u32 valide) {
  return ValideLignes(*this, *m_etat, exercice, mouvement, valide);
}
bool QVAPI::ValidOpDiverses(const std::string& exercice, u32 mouvement, u32 valide) {
  return ValideLignes(*this, *m_etat, exercice, mouvement, valide);
}
bool QVAPI::ValidMouvements(const std::string& exercice, u32 mouvement, u32 valide) {
  return ValideLignes(*this, *m_etat, exercice, mouvement, valide);
}

bool QVAPI::ReverseMarkMouvements(const std::string& exercice, u32 mouvement) {
  return ChangeLignes(*this, *m_etat, exercice, mouvement, [](std::vector<Line>& lignes) {
    bool pointee = false;
    for (const Line& ligne : lignes) pointee |= ligne.Pointee != 0;
    for (Line& ligne : lignes) ligne.Pointee = !pointee;
  });
}

Position QVAPI::AddLines(const std::string& exercice, const Line& rec) {
  OperationEcriture op(*this, *m_etat, exercice);
  if (!op) return 0;
  if (rec.Mouvement == 0 || rec.Journal < JournalRecettes || rec.Journal > JournalOD)
    return op.Refuse(ErrValeur);
  Line ligne = rec;
  ligne.Reserve0 = 0;
  if (const int code = NormaliseLigne(ligne)) return op.Refuse(code);
  if (ligne.MontantFranc == 0 && ligne.MontantEuro == 0) return op.Refuse(ErrEcritureVide);
  if (ligne.DateLigne == 0) ligne.DateLigne = ligne.Date;
  if (ligne.Genre == GenreOD || ligne.Role == 0) ligne.Role = RoleLibre;
  u32 rang = 0;
  if (!op.CompleteCompte(ligne, false) || !op.RangLibre(ligne.Mouvement, rang)) return 0;
  assert(ligne.Role != 0);
  ligne.Rang = rang;
  Unite unite(*this);
  EffetsComptes effets;
  const Position position = op.AjouteLigne(ligne, effets);
  if (!position || !op.Applique(effets)) return 0;
  if (!unite.Valide()) return op.Echoue();
  op.CompteAjout(ligne);
  return position;
}

bool QVAPI::ReadLines(const std::string& exercice, Position position, Line& rec) {
  OperationEcriture op(*this, *m_etat, exercice, OperationEcriture::JournalSeul);
  if (!op) return false;
  const Line* vue = op.VueLigne(position);
  if (!vue) return op.RefuseSansMot(ErrPosition);
  rec = *vue;
  rec.Reserve0 = 0;
  m_etat->derniereLigneLue = position;
  return true;
}

bool QVAPI::UpdateLines(const std::string& exercice, Position position, const Line& rec) {
  OperationEcriture op(*this, *m_etat, exercice);
  if (!op) return false;
  const Line* vue = op.VueLigne(position);
  if (!vue) return op.Refuse(ErrPosition);
  Line ancienne = *vue;
  ancienne.Reserve0 = 0;
  Line nouvelle = rec;
  nouvelle.Reserve0 = 0;
  if (nouvelle.Mouvement == 0 || nouvelle.Journal < JournalRecettes || nouvelle.Journal > JournalOD) {
    return op.Refuse(ErrValeur);
  }
  if (const int code = NormaliseLigne(nouvelle)) return op.Refuse(code);
  if (std::strncmp(ancienne.Compte, nouvelle.Compte, sizeof nouvelle.Compte) != 0 &&
      !op.CompleteCompte(nouvelle, false)) {
    return false;
  }
  return RemplaceLigne(*this, op, position, ancienne, nouvelle);
}

bool QVAPI::WriteJournal(const Line& rec) {
  OperationEcriture op(*this, *m_etat, {}, OperationEcriture::JournalSeul);
  if (!op) return false;
  const Position position = m_etat->derniereLigneLue;
  if (!position || !op.VueLigne(position)) return op.Refuse(ErrPosition);
  Line ligne = rec;
  ligne.Reserve0 = 0;
  Unite unite(*this);
  if (!op.moteur().Remplace(FichierJournal, position, &ligne) || !unite.Valide()) return op.Echoue();
  m_etat->OublieCompteurs();
  return true;
}

u32 QVAPI::GetFreeJournalLine(const std::string& exercice, u16 journal, const std::string&, Date date) {
  if (date == 0) return 1;
  OperationEcriture op(*this, *m_etat, exercice, OperationEcriture::JournalSeul);
  u32 ligne = 0;
  return op && op.DerniereLigne(journal, date, ligne) ? ligne + 1 : 0;
}

u32 QVAPI::GetFreeMouvementsID(const std::string& exercice, u16) {
  OperationEcriture op(*this, *m_etat, exercice, OperationEcriture::JournalSeul);
  u32 mouvement = 0;
  if (!op || !op.DernierMouvement(mouvement)) return 0;
  return ++mouvement < MouvementReserve ? mouvement : op.Refuse(ErrCompteurMouvement);
}

std::vector<Position> QVAPI::LignesMouvement(const std::string& exercice, u32 mouvement) {
  OperationEcriture op(*this, *m_etat, exercice, OperationEcriture::JournalSeul);
  std::vector<Position> positions;
  if (op && !op.LitPositions(mouvement, positions)) positions.clear();
  return positions;
}

u32 QVAPI::GetMouvementsLinesCount(u32 mouvement) {
  return static_cast<u32>(LignesMouvement({}, mouvement).size());
}

bool QVAPI::IsRappLineInMouvements(u32 mouvement) {
  OperationEcriture op(*this, *m_etat, {}, OperationEcriture::JournalSeul);
  std::vector<Line> lignes;
  if (!LitPourLecture(op, mouvement, lignes)) return false;
  for (const Line& ligne : lignes) {
    if (ligne.Rapprochee) return true;
  }
  return false;
}

u32 QVAPI::GetMouvements(const std::string& cle, int indice) {
  constexpr std::size_t Debuts[] = {9, 19, 18, 18, 0, 29};
  constexpr std::size_t Chiffres = 10;
  if (indice < 0 || indice > 5 || cle.size() < Debuts[indice] + Chiffres) return 0;
  u64 mouvement = 0;
  for (std::size_t i = Debuts[indice]; i < Debuts[indice] + Chiffres; ++i) {
    if (cle[i] < '0' || cle[i] > '9') return 0;
    mouvement = mouvement * 10 + static_cast<u64>(cle[i] - '0');
  }
  return mouvement <= 0xFFFFFFFFu ? static_cast<u32>(mouvement) : 0;
}

bool QVAPI::GetEcrLineTresor(u32 indice, const EcrStandard& rec, LineTresor& ligne) const {
  std::span<const LineTresor> tresor;
  if (indice >= rec.NbLignesTresorerie || !LignesTresor(*m_etat, rec, tresor)) return false;
  ligne = tresor[indice];
  return true;
}

bool QVAPI::SetEcrLineTresor(u32 indice, EcrStandard& rec, const LineTresor& ligne) {
  std::span<const LineTresor> tresor;
  if (indice > rec.NbLignesTresorerie || !LignesTresor(*m_etat, rec, tresor))
    return m_etat->Refuse(ErrValeur);
  if (rec.LignesTresorerie == 0) {
    while (m_etat->prochainTicket == 0 || m_etat->lignesTresor.contains(m_etat->prochainTicket)) {
      ++m_etat->prochainTicket;
    }
    rec.LignesTresorerie = m_etat->prochainTicket++;
  }
  std::vector<LineTresor>& table = m_etat->lignesTresor[u32{rec.LignesTresorerie}];
  if (indice < rec.NbLignesTresorerie) {
    table[indice] = ligne;
    return true;
  }
  table.resize(indice);
  assert(rec.LignesTresorerie != 0 && table.size() == rec.NbLignesTresorerie);
  table.push_back(ligne);
  rec.NbLignesTresorerie = indice + 1;
  return true;
}

void QVAPI::LibereLignes(EcrStandard& rec) {
  m_etat->lignesTresor.erase(u32{rec.LignesTresorerie});
  rec.LignesTresorerie = 0;
  rec.NbLignesTresorerie = 0;
}

}  // namespace fenlor

// Receipts and expenses of the parent application, and the entries that follow
// from them.
#include <cassert>
#include <cstring>

#include "store/definitions.h"
#include "store/etat.h"
#include "store/ouverture.h"

namespace fenlor {

namespace {

constexpr u16 CleLiensJournal = 80;  ///< of "JOURNAL": piece in 9 characters, LienId in 10 digits, ...
constexpr std::size_t TaillePiece = 9, TailleLienId = 10;

/// Finds by the first `prefixe` characters of a key, 0 for the whole of it.
Position LitParCle(EtatQVAPI& etat, u16 fichier, u32 cle, std::size_t prefixe, void* rec) {
  assert(cle < DefinitionFichierNumero(fichier)->nbCles && prefixe <= TailleCleMax);
  const DefinitionFichier& definition = *DefinitionFichierNumero(fichier);
  const u16 numCle = static_cast<u16>(definition.premiereCle + cle);
  char compose[TailleCleMax];
  std::string texte(compose, definition.compose(cle, rec, compose));
  Position position = 0;
  if (prefixe == 0) {
    position = etat.moteur->TrouveCle(numCle, texte);
  } else {
    texte.resize(prefixe);
    std::string trouve = texte;
    position = etat.moteur->Borne(numCle, trouve);
    if (trouve.compare(0, prefixe, texte) != 0) position = 0;
  }
  return position != 0 && etat.moteur->Lit(fichier, position, rec) ? position : 0;
}

/// Adds a record, or replaces the one of the same link key `cle`.
Position EcritLien(QVAPI& magasin, EtatQVAPI& etat, u16 fichier, u32 cle, const void* rec) {
  assert(!DefinitionFichierNumero(fichier)->doubles[cle]);
  const DefinitionFichier& definition = *DefinitionFichierNumero(fichier);
  char compose[TailleCleMax];
  const std::string texte(compose, definition.compose(cle, rec, compose));
  Moteur& moteur = *etat.moteur;
  QVAPI::Unite unite(magasin);
  Position position = moteur.TrouveCle(static_cast<u16>(definition.premiereCle + cle), texte);
  if (position != 0) {
    if (!moteur.Remplace(fichier, position, rec)) return 0;
  } else {
    position = moteur.Ajoute(fichier, rec);
    if (position == 0 || !moteur.AjouteCles(fichier, position, rec, false)) return 0;
  }
  return unite.Valide() ? position : 0;
}

bool MemeLien(const Line& ligne, const RecetteLiee& rec) {
  return ligne.LienPoste == rec.LienPoste && ligne.LienA == rec.LienA && ligne.LienB == rec.LienB;
}

bool MemeLien(const Line& ligne, const DepenseLiee& rec) {
  return ligne.LienA == rec.LienA && ligne.LienB == rec.LienB &&
         std::strncmp(ligne.Tiers, rec.Tiers, sizeof ligne.Tiers) == 0;
}

/// Number of the entry of the open exercice that carries the link, 0 when none
/// does. False when a line cannot be read.
template <class Rec>
bool EcritureLiee(Moteur& moteur, const Rec& rec, u32& mouvement) {
  mouvement = 0;
  const std::string aucun(TailleLienId, '0'), premier = std::string(TailleLienId - 1, '0') + '1';
  std::string cle;
  Position position = moteur.Premier(CleLiensJournal, cle);
  while (position != 0) {
    if (cle.compare(TaillePiece, TailleLienId, aucun) == 0) {
      // All lines without a link stand together, before the linked ones of that piece.
      cle = cle.substr(0, TaillePiece) + premier;
      position = moteur.Borne(CleLiensJournal, cle);
      continue;
    }
    Line ligne;
    if (!moteur.Lit(FichierJournal, position, &ligne)) return false;
    if (MemeLien(ligne, rec)) {
      mouvement = ligne.Mouvement;
      return true;
    }
    position = moteur.Suivant(CleLiensJournal, cle);
  }
  return true;
}

template <class Rec>
bool SupprimeFiche(QVAPI& magasin, EtatQVAPI& etat, u16 fichier, Position position, const Rec& rec,
                   bool avecEcriture) {
  QVAPI::Unite unite(magasin);
  if (avecEcriture) {
    u32 mouvement = 0;
    if (!EcritureLiee(*etat.moteur, rec, mouvement)) return false;
    if (mouvement != 0 && !magasin.RemoveMouvements(etat.pathExercice, mouvement)) return false;
  }
  return etat.moteur->SupprimeCles(fichier, position, &rec) && etat.moteur->Supprime(fichier, position) &&
         unite.Valide();
}

template <class Rec>
bool SupprimeLien(QVAPI& magasin, EtatQVAPI& etat, u16 fichier, Position position) {
  Rec rec{};
  if (!etat.moteur->Lit(fichier, position, &rec)) return false;
  if (etat.pathExercice.empty()) return SupprimeFiche(magasin, etat, fichier, position, rec, false);
  // Before the unit of work: a file cannot change its place inside one.
  const Ouverture journal(magasin, FichierJournal), comptes(magasin, FichierComptes);
  return journal && comptes && SupprimeFiche(magasin, etat, fichier, position, rec, true);
}

bool EstOuvert(EtatQVAPI& etat, u16 fichier) {
  return etat.moteur->EstOuvertFichier(fichier) || etat.Refuse(ErrPasOuvert);
}

}  // namespace

Position QVAPI::ReadRecettes(RecetteLiee& rec, u32 cle) {
  if (!EstOuvert(*m_etat, FichierRecettes)) return 0;
  constexpr std::size_t prefixes[] = {10, 8, 0};
  if (cle >= std::size(prefixes)) return m_etat->Refuse(ErrValeur);
  return LitParCle(*m_etat, FichierRecettes, cle, prefixes[cle], &rec);
}

Position QVAPI::WriteRecettes(const RecetteLiee& rec) {
  if (!EstOuvert(*m_etat, FichierRecettes)) return 0;
  if (rec.LienB >> 16 == 0) return m_etat->Refuse(ErrValeur);
  return EcritLien(*this, *m_etat, FichierRecettes, 2, &rec);
}

bool QVAPI::DeleteRecettes(Position position) {
  return EstOuvert(*m_etat, FichierRecettes) &&
         SupprimeLien<RecetteLiee>(*this, *m_etat, FichierRecettes, position);
}

Position QVAPI::ReadDepenses(DepenseLiee& rec, u32 cle) {
  if (!EstOuvert(*m_etat, FichierDepenses)) return 0;
  constexpr std::size_t prefixes[] = {0, 8};
  if (cle >= std::size(prefixes)) return m_etat->Refuse(ErrValeur);
  return LitParCle(*m_etat, FichierDepenses, cle, prefixes[cle], &rec);
}

Position QVAPI::WriteDepenses(const DepenseLiee& rec) {
  if (!EstOuvert(*m_etat, FichierDepenses)) return 0;
  if (rec.LienB >> 16 != 0) return m_etat->Refuse(ErrValeur);
  return EcritLien(*this, *m_etat, FichierDepenses, 0, &rec);
}

bool QVAPI::DeleteDepenses(Position position) {
  return EstOuvert(*m_etat, FichierDepenses) &&
         SupprimeLien<DepenseLiee>(*this, *m_etat, FichierDepenses, position);
}

}  // namespace fenlor

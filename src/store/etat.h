// What the parts of `QVAPI` share behind its header.
#pragma once

#include <map>
#include <set>
#include <unordered_map>

#include "store/moteur.h"
#include "store/qvapi.h"
#include "store/texte1252.h"

namespace fenlor {

constexpr u32 MsgMagasin = 3214;  ///< number of what the store tells in its own words

constexpr u32 MsgLectureSeule = 3563;
inline std::string TexteLectureSeule() {
  return "Le cabinet est ouvert en lecture seule : rien ne peut y être enregistré."_w;
}

struct EtatQVAPI {
  OptionsQVAPI options;
  SystemePosix systemePosix;
  FabriqueLmdb cleLmdb;
  std::unique_ptr<SystemeGarde> garde = std::make_unique<SystemeGarde>(systemePosix);
  Systeme* systeme = nullptr;      ///< `garde`
  std::unique_ptr<Moteur> moteur;  ///< never null
  bool session = false;
  std::unique_ptr<Profil> reglages;
  u64 instant = 0;                     ///< number of the outermost `QVAPI::Instant`, 0 for none
  u64 instants = 0;                    ///< numbers given so far
  unsigned emboites = 0;               ///< instants that live
  std::set<std::string> modifiesDits;  ///< files whose change by others was told

  std::string pathProgrammes, pathCabinet, pathCabinetImpose, nomCabinet, userCabinet;
  std::string nomExercice, pathExercice;
  bool avecQuorbane = false;
  u16 edition = 2;
  Date aujourdhuiFixe = 0;
  RappelMagasin rappel;

  // Families: how often each file is open, by file number.
  std::map<u16, unsigned> ouvertures;
  Position derniereLigneLue = 0;  ///< for WriteJournal

  // Plain files by handle.
  struct FichierPlat {
    std::unique_ptr<Fichier> fichier;
    u64 place = 0;
    bool ecriture = false;
  };
  std::map<int, FichierPlat> plats;
  int prochainPlat = 1;

  // Treasury lines of standard entries, by ticket.
  std::unordered_map<u32, std::vector<LineTresor>> lignesTresor;
  u32 prochainTicket = 1;

  // Derived counters of the open journal; stale when the engine's count of
  // undone units is not `annulationsVues`.
  u64 annulationsVues = 0;
  u32 dernierMouvement = 0;
  bool dernierMouvementConnu = false;
  std::unordered_map<u32, u32> derniereLigne;  ///< (journal << 24 | year << 4 | month) to highest Ligne
  std::string cheminCompteurs;                 ///< journal that the counters are about
  u32 mouvementRang = 0, prochainRang = 0;     ///< next free `Rang` of that entry
  /// Where accounts were last seen: hints, checked against the record before use.
  std::unordered_map<std::string, Position> positionsComptes;

  /// To be called whenever lines or keys of "JOURNAL" change behind the entry
  /// operations (QVAddRec, QVAddKey and their like, opening, closing).
  void OublieCompteurs() {
    dernierMouvementConnu = false;
    dernierMouvement = mouvementRang = prochainRang = 0;
    derniereLigne.clear();
  }

  /// Tells, once, that a file was changed by somebody else.
  void DitModifie(const std::string& chemin) {
    if (modifiesDits.insert(chemin).second)
      moteur->Avertit("Le fichier " + chemin + " a été modifié hors de Fenlor.");
  }

  /// Tells an error to the callback (event 6).
  void DitErreur(const std::string& texte, u32 numero = MsgMagasin) {
    if (!rappel) return;
    if (moteur->Erreur() == ErrLectureSeule)
      rappel(EvErreur, MsgLectureSeule, TexteLectureSeule());
    else
      rappel(EvErreur, numero, texte);
  }
  /// Refuses with a code; returns false so that `return m_etat->Refuse(...)` reads well.
  bool Refuse(int code, const std::string& fichier = {}) {
    moteur->PoseErreur(code, fichier);
    return false;
  }
};

/// Finishes, or drops, what a unit that was being taken back leaves to do in the settings. False when these
/// cannot be read or written.
bool AcheveReprise(EtatQVAPI& etat);

}  // namespace fenlor

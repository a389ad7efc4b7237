// The indexed files that the store knows: number, record, keys. One table
// serves the engine (rebuild of keys), opening and closing, verification and fenlorctl.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "store/enregistrements.h"

namespace fenlor {

enum NumeroFichier : u16 {
  FichierTextes = 1,  ///< "TEXTES.dat", the labels: a plain file, of which the store only tells the changes
  FichierComptes = 68,
  FichierJournal = 74,
  FichierRubriques = 81,
  FichierBanques = 86,
  FichierImmo = 92,
  FichierAmo = 95,
  FichierRecettes = 97,
  FichierDepenses = 101,
  FichierAuto = 104,
  FichierReleves = 108,
};

/// A key text never exceeds this.
constexpr unsigned TailleCleMax = 64;

struct DefinitionFichier {
  u16 numero;
  const char* nom;  ///< store name, file name without extension
  u16 taille;       ///< bytes of a record
  u16 premiereCle;  ///< 0 when the file has no keys
  u8 nbCles;
  u16 tailleCle[8];
  bool doubles[8];  ///< several records may hold the same key
  bool duCabinet;   ///< stands in the practice's directory, else in the exercice's
  bool duDepart;    ///< made with every exercice; the others on their first opening
  /// Leading bytes that mark a slot: 1 where the record begins with reserved
  /// bytes; 4 where it begins with a number (all of them 255: deleted, all 0:
  /// never written).
  u8 marque;
  /// Composes key `indice` of a record into `sortie` (TailleCleMax bytes, no
  /// terminator); returns its length.
  unsigned (*compose)(unsigned indice, const void* rec, char* sortie);
};

/// A slot that a unit of work changes: its record before and after, null where none stands. The marker byte
/// is as stored.
struct EcartUnite {
  u16 fichier = 0;
  const void* avant = nullptr;
  const void* apres = nullptr;
};

/// All of them; those made with every exercice come first.
std::span<const DefinitionFichier> Definitions();
/// By file number, null when unknown.
const DefinitionFichier* DefinitionFichierNumero(u16 numFichier);
/// By key number; `indice` becomes the key's index. Null when unknown.
const DefinitionFichier* DefinitionCle(u16 numCle, unsigned& indice);
/// By store name, without regard to case. Null when unknown.
const DefinitionFichier* DefinitionNom(std::string_view nom);

/// Key texts from field values. COMPTES:
std::string MakePlanKey1(std::string_view compte);
std::string MakePlanKey2(std::string_view code, std::string_view compte);
std::string MakePlanKey3(std::string_view rubrique, std::string_view compte);
std::string MakePlanKey4(int type, std::string_view compte);
std::string MakePlanKey5(std::string_view designation, std::string_view compte);
/// RUBRIQUE; key 4 writes `Ligne` as two digits at least, left aligned in 3
/// characters, so that line 125 stands between 12 and 13.
std::string MakeRubriquesKey1(std::string_view rubrique);
std::string MakeRubriquesKey2(int type, std::string_view rubrique);
std::string MakeRubriquesKey3(std::string_view designation, std::string_view rubrique);
std::string MakeRubriquesKey4(int ligne, std::string_view rubrique);
/// BANQUE:
std::string MakeBanquesKey1(std::string_view compte, u32 date);
std::string MakeBanquesKey2(u32 date, std::string_view compte);
std::string MakeBanquesKey3(int sens, std::string_view compte, u32 date);
/// JOURNAL:
std::string MakeJournalKey1(unsigned journal, u32 date, u32 mouvement, u32 rang, std::string_view compte,
                            u32 ligne);
std::string MakeJournalKey2(unsigned journal, std::string_view compte, u32 date, u32 mouvement, u32 rang,
                            u32 ligne);
std::string MakeJournalKey3(std::string_view compte, u32 dateLigne, u32 mouvement, u32 rang, unsigned journal,
                            u32 ligne);
std::string MakeJournalKey4(u32 dateLigne, std::string_view compte, u32 mouvement, u32 rang, unsigned journal,
                            u32 ligne);
std::string MakeJournalKey5(u32 mouvement, u32 rang, unsigned journal, u32 ligne);
std::string MakeJournalKey6(std::string_view piece, u32 lienId, u32 reserve, u32 mouvement, u32 rang,
                            unsigned journal, u32 ligne);
/// Immo and Amo:
std::string MakeImmobilisationsKey1(u32 dateAchat, u32 numero);
std::string MakeImmobilisationsKey2(u32 numero);
std::string MakeAmortissementsKey(u32 numero, u32 annee);

}  // namespace fenlor

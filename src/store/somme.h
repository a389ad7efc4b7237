// The checksum behind each slot of a data file: CRC-32C of the record as it stands there and of the
// slot's number, so that a record in another's place is seen like a flipped bit.
#pragma once

#include "store/enregistrements.h"

namespace fenlor {

class Fichier;

constexpr u32 TailleSomme = 4;

/// CRC-32C (Castagnoli) of `taille` bytes, going on from `somme`. The processor's instruction where it has
/// one.
u32 Crc32c(const void* octets, std::size_t taille, u32 somme = 0);
/// The same by table: what a processor without the instruction does.
u32 Crc32cParTable(const void* octets, std::size_t taille, u32 somme = 0);

/// Sums of `nombre` stretches of `taille` bytes, one every `pas` bytes. Several are summed at once: one alone
/// leaves the processor waiting.
void SommesDe(const u8* octets, u32 nombre, std::size_t taille, std::size_t pas, u32* sommes);

/// The sum of a large file is that of the sums of its pages, which can be counted side by side.
constexpr std::size_t TaillePage = 4096;

u32 SommeEmplacement(const u8* rec, u32 taille, Position position);
/// True when the sum behind the `taille` bytes of the record is theirs.
bool SommeJuste(const u8* emplacement, u32 taille, Position position);
/// The first of `nombre` slots, the first of them at `premiere`, whose sum is wrong; `nombre`: none.
u32 PremierFaux(const u8* emplacements, u32 nombre, u32 taille, Position premiere);
/// Reads the `nombre` slots that begin at the byte `debut` of a file, and finds the first one that is wrong
/// or missing (`faux`, 0: none). 0 or errno.
int FauxDuFichier(Fichier& fichier, u64 debut, u32 nombre, u32 taille, Position& faux);
/// Finds the one bit of record or sum that makes the sum right and turns it back. False: there is none.
bool RepareBit(u8* emplacement, u32 taille, Position position);

}  // namespace fenlor

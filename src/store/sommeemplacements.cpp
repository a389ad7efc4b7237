#include <algorithm>
#include <array>
#include <cassert>
#include <cstring>
#include <vector>

#include "store/partage.h"
#include "store/somme.h"
#include "store/systeme.h"

namespace fenlor {

namespace {

/// Read at a time: what stays in the processor's own memory. Pages that are mapped one after the other cost
/// more than their copy.
constexpr std::size_t OctetsLus = 256u << 10;
constexpr u32 Ensemble = 48;  ///< slots summed at a time

/// `premiere` on, `nombre` of them: 0 with the first wrong one in `faux` if there is one, or errno.
int FauxDeTranche(Fichier& fichier, u64 debut, Position premiere, u32 nombre, u32 taille, Position& faux) {
  const std::size_t pas = taille + TailleSomme;
  const u32 lot = std::max(Ensemble, static_cast<u32>(OctetsLus / pas / Ensemble) * Ensemble);
  std::vector<u8> octets(std::min(lot, nombre) * pas);
  for (u32 fait = 0; fait < nombre; fait += lot) {
    const u32 n = std::min(lot, nombre - fait);
    const Position position = premiere + fait;
    std::size_t lus = 0;
    if (const int rc = fichier.Lit(octets.data(), n * pas, debut + u64(position - 1) * pas, lus)) return rc;
    // What the file lacks is wrong as well.
    const u32 presents = static_cast<u32>(lus / pas),
              juste = PremierFaux(octets.data(), presents, taille, position);
    assert(juste <= presents && presents <= n);
    if (juste < n) {
      faux = position + juste;
      return 0;
    }
  }
  return 0;
}

}  // namespace

u32 SommeEmplacement(const u8* rec, u32 taille, Position position) {
  assert(rec && position != 0);
  return Crc32c(&position, sizeof position, Crc32c(rec, taille));
}

bool SommeJuste(const u8* emplacement, u32 taille, Position position) {
  u32 somme;
  std::memcpy(&somme, emplacement + taille, sizeof somme);
  return somme == SommeEmplacement(emplacement, taille, position);
}

u32 PremierFaux(const u8* emplacements, u32 nombre, u32 taille, Position premiere) {
  const std::size_t pas = taille + TailleSomme;
  u32 sommes[Ensemble];
  for (u32 debut = 0; debut < nombre; debut += Ensemble) {
    const u32 n = std::min(Ensemble, nombre - debut);
    assert(n > 0 && n <= Ensemble);
    const u8* place = emplacements + debut * pas;
    SommesDe(place, n, taille, pas, sommes);
    for (u32 i = 0; i < n; ++i) {
      const Position position = premiere + debut + i;
      u32 somme;
      std::memcpy(&somme, place + i * pas + taille, sizeof somme);
      if (somme != Crc32c(&position, sizeof position, sommes[i])) return debut + i;
    }
  }
  return nombre;
}

bool RepareBit(u8* emplacement, u32 taille, Position position) {
  for (u32 bit = 0; bit < (taille + TailleSomme) * 8; ++bit) {
    const u8 masque = static_cast<u8>(1u << bit % 8);
    emplacement[bit / 8] ^= masque;
    if (SommeJuste(emplacement, taille, position)) return true;
    emplacement[bit / 8] ^= masque;
  }
  return false;
}

int FauxDuFichier(Fichier& fichier, u64 debut, u32 nombre, u32 taille, Position& faux) {
  const unsigned parts = NombreParts(u64{nombre} * (taille + TailleSomme));
  std::array<Position, PartsMax> trouves{};
  std::array<int, PartsMax> rcs{};
  Partage(parts, [&](unsigned part) {
    const auto [de, a] = TrancheDe(part, parts, nombre, 1);
    rcs[part] = FauxDeTranche(fichier, debut, static_cast<Position>(de + 1), static_cast<u32>(a - de), taille,
                              trouves[part]);
  });
  faux = 0;
  for (unsigned part = 0; part < parts; ++part) {
    if (rcs[part]) return rcs[part];
    if (faux == 0) faux = trouves[part];
  }
  assert(faux <= nombre);
  return 0;
}

}  // namespace fenlor

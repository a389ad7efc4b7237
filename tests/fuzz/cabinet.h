// What the fuzz targets share: a small practice on a memory file system, and a
// way to stop with a reason that libFuzzer keeps.
#pragma once

#include <cstddef>
#include <string>

#include "store/qvapi.h"

namespace fenlor::fuzz {

/// A directory of this process on /dev/shm (or the temporary one), emptied first.
std::string DossierDuProcessus();

/// Makes a practice with exercice "2003" and a few entries in a directory.
void FaitCabinet(const std::string& cabinet);

/// Replaces a directory by a copy of another.
void Recopie(const std::string& de, const std::string& vers);

std::string LitFichier(const std::string& chemin);
void EcritFichier(const std::string& chemin, const void* octets, std::size_t taille);

/// A finding.
[[noreturn]] void Trouve(const std::string& texte);

/// Puts the CRC-32 of [debut, fin) at `place`, so that mutations get past the checksum.
void PoseCrc(std::string& octets, std::size_t place, std::size_t debut, std::size_t fin);

}  // namespace fenlor::fuzz

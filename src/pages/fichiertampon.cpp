#include "pages/fichiertampon.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <filesystem>

namespace fenlor {

namespace {

constexpr std::size_t tailleTampon = 64u << 10;
constexpr u32 morceauMax = 1u << 30;
constexpr const char* modeleNom = "FNLXXXXXX";

}  // namespace

std::string NomTemporaire() {
  std::error_code erreur;
  const auto dossier = std::filesystem::temp_directory_path(erreur);
  if (erreur) return {};
  std::string chemin = (dossier / modeleNom).string();
  // The name is taken first, exclusively: the store's creation would follow a link that
  // somebody laid under a name that can be guessed.
  const int nom = mkostemp(chemin.data(), O_CLOEXEC);
  if (nom < 0) return {};
  close(nom);
  return chemin;
}

bool FichierTampon::Cree() {
  Ferme();
  assert(m_poignee < 0 && Taille() == 0);
  const std::string chemin = NomTemporaire();
  if (chemin.empty()) return false;
  m_poignee = m_magasin.QVCreateFile(chemin);
  // Without a name from here on: however the program ends, nothing is left. Not QVDeleteFile: it empties
  // the redo log, for a file that is no part of the books.
  m_magasin.SystemeFichiers().Supprime(chemin);
  return m_poignee >= 0;
}

void FichierTampon::Ferme() {
  if (m_poignee >= 0) m_magasin.QVCloseFile(m_poignee);
  m_poignee = -1;
  m_tampon.clear();
  m_echec.clear();
  m_ecrits = 0;
  m_deplace = false;
}

bool FichierTampon::Ajoute(std::string_view octets) {
  if (!m_echec.empty() || m_poignee < 0) return false;
  assert(m_tampon.size() < tailleTampon);
  m_tampon.append(octets);
  return m_tampon.size() < tailleTampon || Vide();
}

bool FichierTampon::Vide() {
  if (!m_echec.empty() || m_poignee < 0) return false;
  if (m_deplace && m_magasin.QVSeekFile(m_poignee, static_cast<i64>(m_ecrits), 0) < 0) return Echoue();
  m_deplace = false;
  std::string_view reste = m_tampon;
  while (!reste.empty()) {
    const auto morceau = reste.substr(0, morceauMax);
    if (m_magasin.QVWriteFile(m_poignee, morceau.data(), static_cast<u32>(morceau.size())) < 0)
      return Echoue();
    m_ecrits += morceau.size();
    reste.remove_prefix(morceau.size());
  }
  assert(!m_deplace);  // what was read back before moved the file's place
  m_tampon.clear();
  return true;
}

bool FichierTampon::Echoue() {
  m_echec = m_magasin.QVErreurTexte(m_magasin.QVFileErrorCode());
  return false;
}

FichierTampon::Lecture FichierTampon::Lit(u64 offset, char* tampon, u32 taille) {
  if (m_poignee < 0 || (!m_tampon.empty() && !Vide())) return {true, false};
  assert(m_tampon.empty());
  m_deplace = true;
  Lecture lecture;
  lecture.placee = m_magasin.QVSeekFile(m_poignee, static_cast<i64>(offset), 0) >= 0;
  for (u32 lus = 0; lus < taille;) {
    const int n = m_magasin.QVReadFile(m_poignee, tampon + lus, std::min<u32>(taille - lus, morceauMax));
    if (n <= 0) return lecture;
    lus += static_cast<u32>(n);
  }
  lecture.lue = true;
  return lecture;
}

}  // namespace fenlor

#include "store/fichiertextes.h"

#include <cerrno>
#include <cstdio>
#include <memory>

#include "store/somme.h"

namespace fenlor {

int LitTextes(Systeme& systeme, const std::string& chemin, std::string& textes) {
  std::unique_ptr<Fichier> fichier;
  Empreinte empreinte;
  int code = systeme.Ouvre(chemin, Systeme::Lecture, fichier);
  if (code == ENOENT) {
    textes = ScelleTextes("@Texte\r\n");
    return 0;
  }
  if (!code) code = fichier->Mesure(empreinte);
  if (!code && empreinte.taille > TailleTextesMax) code = EFBIG;
  if (code) return code;
  textes.resize(empreinte.taille);
  std::size_t lus = 0;
  code = fichier->Lit(textes.data(), textes.size(), 0, lus);
  textes.resize(lus);
  return code;
}

int EcritTextes(Systeme& systeme, const std::string& chemin, const std::string& textes) {
  std::unique_ptr<Fichier> fichier;
  int code = systeme.Ouvre(chemin, Systeme::Creation, fichier);
  if (!code) code = fichier->Ecrit(textes.data(), textes.size(), 0);
  return code ? code : fichier->Synchronise();
}

std::string ScelleTextes(const std::string& lignes) {
  char somme[20];
  std::snprintf(somme, sizeof somme, "@Somme=%08X\r\n", Crc32c(lignes.data(), lignes.size()));
  return lignes + somme;
}

bool TextesModifies(const std::string& textes) {
  const std::size_t fin = textes.find_last_not_of("\r\n");
  if (fin == std::string::npos) return false;
  const std::size_t saut = textes.rfind('\n', fin), debut = saut == std::string::npos ? 0 : saut + 1;
  const std::string_view derniere = std::string_view(textes).substr(debut);
  // Either half will do: a bit that was flipped in one leaves the other.
  const bool scelles = (debut > 0 && derniere.front() == '@') || derniere.find("Somme=") < 100;
  return scelles && textes != ScelleTextes(textes.substr(0, debut));
}

}  // namespace fenlor

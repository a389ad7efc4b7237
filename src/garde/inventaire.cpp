#include "garde/inventaire.h"

#include <algorithm>
#include <cassert>
#include <tuple>

#include "core/valeurs.h"
#include "garde/conservation.h"
#include "garde/flux.h"
#include "garde/textes.h"
#include "store/dates.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

void Examine(Systeme& systeme, const std::string& chemin, ArchiveLue& archive) {
  std::unique_ptr<Fichier> fichier;
  Empreinte empreinte;
  if (systeme.Ouvre(chemin, Systeme::Lecture, fichier) == 0) {
    if (fichier->Mesure(empreinte) == 0) archive.taille = empreinte.taille;
    archive.protegee = EstProtege(*fichier);
  }
  if (!archive.protegee) archive.refus = LitManifesteArchive(systeme, chemin, {}, archive.manifeste);
  SauvegardePresente nommee;
  const Date date = GetDate(archive.manifeste.date);
  if (!archive.refus && !archive.protegee && IsDateOk(date)) {
    archive.moment = StrSDate(date);
    for (const char c : archive.manifeste.heure)
      if (c != ':') archive.moment += c;
  } else if (LitNomSauvegarde(archive.nom, nommee)) {
    archive.moment = StrSDate(nommee.date) + nommee.heure;
  }
}

}  // namespace

std::string ArchiveLue::Exercices() const {
  std::string noms;
  for (const ExerciceArchive& e : manifeste.exercices) noms += (noms.empty() ? "" : ", ") + e.nom;
  return noms;
}

u32 ArchiveLue::Ecritures() const {
  u32 total = 0;
  for (const ExerciceArchive& e : manifeste.exercices) total += e.ecritures;
  return total;
}

Refus ListeArchives(Systeme& systeme, const std::string& dossier, std::vector<ArchiveLue>& archives) {
  archives.clear();
  std::vector<std::string> noms;
  if (const int erreur = systeme.Liste(dossier, noms))
    return Refus(ErrDossierIllisible, "dossier", {dossier, TexteErreurSysteme(erreur)});
  const std::string extension = ExtensionSauvegarde;
  for (const std::string& nom : noms) {
    if (nom.size() <= extension.size() || nom.substr(nom.size() - extension.size()) != extension) continue;
    ArchiveLue& archive = archives.emplace_back();
    archive.nom = nom;
    Examine(systeme, Joint(dossier, nom), archive);
  }
  std::sort(archives.begin(), archives.end(), [](const ArchiveLue& a, const ArchiveLue& b) {
    return std::tie(b.moment, a.nom) < std::tie(a.moment, b.nom);
  });
  return {};
}

void LitEntiere(Systeme& systeme, const std::string& dossier, const std::string& motDePasse,
                ArchiveLue& archive, const AvanceArchive& avance) {
  assert(!archive.lue);
  Manifeste manifeste;
  const Refus refus = ParcourtArchive(systeme, Joint(dossier, archive.nom), motDePasse, manifeste, avance);
  if (refus.numero == ErrArchiveInterrompue) return;
  archive.refus = refus;
  archive.lue = !refus;
  if (archive.lue) archive.manifeste = manifeste;
}

std::string TailleLisible(u64 octets) {
  constexpr const char* unites[] = {" octets", " Ko", " Mo", " Go", " To"};
  f64 taille = static_cast<f64>(octets);
  std::size_t unite = 0;
  for (; taille >= 1024 && unite + 1 < std::size(unites); ++unite) taille /= 1024;
  return unite == 0 ? std::to_string(octets) + unites[0] : FormatMontant(taille, 1) + unites[unite];
}

}  // namespace fenlor

#include "garde/destinations.h"

#include <algorithm>
#include <cassert>
#include <cerrno>

#include "garde/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

bool Dedans(const std::string& chemin, const std::string& dossier) {
  if (dossier == "/") return true;
  return chemin == dossier || chemin.rfind(dossier + "/", 0) == 0;
}

/// Device of the drive that a path stands on; empty when nobody knows.
std::string PeripheriqueDe(const std::string& chemin, const std::vector<Volume>& volumes) {
  const Volume* lui = nullptr;
  for (const Volume& volume : volumes)
    if (Dedans(chemin, volume.racine) && (!lui || volume.racine.size() > lui->racine.size())) lui = &volume;
  return lui ? lui->peripherique : std::string();
}

bool EstAmovible(const Volume& volume) {
  return volume.amovible || Dedans(volume.racine, "/media") || Dedans(volume.racine, "/run/media");
}

}  // namespace

Destinations ProposeDestinations(const std::string& retenu, const std::vector<Volume>& volumes,
                                 const std::string& documents, const std::string& cabinet) {
  assert(!cabinet.empty());
  Destinations destinations;
  const auto ajoute = [&](const std::string& dossier) {
    std::vector<std::string>& dossiers = destinations.dossiers;
    if (std::find(dossiers.begin(), dossiers.end(), dossier) == dossiers.end()) dossiers.push_back(dossier);
  };
  if (!retenu.empty()) ajoute(retenu);
  const std::string leur = PeripheriqueDe(cabinet, volumes);
  for (const Volume& volume : volumes)
    if (EstAmovible(volume) && !volume.lectureSeule && (leur.empty() || volume.peripherique != leur) &&
        !Dedans(volume.racine, cabinet))
      ajoute(volume.racine);
  if (documents.empty()) return destinations;
  const std::string propre = Joint(documents, VersUtf8(Texte(NomDossierSauvegardes)));
  if (Dedans(propre, cabinet)) return destinations;
  destinations.propre = propre;
  ajoute(propre);
  return destinations;
}

std::string DossierDeDepart(CFenlorApp& app, const Destinations& destinations, const std::string& retenu) {
  if (!retenu.empty()) return retenu;
  Empreinte empreinte;
  for (const std::string& dossier : destinations.dossiers)
    if (app.Magasin.SystemeFichiers().Mesure(dossier, empreinte) == 0) return dossier;
  return {};
}

Refus PrepareDestination(CFenlorApp& app, const Destinations& destinations, const std::string& dossier) {
  if (dossier.empty() || dossier != destinations.propre) return {};
  Systeme& systeme = app.Magasin.SystemeFichiers();
  if (systeme.Existe(dossier)) return {};
  // Many a machine has no folder of documents yet.
  int erreur = systeme.CreeDossier(DossierDe(dossier));
  if (!erreur || erreur == EEXIST) erreur = systeme.CreeDossier(dossier);
  return erreur ? Refus(ErrArchiveEcriture, "dossier", {dossier, TexteErreurSysteme(erreur)}) : Refus();
}

}  // namespace fenlor

#include "garde/communs.h"

#include <algorithm>
#include <cassert>
#include <cstring>

#include "core/btfiles.h"
#include "garde/photographie.h"
#include "garde/textes.h"
#include "store/definitions.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

std::string Chemin(QVAPI& magasin, const DefinitionFichier& definition) {
  return Joint(magasin.PathCabinet(), std::string(definition.nom) + ".dat");
}

/// A file that is not there has no record. False: the store's error.
bool LitTous(QVAPI& magasin, const DefinitionFichier& definition, std::vector<std::string>& records) {
  if (!magasin.QVExistFile(Chemin(magasin, definition))) return true;
  const Ouverture ouverture(magasin, definition.numero);
  if (!ouverture) return false;
  const bool lu = magasin.QVParcours(definition.numero, [&](Position, const void* rec) {
    records.emplace_back(static_cast<const char*>(rec), definition.taille);
    return true;
  });
  std::sort(records.begin(), records.end());
  return lu;
}

/// What stands there stays under another name; a file that cannot be read gives its place up.
int Garde(CFenlorApp& app, const FichierCommun& commun, const std::string& suffixe) {
  Systeme& systeme = app.Magasin.SystemeFichiers();
  const DefinitionFichier& definition = *DefinitionFichierNumero(commun.numero);
  const std::string de = Chemin(app.Magasin, definition),
                    vers = Joint(app.Magasin.PathCabinet(), definition.nom + suffixe + ".dat");
  if (!commun.illisible) return CopieDonnees(systeme, de, vers);
  if (const int erreur = systeme.Renomme(de, vers)) return erreur;
  const int cles = systeme.Supprime(Joint(app.Magasin.PathCabinet(), std::string(definition.nom) + ".idx"));
  return cles == ENOENT ? 0 : cles;
}

bool Remplace(CFenlorApp& app, CBTFiles& fichier, const FichierCommun& commun) {
  std::vector<Position> places;
  app.Magasin.QVParcours(commun.numero, [&](Position place, const void*) {
    places.push_back(place);
    return true;
  });
  assert(commun.illisible || places.size() == commun.ici.size());
  for (const Position place : places)
    if (!fichier.Delete(place)) return false;
  for (const std::string& rec : commun.sauves) {
    std::memcpy(fichier.GetRec(), rec.data(), rec.size());
    if (!fichier.Add()) return false;
  }
  return true;
}

}  // namespace

Refus CompareCommuns(CFenlorApp& app, QVAPI& sauve, std::vector<FichierCommun>& differents) {
  differents.clear();
  for (const DefinitionFichier& definition : Definitions()) {
    if (!definition.duCabinet) continue;
    FichierCommun commun;
    commun.numero = definition.numero;
    if (!LitTous(sauve, definition, commun.sauves))
      return Refus(ErrRestaurationLivres, "", {definition.nom, sauve.QVEchecTexte()});
    if (!LitTous(app.Magasin, definition, commun.ici)) {
      const int code = app.Magasin.QVFileErrorCode();
      commun.illisible = code == ErrEndommage || code == ErrFormat;
      if (!commun.illisible) return app.EchecMagasin();
    }
    if (commun.illisible || commun.ici != commun.sauves) differents.push_back(std::move(commun));
  }
  return {};
}

std::string NomsCommuns(const std::vector<FichierCommun>& communs) {
  std::string noms;
  for (const FichierCommun& commun : communs)
    for (const auto& [numero, nom] : NomsFichiersCommuns)
      if (numero == commun.numero) noms += (noms.empty() ? "" : ", ") + Texte(nom);
  return noms;
}

Refus RameneCommuns(CFenlorApp& app, const std::vector<FichierCommun>& communs, const std::string& suffixe) {
  if (communs.empty()) return {};
  for (const FichierCommun& commun : communs)
    if (commun.illisible || !commun.ici.empty())
      if (const int erreur = Garde(app, commun, suffixe))
        return Refus(ErrRestauration, "", {app.Magasin.PathCabinet(), app.Magasin.QVErreurTexte(erreur)});
  std::vector<std::unique_ptr<CBTFiles>> fichiers;
  for (const FichierCommun& commun : communs) {
    fichiers.push_back(
        std::make_unique<CBTFiles>(app, std::string(), static_cast<NumeroFichier>(commun.numero)));
    if (!fichiers.back()->OpenFile()) return app.EchecDit();
  }
  QVAPI::Unite unite(app.Magasin);
  for (std::size_t i = 0; i < communs.size(); ++i)
    if (!Remplace(app, *fichiers[i], communs[i])) return app.EchecMagasin();
  return unite.Valide() ? Refus() : app.EchecMagasin();
}

}  // namespace fenlor

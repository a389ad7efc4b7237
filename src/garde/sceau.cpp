#include "garde/sceau.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cerrno>
#include <cstring>

#include "core/cles.h"
#include "garde/flux.h"
#include "garde/textes.h"
#include "store/definitions.h"
#include "store/ouverture.h"
#include "store/remplacement.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::string_view Magie("FNSCEAU\1", 8);
constexpr u64 TailleSceauMax = u64{1} << 30;
constexpr std::size_t EnregistrementsDitsMax = 20;

using Empreinte16 = std::array<u8, 16>;

struct FichierScelle {
  u16 numero = 0;
  std::vector<Empreinte16> sommes;  ///< sorted
};
using Livres = std::vector<FichierScelle>;

Empreinte16 SommeDe(const void* octets, std::size_t taille) {
  CalculSha256 calcul;
  calcul.Ajoute(octets, taille);
  const Sha256 somme = calcul.Fin();
  Empreinte16 debut;
  std::copy_n(somme.begin(), debut.size(), debut.begin());
  return debut;
}

/// The settings of the exercice that its figures depend on.
std::vector<std::string> ReglagesScelles(CFenlorApp& app) {
  std::vector<std::string> lignes;
  for (const TexteFixe& cle : {CleDebut, CleFin, CleTVA, CleEuro, CleFraisKm})
    lignes.push_back(Texte(cle) + "=" + app.Reglages.LitIniExercice(app.NomExercice, Texte(cle)));
  return lignes;
}

std::vector<u16> FichiersScelles() {
  std::vector<u16> numeros;
  for (const DefinitionFichier& definition : Definitions())
    if (definition.duDepart && !definition.duCabinet) numeros.push_back(definition.numero);
  return numeros;
}

/// What the record of a difference is called in a sentence.
std::string NomRecord(u16 numero, const void* rec, Position position) {
  if (numero == FichierJournal) {
    const Line& ligne = *static_cast<const Line*>(rec);
    return "écriture "_w + std::to_string(ligne.Mouvement) + ", ligne " + std::to_string(ligne.Rang);
  }
  if (numero == FichierComptes) return "compte " + LitTexte(static_cast<const Plan*>(rec)->Compte);
  if (numero == FichierRubriques) return "rubrique " + LitTexte(static_cast<const Rubrique*>(rec)->Rubrique);
  return "enregistrement " + std::to_string(position);
}

/// Sums of all records of a file; `suite` sees each with its sum.
using SuiteSommes = std::function<void(const Empreinte16&, Position, const void*)>;
Refus Parcourt(CFenlorApp& app, u16 numero, const SuiteSommes& suite) {
  const Ouverture ouverture(app.Magasin, numero);
  if (!ouverture) return app.EchecMagasin();
  const DefinitionFichier& definition = *DefinitionFichierNumero(numero);
  std::vector<u8> copie(definition.taille);
  const bool entier = app.Magasin.QVParcours(numero, [&](Position position, const void* rec) {
    std::memcpy(copie.data(), rec, copie.size());
    suite(SommeDe(copie.data(), copie.size()), position, copie.data());
    return true;
  });
  return entier ? Refus() : app.EchecMagasin();
}

Refus LitLivres(CFenlorApp& app, Livres& livres) {
  FichierScelle& reglages = livres.emplace_back();
  for (const std::string& ligne : ReglagesScelles(app))
    reglages.sommes.push_back(SommeDe(ligne.data(), ligne.size()));
  for (const u16 numero : FichiersScelles()) {
    FichierScelle& fichier = livres.emplace_back();
    fichier.numero = numero;
    if (const Refus refus = Parcourt(app, numero, [&](const Empreinte16& somme, Position, const void*) {
          fichier.sommes.push_back(somme);
        }))
      return refus;
  }
  // Sorted, for a rebuild may put the records into another order.
  for (FichierScelle& fichier : livres) std::sort(fichier.sommes.begin(), fichier.sommes.end());
  return {};
}

template <class T>
void Pose(std::string& octets, T valeur) {
  octets.append(reinterpret_cast<const char*>(&valeur), sizeof valeur);
}

std::string Assemble(const Livres& livres) {
  std::string octets(Magie);
  for (const FichierScelle& fichier : livres) {
    Pose(octets, fichier.numero);
    Pose(octets, static_cast<u32>(fichier.sommes.size()));
    for (const Empreinte16& somme : fichier.sommes)
      octets.append(reinterpret_cast<const char*>(somme.data()), somme.size());
  }
  return octets;
}

/// False when the bytes are no list of this form.
bool Analyse(const std::string& octets, Livres& livres) {
  if (octets.compare(0, Magie.size(), Magie) != 0) return false;
  for (std::size_t place = Magie.size(); place < octets.size();) {
    if (octets.size() - place < 6) return false;
    FichierScelle& fichier = livres.emplace_back();
    u32 nombre = 0;
    std::memcpy(&fichier.numero, &octets[place], 2);
    std::memcpy(&nombre, &octets[place + 2], 4);
    place += 6;
    if ((octets.size() - place) / sizeof(Empreinte16) < nombre) return false;
    fichier.sommes.resize(nombre);
    if (nombre) std::memcpy(fichier.sommes.data(), &octets[place], nombre * sizeof(Empreinte16));
    place += nombre * sizeof(Empreinte16);
  }
  return true;
}

std::string Sceau(const std::string& contenu) {
  CalculSha256 calcul;
  calcul.Ajoute(contenu.data(), contenu.size());
  return EnHexa(calcul.Fin());
}

std::string Chemin(CFenlorApp& app) { return Joint(app.PathExercice, NomFichierSceau); }

/// Empty when there is none that can be read.
std::string LitListe(CFenlorApp& app) {
  std::unique_ptr<Fichier> fichier;
  Empreinte empreinte;
  if (app.Magasin.SystemeFichiers().Ouvre(Chemin(app), Systeme::Lecture, fichier) != 0) return {};
  if (fichier->Mesure(empreinte) != 0 || empreinte.taille > TailleSceauMax) return {};
  std::string octets(static_cast<std::size_t>(empreinte.taille), '\0');
  std::size_t lus = 0;
  if (fichier->Lit(octets.data(), octets.size(), 0, lus) != 0) return {};
  octets.resize(lus);
  return octets;
}

std::string NomFichier(u16 numero) {
  const DefinitionFichier* definition = DefinitionFichierNumero(numero);
  return definition ? definition->nom : FichierReglages;
}

/// Says what of one file is not as it was sealed.
Refus Compare(CFenlorApp& app, const FichierScelle& avant, const FichierScelle& apres,
              std::vector<std::string>& constats) {
  if (avant.sommes == apres.sommes) return {};
  std::vector<Empreinte16> disparus, nouveaux;
  std::set_difference(avant.sommes.begin(), avant.sommes.end(), apres.sommes.begin(), apres.sommes.end(),
                      std::back_inserter(disparus));
  std::set_difference(apres.sommes.begin(), apres.sommes.end(), avant.sommes.begin(), avant.sommes.end(),
                      std::back_inserter(nouveaux));
  constats.push_back(
      TexteFormat(TexteSceauRompu, {NomFichier(avant.numero), std::to_string(avant.sommes.size()),
                                    std::to_string(disparus.size()), std::to_string(nouveaux.size())}));
  if (avant.numero == 0 || nouveaux.empty()) return {};
  return Parcourt(app, avant.numero, [&](const Empreinte16& somme, Position position, const void* rec) {
    if (constats.size() < EnregistrementsDitsMax &&
        std::binary_search(nouveaux.begin(), nouveaux.end(), somme))
      constats.push_back(TexteFormat(TexteSceauEnregistrement, {NomRecord(avant.numero, rec, position)}));
  });
}

}  // namespace

Refus CalculeSceau(CFenlorApp& app, std::string& contenu, std::string& hexa) {
  assert(!app.NomExercice.empty() && !app.Magasin.QVEnUnite());
  Livres livres;
  if (const Refus refus = LitLivres(app, livres)) return refus;
  contenu = Assemble(livres);
  hexa = Sceau(contenu);
  return {};
}

Refus EcritSceau(CFenlorApp& app, const std::string& contenu) {
  assert(!contenu.empty());
  Systeme& systeme = app.Magasin.SystemeFichiers();
  const std::string chemin = Chemin(app);
  Empreinte empreinte;
  int erreur = RemplaceFichier(systeme, chemin, chemin + ".neuf", contenu, empreinte);
  if (!erreur) erreur = systeme.SynchroniseDossier(app.PathExercice);
  return erreur ? Refus(ErrSceauEcriture, "", {chemin, TexteErreurSysteme(erreur)}) : Refus();
}

Refus ExamineSceau(CFenlorApp& app, ExamenSceau& examen) {
  assert(!app.NomExercice.empty());
  examen = {};
  examen.hexa = app.Reglages.LitIniExercice(app.NomExercice, Texte(CleSceau));
  if (examen.hexa.empty() || !app.Reglages.IsExerciceCloture()) return {};
  Livres avant, apres;
  if (const Refus refus = LitLivres(app, apres)) return refus;
  if (Sceau(Assemble(apres)) == examen.hexa) {
    examen.etat = EtatSceau::Intact;
    return {};
  }
  const std::string liste = LitListe(app);
  if (Sceau(liste) != examen.hexa || !Analyse(liste, avant)) {
    examen.etat = EtatSceau::SansListe;
    examen.constats.push_back(Texte(TexteSceauSansListe));
    return {};
  }
  examen.etat = EtatSceau::Rompu;
  for (const FichierScelle& fichier : avant) {
    const auto place = std::find_if(apres.begin(), apres.end(),
                                    [&](const FichierScelle& f) { return f.numero == fichier.numero; });
    if (place == apres.end()) continue;
    if (const Refus refus = Compare(app, fichier, *place, examen.constats)) return refus;
  }
  return {};
}

}  // namespace fenlor

#include "garde/conservation.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <set>

#include "garde/flux.h"
#include "garde/textes.h"
#include "store/dates.h"

namespace fenlor {

namespace {

bool Chiffres(std::string_view texte, std::size_t combien) {
  return texte.size() == combien &&
         std::all_of(texte.begin(), texte.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Monday of the date's week.
Date Semaine(Date date) {
  assert(IsDateOk(date));
  Date premier = 0, dernier = 0;
  GetWeek(date, premier, dernier);
  return premier;
}

/// Keeps the newest of the first `combien` periods of a series, which is told newest first.
void Retient(const std::vector<const SauvegardePresente*>& serie, unsigned combien, Date (*periode)(Date),
             std::set<const SauvegardePresente*>& gardees) {
  assert(!serie.empty() && periode);
  std::set<Date> vues;
  for (const SauvegardePresente* s : serie) {
    if (vues.size() == combien) return;
    if (vues.insert(periode(s->date)).second) gardees.insert(s);
  }
}

std::vector<std::vector<const SauvegardePresente*>> Series(const std::vector<SauvegardePresente>& presentes) {
  std::vector<std::vector<const SauvegardePresente*>> series;
  for (const SauvegardePresente& s : presentes) {
    const auto place = std::find_if(series.begin(), series.end(),
                                    [&](const auto& serie) { return serie.front()->serie == s.serie; });
    if (place == series.end())
      series.push_back({&s});
    else
      place->push_back(&s);
  }
  return series;
}

}  // namespace

bool LitNomSauvegarde(const std::string& nom, SauvegardePresente& sauvegarde) {
  const std::string extension = ExtensionSauvegarde;
  if (nom.size() <= extension.size() || nom.rfind("Fenlor_", 0) != 0) return false;
  if (nom.compare(nom.size() - extension.size(), extension.size(), extension) != 0) return false;
  const std::string corps = nom.substr(0, nom.size() - extension.size());
  const std::size_t heure = corps.rfind('_');
  const std::size_t date = heure == std::string::npos || heure == 0 ? heure : corps.rfind('_', heure - 1);
  if (date == std::string::npos || date == 0 || std::count(corps.begin(), corps.end(), '_') != 4)
    return false;
  const std::string jour = corps.substr(date + 1, heure - date - 1), suite = corps.substr(heure + 1);
  if (!Chiffres(jour, 8) || suite.size() < 4 || !Chiffres(suite.substr(0, 4), 4)) return false;
  if (suite.size() > 4 &&
      (suite[4] != '-' || suite.size() > 7 || !Chiffres(suite.substr(5), suite.size() - 5)))
    return false;
  const auto nombre = [&](std::size_t debut, std::size_t taille) {
    return static_cast<unsigned>(std::stoul(jour.substr(debut, taille)));
  };
  sauvegarde.date = FaitDate(nombre(6, 2), nombre(4, 2), nombre(0, 4));
  if (!IsDateOk(sauvegarde.date)) return false;
  sauvegarde.nom = nom;
  sauvegarde.serie = corps.substr(0, date);
  // "-2" comes before "-10".
  sauvegarde.heure = suite.substr(0, 4) + std::string(suite.size() == 6 ? "0" : "") +
                     (suite.size() > 5 ? suite.substr(5) : "");
  return true;
}

Refus ListeSauvegardes(Systeme& systeme, const std::string& dossier,
                       std::vector<SauvegardePresente>& presentes) {
  presentes.clear();
  std::vector<std::string> noms;
  if (const int erreur = systeme.Liste(dossier, noms))
    return Refus(ErrDossierIllisible, "dossier", {dossier, TexteErreurSysteme(erreur)});
  for (const std::string& nom : noms) {
    SauvegardePresente s;
    if (!LitNomSauvegarde(nom, s)) continue;
    std::unique_ptr<Fichier> fichier;
    Empreinte empreinte;
    // One that cannot be opened is listed, too: reading it tells why.
    if (systeme.Ouvre(Joint(dossier, nom), Systeme::Lecture, fichier) == 0) {
      if (fichier->Mesure(empreinte) == 0) s.taille = empreinte.taille;
      s.protegee = EstProtege(*fichier);
    }
    presentes.push_back(std::move(s));
  }
  std::sort(presentes.begin(), presentes.end(), [](const SauvegardePresente& a, const SauvegardePresente& b) {
    return std::tie(b.date, b.heure, a.nom) < std::tie(a.date, a.heure, b.nom);
  });
  return {};
}

std::vector<SauvegardePresente> Perimees(const std::vector<SauvegardePresente>& presentes,
                                         const Conservation& regle) {
  std::vector<SauvegardePresente> perimees;
  for (const auto& serie : Series(presentes)) {
    std::set<const SauvegardePresente*> gardees{serie.front()};
    Retient(
        serie, regle.jours, [](Date date) { return date; }, gardees);
    Retient(serie, regle.semaines, Semaine, gardees);
    Retient(
        serie, regle.mois, [](Date date) { return FaitDate(1, Mois(date), Annee(date)); }, gardees);
    for (const SauvegardePresente* s : serie)
      if (!gardees.count(s)) perimees.push_back(*s);
  }
  return perimees;
}

Refus Purge(Systeme& systeme, const std::string& dossier, const Conservation& regle,
            const std::string& motDePasse, std::vector<std::string>& retirees) {
  retirees.clear();
  std::vector<SauvegardePresente> presentes;
  if (const Refus refus = ListeSauvegardes(systeme, dossier, presentes)) return refus;
  const std::vector<SauvegardePresente> perimees = Perimees(presentes, regle);
  const auto estPerimee = [&](const std::string& nom) {
    return std::any_of(perimees.begin(), perimees.end(), [&](const auto& p) { return p.nom == nom; });
  };
  for (const auto& serie : Series(presentes)) {
    if (std::none_of(serie.begin(), serie.end(), [&](const auto* s) { return estPerimee(s->nom); })) continue;
    // Those that stay are read first, then those that were to go: the first good one is what the others may
    // go for.
    std::vector<const SauvegardePresente*> ordre = serie;
    std::stable_partition(ordre.begin(), ordre.end(), [&](const auto* s) { return !estPerimee(s->nom); });
    const auto bonne = std::find_if(ordre.begin(), ordre.end(), [&](const auto* s) {
      Manifeste manifeste;
      return !ParcourtArchive(systeme, Joint(dossier, s->nom), motDePasse, manifeste);
    });
    if (bonne == ordre.end()) continue;
    assert(ordre.size() == serie.size());
    for (const SauvegardePresente* s : serie) {
      if (s == *bonne || !estPerimee(s->nom)) continue;
      assert(s->serie == (*bonne)->serie);
      if (const int erreur = systeme.Supprime(Joint(dossier, s->nom)))
        return Refus(ErrSauvegardeRetrait, "", {s->nom, TexteErreurSysteme(erreur)});
      retirees.push_back(s->nom);
    }
  }
  if (retirees.empty()) return {};
  const int erreur = systeme.SynchroniseDossier(dossier);
  return erreur ? Refus(ErrSauvegardeRetrait, "", {dossier, TexteErreurSysteme(erreur)}) : Refus();
}

}  // namespace fenlor

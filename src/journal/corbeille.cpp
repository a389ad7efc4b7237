#include "journal/corbeille.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <map>
#include <set>

#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "store/remplacement.h"
#include "store/somme.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::string_view Magie("FNCORB\1\0", 8);
constexpr u64 TailleMax = 256u << 20;

struct Tete {
  u32 numero, date, restauree;
  u16 heure, lignes;
};
static_assert(sizeof(Tete) == 16);

std::string Chemin(const CFenlorApp& app) { return Joint(app.PathExercice, Texte(FichierCorbeille)); }

bool Decode(const std::string& octets, std::vector<Suppression>& suppressions) {
  if (octets.size() < Magie.size() + 4 || !octets.starts_with(Magie)) return false;
  const char* place = octets.data() + Magie.size();
  const char* fin = octets.data() + octets.size() - 4;
  u32 somme;
  std::memcpy(&somme, fin, sizeof somme);
  if (somme != Crc32c(octets.data(), octets.size() - 4)) return false;
  while (place != fin) {
    Tete tete;
    if (fin - place < static_cast<std::ptrdiff_t>(sizeof tete)) return false;
    std::memcpy(&tete, place, sizeof tete);
    place += sizeof tete;
    if (tete.lignes == 0 || fin - place < static_cast<std::ptrdiff_t>(tete.lignes * sizeof(Line)))
      return false;
    Suppression& s =
        suppressions.emplace_back(Suppression{tete.numero, tete.date, tete.heure, tete.restauree, {}});
    s.lignes.resize(tete.lignes);
    std::memcpy(s.lignes.data(), place, tete.lignes * sizeof(Line));
    place += tete.lignes * sizeof(Line);
  }
  return true;
}

/// 0, errno, or ErrEndommage. A file that does not exist is empty.
int Lit(CFenlorApp& app, std::vector<Suppression>& suppressions) {
  suppressions.clear();
  std::unique_ptr<Fichier> fichier;
  Empreinte empreinte;
  int code = app.Magasin.SystemeFichiers().Ouvre(Chemin(app), Systeme::Lecture, fichier);
  if (code == ENOENT) return 0;
  if (!code) code = fichier->Mesure(empreinte);
  if (code || empreinte.taille > TailleMax) return code ? code : static_cast<int>(ErrEndommage);
  std::string octets(empreinte.taille, '\0');
  std::size_t lus = 0;
  if ((code = fichier->Lit(octets.data(), octets.size(), 0, lus))) return code;
  octets.resize(lus);
  return Decode(octets, suppressions) ? 0 : static_cast<int>(ErrEndommage);
}

Refus Ecrit(CFenlorApp& app, const std::vector<Suppression>& suppressions) {
  std::string octets(Magie);
  for (const Suppression& s : suppressions) {
    assert(!s.lignes.empty() && s.lignes.size() <= 0xFFFF);
    const Tete tete{s.numero, s.date, s.restauree, static_cast<u16>(s.heure),
                    static_cast<u16>(s.lignes.size())};
    octets.append(reinterpret_cast<const char*>(&tete), sizeof tete);
    octets.append(reinterpret_cast<const char*>(s.lignes.data()), s.lignes.size() * sizeof(Line));
  }
  const u32 somme = Crc32c(octets.data(), octets.size());
  octets.append(reinterpret_cast<const char*>(&somme), sizeof somme);
  Systeme& systeme = app.Magasin.SystemeFichiers();
  const std::string chemin = Chemin(app);
  Empreinte empreinte;
  int code = RemplaceFichier(systeme, chemin, NomProvisoire(chemin), octets, empreinte);
  if (!code) code = systeme.SynchroniseDossier(app.PathExercice);
  return code ? Refus(ErrCorbeille, "", {app.Magasin.QVErreurTexte(code)}) : Refus{};
}

/// Sets a damaged file aside, under a name that no other one has.
Refus MetDeCote(CFenlorApp& app) {
  Systeme& systeme = app.Magasin.SystemeFichiers();
  const std::string chemin = Chemin(app);
  std::string avarie = chemin + ".avarie";
  for (unsigned n = 2; systeme.Existe(avarie); ++n) avarie = chemin + ".avarie" + std::to_string(n);
  if (const int code = systeme.Renomme(chemin, avarie))
    return Refus(ErrCorbeille, "", {app.Magasin.QVErreurTexte(code)});
  app.Magasin.QVAvertit("La corbeille était endommagée : elle est mise de côté (" + avarie + ").");
  return {};
}

bool TropVieille(const Suppression& s, Date jour) {
  const auto jours = [](Date date) {
    namespace ch = std::chrono;
    return ch::sys_days(ch::year(static_cast<int>(Annee(date))) / static_cast<int>(Mois(date)) /
                        static_cast<int>(Jour(date)));
  };
  return jours(jour) - jours(s.date) > JoursCorbeille;
}

bool Memes(const std::vector<Line>& a, const std::vector<Line>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(Line)) == 0;
}

bool LitLignes(CFenlorApp& app, u32 mouvement, std::vector<Line>& lignes) {
  lignes.clear();
  return ParcoursEcriture(app, mouvement, [&](const Line& ligne) {
    lignes.push_back(ligne);
    lignes.back().Reserve0 = 0;
    return true;
  });
}

/// The lines as they are entered again: the parent application's record is gone.
std::vector<Line> Libres(const std::vector<Line>& lignes, u32 mouvement) {
  std::vector<Line> libres = lignes;
  for (Line& ligne : libres) {
    ligne.Mouvement = mouvement;
    ligne.LienId = ligne.Reserve134 = 0;
  }
  return libres;
}

/// The entry stands: it was never deleted, that was taken back, or it was restored.
bool EstLa(CFenlorApp& app, const Suppression& s, bool& lues) {
  std::vector<Line> presentes;
  lues = LitLignes(app, s.lignes.front().Mouvement, presentes) && lues;
  if (Memes(s.lignes, presentes)) return true;
  if (s.restauree == 0) return false;
  lues = LitLignes(app, s.restauree, presentes) && lues;
  return Memes(Libres(s.lignes, s.restauree), presentes);
}

}  // namespace

f64 Suppression::Montant(bool euro) const {
  f64 montant = 0;
  for (const Line& ligne : lignes)
    if (ligne.Sens == 0) montant += euro ? f64{ligne.MontantEuro} : f64{ligne.MontantFranc};
  return Arrondi2(montant);
}

Refus MetEnCorbeille(CFenlorApp& app, const std::vector<u32>& mouvements) {
  std::map<u32, Suppression> neuves;
  for (const u32 mouvement : mouvements) {
    Suppression neuve{0, app.Magasin.Today(), app.Magasin.Now(), 0, {}};
    if (!LitLignes(app, mouvement, neuve.lignes)) return app.EchecMagasin();
    if (!neuve.lignes.empty()) neuves[mouvement] = std::move(neuve);
  }
  if (neuves.empty()) return {};
  std::vector<Suppression> suppressions;
  const int code = Lit(app, suppressions);
  if (code && code != ErrEndommage) return Refus(ErrCorbeille, "", {app.Magasin.QVErreurTexte(code)});
  if (code) {
    if (const Refus refus = MetDeCote(app)) return refus;
    suppressions.clear();
  }
  // Their numbers are given before the old ones go: none comes twice.
  u32 numero = 0;
  for (const Suppression& s : suppressions) numero = std::max(numero, s.numero);
  const auto memes = [&](u32 mouvement, const std::vector<Line>& lignes) {
    const auto neuve = neuves.find(mouvement);
    return neuve != neuves.end() && Memes(lignes, neuve->second.lignes);
  };
  std::erase_if(suppressions, [&](const Suppression& s) {
    return memes(s.lignes.front().Mouvement, s.lignes) || memes(s.restauree, Libres(s.lignes, s.restauree)) ||
           TropVieille(s, app.Magasin.Today());
  });
  for (const u32 mouvement : mouvements) {
    const auto neuve = neuves.find(mouvement);
    if (neuve == neuves.end()) continue;
    neuve->second.numero = ++numero;
    suppressions.push_back(std::move(neuve->second));
    neuves.erase(neuve);
  }
  return Ecrit(app, suppressions);
}

Refus OteDeCorbeille(CFenlorApp& app, const std::vector<u32>& mouvements) {
  if (mouvements.empty()) return {};
  std::vector<Suppression> suppressions;
  if (const int code = Lit(app, suppressions))
    return Refus(ErrCorbeille, "", {app.Magasin.QVErreurTexte(code)});
  const std::set<u32> restees(mouvements.begin(), mouvements.end());
  std::vector<Line> presentes;
  const auto ote = [&](const Suppression& s) {
    const u32 mouvement = s.lignes.front().Mouvement;
    return s.restauree == 0 && restees.contains(mouvement) && LitLignes(app, mouvement, presentes) &&
           Memes(s.lignes, presentes);
  };
  return std::erase_if(suppressions, ote) > 0 ? Ecrit(app, suppressions) : Refus{};
}

void RangeCorbeille(CFenlorApp& app) {
  assert(!app.PathExercice.empty());
  if (app.Reglages.IsFige() || !app.Magasin.SystemeFichiers().Existe(Chemin(app))) return;
  LivresOuverts livres;
  std::vector<Suppression> suppressions;
  if (livres.Ouvre(app) || Lit(app, suppressions) != 0) return;
  bool lues = true;
  const auto presente = [&](const Suppression& s) { return EstLa(app, s, lues); };
  if (std::erase_if(suppressions, presente) != 0 && lues) (void)Ecrit(app, suppressions);
}

Refus LitCorbeille(CFenlorApp& app, std::vector<Suppression>& suppressions) {
  suppressions.clear();
  if (app.PathExercice.empty()) return Refus(ErrAucunExercice);
  LivresOuverts livres;
  if (const Refus refus = livres.Ouvre(app)) return refus;
  const int code = Lit(app, suppressions);
  if (code == ErrEndommage) return Refus(ErrCorbeilleEndommagee, "", {Chemin(app)});
  if (code) return Refus(ErrCorbeille, "", {app.Magasin.QVErreurTexte(code)});
  const Date jour = app.Magasin.Today();
  bool lues = true;
  std::erase_if(suppressions,
                [&](const Suppression& s) { return TropVieille(s, jour) || EstLa(app, s, lues); });
  std::reverse(suppressions.begin(), suppressions.end());
  return lues ? Refus{} : app.EchecMagasin();
}

Refus RestaureSuppression(CFenlorApp& app, u32 numero, u32& mouvement) {
  LivresOuverts livres;
  if (const Refus refus = ControleExercice(app, livres)) return refus;
  std::vector<Suppression> suppressions;
  if (const Refus refus = LitCorbeille(app, suppressions)) return refus;
  const auto voulue = std::find_if(suppressions.begin(), suppressions.end(),
                                   [&](const Suppression& s) { return s.numero == numero; });
  if (voulue == suppressions.end()) return Refus(ErrSuppressionAbsente, "numero", {std::to_string(numero)});
  QVAPI& magasin = app.Magasin;
  std::vector<Line> presentes;
  mouvement = voulue->lignes.front().Mouvement;
  if (!LitLignes(app, mouvement, presentes)) return app.EchecMagasin();
  if (!presentes.empty())
    mouvement =
        magasin.GetFreeMouvementsID(app.PathExercice, static_cast<u16>(+voulue->lignes.front().Journal));
  if (mouvement == 0) return app.EchecDit();
  const std::vector<Line> lignes = Libres(voulue->lignes, mouvement);
  // Noted before it stands: what was noted in vain shows the deletion still.
  std::vector<Suppression> toutes;
  if (const int code = Lit(app, toutes)) return Refus(ErrCorbeille, "", {magasin.QVErreurTexte(code)});
  for (Suppression& s : toutes)
    if (s.numero == numero) s.restauree = mouvement;
  if (const Refus refus = Ecrit(app, toutes)) return refus;
  QVAPI::Unite unite(magasin,
                     TexteFormat(ActeRestauration, {CompacteTexte(LitTexte(lignes.front().Libelle))}));
  for (const Line& ligne : lignes)
    if (magasin.AddLines(app.PathExercice, ligne) == 0) return app.EchecDit();
  return unite.Valide() ? Refus{} : app.EchecMagasin();
}

}  // namespace fenlor

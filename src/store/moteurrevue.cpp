// A look over a whole file, for whoever verifies the books.

#include <algorithm>
#include <array>
#include <atomic>
#include <cassert>
#include <cstring>
#include <functional>

#include "store/moteuretat.h"
#include "store/partage.h"

namespace fenlor {

namespace {

/// A number for one key, other in each run: the sum over the keys is the same for the same keys in any
/// order, and for others once in 2^64. So keys are held against records without a search for each.
class Melangeur {
 public:
  Melangeur() : m_grain(TireId()) {}
  u64 operator()(std::string_view texte, u32 position) const {
    u64 a = m_grain ^ texte.size(), b = ~m_grain ^ position;
    std::size_t place = 0;
    for (; place + 16 <= texte.size(); place += 16) {
      a = (a ^ Mot(texte, place, 8)) * PremierA;
      b = (b ^ Mot(texte, place + 8, 8)) * PremierB;
      a ^= a >> 32;
      b ^= b >> 29;
    }
    const std::size_t reste = texte.size() - place;
    a = (a ^ Mot(texte, place, std::min<std::size_t>(reste, 8))) * PremierA;
    if (reste > 8) b = (b ^ Mot(texte, place + 8, reste - 8)) * PremierB;
    return Fond(Fond(a) ^ b);
  }

 private:
  static constexpr u64 PremierA = 0x9E3779B97F4A7C15, PremierB = 0xD1B54A32D192ED03;
  static u64 Mot(std::string_view texte, std::size_t place, std::size_t n) {
    u64 mot = 0;
    std::memcpy(&mot, texte.data() + place, n);
    return mot;
  }
  static u64 Fond(u64 x) {
    x = (x ^ x >> 31) * 0x7FB5D329728EA185;
    x = (x ^ x >> 27) * 0x81DADEF4BC2DD44D;
    return x ^ x >> 33;
  }
  u64 m_grain;
};

/// Number and sum of keys.
struct Total {
  u64 nombre = 0, somme = 0;
  void Ajoute(u64 melange) {
    ++nombre;
    somme += melange;
  }
  bool operator==(const Total&) const = default;
};
using Totaux = std::array<Total, 8>;

/// What one helper counts of the records.
struct Part {
  Moteur::Revue revue;
  Totaux totaux;
};

/// The keys of one number as they stand. False: not in order, or more than there are records.
bool Additionne(const MagasinCles& cles, unsigned indice, u64 auPlus, const Melangeur& melange,
                Total& total) {
  std::string precedent;
  precedent.reserve(TailleCleMax);
  u32 derniere = 0;
  bool enOrdre = true;
  auto entree = [&](std::string_view texte, u32 position) {
    const int ordre = total.nombre ? texte.compare(precedent) : 1;
    enOrdre = (ordre > 0 || (ordre == 0 && position > derniere)) && total.nombre < auPlus;
    if (!enOrdre) return false;
    precedent.assign(texte);
    derniere = position;
    total.Ajoute(melange(texte, position));
    return true;
  };
  return cles.ParcoursAPart(indice, entree) == 0 && enOrdre;
}

}  // namespace

Moteur::Revue Moteur::PasseEnRevue(u16 numFichier) {
  Ouvert* o = m->Dat(numFichier);
  if (!o || !o->def) return {0, 0, 0, false, false};
  bool avecCles = o->cles && m->AssureCles(*o);
  if (const int rc = avecCles ? o->cles->Engage(false) : 0) avecCles = m->ReplieCles(*o, rc);
  const unsigned cles = avecCles ? o->def->nbCles : 0;
  const Melangeur melange;
  Totaux presentes{}, voulues{};
  std::array<bool, 8> enOrdre{};
  std::array<Part, PartsMax> comptes{};
  // Each helper takes what is next: a key, which is walked as a whole, then stretches of records.
  const unsigned aides = NombreParts(u64{o->emplacements} * o->dat.entete.Pas());
  const unsigned tranches = aides * 8;
  std::atomic<unsigned> suivante{0};
  Partage(aides, [&](unsigned part) {
    Part compte;  // the helper's own, written out once: neighbours in memory would wait for each other
    for (unsigned n; (n = suivante++) < cles + tranches;) {
      if (n < cles) {
        Total total;
        enOrdre[n] = Additionne(*o->cles, n, o->emplacements, melange, total);
        presentes[n] = total;
        continue;
      }
      const auto [debut, fin] = TrancheDe(n - cles, tranches, o->emplacements, 1);
      char texte[TailleCleMax];
      for (Position p = static_cast<Position>(debut + 1); p <= fin; ++p) {
        const u8* rec = m->Brut(*o, p);
        const EtatEmplacement etat = o->dat.EtatDe(rec);
        if (etat != EtatEmplacement::Vivant) {
          ++(etat == EtatEmplacement::Libre ? compte.revue.libres : compte.revue.illisibles);
          continue;
        }
        ++compte.revue.vivants;
        for (unsigned i = 0; i < o->def->nbCles; ++i)
          compte.totaux[i].Ajoute(melange({texte, o->def->compose(i, rec, texte)}, p));
      }
    }
    comptes[part] = compte;
  });

  Revue revue;
  for (const Part& compte : comptes) {
    revue.vivants += compte.revue.vivants;
    revue.libres += compte.revue.libres;
    revue.illisibles += compte.revue.illisibles;
    for (std::size_t i = 0; i < voulues.size(); ++i) {
      voulues[i].nombre += compte.totaux[i].nombre;
      voulues[i].somme += compte.totaux[i].somme;
    }
  }
  assert(revue.vivants + revue.libres + revue.illisibles == o->emplacements);
  revue.cles = o->def->nbCles == 0 ||
               (avecCles && std::all_of(enOrdre.begin(), enOrdre.begin() + cles, std::identity()) &&
                presentes == voulues);
  revue.sommes = o->dat.VerifieTout() == 0;
  return revue;
}

}  // namespace fenlor

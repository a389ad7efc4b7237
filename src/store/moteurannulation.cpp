// Units taken back and done again: what a commit keeps of a unit, and the new unit that writes the other
// side of it.

#include <algorithm>
#include <cassert>
#include <cstring>
#include <set>

#include "store/moteuretat.h"

namespace fenlor {

namespace {

/// Gathers what a unit changed.
class Releve {
 public:
  Releve(UniteRetenue& unite, std::vector<EcartUnite>& vues) : m_unite(unite), m_vues(vues) {}

  void Ajoute(const Ouvert& o, Position position, const u8* avant, const u8* apres) {
    if (avant && o.dat.EtatDe(avant) != EtatEmplacement::Vivant) avant = nullptr;
    if (o.dat.EtatDe(apres) != EtatEmplacement::Vivant) apres = nullptr;
    if (!avant && !apres) return;
    u32 debut = 0, fin = o.dat.entete.taille;
    if (avant && apres) {
      while (debut < fin && avant[debut] == apres[debut]) ++debut;
      while (fin > debut && avant[fin - 1] == apres[fin - 1]) --fin;
      if (debut == fin) return;
    }
    m_unite.ecarts.push_back({Indice(o), avant != nullptr, apres != nullptr, static_cast<u16>(debut),
                              static_cast<u16>(fin - debut), position,
                              static_cast<u32>(m_unite.octets.size())});
    for (const u8* octets : {avant, apres})
      if (octets) m_unite.octets.insert(m_unite.octets.end(), octets + debut, octets + fin);
    m_vues.push_back({o.numero, avant, apres});
  }

 private:
  u16 Indice(const Ouvert& o) {
    auto& fichiers = m_unite.fichiers;
    const auto f =
        std::find_if(fichiers.begin(), fichiers.end(), [&](const auto& f) { return f.numero == o.numero; });
    const auto indice = static_cast<u16>(f - fichiers.begin());
    if (f == fichiers.end()) fichiers.push_back({o.numero, o.dat.entete.id, o.chemin});
    return indice;
  }

  UniteRetenue& m_unite;
  std::vector<EcartUnite>& m_vues;
};

/// The settings and texts of a unit seen from its other side.
void Retourne(const UniteRetenue& unite, UniteRetenue& contraire) {
  contraire.nom = unite.nom;
  for (const auto& r : unite.reglages) contraire.reglages.push_back({r.section, r.cle, r.apres, r.avant});
  for (const auto& t : unite.textes) contraire.textes.push_back({t.numero, t.chemin, t.apres, t.avant});
}

}  // namespace

/// Keeps the unit that was just made durable; its images do not yet stand in the data files.
void Moteur::Etat::RetientUnite(const OrdreImages& ordre) {
  if (!retenues.actives || (sansRetour && !contraire)) return;
  const auto neufs = [](const Ouvert* o) {
    return o->def && o->premierVerse ? o->emplacements - o->premierVerse + 1 : 0;
  };
  std::size_t octets = images.Octets();
  for (const Ouvert* o : touches) octets += std::size_t{neufs(o)} * o->dat.entete.Pas();
  // Larger than all that is kept: what stands before it cannot be reached without it.
  if (octets > RetenueMax) return retenues.Oublie();
  UniteRetenue unite;
  std::vector<EcartUnite> vues;
  Releve releve(unite, vues);
  for (const ImagesUnite::Image* image : ordre) {
    const Ouvert& o = *fichiers[image->fichier];
    if (!o.def) continue;
    const auto enAttente = o.attente.find(image->position);
    const bool ancien = image->position <= o.dat.entete.emplacements;
    releve.Ajoute(o, image->position,
                  enAttente != o.attente.end() ? enAttente->second.data()
                  : ancien                     ? o.dat.Place(image->position)
                                               : nullptr,
                  image->octets);
  }
  for (const Ouvert* o : touches)
    for (u32 n = neufs(o); n > 0; --n)
      releve.Ajoute(*o, o->emplacements - n + 1, nullptr, o->dat.Place(o->emplacements - n + 1));
  if (contraire) {
    Retourne(*contraire, unite);
    return retenues.Bascule(contraireDefait, std::move(unite));
  }
  unite.reglages = std::move(reglagesUnite);
  unite.textes = std::move(textesUnite);
  if (unite.ecarts.empty() && unite.reglages.empty() && unite.textes.empty()) return;
  unite.nom = !nomUnite.empty() || !nommeur ? std::move(nomUnite) : nommeur(vues);
  retenues.Ajoute(std::move(unite));
}

void Moteur::Etat::OublieNom() {
  nomUnite.clear();
  reglagesUnite.clear();
  textesUnite.clear();
  sansRetour = false;
}

/// A record of the unit as it was on one side; `present`: as it stands.
void Moteur::Etat::ComposeCote(const UniteRetenue& unite, const UniteRetenue::Ecart& e, bool apres,
                               const u8* present, std::vector<u8>& rec) const {
  assert(apres ? e.apres : e.avant);
  const u8* octets = apres ? unite.Apres(e) : unite.Avant(e);
  if (e.avant && e.apres) {
    rec.assign(present, present + fichiers[unite.fichiers[e.fichier].numero]->dat.entete.taille);
    std::memcpy(rec.data() + e.debut, octets, e.longueur);
  } else {
    rec.assign(octets, octets + e.longueur);
  }
}

/// True when every slot still holds what the unit wrote, and `controle` has nothing against it.
bool Moteur::Etat::ControleRetour(const UniteRetenue& unite, const SuiteRetour& controle) {
  for (const auto& f : unite.fichiers) {
    const Ouvert* o = fichiers[f.numero].get();
    if (!o || !o->datOuvert || (o->def->nbCles > 0 && !o->idxOuvert)) return Echec(ErrPasOuvert, f.chemin);
    if (o->dat.entete.id != f.id || o->chemin != f.chemin) return Echec(ErrRetour, f.chemin);
  }
  std::vector<u8> vers;
  const Ouvert* change = nullptr;
  for (const auto& e : unite.ecarts) {
    Ouvert& o = *fichiers[unite.fichiers[e.fichier].numero];
    const u8* present = Brut(o, e.position);
    if (!present) return Echec(ErrRetour, o);
    if (o.dat.EtatDe(present) != (e.apres ? EtatEmplacement::Vivant : EtatEmplacement::Libre)) {
      change = &o;
      continue;
    }
    if (e.apres && std::memcmp(present + e.debut, unite.Apres(e), e.longueur) != 0) change = &o;
    if (e.avant) ComposeCote(unite, e, false, present, vers);
    // Its reason is worth more than that something changed.
    if (controle && !controle({o.numero, e.apres ? present : nullptr, e.avant ? vers.data() : nullptr}))
      return Echec(ErrAucune);
  }
  return !change || Echec(ErrRetour, *change);
}

/// Takes slots out of the free list of a file, wherever they stand in it.
bool Moteur::Etat::ReprendLibres(Ouvert& o, std::set<Position> voulus) {
  Position avant = 0, position = o.tete;
  bool manque = false;
  const auto lie = [&](Position suivante) {
    if (!manque) return true;
    manque = false;
    if (avant == 0) {
      o.tete = suivante;
      return true;
    }
    std::vector<u8> octets(Brut(o, avant), Brut(o, avant) + o.dat.entete.taille);
    std::memcpy(octets.data() + 4, &suivante, sizeof suivante);
    Retient(o, avant);
    return PoseImage(o, avant, octets.data());
  };
  while (!voulus.empty()) {
    const u8* libre = Brut(o, position);
    if (!libre || o.dat.EtatDe(libre) != EtatEmplacement::Libre || o.libres == 0)
      return Echec(ErrEndommage, o);
    Position suivante;
    std::memcpy(&suivante, libre + 4, sizeof suivante);
    if (voulus.erase(position)) {
      Retient(o, 0);
      --o.libres;
      manque = true;
    } else {
      if (!lie(position)) return false;
      avant = position;
    }
    position = suivante;
  }
  return lie(position);
}

/// Keys, slots, keys: no key is taken by a record while another one still has it.
bool Moteur::Etat::EcritRetour(Moteur& moteur, const UniteRetenue& unite) {
  std::vector<u8> de, vers;
  char avant[TailleCleMax], apres[TailleCleMax];
  // Takes away (`pose` false) or puts the keys that the two sides of a slot do not share.
  const auto cles = [&](const UniteRetenue::Ecart& e, Ouvert& o, bool pose) {
    const u8* present = pose && !e.avant ? nullptr : Brut(o, e.position);
    if (e.apres) ComposeCote(unite, e, true, present, de);
    if (e.avant) ComposeCote(unite, e, false, present, vers);
    for (unsigned i = 0; i < o.def->nbCles; ++i) {
      const std::string_view ote(apres, e.apres ? o.def->compose(i, de.data(), apres) : 0);
      const std::string_view mis(avant, e.avant ? o.def->compose(i, vers.data(), avant) : 0);
      if (e.avant && e.apres && ote == mis) continue;
      int rc = 0;
      if (pose && e.avant) rc = PoseCle(o, i, mis, e.position, false);
      if (!pose && e.apres) rc = OteCle(o, i, ote, e.position);
      if (rc) return Echec(rc, o);
    }
    return true;
  };
  std::array<std::set<Position>, 256> repris;
  for (const auto& e : unite.ecarts) {
    Ouvert& o = *fichiers[unite.fichiers[e.fichier].numero];
    if (o.cles && !AssureCles(o)) return false;
    if (!cles(e, o, false)) return false;
    if (!e.apres) repris[o.numero].insert(e.position);
  }
  for (u16 n = 0; n < repris.size(); ++n)
    if (!repris[n].empty() && !ReprendLibres(*fichiers[n], std::move(repris[n]))) return false;
  for (const auto& e : unite.ecarts) {
    Ouvert& o = *fichiers[unite.fichiers[e.fichier].numero];
    if (!e.avant) {
      if (!moteur.Supprime(o.numero, e.position)) return false;
      continue;
    }
    ComposeCote(unite, e, false, Brut(o, e.position), vers);
    Retient(o, e.position);
    if (!PoseImage(o, e.position, vers.data())) return false;
  }
  for (const auto& e : unite.ecarts)
    if (!cles(e, *fichiers[unite.fichiers[e.fichier].numero], true)) return false;
  return true;
}

void Moteur::RetientUnites(bool actives, NommeurUnites nommeur) {
  m->retenues.actives = actives;
  m->nommeur = std::move(nommeur);
  m->retenues.Oublie();
}

void Moteur::OublieUnites() { m->retenues.Oublie(); }

void Moteur::NommeUnite(const std::string& nom) {
  assert(m->profondeur > 0);
  if (m->nomUnite.empty()) m->nomUnite = nom;
}

void Moteur::SansRetour() {
  assert(m->profondeur > 0);
  m->sansRetour = true;
}

void Moteur::RetientReglage(const UniteRetenue::ReglageRetenu& reglage) {
  if (m->retenues.actives && m->profondeur > 0 && reglage.avant != reglage.apres)
    m->reglagesUnite.push_back(reglage);
}

void Moteur::RetientTexte(const UniteRetenue::TexteRetenu& texte, const std::string& nom) {
  if (!m->retenues.actives || texte.avant == texte.apres) return;
  if (m->profondeur > 0) {
    m->textesUnite.push_back(texte);
    return;
  }
  UniteRetenue unite;
  unite.nom = nom;
  unite.textes.push_back(texte);
  m->retenues.Ajoute(std::move(unite));
}

const UniteRetenue* Moteur::Retenue(bool refaire) const {
  const auto& pile = m->retenues.Pile(refaire);
  return pile.empty() ? nullptr : &pile.back();
}

u64 Moteur::VersionRetenues() const { return m->retenues.Version(); }

bool Moteur::Reprend(bool refaire, const SuiteRetour& controle) {
  if (m->profondeur > 0) return m->Echec(ErrValeur);
  if (m->retenues.Pile(refaire).empty()) return m->Echec(ErrRetour);
  const UniteRetenue& unite = m->retenues.Pile(refaire).back();
  if (!m->ControleRetour(unite, controle)) return false;
  if (unite.ecarts.empty()) {
    UniteRetenue contraire;
    Retourne(unite, contraire);
    m->retenues.Bascule(refaire, std::move(contraire));
    return true;
  }
  ++m->nbAnnulations;  // what was derived from the files is to be read again
  DebutUnite();
  if (!m->EcritRetour(*this, unite)) {
    AnnuleUnite();
    return false;
  }
  m->contraire = &unite;
  m->contraireDefait = refaire;
  const bool fait = ValideUnite();
  m->contraire = nullptr;
  return fait;
}

}  // namespace fenlor

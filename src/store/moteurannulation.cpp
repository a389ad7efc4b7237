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
  Releve(Retenues& retenues, std::vector<EcartUnite>& vues) : m_retenues(retenues), m_vues(vues) {}

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
    const UniteRetenue::Ecart ecart{.fichier = Indice(o),
                                    .avant = avant != nullptr,
                                    .apres = apres != nullptr,
                                    .debut = static_cast<u16>(debut),
                                    .longueur = static_cast<u16>(fin - debut),
                                    .position = position};
    m_retenues.Ajoute(ecart, avant ? avant + debut : nullptr, apres ? apres + debut : nullptr);
    m_vues.push_back({o.numero, avant, apres});
  }

  /// Bytes that a slot costs at most.
  static u64 Borne(u16 pas) { return 1 + sizeof(UniteRetenue::Ecart) + u64{2} * pas; }

 private:
  u16 Indice(const Ouvert& o) {
    const auto f = std::find(m_numeros.begin(), m_numeros.end(), o.numero);
    const auto indice = static_cast<u16>(f - m_numeros.begin());
    if (f == m_numeros.end()) {
      m_numeros.push_back(o.numero);
      m_retenues.Ajoute(UniteRetenue::FichierRetenu{o.numero, o.dat.entete.id, o.chemin});
    }
    return indice;
  }

  Retenues& m_retenues;
  std::vector<EcartUnite>& m_vues;
  std::vector<u16> m_numeros;
};

}  // namespace

/// Keeps the unit that was just made durable; its images do not yet stand in the data files.
void Moteur::Etat::RetientUnite(const OrdreImages& ordre) {
  // Taken back it writes nothing else than what is kept already.
  if (enRetour) return retenues.Bascule(retourDefait);
  if (!retenues.actives || sansRetour) return;
  const auto neufs = [](const Ouvert* o) {
    return o->def && o->premierVerse ? o->emplacements - o->premierVerse + 1 : 0;
  };
  u64 borne = 0;
  for (const ImagesUnite::Image* image : ordre) borne += Releve::Borne(image->pas);
  for (const Ouvert* o : touches)
    borne += neufs(o) * Releve::Borne(static_cast<u16>(o->dat.entete.Pas())) + o->chemin.size() + 64;
  for (const auto& r : reglagesUnite)
    borne += r.section.size() + r.cle.size() + r.avant.size() + r.apres.size() + 64;
  retenues.Commence(borne);
  std::vector<EcartUnite> vues;
  Releve releve(retenues, vues);
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
  for (const auto& reglage : reglagesUnite) retenues.Ajoute(reglage);
  if (retenues.EstVide()) return;
  retenues.Acheve(!nomUnite.empty() || !nommeur ? nomUnite : nommeur(vues));
}

void Moteur::Etat::OublieNom() {
  nomUnite.clear();
  reglagesUnite.clear();
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
  if (!m->retenues.actives || m->profondeur == 0 || reglage.avant == reglage.apres) return;
  // A key that is written twice goes back to what it was before the first time.
  auto& reglages = m->reglagesUnite;
  const auto deja = std::find_if(reglages.begin(), reglages.end(), [&](const auto& r) {
    return r.section == reglage.section && r.cle == reglage.cle;
  });
  if (deja == reglages.end())
    reglages.push_back(reglage);
  else
    deja->apres = reglage.apres;
}

void Moteur::RetientTexte(const UniteRetenue::TexteRetenu& texte, const std::string& nom) {
  assert(m->profondeur == 0);
  if (!m->retenues.actives || texte.avant == texte.apres) return;
  m->retenues.Commence(texte.chemin.size() + texte.avant.size() + texte.apres.size() + 64);
  m->retenues.Ajoute(texte);
  m->retenues.Acheve(nom);
}

std::string Moteur::NomRetenue(bool refaire) const {
  const std::string* nom = m->retenues.Nom(refaire);
  return nom ? *nom : std::string();
}

int Moteur::PerteRetenue(bool refaire) const { return m->retenues.Perte(refaire); }

bool Moteur::LitRetenue(bool refaire, UniteRetenue& unite) {
  const int code = m->profondeur > 0 ? static_cast<int>(ErrValeur) : m->retenues.Lit(refaire, unite);
  return code == 0 || m->Echec(code);
}

u64 Moteur::VersionRetenues() const { return m->retenues.Version(); }

void Moteur::Exige(std::function<int()> prealable) { m->prealable = std::move(prealable); }

u64 Moteur::IdReprise() const { return m->reprise->Id(); }
u64 Moteur::ProchaineUnite() const { return m->reprise->Suivante(); }

bool Moteur::PeutReprendre(const UniteRetenue& unite, const SuiteRetour& controle) {
  return m->ControleRetour(unite, controle);
}

bool Moteur::Reprend(bool refaire, const UniteRetenue& unite) {
  if (m->profondeur > 0) return m->Echec(ErrValeur);
  if (unite.ecarts.empty()) {
    m->retenues.Bascule(refaire);
    return true;
  }
  ++m->nbAnnulations;  // what was derived from the files is to be read again
  DebutUnite();
  if (!m->EcritRetour(*this, unite)) {
    AnnuleUnite();
    return false;
  }
  m->enRetour = true;
  m->retourDefait = refaire;
  const bool fait = ValideUnite();
  m->enRetour = false;
  return fait;
}

}  // namespace fenlor

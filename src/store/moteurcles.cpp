// Keys: opening and trusting a key file, its rebuild, key operations and cursors.

#include <algorithm>
#include <array>
#include <cassert>
#include <cerrno>
#include <cstring>

#include "store/moteuretat.h"
#include "store/partage.h"
#include "store/texte1252.h"
#include "store/tricles.h"

namespace fenlor {

namespace {

constexpr std::size_t EntreesDAvance = 16;
constexpr u64 PagesLues = 32;  ///< at a time: what stays in the processor's own memory
constexpr u32 PositionMax = 0xFFFFFFFFu;

/// Failures for which the keys can live in memory until the disk is well again.
bool ManqueDePlace(int rc) { return rc == ENOSPC || rc == EDQUOT || rc == EIO || rc == EFBIG; }

}  // namespace

Ouvert* Moteur::Etat::Cle(u16 numCle, unsigned& indice) {
  Ouvert* o = nullptr;
  if (const DefinitionFichier* def = DefinitionCle(numCle, indice)) {
    o = def->numero < fichiers.size() ? fichiers[def->numero].get() : nullptr;
  } else {
    for (const auto& f : fichiers) {
      if (f && !f->def && numCle > f->numero && numCle <= f->numero + f->description.nombre) {
        o = f.get();
        indice = numCle - f->numero - 1u;
      }
    }
  }
  if (!o || !o->idxOuvert || !o->cles) return Echec(ErrPasOuvert), nullptr;
  assert(indice < o->description.nombre);
  return AssureCles(*o) ? o : nullptr;
}

/// What a seal would say now. With `attendu` the file is summed up only when the rest agrees.
bool Moteur::Etat::Sceau_(Ouvert& o, Sceau& sceau, const Sceau* attendu) {
  assert(!o.cheminIdx.empty() && fabrique.SurDisque());
  Empreinte dat, idx;
  if (o.dat.Mesure(dat) || systeme.Mesure(o.cheminIdx, idx)) return false;
  sceau = {dat.taille, dat.secondes, dat.nanosecondes, idx.taille, idx.secondes, idx.nanosecondes, 0};
  if (attendu && !attendu->MemesFichiers(sceau)) return false;
  std::unique_ptr<Fichier> fichier;
  if (systeme.Ouvre(o.cheminIdx, Systeme::Lecture, fichier)) return false;
  const u64 pages = (idx.taille + TaillePage - 1) / TaillePage;
  std::vector<u32> sommes(pages);
  const unsigned parts = NombreParts(idx.taille);
  std::array<bool, PartsMax> lues{};
  Partage(parts, [&](unsigned part) {
    const auto [debut, fin] = TrancheDe(part, parts, pages, 1);
    std::vector<u8> octets(std::min<u64>(PagesLues, fin - debut) * TaillePage);
    for (u64 page = debut; page < fin; page += PagesLues) {
      const u64 place = page * TaillePage, n = std::min<u64>(fin - page, PagesLues);
      const std::size_t taille = static_cast<std::size_t>(std::min(n * TaillePage, idx.taille - place));
      std::size_t obtenus = 0;
      if (fichier->Lit(octets.data(), taille, place, obtenus) || obtenus != taille) return;
      const u32 entieres = static_cast<u32>(taille / TaillePage);
      SommesDe(octets.data(), entieres, TaillePage, TaillePage, &sommes[page]);
      if (entieres < n) sommes[page + entieres] = Crc32c(&octets[entieres * TaillePage], taille % TaillePage);
    }
    lues[part] = true;
  });
  if (std::count(lues.begin(), lues.end(), true) != static_cast<int>(parts)) return false;
  sceau.crcIdx = Crc32c(sommes.data(), sommes.size() * sizeof(u32));
  return true;
}

bool Moteur::Etat::OuvreCles(Ouvert& o, const std::string& cheminIdx, bool neuf) {
  assert(!cheminIdx.empty());
  o.cles.reset();
  o.clesEnMemoire = o.clesEndommagees = o.clesDues = false;
  o.cheminIdx = cheminIdx;
  for (auto& curseur : o.curseurs) curseur.pose = false;
  if (!o.def) {
    const int rc = memoire.Ouvre(cheminIdx, true, o.description, o.cles);
    return rc == 0 || Echec(rc, cheminIdx);
  }
  o.description.nombre = o.def->nbCles;
  std::copy(std::begin(o.def->doubles), std::end(o.def->doubles), o.description.doubles);
  if (lecture) return neuf ? Echec(ErrLectureSeule) : OuvreClesEnLecture(o);

  // A key file is believed only while the seal names this very pair of files: a whole but older one
  // that somebody brought back finds every record it knows, and none of the newer ones.
  const auto sceau = reprise->sceaux.find(o.dat.entete.id);
  Sceau present;
  if (!neuf && !o.modifie && fabrique.SurDisque() && sceau != reprise->sceaux.end() &&
      Sceau_(o, present, &sceau->second)) {
    o.clesEndommagees = present != sceau->second;
    const int rc = o.clesEndommagees ? ErrCles : fabrique.Ouvre(cheminIdx, false, o.description, o.cles);
    if (rc == 0) return true;
    if (rc != ErrCles && rc != ErrCleAbsente && rc != EINVAL) return Echec(rc, cheminIdx);
    avertissements.push_back("Le fichier de clés " + cheminIdx +
                             " est endommagé : il est reconstruit à partir des enregistrements.");
  }
  o.cles.reset();
  // The seal goes first: a crash while the keys are made leaves a file that nobody vouches for.
  reprise->sceaux.erase(o.dat.entete.id);
  o.modifie = true;
  int rc = 0;
  if (fabrique.SurDisque()) {
    rc = systeme.Supprime(cheminIdx);
    if (rc == ENOENT) rc = 0;
  }
  if (!rc) rc = fabrique.Ouvre(cheminIdx, true, o.description, o.cles);
  if (rc && !ManqueDePlace(rc)) {
    o.cles.reset();
    return Echec(rc, cheminIdx);
  }
  if (rc) return ReplieCles(o, rc);
  return RemplitCles(o) || ReplieCles(o, erreur);
}

/// The keys of the file where its seal holds, else others in memory.
bool Moteur::Etat::OuvreClesEnLecture(Ouvert& o) {
  assert(lecture && o.def && !o.cles);
  const auto sceau = reprise->sceaux.find(o.dat.entete.id);
  Sceau present;
  if (fabrique.SurDisque() && sceau != reprise->sceaux.end() && Sceau_(o, present, &sceau->second) &&
      present == sceau->second && fabrique.OuvreEnLecture(o.cheminIdx, o.description, o.cles) == 0)
    return true;
  if (fabrique.SurDisque() && o.emplacements > 0 && !std::exchange(clesDites, true))
    avertissements.push_back(
        "Les fichiers de clés de " + dossier +
        " ne sont pas à jour : les clés sont refaites en mémoire, le disque reste tel quel.");
  o.clesEnMemoire = true;
  const int rc = memoire.Ouvre(o.cheminIdx, true, o.description, o.cles);
  return rc == 0 ? RemplitCles(o) : Echec(rc, o.cheminIdx);
}

/// The keys of one number, composed from the records and sorted. Reads alone: a helper may do it.
struct Moteur::Etat::ClesTriees {
  GrandVecteur<char> textes;
  ClesComposees cles;

  void Compose(Etat& etat, Ouvert& o, unsigned indice) {
    cles.clear();
    cles.reserve(o.emplacements);
    textes.resize(std::size_t{o.emplacements} * TailleCleMax);
    char* place = textes.data();
    for (Position p = 1; p <= o.emplacements; ++p) {
      const u8* rec = etat.Brut(o, p);
      if (o.dat.EtatDe(rec) != EtatEmplacement::Vivant) continue;
      const unsigned longueur = o.def->compose(indice, rec, place);
      assert(longueur <= TailleCleMax);
      cles.emplace_back(std::string_view(place, longueur), p);
      place += longueur;
    }
    TrieCles(cles);
    if (o.def->doubles[indice]) return;
    // Of two records with one key the later one counts.
    const auto memes = [](const auto& a, const auto& b) { return a.first == b.first; };
    std::size_t n = 0;
    for (const auto& cle : cles) {
      if (n > 0 && memes(cles[n - 1], cle)) --n;
      cles[n++] = cle;
    }
    cles.resize(n);
  }
};

/// Fills the keys from the records as the unit in progress sees them: those of the next number are made by
/// a helper while these are written.
bool Moteur::Etat::RemplitCles(Ouvert& o) {
  o.clesDues = false;
  o.clesRemplies = o.touche;
  ++nbRemplissages;
  ClesTriees pretes, suivantes;
  const unsigned parts = std::min(2u, NombreParts(u64{o.emplacements} * o.dat.entete.Pas()));
  int rc = 0;
  for (unsigned i = 0; i < o.def->nbCles && !rc; ++i) {
    if (i == 0) pretes.Compose(*this, o, i);
    const auto fait = [&](bool charge) {
      if (charge)
        rc = o.cles->Charge(i, pretes.cles);
      else if (i + 1 < o.def->nbCles)
        suivantes.Compose(*this, o, i + 1);
    };
    if (parts < 2) fait(false);
    Partage(parts, [&](unsigned part) { fait(part + 1 == parts); });
    std::swap(pretes, suivantes);
  }
  return rc == 0 || Echec(rc, o.cheminIdx);
}

/// Nobody looks at keys that are due.
bool Moteur::Etat::AssureCles(Ouvert& o) { return !o.clesDues || RemplitCles(o) || ReplieCles(o, erreur); }

/// A unit that adds more records than can be undone key by key, and a good part of all there are, leaves
/// their keys out: to sort all of them at the end costs less than to find the place of each.
bool Moteur::Etat::RemetCles(Ouvert& o) {
  if (o.clesDues) return true;
  if (!clesTropNombreuses || o.clesRemplies) return false;
  assert(profondeur > 0 && o.emplacements >= o.dat.entete.emplacements);
  if (o.emplacements - o.dat.entete.emplacements < o.emplacements / 3) return false;
  DoitCles(o);
  return true;
}

void Moteur::Etat::DoitCles(Ouvert& o) {
  reprise->sceaux.erase(o.dat.entete.id);
  o.modifie = o.clesDues = true;
  for (auto& curseur : o.curseurs) curseur.pas = 0;
}

/// The key file failed: its keys are made again in memory, and the file is left
/// without a seal, so that the next opening makes it anew.
bool Moteur::Etat::ReplieCles(Ouvert& o, int rc) {
  assert(rc != 0);
  if (o.clesEnMemoire || !o.def) return Echec(rc, o.cheminIdx);
  avertissements.push_back(rc < 1000 ? "Les clés du fichier " + o.cheminIdx + " n'ont pas pu être écrites (" +
                                           VersUtf8(TexteErreurSysteme(rc)) +
                                           ") : elles seront reconstruites à la prochaine ouverture."
                                     : "Le fichier de clés " + o.cheminIdx +
                                           " est endommagé : il sera reconstruit à la prochaine ouverture.");
  if (rc >= 1000) o.clesEndommagees = true;
  reprise->sceaux.erase(o.dat.entete.id);
  o.modifie = !lecture;
  o.clesEnMemoire = true;
  o.cles.reset();
  memoire.Ouvre(o.cheminIdx, true, o.description, o.cles);
  return RemplitCles(o);
}

/// Keys that go round or back are damage: the walk ends, and what looks at them next finds
/// the right ones.
bool Moteur::Etat::Rompues(Ouvert& o) {
  ReplieCles(o, ErrCles);
  return Echec(ErrEndommage, o.cheminIdx);
}

/// True when `e` may follow `depart` in a walk of that direction, which has no more moves
/// than the file has records.
bool Moteur::Etat::SePoursuit(const Ouvert& o, Ouvert::Curseur& curseur, const EntreeCle& depart,
                              const EntreeCle& e, int sens) {
  if (sens == 2) return true;
  const int ordre = e.texte.compare(depart.texte);
  const bool apres = ordre > 0 || (ordre == 0 && e.position > depart.position);
  const bool egal = ordre == 0 && e.position == depart.position;
  if (sens == 0 ? !apres && !egal : sens == 1 ? !apres : apres || egal) return false;
  if (sens == 0 || sens != curseur.sens) curseur.pas = 0;
  curseur.sens = sens;
  return !o.def || ++curseur.pas <= o.emplacements + 1;
}

void Moteur::Etat::RetientCle(Ouvert& o, unsigned indice, std::string_view texte, Position position,
                              bool ajout) {
  for (auto& curseur : o.curseurs) curseur.pas = 0;
  if (!o.modifie) {
    o.modifie = true;
    reprise->sceaux.erase(o.dat.entete.id);
  }
  assert(indice < o.description.nombre);
  if (profondeur == 0 || (profondeur == 1 && clesTropNombreuses)) return;
  Touche(o);
  changementsCles.Ajoute({&o, indice, ajout, position, static_cast<u8>(texte.size())}, texte);
  if (profondeur == 1 && changementsCles.Nombre() > ClesRetenuesMax) {
    changementsCles.Efface();
    clesTropNombreuses = true;
  }
}

int Moteur::Etat::PoseCle(Ouvert& o, unsigned indice, std::string_view texte, Position position, bool neuve) {
  assert(position > 0 && texte.size() <= TailleCleMax);
  int rc = neuve ? o.cles->AjouteNeuve(indice, texte, position) : o.cles->Ajoute(indice, texte, position);
  if (rc == ErrCleDouble) return rc;
  if (rc) {
    if (!ReplieCles(o, rc)) return rc;
    rc = o.cles->Ajoute(indice, texte, position);
    EntreeCle e;
    if (rc == ErrCleDouble && o.cles->Borne(indice, texte, position, e) && e.texte == texte &&
        e.position == position)
      rc = 0;
    if (rc) return rc;
  }
  RetientCle(o, indice, texte, position, true);
  return 0;
}

int Moteur::Etat::OteCle(Ouvert& o, unsigned indice, std::string_view texte, Position position) {
  int rc = o.cles->Supprime(indice, texte, position);
  if (rc == ErrCleAbsente) return rc;
  if (rc) {
    if (!ReplieCles(o, rc)) return rc;
    rc = o.cles->Supprime(indice, texte, position);
    if (rc && rc != ErrCleAbsente) return rc;
  }
  RetientCle(o, indice, texte, position, false);
  return 0;
}

void Moteur::Etat::DefaitCles(std::size_t jusqua) {
  assert(jusqua <= changementsCles.Nombre());
  // Records were put back before: a fallback below rebuilds the right keys, and
  // what is left of the list then changes nothing.
  while (changementsCles.Nombre() > jusqua) {
    const auto [c, texte] = changementsCles.Retire();
    if (!c.fichier->cles || c.fichier->clesDues) continue;
    const int rc = c.ajout ? c.fichier->cles->Supprime(c.cle, texte, c.position)
                           : c.fichier->cles->Ajoute(c.cle, texte, c.position);
    if (rc && rc != ErrCleDouble && rc != ErrCleAbsente) ReplieCles(*c.fichier, rc);
  }
}

bool Moteur::AjouteCle(u16 numCle, std::string_view texte, Position position) {
  unsigned indice = 0;
  Ouvert* o = m->Cle(numCle, indice);
  if (!o || !m->PeutChanger(*o)) return false;
  if (texte.size() > TailleCleMax || position == 0) return m->Echec(ErrValeur, *o);
  const int rc = m->PoseCle(*o, indice, texte, position, false);
  return rc == 0 || m->Echec(rc, o->cheminIdx);
}

bool Moteur::SupprimeCle(u16 numCle, std::string_view texte, Position position) {
  unsigned indice = 0;
  Ouvert* o = m->Cle(numCle, indice);
  if (!o || !m->PeutChanger(*o)) return false;
  const int rc = m->OteCle(*o, indice, texte, position);
  return rc == 0 || m->Echec(rc, o->cheminIdx);
}

bool Moteur::AjouteCles(u16 numFichier, Position position, const void* rec, bool neuves) {
  Ouvert* o = m->Dat(numFichier);
  if (!o || !o->cles || !o->def) return m->Echec(ErrPasOuvert);
  if (!m->PeutChanger(*o)) return false;
  if (neuves && m->RemetCles(*o)) return true;
  if (!m->AssureCles(*o)) return false;
  char texte[TailleCleMax];
  for (unsigned i = 0; i < o->def->nbCles; ++i) {
    const std::string_view cle(texte, o->def->compose(i, rec, texte));
    const int rc = m->PoseCle(*o, i, cle, position, neuves);
    if (rc == 0) continue;
    for (unsigned j = 0; j < i; ++j) {
      m->OteCle(*o, j, {texte, o->def->compose(j, rec, texte)}, position);
    }
    return m->Echec(rc, o->cheminIdx);
  }
  return true;
}

bool Moteur::SupprimeCles(u16 numFichier, Position position, const void* rec) {
  Ouvert* o = m->Dat(numFichier);
  if (!o || !o->cles || !o->def) return m->Echec(ErrPasOuvert);
  if (!m->PeutChanger(*o) || !m->AssureCles(*o)) return false;
  char texte[TailleCleMax];
  int premiere = 0;
  for (unsigned i = 0; i < o->def->nbCles; ++i) {
    const int rc = m->OteCle(*o, i, {texte, o->def->compose(i, rec, texte)}, position);
    if (rc && !premiere) premiere = rc;
  }
  return premiere == 0 || m->Echec(premiere, o->cheminIdx);
}

bool Moteur::RemetCles(u16 numFichier) {
  Ouvert* o = m->Dat(numFichier);
  if (!o || !o->cles || !o->def) return m->Echec(ErrPasOuvert);
  if (!m->PeutChanger(*o)) return false;
  assert(m->profondeur > 0);
  m->Touche(*o);
  m->DoitCles(*o);
  return true;
}

Position Moteur::TrouveCle(u16 numCle, std::string_view texte) {
  unsigned indice = 0;
  Ouvert* o = m->Cle(numCle, indice);
  if (!o) return 0;
  EntreeCle& e = m->trouvaille;
  bool trouvee = o->cles->Borne(indice, texte, 0, e);
  if (!trouvee && o->cles->Erreur() && m->ReplieCles(*o, o->cles->Erreur())) {
    trouvee = o->cles->Borne(indice, texte, 0, e);
  }
  if (!trouvee || e.texte != texte) return m->Echec(ErrCleAbsente), 0;
  Ouvert::Curseur& curseur = o->curseurs[indice];
  std::swap(curseur.entree, e);
  curseur.pose = true;
  return curseur.entree.position;
}

/// One move of a key's cursor. `sens`: 0 first at or above, 1 after, -1 before,
/// 2 last.
bool Moteur::Etat::Deplace(u16 numCle, std::string& texte, Position& position, int sens) {
  unsigned indice = 0;
  position = 0;
  Ouvert* o = Cle(numCle, indice);
  if (!o) return false;
  Ouvert::Curseur& curseur = o->curseurs[indice];
  EntreeCle& depart = trouvailleDepart;
  const bool suit = curseur.pose && (sens == 1 || sens == -1);
  depart.texte.assign(suit ? curseur.entree.texte : texte);
  depart.position = suit ? curseur.entree.position : sens == 1 ? PositionMax : 0;
  const auto bouge = [&](EntreeCle& e) {
    switch (sens) {
      case 0:
        return o->cles->Borne(indice, depart.texte, 0, e);
      case 1:
        return o->cles->Apres(indice, depart.texte, depart.position, e);
      case -1:
        return o->cles->Avant(indice, depart.texte, depart.position, e);
      default:
        return o->cles->Dernier(indice, e);
    }
  };
  // Kept buffers, one swapped into the cursor: a walk makes no allocations.
  EntreeCle& e = trouvaille;
  bool trouvee = bouge(e);
  if (!trouvee && o->cles->Erreur() && ReplieCles(*o, o->cles->Erreur())) trouvee = bouge(e);
  if (!trouvee) return Echec(ErrCleAbsente);
  if (!SePoursuit(*o, curseur, depart, e, sens)) return Rompues(*o);
  std::swap(curseur.entree, e);
  curseur.pose = true;
  texte.assign(curseur.entree.texte);
  position = curseur.entree.position;
  return true;
}

Position Moteur::Borne(u16 numCle, std::string& texte) {
  Position position;
  return m->Deplace(numCle, texte, position, 0), position;
}
Position Moteur::Premier(u16 numCle, std::string& texte) {
  std::string debut;
  Position position;
  if (m->Deplace(numCle, debut, position, 0)) texte = debut;
  return position;
}
Position Moteur::Dernier(u16 numCle, std::string& texte) {
  Position position;
  return m->Deplace(numCle, texte, position, 2), position;
}
Position Moteur::Suivant(u16 numCle, std::string& texte) {
  Position position;
  return m->Deplace(numCle, texte, position, 1), position;
}
Position Moteur::Precedent(u16 numCle, std::string& texte) {
  Position position;
  return m->Deplace(numCle, texte, position, -1), position;
}

bool Moteur::Parcours(u16 numCle, const std::string& debut, const std::string& fin,
                      const SuiteParcours& suite) {
  unsigned indice = 0;
  Ouvert* o = m->Cle(numCle, indice);
  if (!o) return false;
  if (!o->datOuvert) return m->Echec(ErrPasOuvert);
  bool bien = true, rompues = false;
  u32 pas = 0;
  struct Entree {
    std::string_view texte;
    u32 position = 0;
  };
  // Some entries ahead: while the first of their records is read the others are on their way from the
  // memory. Nobody writes meanwhile, so their texts stay where they are.
  std::array<Entree, EntreesDAvance> entrees;
  std::size_t nombre = 0;
  std::string precedent;
  precedent.reserve(TailleCleMax);
  u32 derniere = 0;
  const auto rend = [&] {
    const std::size_t pleines = std::exchange(nombre, 0);
    for (std::size_t i = 0; i < pleines; ++i) {
      const u8* rec = m->Brut(*o, entrees[i].position);
      if (!rec || o->dat.EtatDe(rec) != EtatEmplacement::Vivant) return bien = m->Echec(ErrEndommage, *o);
      if (!suite(entrees[i].position, rec)) return false;
    }
    return true;
  };
  bool arrete = false;
  auto entree = [&](std::string_view texte, u32 position) {
    if (!fin.empty() && texte >= fin) return false;
    const int ordre = pas ? texte.compare(precedent) : texte < debut ? -1 : 1;
    rompues = ordre < 0 || (ordre == 0 && position <= derniere) || ++pas > o->emplacements + 1;
    if (rompues) return false;
    precedent.assign(texte);
    derniere = position;
    entrees[nombre++] = {texte, position};
    if (position > 0 && position <= o->emplacements) o->dat.Annonce(position);
    return nombre < entrees.size() || !(arrete = !rend());
  };
  o->cles->Parcours(indice, debut, entree);
  const int erreur = o->cles->Erreur();
  if (!arrete) arrete = !rend();
  if (arrete) return bien;
  if (rompues || erreur == ErrCles) return m->Rompues(*o);
  return erreur == 0 || m->Echec(erreur, o->cheminIdx);
}

bool Moteur::ClesEndommagees(u16 numFichier) const {
  return numFichier < m->fichiers.size() && m->fichiers[numFichier] &&
         m->fichiers[numFichier]->clesEndommagees;
}

u32 Moteur::NombreCles(u16 numCle) {
  unsigned indice = 0;
  Ouvert* o = m->Cle(numCle, indice);
  return o ? static_cast<u32>(o->cles->Nombre(indice)) : 0;
}

}  // namespace fenlor

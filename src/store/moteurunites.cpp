// Records and units of work.

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>

#include "store/moteuretat.h"
#include "store/partage.h"

namespace fenlor {

namespace {

/// Images beyond this are written behind the committed end at once: what a log holds in one go costs one
/// sync, a tail one more for each file.
std::size_t SeuilVersement(std::size_t tailleReprise) {
  return std::max<std::size_t>(4u << 20, tailleReprise + tailleReprise / 4);
}

/// Slots in a row are written by one call, up to so many bytes.
constexpr std::size_t SuiteMax = 256u << 10;
/// So many bytes of slots between two of them are written as they stand: cheaper than one call more.
constexpr std::size_t PontMax = 2048;

/// Images on their way from the memory, or from the processor that sealed them, while others are composed.
constexpr std::size_t Avance = 8;

void AnnonceImage(const ImagesUnite::Image& image) {
  for (u32 place = image.debut; place < image.fin; place += 64) __builtin_prefetch(image.octets + place);
  __builtin_prefetch(image.octets + image.pas - TailleSomme);
}

/// What differs of a record from the one in its place; all of a new one.
void Compare(ImagesUnite::Image& image, u16 taille, const u8* base) {
  const u8* octets = image.octets;
  u32 debut = 0, fin = taille;
  if (base) {
    // By words as far as they go: a save compares a thousand bytes.
    while (debut + 8 <= fin && std::memcmp(octets + debut, base + debut, 8) == 0) debut += 8;
    while (debut < fin && octets[debut] == base[debut]) ++debut;
    while (fin >= debut + 8 && std::memcmp(octets + fin - 8, base + fin - 8, 8) == 0) fin -= 8;
    while (fin > debut && octets[fin - 1] == base[fin - 1]) --fin;
  }
  const u32 bout = fin;
  while (fin > debut && octets[fin - 1] == 0) --fin;
  image.debut = static_cast<u16>(debut);
  image.fin = static_cast<u16>(fin);
  image.zeros = static_cast<u16>(bout - fin);
}

}  // namespace

const u8* Moteur::Etat::Brut(Ouvert& o, Position position) {
  if (position == 0 || position > o.emplacements) return Echec(ErrPosition, o), nullptr;
  if (const u8* image = images.Trouve(o.numero, position)) return image;
  if (!o.attente.empty()) {
    if (const auto image = o.attente.find(position); image != o.attente.end()) return image->second.data();
  }
  return o.dat.Place(position);
}

void Moteur::Etat::Touche(Ouvert& o) {
  assert(profondeur > 0 && fichiers[o.numero].get() == &o);
  if (o.touche) return;
  o.touche = true;
  touches.push_back(&o);
}

/// Remembers what an inner unit is about to change. What the outermost one
/// changes needs no memory: dropping its images undoes it.
void Moteur::Etat::Retient(Ouvert& o, Position position) {
  Touche(o);
  if (profondeur < 2) return;
  assert(reperes.size() == profondeur && annulations.size() >= reperes.back().annulations);
  Annulation a{&o, position, false, {}, o.emplacements, o.tete, o.libres, o.premierVerse};
  if (position && position <= o.emplacements) {
    const bool versee = o.premierVerse && position >= o.premierVerse;
    a.avait = versee || images.Trouve(o.numero, position);
    if (a.avait) {
      const u8* octets = Brut(o, position);
      a.image.assign(octets, octets + o.dat.entete.taille);
    }
  }
  annulations.push_back(std::move(a));
}

bool Moteur::Etat::PoseImage(Ouvert& o, Position position, const u8* octets) {
  assert(o.touche && position > 0 && position <= o.emplacements + 1);
  const u16 taille = o.dat.entete.taille;
  if (o.premierVerse && position >= o.premierVerse) {
    if (const int rc = o.dat.ModifieQueue(position, octets)) return Echec(rc, o);
    return true;
  }
  // The sum is put behind when the unit ends: a record changes often meanwhile.
  const u16 pas = static_cast<u16>(o.dat.entete.Pas());
  u8* image = images.Pose(o.numero, position, pas);
  std::memset(std::copy_n(octets, taille, image), 0, pas - taille);
  return true;
}

/// The record as it stands in a slot; null when its number cannot stand there.
const u8* Moteur::Etat::Marque(Ouvert& o, const void* rec) {
  const u8* octets = static_cast<const u8*>(rec);
  tampon.assign(octets, octets + o.dat.entete.taille);
  if (o.dat.Marque() == 1) {
    tampon[0] = 1;
  } else if (o.dat.EtatDe(tampon.data()) != EtatEmplacement::Vivant) {
    return Echec(ErrValeur, o), nullptr;
  }
  assert(o.dat.EtatDe(tampon.data()) == EtatEmplacement::Vivant);
  return tampon.data();
}

Position Moteur::Ajoute(u16 numFichier, const void* rec) {
  Ouvert* o = m->Dat(numFichier);
  if (!o || !m->PeutChanger(*o) || !m->Marque(*o, rec)) return 0;
  UniteAuto unite(*this);
  const u8* octets = m->tampon.data();
  Position position = o->tete;
  if (position) {
    const u8* libre = m->Brut(*o, position);
    if (!libre || o->dat.EtatDe(libre) != EtatEmplacement::Libre || o->libres == 0)
      return m->Echec(ErrEndommage, *o), 0;
    u32 suivante;
    std::memcpy(&suivante, libre + 4, sizeof suivante);
    if (suivante > o->emplacements || (suivante == 0) != (o->libres == 1))
      return m->Echec(ErrEndommage, *o), 0;
    m->Retient(*o, position);
    if (!m->PoseImage(*o, position, octets)) return 0;
    o->tete = suivante;
    --o->libres;
  } else {
    if (o->emplacements >= 0xFFFFFFF0u) return m->Echec(EFBIG, *o), 0;
    position = o->emplacements + 1;
    m->Retient(*o, 0);
    if (!o->premierVerse && m->images.Octets() > SeuilVersement(m->tailleReprise) && o->def)
      o->premierVerse = position;
    if (o->premierVerse) {
      if (const int rc = o->dat.AjouteQueue(position, octets)) return m->Echec(rc, *o), 0;
    } else {
      if (const int rc = o->dat.Reserve(position)) return m->Echec(rc, *o), 0;
      if (!m->PoseImage(*o, position, octets)) return 0;
    }
    ++o->emplacements;
    assert(o->emplacements == position);
  }
  return unite.Valide() ? position : 0;
}

bool Moteur::Supprime(u16 numFichier, Position position) {
  Ouvert* o = m->Dat(numFichier);
  if (!o || !m->PeutChanger(*o) || !Vue(numFichier, position)) return false;
  if (o->libres >= o->emplacements) return m->Echec(ErrEndommage, *o);
  UniteAuto unite(*this);
  m->Retient(*o, position);
  std::vector<u8>& octets = m->tampon;
  octets.assign(o->dat.entete.taille, 0);
  std::fill_n(octets.begin(), o->dat.Marque(), u8{255});
  std::memcpy(octets.data() + 4, &o->tete, sizeof o->tete);
  if (!m->PoseImage(*o, position, octets.data())) return false;
  assert(o->dat.EtatDe(octets.data()) == EtatEmplacement::Libre);
  o->tete = position;
  ++o->libres;
  return unite.Valide();
}

bool Moteur::Ecrit(u16 numFichier, Position position, const void* rec) {
  Ouvert* o = m->Dat(numFichier);
  if (!o || !m->PeutChanger(*o) || !Vue(numFichier, position) || !m->Marque(*o, rec)) return false;
  UniteAuto unite(*this);
  const u8* octets = m->tampon.data();
  m->Retient(*o, position);
  return m->PoseImage(*o, position, octets) && unite.Valide();
}

const u8* Moteur::Vue(u16 numFichier, Position position) {
  Ouvert* o = m->Dat(numFichier);
  if (!o) return nullptr;
  const u8* octets = m->Brut(*o, position);
  if (!octets) return nullptr;
  switch (o->dat.EtatDe(octets)) {
    case EtatEmplacement::Vivant:
      return octets;
    case EtatEmplacement::Libre:
      return m->Echec(ErrPosition, *o), nullptr;
    default:
      return m->Echec(ErrEndommage, *o), nullptr;
  }
}

void Moteur::Annonce(u16 numFichier, Position position) const {
  const Ouvert* o = m->Dat(numFichier);
  if (o && position > 0 && position <= o->dat.entete.emplacements) o->dat.Annonce(position);
}

bool Moteur::Lit(u16 numFichier, Position position, void* rec) {
  const u8* octets = Vue(numFichier, position);
  if (!octets) return false;
  const Ouvert& o = *m->Dat(numFichier);
  std::memcpy(rec, octets, o.dat.entete.taille);
  if (o.dat.Marque() == 1) *static_cast<u8*>(rec) = 0;
  return true;
}

bool Moteur::Remplace(u16 numFichier, Position position, const void* rec) {
  const u8* vue = Vue(numFichier, position);
  if (!vue) return false;
  Ouvert& o = *m->Dat(numFichier);
  if (!m->PeutChanger(o)) return false;
  const std::vector<u8> ancien(vue, vue + o.dat.entete.taille);
  if (o.def && o.cles && !m->AssureCles(o)) return false;
  char avant[TailleCleMax], apres[TailleCleMax];
  UniteAuto unite(*this);
  for (unsigned i = 0; o.def && o.cles && i < o.def->nbCles; ++i) {
    const std::string_view de(avant, o.def->compose(i, ancien.data(), avant));
    const std::string_view vers(apres, o.def->compose(i, rec, apres));
    if (de == vers) continue;
    if (const int rc = m->OteCle(o, i, de, position)) return m->Echec(rc, o);
    if (const int rc = m->PoseCle(o, i, vers, position, false)) return m->Echec(rc, o);
  }
  return Ecrit(numFichier, position, rec) && unite.Valide();
}

bool Moteur::EstLibre(u16 numFichier, Position position) {
  Ouvert* o = m->Dat(numFichier);
  const u8* octets = o ? m->Brut(*o, position) : nullptr;
  return octets && o->dat.EtatDe(octets) == EtatEmplacement::Libre;
}

bool Moteur::ListeLibre(u16 numFichier, std::vector<Position>& libres) {
  libres.clear();
  Ouvert* o = m->Dat(numFichier);
  if (!o) return false;
  Position position = o->tete;
  while (position) {
    if (libres.size() > o->libres || !EstLibre(numFichier, position)) return m->Echec(ErrEndommage, *o);
    libres.push_back(position);
    std::memcpy(&position, m->Brut(*o, position) + 4, sizeof position);
  }
  return libres.size() == o->libres || m->Echec(ErrEndommage, *o);
}

u32 Moteur::NombreEmplacements(u16 numFichier) const {
  const Ouvert* o = m->Dat(numFichier);
  return o ? o->emplacements : 0;
}

bool Moteur::EstJuste(u16 numFichier, Position position) const {
  const Ouvert* o = m->Dat(numFichier);
  if (!o || position == 0 || position > o->emplacements) return false;
  const bool enMemoire = m->images.Trouve(o->numero, position) || o->attente.contains(position);
  return enMemoire || o->dat.EstJuste(position);
}

void Moteur::DebutUnite() {
  m->reperes.push_back({m->annulations.size(), m->changementsCles.Nombre(), m->nbRemplissages});
  ++m->profondeur;
}

unsigned Moteur::Profondeur() const { return m->profondeur; }
u64 Moteur::NbAnnulations() const { return m->nbAnnulations; }
u64 Moteur::NbSynchros() const { return m->reprise ? m->reprise->NbSynchros() : 0; }

bool Moteur::ValideUnite() {
  if (m->profondeur == 0) return m->Echec(ErrPasOuvert);
  assert(m->reperes.size() == m->profondeur);
  if (m->profondeur > 1) {
    m->reperes.pop_back();
    if (--m->profondeur == 1) {
      m->annulations.clear();
      m->clesTropNombreuses = m->clesTropNombreuses || m->changementsCles.Nombre() > ClesRetenuesMax;
      if (m->clesTropNombreuses) m->changementsCles.Efface();
    }
    return true;
  }
  if (!m->Engage()) {
    const int code = m->erreur;
    const std::string fichier = m->fichierErreur;
    AnnuleUnite();
    return m->Echec(code, fichier);
  }
  assert(m->images.Vide() && m->touches.empty() && m->changementsCles.Nombre() == 0);
  m->reperes.clear();
  m->profondeur = 0;
  m->OublieNom();
  if (m->suite && m->changements.any()) m->suite(m->changements);
  return true;
}

void Moteur::SuitChangements(std::function<void(const std::bitset<256>&)> suite) {
  m->suite = std::move(suite);
}

void Moteur::NoteChangement(u16 numFichier) {
  assert(numFichier < 256);
  if (m->suite) m->suite(std::bitset<256>().set(numFichier));
}

void Moteur::AnnuleUnite() {
  if (m->profondeur == 0) return;
  const int code = m->erreur;
  const std::string fichier = m->fichierErreur;
  ++m->nbAnnulations;
  if (m->profondeur > 1) {
    const Etat::Repere repere = m->reperes.back();
    // Records before keys: where a key file fails meanwhile its keys are made again from the records,
    // which must then be the right ones.
    m->Defait(repere.annulations);
    for (Ouvert* o : m->touches)
      if (o->clesRemplies && m->nbRemplissages > repere.remplissages) m->DoitCles(*o);
    m->DefaitCles(repere.cles);
    m->reperes.pop_back();
    --m->profondeur;
  } else {
    m->DefaitTout();
    m->reperes.clear();
    m->profondeur = 0;
    m->OublieNom();
  }
  m->Echec(code, fichier);
}

/// Backwards: each step expects what the one behind it found.
void Moteur::Etat::Defait(std::size_t jusqua) {
  assert(jusqua <= annulations.size());
  while (annulations.size() > jusqua) {
    Annulation& a = annulations.back();
    Ouvert& o = *a.fichier;
    assert(o.touche && a.emplacements >= o.dat.entete.emplacements && a.emplacements <= o.emplacements);
    // Slots that are given back are forgotten first: their images would be written behind the end.
    if (o.emplacements > a.emplacements) {
      for (Position p = a.emplacements + 1; p <= o.emplacements; ++p) images.Retire(o.numero, p);
      o.dat.CoupeQueue(a.emplacements);
    }
    o.emplacements = a.emplacements;
    o.tete = a.tete;
    o.libres = a.libres;
    o.premierVerse = a.premierVerse;
    if (a.position) {
      assert(a.position <= o.emplacements);
      if (a.avait) {
        PoseImage(o, a.position, a.image.data());
      } else {
        images.Retire(o.numero, a.position);
      }
    }
    annulations.pop_back();
  }
}

/// Nothing of an outermost unit has reached a data file but a tail behind the committed end: the
/// headers as they stand on the disk are the state to go back to.
void Moteur::Etat::DefaitTout() {
  images.Efface();
  annulations.clear();
  for (Ouvert* o : touches) {
    o->emplacements = o->dat.entete.emplacements;
    o->tete = o->dat.entete.tete;
    o->libres = o->dat.entete.libres;
    o->premierVerse = 0;
    o->touche = false;
    o->dat.CoupeQueue(o->emplacements);
    if (o->cles && o->def && (clesTropNombreuses || o->clesRemplies)) DoitCles(*o);
    o->clesRemplies = false;
  }
  if (clesTropNombreuses)
    changementsCles.Efface();
  else
    DefaitCles(0);
  assert(changementsCles.Nombre() == 0);
  clesTropNombreuses = false;
  touches.clear();
}

/// What stands in the place of an image; null when nothing does.
const u8* Moteur::Etat::Base(const Ouvert& o, Position position) const {
  if (!o.attente.empty())
    if (const auto attend = o.attente.find(position); attend != o.attente.end()) return attend->second.data();
  return position > o.dat.entete.emplacements ? nullptr : o.dat.Place(position);
}

/// Sums behind all images, and what of each goes into the log. A slot that was damaged since its file was
/// opened is not written over: what was read from it would come back with a sum that vouches for it.
bool Moteur::Etat::Scelle(const OrdreImages& ordre) {
  const unsigned parts = NombreParts(images.Octets());
  std::array<const Ouvert*, PartsMax> fautifs{};
  Partage(parts, [&](unsigned part) {
    const auto [debut, fin] = TrancheDe(part, parts, ordre.size(), 1);
    for (u64 i = debut; i < fin; ++i) {
      ImagesUnite::Image& image = *ordre[i];
      const Ouvert& o = *fichiers[image.fichier];
      if (!o.def) continue;
      const u8* base = Base(o, image.position);
      if (base && !o.attente.contains(image.position) && !o.dat.EstJuste(image.position)) {
        fautifs[part] = &o;
        return;
      }
      o.dat.PoseScelle(image.octets, image.octets, image.position);
      Compare(image, o.dat.entete.taille, base);
    }
  });
  for (const Ouvert* fautif : fautifs)
    if (fautif) return Echec(ErrEndommage, *fautif);
  return true;
}

/// Starts the unit of the log: the files with their headers, and room for the images.
void Moteur::Etat::CommenceUnite(const OrdreImages& ordre) {
  std::vector<FichierUnite> fichiersUnite;
  for (const Ouvert* o : touches) {
    if (!o->def) continue;
    const EnteteDat& e = o->dat.entete;
    fichiersUnite.push_back({e.id, e.generation, o->numero, static_cast<u16>(e.Pas()), o->emplacements,
                             o->tete, o->libres, o->cheminRelatif});
  }
  assert(!fichiersUnite.empty());
  std::size_t octets = 0;
  for (const ImagesUnite::Image* image : ordre)
    if (fichiers[image->fichier]->def && image->Change())
      octets +=
          JournalReprise::TailleImage(image->fin - image->debut) + JournalReprise::TailleImage(TailleSomme);
  reprise->Commence(fichiersUnite, octets);
}

/// Of each slot the bytes that the unit changes.
void Moteur::Etat::ComposeUnite(const OrdreImages& ordre) {
  std::array<u16, 256> indices{};
  u16 indice = 0;
  for (const Ouvert* o : touches)
    if (o->def) indices[o->numero] = indice++;
  for (std::size_t i = 0; i < ordre.size(); ++i) {
    if (i + Avance < ordre.size()) AnnonceImage(*ordre[i + Avance]);
    const ImagesUnite::Image* image = ordre[i];
    const Ouvert& o = *fichiers[image->fichier];
    if (!o.def || !image->Change()) continue;
    const u16 taille = o.dat.entete.taille, fichier = indices[image->fichier];
    assert(o.touche && image->position > 0 && image->position <= o.emplacements &&
           image->pas == o.dat.entete.Pas());
    assert(image->debut <= image->fin && image->fin + image->zeros <= taille);
    const char* octets = reinterpret_cast<const char*>(image->octets);
    const auto longueur = static_cast<std::size_t>(image->fin - image->debut);
    reprise->AjouteImage(
        {fichier, image->debut, image->zeros, image->position, {octets + image->debut, longueur}});
    // The sum as well, though it could be counted: recovery learns whether the bytes around the image
    // are those that it was made for.
    reprise->AjouteImage({fichier, taille, 0, image->position, {octets + taille, TailleSomme}});
  }
}

/// The unit becomes durable, or nothing of it counts.
bool Moteur::Etat::Engage() {
  assert(profondeur == 1);
  if (prealable) {
    if (const int rc = prealable()) return Echec(rc);
    prealable = nullptr;
  }
  // The tail before the log: the unit's header tells of slots whose records stand nowhere else.
  for (Ouvert* o : touches) {
    if (!o->premierVerse) continue;
    if (const int rc = o->dat.VerseQueue()) return Echec(rc, *o);
    if (!Synchronise(*o)) return false;
    assert(o->dat.QueueDurable());
  }
  const OrdreImages ordre = images.EnOrdre();
  if (std::any_of(touches.begin(), touches.end(), [](const Ouvert* o) { return o->def != nullptr; })) {
    // An acknowledgement means nothing when somebody takes away what it relies on.
    for (Ouvert* o : touches) {
      if (const int rc = o->def ? o->dat.Tient() : 0) return Echec(rc, *o);
    }
    if (const int rc = reprise->EstEntier()) {
      VidangeTout();  // what was acknowledged stands nowhere else
      return Echec(rc, Joint(dossier, "fenlor.rep"));
    }
    // Room before the unit is composed: emptying the log changes epoch and headers, which it bears.
    if (reprise->DoitVider() && !VidangeTout()) return false;
    if (!Scelle(ordre)) return false;
    CommenceUnite(ordre);
    if (!reprise->Tient()) {
      if (!VidangeTout()) return false;
      CommenceUnite(ordre);
    }
    ComposeUnite(ordre);
    if (const int rc = reprise->Ecrit()) return Echec(rc, Joint(dossier, "fenlor.rep"));
  }
  // From here on the unit is told as saved: whatever the data files answer, the log has it.
  RetientUnite(ordre);
  Applique(ordre);
  return true;
}

/// The image behind those from `debut` on that one call writes.
std::size_t Moteur::Etat::FinSuite(const OrdreImages& ordre, std::size_t debut) const {
  const ImagesUnite::Image& premiere = *ordre[debut];
  const Ouvert& o = *fichiers[premiere.fichier];
  std::size_t fin = debut + 1;
  for (; fin < ordre.size() && ordre[fin]->fichier == premiere.fichier; ++fin) {
    const Position derniere = ordre[fin - 1]->position, suivante = ordre[fin]->position;
    assert(suivante > derniere);
    if ((suivante - premiere.position + 1) * u64{premiere.pas} > SuiteMax) break;
    const u64 pont = (suivante - derniere - 1) * u64{premiere.pas};
    if (pont > PontMax || (pont > 0 && suivante - 1 > o.dat.entete.emplacements)) break;
  }
  return fin;
}

/// Writes the images of slots in a row, and what stands between them once more.
bool Moteur::Etat::AppliqueSuite(Ouvert& o, std::span<ImagesUnite::Image* const> suite) {
  const u16 pas = suite.front()->pas;
  // Behind an image that waits the newer one waits too, or the older one would be written last.
  bool ecrite = o.attente.empty() || std::none_of(suite.begin(), suite.end(), [&](const auto* image) {
                  return o.attente.contains(image->position);
                });
  if (ecrite && suite.size() == 1) {
    ecrite = o.dat.EcritPlace(suite.front()->position, 0, suite.front()->octets, pas) == 0;
  } else if (ecrite) {
    const Position premiere = suite.front()->position;
    tampon.resize((suite.back()->position - premiere + 1) * std::size_t{pas});
    // With slots between them all is taken as it stands, then the images: two large walks of the memory.
    if (tampon.size() > suite.size() * pas) std::memcpy(tampon.data(), o.dat.Place(premiere), tampon.size());
    for (const ImagesUnite::Image* image : suite)
      std::copy_n(image->octets, pas, tampon.data() + (image->position - premiere) * std::size_t{pas});
    ecrite = o.dat.EcritSuite(premiere, tampon.data(), tampon.size()) == 0;
  }
  for (const ImagesUnite::Image* image : suite)
    if (!ecrite) o.attente[image->position].assign(image->octets, image->octets + pas);
  return ecrite;
}

/// The unit is durable: brings its images into the data files. What the disk
/// refuses is kept and tried again; the log is not emptied before it went well.
bool Moteur::Etat::Applique(const OrdreImages& ordre) {
  bool bien = true;
  for (std::size_t i = 0, fin; i < ordre.size(); i = fin) {
    Ouvert& o = *fichiers[ordre[i]->fichier];
    assert(o.touche && ordre[i]->position > 0 && ordre[i]->position <= o.emplacements);
    fin = FinSuite(ordre, i);
    if (!AppliqueSuite(o, {&ordre[i], fin - i})) bien = false;
  }
  changements.reset();
  for (Ouvert* o : touches) {
    changements.set(o->numero);
    o->dat.entete.emplacements = o->emplacements;
    o->dat.entete.tete = o->tete;
    o->dat.entete.libres = o->libres;
    assert(!o->premierVerse || o->dat.QueueDurable());
    o->premierVerse = 0;
    o->touche = o->clesRemplies = false;
    o->datSale = o->modifie = true;
    // The keys on the disk are those of before: until the closing nobody vouches for them.
    reprise->sceaux.erase(o->dat.entete.id);
  }
  touches.clear();
  images.Efface();
  annulations.clear();
  changementsCles.Efface();
  clesTropNombreuses = false;
  return bien;
}

}  // namespace fenlor

// The practice: lock, recovery, opening and closing of files.

#include "store/moteur.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <filesystem>
#include <map>
#include <set>
#include <tuple>

#include "store/moteuretat.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

std::string Normal(const std::string& chemin) {
  std::string normal = std::filesystem::path(chemin).lexically_normal().string();
  while (normal.size() > 1 && normal.back() == '/') normal.pop_back();
  return normal;
}

bool Finit(const std::string& texte, std::string_view fin) {
  return texte.size() >= fin.size() && texte.compare(texte.size() - fin.size(), fin.size(), fin) == 0;
}

std::string AvecExtension(const std::string& chemin, std::string_view extension) {
  return std::filesystem::path(chemin).replace_extension(extension).string();
}

int EcritImage(FichierDat& dat, const ImageUnite& image) {
  std::vector<u8> octets(image.octets.begin(), image.octets.end());
  octets.resize(octets.size() + image.zeros, 0);
  return dat.EcritPlace(image.position, image.decalage, octets.data(), static_cast<u32>(octets.size()));
}

}  // namespace

struct Moteur::Etat::FichierRepris {
  FichierDat dat;
  std::set<Position> ecrits;
};

/// The data files of a recovery, by id.
struct Moteur::Etat::Repris {
  std::map<u64, std::unique_ptr<FichierRepris>> fichiers;
  std::set<u64> perdus;
  /// By number, then path: ids are random, and a recovery is to be the same each time.
  std::vector<FichierRepris*> EnOrdre() const {
    std::vector<FichierRepris*> ordre;
    for (const auto& [id, fichier] : fichiers) ordre.push_back(fichier.get());
    std::sort(ordre.begin(), ordre.end(), [](const FichierRepris* a, const FichierRepris* b) {
      return std::tuple(a->dat.entete.numero, a->dat.Chemin()) <
             std::tuple(b->dat.entete.numero, b->dat.Chemin());
    });
    return ordre;
  }
};

Moteur::Moteur(Systeme& systeme, FabriqueCles& cles, std::size_t tailleReprise)
    : m(std::make_unique<Etat>(systeme, cles, tailleReprise)) {}

Moteur::~Moteur() {
  while (m->profondeur) AnnuleUnite();
  if (m->ouvert) FermeCabinet();
}

bool Moteur::EstOuvert() const { return m->ouvert; }
const std::string& Moteur::Detenteur() const { return m->verrou.Detenteur(); }
int Moteur::Erreur() const { return m->erreur; }
void Moteur::PoseErreur(int code, const std::string& fichier) {
  m->Echec(code, fichier.empty() && code == m->erreur ? std::string(m->fichierErreur) : fichier);
}
const std::string& Moteur::FichierErreur() const { return m->fichierErreur; }

void Moteur::Avertit(const std::string& phrase) { m->avertissements.push_back(phrase); }

std::vector<std::string> Moteur::Avertissements() { return std::exchange(m->avertissements, {}); }

std::string Moteur::Etat::Relatif(const std::string& chemin) const {
  const std::string debut = dossier + "/";
  return chemin.starts_with(debut) ? chemin.substr(debut.size()) : std::string();
}

bool Moteur::ReserveCabinet(const std::string& dossier) {
  const std::string normal = Normal(dossier);
  if (m->verrou.EstPris() && m->dossier == normal) return true;
  if (m->ouvert) return m->Echec(ErrOccupe);
  m->verrou.Rend();
  m->dossier = normal;
  m->lecture = false;
  int rc = m->verrou.Prend(m->systeme, m->dossier);
  const bool interdit = rc == EROFS || rc == EACCES || rc == EPERM;
  if (interdit && m->systeme.Existe(Joint(m->dossier, "fenlor.ini"))) {
    const int lecture = m->verrou.PrendEnLecture(m->systeme, m->dossier);
    m->lecture = lecture == 0;
    if (lecture == 0 || lecture == ErrOccupe) rc = lecture;
  }
  return rc == 0 || m->Echec(rc, m->dossier);
}

bool Moteur::EnLecture() const { return m->lecture && m->verrou.EstPris(); }

bool Moteur::OuvreCabinet(const std::string& dossier, bool reparation) {
  if (m->ouvert) return m->Echec(ErrOccupe);
  if (!ReserveCabinet(dossier)) return false;
  assert(!m->reprise);
  m->reprise = std::make_unique<JournalReprise>();
  const std::string chemin = Joint(m->dossier, "fenlor.rep");
  if (m->lecture) return m->OuvreEnLecture(chemin);
  int rc = m->reprise->Ouvre(m->systeme, m->dossier, m->tailleReprise);
  // Read to its end before the first image is written: a log that is damaged further on must leave the
  // data files as they are, for whoever repairs them.
  if (!rc) rc = m->reprise->Verifie();
  if (rc == ErrJournalReprise && reparation) {
    m->avertissements.push_back("Le journal de reprise " + chemin + " est illisible : il est mis de côté.");
    rc = m->systeme.Renomme(chemin, chemin + ".avarie");
    m->reprise = std::make_unique<JournalReprise>();
    if (!rc) rc = m->reprise->Ouvre(m->systeme, m->dossier, m->tailleReprise);
  }
  // A log that was just made is to be locked like one that stood there.
  if (!rc) rc = m->verrou.PrendJournal(m->systeme, m->dossier);
  if (rc ? !m->Echec(rc, chemin) : !m->Rejoue(reparation)) {
    m->reprise.reset();
    m->verrou.Rend();
    return false;
  }
  m->OteReconstructions();
  m->retenues.dossier = m->dossier;
  return m->ouvert = true;
}

bool Moteur::Etat::OuvreEnLecture(const std::string& chemin) {
  assert(lecture && verrou.EstPris());
  int rc = reprise->Ouvre(systeme, dossier, tailleReprise, true);
  if (!rc) rc = reprise->Verifie();
  if (!rc && reprise->EnSuspens()) rc = ErrSuspens;
  clesDites = false;
  ouvert = rc == 0;
  if (ouvert) return true;
  reprise.reset();
  verrou.Rend();
  return Echec(rc, chemin);
}

/// A rebuild that was cut short leaves its new file behind: the old one is the
/// truth. A file that cannot be removed does no harm.
void Moteur::Etat::OteReconstructions() {
  systeme.Supprime(Joint(dossier, NomFichierRetenues));
  std::vector<std::string> noms;
  std::vector<std::string> dossiers{dossier};
  if (systeme.Liste(dossier, noms)) return;
  for (const std::string& nom : noms) {
    if (nom.find('.') == std::string::npos) dossiers.push_back(Joint(dossier, nom));
  }
  for (const std::string& endroit : dossiers) {
    if (systeme.Liste(endroit, noms)) continue;
    for (const std::string& nom : noms) {
      if (Finit(nom, ".neuf") && DefinitionNom(nom.substr(0, nom.find('.'))))
        systeme.Supprime(Joint(endroit, nom));
    }
  }
}

/// Brings the units of the log into the data files. May be cut short and done
/// again: images are the same each time, and the log is emptied last.
bool Moteur::Etat::Rejoue(bool reparation) {
  assert(std::none_of(fichiers.begin(), fichiers.end(), [](const auto& o) { return o != nullptr; }));
  Repris repris;
  std::string fautif;
  bool affirme = false;
  int rc = reprise->Relit(
      [&](const std::vector<FichierUnite>& fichiersUnite, const std::vector<ImageUnite>& images) {
        if (const int echec = affirme ? 0 : reprise->Affirme()) return echec;
        affirme = true;
        return RejoueUnite(fichiersUnite, images, reparation, repris, fautif);
      });
  if (rc) return Echec(rc, fautif.empty() ? Joint(dossier, "fenlor.rep") : fautif);
  for (FichierRepris* r : repris.EnOrdre()) {
    FichierDat& dat = r->dat;
    // Cut before the header says how many slots there are: a tail that no unit committed must not be
    // taken for records. One sync makes images, length and header durable.
    rc = dat.Ajuste();
    // The images are the unit's, the bytes around them were the disk's.
    if (!rc) rc = dat.Verifie(r->ecrits);
    if (rc == ErrEndommage && reparation) {
      avertissements.push_back("Des enregistrements repris dans le fichier " + dat.Chemin() +
                               " sont endommagés.");
      rc = 0;
    }
    if (!rc) rc = dat.EcritEntete();
    if (!rc) rc = dat.Synchronise();
    if (rc) return Echec(rc, dat.Chemin());
    // Its keys are those of before the crash.
    reprise->sceaux.erase(dat.entete.id);
  }
  if (reprise->EstVide()) {
    // A program that died while it emptied the log may have left a header that only the kernel has.
    const int echec = verrou.EtaitAcheve() ? 0 : reprise->AffirmeVide();
    return echec == 0 || Echec(echec, Joint(dossier, "fenlor.rep"));
  }
  // Last: a crash before this line replays the same images once more.
  rc = reprise->Vide();
  return rc == 0 || Echec(rc, Joint(dossier, "fenlor.rep"));
}

/// Opens the data files of a unit that no earlier one touched, and writes its images. `fautif`: the file that
/// a failure is about.
int Moteur::Etat::RejoueUnite(const std::vector<FichierUnite>& fichiersUnite,
                              const std::vector<ImageUnite>& images, bool reparation, Repris& repris,
                              std::string& fautif) {
  for (const FichierUnite& f : fichiersUnite) {
    if (repris.perdus.contains(f.id)) continue;
    auto& r = repris.fichiers[f.id];
    if (!r) {
      r = std::make_unique<FichierRepris>();
      fautif = Joint(dossier, f.chemin);
      int erreurDat = r->dat.Ouvre(systeme, fautif, reprise->Id(), FichierDat::Pour::Reprise);
      const EnteteDat& e = r->dat.entete;
      // Headers are written after the log's units: one older than the unit saw belongs to a copy of
      // the file that somebody brought back, and the images do not fit it.
      if (!erreurDat && (e.id != f.id || e.generation < f.generation || e.Pas() != f.taille))
        erreurDat = ErrEndommage;
      if (erreurDat) {
        if (!reparation) return erreurDat;
        avertissements.push_back("Des écritures récentes du fichier " + fautif +
                                 " n'ont pas pu être reprises.");
        repris.fichiers.erase(f.id);
        repris.perdus.insert(f.id);
        continue;
      }
    }
    r->dat.entete.emplacements = f.emplacements;
    r->dat.entete.tete = f.tete;
    r->dat.entete.libres = f.libres;
  }
  for (const ImageUnite& i : images) {
    const FichierUnite& f = fichiersUnite[i.fichier];
    if (repris.perdus.contains(f.id)) continue;
    FichierRepris& r = *repris.fichiers[f.id];
    fautif = r.dat.Chemin();
    if (const int echec = EcritImage(r.dat, i)) return echec;
    r.ecrits.insert(i.position);
  }
  return 0;
}

bool Moteur::FermeCabinet() {
  if (!m->ouvert) {
    m->verrou.Rend();
    return true;
  }
  while (m->profondeur) AnnuleUnite();
  m->retenues.Oublie();
  assert(m->images.Vide() && m->touches.empty());
  bool bien = true, change = false;
  for (u16 n = 0; n < m->fichiers.size(); ++n) {
    if (!m->fichiers[n]) continue;
    change = change || m->fichiers[n]->modifie;
    const bool ferme = m->FermePhysique(n);
    bien = ferme && bien;
    m->fichiers[n].reset();
  }
  // With a file that could not be brought home the log keeps its units.
  if (bien && (change || !m->reprise->EstVide())) {
    if (const int rc = m->reprise->Vide()) bien = m->Echec(rc, Joint(m->dossier, "fenlor.rep"));
  }
  m->verrou.Rend(bien && !m->lecture && m->reprise->EstSur());
  m->reprise.reset();
  m->ouvert = false;
  return bien;
}

/// Syncs a data file. Behind a failed sync the log's images are written again first: to the kernel they
/// are no change any more, and emptying the log would be the end of them.
bool Moteur::Etat::Synchronise(Ouvert& o) {
  const auto ecrit = [&o](const std::vector<FichierUnite>& fichiersUnite,
                          const std::vector<ImageUnite>& lues) {
    for (const ImageUnite& i : lues) {
      if (fichiersUnite[i.fichier].id != o.dat.entete.id) continue;
      if (const int rc = EcritImage(o.dat, i)) return rc;
    }
    return 0;
  };
  int rc = o.dat.EnDoute() && o.datSale ? reprise->Redit(ecrit) : 0;
  if (!rc) rc = o.dat.Synchronise();
  return rc == 0 || Echec(rc, o);
}

/// Brings committed changes of one data file to its place, durably.
bool Moteur::Etat::RameneDat(Ouvert& o, bool ajuste) {
  assert(o.def && (!ajuste || (profondeur == 0 && !o.touche)));
  // The log keeps what a file that was cut short has lost.
  if (const int rc = o.datSale ? o.dat.Tient() : 0) return Echec(rc, o);
  // What the disk refused before, then the header that counts it, then the length, then one sync.
  while (!o.attente.empty()) {
    const auto premiere = o.attente.begin();
    const auto& image = premiere->second;
    if (const int rc = o.dat.EcritPlace(premiere->first, 0, image.data(), static_cast<u32>(image.size())))
      return Echec(rc, o);
    o.attente.erase(premiere);
  }
  int rc = 0;
  if (o.datSale) {
    o.dat.entete.idReprise = reprise->Id();
    rc = o.dat.EcritEntete();
  }
  if (!rc && ajuste) rc = o.dat.Ajuste();
  if (rc) return Echec(rc, o);
  if (o.datSale && !Synchronise(o)) return false;
  assert(o.attente.empty());
  o.datSale = false;
  return true;
}

bool Moteur::Etat::VidangeTout() {
  for (const auto& o : fichiers) {
    if (o && o->def && o->modifie && !RameneDat(*o, false)) return false;
  }
  // Only now may the log forget: every change it holds is durable in a data file.
  assert(std::all_of(fichiers.begin(), fichiers.end(),
                     [](const auto& o) { return !o || !o->def || (!o->datSale && o->attente.empty()); }));
  if (!reprise->EstVide() || reprise->DoitVider()) {
    if (const int rc = reprise->Vide()) return Echec(rc, Joint(dossier, "fenlor.rep"));
  }
  assert(reprise->EstVide() && !reprise->DoitVider());
  for (const auto& o : fichiers) {
    if (!o || !o->def || !o->modifie || !o->cles || o->clesEnMemoire || o->clesDues) continue;
    if (const int rc = o->cles->Engage(false)) {
      if (!ReplieCles(*o, rc)) return false;
    }
  }
  return true;
}

bool Moteur::Vidange() {
  if (!m->ouvert) return m->Echec(ErrPasOuvert);
  return m->VidangeTout();
}

/// Closes a file for good and seals its keys. The seal counts once the log's
/// header is written.
bool Moteur::Etat::FermePhysique(u16 numero) {
  assert(profondeur == 0 && fichiers[numero] && fichiers[numero]->numero == numero);
  Ouvert& o = *fichiers[numero];
  if (!o.def) return true;
  bool bien = true;
  if (o.modifie) {
    // Data, then keys, then the seal over both: it measures files that nobody writes any more.
    bien = RameneDat(o, true);
    assert(!bien || (!o.datSale && o.attente.empty()));
    int rc = o.cles && !AssureCles(o) ? ErrCles : 0;
    const bool scelle = o.cles && !rc && !o.clesEnMemoire && fabrique.SurDisque();
    if (scelle) rc = o.cles->Engage(true);
    o.cles.reset();
    Sceau sceau;
    if (rc) {
      avertissements.push_back("Les clés du fichier " + o.cheminIdx + " n'ont pas pu être écrites (" +
                               VersUtf8(rc < 1000 ? TexteErreurSysteme(rc) : "fichier de clés endommagé") +
                               ") : elles seront reconstruites à la prochaine ouverture.");
    } else if (bien && scelle && Sceau_(o, sceau)) {
      assert(!o.touche && !reprise->sceaux.contains(o.dat.entete.id));
      reprise->sceaux[o.dat.entete.id] = sceau;
    }
  }
  return bien;
}

Ouvert* Moteur::Etat::Dat(u16 numFichier) {
  Ouvert* o = numFichier < fichiers.size() ? fichiers[numFichier].get() : nullptr;
  if (!o || !o->datOuvert) return Echec(ErrPasOuvert), nullptr;
  return o;
}

bool Moteur::CreeDat(u16 numFichier, const std::string& cheminDonne, u16 taille) {
  if (!m->ouvert) return m->Echec(ErrPasOuvert);
  const std::string chemin = Normal(cheminDonne);
  const DefinitionFichier* def = DefinitionFichierNumero(numFichier);
  if (numFichier >= m->fichiers.size() || taille < 8 || (def && def->taille != taille))
    return m->Echec(ErrValeur, chemin);
  if (m->fichiers[numFichier] && (m->fichiers[numFichier]->datOuvert || m->fichiers[numFichier]->idxOuvert)) {
    return m->Echec(ErrOccupe, chemin);
  }
  if (m->profondeur) return m->Echec(ErrValeur, chemin);
  if (!Relache(chemin)) return false;
  assert(!m->fichiers[numFichier] || m->fichiers[numFichier]->chemin != chemin);
  EnteteDat entete;
  entete.numero = numFichier;
  entete.taille = taille;
  entete.id = TireId();
  entete.idReprise = m->reprise->Id();
  if (def && m->lecture) return m->CreeVide(numFichier, chemin, entete);
  if (const int rc = FichierDat::Cree(m->systeme, chemin, entete)) {
    m->systeme.Supprime(chemin);
    return m->Echec(rc, chemin);
  }
  return Ouvre(numFichier, chemin);
}

/// A file that the practice lacks, while it is read: an empty one, which stands elsewhere and has no name.
bool Moteur::Etat::CreeVide(u16 numFichier, const std::string& chemin, const EnteteDat& entete) {
  std::error_code erreur;
  const auto temporaire = std::filesystem::temp_directory_path(erreur);
  if (erreur) return Echec(erreur.value(), chemin);
  const std::string vide = (temporaire / ("fenlor-vide-" + std::to_string(TireId()))).string();
  auto o = std::make_unique<Ouvert>();
  int rc = FichierDat::Cree(systeme, vide, entete);
  if (!rc) rc = o->dat.Ouvre(systeme, vide, entete.idReprise, FichierDat::Pour::Lecture);
  systeme.Supprime(vide);
  if (rc) return Echec(rc, vide);
  o->numero = numFichier;
  o->def = DefinitionFichierNumero(numFichier);
  if (fichiers[numFichier] && !FermePhysique(numFichier)) return false;
  assert(o->def && o->def->nbCles <= 8);
  o->chemin = chemin;
  o->dat.PoseMarque(o->def->marque);
  o->datOuvert = true;
  fichiers[numFichier] = std::move(o);
  return true;
}

bool Moteur::Etat::OuvreDat(u16 numero, const std::string& chemin) {
  if (const auto& deja = fichiers[numero]; deja) {
    if (deja->chemin == chemin) return true;
    if (deja->datOuvert || deja->idxOuvert || profondeur) return Echec(ErrOccupe, chemin);
    if (!FermePhysique(numero)) return false;
    fichiers[numero].reset();
    if (!VidangeTout()) return false;
  }
  auto o = std::make_unique<Ouvert>();
  o->numero = numero;
  o->def = DefinitionFichierNumero(numero);
  o->chemin = chemin;
  o->cheminRelatif = Relatif(chemin);
  if (o->cheminRelatif.empty() && o->def) return Echec(ErrValeur, chemin);
  const auto pour = lecture && o->def ? FichierDat::Pour::Lecture : FichierDat::Pour::Ecriture;
  int rc = o->dat.Ouvre(systeme, chemin, reprise->Id(), pour);
  // A session whose lock and log were deleted under it still writes its files.
  if (const int tenu = o->def && (!rc || rc == ErrEndommage) ? o->dat.Tient(lecture) : 0) rc = tenu;
  if (rc) return Echec(rc, chemin);
  const EnteteDat& e = o->dat.entete;
  if (e.numero != numero || (o->def && e.taille != o->def->taille)) return Echec(ErrFormat, chemin);
  if (e.version < VersionSommes && pour == FichierDat::Pour::Ecriture) {
    rc = o->dat.Convertit(systeme);
    o.reset();  // the new file is another one, and this one holds the name's
    return rc ? Echec(rc, chemin) : OuvreDat(numero, chemin);
  }
  rc = o->def ? o->dat.VerifieTout() : 0;
  if (rc) return Echec(rc, chemin);
  if (o->def) o->dat.PoseMarque(o->def->marque);
  o->emplacements = e.emplacements;
  o->tete = e.tete;
  o->libres = e.libres;
  assert(!fichiers[numero]);
  fichiers[numero] = std::move(o);
  return true;
}

bool Moteur::Ouvre(u16 numero, const std::string& cheminDonne) {
  if (!m->ouvert) return m->Echec(ErrPasOuvert);
  const std::string chemin = Normal(cheminDonne);
  if (numero >= m->fichiers.size()) return m->Echec(ErrValeur, chemin);
  // A scratch file's number is known once it was created; any other number is
  // that of a data file or of the key file behind it.
  unsigned indice = 0;
  const DefinitionFichier* defCle = DefinitionCle(numero, indice);
  const bool estCle = defCle ? indice == 0
                             : numero > 0 && !DefinitionFichierNumero(numero) && m->fichiers[numero - 1] &&
                                   !m->fichiers[numero - 1]->def && Finit(chemin, "i");
  if (!estCle) {
    if (defCle) return m->Echec(ErrValeur, chemin);
    if (!m->OuvreDat(numero, chemin)) return false;
    m->fichiers[numero]->datOuvert = true;
    return true;
  }
  const u16 numFichier = static_cast<u16>(numero - 1);
  if (defCle && !m->OuvreDat(numFichier, AvecExtension(chemin, ".dat"))) return false;
  assert(m->fichiers[numFichier]);
  Ouvert& o = *m->fichiers[numFichier];
  if (o.cles && o.cheminIdx != chemin) return m->Echec(ErrOccupe, chemin);
  if (!o.cles && !m->OuvreCles(o, chemin, false)) return false;
  assert(o.cles);
  o.idxOuvert = true;
  return true;
}

bool Moteur::CreeIdx(u16 premiereCle, const std::string& cheminDonne, bool doubles) {
  if (!m->ouvert) return m->Echec(ErrPasOuvert);
  const std::string chemin = Normal(cheminDonne);
  unsigned indice = 0;
  const DefinitionFichier* def = DefinitionCle(premiereCle, indice);
  if (premiereCle == 0 || premiereCle > m->fichiers.size() || indice) return m->Echec(ErrValeur, chemin);
  if (def) {
    if (!m->OuvreDat(def->numero, AvecExtension(chemin, ".dat"))) return false;
    Ouvert& o = *m->fichiers[def->numero];
    if (o.idxOuvert || m->profondeur) return m->Echec(ErrOccupe, chemin);
    if (!m->OuvreCles(o, chemin, true)) return false;
    return o.idxOuvert = true;
  }
  Ouvert* o = m->fichiers[premiereCle - 1].get();
  if (!o || o->def) return m->Echec(ErrPasOuvert, chemin);
  o->description = {};
  o->description.nombre = 1;
  o->description.doubles[0] = doubles;
  std::unique_ptr<Fichier> marque;  // so that the name exists on the disk
  if (const int rc = m->systeme.Ouvre(chemin, Systeme::Creation, marque)) return m->Echec(rc, chemin);
  if (!m->OuvreCles(*o, chemin, true)) return false;
  return o->idxOuvert = true;
}

bool Moteur::AjouteIdx(u16 premiereCle, unsigned indice, bool doubles) {
  unsigned premier = 0;
  if (const DefinitionFichier* def = DefinitionCle(premiereCle, premier)) {
    return (premier == 0 && indice < def->nbCles && def->doubles[indice] == doubles) || m->Echec(ErrValeur);
  }
  Ouvert* o =
      premiereCle > 0 && premiereCle <= m->fichiers.size() ? m->fichiers[premiereCle - 1].get() : nullptr;
  if (!o || o->def || indice != o->description.nombre || indice >= 8) return m->Echec(ErrValeur);
  o->description.nombre = indice + 1;
  o->description.doubles[indice] = doubles;
  return m->OuvreCles(*o, o->cheminIdx, true);
}

bool Moteur::Ferme(u16 numero) {
  unsigned indice = 0;
  if (DefinitionCle(numero, indice) || (numero > 0 && numero < m->fichiers.size() && !m->fichiers[numero])) {
    Ouvert* o = numero > 0 && numero <= m->fichiers.size() ? m->fichiers[numero - 1].get() : nullptr;
    if (!o || !o->idxOuvert) return m->Echec(ErrPasOuvert);
    o->idxOuvert = false;
    return true;
  }
  Ouvert* o = m->Dat(numero);
  if (!o) return false;
  o->datOuvert = false;
  return true;
}

bool Moteur::EstOuvertFichier(u16 numero) const {
  return numero < m->fichiers.size() && m->fichiers[numero] && m->fichiers[numero]->datOuvert;
}

std::string Moteur::CheminOuvert(u16 numFichier) const {
  return EstOuvertFichier(numFichier) ? m->fichiers[numFichier]->chemin : std::string();
}

bool Moteur::Relache(const std::string& cheminDonne) {
  if (!m->ouvert) return true;
  const std::string chemin = Normal(cheminDonne), dessous = chemin + "/";
  bool trouve = false;
  for (u16 n = 0; n < m->fichiers.size(); ++n) {
    const auto& o = m->fichiers[n];
    if (!o || !(o->chemin == chemin || o->cheminIdx == chemin || o->chemin.starts_with(dessous))) continue;
    if (m->profondeur) return m->Echec(ErrOccupe, chemin);
    if (!m->FermePhysique(n)) return false;
    m->fichiers[n].reset();
    trouve = true;
  }
  if (!trouve && m->reprise->EstVide()) return true;
  return m->VidangeTout();
}

}  // namespace fenlor

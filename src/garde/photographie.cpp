#include "garde/photographie.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "core/cles.h"
#include "core/erreurs.h"
#include "core/valeurs.h"
#include "garde/flux.h"
#include "garde/textes.h"
#include "store/definitions.h"
#include "store/fichierdat.h"
#include "store/partage.h"

namespace fenlor {

namespace {

constexpr std::size_t TailleTampon = 1u << 20;
constexpr const char* NomJournal = "JOURNAL.dat";

/// Beside the books, whose disk they fit; of a practice that is open to be read, where the system wants them.
std::string DossierDesCopies(CFenlorApp& app) {
  std::error_code erreur;
  const auto temporaire = std::filesystem::temp_directory_path(erreur);
  return app.Magasin.QVEnLecture() && !erreur ? temporaire.string() : app.Magasin.PathCabinet();
}

/// A new file of the practice's folder that nobody else can open, and that no stop leaves behind.
int OuvreSansNom(Systeme& systeme, const std::string& dossier, std::size_t rang,
                 std::unique_ptr<Fichier>& fichier) {
  const std::string chemin =
      Joint(dossier, "copie-" + std::to_string(::getpid()) + "-" + std::to_string(rang) + ".tmp");
  if (const int erreur = systeme.Ouvre(chemin, Systeme::Creation, fichier)) return erreur;
  return systeme.Supprime(chemin);
}

/// Bytes of a file that count: what an open data file keeps in reserve behind its slots is none of the books.
int Longueur(Fichier& fichier, bool donnees, u64& taille) {
  Empreinte empreinte;
  if (const int erreur = fichier.Mesure(empreinte)) return erreur;
  taille = empreinte.taille;
  if (!donnees) return 0;
  u8 octets[DebutEmplacements];
  std::size_t lus = 0;
  if (const int erreur = fichier.Lit(octets, sizeof octets, 0, lus)) return erreur;
  EnteteDat copies[2];
  const bool bonnes[2] = {lus == sizeof octets && FichierDat::Decode(octets, copies[0]),
                          lus == sizeof octets && FichierDat::Decode(octets + 512, copies[1])};
  if (!bonnes[0] || !bonnes[1]) return ErrEndommage;
  const EnteteDat& entete = copies[copies[1].generation > copies[0].generation];
  const u64 exacte = DebutEmplacements + u64{entete.emplacements} * entete.Pas();
  if (exacte > taille) return ErrEndommage;
  taille = exacte;
  assert(taille >= DebutEmplacements);
  return 0;
}

/// Hands the first bytes of a file to `suite`, with their place.
template <class Suite>
int LitOctets(Fichier& de, u64 taille, Suite&& suite) {
  std::vector<u8> tampon(static_cast<std::size_t>(std::min<u64>(taille, TailleTampon)));
  for (u64 place = 0; place < taille;) {
    const std::size_t voulus = static_cast<std::size_t>(std::min<u64>(tampon.size(), taille - place));
    std::size_t lus = 0;
    if (const int erreur = de.Lit(tampon.data(), voulus, place, lus)) return erreur;
    if (lus != voulus) return ErrAltere;
    if (const int erreur = suite(tampon.data(), lus, place)) return erreur;
    place += lus;
  }
  return 0;
}

int CopieOctets(Fichier& de, Fichier& vers, u64 taille) {
  assert(&de != &vers);
  return LitOctets(de, taille, [&](const u8* octets, std::size_t combien, u64 place) {
    return vers.Ecrit(octets, combien, place);
  });
}

int Somme(Fichier& de, u64 taille, Sha256& somme) {
  CalculSha256 calcul;
  const int erreur = LitOctets(de, taille, [&](const u8* octets, std::size_t combien, u64) {
    calcul.Ajoute(octets, combien);
    return 0;
  });
  if (!erreur) somme = calcul.Fin();
  return erreur;
}

/// The compressed copy of one file, made by as many helpers as call `Travaille`.
class Copieur {
 public:
  Copieur(Fichier& de, u64 taille, Fichier& vers)
      : m_de(de),
        m_taille(taille),
        m_vers(vers),
        m_trames((taille + TailleBlocTrame - 1) / TailleBlocTrame) {}

  /// Takes blocks until none is left. `suite`, of one of the helpers, sees the bytes that are done: false
  /// stops them all. The first failure of any of them.
  int Travaille(const std::function<bool(u64)>& suite) {
    std::vector<u8> tampon, trame;
    for (std::size_t rang; m_erreur == 0 && (rang = m_suivant++) < m_trames.size();) {
      const int erreur = Copie(rang, tampon, trame);
      const std::size_t finis = ++m_finis;
      if (erreur)
        m_erreur = erreur;
      else if (suite && !suite(std::min(m_taille, u64{finis} * TailleBlocTrame)))
        m_erreur = ECANCELED;
    }
    return m_erreur;
  }
  std::vector<Trame> Trames() { return std::move(m_trames); }
  /// It is the copy that could not be written.
  bool SansPlace() const { return m_sansPlace; }

 private:
  int Copie(std::size_t rang, std::vector<u8>& tampon, std::vector<u8>& trame) {
    const u64 place = u64{rang} * TailleBlocTrame;
    tampon.resize(static_cast<std::size_t>(std::min<u64>(TailleBlocTrame, m_taille - place)));
    std::size_t lus = 0;
    if (const int erreur = m_de.Lit(tampon.data(), tampon.size(), place, lus)) return erreur;
    if (lus != tampon.size()) return ErrAltere;
    if (!Comprime(tampon.data(), tampon.size(), trame)) return ENOMEM;
    const Trame ici{m_fin.fetch_add(trame.size()), trame.size()};
    m_trames[rang] = ici;
    const int erreur = m_vers.Ecrit(trame.data(), trame.size(), ici.place);
    if (erreur) m_sansPlace = true;
    return erreur;
  }

  Fichier& m_de;
  const u64 m_taille;
  Fichier& m_vers;
  std::vector<Trame> m_trames;
  std::atomic<std::size_t> m_suivant{0}, m_finis{0};
  std::atomic<u64> m_fin{0};
  std::atomic<int> m_erreur{0};
  std::atomic<bool> m_sansPlace{false};
};

/// Entries of a journal that is not open.
int CompteEcritures(Fichier& journal, u64 taille, u32& nombre) {
  constexpr std::size_t pas = sizeof(Line) + TailleSomme;
  std::vector<u8> tampon(pas * 2000);
  std::vector<bool> vues;
  for (u64 place = DebutEmplacements; place + pas <= taille;) {
    std::size_t lus = 0;
    if (const int erreur = journal.Lit(tampon.data(), tampon.size(), place, lus)) return erreur;
    lus = static_cast<std::size_t>(std::min<u64>(lus, taille - place));
    if (lus < pas) return ErrAltere;
    for (std::size_t debut = 0; debut + pas <= lus; debut += pas) {
      if (FichierDat::EtatDe(1, &tampon[debut]) != EtatEmplacement::Vivant) continue;
      u32 mouvement = 0;
      std::memcpy(&mouvement, &tampon[debut + offsetof(Line, Mouvement)], sizeof mouvement);
      // Entry numbers run on from 1; one far beyond is a damage that the copy keeps and `verifier` tells.
      if (mouvement > (1u << 28)) continue;
      if (mouvement >= vues.size()) vues.resize(std::max<std::size_t>(mouvement + 1, vues.size() * 2));
      if (!vues[mouvement]) ++nombre;
      vues[mouvement] = true;
    }
    place += lus / pas * pas;
  }
  return 0;
}

}  // namespace

int CopieDonnees(Systeme& systeme, const std::string& de, const std::string& vers) {
  assert(de != vers);
  std::unique_ptr<Fichier> source, copie;
  u64 taille = 0;
  int erreur = systeme.Ouvre(de, Systeme::Lecture, source);
  if (!erreur) erreur = Longueur(*source, true, taille);
  if (!erreur) erreur = systeme.Ouvre(vers, Systeme::Creation, copie);
  if (erreur) return erreur;
  erreur = CopieOctets(*source, *copie, taille);
  if (!erreur) erreur = copie->Synchronise();
  if (!erreur) erreur = systeme.SynchroniseDossier(DossierDe(vers));
  if (erreur) systeme.Supprime(vers);
  return erreur;
}

Refus Photographie::Prend(CFenlorApp& app, const std::vector<std::string>& exercices, bool complet,
                          const AvancePhotographie& avance) {
  assert(!app.Magasin.QVEnUnite());
  m_pieces.clear();
  m_tete = {};
  if (!app.Magasin.QVFlush()) return app.EchecMagasin();
  const std::string cabinet = app.Magasin.PathCabinet();
  m_tete.cabinet = cabinet.substr(cabinet.rfind('/') + 1);
  m_tete.date = StrDate(app.Magasin.Today());
  m_tete.heure = StrHHMM(app.Magasin.Now());
  m_tete.complet = complet;
  std::vector<Voulu> voulus = {{FichierReglages, false}};
  for (const DefinitionFichier& definition : Definitions())
    if (definition.duCabinet) voulus.push_back({std::string(definition.nom) + ".dat", true});
  const std::vector<std::string> connus = app.Magasin.ListeExercices();
  for (const std::string& nom : exercices) {
    if (std::find(connus.begin(), connus.end(), nom) == connus.end())
      return Refus(ErrExerciceInconnu, "exercice", {nom});
    m_tete.exercices.push_back({nom, app.Reglages.LitIniExercice(nom, Texte(CleDebut)),
                                app.Reglages.LitIniExercice(nom, Texte(CleFin)),
                                app.Reglages.LitIniExercice(nom, Texte(CleCloture)), 0});
    for (const DefinitionFichier& definition : Definitions())
      if (!definition.duCabinet)
        voulus.push_back({nom + "/" + definition.nom + ".dat", !definition.duDepart});
    for (const std::string plain : {"/TEXTES.dat", "/SCEAU.dat", "/CORBEILLE.dat"})
      voulus.push_back({nom + plain, true});
  }
  u64 total = 1;
  for (const Voulu& voulu : voulus) {
    Empreinte empreinte;
    if (app.Magasin.SystemeFichiers().Mesure(Joint(cabinet, voulu.nom), empreinte) == 0)
      total += empreinte.taille;
  }
  for (const Voulu& voulu : voulus) {
    const u64 avant = Octets();
    const auto suite = [&](u64 octets) {
      return !avance || avance(std::min(1.0, static_cast<f64>(avant + octets) / static_cast<f64>(total)));
    };
    if (const Refus refus = Copie(app, voulu, suite)) return refus;
  }
  for (ExerciceArchive& tete : m_tete.exercices)
    for (const Piece& piece : m_pieces)
      if (piece.nom == tete.nom + "/" + NomJournal) tete.ecritures = piece.ecritures;
  return {};
}

Refus Photographie::Copie(CFenlorApp& app, const Voulu& voulu, const std::function<bool(u64)>& suite) {
  Systeme& systeme = app.Magasin.SystemeFichiers();
  const std::string dossier = app.Magasin.PathCabinet(), chemin = Joint(dossier, voulu.nom);
  const std::string copies = DossierDesCopies(app);
  // The store's own files bear the name of a definition.
  const std::string base = voulu.nom.substr(voulu.nom.rfind('/') + 1);
  const bool donnees = DefinitionNom(base.substr(0, base.rfind('.'))) != nullptr;
  std::unique_ptr<Fichier> fichier;
  int erreur = systeme.Ouvre(chemin, Systeme::Lecture, fichier);
  if (erreur == ENOENT && voulu.facultatif) return {};
  Piece piece;
  piece.nom = voulu.nom;
  if (!erreur) erreur = Longueur(*fichier, donnees, piece.taille);
  bool sansPlace = false;
  if (!erreur) {
    erreur = OuvreSansNom(systeme, copies, m_pieces.size(), piece.copie);
    sansPlace = erreur != 0;
  }
  if (!erreur) {
    // The sum is that of the books: what the copy, the archive and the disk make of them is held against it.
    Copieur copieur(*fichier, piece.taille, *piece.copie);
    int somme = 0, compte = 0;
    const unsigned parts = NombreParts(piece.taille);
    Partage(parts, [&](unsigned part) {
      // Both go through the whole file at once, each by itself; the blocks wait for no one.
      if (part == 0) somme = Somme(*fichier, piece.taille, piece.somme);
      if (part == parts / 2 && base == NomJournal)
        compte = CompteEcritures(*fichier, piece.taille, piece.ecritures);
      const int une = copieur.Travaille(part + 1 == parts ? suite : std::function<bool(u64)>());
      if (part + 1 == parts) erreur = une;
    });
    if (!erreur) erreur = copieur.Travaille({});  // what a helper met last
    erreur = erreur ? erreur : somme ? somme : compte;
    piece.trames = copieur.Trames();
    sansPlace = copieur.SansPlace();
  }
  if (erreur == ECANCELED) return Refus(ErrArchiveInterrompue);
  if (sansPlace) return Refus(ErrCopieLivres, "", {copies, TexteErreurSysteme(erreur)});
  if (erreur) return Refus(ErrArchiveLivres, "", {chemin, app.Magasin.QVErreurTexte(erreur)});
  m_pieces.push_back(std::move(piece));
  assert(m_pieces.back().copie);
  return {};
}

std::vector<PieceSource> Photographie::Pieces() const {
  std::vector<PieceSource> pieces;
  for (const Piece& piece : m_pieces)
    pieces.push_back({piece.nom, piece.taille, piece.somme, piece.copie.get(), piece.trames});
  return pieces;
}

u64 Photographie::Octets() const {
  u64 total = 0;
  for (const Piece& piece : m_pieces) total += piece.taille;
  return total;
}

}  // namespace fenlor

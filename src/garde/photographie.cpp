#include "garde/photographie.h"

#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstdio>
#include <cstring>

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

Refus Photographie::Prend(CFenlorApp& app, const std::vector<std::string>& exercices, bool complet) {
  assert(!app.Magasin.QVEnUnite());
  m_pieces.clear();
  m_tete = {};
  if (!app.Magasin.QVFlush()) return app.EchecMagasin();
  const std::string cabinet = app.Magasin.PathCabinet();
  m_tete.cabinet = cabinet.substr(cabinet.rfind('/') + 1);
  m_tete.date = StrDate(app.Magasin.Today());
  m_tete.heure = StrHHMM(app.Magasin.Now());
  m_tete.complet = complet;
  if (const Refus refus = Copie(app, "fenlor.ini", false)) return refus;
  for (const DefinitionFichier& definition : Definitions())
    if (definition.duCabinet)
      if (const Refus refus = Copie(app, std::string(definition.nom) + ".dat", true)) return refus;
  const std::vector<std::string> connus = app.Magasin.ListeExercices();
  for (const std::string& nom : exercices) {
    if (std::find(connus.begin(), connus.end(), nom) == connus.end())
      return Refus(ErrExerciceInconnu, "exercice", {nom});
    ExerciceArchive& tete = m_tete.exercices.emplace_back();
    tete.nom = nom;
    tete.debut = app.Reglages.LitIniExercice(nom, Texte(CleDebut));
    tete.fin = app.Reglages.LitIniExercice(nom, Texte(CleFin));
    tete.cloture = app.Reglages.LitIniExercice(nom, Texte(CleCloture));
    for (const DefinitionFichier& definition : Definitions())
      if (!definition.duCabinet)
        if (const Refus refus = Copie(app, nom + "/" + definition.nom + ".dat", !definition.duDepart))
          return refus;
    for (const std::string plain : {"/TEXTES.dat", "/SCEAU.dat", "/CORBEILLE.dat"})
      if (const Refus refus = Copie(app, nom + plain, true)) return refus;
    for (const Piece& piece : m_pieces)
      if (piece.nom == nom + "/" + NomJournal) tete.ecritures = piece.ecritures;
  }
  return {};
}

Refus Photographie::Copie(CFenlorApp& app, const std::string& nom, bool facultatif) {
  Systeme& systeme = app.Magasin.SystemeFichiers();
  const std::string dossier = app.Magasin.PathCabinet(), chemin = Joint(dossier, nom);
  // The store's own files bear the name of a definition.
  const std::string base = nom.substr(nom.rfind('/') + 1);
  const bool donnees = DefinitionNom(base.substr(0, base.rfind('.'))) != nullptr;
  std::unique_ptr<Fichier> fichier;
  int erreur = systeme.Ouvre(chemin, Systeme::Lecture, fichier);
  if (erreur == ENOENT && facultatif) return {};
  Piece piece;
  piece.nom = nom;
  if (!erreur) erreur = Longueur(*fichier, donnees, piece.taille);
  if (!erreur) erreur = OuvreSansNom(systeme, dossier, m_pieces.size(), piece.copie);
  if (!erreur) {
    // The sum is that of the books: what the copy, the archive and the disk make of them is held against it.
    std::array<int, 3> erreurs{};
    const auto part = [&](unsigned rang) {
      if (rang == 0) erreurs[0] = Somme(*fichier, piece.taille, piece.somme);
      if (rang == 1 && base == NomJournal)
        erreurs[1] = CompteEcritures(*fichier, piece.taille, piece.ecritures);
      if (rang == 2) erreurs[2] = CopieOctets(*fichier, *piece.copie, piece.taille);
    };
    const unsigned parts = erreurs.size();
    if (NombreParts(piece.taille) > 1)
      Partage(parts, part);
    else
      for (unsigned rang = 0; rang < parts; ++rang) part(rang);
    for (const int une : erreurs) erreur = erreur ? erreur : une;
  }
  if (erreur) return Refus(ErrArchiveLivres, "", {chemin, app.Magasin.QVErreurTexte(erreur)});
  m_pieces.push_back(std::move(piece));
  assert(m_pieces.back().copie);
  return {};
}

std::vector<PieceSource> Photographie::Pieces() const {
  std::vector<PieceSource> pieces;
  for (const Piece& piece : m_pieces)
    pieces.push_back({piece.nom, piece.copie.get(), piece.taille, piece.somme});
  return pieces;
}

u64 Photographie::Octets() const {
  u64 total = 0;
  for (const Piece& piece : m_pieces) total += piece.taille;
  return total;
}

}  // namespace fenlor

// Inside of the engine, shared by its source files.
#pragma once

#include <array>
#include <cassert>
#include <set>
#include <span>
#include <unordered_map>

#include "store/fichierdat.h"
#include "store/images.h"
#include "store/moteur.h"
#include "store/qvapi.h"
#include "store/reprise.h"
#include "store/verrou.h"

namespace fenlor {

/// Key changes of a unit that are remembered to undo it; beyond, the keys of an
/// undone unit are made again.
constexpr std::size_t ClesRetenuesMax = 200000;

/// An open data file with its keys.
struct Ouvert {
  FichierDat dat;
  const DefinitionFichier* def = nullptr;  ///< null: a scratch file, neither logged nor kept
  u16 numero = 0;
  std::string chemin;         ///< full
  std::string cheminRelatif;  ///< below the practice
  bool datOuvert = false;     ///< as callers see it
  bool idxOuvert = false;

  // The header as the unit in progress sees it.
  u32 emplacements = 0, tete = 0, libres = 0;
  bool touche = false;        ///< changed by the unit in progress
  Position premierVerse = 0;  ///< first slot of the unit that was written behind the committed end
  bool datSale = false;       ///< committed changes not yet synced
  bool modifie = false;       ///< changed, or its keys, since it was opened: its seal is void
  Empreinte aOuverture;
  /// Committed images that the disk refused; they are tried again.
  std::unordered_map<Position, std::vector<u8>> attente;

  std::unique_ptr<MagasinCles> cles;
  DescriptionCles description;
  std::string cheminIdx;
  bool clesEnMemoire = false;    ///< the disk had no room for the keys, or they were damaged
  bool clesEndommagees = false;  ///< found damaged since the file was opened, and made again
  /// Keys of new records were left out: all are made from the records before anybody looks at one.
  bool clesDues = false;
  bool clesRemplies = false;  ///< that happened in the unit in progress, whose undoing takes them back

  struct Curseur {
    bool pose = false;
    int sens = 0;  ///< direction of the walk in progress
    u32 pas = 0;   ///< its moves since the keys last changed
    EntreeCle entree;
  };
  std::array<Curseur, 8> curseurs;
};

struct Moteur::Etat {
  Etat(Systeme& s, FabriqueCles& f, std::size_t taille) : systeme(s), fabrique(f), tailleReprise(taille) {}

  Systeme& systeme;
  FabriqueCles& fabrique;
  FabriqueMemoire memoire;
  std::size_t tailleReprise;
  std::string dossier;
  bool ouvert = false;
  bool lecture = false;    ///< nothing of the practice may be written
  bool clesDites = false;  ///< that its keys are made in memory was told
  Verrou verrou;
  std::unique_ptr<JournalReprise> reprise;
  std::array<std::unique_ptr<Ouvert>, 256> fichiers;  ///< by file number

  EntreeCle trouvaille, trouvailleDepart;  ///< buffers of cursor moves

  int erreur = 0;
  std::string fichierErreur;
  std::vector<std::string> avertissements;

  // The unit in progress.
  struct Annulation {
    Ouvert* fichier;
    Position position;  ///< 0: header only
    bool avait;
    std::vector<u8> image;
    u32 emplacements, tete, libres;
    Position premierVerse;
  };
  struct ChangementCle {
    Ouvert* fichier;
    unsigned cle;
    bool ajout;
    Position position;
    u8 longueur;  ///< of its text
  };
  /// Key changes in their order; their texts stand behind each other, for a large unit has many.
  class ChangementsCles {
   public:
    std::size_t Nombre() const { return m_changements.size(); }
    void Ajoute(const ChangementCle& changement, std::string_view texte) {
      assert(changement.longueur == texte.size());
      m_changements.push_back(changement);
      m_textes += texte;
    }
    /// Takes the last one out.
    std::pair<ChangementCle, std::string> Retire() {
      const ChangementCle dernier = m_changements.back();
      m_changements.pop_back();
      const std::size_t debut = m_textes.size() - dernier.longueur;
      std::string texte = m_textes.substr(debut);
      m_textes.erase(debut);
      return {dernier, std::move(texte)};
    }
    void Efface() {
      m_changements.clear();
      m_textes.clear();
    }

   private:
    GrandVecteur<ChangementCle> m_changements;
    std::string m_textes;
  };
  struct Repere {
    std::size_t annulations, cles;
    u64 remplissages;
  };
  unsigned profondeur = 0;
  std::vector<Repere> reperes;
  ImagesUnite images;
  std::vector<Annulation> annulations;
  ChangementsCles changementsCles;
  bool clesTropNombreuses = false;
  u64 nbRemplissages = 0;  ///< of keys from records
  std::vector<Ouvert*> touches;
  std::bitset<256> changements;  ///< files of the unit that was just made durable
  std::function<void(const std::bitset<256>&)> suite;
  u64 nbAnnulations = 0;

  Retenues retenues{systeme};
  NommeurUnites nommeur;
  std::string nomUnite;
  bool sansRetour = false;
  std::vector<UniteRetenue::ReglageRetenu> reglagesUnite;
  std::function<int()> prealable;
  bool enRetour = false;  ///< the unit in progress takes one back, or does it again (`retourDefait`)
  bool retourDefait = false;
  std::vector<u8> tampon;

  bool Echec(int code, const std::string& fichier = {}) {
    erreur = code;
    fichierErreur = fichier;
    return false;
  }
  bool Echec(int code, const Ouvert& o) { return Echec(code, o.chemin); }
  /// The one gate of everything that changes a record or a key.
  bool PeutChanger(const Ouvert& o) { return !lecture || !o.def || Echec(ErrLectureSeule); }

  // moteur.cpp
  std::string Relatif(const std::string& chemin) const;
  void OteReconstructions();
  struct FichierRepris;
  struct Repris;
  bool Rejoue(bool reparation);
  int RejoueUnite(const std::vector<FichierUnite>& fichiersUnite, const std::vector<ImageUnite>& images,
                  bool reparation, Repris& repris, std::string& fautif);
  bool OuvreEnLecture(const std::string& chemin);
  bool CreeVide(u16 numFichier, const std::string& chemin, const EnteteDat& entete);
  bool OuvreDat(u16 numero, const std::string& chemin);
  bool FermePhysique(u16 numero);
  bool RameneDat(Ouvert& o, bool ajuste);
  bool Synchronise(Ouvert& o);
  bool VidangeTout();
  Ouvert* Dat(u16 numFichier);

  // moteurcles.cpp
  Ouvert* Cle(u16 numCle, unsigned& indice);
  bool OuvreCles(Ouvert& o, const std::string& cheminIdx, bool neuf);
  bool OuvreClesEnLecture(Ouvert& o);
  struct ClesTriees;
  bool RemplitCles(Ouvert& o);
  bool AssureCles(Ouvert& o);
  bool RemetCles(Ouvert& o);
  void DoitCles(Ouvert& o);
  bool ReplieCles(Ouvert& o, int rc);
  int PoseCle(Ouvert& o, unsigned indice, std::string_view texte, Position position, bool neuve);
  int OteCle(Ouvert& o, unsigned indice, std::string_view texte, Position position);
  void RetientCle(Ouvert& o, unsigned indice, std::string_view texte, Position position, bool ajout);
  void DefaitCles(std::size_t jusqua);
  bool Sceau_(Ouvert& o, Sceau& sceau, const Sceau* attendu = nullptr);
  bool Rompues(Ouvert& o);
  bool SePoursuit(const Ouvert& o, Ouvert::Curseur& curseur, const EntreeCle& depart, const EntreeCle& e,
                  int sens);
  bool Deplace(u16 numCle, std::string& texte, Position& position, int sens);

  // moteurunites.cpp
  const u8* Brut(Ouvert& o, Position position);
  bool PoseImage(Ouvert& o, Position position, const u8* octets);
  void Touche(Ouvert& o);
  void Retient(Ouvert& o, Position position);
  const u8* Marque(Ouvert& o, const void* rec);
  void Defait(std::size_t jusqua);
  void DefaitTout();
  bool Engage();
  const u8* Base(const Ouvert& o, Position position) const;
  bool Scelle(const OrdreImages& ordre);
  void CommenceUnite(const OrdreImages& ordre);
  void ComposeUnite(const OrdreImages& ordre);
  bool Applique(const OrdreImages& ordre);
  // moteurannulation.cpp
  void RetientUnite(const OrdreImages& ordre);
  void OublieNom();
  void ComposeCote(const UniteRetenue& unite, const UniteRetenue::Ecart& e, bool apres, const u8* present,
                   std::vector<u8>& rec) const;
  bool ControleRetour(const UniteRetenue& unite, const SuiteRetour& controle);
  bool ReprendLibres(Ouvert& o, std::set<Position> voulus);
  bool EcritRetour(Moteur& moteur, const UniteRetenue& unite);
  // moteurunites.cpp
  std::size_t FinSuite(const OrdreImages& ordre, std::size_t debut) const;
  bool AppliqueSuite(Ouvert& o, std::span<ImagesUnite::Image* const> suite);
};

/// A unit of one operation, unless one is open already.
class UniteAuto {
 public:
  explicit UniteAuto(Moteur& moteur) : m_moteur(moteur), m_seule(moteur.Profondeur() == 0) {
    if (m_seule) m_moteur.DebutUnite();
  }
  ~UniteAuto() {
    if (m_seule) m_moteur.AnnuleUnite();
  }
  bool Valide() {
    if (!m_seule) return true;
    m_seule = false;
    return m_moteur.ValideUnite();
  }

 private:
  Moteur& m_moteur;
  bool m_seule;
};

}  // namespace fenlor

// A disk whose power can be cut. Every operation is done on real files below one
// directory, so that mappings see the data; what was not synced is remembered,
// and after the cut the files are rewritten to a state that a real disk could
// hold. The syncs themselves are only booked, which makes a simulation fast.
//
// What the cut may do to work in flight, each piece on its own:
//  - a write is there, absent, or torn at sectors of 512 bytes (one sector is
//    never torn); bytes that were never written read as 0;
//  - a change of size is there or absent;
//  - a creation, renaming or removal of a name is there or absent, a renaming
//    as a whole; a file keeps its content whatever becomes of its name. A change
//    of names that stands on an earlier one is lost with it.
//
// A sync that fails does what the kernel does then: what was in flight in that
// file stays visible and counts as clean. No later sync writes it, and a cut
// finds the pages as they were on the disk before it or before any earlier failure,
// or as they were to be, unless somebody wrote them again.
//
// Files that others write below the directory (key files) stay as they are.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "store/systeme.h"

namespace fenlor {

class SystemeCoupure : public Systeme {
 public:
  /// `racine` exists; paths outside of it are not simulated. Outlives its files.
  explicit SystemeCoupure(std::string racine);
  ~SystemeCoupure() override;

  /// Cuts at the n-th sync from now (from 1), of a file or of a directory, before
  /// it takes effect. From the cut on every operation answers EIO.
  void CoupeApres(u64 n) { m_reste = n; }
  void Coupe() { m_coupe = true; }
  /// The n-th sync from now (from 1) fails, and what it was to write is forgotten; with `suite` those behind
  /// it as well, so many in all. None for 0.
  void EchoueSynchro(u64 n, unsigned suite = 1) { m_echec = n, m_echecs = n ? suite : 0; }
  bool EchecVenu() const { return m_echecs == 0; }
  bool EstCoupe() const { return m_coupe; }
  /// The program dies of the last such failure: from then on every operation answers EIO and does nothing,
  /// until another one begins. What the dead one wrote stays visible.
  void MeurtDeLEchec() { m_meurt = true; }
  void Meurt() { m_mort = true; }
  void Recommence() { m_mort = false; }
  bool EstMort() const { return m_mort; }

  /// Syncs of paths that hold the text succeed and do nothing: a control that
  /// proves that the simulation would find a missing one.
  void IgnoreSynchro(std::string texte) { m_ignore = std::move(texte); }

  /// Cuts, and rewrites the files to one of the possible states. The same seed
  /// gives the same state: 0 drops all in flight and what the last failed sync forgot, 1 keeps it. The
  /// object is of no more use: the machine starts again with a new one. False
  /// when the real disk failed.
  bool Applique(u64 graine);

  int Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) override;
  int Mesure(const std::string& chemin, Empreinte& empreinte) override;
  int Renomme(const std::string& de, const std::string& vers) override;
  int Supprime(const std::string& chemin) override;
  int SynchroniseDossier(const std::string& dossier) override;
  int CreeDossier(const std::string& dossier) override;
  int SupprimeDossier(const std::string& dossier) override;
  int Liste(const std::string& dossier, std::vector<std::string>& noms) override;

 private:
  struct Noeud;
  struct Geste;
  class FichierCoupure;
  using Ref = std::shared_ptr<Noeud>;
  using Entrees = std::map<std::string, Ref>;
  struct Affectation {
    Ref dossier;
    std::string nom;
    Ref noeud;  ///< null: the name is gone
  };
  struct GesteNom {
    Ref sujet;
    std::vector<Affectation> affectations;
  };
  struct Lieu {
    Ref dossier;
    std::string nom;
  };

  using Arbre = std::map<std::string, Ref>;

  static void Affecte(Entrees& entrees, const Affectation& a);
  bool Simule(const std::string& chemin) const;
  Lieu TrouveLieu(const std::string& chemin);
  Ref Cherche(const Lieu& lieu, const std::string& chemin);
  void Recense(const Ref& dossier, const std::string& chemin);
  void Note(Ref sujet, std::vector<Affectation> affectations);
  bool Range(const Arbre& avant, const Arbre& apres, const std::map<std::string, std::string>& contenus);
  enum class Synchro { Faite, Ignoree, Manquee };
  bool Muet() const { return m_coupe || m_mort; }
  Synchro PasseSynchro(const std::string& chemin);

  std::string m_racine;
  SystemePosix m_posix;
  Ref m_arbre;
  std::vector<GesteNom> m_noms;
  std::vector<std::weak_ptr<Noeud>> m_fichiers;
  std::string m_ignore;
  u64 m_reste = 0;
  u64 m_echec = 0;
  unsigned m_echecs = 0;
  bool m_coupe = false;
  bool m_meurt = false, m_mort = false;
};

}  // namespace fenlor

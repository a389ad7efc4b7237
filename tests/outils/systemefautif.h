// A disk that fails on demand: hands every operation to another Systeme, counts
// it, and answers with an error where the test said so.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <string>

#include "core/refus.h"
#include "store/systeme.h"

namespace fenlor {

class SystemeFautif : public Systeme {
 public:
  enum Genre : unsigned {
    Ouvertures = 1u << 0,
    Lectures = 1u << 1,
    Ecriture = 1u << 2,
    Synchro = 1u << 3,
    Troncature = 1u << 4,
    Reservation = 1u << 5,
    Renommage = 1u << 6,
    Suppression = 1u << 7,  ///< of files and of directories
    SynchroDossier = 1u << 8,
    Dossier = 1u << 9,  ///< creation of a directory
    Listage = 1u << 10,
    Mesurage = 1u << 11,
    Tous = (1u << 12) - 1,
  };

  static constexpr int StatutTue = 137;  ///< of a process that `Tue` ended

  /// `systeme` outlives the object, the object outlives the files it opened.
  explicit SystemeFautif(Systeme& systeme) : m_systeme(systeme) {}

  /// From now on the k-th operation (from 1) among the kinds fails with `erreur`
  /// and changes nothing; alone, or with all those behind it.
  void Programme(unsigned k, int erreur, unsigned genres = Tous, bool uneFois = true);
  /// Only operations on a path that holds the text are counted down; empty: all.
  void SurChemin(std::string texte) { m_chemin = std::move(texte); }
  /// Those on a path that holds this one never fail; empty: none.
  void Sauf(std::string texte) { m_sauf = std::move(texte); }
  /// A failing write leaves the first half of its bytes, as a full disk does.
  void EcrituresPartielles(bool partielles) { m_partielles = partielles; }
  /// What is written to a path that holds the text arrives with one bit changed; empty: to none.
  void Ment(std::string texte) { m_menti = std::move(texte); }
  /// Where an operation would fail the process ends instead, as if it were killed.
  void Tue(bool tue) { m_tue = tue; }
  void Repare() { m_rang = 0; }

  /// Operations of the kinds so far, failed ones included.
  u64 Compte(unsigned genres = Tous) const;
  /// How many failed on demand since the last `Programme`.
  unsigned NbPannes() const { return m_pannes; }

  int Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) override;
  int Mesure(const std::string& chemin, Empreinte& empreinte) override;
  int Renomme(const std::string& de, const std::string& vers) override;
  int Supprime(const std::string& chemin) override;
  int SynchroniseDossier(const std::string& dossier) override;
  int CreeDossier(const std::string& dossier) override;
  int SupprimeDossier(const std::string& dossier) override;
  int Liste(const std::string& dossier, std::vector<std::string>& noms) override;

 private:
  class FichierFautif;
  int Passe(Genre genre, const std::string& chemin);

  Systeme& m_systeme;
  std::string m_chemin, m_sauf, m_menti;
  std::array<u64, 12> m_comptes{};
  unsigned m_rang = 0;  ///< 0: nothing fails
  unsigned m_genres = 0;
  int m_erreur = 0;
  bool m_uneFois = true;
  bool m_partielles = false;
  bool m_tue = false;
  unsigned m_pannes = 0;
};

namespace test {

/// A disk of a test's own, which outlives the practice on it: the first base of a fixture.
struct DisqueDeTest {
  SystemePosix Vrai;
  SystemeFautif Disque{Vrai};
};

/// Does `geste`, which gives a refusal, with its first write, sync or reservation failing, then with its
/// second, until none is left to fail. `controle` sees each answer; the refusals are `attendu`. How many
/// there were.
template <class Geste, class Controle>
unsigned AChaquePanne(SystemeFautif& disque, const TexteFixe& attendu, Geste geste, Controle controle) {
  unsigned refuses = 0;
  for (unsigned k = 1;; ++k) {
    SCOPED_TRACE("failure " + std::to_string(k));
    disque.Programme(k, ENOSPC,
                     SystemeFautif::Ecriture | SystemeFautif::Synchro | SystemeFautif::Reservation);
    const Refus refus = geste();
    const bool panne = disque.NbPannes() != 0;
    disque.Repare();
    controle(refus);
    if (!panne) return refuses;
    if (!refus) continue;
    ++refuses;
    EXPECT_EQ(attendu.numero, refus.numero);
    EXPECT_FALSE(refus.texte.empty());
  }
}

}  // namespace test
}  // namespace fenlor

// A practice of its own for one test: temporary directory, store session,
// scripted dialogue. Everything is gone when the test ends.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/fenlorapp.h"
#include "store/magasincles.h"
#include "store/texte1252.h"

namespace fenlor::test {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A directory under the system's temporary one, removed with the object. `enMemoire`: where the system keeps
/// files in memory, for tests that make thousands of them, none of which has to outlive the machine.
class DossierTemporaire {
 public:
  explicit DossierTemporaire(bool enMemoire = false);
  ~DossierTemporaire();
  DossierTemporaire(const DossierTemporaire&) = delete;
  DossierTemporaire& operator=(const DossierTemporaire&) = delete;

  const std::string& Chemin() const { return m_chemin; }
  std::string operator/(const std::string& nom) const { return m_chemin + "/" + nom; }

 private:
  std::string m_chemin;
};

/// Answers questions from a queue and remembers all that was said.
class DialogueScript : public Dialogue {
 public:
  struct Echange {
    unsigned numero = 0;
    std::string texte;   ///< Windows-1252
    unsigned style = 0;  ///< of a question
    int reponse = 0;     ///< to a question
  };

  std::vector<Echange> Erreurs;
  std::vector<Echange> Questions;
  /// Answers to come, first one first.
  std::deque<int> Reponses;
  /// Answer when the queue is empty; 0: the refusing button of the set.
  int Defaut = 0;
  /// IsAborted says true from this call on, counted from 0; -1: never.
  int ArretApres = -1;

  // Progress seen so far.
  unsigned Ouvertures = 0;  ///< outermost openings
  unsigned Profondeur = 0;
  std::string Titre;
  bool Annulable = false;
  std::vector<std::string> Textes;
  u32 Maximum = 0;
  u32 Place = 0;
  unsigned NbMaximum = 0;  ///< calls of SetMax
  int NbArrets = 0;        ///< calls of IsAborted

  void Erreur(unsigned numero, const std::string& texte) override;
  int Message(unsigned style, unsigned numero, const std::string& texte) override;
  void OuvreProgress(const std::string& titre, const std::string& texte, bool annulable,
                     u32 maximum) override;
  void FermeProgress() override;
  void SetTexte(const std::string& texte) override { Textes.push_back(texte); }
  void SetMax(u32 maximum) override;
  void SetPos(u32 position) override { Place = position; }
  void Step() override { ++Place; }
  bool IsAborted() override;

  std::vector<unsigned> NumerosErreurs() const;
  std::vector<unsigned> NumerosQuestions() const;
  /// Forgets what was said, keeps the script.
  void Oublie();
};

enum class Cles { Memoire, Lmdb };

/// Fixture, or a member of one. The clock stands at 15/03/2003.
class CabinetDeTest : public ::testing::Test {
 public:
  explicit CabinetDeTest(Cles cles = Cles::Memoire, std::size_t tailleReprise = 256u << 10,
                         Systeme* systeme = nullptr);
  ~CabinetDeTest() override;

  DialogueScript Boite;

  CFenlorApp& App() { return *m_app; }
  QVAPI& Magasin() { return *m_magasin; }
  const std::string& Dossier() const { return m_dossier.Chemin(); }

  /// Ends the session and opens the practice again, with the exercice that was
  /// open. False when something was refused. `App` and `Magasin` are new objects
  /// then: nothing of the old ones may still be open.
  bool Rouvre();
  /// Creates an exercice and opens it. Dates of 0: the calendar year of its name.
  bool CreeExercice(const std::string& nom, bool euro = true, bool tva = false, Date debut = 0, Date fin = 0);
  bool OuvreExercice(const std::string& nom);

  /// An account of the open exercice; of `Type` -1 when there is none.
  Plan LitCompte(std::string_view compte);
  /// Puts an account into the chart, replacing one of the same number.
  bool PoseCompte(std::string_view compte, i16 type, std::string_view code = {},
                  std::string_view designation = {}, i16 typeTresorerie = 0);
  /// Changes an account of the chart behind the rules' back, with its keys.
  void ChangeCompte(std::string_view compte, const std::function<void(Plan&)>& change);
  /// Lines of an entry in order of `Rang`.
  std::vector<Line> Lignes(u32 mouvement);
  /// Changes them behind the rules' back.
  void ChangeLignes(u32 mouvement, const std::function<void(Line&)>& change);
  std::string Reglage(const std::string& section, const std::string& cle) {
    return Magasin().Reglages().Lit(section, cle);
  }
  /// A receipt or expense ready to be saved: amount in Euro, converted into Franc.
  EcrSimple Simple(i16 journal, Date date, std::string_view compte, f64 montant, std::string_view tresorerie,
                   std::string_view libelle = "Essai");
  /// Saves it; its number, 0 when the store refused.
  u32 AjouteSimple(i16 journal, Date date, std::string_view compte, f64 montant, std::string_view tresorerie,
                   std::string_view libelle = "Essai");

 private:
  bool Ouvre();

  DossierTemporaire m_dossier;
  Cles m_typeCles;
  FabriqueMemoire m_memoire;
  FabriqueLmdb m_lmdb;
  std::size_t m_tailleReprise;
  Systeme* m_systeme;
  std::unique_ptr<QVAPI> m_magasin;
  std::unique_ptr<CFenlorApp> m_app;
};

/// Whole content of a file; empty when there is none.
std::string LitFichier(const std::string& chemin);
void EcritFichier(const std::string& chemin, const std::string& contenu);
/// Makes of a closed data file, or of all those below a directory, what they were before slots had sums.
void OteSommes(const std::string& chemin);

}  // namespace fenlor::test

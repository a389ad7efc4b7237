// What the rules of the entry forms and of the journal's commands share. Internal
// to journal/.
#pragma once

#include <set>

#include "core/texte.h"
#include "journal/saisie.h"
#include "store/ouverture.h"

namespace fenlor {

constexpr std::size_t TailleLibelle = 80;
constexpr int TailleMontant = 16;

/// Shows the numbered error and gives the refusal that bears it.
ResultatSaisie RefuseDit(CFenlorApp& app, const TexteFixe& texte, const char* champ = "",
                         std::initializer_list<std::string> arguments = {}, int indice = -1);
/// Asks the numbered question; any answer but `attendue` is the refusal.
ResultatSaisie Demande(CFenlorApp& app, unsigned style, int attendue, const TexteFixe& texte,
                       const char* champ = "", std::initializer_list<std::string> arguments = {});
/// What is asked and refused while a command runs over a selection. With more than one row a question can be
/// answered for all that follow, and refusals are told at the end, so that nobody has to answer them one by
/// one. One row: the plain question, the plain refusal.
class Serie {
 public:
  /// `rangees`: how many rows the command runs over.
  Serie(CFenlorApp& app, std::size_t rangees) : m_app(app), m_rangees(rangees) {}
  ~Serie();
  Serie(const Serie&) = delete;
  Serie& operator=(const Serie&) = delete;

  /// A question with "Oui" and "Non". `sorte`: questions that "Tous" answers together.
  ResultatSaisie Demande(unsigned style, unsigned sorte, const TexteFixe& texte,
                         std::initializer_list<std::string> arguments = {});
  ResultatSaisie Refus(const TexteFixe& erreur, std::initializer_list<std::string> arguments = {});
  /// Before each row; false when the user stopped.
  bool Suivante();
  void Arrete() { m_arretee = true; }

 private:
  CFenlorApp& m_app;
  const std::size_t m_rangees;
  std::size_t m_faites = 0;
  std::set<unsigned> m_toutes;  ///< sorts that were answered with "Tous"
  unsigned m_refusees = 0;
  unsigned m_premierRefus = 0;
  std::string m_texteRefus;
  bool m_arretee = false, m_progression = false;
};

/// The store's last failure. The operations on entries have told theirs through the
/// store's callback; those of units, files and readings are told by `RefusMagasin`.
ResultatSaisie EchecMagasin(CFenlorApp& app);
ResultatSaisie RefusMagasin(CFenlorApp& app);

/// Chart and journal of the open exercice, open while it lives, so that the many
/// operations of one save share one opening. Costs nothing where the caller of the
/// rule has both open already.
class LivresOuverts {
 public:
  /// Called once. A refusal has been told.
  ResultatSaisie Ouvre(CFenlorApp& app);

 private:
  Ouverture m_plan, m_journal;
};

/// Reads the account `compte` (long form); false when it is empty or not in the chart.
bool LitCompte(CFenlorApp& app, const std::string& compte, Plan& plan);

/// An exercice is open, and not closed; opens its books.
ResultatSaisie ControleExercice(CFenlorApp& app, LivresOuverts& livres);
/// What the user gave leave to change.
struct Permis {
  bool validee = false;
  bool liee = false;
};
/// Reads the header of an existing entry and refuses what may not be changed.
ResultatSaisie ControleExistante(CFenlorApp& app, u32 mouvement, Permis permis, Mouvement& entete);
ResultatSaisie ControleLibelle(CFenlorApp& app, const std::string& libelle, int indice = -1);
ResultatSaisie ControleMontant(CFenlorApp& app, const char* champ, f64 montant, int indice = -1);
/// A real date within the exercice.
bool DansExercice(CFenlorApp& app, Date date);
/// `ancienne`: date of the existing entry, 0 for a new one.
ResultatSaisie ControleDate(CFenlorApp& app, Date date, Date ancienne);
ResultatSaisie ControleFranc(CFenlorApp& app, bool euro, Date date);

/// Number of the entry to save: that of an existing one, or the one asked for. A new entry's is never below
/// the next free one of its journal and month, whatever the caller saw of them.
ResultatSaisie NumeroDe(CFenlorApp& app, i16 journal, u32 demande, Date date, const Mouvement& entete,
                        u32& ligne);

/// Both currencies of an amount of the master currency.
DeuxMonnaies EnDeuxMonnaies(bool euro, f64 taux, f64 montant);

/// Whole cents of an amount that a field holds.
i64 CentimesDeChamp(f64 montant);

}  // namespace fenlor

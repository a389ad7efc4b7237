// What the rules of the entry forms and of the journal's commands share. Internal
// to journal/.
#pragma once

#include <functional>
#include <optional>
#include <set>

#include "core/texte.h"
#include "journal/saisie.h"
#include "store/ouverture.h"

namespace fenlor {

constexpr std::size_t TailleLibelle = 80;
constexpr int TailleMontant = 16;

/// What is asked and refused while a command runs over a selection. With more than one row a question can be
/// answered for all that follow, and refusals are one outcome at the end, so that nobody has to answer them
/// one by one. One row: the plain question, the plain refusal.
class Serie {
 public:
  /// `rangees`: how many rows the command runs over.
  Serie(CFenlorApp& app, std::size_t rangees) : m_app(app), m_rangees(rangees) {}

  /// A question with "Oui" and "Non". `sorte`: questions that "Tous" answers together.
  Refus Demande(unsigned style, unsigned sorte, const TexteFixe& texte,
                std::initializer_list<std::string> arguments = {});
  /// Before each row; false when the user stopped.
  bool Suivante();
  /// The rows are gone through once more: what was asked is done now.
  void Recommence();
  /// What stopped one row; those that the user knows do not count.
  void Note(const Refus& refus);
  /// Of the whole command: the refusal of one row, or 3431 with the first of several.
  Refus Issue() const;

 private:
  CFenlorApp& m_app;
  const std::size_t m_rangees;
  std::size_t m_faites = 0;
  std::set<unsigned> m_toutes;  ///< sorts that were answered with "Tous"
  unsigned m_refusees = 0;
  Refus m_premier;
  bool m_arretee = false;
  std::optional<Progression> m_progression;
};

/// Chart and journal of the open exercice, open while it lives, so that the many
/// operations of one save share one opening. Costs nothing where the caller of the
/// rule has both open already.
class LivresOuverts {
 public:
  /// Called once.
  Refus Ouvre(CFenlorApp& app);

 private:
  Ouverture m_plan, m_journal;
};

/// Reads the account `compte` (long form); false when it is empty or not in the chart.
bool LitCompte(CFenlorApp& app, const std::string& compte, Plan& plan);

/// An exercice is open, and not closed; opens its books.
Refus ControleExercice(CFenlorApp& app, LivresOuverts& livres);
/// What the user gave leave to change.
struct Permis {
  bool validee = false;
  bool liee = false;
};
/// The lines of an entry in place, in order of rank, while `suite` answers true. It must not write. False:
/// the store failed.
bool ParcoursEcriture(CFenlorApp& app, u32 mouvement, const std::function<bool(const Line&)>& suite);
/// Reads the header of an entry. Refuses one that does not exist (3202).
Refus LitEntete(CFenlorApp& app, u32 mouvement, Mouvement& entete);
/// Reads the header of an existing entry and refuses what may not be changed.
Refus ControleExistante(CFenlorApp& app, u32 mouvement, Permis permis, Mouvement& entete);
Refus ControleLibelle(const std::string& libelle, int indice = -1);
Refus ControleMontant(const char* champ, f64 montant, int indice = -1);
/// A real date within the exercice.
bool DansExercice(CFenlorApp& app, Date date);
/// `ancienne`: date of the existing entry, 0 for a new one.
Refus ControleDate(CFenlorApp& app, Date date, Date ancienne);
Refus ControleFranc(CFenlorApp& app, bool euro, Date date);

/// Number of the entry to save: that of an existing one, or the one asked for. A new entry's is never below
/// the next free one of its journal and month, whatever the caller saw of them.
Refus NumeroDe(CFenlorApp& app, i16 journal, u32 demande, Date date, const Mouvement& entete, u32& ligne);

/// Both currencies of an amount of the master currency.
DeuxMonnaies EnDeuxMonnaies(bool euro, f64 taux, f64 montant);

/// Whole cents of an amount that a field holds.
i64 CentimesDeChamp(f64 montant);

}  // namespace fenlor

// What the rules of the entry forms and of the journal's commands share. Internal
// to journal/.
#pragma once

#include "journal/saisie.h"
#include "store/ouverture.h"

namespace fenlor {

constexpr std::size_t TailleLibelle = 80;
constexpr int TailleMontant = 16;

/// Shows the numbered error and gives the refusal that bears it.
ResultatSaisie Refus(CFenlorApp& app, unsigned numero, const char* champ = "",
                     std::initializer_list<std::string> arguments = {}, int indice = -1);
/// Asks the numbered question; any answer but `attendue` is the refusal.
ResultatSaisie Demande(CFenlorApp& app, unsigned style, int attendue, unsigned numero, const char* champ = "",
                       std::initializer_list<std::string> arguments = {});
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

/// Both currencies of an amount of the master currency.
struct DeuxMonnaies {
  f64 franc = 0;
  f64 euro = 0;
};
DeuxMonnaies EnDeuxMonnaies(bool euro, f64 taux, f64 montant);

/// Whole cents of an amount that a field holds.
i64 CentimesDeChamp(f64 montant);

}  // namespace fenlor

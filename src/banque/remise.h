// Cheque deposit slips: which cheques of a bank account are offered, what is ticked, and the marks that the
// slip leaves in the journal. A cheque is a line at debit of the account, paid by cheque. The report that
// prints the slip is `reports/etatremise.h`.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "banque/fichierremise.h"
#include "core/colonneliste.h"

namespace fenlor {

/// Which cheques are listed; the values are those of the form's list. `NonRemis`: neither deposited nor
/// reconciled.
enum class EtatRemise : int { NonRemis = 1, Remis = 2, RemisACetteDate = 3, Tous = 4 };
enum class MonnaieRemise { Toutes, Franc, Euro };

struct CriteresRemise {
  std::string compte;  ///< bank account, long form
  Date date = 0;       ///< of the slip
  Date du = 0, au = 0;
  EtatRemise etat = EtatRemise::NonRemis;
  MonnaieRemise monnaie = MonnaieRemise::Toutes;
  bool operator==(const CriteresRemise&) const = default;
};

/// Today, and its week in the exercice's year; a week that ends in another year shrinks to the day.
CriteresRemise CriteresRemiseProposes(CFenlorApp& app);

/// A cheque of the journal.
struct Cheque {
  Position position = 0;  ///< of the line
  u32 mouvement = 0, rang = 0;
  i16 journal = 0, genre = 0;  ///< of the entry
  Date date = 0;               ///< of the line
  std::string libelle;         ///< what the line is called on paper, too
  f64 franc = 0, euro = 0;
  bool enEuro = false;
  bool remise = false;  ///< as the journal has it
  Date dateRemise = 0;
  // As the user ticked them:
  bool remis = false, imprime = false;
  u32 rangFichier = 0;  ///< record of the working file

  f64 Montant() const { return enEuro ? euro : franc; }
};

/// The cheques of an account that the criteria let through, by date, in the order of the entries. Bounds in
/// the wrong order are put right first, and `RemisACetteDate` takes the exercice as its period.
Refus ChequesDe(CFenlorApp& app, CriteresRemise& criteres, std::vector<Cheque>& cheques);
/// The cheques of an entry, on any bank account.
Refus ChequesDeLEcriture(CFenlorApp& app, u32 mouvement, std::vector<Cheque>& cheques);
/// What the cheques come to that are ticked for the slip; none when several currencies may be among them.
std::optional<f64> TotalRemise(const std::vector<Cheque>& cheques, MonnaieRemise monnaie);
/// Ticks R and I, date, label, amount in the currency of the entry.
TableColonnes<Cheque> ColonnesCheques();

/// The list of a slip in the making, its ticks kept in the working file `chemin`. What cannot be written
/// there is not ticked.
class ListeRemise {
 public:
  ListeRemise(CFenlorApp& app, std::string chemin) : m_app(app), m_fichier(app, std::move(chemin)) {}

  /// The file anew, a record for each of `ChequesDe`, ticked as the journal has it. Refused, the list is
  /// empty.
  Refus Remplit(CriteresRemise& criteres);
  const std::vector<Cheque>& Cheques() const { return m_cheques; }

  /// Into the slip and onto the paper, or out of both. In a closed exercice 3056, here and below.
  Refus Bascule(std::size_t rang);
  void BasculeImprime(std::size_t rang);
  Refus RemetTout(bool remis);
  void ImprimeTout(bool imprime);
  /// After an entry was changed: rows follow their lines, ticks stay, and what is no cheque any more goes.
  Refus Relit();
  /// Before the slip is made from the file.
  void Ferme() { m_fichier.Ferme(); }

 private:
  Refus ControleCloture() const;
  void Pose(Cheque& cheque, bool remis, bool imprime);
  bool EcritRang(const Cheque& cheque, Position position);

  CFenlorApp& m_app;
  FichierRemise m_fichier;
  std::string m_compte;
  std::vector<Cheque> m_cheques;
};

/// Gives the lines of a working file the marks that are ticked in it, all of them as one unit of work: those
/// that come into the slip take its date, those that were there already keep theirs, those that leave it lose
/// it. 3104: no date; 3056: marks would change in a closed exercice; 3495.
Refus AppliqueRemise(CFenlorApp& app, const std::string& chemin, Date date);
/// The same for cheques by themselves; `cheques` then holds them as they stand.
Refus MarqueCheques(CFenlorApp& app, std::vector<Cheque>& cheques, bool remis, Date date);
/// The lines of the working file in its order, and whether they are on the paper, while `suite` answers true.
Refus ParcourtBordereau(CFenlorApp& app, const std::string& chemin,
                        const std::function<bool(const Line&, bool imprime)>& suite);

}  // namespace fenlor

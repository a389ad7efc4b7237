// The criteria of a report from the options of `fenlorctl etat`.
#pragma once

#include <optional>
#include <string>

#include "banque/remise.h"
#include "ctl/annuaire.h"
#include "ctl/lignecommande.h"
#include "reports/etatcomptable.h"

namespace fenlor {

/// Texts as typed, in UTF-8; none: not given.
struct OptionsCriteres {
  std::optional<std::string> du, au;  ///< "JJ/MM/AAAA"
  std::optional<std::string> mois;    ///< "MM/AAAA"
  std::optional<std::string> compte;  ///< code or number, "tous"
  std::optional<std::string> genre, centralisation, affichage;
  std::optional<std::string> cheques, date, monnaie;  ///< of a deposit slip
  bool remettre = false, progressif = false, mouvementes = false;
};

/// What a report may have a use for.
enum GroupeCriteres : unsigned {
  GroupeJours = 1,
  GroupeMois = 2,
  GroupeCompte = 4,
  GroupeGenre = 8,
  GroupeAffichage = 16,
  GroupeRemise = 32,
  GroupeDateRemise = 64,
  GroupeProgressif = 128,
  GroupeMouvements = 256,
};

void DeclareOptionsCriteres(Commande& commande, OptionsCriteres& options);
/// Account, days and month alone.
void DeclareOptionsPeriode(Commande& commande, OptionsCriteres& options, bool tous);
/// Which cheques, date of the slip, currency.
void DeclareOptionsRemise(Commande& commande, OptionsCriteres& options);
/// What is wrong with them together, whatever the report; empty: nothing.
std::string FauteOptionsCriteres(const OptionsCriteres& options);
/// First option given that is in none of these groups: "--genre"; empty: none.
std::string OptionEnTrop(const OptionsCriteres& options, unsigned groupes);

class DemandeurOptions : public DemandeurCriteres {
 public:
  /// Context, with the exercice open, and options outlive the object.
  DemandeurOptions(Contexte& contexte, const OptionsCriteres& options)
      : m_contexte(contexte), m_options(options) {}
  /// Reads the chart when the options name an account. False: told.
  bool Prepare();

  /// Takes what was typed; the rest stays as proposed. False when an option does not
  /// belong to the form, which `Faute` names, and when the account is refused: told.
  bool Demande(FormeCriteres forme, const std::string& titre, unsigned comptes,
               CriteresEtat& criteres) override;
  /// Ticks for the paper what the options let through, and with `remettre` for the slip.
  bool DemandeRemise(const std::string& fichier, CriteresRemise& criteres) override;
  /// The criteria of a slip alone: the bank account is asked for, the period is the exercice's. False: told.
  bool PoseRemise(CriteresRemise& criteres, EtatRemise etat);

  /// First option that the report has no use for; empty: none. A report that asks nothing
  /// has a use for none.
  std::string Faute() const { return OptionEnTrop(m_options, m_groupes); }
  /// The refusal of the criteria was told.
  bool Refuse() const { return m_refuse; }

 private:
  void PosePeriode(Date& du, Date& au) const;
  bool PoseCompte(unsigned comptes, std::string& compte);

  Contexte& m_contexte;
  const OptionsCriteres& m_options;
  AnnuaireComptes m_comptes;
  unsigned m_groupes = 0;  ///< GroupeCriteres, of what the report asked for
  bool m_refuse = false;
};

}  // namespace fenlor

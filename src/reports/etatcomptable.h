// What all reports of the books share: how they ask for their criteria, show their
// progress, and choose their currencies.
#pragma once

#include <string>

#include "core/texte.h"
#include "pages/etatdoc.h"

namespace fenlor {

struct CriteresRemise;

/// What a report asks before it is built.
enum class FormeCriteres {
  CompteEtPeriode,
  PeriodeEtAffichage,
  GenreEtPeriode,
  Periode,
  Compte,
  Mouvements,  ///< whether accounts without movements are listed, alone
};

/// Kinds of accounts that a form offers.
enum MasqueComptes : unsigned {
  MasqueRecettes = 1,
  MasqueDepenses = 2,
  MasqueTresorerie = 4,
  MasqueTva = 8,
  MasqueAutres = 16,
  MasqueTous = 31,
};
enum AffichageEtat : int { AffichageCreditDebit = 1, AffichageMontant = 2 };
enum GenreEtat : int { EtatRecettes = 0, EtatDepenses = 1, EtatOD = 2, EtatToutes = 3 };
enum CentralisationEtat : int { Detaillee = 0, ParJour = 1, ParSemaine = 2, ParMois = 3 };

struct CriteresEtat {
  Date du = 0, au = 0;
  std::string compte = "*";  ///< long form; "*" for all
  int affichage = AffichageCreditDebit;
  int genre = EtatToutes;
  int centralisation = Detaillee;  ///< of receipts
  bool soldeProgressif = false;    ///< of the extract: the balance behind each line
  bool mouvementes = false;        ///< accounts without a line in the period are left out
};

/// Formats of a report by account, looked up once a report.
struct FormatsCompte {
  FormatEtat rangee, total, mois;
};

/// Who answers: a form, or the options of fenlorctl.
class DemandeurCriteres {
 public:
  virtual ~DemandeurCriteres() = default;
  /// Fills the fields that belong to the form; the others stay. `criteres` holds what is
  /// proposed: the exercice, the display. False: no report.
  virtual bool Demande(FormeCriteres forme, const std::string& titre, unsigned comptes,
                       CriteresEtat& criteres) = 0;
  /// What a deposit slip is made of (`banque/remise.h`): the working file `fichier` is filled and ticked, and
  /// `criteres`, which holds what is proposed, takes the dates and the account. False: no slip.
  virtual bool DemandeRemise(const std::string& /*fichier*/, CriteresRemise& /*criteres*/) { return false; }
};

class CEtatComptable : public CEtatDoc {
 public:
  /// Both outlive the report.
  CEtatComptable(CFenlorApp& app, DemandeurCriteres& demandeur) : CEtatDoc(app), m_demandeur(demandeur) {}
  /// Caption of the window, and beginning of a file name: the report's title.
  const std::string& TitreDocument() const { return m_titreDocument; }
  /// What was asked for, after the report was built.
  const CriteresEtat& Criteres() const { return m_criteres; }

 protected:
  /// Runs the form; `titre` and `avancement` (below) are numbers of texts. False: the report is given up.
  bool DemandeCriteres(FormeCriteres forme, const TexteFixe& titre, unsigned comptes = MasqueTous);
  /// Title of the page and of the document: a text, with its arguments filled in.
  void PoseTitre(const std::string& titre);

  /// The progress window while it lives, with "Annuler".
  class Travail {
   public:
    Travail(CEtatComptable& etat, const TexteFixe& avancement, u32 maximum);
    /// One record is done. The report is given up when the user stopped it.
    void Pas();
    /// Likewise, but a report that the user stopped keeps what it has: false then.
    bool PasOuFin();
    void Recommence(u32 maximum);  ///< for a second pass

   private:
    CEtatComptable& m_etat;
    Progression m_progression;
  };

  // The three predicates about currency. Each report uses the one that it names.
  bool AfficheDouble() const;  ///< the exercice's double display: both currencies
  bool AnneeEuro() const;      ///< the year of the exercice's name is 2002 or later
  bool OptionEuro() const;     ///< the exercice is kept in Euro
  /// An amount of the year's currency, "12,50 F" or "12,50 €", and with the "D " mark of a debit.
  std::string MontantAnnee(f64 franc, f64 euro) const;
  std::string SoldeAnnee(f64 franc, f64 euro) const;

  DemandeurCriteres& Demandeur() const { return m_demandeur; }

  CriteresEtat m_criteres;

 private:
  DemandeurCriteres& m_demandeur;
  std::string m_titreDocument;
};

/// Debit and credit in both currencies.
struct SommesEtat {
  f64 debitFranc = 0, debitEuro = 0, creditFranc = 0, creditEuro = 0;
  void Ajoute(const Line& ligne);
  void Ajoute(const SommesEtat& autre);
  friend bool operator==(const SommesEtat&, const SommesEtat&) = default;
};

}  // namespace fenlor

// Fields that the forms of entries share.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "forms/journal/lecturecoupee.h"
#include "journal/choixcomptes.h"
#include "journal/ecriturelue.h"
#include "journal/libellesconnus.h"
#include "ui/choixmonnaie.h"
#include "ui/editeurs.h"
#include "ui/formulaire.h"

namespace fenlor {

/// A closed list of about so many characters, however long its rows; the wheel turns it only while
/// it has the focus, so that what scrolls a form does not change its entry.
void PrepareListe(QComboBox& liste, int caracteres);
/// The open list shows its rows whole.
void ElargitListe(QComboBox& liste);

/// The days of one month, "1" to its last; two digits can be typed. What is no day of the
/// month is erased as the field is left, and the date stays as it was.
class ChampJour : public QComboBox {
  Q_OBJECT
 public:
  explicit ChampJour(QWidget* parent = nullptr);
  /// Declares the field and the month's name beside it.
  void Declare(Formulaire& formulaire, const QString& libelle, const char* nom);
  /// Fills the list with the days of the month and preselects the day.
  void Pose(Date date);
  /// Date of the day shown; the last valid one while a day is being typed.
  Date Valeur() const { return m_date; }
  /// True when the field holds a day of the month.
  bool EstValide() const;
  /// What a form saves: 0, which every rule refuses with 3104, while the field holds no day.
  Date Saisie() const { return EstValide() ? m_date : 0; }
  /// The field was left for another one, what is no day erased before.
  void SurDepart(std::function<void()> action) { m_depart = std::move(action); }

 protected:
  void focusInEvent(QFocusEvent* evenement) override;
  void focusOutEvent(QFocusEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;

 private:
  unsigned JourTape() const;
  void Suit();
  Date m_date = 0;
  QLabel* m_mois;
  std::function<void()> m_depart;
};

/// Group "Mode de paiement": "&Chèque", "&Autre".
class ChoixPaiement {
 public:
  ChoixPaiement();
  void Declare(Formulaire& formulaire);
  /// On a bank account both are open and `mode` is marked; on any other one both are disabled, and
  /// "&Autre" is marked (`banque` false) or, without account, nothing changes but that.
  void PoseTresorerie(const CompteOffert* compte, i16 mode);
  /// Line of an opération diverse: open on a treasury account, "&Chèque" when neither is marked; else
  /// disabled, marks as they are.
  void PoseLigne(const CompteOffert* compte);
  void Marque(i16 mode);
  void Efface();  ///< neither is marked
  i16 Valeur() const { return m_autre.isChecked() ? PaiementAutre : PaiementCheque; }
  void Permet(bool permis);

 private:
  void Montre();
  QRadioButton m_cheque, m_autre;
  bool m_permis = true, m_ouvert = false;
};

/// Group "Compte": "Code :", "&Nouveau...", "Compte :", "Rubrique :". Names of the fields: "code",
/// "nouveau" (no tab stop), "compte", "rubrique".
class ChampsCompteEcriture {
 public:
  /// `comptes` reads the accounts; `nouveau` makes one, true when it did.
  ChampsCompteEcriture(CFenlorApp& app, std::function<std::vector<CompteOffert>()> comptes,
                       std::function<bool()> nouveau);
  void Declare(Formulaire& formulaire);
  /// Reads the accounts again, keeping the choice by its number.
  void Recharge();
  /// The chosen account; null when none is.
  const CompteOffert* Choisi() const;
  /// Shows an account without telling; an unknown or empty number: none.
  void Choisit(const std::string& compte);
  void Vide() { Choisit({}); }
  void Permet(bool permis);
  /// The user chose another account, typing its code or in the list; also when the choice was lost.
  /// Told with each letter while the code is typed (`EnFrappe`), and once more as the field is left.
  void SurChoix(std::function<void()> action) { m_choix = std::move(action); }
  /// The code is being typed: what is found may not be what is meant yet, so that a form does
  /// not propose a label from it.
  bool EnFrappe() const { return m_frappe; }
  /// What stands in "Code :" names no account.
  bool CodeInconnu() const;
  /// "Code :" was left forwards, by Tab or Enter, with an account found by what is typed: the form moves
  /// the focus. Comes after `SurChoix`.
  void SurCode(std::function<void()> action) { m_code = std::move(action); }
  EditeurTexte& Code() { return m_champCode; }
  std::string CodeTape() const { return m_champCode.Valeur(); }
  QComboBox& Liste() { return m_liste; }

 private:
  class Depart;
  void Montre(int rang);
  int Trouve() const;
  void ChercheCode();
  QStringList Propose(const std::string& tape);
  void Prend(int rang);
  void Nouveau();
  void QuitteCode(bool enAvant);
  CFenlorApp& m_app;
  std::function<std::vector<CompteOffert>()> m_source;
  std::function<bool()> m_nouveau;
  std::vector<CompteOffert> m_comptes;
  std::vector<std::string> m_proposes;  ///< numbers of the accounts in the list under the code
  EditeurTexte m_champCode;
  QPushButton m_boutonNouveau;
  QComboBox m_liste;
  Lecture m_rubrique;
  bool m_frappe = false;
  std::function<void()> m_choix, m_code;
};

/// A label: 80 characters, with the ready-made labels to choose from and, first of them, the
/// one last used with the account. Down looks for the next one that begins with what is typed.
class ChampLibelle : public QComboBox {
  Q_OBJECT
 public:
  explicit ChampLibelle(QWidget* parent = nullptr);
  /// Fills the list from the labels file; the text stays.
  void Charge(CFenlorApp& app);
  /// First row of the list; empty: none.
  void ProposeDernier(const std::string& libelle);
  /// Labels typed before for the account, which are proposed while one types before those of the list.
  void PoseConnus(std::vector<LibelleConnu> connus) { m_connus = std::move(connus); }
  /// What is known of the label that stands there; null for none.
  const LibelleConnu* Connu() const { return ConnuDe(m_connus, Valeur()); }
  std::string Valeur() const;
  void Pose(const std::string& libelle);
  /// A label that nobody typed is that of the account.
  void Propose(const std::string& designation);
  void SurChangement(std::function<void()> action);  ///< by the user

 protected:
  void focusInEvent(QFocusEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;

 private:
  bool Cherche(int pas);
  QStringList Proposes(const QString& tape);
  EditeurTexte* m_editeur;
  std::vector<LibelleConnu> m_connus;
  std::vector<std::string> m_liste, m_proposes;
  bool m_dernier = false;
  QString m_debut;        ///< typed, empty after a choice
  std::string m_propose;  ///< not typed
};

/// Codes of the treasury accounts, chosen or typed as in "Code :". A text that names none chooses none.
class ChoixTresorerie : public QComboBox {
  Q_OBJECT
 public:
  explicit ChoixTresorerie(QWidget* parent = nullptr);
  void Charge(CFenlorApp& app);
  int Nombre() const { return static_cast<int>(m_comptes.size()); }
  const CompteOffert* Choisi() const;
  /// False, and the first one is chosen, when the account is not there.
  bool Choisit(const std::string& compte);
  /// What was typed and names no account; empty: nothing.
  std::string Inconnu() const;
  void RetapeInconnu(const std::string& texte);

 private:
  std::vector<CompteOffert> m_comptes;
};

/// A treasury account and the mode of payment that it allows. Names of the fields: "tresorerie",
/// "designation", "cheque", "autre". A form declares all of it, or the account with its designation beside it
/// in one place and the modes in another.
class ChampsTresorerieEcriture {
 public:
  void Charge(CFenlorApp& app) { m_code.Charge(app); }
  void Declare(Formulaire& formulaire);
  void DeclareCompte(Formulaire& formulaire, const QString& libelle);
  void DeclarePaiement(Formulaire& formulaire) { m_paiement.Declare(formulaire); }
  /// Shows the account (empty: the one that stands there) with a mode.
  void Pose(const std::string& compte, i16 paiement);
  const CompteOffert* Choisi() const { return m_code.Choisi(); }
  i16 Marque() const { return m_paiement.Valeur(); }
  /// Of a line: "Chèque" where there is no choice.
  i16 Paiement() const { return m_banque ? m_paiement.Valeur() : i16{PaiementCheque}; }
  void Permet(bool permis);
  QWidget& Code() { return m_code; }
  std::string Inconnu() const { return m_code.Inconnu(); }
  void RetapeInconnu(const std::string& texte) {
    m_code.RetapeInconnu(texte);
    Suit();
  }

 private:
  void Suit();
  void Montre(i16 paiement);
  bool m_banque = false;        ///< the account shown has a payment mode
  i16 m_mode = PaiementCheque;  ///< the one to mark on the next bank account
  ChoixTresorerie m_code;
  LectureCoupee m_designation;
  ChoixPaiement m_paiement;
};

/// A tick that is shown and not clicked, no tab stop.
class Coche : public QCheckBox {
  Q_OBJECT
 public:
  explicit Coche(QWidget* parent = nullptr);

 protected:
  void nextCheckState() override {}
};

/// The marks of a line, shown and not clicked. Names of the fields: "pointee", "rapprochee", "remise",
/// "validee".
class CochesMarques {
 public:
  void Declare(Formulaire& formulaire);
  void Pose(const MarquesEcriture& marques);

 private:
  Coche m_pointee, m_rapprochee, m_remise, m_validee;
};

/// Tool tip of an amount: what it is in the other currency, at the exercice's rate. `montant` gives the
/// figure shown (none: no tip), `euro` its currency.
void AstuceAutreMonnaie(QWidget& champ, CFenlorApp& app, std::function<std::optional<f64>()> montant,
                        std::function<bool()> euro);
/// The same of an amount that is typed.
void AstuceAutreMonnaie(EditeurMontant& champ, CFenlorApp& app, bool euro);

}  // namespace fenlor

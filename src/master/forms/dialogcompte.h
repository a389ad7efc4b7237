// What the three forms of an account have in common: code, number and designation,
// the title, saving in series, and the walk through the list behind them.
#pragma once

#include "master/comptes.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

class ComptesView;

class DialogCompte : public CZNDialog {
  Q_OBJECT
 public:
  /// Something was saved, however the form ended.
  bool AChange() const { return m_aChange; }
  /// Record that was last saved or shown; 0 when none was.
  Position Derniere() const { return m_derniere; }
  /// Ends at once when there is no such record, which has been told.
  int exec() override;

 protected:
  /// `vue` may be null: then there is nothing to walk. `position` 0 adds.
  DialogCompte(ContexteUi& contexte, const char* nom, FormeCompte forme, i16 type, ComptesView* vue,
               Position position, QWidget* parent);

  void ChampCode(Formulaire& formulaire, const QString& libelle);
  void ChampNumero(Formulaire& formulaire, const QString& libelle);
  void ChampDesignation(Formulaire& formulaire, const QString& libelle);
  /// Last line of a constructor: the buttons, and the account in the fields.
  void Ouvre();

  bool Ajout() const { return m_fiche.position == 0; }
  const FicheCompte& Fiche() const { return m_fiche; }
  const Plan& Compte() const { return m_compteLu; }
  EditeurTexte& Code() { return m_code; }
  EditeurTexte& Numero() { return m_numero; }
  EditeurTexte& Designation() { return m_designation; }
  void MontreTitre();

  /// The account in the fields, with what can be typed for it.
  virtual void Montre();
  virtual void Lit(FicheCompte& fiche) const;
  /// A form for the next account.
  virtual FicheCompte Suivante();
  virtual i16 Type() const { return m_fiche.type; }

  bool Enregistre() override;
  void Vide() override;
  void Voisin(int pas) override;

 private:
  FicheCompte Saisie() const;
  void Presente();
  void QuitteCode();
  void QuitteNumero();
  const FormeCompte m_forme;
  ComptesView* m_vue;
  FicheCompte m_fiche;  ///< as it stands in the file
  Plan m_compteLu{};
  bool m_lu = true;
  bool m_aChange = false;
  Position m_derniere = 0;
  EditeurTexte m_code, m_numero, m_designation;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

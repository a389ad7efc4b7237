// What the three forms of an account have in common: code, number and designation, and the title.
#pragma once

#include "master/comptes.h"
#include "ui/dialogfiche.h"

namespace fenlor {

class DialogCompte : public FormulaireFiche<FicheCompte> {
  Q_OBJECT
 protected:
  /// `type`: of a new account.
  DialogCompte(ContexteUi& contexte, const char* nom, FormeCompte forme, i16 type, SuiteFiches* vue,
               Position position, QWidget* parent);

  void CodeEtNumero(Formulaire& formulaire, const QString& code, const QString& numero);

  const Plan& Compte() const { return m_compte; }
  EditeurTexte& Code() { return m_code; }
  EditeurTexte& Numero() { return m_numero; }
  EditeurTexte& Designation() { return m_designation; }
  virtual i16 Type() const { return EnMain().type; }

  void Montre() override;
  QString Titre() const override;
  Refus Lit(Position position, FicheCompte& fiche) override {
    fiche.forme = m_forme;
    return LitFiche(App(), position, fiche, m_compte);
  }
  FicheCompte Nouvelle() override;
  Refus Sauve(FicheCompte& fiche) override;

 private:
  void QuitteNumero();
  const FormeCompte m_forme;
  i16 m_type;       ///< of the next account
  Plan m_compte{};  ///< as read, with its totals
  EditeurTexte m_code, m_numero, m_designation;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

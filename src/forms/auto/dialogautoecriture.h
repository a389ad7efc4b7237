// `CDialogAutoEcriture`: the model of a recurring receipt or expense.
#pragma once

#include "auto/modeleauto.h"
#include "forms/journal/ajoutlibelles.h"
#include "forms/journal/champsecriture.h"
#include "forms/journal/champsmontants.h"
#include "ui/dialogfiche.h"

namespace fenlor {

class CDialogAutoEcriture : public FormulaireFiche<FicheAuto> {
  Q_OBJECT
 public:
  /// `suite` may be null; `position` is the number of the model, 0 adds.
  CDialogAutoEcriture(ContexteUi& contexte, SuiteFiches* suite, Position position, QWidget* parent = nullptr);
  ~CDialogAutoEcriture() override;
  /// Labels that were added are written back, whichever button ended the form.
  void done(int resultat) override;

 protected:
  void Montre() override;
  QString Titre() const override;
  FicheAuto Saisie() override;
  FicheAuto Nouvelle() override;
  void Pointe(const Refus& refus) override;

 private:
  void Declare();
  void DeclareTransactions(Formulaire& formulaire);
  i16 Genre() const;
  i16 TypeCompte() const;
  void GenreChange();
  void CompteChange();
  void PeriodiciteChange();
  void QuitteNombre();
  void MontreNombre(const FicheAuto& fiche);

  EditeurChoix m_genre;
  EditeurDate m_date;
  ChampsTresorerieEcriture m_tresorerie;
  ChampsCompteEcriture m_compte;
  ChampLibelle m_libelle;
  AjoutLibelles* m_ajoutLibelles = nullptr;
  ChampsMontants m_montants;
  EditeurChoix m_periodicite;
  EditeurTexte m_nombre;
  Lecture m_avancement;
  QRadioButton m_automatique, m_annoncer;
  ChoixMonnaie m_monnaie;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

// `CDialogMouvement`: an opération diverse, a list of debits and credits on any accounts.
#pragma once

#include "forms/journal/dialogline.h"
#include "forms/journal/formulaireecriture.h"

namespace fenlor {

class ListeEditee;

/// A new entry leaves the form open for the next one.
class CDialogMouvement : public FormulaireEcriture {
  Q_OBJECT
 public:
  CDialogMouvement(ContexteUi& contexte, const OuvertureEcriture& ouverture, QWidget* parent = nullptr);
  ~CDialogMouvement() override;

  /// It ended by "N&ouvelle": a blank form is wanted next.
  bool NouvelleVoulue() const { return m_nouvelle; }

 protected:
  bool Enregistre() override;
  void Pointe(const Refus& refus) override;
  void Vide() override;
  bool Modifie() const override;
  bool Charge(u32 mouvement) override;
  /// With the lines as they are.
  void Actualise() override;
  std::optional<SaisieSuspendue> Suspendue() const override;
  void Reprend(const SaisieSuspendue& reprise) override;

 private:
  void Declare();
  void PoseBoutons();
  void Nouvelle();
  SaisieOD Saisie() const;
  bool Verrouillee() const { return m_validee || m_liee; }
  void Supprime();
  void OuvreLigne(bool modification, const std::optional<LigneSuspendue>& reprise = {});
  void ChangeMonnaie();
  void Force();
  void SuitLibelle();
  void ActualiseEtat();

  LignesOD m_lignes;
  CDialogLine* m_ligneOuverte = nullptr;
  std::string m_libelleDesLignes;  ///< of the entry, as its lines know it
  bool m_etaitValidee = false;     ///< as the entry was read
  bool m_forcee = false;           ///< the hidden command was used
  bool m_modifiee = false;         ///< something about a line
  bool m_nouvelle = false;
  ListeEditee* m_liste;
  Lecture m_solde;
  Coche m_coche;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

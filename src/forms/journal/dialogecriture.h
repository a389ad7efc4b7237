// `CDialogEcriture`: a receipt or an expense, paid through one treasury account (simple) or
// several (multiple).
#pragma once

#include "core/btfiles.h"
#include "forms/journal/ajoutlibelles.h"
#include "forms/journal/champsmontants.h"
#include "forms/journal/formulaireecriture.h"
#include "forms/journal/zonetresorerie.h"
#include "journal/ecriturelue.h"

namespace fenlor {

/// A new entry is followed by the next one: the form clears itself and stays. An existing entry can be
/// left for its neighbours in the journal window; opérations diverses among them are passed over.
class CDialogEcriture : public FormulaireEcriture {
  Q_OBJECT
 public:
  CDialogEcriture(ContexteUi& contexte, const OuvertureEcriture& ouverture, QWidget* parent = nullptr);
  ~CDialogEcriture() override;
  /// Of a new entry with an amount, asks whether to save it before.
  void done(int resultat) override;

 protected:
  bool Enregistre() override;
  void Pointe(const Refus& refus) override;
  void Vide() override;
  bool Modifie() const override;
  void showEvent(QShowEvent* evenement) override;
  bool Charge(u32 mouvement) override;
  void Actualise() override;
  std::optional<SaisieSuspendue> Suspendue() const override;
  void Reprend(const SaisieSuspendue& reprise) override;

 private:
  /// Validated, linked, or of a closed exercice.
  bool Fige() const { return m_validee || m_liee || m_cloture; }
  std::vector<CompteOffert> Comptes();
  bool NouveauCompte();
  bool LitCompteChoisi(Plan& plan);

  void Declare();
  void DeclareEtat(Formulaire& formulaire);
  void PoseBoutons();

  void Montre(const EcritureLue& ecriture);
  void Propose(const SaisieEcriture& saisie);
  void MontreCompte(const std::string& compte);
  void MontreMarques(const MarquesEcriture& marques);

  void CompteChange();
  void TresorerieChange();
  /// Offers in grey what came with this label the last time; Ctrl+Enter takes it.
  void MontreOffre();
  void PrendOffre();
  void Deverrouille();
  SaisieEcriture Saisie() const;

  CPlan m_plan;  ///< held open with the journal, so that a save does not open them
  CLines m_lines;
  u32 m_ligne = 0;  ///< of the entry shown, 0 for a new one
  bool m_delie = false;
  bool m_reprise = false;      ///< what stands there was typed before the program ended, and is not saved
  std::string m_compteDehors;  ///< personal account of an entry that has no other

  ChampsCompteEcriture m_compte;
  QLabel m_offre;
  std::optional<EcritureLue> m_offerte;
  AjoutLibelles* m_ajoutLibelles = nullptr;
  ChampsMontants m_montants;
  ZoneTresorerie* m_tresorerie = nullptr;
  Coche m_remise, m_rapprochee, m_marqueValidee;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

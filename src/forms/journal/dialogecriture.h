// `CDialogEcriture`: a receipt or an expense, paid through one treasury account (simple) or
// several (multiple).
#pragma once

#include "core/btfiles.h"
#include "forms/journal/ajoutlibelles.h"
#include "forms/journal/champsecriture.h"
#include "forms/journal/champsmontants.h"
#include "forms/journal/ecritures.h"
#include "forms/journal/gardesaisie.h"
#include "forms/journal/voisins.h"
#include "forms/journal/zonetresorerie.h"
#include "journal/ecriturelue.h"
#include "ui/czndialog.h"

namespace fenlor {

/// A new entry is followed by the next one: the form clears itself and stays. An existing entry can be
/// left for its neighbours in the journal window; opérations diverses among them are passed over.
class CDialogEcriture : public CZNDialog {
  Q_OBJECT
 public:
  CDialogEcriture(ContexteUi& contexte, const OuvertureEcriture& ouverture, QWidget* parent = nullptr);
  ~CDialogEcriture() override;

  /// The journal was changed while the form was open.
  bool Change() const { return m_change; }
  /// Entry last saved, 0 when none was.
  u32 Derniere() const { return m_derniere; }
  /// Entry shown, 0 for a new one.
  u32 Montree() const { return m_mouvement; }

  /// Ends at once when the entry cannot be shown, which has been told.
  int exec() override;
  /// Of a new entry with an amount, asks whether to save it before.
  void done(int resultat) override;

 protected:
  bool Enregistre() override;
  void Pointe(const Refus& refus) override;
  void Vide() override;
  const TexteFixe& QuestionFermer() const override;
  void Voisin(int pas) override;
  bool Modifie() const override;
  void showEvent(QShowEvent* evenement) override;

 private:
  bool Ajout() const { return m_ouverture.mouvement == 0; }
  /// Validated, linked, or of a closed exercice.
  bool Fige() const { return m_validee || m_liee || m_cloture; }
  std::vector<CompteOffert> Comptes();
  bool NouveauCompte();
  bool LitCompteChoisi(Plan& plan);

  void Declare();
  void DeclareEtat(Formulaire& formulaire);
  void PoseBoutons();

  bool Charge(u32 mouvement);
  void Montre(const EcritureLue& ecriture);
  void Propose(const SaisieEcriture& saisie);
  void Reprend(const SaisieSuspendue& reprise);
  std::optional<SaisieSuspendue> Suspendue() const;
  void MontreCompte(const std::string& compte);
  void MontreMarques(const MarquesEcriture& marques);
  void ActualiseEtat();

  void CompteChange();
  void TresorerieChange();
  /// Offers in grey what came with this label the last time; Ctrl+Enter takes it.
  void MontreOffre();
  void PrendOffre();
  void Deverrouille();
  SaisieEcriture Saisie() const;
  void NoteVoisins();

  const OuvertureEcriture m_ouverture;
  const bool m_cloture;
  CPlan m_plan;  ///< held open with the journal, so that a save does not open them
  CLines m_lines;
  bool m_lu = true, m_vue = false;
  u32 m_mouvement = 0;  ///< shown, 0 for a new one
  u32 m_ligne = 0;      ///< of the entry shown, 0 for a new one
  bool m_validee = false, m_liee = false, m_delie = false;
  bool m_change = false;
  bool m_reprise = false;  ///< what stands there was typed before the program ended, and is not saved
  u32 m_derniere = 0;
  VoisinsEcriture m_voisins;
  std::string m_compteDehors;  ///< personal account of an entry that has no other

  ChampJour m_jour;
  ChampsCompteEcriture m_compte;
  ChampLibelle m_libelle;
  QLabel m_offre;
  std::optional<EcritureLue> m_offerte;
  AjoutLibelles* m_ajoutLibelles = nullptr;
  ChampsMontants m_montants;
  ZoneTresorerie* m_tresorerie = nullptr;
  ChoixMonnaie m_monnaie;
  Coche m_pointee, m_remise, m_rapprochee, m_marqueValidee;
  GardeSaisie m_garde{App(), *this, [this] { return Suspendue(); }};
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

// `CDialogMouvement`: an opération diverse, a list of debits and credits on any accounts.
#pragma once

#include "forms/journal/champsecriture.h"
#include "forms/journal/dialogline.h"
#include "forms/journal/ecritures.h"
#include "forms/journal/gardesaisie.h"
#include "forms/journal/voisins.h"
#include "ui/czndialog.h"

namespace fenlor {

class ListeEditee;

/// A new entry leaves the form open for the next one.
class CDialogMouvement : public CZNDialog {
  Q_OBJECT
 public:
  CDialogMouvement(ContexteUi& contexte, const OuvertureEcriture& ouverture, QWidget* parent = nullptr);
  ~CDialogMouvement() override;

  /// The journal was changed while the form was open.
  bool Change() const { return m_derniere != 0; }
  u32 Derniere() const { return m_derniere; }  ///< entry last saved, 0 when none was
  /// It ended by "N&ouvelle": a blank form is wanted next.
  bool NouvelleVoulue() const { return m_nouvelle; }
  u32 Montree() const { return m_ouverture.mouvement; }  ///< entry shown, 0 for a new one
  /// Ends at once when there is no such entry, which has been told.
  int exec() override;
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
  void Declare();
  void PoseBoutons();
  void Nouvelle();
  bool Charge(u32 mouvement);
  void Reprend(const SaisieSuspendue& reprise);
  SaisieOD Saisie() const;
  std::optional<SaisieSuspendue> Suspendue() const;
  bool Verrouillee() const { return m_validee || m_liee; }
  void Supprime();
  void OuvreLigne(bool modification, const std::optional<LigneSuspendue>& reprise = {});
  void ChangeMonnaie();
  void Force();
  void SuitLibelle();
  void MontreLignes();
  void Actualise();

  OuvertureEcriture m_ouverture;
  const bool m_cloture;
  bool m_lue = true, m_vue = false;
  LignesOD m_lignes;
  CDialogLine* m_ligneOuverte = nullptr;
  std::string m_libelleDesLignes;  ///< of the entry, as its lines know it
  bool m_validee = false, m_liee = false;
  bool m_etaitValidee = false;  ///< as the entry was read
  bool m_forcee = false;        ///< the hidden command was used
  bool m_modifiee = false;      ///< something about a line
  bool m_nouvelle = false;
  u32 m_derniere = 0;
  VoisinsEcriture m_voisins;
  ChampJour m_jour;
  ChampLibelle m_libelle;
  ListeEditee* m_liste;
  Lecture m_solde;
  Coche m_pointee, m_coche;
  ChoixMonnaie m_monnaie;
  GardeSaisie m_garde{App(), *this, [this] { return Suspendue(); }};
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

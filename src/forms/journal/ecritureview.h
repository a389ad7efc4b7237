// `CEcritureView`: the window of a journal, one month at a time.
#pragma once

#include <QPointer>
#include <functional>
#include <optional>

#include "forms/journal/ecritures.h"
#include "journal/listejournal.h"
#include "ui/vue.h"

class QLabel;

namespace fenlor {

class BandeTotaux;
class CEcrCombo;
class CEcrList;
class CMonth;

/// What the document of a journal window is.
struct CEcritureDoc {
  i16 Journal = JournalRecettes;
};

class CEcritureView : public Vue, public ListeEcritures {
  Q_OBJECT
 public:
  CEcritureView(ContexteUi& contexte, i16 journal);
  ~CEcritureView() override;

  void Charge() override;
  void Actualise() override { RefreshJournal(); }
  void AppliqueDessin() override;
  bool PeutFermer() override;  ///< notes the state of the window

  int GetEcrCount() const override;
  int GetEcrSel() const override;
  u32 GetEcrId(int ligne) const override;
  void SelectPrev() override;
  void SelectNext() override;
  // One row of the list. Rows count from 0; an index of -1 stands for none.
  virtual int FindEcrItem(u32 mouvement) const;
  virtual void SelectEcrItem(int ligne);  ///< this one alone, brought into view
  void RefreshJournal() override;
  /// Shows an entry of this journal, whatever stands in its way: month, account, drafts or not, criteria,
  /// filter. Its row is chosen.
  void MontreEcriture(u32 mouvement, Date date);

  /// What the list is made of now; the printed journal takes the same.
  DemandeListe Demande() const;
  /// Shows the month of a day, as far as the exercice has it.
  void MontreMois(Date jour);
  /// Opens the form again as it stood when the program ended, over the month of its date.
  void Reprend(const SaisieSuspendue& reprise);
  bool JournalComptable() const { return m_journalComptable; }
  /// The menu of the right button.
  static std::vector<unsigned> MenuContextuel();

  CEcrList& Liste() { return *m_liste; }
  const TotauxListe& Totaux() const { return m_totaux; }
  const TotauxListe& TotauxChoisis() const { return m_totauxChoisis; }

 protected:
  void showEvent(QShowEvent* evenement) override;

 private:
  /// Of the selected rows, read when a command asks; forgotten with the selection.
  struct EtatSelection {
    bool brouillon = false;     ///< one is a draft
    bool rapprochable = false;  ///< one has a line that can be reconciled
    bool pointee = false;       ///< the first one
    bool rapprochee = false;    ///< every such line of the first one
  };

  bool EstOD() const { return m_document.Journal == JournalOD; }
  bool Comptable() const { return m_journalComptable || EstOD(); }
  void Dispose();
  void MontreDessin();
  std::string Filtre() const;
  void MontreSelection();
  void MontreEntete();
  void MontreVide();
  void LitEtat();
  void SauveEtat();
  int MoisDuJour() const;
  void ChangeMois();
  void ChangeMode(u16 mode);
  void BasculeComptable();

  void SelectionChange(const std::vector<int>& ajoutees, const std::vector<int>& retirees);
  /// Adds (1) or takes away (-1) what these entries hold, to the cent.
  void Additionne(TotauxListe& totaux, int signe, const std::vector<u32>& mouvements);
  std::vector<u32> MouvementsDe(const std::vector<int>& lignes) const;
  std::vector<u32> Choisis() const;
  const EtatSelection& Etat() const;

  // Commands, in ecriturecommandes.cpp
  void DeclareCommandes();
  bool PeutRapprocher() const;
  Date DateProposee();
  void Ajoute();
  void Modifie();
  void OuvreForme(u32 mouvement, const SaisieSuspendue* reprise = nullptr);
  void Supprime();
  void Pointe();
  void Rapproche();
  void Valide();
  void ChangeDate();
  void Renumerote();
  void AutreMois();
  void Criteres();
  void RetireNonListees();
  bool RefuseCloture();

  CEcritureDoc m_document;
  std::string m_exercice;  ///< that was open when the window was made
  u16 m_mode = ListeBrouillard;
  bool m_journalComptable = true;
  CritereEcriture m_criteres;
  TotauxListe m_totaux, m_totauxChoisis;
  mutable std::optional<EtatSelection> m_etat;
  bool m_charge = false;
  QLabel* m_entete;
  QLabel* m_legende;
  QLabel* m_libelleCompte;
  CEcrCombo* m_combo;
  CMonth* m_mois;
  CEcrList* m_liste;
  BandeTotaux* m_bande;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

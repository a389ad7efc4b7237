// What the forms of entries have in common: what they tell the journal window, the entry's neighbours there,
// day, label and currency, and typing that outlives the program.
#pragma once

#include "forms/journal/champsecriture.h"
#include "forms/journal/ecritures.h"
#include "forms/journal/gardesaisie.h"
#include "forms/journal/voisins.h"
#include "ui/czndialog.h"

namespace fenlor {

class FormulaireEcriture : public CZNDialog {
  Q_OBJECT
 public:
  /// The journal was changed while the form was open.
  bool Change() const { return m_change; }
  u32 Derniere() const { return m_derniere; }  ///< entry last saved, 0 when none was
  u32 Montree() const { return m_mouvement; }  ///< entry shown, 0 for a new one
  /// Ends at once when the entry cannot be shown, which has been told.
  int exec() override;
  void done(int resultat) override;

 protected:
  FormulaireEcriture(ContexteUi& contexte, const QString& titre, const char* nom,
                     const OuvertureEcriture& ouverture, QWidget* parent);

  bool Ajout() const { return m_ouverture.mouvement == 0; }
  /// The list behind the form can be walked through.
  bool ADesVoisins() const { return !Ajout() && m_ouverture.proprietaire && !m_ouverture.consultation; }
  /// Day and currency of a new entry.
  void Commence();
  /// Entries of the other kind among the rows are passed over.
  void NoteVoisins(bool operationsDiverses);
  void MontreVoisins();
  void NoteFaite(const EcritureFaite& faite);

  /// Shows an entry; false when it cannot be read, which has been told.
  virtual bool Charge(u32 mouvement) = 0;
  /// What can be typed, after every change.
  virtual void Actualise() = 0;
  /// What would be lost with the program, and how it comes back.
  virtual std::optional<SaisieSuspendue> Suspendue() const = 0;
  virtual void Reprend(const SaisieSuspendue& reprise) = 0;

  const TexteFixe& QuestionFermer() const override;
  void Voisin(int pas) override;
  void showEvent(QShowEvent* evenement) override;

  OuvertureEcriture m_ouverture;
  const bool m_cloture;
  bool m_lue = true;
  bool m_change = false;
  u32 m_mouvement;  ///< shown, 0 for a new one
  bool m_validee = false, m_liee = false;
  ChampJour m_jour;
  ChampLibelle m_libelle;
  ChoixMonnaie m_monnaie;
  Coche m_pointee;
  GardeSaisie m_garde{App(), *this, [this] { return Suspendue(); }};

 private:
  bool m_vue = false;
  u32 m_derniere = 0;
  VoisinsEcriture m_voisins;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

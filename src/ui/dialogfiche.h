// The form of a record, whose fields and rules are those of the record (`core/fiche.h`). Its subclass says
// how the form looks, and what else follows from its fields; buttons, limits, reading and writing of fields
// and of the record, saving in series, the walk through the list behind the form, the closed exercice and
// the refusals stand here.
//
//   CDialogTiers::CDialogTiers(ContexteUi& contexte, SuiteFiches* vue, Position position, QWidget* parent)
//       : FormulaireFiche(contexte, "DialogTiers", vue, position, parent), m_plafond(contexte.App.Reglages) {
//     Champs().Champ(u"&Code :"_s, m_code, "code").Champ(u"Pla&fond :"_s, m_plafond, "plafond").Pousse();
//     Ouvre();
//   }
#pragma once

#include <functional>

#include "core/fiche.h"
#include "ui/champsfiche.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"
#include "ui/suitefiches.h"

namespace fenlor {

/// What does not depend on the type of the record.
class DialogFiche : public CZNDialog {
  Q_OBJECT
 public:
  /// Something was saved, however the form ended.
  bool AChange() const { return m_aChange; }
  /// Record that was last saved or shown; 0 when none was.
  Position Derniere() const { return m_derniere; }
  /// Ends at once when there is no such record, which has been told.
  int exec() override;

 protected:
  DialogFiche(ContexteUi& contexte, const char* nom, const TableFiche& table, void* fiche, SuiteFiches* vue,
              Position position, QWidget* parent);

  /// For the constructor: fields named as those of the table get their limits.
  Formulaire Champs() { return Formulaire(Zone(), &m_table); }
  /// Last line of a constructor: the buttons, and the record in the fields.
  void Ouvre();
  bool Ajout() const { return m_position == 0; }

  /// The record in the fields, with what can be typed for it.
  virtual void Montre() { MontreChamps(); }
  virtual QString Titre() const = 0;
  void MontreTitre() { setWindowTitle(Titre()); }
  // The fields of the form that the table names, as `ui/champsfiche.h` tells.
  void MontreChamps() { fenlor::MontreChamps(Zone(), m_table, m_fiche); }
  void LitChamps(void* fiche) { fenlor::LitChamps(Zone(), m_table, fiche); }
  void LitChamp(const char* nom, void* fiche) { fenlor::LitChamp(Zone(), m_table, nom, fiche); }

  bool Enregistre() override;
  void Vide() override;
  void Voisin(int pas) override;

  virtual bool LitA(Position position) = 0;  ///< into the value in hand; false, told: there is none
  virtual void Commence() = 0;               ///< a value for a new record
  virtual Refus SauveSaisie(Position& position) = 0;

 private:
  void Presente();
  const TableFiche& m_table;
  void* m_fiche;
  SuiteFiches* m_vue;
  Position m_position;  ///< of the record in hand, 0 for a new one
  bool m_lu = true;
  bool m_aChange = false;
  Position m_derniere = 0;
  FinDesLiens m_finLiens{*this};
};

template <class F>
class FormulaireFiche : public DialogFiche {
 public:
  using Fiche = F;

 protected:
  /// `vue` may be null: then there is nothing to walk. `position` 0 adds.
  FormulaireFiche(ContexteUi& contexte, const char* nom, SuiteFiches* vue, Position position, QWidget* parent)
      : DialogFiche(contexte, nom, Fiche::Table, &m_fiche, vue, position, parent) {}

  /// As it stands in the file; a form may keep in it what its fields do not show.
  Fiche& EnMain() { return m_fiche; }
  const Fiche& EnMain() const { return m_fiche; }
  /// With what is typed.
  virtual Fiche Saisie() {
    Fiche fiche = m_fiche;
    LitChamps(&fiche);
    return fiche;
  }
  /// For `SurDepart`: the check of a text that was changed.
  std::function<void()> Controle(EditeurTexte& champ, std::string Fiche::*texte,
                                 Refus (*controle)(CFenlorApp&, const Fiche&)) {
    return [this, &champ, texte, controle] {
      if (!champ.isReadOnly() && champ.Valeur() != m_fiche.*texte) Refuse(controle(App(), Saisie()));
    };
  }
  virtual Refus Lit(Position position, Fiche& fiche) { return LitFiche(App(), position, fiche); }
  /// For a new record, when the form opens or the one before was saved.
  virtual Fiche Nouvelle() { return {}; }
  virtual Refus Sauve(Fiche& fiche) { return EnregistreFiche(App(), fiche); }

 private:
  bool LitA(Position position) final {
    Fiche fiche;
    if (!App().Dit(Lit(position, fiche))) return false;
    m_fiche = fiche;
    return true;
  }
  void Commence() final { m_fiche = Nouvelle(); }
  Refus SauveSaisie(Position& position) final {
    Fiche fiche = Saisie();
    Refus refus = Sauve(fiche);
    if (refus) return refus;
    App().Dit(AvisFiche(App(), fiche));
    position = fiche.position;
    if (!Ajout()) m_fiche = fiche;
    return {};
  }
  Fiche m_fiche;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

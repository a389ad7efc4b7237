// A list of records that have a form: what the lists of accounts and of headings have
// in common. Rows are the records' positions, with an empty row at the end.
#pragma once

#include <functional>
#include <memory>
#include <type_traits>

#include "core/fiche.h"
#include "ui/cznlistview.h"
#include "ui/dialogfiche.h"

namespace fenlor {

class FichesView : public CZNListView, public SuiteFiches {
  Q_OBJECT
 public:
  Position Voisin(int pas) const override;
  void VaVers(int pas) override;
  void Remplace(Position position) override;

 protected:
  /// The form of a record, 0 for a new one.
  using Fabrique = std::function<std::unique_ptr<DialogFiche>(Position)>;
  FichesView(ContexteUi& contexte, const TexteFixe& titre, u32 bit, Fabrique forme);
  /// The columns of a file that is open, or could not be: then rows are empty.
  template <class Fiche, class Fichier>
  void DefinitFiches(Fichier& fichier, TableColonnes<Fiche> colonnes) {
    Table().Definit<Fiche>(std::move(colonnes), [&fichier](ModeleListe::Donnee position, Fiche& fiche) {
      if (position == 0 || fichier.NbOuvertures == 0) return false;
      if (!fichier.ReadRec(static_cast<Position>(position))) return false;
      fiche = *fichier.Rec;
      return true;
    });
  }

  /// Records in the list's own order.
  virtual std::vector<Position> Positions() = 0;
  /// Deletes by the rules; 0 for the empty row of a closed exercice, which refuses.
  virtual Refus SupprimeA(Position position) = 0;

  void FillList() override;

 private:
  Position Choisie() const;
  void Saisit(Position position);
  void Supprime();
  const Fabrique m_forme;
  FinDesLiens m_finLiens{*this};
};

/// All records of a file of the exercice in order of its first key: the list is its title and its columns.
/// `Forme` is made of the session, the list and a position.
template <class Forme, class Fichier>
class ListeDeFiches : public FichesView {
 protected:
  using Fiche = typename Forme::Fiche;
  using Enregistrement = std::remove_pointer_t<decltype(Fichier::Rec)>;

  ListeDeFiches(ContexteUi& contexte, const TexteFixe& titre, u32 bit, TableColonnes<Enregistrement> colonnes)
      : FichesView(contexte, titre, bit,
                   [this](Position p) { return std::make_unique<Forme>(Contexte(), this, p); }),
        m_fichier(contexte.App, contexte.App.PathExercice) {
    m_fichier.OpenFile();
    DefinitFiches(m_fichier, std::move(colonnes));
  }

  std::vector<Position> Positions() override {
    Fichier fichier(App(), App().PathExercice);
    return PositionsDe(App(), fichier);
  }
  Refus SupprimeA(Position position) override { return SupprimeFiche(App(), FicheA<Fiche>(position)); }

 private:
  Fichier m_fichier;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

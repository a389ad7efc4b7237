// The helper that forms are written with: field by field, in tab order. The code
// reads as the form looks; widths follow the font, every field has its label as
// buddy, a name for tests and an accessible name.
//
//   Formulaire f{*this};
//   f.Groupe(u"Période"_s)
//       .Champ(u"&du :"_s, m_debut, "debut").SurDepart([this] { ... })
//       .Suite(u"&au :"_s, m_fin, "fin")
//       .Case(m_tva, u"Assujetti à la T.V.A. :"_s, "tva");
#pragma once

#include <QString>
#include <functional>
#include <initializer_list>
#include "core/texte.h"

class QAbstractButton;
class QBoxLayout;
class QGridLayout;
class QLabel;
class QWidget;

namespace fenlor {

struct TableFiche;

class Formulaire {
 public:
  /// Gives `zone` its layout. The widgets handed over may be members of the form or
  /// made with new; they become children of the zone. Those that bear the name of a field of `table`
  /// take its limit, its capitals and its sign.
  explicit Formulaire(QWidget& zone, const TableFiche* table = nullptr);

  /// The rows that follow stand in a frame of their own.
  Formulaire& Groupe(const QString& titre, const char* nom = nullptr);
  Formulaire& FinGroupe();
  /// A new row: label, editor. The label's "&" is the access key.
  Formulaire& Champ(const QString& libelle, QWidget& editeur, const char* nom);
  /// Goes on in the same row, to the right.
  Formulaire& Suite(const QString& libelle, QWidget& editeur, const char* nom);
  /// A whole row without a label: list, long text, button. Takes the height that is left
  /// when `etire`.
  Formulaire& Seul(QWidget& widget, const char* nom, bool etire = false);
  /// A check box or radio button with its own text, in a row of its own.
  Formulaire& Case(QAbstractButton& bouton, const QString& texte, const char* nom);
  /// Beside the field before: a radio button, a unit, a button.
  Formulaire& ACote(QWidget& widget, const char* nom = nullptr);
  /// A paragraph, wrapped.
  Formulaire& Texte(const QString& texte);
  /// A row of buttons, to the left.
  Formulaire& Rangee(std::initializer_list<QWidget*> boutons);
  /// Empty height at the end, so that rows stay together at the top.
  Formulaire& Pousse();

  // On the field before:

  /// At most so many characters, and the width to go with it.
  Formulaire& Limite(int caracteres);
  /// Width in characters of the form's font.
  Formulaire& Largeur(int caracteres);
  Formulaire& SurChangement(std::function<void()> action);  ///< by the user
  /// The focus left the field, for whatever other field of the form. As above, not for an amount that cannot
  /// be read, which the form refuses itself.
  Formulaire& SurDepart(std::function<void()> action);
  Formulaire& Inactif();
  Formulaire& Astuce(const QString& texte);  ///< tool tip

 private:
  QBoxLayout* Pile();
  QGridLayout* Grille();
  QBoxLayout* Rangement();
  void Range(QWidget& widget);
  void PlaceChamp(const QString& libelle, QWidget& editeur, const char* nom, int colonne);
  void Place(QWidget& widget, const char* nom, const QString& libelle);
  void Applique(const char* nom);
  QWidget& m_zone;
  const TableFiche* m_table;
  QBoxLayout* m_colonne = nullptr;  ///< of the zone
  QBoxLayout* m_groupe = nullptr;   ///< of the open group
  QGridLayout* m_grille = nullptr;  ///< of consecutive labelled rows
  QBoxLayout* m_rangee = nullptr;   ///< of the current row's fields
  QWidget* m_dernier = nullptr;
  int m_ligne = 0;          ///< of the grid
  int m_colonneGrille = 0;  ///< of the label of the current field, -1 beside a check box
};

/// Part of a form, with fields of its own and no margins.
QWidget* ColonneDeChamps(QWidget& zone, const std::function<void(Formulaire&)>& declare);

}  // namespace fenlor

// The field editors. Each holds a value of the books' own type, lets in only what
// that type can hold, and shows it the way the whole program does.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/parametres.h"
#include "store/dates.h"
#include "store/qvapi.h"

class QAction;

namespace fenlor {

/// One line of Windows-1252 text, at most `setMaxLength` bytes. Other characters are
/// dropped, typed or pasted; line ends and tabs of a pasted text become blanks.
class EditeurTexte : public QLineEdit {
  Q_OBJECT
 public:
  explicit EditeurTexte(QWidget* parent = nullptr);
  std::string Valeur() const;  ///< as typed, Windows-1252
  void Pose(const std::string& texte);
  void PoseMajuscules(bool majuscules);  ///< what is typed becomes upper case

 protected:
  void keyPressEvent(QKeyEvent* evenement) override;

 private:
  bool m_majuscules = false;
};

/// Several lines, as an address. Enter begins a line and takes nothing away. The limit counts bytes with CR
/// LF for a line end; a pasted text loses what the code page lacks, and what goes beyond the limit.
class EditeurTexteLong : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit EditeurTexteLong(QWidget* parent = nullptr);
  std::string Valeur() const;  ///< line ends are CR LF
  void Pose(const std::string& texte);
  void PoseLimite(int octets);  ///< default 128
  void PoseLignes(int lignes);  ///< height, default 3
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* evenement) override;
  void inputMethodEvent(QInputMethodEvent* evenement) override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  void Insere(const QString& texte);
  int m_limite = 128;
  int m_lignes = 3;
};

/// An amount or a rate. Whatever is typed or pasted stays as it is until the field is left; what can be read
/// (`NormeMontant`: "1250,50", "1.250,50", "1 234,50 €") is then written back as the program shows it, a
/// blank field stays blank. What cannot be read, or lies outside the limits, stays as it was typed, marked by
/// a frame: the form refuses it (`CZNDialog`), and until then it counts as 0. The point of the numeric pad
/// becomes the decimal separator when the preference "Virgule" says so.
class EditeurMontant : public QLineEdit {
  Q_OBJECT
 public:
  /// `reglages` outlives the editor: separator, "Virgule", "Zéro dans boite de dialogue".
  explicit EditeurMontant(const Parametres& reglages, QWidget* parent = nullptr);
  f64 Valeur() const;  ///< 0 for a blank field
  bool EstVide() const;
  /// The text as `TexteVersMontant` reads it; empty when it is blank or refused.
  std::string Lu() const;
  void Pose(f64 valeur);
  void PoseDecimales(int decimales);         ///< default 2
  void PoseUnite(const std::string& unite);  ///< shown behind the value (" %"), and may be typed there
  void PoseNegatif(bool permis);             ///< default false
  void PoseLimite(int caracteres);           ///< of the value as it is shown; default: what the store takes
  void PoseBornes(f64 minimum, f64 maximum);
  void Normalise();  ///< writes the value back formatted, or marks the field

  /// Number of the refusal: 0, ErrMontantIllisible, ErrMontantBornes. A value that was not typed is not held
  /// to the limits.
  TexteFixe Refus() const;
  std::array<std::string, 3> ArgumentsRefus() const;  ///< the typed text, the limits
  /// Something else than 0 was typed, be it unreadable.
  bool Porte() const { return Refus() != 0 || Valeur() != 0; }
  bool EstMarque() const { return m_marque; }

 protected:
  void keyPressEvent(QKeyEvent* evenement) override;
  void focusOutEvent(QFocusEvent* evenement) override;
  void paintEvent(QPaintEvent* evenement) override;

 private:
  f64 Minimum() const;
  f64 Maximum() const;
  std::string Tape() const;
  const Parametres& m_reglages;
  std::string m_unite;
  int m_decimales = 2;
  int m_limite = 0;
  bool m_negatif = false;
  bool m_marque = false;
  std::optional<f64> m_minimum, m_maximum;
};

/// A date. Takes 0105, 010504, 01052004, 1/5, 1/5/4, 01/05/2004, 1.5 and "1 5";
/// the missing year is that of the reference date (`PoseReference`; without one, a day
/// and a month alone are no date), the missing century 19 from 50 on, else 20. Leaving the
/// field writes it as 01/05/2004; what is no date stays as typed. Up and down step by a day,
/// page keys by a month, from the reference date when the field is blank; Alt+Down (or F4)
/// opens a calendar.
class EditeurDate : public QLineEdit {
  Q_OBJECT
 public:
  explicit EditeurDate(QWidget* parent = nullptr);
  Date Valeur() const;   ///< 0 for blank and for what is no date
  bool EstVide() const;  ///< nothing typed
  bool EstDate() const;  ///< what is typed is a date
  void Pose(Date date);  ///< 0: blank
  void PoseReference(Date date);
  void Normalise();
  /// Reads a typed text; 0 when it is no date.
  static Date Lit(const QString& texte, Date reference);

 protected:
  void keyPressEvent(QKeyEvent* evenement) override;
  void focusOutEvent(QFocusEvent* evenement) override;

 private:
  void OuvreCalendrier();
  void Change(Date date);  ///< as if it had been typed; nothing for 0
  QAction* m_calendrier;   ///< the picture at the end of the field
  Date m_reference = 0;
};

/// A closed list of choices, each with a value.
class EditeurChoix : public QComboBox {
  Q_OBJECT
 public:
  explicit EditeurChoix(QWidget* parent = nullptr);
  void Ajoute(const std::string& texte, const std::string& valeur = {});
  std::string Valeur() const;               ///< value of the current row, empty when none
  bool Choisit(const std::string& valeur);  ///< false, and no row, when it is not there
};

/// A value that is shown and not typed; can be selected and copied, is no tab stop.
class Lecture : public QLabel {
  Q_OBJECT
 public:
  explicit Lecture(QWidget* parent = nullptr);
  void Pose(const std::string& texte);
  std::string Valeur() const;
};

}  // namespace fenlor

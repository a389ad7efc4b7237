// `Dialogue` with windows: errors and questions in boxes, progress in the one
// nestable window.
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <functional>
#include <set>

#include "core/dialogue.h"
#include "ui/dialogabort.h"

class QString;
class QWidget;

namespace fenlor {

/// Title of an error: "Fenlor - Erreur (3056)", "Fenlor - Erreur" for number 0. The owner of a
/// box is the progress window while it is up, else the open form, else the frame.
class DialogueQt : public Dialogue {
 public:
  DialogueQt();
  ~DialogueQt() override;

  /// Owner of boxes while no form is open; forms own theirs.
  void PoseCadre(QWidget* cadre);

  /// Questions of these numbers say that something is missing: when one is answered with OK, `comble`
  /// opens a form that brings it; while it is false the question is asked again.
  void PoseManque(std::set<unsigned> questions, std::function<bool(unsigned)> comble);

  /// While `sansDemander` says so of its number, a question is answered with "Oui" and not shown.
  void PoseSansDemander(std::function<bool(unsigned)> sansDemander);

  void Erreur(unsigned numero, const std::string& texte) override;
  int Message(unsigned style, unsigned numero, const std::string& texte) override;

  /// The owner (the open form, else the frame) is disabled and gets the focus back at the end. With
  /// an empty title there is no window, the busy cursor alone. Only the outermost opening counts:
  /// its title, flag and maximum stay.
  void OuvreProgress(const std::string& titre, const std::string& texte, bool annulable,
                     u32 maximum) override;
  void FermeProgress() override;
  void SetTexte(const std::string& texte) override;
  void SetMax(u32 maximum) override;
  void SetPos(u32 position) override;
  void Step() override;
  bool IsAborted() override;  ///< false when no window is up

  /// Dispatches waiting messages without blocking; with `arret` it stops as soon as
  /// the user cancelled. True when he did. A quit request ends it with false.
  bool PompeMessages(bool arret);
  /// Work is in progress, or somebody waits for the answer to a box or for the form behind it.
  bool Occupe() const { return m_profondeur > 0 || m_boites > 0; }

 private:
  int Montre(const QString& titre, const std::string& texte, unsigned style);
  QWidget* Proprietaire() const;  ///< of a box
  void Peint();                   ///< lets paint and timer messages pass, no input

  std::set<unsigned> m_manques;
  std::function<bool(unsigned)> m_comble, m_sansDemander;
  QPointer<QWidget> m_cadre;
  QPointer<QWidget> m_proprietaire;  ///< disabled while the progress window is up
  QPointer<CDialogAbort> m_fenetre;  ///< ours, unless its owner took it along
  QPointer<QWidget> m_focus;         ///< had the focus in it
  unsigned m_profondeur = 0;
  unsigned m_boites = 0;
  u32 m_maximum = 0, m_position = 0;
  unsigned m_pourcent = 0;
  // Since messages passed, and since the window was painted: at most every 50 ms of work.
  QElapsedTimer m_tournee, m_peinture;
};

}  // namespace fenlor

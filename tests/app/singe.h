// A monkey at the main window: keys typed one by one and in bursts, clicks, context menus, sizes, commands,
// windows closed from the system's side. What it does goes into a log, line by line, which it can play again.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace fenlor {
class CMainFrame;
}

namespace fenlor::test {

/// One act, as a line of the log: a letter and up to four numbers.
struct Geste {
  char genre = ' ';  ///< 't' key and modifiers, 'c' window, x, y, button (2: right, 4: twice), 'm' command,
                     ///< 'd' size of the main window, 'f' document window, 'x' the form in front
  int a = 0, b = 0, c = 0, d = 0;
};

/// Works in whichever event loop runs, a form's included: each act is queued for the window that has the
/// keyboard when it is typed, as a window system does.
class Singe : public QObject {
 public:
  /// The log is written as it goes; an empty path writes none.
  Singe(u_int64_t graine, const std::string& journal);
  ~Singe() override;

  /// Plays the acts of a log instead of its own.
  void Rejoue(const std::string& journal);
  /// The window that it works on; null while there is none.
  void PoseCadre(std::function<CMainFrame*()> cadre) { m_cadre = std::move(cadre); }
  /// Acts until `Fini`, then leaves all forms by Escape and calls `quitte`, with none open.
  void Commence(std::function<bool()> fini, std::function<void()> quitte);
  /// All acts of the log that it plays were played.
  bool Epuise() const { return m_joue && m_rang >= m_rejoue.size(); }
  unsigned long Gestes() const { return m_gestes; }
  /// Forms that were open, by name: what it has seen of the program.
  const std::vector<std::string>& Vues() const { return m_vues; }

 protected:
  bool eventFilter(QObject* objet, QEvent* evenement) override;

 private:
  int Au(int n) { return static_cast<int>(m_hasard() % static_cast<unsigned>(n)); }
  void Pas();
  void Replie();
  void Agit();
  Geste Choisit();
  Geste Touche();
  Geste Clic();
  void Pose(const Geste& geste);
  /// Queues what an act does behind what waits already.
  void PlusTard(const std::function<void()>& geste);
  void PoseTouche(const Geste& geste);
  void PoseClic(const Geste& geste);
  void PoseFermeture(const Geste& geste);

  std::mt19937_64 m_hasard;
  std::ofstream m_journal;
  std::vector<std::vector<Geste>> m_rejoue;
  std::size_t m_rang = 0;
  bool m_joue = false;
  std::function<CMainFrame*()> m_cadre;
  std::function<bool()> m_fini;
  std::function<void()> m_quitte;
  std::vector<std::string> m_vues;
  unsigned long m_gestes = 0;
  int m_attente = 0;  ///< acts that are queued
};

}  // namespace fenlor::test

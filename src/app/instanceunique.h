// One running program for each user and practice: the first one listens on a
// local socket of the user, a second start asks it to come forward and ends.
#pragma once

#include <QLocalServer>
#include <QString>
#include <functional>

namespace fenlor {

class InstanceUnique {
 public:
  /// `cabinet`: path of the practice's folder, which need not exist.
  explicit InstanceUnique(const QString& cabinet);

  /// True when another program has this practice open and has answered: it comes forward.
  bool AppelleAutre() const;
  /// Listens from now on. False when the socket cannot be made: the program runs all
  /// the same, the store's lock protects the books.
  bool Ecoute(std::function<void()> appel);
  void Ferme() { m_serveur.close(); }
  const QString& Nom() const { return m_nom; }

 private:
  QString m_nom;
  QLocalServer m_serveur;
  std::function<void()> m_appel;
};

}  // namespace fenlor

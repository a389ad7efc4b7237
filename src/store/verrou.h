// The lock of a practice, held by one session at a time, given back by the system
// when the process ends, however it ends. It stands on "fenlor.ver", whose text
// says who holds it until a session ends well, and on the redo log: the one can be deleted by a tidy hand,
// the other cannot be missed.
#pragma once

#include <memory>
#include <string>

#include "store/systeme.h"

namespace fenlor {

class Verrou {
 public:
  /// 0, ErrOccupe (then `Detenteur` tells who), or errno.
  int Prend(Systeme& systeme, const std::string& dossier);
  /// Keeps writers out and lets readers in, on whatever of the two files is there; writes nothing. 0,
  /// ErrOccupe, or errno.
  int PrendEnLecture(Systeme& systeme, const std::string& dossier);
  /// Locks the redo log of the same practice as well, once there is one. Outcomes as of `Prend`.
  int PrendJournal(Systeme& systeme, const std::string& dossier);
  /// `acheve`: what the session wrote is durable, and nothing of its log in doubt.
  void Rend(bool acheve = false);
  /// True when the last session gave the lock back as `acheve`.
  bool EtaitAcheve() const { return m_etaitAcheve; }
  bool EstPris() const { return m_fichier || m_journal; }
  const std::string& Detenteur() const { return m_detenteur; }

 private:
  void LitDetenteur();
  std::unique_ptr<Fichier> m_fichier, m_journal;
  std::string m_detenteur;
  bool m_etaitAcheve = false;
};

}  // namespace fenlor

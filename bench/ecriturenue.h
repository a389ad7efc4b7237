// The least that makes four kilobytes durable.
#pragma once

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "mesures.h"
#include "store/systeme.h"

namespace fenlor::bench {

/// A file filled with zeroes, one block of which is written and synced at a time.
class EcritureNue {
 public:
  EcritureNue(Systeme& systeme, const std::string& chemin, unsigned blocs) : m_blocs(blocs) {
    if (systeme.Ouvre(chemin, Systeme::Creation, m_fichier) != 0) Echec("cannot make " + chemin);
    const std::vector<char> zeros(std::size_t{1} << 20);
    for (u64 place = 0; place < u64{blocs} * sizeof m_bloc; place += zeros.size()) {
      if (m_fichier->Ecrit(zeros.data(), zeros.size(), place) != 0) Echec("cannot fill " + chemin);
    }
    m_fichier->Synchronise();
  }
  void operator()() {
    std::memset(m_bloc, static_cast<int>(m_i), sizeof m_bloc);
    if (m_fichier->Ecrit(m_bloc, sizeof m_bloc, u64{m_i % m_blocs} * sizeof m_bloc) != 0 ||
        m_fichier->Synchronise() != 0) {
      Echec("a bare write failed");
    }
    ++m_i;
  }

 private:
  std::unique_ptr<Fichier> m_fichier;
  unsigned m_blocs, m_i = 0;
  char m_bloc[4096];
};

}  // namespace fenlor::bench

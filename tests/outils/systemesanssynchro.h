// A disk whose syncs cost nothing, for tests that make thousands of units and
// never lose power.
#pragma once

#include "store/systeme.h"

namespace fenlor {

class SystemeSansSynchro : public SystemePosix {
 public:
  int Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) override {
    std::unique_ptr<Fichier> vrai;
    const int rc = SystemePosix::Ouvre(chemin, mode, vrai);
    if (rc == 0) fichier = std::make_unique<SansSynchro>(std::move(vrai));
    return rc;
  }
  int SynchroniseDossier(const std::string&) override { return 0; }

 private:
  class SansSynchro : public Fichier {
   public:
    explicit SansSynchro(std::unique_ptr<Fichier> vrai) : m_vrai(std::move(vrai)) {}
    int Lit(void* t, std::size_t n, u64 o, std::size_t& lus) override { return m_vrai->Lit(t, n, o, lus); }
    int Ecrit(const void* t, std::size_t n, u64 o) override { return m_vrai->Ecrit(t, n, o); }
    int Synchronise() override { return 0; }
    int Tronque(u64 taille) override { return m_vrai->Tronque(taille); }
    int Reserve(u64 debut, u64 fin) override { return m_vrai->Reserve(debut, fin); }
    int Mesure(Empreinte& empreinte) override { return m_vrai->Mesure(empreinte); }
    int Descripteur() const override { return m_vrai->Descripteur(); }

   private:
    std::unique_ptr<Fichier> m_vrai;
  };
};

}  // namespace fenlor

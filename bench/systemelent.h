// The real system whose syncs are counted and, at will, slowed down: what a save
// costs on a disk that takes its time.
#pragma once

#include <unistd.h>

#include "store/systeme.h"

namespace fenlor::bench {

class SystemeLent : public Systeme {
 public:
  unsigned attente = 0;  ///< microseconds added to each sync
  u64 synchros = 0;

  int Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) override {
    std::unique_ptr<Fichier> vrai;
    const int erreur = m_vrai.Ouvre(chemin, mode, vrai);
    if (erreur == 0) fichier = std::make_unique<FichierLent>(*this, std::move(vrai));
    return erreur;
  }
  int Mesure(const std::string& chemin, Empreinte& empreinte) override {
    return m_vrai.Mesure(chemin, empreinte);
  }
  int Renomme(const std::string& de, const std::string& vers) override { return m_vrai.Renomme(de, vers); }
  int Supprime(const std::string& chemin) override { return m_vrai.Supprime(chemin); }
  int SynchroniseDossier(const std::string& dossier) override { return m_vrai.SynchroniseDossier(dossier); }
  int CreeDossier(const std::string& dossier) override { return m_vrai.CreeDossier(dossier); }
  int SupprimeDossier(const std::string& dossier) override { return m_vrai.SupprimeDossier(dossier); }
  int Liste(const std::string& dossier, std::vector<std::string>& noms) override {
    return m_vrai.Liste(dossier, noms);
  }

 private:
  class FichierLent : public Fichier {
   public:
    FichierLent(SystemeLent& systeme, std::unique_ptr<Fichier> vrai)
        : m_systeme(systeme), m_vrai(std::move(vrai)) {}
    int Lit(void* tampon, std::size_t taille, u64 offset, std::size_t& lus) override {
      return m_vrai->Lit(tampon, taille, offset, lus);
    }
    int Ecrit(const void* tampon, std::size_t taille, u64 offset) override {
      return m_vrai->Ecrit(tampon, taille, offset);
    }
    int Synchronise() override {
      ++m_systeme.synchros;
      if (m_systeme.attente) usleep(m_systeme.attente);
      return m_vrai->Synchronise();
    }
    int Tronque(u64 taille) override { return m_vrai->Tronque(taille); }
    int Reserve(u64 debut, u64 fin) override { return m_vrai->Reserve(debut, fin); }
    int Mesure(Empreinte& empreinte) override { return m_vrai->Mesure(empreinte); }
    int Descripteur() const override { return m_vrai->Descripteur(); }

   private:
    SystemeLent& m_systeme;
    std::unique_ptr<Fichier> m_vrai;
  };

  SystemePosix m_vrai;
};

}  // namespace fenlor::bench

#include "outils/systemefautif.h"

#include <unistd.h>

namespace fenlor {

class SystemeFautif::FichierFautif : public Fichier {
 public:
  FichierFautif(SystemeFautif& systeme, std::string chemin, std::unique_ptr<Fichier> fichier)
      : m_systeme(systeme), m_chemin(std::move(chemin)), m_fichier(std::move(fichier)) {}

  int Lit(void* tampon, std::size_t taille, u64 offset, std::size_t& lus) override {
    lus = 0;
    const int panne = m_systeme.Passe(Lectures, m_chemin);
    return panne ? panne : m_fichier->Lit(tampon, taille, offset, lus);
  }
  int Ecrit(const void* tampon, std::size_t taille, u64 offset) override {
    const int panne = m_systeme.Passe(Ecriture, m_chemin);
    if (panne && m_systeme.m_partielles) m_fichier->Ecrit(tampon, taille / 2, offset);
    const std::string& menti = m_systeme.m_menti;
    if (panne || taille == 0 || menti.empty() || m_chemin.find(menti) == std::string::npos)
      return panne ? panne : m_fichier->Ecrit(tampon, taille, offset);
    std::string octets(static_cast<const char*>(tampon), taille);
    octets[taille / 2] ^= 1;
    return m_fichier->Ecrit(octets.data(), taille, offset);
  }
  int Synchronise() override {
    const int panne = m_systeme.Passe(Synchro, m_chemin);
    return panne ? panne : m_fichier->Synchronise();
  }
  int Tronque(u64 taille) override {
    const int panne = m_systeme.Passe(Troncature, m_chemin);
    return panne ? panne : m_fichier->Tronque(taille);
  }
  int Reserve(u64 debut, u64 fin) override {
    const int panne = m_systeme.Passe(Reservation, m_chemin);
    return panne ? panne : m_fichier->Reserve(debut, fin);
  }
  int Mesure(Empreinte& empreinte) override {
    const int panne = m_systeme.Passe(Mesurage, m_chemin);
    return panne ? panne : m_fichier->Mesure(empreinte);
  }
  int Descripteur() const override { return m_fichier->Descripteur(); }

 private:
  SystemeFautif& m_systeme;
  std::string m_chemin;
  std::unique_ptr<Fichier> m_fichier;
};

void SystemeFautif::Programme(unsigned k, int erreur, unsigned genres, bool uneFois) {
  m_rang = k;
  m_erreur = erreur;
  m_genres = genres;
  m_uneFois = uneFois;
  m_pannes = 0;
}

u64 SystemeFautif::Compte(unsigned genres) const {
  u64 total = 0;
  for (std::size_t i = 0; i < m_comptes.size(); ++i) {
    if (genres & (1u << i)) total += m_comptes[i];
  }
  return total;
}

int SystemeFautif::Passe(Genre genre, const std::string& chemin) {
  ++m_comptes[static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(genre)))];
  if (m_rang == 0 || !(m_genres & genre) || chemin.find(m_chemin) == std::string::npos) return 0;
  if (!m_sauf.empty() && chemin.find(m_sauf) != std::string::npos) return 0;
  if (m_rang > 1) {
    --m_rang;
    return 0;
  }
  if (m_tue) _exit(StatutTue);
  if (m_uneFois) m_rang = 0;
  ++m_pannes;
  return m_erreur;
}

int SystemeFautif::Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) {
  fichier.reset();
  if (const int panne = Passe(Ouvertures, chemin)) return panne;
  std::unique_ptr<Fichier> vrai;
  if (const int erreur = m_systeme.Ouvre(chemin, mode, vrai)) return erreur;
  fichier = std::make_unique<FichierFautif>(*this, chemin, std::move(vrai));
  return 0;
}

int SystemeFautif::Mesure(const std::string& chemin, Empreinte& empreinte) {
  const int panne = Passe(Mesurage, chemin);
  return panne ? panne : m_systeme.Mesure(chemin, empreinte);
}

int SystemeFautif::Renomme(const std::string& de, const std::string& vers) {
  const int panne = Passe(Renommage, de + '\n' + vers);
  return panne ? panne : m_systeme.Renomme(de, vers);
}

int SystemeFautif::Supprime(const std::string& chemin) {
  const int panne = Passe(Suppression, chemin);
  return panne ? panne : m_systeme.Supprime(chemin);
}

int SystemeFautif::SynchroniseDossier(const std::string& dossier) {
  const int panne = Passe(SynchroDossier, dossier);
  return panne ? panne : m_systeme.SynchroniseDossier(dossier);
}

int SystemeFautif::CreeDossier(const std::string& dossier) {
  const int panne = Passe(Dossier, dossier);
  return panne ? panne : m_systeme.CreeDossier(dossier);
}

int SystemeFautif::SupprimeDossier(const std::string& dossier) {
  const int panne = Passe(Suppression, dossier);
  return panne ? panne : m_systeme.SupprimeDossier(dossier);
}

int SystemeFautif::Liste(const std::string& dossier, std::vector<std::string>& noms) {
  noms.clear();
  const int panne = Passe(Listage, dossier);
  return panne ? panne : m_systeme.Liste(dossier, noms);
}

}  // namespace fenlor

#include <cassert>
#include <cerrno>
#include <filesystem>

#include "store/systeme.h"

namespace fenlor {

namespace {

std::string CheminNormal(const std::string& chemin) {
  return std::filesystem::path(chemin).lexically_normal().string();
}

}  // namespace

void SystemeGarde::Garde(const std::string& dossier) {
  m_dossier = dossier.empty() ? std::string() : CheminNormal(Joint(dossier, ""));
  assert(dossier.empty() || m_dossier.ends_with('/'));
}

bool SystemeGarde::EstGarde(const std::string& chemin) const {
  return !m_dossier.empty() && CheminNormal(Joint(chemin, "")).starts_with(m_dossier);
}

int SystemeGarde::Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) {
  if (mode == Lecture || !EstGarde(chemin)) return m_systeme.Ouvre(chemin, mode, fichier);
  fichier.reset();
  return mode == LectureEcriture && !Existe(chemin) ? ENOENT : EROFS;
}

int SystemeGarde::Mesure(const std::string& chemin, Empreinte& empreinte) {
  return m_systeme.Mesure(chemin, empreinte);
}

int SystemeGarde::Renomme(const std::string& de, const std::string& vers) {
  return EstGarde(de) || EstGarde(vers) ? EROFS : m_systeme.Renomme(de, vers);
}

int SystemeGarde::Supprime(const std::string& chemin) {
  if (!EstGarde(chemin)) return m_systeme.Supprime(chemin);
  return Existe(chemin) ? EROFS : ENOENT;
}

int SystemeGarde::SynchroniseDossier(const std::string& dossier) {
  return EstGarde(dossier) ? 0 : m_systeme.SynchroniseDossier(dossier);
}

int SystemeGarde::CreeDossier(const std::string& dossier) {
  return EstGarde(dossier) ? EROFS : m_systeme.CreeDossier(dossier);
}

int SystemeGarde::SupprimeDossier(const std::string& dossier) {
  return EstGarde(dossier) ? EROFS : m_systeme.SupprimeDossier(dossier);
}

int SystemeGarde::Liste(const std::string& dossier, std::vector<std::string>& noms) {
  return m_systeme.Liste(dossier, noms);
}

}  // namespace fenlor

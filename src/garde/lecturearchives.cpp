#include "garde/lecturearchives.h"

#include <cassert>
#include <mutex>
#include <system_error>
#include <thread>

namespace fenlor {

struct LectureArchives::Etat {
  std::mutex verrou;  ///< held while `suite` is told
  bool arret = false;
  Suite suite;

  bool Arrete() {
    const std::lock_guard garde(verrou);
    return arret;
  }
  void Dit(std::size_t rang, const ArchiveLue& archive) {
    const std::lock_guard garde(verrou);
    if (!arret) suite(rang, archive);
  }
};

void LectureArchives::Commence(std::shared_ptr<Systeme> systeme, const std::string& dossier,
                               const std::vector<ArchiveLue>& archives, Suite suite) {
  assert(systeme && suite);
  Abandonne();
  m_etat = std::make_shared<Etat>();
  m_etat->suite = std::move(suite);
  try {
    // All that it touches is its own: it may outlive whoever asked for it.
    std::thread([etat = m_etat, systeme = std::move(systeme), dossier, restantes = archives]() mutable {
      for (std::size_t rang = 0; rang < restantes.size() && !etat->Arrete(); ++rang) {
        ArchiveLue& archive = restantes[rang];
        if (archive.protegee || archive.refus) continue;
        LitEntiere(*systeme, dossier, {}, archive, [&](u64) { return !etat->Arrete(); });
        etat->Dit(rang, archive);
      }
    }).detach();
  } catch (const std::system_error&) {
    // Without a thread to give the archives stay unread: a restoration reads its own first anyway.
  }
}

void LectureArchives::Abandonne() {
  if (!m_etat) return;
  const std::lock_guard garde(m_etat->verrou);
  m_etat->arret = true;
  m_etat->suite = nullptr;
}

}  // namespace fenlor

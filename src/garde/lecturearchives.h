// Reading archives to their last byte beside what a person does meanwhile: whether they are whole takes long,
// and on a drive that does not answer it takes for ever.
#pragma once

#include <functional>
#include <memory>

#include "garde/inventaire.h"

namespace fenlor {

class LectureArchives {
 public:
  /// Told from the thread, archive by archive: it may post, and waits for nothing.
  using Suite = std::function<void(std::size_t rang, const ArchiveLue& archive)>;

  LectureArchives() = default;
  ~LectureArchives() { Abandonne(); }
  LectureArchives(const LectureArchives&) = delete;
  LectureArchives& operator=(const LectureArchives&) = delete;

  /// Gives up what it was at, and reads those of a folder, one behind the other, but the locked and the
  /// refused. `systeme` is the thread's as well.
  void Commence(std::shared_ptr<Systeme> systeme, const std::string& dossier,
                const std::vector<ArchiveLue>& archives, Suite suite);
  /// Nothing is told any more once it returns, which is at once: the thread ends by itself when the drive has
  /// answered, or with the program.
  void Abandonne();

 private:
  struct Etat;
  std::shared_ptr<Etat> m_etat;
};

}  // namespace fenlor

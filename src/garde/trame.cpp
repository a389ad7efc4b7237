#include "garde/trame.h"

#include <archive.h>
#include <archive_entry.h>

#include <cassert>
#include <memory>

namespace fenlor {

namespace {

/// Level 3 is what a backup waits for: beyond it the books shrink little.
constexpr const char* Niveau = "3";

}  // namespace

bool Comprime(const void* octets, std::size_t taille, std::vector<u8>& trame) {
  assert(octets && taille > 0);
  // What cannot be compressed grows by its frame.
  trame.resize(taille + taille / 64 + 1024);
  const std::unique_ptr<archive, int (*)(archive*)> brut(archive_write_new(), archive_write_free);
  const std::unique_ptr<archive_entry, void (*)(archive_entry*)> entree(archive_entry_new(),
                                                                        archive_entry_free);
  if (!brut || !entree) return false;
  archive_entry_set_filetype(entree.get(), AE_IFREG);
  std::size_t ecrits = 0;
  if (archive_write_set_format_raw(brut.get()) != ARCHIVE_OK ||
      archive_write_add_filter_zstd(brut.get()) != ARCHIVE_OK ||
      archive_write_set_filter_option(brut.get(), "zstd", "compression-level", Niveau) != ARCHIVE_OK ||
      archive_write_open_memory(brut.get(), trame.data(), trame.size(), &ecrits) != ARCHIVE_OK ||
      archive_write_header(brut.get(), entree.get()) != ARCHIVE_OK ||
      archive_write_data(brut.get(), octets, taille) != static_cast<la_ssize_t>(taille) ||
      archive_write_close(brut.get()) != ARCHIVE_OK)
    return false;
  assert(ecrits > 0 && ecrits <= trame.size());
  trame.resize(ecrits);
  return true;
}

}  // namespace fenlor

// The working file of a deposit slip: what the user ticked, a record a row. It is written as he works and
// read when the slip is made; the journal knows nothing of it.
#pragma once

#include <cstddef>
#include <string>

#include "core/fenlorapp.h"

namespace fenlor {

#pragma pack(push, 1)
/// Row number and record number are the same.
struct EnregistrementRemise {
  u32 Remis;    ///< the cheque is in the slip
  u32 Imprime;  ///< the cheque is on the paper
  u32 Place;    ///< of the line in the journal; 0: the row is gone
  u8 Reserve[84];
};
#pragma pack(pop)
static_assert(sizeof(EnregistrementRemise) == 96 && offsetof(EnregistrementRemise, Place) == 8);

class FichierRemise {
 public:
  /// The session outlives the object; the file belongs to whoever gave it its name.
  FichierRemise(CFenlorApp& app, std::string chemin) : m_magasin(app.Magasin), m_chemin(std::move(chemin)) {}
  ~FichierRemise() { Ferme(); }
  FichierRemise(const FichierRemise&) = delete;
  FichierRemise& operator=(const FichierRemise&) = delete;

  /// An empty file, in the place of what it held. Refused by 3495.
  Refus Cree();
  /// As it was left. Refused by 3495.
  Refus Ouvre();
  void Ferme();
  bool EstOuvert() const { return m_poignee >= 0; }
  u32 Nombre();  ///< whole records
  bool Lit(u32 rang, EnregistrementRemise& rec);
  bool Ecrit(u32 rang, const EnregistrementRemise& rec);

 private:
  Refus Verifie() const;
  QVAPI& m_magasin;
  const std::string m_chemin;
  int m_poignee = -1;
};

}  // namespace fenlor

// `CEcrituresAuto`: the models of the open exercice, record by record.
#pragma once

#include "core/fenlorapp.h"
#include "store/ouverture.h"

namespace fenlor {

/// A model is found by its number, which is its place in the list, from 1 without gaps. A failure is told
/// unless `Signale` is off; the file is open while the object lives.
class CEcrituresAuto {
 public:
  /// The session outlives the object. To be made before a unit of work begins.
  explicit CEcrituresAuto(CFenlorApp& app);
  virtual ~CEcrituresAuto() = default;
  CEcrituresAuto(const CEcrituresAuto&) = delete;
  CEcrituresAuto& operator=(const CEcrituresAuto&) = delete;

  EcrituresAuto Rec{};
  u32 Numero = 0;  ///< of the record last read or written
  bool Signale = true;

  /// False: the file could not be opened.
  explicit operator bool() const { return static_cast<bool>(m_fichier); }
  /// A blank record in the currency of the exercice.
  virtual void Clear();
  virtual bool Read(u32 numero);
  /// `Rec.Numero` 0: a new one behind the last. Writes the list of the settings, too, unless a unit is open:
  /// then the caller does, by `Flush`, once it is through.
  virtual bool Write();
  /// The later ones move down.
  virtual bool Delete(u32 numero);
  /// A walk by number; nothing is told.
  bool First();
  bool Next();
  u32 Nombre() const { return m_app.Magasin.GetEcrituresAutoRec(m_fichier.Poignee()); }
  bool Flush() { return m_app.Magasin.FlushEcrituresAuto(m_fichier.Poignee()); }

 private:
  bool LitSansMot(u32 numero);
  bool Conclut(bool fait, const TexteFixe& erreur);
  CFenlorApp& m_app;
  const Ouverture m_fichier;
};

}  // namespace fenlor

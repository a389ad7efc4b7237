#include "auto/ecrituresauto.h"
#include "auto/textes.h"

namespace fenlor {

CEcrituresAuto::CEcrituresAuto(CFenlorApp& app) : m_app(app), m_fichier(app.Magasin, FichierAuto) {}

void CEcrituresAuto::Clear() {
  Rec = {};
  Rec.SaisieEuro = m_app.Reglages.IsEuro();
}

bool CEcrituresAuto::Conclut(bool fait, const TexteFixe& erreur) {
  return fait || (Signale && m_app.ReportErreur(erreur));
}

bool CEcrituresAuto::Read(u32 numero) {
  if (!Conclut(m_app.Magasin.ReadEcrituresAuto(numero, Rec, m_fichier.Poignee()), ErrLectureAuto))
    return false;
  Numero = numero;
  return true;
}

// The record is on disk then; a list that cannot be written is tried again when the file is closed.
bool CEcrituresAuto::Write() {
  const bool fait = m_app.Magasin.WriteEcrituresAuto(Rec, m_fichier.Poignee());
  if (fait) Numero = Rec.Numero;
  if (fait && !m_app.Magasin.QVEnUnite()) Flush();
  return Conclut(fait, ErrEnregistrementAuto);
}

bool CEcrituresAuto::Delete(u32 numero) {
  const bool fait = m_app.Magasin.DeleteEcrituresAuto(numero, m_fichier.Poignee());
  if (fait && !m_app.Magasin.QVEnUnite()) Flush();
  return Conclut(fait, ErrSuppressionAuto);
}

bool CEcrituresAuto::LitSansMot(u32 numero) {
  const bool signale = Signale;
  Signale = false;
  const bool lu = Read(numero);
  Signale = signale;
  return lu;
}

bool CEcrituresAuto::First() { return LitSansMot(1); }
bool CEcrituresAuto::Next() { return LitSansMot(Numero + 1); }

}  // namespace fenlor

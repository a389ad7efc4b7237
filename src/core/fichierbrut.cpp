#include "core/fichierbrut.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "store/definitions.h"

namespace fenlor {

namespace {

constexpr u32 accesLecture = 0x80000000u;
constexpr u32 octetsAuPlus = 1u << 18;  ///< of one read: what stays in the processor's own memory

}  // namespace

FichierBrut::FichierBrut(QVAPI& magasin, const std::string& chemin)
    : m_magasin(magasin), m_fichier(magasin.QVOpenFile(chemin, accesLecture)) {}

FichierBrut::~FichierBrut() {
  if (EstOuvert()) m_magasin.QVCloseFile(m_fichier);
}

bool LitEntete(QVAPI& magasin, int fichier, EnteteDat& entete) {
  assert(fichier >= 0);
  std::array<u8, DebutEmplacements> octets{};
  EnteteDat paire, impaire;
  if (magasin.QVReadFile(fichier, octets.data(), octets.size()) < 0) return false;
  const bool p = FichierDat::Decode(octets.data(), paire);
  const bool i = FichierDat::Decode(octets.data() + DebutEmplacements / 2, impaire);
  entete = {};
  if (p || i) entete = p && (!i || paire.generation > impaire.generation) ? paire : impaire;
  return true;
}

LecteurRecs::LecteurRecs(QVAPI& magasin, const std::string& dossier, u16 numFichier)
    : m_magasin(magasin),
      m_numero(numFichier),
      m_chemin(dossier + "/" + DefinitionFichierNumero(numFichier)->nom + ".dat"),
      m_fichier(magasin, m_chemin) {
  if (!m_fichier.EstOuvert() || !LitEntete(magasin, m_fichier.Poignee(), m_entete)) {
    m_erreur = magasin.QVFileErrorCode();
    return;
  }
  const DefinitionFichier& definition = *DefinitionFichierNumero(numFichier);
  if (m_entete.id == 0 || m_entete.numero != numFichier || m_entete.taille != definition.taille) {
    m_erreur = ErrEndommage;
    return;
  }
  const i64 fin = magasin.QVSeekFile(m_fichier.Poignee(), 0, 2);
  // The header lags behind the slots that units added since it was written.
  if (fin > DebutEmplacements) m_nombre = static_cast<u32>((fin - DebutEmplacements) / m_entete.Pas());
}

bool LecteurRecs::Remplit(Position premiere, u32 nombre) {
  assert(premiere > 0 && u64{premiere} + nombre <= u64{m_nombre} + 1);
  const u32 pas = m_entete.Pas(), octets = nombre * pas;
  assert(pas > 0 && octets / pas == nombre);
  m_tampon.resize(octets);
  const i64 place = DebutEmplacements + i64{premiere - 1} * pas;
  if (m_magasin.QVSeekFile(m_fichier.Poignee(), place, 0) == place &&
      m_magasin.QVReadFile(m_fichier.Poignee(), m_tampon.data(), octets) == static_cast<int>(octets))
    return true;
  m_erreur = m_magasin.QVFileErrorCode() != ErrAucune ? m_magasin.QVFileErrorCode() : int{ErrAltere};
  return false;
}

bool LecteurRecs::Lit(u32 emplacements, const std::function<void(Position, const void*)>& suite) {
  assert(m_prochaine >= 1);
  if (m_erreur != 0) return false;
  const u32 pas = m_entete.Pas();
  assert(pas > 0);
  const Position fin =
      static_cast<Position>(std::min<u64>(u64{m_prochaine} + emplacements, u64{m_nombre} + 1));
  while (m_prochaine < fin) {
    const u32 nombre = std::min(fin - m_prochaine, std::max(octetsAuPlus / pas, 1u));
    if (!Remplit(m_prochaine, nombre)) return false;
    for (u32 i = 0; i < nombre; ++i, ++m_prochaine) {
      const u8* rec = m_tampon.data() + std::size_t{i} * pas;
      // 1 is the marker of a record that begins with reserved bytes.
      if (!QVAPI::QVEstVide(m_numero, rec)) suite(m_prochaine, rec);
    }
  }
  return m_prochaine <= m_nombre;
}

const void* LecteurRecs::LitUn(Position position) {
  if (m_erreur != 0 || position == 0 || position > m_nombre || !Remplit(position, 1)) return nullptr;
  return QVAPI::QVEstVide(m_numero, m_tampon.data()) ? nullptr : m_tampon.data();
}

}  // namespace fenlor

#include "core/btfiles.h"

#include <algorithm>
#include <cassert>

#include "core/erreurs.h"
#include "core/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

std::string Repertoire(const CFenlorApp& app, const DefinitionFichier& definition, std::string path) {
  if (!path.empty()) return path;
  return definition.duCabinet ? app.PathCabinet : app.PathExercice;
}

}  // namespace

CBTFiles::CBTFiles(CFenlorApp& app, std::string path, NumeroFichier fichier)
    : Path(Repertoire(app, *DefinitionFichierNumero(fichier), std::move(path))),
      Nom(DefinitionFichierNumero(fichier)->nom),
      NumFichier(fichier),
      NumCle(DefinitionFichierNumero(fichier)->premiereCle),
      TailleRec(DefinitionFichierNumero(fichier)->taille),
      DerniereCle(DefinitionFichierNumero(fichier)->nbCles - 1u),
      m_app(app),
      m_definition(*DefinitionFichierNumero(fichier)),
      m_memoire(TailleRec),
      m_rec(m_memoire.data()) {
  assert(m_definition.nbCles > 0 && m_definition.nbCles <= std::size(TailleCle));
  for (u32 i = 0; i <= DerniereCle; ++i) {
    TailleCle[i] = m_definition.tailleCle[i];
    CleDouble[i] = m_definition.doubles[i];
  }
  // Without an exercice there is no place for it.
  if (!Path.empty() && !m_app.Magasin.QVExistFile(Chemin("dat")) && CreateDat()) CreateIdx();
}

CBTFiles::~CBTFiles() {
  assert(NbOuvertures <= m_app.NbOuvert[NumFichier]);
  while (NbOuvertures > 0) CloseFile();
}

std::string CBTFiles::Chemin(const char* extension) const { return Joint(Path, Nom + "." + extension); }

Position CBTFiles::FirstKey(u32 indice) {
  assert(indice <= DerniereCle);
  std::string cle;
  return m_app.Magasin.QVFirstKey(static_cast<u16>(NumCle + indice), cle);
}

Position CBTFiles::BrowseKey(u32 indice) {
  assert(indice <= DerniereCle);
  std::string cle = MakeKey(indice);
  return m_app.Magasin.QVBrowseKey(static_cast<u16>(NumCle + indice), cle);
}

Position CBTFiles::NextKey(u32 indice) {
  assert(indice <= DerniereCle);
  std::string cle;
  return m_app.Magasin.QVNextKey(static_cast<u16>(NumCle + indice), cle);
}

std::string CBTFiles::MakeKey(u32 indice) const {
  if (indice > DerniereCle) return {};
  char texte[TailleCleMax];
  const std::size_t taille = m_definition.compose(indice, m_rec, texte);
  assert(taille <= sizeof texte);  // a damaged record may pass the size of its key
  return std::string(texte, taille);
}

bool CBTFiles::ReadRec(fenlor::Position position) {
  if (m_app.Magasin.QVReadRec(NumFichier, position, m_rec)) return true;
  ErreurLecture();
  return false;
}

bool CBTFiles::WriteRec(fenlor::Position position) {
  if (position != 0 && m_app.Magasin.QVWriteRec(NumFichier, position, m_rec)) return true;
  Erreur(position == 0 ? static_cast<int>(ErrPosition) : 0, MessageEcriture);
  return false;
}

void CBTFiles::ClearRec() { std::memset(m_rec, 0, TailleRec); }

void CBTFiles::SetRec(void* rec) { m_rec = rec ? rec : m_memoire.data(); }

void CBTFiles::Erreur(int code, const TexteFixe& message, std::initializer_list<std::string> arguments) {
  if (code == 0) code = m_app.Magasin.QVFileErrorCode();
  // A number of the system says nothing to who reads it.
  const std::string raison = code > 0 && code < 1000 ? "\n" + TexteErreurSysteme(code) : std::string();
  m_app.ReportErreur(ErrFichierIndexe, {TexteFormat(message, arguments), Nom, std::to_string(code) + raison});
}

void CBTFiles::ErreurLecture() { Erreur(0, MessageLecture); }

bool CBTFiles::RefuseOuverture() {
  QVAPI& magasin = m_app.Magasin;
  return m_app.ReportErreur(ErrOuvertureFichier,
                            {Chemin("dat"), " : " + magasin.QVErreurTexte(magasin.QVFileErrorCode())});
}

bool CBTFiles::CreateDat() {
  QVAPI& magasin = m_app.Magasin;
  const std::string chemin = Chemin("dat");
  if (magasin.QVExistFile(chemin) && !magasin.QVDeleteFile(chemin))
    return m_app.ReportErreur(ErrCreationFichier, {chemin});
  if (!magasin.QVNewDat(NumFichier, chemin, static_cast<u16>(TailleRec)))
    return m_app.ReportErreur(ErrCreationFichier, {chemin});
  return magasin.QVClose(NumFichier);
}

bool CBTFiles::CreateIdx() {
  QVAPI& magasin = m_app.Magasin;
  const std::string chemin = Chemin("idx");
  if (magasin.QVExistFile(chemin) && !magasin.QVDeleteFile(chemin))
    return m_app.ReportErreur(ErrCreationFichier, {chemin});
  bool fait = magasin.QVNewIdx(NumCle, chemin, TailleCle[0], CleDouble[0], static_cast<u16>(DerniereCle));
  for (u32 i = 1; i <= DerniereCle; ++i)
    fait = fait && magasin.QVAddIdx(NumCle, TailleCle[i], CleDouble[i], static_cast<u16>(i));
  if (!fait) m_app.ReportErreur(ErrCreationFichier, {chemin});
  return magasin.QVClose(NumCle) && fait;
}

bool CBTFiles::OpenDat() { return m_app.Magasin.QVOpen(NumFichier, Chemin("dat")); }
bool CBTFiles::OpenIdx() { return m_app.Magasin.QVOpen(NumCle, Chemin("idx")); }

void CBTFiles::Close() {
  unsigned& ouvert = m_app.NbOuvert[NumFichier];
  if (ouvert > 0 && --ouvert == 0) {
    m_app.Magasin.QVClose(NumFichier);
    m_app.Magasin.QVClose(NumCle);
  }
  if (NbOuvertures > 0) --NbOuvertures;
}

bool CBTFiles::OpenFile() {
  CFenlorApp::FichierOuvert& ouvert = m_app.Ouverts[NumFichier];
  unsigned& nombre = m_app.NbOuvert[NumFichier];
  if (nombre > 0 && ouvert.path != Path) return m_app.ReportErreur(ErrOuvertureFichier, {Chemin("dat")});
  if (nombre == 0) {
    const u32 poignee = m_app.Magasin.OpenFichier(NumFichier, Path);
    if (poignee == 0) return RefuseOuverture();
    ouvert = {Path, poignee};
  }
  assert(ouvert.poignee != 0);
  ++nombre;
  ++NbOuvertures;
  return true;
}

void CBTFiles::CloseFile() {
  unsigned& nombre = m_app.NbOuvert[NumFichier];
  if (nombre > 0 && --nombre == 0) {
    m_app.Magasin.CloseFichier(NumFichier, m_app.Ouverts[NumFichier].poignee);
    m_app.Ouverts.erase(NumFichier);
    assert(NbOuvertures <= 1);
  }
  if (NbOuvertures > 0) --NbOuvertures;
}

bool CBTFiles::DelKeys(fenlor::Position position) {
  assert(position != 0);
  bool toutes = true;
  for (u32 i = 0; i <= DerniereCle; ++i) {
    if (m_app.Magasin.QVDelDupKey(static_cast<u16>(NumCle + i), MakeKey(i), position)) continue;
    Erreur(0, MessageSuppressionCle, {std::to_string(i)});
    toutes = false;
  }
  return toutes;
}

bool CBTFiles::AddKeys(fenlor::Position position) {
  assert(position != 0);
  // A key that allows doubles has its position in it.
  const bool neuf = std::all_of(CleDouble, CleDouble + DerniereCle + 1, [](bool d) { return d; });
  if (m_app.Magasin.QVAddKeys(NumFichier, m_rec, position, neuf)) return true;
  // One by one, to tell which fails.
  bool toutes = true;
  for (u32 i = 0; i <= DerniereCle; ++i) {
    if (m_app.Magasin.QVAddKey(static_cast<u16>(NumCle + i), MakeKey(i), position)) continue;
    Erreur(0, MessageAjoutCle, {std::to_string(i)});
    toutes = false;
  }
  return toutes;
}

bool CBTFiles::Retient(fenlor::Position position) {
  Position = position;
  if (position != 0) return ReadRec(position);
  if (m_app.Magasin.QVFileErrorCode() != ErrCleAbsente) ErreurLecture();
  return false;
}

bool CBTFiles::Find(u32 indice) {
  assert(indice <= DerniereCle);
  const auto numero = static_cast<u16>(NumCle + indice);
  const std::string voulue = MakeKey(indice);
  if (!CleDouble[indice]) return Retient(m_app.Magasin.QVFindKey(numero, voulue));
  std::string trouvee = voulue;
  const fenlor::Position position = m_app.Magasin.QVBrowseKey(numero, trouvee);
  if (position == 0 || trouvee.starts_with(voulue)) return Retient(position);
  Position = 0;
  return false;
}

bool CBTFiles::First(u32 indice) { return Retient(FirstKey(indice)); }
bool CBTFiles::Browse(u32 indice) { return Retient(BrowseKey(indice)); }
bool CBTFiles::Next(u32 indice) { return Retient(NextKey(indice)); }

bool CBTFiles::Add() {
  QVAPI& magasin = m_app.Magasin;
  QVAPI::Unite unite(magasin);
  if (!CleDouble[0] && !Delete(magasin.QVFindKey(NumCle, MakeKey(0)))) return false;
  const fenlor::Position nouvelle = magasin.QVAddRec(NumFichier, m_rec);
  if (nouvelle == 0) {
    Erreur(0, MessageCreation);
    return false;
  }
  if (!AddKeys(nouvelle)) return false;
  if (!unite.Valide()) {
    Erreur(0, MessageCreation);
    return false;
  }
  Position = nouvelle;
  return true;
}

bool CBTFiles::Delete(fenlor::Position position) {
  if (position == 0) return true;
  QVAPI& magasin = m_app.Magasin;
  QVAPI::Unite unite(magasin);
  std::vector<u8> ecrit(TailleRec);
  bool fait = magasin.QVReadRec(NumFichier, position, ecrit.data());
  if (fait) {
    AutreRec autre(*this, ecrit.data());
    DelKeys(position);
    fait = magasin.QVDelRec(NumFichier, position) && unite.Valide();
  }
  if (!fait) Erreur(0, MessageSuppression);
  return fait;
}

bool CBTFiles::Update() {
  QVAPI::Unite unite(m_app.Magasin);
  if (!WriteRec(Position)) return false;
  if (unite.Valide()) return true;
  Erreur(0, MessageEcriture);
  return false;
}

}  // namespace fenlor

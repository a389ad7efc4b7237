#include "reports/fichiercentral.h"

#include <stdlib.h>

#include <cassert>
#include <filesystem>

#include "pages/formatetat.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u16 numFichier = 224, numCle = 225;
constexpr u32 tailleCle = 28;
constexpr std::size_t largeurDate = 8;
constexpr const char* formatCle = "%-8.8s%-10.10s%-10.10s";
constexpr const char* modeleDossier = "FNLXXXXXX";

std::string Cle(Date date, const std::string& compte1, const std::string& compte2) {
  std::string cle;
  RemplitEtat(cle, formatCle, {StrSDate(date), compte1, compte2});
  return cle;
}

Date DateDeCle(const std::string& cle) {
  assert(cle.size() >= largeurDate);
  const auto chiffres = static_cast<unsigned>(strtoul(cle.substr(0, largeurDate).c_str(), nullptr, 10));
  return FaitDate(chiffres % 100, chiffres / 100 % 100, chiffres / 10000);
}

std::string CheminDat(const std::string& dossier) { return Joint(dossier, "Central.qvd"); }
std::string CheminIdx(const std::string& dossier) { return Joint(dossier, "Central.qvi"); }

}  // namespace

FichierCentral::~FichierCentral() {
  if (EstCree()) Supprime();
}

bool FichierCentral::Cree() {
  assert(!EstCree());
  std::error_code erreur;
  const auto temporaire = std::filesystem::temp_directory_path(erreur);
  if (erreur) return false;
  std::string dossier = (temporaire / modeleDossier).string();
  if (!mkdtemp(dossier.data())) return false;
  m_dossier = dossier;
  if (m_magasin.QVNewDat(numFichier, CheminDat(m_dossier), sizeof(LigneCentrale)) &&
      m_magasin.QVNewIdx(numCle, CheminIdx(m_dossier), tailleCle, false, 0)) {
    // Open, they need no name: however the program ends, nothing of the books is left.
    OteNoms();
    return true;
  }
  Supprime();
  return false;
}

void FichierCentral::Supprime() {
  assert(EstCree());
  m_magasin.QVClose(numCle);
  m_magasin.QVClose(numFichier);
  // So that the store lets go of them; their names are gone, which is no error of anybody.
  const int erreur = m_magasin.QVFileErrorCode();
  for (const std::string& chemin : {CheminDat(m_dossier), CheminIdx(m_dossier)})
    m_magasin.QVDeleteFile(chemin);
  m_magasin.PoseErreur(erreur);
  OteNoms();
  m_dossier.clear();
}

void FichierCentral::OteNoms() {
  assert(!m_dossier.empty());
  Systeme& systeme = m_magasin.SystemeFichiers();
  systeme.Supprime(CheminDat(m_dossier));
  systeme.Supprime(CheminIdx(m_dossier));
  systeme.SupprimeDossier(m_dossier);
}

bool FichierCentral::Ajoute(Date date, const std::string& compte1, const std::string& compte2,
                            const SommesEtat& sommes) {
  assert(EstCree());
  LigneCentrale rec{};
  const std::string cle = Cle(date, compte1, compte2);
  assert(cle.size() == tailleCle && DateDeCle(cle) == date);
  if (const Position ancienne = m_magasin.QVFindKey(numCle, cle)) {
    if (!m_magasin.QVReadRec(numFichier, ancienne, &rec) || !m_magasin.QVDelRec(numFichier, ancienne) ||
        !m_magasin.QVDelKey(numCle, cle))
      return false;
  }
  rec.date = date;
  PoseTexte(rec.compte1, compte1);
  PoseTexte(rec.compte2, compte2);
  rec.debitFranc += sommes.debitFranc;
  rec.debitEuro += sommes.debitEuro;
  rec.creditFranc += sommes.creditFranc;
  rec.creditEuro += sommes.creditEuro;
  const Position position = m_magasin.QVAddRec(numFichier, &rec);
  return position && m_magasin.QVAddKey(numCle, cle, position);
}

u32 FichierCentral::NombreRangees() { return m_magasin.QVNumberOfKey(numCle); }

bool FichierCentral::Parcourt(const std::function<bool(const LigneCentrale&)>& suite) {
  assert(EstCree());
  std::string cle;
  LigneCentrale rec;
  for (Position p = m_magasin.QVFirstKey(numCle, cle); p; p = m_magasin.QVNextKey(numCle, cle)) {
    if (!m_magasin.QVReadRec(numFichier, p, &rec)) return false;
    rec.date = DateDeCle(cle);  // the store keeps its own mark in the first byte of a record
    if (!suite(rec)) return true;
  }
  return true;
}

}  // namespace fenlor

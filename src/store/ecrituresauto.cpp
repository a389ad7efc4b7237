// Automatic entries: "AUTO.dat" of an exercice, at most some hundred records
// without keys. A record's `Numero` is its place in the list, whatever its slot.
#include <algorithm>
#include <cassert>
#include <cstring>
#include <vector>

#include "store/definitions.h"
#include "store/etat.h"

namespace fenlor {

namespace {

constexpr const char* CleListe = "Ecritures automatiques";

struct Fiche {
  Position position;
  EcrituresAuto rec;
};

/// All records in list order. False when the file cannot be read.
bool LitListe(QVAPI& magasin, std::vector<Fiche>& liste) {
  const bool lu = magasin.QVParcours(FichierAuto, [&](Position position, const void* octets) {
    Fiche fiche{position, {}};
    std::memcpy(&fiche.rec, octets, sizeof fiche.rec);
    liste.push_back(fiche);
    return true;
  });
  std::stable_sort(liste.begin(), liste.end(),
                   [](const Fiche& a, const Fiche& b) { return a.rec.Numero < b.rec.Numero; });
  return lu;
}

/// Writes the records whose number is not their place.
bool Renumerote(Moteur& moteur, std::vector<Fiche>& liste) {
  for (std::size_t i = 0; i < liste.size(); ++i) {
    const u32 place = static_cast<u32>(i) + 1;
    if (liste[i].rec.Numero == place) continue;
    liste[i].rec.Numero = place;
    if (!moteur.Ecrit(FichierAuto, liste[i].position, &liste[i].rec)) return false;
  }
  return true;
}

/// Name of the exercice whose automatic entries are open.
std::string NomOuvert(Moteur& moteur) {
  const std::string dossier = DossierDe(moteur.CheminOuvert(FichierAuto));
  return dossier.substr(dossier.find_last_of('/') + 1);
}

}  // namespace

u32 QVAPI::GetEcrituresAutoRec(u32) {
  std::vector<Fiche> liste;
  return LitListe(*this, liste) ? static_cast<u32>(liste.size()) : 0;
}

bool QVAPI::ListeEcrituresAuto(std::vector<EcrituresAuto>& liste) {
  std::vector<Fiche> fiches;
  if (!LitListe(*this, fiches)) return false;
  liste.clear();
  for (Fiche& fiche : fiches) {
    fiche.rec.Numero = static_cast<u32>(liste.size()) + 1;
    liste.push_back(fiche.rec);
  }
  return true;
}

bool QVAPI::ReadEcrituresAuto(u32 indice, EcrituresAuto& rec, u32) {
  std::vector<Fiche> liste;
  if (!LitListe(*this, liste)) return false;
  if (indice == 0 || indice > liste.size()) return m_etat->Refuse(ErrPosition);
  rec = liste[indice - 1].rec;
  rec.Numero = indice;
  return true;
}

bool QVAPI::WriteEcrituresAuto(EcrituresAuto& rec, u32) {
  std::vector<Fiche> liste;
  if (!LitListe(*this, liste)) return false;
  if (rec.Numero > liste.size()) return m_etat->Refuse(ErrPosition);
  EcrituresAuto copie = rec;
  assert(rec.Numero <= liste.size());
  if (rec.Numero == 0) copie.Numero = static_cast<u32>(liste.size()) + 1;
  Unite unite(*this);
  if (!Renumerote(*m_etat->moteur, liste)) return false;
  const bool ecrit = rec.Numero == 0
                         ? m_etat->moteur->Ajoute(FichierAuto, &copie) != 0
                         : m_etat->moteur->Ecrit(FichierAuto, liste[rec.Numero - 1].position, &copie);
  if (!ecrit || !unite.Valide()) return false;
  rec.Numero = copie.Numero;
  return true;
}

bool QVAPI::DeleteEcrituresAuto(u32 indice, u32) {
  std::vector<Fiche> liste;
  if (!LitListe(*this, liste)) return false;
  if (indice == 0 || indice > liste.size()) return m_etat->Refuse(ErrPosition);
  Unite unite(*this);
  if (!m_etat->moteur->Supprime(FichierAuto, liste[indice - 1].position)) return false;
  liste.erase(liste.begin() + (indice - 1));
  if (!Renumerote(*m_etat->moteur, liste)) return false;
  return unite.Valide();
}

bool QVAPI::FlushEcrituresAuto(u32) {
  if (!m_etat->moteur->EstOuvertFichier(FichierAuto)) return m_etat->Refuse(ErrPasOuvert);
  std::string noms;
  std::vector<Fiche> liste;
  if (!LitListe(*this, liste)) return false;
  for (std::size_t i = 1; i <= liste.size(); ++i) {
    if (i > 1) noms += ',';
    noms += "AUTO" + std::to_string(i);
  }
  const std::string exercice = NomOuvert(*m_etat->moteur);
  assert(!exercice.empty());
  if (m_etat->reglages->Lit(exercice, CleListe) == noms || m_etat->reglages->Ecrit(exercice, CleListe, noms))
    return true;
  return m_etat->Refuse(m_etat->reglages->Erreur());
}

}  // namespace fenlor

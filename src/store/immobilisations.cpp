// Fixed assets, their real depreciations, and the two tables of degressive rates.
#include <algorithm>
#include <charconv>
#include <cstring>

#include "store/definitions.h"
#include "store/etat.h"
#include "store/ouverture.h"

namespace fenlor {

namespace {

constexpr u32 NumeroInterdit = 0xFFFFFFFF;
constexpr const char* SectionImmo = "IMMO";
constexpr const char* CleDernier = "Dernier";

constexpr TauxDegressif TableGenerale[] = {
    {3, 1.25, 41.66}, {4, 1.25, 31.25}, {5, 1.75, 35},     {6, 1.75, 28.16}, {6.66, 2.25, 33.75},
    {8, 2.25, 28.12}, {10, 2.25, 22.5}, {12, 2.25, 18.75}, {15, 2.25, 15},   {20, 2.25, 11.25}};
/// Purchases of 01/02/1996 to 31/01/1997. The coefficient of six years and the
/// rate of three stand as the table has them.
constexpr TauxDegressif Table1996[] = {{3, 2.5, 82.33},   {4, 2.5, 62.5},  {5, 3, 60},    {6, 6, 50},
                                       {6.66, 3.5, 52.5}, {8, 3.5, 43.75}, {10, 3.5, 35}, {12, 3.5, 29.16},
                                       {15, 3.5, 23.33},  {20, 3.5, 17.5}};

/// Adds a record, or replaces the one at `ancienne`.
bool Pose(QVAPI& magasin, Moteur& moteur, u16 fichier, Position ancienne, const void* rec) {
  QVAPI::Unite unite(magasin);
  if (ancienne != 0) return moteur.Remplace(fichier, ancienne, rec) && unite.Valide();
  const Position position = moteur.Ajoute(fichier, rec);
  return position != 0 && moteur.AjouteCles(fichier, position, rec, false) && unite.Valide();
}

bool Ote(QVAPI& magasin, Moteur& moteur, u16 fichier, Position position, const void* rec) {
  QVAPI::Unite unite(magasin);
  return moteur.SupprimeCles(fichier, position, rec) && moteur.Supprime(fichier, position) && unite.Valide();
}

u32 DernierInscrit(EtatQVAPI& etat) {
  const std::string valeur = etat.reglages->Lit(SectionImmo, CleDernier);
  u32 numero = 0;
  std::from_chars(valeur.data(), valeur.data() + valeur.size(), numero);
  return numero;
}

}  // namespace

bool QVAPI::WriteImmobilisations(const Immobilisation& rec) {
  if (rec.Numero == 0 || rec.Numero == NumeroInterdit) return m_etat->Refuse(ErrValeur);
  const Ouverture ouverture(*this, FichierImmo);
  if (!ouverture) return false;
  const Position ancienne = m_etat->moteur->TrouveCle(94, MakeImmobilisationsKey2(rec.Numero));
  return Pose(*this, *m_etat->moteur, FichierImmo, ancienne, &rec);
}

bool QVAPI::DeleteImmobilisations(Position position) {
  const Ouverture ouverture(*this, FichierImmo);
  if (!ouverture) return false;
  Immobilisation rec{};
  if (!m_etat->moteur->Lit(FichierImmo, position, &rec)) return false;
  // Its number must not come back, even when nobody had noted it.
  if (rec.Numero != NumeroInterdit && !WriteLastImmobilisationsID(rec.Numero)) return false;
  return Ote(*this, *m_etat->moteur, FichierImmo, position, &rec);
}

u32 QVAPI::GetFreeImmobilisationsID(const std::string&) {
  if (!m_etat->reglages) return m_etat->Refuse(ErrPasOuvert);
  const Ouverture ouverture(*this, FichierImmo);
  if (!ouverture) return 0;
  u32 dernier = DernierInscrit(*m_etat);
  if (m_etat->reglages->Erreur() != 0) return m_etat->Refuse(m_etat->reglages->Erreur());
  // A walk over the slots leaves the callers' key cursors alone.
  const bool lu = QVParcours(FichierImmo, [&](Position, const void* octets) {
    u32 numero = 0;
    std::memcpy(&numero, octets, sizeof numero);
    dernier = std::max(dernier, numero);
    return true;
  });
  if (!lu) return 0;
  if (dernier >= NumeroInterdit - 1) return m_etat->Refuse(ErrCompteurImmo);
  return dernier + 1;
}

bool QVAPI::WriteLastImmobilisationsID(u32 numero) {
  if (!m_etat->reglages) return m_etat->Refuse(ErrPasOuvert);
  if (numero == NumeroInterdit) return m_etat->Refuse(ErrValeur);
  if (numero <= DernierInscrit(*m_etat)) return true;
  if (m_etat->reglages->Ecrit(SectionImmo, CleDernier, std::to_string(numero))) return true;
  return m_etat->Refuse(m_etat->reglages->Erreur());
}

Position QVAPI::ReadAmortissements(Amortissement& rec) {
  const Ouverture ouverture(*this, FichierAmo);
  if (!ouverture) return 0;
  const Position position = m_etat->moteur->TrouveCle(96, MakeAmortissementsKey(rec.Numero, rec.Annee));
  return position != 0 && m_etat->moteur->Lit(FichierAmo, position, &rec) ? position : 0;
}

bool QVAPI::WriteAmortissements(const Amortissement& rec) {
  if (rec.Numero == 0 || rec.Numero == NumeroInterdit || rec.Annee == 0) return m_etat->Refuse(ErrValeur);
  const Ouverture ouverture(*this, FichierAmo);
  if (!ouverture) return false;
  const Position ancienne = m_etat->moteur->TrouveCle(96, MakeAmortissementsKey(rec.Numero, rec.Annee));
  return Pose(*this, *m_etat->moteur, FichierAmo, ancienne, &rec);
}

bool QVAPI::DeleteAmortissements(Position position) {
  const Ouverture ouverture(*this, FichierAmo);
  if (!ouverture) return false;
  Amortissement rec{};
  if (!m_etat->moteur->Lit(FichierAmo, position, &rec)) return false;
  return Ote(*this, *m_etat->moteur, FichierAmo, position, &rec);
}

bool QVAPI::ReadTauxDegressif(Date achat, u32 indice, TauxDegressif& rec) const {
  const bool majore = achat >= FaitDate(1, 2, 1996) && achat <= FaitDate(31, 1, 1997);
  if (indice == 0 || indice > std::size(TableGenerale)) return false;
  rec = majore ? Table1996[indice - 1] : TableGenerale[indice - 1];
  return true;
}

}  // namespace fenlor

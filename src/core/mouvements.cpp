#include "core/mouvements.h"

#include <cstring>

#include "core/valeurs.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::size_t tailleCommune = offsetof(Mouvement, Pointee);
static_assert(offsetof(EcrSimple, CompteTresorerie) == tailleCommune);
static_assert(offsetof(EcrStandard, NbLignesTresorerie) == tailleCommune);

}  // namespace

template <class Record>
Mouvement CEntreeDe<Record>::Entete() const {
  Mouvement entete{};
  std::memcpy(&entete, &Rec, tailleCommune);
  entete.Pointee = Rec.Pointee;
  return entete;
}

template class CEntreeDe<Mouvement>;
template class CEntreeDe<EcrSimple>;
template class CEntreeDe<EcrStandard>;

bool CEntree::OpenFile() {
  Lines = std::make_unique<CLines>(m_app, Path);
  if (Lines->OpenFile()) return true;
  Lines.reset();
  return false;
}

void CEntree::CloseFile() { Lines.reset(); }

Position CEntree::BrowseKey(u32 indice) {
  if (!Lines) return 0;
  const Mouvement entete = Entete();
  Lines->ClearRec();
  Line& ligne = *Lines->Rec;
  ligne.Mouvement = entete.Mouvement;
  ligne.Journal = entete.Journal;
  std::memcpy(ligne.Libelle, entete.Libelle, sizeof ligne.Libelle);
  ligne.Ligne = entete.Ligne;
  ligne.Date = entete.Date;
  PoseTexte(ligne.Compte, CompteCherche());
  Cle = Lines->MakeKey(indice);
  CleIndex = indice;
  return m_app.Magasin.QVBrowseKey(static_cast<u16>(Lines->NumCle + indice), Cle);
}

bool CEntree::LitEntree(Position position) {
  return position != 0 && Lines->ReadRec(position) && ReadRec(Lines->Rec->Mouvement);
}

bool CEntree::Browse(u32 indice) { return LitEntree(BrowseKey(indice)); }

Position CEntree::NextEntry(u32 indice) {
  if (!Lines) return 0;
  const auto numero = static_cast<u16>(Lines->NumCle + indice);
  const u32 mouvement = QVAPI::GetMouvements(Cle, static_cast<int>(indice));
  // The key may be gone with its entry: the first one not below it takes its place.
  std::string cle = Cle;
  Position position = m_app.Magasin.QVBrowseKey(numero, cle);
  while (position != 0 && QVAPI::GetMouvements(cle, static_cast<int>(indice)) == mouvement)
    position = m_app.Magasin.QVNextKey(numero, cle);
  if (position != 0) Cle = cle;
  return position;
}

bool CEntree::Next(u32 indice) { return LitEntree(NextEntry(indice)); }

Position CEntree::AddLine(Line& ligne) {
  const Mouvement entete = Entete();
  ligne.Mouvement = entete.Mouvement;
  ligne.Journal = entete.Journal;
  ligne.Genre = entete.Genre;
  std::memcpy(ligne.Libelle, entete.Libelle, sizeof ligne.Libelle);
  ligne.Ligne = entete.Ligne;
  ligne.Date = entete.Date;
  ligne.DateLigne = entete.Date;
  ligne.Validee = entete.Validee;
  ligne.Pointee = entete.Pointee;
  ligne.SaisieEuro = entete.SaisieEuro;
  return m_app.Magasin.AddLines(Path, ligne);
}

bool CEntree::AddEcart(f64 montant, bool euro) {
  if (montant == 0) return true;
  QVAPI& magasin = m_app.Magasin;
  const f64 taux = magasin.GetTauxEuro(Entete().Date);
  Line ligne{};
  ligne.Role = RoleLibre;
  ligne.Sens = montant < 0;
  if (montant < 0) montant = -montant;
  ligne.MontantEuro = euro ? montant : QVAPI::ConvertFrancToEuro(taux, montant);
  ligne.MontantFranc = euro ? QVAPI::ConvertEuroToFranc(taux, montant) : montant;

  const std::string compte = ligne.Sens ? magasin.GetCompteEcartCredit() : magasin.GetCompteEcartDebit();
  CPlan plan(m_app, Path);
  PoseTexte(plan.Rec->Compte, QVAPI::GetLongCompte(compte));
  if (!plan.OpenFile() || !plan.Browse(0) || CompareComptes(LitTexte(plan.Rec->Compte), compte) != 0)
    return false;
  std::memcpy(ligne.Compte, plan.Rec->Compte, sizeof ligne.Compte);
  std::memcpy(ligne.Designation, plan.Rec->Designation, sizeof ligne.Designation);
  ligne.TypeCompte = plan.Rec->Type;
  ligne.ModePaiement = PaiementAutre;
  return AddLine(ligne) != 0;
}

bool CMouvements::ReadRec(u32 mouvement) {
  Mouvement lu{};
  if (!m_app.Magasin.ReadMouvements(Path, mouvement, lu)) return false;
  Rec = lu;
  return true;
}

bool COpDiverses::ReadRec(u32 mouvement) {
  Mouvement lu{};
  if (!m_app.Magasin.ReadOpDiverses(Path, mouvement, lu)) return false;
  Rec = lu;
  return true;
}

bool CEcrSimple::ReadRec(u32 mouvement) {
  EcrSimple lu{};
  if (!m_app.Magasin.ReadEcrSimple(Path, mouvement, lu)) return false;
  Rec = lu;
  return true;
}

u32 CEcrSimple::AddRec() { return m_app.Magasin.AddEcrSimple(Path, Rec); }

std::string CEcrSimple::CompteCherche() const { return LitTexte(Rec.CompteTresorerie); }

CEcrStandard::~CEcrStandard() { m_app.Magasin.LibereLignes(Rec); }

void CEcrStandard::ClearRec() {
  m_app.Magasin.LibereLignes(Rec);
  Rec = EcrStandard{};
}

bool CEcrStandard::ReadRec(u32 mouvement) {
  EcrStandard lu{};
  if (!m_app.Magasin.ReadEcrStandard(Path, mouvement, lu)) return false;
  m_app.Magasin.LibereLignes(Rec);
  Rec = lu;
  return true;
}

u32 CEcrStandard::AddRec() { return m_app.Magasin.AddEcrStandard(Path, Rec); }

}  // namespace fenlor

#include "core/mouvements.h"

#include <cassert>
#include <cmath>
#include <cstring>

#include "store/ecritures_lignes.h"
#include "store/texte1252.h"

namespace fenlor {

Line COpDiverses::FaitLigne(const Plan& compte, f64 montant, bool euro) const {
  const f64 taux = m_app.Magasin.GetTauxEuro(Rec.Date), absolu = std::fabs(montant);
  Line ligne{};
  PoseTexte(ligne.Compte, LitTexte(compte.Compte));
  PoseTexte(ligne.Designation, LitTexte(compte.Designation));
  ligne.TypeCompte = compte.Type;
  ligne.MontantFranc = euro ? QVAPI::ConvertEuroToFranc(taux, absolu) : absolu;
  ligne.MontantEuro = euro ? absolu : QVAPI::ConvertFrancToEuro(taux, absolu);
  ligne.Sens = montant > 0;
  assert(ligne.MontantFranc >= 0 && ligne.MontantEuro >= 0);  // the side tells the sign
  return ligne;
}

Position COpDiverses::AddLine(Line ligne) {
  ligne.Mouvement = Rec.Mouvement;
  ligne.Journal = Rec.Journal;
  ligne.Genre = Rec.Genre;
  std::memcpy(ligne.Libelle, Rec.Libelle, sizeof ligne.Libelle);
  ligne.Ligne = Rec.Ligne;
  ligne.Date = ligne.DateLigne = Rec.Date;
  ligne.Validee = Rec.Validee;
  ligne.Pointee = Rec.Pointee;
  ligne.SaisieEuro = Rec.SaisieEuro;
  ligne.Role = RoleLibre;
  assert(Rec.Mouvement != 0 && ligne.MontantFranc >= 0);
  for (auto ancienne = Anciennes.begin(); ancienne != Anciennes.end(); ++ancienne) {
    if (LitTexte(ancienne->Compte) != LitTexte(ligne.Compte) || !ancienne->Sens != !ligne.Sens) continue;
    CopieMarques(*ancienne, ligne);
    if (ligne.TypeCompte != Tresorerie) ligne.ModePaiement = ancienne->ModePaiement;
    if (GardeMontants) {
      ligne.MontantFranc = ancienne->MontantFranc;
      ligne.MontantEuro = ancienne->MontantEuro;
    }
    Anciennes.erase(ancienne);
    break;
  }
  return m_app.Magasin.AddLines(m_app.PathExercice, ligne);
}

bool COpDiverses::AddEcart(f64 montant, bool euro) {
  if (montant == 0) return true;
  QVAPI& magasin = m_app.Magasin;
  CPlan plan(m_app, {});
  PoseTexte(plan.Rec->Compte, QVAPI::GetLongCompte(montant < 0 ? magasin.GetCompteEcartCredit()
                                                               : magasin.GetCompteEcartDebit()));
  if (!plan.OpenFile() || !plan.Find(0)) return false;
  Line ligne = FaitLigne(*plan.Rec, -montant, euro);
  ligne.ModePaiement = PaiementAutre;
  return AddLine(ligne) != 0;
}

std::string_view NomDeLigne(const Line& ligne) {
  const bool propre = ligne.Genre == GenreOD && ligne.Designation[0] != '\0';
  return propre ? std::string_view(ligne.Designation, strnlen(ligne.Designation, sizeof ligne.Designation))
                : std::string_view(ligne.Libelle, strnlen(ligne.Libelle, sizeof ligne.Libelle));
}

}  // namespace fenlor

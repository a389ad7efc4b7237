#include "store/ecritures_lignes.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstring>
#include <type_traits>

#include "store/cumuls.h"
#include "store/qvapi.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// An amount in cents, in both currencies.
struct Montants {
  i64 franc = 0;
  i64 euro = 0;

  bool Nul() const { return franc == 0 && euro == 0; }
  Montants operator-(const Montants& b) const { return {franc - b.franc, euro - b.euro}; }
  Montants operator-() const { return {-franc, -euro}; }
  Montants& operator+=(const Montants& b) {
    franc += b.franc;
    euro += b.euro;
    return *this;
  }
};

bool Convertit(f64 franc, f64 euro, Montants& montants) {
  if (!MontantPossible(franc) || !MontantPossible(euro)) return false;
  montants = {Centimes(franc), Centimes(euro)};
  return true;
}

/// Writes the amounts on the side `credit`, or on the other one when negative.
bool PoseMontants(Line& ligne, bool credit, const Montants& m) {
  if ((m.franc < 0 && m.euro > 0) || (m.franc > 0 && m.euro < 0)) return false;
  const i64 maitre = ligne.SaisieEuro ? m.euro : m.franc;
  const i64 signe = maitre ? maitre : m.franc + m.euro;
  ligne.Sens = (signe < 0) != credit ? 1 : 0;
  ligne.MontantFranc = DeCentimes(std::abs(m.franc));
  ligne.MontantEuro = DeCentimes(std::abs(m.euro));
  assert(ligne.Sens <= 1 && ligne.MontantFranc >= 0 && ligne.MontantEuro >= 0);
  return MontantPossible(ligne.MontantFranc) && MontantPossible(ligne.MontantEuro);
}

/// Amounts of a line, positive on the side `credit`.
Montants LitMontants(const Line& ligne, bool credit) {
  const Montants m{Centimes(ligne.MontantFranc), Centimes(ligne.MontantEuro)};
  return (ligne.Sens != 0) == credit ? m : -m;
}

template <class De, class Vers>
void CopieEnTete(const De& de, Vers& vers) {
  vers.Mouvement = de.Mouvement;
  vers.Journal = de.Journal;
  vers.Genre = de.Genre;
  std::memcpy(vers.Libelle, de.Libelle, sizeof vers.Libelle);
  vers.Ligne = de.Ligne;
  vers.Date = de.Date;
  vers.Validee = de.Validee;
  std::memcpy(vers.Piece, de.Piece, sizeof vers.Piece);
  std::memcpy(vers.Tiers, de.Tiers, sizeof vers.Tiers);
  vers.LienPoste = de.LienPoste;
  vers.LienA = de.LienA;
  vers.LienB = de.LienB;
  vers.LienId = de.LienId;
  vers.Reserve134 = de.Reserve134;
  vers.LienApplication = de.LienApplication;
  vers.SaisieEuro = de.SaisieEuro;
}

template <class Rec>
Line LigneModele(const Rec& rec) {
  Line ligne{};
  CopieEnTete(rec, ligne);
  ligne.Genre = std::is_same_v<Rec, EcrSimple> ? GenreSimple : GenreStandard;
  ligne.DateLigne = rec.Date;
  ligne.Validee = rec.Validee != 0;
  ligne.Pointee = rec.Pointee != 0;
  ligne.SaisieEuro = rec.SaisieEuro != 0;
  ligne.TauxTaxe = rec.TauxTaxe;
  std::memcpy(ligne.ComptePrincipal, rec.Compte, sizeof ligne.ComptePrincipal);
  std::memcpy(ligne.CompteTaxe, rec.CompteTaxe, sizeof ligne.CompteTaxe);
  return ligne;
}

template <class Rec>
int Deplie(const Rec& rec, std::span<const LineTresor> tresor, const std::string& comptePerso,
           std::vector<Line>& lignes) {
  lignes.clear();
  if (rec.Journal != JournalRecettes && rec.Journal != JournalDepenses) return ErrValeur;
  Montants total, repartition, taxe;
  if (!Convertit(rec.MontantFranc, rec.MontantEuro, total) ||
      !Convertit(rec.RepartitionFranc, rec.RepartitionEuro, repartition) ||
      !Convertit(rec.TaxeFranc, rec.TaxeEuro, taxe)) {
    return ErrValeur;
  }
  const bool recette = rec.Journal == JournalRecettes;
  const Line modele = LigneModele(rec);
  lignes.reserve(3 + tresor.size());

  const auto ajoute = [&](RoleLigne role, const char* compte, const Montants& montants) {
    if (montants.Nul()) return true;
    Line& ligne = lignes.emplace_back(modele);
    ligne.Rang = static_cast<u32>(lignes.size() - 1);
    ligne.Role = role;
    std::memcpy(ligne.Compte, compte, sizeof ligne.Compte);
    return PoseMontants(ligne, recette != (role == RoleTresorerie), montants);
  };

  char perso[11];
  std::memcpy(perso, rec.ComptePerso, sizeof perso);
  if (!perso[0]) PoseTexte(perso, comptePerso);
  if (!ajoute(RoleCompte, rec.Compte, repartition - taxe) || !ajoute(RoleTva, rec.CompteTaxe, taxe) ||
      !ajoute(RolePerso, perso, total - repartition)) {
    return ErrValeur;
  }
  for (const LineTresor& t : tresor) {
    Montants montants;
    if (!Convertit(t.MontantFranc, t.MontantEuro, montants)) return ErrValeur;
    if (montants.Nul()) continue;
    if (!ajoute(RoleTresorerie, t.Compte, montants)) return ErrValeur;
    Line& ligne = lignes.back();
    ligne.ModePaiement = t.ModePaiement;
    ligne.Rapprochee = t.Rapprochee != 0;
    ligne.Remise = t.Remise != 0;
    ligne.Pointee = rec.Pointee != 0 || t.Pointee != 0;
  }
  return lignes.empty() ? ErrEcritureVide : 0;
}

/// Credits less debits.
[[maybe_unused]] Montants Solde(const std::vector<Line>& lignes) {
  Montants solde;
  for (const Line& ligne : lignes) solde += LitMontants(ligne, true);
  return solde;
}

template <class Rec>
bool APersonnel(const Rec& rec) {
  return Centimes(rec.MontantFranc) != Centimes(rec.RepartitionFranc) ||
         Centimes(rec.MontantEuro) != Centimes(rec.RepartitionEuro);
}

/// All but the treasury side.
template <class Rec>
void Replie(const std::vector<Line>& lignes, Rec& rec) {
  assert(!lignes.empty());
  rec = Rec{};
  const Line& premiere = lignes.front();
  CopieEnTete(premiere, rec);
  rec.Validee = 1;
  rec.Pointee = 0;
  for (const Line& ligne : lignes) {
    if (!ligne.Validee) rec.Validee = 0;
    if (ligne.Pointee) rec.Pointee = 1;
  }
  if constexpr (!std::is_same_v<Rec, Mouvement>) {
    const bool recette = premiere.Journal == JournalRecettes;
    rec.EstRecette = recette;
    rec.TauxTaxe = premiere.TauxTaxe;
    std::memcpy(rec.Compte, premiere.ComptePrincipal, sizeof rec.Compte);
    std::memcpy(rec.CompteTaxe, premiere.CompteTaxe, sizeof rec.CompteTaxe);
    Montants repartition, taxe, personnel;
    for (const Line& ligne : lignes) {
      if (ligne.Role == RoleCompte) {
        repartition += LitMontants(ligne, recette);
      } else if (ligne.Role == RoleTva) {
        taxe += LitMontants(ligne, recette);
      } else if (ligne.Role == RolePerso) {
        personnel += LitMontants(ligne, recette);
        std::memcpy(rec.ComptePerso, ligne.Compte, sizeof rec.ComptePerso);
      }
    }
    repartition += taxe;
    personnel += repartition;
    rec.MontantFranc = DeCentimes(personnel.franc);
    rec.MontantEuro = DeCentimes(personnel.euro);
    rec.RepartitionFranc = DeCentimes(repartition.franc);
    rec.RepartitionEuro = DeCentimes(repartition.euro);
    rec.TaxeFranc = DeCentimes(taxe.franc);
    rec.TaxeEuro = DeCentimes(taxe.euro);
  }
}

}  // namespace

bool AvecPersonnel(const EcrSimple& rec) { return APersonnel(rec); }
bool AvecPersonnel(const EcrStandard& rec) { return APersonnel(rec); }

int DeplieEcriture(const EcrSimple& rec, const std::string& comptePerso, std::vector<Line>& lignes) {
  LineTresor tresor{};
  std::memcpy(tresor.Compte, rec.CompteTresorerie, sizeof tresor.Compte);
  tresor.MontantFranc = rec.MontantFranc;
  tresor.MontantEuro = rec.MontantEuro;
  tresor.ModePaiement = rec.ModePaiement;
  tresor.Rapprochee = rec.Rapprochee;
  tresor.Remise = rec.Remise;
  const int rc = Deplie(rec, {&tresor, 1}, comptePerso, lignes);
  assert(rc || Solde(lignes).Nul());
  // Without its treasury line the treasury account could not be read back.
  return rc == 0 && lignes.back().Role != RoleTresorerie ? ErrEcritureVide : rc;
}

int DeplieEcriture(const EcrStandard& rec, std::span<const LineTresor> tresor, const std::string& comptePerso,
                   std::vector<Line>& lignes) {
  return Deplie(rec, tresor, comptePerso, lignes);
}

int NormaliseLigne(Line& ligne) {
  Montants montants;
  if (!Convertit(ligne.MontantFranc, ligne.MontantEuro, montants)) return ErrValeur;
  const u32 sens = ligne.Sens;
  if (!PoseMontants(ligne, sens != 0, montants)) return ErrValeur;
  if ((sens != 0) == (ligne.Sens != 0)) ligne.Sens = sens;
  return 0;
}

void CopieMarques(const Line& de, Line& vers) {
  vers.Pointee = de.Pointee;
  vers.Remise = de.Remise;
  vers.DateRemise = de.DateRemise;
  vers.Rapprochee = de.Rapprochee;
  std::memcpy(vers.RappCompte, de.RappCompte, sizeof vers.RappCompte);
  std::memcpy(vers.RappLibelle, de.RappLibelle, sizeof vers.RappLibelle);
  vers.RappDate = de.RappDate;
  vers.RappDateValeur = de.RappDateValeur;
  vers.RappFranc = de.RappFranc;
  vers.RappEuro = de.RappEuro;
  vers.RappSens = de.RappSens;
}

void ReconduitMarques(const std::vector<Line>& anciennes, std::vector<Line>& nouvelles) {
  assert(&anciennes != &nouvelles);
  std::vector<char> prises(anciennes.size(), 0);
  const u32 pointee =
      std::any_of(anciennes.begin(), anciennes.end(), [](const Line& l) { return l.Pointee != 0; });
  for (Line& nouvelle : nouvelles) {
    const Line* source = nullptr;
    for (std::size_t i = 0; i < anciennes.size() && !source; ++i) {
      const Line& ancienne = anciennes[i];
      if (prises[i] || (ancienne.Sens != 0) != (nouvelle.Sens != 0)) continue;
      if (std::strncmp(ancienne.Compte, nouvelle.Compte, sizeof nouvelle.Compte) != 0) continue;
      prises[i] = 1;
      source = &ancienne;
    }
    const Line aucune{};
    CopieMarques(source ? *source : aucune, nouvelle);
    if (!source) nouvelle.Pointee = pointee;
  }
}

void ReplieEcriture(const std::vector<Line>& lignes, Mouvement& rec) { Replie(lignes, rec); }

void ReplieEcriture(const std::vector<Line>& lignes, EcrSimple& rec) {
  Replie(lignes, rec);
  const auto tresor =
      std::find_if(lignes.begin(), lignes.end(), [](const Line& l) { return l.Role == RoleTresorerie; });
  if (tresor == lignes.end()) return;
  std::memcpy(rec.CompteTresorerie, tresor->Compte, sizeof rec.CompteTresorerie);
  rec.ModePaiement = tresor->ModePaiement;
  rec.Rapprochee = tresor->Rapprochee;
  rec.Remise = tresor->Remise;
}

void ReplieEcriture(const std::vector<Line>& lignes, EcrStandard& rec, std::vector<LineTresor>& tresor) {
  Replie(lignes, rec);
  tresor.clear();
  for (const Line& ligne : lignes) {
    if (ligne.Role != RoleTresorerie) continue;
    const Montants montants = LitMontants(ligne, ligne.Journal != JournalRecettes);
    LineTresor& t = tresor.emplace_back();
    std::memcpy(t.Compte, ligne.Compte, sizeof t.Compte);
    t.MontantFranc = DeCentimes(montants.franc);
    t.MontantEuro = DeCentimes(montants.euro);
    t.ModePaiement = ligne.ModePaiement;
    t.Rapprochee = ligne.Rapprochee;
    t.Pointee = ligne.Pointee;
    t.Remise = ligne.Remise;
    t.Validee = ligne.Validee;
  }
  rec.NbLignesTresorerie = static_cast<u32>(tresor.size());
}

}  // namespace fenlor

// The books of the store beside the naive model of them, and all the ways in
// which the two are compared.
#pragma once

#include <cstring>
#include <set>

#include "store/livres.h"
#include "store/modele_livres.h"

namespace fenlor {

inline f64 EnUnites(i64 cents) { return static_cast<f64>(cents) / 100.0; }
inline i64 EnCents(f64 unites) { return std::llround(unites * 100); }

/// The other currency, the same way for either sign.
inline i64 Convertit(i64 cents, bool versEuro) {
  const f64 valeur = static_cast<f64>(std::abs(cents)) * (versEuro ? 1 / 6.55957 : 6.55957);
  const i64 autre = static_cast<i64>(std::floor(valeur + 0.5));
  return cents < 0 ? -autre : autre;
}

inline Cents DansLesDeux(i64 maitre, bool euro) {
  return euro ? Cents{Convertit(maitre, false), maitre} : Cents{maitre, Convertit(maitre, true)};
}

inline LigneModele DepuisLigne(const Line& l) {
  LigneModele m;
  m.journal = l.Journal;
  m.genre = l.Genre;
  m.typeCompte = l.TypeCompte;
  m.mode = l.ModePaiement;
  m.libelle = LitTexte(l.Libelle);
  m.piece = LitTexte(l.Piece);
  m.tiers = LitTexte(l.Tiers);
  m.designation = LitTexte(l.Designation);
  m.compte = LitTexte(l.Compte);
  m.principal = LitTexte(l.ComptePrincipal);
  m.compteTaxe = LitTexte(l.CompteTaxe);
  m.rappCompte = LitTexte(l.RappCompte);
  m.rappLibelle = LitTexte(l.RappLibelle);
  m.ligne = l.Ligne;
  m.date = l.Date;
  m.dateLigne = l.DateLigne;
  m.lienId = l.LienId;
  m.lienA = l.LienA;
  m.dateRemise = l.DateRemise;
  m.rappDate = l.RappDate;
  m.rappDateValeur = l.RappDateValeur;
  m.role = l.Role;
  m.montant = {EnCents(l.MontantFranc), EnCents(l.MontantEuro)};
  m.rapp = {EnCents(l.RappFranc), EnCents(l.RappEuro)};
  m.taux = l.TauxTaxe;
  m.credit = l.Sens != 0;
  m.euro = l.SaisieEuro != 0;
  m.validee = l.Validee != 0;
  m.pointee = l.Pointee != 0;
  m.rapprochee = l.Rapprochee != 0;
  m.remise = l.Remise != 0;
  m.rappCredit = l.RappSens != 0;
  return m;
}

/// The very bits of the amounts, not their cents alone.
inline bool MontantsExacts(const Line& l, const LigneModele& m) {
  return l.MontantFranc == EnUnites(m.montant[0]) && l.MontantEuro == EnUnites(m.montant[1]);
}

/// A link whose words all follow from its number.
template <class Rec>
void PoseLien(Rec& rec, u32 id) {
  rec.LienId = id;
  rec.Reserve134 = id * 2;
  rec.LienB = id * 3;
  rec.LienPoste = static_cast<u16>(id % 7);
  rec.LienApplication = static_cast<i16>(id % 5);
}

template <class Rec>
void Remplit(const SaisieModele& s, Rec& rec) {
  rec.Journal = s.journal;
  rec.Genre = s.genre;
  PoseTexte(rec.Libelle, s.libelle);
  PoseTexte(rec.Piece, s.piece);
  PoseTexte(rec.Tiers, s.tiers);
  rec.Ligne = s.ligne;
  rec.Date = s.date;
  PoseLien(rec, s.lienId);
  rec.LienA = s.lienA;
  rec.SaisieEuro = s.euro;
  rec.Validee = s.validee;
  if constexpr (!std::is_same_v<Rec, Mouvement>) {
    rec.Pointee = s.pointee;
    rec.EstRecette = s.journal == 1;
    PoseTexte(rec.Compte, s.compte);
    PoseTexte(rec.ComptePerso, s.comptePerso);
    PoseTexte(rec.CompteTaxe, s.compteTaxe);
    rec.TauxTaxe = s.taux;
    rec.MontantFranc = EnUnites(s.total[0]);
    rec.MontantEuro = EnUnites(s.total[1]);
    rec.RepartitionFranc = EnUnites(s.part[0]);
    rec.RepartitionEuro = EnUnites(s.part[1]);
    rec.TaxeFranc = EnUnites(s.taxe[0]);
    rec.TaxeEuro = EnUnites(s.taxe[1]);
  }
}

class ComparaisonLivres {
 public:
  explicit ComparaisonLivres(bool clesEnMemoire) : m_livres(clesEnMemoire), m_ex(m_livres.Exercice()) {
    for (const CompteEssai& c : ComptesEssai()) {
      m_comptes.emplace_back(c.numero);
      m_modele.comptes[c.numero] = {c.type, c.bancaire != 0};
    }
    m_modele.comptePerso = "1080000000";
  }

  /// Every line, every key, every total; keys against records.
  void CompareTout() {
    CompareTotaux();
    std::array<std::set<std::string>, 6> cles;
    std::string cle;
    Position position = m_livres->QVFirstKey(79, cle);
    for (const auto& [mouvement, ecriture] : m_modele.ecritures) {
      for (u32 rang = 0; rang < ecriture.lignes.size(); ++rang) {
        const LigneModele& l = ecriture.lignes[rang];
        ASSERT_NE(position, 0u) << mouvement;
        Line line{};
        ASSERT_TRUE(m_livres->QVReadRec(FichierJournal, position, &line));
        ASSERT_EQ(+line.Mouvement, mouvement);
        ASSERT_EQ(+line.Rang, rang);
        ASSERT_TRUE(DepuisLigne(line) == l && MontantsExacts(line, l)) << mouvement << " " << rang;
        PoseCles(mouvement, rang, l, cles);
        position = m_livres->QVNextKey(79, cle);
      }
    }
    ASSERT_EQ(position, 0u);
    for (u16 i = 0; i < 6; ++i) {
      position = m_livres->QVFirstKey(static_cast<u16>(75 + i), cle);
      for (const std::string& attendue : cles[i]) {
        ASSERT_NE(position, 0u);
        ASSERT_EQ(cle, attendue) << "key " << i;
        position = m_livres->QVNextKey(static_cast<u16>(75 + i), cle);
      }
      ASSERT_EQ(position, 0u) << "key " << i;
    }
    for (const u16 fichier : {FichierJournal, FichierComptes}) {
      const EtatFichier etat = m_livres->QVVerifie(fichier);
      ASSERT_TRUE(etat.anomalies.empty()) << etat.nom << ": " << etat.anomalies.front();
    }
  }

 protected:
  EcrSimple Simple(const SaisieModele& s) {
    EcrSimple rec{};
    Remplit(s, rec);
    PoseTexte(rec.CompteTresorerie, s.tresor[0].compte);
    rec.ModePaiement = s.tresor[0].mode;
    rec.Rapprochee = s.tresor[0].rapprochee;
    rec.Remise = s.tresor[0].remise;
    return rec;
  }
  EcrStandard Standard(const SaisieModele& s) {
    EcrStandard rec{};
    Remplit(s, rec);
    for (u32 i = 0; i < s.tresor.size(); ++i) {
      const TresorModele& t = s.tresor[i];
      LineTresor ligne{};
      PoseTexte(ligne.Compte, t.compte);
      ligne.MontantFranc = EnUnites(t.montant[0]);
      ligne.MontantEuro = EnUnites(t.montant[1]);
      ligne.ModePaiement = t.mode;
      ligne.Rapprochee = t.rapprochee;
      ligne.Pointee = t.pointee;
      ligne.Remise = t.remise;
      EXPECT_TRUE(m_livres->SetEcrLineTresor(i, rec, ligne));
    }
    return rec;
  }

  void CompareEcriture(u32 mouvement) {
    if (!m_compare) return;
    const auto place = m_modele.ecritures.find(mouvement);
    const std::vector<Line> lines = m_livres.Lignes(mouvement);
    if (place == m_modele.ecritures.end()) {
      ASSERT_TRUE(lines.empty());
      return;
    }
    const std::vector<LigneModele>& lignes = place->second.lignes;
    ASSERT_EQ(lines.size(), lignes.size()) << mouvement;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const LigneModele lue = DepuisLigne(lines[i]);
      ASSERT_EQ(+lines[i].Rang, i);
      ASSERT_TRUE(lue == lignes[i] && MontantsExacts(lines[i], lignes[i]))
          << mouvement << " " << i << ": " << lue.compte << " " << lue.montant[0] << " " << lue.montant[1]
          << " role " << lue.role << ", expected " << lignes[i].compte << " " << lignes[i].montant[0] << " "
          << lignes[i].montant[1] << " role " << lignes[i].role;
    }
    CompareRecord(mouvement, place->second);
  }

  /// The record of a typed entry, made again from its lines.
  void CompareRecord(u32 mouvement, const EcritureModele& ecriture) {
    const LigneModele& premiere = ecriture.lignes[0];
    if (premiere.genre == GenreOD) {
      Mouvement enTete{};
      ASSERT_EQ(m_livres->ReadOpDiverses(m_ex, mouvement, enTete), mouvement);
      EXPECT_EQ(+enTete.Date, premiere.date);
      return;
    }
    SaisieModele s = ecriture.saisie;
    s.libelle = premiere.libelle;
    s.date = premiere.date;
    s.ligne = premiere.ligne;
    s.lienId = premiere.lienId;
    s.lienA = premiere.lienA;
    s.validee = true;
    s.pointee = false;
    bool personnel = false;
    std::vector<TresorModele> tresor;
    for (const LigneModele& l : ecriture.lignes) {
      s.validee = s.validee && l.validee;
      s.pointee = s.pointee || l.pointee;
      if (l.role == RolePerso) {
        personnel = true;
        s.comptePerso = l.compte;
      }
      if (l.role != RoleTresorerie) continue;
      const bool envers = l.credit == (l.journal == 1);
      tresor.push_back(
          {l.compte, envers ? Cents{} - l.montant : l.montant, l.mode, l.rapprochee, l.pointee, l.remise});
    }
    if (!personnel) s.comptePerso.clear();
    s.tresor = tresor;
    EcrSimple simple{};
    ASSERT_EQ(m_livres->ReadEcrSimple(m_ex, mouvement, simple) != 0, s.genre == GenreSimple) << mouvement;
    if (s.genre == GenreSimple) {
      EcrSimple attendue = Simple(s), lue{};
      attendue.Mouvement = mouvement;
      ASSERT_EQ(m_livres->ReadEcrSimple(m_ex, mouvement, lue), mouvement);
      ASSERT_EQ(std::memcmp(&attendue, &lue, sizeof lue), 0) << mouvement;
      return;
    }
    EcrStandard attendue = Standard(s), lue{};
    ASSERT_EQ(m_livres->ReadEcrStandard(m_ex, mouvement, lue), mouvement);
    ASSERT_EQ(+lue.NbLignesTresorerie, tresor.size());
    for (u32 i = 0; i < tresor.size(); ++i) {
      LineTresor a{}, b{};
      ASSERT_TRUE(m_livres->GetEcrLineTresor(i, attendue, a));
      ASSERT_TRUE(m_livres->GetEcrLineTresor(i, lue, b));
      EXPECT_EQ(+b.MontantFranc, +a.MontantFranc);
      EXPECT_EQ(+b.MontantEuro, +a.MontantEuro);
      EXPECT_EQ(std::memcmp(&a, &b, offsetof(LineTresor, Validee)), 0);
    }
    m_livres->LibereLignes(lue);
    m_livres->LibereLignes(attendue);
    attendue.Mouvement = mouvement;
    ASSERT_EQ(std::memcmp(&attendue, &lue, sizeof lue), 0) << mouvement;
  }

  void CompareTotaux() {
    for (const auto& [numero, totaux] : m_modele.Totaux()) {
      const Plan plan = m_livres.Compte(numero);
      f64 attendus[6][2];
      for (int i = 0; i < 6; ++i) {
        for (int j = 0; j < 2; ++j)
          attendus[i][j] = EnUnites(totaux[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)]);
      }
      const u8* lus = reinterpret_cast<const u8*>(&plan) + offsetof(Plan, PersoFranc);
      ASSERT_EQ(std::memcmp(lus, attendus, sizeof attendus), 0)
          << numero << " debit " << plan.DebitFranc << " expected " << attendus[3][0] << ", perso "
          << plan.PersoEuro << " expected " << attendus[0][1];
    }
  }

  static void PoseCles(u32 mouvement, u32 rang, const LigneModele& l,
                       std::array<std::set<std::string>, 6>& cles) {
    const auto jour = [](u32 date) { return date >> 16; };
    char d[16], dl[16], t[6][80];
    std::snprintf(d, sizeof d, "%04u%02u%02u", jour(l.date), l.date >> 8 & 0xFF, l.date & 0xFF);
    std::snprintf(dl, sizeof dl, "%04u%02u%02u", jour(l.dateLigne), l.dateLigne >> 8 & 0xFF,
                  l.dateLigne & 0xFF);
    const char* compte = l.compte.c_str();
    std::snprintf(t[0], 80, "%1d%s%010u%010u%-10s%010u", l.journal, d, mouvement, rang, compte, l.ligne);
    std::snprintf(t[1], 80, "%1d%-10s%s%010u%010u%010u", l.journal, compte, d, mouvement, rang, l.ligne);
    std::snprintf(t[2], 80, "%-10s%s%010u%010u%1d%010u", compte, dl, mouvement, rang, l.journal, l.ligne);
    std::snprintf(t[3], 80, "%s%-10s%010u%010u%1d%010u", dl, compte, mouvement, rang, l.journal, l.ligne);
    std::snprintf(t[4], 80, "%010u%010u%1d%010u", mouvement, rang, l.journal, l.ligne);
    std::snprintf(t[5], 80, "%-9s%010u%010u%010u%010u%1d%010u", l.piece.c_str(), l.lienId, l.lienId * 2,
                  mouvement, rang, l.journal, l.ligne);
    for (std::size_t i = 0; i < 6; ++i) cles[i].insert(t[i]);
  }

  Livres m_livres;
  std::string m_ex;
  ModeleLivres m_modele;
  std::vector<std::string> m_comptes;
  bool m_compare = true;  ///< false: entries are not compared one by one
};

}  // namespace fenlor

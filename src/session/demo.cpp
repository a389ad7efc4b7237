#include "session/demo.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>
#include <vector>

#include "core/btfiles.h"
#include "core/cles.h"
#include "core/erreurs.h"
#include "core/valeurs.h"
#include "journal/saisie.h"
#include "session/biensdemo.h"
#include "session/demoreleves.h"
#include "session/situation.h"
#include "session/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Small generator of our own: the standard distributions differ between libraries.
class Hasard {
 public:
  explicit Hasard(u64 graine) : m_etat(graine) {}
  u64 Suivant() {
    u64 z = (m_etat += 0x9E3779B97F4A7C15u);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }
  /// From `minimum` to `maximum`, both included.
  unsigned Entre(unsigned minimum, unsigned maximum) {
    assert(minimum <= maximum);
    return minimum + static_cast<unsigned>(Suivant() % (maximum - minimum + 1));
  }
  bool UneFoisSur(unsigned n) { return Suivant() % n == 0; }

 private:
  u64 m_etat;
};

constexpr f64 FrancsParEuro = 6.55957;

constexpr const char* Noms[] = {
    "Arnaud",   "Aubert",  "Barbier", "Baron",      "Benoît",    "Berger",   "Besson",  "Blanchard",
    "Bonnet",   "Boyer",   "Brun",    "Carpentier", "Chevalier", "Clément",  "Colin",   "Cordier",
    "Dubois",   "Dumas",   "Fabre",   "Faure",      "Fleury",    "Gauthier", "Gérard",  "Girard",
    "Guérin",   "Henry",   "Hubert",  "Jacquet",    "Lacroix",   "Lefèvre",  "Lemoine", "Leroux",
    "Maillard", "Marchal", "Masson",  "Mercier",    "Meunier",   "Moulin",   "Noël",    "Olivier",
    "Perrin",   "Picard",  "Poirier", "Renard",     "Rivière",   "Roussel",  "Schmitt", "Vasseur"};

enum Reglement : u8 { ParCheque, ParVirement, EnEspeces };
constexpr u16 TousLesMois = 0x0FFF;
constexpr u16 AuxMois(std::initializer_list<unsigned> mois) {
  u16 masque = 0;
  for (const unsigned m : mois) masque = static_cast<u16>(masque | 1u << (m - 1));
  return masque;
}

/// An expense that comes back: day of the month, months, amount in Euro of 2002
/// and how far it varies, in percent.
struct ChargeReguliere {
  const char* compte;
  const char* libelle;
  u8 jour;
  u16 mois;
  f64 euros;
  u8 variation;
  Reglement reglement;
};

constexpr u16 Trimestres = AuxMois({2, 5, 8, 11});
constexpr ChargeReguliere Charges[] = {
    {"6132", "Loyer du cabinet", 2, TousLesMois, 640.00, 0, ParVirement},
    {"614", "Charges de copropriété", 10, AuxMois({1, 4, 7, 10}), 185.00, 12, ParCheque},
    {"6411", "Salaire de la secrétaire", 28, TousLesMois, 905.00, 2, ParVirement},
    {"6451", "U.R.S.S.A.F. sur salaires", 14, AuxMois({1, 4, 7, 10}), 1120.00, 3, ParVirement},
    {"6453", "Retraite complémentaire de la secrétaire", 20, AuxMois({1, 4, 7, 10}), 265.00, 3, ParVirement},
    {"6331", "Taxe sur les salaires", 15, AuxMois({1, 4, 7, 10}), 118.00, 3, ParCheque},
    {"6475", "Médecine du travail", 18, AuxMois({3}), 72.00, 4, ParCheque},
    {"6461", "U.R.S.S.A.F. du praticien", 15, Trimestres, 1480.00, 4, ParVirement},
    {"6378", "C.S.G. déductible", 15, Trimestres, 720.00, 4, ParVirement},
    {"6462", "Retraite C.A.R.M.F.", 6, TousLesMois, 690.00, 0, ParVirement},
    {"6466", "Prévoyance complémentaire", 8, TousLesMois, 96.50, 0, ParVirement},
    {"6161", "Responsabilité civile professionnelle", 12, AuxMois({1}), 410.00, 5, ParCheque},
    {"6162", "Assurance du cabinet", 9, AuxMois({2}), 298.00, 5, ParCheque},
    {"6163", "Assurance du véhicule", 16, AuxMois({3, 9}), 268.00, 4, ParCheque},
    {"6262", "Téléphone et Internet", 11, TousLesMois, 88.00, 25, ParVirement},
    {"60611", "Électricité et gaz", 19, AuxMois({1, 3, 5, 7, 9, 11}), 142.00, 35, ParVirement},
    {"60612", "Eau", 22, AuxMois({4, 10}), 54.00, 20, ParCheque},
    {"6157", "Ménage et blanchissage", 27, TousLesMois, 162.00, 8, ParCheque},
    {"6022", "Fournitures médicales", 7, TousLesMois, 74.00, 45, ParCheque},
    {"6021", "Pharmacie de la trousse d'urgence", 17, TousLesMois, 31.00, 60, ParCheque},
    {"6064", "Fournitures de bureau", 13, TousLesMois, 42.00, 55, ParCheque},
    {"6261", "Timbres", 5, TousLesMois, 26.00, 30, EnEspeces},
    {"6251", "Stationnement et déplacements", 21, TousLesMois, 14.00, 50, EnEspeces},
    {"6183", "Revue de médecine générale", 20, AuxMois({1, 6}), 92.00, 3, ParCheque},
    {"6156", "Maintenance du logiciel", 25, AuxMois({1}), 380.00, 3, ParVirement},
    {"6154", "Révision du véhicule", 23, AuxMois({4, 11}), 310.00, 40, ParCheque},
    {"6155", "Réparation de l'autoclave", 24, AuxMois({6}), 122.00, 30, ParCheque},
    {"6226", "Honoraires du comptable", 26, AuxMois({3, 6, 9, 12}), 230.00, 0, ParCheque},
    {"6281", "Cotisation syndicale", 12, AuxMois({4}), 152.00, 3, ParCheque},
    {"6282", "Cotisation à l'Ordre", 14, AuxMois({3}), 274.00, 2, ParCheque},
    {"6283", "Association agréée", 10, AuxMois({9}), 138.00, 2, ParCheque},
    {"6333", "Contribution à la formation professionnelle", 15, AuxMois({2}), 42.00, 2, ParCheque},
    {"6185", "Journées de formation", 18, AuxMois({6, 11}), 340.00, 20, ParCheque},
    {"6257", "Repas avec des confrères", 12, AuxMois({2, 5, 9, 12}), 68.00, 35, ParCheque},
    {"63511", "Taxe professionnelle", 15, AuxMois({12}), 1290.00, 3, ParVirement},
    {"63512", "Taxe foncière du cabinet", 15, AuxMois({10}), 460.00, 3, ParVirement},
    {"627", "Frais de tenue de compte", 30, TousLesMois, 12.80, 40, ParVirement},
    {"6616", "Agios", 31, AuxMois({3, 8}), 23.00, 50, ParVirement},
    {"6224", "Rétrocession d'honoraires au remplaçant", 28, AuxMois({8}), 2150.00, 10, ParCheque},
};

/// One exercice and what is particular to it.
struct AnneeDemo {
  unsigned annee;
  bool euro;
  unsigned moisValides;     ///< validated up to this month
  unsigned moisRapproches;  ///< bank lines reconciled up to this month
};
constexpr AnneeDemo Annees[] = {{2001, false, 12, 12}, {2002, true, 9, 11}, {2003, true, 4, 8}};

bool JourFerie(Date date) {
  static constexpr u8 feries[][2] = {{1, 1}, {1, 5}, {8, 5}, {14, 7}, {15, 8}, {1, 11}, {11, 11}, {25, 12}};
  return std::any_of(std::begin(feries), std::end(feries),
                     [&](const u8(&f)[2]) { return Jour(date) == f[0] && Mois(date) == f[1]; });
}

class RedacteurAnnee {
 public:
  RedacteurAnnee(CFenlorApp& app, const AnneeDemo& annee)
      : m_app(app),
        m_annee(annee),
        m_hasard(annee.annee * u64{7919}),
        m_resume{std::to_string(annee.annee), annee.euro} {}

  bool Ecrit() {
    for (unsigned mois = 1; mois <= 12; ++mois)
      if (!EcritMois(mois)) return false;
    return m_annee.annee != 2003 || AjouteReleve();
  }
  const ResumeDemo& Resume() const { return m_resume; }
  const Refus& Echec() const { return m_echec; }

 private:
  // -- tariffs and amounts
  bool Francs() const { return m_date <= DernierJourFranc; }
  f64 Tarif(f64 francs, f64 euros) const { return Francs() ? francs : euros; }
  f64 Consultation() const { return Tarif(115.0, m_date < FaitDate(1, 7, 2002) ? 18.50 : 20.0); }
  f64 Visite() const { return Tarif(135.0, m_date < FaitDate(1, 10, 2002) ? 20.58 : 30.0); }
  /// A price in Euro of 2002, varied, as it was asked at the time.
  f64 Prix(f64 euros, unsigned variation) {
    assert(euros > 0 && variation < 100);
    const f64 annees = static_cast<f64>(m_annee.annee) - 2002.0;
    f64 prix = euros * (1.0 + 0.02 * annees);
    if (variation) prix *= 1.0 + (static_cast<f64>(m_hasard.Entre(0, 2 * variation)) - variation) / 100.0;
    return Arrondi2(Francs() ? prix * FrancsParEuro : prix);
  }
  const char* Nom() { return Noms[m_hasard.Entre(0, std::size(Noms) - 1)]; }

  // -- entries
  bool Refuse(const Refus& refus) {
    m_echec = refus;
    return !refus;
  }
  bool RefuseMagasin() { return Refuse(m_app.EchecMagasin()); }

  bool Enregistre(SaisieEcriture& saisie, f64 ttc) {
    saisie.date = m_date;
    saisie.euro = !Francs();
    saisie.validee = Mois(m_date) <= m_annee.moisValides;
    Plan plan{};
    PoseTexte(plan.Compte, saisie.compte);
    if (m_app.Magasin.ReadPlan(plan, 0) == 0) return RefuseMagasin();
    saisie.montants = ChaineMontants(m_app, plan, ttc);
    EcritureFaite faite;
    if (!Refuse(EnregistreEcriture(m_app, saisie, faite))) return false;
    ++m_resume.ecritures;
    return Suites(faite.mouvement);
  }

  bool Simple(i16 journal, const char* compte, const std::string& libelle, f64 ttc, Reglement reglement) {
    SaisieEcriture saisie;
    saisie.journal = journal;
    saisie.compte = QVAPI::GetLongCompte(compte);
    saisie.libelle = libelle;
    saisie.tresorerie = QVAPI::GetLongCompte(reglement == EnEspeces ? "530" : "512");
    saisie.paiement = reglement == ParCheque ? PaiementCheque : PaiementAutre;
    if (reglement == EnEspeces) m_caisse += journal == JournalRecettes ? ttc : -ttc;
    return Enregistre(saisie, ttc);
  }

  bool Partagee(const char* compte, const std::string& libelle, f64 cheque, f64 especes) {
    SaisieEcriture saisie;
    saisie.genre = GenreStandard;
    saisie.compte = QVAPI::GetLongCompte(compte);
    saisie.libelle = libelle;
    saisie.tresoreries = {{QVAPI::GetLongCompte("512"), cheque, PaiementCheque},
                          {QVAPI::GetLongCompte("530"), especes, PaiementCheque}};
    m_caisse += especes;
    return Enregistre(saisie, cheque + especes);
  }

  bool OD(const std::string& libelle, const std::vector<LigneODSaisie>& lignes) {
    SaisieOD saisie;
    saisie.date = m_date;
    saisie.libelle = libelle;
    saisie.euro = !Francs();
    saisie.validee = Mois(m_date) <= m_annee.moisValides;
    saisie.lignes = lignes;
    EcritureFaite faite;
    if (!Refuse(EnregistreOD(m_app, saisie, faite))) return false;
    ++m_resume.ecritures;
    ++m_resume.od;
    return Suites(faite.mouvement);
  }

  /// Marks that come after an entry: pointed, reconciled two days later.
  bool Suites(u32 mouvement) {
    assert(mouvement != 0);
    if (Mois(m_date) <= 10 && m_hasard.UneFoisSur(4) && !Refuse(PointeEcriture(m_app, mouvement)))
      return false;
    return Mois(m_date) > m_annee.moisRapproches || m_hasard.UneFoisSur(10) || Rapproche(mouvement);
  }

  bool Rapproche(u32 mouvement) {
    assert(mouvement != 0);
    QVAPI& magasin = m_app.Magasin;
    for (const Position position : magasin.LignesMouvement(m_app.PathExercice, mouvement)) {
      Line ligne{};
      if (!magasin.ReadLines(m_app.PathExercice, position, ligne)) return RefuseMagasin();
      if (LitTexte(ligne.Compte) != QVAPI::GetLongCompte("512")) continue;
      const Banque operation = Releve(ligne);
      if (!magasin.RappLines(m_app.PathExercice, position, operation)) return RefuseMagasin();
    }
    return true;
  }

  /// What the bank makes of a line: the other side of it, two days later.
  static Banque Releve(const Line& ligne) {
    Banque operation{};
    PoseTexte(operation.Compte, LitTexte(ligne.Compte));
    PoseTexte(operation.Libelle, EnMajuscules(LitTexte(ligne.Libelle)));
    operation.Date = NextDate(NextDate(ligne.Date));
    operation.DateValeur = NextDate(operation.Date);
    operation.MontantFranc = ligne.MontantFranc;
    operation.MontantEuro = ligne.MontantEuro;
    operation.Sens = ligne.Sens ? 0 : 1;
    return operation;
  }

  // -- a day of the practice
  bool EcritMois(unsigned mois) {
    assert(mois >= 1 && mois <= 12);
    QVAPI::Unite unite(m_app.Magasin);
    const Date premier = FaitDate(1, mois, m_annee.annee);
    const unsigned jours = GetNbJours(premier);
    for (unsigned jour = 1; jour <= jours; ++jour) {
      m_date = FaitDate(jour, mois, m_annee.annee);
      if (m_date == NextDate(DernierJourFranc)) m_caisse = Arrondi2(m_caisse / FrancsParEuro);
      if (!EcritRecettes() || !EcritCharges(jours) || !EcritOperations(jours)) return false;
    }
    return unite.Valide() || RefuseMagasin();
  }

  bool EcritRecettes() {
    const unsigned jour = JourSemaine(m_date);
    const bool vacances = Mois(m_date) == 8 && Jour(m_date) <= 11;
    if (jour == 6 || JourFerie(m_date) || vacances) return true;
    const bool samedi = jour == 5;
    const f64 c = Consultation(), v = Visite();
    const std::string especes = "Consultations, espèces"_w;
    if (!Simple(JournalRecettes, "7061", especes, c * m_hasard.Entre(2, samedi ? 4 : 7), EnEspeces))
      return false;
    if (!Simple(JournalRecettes, "7061", "Consultations, carte"_w, c * m_hasard.Entre(1, samedi ? 3 : 6),
                ParVirement))
      return false;
    for (unsigned i = m_hasard.Entre(samedi ? 1 : 4, samedi ? 3 : 7); i > 0; --i)
      if (!Simple(JournalRecettes, "7061", Patient("Consultation "), c, ParCheque)) return false;
    if (samedi) return true;
    for (unsigned i = m_hasard.Entre(1, 4); i > 0; --i)
      if (!Simple(JournalRecettes, "7062", Patient("Visite "), v,
                  m_hasard.UneFoisSur(3) ? EnEspeces : ParCheque))
        return false;
    if (m_hasard.UneFoisSur(2) && !Partagee("7061", Patient("Consultations, famille "), c, c)) return false;
    if (m_hasard.UneFoisSur(3) && !Simple(JournalRecettes, "7062", "Visites, maison de retraite"_w,
                                          v * m_hasard.Entre(2, 5), ParCheque))
      return false;
    if (m_hasard.UneFoisSur(4) && !Simple(JournalRecettes, "7061", "Actes, tiers payant C.P.A.M."_w,
                                          c * m_hasard.Entre(3, 9), ParVirement))
      return false;
    return !m_hasard.UneFoisSur(90) ||
           Simple(JournalRecettes, "7063", Patient("Expertise "), Prix(150, 30), ParCheque);
  }

  std::string Patient(const char* acte) {
    return DepuisUtf8(acte + std::string(Nom())).value_or(std::string());
  }

  bool EcritCharges(unsigned jours) {
    for (const ChargeReguliere& charge : Charges) {
      const bool duMois = charge.mois >> (Mois(m_date) - 1) & 1;
      if (!duMois || std::min<unsigned>(charge.jour, jours) != Jour(m_date)) continue;
      const std::string libelle = DepuisUtf8(charge.libelle).value_or(std::string());
      if (!Simple(JournalDepenses, charge.compte, libelle, Prix(charge.euros, charge.variation),
                  charge.reglement))
        return false;
    }
    if (Jour(m_date) % 8 == 3 && !Simple(JournalDepenses, "60614", "Essence"_w, Prix(42, 25), ParVirement))
      return false;
    if (Jour(m_date) == 9 && Mois(m_date) % 3 == 1)
      return Simple(JournalRecettes, "7066", "Forfaits de l'assurance maladie"_w, Prix(520, 15), ParVirement);
    if (Jour(m_date) == 31 && Mois(m_date) == 12)
      return Simple(JournalRecettes, "76", "Intérêts du compte sur livret"_w, Prix(64, 20), ParVirement);
    return true;
  }

  bool EcritOperations(unsigned jours) {
    const auto debit = [](const char* compte, f64 m) {
      return LigneODSaisie{QVAPI::GetLongCompte(compte), {}, m, 0};
    };
    const auto credit = [](const char* compte, f64 m) {
      return LigneODSaisie{QVAPI::GetLongCompte(compte), {}, 0, m};
    };
    const unsigned jour = Jour(m_date);
    if (jour % 7 == 5) {
      const f64 pas = Francs() ? 100.0 : 20.0;
      const f64 remise = std::floor(m_caisse / pas - 2.0) * pas;
      if (remise > 0) {
        m_caisse -= remise;
        LigneODSaisie versee = debit("512", remise);
        versee.paiement = PaiementAutre;  // no cheque for a slip
        if (!OD("Versement d'espèces à la banque"_w, {versee, credit("530", remise)})) return false;
      }
    }
    if (jour == 4 || jour == 18) {
      const f64 retrait = Prix(1650, 0);
      if (!OD("Prélèvement personnel"_w, {debit("108", retrait), credit("512", retrait)})) return false;
    }
    if (jour != std::min(25u, jours)) return true;
    const f64 capital = Prix(310, 0), interets = Prix(58, 0);
    return OD("Échéance de l'emprunt du cabinet"_w,
              {debit("164", capital), debit("6611", interets), credit("512", Arrondi2(capital + interets))});
  }

  /// Bank operations of the last month, as a statement brings them.
  bool AjouteReleve() {
    QVAPI::Unite unite(m_app.Magasin);
    CLines lignes(m_app, m_app.PathExercice);
    CBanques banques(m_app, m_app.PathExercice);
    if (!lignes.OpenFile() || !banques.OpenFile()) return RefuseMagasin();
    PoseTexte(lignes.Rec->Compte, QVAPI::GetLongCompte("512"));
    lignes.Rec->DateLigne = FaitDate(1, m_annee.moisRapproches + 1, m_annee.annee);
    unsigned nombre = 0;
    for (bool la = lignes.Browse(2); la && nombre < 40; la = lignes.Next(2)) {
      if (LitTexte(lignes.Rec->Compte) != QVAPI::GetLongCompte("512")) break;
      if (lignes.Rec->Rapprochee) continue;
      *banques.Rec = Releve(*lignes.Rec);
      if (!banques.Add()) return RefuseMagasin();
      ++nombre;
    }
    return unite.Valide() || RefuseMagasin();
  }

  CFenlorApp& m_app;
  const AnneeDemo& m_annee;
  Hasard m_hasard;
  ResumeDemo m_resume;
  Refus m_echec;
  Date m_date = 0;
  f64 m_caisse = 0;  ///< cash in hand, in the currency of the day
};

/// What the chart of the first year has of its own: private share of the
/// telephone, money at the bank and in cash.
bool PrepareComptes(CFenlorApp& app) {
  assert(!app.Magasin.QVEnUnite());
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return false;
  const struct {
    const char* compte;
    f64 partPro, initial;
  } particuliers[] = {{"6262", 80.0, 0.0}, {"512", 100.0, -38250.0}, {"530", 100.0, -640.0}};
  QVAPI::Unite unite(app.Magasin);
  for (const auto& particulier : particuliers) {
    PoseTexte(plan.Rec->Compte, QVAPI::GetLongCompte(particulier.compte));
    if (!plan.Find(0)) return false;
    plan.Rec->PartPro = particulier.partPro;
    plan.Rec->SoldeInitialFranc = particulier.initial;
    plan.Rec->SoldeInitialEuro = QVAPI::ConvertFrancToEuro(FrancsParEuro, particulier.initial);
    if (!plan.Update()) return false;
  }
  return unite.Valide();
}

bool PoseIdentite(CFenlorApp& app) {
  Parametres& reglages = app.Reglages;
  const std::string activite = Texte(SecActivite);
  return reglages.EcritIni(
             activite, "Identification",
             "Docteur Claire MARCHAND\r\nMédecine générale\r\n12, rue des Tilleuls\r\n49999 VILLENEUVE"_w) &&
         reglages.EcritIni(activite, "SIRET", "123 456 789 00012"_w) &&
         reglages.EcritIni(activite, "APE", "851C"_w) &&
         reglages.EcritIni(activite, Texte(CleNatureActivite), "Médecin généraliste"_w) &&
         reglages.EcritIni(activite, Texte(CleDebut), "01/09/1987") &&
         reglages.EcritIni(Texte(SecAssociation), Texte(CleNumeroAssociation), "107490") &&
         reglages.EcritIni(Texte(SecAssociation), Texte(CleAnneeAssociation), "1990") &&
         reglages.EcritIni(Texte(SecPreferences), Texte(CleStyleEtats), Texte(MotSoignee));
}

void Ferme(CFenlorApp& app) {
  assert(!app.Magasin.QVEnUnite());
  app.Magasin.QVCloseExercice();
  app.NomExercice.clear();
  app.PathExercice.clear();
  app.ExerciceOuvert = 0;
}

Refus RemplitAnnee(CFenlorApp& app, const AnneeDemo& annee, ResumeDemo& resume) {
  QVAPI& magasin = app.Magasin;
  const std::string nom = std::to_string(annee.annee);
  assert(nom.size() == 4);
  if (!magasin.QVCreateExercice(nom, FaitDate(1, 1, annee.annee), FaitDate(31, 12, annee.annee), annee.euro,
                                false) ||
      !magasin.QVOpenExercice(nom))
    return app.EchecMagasin();
  app.NomExercice = nom;
  app.PathExercice = magasin.PathExercice();
  app.ExerciceOuvert = 1;
  if (annee.annee == Annees[0].annee && !PrepareComptes(app)) return app.EchecMagasin();
  // Held open for the whole year.
  CPlan comptes(app, app.PathExercice);
  CLines lignes(app, app.PathExercice);
  if (!comptes.OpenFile() || !lignes.OpenFile()) return app.EchecMagasin();
  RedacteurAnnee redacteur(app, annee);
  if (!redacteur.Ecrit()) return redacteur.Echec();
  const bool derniere = &annee == &Annees[std::size(Annees) - 1];
  if (const Refus refus = derniere ? AjouteBiensDemo(app) : Refus()) return refus;
  resume = redacteur.Resume();
  Situation situation;
  if (const Refus refus = LitSituation(app, situation)) return refus;
  resume.recettes = situation.annee.recettes;
  resume.depenses = situation.annee.depenses;
  // The month behind the one whose operations wait.
  return annee.annee == 2003 ? EcritRelevesDemo(app, annee.moisRapproches + 2) : Refus{};
}

}  // namespace

Refus RemplitDemo(CFenlorApp& app, const std::function<void(const ResumeDemo&)>& suite) {
  if (app.Magasin.GetExercicesRec() != 0)
    return Refus(ErrMagasin, "",
                 {"Ce cabinet contient déjà des exercices : l'exemple demande un cabinet vide."_w});
  if (!PoseIdentite(app)) return app.EchecMagasin();
  for (const AnneeDemo& annee : Annees) {
    ResumeDemo resume;
    const Refus refus = RemplitAnnee(app, annee, resume);
    Ferme(app);
    if (refus) return refus;
    if (!app.Reglages.EcritIni(Texte(SecActivite), Texte(CleExercice), resume.exercice))
      return app.EchecMagasin();
    suite(resume);
  }
  return {};
}

}  // namespace fenlor

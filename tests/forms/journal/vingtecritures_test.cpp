#include <algorithm>

#include "forms/journal/formeecriture.h"

namespace fenlor::test {
namespace {

// Twenty entries by keyboard alone, and the same ones through the rule: the store is the same.

struct LigneTapee {
  const char* code;
  const char* montant;  ///< null: what is proposed
  i16 paiement = PaiementCheque;
};

struct EcritureTapee {
  i16 journal;
  unsigned jour;
  const char* code;     ///< as it is typed
  const char* compte;   ///< that it means
  const char* libelle;  ///< null: that of the account
  const char* ttc;
  bool euro = true;
  const char* professionnelle = nullptr;
  const char* tresorerie = "BQ";
  i16 paiement = PaiementCheque;
  std::vector<LigneTapee> lignes = {};
};

const char* const Comptes[][2] = {{"BQ", "512"}, {"CCP", "514"}, {"ESP", "531"}};

std::string CompteTresorerie(std::string_view code) {
  for (const auto& [c, compte] : Comptes)
    if (code == c) return Long(compte);
  return {};
}

f64 Valeur(std::string texte) {
  std::replace(texte.begin(), texte.end(), ',', '.');
  return std::stod(texte);
}

// clang-format off
const EcritureTapee Vingt[] = {
    {JournalRecettes, 1, "HONOR", "706", nullptr, "22,00"},
    {JournalRecettes, 1, "honor", "706", "Consultation Mme Lefèvre", "22"},
    {JournalRecettes, 2, "7065", "7065", "Expertise", "100,00"},
    {JournalRecettes, 2, "7070", "7070", "Formation", "119,60"},
    {JournalRecettes, 3, "HON", "706", "Espèces du jour", "88.5", true, nullptr, "ESP"},
    {JournalRecettes, 3, "HONOR", "706", "Carte bancaire", "46", true, nullptr, "BQ", PaiementAutre},
    {JournalRecettes, 5, "HONOR", "706", "Virement CPAM", "1310,25", true, nullptr, "CCP", PaiementAutre},
    {JournalRecettes, 6, "HONOR", "706", "Honoraires en francs", "115", false},
    {JournalRecettes, 7, "7065", "7065", "Expertise en francs", "655,96", false, nullptr, "ESP"},
    {JournalRecettes, 9, "HONOR", "706", "Chèque et espèces", "100", true, nullptr, "BQ", PaiementCheque,
     {{"BQ", "60"}, {"ESP", nullptr}}},
    {JournalRecettes, 9, "HONOR", "706", "Francs, deux comptes", "300", false, nullptr, "BQ", PaiementCheque,
     {{"CCP", "100,5", PaiementAutre}, {"BQ", nullptr}}},
    {JournalRecettes, 12, "HONOR", "706", "Remboursement patient", "-22"},
    {JournalRecettes, 31, "ECARTC", "758", nullptr, "0,01"},
    {JournalDepenses, 1, "LOYER", "6132", nullptr, "850"},
    {JournalDepenses, 2, "6063", "6063", "Fournitures", "119,60", true, nullptr, "ESP"},
    {JournalDepenses, 3, "6154", "6154", "Entretien", "100"},
    {JournalDepenses, 4, "6063", "6063", "Part saisie", "119,60", true, "59,80"},
    {JournalDepenses, 5, "6154", "6154", "Francs, part nulle", "1000", false, "0", "CCP", PaiementAutre},
    {JournalDepenses, 6, "6154", "6154", "Trois comptes", "333,33", true, nullptr, "BQ", PaiementCheque,
     {{"BQ", "111,11", PaiementAutre}, {"CCP", "111,11"}, {"ESP", nullptr}}},
    {JournalDepenses, 31, "6063", "6063", "Avoir", "-11,96", true, nullptr, "BQ", PaiementAutre},
};
// clang-format on

class VingtEcritures : public FormeEcriture {
 protected:
  void SetUp() override {
    Prepare("2001");
    ASSERT_TRUE(PoseCompte("531", Tresorerie, "ESP", "Espèces"_w, 0));
  }

  static void TapeTresorerie(QDialog& f, const char* code) {
    if (Lu(f, "tresorerie") != QLatin1String(code)) Frappe(QLatin1String(code));
    EXPECT_EQ(Lu(f, "tresorerie"), QLatin1String(code));
  }
  static void TapeLignes(const EcritureTapee& e, QDialog& f) {
    for (const LigneTapee& ligne : e.lignes) {
      EXPECT_EQ(Focus(f), "montant");
      EXPECT_EQ(Lu(f, "tresorerie"), QLatin1String(e.tresorerie)) << "the proposed account is back";
      TabVers(u"tresorerie"_s, Qt::Key_Backtab);
      TapeTresorerie(f, ligne.code);
      if (ligne.paiement == PaiementAutre) TabVersUn(u"autre"_s, u"cheque"_s);
      TabVers(u"montant"_s);
      if (ligne.montant) Frappe(QLatin1String(ligne.montant));
      Touche(Qt::Key_Enter);
    }
    EXPECT_EQ(Lu(f, "montant"), QString()) << "nothing is left";
    Touche(Qt::Key_Escape);
  }

  void TapeEcriture(const EcritureTapee& e, CDialogEcriture& f) {
    EXPECT_EQ(Focus(f), "jour");
    Frappe(QString::number(e.jour));
    Touche(Qt::Key_Tab);
    EXPECT_EQ(Focus(f), "code");
    Frappe(QLatin1String(e.code));
    Touche(Qt::Key_Tab);
    EXPECT_EQ(Focus(f), "libelle") << "the list is skipped";
    if (e.libelle) Frappe(QString::fromUtf8(e.libelle));
    Touche(Qt::Key_Tab);
    EXPECT_EQ(Focus(f), "ttc");
    Frappe(QLatin1String(e.ttc));
    Touche(Qt::Key_Tab);
    if (e.professionnelle) {
      EXPECT_EQ(Focus(f), "professionnelle");
      Frappe(QLatin1String(e.professionnelle));
    }
    TabVers(u"tresorerie"_s);
    TapeTresorerie(f, e.tresorerie);
    if (e.paiement == PaiementAutre) TabVersUn(u"autre"_s, u"cheque"_s);
    if (Coche(f, "euro") != e.euro)
      TabVersUn(e.euro ? u"euro"_s : u"franc"_s, e.euro ? u"franc"_s : u"euro"_s);
    if (!e.lignes.empty()) {
      TabVers(u"multiple"_s, Qt::Key_Backtab);
      Touche(Qt::Key_Space);
      EXPECT_EQ(Focus(f), "lignes");
      // The line made of the simple part goes: all are typed.
      Touche(Qt::Key_Delete);
      robot.Attend("DialogLineTresor", [&e](QDialog& ligne) {
        ligne.activateWindow();
        QApplication::processEvents();
        TapeLignes(e, ligne);
      });
      Touche(Qt::Key_Insert);
      f.activateWindow();
      QApplication::processEvents();
      EXPECT_EQ(Focus(f), "lignes");
    }
    TabVers(u"ok"_s);
    Touche(Qt::Key_Enter);
  }

  static SaisieEcriture Saisie(CFenlorApp& app, CabinetDeTest& cabinet, const EcritureTapee& e) {
    SaisieEcriture s;
    s.journal = e.journal;
    s.date = FaitDate(e.jour, 3, 2001);
    s.compte = Long(e.compte);
    if (e.libelle) s.libelle = De1252(QString::fromUtf8(e.libelle));
    s.euro = e.euro;
    s.tresorerie = CompteTresorerie(e.tresorerie);
    s.paiement = e.paiement;
    const Plan compte = cabinet.LitCompte(e.compte);
    s.montants = e.professionnelle
                     ? ChaineProfessionnel(app, compte, Valeur(e.ttc), Valeur(e.professionnelle))
                     : ChaineMontants(app, compte, Valeur(e.ttc));
    if (e.lignes.empty()) return s;
    s.genre = GenreStandard;
    f64 reste = s.montants.ttc;
    for (const LigneTapee& ligne : e.lignes) {
      const f64 montant = ligne.montant ? Valeur(ligne.montant) : MontantDeChamp(reste);
      reste -= montant;
      s.tresoreries.push_back({CompteTresorerie(ligne.code), montant, ligne.paiement});
    }
    return s;
  }
};

TEST_F(VingtEcritures, AuClavierDonnentLeMagasinDeLaRegle) {
  std::size_t saisies = 0;
  for (const i16 journal : {JournalRecettes, JournalDepenses}) {
    auto forme = Montre(Ouverture(journal, 0, FaitDate(15, 3, 2001)));
    for (const EcritureTapee& e : Vingt) {
      if (e.journal != journal) continue;
      SCOPED_TRACE(std::string(e.compte) + " " + e.ttc);
      TapeEcriture(e, *forme);
      ++saisies;
      ASSERT_THAT(Boite.NumerosErreurs(), IsEmpty());
      ASSERT_THAT(Boite.NumerosQuestions(), IsEmpty());
      ASSERT_EQ(forme->Derniere(), saisies);
      EXPECT_EQ(Montants(*forme), u"     "_s) << "cleared for the next one";
      EXPECT_EQ(Lu(*forme, "libelle") + Lu(*forme, "code") + Lu(*forme, "compte"), QString());
      EXPECT_EQ(Lu(*forme, "jour"), QString::number(e.jour));
    }
    EXPECT_TRUE(forme->Change());
    forme->reject();
    EXPECT_FALSE(forme->isVisible()) << "nothing to ask";
  }
  EXPECT_EQ(saisies, 20u);

  Jumeau jumelle;
  jumelle.Installe("2001");
  ASSERT_TRUE(jumelle.PoseCompte("531", Tresorerie, "ESP", "Espèces"_w, 0));
  for (const EcritureTapee& e : Vingt) {
    ASSERT_FALSE(jumelle.Essaie(Saisie(jumelle.App(), jumelle, e))) << e.compte << " " << e.ttc;
  }
  CompareLivres(*this, jumelle, 20);
}

}  // namespace
}  // namespace fenlor::test

#include <QGroupBox>
#include <map>

#include "forms/journal/dialogvalidation.h"
#include "forms/journal/formesjournal.h"

namespace fenlor::test {
namespace {

class FormeValidation : public FormesJournal {
 protected:
  /// One letter an entry.
  std::map<char, u32> Ecritures() {
    const auto ajoute = [&](i16 journal, f64 montant, unsigned jour, unsigned mois) {
      const char* compte = journal == JournalRecettes ? "706" : "6132";
      return Enregistre(Ecriture(journal, compte, montant, "512", FaitDate(jour, mois, 2003)));
    };
    std::map<char, u32> e{{'a', ajoute(JournalRecettes, 50, 11, 3)},
                          {'b', ajoute(JournalRecettes, 100, 15, 3)},
                          {'c', ajoute(JournalDepenses, 100, 16, 3)},
                          {'d', ajoute(JournalDepenses, 150, 2, 2)}};
    e['e'] = EnregistreLesLignes({{test::Long("512"), "", 30, 0, 0}, {test::Long("531"), "", 0, 30, 0}});
    ChangeLignes(e['a'], [](Line& ligne) { ligne.Rapprochee = ligne.Rang == 0; });
    ChangeLignes(e['c'], [](Line& ligne) { ligne.Pointee = 1; });
    return e;
  }
};

TEST_F(FormeValidation, CeQueLesChoixValident) {
  using Gestes = std::vector<std::pair<const char*, const char*>>;  // field, what is typed or ticked
  const struct {
    const char* validees;
    Gestes gestes;
  } cas[] = {
      {"be", {}},
      {"abce", {{"semaine", ""}}},
      {"d", {{"periode", ""}, {"du", "0202"}, {"au", "02/02"}}},
      {"ab", {{"exercice", ""}, {"tousJournaux", ""}, {"journal", "0"}}},
      {"ac", {{"exercice", ""}, {"toutes", ""}, {"pointees", ""}, {"rapprochees", ""}}},
      {"a",
       {{"exercice", ""}, {"tousMontants", ""}, {"franc", ""}, {"montantMin", "300"}, {"montantMax", "400"}}},
  };
  const auto ecritures = Ecritures();
  DemandeValidation brouillard;
  brouillard.du = FaitDate(1, 1, 2003);
  brouillard.au = FaitDate(31, 12, 2003);
  brouillard.action = ActionBrouillard::Devalider;
  for (const auto& c : cas) {
    BilanLot bilan;
    ASSERT_FALSE(TraiteBrouillard(App(), brouillard, bilan));
    CDialogValidation f(Ui);
    Montre(f);
    for (const auto& [nom, valeur] : c.gestes) {
      if (auto* champ = f.findChild<QLineEdit*>(QLatin1String(nom)))
        Tape(*champ, QLatin1String(valeur));
      else if (*valeur)
        Choisit(Liste(f, nom), *valeur - '0');
      else
        Clique(Case(f, nom));
    }
    Ok(f);
    EXPECT_EQ(f.result(), QDialog::Accepted);
    std::string validees;
    for (const auto& [lettre, mouvement] : ecritures)
      if (Entete(mouvement).Validee) validees += lettre;
    EXPECT_EQ(validees, c.validees) << (&c - cas);
  }
}

TEST_F(FormeValidation, UneDateFausse) {
  CDialogValidation f(Ui);
  Montre(f);
  Clique(Case(f, "periode"));
  Tape(Champ(f, "au"), u"31/02/2003"_s);
  Ok(f);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3104});
  EXPECT_EQ(Focus(f), "au");
  EXPECT_EQ(Boite.Ouvertures, 0u) << "nothing was run";
}

TEST_F(FormeValidation, ModeDebug) {
  const u32 mouvement = Ecritures()['b'];
  EXPECT_EQ(CDialogValidation(Ui).findChild<QGroupBox*>(u"debug"_s), nullptr);
  Regle("Préférences"_w, "ModeDebug", "oui");
  for (const char* action : {"valider", "devalider"}) {
    CDialogValidation f(Ui);
    Montre(f);
    EXPECT_TRUE(Case(f, "valider").isChecked());
    Clique(Case(f, action));
    Ok(f);
    EXPECT_EQ(Entete(mouvement).Validee != 0, *action == 'v');
  }
}

}  // namespace
}  // namespace fenlor::test

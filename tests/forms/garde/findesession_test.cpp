
#include "core/cles.h"
#include "forms/garde/dialogendofsession.h"
#include "forms/garde/wizardgarde.h"
#include "forms/journal/formesjournal.h"
#include "garde/conservation.h"
#include "garde/optionssauvegarde.h"
#include "garde/textes.h"
#include "master/options.h"
#include "master/textes.h"
#include "session/miseajour.h"
#include "session/textes.h"
#include "store/dates.h"
#include "ui/voyant.h"

namespace fenlor::test {
namespace {

class FinDeSession : public test::FormesJournal {
 protected:
  test::DossierTemporaire Ailleurs{true};

  /// Today is the day so many days behind the 15th of March.
  static std::string IlYA(int jours) {
    Date date = FaitDate(15, 3, 2003);
    for (; jours > 0; --jours) date = PrevDate(date);
    for (; jours < 0; ++jours) date = NextDate(date);
    return StrDate(date);
  }
  void DateSauvegarde(int jours) { ASSERT_TRUE(EcritUtilisateur(App(), CleDateSauvegarde, IlYA(jours))); }
  void DateMiseAJour(int jours) {
    ASSERT_TRUE(Magasin().QVSetRegString("HKEY_CURRENT_USER", "software\\Orvelia\\QVUpdate\\fenlor",
                                         "Options", "Date", IlYA(jours)));
  }
  bool Ferme(std::function<void(QDialog&)> geste) {
    robot.Attend("DialogEndOfSession", std::move(geste));
    return PeutFermer(Ui);
  }
  std::size_t NbSauvegardes() {
    std::vector<SauvegardePresente> presentes;
    EXPECT_FALSE(ListeSauvegardes(Magasin().SystemeFichiers(), Ailleurs.Chemin(), presentes));
    return presentes.size();
  }
};

TEST_F(FinDeSession, LesLampes) {
  App().UpdateInstalle = true;
  using Etat = Voyant::Etat;
  const struct {
    int sauvegarde, miseAJour;
    Etat lampeSauvegarde, lampeMiseAJour;
  } cas[] = {{0, 0, Etat::Eteint, Etat::Eteint},   {7, 30, Etat::Eteint, Etat::Eteint},
             {8, 31, Etat::Allume, Etat::Allume},  {14, 90, Etat::Allume, Etat::Allume},
             {15, 91, Etat::Alarme, Etat::Alarme}, {-1, -1, Etat::Eteint, Etat::Eteint}};
  for (const auto& c : cas) {
    SCOPED_TRACE(c.sauvegarde);
    DateSauvegarde(c.sauvegarde);
    DateMiseAJour(c.miseAJour);
    CDialogEndOfSession f(Ui);
    EXPECT_EQ(Trouve<Voyant>(f, "lampeSauvegarde").Pose(), c.lampeSauvegarde);
    EXPECT_EQ(Trouve<Voyant>(f, "lampeMiseAJour").Pose(), c.lampeMiseAJour);
    EXPECT_EQ(Trouve<QLabel>(f, "sauvegarde").text(),
              u"Votre dernière sauvegarde date de %1 jours."_s.arg(std::max(0, c.sauvegarde)));
    EXPECT_EQ(Trouve<QLabel>(f, "miseAJour").text(),
              u"Votre dernière mise à jour date de %1 jours."_s.arg(std::max(0, c.miseAJour)));
  }
  EXPECT_EQ(LitUtilisateur(App(), CleDateSauvegarde), IlYA(0)) << "a date to come is replaced";
  // No update program, or "never": no row, and a button that cannot be pressed.
  for (const bool installe : {false, true}) {
    App().UpdateInstalle = installe;
    ASSERT_TRUE(EcritUtilisateur(App(), CleModeMiseAJour, "3"));
    CDialogEndOfSession f(Ui);
    EXPECT_EQ(f.findChild<Voyant*>(u"lampeMiseAJour"_s), nullptr);
    EXPECT_FALSE(Actif(f, "mettreAJour"));
  }
}

TEST_F(FinDeSession, TerminerAnnulerSauvegarder) {
  const auto decoche = [](QDialog& f) { Trouve<QCheckBox>(f, "afficher").setChecked(false); };
  EXPECT_FALSE(Ferme([&](QDialog& f) {
    test::VerifieFormulaire(f);
    decoche(f);
    Clique(Case(f, "annuler"));
  }));
  EXPECT_TRUE(App().Reglages.IsFinDeSession()) << "not kept";
  EXPECT_FALSE(Ferme([&](QDialog& f) {
    Clique(Case(f, "mettreAJour"));  // does nothing
    EXPECT_TRUE(f.isVisible());
    f.reject();
  }));
  robot.Attend("DialogEndOfSession", [](QDialog& f) { Clique(Case(f, "sauvegarder")); });
  robot.Attend("WizardSauvegarde", [](QDialog& f) { f.reject(); });
  EXPECT_TRUE(PeutFermer(Ui)) << "whatever became of the backup";
  EXPECT_EQ(Cadre.Appels.front(), "FermeToutes");
  EXPECT_TRUE(Ferme([&](QDialog& f) {
    decoche(f);
    Va(Case(f, "sauvegarder"));
    Touche(f, Qt::Key_Return);  // "Terminer", wherever the focus stands
  }));
  EXPECT_FALSE(Case(*std::make_unique<CDialogEndOfSession>(Ui), "afficher").isChecked());
  EXPECT_TRUE(PeutFermer(Ui)) << "no screen any more";
  ASSERT_FALSE(EcritFinDeSession(App(), true));
  App().ParentWindow = 7;
  EXPECT_TRUE(PeutFermer(Ui));
  App().ParentWindow = 0;
  App().EcranFinDeSession = false;
  EXPECT_TRUE(PeutFermer(Ui));
}

TEST_F(FinDeSession, LaSauvegardeSansQuestion) {
  App().EcranFinDeSession = false;
  ASSERT_NE(Enregistre(Ecriture(JournalRecettes, "706", 20)), 0u);
  EXPECT_TRUE(PeutFermer(Ui));
  OptionsSauvegarde options;
  options.finDeSession = true;
  EXPECT_EQ(EcritOptionsSauvegarde(App(), options).numero, ErrDossierSauvegardeAbsent);
  options.dossier = Ailleurs.Chemin();
  options.conservation = {1, 0, 0};
  ASSERT_FALSE(EcritOptionsSauvegarde(App(), options));
  const OptionsSauvegarde lues = LitOptionsSauvegarde(App());
  EXPECT_EQ(lues.dossier, options.dossier);
  EXPECT_EQ(lues.conservation.mois, 0u);
  for (int fois = 0; fois < 2; ++fois) {
    EXPECT_TRUE(PeutFermer(Ui));
    EXPECT_EQ(NbSauvegardes(), 1u) << "the older one of the day goes";
  }
  EXPECT_TRUE(Boite.Questions.empty());
  EXPECT_NE(PhraseSauvegardeVerifiee(App()).find("15/03/2003"), std::string::npos);
  CDialogEndOfSession f(Ui);
  EXPECT_TRUE(Trouve<QLabel>(f, "verifiee").text().contains(u"_complet_20030315_"_s));
  // A drive that is not there is told, and the program closes.
  ASSERT_FALSE(RetientDossier(App(), Ailleurs.Chemin() + "/parti"));
  EXPECT_TRUE(PeutFermer(Ui));
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrArchiveEcriture});
}

// "Sauvegarder maintenant" is the copy of this session; one that was given up or stopped is none.
TEST_F(FinDeSession, UneSeuleCopie) {
  ASSERT_NE(Enregistre(Ecriture(JournalRecettes, "706", 20)), 0u);
  OptionsSauvegarde options;
  options.finDeSession = true;
  options.dossier = Ailleurs.Chemin();
  ASSERT_FALSE(EcritOptionsSauvegarde(App(), options));
  const auto presente = [&] {
    std::vector<SauvegardePresente> presentes;
    EXPECT_FALSE(ListeSauvegardes(Magasin().SystemeFichiers(), Ailleurs.Chemin(), presentes));
    EXPECT_EQ(presentes.size(), 1u);
    EXPECT_TRUE(presentes.empty() || presentes[0].protegee);
    return presentes.empty() ? std::string() : presentes[0].nom;
  };
  std::string faite;
  const auto ferme = [&](std::function<void(QDialog&)> geste) {
    robot.Attend("DialogEndOfSession", [](QDialog& f) { Clique(Case(f, "sauvegarder")); });
    robot.Attend("WizardSauvegarde", std::move(geste));
    EXPECT_TRUE(PeutFermer(Ui));
  };
  const auto protege = [](QDialog& f) {
    EXPECT_TRUE(Trouve<QRadioButton>(f, "complet").isChecked());
    Clique(Case(f, "suivant"));
    Case(f, "proteger").click();
    for (const char* champ : {"motDePasse", "encore"}) test::Tape(Champ(f, champ), u"secret"_s);
  };
  ferme([&](QDialog& f) {
    protege(f);
    Clique(Case(f, "faire"));
    faite = presente();
    Clique(Case(f, "fermer"));
  });
  EXPECT_EQ(presente(), faite) << "no second one";
  // Stopped, then left: the one of each session is made, behind the password that was typed before.
  ferme([&](QDialog& f) {
    protege(f);
    Boite.ArretApres = 0;
    Clique(Case(f, "faire"));
    Boite.ArretApres = -1;
    f.reject();
  });
  EXPECT_NE(presente(), faite);
}

TEST_F(FinDeSession, LeRappelDesMisesAJour) {
  const std::string programme = Ailleurs.Chemin() + "/QVUpdate.exe";
  std::vector<std::string> lances;
  int erreur = 0;
  const Lanceur lanceur = [&](const std::string& p, const std::string& argument) {
    lances.push_back(p + " " + argument);
    return erreur;
  };
  const auto rappelle = [&](int reponse) {
    Boite.Oublie();
    lances.clear();
    Boite.Reponses = {reponse};
    ChercheMiseAJour(App());
    return RappelMiseAJour(App(), lanceur);
  };
  ASSERT_TRUE(Magasin().QVSetRegString("HKEY_LOCAL_MACHINE", "software\\Orvelia", "QVUpdate", "Path",
                                       Ailleurs.Chemin()));
  DateMiseAJour(400);
  EXPECT_FALSE(rappelle(RepOui)) << "no program";
  test::EcritFichier(programme, "x");
  for (const auto& [jours, demande] : {std::pair{15, false}, {16, true}, {-3, false}}) {
    DateMiseAJour(jours);
    EXPECT_EQ(rappelle(RepOui), demande) << jours;
    EXPECT_EQ(lances, demande ? std::vector<std::string>{programme + " fenlor"} : std::vector<std::string>{});
  }
  DateMiseAJour(16);
  EXPECT_FALSE(rappelle(RepNon));
  EXPECT_TRUE(lances.empty());
  ASSERT_EQ(Boite.Questions.size(), 1u);
  EXPECT_NE(Boite.Questions[0].texte.find("vieille de 16 jours."), std::string::npos);
  EXPECT_EQ(LitMiseAJour(App()).jours, 90) << "the page still shows its own";
  // A program that does not start: the box of the slip, and the start ends all the same.
  erreur = ENOENT;
  EXPECT_TRUE(rappelle(RepOui));
  EXPECT_EQ(Boite.NumerosQuestions(), (std::vector<unsigned>{QuestionMiseAJour, ENOENT}));
  EXPECT_EQ(Boite.Questions[1].texte, "");
  EXPECT_EQ(Boite.Questions[1].style, 3121u);
  ASSERT_TRUE(EcritUtilisateur(App(), CleModeMiseAJour, "2"));
  EXPECT_FALSE(rappelle(RepOui)) << "not at the start";
  // Without a date the first look writes today.
  ASSERT_TRUE(EcritUtilisateur(App(), CleModeMiseAJour, "1"));
  ASSERT_TRUE(EcritUtilisateur(App(), CleApplicationMiseAJour, "autre"));
  EXPECT_FALSE(rappelle(RepOui));
  std::string date;
  ASSERT_TRUE(Magasin().QVGetRegString("HKEY_CURRENT_USER", "software\\Orvelia\\QVUpdate\\autre", "Options",
                                       "Date", date));
  EXPECT_EQ(date, IlYA(0));
  EXPECT_EQ(LanceProgramme(Ailleurs.Chemin() + "/absent", ""), ENOENT);
  EXPECT_EQ(LanceProgramme("/bin/true", "fenlor"), 0);
}

}  // namespace
}  // namespace fenlor::test

#include <QListWidget>
#include <QPlainTextEdit>

#include "forms/garde/qvbwizard.h"
#include "forms/garde/wizardrestauration.h"
#include "forms/garde/wizardsauvegarde.h"
#include "forms/journal/formesjournal.h"
#include "garde/conservation.h"
#include "garde/optionssauvegarde.h"
#include "garde/textes.h"
#include "master/options.h"
#include "ui/editeurs.h"
#include "ui/tableliste.h"

namespace fenlor::test {
namespace {

class Assistants : public test::FormesJournal {
 protected:
  test::DossierTemporaire Ailleurs{true};

  /// The page in front, held to the rules of forms.
  static QWizardPage& Page(QDialog& f) {
    test::VerifieFormulaire(f);
    return *static_cast<QWizard&>(f).currentPage();
  }
  void Avance(QDialog& f, const char* bouton = "suivant") { Clique(Case(f, bouton)); }
  void PoseDossier(QDialog& f, const std::string& dossier) {
    Trouve<QComboBox>(f, "dossier").setCurrentText(CheminQ(dossier));
  }
  /// Through the pages of a backup behind the password "clé", with what each refuses.
  void Sauve(QDialog& f);
  void Restaure(QDialog& f);
  std::vector<SauvegardePresente> Presentes() {
    std::vector<SauvegardePresente> presentes;
    EXPECT_FALSE(ListeSauvegardes(Magasin().SystemeFichiers(), Ailleurs.Chemin(), presentes));
    return presentes;
  }
};

TEST_F(Assistants, LeBlocEstCeluiQuiEstDit) {
  BlocSauvegarde bloc;
  ASSERT_FALSE(RemplitBloc(App(), bloc));
  EXPECT_EQ(std::string(bloc.exercice), App().PathCabinet + "/2003");
  EXPECT_EQ(std::string(bloc.destination), "");
  EXPECT_EQ((std::vector<u32>{+bloc.comprime, +bloc.verifie, +bloc.fractionne, +bloc.demande}),
            (std::vector<u32>{1, 1, 0, 0}));
  App().NomExercice.clear();
  ASSERT_FALSE(RetientDossier(App(), "/copies"));
  ASSERT_FALSE(RemplitBloc(App(), bloc));
  EXPECT_EQ(std::string(bloc.exercice), App().PathCabinet + "/");
  EXPECT_EQ(ExerciceDuBloc(bloc), "");
  EXPECT_EQ(std::string(bloc.destination), "/copies");
  EXPECT_EQ(RetientDossier(App(), "/" + std::string(259, 'x')).numero, ErrDossierSauvegardeLong);
  App().PathCabinet = "/" + std::string(259, 'x');
  EXPECT_EQ(RemplitBloc(App(), bloc).numero, ErrCheminCabinetLong);
}

void Assistants::Sauve(QDialog& f) {
  Page(f);
  EXPECT_TRUE(Trouve<QRadioButton>(f, "exercice").isChecked());
  EXPECT_NE(Trouve<QComboBox>(f, "dossier").currentText(), u""_s) << "a folder is proposed";
  EXPECT_FALSE(Trouve<QLabel>(f, "avis").text().isEmpty());
  PoseDossier(f, "");
  Avance(f);
  PoseDossier(f, Ailleurs.Chemin() + "/absent");
  Avance(f);
  EXPECT_EQ(Boite.NumerosErreurs(),
            (std::vector<unsigned>{ErrDossierSauvegardeAbsent, ErrDossierSauvegardeInconnu}));
  PoseDossier(f, Ailleurs.Chemin());
  EXPECT_NE(Trouve<QLabel>(f, "avis").text(), u""_s);
  Avance(f);
  Page(f);
  EXPECT_FALSE(Actif(f, "motDePasse"));
  Case(f, "proteger").click();
  Tape(Champ(f, "motDePasse"), u"clé"_s);
  Tape(Champ(f, "encore"), u"cle"_s);
  Boite.Oublie();
  Avance(f, "faire");
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrMotDePasseSauvegarde});
  EXPECT_EQ(Focus(f), "motDePasse");
  Tape(Champ(f, "encore"), u"clé"_s);
  // Cancel in the progress leaves no file, and the page as it was.
  Boite.Oublie();
  Boite.ArretApres = 0;
  Avance(f, "faire");
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrArchiveInterrompue});
  EXPECT_TRUE(Presentes().empty());
  Boite.ArretApres = -1;
  Avance(f, "faire");
  QWizardPage& fin = Page(f);
  EXPECT_EQ(Lu(fin, "exercices"), u"2003"_s);
  EXPECT_EQ(Lu(fin, "ecritures"), u"1"_s);
  EXPECT_EQ(Lu(fin, "protection"), u"mot de passe"_s);
  EXPECT_TRUE(Lu(fin, "fichier").endsWith(u".fnz"_s));
  Avance(f, "fermer");
  EXPECT_FALSE(f.isVisible());
}

void Assistants::Restaure(QDialog& f) {
  Page(f);
  EXPECT_EQ(Trouve<QComboBox>(f, "dossier").currentText(), CheminQ(Ailleurs.Chemin())) << "remembered";
  TableListe& liste = Trouve<TableListe>(f, "liste");
  ASSERT_EQ(liste.Modele().NbLignes(), 2);
  EXPECT_EQ(liste.Modele().Champ(0, 4), u"Protégée"_s);
  liste.SelectionneLigne(1);
  EXPECT_EQ(liste.Modele().Champ(1, 4), u"Etrangère"_s);
  EXPECT_TRUE(Lu(f, "detail").contains(u"n'est pas une sauvegarde"_s));
  EXPECT_FALSE(Actif(f, "suivant"));
  liste.SelectionneLigne(0);
  Avance(f);
  Page(f);
  Boite.Oublie();
  Tape(Champ(f, "motDePasse"), u"faux"_s);
  Avance(f);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrArchiveMotDePasse});
  Tape(Champ(f, "motDePasse"), u"clé"_s);
  Avance(f);
  QWizardPage& choix = Page(f);
  auto& exercices = Trouve<QListWidget>(choix, "exercices");
  ASSERT_EQ(exercices.count(), 1);
  EXPECT_TRUE(exercices.item(0)->text().contains(u"1 écriture(s) : remplace"_s));
  exercices.item(0)->setCheckState(Qt::Unchecked);
  Boite.Oublie();
  Avance(f, "faire");
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrSauvegardeSansExercice});
  exercices.item(0)->setCheckState(Qt::Checked);
  Avance(f, "faire");
  const QString bilan = Trouve<QPlainTextEdit>(Page(f), "bilan").toPlainText();
  EXPECT_TRUE(
      bilan.contains(u"Exercice 2003 : restauré.\n   Les livres d'avant restent dans le dossier "
                     u"2003.avant-20030315"_s))
      << bilan.toStdString();
  Avance(f, "fermer");
}

TEST_F(Assistants, UneSauvegardeProtegeeEtSonRetour) {
  ASSERT_NE(Enregistre(Ecriture(JournalRecettes, "706", 20)), 0u);
  test::EcritFichier(Ailleurs.Chemin() + "/photo.fnz", "rien de tel");
  robot.Attend("WizardSauvegarde", [this](QDialog& f) { Sauve(f); });
  CommandeSauvegarde(Ui);
  EXPECT_EQ(Cadre.Appels, (std::vector<std::string>{"FermeToutes", "MontreExercice"}));
  ASSERT_EQ(Presentes().size(), 1u);
  EXPECT_TRUE(Presentes()[0].protegee);

  ASSERT_NE(Enregistre(Ecriture(JournalRecettes, "706", 30)), 0u);
  ASSERT_TRUE(EcritUtilisateur(App(), CleDateSauvegarde, "01/03/2003"));
  robot.Attend("WizardRestauration", [this](QDialog& f) { Restaure(f); });
  CommandeRestauration(Ui);
  EXPECT_EQ(App().NomExercice, "2003") << "the session goes on";
  EXPECT_EQ(Lignes(1).size(), 2u);
  EXPECT_TRUE(Lignes(2).empty());
  EXPECT_EQ(LitUtilisateur(App(), CleDateSauvegarde), "01/03/2003");
}

// What an archive says of itself stands at its beginning: whether it is whole shows once it was read.
TEST_F(Assistants, UneSauvegardeAbimeeAuMilieuEstDite) {
  SauvegardeFaite bonne, abimee;
  for (SauvegardeFaite* faite : {&bonne, &abimee})
    ASSERT_FALSE(Sauvegarde(App(), {Ailleurs.Chemin(), false, {}}, *faite));
  std::string octets = test::LitFichier(abimee.chemin);
  octets[octets.size() - 100] ^= 1;
  test::EcritFichier(abimee.chemin, octets);
  ASSERT_FALSE(RetientDossier(App(), Ailleurs.Chemin()));
  robot.Attend("WizardRestauration", [](QDialog& f) {
    TableListe& liste = Trouve<TableListe>(f, "liste");
    ASSERT_EQ(liste.Modele().NbLignes(), 2);
    const auto etats = [&] { return QStringList{liste.Modele().Champ(0, 4), liste.Modele().Champ(1, 4)}; };
    const QDeadlineTimer patience(30'000);
    while (etats().contains(u"Lecture..."_s) && !patience.hasExpired())
      QApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    EXPECT_EQ(etats(), (QStringList{u"Endommagée"_s, u"Bonne"_s}));
    EXPECT_TRUE(Lu(f, "detail").contains(u"est endommagée"_s)) << "the selected row says why at once";
    EXPECT_FALSE(Actif(f, "suivant"));
    Clique(Case(f, "annuler"));
  });
  CommandeRestauration(Ui);
}

TEST_F(Assistants, UneSauvegardeAbandonneeCompteQuandMeme) {
  const auto annule = [&](bool exercice) {
    return [this, exercice](QDialog& f) {
      EXPECT_EQ(Actif(f, "exercice"), exercice);
      EXPECT_EQ(Trouve<QRadioButton>(f, "complet").isChecked(), !exercice);
      Clique(Case(f, "annuler"));
    };
  };
  robot.Attend("WizardSauvegarde", annule(true));
  CommandeSauvegarde(Ui);
  EXPECT_EQ(LitUtilisateur(App(), CleDateSauvegarde), "15/03/2003");
  EXPECT_EQ(PhraseSauvegardeVerifiee(App()), "");
  // Without an exercice no window is closed.
  Cadre.Appels.clear();
  App().NomExercice.clear();
  robot.Attend("WizardSauvegarde", annule(false));
  CommandeSauvegarde(Ui);
  EXPECT_EQ(Cadre.Appels, std::vector<std::string>{"MontreExercice"});
}

}  // namespace
}  // namespace fenlor::test

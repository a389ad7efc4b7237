

#include "master/libelles.h"
#include "forms/journal/formesjournal.h"
#include "forms/master/commandesliste.h"
#include "forms/master/dialoglibelle.h"
#include "forms/master/libelleview.h"
#include "master/textes.h"

namespace fenlor::test {
namespace {

using Noms = std::vector<std::string>;

class FenetreLibelles : public FormesJournal {
 protected:
  std::unique_ptr<CLibelleView> Vue;

  void SetUp() override {
    FormesJournal::SetUp();
    Fichier("@Texte\r\nConsultations\r\nLoyer\r\nÉlectricité\r\n"_w);
    Vue = std::make_unique<CLibelleView>(Ui);
    Vue->Charge();
    Vue->show();
  }
  std::string Chemin() { return Joint(App().PathExercice, "TEXTES.dat"); }
  void Fichier(const std::string& contenu) { test::EcritFichier(Chemin(), contenu); }
  /// The labels of the file, which are those of the window, with its empty row at the end.
  Noms Libelles() {
    Noms lus, montres;
    EXPECT_TRUE(App().Dit(LitLibelles(App(), lus)));
    ModeleListe& modele = Vue->Table().Modele();
    for (int i = 0; i < modele.NbLignes(); ++i) montres.push_back(De1252(modele.Champ(i, 0)));
    EXPECT_TRUE(!montres.empty() && montres.back().empty() && modele.DonneeDe(modele.NbLignes() - 1) == 0);
    montres.pop_back();
    EXPECT_EQ(montres, lus);
    return lus;
  }
  void Choisit(int ligne) { Vue->Table().SelectionneLigne(ligne, ligne >= 0); }
  int Choisie() { return Vue->Table().LigneChoisie(); }
  /// Opens the form, checks it, and does there what a person would do.
  void Ouvre(unsigned commande, std::function<void(QDialog&)> geste) {
    robot.Attend("DialogLibelle", [geste](QDialog& f) {
      test::VerifieFormulaire(f);
      geste(f);
      if (f.isVisible()) f.reject();
    });
    Vue->Execute(commande);
  }
  static EditeurTexte& Champ(QDialog& f) { return Trouve<EditeurTexte>(f, "libelle"); }
  static QPushButton& Voisin(QDialog& f, const char* nom) { return Trouve<QPushButton>(f, nom); }
  static void Entree(QDialog& f) { QTest::keyClick(f.focusWidget(), Qt::Key_Return); }
};

// By keyboard alone: three labels in a row, before the selected one.
TEST_F(FenetreLibelles, AjoutEnSerie) {
  Choisit(1);
  Ouvre(CmdAjouter, [&](QDialog& f) {
    EXPECT_EQ(f.windowTitle(), u"Ajout d'un libellé"_s);
    for (const QString& texte : {u"Carburant"_s, u"  Frais   postaux "_s, u"Loyer"_s}) {
      EXPECT_TRUE(Champ(f).hasFocus() && Champ(f).text().isEmpty());
      QTest::keyClicks(f.focusWidget(), texte);
      Entree(f);
      EXPECT_TRUE(f.isVisible());
    }
    EXPECT_EQ(Libelles().size(), 6u) << "saved while the form is open";
    QTest::keyClick(&f, Qt::Key_Escape);
    EXPECT_FALSE(f.isVisible());
  });
  EXPECT_EQ(Libelles(),
            (Noms{"Consultations", "Carburant", "Frais postaux", "Loyer", "Loyer", "Électricité"_w}));
  EXPECT_EQ(Choisie(), 4) << "still on the label that was selected";
}

TEST_F(FenetreLibelles, TextesLimites) {
  Choisit(3);  // the empty row: at the end
  Ouvre(CmdAjouter, [&](QDialog& f) {
    Tape(Champ(f), QString(81, u'é'));
    EXPECT_EQ(Champ(f).text().size(), 80);
    Tape(Champ(f), u" @Texte"_s);
    Clique(Bouton(f, u"&Enregistrer"_s));
    EXPECT_EQ(Champ(f).text(), u" @Texte"_s);
    EXPECT_TRUE(Champ(f).hasFocus());
    Tape(Champ(f), u"Achat | vente"_s);
    Clique(Bouton(f, u"&Enregistrer"_s));
  });
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrLibelleRefuse});
  EXPECT_EQ(Libelles().back(), "Achat | vente");
}

TEST_F(FenetreLibelles, ModifieEtParcourt) {
  Choisit(0);
  Ouvre(CmdModifier, [&](QDialog& f) {
    EXPECT_EQ(f.windowTitle(), u"Modification d'un libellé"_s);
    EXPECT_FALSE(Voisin(f, "precedent").isEnabled());
    Tape(Champ(f), u"Consultation"_s);
    Clique(Bouton(f, u"&Suivant"_s));
    EXPECT_EQ(Champ(f).text(), u"Loyer"_s);
    EXPECT_EQ(Libelles()[0], "Consultation") << "stored in passing";
    Tape(Champ(f), u" "_s);
    Clique(Bouton(f, u"&Suivant"_s));
    EXPECT_EQ(Choisie(), 1) << "a label that is refused is not left";
    Tape(Champ(f), u"Loyer"_s);
    Clique(Bouton(f, u"&Suivant"_s));
    EXPECT_TRUE(!Voisin(f, "suivant").isEnabled() && Voisin(f, "precedent").isEnabled());
    Clique(Bouton(f, u"&Ok"_s));
  });
  EXPECT_EQ(Libelles(), (Noms{"Consultation", "Loyer", "Électricité"_w}));
  EXPECT_EQ(Choisie(), 2);
}

TEST_F(FenetreLibelles, Supprime) {
  Fichier("Consultations\r\nLoyer\r\nVacances\r\n");  // an entry form has added one meanwhile
  Choisit(3);
  EXPECT_FALSE(Vue->Disponible(CmdModifier) || Vue->Disponible(CmdSupprimer)) << "the empty row";
  Choisit(1);
  Vue->Execute(CmdSupprimer);
  EXPECT_EQ(Libelles().size(), 3u) << "not without a yes";
  Boite.Reponses = {RepOui, RepOui, RepOui};
  Vue->Execute(CmdSupprimer);
  EXPECT_EQ(Boite.Questions.back().texte, "Suppression du libellé\n\"Loyer\" ?"_w);
  EXPECT_EQ(Libelles(), (Noms{"Consultations", "Vacances"}));
  EXPECT_EQ(Choisie(), 1);
  Vue->Execute(CmdSupprimer);
  Choisit(0);
  Vue->Execute(CmdSupprimer);
  EXPECT_EQ(Libelles(), Noms{});
}

// Rows that a filter leaves are not the rows of the file.
TEST_F(FenetreLibelles, SousUnFiltre) {
  Vue->Table().PoseFiltre(u"loyer"_s);
  Choisit(0);
  Ouvre(CmdModifier, [](QDialog& f) {
    EXPECT_EQ(Champ(f).Valeur(), "Loyer");
    EXPECT_FALSE(Voisin(f, "precedent").isEnabled() || Voisin(f, "suivant").isEnabled());
    Tape(Champ(f), u"Loyer et charges"_s);
    Entree(f);
  });
  Ouvre(CmdAjouter, [](QDialog& f) {
    Tape(Champ(f), u"Avant le loyer"_s);
    Entree(f);
  });
  Vue->Table().PoseFiltre(u"electricite"_s);
  Choisit(0);
  Boite.Reponses = {RepOui};
  Vue->Execute(CmdSupprimer);
  Vue->Table().OteFiltre();
  EXPECT_EQ(Libelles(), (Noms{"Consultations", "Avant le loyer", "Loyer et charges"}));
}

}  // namespace
}  // namespace fenlor::test

#include <QtTest>

#include "app/programmedetest.h"
#include "assets/immobilisations.h"
#include "core/btfiles.h"
#include "session/annulation.h"

namespace fenlor::test {
namespace {

/// The register in the main window, worked by keys alone.
class RegistreAuClavier : public ProgrammeDeTest {
 protected:
  void SetUp() override {
    Installe();
    for (const char* nom : {"Divan", "Table"}) {
      FicheImmobilisation fiche = NouvelleImmobilisation(App());
      fiche.designation = nom;
      fiche.dateAchat = FaitDate(1, 1, 2001);
      fiche.prix = fiche.valeur = 1000;
      EXPECT_FALSE(EnregistreFiche(App(), fiche));
    }
    Montre();
    Touche(Qt::CTRL | Qt::Key_I);
  }
  void Touche(QKeyCombination touche) {
    Principal->activateWindow();  // no window manager gives it the keyboard back after a form
    QTest::keyClick(Principal->windowHandle(), touche.key(), touche.keyboardModifiers());
    QApplication::processEvents();
  }
  /// Assets and corrections as they stand in the files, by number and year.
  std::map<std::pair<u32, u32>, std::string> Livres() {
    std::map<std::pair<u32, u32>, std::string> lus;
    const auto ajoute = [&]<class Rec>(const Rec& rec, u32 annee) {
      lus[{+rec.Numero, annee}].assign(reinterpret_cast<const char*>(&rec), sizeof rec);
      return true;
    };
    CImmobilisations biens(App(), App().PathCabinet);
    CAmortissements corrections(App(), App().PathCabinet);
    EXPECT_TRUE(biens.OpenFile() && corrections.OpenFile());
    Magasin().QVParcours(biens.NumFichier, [&](Position, const void* rec) {
      return ajoute(*static_cast<const Immobilisation*>(rec), 0);
    });
    Magasin().QVParcours(corrections.NumFichier, [&](Position, const void* rec) {
      const auto& annee = *static_cast<const Amortissement*>(rec);
      return ajoute(annee, +annee.Annee);
    });
    return lus;
  }
};

TEST_F(RegistreAuClavier, ChaqueOperationRevientOctetPourOctet) {
  using Geste = std::function<void(QDialog&)>;
  const auto ok = [](QDialog& forme) { QTest::keyClick(&forme, Qt::Key_Return); };
  const auto tape = [ok](const char* champ, const char* texte) -> Geste {
    return [=](QDialog& forme) {
      Tape(Trouve<QLineEdit>(forme, champ), QString::fromUtf8(texte));
      ok(forme);
    };
  };
  const Geste corrige = [&](QDialog& forme) {
    robot.Attend("DialogAmortissementsLine", tape("reel", "12"));
    QTest::keyClick(&Trouve<QWidget>(forme, "lignes"), Qt::Key_Return);
    Clique(Bouton(forme, u"&Ok"_s));
  };
  const struct {
    QKeyCombination touche;
    const char* forme;
    Geste geste;
    const char* nom;
  } operations[] = {
      {Qt::Key_Insert, "DialogAcquisition", tape("designation", "Lampe"), "ajout de « Lampe »"},
      {Qt::Key_F2, "DialogAcquisition", tape("designation", "Phare"), "modification de « Phare »"},
      {Qt::Key_F7, "DialogCession", tape("prix", "700"), "modification de « Table »"},
      {Qt::SHIFT | Qt::Key_F7, "DialogRebut", ok, "modification de « Table »"},
      {Qt::Key_F3, "DialogAmortissements", corrige, "modification d'un amortissement"},
      {Qt::Key_Delete, nullptr, {}, "suppression de « Table »"},
  };
  Boite.Defaut = RepOui;
  for (const auto& o : operations) {
    const auto avant = Livres();
    Touche(Qt::Key_End);
    if (o.forme) robot.Attend(o.forme, o.geste);
    Touche(o.touche);
    const auto apres = Livres();
    EXPECT_TRUE(apres != avant) << o.nom;
    EXPECT_EQ(VersUtf8(NomReprise(App(), Sens::Annuler)), o.nom);
    Touche(Qt::CTRL | Qt::Key_Z);
    EXPECT_TRUE(Livres() == avant) << o.nom;
    Touche(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    EXPECT_TRUE(Livres() == apres) << o.nom;
    Touche(Qt::CTRL | Qt::Key_Z);
    EXPECT_TRUE(Livres() == avant) << o.nom;
  }
  Touche(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
  robot.Attend("DialogAcquisition", tape("designation", "Lampe"));
  Touche(Qt::Key_Insert);
  EXPECT_TRUE(Livres().contains({4, 0})) << "a number that was given is not given again";
}

}  // namespace
}  // namespace fenlor::test

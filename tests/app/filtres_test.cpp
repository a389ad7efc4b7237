// The lists of the forms under their quick filter, by keyboard: what is done there hits the record that
// shows, and the filter is nothing that was typed into the form.
#include <gmock/gmock.h>

#include "auto/modeleauto.h"
#include "banque/operations.h"
#include "forms/assets/dialogamortissements.h"
#include "forms/auto/dialogautoecheance.h"
#include "forms/auto/dialogautolist.h"
#include "forms/banque/dialograpprochement.h"
#include "forms/banque/dialogremise.h"
#include "forms/journal/dialogcorbeille.h"
#include "forms/journal/dialogecriture.h"
#include "forms/journal/dialogmouvement.h"
#include "forms/journal/formesjournal.h"
#include "forms/master/dialogtauxeuro.h"
#include "forms/master/pageoptionadressebanque.h"
#include "forms/master/pageoptiontva.h"
#include "forms/recherche/dialogrecherche.h"
#include "master/options.h"
#include "master/optionstva.h"
#include "master/tauxeuro.h"
#include "ui/cznsheet.h"
#include "ui/tableliste.h"

namespace fenlor::test {
namespace {

/// A sheet of one page.
class Feuille : public CZNSheet {
 public:
  Feuille(ContexteUi& contexte, CZNPage* page) : CZNSheet(contexte, u"Feuille"_s, "Feuille") {
    AjoutePage(page);
    Fini();
  }
};

class FormesFiltrees : public FormesJournal {
 protected:
  using Forme = std::unique_ptr<QDialog>;
  struct Cas {
    std::function<Forme()> ouvre;
    QString mot;  ///< of the last row alone
    Qt::Key touche;
    const char* autre = nullptr;  ///< form of the record, which opens; null: the row goes, or changes
    const char* liste = "";
    const char* bouton = nullptr;  ///< instead of the key
  };
  static TableListe& Table(QDialog& f, const char* nom) {
    return *nom ? Trouve<TableListe>(f, nom) : *f.findChild<TableListe*>();
  }
  void Filtre(QDialog& f, TableListe& table, const QString& mot) {
    f.setModal(false);
    f.show();
    f.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&f));
    QTest::keyClicks(&table, u"/"_s);
    QTest::keyClicks(f.focusWidget(), mot);
    QTest::keyClick(f.focusWidget(), Qt::Key_Return);
    ASSERT_EQ(table.Modele().NbLignes(), 1) << mot.toStdString();
    ASSERT_GT(table.RangDe(0), 0) << "no row went away before it";
  }
  void Essaie(const Cas& cas) {
    const Forme forme = cas.ouvre();
    SCOPED_TRACE(forme->metaObject()->className() + (" " + cas.mot.toStdString()));
    TableListe& table = Table(*forme, cas.liste);
    const QStringList avant = Rangs(table);
    Filtre(*forme, table, cas.mot);
    if (cas.autre)
      robot.Attend(cas.autre, [&](QDialog& f) {
        QString textes = Textes(f);
        for (const QLineEdit* champ : f.findChildren<QLineEdit*>()) textes += u'\n' + champ->text();
        EXPECT_TRUE(textes.contains(cas.mot)) << textes.toStdString();
        f.reject();
      });
    cas.bouton ? Clique(Case(*forme, cas.bouton)) : QTest::keyClick(&table, cas.touche);
    QApplication::processEvents();
    table.OteFiltre();
    const Forme neuve = forme->isVisible() ? Forme() : cas.ouvre();
    const QStringList apres = Rangs(neuve ? Table(*neuve, cas.liste) : table);
    for (const QString& rangee : avant)
      EXPECT_EQ(apres.contains(rangee), cas.autre || !rangee.contains(cas.mot)) << rangee.toStdString();
  }
  void Remplit();
  u32 Recette(unsigned jour, f64 montant, const char* libelle) {
    SaisieEcriture ecriture = Ecriture(JournalRecettes, "706", montant, "512", FaitDate(jour, 3, 2003));
    ecriture.libelle = libelle;
    return Enregistre(ecriture);
  }
  void Modele(const char* libelle, f64 montant) {
    FicheAuto fiche = NouvelleAuto(App());
    fiche.genre = JournalDepenses;
    fiche.compte = Long("6132");
    fiche.tresorerie = Long("512");
    fiche.libelle = libelle;
    fiche.montants = {montant, montant, 0, montant, 0, 0};
    ASSERT_FALSE(EnregistreFiche(App(), fiche));
  }
  u32 m_une = 0, m_deux = 0, m_od = 0;
};

/// Two rows, or more, for each list.
void FormesFiltrees::Remplit() {
  Boite.Defaut = RepOui;
  ASSERT_TRUE(EcritTauxEuro(App(), {{FaitDate(1, 1, 1999), 6.55957}, {FaitDate(1, 2, 2001), 6.5}}));
  std::vector<LigneTva> taxes = LitComptesTva(App());
  taxes.push_back({0, Long("4459"), 7.25});
  unsigned comptes = 0;
  ASSERT_FALSE(AppliqueComptesTva(App(), taxes, comptes));
  ASSERT_TRUE(EcritAdressesBanque(App(), {{"BQ", "Banque", "1"}, {"CCP", "La Poste", "2"}}, false));
  Modele("Loyer", 700);
  Modele("Assurance", 55);
  m_une = Recette(11, 10, "Lundi");
  m_deux = Recette(12, 20, "Mardi");
  m_od = EnregistreLesLignes({{Long("512"), "Apport", 10, 0, 0}, {Long("706"), "Reprise", 0, 10, 0}});
  ASSERT_TRUE(m_une && m_deux && m_od);
  FicheOperation fiche;
  for (const f64 montant : {99.0, 20.0}) {
    fiche.position = 0;
    fiche.compte = "512";
    fiche.libelle = montant > 50 ? "AUTRE" : "VIREMENT";
    fiche.date = FaitDate(montant > 50 ? 14 : 13, 3, 2003);
    fiche.sens = 1;
    fiche.montant = montant;
    ASSERT_FALSE(EnregistreOperation(App(), fiche));
  }
}

TEST_F(FormesFiltrees, OnAgitSurCeQuiSeVoit) {
  Remplit();
  DetailAmortissements detail;
  detail.lignes = {{2002, 100, 50}, {2003, 100, 60}};
  CriteresRemise cheques = CriteresRemiseProposes(App());

  const auto taux = [&] { return Forme(new CDialogTauxEuro(Ui)); };
  const auto taxe = [&] { return Forme(new Feuille(Ui, new CPageOptionTVA(Ui))); };
  const auto banque = [&] { return Forme(new Feuille(Ui, new CPageOptionAdresseBanque(Ui))); };
  const auto modeles = [&] { return Forme(new CDialogAutoList(Ui, {})); };
  const auto annonces = [&] {
    return Forme(new CDialogAutoEcheance(
        Ui, {{1, FaitDate(15, 3, 2003), "Loyer", "BQ", JournalDepenses, 700, true},
             {2, FaitDate(16, 3, 2003), "Assurance", "BQ", JournalDepenses, 55, true}}));
  };
  const auto annees = [&] { return Forme(new CDialogAmortissements(Ui, detail)); };
  const auto remise = [&] { return Forme(new CDialogRemise(Ui, Dossier() + "/remise", cheques)); };
  const auto rapprochement = [&] { return Forme(new CDialogRapprochement(Ui)); };
  const auto corbeille = [&] { return Forme(new CDialogCorbeille(Ui)); };
  const auto ouverture = [](i16 journal, u32 mouvement) {
    OuvertureEcriture ouverture;
    ouverture.journal = journal;
    ouverture.date = FaitDate(15, 3, 2003);
    ouverture.mouvement = mouvement;
    return ouverture;
  };
  const auto diverses = [&] { return Forme(new CDialogMouvement(Ui, ouverture(JournalOD, m_od))); };
  const u32 deux = Enregistre(Multiple(JournalRecettes, "706", {{"512", 60}, {"531", 40}}));
  const auto multiple = [&] { return Forme(new CDialogEcriture(Ui, ouverture(JournalRecettes, deux))); };
  for (const Cas& cas : std::initializer_list<Cas>{
           {taux, u"6,50000"_s, Qt::Key_Return, "DialogSaisieTaux"},
           {taux, u"01/02/2001"_s, Qt::Key_Delete},
           {taxe, u"7,25"_s, Qt::Key_Return, "DialogTauxTVA"},
           {taxe, u"7,25"_s, Qt::Key_Delete},
           {banque, u"La Poste"_s, Qt::Key_Return, "DialogAdresseBanque"},
           {banque, u"La Poste"_s, Qt::Key_Delete},
           {modeles, u"Assurance"_s, Qt::Key_Return, "DialogAutoEcriture"},
           {modeles, u"Assurance"_s, Qt::Key_Delete},
           {annonces, u"Assurance"_s, Qt::Key_unknown, nullptr, "", "supprimer"},
           {annees, u"2003"_s, Qt::Key_Return, "DialogAmortissementsLine"},
           {annees, u"2003"_s, Qt::Key_Delete},
           {remise, u"20,00"_s, Qt::Key_Return, "DialogEcriture"},
           {remise, u"20,00"_s, Qt::Key_Space},
           {diverses, u"Reprise"_s, Qt::Key_Return, "DialogLine"},
           {diverses, u"Reprise"_s, Qt::Key_Delete},
           {multiple, u"40,00"_s, Qt::Key_Return, "DialogLineTresor", "lignes"},
           {multiple, u"40,00"_s, Qt::Key_Delete, nullptr, "lignes"},
           {rapprochement, u"99,00"_s, Qt::Key_Delete, nullptr, "operations"},
           {rapprochement, u"20,00"_s, Qt::Key_Return, nullptr, "lignes"},
       })
    Essaie(cas);
  ASSERT_FALSE(SupprimeEcriture(App(), m_deux) || SupprimeEcriture(App(), m_une));
  EXPECT_EQ(Rangs(Table(*corbeille(), ""))[0], u"15/03/2003|11/03/2003|Lundi|10,00 €"_s);
  Essaie({corbeille, u"Mardi"_s, Qt::Key_unknown, nullptr, "", "ok"});
  CDialogRecherche recherche(Ui,
                             {{"Commande", "Alpha un", "", "", {}}, {"Commande", "Alpha deux", "", "", {}}});
  recherche.show();
  QTest::keyClicks(&Champ(recherche, "texte"), u"alpha"_s);
  TableListe& trouvailles = Table(recherche, "");
  ASSERT_TRUE(QTest::qWaitFor([&] { return recherche.Repos() && trouvailles.Modele().NbLignes() == 2; }));
  Filtre(recherche, trouvailles, Rangs(trouvailles)[1].contains(u"un"_s) ? u"un"_s : u"deux"_s);
  ASSERT_TRUE(recherche.Cible());
  EXPECT_TRUE(trouvailles.Modele().Champ(0, 2) == Q(recherche.Cible()->nom));
}

TEST_F(FormesFiltrees, UnFiltreNEstPasUneSaisie) {
  struct Sonde : CDialogTauxEuro {
    using CDialogTauxEuro::CDialogTauxEuro;
    using CDialogTauxEuro::Modifie;
  } f(Ui);
  Montre(f);
  QTest::keyClicks(&Table(f, ""), u"/"_s);
  QTest::keyClicks(f.focusWidget(), u"1999"_s);
  EXPECT_FALSE(f.Modifie());
  QTest::keyClick(f.focusWidget(), Qt::Key_Tab);
  EXPECT_TRUE(Table(f, "").hasFocus());
}

}  // namespace
}  // namespace fenlor::test

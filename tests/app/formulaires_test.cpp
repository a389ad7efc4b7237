// Every form of the program, light and dark, at two sizes of the text, in an open and in a closed exercice:
// workable without a mouse, readable, nothing cut. Which forms there are is read from the sources.

#include <QRegularExpression>
#include <QTabWidget>
#include <QTimer>
#include <iostream>
#include <map>
#include <regex>
#include <set>

#include "app/aide.h"
#include "app/apropos.h"
#include "app/astuce.h"
#include "app/barreicones.h"
#include "app/calculatrice.h"
#include "app/infosysteme.h"
#include "app/personnaliser.h"
#include "app/raccourcis.h"
#include "assets/amortissements.h"
#include "auto/modeleauto.h"
#include "core/btfiles.h"
#include "core/texte.h"
#include "forms/assets/dialogacquisition.h"
#include "forms/assets/dialogamortissements.h"
#include "forms/assets/dialogcession.h"
#include "forms/auto/dialogautoecheance.h"
#include "forms/auto/dialogautoecriture.h"
#include "forms/auto/dialogautolist.h"
#include "forms/auto/dialogautoprevisions.h"
#include "forms/banque/dialograpprochement.h"
#include "forms/banque/dialogreleve.h"
#include "forms/banque/dialogrelevecsv.h"
#include "forms/banque/dialogremise.h"
#include "forms/garde/dialogclotureexercice.h"
#include "forms/garde/dialogendofsession.h"
#include "forms/garde/pageprefsauvegardes.h"
#include "forms/garde/wizardrestauration.h"
#include "forms/garde/wizardsauvegarde.h"
#include "forms/graphiques/dialoggraph.h"
#include "forms/graphiques/dialogprintgraph.h"
#include "forms/journal/dialogcorbeille.h"
#include "forms/journal/dialogcritere.h"
#include "forms/journal/dialogecriture.h"
#include "forms/journal/dialogmonth.h"
#include "forms/journal/dialogmouvement.h"
#include "forms/journal/dialogvalidation.h"
#include "forms/journal/dialogvirement.h"
#include "forms/master/dialogcompteparticulier.h"
#include "forms/master/dialogfraiskm.h"
#include "forms/master/dialoglibelle.h"
#include "forms/master/dialogplan.h"
#include "forms/master/dialogplancomptable.h"
#include "forms/master/dialogrubrique.h"
#include "forms/master/dialogtauxeuro.h"
#include "forms/master/dialogtresorerie.h"
#include "forms/master/libelleview.h"
#include "forms/master/pageoptionadressebanque.h"
#include "forms/master/pageoptiontva.h"
#include "forms/master/sheetoptions.h"
#include "forms/recherche/dialogrecherche.h"
#include "forms/reports/dialogperiode.h"
#include "forms/session/dialogindex.h"
#include "forms/session/dialognewexercice.h"
#include "forms/session/dialogopenexercice.h"
#include "forms/session/dialogpassword.h"
#include "forms/session/sheetproperties.h"
#include "garde/optionssauvegarde.h"
#include "journal/cabinetmedical.h"
#include "outils/uidetest.h"
#include "store/definitions.h"
#include "store/ouverture.h"
#include "ui/dialogabort.h"
#include "ui/dialogcolonnes.h"
#include "ui/dialogmessage.h"
#include "ui/prefpropertysheet.h"

namespace fenlor::test {

namespace {

/// Classes of the sources that are a form or a page of one and have none derived from them.
std::set<std::string> FormesDesSources() {
  std::map<std::string, std::string> parents;
  const std::regex classe(R"(\bclass\s+(\w+)(?:\s+final)?\s*:\s*public\s+(\w+))");
  for (const auto& fichier : std::filesystem::recursive_directory_iterator(FENLOR_SOURCES)) {
    if (fichier.path().extension() != ".h" && fichier.path().extension() != ".cpp") continue;
    const std::string texte = LitFichier(fichier.path());
    for (std::sregex_iterator trouve(texte.begin(), texte.end(), classe), fin; trouve != fin; ++trouve)
      parents[(*trouve)[1]] = (*trouve)[2];
  }
  const auto forme = [&parents](std::string nom) {
    for (; parents.contains(nom); nom = parents.at(nom))
      if (nom == "CZNPage") return true;
    return nom.starts_with('Q') && (nom.ends_with("Dialog") || nom == "QMessageBox" || nom == "QWizard");
  };
  std::set<std::string> feuilles;
  for (const auto& [nom, parent] : parents)
    if (forme(nom)) feuilles.insert(nom);
  for (const auto& [nom, parent] : parents) feuilles.erase(parent);
  return feuilles;
}

struct Aspect {
  bool grande, sombre, cloture;
  JeuCouleurs jeu = JeuCouleurs::Classique;
};

class TousLesFormulaires : public CabinetMedical, public testing::WithParamInterface<Aspect> {
 protected:
  CadreDeTest Cadre;
  Preferences Dessin;
  ContexteUi Ui{App(), Cadre, Dessin};
  const QFont Police = QApplication::font();
  const QPalette Palette = QApplication::palette();
  std::set<std::string> Vues;

  void SetUp() override {
    Installe();
    m_recette = Enregistre(Ecriture(JournalRecettes, "7070", 119.6));
    m_depense = Enregistre(Ecriture(JournalDepenses, "6154", 119.6));
    m_od = EnregistreLesLignes({{Long("512"), "Banque", 10, 0, 0}, {Long("706"), "Honoraires", 0, 10, 0}});
    FicheAuto loyer = NouvelleAuto(App());
    loyer.genre = JournalDepenses;
    loyer.compte = Long("6154");
    loyer.tresorerie = Long("512");
    loyer.libelle = std::string(80, 'm');
    loyer.montants = {123456.78, 123456.78, 0, 123456.78, 0, 0};
    ASSERT_TRUE(m_recette && m_depense && m_od && !EnregistreFiche(App(), loyer));
    Regle("Préférences"_w, "Police par défaut"_w, "Oui");
    if (GetParam().cloture) Regle("2003", "Cloture", "15/03/2004");
    QFont police = Police;
    if (GetParam().grande) police.setPointSizeF(2 * police.pointSizeF());
    QApplication::setFont(police);
    if (GetParam().sombre) QApplication::setPalette(PaletteSombre());
    if (GetParam().jeu == JeuCouleurs::Bureau) Regle("Préférences"_w, "Couleur système"_w, "Oui");
    if (GetParam().jeu == JeuCouleurs::Contraste) Regle("Préférences"_w, "Contraste élevé"_w, "Oui");
    AppliquePreferences(Dessin, App());
  }
  void TearDown() override {
    QApplication::setFont(Police);
    QApplication::setPalette(Palette);
  }

  void Note(const QObject& vue) {
    Vues.insert(QString::fromLatin1(vue.metaObject()->className()).section(u"::"_s, -1).toStdString());
    Vues.insert("C" + vue.objectName().toStdString());
  }
  /// Shows a form and goes through its pages.
  void Regarde(QDialog& forme) {
    SCOPED_TRACE(forme.metaObject()->className() + (" " + forme.windowTitle().toStdString()));
    forme.setModal(false);
    forme.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&forme));
    m_focus = forme.focusWidget() ? forme.focusWidget()->objectName() : QString();
    Note(forme);
    for (const CZNPage* page : forme.findChildren<CZNPage*>()) Note(*page);
    auto* onglets = forme.findChild<QTabWidget*>();
    for (int i = 0; forme.isVisible() && i < (onglets ? onglets->count() : 1); ++i) {
      if (onglets) onglets->setCurrentIndex(i);
      QApplication::processEvents();
      if (!forme.isVisible()) break;  // a page that refuses a closed exercice
      SCOPED_TRACE(onglets ? onglets->tabText(i).toStdString() : "");
      VerifieFormulaire(forme);
    }
    RegardePages(qobject_cast<QWizard*>(&forme));
    SurForme(forme);
    forme.hide();
  }
  template <class Forme, class... Arguments>
  void Ouvre(Arguments&&... arguments) {
    Forme forme(Ui, std::forward<Arguments>(arguments)...);
    Regarde(forme);
  }
  template <class Forme, class... Arguments>
  void OuvreFiche(Arguments&&... arguments) {
    Forme forme(Ui, std::forward<Arguments>(arguments)...);
    RegardeFiche(forme);
  }
  /// What else a test does with each form.
  virtual void SurForme(QDialog&) {}
  /// The pages of an assistant behind its first one; what they do is done.
  void RegardePages(QWizard* assistant) {
    while (assistant && assistant->nextId() >= 0) {
      const int avant = assistant->currentId();
      assistant->next();
      ASSERT_NE(assistant->currentId(), avant) << "a page that refuses";
      SCOPED_TRACE(assistant->currentPage()->title().toStdString());
      VerifieFormulaire(*assistant);
    }
  }
  /// A form of records, which cannot be changed in a closed exercice.
  void RegardeFiche(CZNDialog& forme) {
    Regarde(forme);
    const auto* raison = forme.findChild<QLabel*>(u"raison"_s);
    ASSERT_TRUE(raison);
    EXPECT_EQ(raison->isVisibleTo(&forme), GetParam().cloture) << forme.metaObject()->className();
    EXPECT_EQ(m_focus == u"annuler"_s, GetParam().cloture) << forme.metaObject()->className();
    const QColor fond = forme.findChild<QLineEdit*>()->palette().color(QPalette::Base);
    EXPECT_EQ(fond != QApplication::palette().color(QPalette::Base), GetParam().cloture)
        << forme.metaObject()->className();
  }
  OuvertureEcriture Ouverture(i16 journal, u32 mouvement = 0) {
    OuvertureEcriture ouverture;
    ouverture.journal = journal;
    ouverture.date = FaitDate(15, 3, 2003);
    ouverture.tresorerie = Long("512");
    ouverture.mouvement = mouvement;
    return ouverture;
  }
  Position Place(std::string_view compte) {
    CPlan plan(App(), App().PathExercice);
    PoseTexte(plan.Rec->Compte, Long(compte));
    return plan.OpenFile() ? plan.BrowseKey(0) : 0;
  }
  void Fiches();
  void Ecritures();
  void Automatiques();
  void Immobilisations();
  void Session();
  void Programme();
  void Toutes(bool fiches = true);

  QString m_focus;  ///< where a form opens
  u32 m_recette = 0, m_depense = 0, m_od = 0;
};

void TousLesFormulaires::Fiches() {
  for (const std::string_view compte : {"512", "7070", "6154", "4451", ""}) {
    const Position place = compte.empty() ? 0 : Place(compte);
    OuvreFiche<CDialogPlanComptable>(nullptr, place);
    if (compte == "4451") continue;
    if (compte.starts_with('5') || place == 0) OuvreFiche<CDialogTresorerie>(nullptr, place);
    if (!compte.starts_with('5'))
      OuvreFiche<CDialogPlan>(nullptr, compte.starts_with('6') ? Depense : Recette, place);
  }
  CRubriques rubriques(App(), App().PathExercice);
  ASSERT_TRUE(rubriques.OpenFile());
  OuvreFiche<CDialogRubrique>(nullptr, 0u);
  OuvreFiche<CDialogRubrique>(nullptr, rubriques.FirstKey(0));
  CLibelleView libelles(Ui);
  libelles.Charge();
  OuvreFiche<CDialogLibelle>(libelles, -1);
}

void TousLesFormulaires::Ecritures() {
  const auto regarde = [this](i16 journal, u32 mouvement) {
    CDialogEcriture forme(Ui, Ouverture(journal, mouvement));
    RegardeFiche(forme);
    if (GetParam().cloture) return;
    Clique(Trouve<QPushButton>(forme, "multiple"));
    Regarde(forme);
  };
  regarde(JournalRecettes, 0);
  regarde(JournalRecettes, m_recette);
  regarde(JournalDepenses, m_depense);
  for (const u32 mouvement : {0u, m_od}) OuvreFiche<CDialogMouvement>(Ouverture(JournalOD, mouvement));
  LignesOD od{{{}}, 0};
  od.lignes[0].compte = Long("512");
  LignesTresor tresor{{{}}, 0};
  tresor.lignes[0].compte = Long("512");
  const Date jour = FaitDate(15, 3, 2003);
  for (const bool modification : {false, true}) {
    OuvreFiche<CDialogLine>(od, CDialogLine::Ouverture{jour, true, modification, false, {}, {}});
    OuvreFiche<CDialogLineTresor>(
        tresor, CDialogLineTresor::Ouverture{jour, Long("512"), 100, true, modification, false, {}});
  }
  Ouvre<CDialogCritere>(JournalRecettes, CritereEcriture{});
  Ouvre<CDialogMonth>(2);
  Ouvre<ZNDialogChangeMois>(3u);
  Ouvre<CDialogValidation>();
  Ouvre<CDialogVirement>();
  Ouvre<CDialogRapprochement>();
  Ouvre<CDialogFraisKm>();
  Ouvre<CDialogGraph>();
  TaillePapier taille = TaillePapier::Proportionnelle;
  Ouvre<CDialogPrintGraph>(taille);
  CriteresRemise cheques = CriteresRemiseProposes(App());
  Ouvre<CDialogRemise>(Dossier() + "/remise", cheques);
  Ouvre<CDialogCorbeille>();
  Ouvre<CDialogAutoEcheance>(
      std::vector<EcheanceAnnoncee>{{1, FaitDate(15, 3, 2003), "Loyer", "BQ", JournalDepenses, 700, true}});
  const std::string tableau =
      "Date;Libellé;Débit;Crédit\r\n"_w + "03/11/2003;" + std::string(80, 'M') + ";123456,78;\r\nx;y;;1\r\n";
  FormeCsv formeCsv = ProposeCsv(tableau);
  CDialogReleve releve(Ui, tableau, u"releve-de-novembre.csv"_s, {});
  ASSERT_FALSE(RetientForme(App(), releve.Compte(), formeCsv));
  Ouvre<CDialogReleve>(tableau, u"releve-de-novembre.csv"_s, std::string());
  Ouvre<CDialogReleveCsv>(tableau, formeCsv);
  for (const FormeCriteres forme :
       {FormeCriteres::CompteEtPeriode, FormeCriteres::PeriodeEtAffichage, FormeCriteres::GenreEtPeriode,
        FormeCriteres::Periode, FormeCriteres::Compte}) {
    CriteresEtat demande;
    Ouvre<CDialogPeriode>(forme, u"Extrait de compte"_s, unsigned{MasqueTous}, demande);
  }
}

void TousLesFormulaires::Automatiques() {
  for (const u32 modele : {0u, 1u}) OuvreFiche<CDialogAutoEcriture>(nullptr, modele);
  Ouvre<CDialogAutoList>(CDialogAutoList::Edition{});
  Ouvre<CDialogAutoPrevisions>();
}

void TousLesFormulaires::Immobilisations() {
  FicheImmobilisation bien = NouvelleImmobilisation(App());
  bien.designation = std::string(80, 'm');
  bien.prix = bien.valeur = 123456.78;
  bien.position = 1;
  for (const i16 type : {Lineaire, Degressif, Exceptionnel}) {
    bien.type = type;
    OuvreFiche<CDialogAcquisition>(bien);
  }
  Immobilisation& immo = bien.rec;
  PoseTexte(immo.Designation, std::string(20, 'm') + " et " + std::string(56, 'e'));
  immo.DateAchat = immo.DateCession = FaitDate(15, 3, 2003);
  OuvreFiche<CDialogCession>(immo);
  OuvreFiche<CDialogRebut>(immo);
  DetailAmortissements detail;
  detail.immo = immo;
  detail.lignes = {{2002, 123456.78, 100}, {2003, 0, 0}};
  Ouvre<CDialogAmortissements>(detail);
  Ouvre<CDialogAmortissementsLine>(detail, 0, [](int) {});
}

void TousLesFormulaires::Session() {
  BlocSauvegarde bloc;
  ASSERT_FALSE(RetientDossier(App(), Dossier()));
  ASSERT_FALSE(RemplitBloc(App(), bloc));
  Ouvre<CWizardSauvegarde>(bloc);
  App().UpdateInstalle = true;
  Ouvre<CDialogEndOfSession>();
  Ouvre<CWizardRestauration>(bloc);
  std::string nom = "2003";
  const std::vector<LigneTva> taxes;
  const std::vector<TauxEuro> lignes;
  Ouvre<CDialogNewExercice>(nom);
  Ouvre<CDialogOpenExercice>(false, nom);
  Ouvre<CDialogPassword>();
  Ouvre<CDialogIndex>();
  Ouvre<CDialogClotureExercice>();
  Ouvre<CSheetProperties>();
  Ouvre<CSheetOptions>();
  Ouvre<CDialogAdresseBanque>(AdresseBanque{});
  Ouvre<CDialogCompteParticulier>([] { return false; });
  Ouvre<CDialogTauxEuro>();
  Ouvre<CDialogSaisieTaux>(lignes, -1);
  Ouvre<CDialogTauxTVA>(&taxes, LigneTva{});
}

void TousLesFormulaires::Programme() {
  Ouvre<CPrefPropertySheet>(nullptr, std::vector<CZNPage*>{new CPagePrefSauvegardes(Ui)});
  Ouvre<CDialogRecherche>(std::vector<CibleRecherche>{});
  TableListe liste(Ui);
  liste.PermetColonnes();
  const std::vector<int> lignes;
  liste.Suit<int>({{"Date de mise en service"_w, 100, [](int) { return std::string(); }}}, lignes);
  Ouvre<CDialogColonnes>(liste);
  Ouvre<CDialogRaccourcis>();
  Ouvre<CDialogPersonnaliser>(ContenuParDefaut(), [](unsigned) { return nullptr; });
  Ouvre<CDialogAbout>(nullptr);
  Ouvre<CDialogInfoSystem>(nullptr);
  Ouvre<CQVTipOfDay>(QStringList{u"Une astuce."_s, u"Une autre."_s}, nullptr);
  // It deletes itself when it is closed.
  QPointer<CDialogCalculatrice> calculatrice = new CDialogCalculatrice(Ui, nullptr);
  Regarde(*calculatrice);
  delete calculatrice;
  Ouvre<CFenetreAide>(nullptr);
  CDialogAbort progression(u"Recalcul"_s, true, nullptr);
  progression.PoseTexte(u"Compte 512"_s);
  Regarde(progression);
  for (const unsigned style : {BoutonsOk, BoutonsOkAnnuler, BoutonsReessayerAbandonnerIgnorer,
                               BoutonsNonOuiAnnuler, BoutonsOuiNon, BoutonsReessayerAnnuler}) {
    CDialogMessage message(u"Question"_s, u"Faut-il enregistrer cette écriture ?"_s, style, nullptr);
    Regarde(message);
  }
}

void TousLesFormulaires::Toutes(bool fiches) {
  if (fiches) Fiches();
  Ecritures();
  Automatiques();
  Immobilisations();
  Session();
  Programme();
}

}  // namespace

TEST_P(TousLesFormulaires, SontEntiers) {
  Toutes();
  EXPECT_THAT(FormesDesSources(), testing::Each(testing::ResultOf(
                                      [this](const std::string& nom) { return Vues.contains(nom); }, true)))
      << "a form that no test shows";
}

namespace {

/// Somebody who wants to change the books at any price.
class TousForces : public TousLesFormulaires {
 protected:
  /// Every record of the exercice and of the register, its labels and settings.
  std::string Livres() {
    std::string tout;
    for (const DefinitionFichier& definition : Definitions()) {
      const fenlor::Ouverture ouverture(Magasin(), definition.numero);
      if (!ouverture) continue;
      // In no order: a rebuild puts them into another one.
      std::multiset<std::string> recs;
      Magasin().QVParcours(definition.numero, [&](Position, const void* rec) {
        recs.emplace(static_cast<const char*>(rec), definition.taille);
        return true;
      });
      for (const std::string& rec : recs) tout += rec;
    }
    for (const std::string& cle : Magasin().Reglages().Cles("2003"))
      tout += cle + "=" + Magasin().Reglages().Lit("2003", cle) + "\n";
    return tout + LitFichier(App().PathExercice + "/TEXTES.dat");
  }
  /// Types amounts and words, presses what changes something, and saves, enabled or not.
  void SurForme(QDialog& forme) override {
    // They are about the program, not the books, or leave the exercice.
    for (const char* nom : {"DialogOpenExercice", "DialogPassword", "DialogAbort", "DialogEndOfSession"})
      if (forme.objectName() == QLatin1String(nom)) return;
    // An open one they end, with all that comes behind.
    for (const char* nom : {"DialogClotureExercice", "DialogNewExercice"})
      if (!GetParam().cloture && forme.objectName() == QLatin1String(nom)) return;
    Boite.Oublie();
    Boite.Defaut = RepOui;
    QTimer personne;
    QObject::connect(&personne, &QTimer::timeout, [] {
      if (auto* dessus = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        QMetaObject::invokeMethod(dessus, "accept");
        if (dessus->isVisible()) dessus->reject();
      }
    });
    personne.start(5);
    if (forme.objectName() == u"DialogNewExercice"_s) Tape(Trouve<QWidget>(forme, "annee"), u"2003"_s);
    for (QLineEdit* champ : forme.findChildren<QLineEdit*>()) {
      const bool mot = champ->objectName() == u"libelle"_s || champ->objectName() == u"designation"_s;
      if (!mot && !qobject_cast<EditeurMontant*>(champ)) continue;
      const QString texte = mot ? u"Autre"_s : u"7"_s;
      if (champ->isEnabled() && champ->isVisible())
        Tape(*champ, texte);
      else
        champ->setText(texte);
    }
    static const QRegularExpression change(
        u"^(supprimer|restaurer|remettre|retirer|manuel|automatique|rapprocher|cocher|vider)"_s);
    for (QAbstractButton* bouton : forme.findChildren<QAbstractButton*>())
      if (bouton->isEnabled() && bouton->objectName().contains(change)) bouton->click();
    QMetaObject::invokeMethod(&forme, "accept");
    const std::string apres = Livres();
    const bool autre = apres != m_livres;
    m_changes += autre;
    EXPECT_FALSE(autre && GetParam().cloture)
        << forme.objectName().toStdString() << " changed a closed exercice";
    m_livres = apres;
  }
  std::string m_livres;
  unsigned m_changes = 0;
};

}  // namespace

TEST_P(TousForces, NAtteignentPasUnExerciceClos) {
  m_livres = Livres();
  Toutes();
  std::cout << m_changes << " forms changed the books\n";
  if (!GetParam().cloture) {
    EXPECT_GT(m_changes, 10u) << "nobody tried";
  }
}

namespace {

/// Every list of every form: empty or filled, with its filter line open, and with no row left.
class TousFiltres : public TousLesFormulaires {
 protected:
  void SurForme(QDialog& forme) override {
    for (TableListe* table : forme.findChildren<TableListe*>()) {
      if (!table->isVisible()) continue;
      for (const QString& mot : {QString(), u"xyz"_s}) {
        table->setFocus();
        QTest::keyClicks(table, u"/"_s);
        QTest::keyClicks(forme.focusWidget(), mot);
        EXPECT_EQ(table->Modele().EstFiltre(), !mot.isEmpty()) << forme.objectName().toStdString();
        VerifieFormulaire(forme);
      }
      QTest::keyClick(forme.focusWidget(), Qt::Key_Escape);
      ++m_listes;
      EXPECT_TRUE(forme.isVisible() && forme.focusWidget() == table) << forme.objectName().toStdString();
    }
  }
  unsigned m_listes = 0;
};

}  // namespace

TEST_P(TousFiltres, SAnnoncent) {
  Toutes(false);
  EXPECT_GT(m_listes, 12u);
}

INSTANTIATE_TEST_SUITE_P(Ouvert, TousFiltres, testing::Values(Aspect{}),
                         [](const auto&) { return std::string("Clair"); });

INSTANTIATE_TEST_SUITE_P(OuvertEtClos, TousForces, testing::Values(Aspect{}, Aspect{false, false, true}),
                         [](const auto& cas) { return std::string(cas.param.cloture ? "Clos" : "Ouvert"); });

INSTANTIATE_TEST_SUITE_P(
    Partout, TousLesFormulaires,
    testing::Values(Aspect{}, Aspect{true, false, false, JeuCouleurs::Bureau}, Aspect{false, true, false},
                    Aspect{true, true, false, JeuCouleurs::Contraste},
                    Aspect{false, false, true, JeuCouleurs::Contraste}, Aspect{true, false, true},
                    Aspect{false, true, true, JeuCouleurs::Bureau}, Aspect{true, true, true}),
    [](const auto& cas) {
      return std::string(cas.param.grande ? "Grande" : "Normale") + (cas.param.sombre ? "Sombre" : "Claire") +
             (cas.param.cloture ? "Close" : "Ouverte");
    });

}  // namespace fenlor::test

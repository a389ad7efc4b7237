// The command table, and what each command does.
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMdiArea>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>

#include "app/apropos.h"
#include "app/astuce.h"
#include "app/barreicones.h"
#include "app/cherche.h"
#include "app/gestioncommandes.h"
#include "app/infosysteme.h"
#include "app/mainframe.h"
#include "app/personnaliser.h"
#include "app/raccourcis.h"
#include "app/reprises.h"
#include "app/textes.h"
#include "core/erreurs.h"
#include "forms/auto/dialogautoecheance.h"
#include "forms/auto/dialogautolist.h"
#include "forms/banque/dialograpprochement.h"
#include "forms/banque/dialogreleve.h"
#include "forms/garde/dialogclotureexercice.h"
#include "forms/garde/pageprefsauvegardes.h"
#include "forms/garde/qvbwizard.h"
#include "forms/graphiques/graphwinview.h"
#include "forms/journal/dialogcorbeille.h"
#include "forms/journal/dialogvalidation.h"
#include "forms/journal/dialogvirement.h"
#include "forms/master/dialogfraiskm.h"
#include "forms/master/sheetoptions.h"
#include "forms/reports/impressions.h"
#include "forms/session/commandesexercice.h"
#include "forms/session/dialogindex.h"
#include "forms/session/sheetproperties.h"
#include "garde/attestation.h"
#include "master/textes.h"
#include "session/demo.h"
#include "session/lancement.h"
#include "session/miseajour.h"
#include "store/texte1252.h"
#include "ui/fenetres.h"
#include "ui/prefpropertysheet.h"
#include "ui/texteqt.h"
#include "ui/vue.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A command that shows one form.
template <class Formulaire>
void Forme(CMainFrame& cadre, unsigned) {
  Formulaire(cadre.Contexte(), &cadre).Execute();
}
/// A command that is a function of its subject.
template <void (*fonction)(ContexteUi&)>
void De(CMainFrame& cadre, unsigned) {
  fonction(cadre.Contexte());
}

void NouvelExercice(CMainFrame& cadre, unsigned) {
  CommandeNouvelExercice(cadre.Contexte(), [&cadre] { Forme<CSheetOptions>(cadre, CmdOptions); });
}
void OuvrirExercice(CMainFrame& cadre, unsigned) {
  if (CommandeOuvrirExercice(cadre.Contexte())) CalculeEcheances(cadre.Contexte(), false);
}
void SelectionExercice(CMainFrame& cadre, unsigned) {
  if (CommandeSelectionExercice(cadre.Contexte(), cadre.ExerciceChoisi()))
    CalculeEcheances(cadre.Contexte(), false);
}
void Automatiques(CMainFrame& cadre, unsigned) {
  CommandeAutomatiques(cadre.Contexte(), [&cadre](const QString& issue) {
    cadre.Table().Etats().Ouvre(TrouveEtat("previsions")->fabrique, DemandeDe(issue));
  });
}
void Quitter(CMainFrame& cadre, unsigned) { cadre.close(); }
void DeLaVue(CMainFrame& cadre, unsigned numero) {
  if (Vue* vue = cadre.VueActive()) vue->Execute(numero);
}
void MiseEnPage(CMainFrame& cadre, unsigned) { cadre.Table().Etats().Configure(); }
void Etat(CMainFrame& cadre, unsigned numero) {
  if (const DefinitionEtat* etat = TrouveEtat(numero))
    cadre.Table().Etats().Ouvre(etat->fabrique, DemandeEtat::SelonPreference);
}
void Graphiques(CMainFrame& cadre, unsigned) {
  OuvreGraphique(cadre.Contexte(), cadre.Table().Etats(), [&cadre](Vue* vue) { cadre.Ouvre(vue); });
}
void Virement(CMainFrame& cadre, unsigned) {
  if (!CDialogVirement::PeutOuvrir(cadre.Contexte())) return;
  CDialogVirement(cadre.Contexte(), &cadre).Execute();
}
void Rapprochement(CMainFrame& cadre, unsigned) {
  if (!CDialogRapprochement::PeutOuvrir(cadre.Contexte())) return;
  CDialogRapprochement(cadre.Contexte(), &cadre).Execute();
}
void ImporterReleve(CMainFrame& cadre, unsigned) {
  std::string compte;
  ImporteFichierReleve(cadre.Contexte(), compte, &cadre);
}
void Calculatrice(CMainFrame& cadre, unsigned) { cadre.BasculeCalculatrice(); }
void Barre(CMainFrame& cadre, unsigned numero) {
  if (QWidget* barre = cadre.BarreDe(numero)) barre->setVisible(barre->isHidden());
}
void PleinEcran(CMainFrame& cadre, unsigned) {
  cadre.setWindowState(cadre.windowState() ^ Qt::WindowFullScreen);
}
void Personnaliser(CMainFrame& cadre, unsigned) { cadre.BarreIcones().Personnalise(); }
void LesPreferences(CMainFrame& cadre, unsigned) {
  ContexteUi& contexte = cadre.Contexte();
  CPrefPropertySheet(contexte, &cadre, {new CPagePrefSauvegardes(contexte)}).Execute();
}
void Proprietes(CMainFrame& cadre, unsigned) {
  CSheetProperties feuille(cadre.Contexte(), &cadre);
  feuille.Execute();
  if (!feuille.AttestationVoulue()) return;
  const auto attestation = [](CFenlorApp& app, DemandeurCriteres& demandeur) {
    return std::make_unique<CEtatAttestationDoc>(app, demandeur);
  };
  cadre.Table().Etats().Ouvre(attestation, DemandeEtat::SelonPreference);
}
void Raccourcis(CMainFrame& cadre, unsigned) {
  if (CDialogRaccourcis(cadre.Contexte(), &cadre).Execute()) cadre.AppliqueRaccourcis();
}
void Fenetre(CMainFrame& cadre, unsigned numero) {
  if (const Commande* commande = TrouveCommande(numero)) cadre.OuvreUnique(commande->bit);
}
void Cascade(CMainFrame& cadre, unsigned) {
  cadre.MontreOnglets(false);
  cadre.Zone().cascadeSubWindows();
}
void Mosaique(CMainFrame& cadre, unsigned) {
  cadre.MontreOnglets(false);
  cadre.Zone().tileSubWindows();
}
void Onglets(CMainFrame& cadre, unsigned) { cadre.MontreOnglets(!cadre.EnOnglets()); }
void Zoom(CMainFrame& cadre, unsigned numero) {
  cadre.Zoome(numero == CmdTailleTextes ? 0 : numero == CmdAgrandirTextes ? 1 : -1);
}
void FenetreSuivante(CMainFrame& cadre, unsigned) { cadre.Zone().activateNextSubWindow(); }
void FermerFenetre(CMainFrame& cadre, unsigned) { cadre.Zone().closeActiveSubWindow(); }
void FermerFenetres(CMainFrame& cadre, unsigned) { cadre.FermeToutes(); }
void Aide(CMainFrame& cadre, unsigned) {
  const Vue* vue = cadre.VueActive();
  cadre.Aide(vue ? vue->PageAide() : u"MainFrame"_s);
}
void Astuce(CMainFrame& cadre, unsigned) { MontreAstuce(cadre.Contexte(), &cadre); }

void Defaire(CMainFrame& cadre, unsigned) { CommandeReprise(cadre, Sens::Annuler); }
void Refaire(CMainFrame& cadre, unsigned) { CommandeReprise(cadre, Sens::Retablir); }

void Demonstration(CMainFrame& cadre, unsigned) {
  CFenlorApp& app = cadre.App();
  const QString dossier =
      QDir(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)).filePath(u"fenlor/demo"_s);
  const std::string chemin = QFile::encodeName(dossier).toStdString();
  if (!QFileInfo::exists(QDir(dossier).filePath(QLatin1String(FichierReglages)))) {
    if (!QDir().mkpath(dossier)) {
      app.ReportErreur(ErrCreationFichier, {De1252(dossier)});
      return;
    }
    // A practice of its own, beside the one that is open here.
    QVAPI magasin;
    CFenlorApp demo(magasin, app.Boite);
    Refus refus;
    {
      const Progression progression(app.Boite, Texte(TitreDemo), Texte(TexteDemo), false, 3);
      if (magasin.QVOpenSession(1) && magasin.QVOpenCompta(chemin, {})) {
        demo.PathCabinet = chemin;
        refus = RemplitDemo(demo, [&](const ResumeDemo&) {
          app.Boite.Step();
          app.Boite.IsAborted();
        });
      } else {
        refus = demo.EchecMagasin();
      }
      magasin.QVCloseSession();
    }
    if (!app.Dit(refus)) return;
  }
  if (!QProcess::startDetached(QApplication::applicationFilePath(), {u"/D"_s, dossier}))
    app.ReportErreur(ErrOuvertureDe, {De1252(QApplication::applicationFilePath())});
}

void MiseAJour(CMainFrame& cadre, unsigned) {
  cadre.App().EcranFinDeSession = false;
  cadre.close();
  LanceMiseAJour(cadre.App());
}

/// In the program that the desktop has for it.
void Montre(CMainFrame& cadre, const char* adresse) {
  const QUrl url(QString::fromLatin1(adresse));
  if (!QDesktopServices::openUrl(url)) cadre.App().ReportErreur(ErrOuvertureDe, {De1252(url.toString())});
}
void PageWeb(CMainFrame& cadre, unsigned) {
  Montre(cadre, IsSpecialiteTessamaris(cadre.App()) ? "https://www.orvelia.example/tessamaris"
                                                    : "https://www.orvelia.example/quorbane");
}
void Courrier(CMainFrame& cadre, unsigned) { Montre(cadre, "mailto:fenlor@orvelia.example"); }

using M = Menu;
using Si = Quand;

constexpr Commande table[] = {
    {1000, M::Fichier, false, "&Nouvel exercice...", "Nouveau", "nouvel-exercice", "Ctrl+N", Si::Toujours,
     NouvelExercice, "Crée un exercice et l'ouvre."},
    {1001, M::Fichier, false, "&Ouvrir un exercice...", "Ouvrir", "ouvrir", "Ctrl+O", Si::ComboRempli,
     OuvrirExercice, "Ouvre un autre exercice du cabinet."},
    {1094, M::Fichier, false, "&Fermer cet exercice", "Fermer", "fermer", "", Si::ComboRempli,
     De<CommandeFermerExercice>, "Ferme l'exercice ouvert."},
    {1002, M::Fichier, true, "&Clôture de l'exercice...", "Clôture", "cloture", "", Si::ExerciceVivant,
     De<CommandeCloture>, "Rend l'exercice définitif : rien n'y changera plus."},
    {1240, M::Fichier, false, "S&uppression de l'exercice...", "Supprimer", "supprimer-exercice", "",
     Si::ExerciceVivant, De<CommandeSupprimerExercice>, "Supprime l'exercice ouvert."},
    {1003, M::Fichier, true, "&Sauvegarder...", "", "sauvegarder", "Ctrl+S", Si::Exercice,
     De<CommandeSauvegarde>, "Copie les livres dans un fichier et le relit."},
    {1004, M::Fichier, false, "&Restaurer...", "", "restaurer", "", Si::Exercice, De<CommandeRestauration>,
     "Ramène les livres d'une sauvegarde."},
    {1246, M::Fichier, true, "&Propriétés...", "", "proprietes", "Alt+Return", Si::Exercice, Proprietes,
     "Montre les dates, les fichiers et leur taille."},
    {57607, M::Fichier, true, "&Imprimer...", "Imprimer", "imprimante", "Ctrl+P", Si::Vue, DeLaVue,
     "Imprime ce que montre la fenêtre."},
    {57609, M::Fichier, false, "Aperçu a&vant impression", "Aperçu", "apercu", "", Si::Vue, DeLaVue,
     "Montre les pages avant de les imprimer."},
    {57606, M::Fichier, false, "&Configuration de l'impression...", "Mise en page", "mise-en-page", "",
     Si::Toujours, MiseEnPage, "Choisit le papier, son sens et les marges."},
    {9000, M::Fichier, true, "&Quitter", "", "quitter", "Ctrl+Q", Si::Toujours, Quitter, "Ferme Fenlor."},

    {9070, M::Edition, false, "Ann&uler", "", "defaire", "Ctrl+Z", Si::ARetirer, Defaire,
     "Reprend ce qui a été fait en dernier."},
    {9071, M::Edition, false, "Rétab&lir", "", "refaire", "Ctrl+Shift+Z", Si::ARetablir, Refaire,
     "Refait ce qui vient d'être annulé."},
    {1005, M::Edition, true, "&Ajouter...", "", "ajouter", "Ins", Si::Vue, DeLaVue,
     "Ajoute un élément à la liste."},
    {1006, M::Edition, false, "&Modifier...", "", "modifier", "F2", Si::Vue, DeLaVue,
     "Modifie l'élément choisi."},
    {1007, M::Edition, false, "&Supprimer...", "", "supprimer", "Del", Si::Vue, DeLaVue,
     "Supprime l'élément choisi."},
    {9072, M::Edition, false, "Cor&beille...", "", "corbeille", "", Si::ExerciceVivant,
     Forme<CDialogCorbeille>, "Montre les écritures supprimées depuis 90 jours et les ramène."},
    {9006, M::Edition, true, "Copi&er", "", "copier", "Ctrl+C", Si::Vue, DeLaVue,
     "Copie les lignes choisies et leurs titres dans le presse-papiers."},
    {9007, M::Edition, false, "Copier &tout", "", "copier", "Ctrl+Shift+C", Si::Vue, DeLaVue,
     "Copie toutes les lignes montrées et leurs titres dans le presse-papiers."},
    {9008, M::Edition, true, "Rec&hercher...", "Rechercher", "rechercher", "Ctrl+K", Si::Toujours,
     CommandeRecherche, "Trouve une écriture, un compte, une commande, un état, une page d'aide."},
    {9009, M::Edition, false, "&Filtrer la liste", "Filtrer", "filtrer", "Ctrl+Shift+F", Si::Vue, DeLaVue,
     "Ne montre que les lignes qui ont tous les mots tapés."},
    {1008, M::Edition, true, "&Pointer", "", "pointer", "F5", Si::Vue, DeLaVue,
     "Pointe ou dépointe les écritures choisies.", 0, true},
    {1009, M::Edition, false, "&Rapprocher...", "", "rapprocher", "F6", Si::Vue, DeLaVue,
     "Marque les écritures choisies comme vues à la banque.", 0, true},
    {1230, M::Edition, false, "&Valider...", "", "valider", "F8", Si::Vue, DeLaVue,
     "Rend définitives les écritures choisies.", 0, true},
    {1010, M::Edition, false, "&Changer la date", "", "changer-mois", "", Si::Vue, DeLaVue,
     "Transfère les écritures choisies dans un autre mois."},
    {1011, M::Edition, false, "Re&numéroter...", "", "renumeroter", "", Si::Vue, DeLaVue,
     "Renumérote les écritures affichées."},
    {9030, M::Edition, true, "&Cession...", "", "cession", "F7", Si::Vue, DeLaVue,
     "Note la vente de l'immobilisation choisie."},
    {9031, M::Edition, false, "&Rebut...", "", "rebut", "Shift+F7", Si::Vue, DeLaVue,
     "Note la mise au rebut de l'immobilisation choisie."},
    {9032, M::Edition, false, "&Détails des amortissements...", "", "detail-amortissements", "F3", Si::Vue,
     DeLaVue, "Montre et corrige l'amortissement de chaque année."},

    {1012, M::Comptabilite, false, "Ecritures de &RECETTES", "Recettes", "recettes", "Ctrl+R", Si::Exercice,
     Fenetre, "Journal des recettes, un mois à la fois.", FenRecettes, true},
    {1013, M::Comptabilite, false, "Ecritures de &DEPENSES", "Dépenses", "depenses", "Ctrl+D", Si::Exercice,
     Fenetre, "Journal des dépenses, un mois à la fois.", FenDepenses, true},
    {1014, M::Comptabilite, false, "Ecritures d'&OPERATIONS DIVERSES", "Op. diverses", "operations-diverses",
     "Ctrl+Shift+O", Si::Exercice, Fenetre, "Ecritures libres, sur tous les comptes.", FenOperationsDiverses,
     true},
    {1015, M::Comptabilite, true, "Registre des &IMMOBILISATIONS", "Immobilis.", "immobilisations", "Ctrl+I",
     Si::Exercice, Fenetre, "Equipement du cabinet, amorti année par année.", FenImmobilisations, true},
    {1016, M::Comptabilite, true, "Comptes de &TRESORERIE", "Trésorerie", "tresorerie", "Ctrl+T",
     Si::Exercice, Fenetre, "Banques et caisses, avec leurs soldes.", FenTresorerie, true},
    {1017, M::Comptabilite, false, "Com&ptes de RECETTES", "Cptes recettes", "comptes-recettes",
     "Ctrl+Shift+R", Si::Exercice, Fenetre, "Comptes de recettes, T.V.A. et rubrique.", FenComptesRecettes,
     true},
    {1018, M::Comptabilite, false, "Compt&es de DEPENSES", "Cptes dépenses", "comptes-depenses",
     "Ctrl+Shift+D", Si::Exercice, Fenetre, "Comptes de dépenses, T.V.A. et part professionnelle.",
     FenComptesDepenses, true},
    {1019, M::Comptabilite, false, "Pl&an Comptable", "Plan", "plan-comptable", "Ctrl+Shift+P", Si::Exercice,
     Fenetre, "Tous les comptes, dans l'ordre de leur numéro.", FenPlanComptable, true},
    {1020, M::Comptabilite, true, "R&UBRIQUES de l'état fiscal", "Rubriques", "rubriques", "Ctrl+Shift+U",
     Si::Exercice, Fenetre, "Rubriques de la déclaration 2035 et leurs formules.", FenRubriques, true},
    {1021, M::Comptabilite, false, "&LIBELLES des écritures", "Libellés", "libelles", "Ctrl+L", Si::Exercice,
     Fenetre, "Libellés proposés à la saisie.", FenLibelles, true},

    {1026, M::Etats, false, "&Détail des écritures...", "Détail", "etat-detail", "", Si::Exercice, Etat,
     "Ecritures d'une période, recettes et dépenses à part."},
    {1027, M::Etats, false, "&Extrait de compte...", "Extrait", "etat-extrait", "", Si::Exercice, Etat,
     "Lignes d'un compte, avec son solde."},
    {1028, M::Etats, false, "&Grand livre...", "Grand livre", "etat-grand-livre", "", Si::Exercice, Etat,
     "Lignes de tous les comptes, un compte après l'autre."},
    {1029, M::Etats, false, "&Balance des comptes...", "Balance", "etat-balance", "", Si::Exercice, Etat,
     "Débits, crédits et soldes de tous les comptes."},
    {1030, M::Etats, false, "Etat de &T.V.A....", "T.V.A.", "etat-tva", "", Si::Exercice, Etat,
     "T.V.A. perçue et payée sur une période."},
    {1031, M::Etats, false, "Etat de r&approchement....", "Etat rappr.", "etat-rapprochement", "",
     Si::Exercice, Etat, "Lignes rapprochées d'une période."},
    {1032, M::Etats, false, "Etat de &centralisation....", "Centralis.", "etat-centralisation", "",
     Si::Exercice, Etat, "Totaux d'un compte mois par mois."},
    {1033, M::Etats, true, "Déclaration fiscale (&2035)...", "2035", "etat-2035", "", Si::Exercice, Etat,
     "Déclaration des revenus professionnels, ligne par ligne."},
    {1034, M::Etats, true, "&Remise de chèques...", "Remise", "etat-remise", "", Si::Exercice, Etat,
     "Choisit les chèques à remettre en banque et imprime leur bordereau."},
    {1035, M::Etats, false, "A&mortissements...", "Amortiss.", "etat-amortissements", "", Si::Exercice, Etat,
     "Annexe des immobilisations : amortissements de l'année et d'avant."},
    {1036, M::Etats, false, "Plus et moins &values...", "+/- values", "etat-plus-values", "", Si::Exercice,
     Etat, "Annexe des ventes et des mises au rebut."},
    {1037, M::Etats, true, "Gra&phiques...", "", "graphiques", "", Si::Exercice, Graphiques,
     "Dessine les mouvements de comptes, mois par mois ou compte par compte."},

    {1038, M::Traitements, false, "&Ecritures automatiques...", "Automatiques", "ecritures-automatiques", "",
     Si::Exercice, Automatiques, "Modèles des recettes et des dépenses qui reviennent."},
    {1095, M::Traitements, false, "Calcul des échéances", "Echéances", "echeances", "", Si::Exercice,
     De<CommandeEcheances>,
     "Passe les écritures automatiques échues, et demande celles qui sont à confirmer."},
    {1039, M::Traitements, true, "&Frais kilométriques...", "Frais km", "frais-kilometriques", "",
     Si::Exercice, Forme<CDialogFraisKm>, "Calcule l'indemnité kilométrique de l'année."},
    {1040, M::Traitements, false, "&Virement interne...", "Virement", "virement", "Ctrl+Shift+V",
     Si::Exercice, Virement, "Passe de l'argent d'un compte de trésorerie à un autre."},
    {1041, M::Traitements, false, "&Rapprochement bancaire...", "Rapprocher", "rapprochement", "Ctrl+B",
     Si::Exercice, Rapprochement, "Rapproche le relevé de la banque et les livres."},
    {9040, M::Traitements, false, "Importer un rele&vé...", "Relevé", "releve", "Ctrl+Alt+R", Si::Exercice,
     ImporterReleve, "Ajoute aux opérations à rapprocher celles d'un fichier de la banque."},
    {1224, M::Traitements, true, "&Validation du brouillard...", "Validation", "validation", "", Si::Exercice,
     Forme<CDialogValidation>, "Rend définitives les écritures d'une période."},

    {1251, M::Outils, false, "Mises à jour &automatiques...", "Mise à jour", "mise-a-jour", "", Si::Exercice,
     MiseAJour, "Ferme Fenlor et lance le programme de mise à jour."},
    {1042, M::Outils, false, "Reconstruction des &clés d'accès...", "Clés", "reconstruction", "",
     Si::Exercice, Forme<CDialogIndex>, "Refait les index des fichiers."},
    {1043, M::Outils, false, "Rec&alcul des cumuls...", "Recalcul", "recalcul", "", Si::Exercice,
     De<CommandeRecalcul>, "Refait les cumuls de tous les comptes."},
    {1250, M::Outils, false, "Ajustement des Montants Euro", "Euro", "ajustement-euro", "", Si::Exercice,
     De<CommandeAjustementEuro>, "Accorde les montants des deux monnaies au taux de leur date."},
    {1044, M::Outils, true, "Calc&ulatrice", "", "calculatrice", "F9", Si::Toujours, Calculatrice,
     "Montre ou cache la calculatrice.", 0, true},
    {1045, M::Outils, true, "&Préférences...", "", "preferences", "", Si::Toujours, LesPreferences,
     "Couleurs, polices et habitudes de saisie."},
    {1213, M::Outils, false, "Options...", "", "options", "F12", Si::Exercice, Forme<CSheetOptions>,
     "Cabinet, banques, comptes particuliers, T.V.A., mot de passe."},

    {1022, M::Affichage, false, "Ecritures du &mois de...", "", "mois", "Ctrl+M", Si::Vue, DeLaVue,
     "Montre un autre mois du journal."},
    {1023, M::Affichage, false, "&Critères d'affichage...", "", "criteres", "Ctrl+F", Si::Vue, DeLaVue,
     "Choisit les écritures que le journal montre."},
    {1220, M::Affichage, true, "Ecritures en &brouillard", "", "brouillard", "", Si::Vue, DeLaVue,
     "Montre les écritures qui ne sont pas validées.", 0, true},
    {1221, M::Affichage, false, "Ecritures &validées", "", "journal-valide", "", Si::Vue, DeLaVue,
     "Montre les écritures validées.", 0, true},
    {1222, M::Affichage, false, "&Toutes les écritures", "", "toutes", "", Si::Vue, DeLaVue,
     "Montre les écritures validées et les autres.", 0, true},
    {1248, M::Affichage, false, "&Journal comptable", "", "journal-comptable", "Ctrl+J", Si::Vue, DeLaVue,
     "Montre chaque ligne des écritures, ou une ligne par écriture.", 0, true},
    {9091, M::Affichage, false, "Co&lonnes...", "", "colonnes", "", Si::Vue, DeLaVue,
     "Montre, cache ou déplace les colonnes de la liste."},
    {9092, M::Affichage, true, "A&grandir les textes", "Agrandir", "zoom-plus", "Ctrl++", Si::Toujours, Zoom,
     "Agrandit les textes des listes et des formulaires."},
    {9093, M::Affichage, false, "Ré&duire les textes", "Réduire", "zoom-moins", "Ctrl+-", Si::Toujours, Zoom,
     "Réduit les textes des listes et des formulaires."},
    {9094, M::Affichage, false, "Taille &normale des textes", "Normale", "zoom-ajuste", "Ctrl+0",
     Si::Toujours, Zoom, "Rend aux textes leur taille."},
    {1024, M::Affichage, true, "Barre d'&outils", "", "barre-outils", "", Si::Toujours, Barre,
     "Montre ou cache la barre d'outils.", 0, true},
    {1025, M::Affichage, false, "Barre d'&icônes", "", "barre-icones", "", Si::Toujours, Barre,
     "Montre ou cache la barre d'icônes.", 0, true},
    {9005, M::Affichage, false, "Barre d'&état", "", "barre-etat", "", Si::Toujours, Barre,
     "Montre ou cache la barre d'état.", 0, true},
    {9004, M::Affichage, true, "&Plein écran", "Plein écran", "plein-ecran", "F11", Si::Toujours, PleinEcran,
     "Donne tout l'écran à Fenlor.", 0, true},
    {9003, M::Affichage, true, "Per&sonnaliser la barre d'icônes...", "Personnaliser", "personnaliser", "",
     Si::Toujours, Personnaliser, "Choisit les commandes de la barre d'icônes."},
    {1212, M::Affichage, false, "&Raccourcis clavier...", "Raccourcis", "raccourcis", "", Si::Toujours,
     Raccourcis, "Change les touches des commandes."},

    {1074, M::Graphique, false, "&Aires", "", "graph-aires", "", Si::Vue, DeLaVue,
     "Remplit la surface sous les valeurs."},
    {1075, M::Graphique, false, "Aires &3D", "", "graph-aires-3d", "", Si::Vue, DeLaVue,
     "Remplit la surface sous les valeurs, en relief."},
    {1070, M::Graphique, false, "&Barres horizontales", "", "graph-barres-h", "", Si::Vue, DeLaVue,
     "Une barre par point, couchée."},
    {1071, M::Graphique, false, "Barres h&orizontales 3D", "", "graph-barres-h-3d", "", Si::Vue, DeLaVue,
     "Une barre par point, couchée, en relief."},
    {1072, M::Graphique, false, "Barres &verticales", "", "graph-barres-v", "", Si::Vue, DeLaVue,
     "Une barre par point, debout."},
    {1073, M::Graphique, false, "Barres ver&ticales 3D", "", "graph-barres-v-3d", "", Si::Vue, DeLaVue,
     "Une barre par point, debout, en relief."},
    {1076, M::Graphique, false, "&Courbes", "", "graph-courbes", "", Si::Vue, DeLaVue, "Relie les valeurs."},
    {1077, M::Graphique, false, "Co&urbes 3D", "", "graph-courbes-3d", "", Si::Vue, DeLaVue,
     "Relie les valeurs par un ruban."},
    {1078, M::Graphique, false, "&Nuages de points (XY)", "", "graph-nuage", "", Si::Vue, DeLaVue,
     "Une marque par point."},
    {1079, M::Graphique, false, "Sur&face 3D", "", "graph-surface", "", Si::Vue, DeLaVue,
     "Une nappe dont les tons disent la hauteur."},
    {1080, M::Graphique, false, "&Secteurs", "", "graph-secteurs", "", Si::Vue, DeLaVue,
     "Parts d'un disque."},
    {1081, M::Graphique, false, "Secteurs 3&D", "", "graph-secteurs-3d", "", Si::Vue, DeLaVue,
     "Parts d'un disque, en relief."},
    {9050, M::Graphique, true, "Copier l'&image", "", "copier-image", "", Si::Vue, DeLaVue,
     "Met le graphique dans le presse-papiers, comme image."},
    {9051, M::Graphique, false, "Copier les va&leurs", "", "copier-valeurs", "", Si::Vue, DeLaVue,
     "Met le libellé et la valeur de chaque point dans le presse-papiers."},
    {9052, M::Graphique, false, "&Exporter l'image...", "", "exporter-image", "", Si::Vue, DeLaVue,
     "Ecrit le graphique dans un fichier PNG, SVG ou PDF."},

    {9010, M::Fenetre, false, "&Cascade", "", "cascade", "", Si::FenetreActive, Cascade,
     "Décale les fenêtres."},
    {9011, M::Fenetre, false, "&Mosaïque", "", "mosaique", "", Si::FenetreActive, Mosaique,
     "Range les fenêtres côte à côte."},
    {9090, M::Fenetre, false, "&Onglets", "", "onglets", "", Si::Toujours, Onglets,
     "Montre les fenêtres comme des onglets.", 0, true},
    {9014, M::Fenetre, true, "Fenêtre &suivante", "Suivante", "fenetre-suivante", "Ctrl+F6",
     Si::FenetreActive, FenetreSuivante, "Passe à la fenêtre suivante."},
    {9012, M::Fenetre, true, "&Fermer la fenêtre", "Fermer", "fermer-fenetre", "Ctrl+F4", Si::FenetreActive,
     FermerFenetre, "Ferme la fenêtre active."},
    {9013, M::Fenetre, false, "Fermer &toutes les fenêtres", "Tout fermer", "fermer-fenetres", "",
     Si::FenetreActive, FermerFenetres, "Ferme toutes les fenêtres."},

    {9002, M::Aide, false, "A&ide de Fenlor", "Aide", "aide", "F1", Si::Toujours, Aide,
     "Ouvre l'aide sur ce que vous voyez."},
    {1060, M::Aide, false, "Astuce du jour...", "Astuce", "astuce", "", Si::Toujours, Astuce,
     "Montre une astuce."},
    {9001, M::Aide, false, "Cabinet de &démonstration", "Démo", "demonstration", "", Si::Toujours,
     Demonstration, "Ouvre un cabinet d'exemple, à côté du vôtre."},
    {1058, M::Aide, true, "Quorbane sur le Web...", "Web", "web", "", Si::NavigateurWeb, PageWeb,
     "Ouvre la page du produit dans le navigateur."},
    {1059, M::Aide, false, "Ecrivez-nous...", "Courrier", "courrier", "", Si::NavigateurWeb, Courrier,
     "Ouvre un courrier à notre adresse."},
    {1062, M::Aide, true, "Informations système...", "Système", "informations", "", Si::Toujours,
     Forme<CDialogInfoSystem>, "Montre la machine, le disque et les versions."},
    {57664, M::Aide, false, "&A propos de la Fenlor...", "A propos", "fenlor", "", Si::Toujours,
     Forme<CDialogAbout>, "Version, licence et auteurs."},

    {7002, M::Aucun, false, "Exercice", "", "exercice-ouvert", "", Si::ComboRempli, SelectionExercice,
     "Choisit l'exercice sur lequel vous travaillez."},
    {9015, M::Aucun, false, "Restaurer une sauvegarde...", "", "restaurer", "", Si::SansExercice,
     De<CommandeRestaureCabinet>, "Ramène les livres d'une autre machine, ou d'avant une panne."},
};

constexpr const char* titres[] = {"&Fichier", "&Edition",   "&Comptabilité", "E&tats",   "T&raitements",
                                  "&Outils",  "&Affichage", "&Graphique",    "Fe&nêtre", "&?",
                                  ""};

}  // namespace

const char* TitreMenu(Menu menu) { return titres[static_cast<int>(menu)]; }

std::span<const Commande> TableCommandes() { return table; }

const Commande* TrouveCommande(unsigned numero) {
  const auto trouve =
      std::find_if(std::begin(table), std::end(table), [&](const Commande& c) { return c.numero == numero; });
  return trouve == std::end(table) ? nullptr : trouve;
}

}  // namespace fenlor

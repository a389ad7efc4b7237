// What each command does.
#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProcess>
#include <QStandardPaths>
#include <QStatusBar>
#include <QToolBar>
#include <QUrl>

#include "app/apropos.h"
#include "app/astuce.h"
#include "app/barreicones.h"
#include "app/gestioncommandes.h"
#include "app/infosysteme.h"
#include "app/mainframe.h"
#include "app/personnaliser.h"
#include "app/raccourcis.h"
#include "app/textes.h"
#include "core/erreurs.h"
#include "journal/forms/dialogvalidation.h"
#include "journal/forms/dialogvirement.h"
#include "master/forms/dialogfraiskm.h"
#include "master/forms/sheetoptions.h"
#include "master/textes.h"
#include "reports/forms/impressions.h"
#include "session/demo.h"
#include "session/forms/comboexercices.h"
#include "session/forms/commandesexercice.h"
#include "session/lancement.h"
#include "store/texte1252.h"
#include "ui/prefpropertysheet.h"
#include "ui/texteqt.h"
#include "ui/vue.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto pageProduit = "https://www.orvelia.example/quorbane";
constexpr auto pageTessamaris = "https://www.orvelia.example/tessamaris";
constexpr auto adresseCourrier = "mailto:fenlor@orvelia.example";

}  // namespace

void Commandes::NouvelExercice(unsigned) {
  CommandeNouvelExercice(m_cadre.Contexte(), [this] { Options(CmdOptions); });
}
void Commandes::OuvrirExercice(unsigned) { CommandeOuvrirExercice(m_cadre.Contexte()); }
void Commandes::FermerExercice(unsigned) { CommandeFermerExercice(m_cadre.Contexte()); }
void Commandes::SupprimerExercice(unsigned) { CommandeSupprimerExercice(m_cadre.Contexte()); }
void Commandes::Proprietes(unsigned) { CommandeProprietes(m_cadre.Contexte()); }
void Commandes::SelectionExercice(unsigned) {
  CommandeSelectionExercice(m_cadre.Contexte(), m_cadre.ExerciceChoisi());
}
void Commandes::Reconstruction(unsigned) { CommandeReconstruction(m_cadre.Contexte()); }
void Commandes::Recalcul(unsigned) { CommandeRecalcul(m_cadre.Contexte()); }
void Commandes::AjustementEuro(unsigned) { CommandeAjustementEuro(m_cadre.Contexte()); }

void Commandes::Quitter(unsigned) { m_cadre.close(); }

void Commandes::DeLaVue(unsigned numero) {
  if (Vue* vue = m_cadre.VueActive()) vue->Execute(numero);
}

void Commandes::MiseEnPage(unsigned) { m_etats->Configure(); }

void Commandes::Etat(unsigned numero) {
  if (const DefinitionEtat* etat = TrouveEtat(numero))
    m_etats->Ouvre(etat->fabrique, DemandeEtat::SelonPreference);
}

void Commandes::FraisKm(unsigned) { CDialogFraisKm(m_cadre.Contexte(), &m_cadre).Execute(); }

void Commandes::Virement(unsigned) {
  if (!CDialogVirement::PeutOuvrir(m_cadre.Contexte())) return;
  CDialogVirement(m_cadre.Contexte(), &m_cadre).Execute();
}

void Commandes::Validation(unsigned) { CDialogValidation(m_cadre.Contexte(), &m_cadre).Execute(); }

void Commandes::Calculatrice(unsigned) { m_cadre.BasculeCalculatrice(); }

void Commandes::PreferencesUi(unsigned) { CPrefPropertySheet(m_cadre.Contexte(), &m_cadre).Execute(); }
void Commandes::Options(unsigned) { CSheetOptions(m_cadre.Contexte(), &m_cadre).Execute(); }

QWidget* Commandes::BarreDe(unsigned numero) const {
  switch (numero) {
    case CmdBarreOutils:
      return &m_cadre.BarreOutils();
    case CmdBarreIcones:
      return &m_cadre.BarreIcones();
    case CmdBarreEtat:
      return m_cadre.statusBar();
    default:
      return nullptr;
  }
}

bool Commandes::EstCoche(const Commande& commande) const {
  if (const QWidget* barre = BarreDe(commande.numero)) return !barre->isHidden();
  if (commande.numero == CmdCalculatrice) return m_cadre.CalculatriceOuverte();
  if (commande.numero == CmdPleinEcran) return m_cadre.isFullScreen();
  if (commande.quand == Quand::Vue) {
    const Vue* vue = m_cadre.VueActive();
    return vue && vue->Coche(commande.numero);
  }
  return commande.bit != 0 && m_cadre.EstOuvert(commande.bit);
}

void Commandes::Barre(unsigned numero) {
  if (QWidget* barre = BarreDe(numero)) barre->setVisible(barre->isHidden());
}

void Commandes::PleinEcran(unsigned) { m_cadre.setWindowState(m_cadre.windowState() ^ Qt::WindowFullScreen); }

void Commandes::Personnaliser(unsigned) { m_cadre.BarreIcones().Personnalise(); }

void Commandes::Raccourcis(unsigned) {
  if (CDialogRaccourcis(m_cadre.Contexte(), &m_cadre).Execute()) m_cadre.AppliqueRaccourcis();
}

void Commandes::Fenetre(unsigned numero) {
  if (const Commande* commande = TrouveCommande(numero)) m_cadre.OuvreUnique(commande->bit);
}

void Commandes::Cascade(unsigned) { m_cadre.Zone().cascadeSubWindows(); }
void Commandes::Mosaique(unsigned) { m_cadre.Zone().tileSubWindows(); }
void Commandes::FenetreSuivante(unsigned) { m_cadre.Zone().activateNextSubWindow(); }
void Commandes::FermerFenetre(unsigned) { m_cadre.Zone().closeActiveSubWindow(); }
void Commandes::FermerFenetres(unsigned) { m_cadre.FermeToutes(); }

void Commandes::Aide(unsigned) {
  const Vue* vue = m_cadre.VueActive();
  m_cadre.Aide(vue ? vue->PageAide() : u"MainFrame"_s);
}

void Commandes::Astuce(unsigned) { MontreAstuce(m_cadre.Contexte(), &m_cadre); }

void Commandes::Demonstration(unsigned) {
  CFenlorApp& app = m_cadre.App();
  const QString dossier =
      QDir(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)).filePath(u"fenlor/demo"_s);
  const std::string chemin = QFile::encodeName(dossier).toStdString();
  if (!QFileInfo::exists(QDir(dossier).filePath(u"fenlor.ini"_s))) {
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

void Commandes::PageWeb(unsigned) {
  const QUrl page(QString::fromLatin1(IsSpecialiteTessamaris(m_cadre.App()) ? pageTessamaris : pageProduit));
  if (!QDesktopServices::openUrl(page)) m_cadre.App().ReportErreur(ErrOuvertureDe, {De1252(page.toString())});
}

void Commandes::Courrier(unsigned) {
  const QUrl adresse(QString::fromLatin1(adresseCourrier));
  if (!QDesktopServices::openUrl(adresse))
    m_cadre.App().ReportErreur(ErrOuvertureDe, {De1252(adresse.toString())});
}

void Commandes::Informations(unsigned) { CDialogInfoSystem(m_cadre.Contexte(), &m_cadre).exec(); }
void Commandes::APropos(unsigned) { CDialogAbout(m_cadre.Contexte(), &m_cadre).exec(); }

}  // namespace fenlor

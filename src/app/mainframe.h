// The main window: menus, bars, document windows, start page, status bar.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <map>

#include "app/reprises.h"
#include "ui/fenetres.h"
#include "ui/findesliens.h"

class QMdiArea;
class QStackedWidget;
class QToolBar;

namespace fenlor {

class CBarreEtat;
class CBarreIcones;
class CComboExercices;
class CDialogCalculatrice;
class CFenetreAide;
class CMDIChildFrame;
class Commandes;
class DialogueQt;
class GardeModale;
class PageAccueil;
struct Destination;
class Vue;

class CMainFrame : public QMainWindow, public Fenetres {
  Q_OBJECT
 public:
  /// Session and dialogue outlive the frame. Reads the preferences of the practice; shows nothing.
  CMainFrame(CFenlorApp& app, DialogueQt& dialogue);
  ~CMainFrame() override;

  CFenlorApp& App() { return m_app; }
  ContexteUi& Contexte() { return m_contexte; }
  Commandes& Table() { return *m_commandes; }
  CComboExercices& Combo() { return *m_combo; }
  /// What the user last chose in the combo.
  const std::string& ExerciceChoisi() const { return m_exerciceChoisi; }

  /// How the window of a bit is made; a bit without one cannot be opened.
  void PoseFabrique(u32 bit, std::function<Vue*(ContexteUi&)> fabrique);
  bool PeutOuvrir(u32 bit) const { return m_fabriques.contains(bit); }
  /// The one-of-a-kind rule: brings the open window of that bit forward, or opens one.
  void OuvreUnique(u32 bit);
  /// A window of which several may be open (a report).
  void Ouvre(Vue* vue);
  bool EstOuvert(u32 bit) const { return m_ouvertes.contains(bit); }
  /// A form or work in progress stands before the window: it takes no command and does not close.
  bool Derriere() const;
  /// The open window of a bit; null when there is none.
  Vue* VueDe(u32 bit) const;
  /// The active document window; null when there is none.
  Vue* VueActive() const;
  QMdiArea& Zone() { return *m_zone; }

  /// Asked before the window closes; false keeps it open.
  void SurFermeture(std::function<bool()> demande) { m_fermeture = std::move(demande); }
  /// Places window and bars as they were left, and shows the window.
  void MontreAuDemarrage();
  /// Applies the table of shortcuts of the settings.
  void AppliqueRaccourcis();
  void BasculeCalculatrice();
  bool CalculatriceOuverte() const;
  void FermeCalculatrice();
  /// That a command shows and hides; null for other commands.
  QWidget* BarreDe(unsigned numero) const;
  CBarreIcones& BarreIcones() { return *m_icones; }
  /// Comes to the front, out of the task bar, with the form that is open in it.
  void VientDevant();

  // Fenetres
  void FermeToutes() override;
  void Sauve() override;
  void Restaure() override;
  void MontreExercice() override;
  void Aide(const QString& page) override;
  void MontrePageAide(const QString& fichier);  ///< of the contents list
  bool Touche(const QKeySequence& touche) override;
  QWidget* Cadre() override { return this; }
  void Offre(const Proposition& proposition) override;
  void Zoome(int sens) override;
  /// The document windows as tabs, or each in its place; the settings keep it.
  void MontreOnglets(bool onglets);
  bool EnOnglets() const;

 protected:
  void closeEvent(QCloseEvent* evenement) override;
  void changeEvent(QEvent* evenement) override;
  QMenu* createPopupMenu() override { return nullptr; }
  bool Occupe() const override;
  void Actualisees(bool dessin) override;

 private:
  void FaitBarreOutils();
  void Installe(CMDIChildFrame* cadre);
  void MenuDeLaVue(const QPoint& point, const std::vector<unsigned>& numeros);
  void ActualisePage();
  void ProposeReprise();
  void VaVers(const Destination& destination);

  CFenlorApp& m_app;
  DialogueQt& m_dialogue;
  Preferences m_preferences;
  ContexteUi m_contexte;
  std::map<u32, std::function<Vue*(ContexteUi&)>> m_fabriques;
  std::map<u32, CMDIChildFrame*> m_ouvertes;  ///< of a bit, while it lives
  QStackedWidget* m_centre = nullptr;
  QMdiArea* m_zone = nullptr;
  Commandes* m_commandes = nullptr;
  PageAccueil* m_accueil = nullptr;
  BarreOffre* m_offre = nullptr;
  OffreReprise m_reprises;
  QToolBar* m_outils = nullptr;
  CBarreIcones* m_icones = nullptr;
  CBarreEtat* m_etat = nullptr;
  CComboExercices* m_combo = nullptr;
  std::string m_exerciceOffert;  ///< whose half-typed entry was looked for
  std::string m_exerciceChoisi;
  std::function<bool()> m_fermeture;
  QPointer<CDialogCalculatrice> m_calculatrice;
  QPointer<CFenetreAide> m_aide;
  GardeModale* m_garde;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

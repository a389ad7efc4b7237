#include "ui/dialogueqt.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEvent>
#include <QScopedValueRollback>
#include <QThread>
#include <algorithm>

#include "core/textes.h"
#include "ui/dialogmessage.h"
#include "ui/texteqt.h"
#include "ui/textes.h"

namespace fenlor {

namespace {

constexpr qint64 periodeMessages = 50;  ///< ms
constexpr qint64 dureeMaximale = 200;   ///< ms of messages in one go

/// Takes the quit request out of the messages that pass.
class FiltreFin : public QObject {
 public:
  FiltreFin() { qApp->installEventFilter(this); }
  bool Vue() const { return m_vue; }
  bool eventFilter(QObject* objet, QEvent* evenement) override {
    if (evenement->type() != QEvent::Quit || objet != qApp) return false;
    m_vue = true;
    return true;
  }

 private:
  bool m_vue = false;
};

/// The plain arrow while a box stands over work in progress.
class FlecheNormale {
 public:
  explicit FlecheNormale(bool active) : m_active(active) {
    if (m_active) QApplication::setOverrideCursor(Qt::ArrowCursor);
  }
  ~FlecheNormale() {
    if (m_active) QApplication::restoreOverrideCursor();
  }
  FlecheNormale(const FlecheNormale&) = delete;
  FlecheNormale& operator=(const FlecheNormale&) = delete;

 private:
  bool m_active;
};

}  // namespace

DialogueQt::DialogueQt() = default;

DialogueQt::~DialogueQt() {
  if (m_profondeur > 0) m_profondeur = 1;
  FermeProgress();
}

void DialogueQt::PoseCadre(QWidget* cadre) { m_cadre = cadre; }

void DialogueQt::Erreur(unsigned numero, const std::string& texte) {
  const QScopedValueRollback boites(m_boites, m_boites + 1);
  const std::string titre = Texte(TitreApplication);
  Montre(
      numero ? TexteQ(FormatTitreErreur, {titre, std::to_string(numero)}) : TexteQ(FormatTitreTexte, {titre}),
      texte, BoutonsOk | IconeStop);
}

void DialogueQt::PoseManque(std::set<unsigned> questions, std::function<bool(unsigned)> comble) {
  m_manques = std::move(questions);
  m_comble = std::move(comble);
}

void DialogueQt::PoseSansDemander(std::function<bool(unsigned)> sansDemander) {
  m_sansDemander = std::move(sansDemander);
}

int DialogueQt::Message(unsigned style, unsigned numero, const std::string& texte) {
  if (m_sansDemander && m_sansDemander(numero)) return RepOui;
  const QScopedValueRollback boites(m_boites, m_boites + 1);
  int reponse = 0;
  do {
    reponse = Montre(TexteQ(TitreApplication), texte, style);
  } while (reponse == RepOk && m_manques.contains(numero) && !m_comble(numero));
  return reponse;
}

int DialogueQt::Montre(const QString& titre, const std::string& texte, unsigned style) {
  const FlecheNormale fleche(m_profondeur > 0);
  CDialogMessage boite(titre, Q(texte), style, Proprietaire());
  boite.exec();
  m_tournee.invalidate();
  return boite.Reponse();
}

QWidget* DialogueQt::Proprietaire() const {
  QWidget* modale = QApplication::activeModalWidget();
  if (m_fenetre && (!modale || modale == m_proprietaire)) return m_fenetre;
  return modale ? modale : m_cadre.data();
}

void DialogueQt::OuvreProgress(const std::string& titre, const std::string& texte, bool annulable,
                               u32 maximum) {
  if (m_profondeur++ > 0) return;
  m_maximum = maximum;
  m_position = 0;
  m_pourcent = 0;
  m_tournee.invalidate();
  m_peinture.invalidate();
  QApplication::setOverrideCursor(annulable ? Qt::BusyCursor : Qt::WaitCursor);
  if (titre.empty()) return;

  QWidget* proprietaire = Proprietaire();
  m_proprietaire = nullptr;
  m_focus = nullptr;
  if (proprietaire && proprietaire->isEnabled()) {
    m_proprietaire = proprietaire;
    m_focus = proprietaire->focusWidget();
    proprietaire->setEnabled(false);
  }
  m_fenetre = new CDialogAbort(Q(titre), annulable, proprietaire);
  m_fenetre->setEnabled(true);
  m_fenetre->PoseTexte(Q(texte));
  m_fenetre->MontreBarre(maximum != 0);
  m_fenetre->show();
  m_fenetre->activateWindow();
  Peint();
}

void DialogueQt::FermeProgress() {
  if (m_profondeur == 0 || --m_profondeur > 0) return;
  QApplication::restoreOverrideCursor();
  if (!m_fenetre) return;
  if (m_proprietaire) {
    m_proprietaire->setEnabled(true);
    if (m_proprietaire->isVisible()) m_proprietaire->activateWindow();
    if (m_focus) m_focus->setFocus();
  }
  delete m_fenetre;
}

void DialogueQt::SetTexte(const std::string& texte) {
  if (!m_fenetre) return;
  m_fenetre->PoseTexte(Q(texte));
  Peint();
}

void DialogueQt::SetMax(u32 maximum) {
  m_maximum = maximum;
  if (m_fenetre) m_fenetre->MontreBarre(maximum != 0);
}

void DialogueQt::SetPos(u32 position) {
  m_position = std::min(position, m_maximum);
  const unsigned pourcent = PourcentProgress(m_position, m_maximum);
  if (pourcent == m_pourcent) return;
  m_pourcent = pourcent;
  if (!m_fenetre) return;
  m_fenetre->PosePourcent(pourcent);
  Peint();
}

void DialogueQt::Step() { SetPos(m_position + 1); }

bool DialogueQt::IsAborted() {
  if (m_profondeur == 0) return false;
  if (m_tournee.isValid() && m_tournee.elapsed() < periodeMessages) return m_fenetre && m_fenetre->Arrete();
  if (m_fenetre) return PompeMessages(true);
  Peint();
  return false;
}

bool DialogueQt::PompeMessages(bool arret) {
  FiltreFin fin;
  QElapsedTimer duree;
  duree.start();
  const auto arrete = [this] { return m_fenetre && m_fenetre->Arrete(); };
  auto* messages = QThread::currentThread()->eventDispatcher();
  while (!(arret && arrete()) && messages->processEvents(QEventLoop::AllEvents)) {
    if (fin.Vue() || duree.elapsed() > dureeMaximale) break;
  }
  m_tournee.start();
  return arrete() && !fin.Vue();
}

void DialogueQt::Peint() {
  if (m_peinture.isValid() && m_peinture.elapsed() < periodeMessages) return;
  QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  m_peinture.start();
}

}  // namespace fenlor

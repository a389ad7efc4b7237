#include "app/barreetat.h"

#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>

#include "session/textes.h"
#include "store/dates.h"
#include "ui/images.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CBarreEtat::CBarreEtat(ContexteUi& contexte, QWidget* parent)
    : QStatusBar(parent),
      m_contexte(contexte),
      m_exercice(new QLabel(this)),
      m_monnaie(new QLabel(this)),
      m_cloture(new QWidget(this)),
      m_imageCloture(new QLabel(m_cloture)),
      m_texteCloture(new QLabel(m_cloture)),
      m_heure(new QLabel(this)) {
  setObjectName(u"BarreEtat"_s);
  m_exercice->setObjectName(u"exercice"_s);
  m_exercice->setTextFormat(Qt::PlainText);
  m_monnaie->setObjectName(u"monnaie"_s);
  m_monnaie->setToolTip(u"Monnaie de l'exercice"_s);
  m_cloture->setObjectName(u"cloture"_s);
  m_cloture->setToolTip(u"Tout se consulte, rien ne se modifie."_s);
  m_heure->setObjectName(u"heure"_s);

  auto* cloture = new QHBoxLayout(m_cloture);
  cloture->setContentsMargins(0, 0, 0, 0);
  cloture->addWidget(m_imageCloture);
  cloture->addWidget(m_texteCloture);
  for (QWidget* w : {static_cast<QWidget*>(m_exercice), static_cast<QWidget*>(m_monnaie), m_cloture,
                     static_cast<QWidget*>(m_heure)})
    addPermanentWidget(w);

  m_minute.setSingleShot(true);
  m_minute.setTimerType(Qt::PreciseTimer);
  connect(&m_minute, &QTimer::timeout, this, [this] {
    MontreHeure(QDateTime::currentDateTime());
    Programme();
  });
  ActualisePreferences();
  MontreExercice();
  MontreHeure(QDateTime::currentDateTime());
  Programme();
}

void CBarreEtat::Programme() {
  const QTime maintenant = QTime::currentTime();
  m_minute.start(60'000 - maintenant.msecsSinceStartOfDay() % 60'000 + 20);
}

void CBarreEtat::MontreHeure(const QDateTime& maintenant) {
  m_heure->setText(maintenant.toString(u"HH:mm"_s));
  const QDate jour = maintenant.date();
  m_heure->setToolTip(
      Q(StrLDate(FaitDate(static_cast<unsigned>(jour.day()), static_cast<unsigned>(jour.month()),
                          static_cast<unsigned>(jour.year())))));
}

void CBarreEtat::MontreExercice() {
  const CFenlorApp& app = m_contexte.App;
  const bool ouvert = !app.NomExercice.empty();
  if (ouvert) {
    m_exercice->setText(u"Exercice "_s + Q(app.NomExercice));
    m_exercice->setToolTip(u"Du %1 au %2"_s.arg(Q(StrDate(app.Reglages.GetDebutExercice())),
                                                Q(StrDate(app.Reglages.GetFinExercice()))));
    m_monnaie->setText(Q(Texte(app.Reglages.IsEuro() ? MotEuro : MotFranc)));
  }
  m_exercice->setVisible(ouvert);
  m_monnaie->setVisible(ouvert);
  m_texteCloture->setText(app.Magasin.QVEnLecture() ? u"Lecture seule"_s : u"Clôturé"_s);
  m_cloture->setVisible(ouvert && app.Reglages.IsFige());
}

void CBarreEtat::ActualisePreferences() {
  setFont(m_contexte.Dessin.PoliceListes);
  const int cote = std::max(15, fontMetrics().ascent());
  m_imageCloture->setPixmap(Image("exercice-clos").pixmap(QSize(cote, cote), devicePixelRatioF()));
}

}  // namespace fenlor

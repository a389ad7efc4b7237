#include <QAction>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLocale>
#include <QScreen>
#include <QValidator>
#include <algorithm>

#include "ui/editeurs.h"
#include "ui/images.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

constexpr int longueurMax = 10;

bool EstChiffre(QChar c) { return c >= u'0' && c <= u'9'; }

class FiltreurDate : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& texte, int& place) const override {
    const auto admis = [](QChar c) {
      return EstChiffre(c) || c == u'/' || c == u'.' || c == u'-' || c == u' ';
    };
    QString garde;
    int avant = 0;
    for (qsizetype i = 0; i < texte.size(); ++i) {
      if (!admis(texte[i])) continue;
      garde += texte[i];
      avant += i < place;
    }
    if (garde != texte) {
      texte = garde;
      place = avant;
    }
    return Acceptable;
  }
};

/// The same day `pas` months on, or the last one of a shorter month; 0 out of the calendar.
Date DecaleMois(Date date, int pas) {
  const int mois = static_cast<int>(Annee(date) * 12 + Mois(date)) - 1 + pas;
  if (mois < 12) return 0;
  const unsigned annee = static_cast<unsigned>(mois / 12), rang = static_cast<unsigned>(mois % 12) + 1;
  const Date date1 = FaitDate(std::min(Jour(date), GetNbJours(FaitDate(1, rang, annee))), rang, annee);
  return IsDateOk(date1) ? date1 : 0;
}

QDate VersQt(Date date) {
  return {static_cast<int>(Annee(date)), static_cast<int>(Mois(date)), static_cast<int>(Jour(date))};
}
Date DeQt(QDate date) {
  return FaitDate(static_cast<unsigned>(date.day()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.year()));
}

}  // namespace

EditeurDate::EditeurDate(QWidget* parent) : QLineEdit(parent) {
  setMaxLength(longueurMax);
  setValidator(new FiltreurDate(this));
  m_calendrier = addAction(Image("echeances"), TrailingPosition);
  m_calendrier->setToolTip(QStringLiteral("Calendrier (F4)"));
  connect(m_calendrier, &QAction::triggered, this, [this] { OuvreCalendrier(); });
}

Date EditeurDate::Lit(const QString& texte, Date reference) {
  std::vector<QString> parties;
  bool dans = false;
  for (const QChar c : texte) {
    if (!EstChiffre(c)) {
      dans = false;
    } else {
      if (!dans) parties.emplace_back();
      parties.back() += c;
      dans = true;
    }
  }
  if (parties.size() == 1) {
    const QString chiffres = parties[0];
    if (chiffres.size() != 4 && chiffres.size() != 6 && chiffres.size() != 8) return 0;
    parties = {chiffres.left(2), chiffres.mid(2, 2)};
    if (chiffres.size() > 4) parties.push_back(chiffres.mid(4));
  }
  if (parties.size() < 2 || parties.size() > 3 || parties[0].size() > 2 || parties[1].size() > 2) return 0;
  unsigned annee = Annee(reference);
  if (parties.size() == 3) {
    annee = parties[2].toUInt();
    if (parties[2].size() <= 2)
      annee += annee >= 50 ? 1900 : 2000;
    else if (parties[2].size() != 4)
      return 0;
  }
  const Date date = FaitDate(parties[0].toUInt(), parties[1].toUInt(), annee);
  return IsDateOk(date) ? date : 0;
}

Date EditeurDate::Valeur() const { return Lit(text(), m_reference); }
bool EditeurDate::EstVide() const { return text().trimmed().isEmpty(); }
bool EditeurDate::EstDate() const { return Valeur() != 0; }
void EditeurDate::Pose(Date date) {
  setText(Q(StrDate(date)));
  // The field is full: what is typed behind would be lost.
  if (hasFocus()) selectAll();
}
void EditeurDate::PoseReference(Date date) { m_reference = date; }
void EditeurDate::Normalise() {
  if (const Date date = Valeur()) Pose(date);
}

void EditeurDate::Change(Date date) {
  if (!date) return;
  Pose(date);
  Q_EMIT textEdited(text());
}

void EditeurDate::keyPressEvent(QKeyEvent* evenement) {
  const int touche = evenement->key();
  const bool alt = evenement->modifiers() & Qt::AltModifier;
  const bool calendrier = touche == Qt::Key_F4 ? !alt : touche == Qt::Key_Down && alt;
  const bool pas = touche == Qt::Key_Up || touche == Qt::Key_Down || touche == Qt::Key_PageUp ||
                   touche == Qt::Key_PageDown;
  const bool seule = !(evenement->modifiers() & ~Qt::KeypadModifier);
  if (isReadOnly() || !(calendrier || (pas && seule))) return QLineEdit::keyPressEvent(evenement);
  evenement->accept();
  if (calendrier) return OuvreCalendrier();
  if (EstVide()) return Change(m_reference);
  const Date date = Valeur();
  if (!date) return;
  switch (touche) {
    case Qt::Key_Up:
      return Change(IsDateOk(NextDate(date)) ? NextDate(date) : 0);
    case Qt::Key_Down:
      return Change(IsDateOk(PrevDate(date)) ? PrevDate(date) : 0);
    case Qt::Key_PageUp:
      return Change(DecaleMois(date, 1));
    default:
      return Change(DecaleMois(date, -1));
  }
}

void EditeurDate::focusOutEvent(QFocusEvent* evenement) {
  if (!isReadOnly()) Normalise();
  QLineEdit::focusOutEvent(evenement);
}

void EditeurDate::OuvreCalendrier() {
  if (isReadOnly()) return;
  setFocus(Qt::OtherFocusReason);
  auto* calendrier = new QCalendarWidget(this);
  calendrier->setObjectName(QStringLiteral("calendrier"));
  calendrier->setWindowFlags(Qt::Popup);
  calendrier->setAttribute(Qt::WA_DeleteOnClose);
  calendrier->setLocale(QLocale(QLocale::French, QLocale::France));
  calendrier->setFirstDayOfWeek(Qt::Monday);
  calendrier->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  if (const Date date = EstDate() ? Valeur() : m_reference) calendrier->setSelectedDate(VersQt(date));
  const auto choisi = [this, calendrier](QDate date) {
    Change(DeQt(date));
    calendrier->close();
    setFocus(Qt::PopupFocusReason);
    selectAll();
  };
  connect(calendrier, &QCalendarWidget::clicked, this, choisi);
  connect(calendrier, &QCalendarWidget::activated, this, choisi);

  const QSize taille = calendrier->sizeHint();
  const QRect ecran = screen()->availableGeometry();
  QPoint coin = mapToGlobal(QPoint(0, height()));
  if (coin.y() + taille.height() > ecran.bottom()) coin.setY(mapToGlobal(QPoint(0, 0)).y() - taille.height());
  coin.setX(std::max(ecran.left(), std::min(coin.x(), ecran.right() - taille.width())));
  calendrier->setGeometry(QRect(coin, taille));
  calendrier->show();
  calendrier->setFocus(Qt::PopupFocusReason);
}

}  // namespace fenlor

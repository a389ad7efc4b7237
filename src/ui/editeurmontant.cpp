#include <QKeyEvent>
#include <QPainter>
#include <cmath>

#include "core/erreurssaisie.h"
#include "core/valeurs.h"
#include "ui/editeurs.h"
#include "ui/preferences.h"
#include "ui/texteqt.h"
#include "ui/textes.h"

namespace fenlor {

namespace {

constexpr int traitMarque = 2;
/// A limit of so many characters holds more than the store does.
constexpr int limiteSansEffet = 14;

}  // namespace

EditeurMontant::EditeurMontant(const Parametres& reglages, QWidget* parent)
    : QLineEdit(parent), m_reglages(reglages) {
  setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  connect(this, &QLineEdit::textChanged, this, [this] {
    m_marque = false;
    update();
  });
}

/// The text in the code page, without the unit: signs and blanks that it lacks become those that it has.
std::string EditeurMontant::Tape() const {
  QString texte = text();
  texte.replace(QChar(0x2212), u'-');
  for (const char16_t blanc : {u'\u202F', u'\u2009', u'\u2007'}) texte.replace(QChar(blanc), u' ');
  const QString unite = Q(m_unite).trimmed();
  if (!unite.isEmpty() && texte.trimmed().endsWith(unite)) texte = texte.trimmed().chopped(unite.size());
  return De1252(texte);
}

f64 EditeurMontant::Minimum() const { return m_minimum.value_or(m_negatif ? -Maximum() : 0); }

f64 EditeurMontant::Maximum() const {
  if (m_maximum) return *m_maximum;
  if (m_limite == 0 || m_limite >= limiteSansEffet) return MontantMax;
  const int entiers = m_limite - (m_decimales > 0 ? m_decimales + 1 : 0);
  return std::pow(10, entiers) - std::pow(10, -m_decimales);
}

TexteFixe EditeurMontant::Refus() const {
  if (!isModified()) return {};
  const char separateur = m_reglages.SeparateurDecimal();
  const std::optional<std::string> norme = NormeMontant(Tape(), separateur);
  if (!norme) return ErrMontantIllisible;
  if (norme->empty()) return {};
  const f64 valeur = TexteVersMontant(*norme, separateur);
  return valeur < Minimum() || valeur > Maximum() ? ErrMontantBornes : TexteFixe{};
}

std::array<std::string, 3> EditeurMontant::ArgumentsRefus() const {
  const auto texte = [this](f64 borne) {
    const std::string nombre = FormatMontant(borne, m_decimales, m_reglages.SeparateurDecimal());
    return nombre.empty() ? std::string("0") : nombre;
  };
  return {De1252(text()), texte(Minimum()), texte(Maximum())};
}

std::string EditeurMontant::Lu() const {
  if (Refus() != 0) return {};
  return NormeMontant(Tape(), m_reglages.SeparateurDecimal()).value_or(std::string());
}

f64 EditeurMontant::Valeur() const { return TexteVersMontant(Lu(), m_reglages.SeparateurDecimal()); }
bool EditeurMontant::EstVide() const { return fenlor::EstVide(De1252(text())); }
void EditeurMontant::Pose(f64 valeur) {
  const std::string nombre =
      FormatSaisie(valeur, m_decimales, m_reglages.ZeroDansBoite(), m_reglages.SeparateurDecimal());
  setText(Q(nombre.empty() ? nombre : nombre + m_unite));
}
void EditeurMontant::PoseDecimales(int decimales) { m_decimales = decimales; }
void EditeurMontant::PoseUnite(const std::string& unite) { m_unite = unite; }
void EditeurMontant::PoseNegatif(bool permis) { m_negatif = permis; }
void EditeurMontant::PoseLimite(int caracteres) { m_limite = caracteres; }
void EditeurMontant::PoseBornes(f64 minimum, f64 maximum) {
  m_minimum = minimum;
  m_maximum = maximum;
}

void EditeurMontant::Normalise() {
  m_marque = Refus() != 0;
  update();
  if (!m_marque && !EstVide()) Pose(Valeur());
}

void EditeurMontant::keyPressEvent(QKeyEvent* evenement) {
  // The access key of a button that is disabled is no letter.
  if (evenement->modifiers() == Qt::AltModifier && !evenement->text().isEmpty()) return evenement->ignore();
  const bool pave = evenement->modifiers() & Qt::KeypadModifier;
  if (isReadOnly() || !pave || evenement->text() != QChar(u'.') || !m_reglages.IsVirgule())
    return QLineEdit::keyPressEvent(evenement);
  evenement->accept();
  insert(QString(QLatin1Char(m_reglages.SeparateurDecimal())));
}

void EditeurMontant::focusOutEvent(QFocusEvent* evenement) {
  if (!isReadOnly()) Normalise();
  QLineEdit::focusOutEvent(evenement);
}

void EditeurMontant::paintEvent(QPaintEvent* evenement) {
  QLineEdit::paintEvent(evenement);
  if (!m_marque) return;
  QPainter peintre(this);
  peintre.setPen(QPen(CouleurFaute(palette()), traitMarque));
  peintre.drawRect(rect().adjusted(1, 1, -1, -1));
}

}  // namespace fenlor

#include <QKeyEvent>
#include <QValidator>

#include "core/valeurs.h"
#include "ui/editeurs.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

constexpr int longueurMax = 40;

bool EstSeparateur(QChar c) { return c == u',' || c == u'.'; }

/// Digits, one separator, and a sign at the beginning when `negatif`. Of several
/// separators the last one counts, none when they are all the same (thousand marks).
QString Filtre(const QString& texte, bool negatif, QChar separateur) {
  const auto estSeparateur = [separateur](QChar c) { return EstSeparateur(c) || c == separateur; };
  qsizetype virgule = -1;
  unsigned nombre = 0;
  bool pareils = true;
  for (qsizetype i = 0; i < texte.size(); ++i) {
    if (!estSeparateur(texte[i])) continue;
    if (virgule >= 0 && texte[virgule] != texte[i]) pareils = false;
    virgule = i;
    ++nombre;
  }
  if (nombre > 1 && pareils) virgule = -1;
  QString garde;
  for (qsizetype i = 0; i < texte.size(); ++i) {
    const QChar c = texte[i];
    if ((c >= u'0' && c <= u'9') || i == virgule)
      garde += c;
    else if (negatif && garde.isEmpty() && (c == u'-' || c == QChar(0x2212)))
      garde += u'-';
  }
  return garde;
}

class FiltreurMontant : public QValidator {
 public:
  FiltreurMontant(QObject* parent, const bool& negatif, QChar separateur)
      : QValidator(parent), m_negatif(negatif), m_separateur(separateur) {}
  State validate(QString& texte, int& place) const override {
    const QString filtre = Filtre(texte, m_negatif, m_separateur);
    if (filtre != texte) {
      place =
          static_cast<int>(qMin(Filtre(texte.left(place), m_negatif, m_separateur).size(), filtre.size()));
      texte = filtre;
    }
    return Acceptable;
  }

 private:
  const bool& m_negatif;
  QChar m_separateur;
};

}  // namespace

EditeurMontant::EditeurMontant(const Parametres& reglages, QWidget* parent)
    : QLineEdit(parent), m_reglages(reglages) {
  setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  setMaxLength(longueurMax);
  setValidator(new FiltreurMontant(this, m_negatif, QLatin1Char(reglages.SeparateurDecimal())));
}

f64 EditeurMontant::Valeur() const {
  return TexteVersMontant(De1252(text()), m_reglages.SeparateurDecimal());
}
bool EditeurMontant::EstVide() const { return fenlor::EstVide(De1252(text())); }
void EditeurMontant::Pose(f64 valeur) {
  setText(Q(FormatSaisie(valeur, m_decimales, m_reglages.ZeroDansBoite(), m_reglages.SeparateurDecimal())));
}
void EditeurMontant::PoseDecimales(int decimales) { m_decimales = decimales; }
void EditeurMontant::PoseNegatif(bool permis) { m_negatif = permis; }
void EditeurMontant::Normalise() {
  if (!EstVide()) Pose(Valeur());
}

void EditeurMontant::keyPressEvent(QKeyEvent* evenement) {
  const QString frappe = evenement->text();
  const QLatin1Char separateur(m_reglages.SeparateurDecimal());
  if (isReadOnly() || frappe.size() != 1 || !(EstSeparateur(frappe.front()) || frappe.front() == separateur))
    return QLineEdit::keyPressEvent(evenement);
  evenement->accept();
  const QString reste = QString(text()).remove(selectionStart(), selectedText().size());
  for (const QChar c : reste)
    if (EstSeparateur(c) || c == separateur) return;
  const bool pave = evenement->modifiers() & Qt::KeypadModifier;
  const bool garde = pave && frappe.front() == u'.' && !m_reglages.IsVirgule();
  insert(garde ? frappe : QString(separateur));
}

void EditeurMontant::focusOutEvent(QFocusEvent* evenement) {
  if (!isReadOnly()) Normalise();
  QLineEdit::focusOutEvent(evenement);
}

}  // namespace fenlor

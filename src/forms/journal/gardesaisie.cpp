#include "forms/journal/gardesaisie.h"

#include <QApplication>
#include <QWidget>

namespace fenlor {

namespace {

constexpr int PeriodeGarde = 2000;  // ms

}  // namespace

GardeSaisie::GardeSaisie(CFenlorApp& app, QWidget& forme,
                         std::function<std::optional<SaisieSuspendue>()> saisie)
    : QObject(&forme), m_app(app), m_saisie(std::move(saisie)) {
  m_horloge.setInterval(PeriodeGarde);
  connect(&m_horloge, &QTimer::timeout, this, &GardeSaisie::Note);
  connect(qApp, &QApplication::focusChanged, this, [this, &forme](const QWidget* de) {
    // Across windows: a form over this one belongs to it.
    for (; de; de = de->parentWidget())
      if (de == &forme) return Note();
  });
}

void GardeSaisie::Commence() { m_horloge.start(); }

void GardeSaisie::Note() {
  if (!m_horloge.isActive()) return;
  const std::optional<SaisieSuspendue> saisie = m_saisie();
  if (!saisie) return Oublie();
  std::string texte = TexteSuspens(*saisie);
  // A disk that fails is told by the save; typing goes on.
  if (texte != m_notee && NoteSuspens(m_app, *saisie)) m_notee = std::move(texte);
}

void GardeSaisie::Oublie() {
  if (!m_notee.empty() && OublieSuspens(m_app)) m_notee.clear();
}

}  // namespace fenlor

#include "ui/fenetres.h"

#include <QApplication>
#include <QDialog>
#include <QWindow>
#include <algorithm>
#include <chrono>
#include <utility>

#include "ui/vue.h"

namespace fenlor {

namespace {

constexpr u32 journaux = FenRecettes | FenDepenses | FenOperationsDiverses;
constexpr u32 comptes = FenTresorerie | FenComptesRecettes | FenComptesDepenses | FenPlanComptable;
/// The look of all windows, and of the bars; one of its bits is no window's.
constexpr u32 toutes = 65535, dessins = 1u << 15;
/// The start page is no window: it is brought up to the books with whatever is.
constexpr u32 accueil = 1u << 16;

constexpr struct {
  u16 numero;
  u32 fenetres;
} actualisations[] = {
    {FichierComptes, comptes | journaux},        // journals name accounts
    {FichierJournal, FenTresorerie | journaux},  // treasury: what is reconciled
    {FichierRubriques, FenRubriques},
    {FichierTextes, FenLibelles},
    {FichierBanques, accueil},  // operations that wait
    {FichierAuto, accueil},     // entries that fall due
    {FichierImmo, FenImmobilisations},
    {FichierAmo, FenImmobilisations},
    {ReglageMonnaies, comptes | journaux | FenImmobilisations},
    {ReglagePreferences, toutes},
};

constexpr std::chrono::milliseconds reprise{100};  ///< until it is asked again whether the rule is through

}  // namespace

u32 FenetresDe(u16 numero) {
  u32 masque = 0;
  for (const auto& ligne : actualisations)
    if (ligne.numero == numero) masque |= ligne.fenetres;
  return masque;
}

Fenetres::Fenetres() {
  m_minuterie.setSingleShot(true);
  m_minuterie.callOnTimeout([this] { Actualise(); });
}

void Fenetres::Suit(CFenlorApp& app) {
  const auto suite = [this, vivantes = QPointer(&m_minuterie)](const QVAPI::Changements& changements) {
    u32 masque = 0;
    for (u16 numero = 0; numero < changements.size(); ++numero)
      if (changements[numero]) masque |= FenetresDe(numero);
    if (vivantes) Attend(masque);
  };
  app.Magasin.QVSuitChangements(suite);
}

void Fenetres::Entre(Vue& vue) {
  Suit(vue.App());
  std::erase_if(m_vues, [&vue](const QPointer<Vue>& autre) { return !autre || autre == &vue; });
  m_vues.emplace_back(&vue);
  m_masque &= ~vue.Bit();  // it is about to read everything
}

void Fenetres::Note(NumeroReglage reglage) { Attend(FenetresDe(reglage)); }

void Fenetres::Attend(u32 masque) {
  m_masque |= masque;
  if (m_masque && !m_minuterie.isActive()) m_minuterie.start(0);
}

void Fenetres::Actualise() {
  if (!m_masque) return;
  const auto enUnite = [](const QPointer<Vue>& vue) { return vue && vue->App().Magasin.QVEnUnite(); };
  if (Occupe() || std::any_of(m_vues.begin(), m_vues.end(), enUnite)) return m_minuterie.start(reprise);
  m_minuterie.stop();
  const u32 masque = std::exchange(m_masque, 0);
  const bool dessin = masque & dessins;
  for (const QPointer<Vue>& vue : std::vector(m_vues)) {
    if (!vue || vue->Suspendue()) continue;
    if (dessin)
      vue->AppliqueDessin();
    else if (vue->Bit() & masque)
      vue->Actualise();
  }
  Actualisees(dessin);
}

void SuitModale(QDialog& outil) {
  auto* modale = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  if (!modale || !outil.windowHandle() || !modale->windowHandle()) return;
  outil.windowHandle()->setTransientParent(modale->windowHandle());
  QObject::connect(
      modale, &QDialog::finished, &outil,
      [&outil] {
        outil.windowHandle()->setTransientParent(
            outil.parentWidget() ? outil.parentWidget()->window()->windowHandle() : nullptr);
      },
      Qt::SingleShotConnection);
}

void AvecFichiersSeul(ContexteUi& contexte, const std::function<void()>& travail) {
  contexte.Cadre.Sauve();
  contexte.Cadre.FermeToutes();
  travail();
  contexte.Cadre.Restaure();
}

}  // namespace fenlor

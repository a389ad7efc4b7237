#include "forms/journal/ecrtotal.h"

#include <algorithm>
#include <string>

#include "core/valeurs.h"
#include "forms/journal/ecrlist.h"
#include "forms/journal/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

constexpr const char* suffixes[] = {"DebitFranc", "CreditFranc", "DebitEuro", "CreditEuro"};
constexpr int espace = 3;

}  // namespace

CEcrTotal::CEcrTotal(const char* nom, QWidget* parent) : QLabel(parent) {
  setObjectName(QString::fromLatin1(nom));
  setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  setTextFormat(Qt::PlainText);
}

void CEcrTotal::PoseFranc(f64 montant) {
  m_montant = montant;
  setText(montant == 0 ? QString() : TexteQ(FormatTotal, {FormatFranc(montant)}));
}

void CEcrTotal::PoseEuro(f64 montant) {
  m_montant = montant;
  setText(montant == 0 ? QString() : TexteQ(FormatTotal, {FormatEuro(montant)}));
}

BandeTotaux::BandeTotaux(CEcrList& liste, QWidget* parent)
    : QWidget(parent),
      m_liste(liste),
      m_rangees{FaitRangee(MotTotal, "total"), FaitRangee(MotTotalSelection, "selection")} {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

BandeTotaux::Rangee BandeTotaux::FaitRangee(const TexteFixe& titre, const char* nom) {
  Rangee rangee;
  rangee.titre = new QLabel(TexteQ(titre), this);
  rangee.titre->setObjectName(QString::fromLatin1(nom));
  rangee.titre->setTextFormat(Qt::PlainText);
  for (std::size_t i = 0; i < rangee.montants.size(); ++i)
    rangee.montants[i] = new CEcrTotal((std::string(nom) + suffixes[i]).c_str(), this);
  return rangee;
}

void BandeTotaux::PoseDessin(const QFont& police) {
  setFont(police);
  updateGeometry();
  Place();
}

QSize BandeTotaux::sizeHint() const { return {200, 2 * (fontMetrics().height() + espace) + espace}; }

void BandeTotaux::Montre(const TotauxListe& mois, const TotauxListe& selection) {
  MontreRangee(m_rangees[0], mois);
  MontreRangee(m_rangees[1], selection);
  Place();
}

/// Under "Journal comptable" the sum of the credits stands in the first label of a currency, that of the
/// debits in the second.
void BandeTotaux::MontreRangee(const Rangee& rangee, const TotauxListe& totaux) {
  rangee.montants[0]->PoseFranc(totaux.creditFranc);
  rangee.montants[1]->PoseFranc(totaux.debitFranc);
  rangee.montants[2]->PoseEuro(totaux.creditEuro);
  rangee.montants[3]->PoseEuro(totaux.debitEuro);
}

void BandeTotaux::Place() {
  using C = ChampJournal;
  const bool comptable = m_liste.Comptable();
  const C colonnes[] = {
      comptable ? C::DebitFranc : C::MontantFranc, comptable ? C::CreditFranc : C::MontantFranc,
      comptable ? C::DebitEuro : C::MontantEuro, comptable ? C::CreditEuro : C::MontantEuro};
  const auto premiere =
      std::find_if(std::begin(colonnes), std::end(colonnes), [&](C c) { return m_liste.ALaColonne(c); });
  if (premiere == std::end(colonnes)) return;
  const int hauteur = fontMetrics().height(), decalage = m_liste.x() - x();
  int y = espace;
  for (const Rangee& rangee : m_rangees) {
    for (std::size_t i = 0; i < rangee.montants.size(); ++i) {
      CEcrTotal& montant = *rangee.montants[i];
      montant.setAccessibleDescription(rangee.titre->text() + TitreChamp(colonnes[i]));
      // Outside "Journal comptable" the two labels of a currency would hold one amount at one place.
      const bool vu = m_liste.ALaColonne(colonnes[i]) && (comptable || i % 2 == 0);
      montant.setVisible(vu);
      const QRect place = m_liste.PlaceColonne(colonnes[i]);
      const int largeur = std::max(place.width(), montant.sizeHint().width());
      montant.setGeometry(decalage + place.right() + 1 - largeur, y, largeur, hauteur);
    }
    const int largeur = rangee.titre->sizeHint().width();
    rangee.titre->setGeometry(decalage + m_liste.PlaceColonne(*premiere).left() - largeur, y, largeur,
                              hauteur);
    y += hauteur + espace;
  }
}

void BandeTotaux::resizeEvent(QResizeEvent* evenement) {
  QWidget::resizeEvent(evenement);
  Place();
}

}  // namespace fenlor

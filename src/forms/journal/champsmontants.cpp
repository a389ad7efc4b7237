#include "forms/journal/champsmontants.h"

#include <QStyle>

#include "core/valeurs.h"
#include "forms/journal/champsecriture.h"
#include "forms/master/champscompte.h"
#include "journal/controles.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

ChampsMontants::ChampsMontants(CFenlorApp& app, std::function<bool(Plan&)> compte, std::function<bool()> euro)
    : m_app(app),
      m_compte(std::move(compte)),
      m_euro(std::move(euro)),
      m_ttc(app.Reglages),
      m_professionnelle(app.Reglages) {
  m_ttc.PoseNegatif(true);
  m_professionnelle.PoseNegatif(true);
}

QWidget* ChampsMontants::Colonne(QWidget& zone, bool taxes) {
  QWidget* colonne = ColonneDeChamps(zone, [this, taxes](Formulaire& f) { Declare(f, taxes); });
  QPalette lisible;  // the share that is not typed in receipts is read all the same
  lisible.setColor(QPalette::Disabled, QPalette::Text,
                   zone.palette().color(QPalette::Active, QPalette::Text));
  colonne->setPalette(lisible);
  // The fields of both groups under each other.
  const auto libelle = [colonne](const QWidget& champ) -> QLabel* {
    for (QLabel* texte : colonne->findChildren<QLabel*>())
      if (texte->buddy() == &champ) return texte;
    return nullptr;
  };
  if (QLabel* ttc = libelle(m_ttc), *part = libelle(m_professionnelle); ttc && part)
    ttc->setMinimumWidth(part->sizeHint().width());
  return colonne;
}

void ChampsMontants::Declare(Formulaire& formulaire, bool taxes) {
  const int cadre = m_ttc.style()->pixelMetric(QStyle::PM_DefaultFrameWidth) + 2;
  for (Lecture* figure : {&m_tva, &m_ht, &m_taux, &m_personnelle}) {
    figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    figure->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    figure->setContentsMargins(0, 0, cadre, 0);
  }
  formulaire.Groupe(u"Montants"_s)
      .Champ(u"T.T.C. :"_s, m_ttc, "ttc")
      .Limite(TailleMontant)
      .SurChangement([this] { Calcule(); });
  if (taxes)
    formulaire.Champ(u"T.V.A. :"_s, m_tva, "tva")
        .Champ(u"H.T. :"_s, m_ht, "ht")
        .Champ(u"Taux :"_s, m_taux, "taux");
  formulaire.Groupe(u"Répartition"_s)
      .Champ(u"P&rofessionnelle :"_s, m_professionnelle, "professionnelle")
      .Limite(TailleMontant)
      .SurChangement([this] { ProfessionnelChange(); })
      .SurDepart([this] { Montre(true); })
      .Champ(u"Personnelle :"_s, m_personnelle, "personnelle")
      .FinGroupe();
  for (EditeurMontant* saisi : {&m_ttc, &m_professionnelle})
    QObject::connect(saisi, &QLineEdit::textEdited, saisi, [this, saisi] {
      if (saisi->Refus() != 0) Montre(saisi == &m_ttc);
    });
  Astuce(m_ttc, &MontantsSaisie::ttc);
  Astuce(m_tva, &MontantsSaisie::tva);
  Astuce(m_ht, &MontantsSaisie::ht);
  Astuce(m_professionnelle, &MontantsSaisie::professionnel);
  Astuce(m_personnelle, &MontantsSaisie::personnel);
}

void ChampsMontants::Astuce(QWidget& champ, f64 MontantsSaisie::*montant) {
  AstuceAutreMonnaie(
      champ, m_app,
      [this, montant]() -> std::optional<f64> {
        if (m_montants.*montant == 0 || m_ttc.Refus() != 0 || m_professionnelle.Refus() != 0)
          return std::nullopt;
        return m_montants.*montant;
      },
      m_euro);
}

MontantsSaisie ChampsMontants::Valeur() const {
  MontantsSaisie montants = m_montants;
  montants.ttc = Ttc();
  return montants;
}

f64 ChampsMontants::Ttc() const { return MontantDeChamp(m_ttc.Valeur()); }

void ChampsMontants::Pose(const MontantsSaisie& montants) {
  m_montants = montants;
  m_ttc.Pose(montants.ttc);
  Montre(true);
}

void ChampsMontants::PoseTtc(f64 ttc) {
  m_ttc.Pose(ttc);
  Calcule();
}

void ChampsMontants::Calcule() {
  Plan compte;
  if (m_compte(compte)) {
    m_montants = ChaineMontants(m_app, compte, m_ttc.Valeur());
  } else {
    m_montants = {};
    m_montants.ttc = Ttc();
  }
  Montre(true);
}

void ChampsMontants::ProfessionnelChange() {
  Plan compte;
  if (!m_compte(compte)) return;
  m_montants = ChaineProfessionnel(m_app, compte, m_ttc.Valeur(), m_professionnelle.Valeur());
  Montre(false);
}

void ChampsMontants::Vide() {
  m_montants = {};
  m_ttc.clear();
  Montre(false);
  m_professionnelle.clear();
}

void ChampsMontants::Permet(bool ttc, bool professionnelle) {
  PermetChamp(m_ttc, ttc);
  PermetChamp(m_professionnelle, professionnelle);
}

ChampsMontants::Frappe ChampsMontants::Illisible() const {
  const auto texte = [](const EditeurMontant& champ) {
    return champ.Refus() != 0 ? De1252(champ.text()) : std::string();
  };
  return {texte(m_ttc), texte(m_professionnelle)};
}

void ChampsMontants::Retape(const Frappe& frappe) {
  if (!frappe.ttc.empty()) m_ttc.setText(Q(frappe.ttc));
  if (!frappe.professionnelle.empty()) m_professionnelle.setText(Q(frappe.professionnelle));
}

/// The figures under T.T.C.; `partPro`: that of the professional share too, which is not being typed.
void ChampsMontants::Montre(bool partPro) {
  const Parametres& reglages = m_app.Reglages;
  const auto texte = [&](f64 montant) {
    return FormatSaisie(montant, 2, reglages.ZeroDansBoite(), reglages.SeparateurDecimal());
  };
  const bool ttc = m_ttc.Refus() == 0;
  if (partPro) ttc ? m_professionnelle.Pose(m_montants.professionnel) : m_professionnelle.clear();
  const bool lisible = ttc && m_professionnelle.Refus() == 0;
  m_personnelle.Pose(lisible ? texte(m_montants.personnel) : std::string{});
  m_ht.Pose(lisible ? texte(m_montants.ht) : std::string{});
  m_tva.Pose(lisible ? texte(m_montants.tva) : std::string{});
  m_taux.Pose(m_montants.taux > 0 ? texte(m_montants.taux) : std::string{});
}

}  // namespace fenlor

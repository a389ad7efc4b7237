#include "app/panneausituation.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>

#include "app/textes.h"
#include "core/numeroscommandes.h"
#include "core/valeurs.h"
#include "forms/graphiques/widgetgraphique.h"
#include "garde/findesession.h"
#include "garde/textes.h"
#include "master/options.h"
#include "store/dates.h"
#include "store/texte1252.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int HauteurBarres = 11;        // lines of text
constexpr std::size_t NbComptesMax = 8;  ///< of the treasury; the others stand in its window

/// A figure, or a sentence, that is pressed like a link.
class Lien : public QPushButton {
 public:
  Lien(const QString& texte, const QString& nom, QWidget* parent) : QPushButton(texte, parent) {
    setFlat(true);
    QPalette encre = palette();
    encre.setColor(QPalette::ButtonText, encre.color(QPalette::Link));
    setPalette(encre);
    setCursor(Qt::PointingHandCursor);
    setAccessibleName(nom);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
  }
  static constexpr int Marge = 3;  ///< beside the text
  /// A style's buttons have a least width; figures would no more stand under each other.
  QSize sizeHint() const override {
    return {fontMetrics().horizontalAdvance(text()) + 2 * Marge, QPushButton::sizeHint().height()};
  }
};

}  // namespace

/// Rows of a table under titles, built from top to bottom.
class PanneauSituation::Tableau {
 public:
  Tableau(QWidget& parent, const std::function<void(const Destination&)>& ouvre)
      : m_parent(parent), m_ouvre(ouvre), m_grille(new QGridLayout(&parent)) {
    m_grille->setContentsMargins({});
    m_grille->setVerticalSpacing(1);
    m_grille->setHorizontalSpacing(10);
    m_grille->setColumnStretch(0, 1);
  }
  void Titre(const TexteFixe& titre, const QStringList& colonnes = {}) {
    if (m_ligne > 0) m_grille->setRowMinimumHeight(m_ligne++, m_parent.fontMetrics().height() / 2);
    const auto ajoute = [this](const QString& texte, int colonne, Qt::Alignment cote) {
      auto* label = new QLabel(texte, &m_parent);
      QFont gras = label->font();
      gras.setBold(true);
      label->setFont(gras);
      if (colonne > 0) label->setContentsMargins(0, 0, Lien::Marge, 0);
      m_grille->addWidget(label, m_ligne, colonne, cote);
    };
    ajoute(TexteQ(titre), 0, Qt::AlignLeft);
    for (int i = 0; i < colonnes.size(); ++i) ajoute(colonnes[i], i + 1, Qt::AlignRight);
    m_colonnes = colonnes;
    ++m_ligne;
  }
  void Ligne(const QString& nom) {
    auto* label = new QLabel(nom, &m_parent);
    label->setTextFormat(Qt::PlainText);
    m_grille->addWidget(label, m_ligne++, 0);
    m_nom = nom;
    m_colonne = 0;
  }
  /// The next figure of the row; without a destination it is only read.
  void Chiffre(const QString& texte, const Destination& destination = {}) {
    const bool lien = destination.fenetre != 0 || destination.commande != 0;
    const QString nom = u"%1, %2 : %3"_s.arg(m_nom, m_colonnes.value(m_colonne), texte);
    QWidget* widget =
        lien ? static_cast<QWidget*>(Ajoute(texte, nom, destination)) : new QLabel(texte, &m_parent);
    if (!lien) widget->setContentsMargins(0, 0, Lien::Marge, 0);
    widget->setAccessibleName(nom);
    m_grille->addWidget(widget, m_ligne - 1, ++m_colonne, Qt::AlignRight);
  }
  /// A sentence across the table.
  void Large(QWidget* widget) { m_grille->addWidget(widget, m_ligne++, 0, 1, -1); }
  QWidget& Parent() { return m_parent; }
  void Phrase(const QString& texte, const Destination& destination) {
    m_grille->addWidget(Ajoute(texte, texte, destination), m_ligne++, 0, 1, -1, Qt::AlignLeft);
  }

 private:
  Lien* Ajoute(const QString& texte, const QString& nom, const Destination& destination) {
    auto* lien = new Lien(texte, nom, &m_parent);
    QObject::connect(lien, &QPushButton::clicked, &m_parent,
                     [ouvre = m_ouvre, destination] { ouvre(destination); });
    return lien;
  }
  QWidget& m_parent;
  const std::function<void(const Destination&)>& m_ouvre;
  QGridLayout* m_grille;
  QStringList m_colonnes;
  QString m_nom;
  int m_ligne = 0, m_colonne = 0;
};

PanneauSituation::PanneauSituation(ContexteUi& contexte, std::function<void(const Destination&)> ouvre,
                                   QWidget* parent)
    : QWidget(parent), m_contexte(contexte), m_ouvre(std::move(ouvre)) {
  setObjectName(u"situation"_s);
  (new QVBoxLayout(this))->setContentsMargins({});
}

std::string PanneauSituation::Montant(f64 montant) const {
  return (montant == 0 ? Texte(SituationZero) : FormatMontant(montant, 2)) +
         Texte(m_situation.euro ? SituationEuro : SituationFranc);
}

void PanneauSituation::Actualise() {
  CFenlorApp& app = m_contexte.App;
  if (std::exchange(m_exercice, app.PathExercice) != app.PathExercice) m_situation = {};
  if (m_contenu) {
    // The click that leads here may come from it.
    m_contenu->hide();
    m_contenu->deleteLater();
    m_contenu = nullptr;
  }
  if (LitSituation(app, m_situation)) return hide();
  m_contenu = new QWidget(this);
  layout()->addWidget(m_contenu);
  Tableau tableau(*m_contenu, m_ouvre);
  MontreTresorerie(tableau);
  MontreResultats(tableau);
  MontreAttente(tableau);
  show();
}

void PanneauSituation::MontreTresorerie(Tableau& tableau) {
  if (m_situation.tresorerie.empty()) return;
  tableau.Titre(SituationTresorerie, {TexteQ(SituationLivres), TexteQ(SituationRapproche)});
  for (std::size_t i = 0; i < std::min(m_situation.tresorerie.size(), NbComptesMax); ++i) {
    const SoldeTresorerie& compte = m_situation.tresorerie[i];
    tableau.Ligne(Q(compte.designation));
    tableau.Chiffre(Q(Montant(compte.livres)), {FenTresorerie, 0, 0});
    tableau.Chiffre(Q(Montant(compte.rapproche)), {0, 0, CmdRapprochement});
  }
  if (m_situation.tresorerie.size() > NbComptesMax)
    tableau.Phrase(TexteQ(SituationAutres), {FenTresorerie, 0, 0});
}

void PanneauSituation::MontreResultats(Tableau& tableau) {
  const Situation& s = m_situation;
  const bool avant = !s.exerciceAvant.empty();
  QStringList colonnes{Q(StrMonth(s.jour)), Q(m_contexte.App.NomExercice)};
  if (avant) {
    colonnes.insert(1, Q(StrMonth(DecaleAnnees(s.jour, -1))));
    colonnes.append(Q(s.exerciceAvant));
  }
  tableau.Titre(SituationResultats, colonnes);
  const auto ligne = [&](const TexteFixe& nom, auto chiffre, const Destination& mois,
                         const Destination& annee) {
    tableau.Ligne(TexteQ(nom));
    tableau.Chiffre(Q(Montant(chiffre(s.Mois()))), mois);
    if (avant) tableau.Chiffre(Q(Montant(chiffre(s.MoisAvant()))));
    tableau.Chiffre(Q(Montant(chiffre(s.annee))), annee);
    if (avant) tableau.Chiffre(Q(Montant(chiffre(s.anneeAvant))));
  };
  ligne(SituationRecettes, [](const Resultats& r) { return r.recettes; }, {FenRecettes, s.jour, 0},
        {FenComptesRecettes, 0, 0});
  ligne(SituationDepenses, [](const Resultats& r) { return r.depenses; }, {FenDepenses, s.jour, 0},
        {FenComptesDepenses, 0, 0});
  ligne(SituationResultat, [](const Resultats& r) { return r.Resultat(); }, {}, {FenRubriques, 0, 0});

  SerieGraphique serie;
  serie.titre = TexteFormat(SituationBarres, {m_contexte.App.NomExercice});
  serie.euro = s.euro;
  const QLocale francais(QLocale::French);
  for (unsigned mois = 1; mois <= s.mois.size(); ++mois)
    serie.points.push_back(
        {De1252(francais.standaloneMonthName(static_cast<int>(mois), QLocale::ShortFormat)),
         s.mois[mois - 1].Resultat()});
  auto* barres = new WidgetGraphique(&tableau.Parent());
  barres->setObjectName(u"barres"_s);
  barres->setFixedHeight(HauteurBarres * fontMetrics().height());
  barres->setAutoFillBackground(false);
  barres->PoseHauteurTitre(QFontInfo(font()).pixelSize());
  barres->Pose(serie, GenreGraphique::BarresV);
  tableau.Large(barres);
}

void PanneauSituation::MontreAttente(Tableau& tableau) {
  CFenlorApp& app = m_contexte.App;
  tableau.Titre(SituationAttente);
  const auto compte = [&](u32 nombre, const TexteFixe& un, const TexteFixe& plusieurs, unsigned commande) {
    if (nombre == 1) tableau.Phrase(TexteQ(un), {0, 0, commande});
    if (nombre > 1) tableau.Phrase(TexteQ(plusieurs, {std::to_string(nombre)}), {0, 0, commande});
  };
  compte(m_situation.brouillon, SituationBrouillon, SituationBrouillons, CmdValidation);
  compte(m_situation.aRapprocher, SituationOperation, SituationOperations, CmdRapprochement);
  compte(m_situation.echeances, SituationEcheance, SituationEcheances, CmdEcheances);
  const i64 jours = LitBilanSession(app).joursSauvegarde;
  tableau.Phrase(LitUtilisateur(app, CleDateSauvegarde).empty() ? TexteQ(SituationSansSauvegarde)
                 : jours == 0                                   ? TexteQ(SituationSauvegarde)
                 : jours == 1                                   ? TexteQ(SituationSauvegardeHier)
                              : TexteQ(SituationSauvegardeJours, {std::to_string(jours)}),
                 {0, 0, CmdSauvegarder});
}

}  // namespace fenlor

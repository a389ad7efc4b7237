#include "forms/graphiques/graphwinview.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QSplitter>
#include <QVBoxLayout>

#include "core/valeurs.h"
#include "forms/graphiques/textes.h"
#include "graphiques/axe.h"
#include "store/texte1252.h"
#include "ui/images.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

/// In the order of `GenreGraphique`.
constexpr struct {
  unsigned commande;
  const char* nom;
} genres[] = {
    {CmdAires, "Aires"},
    {CmdAires3D, "Aires 3D"},
    {CmdBarresHorizontales, "Barres horizontales"},
    {CmdBarresHorizontales3D, "Barres horizontales 3D"},
    {CmdBarresVerticales, "Barres verticales"},
    {CmdBarresVerticales3D, "Barres verticales 3D"},
    {CmdCourbes, "Courbes"},
    {CmdCourbes3D, "Courbes 3D"},
    {CmdNuage, "Nuages de points (XY)"},
    {CmdSurface, "Surface 3D"},
    {CmdSecteurs, "Secteurs"},
    {CmdSecteurs3D, "Secteurs 3D"},
};
static_assert(std::size(genres) == NbGenresGraphique);
constexpr int largeurLibelle = 90, largeurValeur = 110;
constexpr int hauteursValeurs = 15;  ///< width of the table, in heights of the font

}  // namespace

CGraphWinView::CGraphWinView(ContexteUi& contexte, std::unique_ptr<CGraphWinDoc> document)
    : Vue(contexte, Texte(TitreGraphique), 0),
      m_document(std::move(document)),
      m_graphique(new WidgetGraphique),
      m_valeurs(new TableListe(contexte)),
      m_genres(new EditeurChoix) {
  const SerieGraphique& serie = m_document->Serie();
  if (!EstVide(serie.titre)) setWindowTitle(TexteQ(FormatTitreGraphique, {CompacteTexte(serie.titre)}));
  setWindowIcon(Image("graphiques"));
  m_graphique->setObjectName(u"graphique"_s);
  m_valeurs->setObjectName(u"valeurs"_s);
  m_valeurs->setAccessibleName(u"Valeurs du graphique"_s);
  m_genres->setObjectName(u"genre"_s);
  auto* libelle = new QLabel(u"Genre &du graphique :"_s);
  libelle->setBuddy(m_genres);
  m_genres->setAccessibleName(u"Genre du graphique"_s);
  for (const auto& genre : genres) m_genres->Ajoute(genre.nom);
  m_valeurs->Suit<PointGraphique>(
      {{serie.evolution ? "Mois" : "Compte", largeurLibelle,
        [](const PointGraphique& p) { return p.libelle; }},
       {"Montant", largeurValeur,
        [euro = serie.euro](const PointGraphique& p) { return TexteValeur(p.valeur, euro); }, Cote::Droite}},
      serie.points);
  m_valeurs->Relit(-1);

  auto* haut = new QHBoxLayout;
  haut->addWidget(libelle);
  haut->addWidget(m_genres);
  haut->addStretch();
  auto* partage = new QSplitter;
  partage->addWidget(m_graphique);
  partage->addWidget(m_valeurs);
  partage->setStretchFactor(0, 1);
  partage->setSizes({sizeHint().width(), fontMetrics().height() * hauteursValeurs});
  partage->setChildrenCollapsible(false);
  auto* pile = new QVBoxLayout(this);
  pile->addLayout(haut);
  pile->addWidget(partage, 1);
  setFocusProxy(m_graphique);

  connect(m_genres, &QComboBox::activated, this,
          [this](int rang) { PoseGenre(static_cast<GenreGraphique>(rang)); });
  connect(m_graphique, &WidgetGraphique::PointChoisi, this, [this](int point) {
    if (point >= 0) m_valeurs->Relit(point);
  });
  connect(m_valeurs, &TableListe::SelectionChangee, this,
          [this] { m_graphique->Choisit(m_valeurs->RangChoisi()); });
  DeclareCommandes();
  const GenreGraphique genre = GenreRetenu(App());
  m_graphique->Pose(serie, genre);
  m_genres->setCurrentIndex(static_cast<int>(genre));
}

CGraphWinView::~CGraphWinView() = default;

void CGraphWinView::DeclareCommandes() {
  for (int i = 0; i < NbGenresGraphique; ++i) {
    const auto genre = static_cast<GenreGraphique>(i);
    Declare({{genres[i].commande, [this, genre] { PoseGenre(genre); },
              [this, genre] { return m_graphique->Genre() != genre; },
              [this, genre] { return m_graphique->Genre() == genre; }}});
  }
  Declare({{CmdCopier,
            [this] {
              if (m_valeurs->hasFocus())
                m_document->CopieValeurs();
              else
                m_document->Copie(*m_graphique);
            }},
           {CmdCopierImage, [this] { m_document->CopieImage(*m_graphique); }},
           {CmdCopierValeurs, [this] { m_document->CopieValeurs(); }},
           {CmdExporterGraphique, [this] { m_document->Exporte(*m_graphique); }}});
  SurImpression([this](bool apercu) {
    m_document->Imprime(m_graphique->Genre(), apercu, this, [this] { Restaure(); });
  });
}

void CGraphWinView::PoseGenre(GenreGraphique genre) {
  m_graphique->Pose(m_document->Serie(), genre);
  m_genres->setCurrentIndex(static_cast<int>(genre));
  if (!RetientGenre(App(), genre)) DitEchecReglages(App());
  Q_EMIT EtatChange();
}

void CGraphWinView::Charge() {
  Vue::Charge();
  m_graphique->setFocus();  // not the list above it, where an arrow key would change the kind
}

void CGraphWinView::AppliqueDessin() { m_valeurs->ActualisePreferences(); }

void CGraphWinView::Restaure() {
  QWidget* cadre = parentWidget();
  if (cadre && cadre->isMinimized()) cadre->showNormal();
}

QSize CGraphWinView::sizeHint() const { return fontMetrics().height() * QSize(62, 34); }

void CGraphWinView::contextMenuEvent(QContextMenuEvent* evenement) {
  std::vector<unsigned> numeros;
  for (const auto& genre : genres) numeros.push_back(genre.commande);
  for (const unsigned numero :
       {0u, unsigned{CmdCopierImage}, unsigned{CmdCopierValeurs}, unsigned{CmdExporterGraphique}, 0u,
        unsigned{CmdImprimer}, unsigned{CmdApercu}})
    numeros.push_back(numero);
  Q_EMIT MenuDemande(evenement->globalPos(), numeros);
}

void OuvreGraphique(ContexteUi& contexte, Impressions& impressions, const std::function<void(Vue*)>& montre) {
  auto document = std::make_unique<CGraphWinDoc>(contexte, impressions);
  if (document->OnNewDocument()) montre(new CGraphWinView(contexte, std::move(document)));
}

}  // namespace fenlor

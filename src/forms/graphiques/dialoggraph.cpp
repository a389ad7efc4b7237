#include "forms/graphiques/dialoggraph.h"

#include <algorithm>

#include "core/erreurssaisie.h"
#include "forms/reports/textes.h"
#include "store/texte1252.h"
#include "ui/curseurattente.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int LargeurListe = 52, LignesListe = 12;  ///< characters, rows

std::string MotDuGroupe(i16 type) {
  switch (type) {
    case Recette:
      return Texte(MotGroupeComptes[0]);
    case Depense:
      return Texte(MotGroupeComptes[1]);
    case Tresorerie:
      return Texte(MotGroupeComptes[2]);
    default:
      return Texte(MotGroupeComptes[3]);
  }
}

}  // namespace

ListeComptesGraphique::ListeComptesGraphique(ContexteUi& contexte, const std::vector<CompteGraphique>& lignes)
    : CZNListCtrl(contexte), m_lignes(lignes) {
  setSelectionMode(ExtendedSelection);
  Suit<CompteGraphique>(
      {{"Compte", 30,
        [](const CompteGraphique& c) { return c.compte.empty() ? MotDuGroupe(c.type) : c.court; }},
       {"Désignation"_w, 70, [](const CompteGraphique& c) { return c.designation; }}},
      m_lignes);
}

TableListe::Allure ListeComptesGraphique::AllureDe(int ligne) const {
  Allure allure = CZNListCtrl::AllureDe(ligne);
  const auto rang = static_cast<std::size_t>(Modele().DonneeDe(ligne));
  allure.police.setBold(rang < m_lignes.size() && m_lignes[rang].compte.empty());
  return allure;
}

CDialogGraph::CDialogGraph(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, u"Choix d'un graphique"_s, "DialogGraph", parent),
      m_cadre(LitCadrePeriode(contexte.App)),
      m_comptes(contexte, m_lignes) {
  App().Dit(LitComptesGraphique(App(), m_lignes));
  m_comptes.Relit(-1);
  m_comptes.setAccessibleName(u"Comptes"_s);
  const QFontMetrics mesure(font());
  m_comptes.setMinimumSize(LargeurListe * mesure.averageCharWidth(), LignesListe * mesure.height());
  Formulaire formulaire{Zone()};
  formulaire.Groupe(u"Comptes"_s).Seul(m_comptes, "comptes", true).FinGroupe();
  DeclarePeriode(formulaire);
  formulaire.Groupe(u"Type"_s).Case(m_types[0], u"E&volution"_s, "evolution");
  m_types[1].setText(u"&Comparaison"_s);
  formulaire.ACote(m_types[1], "comparaison").FinGroupe();
  m_types[0].setChecked(true);
  Boutons(Mode::Simple);
  AjouteAide();
  m_comptes.setFocus();
}

CDialogGraph::~CDialogGraph() = default;

void CDialogGraph::DeclarePeriode(Formulaire& formulaire) {
  const auto bouton = [&](Periode periode, const QString& texte, const char* nom) -> Formulaire& {
    return formulaire.Case(Bouton(periode), texte, nom).SurChangement([this, periode] {
      Applique(periode);
      if (periode == Periode::Libre) Focalise(m_du);
    });
  };
  formulaire.Groupe(u"Période"_s);
  bouton(Periode::Aujourdhui, u"Au&jourd'hui"_s, "aujourdhui");
  bouton(Periode::Mois, u"Le &mois"_s, "mois");
  bouton(Periode::Semaine, u"La &semaine"_s, "semaine");
  bouton(Periode::Exercice, u"L'&exercice"_s, "exercice");
  bouton(Periode::Libre, u"La &période :"_s, "periode")
      .Suite(u"du :"_s, m_du, "du")
      .Limite(10)
      .Suite(u"au :"_s, m_au, "au")
      .Limite(10)
      .FinGroupe();
  m_du.PoseReference(m_cadre.debut);
  m_au.PoseReference(m_cadre.debut);
  for (const Periode periode : {Periode::Aujourdhui, Periode::Semaine, Periode::Mois})
    Bouton(periode).setEnabled(m_cadre.Contient());
  const Periode retenue = PeriodeRetenue(App(), m_cadre);
  Bouton(retenue).setChecked(true);
  Applique(retenue);
}

void CDialogGraph::Applique(Periode periode) {
  const BornesPeriode bornes = BornesEntieres(m_cadre, periode);
  m_du.Pose(bornes.du);
  m_au.Pose(bornes.au);
  m_du.setEnabled(periode == Periode::Libre);
  m_au.setEnabled(periode == Periode::Libre);
}

bool CDialogGraph::Demande() { return Execute() && !m_serie.points.empty(); }

bool CDialogGraph::Enregistre() {
  DemandeGraphique demande;
  m_serie = {};
  if (!m_du.Valeur()) return Refuse(ErrDateIncorrecte, m_du);
  if (!m_au.Valeur()) return Refuse(ErrDateIncorrecte, m_au);
  demande.du = m_du.Valeur();
  demande.au = m_au.Valeur();
  if (demande.au < demande.du) return true;  // the form ends, and there is no chart
  for (const int ligne : m_comptes.LignesChoisies())
    demande.choisis.push_back(m_lignes[static_cast<std::size_t>(m_comptes.Modele().DonneeDe(ligne))]);
  demande.comparaison = m_types[1].isChecked();
  if (const Refus refus = ControleGraphique(demande)) return Refuse(refus);
  const CurseurAttente attente;
  return Refuse(FaitSerieGraphique(App(), demande, m_serie));
}

}  // namespace fenlor

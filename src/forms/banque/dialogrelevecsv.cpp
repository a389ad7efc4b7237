#include "forms/banque/dialogrelevecsv.h"

#include <algorithm>

#include "banque/textes.h"
#include "core/valeurs.h"
#include "store/cumuls.h"
#include "ui/tableliste.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::size_t LignesMontrees = 30, ColonnesMontrees = 20;
constexpr int LignesVues = 13;
constexpr std::size_t LargeurMin = 11, LargeurMax = 40;  ///< of a column, in characters
constexpr const char* Jeux[] = {"UTF-8", "Windows-1252", "UTF-16"};
constexpr std::pair<const char*, char> Separateurs[] = {
    {"Point-virgule", ';'}, {"Virgule", ','}, {"Tabulation", '\t'}, {"Barre verticale", '|'}};
constexpr const char* Ordres[] = {"Jour, mois, année", "Année, mois, jour", "Mois, jour, année"};

struct ChampColonne {
  QString libelle;
  const char* nom;
};
const std::array<ChampColonne, NbColonnesReleve>& Champs() {
  static const std::array<ChampColonne, NbColonnesReleve> champs{{{u"Da&te :"_s, "date"},
                                                                  {u"Date de &valeur :"_s, "valeur"},
                                                                  {u"&Libellé :"_s, "libelle"},
                                                                  {u"S&uite du libellé :"_s, "detail"},
                                                                  {u"&Montant :"_s, "montant"},
                                                                  {u"Dé&bit :"_s, "debit"},
                                                                  {u"Cré&dit :"_s, "credit"},
                                                                  {u"&Sens (D ou C) :"_s, "sens"},
                                                                  {u"Ré&férence :"_s, "reference"},
                                                                  {u"Monna&ie :"_s, "monnaie"},
                                                                  {u"Compte :"_s, "compte"}}};
  return champs;
}

std::string Cellule(const LigneCsv& ligne, std::size_t colonne) {
  return colonne < ligne.cellules.size() ? LibelleNet(ligne.cellules[colonne]) : std::string();
}

/// What most rows need: one long title in front of them takes no room from the others.
int LargeurDe(const std::vector<LigneCsv>& lignes, std::size_t colonne) {
  std::vector<std::size_t> tailles;
  for (const LigneCsv& ligne : lignes) tailles.push_back(Cellule(ligne, colonne).size());
  std::sort(tailles.begin(), tailles.end());
  const std::size_t taille = tailles.empty() ? 0 : tailles[tailles.size() * 9 / 10];
  return static_cast<int>(std::clamp(taille, LargeurMin, LargeurMax));
}

std::string NombreTexte(int nombre) { return std::to_string(nombre); }

}  // namespace

CDialogReleveCsv::CDialogReleveCsv(ContexteUi& contexte, const std::string& octets, FormeCsv& forme,
                                   QWidget* parent)
    : CZNDialog(contexte, TexteQ(TitreReleveCsv), "DialogReleveCsv", parent),
      m_octets(octets),
      m_forme(forme),
      m_table(new CZNListCtrl(contexte)) {
  Formulaire formulaire{Zone()};
  DeclareFichier(formulaire);
  formulaire.Seul(*m_table, "lignes", true);
  m_table->setAccessibleName(u"Premières lignes du fichier"_s);
  m_table->setMinimumHeight(LignesVues * m_table->fontMetrics().lineSpacing());
  DeclareColonnes(formulaire);
  formulaire.Champ(u"Résultat :"_s, m_resultat, "resultat");
  Boutons(Mode::Simple);
  AjouteAide();
  Pose(m_forme);
}

void CDialogReleveCsv::DeclareFichier(Formulaire& formulaire) {
  for (const char* jeu : Jeux) m_jeu.Ajoute(jeu);
  for (const auto& [nom, separateur] : Separateurs) m_separateur.Ajoute(nom, {separateur});
  m_decimale.Ajoute("Virgule", ",");
  m_decimale.Ajoute("Point", ".");
  for (const char* ordre : Ordres) m_ordre.Ajoute(De1252(QString::fromUtf8(ordre)));
  const auto redecoupe = [this] { Redecoupe(); };
  const auto montre = [this] { Montre(); };
  formulaire.Groupe(u"Fichier"_s)
      .Champ(u"&Caractères :"_s, m_jeu, "jeu")
      .SurChangement(redecoupe)
      .Suite(u"Sé&parateur :"_s, m_separateur, "separateur")
      .SurChangement(redecoupe)
      .Suite(u"Lignes d'en-têt&e :"_s, m_entete, "entete")
      .Limite(3)
      .SurChangement(montre)
      .Champ(u"Décim&ale :"_s, m_decimale, "decimale")
      .SurChangement(montre)
      .Suite(u"O&rdre des dates :"_s, m_ordre, "ordre")
      .SurChangement(montre)
      .FinGroupe();
}

void CDialogReleveCsv::DeclareColonnes(Formulaire& formulaire) {
  formulaire.Groupe(u"Colonnes"_s);
  for (std::size_t i = 0; i < NbColonnesReleve; ++i) {
    const auto& [libelle, nom] = Champs()[i];
    i % 2 ? formulaire.Suite(libelle, m_colonnes[i], nom) : formulaire.Champ(libelle, m_colonnes[i], nom);
    formulaire.SurChangement([this] { Montre(); });
  }
  formulaire
      .Case(m_inverse, u"Si&gnes inversés : les débits sont positifs, ou négatifs dans leur colonne"_s,
            "inverse")
      .SurChangement([this] { Montre(); })
      .FinGroupe();
}

void CDialogReleveCsv::Pose(const FormeCsv& forme) {
  m_jeu.setCurrentIndex(static_cast<int>(forme.jeu));
  m_separateur.Choisit({forme.separateur});
  m_decimale.Choisit({forme.decimale});
  m_ordre.setCurrentIndex(static_cast<int>(forme.ordre));
  m_entete.Pose(NombreTexte(static_cast<int>(forme.entete)));
  m_inverse.setChecked(forme.inverse);
  m_lignes = PremieresLignes(m_octets, forme, LignesMontrees);
  RemplitColonnes();
  for (std::size_t i = 0; i < NbColonnesReleve; ++i) m_colonnes[i].Choisit(NombreTexte(forme.colonnes[i]));
  Montre();
}

FormeCsv CDialogReleveCsv::Lue() const {
  FormeCsv forme;
  forme.jeu = static_cast<JeuTexte>(std::max(m_jeu.currentIndex(), 0));
  const std::string separateur = m_separateur.Valeur(), decimale = m_decimale.Valeur();
  forme.separateur = separateur.empty() ? ';' : separateur[0];
  forme.decimale = decimale.empty() ? ',' : decimale[0];
  forme.ordre = static_cast<OrdreDate>(std::max(m_ordre.currentIndex(), 0));
  forme.entete = static_cast<u32>(std::max(TexteVersEntier(m_entete.Valeur()), 0));
  forme.inverse = m_inverse.isChecked();
  for (std::size_t i = 0; i < NbColonnesReleve; ++i) {
    const std::string colonne = m_colonnes[i].Valeur();
    forme.colonnes[i] = colonne.empty() || colonne == "-1" ? -1 : TexteVersEntier(colonne);
  }
  return forme;
}

void CDialogReleveCsv::Redecoupe() {
  const FormeCsv forme = Lue();
  Pose(ProposeColonnes(m_octets, forme.jeu, forme.separateur));
}

void CDialogReleveCsv::RemplitColonnes() {
  std::size_t nombre = 0;
  for (const LigneCsv& ligne : m_lignes) nombre = std::max(nombre, ligne.cellules.size());
  nombre = std::min(nombre, ColonnesMontrees);
  const u32 entete = static_cast<u32>(std::max(TexteVersEntier(m_entete.Valeur()), 0));
  const auto titres = std::find_if(m_lignes.begin(), m_lignes.end(),
                                   [&](const LigneCsv& ligne) { return ligne.rang == entete; });
  TableColonnes<LigneCsv> colonnes;
  for (EditeurChoix& choix : m_colonnes) {
    choix.clear();
    choix.Ajoute("(aucune)", "-1");
  }
  for (std::size_t i = 0; i < nombre; ++i) {
    std::string titre = NombreTexte(static_cast<int>(i) + 1);
    if (titres != m_lignes.end() && i < titres->cellules.size())
      titre += " " + LibelleNet(titres->cellules[i]).substr(0, 24);
    for (EditeurChoix& choix : m_colonnes) choix.Ajoute(titre, NombreTexte(static_cast<int>(i)));
    const int largeur = std::max(LargeurDe(m_lignes, i), static_cast<int>(titre.size()) + 1);
    colonnes.emplace_back(titre, largeur, [i](const LigneCsv& ligne) { return Cellule(ligne, i); });
  }
  int total = 0;
  for (const auto& colonne : colonnes) total += colonne.largeur;
  for (auto& colonne : colonnes) colonne.largeur = colonne.largeur * 100 / total;
  m_table->Suit<LigneCsv>(colonnes, m_lignes);
  m_table->Relit(-1);
}

void CDialogReleveCsv::Montre() {
  const FormeCsv forme = Lue();
  const LectureReleve lecture = LitReleve(m_octets, FormatReleve::Csv, &forme);
  std::string exemple;
  if (!lecture.comptes.empty() && !lecture.comptes[0].operations.empty()) {
    const OperationBanque& o = lecture.comptes[0].operations[0];
    const std::string montant = FormatMontant(DeCentimes(o.sens ? o.centimes : -o.centimes), 2);
    exemple = TexteFormat(FormatExempleReleve, {StrDate(o.date), montant, o.libelle.substr(0, 40)});
  }
  m_resultat.Pose(TexteFormat(FormatResultatReleve,
                              {std::to_string(lecture.operations), std::to_string(lecture.plaintes.size())}) +
                  exemple);
}

bool CDialogReleveCsv::Enregistre() {
  const FormeCsv forme = Lue();
  if (!forme.Complete())
    return Refuse(Refus(PlainteColonnes, forme[ColonneReleve::Date] < 0 ? "date" : "montant"));
  m_forme = forme;
  m_forme.titres = EmpreinteTitres(m_octets, forme);
  return true;
}

}  // namespace fenlor

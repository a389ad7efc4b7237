#include "forms/banque/dialogreleve.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QPushButton>
#include <QTimer>

#include "banque/textes.h"
#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "forms/banque/dialogrelevecsv.h"
#include "store/cumuls.h"
#include "ui/tableliste.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr TexteFixe Sortes[] = {SorteNouvelle, SorteConnue, SorteHors, SorteIllisible};
constexpr int LargeurReleve = 106;  ///< characters: dates and amounts are whole
constexpr TexteFixe FiltresSortes[] = {FiltreNouvelles, FiltreConnues, FiltreHors, FiltreIllisibles};

std::string Montant(const LigneApercu& ligne, i16 sens) {
  if (ligne.sort == SortOperation::Illisible || ligne.operation.sens != sens) return {};
  return FormatMontant(DeCentimes(ligne.operation.centimes), 2);
}

template <auto membre>
int ParMembre(const LigneApercu& a, const LigneApercu& b) {
  return a.operation.*membre < b.operation.*membre ? -1 : a.operation.*membre > b.operation.*membre;
}

TableColonnes<LigneApercu> Colonnes() {
  const auto parRang = [](const LigneApercu& a, const LigneApercu& b) {
    return a.rang < b.rang ? -1 : a.rang > b.rang;
  };
  const auto texte = [](const LigneApercu& l) {
    return l.sort == SortOperation::Illisible ? l.raison : l.operation.libelle;
  };
  return {
      {Texte(ColonneSorte), 14, [](const LigneApercu& l) { return Texte(Sortes[static_cast<int>(l.sort)]); }},
      {Texte(ColonneRang), 8,
       [](const LigneApercu& l) { return l.rang ? std::to_string(l.rang) : std::string(); }, Cote::Droite,
       parRang},
      {"Date", 14, [](const LigneApercu& l) { return StrDate(l.operation.date); }, Cote::Gauche,
       ParMembre<&OperationBanque::date>},
      {Texte(ColonneDebit), 12, [](const LigneApercu& l) { return Montant(l, 0); }, Cote::Droite,
       ParMembre<&OperationBanque::centimes>},
      {Texte(ColonneCredit), 12, [](const LigneApercu& l) { return Montant(l, 1); }, Cote::Droite,
       ParMembre<&OperationBanque::centimes>},
      {Texte(ColonneTexteReleve), 40, texte}};
}

}  // namespace

CDialogReleve::CDialogReleve(ContexteUi& contexte, const std::string& octets, const QString& nom,
                             const std::string& compte, QWidget* parent)
    : CZNDialog(contexte, TexteQ(TitreReleve), "DialogReleve", parent),
      m_octets(octets),
      m_table(new CZNListCtrl(contexte)) {
  m_table->Suit<LigneApercu>(Colonnes(), m_lignes);
  m_table->PoseTriable(true);
  m_table->setAccessibleName(u"Opérations du fichier"_s);
  m_table->PoseTexteVide(u"Aucune ligne"_s);
  m_table->setMinimumWidth(LargeurReleve * fontMetrics().averageCharWidth());
  Formulaire formulaire{Zone()};
  formulaire.Champ(u"&Compte :"_s, m_compte, "compte")
      .SurChangement([this] { Lit(); })
      .Champ(u"Fichier :"_s, m_fichier, "fichier")
      .Champ(u"Compte du &fichier :"_s, m_numero, "numero")
      .SurChangement([this] { Prepare(); })
      .Champ(u"Solde du relevé :"_s, m_solde, "solde")
      .Champ(u"&Montrer :"_s, m_sorte, "sorte")
      .SurChangement([this] { Montre(); })
      .Seul(*m_table, "lignes", true)
      .Seul(m_avis, "avis");
  m_avis.setWordWrap(true);
  m_avis.setAccessibleName(u"Ce que dit le relevé"_s);
  m_fichier.setText(nom);
  m_compte.Charge(App());
  if (!compte.empty()) m_compte.Choisit(compte);
  m_tableau = &AjouteBouton(u"&Tableau..."_s, "tableau");
  connect(m_tableau, &QPushButton::clicked, this, &CDialogReleve::ChangeForme);
  Boutons(Mode::Simple);
  AjouteAide();
  Lit();
}

void CDialogReleve::showEvent(QShowEvent* evenement) {
  CZNDialog::showEvent(evenement);
  if (m_demande) QTimer::singleShot(0, this, &CDialogReleve::ChangeForme);
}

void CDialogReleve::Lit() {
  const FormatReleve format = DevineFormat(m_octets);
  m_tableau->setVisible(format == FormatReleve::Csv);
  m_demande = false;
  if (format == FormatReleve::Csv) {
    const auto retenue = FormeRetenue(App(), m_compte.Valeur(), m_octets);
    m_demande = !retenue;
    m_forme = retenue ? *retenue : ProposeCsv(m_octets);
  }
  m_lecture = LitReleve(m_octets, format, &m_forme);
  m_numero.clear();
  for (const std::string& nom : NomsComptes(m_lecture))
    m_numero.Ajoute(nom.empty() ? Texte(MotNonDit) : nom, nom);
  m_numero.setEnabled(m_lecture.comptes.size() > 1);
  Prepare();
}

void CDialogReleve::Prepare() {
  const std::string numero = m_lecture.comptes.size() > 1 ? m_numero.Valeur() : std::string();
  m_refus = PrepareReleve(App(), m_compte.Valeur(), m_lecture, numero, m_apercu);
  const int choisie = std::max(m_sorte.currentIndex(), 0);
  m_sorte.clear();
  m_sorte.Ajoute(TexteFormat(FiltreToutes, {std::to_string(m_apercu.lignes.size())}));
  for (std::size_t i = 0; i < m_apercu.nombres.size(); ++i)
    m_sorte.Ajoute(TexteFormat(FiltresSortes[i], {std::to_string(m_apercu.nombres[i])}));
  m_sorte.setCurrentIndex(choisie);
  std::string avis = m_refus ? m_refus.texte : std::string();
  const auto ajoute = [&](const std::string& phrase) { avis += (avis.empty() ? "" : "\r\n") + phrase; };
  if (!m_apercu.autreNumero.empty())
    ajoute(TexteFormat(AvisAutreCompte, {m_apercu.numero, m_apercu.autreNumero}));
  if (m_apercu.sansIdentifiants) ajoute(Texte(AvisSansIdentifiants));
  m_avis.Pose(avis);
  std::string solde;
  if (m_apercu.solde) {
    const f64 montant = DeCentimes(*m_apercu.solde);
    solde = montant == 0                ? std::string("0,00")
            : m_apercu.monnaie == "EUR" ? FormatEuro(montant)
                                        : FormatFranc(montant);
    if (m_apercu.dateSolde) solde = TexteFormat(FormatSoldeAu, {solde, StrDate(m_apercu.dateSolde)});
  }
  m_solde.Pose(solde.empty() ? Texte(MotNonDit) : solde);
  Montre();
}

void CDialogReleve::Montre() {
  const int sorte = m_sorte.currentIndex() - 1;
  m_lignes.clear();
  for (const LigneApercu& ligne : m_apercu.lignes)
    if (sorte < 0 || static_cast<int>(ligne.sort) == sorte) m_lignes.push_back(ligne);
  m_table->Relit(-1);
}

void CDialogReleve::ChangeForme() {
  m_demande = false;
  FormeCsv forme = m_forme;
  CDialogReleveCsv dialogue(Contexte(), m_octets, forme, this);
  if (!dialogue.Execute()) return;
  if (Refuse(RetientForme(App(), m_compte.Valeur(), forme))) {
    Lit();
    // What was answered for this file stands, the number of its first rows included.
    m_forme = forme;
    m_lecture = LitReleve(m_octets, FormatReleve::Csv, &m_forme);
    Prepare();
  }
}

bool CDialogReleve::Enregistre() {
  if (m_refus) return Refuse(m_refus);
  if (!Refuse(ImporteReleve(App(), m_apercu))) return false;
  std::vector<std::string> nombres;
  for (const std::size_t nombre : m_apercu.nombres) nombres.push_back(std::to_string(nombre));
  App().MessageId(BoutonsOk | IconeInformation, InfoReleveImporte,
                  {nombres[0], nombres[1], nombres[2], nombres[3]});
  return true;
}

bool ImporteFichierReleve(ContexteUi& contexte, std::string& compte, QWidget* parent) {
  if (!contexte.App.Dit(contexte.App.ControleEcriture())) return false;
  Parametres& reglages = contexte.App.Reglages;
  const QString dossier = Q(reglages.LitIni(Texte(SecReleves), Texte(CleDossierReleves)));
  const QString chemin =
      QFileDialog::getOpenFileName(parent, TexteQ(TitreReleve), dossier, TexteQ(FiltreFichiersReleve));
  if (chemin.isEmpty()) return false;
  // The next one will stand in the same folder; where it cannot be noted, the question begins elsewhere.
  const QString neuf = QFileInfo(chemin).absolutePath();
  if (neuf != dossier && TientEn1252(neuf))
    reglages.EcritIni(Texte(SecReleves), Texte(CleDossierReleves), De1252(neuf));
  std::string octets;
  if (!contexte.App.Dit(LitFichierReleve(contexte.App, QFile::encodeName(chemin).toStdString(), octets)))
    return false;
  CDialogReleve dialogue(contexte, octets, QFileInfo(chemin).fileName(), compte, parent);
  if (!dialogue.Execute()) return false;
  compte = dialogue.Compte();
  return true;
}

}  // namespace fenlor

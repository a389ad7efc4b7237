#include "reports/etatdetail.h"

#include <optional>
#include <utility>
#include <vector>

#include "core/textes.h"
#include "store/dates.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 tailleLot = 256;
constexpr unsigned erreurSansExercice = 3209;

/// First day of the bucket that a date falls into. A week ends with its month.
Date DateCentrale(Date date, int centralisation) {
  if (centralisation == ParJour) return date;
  Date premier = 0, dernier = 0;
  GetMonth(date, premier, dernier);
  if (centralisation == ParMois) return premier;
  Date lundi = 0;
  GetWeek(date, lundi, dernier);
  return lundi < premier ? premier : lundi;
}

/// Lines of the journal by journal and date, copied in batches, so that whoever takes them may write.
/// `suite` returns false to stop. False: the journal could not be read, which has been told.
bool LignesDepuis(CFenlorApp& app, CLines& lignes, i16 journal, Date du,
                  const std::function<bool(const Line&)>& suite) {
  std::vector<Line> lot;
  lot.reserve(tailleLot);
  std::string debut = MakeJournalKey1(static_cast<u16>(journal), du, 0, 0, {}, 0);
  do {
    lot.clear();
    const auto retient = [&lot](Position, const void* rec) {
      lot.push_back(*static_cast<const Line*>(rec));
      return lot.size() < tailleLot;
    };
    if (!app.Magasin.QVParcoursCle(lignes.NumCle, debut, {}, retient)) {
      lignes.Erreur(0, MessageLecture);
      return false;
    }
    for (const Line& ligne : lot)
      if (!suite(ligne)) return true;
    if (lot.empty()) break;
    const Line& l = lot.back();
    debut = MakeJournalKey1(static_cast<u16>(l.Journal), l.Date, l.Mouvement, l.Rang,
                            fenlor::LitTexte(l.Compte), l.Ligne);
    debut += '\0';
  } while (lot.size() == tailleLot);
  return true;
}

}  // namespace

class CEtatDetailDoc::Section {
 public:
  Section(CEtatDetailDoc& etat, Travail& travail, FichesComptes& fiches, i16 journal, int centralisation)
      : m_etat(etat),
        m_travail(travail),
        m_fiches(fiches),
        m_journal(journal),
        m_centralisation(centralisation),
        m_rangee(RangeeEtatDetail + Deux()),
        m_totalMois(TotalMoisEtatDetail + Deux()) {}

  bool Ecrit(CLines& lignes);

 private:
  unsigned Deux() const { return m_etat.AfficheDouble() ? 1 : 0; }
  bool EcritTitre();
  bool FermeEntree();
  bool EcritLigne(const Line& ligne, bool premiere);
  bool Centralise(const Line& ligne);
  bool EcritCentral();
  /// Begins a month, and ends the one in hand.
  bool Avance(Date date);
  bool FermeMois();
  bool EcritRangee(const std::string& ligne, const std::string& date, std::string_view libelle,
                   const FichesComptes::Fiche& fiche, const SommesEtat& sommes);
  /// Tells why the store failed; false.
  bool Echec();

  CEtatDetailDoc& m_etat;
  Travail& m_travail;
  FichesComptes& m_fiches;
  const i16 m_journal;
  const int m_centralisation;
  const FormatEtat m_rangee, m_totalMois;

  Date m_mois = 0;  ///< in hand; 0: none yet
  SommesEtat m_sommesMois, m_sommes;
  u32 m_mouvement = 0;      ///< in hand; 0: none
  std::string m_principal;  ///< income or expense account last met
  std::optional<FichierCentral> m_central;
  std::string m_tampon;
};

bool CEtatDetailDoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::GenreEtPeriode, TitreEtatDetail)) return false;
  SetEtatEntete(EnteteEtatDetail + (AfficheDouble() ? 2u : AnneeEuro() ? 1u : 0u));
  SetEtatPied(PiedEtatDetail);
  if (App.PathExercice.empty()) return App.ReportErreur(erreurSansExercice);
  CLines lignes(App, {});
  if (!lignes.OpenFile()) return false;
  FichesComptes fiches(App);
  const u32 nombre = App.Magasin.QVNumberOfKey(lignes.NumCle);
  Travail travail(*this, AvancementEtatDetail, nombre);
  bool premiere = true;
  const auto section = [&](int genre, i16 journal, int centralisation) {
    if (m_criteres.genre != EtatToutes && m_criteres.genre != genre) return true;
    if (!std::exchange(premiere, false)) travail.Recommence(nombre);
    return Section(*this, travail, fiches, journal, centralisation).Ecrit(lignes) &&
           (journal == JournalOD || EcritEtat("\\P") >= 0);
  };
  return section(EtatRecettes, JournalRecettes, m_criteres.centralisation) &&
         section(EtatDepenses, JournalDepenses, Detaillee) && section(EtatOD, JournalOD, Detaillee);
}

bool CEtatDetailDoc::Section::Ecrit(CLines& lignes) {
  if (m_centralisation != Detaillee && !m_central.emplace(m_etat.App).Cree()) m_central.reset();
  if (!EcritTitre() || m_etat.EcritEtat("\\H") < 0) return false;
  bool suit = true;
  const auto ligne = [&](const Line& l) {
    const bool premiere = l.Mouvement != m_mouvement;
    if (premiere && !(suit = FermeEntree())) return false;
    if (l.Date > m_etat.m_criteres.au) return false;
    m_mouvement = l.Mouvement;
    if (l.Journal == m_journal)
      suit = m_centralisation == Detaillee ? EcritLigne(l, premiere) : Centralise(l);
    return suit = suit && m_travail.Pas();
  };
  return LignesDepuis(m_etat.App, lignes, m_journal, m_etat.m_criteres.du, ligne) && suit && FermeEntree() &&
         (!m_central || EcritCentral()) && FermeMois() &&
         m_etat.EcritTotaux(TotalEtatDetail + Deux(), m_sommes) && m_etat.EcritEtat("\\X") >= 0;
}

bool CEtatDetailDoc::Section::EcritTitre() {
  const auto rang = static_cast<unsigned>(m_journal - JournalRecettes);
  const CriteresEtat& criteres = m_etat.m_criteres;
  return m_etat.EtatPrintf(SectionEtatDetail + rang,
                           {StrDate(criteres.du), StrDate(criteres.au),
                            Texte(MotCentralisation + static_cast<unsigned>(m_centralisation))}) >= 0;
}

/// The footer's rule follows each entry, also one of another journal that is passed over.
bool CEtatDetailDoc::Section::FermeEntree() {
  return std::exchange(m_mouvement, 0) == 0 || m_etat.EcritEtat("\\F") >= 0;
}

bool CEtatDetailDoc::Section::EcritLigne(const Line& ligne, bool premiere) {
  if (!Avance(ligne.Date)) return false;
  SommesEtat sommes;
  sommes.Ajoute(ligne);
  m_sommesMois.Ajoute(sommes);
  m_sommes.Ajoute(sommes);
  const std::string_view libelle =
      TexteSur({ligne.Libelle, strnlen(ligne.Libelle, sizeof ligne.Libelle)}, m_tampon);
  const std::string_view compte(ligne.Compte, strnlen(ligne.Compte, sizeof ligne.Compte));
  return EcritRangee(premiere ? std::to_string(ligne.Ligne) : std::string(),
                     premiere ? StrDate(ligne.Date) : std::string(), libelle, m_fiches.Compte(compte),
                     sommes);
}

bool CEtatDetailDoc::Section::Centralise(const Line& ligne) {
  SommesEtat sommes;
  sommes.Ajoute(ligne);
  m_sommes.Ajoute(sommes);
  const std::string compte = fenlor::LitTexte(ligne.Compte);
  const bool principal = ligne.TypeCompte == Recette || ligne.TypeCompte == Depense;
  if (principal) m_principal = compte;
  if (!m_central) return true;
  return m_central->Ajoute(DateCentrale(ligne.Date, m_centralisation), m_principal,
                           principal ? std::string() : compte, sommes) ||
         Echec();
}

bool CEtatDetailDoc::Section::EcritCentral() {
  m_travail.Recommence(m_central->NombreRangees());
  bool principalVu = false, suit = true;
  const auto rangee = [&](const LigneCentrale& r) {
    if (!(suit = Avance(r.date))) return false;
    const bool principal = r.compte2[0] == '\0';
    if (principal && std::exchange(principalVu, true) && !(suit = m_etat.EcritEtat("\\F") >= 0)) return false;
    const SommesEtat sommes{r.debitFranc, r.debitEuro, r.creditFranc, r.creditEuro};
    m_sommesMois.Ajoute(sommes);
    const FichesComptes::Fiche& fiche = m_fiches.Compte(fenlor::LitTexte(principal ? r.compte1 : r.compte2));
    std::string date;
    if (principal) date = m_centralisation == ParMois ? StrMonth(r.date) : StrDate(r.date);
    return suit = EcritRangee({}, date, fiche.designation, fiche, sommes) && m_travail.Pas();
  };
  const bool lu = m_central->Parcourt(rangee) || Echec();
  m_central.reset();
  return lu && suit;
}

bool CEtatDetailDoc::Section::Avance(Date date) {
  if (m_mois != 0 && MoisDe(m_mois) == MoisDe(date)) return true;
  if (m_mois != 0 && (!FermeMois() || m_etat.EcritEtat("\\F") < 0)) return false;
  m_mois = date;
  return true;
}

bool CEtatDetailDoc::Section::FermeMois() {
  if (m_mois == 0) return true;
  const ColonnesEtat c = m_etat.ColonnesTotaux(std::exchange(m_sommesMois, {}));
  return m_etat.EtatPrintf(m_totalMois, {StrMonth(m_mois), c[0], c[1], c[2], c[3]}) >= 0;
}

bool CEtatDetailDoc::Section::EcritRangee(const std::string& ligne, const std::string& date,
                                          std::string_view libelle, const FichesComptes::Fiche& fiche,
                                          const SommesEtat& sommes) {
  const ColonnesEtat c = m_etat.ColonnesTotaux(sommes);
  return m_etat.EtatPrintf(m_rangee,
                           {ligne, date, libelle, fiche.rubrique, fiche.court, c[0], c[1], c[2], c[3]}) >= 0;
}

bool CEtatDetailDoc::Section::Echec() {
  const QVAPI& magasin = m_etat.App.Magasin;
  m_etat.App.Boite.Erreur(ErrEtatEcriture,
                          TexteFormat(ErrEtatEcriture, {magasin.QVErreurTexte(magasin.QVFileErrorCode())}));
  return false;
}

}  // namespace fenlor

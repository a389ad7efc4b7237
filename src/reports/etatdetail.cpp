#include "reports/etatdetail.h"

#include <cassert>
#include <optional>
#include <utility>
#include <vector>

#include "core/erreursexercice.h"
#include "core/fiche.h"
#include "reports/textes.h"
#include "store/dates.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 tailleLot = 256;

/// First day of the bucket that a date falls into. A week ends with its month.
Date DateCentrale(Date date, int centralisation) {
  if (centralisation == ParJour) return date;
  Date premier = 0, dernier = 0;
  GetMonth(date, premier, dernier);
  if (centralisation == ParMois) return premier;
  assert(centralisation == ParSemaine);
  Date lundi = 0;
  GetWeek(date, lundi, dernier);
  return lundi < premier ? premier : lundi;
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
        m_rangee(RangeeEtatDetail[Deux()]),
        m_totalMois(TotalMoisEtatDetail[Deux()]) {}

  void Ecrit(CLines& lignes);

 private:
  unsigned Deux() const { return m_etat.AfficheDouble() ? 1 : 0; }
  /// Lines of the journal from the first day on, copied in batches, for whoever takes them may write.
  void Parcourt(CLines& lignes);
  /// False: that was the last one.
  bool Traite(const Line& ligne);
  void EcritTitre();
  void FermeEntree();
  void EcritLigne(const Line& ligne, bool premiere);
  void Centralise(const Line& ligne);
  void EcritCentral();
  /// Begins a month, and ends the one in hand.
  void Avance(Date date);
  void FermeMois();
  void EcritRangee(const std::string& ligne, const std::string& date, std::string_view libelle,
                   const FichesComptes::Fiche& fiche, const SommesEtat& sommes);
  /// The work file failed.
  void Echec();

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

void CEtatDetailDoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::GenreEtPeriode, TitreEtatDetail)) return;
  SetEtatEntete(EnteteEtatDetail[(AfficheDouble() ? 2u : AnneeEuro() ? 1u : 0u)]);
  SetEtatPied(PiedEtatDetail);
  CLines lignes(App, {});
  if (App.PathExercice.empty()) return Abandonne(Refus(ErrAucunExercice));
  if (!lignes.OpenFile()) return Abandonne(EchecFichier());
  FichesComptes fiches(App);
  const u32 nombre = App.Magasin.QVNumberOfKey(lignes.NumCle);
  Travail travail(*this, AvancementEtatDetail, nombre);
  bool premiere = true;
  const auto section = [&](int genre, i16 journal, int centralisation) {
    if (!EnCours() || (m_criteres.genre != EtatToutes && m_criteres.genre != genre)) return;
    if (!std::exchange(premiere, false)) travail.Recommence(nombre);
    Section(*this, travail, fiches, journal, centralisation).Ecrit(lignes);
    if (journal != JournalOD) EcritEtat("\\P");
  };
  section(EtatRecettes, JournalRecettes, m_criteres.centralisation);
  section(EtatDepenses, JournalDepenses, Detaillee);
  section(EtatOD, JournalOD, Detaillee);
}

void CEtatDetailDoc::Section::Ecrit(CLines& lignes) {
  if (m_centralisation != Detaillee && !m_central.emplace(m_etat.App).Cree()) m_central.reset();
  EcritTitre();
  m_etat.EcritEtat("\\H");
  Parcourt(lignes);
  FermeEntree();
  if (m_central) EcritCentral();
  FermeMois();
  m_etat.EcritTotaux(TotalEtatDetail[Deux()], m_sommes);
  m_etat.EcritEtat("\\X");
}

void CEtatDetailDoc::Section::Parcourt(CLines& lignes) {
  assert(m_mouvement == 0 && m_mois == 0);
  QVAPI& magasin = m_etat.App.Magasin;
  std::vector<Line> lot;
  lot.reserve(tailleLot);
  std::string debut = MakeJournalKey1(static_cast<u16>(m_journal), m_etat.m_criteres.du, 0, 0, {}, 0);
  const auto retient = [&lot](Position, const void* rec) {
    lot.push_back(*static_cast<const Line*>(rec));
    return lot.size() < tailleLot;
  };
  do {
    lot.clear();
    if (!magasin.QVParcoursCle(lignes.NumCle, debut, {}, retient)) {
      lignes.ErreurLecture();
      return m_etat.Abandonne(EchecFichier());
    }
    for (const Line& ligne : lot)
      if (!Traite(ligne)) return;
    if (lot.empty()) break;
    const Line& l = lot.back();
    debut = MakeJournalKey1(static_cast<u16>(l.Journal), l.Date, l.Mouvement, l.Rang,
                            fenlor::LitTexte(l.Compte), l.Ligne);
    debut += '\0';
  } while (lot.size() == tailleLot);
}

bool CEtatDetailDoc::Section::Traite(const Line& ligne) {
  const bool premiere = ligne.Mouvement != m_mouvement;
  if (premiere) FermeEntree();
  if (ligne.Date > m_etat.m_criteres.au) return false;
  m_mouvement = ligne.Mouvement;
  if (ligne.Journal == m_journal)
    m_centralisation == Detaillee ? EcritLigne(ligne, premiere) : Centralise(ligne);
  m_travail.Pas();
  return m_etat.EnCours();
}

void CEtatDetailDoc::Section::EcritTitre() {
  assert(m_journal >= JournalRecettes && m_journal <= JournalOD);
  const auto rang = static_cast<unsigned>(m_journal - JournalRecettes);
  assert(m_centralisation >= Detaillee &&
         static_cast<unsigned>(m_centralisation) < std::size(MotCentralisation));
  const CriteresEtat& criteres = m_etat.m_criteres;
  m_etat.EtatPrintf(SectionEtatDetail[rang],
                    {StrDate(criteres.du), StrDate(criteres.au),
                     Texte(MotCentralisation[static_cast<unsigned>(m_centralisation)])});
}

/// The footer's rule follows each entry, also one of another journal that is passed over.
void CEtatDetailDoc::Section::FermeEntree() {
  if (std::exchange(m_mouvement, 0) != 0) m_etat.EcritEtat("\\F");
}

void CEtatDetailDoc::Section::EcritLigne(const Line& ligne, bool premiere) {
  Avance(ligne.Date);
  SommesEtat sommes;
  sommes.Ajoute(ligne);
  m_sommesMois.Ajoute(sommes);
  m_sommes.Ajoute(sommes);
  const std::string_view libelle =
      TexteSur({ligne.Libelle, strnlen(ligne.Libelle, sizeof ligne.Libelle)}, m_tampon);
  const std::string_view compte(ligne.Compte, strnlen(ligne.Compte, sizeof ligne.Compte));
  EcritRangee(premiere ? std::to_string(ligne.Ligne) : std::string(),
              premiere ? StrDate(ligne.Date) : std::string(), libelle, m_fiches.Compte(compte), sommes);
}

void CEtatDetailDoc::Section::Centralise(const Line& ligne) {
  SommesEtat sommes;
  sommes.Ajoute(ligne);
  m_sommes.Ajoute(sommes);
  const std::string compte = fenlor::LitTexte(ligne.Compte);
  const bool principal = ligne.TypeCompte == Recette || ligne.TypeCompte == Depense;
  if (principal) m_principal = compte;
  if (m_central && !m_central->Ajoute(DateCentrale(ligne.Date, m_centralisation), m_principal,
                                      principal ? std::string() : compte, sommes))
    Echec();
}

void CEtatDetailDoc::Section::EcritCentral() {
  assert(m_central && m_mouvement == 0);
  m_travail.Recommence(m_central->NombreRangees());
  bool principalVu = false;
  const auto rangee = [&](const LigneCentrale& r) {
    Avance(r.date);
    const bool principal = r.compte2[0] == '\0';
    if (principal && std::exchange(principalVu, true)) m_etat.EcritEtat("\\F");
    const SommesEtat sommes{r.debitFranc, r.debitEuro, r.creditFranc, r.creditEuro};
    m_sommesMois.Ajoute(sommes);
    const FichesComptes::Fiche& fiche = m_fiches.Compte(fenlor::LitTexte(principal ? r.compte1 : r.compte2));
    std::string date;
    if (principal) date = m_centralisation == ParMois ? StrMonth(r.date) : StrDate(r.date);
    EcritRangee({}, date, fiche.designation, fiche, sommes);
    m_travail.Pas();
    return m_etat.EnCours();
  };
  if (!m_central->Parcourt(rangee)) Echec();
  m_central.reset();
}

void CEtatDetailDoc::Section::Avance(Date date) {
  if (m_mois != 0 && MoisDe(m_mois) == MoisDe(date)) return;
  FermeMois();
  if (m_mois != 0) m_etat.EcritEtat("\\F");
  m_mois = date;
}

void CEtatDetailDoc::Section::FermeMois() {
  if (m_mois == 0) return;
  const ColonnesEtat c = m_etat.ColonnesTotaux(std::exchange(m_sommesMois, {}));
  m_etat.EtatPrintf(m_totalMois, {StrMonth(m_mois), c[0], c[1], c[2], c[3]});
}

void CEtatDetailDoc::Section::EcritRangee(const std::string& ligne, const std::string& date,
                                          std::string_view libelle, const FichesComptes::Fiche& fiche,
                                          const SommesEtat& sommes) {
  const ColonnesEtat c = m_etat.ColonnesTotaux(sommes);
  m_etat.EtatPrintf(m_rangee, {ligne, date, libelle, fiche.rubrique, fiche.court, c[0], c[1], c[2], c[3]});
}

void CEtatDetailDoc::Section::Echec() {
  const QVAPI& magasin = m_etat.App.Magasin;
  m_etat.Echoue(magasin.QVErreurTexte(magasin.QVFileErrorCode()));
}

}  // namespace fenlor

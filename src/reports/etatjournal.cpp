#include "reports/etatjournal.h"

#include <cassert>

#include "core/valeurs.h"
#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

char Marque(bool posee, char lettre) { return posee ? lettre : '.'; }

}  // namespace

void CEtatJournalDoc::SetCriteres(const DemandeListe& demande, bool comptable) {
  assert(demande.journal >= JournalRecettes && demande.journal <= JournalOD);
  m_demande = demande;
  m_comptable = comptable || demande.journal == JournalOD;
}

void CEtatJournalDoc::BuildEtat() {
  assert(m_demande.journal >= JournalRecettes && m_demande.journal <= JournalOD);
  m_total = {};
  m_compte = {};
  m_filtre.clear();
  PoseTitre(Texte(TitreJournal[static_cast<unsigned>(m_demande.journal - JournalRecettes)]));
  SetEtatEntete(EnteteEtatJournal[(m_comptable ? 1u : 0u)]);
  SetEtatPied(PiedEtatJournal);
  LivresEtat livres(App, *this);
  if (!livres.Ouvre()) return;
  const auto compte = [&](const Plan& plan) {
    m_filtre = fenlor::LitTexte(plan.Compte);
    m_compte = {fenlor::LitTexte(plan.Code), fenlor::LitTexte(plan.Rubrique), App.NumeroCourt(m_filtre),
                fenlor::LitTexte(plan.Designation)};
  };
  if (m_demande.journal != JournalOD && !m_demande.filtre.empty()) livres.Compte(m_demande.filtre, compte);
  DemandeListe demande = m_demande;
  demande.filtre = m_filtre;
  MoisJournal mois;
  if (!EnCours()) return;
  if (const Refus refus = ListeMois(App, demande, mois)) return Abandonne(refus);
  Travail travail(*this, AvancementEtatJournal, static_cast<u32>(mois.entrees.size()));
  EcritMois();
  EcritEtat("\\H");
  EntreeJournal entree;
  for (const EntreeListe& listee : mois.entrees) {
    if (!EnCours()) return;
    if (!LitEntreeJournal(App, listee.mouvement, m_comptable, m_filtre, entree)) return livres.EchecLecture();
    m_comptable ? EcritLignes(entree) : EcritEntree(entree);
    EcritEtat("\\F");
    travail.Pas();
  }
  EcritTotal();
  EcritEtat("\\X");
}

void CEtatJournalDoc::EcritMois() {
  const TexteFixe& format =
      (m_demande.journal == JournalOD ? MoisEtatJournalOD
                                      : MoisEtatJournal)[EstPartielle(m_demande.criteres)];
  EtatPrintf(format, {NomMois(Mois(m_demande.mois)), Annee(m_demande.mois),
                      m_filtre.empty() ? Texte(MotTousComptes) : EchappeEtat(m_compte.code)});
}

void CEtatJournalDoc::EcritEntree(const EntreeJournal& entree) {
  assert(entree.rangees.size() == 1);
  const RangeeJournal& r = entree.rangees.front();
  m_total.debitFranc += r.franc;
  m_total.debitEuro += r.euro;
  const bool filtre = !m_filtre.empty();
  EtatPrintf(
      RangeeEtatJournal[0],
      {entree.ligne, StrDate(entree.date), EchappeEtat(r.libelle), FormatFranc(r.franc), FormatEuro(r.euro),
       Marque(r.pointee, 'P'), Marque(r.remise, 'B'), Marque(r.rapprochee, 'R'), Marque(r.validee, 'V'),
       EchappeEtat(filtre ? m_compte.rubrique : r.rubrique), EchappeEtat(filtre ? m_compte.compte : r.compte),
       EchappeEtat(filtre ? m_compte.designation : r.designation)});
}

void CEtatJournalDoc::EcritLignes(const EntreeJournal& entree) {
  assert(!entree.rangees.empty());
  std::string ligne = std::to_string(entree.ligne), date = StrDate(entree.date);
  for (const RangeeJournal& r : entree.rangees) {
    const f64 debitFranc = r.credit ? 0 : r.franc, creditFranc = r.credit ? r.franc : 0;
    const f64 debitEuro = r.credit ? 0 : r.euro, creditEuro = r.credit ? r.euro : 0;
    if (m_filtre.empty() || r.compte == m_compte.compte)
      m_total.Ajoute(SommesEtat{debitFranc, debitEuro, creditFranc, creditEuro});
    EtatPrintf(RangeeEtatJournal[1],
               {ligne, date, EchappeEtat(r.libelle), FormatFranc(debitFranc), FormatFranc(creditFranc),
                FormatEuro(debitEuro), FormatEuro(creditEuro), Marque(r.pointee, 'P'), Marque(r.remise, 'B'),
                Marque(r.rapprochee, 'R'), Marque(r.validee, 'V'), EchappeEtat(r.rubrique),
                EchappeEtat(r.compte), EchappeEtat(r.designation)});
    ligne.clear();
    date.clear();
  }
}

void CEtatJournalDoc::EcritTotal() {
  const std::string debitFranc = FormatFranc(SommeNette(m_total.debitFranc));
  const std::string debitEuro = FormatEuro(SommeNette(m_total.debitEuro));
  if (!m_comptable) return EtatPrintf(TotalEtatJournal[0], {debitFranc, debitEuro});
  EtatPrintf(TotalEtatJournal[1], {debitFranc, FormatFranc(SommeNette(m_total.creditFranc)), debitEuro,
                                   FormatEuro(SommeNette(m_total.creditEuro))});
}

}  // namespace fenlor

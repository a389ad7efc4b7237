#include "classeur.h"

#include <algorithm>

#include "mesures.h"
#include "store/definitions.h"
#include "store/texte1252.h"

namespace fenlor::bench {

namespace {

std::string Raison(QVAPI& magasin) { return VersUtf8(magasin.QVErreurTexte(magasin.QVFileErrorCode())); }

}  // namespace

Classeur::Classeur(const std::string& dossier, Systeme* systeme) {
  OptionsQVAPI options;
  options.systeme = systeme;
  m_magasin = std::make_unique<QVAPI>(options);
  QVAPI& m = *m_magasin;
  m.FixeAujourdhui(FaitDate(31, 12, 2003));
  if (!m.SystemeFichiers().Existe(dossier)) m.SystemeFichiers().CreeDossier(dossier);
  if (!m.QVOpenSession(1) || !m.QVOpenCompta(dossier, "")) Echec("the practice does not open: " + Raison(m));
  const auto noms = m.ListeExercices();
  if (std::find(noms.begin(), noms.end(), "2003") == noms.end() &&
      !m.QVCreateExercice("2003", FaitDate(1, 1, 2003), FaitDate(31, 12, 2003), true, true)) {
    Echec("the exercice cannot be made: " + Raison(m));
  }
  if (!m.QVOpenExercice("2003") || !m.OpenPlan("") || !m.OpenJournal("")) {
    Echec("the exercice does not open: " + Raison(m));
  }
  m_perso = m.GetComptePerso();
  std::string cle;
  for (Position p = m.QVFirstKey(69, cle); p; p = m.QVNextKey(69, cle)) {
    Plan plan;
    if (!m.QVReadRec(FichierComptes, p, &plan)) Echec("an account cannot be read: " + Raison(m));
    const std::string compte = LitTexte(plan.Compte);
    if (plan.Type == Recette) m_recettes.push_back(compte);
    if (plan.Type == Depense) m_depenses.push_back(compte);
    if (plan.Type == Tresorerie && plan.TypeTresorerie == 1) m_banques.push_back(compte);
    if (plan.Type == Tva && m_taxe.empty()) m_taxe = compte;
  }
  if (m_recettes.empty() || m_depenses.empty() || m_banques.empty() || m_taxe.empty() || m_perso.empty()) {
    Echec("the chart lacks an account that the measures need");
  }
}

EcrSimple Classeur::Ecriture(unsigned i) const {
  // A cheap mixer: neighbours differ, every run is the same.
  u32 h = i * 2654435761u;
  h ^= h >> 15;
  h *= 2246822519u;
  h ^= h >> 13;
  const bool recette = h % 8 != 0;
  const auto& comptes = recette ? m_recettes : m_depenses;
  EcrSimple rec{};
  rec.Journal = recette ? JournalRecettes : JournalDepenses;
  rec.Genre = GenreSimple;
  rec.EstRecette = recette;
  rec.SaisieEuro = 1;
  rec.Ligne = i / 12 + 1;
  const unsigned jour = i / m_parJour % 336;
  rec.Date = FaitDate(1 + jour % 28, 1 + jour / 28, 2003);
  PoseTexte(rec.Libelle, recette ? "Consultations du jour" : "Achats et fournitures");
  PoseTexte(rec.Compte, comptes[(h >> 4) % comptes.size()]);
  PoseTexte(rec.CompteTresorerie, m_banques[(h >> 6) % m_banques.size()]);
  PoseTexte(rec.CompteTaxe, m_taxe);
  PoseTexte(rec.ComptePerso, m_perso);
  const f64 pro = static_cast<f64>(20 + (h >> 12) % 200);
  rec.TauxTaxe = 19.6;
  rec.TaxeEuro = pro * 0.25;
  rec.RepartitionEuro = pro;
  rec.MontantEuro = pro + 10;
  rec.TaxeFranc = rec.TaxeEuro * 4;
  rec.RepartitionFranc = rec.RepartitionEuro * 4;
  rec.MontantFranc = rec.MontantEuro * 4;
  return rec;
}

void Classeur::Ajoute(unsigned debut, unsigned fin) {
  QVAPI& m = *m_magasin;
  const std::string exercice = m.PathExercice();
  QVAPI::Unite unite(m);
  for (unsigned i = debut; i < fin; ++i) {
    EcrSimple rec = Ecriture(i);
    if (!m.AddEcrSimple(exercice, rec)) Echec("an entry is refused: " + Raison(m));
  }
  if (!unite.Valide()) Echec("the unit is undone: " + Raison(m));
}

void Classeur::Remplit(unsigned nbEcritures) {
  constexpr unsigned parUnite = 50'000;
  m_parJour = nbEcritures / 336 + 1;
  for (unsigned i = 0; i < nbEcritures; i += parUnite) Ajoute(i, std::min(i + parUnite, nbEcritures));
}

}  // namespace fenlor::bench

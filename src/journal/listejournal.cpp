#include "journal/listejournal.h"

#include <algorithm>
#include <cassert>
#include <map>
#include <unordered_map>
#include <utility>

#include "core/valeurs.h"
#include "journal/controles.h"
#include "store/cumuls.h"
#include "store/definitions.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u16 CleMois = 75;  ///< journal, date, entry, rank
constexpr u16 CleNumeroCompte = 69;

std::string_view CompteDe(const char (&champ)[11]) { return {champ, strnlen(champ, sizeof champ)}; }

/// What the criteria want to know about an account, read once a load.
struct FicheCritere {
  std::string court;
  std::string rubrique;
};
using FichesCritere = std::map<std::string, FicheCritere, std::less<>>;

struct SommeCentimes {
  i64 debitFranc = 0, creditFranc = 0, debitEuro = 0, creditEuro = 0;

  void Ajoute(const SommeCentimes& s) {
    debitFranc += s.debitFranc;
    creditFranc += s.creditFranc;
    debitEuro += s.debitEuro;
    creditEuro += s.creditEuro;
  }
  TotauxListe Totaux() const {
    return {DeCentimes(debitFranc), DeCentimes(creditFranc), DeCentimes(debitEuro), DeCentimes(creditEuro)};
  }
};

/// Takes the lines of one entry after the other and says of each entry whether it is of the list.
class Examen {
 public:
  Examen(CFenlorApp& app, const DemandeListe& demande)
      : m_app(app),
        m_demande(demande),
        m_filtre(demande.journal == JournalOD ? std::string() : demande.filtre),
        m_criteres(EstPartielle(demande.criteres)) {}

  /// Reads what the criteria need beside the lines, before the first one. False: the store failed.
  bool Prepare() {
    if (m_demande.criteres.ToutesRubriques) return true;
    return m_app.Magasin.QVParcoursCle(CleNumeroCompte, {}, {}, [this](Position, const void* rec) {
      const Plan& plan = *static_cast<const Plan*>(rec);
      Fiche(CompteDe(plan.Compte)).second.rubrique = LitTexte(plan.Rubrique);
      return true;
    });
  }
  /// The same for the lines of one entry.
  void Prepare(const std::vector<Line>& lignes) {
    if (m_demande.criteres.ToutesRubriques) return;
    for (const Line& ligne : lignes) {
      Plan plan;
      LitCompte(m_app, LitTexte(ligne.Compte), plan);
      Fiche(CompteDe(ligne.Compte)).second.rubrique = LitTexte(plan.Rubrique);
    }
  }

  void Commence(const Line& ligne) {
    m_mouvement = ligne.Mouvement;
    m_nombre = 0;
    m_validee = true;
    m_surFiltre = m_filtre.empty();
    m_somme = {};
    m_lignes.clear();
  }

  void Ajoute(const Line& ligne) {
    assert(m_mouvement == 0 || m_mouvement == ligne.Mouvement);
    ++m_nombre;
    if (!ligne.Validee) m_validee = false;
    const i64 franc = Centimes(ligne.MontantFranc), euro = Centimes(ligne.MontantEuro);
    if (m_filtre.empty()) {
      (ligne.Sens ? m_somme.creditFranc : m_somme.debitFranc) += franc;
      (ligne.Sens ? m_somme.creditEuro : m_somme.debitEuro) += euro;
    } else if (CompteDe(ligne.Compte) == m_filtre) {
      m_somme.Ajoute({franc, franc, euro, euro});
      m_surFiltre = true;
    }
    if (m_criteres) Retient(ligne);
  }

  u32 Mouvement() const { return m_mouvement; }
  u32 Nombre() const { return m_nombre; }
  const SommeCentimes& Somme() const { return m_somme; }

  /// Of the mode, the account and the criteria; journal and month are the walk's.
  bool Montre() const {
    if (m_nombre == 0 || !m_surFiltre) return false;
    if (!(m_demande.mode & (m_validee ? ListeValidees : ListeBrouillard))) return false;
    return !m_criteres || PasseCriteres(m_demande.criteres, m_filtre, m_lignes);
  }

 private:
  FichesCritere::value_type& Fiche(std::string_view compte) {
    auto trouvee = m_fiches.find(compte);
    if (trouvee == m_fiches.end()) {
      const std::string longue(compte);
      trouvee = m_fiches.emplace(longue, FicheCritere{m_app.NumeroCourt(longue), {}}).first;
    }
    return *trouvee;
  }

  void Retient(const Line& ligne) {
    const auto& [longue, fiche] = Fiche(CompteDe(ligne.Compte));
    LigneCritere& l = m_lignes.emplace_back();
    l.credit = ligne.Sens != 0;
    l.pointee = ligne.Pointee != 0;
    l.remise = ligne.Remise != 0;
    l.rapprochee = ligne.Rapprochee != 0;
    l.associee = (ligne.LienB >> 16) != 0;
    l.franc = ligne.MontantFranc;
    l.euro = ligne.MontantEuro;
    l.compte = longue;
    l.court = fiche.court;
    l.rubrique = fiche.rubrique;
    l.jour = Jour(ligne.Date);
  }

  CFenlorApp& m_app;
  const DemandeListe& m_demande;
  const std::string m_filtre;
  const bool m_criteres;
  FichesCritere m_fiches;

  u32 m_mouvement = 0;
  u32 m_nombre = 0;
  bool m_validee = true;
  bool m_surFiltre = true;
  SommeCentimes m_somme;
  std::vector<LigneCritere> m_lignes;
};

// ------------------------------------------------------------ Rows as drawn

/// A line of an entry, as far as its row shows it.
struct LigneLue {
  Line ligne;
  Plan plan;
  bool connu = false;  ///< in the chart
};

void PoseCompte(CFenlorApp& app, const std::string& compte, const Plan& plan, RangeeJournal& rangee) {
  rangee.rubrique = LitTexte(plan.Rubrique);
  rangee.compte = app.NumeroCourt(compte);
  rangee.designation = LitTexte(plan.Designation);
}

RangeeJournal RangeeDeLigne(CFenlorApp& app, const LigneLue& lue) {
  const Line& ligne = lue.ligne;
  RangeeJournal rangee;
  rangee.libelle = LitTexte(ligne.Libelle);
  rangee.franc = ligne.MontantFranc;
  rangee.euro = ligne.MontantEuro;
  rangee.credit = ligne.Sens != 0;
  rangee.pointee = ligne.Pointee != 0;
  rangee.remise = ligne.Remise != 0;
  rangee.rapprochee = ligne.Rapprochee != 0;
  rangee.validee = ligne.Validee != 0;
  PoseCompte(app, LitTexte(ligne.Compte), lue.plan, rangee);
  // A line of an opération diverse may have words of its own, which it keeps in its `Designation`; those of
  // any other line are the account's, as they were when it was written.
  const std::string designation = LitTexte(ligne.Designation);
  if (!lue.connu) {
    rangee.designation = designation;
  } else if (ligne.Role == RoleLibre && !designation.empty() && designation != rangee.designation) {
    rangee.libelle = designation;
  }
  return rangee;
}

bool EstTresorerie(const LigneLue& lue) {
  if (lue.ligne.Role == RoleTresorerie) return true;
  if (lue.ligne.Role != RoleLibre) return false;
  return (lue.connu ? lue.plan.Type : lue.ligne.TypeCompte) == Tresorerie;
}

/// The account that the row names: income or expense account of the entry, that of the personal share
/// when it has none, and of an opération diverse the first that is not treasury. Empty when there is none.
std::string ComptePrincipal(const std::vector<LigneLue>& lues) {
  assert(!lues.empty());
  const std::string compte = LitTexte(lues.front().ligne.ComptePrincipal);
  if (!compte.empty()) return compte;
  const auto premier = [&](auto&& convient) {
    const auto trouve = std::find_if(lues.begin(), lues.end(), convient);
    return trouve == lues.end() ? std::string() : LitTexte(trouve->ligne.Compte);
  };
  const std::string perso = premier([](const LigneLue& l) { return l.ligne.Role == RolePerso; });
  return !perso.empty() ? perso : premier([](const LigneLue& l) { return !EstTresorerie(l); });
}

RangeeJournal RangeeDEcriture(CFenlorApp& app, const std::vector<LigneLue>& lues, const std::string& filtre,
                              const EntreeJournal& entree) {
  assert(!lues.empty());
  RangeeJournal rangee;
  const Line& premiere = lues.front().ligne;
  rangee.libelle = LitTexte(premiere.Libelle);
  rangee.pointee = entree.pointee;
  rangee.validee = entree.validee;
  const bool credit = premiere.Journal != JournalRecettes;
  i64 franc = 0, euro = 0;
  unsigned tresoreries = 0;
  for (const LigneLue& lue : lues) {
    if (!EstTresorerie(lue)) continue;
    rangee.tresorerie = ++tresoreries > 1 ? "***" : LitTexte(lue.plan.Code).substr(0, 3);
    if (!filtre.empty() && CompteDe(lue.ligne.Compte) != filtre) continue;
    const i64 signe = (lue.ligne.Sens != 0) == credit ? 1 : -1;
    franc += signe * Centimes(lue.ligne.MontantFranc);
    euro += signe * Centimes(lue.ligne.MontantEuro);
    rangee.remise = rangee.remise || lue.ligne.Remise;
    rangee.rapprochee = rangee.rapprochee || lue.ligne.Rapprochee;
  }
  rangee.franc = DeCentimes(franc);
  rangee.euro = DeCentimes(euro);
  const std::string compte = ComptePrincipal(lues);
  Plan plan;
  LitCompte(app, compte, plan);
  PoseCompte(app, compte, plan, rangee);
  return rangee;
}

}  // namespace

namespace {

constexpr u16 CleCompteDate = 77;  ///< account, date of the line, entry

/// Balances of the account after each entry of a list that is in the order of date and entry.
bool PoseSoldes(CFenlorApp& app, const std::string& compte, std::vector<EntreeListe>& entrees) {
  Plan plan;
  if (entrees.empty() || !LitCompte(app, compte, plan)) return true;
  std::unordered_map<u32, EntreeListe*> parNumero;
  for (EntreeListe& entree : entrees) parNumero.emplace(entree.mouvement, &entree);
  i64 franc = Centimes(plan.SoldeInitialFranc), euro = Centimes(plan.SoldeInitialEuro);
  u32 courant = 0;
  const auto ferme = [&] {
    const auto entree = parNumero.find(courant);
    if (entree == parNumero.end()) return;
    entree->second->soldeFranc = DeCentimes(franc);
    entree->second->soldeEuro = DeCentimes(euro);
  };
  const auto suite = [&](Position, const void* rec) {
    const Line& ligne = *static_cast<const Line*>(rec);
    if (CompteDe(ligne.Compte) != compte) return false;
    if (ligne.Mouvement != courant) {
      ferme();
      courant = ligne.Mouvement;
    }
    franc += (ligne.Sens ? 1 : -1) * Centimes(ligne.MontantFranc);
    euro += (ligne.Sens ? 1 : -1) * Centimes(ligne.MontantEuro);
    return true;
  };
  const std::string debut = MakeJournalKey3(compte, 0, 0, 0, 0, 0);
  if (!app.Magasin.QVParcoursCle(CleCompteDate, debut, {}, suite)) return false;
  ferme();
  return true;
}

}  // namespace

Refus ListeMois(CFenlorApp& app, const DemandeListe& demande, MoisJournal& mois) {
  mois = {};
  if (app.PathExercice.empty()) return {};
  LivresOuverts livres;
  if (const Refus refus = livres.Ouvre(app)) return refus;
  Examen examen(app, demande);
  SommeCentimes somme;
  const auto termine = [&] {
    if (!examen.Montre()) return;
    mois.entrees.push_back({examen.Mouvement(), examen.Nombre()});
    assert(mois.entrees.back().lignes > 0);
    somme.Ajoute(examen.Somme());
  };
  const u16 journal = static_cast<u16>(demande.journal);
  const unsigned numeroMois = Mois(demande.mois);
  assert(demande.mode <= ListeToutes);
  const std::string debut = MakeJournalKey1(journal, demande.mois, 0, 0, {}, 0);
  const auto suite = [&](Position, const void* rec) {
    const Line& ligne = *static_cast<const Line*>(rec);
    if (Mois(ligne.Date) != numeroMois || ligne.Journal != demande.journal) return false;
    if (ligne.Mouvement != examen.Mouvement()) {
      termine();
      examen.Commence(ligne);
    }
    examen.Ajoute(ligne);
    return true;
  };
  if (!examen.Prepare() || !app.Magasin.QVParcoursCle(CleMois, debut, {}, suite)) {
    mois = {};
    return app.EchecMagasin();
  }
  termine();
  mois.totaux = somme.Totaux();
  if (demande.journal != JournalOD && !demande.filtre.empty() &&
      !PoseSoldes(app, demande.filtre, mois.entrees))
    return app.EchecMagasin();
  return {};
}

Refus TotauxEntrees(CFenlorApp& app, const DemandeListe& demande, const std::vector<u32>& mouvements,
                    TotauxListe& totaux) {
  totaux = {};
  if (mouvements.empty() || app.PathExercice.empty()) return {};
  LivresOuverts livres;
  if (const Refus refus = livres.Ouvre(app)) return refus;
  DemandeListe sansCriteres = demande;
  sansCriteres.criteres = {};
  Examen examen(app, sansCriteres);
  SommeCentimes somme;
  for (const u32 mouvement : mouvements) {
    examen.Commence({});
    if (!ParcoursEcriture(app, mouvement, [&](const Line& ligne) { return examen.Ajoute(ligne), true; }))
      return app.EchecMagasin();
    somme.Ajoute(examen.Somme());
  }
  totaux = somme.Totaux();
  return {};
}

Refus EstListee(CFenlorApp& app, const DemandeListe& demande, u32 mouvement, bool& listee) {
  listee = false;
  if (app.PathExercice.empty()) return {};
  LivresOuverts livres;
  if (const Refus refus = livres.Ouvre(app)) return refus;
  std::vector<Line> lignes;
  if (!ParcoursEcriture(app, mouvement, [&](const Line& ligne) { return lignes.push_back(ligne), true; }))
    return app.EchecMagasin();
  if (lignes.empty() || lignes.front().Journal != demande.journal ||
      Mois(lignes.front().Date) != Mois(demande.mois))
    return {};
  Examen examen(app, demande);
  examen.Prepare(lignes);
  examen.Commence(lignes.front());
  for (const Line& ligne : lignes) examen.Ajoute(ligne);
  listee = examen.Montre();
  return {};
}

bool LitEntreeJournal(CFenlorApp& app, u32 mouvement, bool comptable, const std::string& filtre,
                      EntreeJournal& entree) {
  entree = {};
  LivresOuverts livres;
  if (app.PathExercice.empty() || livres.Ouvre(app)) return false;
  std::vector<LigneLue> lues;
  const auto suite = [&](const Line& ligne) { return lues.push_back({ligne, {}, false}), true; };
  if (!ParcoursEcriture(app, mouvement, suite) || lues.empty()) return false;
  const Line& premiere = lues.front().ligne;
  entree.ligne = premiere.Ligne;
  entree.date = premiere.Date;
  entree.genre = premiere.Genre;
  entree.liee = premiere.LienId != 0;
  entree.validee = true;
  for (LigneLue& lue : lues) {
    if (!lue.ligne.Validee) entree.validee = false;
    if (lue.ligne.Pointee) entree.pointee = true;
    lue.connu = LitCompte(app, LitTexte(lue.ligne.Compte), lue.plan);
  }
  if (comptable) {
    for (const LigneLue& lue : lues) entree.rangees.push_back(RangeeDeLigne(app, lue));
  } else {
    entree.rangees.push_back(RangeeDEcriture(app, lues, filtre, entree));
  }
  return true;
}

MonnaiesListe MonnaiesAffichees(const CFenlorApp& app) {
  constexpr int anneeEuro = 2002;
  if (app.AfficherDouble) return {true, true};
  const bool euro = TexteVersEntier(app.NomExercice) >= anneeEuro;
  return {!euro, euro};
}

}  // namespace fenlor

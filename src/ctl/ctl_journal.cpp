#include "core/btfiles.h"

#include <cassert>

#include "core/texte.h"
#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/demandejournal.h"
#include "ctl/json.h"
#include "ctl/tableau.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// UTF-8.
std::string NomJournal(i16 journal) {
  assert(journal >= JournalRecettes && journal <= JournalOD);
  if (journal == JournalRecettes) return "Recettes";
  return journal == JournalDepenses ? "Dépenses" : "Opérations diverses";
}

struct Colonne {
  std::string titre;
  bool gauche = false;
};

class ListeDuMois {
 public:
  ListeDuMois(Contexte& contexte, const OptionsJournal& options)
      : m_contexte(contexte),
        m_app(contexte.App),
        m_options(options),
        m_comptable(options.comptable || options.journal == "od"),
        m_plan(m_app, m_app.PathExercice),
        m_lignes(m_app, m_app.PathExercice) {}

  int Execute() {
    m_monnaies = MonnaiesAffichees(m_app);
    if (!m_plan.OpenFile() || !m_lignes.OpenFile()) return m_contexte.RefuseMagasin();
    if (!LitDemandeJournal(m_contexte, m_options, m_demande)) return StatutRefuse;
    MoisJournal mois;
    if (const Refus refus = ListeMois(m_app, m_demande, mois)) return m_contexte.Refuse(refus);
    return m_contexte.Globales.json ? EcritJson(mois) : EcritTable(mois);
  }

 private:
  std::string Titre() const {
    std::string titre = VersUtf8(NomMois(Mois(m_demande.mois))) + ' ' + std::to_string(Annee(m_demande.mois));
    titre = NomJournal(m_demande.journal) + " du mois de " + titre;
    return EstPartielle(m_demande.criteres) ? titre + "   *** Liste partielle ***" : titre;
  }

  std::vector<Colonne> Colonnes() const {
    std::vector<Colonne> colonnes{{"Ligne"}, {"Date"}, {"Libellé"_w, true}};
    if (!m_comptable) colonnes.push_back({"Trésorerie"_w, true});
    const auto montant = [&](const char* monnaie) {
      for (const std::string& titre :
           m_comptable ? std::vector{"Débit "_w, "Crédit "_w} : std::vector{"Montant "_w})
        colonnes.push_back({titre + monnaie});
    };
    if (m_monnaies.franc) montant("F");
    if (m_monnaies.euro) montant("\x80");
    for (const char* marque : {"P", "B", "R", "V"}) colonnes.push_back({marque});
    for (const std::string& titre : {std::string("Rub"), std::string("Compte"), "Désignation"_w})
      colonnes.push_back({titre, true});
    return colonnes;
  }

  void AjouteMontants(std::vector<std::string>& champs, f64 debitFranc, f64 creditFranc, f64 debitEuro,
                      f64 creditEuro) const {
    const auto ajoute = [&](f64 debit, f64 credit) {
      champs.push_back(FormatMontant(debit, 2));
      if (m_comptable) champs.push_back(FormatMontant(credit, 2));
    };
    if (m_monnaies.franc) ajoute(debitFranc, creditFranc);
    if (m_monnaies.euro) ajoute(debitEuro, creditEuro);
  }

  int EcritTable(const MoisJournal& mois) {
    Tableau tableau;
    std::vector<std::string> titres;
    std::vector<bool> gauches;
    for (const Colonne& colonne : Colonnes()) {
      titres.push_back(colonne.titre);
      gauches.push_back(colonne.gauche);
    }
    tableau.Ajoute(titres);
    assert(titres.size() == gauches.size());
    for (const EntreeListe& e : mois.entrees) {
      EntreeJournal entree;
      if (!Lit(e.mouvement, entree)) return m_contexte.RefuseMagasin();
      bool premiere = true;
      for (const RangeeJournal& r : entree.rangees) {
        std::vector<std::string> champs;
        champs.push_back(premiere ? std::to_string(entree.ligne) : std::string());
        champs.push_back(premiere ? std::to_string(Jour(entree.date)) : std::string());
        champs.push_back(r.libelle);
        if (!m_comptable) champs.push_back(r.tresorerie);
        const bool credit = m_comptable && r.credit;
        AjouteMontants(champs, credit ? 0 : r.franc, credit ? r.franc : 0, credit ? 0 : r.euro,
                       credit ? r.euro : 0);
        champs.emplace_back(r.pointee ? "P" : "");
        champs.emplace_back(r.remise ? "B" : "");
        champs.emplace_back(r.rapprochee ? "R" : "");
        champs.emplace_back(r.validee ? "V" : "");
        for (const std::string* texte : {&r.rubrique, &r.compte, &r.designation}) champs.push_back(*texte);
        tableau.Ajoute(std::move(champs));
        premiere = false;
      }
    }
    std::vector<std::string> total{"", "", "Total"};
    if (!m_comptable) total.emplace_back();
    const TotauxListe& t = mois.totaux;
    AjouteMontants(total, t.debitFranc, t.creditFranc, t.debitEuro, t.creditEuro);
    tableau.Ajoute(std::move(total));
    return m_contexte.Donne(Titre() + "\n" + tableau.Texte(gauches));
  }

  int EcritJson(const MoisJournal& mois) {
    for (const EntreeListe& e : mois.entrees) {
      EntreeJournal entree;
      if (!Lit(e.mouvement, entree)) return m_contexte.RefuseMagasin();
      for (const RangeeJournal& r : entree.rangees) {
        LigneJson objet;
        objet.Entier("Mouvement", e.mouvement)
            .Entier("Ligne", entree.ligne)
            .Texte("Date", StrDate(entree.date))
            .Texte("Libelle", r.libelle);
        if (m_comptable) {
          objet.Entier("Sens", r.credit);
        } else {
          objet.Texte("Tresorerie", r.tresorerie);
        }
        objet.Nombre("MontantFranc", r.franc)
            .Nombre("MontantEuro", r.euro)
            .Entier("Pointee", r.pointee)
            .Entier("Remise", r.remise)
            .Entier("Rapprochee", r.rapprochee)
            .Entier("Validee", r.validee)
            .Texte("Rubrique", r.rubrique)
            .Texte("Compte", QVAPI::GetLongCompte(r.compte))
            .Texte("Designation", r.designation);
        if (!m_demande.filtre.empty())
          objet.Nombre("SoldeFranc", e.soldeFranc).Nombre("SoldeEuro", e.soldeEuro);
        if (!m_contexte.Ecrit(objet.Fin())) return StatutRefuse;
      }
    }
    const TotauxListe& t = mois.totaux;
    const std::string total = LigneJson()
                                  .Entier("Ecritures", static_cast<i64>(mois.entrees.size()))
                                  .Booleen("Partielle", EstPartielle(m_demande.criteres))
                                  .Nombre("TotalDebitFranc", t.debitFranc)
                                  .Nombre("TotalCreditFranc", t.creditFranc)
                                  .Nombre("TotalDebitEuro", t.debitEuro)
                                  .Nombre("TotalCreditEuro", t.creditEuro)
                                  .Fin();
    return m_contexte.Donne(total);
  }

  bool Lit(u32 mouvement, EntreeJournal& entree) {
    return LitEntreeJournal(m_app, mouvement, m_comptable, m_demande.filtre, entree);
  }

  Contexte& m_contexte;
  CFenlorApp& m_app;
  const OptionsJournal& m_options;
  const bool m_comptable;
  CPlan m_plan;
  CLines m_lignes;
  MonnaiesListe m_monnaies;
  DemandeListe m_demande;
};

}  // namespace

void DeclareJournal(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsJournal>();
  Commande journal = ligne.Ajoute(
      "journal", "Liste un mois d'un journal comme sa fenêtre, et donne ses totaux",
      [o](Contexte& c) { return c.OuvreExercice() ? ListeDuMois(c, *o).Execute() : int{StatutRefuse}; });
  journal.Controle([o](const OptionsGlobales&) { return FauteOptionsJournal(*o); });
  DeclareOptionsJournal(journal, *o);
}

}  // namespace fenlor

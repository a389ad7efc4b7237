#include <cassert>

#include "banque/rapprochement.h"
#include "banque/textes.h"
#include "core/valeurs.h"
#include "ctl/annuaire.h"
#include "ctl/commandes.h"
#include "ctl/enregistrementjson.h"
#include "ctl/optionscommunes.h"
#include "ctl/reponseslignes.h"
#include "journal/choixcomptes.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct OptionsRapprochement {
  std::string action;
  std::string fichier = "-";
  std::string compte, du, au;  ///< UTF-8; empty: not given
  u32 operation = 0;
  std::vector<u32> lignes, mouvements;
  std::string montant, date, monnaie;
};

class Rapprochement {
 public:
  Rapprochement(Contexte& contexte, const OptionsRapprochement& options)
      : m_contexte(contexte), m_app(contexte.App), m_options(options) {}

  int Execute();

 private:
  int Ajoute();
  Refus AjouteUne(const Json& objet, Position& position);
  int Liste();
  bool ListeCompte(const Plan& compte);
  int DonneSoldes(const std::string& compte);
  int Supprime();
  int Manuel();
  int Automatique();
  int Solde();
  bool Euro() const {
    return m_options.monnaie.empty() ? m_app.Reglages.IsEuro() : m_options.monnaie == "euro";
  }
  /// The number of an account given by code or number; as it is when the chart lacks it.
  std::string Numero(const std::string& texte) const {
    const Plan* compte = m_comptes.ParCode(Tresorerie, texte);
    return compte ? LitTexte(compte->Compte) : QVAPI::GetLongCompte(texte);
  }
  std::string Compte() const { return Numero(DepuisUtf8(m_options.compte).value_or("?")); }
  PeriodeRapprochement Periode(const std::string& compte) const {
    const Parametres& reglages = m_app.Reglages;
    return {compte, m_options.du.empty() ? reglages.GetDebutExercice() : GetDate(m_options.du),
            m_options.au.empty() ? reglages.GetFinExercice() : GetDate(m_options.au)};
  }

  Contexte& m_contexte;
  CFenlorApp& m_app;
  const OptionsRapprochement& m_options;
  AnnuaireComptes m_comptes;
};

int Rapprochement::Execute() {
  const Ouverture plan(m_contexte.Magasin, FichierComptes), journal(m_contexte.Magasin, FichierJournal),
      banques(m_contexte.Magasin, FichierBanques);
  if (!plan || !journal || !banques || !m_comptes.Charge(m_app)) return m_contexte.RefuseMagasin();
  const std::string& action = m_options.action;
  if (action == "ajouter") return Ajoute();
  if (action == "lister") return Liste();
  if (action == "supprimer") return Supprime();
  if (action == "manuel") return Manuel();
  assert(action == "solde" || action == "automatique");
  return action == "solde" ? Solde() : Automatique();
}

/// Each operation is durable by itself.
int Rapprochement::Ajoute() {
  return RepondParLigne(m_contexte, m_options.fichier, [this](const Json& objet, LigneJson& reponse) {
    Position position = 0;
    const Refus refus = AjouteUne(objet, position);
    reponse.Entier("operation", position);
    return refus;
  });
}

Refus Rapprochement::AjouteUne(const Json& objet, Position& position) {
  Json lue = objet;
  if (const auto compte = lue.find("Compte"); compte != lue.end() && compte->is_string())
    *compte = VersUtf8(Numero(DepuisUtf8(compte->get<std::string>()).value_or("?")));
  OperationLue operation;
  if (const Refus refus = LitEnregistrement(lue, ChampsDe("Banque"), &operation.rec)) return refus;
  const Banque& rec = operation.rec;
  if (rec.Sens != 0 && rec.Sens != 1) return RefusChamp("Sens", raison::EntierAttendu(0, 1));
  const bool euro = rec.MontantEuro != 0 && (m_app.Reglages.IsEuro() || rec.MontantFranc == 0);
  FicheOperation fiche = FicheDe(m_app, operation, euro);
  fiche.autre = operation.Montant(!euro);
  const Refus refus = EnregistreOperation(m_app, fiche);
  position = fiche.position;
  return refus;
}

int Rapprochement::Liste() {
  if (!m_options.compte.empty()) {
    const Plan* compte = m_comptes.ParNumero(Compte());
    if (!compte) return m_contexte.Refuse(ErrCompteNonBancaire, {DepuisUtf8(m_options.compte).value_or("?")});
    return ListeCompte(*compte) ? StatutFait : StatutRefuse;
  }
  bool ecrit = true;
  for (const CompteOffert& compte : ComptesParCode(m_app, Tresorerie))
    if (const Plan* plan = m_comptes.ParNumero(compte.compte); plan && compte.banque)
      ecrit = ecrit && ListeCompte(*plan);
  return ecrit ? StatutFait : StatutRefuse;
}

/// Operations, lines to reconcile, balances.
bool Rapprochement::ListeCompte(const Plan& plan) {
  const std::string compte = LitTexte(plan.Compte);
  for (const OperationLue& operation : LitOperations(m_app, compte)) {
    std::string champs;
    AjouteEnregistrement(champs, ChampsDe("Banque"), &operation.rec);
    assert(champs.starts_with('{'));
    const std::string position = std::to_string(operation.position);
    if (!m_contexte.Ecrit(R"({"Genre":"operation","Position":)" + position + ',' + champs.substr(1)))
      return false;
  }
  for (const LigneARapprocher& a : LignesARapprocher(m_app, Periode(compte))) {
    Line lue{};
    if (!m_app.Magasin.ReadLines(m_app.PathExercice, a.position, lue)) return false;
    LigneJson ligne;
    ligne.Texte("Genre", "ecriture").Entier("Position", a.position).Entier("Mouvement", lue.Mouvement);
    ligne.Texte("Compte", compte).Texte("Libelle", LitTexte(lue.Libelle));
    ligne.Texte("DateLigne", StrDate(lue.DateLigne)).Texte("Contrepartie", Contrepartie(m_app, lue));
    ligne.Nombre("MontantFranc", lue.MontantFranc).Nombre("MontantEuro", lue.MontantEuro);
    if (!m_contexte.Ecrit(ligne.Entier("Sens", lue.Sens != 0).Fin())) return false;
  }
  return DonneSoldes(compte) == StatutFait;
}

int Rapprochement::DonneSoldes(const std::string& compte) {
  const SoldesRapprochement soldes = LitSoldes(m_app, compte, Euro());
  LigneJson ligne;
  ligne.Texte("Genre", "soldes").Texte("Compte", compte).Nombre("SoldeRapproche", soldes.livres);
  if (soldes.releve) ligne.Nombre("SoldeReleve", *soldes.releve).Nombre("Difference", soldes.Difference());
  return m_contexte.Donne(ligne.Fin());
}

int Rapprochement::Supprime() {
  m_contexte.Dialogue.Ordonne({QuestionSupprimeOperation});
  if (const Refus refus = SupprimeOperation(m_app, m_options.operation, Euro()))
    return m_contexte.Refuse(refus);
  return m_contexte.Donne(LigneJson().Entier("operation", m_options.operation).Fin());
}

/// The lines that were named, and those of the entries that were, on the operation's account.
int Rapprochement::Manuel() {
  assert(m_options.operation != 0 && !(m_options.lignes.empty() && m_options.mouvements.empty()));
  OperationLue operation;
  if (const Refus refus = LitOperation(m_app, m_options.operation, operation))
    return m_contexte.Refuse(refus);
  std::vector<Position> lignes(m_options.lignes.begin(), m_options.lignes.end());
  for (const u32 mouvement : m_options.mouvements)
    for (const Position position : m_app.Magasin.LignesMouvement(m_app.PathExercice, mouvement)) {
      Line ligne{};
      if (!m_app.Magasin.ReadLines(m_app.PathExercice, position, ligne)) return m_contexte.RefuseMagasin();
      if (LitTexte(ligne.Compte) == LitTexte(operation.rec.Compte)) lignes.push_back(position);
    }
  if (const Refus refus = RapprocheManuel(m_app, m_options.operation, lignes, Euro()))
    return m_contexte.Refuse(refus);
  const auto nombre = static_cast<u32>(lignes.size());
  return m_contexte.Donne(
      LigneJson().Entier("operation", m_options.operation).Entier("lignes", nombre).Fin());
}

int Rapprochement::Automatique() {
  BilanRapprochement bilan;
  if (const Refus refus = RapprocheAutomatique(m_app, {Periode(Compte()), false, Euro()}, bilan))
    return m_contexte.Refuse(refus);
  return m_contexte.Donne(
      LigneJson().Entier("rapprochements", bilan.rapproches).Entier("operations", bilan.operations).Fin());
}

int Rapprochement::Solde() {
  const SoldeReleve solde{TexteVersMontant(m_options.montant), Euro(),
                          m_options.date.empty() ? m_app.Magasin.Today() : GetDate(m_options.date)};
  const Plan* compte = m_comptes.ParNumero(Compte());
  if (!compte) return m_contexte.Refuse(ErrCompteNonBancaire, {DepuisUtf8(m_options.compte).value_or("?")});
  if (const Refus refus = EcritSoldeReleve(m_app, LitTexte(compte->Compte), solde))
    return m_contexte.Refuse(refus);
  return DonneSoldes(LitTexte(compte->Compte));
}

}  // namespace

void DeclareRapprochement(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsRapprochement>();
  Commande verbe = ligne.Ajoute(
      "rapprochement", "Opérations de la banque : les ajouter, les lister, les rapprocher",
      [o](Contexte& c) { return c.OuvreExercice() ? Rapprochement(c, *o).Execute() : int{StatutRefuse}; });
  verbe.Controle([o](const OptionsGlobales&) {
    if (o->action.empty()) return "il manque ajouter, lister, supprimer, manuel, automatique ou solde";
    const bool vide = o->action == "manuel" && o->lignes.empty() && o->mouvements.empty();
    return vide ? "il manque --ligne ou --mouvement" : "";
  });
  verbe.Action("ajouter", "Ajoute des opérations, une par ligne JSON ; répond une ligne à chacune", o->action)
      .Option("fichier", o->fichier, {"[FICHIER|-]"}, "Fichier des opérations (- : l'entrée standard)")
      .Pied(R"(Les champs sont ceux de l'enregistrement :
  {"Compte":"BQ","Date":"15/03/2003","DateValeur":"16/03/2003","Libelle":"VIR CPAM",
   "MontantEuro":120.5,"Sens":1}
  "Compte" : code ou numéro ; "Sens" : 0 débit, 1 crédit, du point de vue de la banque ;
  "MontantFranc" au lieu de "MontantEuro", ou les deux ; sans "DateValeur" : la date)");
  const auto periode = [&](Commande action, bool obligatoire) {
    action.Option("--compte", o->compte, {"CODE"}, "Code ou numéro du compte bancaire");
    if (obligatoire) action.Obligatoire();
    action.Option("--du", o->du, FormeDate(), "Premier jour des écritures (par défaut : l'exercice)")
        .Option("--au", o->au, FormeDate(), "Dernier jour")
        .Option("--monnaie", o->monnaie, FormeMonnaie(), "Monnaie (par défaut : celle de l'exercice)");
  };
  periode(verbe.Action("lister", "Écrit les opérations, les écritures à rapprocher et les soldes", o->action),
          false);
  verbe.Action("supprimer", "Supprime une opération", o->action)
      .Option("operation", o->operation, FormeNumero(), "Position de l'opération, comme `lister` l'écrit")
      .Obligatoire();
  verbe.Action("manuel", "Rapproche une opération des écritures données", o->action)
      .Option("operation", o->operation, FormeNumero(), "Position de l'opération, comme `lister` l'écrit")
      .Obligatoire()
      .Option("--ligne", o->lignes, FormeNumeros(), "Positions des lignes, comme `lister` les écrit")
      .Option("--mouvement", o->mouvements, FormeNumeros(), "Numéros des écritures")
      .Option("--monnaie", o->monnaie, FormeMonnaie(), "Monnaie comparée (par défaut : celle de l'exercice)");
  periode(verbe.Action("automatique", "Rapproche les opérations des écritures de même montant", o->action),
          true);
  verbe.Action("solde", "Note le solde du relevé et dit la différence", o->action)
      .Option("--compte", o->compte, {"CODE"}, "Code ou numéro du compte bancaire")
      .Obligatoire()
      .Option("--montant", o->montant, FormeMontant(),
              "Solde imprimé par la banque, au crédit s'il est positif")
      .Obligatoire()
      .Option("--date", o->date, FormeDate(), "Date du solde (par défaut : aujourd'hui)")
      .Option("--monnaie", o->monnaie, FormeMonnaie(), "Monnaie (par défaut : celle de l'exercice)");
}

}  // namespace fenlor

#include "banque/operations.h"

#include <cassert>

#include "banque/textes.h"
#include "core/erreurs.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "core/valeurs.h"
#include "store/cumuls.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

using G = GenreChamp;
using Fiche = FicheOperation;

constexpr const char* Sens[] = {"debit", "credit"};
constexpr ChampFiche Champs[] = {
    {"compte", Membre<&Fiche::compte>, G::Compte, "Compte", 10},
    {"date", Membre<&Fiche::date>, G::Date, "Date", 10},
    {"dateValeur", Membre<&Fiche::dateValeur>, G::Date, "DateValeur", 10},
    {"libelle", Membre<&Fiche::libelle>, G::Texte, "Libelle"},
    {"sens", Membre<&Fiche::sens>, G::Choix, "Sens", 0, {}, Sens},
    {"montant", Membre<&Fiche::montant>, G::Montant, "", 16},
};

std::string CleSolde(const std::string& compte) { return TexteFormat(CleSoldeReleve, {compte}); }

/// Two cents in Franc are none in Euro.
Refus ControleMontant(const CFenlorApp& app, const Banque& rec, bool euro) {
  const bool possible = MontantPossible(rec.MontantFranc) && MontantPossible(rec.MontantEuro) &&
                        rec.MontantFranc >= 0 && rec.MontantEuro >= 0;
  if (possible && Centimes(euro ? rec.MontantEuro : rec.MontantFranc) > 0) return {};
  const char separateur = app.Reglages.SeparateurDecimal();
  const auto texte = [&](f64 montant) { return FormatMontant(montant, 2, separateur); };
  const f64 montant = std::max(f64{rec.MontantFranc}, f64{rec.MontantEuro});
  return Refus(ErrMontantBornes, "montant", {texte(montant), texte(0.01), texte(MontantMax)});
}

/// What was not changed of an operation is not converted anew.
void GardeAutreMonnaie(const FicheOperation& fiche, const Banque& ancienne, Banque& rec) {
  assert(fiche.position != 0);
  const bool memes = fiche.euro ? Centimes(ancienne.MontantEuro) == Centimes(rec.MontantEuro)
                                : Centimes(ancienne.MontantFranc) == Centimes(rec.MontantFranc);
  if (!memes || ancienne.Date != rec.Date) return;
  rec.MontantFranc = ancienne.MontantFranc;
  rec.MontantEuro = ancienne.MontantEuro;
}

}  // namespace

Refus ControleCompteBanque(CFenlorApp& app, const std::string& compte) {
  const std::string numero = QVAPI::GetLongCompte(compte);
  if (numero.empty()) return Refus(ErrCompteObligatoire, "compte");
  CPlan plan(app, app.PathExercice);
  PoseTexte(plan.Rec->Compte, numero);
  if (!plan.OpenFile()) return EchecFichier();
  const bool banque = plan.Find(0) && plan.Rec->Type == Tresorerie && plan.Rec->TypeTresorerie != 0;
  return banque ? Refus{} : Refus(ErrCompteNonBancaire, "compte", {compte});
}

const TableFiche FicheOperation::Table{"Banque", Champs};

std::vector<OperationLue> LitOperations(CFenlorApp& app, const std::string& compte) {
  std::vector<OperationLue> operations;
  CBanques banques(app, app.PathExercice);
  if (compte.empty() || !banques.OpenFile()) return operations;
  assert(compte == QVAPI::GetLongCompte(compte));
  operations.reserve(app.Magasin.QVNumberOfRec(FichierBanques));
  app.Magasin.QVParcoursCle(banques.NumCle, compte, compte + '\xFF', [&](Position position, const void* rec) {
    operations.push_back({position, *static_cast<const Banque*>(rec)});
    operations.back().rec.Reserve0 = 0;
    return true;
  });
  return operations;
}

Refus LitOperation(CFenlorApp& app, Position position, OperationLue& operation) {
  CBanques banques(app, app.PathExercice);
  if (!banques.OpenFile()) return EchecFichier();
  if (position == 0 || !app.Magasin.QVReadRec(FichierBanques, position, banques.GetRec()))
    return Refus(ErrOperationAbsente);
  operation = {position, *banques.Rec};
  return {};
}

FicheOperation FicheDe(CFenlorApp& app, const OperationLue& operation, bool euro) {
  FicheOperation fiche;
  FicheDepuis(app, FicheOperation::Table, &operation.rec, &fiche);
  fiche.position = operation.position;
  fiche.montant = operation.Montant(euro);
  fiche.euro = euro;
  return fiche;
}

Refus ComposeOperation(CFenlorApp& app, const FicheOperation& fiche, Banque& rec) {
  if (const Refus refus = ControleCompteBanque(app, fiche.compte)) return refus;
  if (const Refus refus = ControleTextes(FicheOperation::Table, &fiche)) return refus;
  if (fiche.date == 0) return Refus(ErrDateOperation, "date");
  if (!IsDateOk(fiche.date)) return Refus(ErrDateIncorrecte, "date");
  if (fiche.dateValeur != 0 && !IsDateOk(fiche.dateValeur)) return Refus(ErrDateIncorrecte, "dateValeur");
  if (fiche.montant == 0) return Refus(ErrMontantOperation, "montant");
  rec = {};
  FicheVers(app, FicheOperation::Table, &fiche, &rec);
  if (rec.DateValeur == 0) rec.DateValeur = rec.Date;
  assert(IsDateOk(rec.Date) && IsDateOk(rec.DateValeur));
  rec.Sens = fiche.sens != 0;
  const f64 montant = Arrondi2(fiche.montant), taux = app.Magasin.GetTauxEuro(rec.Date);
  f64 autre = Arrondi2(fiche.autre);
  if (autre == 0)
    autre = fiche.euro ? QVAPI::ConvertEuroToFranc(taux, montant) : QVAPI::ConvertFrancToEuro(taux, montant);
  rec.MontantEuro = fiche.euro ? montant : autre;
  rec.MontantFranc = fiche.euro ? autre : montant;
  return ControleMontant(app, rec, fiche.euro);
}

Refus EnregistreOperation(CFenlorApp& app, FicheOperation& fiche) {
  if (const Refus r = app.ControleEcriture()) return r;
  Banque rec{};
  if (const Refus refus = ComposeOperation(app, fiche, rec)) return refus;
  CBanques banques(app, app.PathExercice);
  if (!banques.OpenFile()) return EchecFichier();
  if (fiche.position != 0) {
    OperationLue ancienne;
    if (const Refus refus = LitOperation(app, fiche.position, ancienne)) return refus;
    GardeAutreMonnaie(fiche, ancienne.rec, rec);
  }
  *banques.Rec = rec;
  return RemplaceEnregistrement(app, banques, fiche.position);
}

std::string MontantEnTexte(f64 montant, bool euro) {
  return euro ? FormatEuro(montant) : FormatFranc(montant);
}

Refus SupprimeOperation(CFenlorApp& app, Position position, bool euro) {
  if (const Refus r = app.ControleEcriture()) return r;
  OperationLue operation;
  if (const Refus refus = LitOperation(app, position, operation)) return refus;
  if (const Refus refus = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionSupprimeOperation, "",
                                      {StrDate(operation.rec.Date), LitTexte(operation.rec.Libelle),
                                       MontantEnTexte(operation.Montant(euro), euro)}))
    return refus;
  CBanques banques(app, app.PathExercice);
  return SupprimeEnregistrement(banques, position);
}

// "1234.56|31/01/2003|Euro"
std::optional<SoldeReleve> LitSoldeReleve(CFenlorApp& app, const std::string& compte) {
  const std::string texte = app.Reglages.LitIniExercice({}, CleSolde(compte));
  if (EstVide(texte)) return {};
  SoldeReleve solde;
  solde.montant = TexteVersMontant(ChampTexte(0, texte, '|'), '.');
  solde.date = GetDate(ChampTexte(1, texte, '|'));
  solde.euro = ChampTexte(2, texte, '|') != "Franc";
  return solde;
}

Refus EcritSoldeReleve(CFenlorApp& app, const std::string& compte, const std::optional<SoldeReleve>& solde) {
  if (const Refus r = app.ControleEcriture()) return r;
  std::string texte;
  if (solde) {
    texte = FormatMontant(solde->montant, 2, '.');
    if (texte.empty()) texte = "0.00";
    texte += '|' + (solde->date ? StrDate(solde->date) : std::string()) + (solde->euro ? "|Euro" : "|Franc");
  }
  if (app.Reglages.EcritIniExercice({}, CleSolde(compte), texte)) return {};
  const Profil& reglages = app.Magasin.Reglages();
  return Refus(ErrReglages, "", {reglages.Chemin(), app.Magasin.QVErreurTexte(reglages.Erreur())});
}

}  // namespace fenlor

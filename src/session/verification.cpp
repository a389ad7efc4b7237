#include "session/verification.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/texte.h"
#include "core/valeurs.h"
#include "session/textes.h"
#include "store/fichierdat.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// A day of some month: an entry moved to a shorter month keeps its day, the 31st of February until
/// someone corrects it.
bool EstDatee(Date date) {
  return Annee(date) > 0 && Mois(date) >= 1 && Mois(date) <= 12 && Jour(date) >= 1 && Jour(date) <= 31;
}

constexpr int enFranc = 0;
constexpr int enEuro = 1;

/// Amounts beyond it are damage, and their cents are not exact.
constexpr f64 montantMax = 9e13;

bool EstMontant(f64 montant) { return std::fabs(montant) <= montantMax; }
i64 EnCentimes(f64 montant) { return EstMontant(montant) ? std::llround(montant * 100) : 0; }
std::string TexteCentimes(i64 centimes) {
  return centimes ? FormatMontant(static_cast<f64>(centimes) / 100, 2) : "0,00";
}

/// The pairs of totals of an account, Franc then Euro.
enum Total { TotalPerso, TotalTva, TotalCredit, TotalDebit, TotalRappCredit, TotalRappDebit, NbTotaux };

/// By offset: the fields of a packed record are not aligned.
struct ChampTotal {
  const char* nom;
  std::size_t offset[2];
};
constexpr ChampTotal champs[NbTotaux] = {
    {"la part personnelle", {offsetof(Plan, PersoFranc), offsetof(Plan, PersoEuro)}},
    {"la T.V.A.", {offsetof(Plan, TVAFranc), offsetof(Plan, TVAEuro)}},
    {"le crédit", {offsetof(Plan, CreditFranc), offsetof(Plan, CreditEuro)}},
    {"le débit", {offsetof(Plan, DebitFranc), offsetof(Plan, DebitEuro)}},
    {"le crédit rapproché", {offsetof(Plan, RappCreditFranc), offsetof(Plan, RappCreditEuro)}},
    {"le débit rapproché", {offsetof(Plan, RappDebitFranc), offsetof(Plan, RappDebitEuro)}},
};

f64 LitTotal(const Plan& plan, int total, int monnaie) {
  assert(total >= 0 && total < NbTotaux && (monnaie == enFranc || monnaie == enEuro));
  f64 valeur;
  std::memcpy(&valeur, reinterpret_cast<const char*>(&plan) + champs[total].offset[monnaie], sizeof valeur);
  return valeur;
}

template <std::size_t N>
std::string_view Vue(const char (&champ)[N]) {
  return {champ, strnlen(champ, N)};
}

struct Compte {
  i16 type = 0;
  f64 enregistre[NbTotaux][2] = {};
  i64 calcule[NbTotaux][2] = {};
};

class Verification {
 public:
  Verification(CFenlorApp& app, const RappelConstat& constat)
      : m_app(app), m_magasin(app.Magasin), m_constat(constat) {}

  u32 Execute();

 private:
  void Constate(const char* utf8, std::initializer_list<std::string> arguments = {});
  void ConstateEcriture(const char* utf8, std::initializer_list<std::string> arguments = {});
  bool FichierPresent(const DefinitionFichier& definition) const;
  void VerifieFichier(const DefinitionFichier& definition);
  void LitComptes();
  void AdditionneLignes();
  void CompareTotaux();
  void VerifieEcritures();
  void VerifieEcriture();
  void VerifieAccord();
  void VerifieLigne(const Line& ligne);
  void VerifieEquilibre(int monnaie);
  bool ConvertieParLigne() const;
  Compte* TrouveCompte(std::string_view compte);
  std::string Court(const std::string& compte) { return m_magasin.GetShortCompte(compte); }

  CFenlorApp& m_app;
  QVAPI& m_magasin;
  const RappelConstat& m_constat;
  u32 m_nombre = 0;
  /// Of an account's text, without a copy of it.
  struct Hachage : std::hash<std::string_view> {
    using is_transparent = void;
  };
  std::unordered_map<std::string, Compte, Hachage, std::equal_to<>> m_comptes;
  std::vector<Line> m_lignes;  ///< of the entry at hand, in order of `Rang`
};

u32 Verification::Execute() {
  for (const DefinitionFichier& definition : Definitions()) VerifieFichier(definition);
  const auto present = [&](u16 numero) { return FichierPresent(*DefinitionFichierNumero(numero)); };
  if (!present(FichierComptes) || !present(FichierJournal)) return m_nombre;
  const Ouverture comptes(m_magasin, FichierComptes), journal(m_magasin, FichierJournal);
  if (!comptes || !journal) return m_nombre;
  LitComptes();
  AdditionneLignes();
  CompareTotaux();
  VerifieEcritures();
  return m_nombre;
}

void Verification::Constate(const char* utf8, std::initializer_list<std::string> arguments) {
  assert(m_constat && *utf8);
  ++m_nombre;
  m_constat(RemplitFormat(DepuisUtf8(utf8).value_or(utf8), arguments));
}

void Verification::ConstateEcriture(const char* utf8, std::initializer_list<std::string> arguments) {
  assert(!m_lignes.empty());
  const Line& premiere = m_lignes.front();
  const std::string suite = RemplitFormat(DepuisUtf8(utf8).value_or(utf8), arguments);
  Constate("Ecriture %s du %s, « %s » : %s",
           {std::to_string(premiere.Mouvement), StrDate(premiere.Date), LitTexte(premiere.Libelle), suite});
}

bool Verification::FichierPresent(const DefinitionFichier& definition) const {
  const std::string& dossier = definition.duCabinet ? m_app.PathCabinet : m_app.PathExercice;
  return m_magasin.QVExistFile(dossier + "/" + definition.nom + ".dat");
}

void Verification::VerifieFichier(const DefinitionFichier& definition) {
  if (!FichierPresent(definition)) {
    if (definition.duDepart) Constate("Le fichier %s est absent.", {definition.nom});
    return;
  }
  const Ouverture fichier(m_magasin, definition.numero);
  if (!fichier) {
    Constate("Le fichier %s ne s'ouvre pas : %s",
             {definition.nom, m_magasin.QVErreurTexte(m_magasin.QVFileErrorCode())});
    return;
  }
  for (const std::string& anomalie : m_magasin.QVVerifie(definition.numero).anomalies)
    Constate("Fichier %s : %s", {definition.nom, anomalie});
}

void Verification::LitComptes() {
  assert(m_comptes.empty());
  m_magasin.QVParcours(FichierComptes, [&](Position, const void* rec) {
    const auto& plan = *static_cast<const Plan*>(rec);
    Compte compte;
    compte.type = plan.Type;
    for (int total = 0; total < NbTotaux; ++total)
      for (const int monnaie : {enFranc, enEuro})
        compte.enregistre[total][monnaie] = LitTotal(plan, total, monnaie);
    m_comptes.insert_or_assign(LitTexte(plan.Compte), compte);
    return true;
  });
}

void Verification::AdditionneLignes() {
  const auto ajoute = [](Compte* compte, Total total, i64 franc, i64 euro) {
    if (!compte) return;
    compte->calcule[total][enFranc] += franc;
    compte->calcule[total][enEuro] += euro;
  };
  m_magasin.QVParcours(FichierJournal, [&](Position, const void* rec) {
    const auto& ligne = *static_cast<const Line*>(rec);
    const bool credit = ligne.Sens != 0;
    const i64 franc = EnCentimes(ligne.MontantFranc);
    const i64 euro = EnCentimes(ligne.MontantEuro);
    Compte* compte = TrouveCompte(Vue(ligne.Compte));
    ajoute(compte, credit ? TotalCredit : TotalDebit, franc, euro);
    if (ligne.Rapprochee) ajoute(compte, credit ? TotalRappCredit : TotalRappDebit, franc, euro);
    if (ligne.Role != RolePerso && ligne.Role != RoleTva) return true;
    const int signe = credit ? 1 : -1;
    ajoute(TrouveCompte(Vue(ligne.ComptePrincipal)), ligne.Role == RolePerso ? TotalPerso : TotalTva,
           signe * franc, signe * euro);
    return true;
  });
}

void Verification::CompareTotaux() {
  assert(!m_magasin.QVEnUnite());  // what is compared is on disk
  std::vector<std::string> numeros;
  for (const auto& [numero, compte] : m_comptes) numeros.push_back(numero);
  std::sort(numeros.begin(), numeros.end());
  for (const std::string& numero : numeros) {
    const Compte& compte = m_comptes.find(numero)->second;
    const bool partage = compte.type == Recette || compte.type == Depense;
    for (int total = 0; total < NbTotaux; ++total) {
      for (const int monnaie : {enFranc, enEuro}) {
        const f64 enregistre = compte.enregistre[total][monnaie];
        const i64 calcule =
            partage || (total != TotalPerso && total != TotalTva) ? compte.calcule[total][monnaie] : 0;
        if (EstMontant(enregistre) && EnCentimes(enregistre) == calcule) continue;
        Constate("Compte %s : %s en %s est de %s au lieu de %s.",
                 {Court(numero), DepuisUtf8(champs[total].nom).value_or(""),
                  monnaie == enEuro ? "euros" : "francs",
                  EstMontant(enregistre) ? TexteCentimes(EnCentimes(enregistre)) : "(illisible)",
                  TexteCentimes(calcule)});
      }
    }
  }
}

/// In place, and past each line that cannot be read.
void Verification::VerifieEcritures() {
  const u16 numCle = static_cast<u16>(DefinitionFichierNumero(FichierJournal)->premiereCle + 4);
  std::string debut;
  bool avance = false;
  const auto suite = [&](Position, const void* rec) {
    const Line& ligne = *static_cast<const Line*>(rec);
    if (!m_lignes.empty() && m_lignes.front().Mouvement != ligne.Mouvement) {
      VerifieEcriture();
      m_lignes.clear();
    }
    m_lignes.push_back(ligne);
    return avance = true;
  };
  while (!m_magasin.QVParcoursCle(numCle, debut, {}, suite)) {
    const int code = m_magasin.QVFileErrorCode();
    if (std::exchange(avance, false)) {
      const Line& l = m_lignes.back();
      debut = MakeJournalKey5(l.Mouvement, l.Rang, static_cast<u16>(l.Journal), l.Ligne) + '\0';
    }
    const Position position = m_magasin.QVBrowseKey(numCle, debut);
    Line ligne;
    if (position == 0 || m_magasin.QVReadRec(FichierJournal, position, &ligne)) {
      Constate("Journal : les écritures ne se lisent pas jusqu'au bout : %s",
               {m_magasin.QVErreurTexte(code)});
      break;
    }
    Constate("Journal : la ligne d'emplacement %s ne se lit pas.", {std::to_string(position)});
    debut += '\0';
  }
  if (!m_lignes.empty()) VerifieEcriture();
}

void Verification::VerifieEcriture() {
  assert(!m_lignes.empty());
  assert(m_lignes.front().Mouvement == m_lignes.back().Mouvement);
  VerifieAccord();
  for (std::size_t i = 0; i < m_lignes.size(); ++i) {
    if (m_lignes[i].Rang == i) continue;
    ConstateEcriture("les rangs de ses lignes ne se suivent pas de 0 à %s.",
                     {std::to_string(m_lignes.size() - 1)});
    break;
  }
  if (!EstDatee(m_lignes.front().Date)) ConstateEcriture("cette date n'existe pas.");
  bool lisible = true;
  for (const Line& ligne : m_lignes) {
    VerifieLigne(ligne);
    lisible = lisible && EstMontant(ligne.MontantFranc) && EstMontant(ligne.MontantEuro);
  }
  if (!lisible) return;
  VerifieEquilibre(enFranc);
  VerifieEquilibre(enEuro);
}

void Verification::VerifieAccord() {
  const Line& a = m_lignes.front();
  const auto differe = [&](auto egal) {
    for (const Line& b : m_lignes)
      if (!egal(b)) return true;
    return false;
  };
  if (a.Mouvement == 0) ConstateEcriture("elle n'a pas de numéro.");
  if (differe([&](const Line& b) { return a.Journal == b.Journal; }))
    ConstateEcriture("ses lignes ne sont pas toutes du même journal.");
  if (differe([&](const Line& b) { return a.Genre == b.Genre; }))
    ConstateEcriture("ses lignes ne sont pas toutes du même genre.");
  if (differe([&](const Line& b) { return a.Date == b.Date; }))
    ConstateEcriture("ses lignes ne portent pas toutes la même date.");
  if (differe([&](const Line& b) { return a.Ligne == b.Ligne; }))
    ConstateEcriture("ses lignes ne portent pas toutes le même numéro de ligne.");
  if (differe([&](const Line& b) { return Vue(a.Libelle) == Vue(b.Libelle); }))
    ConstateEcriture("ses lignes ne portent pas toutes le même libellé.");
  if (differe([&](const Line& b) { return !a.Validee == !b.Validee; }))
    ConstateEcriture("ses lignes ne sont pas toutes validées, ou toutes en brouillard.");
  if (differe([&](const Line& b) { return !a.SaisieEuro == !b.SaisieEuro; }))
    ConstateEcriture("ses lignes ne sont pas toutes saisies dans la même monnaie.");
}

Compte* Verification::TrouveCompte(std::string_view compte) {
  const auto trouve = m_comptes.find(compte);
  return trouve == m_comptes.end() ? nullptr : &trouve->second;
}

void Verification::VerifieLigne(const Line& ligne) {
  const auto rang = [&] { return std::to_string(ligne.Rang); };
  const auto numero = [&] { return Court(LitTexte(ligne.Compte)); };
  const Compte* compte = TrouveCompte(Vue(ligne.Compte));
  if (!compte)
    ConstateEcriture("le compte %s de la ligne %s n'existe pas.", {numero(), rang()});
  else if (compte->type != ligne.TypeCompte)
    ConstateEcriture("la ligne %s porte le type %s, mais le compte %s est du type %s.",
                     {rang(), std::to_string(ligne.TypeCompte), numero(), std::to_string(compte->type)});
  if (ligne.ComptePrincipal[0] && !TrouveCompte(Vue(ligne.ComptePrincipal)))
    ConstateEcriture("le compte principal %s de la ligne %s n'existe pas.",
                     {Court(LitTexte(ligne.ComptePrincipal)), rang()});
  if (!EstDatee(ligne.DateLigne)) ConstateEcriture("la date de la ligne %s n'existe pas.", {rang()});
  if (!EstMontant(ligne.MontantFranc) || !EstMontant(ligne.MontantEuro))
    ConstateEcriture("le montant de la ligne %s est illisible.", {rang()});
  else if (ligne.MontantFranc < 0 || ligne.MontantEuro < 0)
    ConstateEcriture("le montant de la ligne %s est négatif.", {rang()});
}

bool Verification::ConvertieParLigne() const {
  assert(!m_lignes.empty());
  for (const Line& ligne : m_lignes) {
    const f64 taux = m_magasin.GetTauxEuro(ligne.DateLigne);
    const bool juste = ligne.SaisieEuro ? EnCentimes(QVAPI::ConvertEuroToFranc(taux, ligne.MontantEuro)) ==
                                              EnCentimes(ligne.MontantFranc)
                                        : EnCentimes(QVAPI::ConvertFrancToEuro(taux, ligne.MontantFranc)) ==
                                              EnCentimes(ligne.MontantEuro);
    if (!juste) return false;
  }
  return true;
}

void Verification::VerifieEquilibre(int monnaie) {
  assert(!m_lignes.empty());
  i64 debit = 0, credit = 0;
  for (const Line& ligne : m_lignes)
    (ligne.Sens ? credit : debit) += EnCentimes(monnaie == enEuro ? ligne.MontantEuro : ligne.MontantFranc);
  if (debit == credit) return;
  const Line& premiere = m_lignes.front();
  const bool maitre = (premiere.SaisieEuro != 0) == (monnaie == enEuro);
  const bool tolere = std::llabs(debit - credit) <= static_cast<i64>(m_lignes.size());
  if (!maitre && tolere && (premiere.Genre != GenreSimple || ConvertieParLigne())) return;
  ConstateEcriture("elle n'est pas équilibrée en %s : débit %s, crédit %s.",
                   {monnaie == enEuro ? "euros" : "francs", TexteCentimes(debit), TexteCentimes(credit)});
}

}  // namespace

u32 VerifieExercice(CFenlorApp& app, const RappelConstat& constat) {
  return Verification(app, constat).Execute();
}

u32 ConstateDegats(CFenlorApp& app, const std::string& exercice, const RappelConstat& constat) {
  u32 nombre = 0;
  for (const DefinitionFichier& definition : Definitions()) {
    if (definition.duCabinet) continue;
    FichierDat fichier;
    const std::string chemin =
        Joint(app.Magasin.CheminExercice(exercice), std::string(definition.nom) + ".dat");
    Empreinte empreinte;
    if (fichier.Ouvre(app.Magasin.SystemeFichiers(), chemin, 0, FichierDat::Pour::Examen) != 0 ||
        fichier.Mesure(empreinte) != 0)
      continue;
    // A file that was cut has no bytes where the last records stood.
    const u64 presents = empreinte.taille < DebutEmplacements
                             ? 0
                             : (empreinte.taille - DebutEmplacements) / fichier.entete.Pas();
    for (Position position = 1; position <= fichier.entete.emplacements; ++position) {
      if (position <= presents && fichier.EstJuste(position)) continue;
      constat(TexteFormat(FormatEnregistrementAbime, {definition.nom, std::to_string(position)}));
      ++nombre;
    }
  }
  return nombre;
}

}  // namespace fenlor

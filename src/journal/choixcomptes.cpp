#include "journal/choixcomptes.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "core/btfiles.h"
#include "core/texte.h"
#include "core/valeurs.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::size_t proposesAuPlus = 100;
/// Behind every date that a key can hold.
constexpr Date FinDesDates = FaitDate(99, 99, 9999);

CompteOffert Offre(CFenlorApp& app, Position position, const Plan& plan) {
  CompteOffert offert;
  offert.position = position;
  offert.compte = LitTexte(plan.Compte);
  offert.court = app.Magasin.GetShortCompte(offert.compte);
  offert.code = CompacteTexte(LitTexte(plan.Code));
  offert.designation = LitTexte(plan.Designation);
  offert.rubrique = LitTexte(plan.Rubrique);
  offert.type = plan.Type;
  offert.banque = plan.Type == Tresorerie && plan.TypeTresorerie != 0;
  return offert;
}

template <class Garde>
std::vector<CompteOffert> Parcourt(CFenlorApp& app, u32 cle, Garde garde) {
  std::vector<CompteOffert> comptes;
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return comptes;
  app.Magasin.QVParcoursCle(static_cast<u16>(plan.NumCle + cle), {}, {},
                            [&](Position position, const void* rec) {
                              const Plan& compte = *static_cast<const Plan*>(rec);
                              if (garde(compte)) comptes.push_back(Offre(app, position, compte));
                              return true;
                            });
  return comptes;
}

/// Order of the codes: as in the lists, the bytes decide between equals.
bool CodeAvant(const CompteOffert& a, const CompteOffert& b) {
  return std::pair(CleAlphabetique(a.code), a.code) < std::pair(CleAlphabetique(b.code), b.code);
}

}  // namespace

std::string CompteOffert::Texte() const { return court + ' ' + designation; }

std::vector<CompteOffert> ComptesParCode(CFenlorApp& app, i16 type) {
  assert(type >= Tresorerie && type <= Autre);
  std::vector<CompteOffert> comptes =
      Parcourt(app, IndicePlanCode, [type](const Plan& plan) { return plan.Type == type; });
  std::stable_sort(comptes.begin(), comptes.end(), CodeAvant);
  return comptes;
}

std::vector<CompteOffert> ComptesParNumero(CFenlorApp& app) {
  return Parcourt(app, IndicePlanCompte, [](const Plan&) { return true; });
}

const CompteOffert* CompteDeCode(const std::vector<CompteOffert>& comptes, const std::string& texte) {
  const std::string cherche = CompacteTexte(texte);
  if (cherche.empty()) return nullptr;
  const CompteOffert* trouve = nullptr;
  for (const CompteOffert& compte : comptes) {
    if (CompareSansCasse(compte.code.substr(0, cherche.size()), cherche) != 0) continue;
    if (!trouve || CodeAvant(compte, *trouve)) trouve = &compte;
  }
  return trouve;
}

const CompteOffert* CompteTape(const std::vector<CompteOffert>& comptes, const std::string& texte) {
  const std::string cherche = CompacteTexte(texte), numero = QVAPI::GetLongCompte(texte);
  const CompteOffert* code = CompteDeCode(comptes, texte);
  if (cherche.empty() || (code && CompareSansCasse(code->code, cherche) == 0)) return code;
  if (const CompteOffert* exact = CompteDeNumero(comptes, numero)) return exact;
  if (code) return code;
  const CompteOffert* trouve = nullptr;
  for (const CompteOffert& compte : comptes)
    if (CompareSansCasse(compte.compte.substr(0, cherche.size()), cherche) == 0 &&
        (!trouve || compte.compte < trouve->compte))
      trouve = &compte;
  return trouve;
}

bool TousLesMots(std::string_view plie, std::string_view mots) {
  while (!mots.empty()) {
    const std::size_t fin = std::min(mots.find(' '), mots.size());
    if (plie.find(mots.substr(0, fin)) == std::string_view::npos) return false;
    mots.remove_prefix(std::min(fin + 1, mots.size()));
  }
  return true;
}

std::vector<const CompteOffert*> ComptesProposes(const std::vector<CompteOffert>& comptes,
                                                 const std::string& texte) {
  std::string cherche;
  AjouteSansAccents(cherche, CompacteTexte(texte));
  if (cherche.empty()) return {};
  std::vector<const CompteOffert*> codes, noms;
  const CompteOffert* tape = CompteTape(comptes, texte);
  if (tape) codes.push_back(tape);
  bool entier = tape && CompareSansCasse(tape->code, CompacteTexte(texte)) == 0;
  for (const CompteOffert& compte : comptes) {
    std::string code, nom;
    AjouteSansAccents(code, compte.code);
    AjouteSansAccents(nom, compte.designation);
    if (&compte == tape) continue;
    entier = entier && !code.starts_with(cherche);
    if (code.starts_with(cherche) || compte.compte.starts_with(cherche))
      codes.push_back(&compte);
    else if (TousLesMots(nom, cherche))
      noms.push_back(&compte);
  }
  if (entier) return {};
  codes.insert(codes.end(), noms.begin(), noms.end());
  codes.resize(std::min(proposesAuPlus, codes.size()));
  return codes;
}

const CompteOffert* CompteDeNumero(const std::vector<CompteOffert>& comptes, const std::string& compte) {
  for (const CompteOffert& offert : comptes)
    if (offert.compte == compte) return &offert;
  return nullptr;
}

std::string TexteRubrique(CFenlorApp& app, const std::string& rubrique) {
  CRubriques rubriques(app, app.PathExercice);
  PoseTexte(rubriques.Rec->Rubrique, NormaliseRubrique(rubrique));
  if (!rubriques.Rec->Rubrique[0] || !rubriques.OpenFile() || !rubriques.Find(0)) return {};
  return NormaliseRubrique(LitTexte(rubriques.Rec->Rubrique)) + ' ' + LitTexte(rubriques.Rec->Designation);
}

std::string DernierLibelle(CFenlorApp& app, i16 journal, const std::string& compte) {
  assert(journal >= JournalRecettes && journal <= JournalOD);
  if (compte.empty()) return {};
  CLines lignes(app, app.PathExercice);
  if (!lignes.OpenFile()) return {};
  const auto cle = static_cast<u16>(lignes.NumCle + IndiceJournalCompte);
  const u16 numero = static_cast<u16>(journal);
  std::string texte = MakeJournalKey2(numero, compte, FinDesDates, 0, 0, 0);
  const Position apres = app.Magasin.QVBrowseKey(cle, texte);
  const Position position = apres ? app.Magasin.QVPrevKey(cle, texte) : app.Magasin.QVLastKey(cle, texte);
  if (!position || !lignes.ReadRec(position)) return {};
  const Line& ligne = *lignes.Rec;
  if (ligne.Journal != journal || LitTexte(ligne.Compte) != compte) return {};
  return LitTexte(ligne.Libelle);
}

}  // namespace fenlor

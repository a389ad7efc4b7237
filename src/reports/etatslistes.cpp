#include "reports/etatslistes.h"

#include <cassert>
#include <vector>

#include "auto/previsions.h"
#include "auto/textes.h"
#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "master/comptes.h"
#include "master/libelles.h"
#include "reports/livresetat.h"
#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// What the columns of an account may show.
struct CompteListe : SoldesCompte {
  const Plan* plan = nullptr;
  std::string numero;  ///< as the screen shows it, fit for markup
};

std::string Code(const CompteListe& c) { return EchappeEtat(LitTexte(c.plan->Code)); }
std::string Numero(const CompteListe& c) { return c.numero; }
std::string RubriqueDe(const CompteListe& c) { return NormaliseRubrique(LitTexte(c.plan->Rubrique)); }
std::string Designation(const CompteListe& c) { return EchappeEtat(LitTexte(c.plan->Designation)); }
std::string Montant(f64 montant, bool euro) { return euro ? FormatEuro(montant) : FormatFranc(montant); }
std::string Solde(f64 solde, bool euro) { return euro ? FormatSoldeEuro(solde) : FormatSoldeFranc(solde); }

constexpr ColonneEtat<CompteListe> TablePlan[] = {
    {Code}, {Numero}, {RubriqueDe}, {Designation}, {{}, &CompteListe::solde, Solde}};
constexpr ColonneEtat<CompteListe> TableSoldes[] = {{Code},
                                                    {Numero},
                                                    {Designation},
                                                    {{}, &CompteListe::debit, Montant},
                                                    {{}, &CompteListe::credit, Montant},
                                                    {{}, &CompteListe::solde, Solde},
                                                    {{}, &CompteListe::rapproche, Solde},
                                                    {{}, &CompteListe::reel, Solde}};
constexpr ColonneEtat<Rubrique> TableRubriques[] = {
    {[](const Rubrique& r) { return NormaliseRubrique(LitTexte(r.Rubrique)); }},
    {[](const Rubrique& r) { return EchappeEtat(LitTexte(r.Designation)); }}};
struct LigneListePrevision : LignePrevision {
  std::string mois;  ///< named once
};
constexpr ColonneEtat<LigneListePrevision> TablePrevisions[] = {
    {[](const LigneListePrevision& l) { return l.mois; }},
    {[](const LigneListePrevision& l) { return EchappeEtat(TresoreriePrevision(l)); }},
    {{}, &LigneListePrevision::recettes, Montant},
    {{}, &LigneListePrevision::depenses, Montant},
    {{}, &LigneListePrevision::solde, Montant}};
constexpr ColonneEtat<std::string> TableLibelles[] = {
    {[](const std::string& libelle) { return EchappeEtat(libelle); }}};

}  // namespace

bool CEtatListe::Debute(const TextesListe& textes) {
  PoseTitre(Texte(textes.titre));
  SetEtatEntete(textes.entete);
  SetEtatPied(textes.pied);
  if (App.PathExercice.empty()) Abandonne(Refus(ErrAucunExercice));
  return EnCours();
}

template <class Fiche, class Parcours>
void CEtatListe::EcritTable(const TextesListe& textes, std::span<const ColonneEtat<Fiche>> colonnes,
                            u32 nombre, const Parcours& parcourt) {
  assert(!colonnes.empty());
  EcritEtat("\\H");
  Travail travail(*this, textes.avancement, nombre);
  const bool euro = OptionEuro();
  Fiche total{};
  std::vector<std::string> valeurs;
  const auto ecrit = [&](const FormatEtat& format) {
    EtatPrintf(format, std::vector<ArgumentEtat>(valeurs.begin(), valeurs.end()));
    valeurs.clear();
  };
  parcourt([&, rangee = FormatEtat(textes.rangee)](const Fiche& fiche) {
    for (const ColonneEtat<Fiche>& c : colonnes) {
      assert(c.texte || (c.montant && c.ecrit));
      valeurs.push_back(c.texte ? c.texte(fiche) : c.ecrit(fiche.*c.montant, euro));
      // Without the noise of the last digits, so that a sum of nothing prints as nothing.
      if (c.montant) total.*c.montant = Arrondi2(total.*c.montant + fiche.*c.montant) + 0.0;
    }
    ecrit(rangee);
    assert(valeurs.empty());
    travail.Pas();
  });
  if (textes.total != 0) {
    for (const ColonneEtat<Fiche>& c : colonnes)
      if (c.montant) valeurs.push_back(c.ecrit(total.*c.montant, euro));
    ecrit(textes.total);
  }
  EcritEtat("\\X");
  if (textes.fin != 0) EtatPrintf(textes.fin);
}

void CEtatListeComptes::BuildEtat() {
  const bool plan = m_type == Recette || m_type == Depense;
  const TextesListe textes =
      plan ? TextesListe{m_titre,           EnteteListeComptes, PiedListe, AvancementListeComptes,
                         LigneListeComptes, TotalListeComptes}
           : TextesListe{m_titre,
                         EnteteListeTresorerie,
                         PiedListeTresorerie,
                         AvancementListeTresorerie,
                         LigneListeTresorerie,
                         TotalListeTresorerie};
  LivresEtat livres(App, *this);
  if (!Debute(textes) || !livres.Ouvre()) return;
  const bool euro = OptionEuro();
  std::span<const ColonneEtat<CompteListe>> colonnes = TableSoldes;
  if (plan) colonnes = TablePlan;
  EcritTable(textes, colonnes, livres.NombreComptes(), [&](const auto& suite) {
    const auto compte = [&](const Plan& p) { suite({SoldesDe(p, euro), &p, livres.CompteCourt(p)}); };
    m_type == TousTypes ? livres.Comptes(compte) : livres.ComptesDuType(m_type, compte);
  });
}

void CEtatRubriqueDoc::BuildEtat() {
  constexpr TextesListe textes{
      TitreRubriques, EnteteListeRubriques, PiedListe, AvancementListeRubriques, LigneListeRubriques, {},
      FinListe};
  if (!Debute(textes)) return;
  CRubriques rubriques(App, App.PathExercice);
  if (!rubriques.OpenFile()) return Abandonne(EchecFichier());
  EcritTable<Rubrique>(
      textes, TableRubriques, App.Magasin.QVNumberOfKey(rubriques.NumCle),
      [&](const auto& suite) { ParcourtFichier<Rubrique>(App, *this, rubriques, 0, {}, {}, suite); });
}

void CEtatPrevisionsDoc::BuildEtat() {
  constexpr TextesListe textes{
      TitrePrevisions, EntetePrevisions, PiedListe, AvancementPrevisions, LignePrevisions, {}, FinListe};
  if (!Debute(textes)) return;
  Previsions previsions;
  if (Refus refus = CalculePrevisions(App, previsions)) return Abandonne(refus);
  EcritTable<LigneListePrevision>(textes, TablePrevisions, static_cast<u32>(previsions.lignes.size()),
                                  [&](const auto& suite) {
                                    for (std::size_t i = 0; i < previsions.lignes.size() && EnCours(); ++i)
                                      suite({previsions.lignes[i], MoisPrevision(previsions, i)});
                                  });
}

void CEtatLibelleDoc::BuildEtat() {
  constexpr TextesListe textes{
      TitreLibelles, EnteteListeLibelles, PiedListe, AvancementListeLibelles, LigneListeLibelles, {},
      FinListe};
  std::vector<std::string> libelles;
  if (!Debute(textes)) return;
  if (const Refus refus = LitLibelles(App, libelles)) return Abandonne(refus);
  EcritTable<std::string>(textes, TableLibelles, static_cast<u32>(libelles.size()), [&](const auto& suite) {
    for (std::size_t i = 0; i < libelles.size() && EnCours(); ++i) suite(libelles[i]);
  });
}

}  // namespace fenlor

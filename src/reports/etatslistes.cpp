#include "reports/etatslistes.h"

#include <vector>

#include "core/textes.h"
#include "core/valeurs.h"
#include "master/libelles.h"
#include "reports/livresetat.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr i16 TousTypes = -1;

/// What the columns of an account may show.
struct CompteListe : SoldesCompte {
  const Plan* plan = nullptr;
  std::string numero;  ///< as the screen shows it, fit for markup
};

std::string Tape(std::string_view texte) { return EchappeEtat(texte); }
std::string Code(const CompteListe& c) { return Tape(LitTexte(c.plan->Code)); }
std::string Numero(const CompteListe& c) { return c.numero; }
std::string RubriqueDe(const CompteListe& c) { return NormaliseRubrique(LitTexte(c.plan->Rubrique)); }
std::string Designation(const CompteListe& c) { return Tape(LitTexte(c.plan->Designation)); }
std::string Montant(f64 montant, bool euro) { return euro ? FormatEuro(montant) : FormatFranc(montant); }
std::string Solde(f64 solde, bool euro) { return euro ? FormatSoldeEuro(solde) : FormatSoldeFranc(solde); }

constexpr ColonneEtat<CompteListe> TablePlan[] = {
    {.texte = Code},
    {.texte = Numero},
    {.texte = RubriqueDe},
    {.texte = Designation},
    {.montant = &CompteListe::solde, .ecrit = Solde},
};
constexpr ColonneEtat<CompteListe> TableSoldes[] = {
    {.texte = Code},
    {.texte = Numero},
    {.texte = Designation},
    {.montant = &CompteListe::debit, .ecrit = Montant},
    {.montant = &CompteListe::credit, .ecrit = Montant},
    {.montant = &CompteListe::solde, .ecrit = Solde},
    {.montant = &CompteListe::rapproche, .ecrit = Solde},
    {.montant = &CompteListe::reel, .ecrit = Solde},
};
constexpr ColonneEtat<Rubrique> TableRubriques[] = {
    {.texte = [](const Rubrique& r) { return NormaliseRubrique(LitTexte(r.Rubrique)); }},
    {.texte = [](const Rubrique& r) { return Tape(LitTexte(r.Designation)); }},
};
constexpr ColonneEtat<std::string> TableLibelles[] = {
    {.texte = [](const std::string& libelle) { return Tape(libelle); }},
};

}  // namespace

bool CEtatListe::Debute(const Textes& textes) {
  PoseTitre(Texte(textes.titre));
  SetEtatEntete(textes.entete);
  SetEtatPied(textes.pied);
  if (App.PathExercice.empty() && !App.ReportErreur(ErrAucunExercice)) Abandonne();
  return EnCours();
}

template <class Fiche>
void CEtatListe::EcritTable(const Textes& textes, std::span<const ColonneEtat<Fiche>> colonnes, u32 nombre,
                            const std::function<void(const std::function<void(const Fiche&)>&)>& parcourt) {
  EcritEtat("\\H");
  Travail travail(*this, textes.avancement, nombre);
  const bool euro = OptionEuro();
  const FormatEtat rangee(textes.rangee);
  Fiche total{};
  std::vector<std::string> valeurs;
  const auto ecrit = [&](const FormatEtat& format) {
    EtatPrintf(format, std::vector<ArgumentEtat>(valeurs.begin(), valeurs.end()));
    valeurs.clear();
  };
  parcourt([&](const Fiche& fiche) {
    for (const ColonneEtat<Fiche>& c : colonnes) {
      valeurs.push_back(c.texte ? c.texte(fiche) : c.ecrit(fiche.*c.montant, euro));
      // Without the noise of the last digits, so that a sum of nothing prints as nothing.
      if (c.montant) total.*c.montant = Arrondi2(total.*c.montant + fiche.*c.montant) + 0.0;
    }
    ecrit(rangee);
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

void CEtatListe::EcritComptes(const Textes& textes, bool soldesDetailles, i16 type) {
  LivresEtat livres(App, *this);
  if (!Debute(textes) || !livres.Ouvre()) return;
  const bool euro = OptionEuro();
  const auto parcourt = [&](const std::function<void(const CompteListe&)>& suite) {
    const auto compte = [&](const Plan& plan) {
      suite({SoldesDe(plan, euro), &plan, livres.CompteCourt(plan)});
    };
    type == TousTypes ? livres.Comptes(compte) : livres.ComptesDuType(type, compte);
  };
  const std::span<const ColonneEtat<CompteListe>> colonnes =
      soldesDetailles ? std::span<const ColonneEtat<CompteListe>>(TableSoldes) : TablePlan;
  EcritTable<CompteListe>(textes, colonnes, livres.NombreComptes(), parcourt);
}

void CEtatPlanDoc::BuildEtat() {
  EcritComptes({m_type == Recette ? TitreComptesRecettes : TitreComptesDepenses, EnteteListeComptes,
                PiedListe, AvancementListeComptes, LigneListeComptes, TotalListeComptes},
               false, m_type);
}

void CEtatPlanComptableDoc::BuildEtat() {
  EcritComptes({TitrePlanComptable, EnteteListeTresorerie, PiedListeTresorerie, AvancementListeTresorerie,
                LigneListeTresorerie, TotalListeTresorerie},
               true, TousTypes);
}

void CEtatTresorerieDoc::BuildEtat() {
  EcritComptes({TitreComptesTresorerie, EnteteListeTresorerie, PiedListeTresorerie, AvancementListeTresorerie,
                LigneListeTresorerie, TotalListeTresorerie},
               true, Tresorerie);
}

void CEtatRubriqueDoc::BuildEtat() {
  constexpr Textes textes{.titre = TitreRubriques,
                          .entete = EnteteListeRubriques,
                          .pied = PiedListe,
                          .avancement = AvancementListeRubriques,
                          .rangee = LigneListeRubriques,
                          .fin = FinListe};
  if (!Debute(textes)) return;
  CRubriques rubriques(App, App.PathExercice);
  if (!rubriques.OpenFile()) return Abandonne();
  const auto parcourt = [&](const std::function<void(const Rubrique&)>& suite) {
    const auto rubrique = [&](Position, const void* rec) {
      suite(*static_cast<const Rubrique*>(rec));
      return EnCours();
    };
    if (App.Magasin.QVParcoursCle(rubriques.NumCle, {}, {}, rubrique)) return;
    rubriques.Erreur(0, MessageLecture);
    Abandonne();
  };
  EcritTable<Rubrique>(textes, TableRubriques, App.Magasin.QVNumberOfKey(rubriques.NumCle), parcourt);
}

void CEtatLibelleDoc::BuildEtat() {
  constexpr Textes textes{.titre = TitreLibelles,
                          .entete = EnteteListeLibelles,
                          .pied = PiedListe,
                          .avancement = AvancementListeLibelles,
                          .rangee = LigneListeLibelles,
                          .fin = FinListe};
  std::vector<std::string> libelles;
  if (!Debute(textes)) return;
  if (!LitLibelles(App, libelles)) return Abandonne();
  const auto parcourt = [&](const std::function<void(const std::string&)>& suite) {
    for (std::size_t i = 0; i < libelles.size() && EnCours(); ++i) suite(libelles[i]);
  };
  EcritTable<std::string>(textes, TableLibelles, static_cast<u32>(libelles.size()), parcourt);
}

}  // namespace fenlor

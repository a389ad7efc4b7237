#include "master/comptes.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

#include "core/cles.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "core/texte.h"
#include "core/valeurs.h"
#include "master/lotreglages.h"
#include "master/textes.h"
#include "master/utilisationcompte.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

using G = GenreChamp;
using Fiche = FicheCompte;

constexpr const char* Types[] = {"tresorerie", "recette", "depense", "tva", "autre"};
// clang-format off
constexpr ChampFiche Champs[] = {
  {"type", Membre<&Fiche::type>, G::Choix, "Type", 0, {"type", "Type de compte, avec --forme plan"}, Types},
  {"code", Membre<&Fiche::code>, G::Texte, "Code", 0, {"code", "Code, 8 caractères au plus"}},
  {"compte", Membre<&Fiche::compte>, G::Compte, "Compte", 0,
   {"compte", "Numéro, 10 caractères au plus (trésorerie : proposé s'il manque)"}},
  {"designation", Membre<&Fiche::designation>, G::Texte, "Designation", 0, {"designation", "Désignation"}},
  {"rubrique", Membre<&Fiche::rubrique>, G::Texte, "Rubrique", 0,
   {"rubrique", "Code de la rubrique (vide : aucune)"}},
  {"tva", Membre<&Fiche::compteTVA>, G::Texte, "CompteTVA", 0,
   {"tva", "Numéro du compte de T.V.A. (vide : aucun)", "", "", "COMPTE"}},
  {"taux", Membre<&Fiche::tauxTVA>, G::Montant, "TauxTVA", 6, {"taux", "Taux d'un compte de T.V.A., en %"}},
  {"professionnelle", Membre<&Fiche::partPro>, G::Montant, "", 6,
   {"part-pro", "Part professionnelle d'une dépense, en %"}},
  {"debit", Membre<&Fiche::debitInitial>, G::Montant, "", 14, {"debit-initial", "Solde initial au débit"}},
  {"credit", Membre<&Fiche::creditInitial>, G::Montant, "", 14,
   {"credit-initial", "Solde initial au crédit (à confirmer par --oui)", "debit-initial"}},
  {"banque", Membre<&Fiche::banque>, G::Drapeau, "TypeTresorerie", 0,
   {"banque", "Compte bancaire", "", "", "", "caisse", "Caisse"}},
};
// clang-format on

constexpr f64 ToutProfessionnel = 100;

std::string CodeDe(const Plan& compte) { return CompacteTexte(LitTexte(compte.Code)); }

Refus Lit(CFenlorApp& app, Position position, Plan& compte) {
  CPlan plan(app, app.PathExercice);
  Refus refus = LitEnregistrement(plan, position);
  if (!refus) compte = *plan.Rec;
  return refus;
}

/// An account other than that at `position` holds the code; `type` -1: of any type. Quick
/// entry looks codes up without regard to case, so two that differ by it alone are the same.
bool CodePris(CFenlorApp& app, const std::string& code, Position position, int type = -1) {
  assert(!code.empty());
  CPlan plan(app, app.PathExercice);
  bool pris = false;
  if (plan.OpenFile())
    app.Magasin.QVParcoursCle(plan.NumCle, {}, {}, [&](Position autre, const void* rec) {
      const Plan& compte = *static_cast<const Plan*>(rec);
      pris = autre != position && (type < 0 || compte.Type == type) &&
             CompareSansCasse(CodeDe(compte), code) == 0;
      return !pris;
    });
  return pris;
}

bool NumeroPris(CFenlorApp& app, const std::string& compte, Position position) {
  CPlan plan(app, app.PathExercice);
  PoseTexte(plan.Rec->Compte, compte);
  return ClePrise(plan, IndicePlanCompte, position);
}

const TexteFixe& ErreurNumeroPris(FormeCompte forme) {
  return forme == FormeCompte::RecettesDepenses ? ErrNumeroExistant : ErrNumeroExistantAuPlan;
}

/// The settings of a bank stand in a section of its code.
bool EstPartieDesReglages(CFenlorApp& app, const std::string& code) {
  constexpr TexteFixe sections[] = {SecActivite, SecPreferences,   SecFenlor,      SecComptes,
                                    SecTauxEuro, SecRapprochement, SecAssociation, SecComptable,
                                    Sec2035,     SecTresorerie,    SecFraisKm,     SecRaccourcis};
  const auto estCode = [&](const std::string& nom) { return CompareSansCasse(nom, code) == 0; };
  const std::vector<std::string> exercices = app.Magasin.ListeExercices();
  return std::any_of(std::begin(sections), std::end(sections),
                     [&](const TexteFixe& section) { return estCode(Texte(section)); }) ||
         std::any_of(exercices.begin(), exercices.end(), estCode);
}

/// Name and address of a bank follow its code.
bool DeplaceAdresse(CFenlorApp& app, const std::string& ancien, const std::string& code) {
  Profil& reglages = app.Magasin.Reglages();
  if (ancien.empty() || CompareSansCasse(ancien, code) == 0 || !reglages.Existe(ancien) ||
      reglages.Existe(code) || EstPartieDesReglages(app, ancien))
    return true;
  LotReglages lot(app);
  for (const TexteFixe& cle : {CleIdentification, CleCompteBancaire}) {
    const std::string valeur = reglages.Lit(ancien, Texte(cle));
    if (valeur.empty()) continue;
    lot.PoseBrut(code, Texte(cle), valeur);
    lot.Supprime(ancien, Texte(cle));
  }
  return lot.Ecrit();
}

/// One saving: the checks of a form in their order, then the record.
class Enregistrement {
 public:
  Enregistrement(CFenlorApp& app, FicheCompte& fiche)
      : m_app(app),
        m_fiche(fiche),
        m_code(CompacteTexte(fiche.code)),
        m_compte(QVAPI::GetLongCompte(fiche.compte)),
        m_type(fiche.forme == FormeCompte::Tresorerie ? i16{Tresorerie} : fiche.type) {}

  Refus Fait() {
    using E = Enregistrement;
    if (m_fiche.position != 0)
      if (const Refus refus = Lit(m_app, m_fiche.position, m_rec)) return refus;
    m_avant = m_rec;
    return PremierRefus(*this, &E::Limites, &E::Obligatoires, &E::Fige, &E::Reserve, &E::Solde,
                        &E::SoldeCrediteur, &E::Classe, &E::Doubles, &E::Ecrit);
  }

 private:
  bool Ajout() const { return m_fiche.position == 0; }
  bool Est(FormeCompte forme) const { return m_fiche.forme == forme; }
  std::string AncienNumero() const { return LitTexte(m_avant.Compte); }

  Refus Limites() const {
    if (Est(FormeCompte::RecettesDepenses) && !Ajout() && EstComptePersonnel(m_app, AncienNumero()))
      return Refus(ErrComptePersonnel, "", {m_app.NumeroCourt(AncienNumero())});
    FicheCompte fiche = m_fiche;
    fiche.code = m_code;
    return ControleTextes(FicheCompte::Table, &fiche);
  }

  Refus Obligatoires() const {
    if (m_code.empty()) return Refus(ErrCodeObligatoire, "code");
    if (m_compte.empty()) return Refus(ErrNumeroObligatoire, "compte");
    return {};
  }

  Refus Fige() const {
    assert(!m_compte.empty() && !m_code.empty());  // checked before
    if (Ajout()) return {};
    const bool numero = m_compte != AncienNumero(), type = m_type != m_avant.Type;
    const char* champ = numero ? "compte" : "type";
    if (ADesMouvements(m_avant)) {
      if (numero || type) return Refus(ErrCompteMouvemente, champ);
      if (m_type == Tva && Est(FormeCompte::PlanComptable) && m_fiche.tauxTVA != m_avant.TauxTVA)
        return Refus(ErrModificationTvaMouvementee, "taux");
    }
    if (!numero && !type) return {};
    const std::string utilisation = UtilisationCompte(m_app, AncienNumero());
    return utilisation.empty()
               ? Refus()
               : Refus(ErrCompteUtiliseChange, champ, {m_app.NumeroCourt(AncienNumero()), utilisation});
  }

  Refus Reserve() const {
    if (m_type != Tresorerie || (!Ajout() && m_avant.Type == Tresorerie && m_code == CodeDe(m_avant)) ||
        !EstPartieDesReglages(m_app, m_code))
      return {};
    return Refus(ErrCodeReserve, "code", {m_code});
  }

  Refus SoldeCrediteur() const {
    if (m_type != Tresorerie || m_fiche.creditInitial == 0) return {};
    return m_app.Demande(BoutonsOuiNon | IconeAttention, RepNon, QuestionSoldeCrediteur, "credit");
  }

  Refus Classe() const {
    if (Est(FormeCompte::Tresorerie)) {
      const std::string classe =
          CompacteTexte(m_app.Reglages.LitIni(Texte(SecTresorerie), Texte(CleClasse)).substr(0, 11));
      if (!m_compte.starts_with(classe)) return Refus(ErrClasseCompte, "compte");
    }
    if (!Est(FormeCompte::PlanComptable) || ClasseJuste(m_type, m_compte)) return {};
    return m_app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionClasseCompte, "type");
  }

  Refus Doubles() const {
    // An account that holds the number would be replaced without a word.
    if (NumeroPris(m_app, m_compte, m_fiche.position))
      return Refus(ErreurNumeroPris(m_fiche.forme), "compte");
    if (Ajout() && !Est(FormeCompte::RecettesDepenses) && CodePris(m_app, m_code, 0, Tresorerie))
      return Refus(ErrCodeTresorerieExistant, "code");
    return {};
  }

  /// What the form does not hold of the record stays.
  void Remplit() {
    assert(m_type >= Tresorerie && m_type <= Autre);
    FicheCompte fiche = m_fiche;
    const bool tresorerie = m_type == Tresorerie, simple = Est(FormeCompte::RecettesDepenses);
    fiche.code = m_code;
    fiche.type = m_type;
    fiche.banque = simple ? m_avant.TypeTresorerie != 0 : tresorerie && m_fiche.banque;
    if (!Est(FormeCompte::Tresorerie)) Repartit(fiche);
    FicheVers(m_app, FicheCompte::Table, &fiche, &m_rec);
    if (Ajout() || !Est(FormeCompte::Tresorerie))
      m_rec.PartPro =
          m_type == Depense && !EstComptePersonnel(m_app, m_compte) ? m_fiche.partPro : ToutProfessionnel;
    if (simple || (!tresorerie && m_avant.Type == m_type) || !SoldeChange()) return;
    m_rec.SoldeInitialEuro = SoldeEuro();
    m_rec.SoldeInitialFranc = SoldeFranc();
  }

  /// A balance that was carried over came with a rate of its own: it is converted when it is typed.
  bool SoldeChange() const {
    const f64 avant = m_app.Reglages.IsEuro() ? m_avant.SoldeInitialEuro : m_avant.SoldeInitialFranc;
    return Ajout() || m_type != m_avant.Type || SoldeSaisi() != avant;
  }

  f64 SoldeSaisi() const { return m_type == Tresorerie ? m_fiche.creditInitial - m_fiche.debitInitial : 0; }

  Refus Solde() const {
    if (!SoldeChange() || (std::fabs(SoldeEuro()) <= MontantMax && std::fabs(SoldeFranc()) <= MontantMax))
      return {};
    const auto texte = [](f64 montant) { return FormatMontant(montant, 2); };
    return Refus(ErrMontantBornes, m_fiche.creditInitial != 0 ? "credit" : "debit",
                 {texte(std::fabs(SoldeSaisi())), "0", texte(MontantMax)});
  }

  f64 Taux() const { return m_app.Magasin.GetTauxEuro(m_app.Magasin.Today()); }
  f64 SoldeEuro() const {
    return m_app.Reglages.IsEuro() ? SoldeSaisi() : QVAPI::ConvertFrancToEuro(Taux(), SoldeSaisi());
  }
  f64 SoldeFranc() const {
    return m_app.Reglages.IsEuro() ? QVAPI::ConvertEuroToFranc(Taux(), SoldeSaisi()) : SoldeSaisi();
  }

  /// Heading, VAT account and rate, as far as an account of the type has them.
  void Repartit(FicheCompte& fiche) const {
    fiche.rubrique = m_type == Tresorerie ? std::string() : NormaliseRubrique(fiche.rubrique);
    if (m_type != Tva) fiche.tauxTVA = 0;
    const std::string compteTVA = QVAPI::GetLongCompte(std::exchange(fiche.compteTVA, {}));
    if ((m_type != Recette && m_type != Depense) || compteTVA.empty() || !m_app.Reglages.IsTVA()) return;
    for (const ChoixTVA& choix : ChoixComptesTVA(m_app))
      if (choix.compte == compteTVA) {
        fiche.compteTVA = compteTVA;
        fiche.tauxTVA = choix.taux;
      }
  }

  Refus Ecrit() {
    Remplit();
    CPlan plan(m_app, m_app.PathExercice);
    assert(LitTexte(m_rec.Compte) == m_compte && m_rec.Type == m_type);
    if (!plan.OpenFile()) return EchecFichier();
    const bool etaitTresorerie = !Ajout() && m_avant.Type == Tresorerie;
    *plan.Rec = m_rec;
    if (const Refus refus = RemplaceEnregistrement(m_app, plan, m_fiche.position)) return refus;
    if (etaitTresorerie && m_type == Tresorerie && !DeplaceAdresse(m_app, CodeDe(m_avant), m_code))
      m_app.Dit(m_app.EchecReglages());
    return {};
  }

  CFenlorApp& m_app;
  FicheCompte& m_fiche;
  const std::string m_code, m_compte;
  const i16 m_type;
  Plan m_rec{}, m_avant{};
};

}  // namespace

const TableFiche FicheCompte::Table{"Plan", Champs};

bool ADesMouvements(const Plan& compte) {
  return compte.CreditFranc != 0 || compte.CreditEuro != 0 || compte.DebitFranc != 0 || compte.DebitEuro != 0;
}

FicheCompte NouvelleFiche(CFenlorApp& app, FormeCompte forme, i16 type) {
  FicheCompte fiche;
  fiche.forme = forme;
  fiche.type = type;
  if (forme == FormeCompte::Tresorerie) {
    fiche.type = Tresorerie;
    fiche.compte = ProposeNumeroTresorerie(app, fiche.banque);
  }
  return fiche;
}

Refus LitFiche(CFenlorApp& app, Position position, FicheCompte& fiche) {
  Plan compte{};
  return LitFiche(app, position, fiche, compte);
}

Refus LitFiche(CFenlorApp& app, Position position, FicheCompte& fiche, Plan& compte) {
  if (const Refus refus = Lit(app, position, compte)) return refus;
  const f64 initial = app.Reglages.IsEuro() ? compte.SoldeInitialEuro : compte.SoldeInitialFranc;
  FicheDepuis(app, FicheCompte::Table, &compte, &fiche);
  fiche.position = position;
  fiche.code = CodeDe(compte);
  fiche.partPro =
      compte.Type == Depense && !EstComptePersonnel(app, fiche.compte) ? +compte.PartPro : ToutProfessionnel;
  fiche.debitInitial = initial < 0 ? -initial : 0;
  fiche.creditInitial = initial > 0 ? initial : 0;
  assert(fiche.debitInitial >= 0 && fiche.creditInitial >= 0);
  return {};
}

bool EstComptePersonnel(CFenlorApp& app, const std::string& compte) {
  const std::string longue = QVAPI::GetLongCompte(compte);
  return !longue.empty() && longue == app.Magasin.GetComptePerso();
}

std::string ProposeNumero(CFenlorApp& app, const TexteFixe& cle, const TexteFixe& defaut,
                          const std::function<bool(const std::string&)>& pris) {
  const std::string section = Texte(SecActivite);
  std::string radical = CompacteTexte(app.Reglages.LitIni(section, Texte(cle)));
  assert(*defaut.utf8);
  if (radical.empty()) {
    radical = Texte(defaut);
    app.Reglages.EcritIni(section, Texte(cle), radical);
  }
  // A long radical leaves few digits; numbers repeat once they are cut at ten characters.
  constexpr unsigned dernier = 9999;
  for (unsigned n = 1; n <= dernier; ++n) {
    const std::string compte = QVAPI::GetLongCompte(radical + std::to_string(n));
    if (!pris(compte)) return app.NumeroCourt(compte);
  }
  return {};
}

std::string ProposeNumeroTresorerie(CFenlorApp& app, bool banque) {
  return ProposeNumero(app, banque ? CleRadicalBanque : CleRadicalCaisse,
                       banque ? RadicalBanqueDefaut : RadicalCaisseDefaut,
                       [&](const std::string& compte) { return NumeroPris(app, compte, 0); });
}

bool ClasseJuste(i16 type, const std::string& compte) {
  const char classe = compte.empty() ? '\0' : compte.front();
  switch (type) {
    case Tresorerie:
      return classe == '5';
    case Recette:
      return classe == '7';
    case Depense:
      return classe == '6';
    case Tva:
      return classe == '4';
    default:
      return classe < '4' || classe > '7';
  }
}

Refus ControleCode(CFenlorApp& app, const FicheCompte& fiche) {
  const std::string code = CompacteTexte(fiche.code);
  return code.empty() || !CodePris(app, code, fiche.position) ? Refus() : Refus(ErrCodeExistant, "code");
}

Refus ControleNumero(CFenlorApp& app, const FicheCompte& fiche) {
  const std::string compte = QVAPI::GetLongCompte(fiche.compte);
  if (compte.empty() || !NumeroPris(app, compte, fiche.position)) return {};
  return Refus(ErreurNumeroPris(fiche.forme), "compte");
}

Refus EnregistreFiche(CFenlorApp& app, FicheCompte& fiche) {
  if (app.Reglages.IsFige()) return {};
  return Enregistrement(app, fiche).Fait();
}

Refus SupprimeFiche(CFenlorApp& app, const FicheCompte& fiche) {
  if (const Refus r = app.ControleEcriture()) return r;
  Plan compte{};
  if (fiche.position == 0) return {};
  if (const Refus refus = Lit(app, fiche.position, compte)) return refus;
  const bool simple = fiche.forme == FormeCompte::RecettesDepenses;
  if (ADesMouvements(compte)) return Refus::Avis(simple ? InfoCompteMouvemente : InfoTresorerieMouvementee);
  const std::string numero = LitTexte(compte.Compte), court = app.NumeroCourt(numero);
  if (const std::string utilisation = UtilisationCompte(app, numero); !utilisation.empty())
    return Refus(ErrCompteUtilise, "", {court, utilisation});
  const TexteFixe& question = simple ? QuestionSupprimeCompte : QuestionSupprimeTresorerie;
  if (const Refus refus =
          app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, question, "", {simple ? court : CodeDe(compte)}))
    return refus;
  CPlan plan(app, app.PathExercice);
  return SupprimeEnregistrement(plan, fiche.position);
}

}  // namespace fenlor

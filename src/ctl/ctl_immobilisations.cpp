#include <cassert>

#include "assets/amortissements.h"
#include "assets/textes.h"
#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/demandeimmobilisation.h"
#include "ctl/reponseslignes.h"
#include "ctl/textes.h"
#include "ctl/verbefiche.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct OptionsImmobilisation {
  std::string action;
  std::string fichier = "-";
};

class VerbeImmobilisation {
 public:
  VerbeImmobilisation(Contexte& contexte, const OptionsImmobilisation& options)
      : m_contexte(contexte),
        m_app(contexte.App),
        m_options(options),
        m_immobilisations(contexte.Magasin, FichierImmo),
        m_corrections(contexte.Magasin, FichierAmo) {}

  int Execute() {
    if (!m_immobilisations || !m_corrections) return m_contexte.RefuseMagasin();
    if (m_options.action == "lister") return Liste();
    return RepondParLigne(m_contexte, m_options.fichier,
                          [this](const Json& objet, LigneJson& reponse) { return Traite(objet, reponse); });
  }

 private:
  Refus Traite(const Json& objet, LigneJson& reponse) {
    FicheImmobilisation fiche = NouvelleImmobilisation(m_app);
    if (m_options.action != "ajouter") {
      if (const Refus refus = Trouve(objet, fiche)) return refus;
    }
    const struct {
      std::string_view action;
      Refus (VerbeImmobilisation::*fait)(const Json&, FicheImmobilisation&);
    } actions[] = {{"ajouter", &VerbeImmobilisation::Enregistre},
                   {"modifier", &VerbeImmobilisation::Enregistre},
                   {"ceder", &VerbeImmobilisation::Cede},
                   {"rebuter", &VerbeImmobilisation::Rebute},
                   {"supprimer", &VerbeImmobilisation::Supprime}};
    if (m_options.action == "detail") return Detail(objet, fiche, reponse);
    for (const auto& a : actions)
      if (a.action == m_options.action)
        if (const Refus refus = (this->*a.fait)(objet, fiche)) return refus;
    assert(fiche.rec.Numero != 0);
    reponse.Entier("Numero", fiche.rec.Numero);
    return {};
  }

  Refus Trouve(const Json& objet, FicheImmobilisation& fiche) {
    u32 numero = 0;
    if (const Refus refus = LitNumero(objet, numero)) return refus;
    const Position position = PositionImmobilisation(m_app, numero);
    if (position == 0)
      return m_contexte.Dialogue.Numero() != 0 ? m_contexte.DernierEchec()
                                               : RefusChamp("Numero", "cette immobilisation n'existe pas."_w);
    return LitFiche(m_app, position, fiche) ? m_contexte.DernierEchec() : Refus();
  }

  Refus Enregistre(const Json& objet, FicheImmobilisation& fiche) {
    if (const Refus refus = LitAcquisition(m_app, objet, fiche)) return refus;
    return EnregistreFiche(m_app, fiche);
  }

  Refus Cede(const Json& objet, FicheImmobilisation& fiche) {
    FicheCession cession;
    bool annule = false;
    if (const Refus refus = LitCession(m_app, objet, fiche.rec, cession, annule)) return refus;
    if (const Refus refus = ControleCession(fiche.rec)) return refus;
    if (const Refus refus = annule ? AnnuleCession(m_app, fiche.rec) : PoseCession(m_app, cession, fiche.rec))
      return refus;
    return EcritImmobilisation(m_app, fiche);
  }

  Refus Rebute(const Json& objet, FicheImmobilisation& fiche) {
    Date date = 0;
    bool annule = false;
    if (const Refus refus = LitRebut(m_app, objet, fiche.rec, date, annule)) return refus;
    if (const Refus refus = ControleRebut(fiche.rec)) return refus;
    if (const Refus refus = annule ? AnnuleCession(m_app, fiche.rec) : PoseRebut(m_app, date, fiche.rec))
      return refus;
    return EcritImmobilisation(m_app, fiche);
  }

  Refus Supprime(const Json& objet, FicheImmobilisation& fiche) {
    Refus refus;
    LecteurChamps champs(objet, refus);
    std::optional<i64> numero;
    if (!champs.Entier("Numero", 1, 0xFFFFFFFF, numero) || !champs.RienDautre()) return refus;
    return SupprimeFiche(m_app, fiche);
  }

  /// The rows, once the corrections of the line are saved.
  Refus Detail(const Json& objet, const FicheImmobilisation& fiche, LigneJson& reponse) {
    DetailAmortissements detail;
    bool change = false;
    if (const Refus refus = LitDetail(m_app, fiche.position, detail)) return refus;
    if (const Refus refus = LitCorrections(objet, detail, change)) return refus;
    if (change) {
      if (const Refus refus = EnregistreDetail(m_app, detail)) return refus;
      if (const Refus refus = LitDetail(m_app, fiche.position, detail)) return refus;
    }
    std::vector<LigneJson> annees;
    for (const LigneDetail& l : detail.lignes)
      annees.push_back(
          LigneJson().Entier("Annee", l.annee).Nombre("Theorique", l.theorique).Nombre("Reel", l.reel));
    reponse.Entier("Numero", fiche.rec.Numero).Texte("Monnaie", detail.euro ? "euro" : "franc");
    reponse.Objets("Annees", annees);
    return {};
  }

  int Liste() {
    CImmobilisations fichier(m_app, m_app.PathCabinet);
    const std::vector<std::string> titres = {"N°"_w, "Achat",   "Désignation"_w,
                                             "Type", "Cession", "Durée"_w,
                                             "Taux", "Prix",    "Valeur amortissable"};
    return ListeEnregistrements(m_contexte, fichier, PositionsDe(m_app, fichier), titres, 5,
                                [this](Position position) { return Ligne(position); });
  }

  std::vector<std::string> Ligne(Position position) {
    FicheImmobilisation fiche;
    if (LitFiche(m_app, position, fiche)) return {};
    const bool euro = m_app.Reglages.IsEuro();
    const Immobilisation& rec = fiche.rec;
    const char separateur = m_app.Reglages.SeparateurDecimal();
    const auto nombre = [&](f64 valeur) { return FormatMontant(valeur, 2, separateur); };
    const auto& types = FicheImmobilisation::Table.Trouve("type")->mots;
    const auto type = static_cast<std::size_t>(fiche.type);
    std::string cession = StrDate(rec.DateCession);
    if (EstRebutee(rec)) cession += " (" + Texte(MotRebut) + ')';
    return {std::to_string(rec.Numero),
            StrDate(rec.DateAchat),
            fiche.designation,
            type < types.size() ? types[type] : "",
            cession,
            nombre(fiche.duree),
            nombre(fiche.taux),
            nombre(euro ? rec.PrixEuro : rec.PrixFranc),
            nombre(euro ? rec.ValeurAmortissableEuro : rec.ValeurAmortissableFranc)};
  }

  Contexte& m_contexte;
  CFenlorApp& m_app;
  const OptionsImmobilisation& m_options;
  Ouverture m_immobilisations, m_corrections;  ///< open once for all lines
};

}  // namespace

void DeclareImmobilisations(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsImmobilisation>();
  Commande verbe = ligne.Ajoute(
      "immobilisation", "Tient le registre des immobilisations ; répond une ligne à chaque objet",
      [o](Contexte& c) {
        return c.OuvreExercice() ? VerbeImmobilisation(c, *o).Execute() : int{StatutRefuse};
      });
  verbe.Controle([o](const OptionsGlobales&) {
    return o->action.empty() ? std::string(
                                   "il manque ajouter, modifier, ceder, rebuter, supprimer, lister "
                                   "ou detail")
                             : std::string();
  });
  verbe.Action("lister", "Écrit les immobilisations par date d'achat", o->action);
  const struct {
    const char *nom, *description;
  } actions[] = {{"ajouter", "Ajoute des immobilisations"},
                 {"modifier", "Change les champs donnés"},
                 {"ceder", "Enregistre la cession ; \"DateCession\":\"\" la supprime"},
                 {"rebuter", "Enregistre la mise au rebut ; \"DateCession\":\"\" la supprime"},
                 {"supprimer", "Supprime des immobilisations"},
                 {"detail", "Donne le détail des amortissements et en corrige les montants réels"}};
  for (const auto& a : actions)
    verbe.Action(a.nom, a.description, o->action)
        .Option("fichier", o->fichier, {"[FICHIER|-]"}, "Un objet JSON par ligne (- : l'entrée standard)");
  verbe.Pied(R"(Les champs sont ceux de exporter Immo, les montants ceux de la monnaie :
  {"Designation":"Table d'examen","DateAchat":"15/03/2003","TauxTVA":19.6,"PrixEuro":1196.0,
   "TypeAmortissement":0,"Duree":5.0}
  "TypeAmortissement" : 0 linéaire, 1 dégressif, 2 exceptionnel ; "Monnaie" : 0 franc, 1 euro
  {"Numero":3,"DateCession":"10/04/2003","PrixCessionEuro":700.0}
  {"Numero":3,"Annees":[{"Annee":2002,"Reel":100.0}]}  sans "Reel" : le montant théorique)");
}

}  // namespace fenlor

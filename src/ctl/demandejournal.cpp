#include "ctl/demandejournal.h"

#include "core/erreurssaisie.h"
#include "core/valeurs.h"
#include "ctl/annuaire.h"
#include "ctl/json.h"
#include "ctl/optionscommunes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

class Lecteur {
 public:
  Lecteur(Contexte& contexte, const OptionsJournal& options, DemandeListe& demande)
      : m_contexte(contexte), m_app(contexte.App), m_options(options), m_demande(demande) {}

  bool Lit() {
    m_demande.journal = JournalNomme(m_options.journal);
    m_demande.mode = ModeNomme(m_options.mode);
    return PoseMois() && PoseFiltre() && PoseCriteres();
  }

 private:
  bool TropLong(const char* champ, std::size_t maximum) {
    m_contexte.Refuse(ErrTexteTropLong, {champ, std::to_string(maximum)});
    return false;
  }

  bool PoseMois() {
    m_demande.mois = GetDate("01/" + m_options.mois);
    const Date debut = m_app.Reglages.GetDebutExercice(), fin = m_app.Reglages.GetFinExercice();
    if (m_demande.mois >= FaitDate(1, Mois(debut), Annee(debut)) && m_demande.mois <= fin) return true;
    return m_contexte.Invalide("mois", "l'exercice va du "_w + StrDate(debut) + " au " + StrDate(fin) + '.');
  }

  bool PoseFiltre() {
    if (!m_options.compte) return true;
    if (m_demande.journal == JournalOD)
      return m_contexte.Invalide("compte", "sans objet pour les opérations diverses."_w);
    const auto texte = DepuisUtf8(*m_options.compte);
    AnnuaireComptes comptes;
    if (!comptes.Charge(m_app)) {
      m_contexte.RefuseMagasin();
      return false;
    }
    const Plan* compte = texte ? comptes.ParCode(Tresorerie, *texte) : nullptr;
    if (texte && !compte) compte = comptes.ParNumero(QVAPI::GetLongCompte(*texte));
    if (!compte || compte->Type != Tresorerie)
      return m_contexte.Invalide("compte", "aucun compte de trésorerie n'a ce code ou ce numéro."_w);
    m_demande.filtre = LitTexte(compte->Compte);
    return true;
  }

  /// A bound among account numbers, in the form that the screen shows.
  template <std::size_t N>
  bool PoseCompte(const char* champ, const std::string& utf8, char (&borne)[N]) {
    const auto texte = DepuisUtf8(utf8);
    if (!texte) return m_contexte.Invalide(champ, raison::CaractereImpossible());
    if (texte->size() >= N) return TropLong(champ, N - 1);
    const std::string longue = QVAPI::GetLongCompte(*texte);
    if (longue.empty()) return m_contexte.Invalide(champ, "il est vide."_w);
    PoseTexte(borne, m_app.NumeroCourt(longue));
    return true;
  }

  template <std::size_t N>
  bool PoseRubrique(const char* champ, const std::string& utf8, char (&borne)[N]) {
    const auto texte = DepuisUtf8(utf8);
    if (!texte) return m_contexte.Invalide(champ, raison::CaractereImpossible());
    if (m_demande.journal == JournalOD)
      return m_contexte.Invalide(champ, "sans objet pour les opérations diverses."_w);
    if (texte->size() >= N) return TropLong(champ, N - 1);
    const std::string code = NormaliseRubrique(*texte);
    if (code.empty()) return m_contexte.Invalide(champ, "il est vide."_w);
    PoseTexte(borne, code);
    return true;
  }

  bool PoseCriteres() {
    const OptionsJournal& o = m_options;
    CritereEcriture& c = m_demande.criteres;
    c = CriteresParDefaut(m_app);
    c.Toutes = 0;
    c.Pointees = o.pointees;
    c.Remises = o.remises;
    c.Rapprochees = o.rapprochees;
    c.NonPointees = o.nonPointees;
    c.NonRemises = o.nonRemises;
    c.NonRapprochees = o.nonRapprochees;
    if (o.monnaie) c.MontantEuro = *o.monnaie == "euro";
    if (o.montantMin && o.montantMax) {
      c.TousMontants = 0;
      c.MontantMin = TexteVersMontant(*o.montantMin);
      c.MontantMax = TexteVersMontant(*o.montantMax);
    }
    if (o.compteDe && o.compteA) {
      c.TousComptes = 0;
      if (!PoseCompte("compte-de", *o.compteDe, c.CompteDe) || !PoseCompte("compte-a", *o.compteA, c.CompteA))
        return false;
    }
    if (o.rubriqueDe && o.rubriqueA) {
      c.ToutesRubriques = 0;
      if (!PoseRubrique("rubrique-de", *o.rubriqueDe, c.RubriqueDe) ||
          !PoseRubrique("rubrique-a", *o.rubriqueA, c.RubriqueA))
        return false;
    }
    if (o.jourDe && o.jourA) {
      c.TousJours = 0;
      c.JourDe = static_cast<u32>(TexteVersEntier(*o.jourDe));
      c.JourA = static_cast<u32>(TexteVersEntier(*o.jourA));
    }
    NormaliseCriteres(m_app, c);
    // The form hides these two in a practice of its own; typed here they are meant.
    c.Associees = o.associees;
    c.NonAssociees = o.nonAssociees;
    if (o.associees || o.nonAssociees) c.Toutes = 0;
    return true;
  }

  Contexte& m_contexte;
  CFenlorApp& m_app;
  const OptionsJournal& m_options;
  DemandeListe& m_demande;
};

FormeOption FormeJour() {
  return {"JOUR", [](const std::string& texte) {
            return IsDateOk(GetDate(texte + "/01/2000")) ? std::string()
                                                         : "jour incorrect : " + texte + " (1 à 31)";
          }};
}

}  // namespace

void DeclareOptionsJournal(Commande& commande, OptionsJournal& o) {
  commande.Option("--journal", o.journal, FormeJournal(), "Journal")
      .Obligatoire()
      .Option("--mois", o.mois, FormeMois(), "Mois")
      .Obligatoire()
      .Option("--compte", o.compte, {"COMPTE"}, "Ce compte de trésorerie seulement (code ou numéro)")
      .Option("--mode", o.mode, FormeMode(), "Écritures listées (toutes)")
      .Drapeau("--comptable", o.comptable, "Journal comptable : chaque ligne des écritures");
  const auto marque = [&](const std::string& nom, bool& oui, bool& non, const char* quoi) {
    commande.Drapeau("--" + nom, oui, quoi).Drapeau("--non-" + nom, non, "Le contraire").Exclut("--" + nom);
  };
  marque("pointees", o.pointees, o.nonPointees, "Écritures pointées");
  marque("remises", o.remises, o.nonRemises, "Écritures remises en banque");
  marque("rapprochees", o.rapprochees, o.nonRapprochees, "Écritures rapprochées");
  marque("associees", o.associees, o.nonAssociees, "Écritures associées à une recette");
  commande.Option("--montant-min", o.montantMin, FormeMontant(), "Plus petit montant, au débit")
      .Option("--montant-max", o.montantMax, FormeMontant(), "Plus grand montant")
      .Option("--monnaie", o.monnaie, FormeMonnaie(), "Monnaie de ces bornes (celle de l'exercice)")
      .Option("--compte-de", o.compteDe, {"COMPTE"}, "Premier compte")
      .Option("--compte-a", o.compteA, {"COMPTE"}, "Dernier compte")
      .Option("--rubrique-de", o.rubriqueDe, {"CODE"}, "Première rubrique")
      .Option("--rubrique-a", o.rubriqueA, {"CODE"}, "Dernière rubrique")
      .Option("--jour-de", o.jourDe, FormeJour(), "Premier jour")
      .Option("--jour-a", o.jourA, FormeJour(), "Dernier jour");
}

std::string FauteOptionsJournal(const OptionsJournal& o) {
  const struct {
    const std::optional<std::string>&de, &a;
    const char* nom;
  } paires[] = {{o.montantMin, o.montantMax, "--montant-min et --montant-max"},
                {o.compteDe, o.compteA, "--compte-de et --compte-a"},
                {o.rubriqueDe, o.rubriqueA, "--rubrique-de et --rubrique-a"},
                {o.jourDe, o.jourA, "--jour-de et --jour-a"}};
  for (const auto& paire : paires)
    if (paire.de.has_value() != paire.a.has_value()) return std::string(paire.nom) + " vont ensemble";
  if (o.monnaie && !o.montantMin) return "--monnaie va avec --montant-min et --montant-max";
  return {};
}

bool LitDemandeJournal(Contexte& contexte, const OptionsJournal& options, DemandeListe& demande) {
  return Lecteur(contexte, options, demande).Lit();
}

}  // namespace fenlor

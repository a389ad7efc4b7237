#include <cassert>

#include "assets/amortissements.h"
#include "core/btfiles.h"
#include "ctl/commandes.h"
#include "ctl/enregistrementjson.h"
#include "ctl/optionscommunes.h"
#include "ctl/tableau.h"
#include "ctl/textes.h"
#include "journal/textes.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct OptionsAmortissement {
  std::string fichier = "-";  ///< assets as JSON lines
  std::optional<u32> numero;  ///< instead: an asset of the practice
  std::string au;             ///< "JJ/MM/AAAA", empty: the end of the exercice
};

/// All years with the cumul up to each.
class Echeancier : public CCalculAmortissements {
 public:
  struct Ligne {
    u32 annee;
    f64 theoriqueFranc, theoriqueEuro, reelFranc, reelEuro, cumulFranc, cumulEuro;
  };
  using CCalculAmortissements::CCalculAmortissements;

  bool OnAnnuite(u32 annee, u32, f64 theoriqueFranc, f64 theoriqueEuro, f64 reelFranc,
                 f64 reelEuro) override {
    assert(Lignes.empty() || annee > Lignes.back().annee);
    m_franc += reelFranc;
    m_euro += reelEuro;
    Lignes.push_back({annee, Arrondi2(theoriqueFranc), Arrondi2(theoriqueEuro), Arrondi2(reelFranc),
                      Arrondi2(reelEuro), Arrondi2(m_franc), Arrondi2(m_euro)});
    return true;
  }

  std::vector<Ligne> Lignes;

 private:
  f64 m_franc = 0, m_euro = 0;
};

Refus RefusManquant(const char* champ) { return Refus(ErrChampManquant, "", {champ}); }

/// What no schedule can do without. Absent fields count as 0 in a record.
Refus ControleAbsents(const Json& objet, const Immobilisation& immo) {
  for (const char* champ : {"DateAchat", "TauxAnnuel"})
    if (!objet.contains(champ)) return RefusManquant(champ);
  if (immo.TypeAmortissement == Degressif && !objet.contains("Duree")) return RefusManquant("Duree");
  return {};
}

Refus Controle(const Immobilisation& immo) {
  if (!IsDateOk(immo.DateAchat)) return RefusChamp("DateAchat", "cette date n'existe pas."_w);
  if (immo.DateCession != 0 && !IsDateOk(immo.DateCession))
    return RefusChamp("DateCession", "cette date n'existe pas."_w);
  if (immo.TypeAmortissement > Exceptionnel)
    return RefusChamp("TypeAmortissement", raison::EntierAttendu(Lineaire, Exceptionnel));
  return {};
}

class CommandeEcheancier {
 public:
  CommandeEcheancier(Contexte& contexte, const OptionsAmortissement& options)
      : m_contexte(contexte), m_options(options), m_date(GetDate(options.au)) {}

  int Execute() {
    assert(!m_options.numero || m_options.fichier == "-");
    if (m_date == 0 && !m_contexte.OuvreExercice()) return StatutRefuse;
    return m_options.numero ? DuFichier(*m_options.numero) : DesLignes();
  }

 private:
  int DuFichier(u32 numero) {
    CImmobilisations fichier(m_contexte.App, m_contexte.App.PathCabinet);
    if (!fichier.OpenFile()) return m_contexte.RefuseMagasin();
    fichier.Rec->Numero = numero;
    if (!fichier.Find(IndiceImmoNumero)) {
      if (m_contexte.Dialogue.Numero() != 0) return m_contexte.RefuseMagasin();
      return m_contexte.Refuse(ErrChampInvalide, {"numero", "cette immobilisation n'existe pas."_w});
    }
    if (const Refus refus = Controle(*fichier.Rec)) return m_contexte.Refuse(refus);
    return Ecrit(*fichier.Rec) ? StatutFait : StatutRefuse;
  }

  int DesLignes() {
    LecteurLignes lignes(m_contexte.Entree, m_options.fichier);
    if (!lignes.Ouvert()) return m_contexte.RefuseOuverture(m_options.fichier);
    int statut = StatutFait;
    Json objet;
    Refus refus;
    while (lignes.Suivante(objet, refus)) {
      Immobilisation immo{};
      if (!refus) refus = LitEnregistrement(objet, Champs(FichierImmo), &immo);
      if (!refus) refus = ControleAbsents(objet, immo);
      if (!refus) refus = Controle(immo);
      if (refus)
        statut = m_contexte.Refuse(refus, lignes.Numero());
      else if (!Ecrit(immo))
        return StatutRefuse;
    }
    return lignes.Erreur() ? m_contexte.RefuseLecture(lignes.Erreur(), m_options.fichier) : statut;
  }

  bool Ecrit(const Immobilisation& immo) {
    Echeancier calcul(m_contexte.App, &immo);
    f64 franc = 0, euro = 0;
    m_contexte.Oublie();
    calcul.CalculAmortissements(m_date, franc, euro);
    if (m_contexte.Dialogue.Numero() != 0) {
      m_contexte.RefuseMagasin();
      return false;
    }
    return m_contexte.Ecrit(m_contexte.Globales.json ? EnJson(immo, calcul) : EnTableau(immo, calcul));
  }

  static std::string EnJson(const Immobilisation& immo, const Echeancier& calcul) {
    std::string texte;
    for (const Echeancier::Ligne& l : calcul.Lignes)
      texte += LigneJson()
                   .Entier("Numero", immo.Numero)
                   .Entier("Annee", l.annee)
                   .Nombre("TheoriqueFranc", l.theoriqueFranc)
                   .Nombre("TheoriqueEuro", l.theoriqueEuro)
                   .Nombre("ReelFranc", l.reelFranc)
                   .Nombre("ReelEuro", l.reelEuro)
                   .Nombre("CumulFranc", l.cumulFranc)
                   .Nombre("CumulEuro", l.cumulEuro)
                   .Fin();
    return texte;
  }

  std::string EnTableau(const Immobilisation& immo, const Echeancier& calcul) {
    const char separateur = m_contexte.App.Reglages.SeparateurDecimal();
    Tableau tableau;
    tableau.Ajoute(
        {"Année"_w, "Théorique F"_w, "Théorique €"_w, "Réel F"_w, "Réel €"_w, "Cumul F", "Cumul €"_w});
    for (const Echeancier::Ligne& l : calcul.Lignes) {
      std::vector<std::string> colonnes{std::to_string(l.annee)};
      for (const f64 montant :
           {l.theoriqueFranc, l.theoriqueEuro, l.reelFranc, l.reelEuro, l.cumulFranc, l.cumulEuro})
        colonnes.push_back(FormatMontant(montant, 2, separateur));
      tableau.Ajoute(std::move(colonnes));
    }
    std::string titre = LitTexte(immo.Designation);
    if (titre.empty()) titre = "Immobilisation";
    if (immo.Numero != 0) titre += " (" + std::to_string(immo.Numero) + ")";
    const std::string avant = m_suivante ? "\n" : "";
    m_suivante = true;
    return avant + VersUtf8(titre + ", achat le "_w + StrDate(immo.DateAchat)) + "\n" + tableau.Texte(1);
  }

  Contexte& m_contexte;
  const OptionsAmortissement& m_options;
  const Date m_date;
  bool m_suivante = false;  ///< a schedule stands above
};

}  // namespace

void DeclareAmortissement(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsAmortissement>();
  ligne
      .Ajoute("amortissement", "Donne l'amortissement d'immobilisations, année par année",
              [o](Contexte& c) { return CommandeEcheancier(c, *o).Execute(); })
      .Option("--numero", o->numero, FormeNumero(), "Immobilisation du cabinet, par son numéro")
      .Option("--fichier", o->fichier, {"FICHIER|-"},
              "Immobilisations, une par ligne JSON (- : l'entrée standard)")
      .Exclut("--numero")
      .Option("--au", o->au, FormeDate(), "Dernier jour (par défaut : la fin de l'exercice)")
      .Pied(R"(Une ligne a les champs qu'écrit exporter Immo :
  {"Designation":"Table d'examen","DateAchat":"15/03/2003","ValeurAmortissableEuro":10000.0,
   "TypeAmortissement":0,"Duree":5.0,"TauxAnnuel":20.0}
  "TypeAmortissement" : 0 linéaire, 1 dégressif, 2 exceptionnel)");
}

}  // namespace fenlor

#include <cassert>
#include <optional>

#include "core/erreurs.h"
#include "ctl/commandes.h"
#include "ctl/saisisseur.h"
#include "ctl/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct OptionsSaisir {
  std::string fichier = "-";
  bool tout = false;
};

/// Gives the answers out, one line for each; keeps them back until the end when
/// the whole input is one unit.
class Reponses {
 public:
  Reponses(Contexte& contexte, bool retenues) : m_contexte(contexte), m_retenir(retenues) {}

  /// False when the output is lost.
  bool Ajoute(ReponseSaisie&& reponse) {
    if (reponse.refus) m_refus = true;
    if (m_retenir) {
      m_retenues.push_back(std::move(reponse));
      return true;
    }
    return Dit(reponse) && m_contexte.Vide();
  }
  /// The unit was not saved: what looked done is refused. It is told once, whatever the number of lines.
  void RefuseTout(const Refus& refus) {
    assert(refus && m_retenir && !m_commun);
    m_refus = true;
    m_commun = refus;
    for (ReponseSaisie& reponse : m_retenues)
      if (!reponse.refus) reponse.refus = refus;
  }
  bool Donne() {
    assert(m_retenir || m_retenues.empty());
    for (const ReponseSaisie& reponse : m_retenues)
      if (!Dit(reponse)) return false;
    if (m_commun) {
      m_contexte.Refuse(*m_commun);
      m_contexte.Avertit(Texte(AvisRienDuTout));
    }
    return m_contexte.Vide();
  }
  bool Refusees() const { return m_refus; }

 private:
  bool Dit(const ReponseSaisie& reponse) {
    assert(reponse.refus || reponse.faite.mouvement != 0);
    LigneJson ligne;
    ligne.Entier("entree", reponse.entree);
    if (reponse.refus)
      ligne.Entier("erreur", reponse.refus.numero).Texte("texte", reponse.refus.texte);
    else
      ligne.Entier("mouvement", reponse.faite.mouvement).Entier("ligne", reponse.faite.ligne);
    if (reponse.refus && !EstCommun(reponse.refus)) m_contexte.Refuse(reponse.refus, reponse.entree);
    return m_contexte.Ecrit(ligne.Fin());
  }

  bool EstCommun(const Refus& refus) const {
    return m_commun && m_commun->numero == refus.numero && m_commun->texte == refus.texte;
  }

  Contexte& m_contexte;
  std::optional<Refus> m_commun;  ///< what all lines were refused for
  bool m_retenir;
  bool m_refus = false;
  std::vector<ReponseSaisie> m_retenues;
};

int Saisit(Contexte& contexte, const OptionsSaisir& options) {
  LecteurLignes lignes(contexte.Entree, options.fichier);
  if (!lignes.Ouvert()) return contexte.RefuseOuverture(options.fichier);
  if (!contexte.OuvreExercice()) return StatutRefuse;
  Saisisseur saisisseur(contexte);
  if (!saisisseur.Prepare()) return contexte.RefuseMagasin();

  Reponses reponses(contexte, options.tout);
  std::optional<QVAPI::Unite> unite;
  if (options.tout) unite.emplace(contexte.Magasin);
  Json objet;
  Refus refus, echec;  // echec: of the store, inside the one unit: nothing of it may stay
  while (lignes.Suivante(objet, refus)) {
    if (echec) refus = echec;
    ReponseSaisie reponse = saisisseur.Traite(objet, refus, lignes.Numero());
    if (unite && reponse.refus.numero == ErrMagasin) echec = reponse.refus;
    if (!reponses.Ajoute(std::move(reponse))) return StatutRefuse;
  }

  int statut = StatutFait;
  if (lignes.Erreur()) statut = contexte.RefuseLecture(lignes.Erreur(), options.fichier);
  if (unite && statut != StatutFait) {
    reponses.RefuseTout(Refus(ErrFinDeFichier));
  } else if (echec) {
    reponses.RefuseTout(echec);
  } else if (unite && !unite->Valide()) {
    reponses.RefuseTout(contexte.DernierEchec());
  }
  if (!reponses.Donne() || reponses.Refusees()) statut = StatutRefuse;
  return statut;
}

}  // namespace

void DeclareSaisie(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsSaisir>();
  ligne
      .Ajoute("saisir", "Enregistre des écritures, une par ligne JSON ; répond une ligne à chacune",
              [o](Contexte& c) { return Saisit(c, *o); })
      .Option("fichier", o->fichier, {"[FICHIER|-]"}, "Fichier des écritures (- : l'entrée standard)")
      .Drapeau("--tout", o->tout, "Enregistre d'un seul tenant toutes les lignes acceptées, ou aucune")
      .Pied(R"(Recette, dépense :
  {"journal":"recettes","date":"15/03/2003","compte":"706","libelle":"Consultations",
   "ttc":120.0,"tresorerie":"BQ","paiement":"cheque"}
  "journal" : recettes, depenses ; "code" au lieu de "compte" ; "paiement" : cheque, autre ;
  en plus "professionnel", "monnaie" (franc, euro) ; au lieu de "tresorerie" :
  "tresoreries":[{"compte":"BQ","montant":100.0,"paiement":"cheque"},...]
Opération diverse :
  {"journal":"od","date":"15/03/2003","libelle":"Apport",
   "lignes":[{"compte":"512","debit":10.0},{"compte":"108","credit":10.0}]}
Écriture existante :
  {"mouvement":345,"ttc":125.0}  change les champs donnés
  {"mouvement":345,"supprimer":true} ; de même "valider", "pointer", "rapprocher" (true, false))");
}

}  // namespace fenlor

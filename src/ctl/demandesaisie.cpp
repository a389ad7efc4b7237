#include "ctl/demandesaisie.h"

#include <algorithm>
#include <limits>

#include "core/texte.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::size_t TailleLibelle = 80;
constexpr std::size_t TailleCompte = 10;
constexpr std::size_t TailleCode = 8;

/// An account number, in any form: blanks do not count.
bool LitCompte(LecteurChamps& champs, const char* nom, std::optional<std::string>& valeur) {
  std::optional<std::string> texte;
  if (!champs.Texte(nom, 4 * TailleCompte, texte)) return false;
  if (!texte) return true;
  const auto blancs = static_cast<std::size_t>(std::count(texte->begin(), texte->end(), ' '));
  if (texte->size() - blancs > TailleCompte)
    return champs.Invalide(nom, std::to_string(TailleCompte) + " caractères au plus."_w);
  valeur = std::move(texte);
  return true;
}

bool LitPaiement(LecteurChamps& champs, std::optional<i16>& valeur) {
  std::optional<std::size_t> mot;
  if (!champs.Mot("paiement", {"cheque", "autre"}, mot)) return false;
  if (mot) valeur = *mot == 0 ? PaiementCheque : PaiementAutre;
  return true;
}

std::string Prefixe(const char* liste, std::size_t indice) {
  return std::string(liste) + "[" + std::to_string(indice + 1) + "].";
}

bool LitTresoreries(const Json& liste, Refus& refus, std::vector<DemandeTresor>& tresoreries) {
  for (std::size_t i = 0; i < liste.size(); ++i) {
    LecteurChamps champs(liste[i], refus, Prefixe("tresoreries", i));
    std::optional<std::string> compte;
    std::optional<f64> montant;
    std::optional<i16> paiement;
    if (!LitCompte(champs, "compte", compte) || !champs.Montant("montant", montant) ||
        !LitPaiement(champs, paiement) || !champs.RienDautre())
      return false;
    if (!compte) return champs.Manquant("compte");
    if (!montant) return champs.Manquant("montant");
    tresoreries.push_back({*compte, *montant, paiement});
  }
  return true;
}

bool LitLignes(const Json& liste, Refus& refus, std::vector<DemandeLigneOD>& lignes) {
  for (std::size_t i = 0; i < liste.size(); ++i) {
    LecteurChamps champs(liste[i], refus, Prefixe("lignes", i));
    DemandeLigneOD ligne;
    std::optional<std::string> libelle;
    std::optional<f64> debit, credit;
    std::optional<i16> paiement;
    if (!LitCompte(champs, "compte", ligne.compte) || !champs.Texte("code", TailleCode, ligne.code) ||
        !champs.Texte("libelle", TailleLibelle, libelle) || !champs.Montant("debit", debit) ||
        !champs.Montant("credit", credit) || !LitPaiement(champs, paiement) || !champs.RienDautre())
      return false;
    if (ligne.compte && ligne.code) return champs.Invalide("code", "\"compte\" est déjà donné."_w);
    if (!ligne.compte && !ligne.code) return champs.Manquant("compte");
    ligne.libelle = libelle.value_or(std::string());
    ligne.debit = debit.value_or(0);
    ligne.credit = credit.value_or(0);
    ligne.paiement = paiement.value_or(PaiementCheque);
    lignes.push_back(std::move(ligne));
  }
  return true;
}

/// Fields that a new entry cannot do without.
bool ControleComplet(LecteurChamps& champs, const DemandeSaisie& demande) {
  if (!demande.journal) return champs.Manquant("journal");
  if (!demande.date) return champs.Manquant("date");
  if (*demande.journal == JournalOD) return demande.lignes ? true : champs.Manquant("lignes");
  if (!demande.compte && !demande.code) return champs.Manquant("compte");
  if (!demande.ttc) return champs.Manquant("ttc");
  if (!demande.tresorerie && !demande.tresoreries) return champs.Manquant("tresorerie");
  return true;
}

bool ControleCombinaisons(LecteurChamps& champs, Refus& refus, const DemandeSaisie& demande) {
  if (demande.compte && demande.code) return champs.Invalide("code", "\"compte\" est déjà donné."_w);
  if (demande.tresoreries && demande.tresorerie)
    return champs.Invalide("tresorerie", "\"tresoreries\" est déjà donné."_w);
  if (demande.tresoreries && demande.paiement) {
    refus = RefusPaiement();
    return false;
  }
  if (demande.supprimer.value_or(false)) {
    if (demande.mouvement == 0) return champs.Manquant("mouvement");
    if (demande.Contenu() || demande.journal || demande.valider || demande.pointer || demande.rapprocher)
      return champs.Invalide("supprimer", "il ne va qu'avec \"mouvement\"."_w);
    return true;
  }
  if (demande.mouvement == 0) return ControleComplet(champs, demande);
  if (!demande.Contenu() && !demande.valider && !demande.pointer && !demande.rapprocher)
    return champs.Invalide("mouvement", "rien n'est demandé pour cette écriture."_w);
  return true;
}

}  // namespace

bool DemandeSaisie::Contenu() const {
  return date || libelle || compte || code || tresorerie || ttc || professionnel || euro || paiement ||
         tresoreries || lignes;
}

Refus LitDemande(const Json& objet, DemandeSaisie& demande) {
  Refus refus;
  LecteurChamps champs(objet, refus);
  std::optional<std::size_t> journal, monnaie;
  std::optional<i64> mouvement;
  const Json *tresoreries = nullptr, *lignes = nullptr;
  const bool lu = champs.Mot("journal", {"recettes", "depenses", "od"}, journal) &&
                  champs.Entier("mouvement", 1, std::numeric_limits<u32>::max(), mouvement) &&
                  champs.Texte("date", TailleLibelle, demande.date) &&
                  champs.Texte("libelle", TailleLibelle, demande.libelle) &&
                  LitCompte(champs, "compte", demande.compte) &&
                  champs.Texte("code", TailleCode, demande.code) && champs.Montant("ttc", demande.ttc) &&
                  champs.Montant("professionnel", demande.professionnel) &&
                  champs.Mot("monnaie", {"franc", "euro"}, monnaie) &&
                  LitCompte(champs, "tresorerie", demande.tresorerie) &&
                  LitPaiement(champs, demande.paiement) && champs.Liste("tresoreries", tresoreries) &&
                  champs.Liste("lignes", lignes) && champs.Booleen("supprimer", demande.supprimer) &&
                  champs.Booleen("valider", demande.valider) && champs.Booleen("pointer", demande.pointer) &&
                  champs.Booleen("rapprocher", demande.rapprocher) && champs.RienDautre();
  if (!lu) return refus;
  if (journal) demande.journal = static_cast<i16>(*journal + 1);
  if (monnaie) demande.euro = *monnaie == 1;
  demande.mouvement = static_cast<u32>(mouvement.value_or(0));
  if (tresoreries && !LitTresoreries(*tresoreries, refus, demande.tresoreries.emplace())) return refus;
  if (lignes && !LitLignes(*lignes, refus, demande.lignes.emplace())) return refus;
  if (ControleCombinaisons(champs, refus, demande) && demande.mouvement == 0)
    refus = ControleGenre(demande, *demande.journal, *demande.journal == JournalOD);
  return refus;
}

Refus ControleGenre(const DemandeSaisie& demande, i16 journal, bool od) {
  const std::pair<const char*, bool> etrangers[] = {
      {"lignes", !od && demande.lignes},
      {"compte", od && demande.compte},
      {"code", od && demande.code},
      {"ttc", od && demande.ttc},
      {"tresorerie", od && demande.tresorerie},
      {"professionnel", od && demande.professionnel},
      {"paiement", od && demande.paiement},
      {"tresoreries", od && demande.tresoreries},
  };
  for (const auto& [nom, present] : etrangers) {
    if (!present) continue;
    const std::string raison =
        od ? "une opération diverse n'a pas ce champ."_w : "une recette ou une dépense n'a pas ce champ."_w;
    return RefusChamp(nom, raison);
  }
  if (demande.professionnel && journal == JournalRecettes)
    return RefusChamp("professionnel", "celui d'une recette vient de son compte."_w);
  return {};
}

Refus RefusPaiement() {
  return RefusChamp("paiement", "il se donne dans chaque ligne de \"tresoreries\"."_w);
}

}  // namespace fenlor

#include <algorithm>

#include "core/btfiles.h"
#include "core/texte.h"
#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/json.h"
#include "ctl/tableau.h"
#include "garde/sceau.h"
#include "session/entretien.h"
#include "session/textes.h"
#include "session/verification.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Figures of an account, or of all of them, in one currency.
struct Soldes {
  f64 debit = 0;
  f64 credit = 0;
  f64 rapproche = 0;
  f64 initial = 0;
  f64 Solde() const { return Arrondi2(credit - debit) + 0.0; }
  f64 Reel() const { return Arrondi2(credit - debit + initial) + 0.0; }
  void Ajoute(const Soldes& s) {
    debit += s.debit;
    credit += s.credit;
    rapproche += s.rapproche;
    initial += s.initial;
  }
};

Soldes EnFranc(const Plan& p) {
  return {p.DebitFranc, p.CreditFranc, Arrondi2(p.RappCreditFranc - p.RappDebitFranc) + 0.0,
          p.SoldeInitialFranc};
}
Soldes EnEuro(const Plan& p) {
  return {p.DebitEuro, p.CreditEuro, Arrondi2(p.RappCreditEuro - p.RappDebitEuro) + 0.0, p.SoldeInitialEuro};
}

std::string LigneJsonCompte(const Plan& plan) {
  const Soldes franc = EnFranc(plan), euro = EnEuro(plan);
  return LigneJson()
      .Texte("Compte", LitTexte(plan.Compte))
      .Texte("Code", LitTexte(plan.Code))
      .Texte("Designation", LitTexte(plan.Designation))
      .Entier("Type", plan.Type)
      .Nombre("DebitFranc", plan.DebitFranc)
      .Nombre("DebitEuro", plan.DebitEuro)
      .Nombre("CreditFranc", plan.CreditFranc)
      .Nombre("CreditEuro", plan.CreditEuro)
      .Nombre("PersoFranc", plan.PersoFranc)
      .Nombre("PersoEuro", plan.PersoEuro)
      .Nombre("TVAFranc", plan.TVAFranc)
      .Nombre("TVAEuro", plan.TVAEuro)
      .Nombre("SoldeFranc", franc.Solde())
      .Nombre("SoldeEuro", euro.Solde())
      .Nombre("SoldeRapprocheFranc", franc.rapproche)
      .Nombre("SoldeRapprocheEuro", euro.rapproche)
      .Nombre("SoldeReelFranc", franc.Reel())
      .Nombre("SoldeReelEuro", euro.Reel())
      .Fin();
}

std::string LigneJsonTotaux(const Soldes& franc, const Soldes& euro) {
  return LigneJson()
      .Nombre("TotalDebitFranc", Arrondi2(franc.debit))
      .Nombre("TotalDebitEuro", Arrondi2(euro.debit))
      .Nombre("TotalCreditFranc", Arrondi2(franc.credit))
      .Nombre("TotalCreditEuro", Arrondi2(euro.credit))
      .Nombre("TotalSoldeFranc", franc.Solde())
      .Nombre("TotalSoldeEuro", euro.Solde())
      .Fin();
}

std::string Compteurs(const FichierReconstruit& fichier) {
  const RapportReindex& r = fichier.rapport;
  std::string texte = fichier.nom + " : " + std::to_string(r.gardes) + " enregistrement(s) gardé(s), " +
                      std::to_string(r.ecartes) + " écarté(s), " + std::to_string(r.remplaces) +
                      " en double, " + std::to_string(r.inconnus) + " illisible(s)";
  if (r.repares) texte += ", " + std::to_string(r.repares) + " réparé(s)";
  if (r.vierges) texte += ", " + std::to_string(r.vierges) + " mis à zéro";
  if (r.octetsRestants)
    texte += ", " + std::to_string(r.octetsRestants) + " octet(s) illisible(s) en fin de fichier";
  if (r.endommage) texte += ", fichier endommagé";
  if (r.clesManquantes) texte += ", " + std::to_string(r.clesManquantes) + " clé(s) en double";
  if (!r.copie.empty()) texte += ", ancien fichier gardé sous " + r.copie;
  if (!r.fait) texte += " ; le fichier est resté tel quel";
  return texte + ".\n";
}

std::string CompteursJson(const FichierReconstruit& fichier) {
  const RapportReindex& r = fichier.rapport;
  return LigneJson()
      .Texte("fichier", fichier.nom)
      .Entier("gardes", r.gardes)
      .Entier("ecartes", r.ecartes)
      .Entier("remplaces", r.remplaces)
      .Entier("inconnus", r.inconnus)
      .Entier("repares", r.repares)
      .Entier("supprimes", r.supprimes)
      .Entier("vierges", r.vierges)
      .Entier("octetsRestants", static_cast<i64>(r.octetsRestants))
      .Entier("clesManquantes", r.clesManquantes)
      .Texte("copie", r.copie)
      .Booleen("endommage", r.endommage)
      .Booleen("fait", r.fait)
      .Fin();
}

int Balance(Contexte& contexte) {
  if (!contexte.OuvreExercice()) return StatutRefuse;
  CPlan plan(contexte.App, contexte.App.PathExercice);
  if (!plan.OpenFile()) return contexte.RefuseMagasin();

  const bool euro = contexte.App.Reglages.IsEuro();
  const auto montant = [](f64 m) { return FormatMontant(m, 2); };
  const auto solde = [](f64 m) { return FormatSoldeSaisie(m, 2, false); };
  Tableau tableau;
  tableau.Ajoute(
      {"Compte", "Code", "Désignation"_w, "Débit"_w, "Crédit"_w, "Solde", "Rapproché"_w, "Solde réel"_w});
  Soldes totalFranc, totalEuro;
  for (bool trouve = plan.First(0); trouve; trouve = plan.Next(0)) {
    const Soldes enFranc = EnFranc(*plan.Rec), enEuro = EnEuro(*plan.Rec);
    totalFranc.Ajoute(enFranc);
    totalEuro.Ajoute(enEuro);
    if (contexte.Globales.json) {
      if (!contexte.Ecrit(LigneJsonCompte(*plan.Rec))) return StatutRefuse;
      continue;
    }
    const Soldes& s = euro ? enEuro : enFranc;
    tableau.Ajoute({contexte.Magasin.GetShortCompte(LitTexte(plan.Rec->Compte)), LitTexte(plan.Rec->Code),
                    LitTexte(plan.Rec->Designation), montant(s.debit), montant(s.credit), solde(s.Solde()),
                    solde(s.rapproche), solde(s.Reel())});
  }
  if (!contexte.FinDeCle()) return contexte.RefuseMagasin();
  if (contexte.Globales.json) return contexte.Donne(LigneJsonTotaux(totalFranc, totalEuro));
  const Soldes& total = euro ? totalEuro : totalFranc;
  tableau.Ajoute({"Total", "", euro ? "en Euro" : "en Franc", montant(total.debit), montant(total.credit),
                  solde(total.Solde()), solde(total.rapproche), solde(total.Reel())});
  return contexte.Donne(tableau.Texte(3));
}

int Recalcule(Contexte& contexte, bool euros) {
  if (!contexte.OuvreExercice()) return StatutRefuse;
  contexte.Dialogue.Ordonne({QuestionRecalcul, QuestionAjustementEuro});
  AjustementEuros ajustement;
  if (euros)
    if (const Refus refus = AjusteEuros(contexte.App, ajustement)) return contexte.Refuse(refus);
  Statistiques s{};
  if (const Refus refus = CommandeRecalcul(contexte.App, s)) return contexte.Refuse(refus);
  if (contexte.Globales.json) {
    LigneJson ligne;
    if (euros) ligne.Entier("lignes", ajustement.parcourues).Entier("lignesAjustees", ajustement.changees);
    ligne.Entier("NbRecettes", s.NbRecettes)
        .Entier("NbDepenses", s.NbDepenses)
        .Entier("NbOD", s.NbOD)
        .Entier("NbPointees", s.NbPointees)
        .Entier("NbRemises", s.NbRemises)
        .Entier("NbRapprochees", s.NbRapprochees)
        .Entier("NbValidees", s.NbValidees)
        .Entier("NbNonRapprochees", s.NbNonRapprochees);
    return contexte.Donne(ligne.Fin());
  }
  std::string texte;
  if (euros)
    texte = std::to_string(ajustement.parcourues) + " ligne(s) parcourue(s), " +
            std::to_string(ajustement.changees) + " ajustée(s)\n";
  texte += VersUtf8(contexte.Dialogue.Information()) + "\n";
  return contexte.Donne(texte);
}

int Verifie(Contexte& contexte) {
  const bool json = contexte.Globales.json;
  const auto dit = [&](const std::string& phrase) {
    contexte.Ecrit(json ? LigneJson().Texte("anomalie", phrase).Fin() : VersUtf8(phrase) + "\n");
  };
  std::string nom;
  if (!contexte.TrouveExercice(nom)) return StatutRefuse;
  if (!contexte.OuvreExercice(nom)) {
    ConstateDegats(contexte.App, nom, dit);
    return StatutRefuse;
  }
  u32 anomalies = VerifieExercice(contexte.App, dit);
  ExamenSceau examen;
  if (const Refus refus = ExamineSceau(contexte.App, examen)) return contexte.Refuse(refus);
  for (const std::string& phrase : examen.constats) dit(phrase);
  anomalies += static_cast<u32>(examen.constats.size());
  const std::string bilan = json             ? LigneJson().Entier("anomalies", anomalies).Fin()
                            : anomalies == 0 ? std::string("Aucune anomalie.\n")
                                             : std::to_string(anomalies) + " anomalie(s).\n";
  return contexte.Ecrit(bilan) && anomalies == 0 ? StatutFait : StatutRefuse;
}

int Reconstruit(Contexte& contexte, const std::vector<std::string>& fichiers) {
  std::vector<std::string> noms = fichiers;
  bool exercice = false;
  for (const FichierReconstructible& connu : FichiersReconstructibles()) {
    if (fichiers.empty()) noms.emplace_back(connu.nom);
    const auto demande = [&](const std::string& nom) { return CompareSansCasse(nom, connu.nom) == 0; };
    if (!connu.duCabinet && std::any_of(noms.begin(), noms.end(), demande)) exercice = true;
  }
  // Not opened before the work: a damaged file is what the command is for.
  std::string nom;
  if (exercice) {
    if (!contexte.TrouveExercice(nom)) return StatutRefuse;
    contexte.App.NomExercice = nom;
    contexte.App.PathExercice = contexte.Magasin.CheminExercice(nom);
  }
  Reconstruction reconstruction;
  const Refus refus = ReconstruitCles(contexte.App, noms, reconstruction);
  for (const FichierReconstruit& fichier : reconstruction.fichiers)
    if (!contexte.Ecrit(contexte.Globales.json ? CompteursJson(fichier) : Compteurs(fichier)))
      return StatutRefuse;
  if (refus) return contexte.Refuse(refus);
  return !exercice || contexte.OuvreExercice(nom) ? StatutFait : StatutRefuse;
}

FormeOption FormeFichier() {
  return {"[FICHIER...]", [](const std::string& nom) {
            std::string noms;
            for (const FichierReconstructible& connu : FichiersReconstructibles()) {
              if (CompareSansCasse(nom, connu.nom) == 0) return std::string();
              noms += (noms.empty() ? "" : ", ") + std::string(connu.nom);
            }
            return "fichier inconnu : " + nom + " (" + noms + ")";
          }};
}

}  // namespace

void DeclareEntretien(LigneCommande& ligne) {
  ligne.Ajoute("balance", "Donne les comptes, leurs cumuls et leurs soldes", Balance);
  const auto euros = std::make_shared<bool>(false);
  ligne
      .Ajoute("recalculer", "Recalcule les cumuls de tous les comptes",
              [euros](Contexte& c) { return Recalcule(c, *euros); })
      .Drapeau("--euros", *euros, "Ajuste d'abord l'autre monnaie de chaque ligne au taux de sa date");
  ligne.Ajoute("verifier", "Contrôle les clés, les cumuls et l'équilibre des écritures", Verifie);
  const auto fichiers = std::make_shared<std::vector<std::string>>();
  ligne
      .Ajoute("reconstruire", "Refait des fichiers et leurs clés à partir des données brutes",
              [fichiers](Contexte& c) { return Reconstruit(c, *fichiers); })
      .Repare()
      .Option("fichiers", *fichiers, FormeFichier(), "Fichiers à refaire (par défaut : tous)");
}

}  // namespace fenlor

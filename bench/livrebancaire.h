// The book that statements are matched with: one bank account and its lines, in order of dates; and the
// reading of those lines that importing and matching are held against.
#pragma once

#include "banque/rapprochement.h"
#include "classeur.h"
#include "dialoguemuet.h"
#include "mesures.h"
#include "store/texte1252.h"

namespace fenlor::bench {

constexpr unsigned OperationsBarre = 20'000, LignesBarre = 60'000;
constexpr const char* CompteBancaire = "5190000000";

inline f64 MontantBancaire(unsigned i) { return 20 + (i * 7919u % 5000u) / 100.0; }
inline Date JourBancaire(unsigned i, unsigned nombre) {
  return FaitDate(1 + i % 28, 1 + i * 12 / nombre, 2003);
}

/// The account and its lines, in order of dates.
inline void RemplitBanque(Classeur& classeur, unsigned lignes) {
  QVAPI& magasin = classeur.Magasin();
  DialogueMuet dialogue;
  SeanceDuBanc app(magasin, dialogue);
  CPlan plan(app, app.PathExercice);
  PoseTexte(plan.Rec->Compte, CompteBancaire);
  plan.Rec->Type = Tresorerie;
  plan.Rec->TypeTresorerie = 1;
  if (!plan.OpenFile() || !plan.Add()) Echec("the account is refused");
  for (unsigned debut = 0; debut < lignes; debut += 10'000) {
    QVAPI::Unite unite(magasin);
    for (unsigned i = debut; i < lignes && i < debut + 10'000; ++i) {
      EcrSimple rec = classeur.Ecriture(i);
      rec.Journal = JournalRecettes;
      rec.EstRecette = 1;
      rec.Date = JourBancaire(i, lignes);
      rec.MontantEuro = rec.RepartitionEuro = MontantBancaire(i);
      rec.MontantFranc = rec.RepartitionFranc = QVAPI::ConvertEuroToFranc(6.55957, MontantBancaire(i));
      rec.TaxeEuro = rec.TaxeFranc = 0;
      PoseTexte(rec.CompteTresorerie, CompteBancaire);
      if (!magasin.AddEcrSimple(magasin.PathExercice(), rec)) Echec("an entry is refused");
    }
    if (!unite.Valide()) Echec("the unit is undone");
  }
}

/// Once along their key, a record at a time, as whoever uses the store reads them.
inline void LitBanque(CFenlorApp& app, unsigned lignes) {
  CLines journal(app, app.PathExercice);
  PoseTexte(journal.Rec->Compte, CompteBancaire);
  unsigned lues = 0;
  f64 somme = 0;
  if (!journal.OpenFile()) Echec("the journal cannot be opened");
  for (bool lu = journal.Browse(2); lu && LitTexte(journal.Rec->Compte) == CompteBancaire;
       lu = journal.Next(2)) {
    somme += journal.Rec->MontantEuro;
    ++lues;
  }
  if (lues != lignes || somme <= 0) Echec("lines are missing");
}

}  // namespace fenlor::bench

#include "session/situation.h"

#include <algorithm>
#include <cassert>

#include "auto/ecrituresauto.h"
#include "auto/parcoursauto.h"
#include "core/erreursexercice.h"
#include "master/comptes.h"
#include "store/cumuls.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Cents of one month or year.
struct Sommes {
  i64 recettes = 0, depenses = 0;
  Resultats EnMonnaie() const { return {DeCentimes(recettes), DeCentimes(depenses)}; }
};

struct Lecture {
  std::array<Sommes, 12> mois{};
  Sommes annee;
  u32 brouillon = 0;

  void Ajoute(const Line& ligne, bool euro) {
    if (ligne.Rang == 0 && !ligne.Validee) ++brouillon;
    const i16 type = ligne.TypeCompte;
    const unsigned rang = fenlor::Mois(ligne.DateLigne) - 1;
    if ((type != Recette && type != Depense) || rang >= mois.size()) return;
    const i64 montant = Centimes(euro ? ligne.MontantEuro : ligne.MontantFranc);
    const i64 credit = ligne.Sens != 0 ? montant : -montant;
    for (Sommes* sommes : {&mois[rang], &annee})
      type == Recette ? sommes->recettes += credit : sommes->depenses -= credit;
  }
};

bool LitLignes(CFenlorApp& app, const std::string& dossier, bool euro, Lecture& lecture) {
  assert(!dossier.empty());
  const Ouverture journal(app.Magasin, FichierJournal, dossier);
  return journal && app.Magasin.QVParcours(FichierJournal, [&](Position, const void* rec) {
    lecture.Ajoute(*static_cast<const Line*>(rec), euro);
    return true;
  });
}

void Pose(const Lecture& lecture, std::array<Resultats, 12>& mois, Resultats& annee) {
  for (std::size_t i = 0; i < mois.size(); ++i) mois[i] = lecture.mois[i].EnMonnaie();
  annee = lecture.annee.EnMonnaie();
}

bool LitTresorerie(CFenlorApp& app, bool euro, std::vector<SoldeTresorerie>& soldes) {
  assert(soldes.empty());
  const Ouverture plan(app.Magasin, FichierComptes);
  if (!plan) return false;
  const bool lu = app.Magasin.QVParcours(FichierComptes, [&](Position, const void* rec) {
    const Plan& compte = *static_cast<const Plan*>(rec);
    if (compte.Type != Tresorerie) return true;
    // The books count credits; what a person has is the other side.
    const SoldesCompte s = SoldesDe(compte, euro);
    soldes.push_back({LitTexte(compte.Compte), LitTexte(compte.Code), LitTexte(compte.Designation),
                      0.0 - s.reel, 0.0 - s.initial - s.rapproche});
    return true;
  });
  std::sort(soldes.begin(), soldes.end(), [](const auto& a, const auto& b) { return a.compte < b.compte; });
  return lu;
}

/// The exercice that ends the day before this one begins.
std::string ExerciceAvant(CFenlorApp& app) {
  assert(!app.PathExercice.empty());
  const Date veille = PrevDate(app.Reglages.GetDebutExercice());
  for (const std::string& nom : app.Magasin.ListeExercices())
    if (app.Reglages.GetFinExercice(nom) == veille) return nom;
  return {};
}

u32 NbEcheances(CFenlorApp& app) {
  assert(!app.PathExercice.empty());
  if (!app.Magasin.QVExistFile(Joint(app.PathExercice, "AUTO.dat"))) return 0;
  Date limite = app.Magasin.Today();
  for (int i = 0; i < JoursEcheances; ++i) limite = NextDate(limite);
  const Date fin = app.Reglages.GetFinExercice();
  CEcrituresAuto modeles(app);
  modeles.Signale = false;
  u32 nombre = 0;
  for (bool lu = modeles && modeles.First(); lu; lu = modeles.Next()) {
    const Date prochaine = ProchaineEcheance(modeles.Rec);
    nombre += prochaine != 0 && prochaine <= limite && prochaine <= fin;
  }
  return nombre;
}

}  // namespace

f64 Resultats::Resultat() const { return DeCentimes(Centimes(recettes) - Centimes(depenses)); }

const Resultats& Situation::Mois() const {
  assert(IsDateOk(jour));
  return mois[fenlor::Mois(jour) - 1];
}

const Resultats& Situation::MoisAvant() const {
  assert(IsDateOk(jour));
  return moisAvant[fenlor::Mois(jour) - 1];
}

Refus LitSituation(CFenlorApp& app, Situation& situation) {
  if (app.PathExercice.empty()) return Refus(ErrAucunExercice);
  Situation lue;
  lue.euro = app.Reglages.IsEuro();
  const Date aujourdhui = app.Magasin.Today(), debut = app.Reglages.GetDebutExercice();
  lue.jour = app.Reglages.GetFinExercice();
  if (aujourdhui >= debut && aujourdhui <= lue.jour) lue.jour = aujourdhui;
  if (!IsDateOk(lue.jour)) return Refus(ErrAucunExercice);

  lue.exerciceAvant = ExerciceAvant(app);
  if (lue.exerciceAvant == situation.exerciceAvant && lue.euro == situation.euro) {
    lue.moisAvant = situation.moisAvant;
    lue.anneeAvant = situation.anneeAvant;
  } else if (app.Magasin.GetOpenFlagJournal()) {
    lue.exerciceAvant.clear();  // a file is open at one place at a time
  } else if (!lue.exerciceAvant.empty()) {
    const std::string dossier = app.Magasin.CheminExercice(lue.exerciceAvant);
    Lecture avant;
    if (app.Magasin.QVExistFile(Joint(dossier, "JOURNAL.dat")) && !LitLignes(app, dossier, lue.euro, avant))
      return app.EchecMagasin();
    Pose(avant, lue.moisAvant, lue.anneeAvant);
  }

  Lecture lecture;
  if (!LitLignes(app, app.PathExercice, lue.euro, lecture) || !LitTresorerie(app, lue.euro, lue.tresorerie))
    return app.EchecMagasin();
  Pose(lecture, lue.mois, lue.annee);
  lue.brouillon = lecture.brouillon;
  lue.aRapprocher = app.Magasin.GetBanquesRec(0);
  lue.echeances = NbEcheances(app);
  situation = std::move(lue);
  return {};
}

}  // namespace fenlor

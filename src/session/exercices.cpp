#include "session/exercices.h"

#include <cassert>
#include <cstdio>

#include "core/btfiles.h"
#include "core/cles.h"
#include "core/erreurs.h"
#include "core/erreursexercice.h"
#include "core/textes.h"
#include "core/valeurs.h"
#include "journal/corbeille.h"
#include "master/textes.h"
#include "session/textes.h"
#include "store/exercices.h"

namespace fenlor {

namespace {

/// Years that are made without a question.
constexpr unsigned premiereAnnee = 1950, anneesAvance = 10;

std::string NomAnnee(unsigned annee) {
  char texte[16];
  std::snprintf(texte, sizeof texte, "%04u", annee);
  return texte;
}

bool AnneePleine(const FormulaireExercice& f) {
  return f.debut == FaitDate(1, 1, Annee(f.debut)) && f.fin == FaitDate(31, 12, Annee(f.debut));
}

/// The Euro could be chosen from 1999 to 2001 only.
void RegleAnnee(FormulaireExercice& f, unsigned annee) {
  if (annee < 1999) {
    f.euro = f.euroActif = false;
    f.afficherDouble = f.doubleActif = false;
  } else if (annee <= 2001) {
    f.euroActif = true;
  } else {
    f.euro = true;
    f.euroActif = false;
    f.afficherDouble = false;
    f.doubleActif = true;
  }
}

/// Year of a period that lies in one, 0 of one that does not.
unsigned AnneeUnique(const FormulaireExercice& f) {
  return Annee(f.debut) == Annee(f.fin) ? Annee(f.debut) : 0;
}

/// The dates moved: the options follow into another year. Across two years that both ask for
/// the same currency it is that one; else it is to be chosen.
void SuitPeriode(FormulaireExercice& f, unsigned avant) {
  const unsigned annee = AnneeUnique(f);
  if (annee == 0) {
    const bool euro = Annee(f.debut) > 2001, franc = Annee(f.fin) < 1999;
    f.euro = (f.euro || euro) && !franc;
    f.euroActif = !euro && !franc;
    f.doubleActif = true;
  } else if (annee != avant) {
    RegleAnnee(f, annee);
  }
}

std::string OuiNon(bool oui) { return Texte(oui ? MotOui : MotNon); }

/// What the store refused: its callback told it in words of its own.
Refus EchecExercice(CFenlorApp& app) {
  Refus refus = app.EchecDit();
  if (refus.dit) refus.texte.clear();
  return refus;
}

/// The same for a creation, with its field.
Refus EchecCreation(CFenlorApp& app, const FormulaireExercice& f) {
  assert(app.Magasin.QVFileErrorCode() != 0);
  Refus refus = EchecExercice(app);
  const auto pointe = [&](const TexteFixe& erreur, const char* champ) {
    refus.numero = erreur;
    refus.champ = champ;
  };
  switch (app.Magasin.QVFileErrorCode()) {
    case ErrConflit:
      pointe(ErrPeriodeEnConflit, "debut");
      break;
    case ErrExistant:
      pointe(QuestionRemplaceExercice, "annee");
      break;
    case ErrValeur:
      if (IsDateOk(f.debut) && !IsDateOk(f.fin))
        pointe(ErrPeriode, "fin");
      else if (!IsDateOk(f.debut) || f.debut >= f.fin)
        pointe(ErrPeriode, "debut");
      else
        pointe(ErrNomExercice, "annee");
      break;
    default:
      break;
  }
  return refus;
}

/// What the fields hold is a period; told with what was typed there.
Refus ControlePeriode(const FormulaireExercice& f) {
  if (IsDateOk(f.debut) && IsDateOk(f.fin) && f.debut < f.fin) return {};
  const auto texte = [](Date date, const std::string& saisi) {
    return saisi.empty() ? StrDate(date) : saisi;
  };
  return Refus(ErrPeriode, IsDateOk(f.debut) && !IsDateOk(f.fin) ? "fin" : "debut",
               {texte(f.debut, f.debutSaisi), texte(f.fin, f.finSaisie)});
}

/// The name reads as a year of the last five: with entries, the law keeps it.
bool TropRecent(CFenlorApp& app, const std::string& nom) {
  return i64{TexteVersEntier(nom)} + 5 > i64{Annee(app.Magasin.Today())};
}

/// An exercice of that name may go: what may not be deleted is not replaced either.
Refus ControleRemplacement(CFenlorApp& app, const std::string& nom) {
  if (app.Reglages.IsExerciceCloture(nom)) return Refus(ErrExerciceCloture, "annee");
  const std::string chemin = app.Magasin.CheminExercice(nom);
  if (!TropRecent(app, nom) || !app.Magasin.QVExistFile(Joint(chemin, "JOURNAL.dat"))) return {};
  CLines journal(app, chemin);
  if (!journal.OpenFile())
    return Refus::DejaDit(ErrOuvertureFichier, "annee", {Joint(chemin, "JOURNAL.dat")});
  return app.Magasin.QVNumberOfKey(journal.NumCle) == 0 ? Refus{} : Refus(ErrExerciceRecent, "annee");
}

void OublieExercice(CFenlorApp& app) {
  assert(!app.Magasin.QVEnUnite());
  app.NomExercice.clear();
  app.PathExercice.clear();
  app.ExerciceOuvert = 0;
}

}  // namespace

FormulaireExercice NouvelExercice(CFenlorApp& app) {
  FormulaireExercice f;
  const std::string dernier = app.Magasin.GetLastExercice();
  f.debut = FaitDate(1, 1, Annee(app.Magasin.Today()));
  if (!dernier.empty()) {
    const Date fin = app.Reglages.GetFinExercice(dernier);
    if (IsDateOk(fin)) f.debut = NextDate(fin);
    f.tva = app.Reglages.IsTVA(dernier);
    f.euro = app.Reglages.IsEuro(dernier);
    f.afficherDouble = Parametres::IsOui(app.Reglages.LitIniExercice(dernier, Texte(CleAfficherDouble)));
  }
  f.fin = FaitDate(31, 12, Annee(f.debut));
  f.annee = NomAnnee(Annee(f.debut));
  RegleAnnee(f, Annee(f.debut));
  assert(f.debut <= f.fin);
  f.annuel = AnneePleine(f);
  return f;
}

void ChangeAnnee(FormulaireExercice& f, const std::string& annee) {
  f.annee = annee.substr(0, 4);
  const int valeur = TexteVersEntier(f.annee);
  if (valeur <= 0) return;
  const unsigned an = static_cast<unsigned>(valeur);
  RegleAnnee(f, an);
  f.debut = FaitDate(1, 1, an);
  f.fin = FaitDate(31, 12, an);
}

void QuitteDebut(FormulaireExercice& f, Date debut) {
  const unsigned avant = AnneeUnique(f);
  f.debut = debut;
  if (!IsDateOk(debut)) return;
  f.annee = NomAnnee(Annee(debut));
  f.fin = PrevDate(DecaleAnnees(debut, 1));
  SuitPeriode(f, avant);
}

void QuitteFin(FormulaireExercice& f, Date fin) {
  const unsigned avant = AnneeUnique(f);
  f.fin = fin;
  if (!IsDateOk(fin)) return;
  if (f.debut >= fin) {
    f.debut = NextDate(DecaleAnnees(fin, -1));
    f.annee = NomAnnee(Annee(f.debut));
  }
  SuitPeriode(f, avant);
}

void ChoisitAnnuel(FormulaireExercice& f) {
  f.annuel = true;
  ChangeAnnee(f, NomAnnee(Annee(f.debut)));
}

void ChoisitPeriode(FormulaireExercice& f) {
  f.annuel = false;
  const int an = TexteVersEntier(f.annee);
  if (an <= 0) return;
  const unsigned avant = AnneeUnique(f);
  f.debut = FaitDate(1, 1, static_cast<unsigned>(an));
  f.fin = FaitDate(31, 12, static_cast<unsigned>(an));
  SuitPeriode(f, avant);
}

bool TestRepertoire(CFenlorApp& app, const std::string& nom) {
  if (app.Magasin.QVEnLecture()) return app.Magasin.QVExistFile(app.Magasin.CheminExercice(nom));
  const std::string temoin = Joint(app.Magasin.CheminExercice(nom), "witness");
  const int fichier = app.Magasin.QVCreateFile(temoin);
  if (fichier < 0) return false;
  app.Magasin.QVCloseFile(fichier);
  const bool existe = app.Magasin.QVExistFile(temoin);
  app.Magasin.QVDeleteFile(temoin);
  return existe;
}

Refus CreeExercice(CFenlorApp& app, const FormulaireExercice& f) {
  const std::string nom = f.annee.substr(0, 15);
  if (IsDateOk(f.debut) && IsDateOk(f.fin)) {
    if (Annee(f.fin) < 1999 && f.euro) return Refus(ErrMonnaieExercice, "euro", {nom, Texte(MotEuro)});
    if (Annee(f.debut) > 2001 && !f.euro) return Refus(ErrMonnaieExercice, "euro", {nom, Texte(MotFranc)});
  }
  if (const Refus r = ControlePeriode(f)) return r;
  if (const Refus r = app.ControleLecture()) return r;
  if (const Refus r = ControleRemplacement(app, nom)) return r;
  const unsigned an = Annee(f.debut), courant = Annee(app.Magasin.Today());
  assert(f.debut < f.fin);
  // A name that the store will refuse says nothing of a year.
  if (NomExerciceCorrect(nom) && (an < premiereAnnee || an > courant + anneesAvance))
    if (const Refus r = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionAnneesExercice, "annee",
                                    {nom, StrDate(f.debut), StrDate(f.fin)}))
      return r;
  const bool nouveau = app.Magasin.ListeExercices().empty();
  if (!app.Magasin.QVCreateExercice(nom, f.debut, f.fin, f.euro, f.tva)) {
    const Refus refus = EchecCreation(app, f);
    if (app.Magasin.NomExercice().empty()) OublieExercice(app);
    return refus;
  }
  const bool note =
      app.Reglages.EcritIniExercice(app.Magasin.GetLastExercice(), Texte(CleAfficherDouble),
                                    OuiNon(f.afficherDouble)) &&
      (!nouveau || app.Reglages.EcritIni(Texte(SecPreferences), Texte(CleStyleEtats), Texte(MotSoignee)));
  if (!note) return app.EchecReglages();
  return OuvreExercice(app, nom);
}

Refus OuvreExercice(CFenlorApp& app, std::string nom) {
  OublieExercice(app);
  app.Magasin.QVCloseExercice();
  if (!TestRepertoire(app, nom)) return Refus(ErrRepertoireExercice);
  if (!app.Magasin.QVOpenExercice(nom)) return EchecExercice(app);
  app.NomExercice = app.Magasin.NomExercice();
  assert(!app.NomExercice.empty());
  app.PathExercice = app.Magasin.PathExercice();
  app.AfficherDouble =
      Parametres::IsOui(app.Reglages.LitIniExercice(app.NomExercice, Texte(CleAfficherDouble)));
  app.ExerciceOuvert = app.Magasin.QVConvertCompta(app.NomExercice);
  RangeCorbeille(app);
  // Books that can be read are not refused because their name cannot be noted.
  if (!app.Magasin.QVEnLecture() &&
      !app.Reglages.EcritIni(Texte(SecActivite), Texte(CleExercice), app.NomExercice))
    app.Dit(app.EchecReglages());
  return {};
}

void FermeExercice(CFenlorApp& app) {
  OublieExercice(app);
  app.Magasin.QVCloseExercice();
}

Refus SupprimeExercice(CFenlorApp& app, const std::function<void()>& avant) {
  const std::string nom = app.NomExercice;
  if (nom.empty()) return Refus(ErrAucunExercice);
  if (const Refus r = app.ControleLecture()) return r;
  if (TropRecent(app, nom) && app.Magasin.GetJournalRec(0) != 0) return Refus(ErrExerciceRecent);
  if (const Refus r =
          app.Demande(BoutonsOuiNon | IconeAttention, RepOui, QuestionSupprimeExercice, "", {nom}))
    return r;
  if (avant) avant();
  assert(!app.Magasin.QVEnUnite());
  FermeExercice(app);
  if (!app.Magasin.QVDeleteExercice(nom)) return EchecExercice(app);
  return {};
}

bool RepareDates(CFenlorApp& app, const std::string& nom) {
  if (EstVide(nom)) return false;
  const bool datee = !EstVide(app.Reglages.LitIniExercice(nom, Texte(CleDebut))) &&
                     !EstVide(app.Reglages.LitIniExercice(nom, Texte(CleFin)));
  if (datee || app.Magasin.QVEnLecture()) return false;
  const std::string debut = "01/01/" + nom, fin = "31/12/" + nom;
  app.Reglages.EcritIniExercice(nom, Texte(CleDebut), debut);
  app.Reglages.EcritIniExercice(nom, Texte(CleFin), fin);
  app.ReportErreur(ErrDatesExercice, {debut, fin});
  return true;
}

ProprietesExercice LitProprietes(CFenlorApp& app) {
  QVAPI& magasin = app.Magasin;
  ProprietesExercice p;
  p.nom = app.NomExercice;
  assert(!app.PathCabinet.empty());
  p.emplacement = app.PathCabinet;
  if (!EstVide(app.Reglages.LitIni(Texte(SecActivite), Texte(CleExercice)))) {
    p.debut = app.Reglages.GetDebutExercice();
    p.fin = app.Reglages.GetFinExercice();
    if (p.fin <= p.debut && p.debut != 0) p.fin = PrevDate(DecaleAnnees(p.debut, 1));
    p.tva = app.Reglages.IsTVA();
    p.euro = app.Reglages.IsEuro();
    p.cloture = app.Reglages.LitIniExercice(app.NomExercice, Texte(CleCloture));
  }
  const auto ko = [&p](u64 octets) {
    const f64 taille = static_cast<f64>(octets) / 1024;
    p.total += taille;
    return taille;
  };
  p.fichiers = {
      {{magasin.GetJournalRec(0), ko(magasin.GetJournalSize(0)), magasin.GetOpenFlagJournal()},
       {magasin.GetPlanRec(0), ko(magasin.GetPlanSize(0)), magasin.GetOpenFlagPlan()},
       {magasin.GetRubriquesRec(0), ko(magasin.GetRubriquesSize(0)), magasin.GetOpenFlagRubriques()},
       {magasin.GetBanquesRec(0), ko(magasin.GetBanquesSize(0)), magasin.GetOpenFlagBanques()}}};
  return p;
}

std::vector<LigneExercice> LignesExercices(CFenlorApp& app) {
  const auto jourMois = [](Date date) {
    char texte[16];
    std::snprintf(texte, sizeof texte, "%02u/%02u", Jour(date), Mois(date));
    return std::string(texte);
  };
  std::vector<LigneExercice> lignes;
  for (const std::string& nom : app.Magasin.ListeExercices()) {
    const std::string debut = app.Reglages.LitIniExercice(nom, Texte(CleDebut));
    const std::string fin = app.Reglages.LitIniExercice(nom, Texte(CleFin));
    if (EstVide(debut) || EstVide(fin)) continue;
    lignes.push_back({nom, nom + " " + debut + " - " + fin,
                      nom + " " + jourMois(GetDate(debut)) + " - " + jourMois(GetDate(fin)),
                      app.Reglages.IsExerciceCloture(nom)});
  }
  return lignes;
}

}  // namespace fenlor

// sauvegarder, restaurer, sauvegardes: the books in one file and back.
#include <termios.h>
#include <unistd.h>
#include <cassert>

#include <cstdlib>
#include <iostream>

#include "ctl/commandes.h"
#include "ctl/json.h"
#include "garde/cloture.h"
#include "garde/conservation.h"
#include "garde/inventaire.h"
#include "garde/restauration.h"
#include "garde/sauvegarde.h"
#include "garde/sceau.h"
#include "garde/textes.h"
#include "store/dates.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr const char* VariableMotDePasse = "FENLOR_MOT_DE_PASSE_SAUVEGARDE";

struct OptionsGarde {
  std::string dossier, fichier, action;
  std::vector<std::string> exercices;
  bool complet = false, protege = false, communs = false;
  std::optional<u32> jours, semaines, mois;
};

/// Asks without showing what is typed. Empty when nobody sits at a terminal, or nothing was typed.
std::string DemandeMotDePasse(const std::string& invite) {
  if (!::isatty(STDIN_FILENO) || !::isatty(STDERR_FILENO)) return {};
  termios avant{};
  if (::tcgetattr(STDIN_FILENO, &avant) != 0) return {};
  termios muet = avant;
  muet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  std::cerr << invite << std::flush;
  ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &muet);
  std::string saisi;
  std::getline(std::cin, saisi);
  ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &avant);
  std::cerr << '\n';
  return saisi;
}

std::string MotDePasseDonne() {
  const char* valeur = std::getenv(VariableMotDePasse);
  return valeur ? valeur : "";
}

/// Runs an operation on an archive; where a password is missing, asks for it once.
template <class Operation>
Refus AvecMotDePasse(Operation&& operation) {
  const std::string donne = MotDePasseDonne();
  Refus refus = operation(donne);
  if (refus.numero != ErrArchiveProtegee) return refus;
  const std::string saisi = DemandeMotDePasse("Mot de passe de la sauvegarde : ");
  return saisi.empty() ? refus : operation(saisi);
}

/// The password of a backup to be made: twice the same, for nobody can bring it back.
bool ChoisitMotDePasse(Contexte& c, const OptionsGarde& o, std::string& motDePasse) {
  motDePasse = MotDePasseDonne();
  if (!motDePasse.empty() || !o.protege) return true;
  motDePasse = DemandeMotDePasse("Mot de passe de la sauvegarde (perdu, il ne se retrouve pas) : ");
  if (!motDePasse.empty() && DemandeMotDePasse("Le même, encore une fois : ") == motDePasse) return true;
  c.Refuse(ErrMotDePasseSauvegarde, {});
  return false;
}

std::string JsonExercice(const ExerciceArchive& e) {
  return LigneJson()
      .Texte("nom", e.nom)
      .Texte("debut", e.debut)
      .Texte("fin", e.fin)
      .Texte("cloture", e.cloture)
      .Entier("ecritures", e.ecritures)
      .Fin();
}

std::string NomsExercices(const Manifeste& manifeste) {
  std::string noms;
  for (const ExerciceArchive& e : manifeste.exercices) noms += (noms.empty() ? "" : ", ") + e.nom;
  return noms;
}

u32 Ecritures(const Manifeste& manifeste) {
  u32 total = 0;
  for (const ExerciceArchive& e : manifeste.exercices) total += e.ecritures;
  return total;
}

int Sauve(Contexte& c, const OptionsGarde& o) {
  DemandeSauvegarde demande{o.dossier, o.complet, {}};
  if (!o.complet && !c.OuvreExercice()) return StatutRefuse;
  if (!ChoisitMotDePasse(c, o, demande.motDePasse)) return StatutRefuse;
  SauvegardeFaite faite;
  if (const Refus refus = Sauvegarde(c.App, demande, faite)) return c.Refuse(refus);
  if (!c.Globales.json) return c.Donne(faite.chemin + "\n");
  return c.Donne(LigneJson()
                     .Texte("fichier", DepuisUtf8(faite.chemin).value_or(faite.chemin))
                     .Entier("taille", static_cast<i64>(faite.taille))
                     .Entier("octets", static_cast<i64>(faite.manifeste.Octets()))
                     .Texte("exercices", NomsExercices(faite.manifeste))
                     .Entier("ecritures", Ecritures(faite.manifeste))
                     .Booleen("protegee", !demande.motDePasse.empty())
                     .Fin());
}

int Ramene(Contexte& c, const OptionsGarde& o) {
  // --oui alone does not touch what other exercices stand on.
  if (o.communs)
    c.Dialogue.Ordonne({QuestionCommuns});
  else
    c.Dialogue.Decline({QuestionCommuns});
  RestaurationFaite faite;
  const Refus refus = AvecMotDePasse([&](const std::string& motDePasse) {
    return Restaure(c.App, {o.fichier, motDePasse, o.exercices}, faite);
  });
  if (refus) return c.Refuse(refus);
  if (!faite.communsGardes.empty()) c.Avertit(TexteFormat(AvisCommunsGardes, {faite.communsGardes}));
  for (const ExerciceRestaure& e : faite.exercices) {
    for (const std::string& constat : e.constats) c.Avertit(e.nom + " : " + constat);
    const std::string ligne =
        c.Globales.json
            ? LigneJson()
                  .Texte("exercice", e.nom)
                  .Texte("ancien", e.ancien)
                  .Entier("constats", static_cast<i64>(e.nbConstats))
                  .Fin()
            : VersUtf8("Exercice "_w + e.nom + " restauré"_w +
                       (e.ancien.empty() ? "" : ", l'ancien est gardé sous "_w + e.ancien) + ".\n");
    if (!c.Ecrit(ligne)) return StatutRefuse;
  }
  return StatutFait;
}

int Montre(Contexte& c, const std::string& nom, const Manifeste& manifeste, const Refus& refus, u64 taille) {
  if (c.Globales.json)
    return c.Donne(LigneJson()
                       .Texte("fichier", DepuisUtf8(nom).value_or(nom))
                       .Entier("taille", static_cast<i64>(taille))
                       .Texte("date", manifeste.date)
                       .Texte("heure", manifeste.heure)
                       .Texte("exercices", NomsExercices(manifeste))
                       .Entier("ecritures", Ecritures(manifeste))
                       .Texte("refus", refus.texte)
                       .Fin());
  const std::string suite = refus ? refus.texte
                                  : manifeste.date + " " + manifeste.heure + "  " + NomsExercices(manifeste) +
                                        "  " + std::to_string(Ecritures(manifeste)) + " écritures"_w;
  return c.Donne(nom + "  " + VersUtf8(suite) + "\n");
}

int Liste(Contexte& c, const OptionsGarde& o) {
  std::vector<ArchiveLue> archives;
  if (const Refus refus = ListeArchives(c.Magasin.SystemeFichiers(), o.dossier, archives))
    return c.Refuse(refus);
  for (ArchiveLue& a : archives) {
    if (!a.refus)
      a.refus = AvecMotDePasse([&](const std::string& motDePasse) {
        LitEntiere(c.Magasin.SystemeFichiers(), o.dossier, motDePasse, a);
        return a.refus;
      });
    if (Montre(c, a.nom, a.manifeste, a.refus, a.taille) != StatutFait) return StatutRefuse;
  }
  return StatutFait;
}

int Verifie(Contexte& c, const OptionsGarde& o) {
  Manifeste manifeste;
  const Refus refus = AvecMotDePasse([&](const std::string& motDePasse) {
    return ParcourtArchive(c.Magasin.SystemeFichiers(), o.fichier, motDePasse, manifeste);
  });
  if (refus) return c.Refuse(refus);
  for (const ExerciceArchive& e : manifeste.exercices)
    if (c.Globales.json && !c.Ecrit(JsonExercice(e))) return StatutRefuse;
  return c.Globales.json ? StatutFait : Montre(c, o.fichier, manifeste, {}, 0);
}

int Retire(Contexte& c, const OptionsGarde& o) {
  Conservation regle;
  regle.jours = o.jours.value_or(regle.jours);
  regle.semaines = o.semaines.value_or(regle.semaines);
  regle.mois = o.mois.value_or(regle.mois);
  std::vector<std::string> retirees;
  const Refus refus = Purge(c.Magasin.SystemeFichiers(), o.dossier, regle, MotDePasseDonne(), retirees);
  for (const std::string& nom : retirees)
    if (!c.Ecrit(c.Globales.json ? LigneJson().Texte("retiree", nom).Fin() : nom + "\n")) return StatutRefuse;
  return refus ? c.Refuse(refus) : StatutFait;
}

int Clot(Contexte& c) {
  if (!c.OuvreExercice()) return StatutRefuse;
  PropositionCloture proposition;
  if (const Refus refus = ProposeCloture(c.App, proposition)) return c.Refuse(refus);
  c.Dialogue.Ordonne({QuestionClotureRecalcul});
  if (const Refus refus = Cloture(c.App, proposition)) return c.Refuse(refus);
  return c.Donne(c.Globales.json ? LigneJson()
                                       .Texte("exercice", proposition.exercice)
                                       .Texte("cloture", StrDate(proposition.date))
                                       .Texte("sceau", c.App.Reglages.LitIniExercice(proposition.exercice,
                                                                                     Texte(CleSceau)))
                                       .Fin()
                                 : VersUtf8("Exercice "_w + proposition.exercice + " clôturé le "_w +
                                            StrDate(proposition.date) + ".\n"));
}

int MontreSceau(Contexte& c) {
  if (!c.OuvreExercice()) return StatutRefuse;
  ExamenSceau examen;
  if (const Refus refus = ExamineSceau(c.App, examen)) return c.Refuse(refus);
  const char* const etats[] = {"absent", "intact", "rompu", "rompu"};
  assert(static_cast<std::size_t>(examen.etat) < std::size(etats));
  const char* etat = etats[static_cast<std::size_t>(examen.etat)];
  for (const std::string& constat : examen.constats) c.Avertit(constat);
  const std::string ligne = c.Globales.json
                                ? LigneJson().Texte("etat", etat).Texte("sceau", examen.hexa).Fin()
                                : std::string(etat) + (examen.hexa.empty() ? "" : "  " + examen.hexa) + "\n";
  const bool tient = examen.etat == EtatSceau::Intact || examen.etat == EtatSceau::Absent;
  return c.Ecrit(ligne) && tient ? StatutFait : StatutRefuse;
}

}  // namespace

void DeclareGarde(LigneCommande& ligne) {
  const std::string pied =
      "Le mot de passe des sauvegardes se donne dans la variable FENLOR_MOT_DE_PASSE_SAUVEGARDE, ou au "
      "clavier.";
  const auto o = std::make_shared<OptionsGarde>();
  ligne
      .Ajoute("sauvegarder", "Copie les livres dans un fichier, le relit et donne son chemin",
              [o](Contexte& c) { return Sauve(c, *o); })
      .Option("--dossier", o->dossier, {"DOSSIER"}, "Où écrire la sauvegarde")
      .Obligatoire()
      .Drapeau("--tout-le-cabinet", o->complet, "Tous les exercices, sinon celui de --exercice")
      .Drapeau("--proteger", o->protege, "Demande un mot de passe au clavier")
      .Pied(pied);
  ligne
      .Ajoute("restaurer", "Ramène les livres d'une sauvegarde, les anciens restent à côté",
              [o](Contexte& c) { return Ramene(c, *o); })
      .CreeDossier()
      .Option("FICHIER", o->fichier, {"FICHIER"}, "La sauvegarde")
      .Obligatoire()
      .Option("--seulement", o->exercices, {"NOM"}, "Un exercice de la sauvegarde (plusieurs fois possible)")
      .Drapeau("--immobilisations", o->communs,
               "Ramène aussi les immobilisations et les liens, qui servent à tous les exercices")
      .Pied(pied);
  ligne.Ajoute("cloturer", "Clôture l'exercice : il ne peut plus changer", Clot);
  ligne.Ajoute("sceau", "Dit si un exercice clôturé est resté tel quel", MontreSceau);
  Commande sauvegardes = ligne.Ajoute("sauvegardes", "Les sauvegardes d'un dossier", [o](Contexte& c) {
    return o->action == "lister" ? Liste(c, *o) : o->action == "verifier" ? Verifie(c, *o) : Retire(c, *o);
  });
  sauvegardes.Controle([o](const OptionsGlobales&) {
    return o->action.empty() ? std::string("il manque lister, verifier ou purger") : std::string();
  });
  sauvegardes.Action("lister", "Lit chacune jusqu'au bout et dit ce qu'elle contient", o->action)
      .Option("--dossier", o->dossier, {"DOSSIER"}, "Où elles sont")
      .Obligatoire();
  sauvegardes.Action("verifier", "Lit une sauvegarde jusqu'à son dernier octet", o->action)
      .Option("FICHIER", o->fichier, {"FICHIER"}, "La sauvegarde")
      .Obligatoire();
  sauvegardes.Action("purger", "Retire celles qu'une plus récente remplace", o->action)
      .Option("--dossier", o->dossier, {"DOSSIER"}, "Où elles sont")
      .Obligatoire()
      .Option("--jours", o->jours, {"N"}, "Jours dont une est gardée (7)")
      .Option("--semaines", o->semaines, {"N"}, "Semaines (4)")
      .Option("--mois", o->mois, {"N"}, "Mois (12)");
}

}  // namespace fenlor

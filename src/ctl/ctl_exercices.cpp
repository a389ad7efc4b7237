#include <cassert>

#include "core/cles.h"
#include "core/textes.h"
#include "ctl/commandes.h"
#include "ctl/json.h"
#include "ctl/optionscommunes.h"
#include "session/exercices.h"
#include "session/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct OptionsCreer {
  std::string debut, fin;  ///< "JJ/MM/AAAA", empty: the year that the name tells
  bool euro = false;
  bool franc = false;
  bool tva = false;
};

/// The form's values from the command line. What is not asked for is that of the
/// last exercice, else Franc, and Euro for a period that ends after the change.
FormulaireExercice Formulaire(CFenlorApp& app, const std::string& nom, const OptionsCreer& options) {
  assert(options.debut.empty() == options.fin.empty() && !(options.euro && options.franc));
  FormulaireExercice f = NouvelExercice(app);
  const std::string dernier = app.Magasin.GetLastExercice();
  const Date debut = GetDate(options.debut), fin = GetDate(options.fin);
  f.euro = !dernier.empty() && app.Reglages.IsEuro(dernier);
  if (options.debut.empty()) {
    ChangeAnnee(f, nom);
  } else {
    if (Annee(debut) == Annee(fin))
      ChangeAnnee(f, std::to_string(Annee(debut)));
    else if (dernier.empty() || Annee(debut) > 2001)
      f.euro = fin > FaitDate(17, 2, 2002);
    f.annuel = false;
    f.annee = nom;
    f.debut = debut;
    f.fin = fin;
  }
  f.tva = options.tva;
  if (options.euro) f.euro = true;
  if (options.franc) f.euro = false;
  return f;
}

std::string OuiNon(bool oui) { return Texte(oui ? MotOui : MotNon); }

/// The exercice of the command line.
int Cree(Contexte& contexte, const OptionsCreer& options) {
  CFenlorApp& app = contexte.App;
  const std::string& utf8 = contexte.Globales.exercice;
  const std::string nom = DepuisUtf8(utf8).value_or(utf8);
  assert(!nom.empty());
  const FormulaireExercice f = Formulaire(app, nom, options);
  if (const Refus refus = CreeExercice(app, f)) return contexte.Refuse(refus);
  if (contexte.Globales.json)
    return contexte.Donne(LigneJson()
                              .Texte("nom", nom)
                              .Texte("debut", StrDate(f.debut))
                              .Texte("fin", StrDate(f.fin))
                              .Booleen("euro", f.euro)
                              .Booleen("tva", f.tva)
                              .Fin());
  const std::string phrase = "Exercice "_w + nom + " créé, du "_w + StrDate(f.debut) + " au " +
                             StrDate(f.fin) + ", tenu en "_w + Texte(f.euro ? MotEuro : MotFranc) + ".\n";
  return contexte.Donne(VersUtf8(phrase));
}

std::string FauteCreer(const std::string& nom, const OptionsCreer& options) {
  if (nom.empty()) return "il manque --exercice";
  if (options.debut.empty() != options.fin.empty()) return "--debut et --fin vont ensemble";
  const bool annee =
      nom.size() == 4 && nom.find_first_not_of("0123456789") == std::string::npos && nom >= "0001";
  if (!annee && options.debut.empty())
    return "l'exercice " + nom + " ne porte pas le nom d'une année : --debut et --fin sont obligatoires";
  return {};
}

int Liste(Contexte& contexte) {
  Parametres& reglages = contexte.App.Reglages;
  const std::string courant = reglages.LitIni(Texte(SecActivite), Texte(CleExercice));
  if (!contexte.Globales.json &&
      !contexte.Ecrit("   Exercice  Début       Fin         Monnaie  T.V.A.  Clôture\n"))
    return StatutRefuse;
  for (const std::string& nom : contexte.Magasin.ListeExercices()) {
    const std::string debut = reglages.LitIniExercice(nom, Texte(CleDebut)),
                      fin = reglages.LitIniExercice(nom, Texte(CleFin)),
                      cloture = reglages.LitIniExercice(nom, Texte(CleCloture));
    const bool euro = reglages.IsEuro(nom), tva = reglages.IsTVA(nom), estCourant = nom == courant;
    std::string ligne;
    if (contexte.Globales.json) {
      ligne = LigneJson()
                  .Texte("nom", nom)
                  .Texte("debut", debut)
                  .Texte("fin", fin)
                  .Booleen("euro", euro)
                  .Booleen("tva", tva)
                  .Texte("cloture", cloture)
                  .Booleen("courant", estCourant)
                  .Fin();
    } else {
      const auto colonne = [](std::string texte, std::size_t largeur) {
        texte.resize(std::max(texte.size(), largeur), ' ');
        return texte;
      };
      ligne = VersUtf8(colonne(estCourant ? " * " : "", 3) + colonne(nom, 10) + colonne(debut, 12) +
                       colonne(fin, 12) + colonne(Texte(euro ? MotEuro : MotFranc), 9) +
                       colonne(OuiNon(tva), 8) + (cloture.empty() ? "ouvert"_w : cloture) + "\n");
    }
    if (!contexte.Ecrit(ligne)) return StatutRefuse;
  }
  return StatutFait;
}

}  // namespace

void DeclareExercices(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsCreer>();
  ligne
      .Ajoute("creer", "Crée un exercice, et le dossier du cabinet s'il manque",
              [o](Contexte& c) { return Cree(c, *o); })
      .CreeDossier()
      .Controle([o](const OptionsGlobales& globales) { return FauteCreer(globales.exercice, *o); })
      .Option("--debut", o->debut, FormeDate(), "Premier jour")
      .Option("--fin", o->fin, FormeDate(), "Dernier jour")
      .Drapeau("--euro", o->euro, "Tenu en Euro")
      .Drapeau("--franc", o->franc, "Tenu en Franc")
      .Exclut("--euro")
      .Drapeau("--tva", o->tva, "Assujetti à la T.V.A.");
  ligne.Ajoute("exercices", "Liste les exercices du cabinet", Liste);
}

}  // namespace fenlor

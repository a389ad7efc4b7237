#include "app/cherche.h"

#include "app/aide.h"
#include "app/gestioncommandes.h"
#include "app/listecommandes.h"
#include "app/mainframe.h"
#include "app/textes.h"
#include "forms/journal/ecritureview.h"
#include "forms/recherche/dialogrecherche.h"
#include "forms/session/commandesexercice.h"
#include "ui/cznlistview.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

std::vector<CibleRecherche> Cibles(CMainFrame& cadre) {
  std::vector<CibleRecherche> cibles;
  for (const Commande& commande : TableCommandes()) {
    const bool elleMeme = commande.numero == CmdRechercher;
    if (!commande.action || commande.menu == Menu::Aucun || elleMeme || !cadre.Table().Disponible(commande))
      continue;
    const bool etat = commande.menu == Menu::Etats;
    cibles.push_back({Texte(etat ? MotEtat : MotCommande), De1252(NomCommande(commande)),
                      De1252(NomMenu(commande.menu)), De1252(QString::fromUtf8(commande.explication)),
                      [&cadre, numero = commande.numero] { cadre.Table().Execute(numero); }});
  }
  for (const PageAide& page : PagesAide())
    cibles.push_back({Texte(MotAide), De1252(page.titre), Texte(MotPageAide), De1252(TexteAide(page.fichier)),
                      [&cadre, fichier = page.fichier] { cadre.MontrePageAide(fichier); }});
  return cibles;
}

u32 FenetreDe(const Trouvaille& t) {
  if (t.sorte == SorteTrouvaille::Rubrique) return FenRubriques;
  if (t.sorte == SorteTrouvaille::Compte)
    return t.type == Tresorerie ? FenTresorerie
           : t.type == Recette  ? FenComptesRecettes
           : t.type == Depense  ? FenComptesDepenses
                                : FenPlanComptable;
  return t.journal == JournalRecettes   ? FenRecettes
         : t.journal == JournalDepenses ? FenDepenses
                                        : FenOperationsDiverses;
}

void Ouvre(CMainFrame& cadre, const Trouvaille& t) {
  CFenlorApp& app = cadre.App();
  if (t.exercice != app.NomExercice) {
    if (app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionAutreExercice, "", {t.exercice})) return;
    CommandeSelectionExercice(cadre.Contexte(), t.exercice);
    if (app.NomExercice != t.exercice) return;
  }
  cadre.OuvreUnique(FenetreDe(t));
  Vue* vue = cadre.VueDe(FenetreDe(t));
  if (auto* journal = qobject_cast<CEcritureView*>(vue); journal && t.sorte == SorteTrouvaille::Ecriture) {
    journal->MontreEcriture(t.mouvement, t.date);
  } else if (auto* liste = qobject_cast<CZNListView*>(vue)) {
    liste->Table().OteFiltre();
    liste->Table().SelectionneLigne(liste->Table().Modele().LigneDe(t.position));
  }
}

}  // namespace

void CommandeRecherche(CMainFrame& cadre, unsigned) {
  Trouvaille trouvee;
  std::function<void()> action;
  {
    CDialogRecherche boite(cadre.Contexte(), Cibles(cadre), &cadre);
    if (!boite.Execute()) return;
    if (const Trouvaille* choisie = boite.Choisie()) trouvee = *choisie;
    if (const CibleRecherche* cible = boite.Cible()) action = cible->action;
  }
  action ? action() : Ouvre(cadre, trouvee);
}

}  // namespace fenlor

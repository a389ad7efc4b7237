#include <algorithm>

#include "app/gestioncommandes.h"
#include "ui/fenetres.h"

namespace fenlor {

namespace {

using M = Menu;
using Q = Quand;
using C = Commandes;

constexpr auto plusTard = "N'existe pas encore.";

constexpr Commande table[] = {
    {1000, M::Fichier, false, "&Nouvel exercice...", "nouvel-exercice", "Ctrl+N", Q::Toujours,
     &C::NouvelExercice, "Crée un exercice et l'ouvre."},
    {1001, M::Fichier, false, "&Ouvrir un exercice...", "ouvrir", "Ctrl+O", Q::ComboRempli,
     &C::OuvrirExercice, "Ouvre un autre exercice du cabinet."},
    {1094, M::Fichier, false, "&Fermer cet exercice", "fermer", "", Q::ComboRempli, &C::FermerExercice,
     "Ferme l'exercice ouvert."},
    {1002, M::Fichier, true, "&Clôture de l'exercice...", "cloture", "", Q::ExerciceVivant, nullptr,
     plusTard},
    {1240, M::Fichier, false, "S&uppression de l'exercice...", "supprimer-exercice", "", Q::ExerciceVivant,
     &C::SupprimerExercice, "Supprime l'exercice ouvert."},
    {1003, M::Fichier, true, "&Sauvegarder...", "sauvegarder", "Ctrl+S", Q::Exercice, nullptr, plusTard},
    {1004, M::Fichier, false, "&Restaurer...", "restaurer", "", Q::Exercice, nullptr, plusTard},
    {1246, M::Fichier, true, "&Propriétés...", "proprietes", "Alt+Return", Q::Exercice, &C::Proprietes,
     "Montre les dates, les fichiers et leur taille."},
    {57607, M::Fichier, true, "&Imprimer...", "imprimante", "Ctrl+P", Q::Vue, &C::DeLaVue,
     "Imprime ce que montre la fenêtre."},
    {57609, M::Fichier, false, "Aperçu a&vant impression", "apercu", "", Q::Vue, &C::DeLaVue,
     "Montre les pages avant de les imprimer."},
    {57606, M::Fichier, false, "&Configuration de l'impression...", "mise-en-page", "", Q::Toujours,
     &C::MiseEnPage, "Choisit l'imprimante, le papier et les marges."},
    {9000, M::Fichier, true, "&Quitter", "quitter", "Ctrl+Q", Q::Toujours, &C::Quitter, "Ferme Fenlor."},

    {1005, M::Edition, false, "&Ajouter...", "ajouter", "Ins", Q::Vue, &C::DeLaVue,
     "Ajoute un élément à la liste."},
    {1006, M::Edition, false, "&Modifier...", "modifier", "F2", Q::Vue, &C::DeLaVue,
     "Modifie l'élément choisi."},
    {1007, M::Edition, false, "&Supprimer...", "supprimer", "Del", Q::Vue, &C::DeLaVue,
     "Supprime l'élément choisi."},
    {9006, M::Edition, true, "Copi&er", "copier", "Ctrl+C", Q::Vue, &C::DeLaVue,
     "Copie la ligne choisie dans le presse-papiers."},
    {1008, M::Edition, true, "&Pointer", "pointer", "F5", Q::Vue, &C::DeLaVue,
     "Pointe ou dépointe les écritures choisies.", 0, true},
    {1009, M::Edition, false, "&Rapprocher...", "rapprocher", "F6", Q::Vue, &C::DeLaVue,
     "Marque les écritures choisies comme vues à la banque.", 0, true},
    {1230, M::Edition, false, "&Valider...", "valider", "F8", Q::Vue, &C::DeLaVue,
     "Rend définitives les écritures choisies.", 0, true},
    {1010, M::Edition, false, "&Changer la date", "changer-mois", "", Q::Vue, &C::DeLaVue,
     "Transfère les écritures choisies dans un autre mois."},
    {1011, M::Edition, false, "Re&numéroter...", "renumeroter", "", Q::Vue, &C::DeLaVue,
     "Renumérote les écritures affichées."},

    {1012, M::Comptabilite, false, "Ecritures de &RECETTES", "recettes", "Ctrl+R", Q::Exercice, &C::Fenetre,
     "Journal des recettes, un mois à la fois.", FenRecettes, true},
    {1013, M::Comptabilite, false, "Ecritures de &DEPENSES", "depenses", "Ctrl+D", Q::Exercice, &C::Fenetre,
     "Journal des dépenses, un mois à la fois.", FenDepenses, true},
    {1014, M::Comptabilite, false, "Ecritures d'&OPERATIONS DIVERSES", "operations-diverses", "Ctrl+Shift+O",
     Q::Exercice, &C::Fenetre, "Ecritures libres, sur tous les comptes.", FenOperationsDiverses, true},
    {1015, M::Comptabilite, true, "Registre des &IMMOBILISATIONS", "immobilisations", "Ctrl+I", Q::Exercice,
     nullptr, plusTard, FenImmobilisations, true},
    {1016, M::Comptabilite, true, "Comptes de &TRESORERIE", "tresorerie", "Ctrl+T", Q::Exercice, &C::Fenetre,
     "Banques et caisses, avec leurs soldes.", FenTresorerie, true},
    {1017, M::Comptabilite, false, "Com&ptes de RECETTES", "comptes-recettes", "Ctrl+Shift+R", Q::Exercice,
     &C::Fenetre, "Comptes de recettes, T.V.A. et rubrique.", FenComptesRecettes, true},
    {1018, M::Comptabilite, false, "Compt&es de DEPENSES", "comptes-depenses", "Ctrl+Shift+D", Q::Exercice,
     &C::Fenetre, "Comptes de dépenses, T.V.A. et part professionnelle.", FenComptesDepenses, true},
    {1019, M::Comptabilite, false, "Pl&an Comptable", "plan-comptable", "Ctrl+Shift+P", Q::Exercice,
     &C::Fenetre, "Tous les comptes, dans l'ordre de leur numéro.", FenPlanComptable, true},
    {1020, M::Comptabilite, true, "R&UBRIQUES de l'état fiscal", "rubriques", "Ctrl+Shift+F", Q::Exercice,
     &C::Fenetre, "Rubriques de la déclaration 2035 et leurs formules.", FenRubriques, true},
    {1021, M::Comptabilite, false, "&LIBELLES des écritures", "libelles", "Ctrl+L", Q::Exercice, &C::Fenetre,
     "Libellés proposés à la saisie.", FenLibelles, true},

    {1026, M::Etats, false, "&Détail des écritures...", "etat-detail", "", Q::Exercice, &C::Etat,
     "Ecritures d'une période, recettes et dépenses à part."},
    {1027, M::Etats, false, "&Extrait de compte...", "etat-extrait", "", Q::Exercice, &C::Etat,
     "Lignes d'un compte, avec son solde."},
    {1028, M::Etats, false, "&Grand livre...", "etat-grand-livre", "", Q::Exercice, &C::Etat,
     "Lignes de tous les comptes, un compte après l'autre."},
    {1029, M::Etats, false, "&Balance des comptes...", "etat-balance", "", Q::Exercice, &C::Etat,
     "Débits, crédits et soldes de tous les comptes."},
    {1030, M::Etats, false, "Etat de &T.V.A....", "etat-tva", "", Q::Exercice, &C::Etat,
     "T.V.A. perçue et payée sur une période."},
    {1031, M::Etats, false, "Etat de r&approchement....", "etat-rapprochement", "", Q::Exercice, &C::Etat,
     "Lignes rapprochées d'une période."},
    {1032, M::Etats, false, "Etat de &centralisation....", "etat-centralisation", "", Q::Exercice, &C::Etat,
     "Totaux d'un compte mois par mois."},
    {1033, M::Etats, true, "Déclaration fiscale (&2035)...", "etat-2035", "", Q::Exercice, &C::Etat,
     "Déclaration des revenus professionnels, ligne par ligne."},
    {1034, M::Etats, true, "&Remise de chèques...", "etat-remise", "", Q::Exercice, nullptr, plusTard},
    {1035, M::Etats, false, "A&mortissements...", "etat-amortissements", "", Q::Exercice, nullptr, plusTard},
    {1036, M::Etats, false, "Plus et moins &values...", "etat-plus-values", "", Q::Exercice, nullptr,
     plusTard},
    {1037, M::Etats, true, "Gra&phiques...", "graphiques", "", Q::Exercice, nullptr, plusTard},

    {1038, M::Traitements, false, "&Ecritures automatiques...", "ecritures-automatiques", "", Q::Exercice,
     nullptr, plusTard},
    {1095, M::Traitements, false, "Calcul des échéances", "echeances", "", Q::Exercice, nullptr, plusTard},
    {1039, M::Traitements, true, "&Frais kilométriques...", "frais-kilometriques", "", Q::Exercice,
     &C::FraisKm, "Calcule l'indemnité kilométrique de l'année."},
    {1040, M::Traitements, false, "&Virement interne...", "virement", "Ctrl+Shift+V", Q::Exercice,
     &C::Virement, "Passe de l'argent d'un compte de trésorerie à un autre."},
    {1041, M::Traitements, false, "&Rapprochement bancaire...", "rapprochement", "Ctrl+B", Q::Exercice,
     nullptr, plusTard},
    {1224, M::Traitements, true, "&Validation du brouillard...", "validation", "", Q::Exercice,
     &C::Validation, "Rend définitives les écritures d'une période."},

    {1251, M::Outils, false, "Mises à jour &automatiques...", "mise-a-jour", "", Q::Exercice, nullptr,
     plusTard},
    {1042, M::Outils, false, "Reconstruction des &clés d'accès...", "reconstruction", "", Q::Exercice,
     &C::Reconstruction, "Refait les index des fichiers."},
    {1043, M::Outils, false, "Rec&alcul des cumuls...", "recalcul", "", Q::Exercice, &C::Recalcul,
     "Refait les cumuls de tous les comptes."},
    {1250, M::Outils, false, "Ajustement des Montants Euro", "ajustement-euro", "", Q::Exercice,
     &C::AjustementEuro, "Accorde les montants des deux monnaies au taux de leur date."},
    {1044, M::Outils, true, "Calc&ulatrice", "calculatrice", "F9", Q::Toujours, &C::Calculatrice,
     "Montre ou cache la calculatrice.", 0, true},
    {1045, M::Outils, true, "&Préférences...", "preferences", "", Q::Toujours, &C::PreferencesUi,
     "Couleurs, polices et habitudes de saisie."},
    {1213, M::Outils, false, "Options...", "options", "F12", Q::Exercice, &C::Options,
     "Cabinet, banques, comptes particuliers, T.V.A., mot de passe."},

    {1022, M::Affichage, false, "Ecritures du &mois de...", "mois", "Ctrl+M", Q::Vue, &C::DeLaVue,
     "Montre un autre mois du journal."},
    {1023, M::Affichage, false, "&Critères d'affichage...", "criteres", "Ctrl+F", Q::Vue, &C::DeLaVue,
     "Choisit les écritures que le journal montre."},
    {1220, M::Affichage, true, "Ecritures en &brouillard", "brouillard", "", Q::Vue, &C::DeLaVue,
     "Montre les écritures qui ne sont pas validées.", 0, true},
    {1221, M::Affichage, false, "Ecritures &validées", "journal-valide", "", Q::Vue, &C::DeLaVue,
     "Montre les écritures validées.", 0, true},
    {1222, M::Affichage, false, "&Toutes les écritures", "toutes", "", Q::Vue, &C::DeLaVue,
     "Montre les écritures validées et les autres.", 0, true},
    {1248, M::Affichage, false, "&Journal comptable", "journal-comptable", "Ctrl+J", Q::Vue, &C::DeLaVue,
     "Montre chaque ligne des écritures, ou une ligne par écriture.", 0, true},
    {1024, M::Affichage, true, "Barre d'&outils", "barre-outils", "", Q::Toujours, &C::Barre,
     "Montre ou cache la barre d'outils.", 0, true},
    {1025, M::Affichage, false, "Barre d'&icônes", "barre-icones", "", Q::Toujours, &C::Barre,
     "Montre ou cache la barre d'icônes.", 0, true},
    {9005, M::Affichage, false, "Barre d'&état", "barre-etat", "", Q::Toujours, &C::Barre,
     "Montre ou cache la barre d'état.", 0, true},
    {9004, M::Affichage, true, "&Plein écran", "plein-ecran", "F11", Q::Toujours, &C::PleinEcran,
     "Donne tout l'écran à Fenlor.", 0, true},
    {9003, M::Affichage, true, "Per&sonnaliser la barre d'icônes...", "personnaliser", "", Q::Toujours,
     &C::Personnaliser, "Choisit les commandes de la barre d'icônes."},
    {1212, M::Affichage, false, "&Raccourcis clavier...", "raccourcis", "", Q::Toujours, &C::Raccourcis,
     "Change les touches des commandes."},

    {9010, M::Fenetre, false, "&Cascade", "cascade", "", Q::FenetreActive, &C::Cascade,
     "Décale les fenêtres."},
    {9011, M::Fenetre, false, "&Mosaïque", "mosaique", "", Q::FenetreActive, &C::Mosaique,
     "Range les fenêtres côte à côte."},
    {9014, M::Fenetre, true, "Fenêtre &suivante", "fenetre-suivante", "Ctrl+F6", Q::FenetreActive,
     &C::FenetreSuivante, "Passe à la fenêtre suivante."},
    {9012, M::Fenetre, true, "&Fermer la fenêtre", "fermer-fenetre", "Ctrl+F4", Q::FenetreActive,
     &C::FermerFenetre, "Ferme la fenêtre active."},
    {9013, M::Fenetre, false, "Fermer &toutes les fenêtres", "fermer-fenetres", "", Q::FenetreActive,
     &C::FermerFenetres, "Ferme toutes les fenêtres."},

    {9002, M::Aide, false, "A&ide de Fenlor", "aide", "F1", Q::Toujours, &C::Aide,
     "Ouvre l'aide sur ce que vous voyez."},
    {1060, M::Aide, false, "Astuce du jour...", "astuce", "", Q::Toujours, &C::Astuce, "Montre une astuce."},
    {9001, M::Aide, false, "Cabinet de &démonstration", "demonstration", "", Q::Toujours, &C::Demonstration,
     "Ouvre un cabinet d'exemple, à côté du vôtre."},
    {1058, M::Aide, true, "Quorbane sur le Web...", "web", "", Q::NavigateurWeb, &C::PageWeb,
     "Ouvre la page du produit dans le navigateur."},
    {1059, M::Aide, false, "Ecrivez-nous...", "courrier", "", Q::NavigateurWeb, &C::Courrier,
     "Ouvre un courrier à notre adresse."},
    {1062, M::Aide, true, "Informations système...", "informations", "", Q::Toujours, &C::Informations,
     "Montre la machine, le disque et les versions."},
    {57664, M::Aide, false, "&A propos de la Fenlor...", "fenlor", "", Q::Toujours, &C::APropos,
     "Version, licence et auteurs."},

    {7002, M::Aucun, false, "Exercice", "exercice-ouvert", "", Q::ComboRempli, &C::SelectionExercice,
     "Choisit l'exercice sur lequel vous travaillez."},
};

constexpr const char* titres[] = {"&Fichier", "&Edition",   "&Comptabilité", "E&tats", "T&raitements",
                                  "&Outils",  "&Affichage", "Fe&nêtre",      "&?",     ""};

}  // namespace

const char* TitreMenu(Menu menu) { return titres[static_cast<int>(menu)]; }

std::span<const Commande> TableCommandes() { return table; }

const Commande* TrouveCommande(unsigned numero) {
  const auto trouve =
      std::find_if(std::begin(table), std::end(table), [&](const Commande& c) { return c.numero == numero; });
  return trouve == std::end(table) ? nullptr : trouve;
}

}  // namespace fenlor

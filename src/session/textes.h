// Texts of session/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Questions: yes takes away what nobody can bring back
inline constexpr TexteFixe QuestionAjustementEuro{3308,
    "Cet utilitaire va recalculer les montants en Euros de vos écritures.\nLe Taux Euro dans "
    "Outils/Option/EURO doit etre correct\nFaut-il continuer ?", Detruit};
inline constexpr TexteFixe QuestionSupprimeExercice{3309,
    "Attention !\n\nCette opération rendra inaccessible cet exercice.\n\nFaut-il supprimer "
    "l'exercice %s ?", Detruit};
/// name, first and last day
inline constexpr TexteFixe QuestionAnneesExercice{3404,
    "L'exercice %s, du %s au %s, est bien loin de la date du jour.\n\nFaut-il vraiment le créer ?", Detruit};

// Errors
inline constexpr TexteFixe ErrRepertoireExercice{3000, "Le répertoire de l'exercice est invalide !"};
inline constexpr TexteFixe ErrFichierEndommage{3010, "Fichier (%s) endommagé\nIndexation recommandé."};
inline constexpr TexteFixe ErrExerciceRecent{3039,
    "Il est impossible de supprimer un exercice de moins de 5 ans comportant des écritures."};
inline constexpr TexteFixe QuestionRemplaceExercice{3073,
    "Cet exercice existe déja désirez vous le remplacer ?\n"};
inline constexpr TexteFixe ErrPeriodeEnConflit{3075, "Cette période est en conflit avec l'exercice %s"};
inline constexpr TexteFixe ErrDatesExercice{3099,
    "Les dates de début et de fin d'exercice ne sont pas bonnes.\n Pour ouvrir cet exercice il est "
    "nécessaire d'ajouter les valeurs par défaut suivantes :\n\nDate de début  %s\nDate de fin  %s"};

// Refusals
inline constexpr TexteFixe ErrChampInconnu{3203, "Le champ \"%s\" est inconnu."};
inline constexpr TexteFixe ErrMonnaieExercice{3210, "L'exercice %s ne peut pas être tenu en %s."};
inline constexpr TexteFixe ErrNomExercice{3211,
    "Le nom de l'exercice \"%s\" est incorrect : 1 à 4 lettres ou chiffres."};
inline constexpr TexteFixe ErrPeriode{3212, "La période du %s au %s est incorrecte."};

// Taking back
/// "à annuler" or "à rétablir"
inline constexpr TexteFixe ErrRienAReprendre{3570, "Il n'y a rien %s."};
/// "d'annuler" or "de rétablir", name of the unit, label of an entry
inline constexpr TexteFixe ErrRepriseValidee{3571,
    "Il n'est plus possible %s : %s.\nL'écriture « %s » est validée."};
inline constexpr TexteFixe ErrRepriseChangee{3572,
    "Il n'est plus possible %s : %s.\nCe qui avait été enregistré alors a été modifié depuis."};
/// "d'annuler" or "de rétablir", name of the unit, the reason
inline constexpr TexteFixe ErrReprisePerdue{3576,
    "Il n'est plus possible %s : %s.\nCe que cette opération a changé n'est pas gardé : %s."};
/// In the order of `Acte`.
inline constexpr TexteFixe MotActe[] = {
    {6800, "saisie"},
    {6801, "ajout"},
    {6802, "suppression"},
    {6803, "modification"},
    {6804, "rapprochement"},
    {6805, "dérapprochement"},
    {6806, "pointage"},
    {6807, "dépointage"},
    {6808, "remise en banque"},
    {6809, "renumérotation"},
    {6810, "changement de date"},
};
/// An entry, then the records of `Sortes`: one, several.
struct MotsSorte {
  TexteFixe une, plusieurs;
};
inline constexpr MotsSorte MotSorte[] = {
    {{6811, "d'une écriture"}, {6812, "écritures"}},
    {{6813, "d'une immobilisation"}, {6814, "immobilisations"}},
    {{6815, "d'une opération bancaire"}, {6816, "opérations bancaires"}},
    {{6817, "d'une écriture automatique"}, {6818, "écritures automatiques"}},
    {{6819, "d'une rubrique"}, {6820, "rubriques"}},
    {{6821, "d'un compte"}, {6822, "comptes"}},
    {{6823, "d'un amortissement"}, {6824, "amortissements"}},
};
inline constexpr TexteFixe FormatActeUn{6672, "%s %s"};            ///< act, "d'une écriture"
inline constexpr TexteFixe FormatActePlusieurs{6673, "%s de %s %s"};  ///< act, number, "écritures"
inline constexpr TexteFixe FormatActeNomme{6674, "%s de « %s »"};
inline constexpr TexteFixe FormatActeMontant{6675, "%s de « %s », %s"};
inline constexpr TexteFixe ActeReglages{6676, "modification des réglages"};
/// To take back, to do again; each as "de" and as "à"
inline constexpr TexteFixe MotDAnnuler{6670, "d'annuler"};
inline constexpr TexteFixe MotAAnnuler{6671, "à annuler"};
inline constexpr TexteFixe MotDeRetablir{6677, "de rétablir"};
inline constexpr TexteFixe MotARetablir{6825, "à rétablir"};

// Questions
inline constexpr TexteFixe QuestionRecalcul{3307,
    "Cet utilitaire va recalculer les cumuls de tous les comptes de trésoreries, recettes, dépenses "
    "et T.V.A.\nFaut-il continuer ?"};
inline constexpr TexteFixe InfoRecalcul{3310,
    "%ld écriture(s) de recettes traitée(s)\n%ld écriture(s) de dépenses traitée(s)\n%ld écritures "
    "d'opérations diverses traitée(s)\n%ld écriture(s) pointée(s)\n%ld ligne(s) remise(s)\n%ld "
    "ligne(s) rapprochée(s)\n%ld écriture(s) validée(s)"};

// Progress
inline constexpr TexteFixe TitreReconstruction{5020, "Reconstruction des clés."};
/// store name
inline constexpr TexteFixe TexteReconstruction{5021,
    "Reconstruction des clés\n\ndu fichier %s\n\nen cours..."};
inline constexpr TexteFixe TitreMontantsEuros{5025, "Recalcul des Montants Euros"};

// Files in the list of the key rebuild
inline constexpr TexteFixe FichierListeBanques{5030, "Banques (banque.dat)"};
inline constexpr TexteFixe FichierListeComptes{5031, "Comptes (comptes.dat)"};
inline constexpr TexteFixe FichierListeJournal{5032, "Journal (journal.dat)"};
inline constexpr TexteFixe FichierListeRubriques{5033, "Rubriques (rubrique.dat)"};
inline constexpr TexteFixe FichierListeImmo{5034, "Immobilisations (immo.dat)"};
inline constexpr TexteFixe FichierListeAmo{5035, "Amortissements (amo.dat)"};
inline constexpr TexteFixe FichierListeReleves{5939, "Relevés importés (releves.dat)"};

// Words
inline constexpr TexteFixe MotFranc{5343, "Franc"};
inline constexpr TexteFixe MotEuro{5344, "Euro"};

// Keys of the other sections
inline constexpr TexteFixe CleExercice{5417, "Exercice"};

// Preferences and positions of windows
inline constexpr TexteFixe InfoMotDePasseSupprime{5680,
    "Le passage de la version 1 à la version 2 a supprimé le mot de passe. Pensez à en remettre un "
    "si vous désirez protéger cet exercice."};
inline constexpr TexteFixe CleVersion{5681, "Version"};  ///< also a value of the registry
inline constexpr TexteFixe CleRevision{5682, "Revision"};
inline constexpr TexteFixe CleBuild{5683, "Build"};
inline constexpr TexteFixe SecBarreOutils{5685, "Barre d'outils"};
inline constexpr TexteFixe SecBarreOutilsSummary{5686, "Barre d'outils-Summary"};
inline constexpr TexteFixe FormatSecBarreOutils{5687, "Barre d'outils-Bar%d"};
/// save, change, delete (5688, 5690, 5692), the next number of an expense
inline constexpr TexteFixe QuestionRecetteSansExercice[] = {
    {5688, "L'enregistrement de cette recette est impossible car l'exercice %s n'existe pas en "
     "Fenlor.\nVoulez-vous créer l'exercice ?\n\n- Sélectionner Oui pour le créer\n- Sélectionner "
     "Non pour annuler l'enregistrement."},
    {5689, "L'enregistrement de cette dépense est impossible car l'exercice %s n'existe pas en "
     "Fenlor.\nVoulez-vous créer l'exercice ?\n\n- Sélectionner Oui pour le créer\n- Sélectionner "
     "Non pour annuler l'enregistrement."},
    {5690, "La modification de cette recette est impossible car l'exercice %s n'existe pas en "
     "Fenlor.\nVoulez-vous créer l'exercice ?\n\n- Sélectionner Oui pour le créer\n- Sélectionner "
     "Non pour annuler la modification."},
    {5691, "La modification de cette dépense est impossible car l'exercice %s n'existe pas en "
     "Fenlor.\nVoulez-vous créer l'exercice ?\n\n- Sélectionner Oui pour le créer\n- Sélectionner "
     "Non pour annuler la modification."},
    {5692, "La suppression de cette recette est impossible car l''exercice %s n'existe pas en "
     "Fenlor.\nVoulez-vous créer l'exercice ?\n\n- Sélectionner Oui pour le créer\n- Sélectionner "
     "Non pour annuler la suppression."},
    {5693, "La suppression de cette dépense est impossible car l'exercice %s n'existe pas en "
     "Fenlor.\nVoulez-vous créer l'exercice ?\n\n- Sélectionner Oui pour le créer\n- Sélectionner "
     "Non pour annuler la suppression."},
};
inline constexpr TexteFixe CleRegistreFenlor{5694, "SOFTWARE\\Orvelia\\Fenlor"};
inline constexpr TexteFixe CleRegistreTessamaris{5695, "SOFTWARE\\Orvelia\\Tessamaris"};
inline constexpr TexteFixe CleRegistreQuorbaneSpeciale{5696, "SOFTWARE\\Orvelia\\Quorbane Edition Spéciale"};
inline constexpr TexteFixe CleRegistreQuorbane{5697, "SOFTWARE\\Orvelia\\Quorbane"};
inline constexpr TexteFixe CleRegistreSesam{5698,
    "SOFTWARE\\Orvelia\\SESAM-VITALE pour Quorbane\\Paramètres"};
inline constexpr TexteFixe CleSpecialite{5699, "Specialite"};
inline constexpr TexteFixe ListeSpecialites{5700, "24,26,27,28,29"};
/// store name, number
inline constexpr TexteFixe FormatFichierReconstruit{5701, "%s : %s enregistrement(s) gardé(s)"};
inline constexpr TexteFixe FormatReconstruitEcartes{5702, ", %s écarté(s)"};
inline constexpr TexteFixe FormatReconstruitRemplaces{5703, ", %s remplacé(s) par un plus récent"};
inline constexpr TexteFixe FormatReconstruitInconnus{5704, ", %s illisible(s)"};
inline constexpr TexteFixe FormatReconstruitCopie{5705, "\nL'ancien fichier est gardé dans %s"};
inline constexpr TexteFixe FormatReconstruitCles{5706, ", %s clé(s) en double"};
inline constexpr TexteFixe FormatReconstruitVierges{5708, ", %s mis à zéro"};
inline constexpr TexteFixe FormatReconstruitRestants{5709, ", %s octet(s) illisible(s) en fin de fichier"};
inline constexpr TexteFixe FormatReconstruitRepares{5711, ", %s réparé(s)"};
inline constexpr TexteFixe MotFichierEndommage{5710, ", fichier endommagé"};

// Updates
inline constexpr TexteFixe CleRegistreOrvelia{6620, "software\\Orvelia"};
inline constexpr TexteFixe CleRegistreQVUpdate{6621, "software\\Orvelia\\QVUpdate"};
inline constexpr TexteFixe GroupeQVUpdate{6622, "QVUpdate"};
inline constexpr TexteFixe GroupeOptions{6623, "Options"};
inline constexpr TexteFixe NomPath{6624, "Path"};
inline constexpr TexteFixe NomDate{6625, "Date"};
inline constexpr TexteFixe QuestionMiseAJour{3550,
    "La dernière mise à jour de ce programme est vieille de %d jours.\r\nDésirez-vous vérifier la "
    "présence d'une nouvelle mise à jour maintenant ?\r\n\r\nCliquer sur 'OUI' pour activer le "
    "programme de mise à jour.\nCliquez sur 'NON' pour continuer sans mettre à jour"};

/// file, number
inline constexpr TexteFixe FormatEnregistrementAbime{
    6666, "Le fichier %s est endommagé : l'enregistrement %s n'est plus tel qu'il a été écrit"};

// Periods
inline constexpr TexteFixe ClePeriode{6160, "Periode"};
inline constexpr TexteFixe FormatSemaine{6161, "du %s au %s"};  ///< first and last day

inline constexpr TexteFixe ErrReconstruction{3440, "Le fichier (%s) n'a pas pu être reconstruit : %s"};

// clang-format on

}  // namespace fenlor

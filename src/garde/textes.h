// Texts of safekeeping: refusals of archives, words of their manifest, closure.
#pragma once

#include <utility>

#include "core/texte.h"
#include "store/definitions.h"

namespace fenlor {

// Reading and writing an archive. The first argument is its file.
inline constexpr TexteFixe ErrArchiveEcriture{
    3520, "La sauvegarde %s n'a pas pu être écrite : %s. Rien n'a été gardé de cet essai."};
inline constexpr TexteFixe ErrArchiveLecture{3521, "La sauvegarde %s ne peut pas être lue : %s."};
inline constexpr TexteFixe ErrArchiveEtrangere{3522, "%s n'est pas une sauvegarde de Fenlor."};
inline constexpr TexteFixe ErrArchiveRecente{
    3523, "La sauvegarde %s a été faite par une version plus récente de Fenlor (forme %s)."};
inline constexpr TexteFixe ErrArchiveEndommagee{3524, "La sauvegarde %s est endommagée : %s."};
inline constexpr TexteFixe ErrArchiveRefusee{3525, "La sauvegarde %s est refusée : %s."};
inline constexpr TexteFixe ErrArchiveProtegee{3526,
                                              "La sauvegarde %s est protégée : donnez son mot de passe."};
inline constexpr TexteFixe ErrArchiveMotDePasse{
    3527, "Le mot de passe n'est pas celui de la sauvegarde %s, ou son début est endommagé."};
inline constexpr TexteFixe ErrArchiveInterrompue{3528,
                                                 "La sauvegarde a été interrompue : rien n'a été gardé."};
inline constexpr TexteFixe ErrMotDePasseSauvegarde{
    3533, "Sans un mot de passe donné deux fois de la même façon, la sauvegarde n'est pas faite."};
inline constexpr TexteFixe ErrArchiveLivres{3529, "%s ne peut pas être sauvegardé : %s."};
inline constexpr TexteFixe ErrDossierIllisible{3586, "Le dossier %s ne peut pas être lu : %s."};
/// The copy that an archive is made of stands beside the books: folder, reason.
inline constexpr TexteFixe ErrCopieLivres{
    3587, "La copie que demande une sauvegarde n'a pas pu être faite dans %s : %s."};

// Restoration
inline constexpr TexteFixe ErrRestauration{3530, "Les livres n'ont pas pu être déballés dans %s : %s."};
inline constexpr TexteFixe ErrRestaurationLivres{
    3531, "Les livres de %s tels que la sauvegarde les contient ne s'ouvrent pas : %s"};
inline constexpr TexteFixe ErrSauvegardeRetrait{3532, "La sauvegarde %s n'a pas pu être retirée : %s."};

inline constexpr TexteFixe ErrRestaurationAbandonnee{
    3561, "La restauration a été abandonnée : les livres sont restés tels qu'ils étaient."};
/// names of the files
inline constexpr TexteFixe QuestionCommuns{
    3560,
    "Des fichiers qui servent à tous les exercices ne sont plus ceux de la sauvegarde (%s).\n"
    "Faut-il les ramener eux aussi ?\n\nOui : ceux de la sauvegarde prennent leur place, ceux d'aujourd'hui "
    "sont gardés à côté.\nNon : ils restent tels qu'ils sont.",
    Detruit};
inline constexpr TexteFixe AvisCommunsGardes{
    3562, "Ils servent à tous les exercices et sont restés tels qu'ils étaient avant la restauration : %s."};
inline constexpr std::pair<u16, TexteFixe> NomsFichiersCommuns[] = {
    {FichierImmo, {6660, "immobilisations"}},
    {FichierAmo, {6661, "amortissements"}},
    {FichierRecettes, {6662, "liens des recettes"}},
    {FichierDepenses, {6663, "liens des dépenses"}},
};

// Leftovers
/// path, reason
inline constexpr TexteFixe AvisResteSauvegarde{
    6664, "Ce qu'une sauvegarde ou une restauration interrompue a laissé n'a pas pu être retiré : %s : %s"};
inline constexpr TexteFixe FormatAutresConstats{6751, "... et %s autre(s) constat(s)."};
inline constexpr TexteFixe CleSauvegardeEnCours{6665, "Sauvegarde en cours"};  ///< folder of an archive

// Closure and seal
inline constexpr TexteFixe QuestionClotureRecalcul{
    3321,
    "Cet utilitaire doit recalculer les cumuls de tous les comptes avant de cloturer l'exercice.\nFaut-il "
    "continuer ?",
    Detruit};
inline constexpr TexteFixe QuestionClotureNonRapprochees{
    3322, "Il y a %ld écritures non rapprochées.\nFaut-il continuer ?", Detruit};
inline constexpr TexteFixe ErrClotureBrouillard{
    3033, "La cloture de l'exercice %s est impossible ! Toutes les écritures ne sont pas validées."};
inline constexpr TexteFixe ErrSceauEcriture{3534,
                                            "Le sceau de l'exercice n'a pas pu être écrit dans %s : %s."};
/// file, sealed records, of these gone or changed, new or changed
inline constexpr TexteFixe TexteSceauRompu{
    6280,
    "Le sceau de la clôture est rompu : %s, %s enregistrement(s) scellé(s), dont %s ne sont plus là tels "
    "quels, et %s qui n'y étaient pas"};
inline constexpr TexteFixe TexteSceauEnregistrement{6281, "Le sceau de la clôture ne couvre pas : %s"};
inline constexpr TexteFixe TexteSceauSansListe{6282,
                                               "Le sceau de la clôture est rompu, et la liste des "
                                               "enregistrements scellés manque ou n'est pas la sienne"};
inline constexpr TexteFixe CleSceau{6283, "Sceau"};
inline constexpr const char* NomFichierSceau = "SCEAU.dat";

// What is remembered of backups
inline constexpr TexteFixe ErrDossierSauvegardeLong{
    3551, "Le chemin de ce dossier est trop long pour être retenu (259 caractères au plus)."};
inline constexpr TexteFixe ErrDossierSauvegardeAbsent{3552, "Choisissez le dossier des sauvegardes."};
inline constexpr TexteFixe ErrCheminCabinetLong{
    3553, "Le chemin %s est trop long pour une sauvegarde : 259 caractères au plus."};
inline constexpr TexteFixe ErrDossierSauvegardeInconnu{3554, "Le dossier %s n'existe pas."};
inline constexpr TexteFixe ErrSauvegardeSansExercice{3555, "Cochez au moins un exercice à restaurer."};
inline constexpr TexteFixe CleDateSauvegarde{6626, "Date sauvegarde"};
inline constexpr TexteFixe CleDossierSauvegarde{6627, "Dossier sauvegarde"};
inline constexpr TexteFixe CleSauvegardeFinSession{6628, "Sauvegarde fin de session"};
inline constexpr TexteFixe CleSauvegardesJours{6629, "Sauvegardes jours"};
inline constexpr TexteFixe CleSauvegardesSemaines{6630, "Sauvegardes semaines"};
inline constexpr TexteFixe CleSauvegardesMois{6631, "Sauvegardes mois"};
inline constexpr TexteFixe CleSauvegardeVerifiee{6632, "Sauvegarde vérifiée"};
inline constexpr TexteFixe AvisNoteSauvegarde{6633,
                                              "La date de la dernière sauvegarde n'a pas pu être notée."};
/// date, time, file
inline constexpr TexteFixe TexteSauvegardeVerifiee{6634,
                                                   "Dernière copie relue et vérifiée : le %s à %s, %s."};

// The assistants
/// days, weeks, months
inline constexpr TexteFixe TexteConservation{
    6635,
    "De chaque sorte de sauvegarde, le dossier garde la plus récente des %s derniers jours, %s dernières "
    "semaines et %s derniers mois qui en ont une ; les autres en sont retirées. Les "
    "préférences changent ces nombres."};
inline constexpr TexteFixe TextePlaceLibre{6636, "Place libre : %s."};
inline constexpr TexteFixe TexteMemeDisque{
    6637, "Ce dossier est sur le même disque que vos livres : une panne emporterait les deux."};
inline constexpr TexteFixe NomDossierSauvegardes{6667, "Sauvegardes Fenlor"};
inline constexpr TexteFixe TexteDossierACreer{6668, "Ce dossier n'existe pas encore : il sera créé."};
inline constexpr TexteFixe MotSansMotDePasse{6638, "aucune"};
inline constexpr TexteFixe MotParMotDePasse{6639, "mot de passe"};
inline constexpr TexteFixe MotAucuneRetiree{6640, "aucune"};
inline constexpr TexteFixe MotBonne{6641, "Bonne"};
inline constexpr TexteFixe MotEnLecture{6669, "Lecture..."};  ///< whether it is whole is not known yet
inline constexpr TexteFixe MotProtegee{6642, "Protégée"};
inline constexpr TexteFixe MotEndommagee{6643, "Endommagée"};
inline constexpr TexteFixe MotEtrangere{6644, "Etrangère"};
/// date, time, practice
inline constexpr TexteFixe TexteSauvegardeDu{6645, "Sauvegarde du %s à %s, cabinet « %s »."};
/// name, first and last day, entries
inline constexpr TexteFixe FormatExerciceRemplace{
    6646, "%s, du %s au %s, %s écriture(s) : remplace l'exercice d'aujourd'hui"};
inline constexpr TexteFixe FormatExerciceNouveau{
    6647, "%s, du %s au %s, %s écriture(s) : n'est pas dans le cabinet"};
inline constexpr TexteFixe FormatRestaure{6648, "Exercice %s : restauré."};
inline constexpr TexteFixe FormatAncien{6649, "   Les livres d'avant restent dans le dossier %s."};
inline constexpr TexteFixe FormatConstat{6650, "   La vérification a trouvé : %s"};
inline constexpr TexteFixe TexteCabinetRestaure{6651, "Les réglages du cabinet ont été restaurés avec lui."};

// The end of a session
inline constexpr TexteFixe TexteJoursSauvegarde{6652, "Votre dernière sauvegarde date de %d jours."};
inline constexpr TexteFixe TexteJoursMiseAJour{6653, "Votre dernière mise à jour date de %d jours."};

// The paper of a closure
inline constexpr TexteFixe ErrExerciceOuvert{3556,
                                             "L'exercice %s n'est pas clôturé : il n'y a rien à attester."};
inline constexpr TexteFixe PhraseSceauIntact{3557, "Intact : tout est comme au jour de la clôture."};
inline constexpr TexteFixe PhraseSceauRompu{3558, "Rompu : quelque chose a changé depuis la clôture."};
inline constexpr TexteFixe PhraseSceauAbsent{3559, "L'exercice a été clôturé sans sceau."};
inline constexpr TexteFixe TitreAttestation{6654, "Attestation de clôture"};
/// who, exercice, first and last day, day of the closure, today
inline constexpr TexteFixe TeteAttestation{6655,
                                           "\n\n\\B\\M000\\R030Titulaire :\\M034\\L\\0%s\n\n"
                                           "\\B\\M000\\R030Exercice :\\M034\\L\\0%s\n\n"
                                           "\\B\\M000\\R030Période :\\M034\\L\\0du %s au %s\n\n"
                                           "\\B\\M000\\R030Clôturé le :\\M034\\L\\0%s\n\n"
                                           "\\B\\M000\\R030Attestation du :\\M034\\L\\0%s\n\n\\M000"};
inline constexpr TexteFixe EnteteAttestation{
    6656, "\\B\\M010\\N010Journal\\R070Ecritures\\R090Lignes\\R112Débit\\R134Crédit\n\\S002\\0"};
/// journal, entries, lines, debit, credit
inline constexpr TexteFixe RangeeAttestation{6657, "\\0\\M010\\N010%s\\R070%s\\R090%s\\R112%s\\R134%s\n"};
/// both halves of the seal, whether it holds
inline constexpr TexteFixe SceauAttestation{6658,
                                            "\n\n\\B\\M000\\N000\\R030Sceau :\\M034\\L\\0%s\n%s\n\n"
                                            "\\B\\M000\\R030Etat du sceau :\\M034\\L\\0%s\n"};
inline constexpr TexteFixe ConstatAttestation{6659, "\\M034\\0%s\n"};

inline constexpr TexteFixe TitreSauvegarde{6270, "Sauvegarde"};
inline constexpr TexteFixe TexteSauvegarde{6271, "Copie et relecture des livres..."};
inline constexpr TexteFixe TitreRestauration{6272, "Restauration"};
inline constexpr TexteFixe TexteRestauration{6273, "Lecture et contrôle de la sauvegarde..."};

}  // namespace fenlor

// Texts of assets/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Errors
inline constexpr TexteFixe ErrCessionAvantAchat{3013,
    "Date d'achat\t:%s\nDate de cession\t:%s\n\nLa date de cession est inférieure à la date d'achat !"};
inline constexpr TexteFixe ErrCessionFuture{3014,
    "Date du jour\t:%s\nDate de cession\t:%s\n\nLa date de cession est supérieure à la date du jour !"};
inline constexpr TexteFixe ErrAchatApresCession{3015,
    "Date d'achat\t:%s\nDate de cession\t:%s\n\nLa date d'achat est inférieure à la date de cession !"};
inline constexpr TexteFixe ErrAcquisitionFranc{3042,
    "Vous ne pouvez pas saisir d'acquisition en Franc après le %s !"};
inline constexpr TexteFixe ErrCessionFranc{3043,
    "Vous ne pouvez pas saisir de cession en Franc après le %s !"};
inline constexpr TexteFixe ErrCessionRebutee{3044,
    "Impossible d'effectuer une cession de cette acquisition car elle a déjà fait l'objet d'une mise "
    "au rebut."};
inline constexpr TexteFixe ErrRebutCedee{3045,
    "Impossible d'effectuer une mise au rebut de cette acquisition car elle a déjà fait l'objet "
    "d'une cession."};

// Refusals
inline constexpr TexteFixe ErrNonAmortissable{3482, "Cette immobilisation n'est pas amortissable."};
/// what was asked for; the rows of the table
inline constexpr TexteFixe ErrHorsTable{3483,
    "Le tableau des taux dégressifs n'a pas de ligne de %s ans à %s %%. Il a : %s."};
inline constexpr TexteFixe ErrImmobilisationDisparue{3484, "Cette immobilisation n'existe plus."};
/// life, rate
inline constexpr TexteFixe ErrDureeEtTaux{3485,
    "Une durée de %s ans et un taux de %s %% ne vont pas ensemble."};

// Questions: yes takes away what nobody can bring back
/// designation, date of purchase
inline constexpr TexteFixe QuestionSupprimeImmobilisation{3480,
    "Suppression de l'aquisition \"%s\" du %s ?", Detruit};
inline constexpr TexteFixe QuestionSupprimeCession{3481, "Suppression de la cession ?", Detruit};

// The form of an acquisition
/// life, rate in the lists of a degressive asset
inline constexpr TexteFixe FormatDuree{5944, "%s ans"};
inline constexpr TexteFixe FormatTauxAnnuel{5945, "%s %%"};

// The register
inline constexpr TexteFixe TitreRegistre{5940, "Registre des immobilisations"};
inline constexpr TexteFixe MotRebut{5941, "Rebut"};
/// letter of the kind, rate
inline constexpr TexteFixe FormatTauxRegistre{5942, "%s %s%%"};
/// year
inline constexpr TexteFixe FormatAnneeRegistre{5943, "Année %d"};
// clang-format on

}  // namespace fenlor

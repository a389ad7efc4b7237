// What several commands take: how dates, amounts, months and names are written on the
// command line, and how they are read.
#pragma once

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "ctl/lignecommande.h"

namespace fenlor {

FormeOption FormeDate();                                                ///< JJ/MM/AAAA
FormeOption FormeMois();                                                ///< MM/AAAA
FormeOption FormeNombre();                                              ///< not negative, with point or comma
FormeOption FormeMontant();                                             ///< likewise, and may be negative
FormeOption FormeNumero(u32 limite = std::numeric_limits<u32>::max());  ///< 1 to the limit
FormeOption FormeNumeros();                                             ///< several
/// So many digits; `refus` begins the refusal of others: "kilomètres incorrects".
FormeOption FormeChiffres(const std::string& texte, std::size_t minimum, std::size_t maximum,
                          const std::string& refus);
FormeOption FormeMots(std::vector<std::string> mots);
FormeOption FormeJournal();  ///< recettes, depenses, od
FormeOption FormeMode();     ///< validees, brouillard, toutes
FormeOption FormeMonnaie();  ///< franc, euro

// The words of these forms as numbers.
i16 JournalNomme(const std::string& mot);  ///< 0: none
u16 ModeNomme(const std::string& mot);     ///< ModeListe

/// The text of an option in Windows-1252; without one `valeur` stays. Characters that have
/// no place there and control characters are refused: told, false.
bool PoseOption(Contexte& contexte, const char* champ, const std::optional<std::string>& utf8,
                std::string& valeur);

}  // namespace fenlor

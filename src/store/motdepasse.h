// The practice's password: a scrambled text of 16 characters in the settings,
// "Activite"/"Mot de Passe". It keeps a colleague out; it is no encryption.
//
// Each character, upper-cased, gets one number from 0 to 31 of a generator that
// starts from a fixed seed. Characters are counted from the blank (code 32) and
// wrap behind 255, so that a scrambled character stays within 32 to 255 and every
// text of Windows-1252 comes back. Characters below 32 count as blanks.
//
// The scrambled text is to be read and written with `Profil` alone: it may hold a
// backslash followed by an "n", which other readers of settings take for a line end.
#pragma once

#include <string>
#include <string_view>

#include "store/enregistrements.h"

namespace fenlor {

constexpr unsigned LongueurMotDePasse = 16;
constexpr u32 GraineMotDePasse = 0x1F35B2A7;

/// Scrambles the first `n` characters of a text, padded with blanks to `n`.
std::string BrouilleTexte(std::string_view texte, unsigned n, u32 graine);
/// The way back: characters up to `n`, to the end of the text or to a NUL, padded with blanks to `n`.
std::string DebrouilleTexte(std::string_view texte, unsigned n, u32 graine);

/// What the setting holds for a password; a blank one gives the scrambled blank.
std::string MotDePasseBrouille(const std::string& motDePasse);
/// True when the stored setting stands for a password: neither blank nor the scrambled blank.
bool MotDePasseDefini(const std::string& stocke);
/// True when the typed text is the stored password, without regard to case and to
/// the number of blanks; without a stored password every text is right.
bool MotDePasseJuste(const std::string& stocke, const std::string& saisi);

}  // namespace fenlor

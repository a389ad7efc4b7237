// A verb that takes one JSON object a line, and answers each with one line.
#pragma once

#include <functional>
#include <string>

#include "ctl/contexte.h"
#include "ctl/json.h"

namespace fenlor {

/// Hands each line of `source` ("-": the input) to `traite`, which does it and adds to the answer what it
/// made. An answer begins with "entree", the line's number, and is given out before the next line is read;
/// that of a refusal has "erreur" and "texte" behind it, and nothing else. Done when every line was.
int RepondParLigne(Contexte& contexte, const std::string& source,
                   const std::function<Refus(const Json& objet, LigneJson& reponse)>& traite);

}  // namespace fenlor

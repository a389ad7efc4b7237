// Records of the store as JSON objects and back, by their tables of fields.
// Every named field stands under its name: texts in UTF-8, dates as "JJ/MM/AAAA"
// ("" for none; a packed value that this form does not give back as the
// integer), amounts as numbers of the same 64 bits. Reserved bytes stay out.
#pragma once

#include <span>
#include <string>

#include "ctl/json.h"
#include "store/champs.h"

namespace fenlor {

/// Appends a record as one line. An amount that is not finite becomes null.
void AjouteEnregistrement(std::string& sortie, std::span<const Champ> champs, const void* rec);

/// Fills a record: absent fields are 0 or empty, account numbers take their long
/// form. Refuses, by name, unknown fields, wrong types, integers out of range,
/// texts that the field cannot hold whole, and null. `rec` has the record's size.
Refus LitEnregistrement(const Json& objet, std::span<const Champ> champs, void* rec);

}  // namespace fenlor

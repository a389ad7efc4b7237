// One line of `fenlorctl immobilisation`: the fields of a record, as JSON, put over an asset as the form of
// an acquisition would have it.
#pragma once

#include <optional>

#include "assets/cessions.h"
#include "assets/detail.h"
#include "assets/immobilisations.h"
#include "ctl/json.h"

namespace fenlor {

/// The asset that a line names by "Numero", which is obligatory.
Refus LitNumero(const Json& objet, u32& numero);

/// The given fields over the asset, a new one or one that was read. Amounts are those of the currency of
/// "Monnaie"; of the other one they may be given as they come out. VAT and depreciable value follow a price
/// or a rate that was given, life and annual rate each other, unless they are given themselves. Fields of a
/// disposal are refused when they change something.
Refus LitAcquisition(CFenlorApp& app, const Json& objet, FicheImmobilisation& fiche);

/// "Numero", "DateCession" (by default as the form proposes it), "MonnaieCession", and the price in its
/// currency, which is obligatory for a new disposal. An empty date undoes it: `annule`.
Refus LitCession(CFenlorApp& app, const Json& objet, const Immobilisation& immo, FicheCession& cession,
                 bool& annule);
/// "Numero", "DateCession".
Refus LitRebut(CFenlorApp& app, const Json& objet, const Immobilisation& immo, Date& date, bool& annule);

/// "Numero", and in "Annees" the years that are corrected: {"Annee":2002,"Reel":100.0}; without "Reel" the
/// theoretical amount comes back; that of the row may stand there as "Theorique". `change`: there are such.
Refus LitCorrections(const Json& objet, DetailAmortissements& detail, bool& change);

}  // namespace fenlor

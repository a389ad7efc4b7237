#include "garde/cloture.h"

#include <cassert>

#include "core/cles.h"
#include "core/erreurs.h"
#include "core/erreursexercice.h"
#include "garde/sceau.h"
#include "garde/textes.h"
#include "store/dates.h"

namespace fenlor {

Refus ProposeCloture(CFenlorApp& app, PropositionCloture& proposition) {
  if (app.NomExercice.empty()) return Refus(ErrAucunExercice);
  if (const Refus r = app.ControleEcriture()) return r;
  proposition = {app.NomExercice, app.Reglages.GetDebutExercice(), app.Reglages.GetFinExercice(),
                 app.Magasin.Today()};
  return {};
}

Refus Cloture(CFenlorApp& app, const PropositionCloture& proposition, const Autour& autour) {
  PropositionCloture presente;
  if (const Refus refus = ProposeCloture(app, presente)) return refus;
  assert(presente.exercice == proposition.exercice && proposition.date != 0);
  if (const Refus refus = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionClotureRecalcul))
    return refus;
  Statistiques statistiques{};
  bool fait = false;
  if (const Refus refus = RecalculEntoure(app, statistiques, autour, fait)) return refus;
  if (!fait) return Refus::DejaDit(QuestionClotureRecalcul);  // the user stopped it
  if (statistiques.NbValidees != statistiques.NbRecettes + statistiques.NbDepenses + statistiques.NbOD)
    return Refus(ErrClotureBrouillard, "", {proposition.exercice});
  if (statistiques.NbNonRapprochees != 0)
    if (const Refus refus = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionClotureNonRapprochees,
                                        "", {std::to_string(statistiques.NbNonRapprochees)}))
      return refus;
  std::string contenu, sceau;
  if (const Refus refus = CalculeSceau(app, contenu, sceau)) return refus;
  // The list of the records first: a seal in the settings must find it.
  if (const Refus refus = EcritSceau(app, contenu)) return refus;
  if (!app.Magasin.Reglages().Ecrit({{proposition.exercice, Texte(CleCloture), StrDate(proposition.date)},
                                     {proposition.exercice, Texte(CleSceau), sceau}}))
    return Refus(ErrReglages, "",
                 {app.Magasin.Reglages().Chemin(), TexteErreurSysteme(app.Magasin.Reglages().Erreur())});
  assert(app.Reglages.IsExerciceCloture(proposition.exercice));
  return {};
}

}  // namespace fenlor

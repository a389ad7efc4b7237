#include "forms/session/commandesexercice.h"

#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "forms/session/dialogindex.h"
#include "forms/session/dialognewexercice.h"
#include "forms/session/dialogopenexercice.h"
#include "forms/session/dialogpassword.h"
#include "forms/session/textes.h"
#include "session/entretien.h"
#include "session/exercices.h"
#include "session/textes.h"

namespace fenlor {

bool RouvreCabinet(ContexteUi& contexte) {
  CFenlorApp& app = contexte.App;
  if (app.Magasin.QVIsComptaPassword(app.PathCabinet))
    return CDialogPassword(contexte, contexte.Cadre.Cadre()).Execute();
  if (!app.Magasin.QVOpenCompta(app.PathCabinet, {})) return app.Dit(app.EchecMagasin());
  app.Magasin.QVSetWithQuorbane(app.Edition != 2, app.Edition);
  return true;
}

Autour FichiersSeul(ContexteUi& contexte) {
  return [&contexte](const std::function<void()>& travail) { AvecFichiersSeul(contexte, travail); };
}

bool OuvreOuReconstruit(ContexteUi& contexte, const std::string& nom) {
  CFenlorApp& app = contexte.App;
  const Refus refus = OuvreExercice(app, nom);
  const int code = app.Magasin.QVFileErrorCode();
  if (app.Dit(refus)) return true;
  if (code != ErrEndommage && code != ErrFormat) return false;
  if (app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionReconstruire, "", {nom})) return false;
  app.PathExercice = app.Magasin.CheminExercice(nom);
  const bool refait = CDialogIndex(contexte, contexte.Cadre.Cadre()).Execute();
  app.PathExercice.clear();
  return refait && app.Dit(OuvreExercice(app, nom));
}

void CommandeNouvelExercice(ContexteUi& contexte, const std::function<void()>& options) {
  std::string nom;
  if (!CDialogNewExercice(contexte, nom, contexte.Cadre.Cadre()).Execute() || nom.empty()) return;
  if (contexte.App.Magasin.GetExercicesRec() == 1 && options) options();
}

bool CommandeOuvrirExercice(ContexteUi& contexte) {
  std::string nom;
  const bool motDePasse = contexte.App.NomExercice.empty();
  if (!CDialogOpenExercice(contexte, motDePasse, nom, contexte.Cadre.Cadre()).Execute() || EstVide(nom))
    return false;
  contexte.Cadre.FermeToutes();
  const bool ouvert = OuvreOuReconstruit(contexte, nom);
  contexte.Cadre.MontreExercice();
  return ouvert;
}

bool CommandeSelectionExercice(ContexteUi& contexte, const std::string& nom) {
  CFenlorApp& app = contexte.App;
  contexte.Cadre.FermeToutes();
  FermeExercice(app);
  bool ouvert = false;
  if (!EstVide(nom)) {
    if (!TestRepertoire(app, nom)) {
      app.ReportErreur(ErrRepertoireExercice);
    } else if (RouvreCabinet(contexte)) {
      ouvert = OuvreOuReconstruit(contexte, nom);
    }
  }
  contexte.Cadre.MontreExercice();
  return ouvert && app.ExerciceOuvert != 0;
}

void CommandeFermerExercice(ContexteUi& contexte) {
  contexte.Cadre.FermeToutes();
  FermeExercice(contexte.App);
  contexte.Cadre.MontreExercice();
}

void CommandeSupprimerExercice(ContexteUi& contexte) {
  const Refus refus = SupprimeExercice(contexte.App, [&] { contexte.Cadre.FermeToutes(); });
  contexte.App.Dit(refus);
  if (refus.numero != ErrExerciceRecent && refus.numero != ErrAucunExercice) contexte.Cadre.MontreExercice();
}

void CommandeRecalcul(ContexteUi& contexte) {
  Statistiques statistiques{};
  contexte.App.Dit(CommandeRecalcul(contexte.App, statistiques, FichiersSeul(contexte)));
}

void CommandeAjustementEuro(ContexteUi& contexte) {
  AjustementEuros ajustement;
  contexte.App.Dit(AjusteEuros(contexte.App, ajustement, FichiersSeul(contexte)));
}

}  // namespace fenlor

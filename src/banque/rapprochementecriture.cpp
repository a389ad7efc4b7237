#include <cassert>

#include "banque/rapprochement.h"
#include "banque/textes.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "core/valeurs.h"
#include "store/cumuls.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// The entry's line that is the operation: on its account, on the other side, of its amount.
bool EstLigneDe(const Line& ligne, const OperationLue& operation, bool euro) {
  const i64 montant = Centimes(euro ? ligne.MontantEuro : ligne.MontantFranc);
  return LitTexte(ligne.Compte) == LitTexte(operation.rec.Compte) && !ligne.Rapprochee &&
         (ligne.Sens != 0) != (operation.rec.Sens != 0) && montant == Centimes(operation.Montant(euro));
}

Refus Rapproche(CFenlorApp& app, const OperationLue& operation, u32 mouvement, bool euro) {
  CBanques banques(app, app.PathExercice);
  if (!banques.OpenFile()) return EchecFichier();
  for (const Position position : app.Magasin.LignesMouvement(app.PathExercice, mouvement)) {
    Line ligne{};
    if (!app.Magasin.ReadLines(app.PathExercice, position, ligne)) return app.EchecMagasin();
    if (!EstLigneDe(ligne, operation, euro)) continue;
    if (ligne.DateLigne > operation.rec.Date) return Refus(ErrEcritureApresOperation, "jour");
    if (!app.Magasin.RappLines(app.PathExercice, position, operation.rec)) return app.EchecDit();
    return banques.Delete(operation.position) ? Refus{} : EchecFichier();
  }
  return Refus(
      ErrEcritureSansLigne, "ttc",
      {MontantEnTexte(operation.Montant(euro), euro), app.NumeroCourt(LitTexte(operation.rec.Compte))});
}

}  // namespace

Refus ProposeEcriture(CFenlorApp& app, Position position, SaisieEcriture& saisie) {
  if (const Refus r = app.ControleEcriture()) return r;
  OperationLue operation;
  if (const Refus refus = LitOperation(app, position, operation)) return refus;
  const Banque& rec = operation.rec;
  if (rec.Date < app.Reglages.GetDebutExercice() || rec.Date > app.Reglages.GetFinExercice())
    return Refus(ErrDateIncorrecte, "operations");
  saisie = {};
  saisie.journal = rec.Sens != 0 ? JournalRecettes : JournalDepenses;
  saisie.date = rec.Date;
  saisie.euro = app.Reglages.IsEuro() || rec.Date > app.Reglages.GetLimiteFranc();
  saisie.montants.ttc = operation.Montant(saisie.euro);
  saisie.libelle = LitTexte(rec.Libelle);
  saisie.tresorerie = LitTexte(rec.Compte);
  saisie.paiement = PaiementAutre;
  return {};
}

Refus EnregistreEcritureDe(CFenlorApp& app, Position position, const SaisieEcriture& saisie,
                           EcritureFaite& faite) {
  assert(saisie.mouvement == 0);
  if (const Refus r = app.ControleEcriture()) return r;
  OperationLue operation;
  if (const Refus refus = LitOperation(app, position, operation)) return refus;
  return EnregistreEcriture(app, saisie, faite, [&](const EcritureFaite& nouvelle) {
    return Rapproche(app, operation, nouvelle.mouvement, saisie.euro);
  });
}

}  // namespace fenlor

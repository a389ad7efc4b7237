#include "assets/cessions.h"

#include <cassert>

#include "assets/textes.h"
#include "core/erreurssaisie.h"
#include "core/valeurs.h"

namespace fenlor {

namespace {

constexpr const char* ChampDate = "date";

/// What holds for a disposal and a scrapping alike.
Refus ControleDate(CFenlorApp& app, Date date, const Immobilisation& immo) {
  if (date < immo.DateAchat)
    return Refus(ErrCessionAvantAchat, ChampDate, {StrDate(immo.DateAchat), StrDate(date)});
  const Date jour = app.Magasin.Today();
  return date > jour ? Refus(ErrCessionFuture, ChampDate, {StrDate(jour), StrDate(date)}) : Refus();
}

bool MemePrix(const FicheCession& a, const FicheCession& b) {
  return a.euro == b.euro && Arrondi2(a.prix) == Arrondi2(b.prix);
}

}  // namespace

FicheCession CessionDe(CFenlorApp& app, const Immobilisation& immo) {
  const bool euro = app.Reglages.IsEuro();
  const f64 prix = euro ? immo.PrixCessionEuro : immo.PrixCessionFranc;
  if (immo.DateCession == 0) return {app.Magasin.Today(), prix, euro};
  return {immo.DateCession, prix, immo.MonnaieCession != 0};
}

Refus ControleCession(const Immobilisation& immo) {
  return EstRebutee(immo) ? Refus(ErrCessionRebutee) : Refus();
}
Refus ControleRebut(const Immobilisation& immo) { return EstCedee(immo) ? Refus(ErrRebutCedee) : Refus(); }

Refus PoseCession(CFenlorApp& app, const FicheCession& cession, Immobilisation& immo) {
  if (const Refus refus = ControleCession(immo)) return refus;
  if (!IsDateOk(cession.date)) return Refus(ErrDateIncorrecte, ChampDate);
  const f64 taux = app.Magasin.GetTauxEuro(app.Magasin.Today());
  const f64 franc = cession.euro ? QVAPI::ConvertEuroToFranc(taux, cession.prix) : cession.prix;
  const f64 euro = cession.euro ? cession.prix : QVAPI::ConvertFrancToEuro(taux, cession.prix);
  if (!(cession.prix >= 0 && franc <= MontantMax && euro <= MontantMax))
    return Refus(ErrMontantBornes, "prix",
                 {FormatMontant(cession.prix, 2), "0", FormatMontant(MontantMax, 2)});
  const Date limite = app.Reglages.GetLimiteFranc();
  if (!cession.euro && cession.date > limite) return Refus(ErrCessionFranc, ChampDate, {StrDate(limite)});
  if (const Refus refus = ControleDate(app, cession.date, immo)) return refus;

  if (immo.DateCession == 0 || !MemePrix(cession, CessionDe(app, immo))) {
    immo.PrixCessionFranc = franc;
    immo.PrixCessionEuro = euro;
  }
  immo.DateCession = cession.date;
  immo.MonnaieCession = cession.euro;
  immo.Rebut = 0;
  assert(EstCedee(immo));
  return {};
}

Refus PoseRebut(CFenlorApp& app, Date date, Immobilisation& immo) {
  if (const Refus refus = ControleRebut(immo)) return refus;
  if (!IsDateOk(date)) return Refus(ErrDateIncorrecte, ChampDate);
  if (const Refus refus = ControleDate(app, date, immo)) return refus;
  immo.DateCession = date;
  immo.MonnaieCession = app.Reglages.IsEuro();
  immo.PrixCessionFranc = immo.PrixCessionEuro = 0;
  immo.Rebut = 1;
  assert(EstRebutee(immo));
  return {};
}

Refus AnnuleCession(CFenlorApp& app, Immobilisation& immo) {
  if (const Refus refus = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionSupprimeCession))
    return refus;
  immo.DateCession = immo.Rebut = 0;
  return {};
}

}  // namespace fenlor

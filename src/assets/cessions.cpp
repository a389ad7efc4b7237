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

struct Prix {
  f64 franc = 0, euro = 0;
};
/// In both currencies; none out of bounds.
std::optional<Prix> PrixDe(CFenlorApp& app, const FicheCession& cession) {
  const f64 taux = app.Magasin.GetTauxEuro(app.Magasin.Today());
  const Prix prix{cession.euro ? QVAPI::ConvertEuroToFranc(taux, cession.prix) : cession.prix,
                  cession.euro ? cession.prix : QVAPI::ConvertFrancToEuro(taux, cession.prix)};
  const bool borne = cession.prix >= 0 && prix.franc <= MontantMax && prix.euro <= MontantMax;
  return borne ? std::optional(prix) : std::nullopt;
}

void PosePrix(CFenlorApp& app, const FicheCession& cession, const Prix& prix, Immobilisation& immo) {
  if (immo.DateCession == 0 || !MemePrix(cession, CessionDe(app, immo))) {
    immo.PrixCessionFranc = prix.franc;
    immo.PrixCessionEuro = prix.euro;
  }
  immo.MonnaieCession = cession.euro;
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
  const std::optional<Prix> prix = PrixDe(app, cession);
  if (!prix)
    return Refus(ErrMontantBornes, "prix",
                 {FormatMontant(cession.prix, 2), "0", FormatMontant(MontantMax, 2)});
  const Date limite = app.Reglages.GetLimiteFranc();
  if (!cession.euro && cession.date > limite) return Refus(ErrCessionFranc, ChampDate, {StrDate(limite)});
  if (const Refus refus = ControleDate(app, cession.date, immo)) return refus;

  PosePrix(app, cession, *prix, immo);
  immo.DateCession = cession.date;
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

Refus AnnuleCession(CFenlorApp& app, Immobilisation& immo, const std::optional<FicheCession>& saisie) {
  if (const Refus refus = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionSupprimeCession))
    return refus;
  if (const auto prix = saisie ? PrixDe(app, *saisie) : std::nullopt) PosePrix(app, *saisie, *prix, immo);
  immo.DateCession = immo.Rebut = 0;
  return {};
}

}  // namespace fenlor

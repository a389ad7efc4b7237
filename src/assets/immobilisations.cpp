#include "assets/immobilisations.h"

#include <cassert>
#include <cmath>

#include "assets/amortissements.h"
#include "assets/dureetaux.h"
#include "assets/textes.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "core/valeurs.h"
#include "store/indicescles.h"
#include "store/membre.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

using G = GenreChamp;
using Fiche = FicheImmobilisation;

constexpr unsigned LimiteMontant = 16;
constexpr f64 TauxTvaMax = 100;

constexpr const char* Modes[] = {"parduree", "partaux"};
constexpr const char* Types[] = {"lineaire", "degressif", "exceptionnel"};
constexpr const char* Monnaies[] = {"franc", "euro"};
// clang-format off
constexpr ChampFiche Champs[] = {
  {"designation", Membre<&Fiche::designation>, G::Texte, "Designation"},
  {"dateAchat", Membre<&Fiche::dateAchat>, G::Date, "DateAchat"},
  {"prix", Membre<&Fiche::prix>, G::MontantSigne, "", LimiteMontant},
  {"tauxTva", Membre<&Fiche::tauxTva>, G::Montant, "TauxTVA"},
  {"tva", Membre<&Fiche::tva>, G::MontantSigne, "", LimiteMontant},
  {"valeur", Membre<&Fiche::valeur>, G::MontantSigne, "", LimiteMontant},
  {"mode", Membre<&Fiche::mode>, G::Choix, "ModeDuree", 0, {}, Modes},
  {"type", Membre<&Fiche::type>, G::Choix, "TypeAmortissement", 0, {}, Types},
  {"duree", Membre<&Fiche::duree>, G::Montant, "Duree"},
  {"taux", Membre<&Fiche::taux>, G::Montant, "TauxAnnuel"},
  {"monnaie", Membre<&Fiche::monnaie>, G::Choix, "Monnaie", 0, {}, Monnaies},
};
// clang-format on

/// The amounts of a record in the two currencies, and where the form has them.
struct MontantDeFiche {
  const char* champ;
  f64 Fiche::*saisi;
  f64 Immobilisation::*franc;
  f64 Immobilisation::*euro;
};
constexpr MontantDeFiche Montants[] = {
    {"prix", &Fiche::prix, &Immobilisation::PrixFranc, &Immobilisation::PrixEuro},
    {"tva", &Fiche::tva, &Immobilisation::TVAFranc, &Immobilisation::TVAEuro},
    {"valeur", &Fiche::valeur, &Immobilisation::ValeurAmortissableFranc,
     &Immobilisation::ValeurAmortissableEuro}};

std::string Nombre(f64 valeur) {
  const std::string texte = FormatMontant(valeur, 2);
  return texte.empty() ? "0" : texte;
}

Refus HorsBornes(const char* champ, f64 valeur, f64 minimum, f64 maximum) {
  assert(Fiche::Table.Trouve(champ) && minimum <= maximum);
  return Refus(ErrMontantBornes, champ, {Nombre(valeur), Nombre(minimum), Nombre(maximum)});
}

bool Dans(f64 valeur, f64 minimum, f64 maximum) { return valeur >= minimum && valeur <= maximum; }

/// Franc and Euro of an amount typed in the currency of the asset.
struct Contrevaleur {
  f64 franc, euro;
};
Contrevaleur Convertit(f64 taux, f64 montant, bool enEuro) {
  assert(taux > 0);
  return enEuro ? Contrevaleur{QVAPI::ConvertEuroToFranc(taux, montant), montant}
                : Contrevaleur{montant, QVAPI::ConvertFrancToEuro(taux, montant)};
}

/// The checks of an acquisition, in their order.
class Controles {
 public:
  Controles(const CFenlorApp& app, const Fiche& fiche) : m_app(app), m_fiche(fiche) {}

  Refus Fait() const {
    using C = Controles;
    return PremierRefus(*this, &C::Cloture, &C::Texte, &C::LesMontants, &C::Duree, &C::Franc, &C::Cession);
  }

 private:
  Refus Cloture() const { return m_app.ControleEcriture(); }

  Refus Texte() const {
    if (const Refus refus = ControleTextes(Fiche::Table, &m_fiche)) return refus;
    return IsDateOk(m_fiche.dateAchat) ? Refus() : Refus(ErrDateIncorrecte, "dateAchat");
  }

  Refus LesMontants() const {
    if (!Dans(m_fiche.tauxTva, 0, TauxTvaMax)) return HorsBornes("tauxTva", m_fiche.tauxTva, 0, TauxTvaMax);
    const f64 taux = m_app.Magasin.GetTauxEuro(m_fiche.dateAchat);
    for (const MontantDeFiche& m : Montants) {
      const f64 saisi = m_fiche.*m.saisi;
      const auto [franc, euro] = Convertit(taux, saisi, m_fiche.monnaie != 0);
      if (!Dans(franc, -MontantMax, MontantMax) || !Dans(euro, -MontantMax, MontantMax))
        return HorsBornes(m.champ, saisi, -MontantMax, MontantMax);
    }
    return {};
  }

  /// Life and rate as the file has them for the same depreciation: what was once accepted, or imported.
  bool DureeInchangee() const {
    const Immobilisation& rec = m_fiche.rec;
    return !m_fiche.EstNouvelle() && m_fiche.type == rec.TypeAmortissement && m_fiche.duree == rec.Duree &&
           m_fiche.taux == rec.TauxAnnuel;
  }

  Refus Duree() const {
    if (DureeInchangee()) return {};
    if (m_fiche.type == Degressif) return Rangee();
    DureeEtTaux saisie(m_app, m_fiche.dateAchat, Lineaire, static_cast<u8>(m_fiche.mode), m_fiche.duree,
                       m_fiche.taux);
    if (m_fiche.type == Exceptionnel) {
      saisie.ChangeType(Exceptionnel);
    } else if (m_fiche.mode == ParDuree) {
      if (!Dans(m_fiche.duree, DureeMin, DureeMax))
        return HorsBornes("duree", m_fiche.duree, DureeMin, DureeMax);
      saisie.ChangeDuree(m_fiche.duree);
    } else {
      if (!Dans(m_fiche.taux, TauxMin, TauxMax)) return HorsBornes("taux", m_fiche.taux, TauxMin, TauxMax);
      saisie.ChangeTaux(m_fiche.taux);
    }
    if (Arrondi2(saisie.Duree()) == Arrondi2(m_fiche.duree) &&
        Arrondi2(saisie.Taux()) == Arrondi2(m_fiche.taux))
      return {};
    return Refus(ErrDureeEtTaux, m_fiche.mode == ParDuree ? "taux" : "duree",
                 {Nombre(m_fiche.duree), Nombre(m_fiche.taux)});
  }

  Refus Rangee() const {
    std::string rangees;
    for (const TauxDegressif& rangee : TableDegressive(m_app, m_fiche.dateAchat)) {
      if (rangee.Duree == m_fiche.duree && rangee.TauxAnnuel == m_fiche.taux) return {};
      rangees += (rangees.empty() ? "" : ", ") + TexteDuree(m_app, rangee.Duree) + " (" +
                 TexteTaux(m_app, rangee.TauxAnnuel) + ')';
    }
    return Refus(ErrHorsTable, "duree", {Nombre(m_fiche.duree), Nombre(m_fiche.taux), rangees});
  }

  Refus Franc() const {
    const Date limite = m_app.Reglages.GetLimiteFranc();
    if (m_fiche.monnaie != 0 || m_fiche.dateAchat <= limite) return {};
    return Refus(ErrAcquisitionFranc, "dateAchat", {StrDate(limite)});
  }

  Refus Cession() const {
    const Date cession = m_fiche.rec.DateCession;
    if (cession == 0 || m_fiche.dateAchat <= cession) return {};
    return Refus(ErrAchatApresCession, "dateAchat", {StrDate(m_fiche.dateAchat), StrDate(cession)});
  }

  const CFenlorApp& m_app;
  const Fiche& m_fiche;
};

}  // namespace

const TableFiche FicheImmobilisation::Table{"Immobilisation", Champs};

FicheImmobilisation NouvelleImmobilisation(CFenlorApp& app) {
  FicheImmobilisation fiche;
  fiche.dateAchat = app.Magasin.Today();
  fiche.monnaie = app.Reglages.IsEuro() ? 1 : 0;
  return fiche;
}

Refus LitFiche(CFenlorApp& app, Position position, FicheImmobilisation& fiche) {
  CImmobilisations fichier(app, app.PathCabinet);
  if (const Refus refus = LitEnregistrement(fichier, position)) return refus;
  fiche.position = position;
  fiche.rec = *fichier.Rec;
  FicheDepuis(app, FicheImmobilisation::Table, &fiche.rec, &fiche);
  for (const MontantDeFiche& m : Montants)
    fiche.*m.saisi = LitMembre(fiche.rec, fiche.monnaie ? m.euro : m.franc);
  return {};
}

Position PositionImmobilisation(CFenlorApp& app, u32 numero) {
  CImmobilisations fichier(app, app.PathCabinet);
  if (!fichier.OpenFile()) return 0;
  fichier.Rec->Numero = numero;
  return fichier.Find(IndiceImmoNumero) ? fichier.GetPos() : 0;
}

MontantsAchat CalculMontantsAchat(f64 prix, f64 taux) {
  assert(!(taux < 0));
  const f64 tva = Arrondi2(prix * taux / (taux + 100));
  return {tva, Arrondi2(prix - tva)};
}

Refus ControleAcquisition(const CFenlorApp& app, const FicheImmobilisation& fiche) {
  return Controles(app, fiche).Fait();
}

void PoseAcquisition(CFenlorApp& app, FicheImmobilisation& fiche) {
  FicheVers(app, FicheImmobilisation::Table, &fiche, &fiche.rec);
  const f64 taux = app.Magasin.GetTauxEuro(fiche.dateAchat);
  for (const MontantDeFiche& m : Montants) {
    const auto [franc, euro] = Convertit(taux, fiche.*m.saisi, fiche.monnaie != 0);
    PoseMembre(fiche.rec, m.franc, f64{franc});
    PoseMembre(fiche.rec, m.euro, f64{euro});
  }
}

Refus EnregistreFiche(CFenlorApp& app, FicheImmobilisation& fiche) {
  if (const Refus refus = ControleAcquisition(app, fiche)) return refus;
  PoseAcquisition(app, fiche);
  return EcritImmobilisation(app, fiche);
}

Refus EcritImmobilisation(CFenlorApp& app, FicheImmobilisation& fiche) {
  if (const Refus r = app.ControleEcriture()) return r;
  QVAPI& magasin = app.Magasin;
  Immobilisation rec = fiche.rec;
  CImmobilisations fichier(app, app.PathCabinet);
  if (!fichier.OpenFile()) return EchecFichier();
  if (fiche.EstNouvelle() && rec.Numero == 0) {
    // Noted before it is used, and not taken back with the asset: a number that no asset got is lost, none is
    // given twice.
    rec.Numero = magasin.GetFreeImmobilisationsID(app.PathCabinet);
    if (rec.Numero == 0 || !magasin.WriteLastImmobilisationsID(rec.Numero)) return app.EchecMagasin();
  }
  QVAPI::Unite unite(magasin);
  if (!fiche.EstNouvelle()) {
    const bool la = magasin.QVReadRec(FichierImmo, fiche.position, fichier.Rec);
    if (!la || fichier.Rec->Numero != rec.Numero) return Refus(ErrImmobilisationDisparue);
    if (!magasin.DeleteImmobilisations(fiche.position)) return app.EchecMagasin();
  }
  if (!magasin.WriteImmobilisations(rec) || !unite.Valide()) return app.EchecMagasin();
  fiche.rec = rec;
  fiche.position = PositionImmobilisation(app, rec.Numero);
  assert(fiche.position != 0);
  return {};
}

Refus SupprimeFiche(CFenlorApp& app, const FicheImmobilisation& supprimee) {
  if (const Refus r = app.ControleEcriture()) return r;
  FicheImmobilisation fiche;
  if (const Refus refus = LitFiche(app, supprimee.position, fiche)) return refus;
  if (const Refus refus = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionSupprimeImmobilisation,
                                      "", {fiche.designation, StrDate(fiche.dateAchat)}))
    return refus;
  return app.Magasin.DeleteImmobilisations(fiche.position) ? Refus() : app.EchecMagasin();
}

}  // namespace fenlor

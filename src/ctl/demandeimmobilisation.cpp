#include "ctl/demandeimmobilisation.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "assets/amortissements.h"
#include "assets/dureetaux.h"
#include "core/valeurs.h"
#include "ctl/enregistrementjson.h"
#include "ctl/textes.h"
#include "store/membre.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr const char *ChampNumero = "Numero", *ChampDateCession = "DateCession", *ChampAnnees = "Annees";
constexpr const char* ChampsCession[] = {ChampDateCession, "PrixCessionFranc", "PrixCessionEuro", "Rebut",
                                         "MonnaieCession"};

struct MontantJson {
  const char *franc, *euro;
  f64 Immobilisation::*enFranc;
  f64 Immobilisation::*enEuro;
  f64 FicheImmobilisation::*saisi;
};
constexpr MontantJson Montants[] = {
    {"PrixFranc", "PrixEuro", &Immobilisation::PrixFranc, &Immobilisation::PrixEuro,
     &FicheImmobilisation::prix},
    {"TVAFranc", "TVAEuro", &Immobilisation::TVAFranc, &Immobilisation::TVAEuro, &FicheImmobilisation::tva},
    {"ValeurAmortissableFranc", "ValeurAmortissableEuro", &Immobilisation::ValeurAmortissableFranc,
     &Immobilisation::ValeurAmortissableEuro, &FicheImmobilisation::valeur}};

Refus RefusCalcule(const char* champ, f64 montant) {
  const std::string texte = FormatMontant(montant, 2);
  return RefusChamp(champ, "il se calcule : "_w + (texte.empty() ? "0" : texte) + ".");
}

/// The record with the given fields, and nothing else, from the object.
Refus PoseDonnes(const Json& objet, Immobilisation& rec) {
  Immobilisation lue{};
  if (const Refus refus = LitEnregistrement(objet, Champs(FichierImmo), &lue)) return refus;
  for (const Champ& champ : Champs(FichierImmo)) {
    if (champ.type == TypeChamp::Reserve || !objet.contains(champ.nom)) continue;
    std::memcpy(reinterpret_cast<u8*>(&rec) + champ.offset, reinterpret_cast<const u8*>(&lue) + champ.offset,
                champ.taille);
  }
  return {};
}

class Acquisition {
 public:
  Acquisition(CFenlorApp& app, const Json& objet, FicheImmobilisation& fiche)
      : m_app(app), m_objet(objet), m_fiche(fiche), m_avant(fiche.rec) {}

  Refus Lit() {
    Immobilisation rec = m_avant;
    PoseValeursParDefaut(rec);
    if (const Refus refus = PoseDonnes(m_objet, rec)) return refus;
    if (const Refus refus = Interdits(rec)) return refus;
    FicheDepuis(m_app, FicheImmobilisation::Table, &rec, &m_fiche);
    PoseMontants(rec);
    PoseDuree();
    return Contrevaleurs(rec);
  }

 private:
  bool Donne(const char* champ) const { return m_objet.contains(champ); }
  bool Euro() const { return m_fiche.monnaie != 0; }

  /// A new asset is what the form opens with.
  void PoseValeursParDefaut(Immobilisation& rec) const {
    if (!m_fiche.EstNouvelle()) return;
    rec.DateAchat = m_fiche.dateAchat;
    rec.Monnaie = static_cast<u32>(m_fiche.monnaie);
    rec.Duree = m_fiche.duree;
    rec.TauxAnnuel = m_fiche.taux;
  }

  Refus Interdits(const Immobilisation& rec) const {
    if (m_fiche.EstNouvelle() && Donne(ChampNumero))
      return RefusChamp(ChampNumero, "il est attribué par Fenlor."_w);
    for (const Champ& champ : Champs(FichierImmo)) {
      const auto commeAvant = [&] {
        return std::memcmp(reinterpret_cast<const u8*>(&rec) + champ.offset,
                           reinterpret_cast<const u8*>(&m_avant) + champ.offset, champ.taille) == 0;
      };
      const bool cession = std::any_of(std::begin(ChampsCession), std::end(ChampsCession),
                                       [&](const char* nom) { return std::strcmp(nom, champ.nom) == 0; });
      if (cession && Donne(champ.nom) && !commeAvant())
        return RefusChamp(champ.nom, "il se donne avec ceder ou rebuter."_w);
    }
    for (const auto& [nom, valeur, maximum] :
         {std::tuple{"TypeAmortissement", u32{rec.TypeAmortissement}, u32{Exceptionnel}},
          std::tuple{"ModeDuree", u32{rec.ModeDuree}, u32{ParTaux}}, std::tuple{"Monnaie", +rec.Monnaie, 1u}})
      if (valeur > maximum) return RefusChamp(nom, raison::EntierAttendu(0, maximum));
    return {};
  }

  void PoseMontants(const Immobilisation& rec) {
    for (const MontantJson& m : Montants) m_fiche.*m.saisi = LitMembre(rec, Euro() ? m.enEuro : m.enFranc);
    const auto donne = [&](const MontantJson& m) { return Donne(Euro() ? m.euro : m.franc); };
    if (!donne(Montants[0]) && !Donne("TauxTVA")) return;
    if (m_fiche.tauxTva < 0) return;  // refused by the rule
    const MontantsAchat achat = CalculMontantsAchat(m_fiche.prix, m_fiche.tauxTva);
    if (!donne(Montants[1])) m_fiche.tva = achat.tva;
    if (!donne(Montants[2])) m_fiche.valeur = Arrondi2(m_fiche.prix - m_fiche.tva);
  }

  void PoseDuree() {
    const bool duree = Donne("Duree"), taux = Donne("TauxAnnuel");
    if (!Donne("ModeDuree") && duree != taux) m_fiche.mode = taux ? ParTaux : ParDuree;
    const bool nouvelleTable = m_fiche.type == Degressif && m_fiche.dateAchat != m_avant.DateAchat;
    const bool change = m_fiche.EstNouvelle() || duree || taux || Donne("TypeAmortissement") || nouvelleTable;
    if (!change || (duree && taux)) return;
    if (m_fiche.type == Exceptionnel) {
      if (!duree) m_fiche.duree = 1;
      if (!taux) m_fiche.taux = 100;
    } else if (m_fiche.type == Degressif) {
      PoseRangee(taux);
    } else {
      DureeEtTaux saisie(m_app, m_fiche.dateAchat, Lineaire, static_cast<u8>(m_fiche.mode), m_fiche.duree,
                         m_fiche.taux);
      if (taux || (!duree && m_fiche.mode == ParTaux)) {
        saisie.ChangeTaux(m_fiche.taux);
        m_fiche.duree = saisie.Duree();
      } else {
        saisie.ChangeDuree(m_fiche.duree);
        m_fiche.taux = saisie.Taux();
      }
    }
  }

  /// The row of the life, or of the rate that was given; none is left to the rule's refusal.
  void PoseRangee(bool parTaux) {
    for (const TauxDegressif& rangee : TableDegressive(m_app, m_fiche.dateAchat)) {
      if (!(parTaux ? rangee.TauxAnnuel == m_fiche.taux : rangee.Duree == m_fiche.duree)) continue;
      m_fiche.duree = rangee.Duree;
      m_fiche.taux = rangee.TauxAnnuel;
      return;
    }
  }

  /// Amounts of the currency that is not typed.
  Refus Contrevaleurs(const Immobilisation& donne) const {
    FicheImmobilisation essai = m_fiche;
    PoseAcquisition(m_app, essai);
    for (const MontantJson& m : Montants) {
      const char* champ = Euro() ? m.franc : m.euro;
      const auto montant = Euro() ? m.enFranc : m.enEuro;
      const f64 lu = LitMembre(donne, montant), juste = LitMembre(essai.rec, montant);
      // As it stands in the file: a record that was listed goes back as it is.
      if (!Donne(champ) || lu == LitMembre(m_avant, montant)) continue;
      if (Arrondi2(lu) != Arrondi2(juste)) return RefusCalcule(champ, juste);
    }
    return {};
  }

  CFenlorApp& m_app;
  const Json& m_objet;
  FicheImmobilisation& m_fiche;
  const Immobilisation m_avant;
};

/// "DateCession" of a disposal; an empty text undoes it. Without the field the date stays.
bool LitDateCession(LecteurChamps& champs, const Immobilisation& immo, Date& date, bool& annule) {
  constexpr std::size_t longueur = 10;
  std::optional<std::string> texte;
  if (!champs.Texte(ChampDateCession, longueur, texte)) return false;
  annule = texte && texte->empty();
  if (annule && immo.DateCession == 0)
    return champs.Invalide(ChampDateCession, "ce bien n'est ni cédé ni mis au rebut."_w);
  if (!texte || annule) return true;
  date = GetDate(*texte);
  return IsDateOk(date) || champs.Invalide(ChampDateCession, "cette date n'existe pas."_w);
}

bool LitNumeroDe(LecteurChamps& champs, std::optional<i64>& numero) {
  return champs.Entier(ChampNumero, 1, std::numeric_limits<u32>::max(), numero);
}

Refus RefusAnnee(u32 annee) {
  return RefusChamp("Annee", "l'année "_w + std::to_string(annee) + " n'est pas dans le détail."_w);
}

}  // namespace

Refus LitNumero(const Json& objet, u32& numero) {
  if (!objet.contains(ChampNumero)) return Refus(ErrChampManquant, "", {ChampNumero});
  Refus refus;
  LecteurChamps champs(objet, refus);
  std::optional<i64> lu;
  if (LitNumeroDe(champs, lu)) numero = static_cast<u32>(*lu);
  return refus;
}

Refus LitAcquisition(CFenlorApp& app, const Json& objet, FicheImmobilisation& fiche) {
  return Acquisition(app, objet, fiche).Lit();
}

Refus LitCession(CFenlorApp& app, const Json& objet, const Immobilisation& immo, FicheCession& cession,
                 bool& annule) {
  Refus refus;
  LecteurChamps champs(objet, refus);
  std::optional<i64> numero, monnaie;
  std::optional<f64> franc, euro;
  cession = CessionDe(app, immo);
  const bool lu = LitNumeroDe(champs, numero) && LitDateCession(champs, immo, cession.date, annule) &&
                  champs.Entier("MonnaieCession", 0, 1, monnaie) &&
                  champs.Montant("PrixCessionFranc", franc) && champs.Montant("PrixCessionEuro", euro) &&
                  champs.RienDautre();
  if (!lu || annule) return refus;
  if (franc && euro) champs.Invalide("PrixCessionFranc", "il ne va pas avec \"PrixCessionEuro\"."_w);
  // The price says its currency when nothing else does.
  if (franc || euro) cession.euro = monnaie ? *monnaie != 0 : euro.has_value();
  if (!franc && !euro && (immo.DateCession == 0 || (monnaie && (*monnaie != 0) != cession.euro)))
    champs.Manquant(cession.euro ? "PrixCessionEuro" : "PrixCessionFranc");
  if (cession.euro ? franc.has_value() : euro.has_value())
    champs.Invalide("MonnaieCession", "le prix est dans l'autre monnaie."_w);
  if (franc || euro) cession.prix = franc ? *franc : *euro;
  return refus;
}

Refus LitRebut(CFenlorApp& app, const Json& objet, const Immobilisation& immo, Date& date, bool& annule) {
  Refus refus;
  LecteurChamps champs(objet, refus);
  std::optional<i64> numero;
  date = CessionDe(app, immo).date;
  if (LitNumeroDe(champs, numero) && LitDateCession(champs, immo, date, annule)) champs.RienDautre();
  return refus;
}

Refus LitCorrections(const Json& objet, DetailAmortissements& detail, bool& change) {
  Refus refus;
  LecteurChamps champs(objet, refus);
  std::optional<i64> numero;
  const Json* annees = nullptr;
  if (!LitNumeroDe(champs, numero) || !champs.Liste(ChampAnnees, annees) || !champs.RienDautre() || !annees)
    return refus;
  change = true;
  for (std::size_t i = 0; i < annees->size(); ++i) {
    LecteurChamps ligne((*annees)[i], refus, ChampAnnees + ('[' + std::to_string(i) + "]."));
    std::optional<i64> annee;
    std::optional<f64> theorique, reel;
    if (!ligne.Entier("Annee", 1, std::numeric_limits<i16>::max(), annee) ||
        !ligne.Montant("Theorique", theorique) || !ligne.Montant("Reel", reel) || !ligne.RienDautre())
      return refus;
    if (!annee) ligne.Manquant("Annee");
    if (refus) return refus;
    const auto la = std::find_if(detail.lignes.begin(), detail.lignes.end(),
                                 [&](const LigneDetail& l) { return l.annee == *annee; });
    if (la == detail.lignes.end()) return RefusAnnee(static_cast<u32>(*annee));
    if (theorique && *theorique != la->theorique) return RefusCalcule("Theorique", la->theorique);
    la->reel = reel.value_or(la->theorique);
  }
  return refus;
}

}  // namespace fenlor

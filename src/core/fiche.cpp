#include "core/fiche.h"

#include <algorithm>
#include <cassert>
#include <cstring>

#include "core/erreurs.h"
#include "core/erreurssaisie.h"
#include "core/nomschamps.h"
#include "core/valeurs.h"
#include "store/champs.h"
#include "store/octets.h"

namespace fenlor {

namespace {

const Champ* ChampStocke(const TableFiche& table, std::string_view nom) {
  const std::span<const Champ> champs = ChampsDe(table.enregistrement);
  const auto place = std::find_if(champs.begin(), champs.end(), [&](const Champ& c) { return nom == c.nom; });
  return place == champs.end() ? nullptr : &*place;
}

bool EstTexte(const Champ& champ) {
  return champ.type == TypeChamp::Texte || champ.type == TypeChamp::Compte;
}

/// Digits of an account number, however it is written.
std::size_t LongueurNumero(const std::string& compte) {
  return static_cast<std::size_t>(std::count_if(compte.begin(), compte.end(), [](char c) {
    return static_cast<unsigned char>(c) > 32 && c != '\xA0';
  }));
}

i64 LitEntier(const Champ& champ, const u8* place) {
  switch (champ.taille) {
    case 1:
      return *place;
    case 2:
      return champ.type == TypeChamp::EntierU16 ? i64{LitValeur<u16>(place)} : i64{LitValeur<i16>(place)};
    default:
      assert(champ.taille == 4);
      return champ.type == TypeChamp::Entier32 ? i64{LitValeur<i32>(place)} : i64{LitValeur<u32>(place)};
  }
}

void PoseEntier(const Champ& champ, u8* place, i64 valeur) {
  switch (champ.taille) {
    case 1:
      return PoseValeur(place, static_cast<u8>(valeur));
    case 2:
      return PoseValeur(place, static_cast<u16>(valeur));
    default:
      assert(champ.taille == 4);
      return PoseValeur(place, static_cast<u32>(valeur));
  }
}

/// One field on its way; `rec` is the record.
class Passage {
 public:
  Passage(CFenlorApp& app, const TableFiche& table, const ChampFiche& champ)
      : m_app(app), m_table(table), m_champ(champ), m_stocke(ChampStocke(table, champ.stocke)) {
    assert(m_stocke || *champ.stocke);
  }

  void Lit(const u8* rec, ValeurChamp valeur) const {
    if (auto* const* montant = std::get_if<f64*>(&valeur)) {
      const auto [franc, euro] = Montants();
      **montant = LitValeur<f64>(rec + (m_app.Reglages.IsEuro() ? euro : franc)->offset);
      return;
    }
    assert(m_stocke);
    const u8* place = rec + m_stocke->offset;
    if (auto* const* texte = std::get_if<std::string*>(&valeur)) {
      **texte = EstTexte(*m_stocke) ? LitTexteDe(place)
                                    : EntierVersTexte(static_cast<int>(LitEntier(*m_stocke, place)));
      return;
    }
    const i64 entier = LitEntier(*m_stocke, place);
    if (auto* const* choix = std::get_if<i16*>(&valeur)) **choix = static_cast<i16>(entier);
    if (auto* const* drapeau = std::get_if<bool*>(&valeur)) **drapeau = entier != 0;
    if (auto* const* date = std::get_if<Date*>(&valeur)) **date = static_cast<Date>(entier);
  }

  void Pose(ValeurChamp valeur, u8* rec) const {
    if (auto* const* montant = std::get_if<f64*>(&valeur)) return PoseMontant(**montant, rec);
    assert(m_stocke);
    u8* place = rec + m_stocke->offset;
    if (auto* const* texte = std::get_if<std::string*>(&valeur)) {
      if (EstTexte(*m_stocke)) return PoseTexteDe(place, **texte);
      return PoseEntier(*m_stocke, place, TexteVersEntier(**texte));
    }
    if (auto* const* choix = std::get_if<i16*>(&valeur)) PoseEntier(*m_stocke, place, **choix);
    if (auto* const* drapeau = std::get_if<bool*>(&valeur)) PoseEntier(*m_stocke, place, **drapeau);
    if (auto* const* date = std::get_if<Date*>(&valeur)) PoseEntier(*m_stocke, place, **date);
  }

 private:
  /// A rate is in no currency: both are the same field.
  std::pair<const Champ*, const Champ*> Montants() const {
    if (m_stocke && m_stocke->type == TypeChamp::Montant) return {m_stocke, m_stocke};
    const std::string nom = m_champ.stocke;
    const Champ *franc = ChampStocke(m_table, nom + "Franc"), *euro = ChampStocke(m_table, nom + "Euro");
    assert(franc && euro);
    return {franc, euro};
  }

  void PoseMontant(f64 montant, u8* rec) const {
    const auto [franc, euro] = Montants();
    if (franc == euro) return PoseValeur(rec + euro->offset, montant);
    const f64 taux = m_app.Magasin.GetTauxEuro(m_app.Magasin.Today());
    const bool enEuro = m_app.Reglages.IsEuro();
    PoseValeur(rec + euro->offset, enEuro ? montant : QVAPI::ConvertFrancToEuro(taux, montant));
    PoseValeur(rec + franc->offset, enEuro ? QVAPI::ConvertEuroToFranc(taux, montant) : montant);
  }

  std::string LitTexteDe(const u8* place) const {
    const char* texte = reinterpret_cast<const char*>(place);
    std::string lu(texte, strnlen(texte, m_stocke->taille));
    return m_champ.genre == GenreChamp::Compte ? m_app.NumeroCourt(lu) : lu;
  }

  void PoseTexteDe(u8* place, const std::string& texte) const {
    const std::string pose = m_champ.genre == GenreChamp::Compte ? QVAPI::GetLongCompte(texte) : texte;
    assert(m_stocke->taille > 1);
    std::memset(place, 0, m_stocke->taille);
    std::memcpy(place, pose.data(), std::min<std::size_t>(pose.size(), m_stocke->taille - 1u));
  }

  CFenlorApp& m_app;
  const TableFiche& m_table;
  const ChampFiche& m_champ;
  const Champ* m_stocke;
};

}  // namespace

const ChampFiche* TableFiche::Trouve(std::string_view nom) const {
  const auto place = std::find_if(champs.begin(), champs.end(), [&](const auto& c) { return nom == c.nom; });
  return place == champs.end() ? nullptr : &*place;
}

unsigned TableFiche::Limite(const ChampFiche& champ) const {
  if (champ.limite != 0) return champ.limite;
  const Champ* stocke = ChampStocke(*this, champ.stocke);
  return stocke && EstTexte(*stocke) ? stocke->taille - 1u : 0;
}

Refus ControleTextes(const TableFiche& table, const void* fiche) {
  for (const ChampFiche& champ : table.champs) {
    const ValeurChamp valeur = ValeurDe(champ, fiche);
    auto* const* texte = std::get_if<std::string*>(&valeur);
    const unsigned limite = table.Limite(champ);
    if (!texte || limite == 0 || champ.genre == GenreChamp::Nombre) continue;
    const std::size_t longueur =
        champ.genre == GenreChamp::Compte ? LongueurNumero(**texte) : (*texte)->size();
    if (longueur > limite)
      return Refus(ErrTexteTropLong, champ.nom, {NomChamp(champ.nom), std::to_string(limite)});
  }
  return {};
}

void FicheDepuis(CFenlorApp& app, const TableFiche& table, const void* rec, void* fiche) {
  for (const ChampFiche& champ : table.champs)
    if (*champ.stocke) Passage(app, table, champ).Lit(static_cast<const u8*>(rec), champ.valeur(fiche));
}

void FicheVers(CFenlorApp& app, const TableFiche& table, const void* fiche, void* rec) {
  for (const ChampFiche& champ : table.champs)
    if (*champ.stocke) Passage(app, table, champ).Pose(ValeurDe(champ, fiche), static_cast<u8*>(rec));
}

Refus EchecFichier() {
  Refus refus;
  refus.numero = ErrFichierIndexe;
  refus.dit = true;
  return refus;
}

Refus LitEnregistrement(CBTFiles& fichier, Position position) {
  assert(position != 0);
  return fichier.OpenFile() && fichier.ReadRec(position) ? Refus() : EchecFichier();
}

bool ClePrise(CBTFiles& fichier, u32 cle, Position position) {
  assert(!fichier.MakeKey(cle).empty());
  return fichier.OpenFile() && fichier.Find(cle) && fichier.GetPos() != position;
}

Refus RemplaceEnregistrement(CFenlorApp& app, CBTFiles& fichier, Position& position) {
  QVAPI::Unite unite(app.Magasin);
  if (!fichier.Delete(position) || !fichier.Add()) return EchecFichier();
  if (!unite.Valide()) return app.EchecMagasin();
  position = fichier.GetPos();
  assert(position != 0);
  return {};
}

Refus SupprimeEnregistrement(CBTFiles& fichier, Position position) {
  return fichier.OpenFile() && fichier.Delete(position) ? Refus() : EchecFichier();
}

std::vector<Position> PositionsDe(CFenlorApp& app, CBTFiles& fichier) {
  std::vector<Position> positions;
  if (!fichier.OpenFile()) return positions;
  app.Magasin.QVParcoursCle(fichier.NumCle, {}, {}, [&](Position position, const void*) {
    positions.push_back(position);
    return true;
  });
  return positions;
}

}  // namespace fenlor

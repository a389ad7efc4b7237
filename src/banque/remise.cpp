#include "banque/remise.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <set>

#include "banque/textes.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "core/fiche.h"
#include "core/mouvements.h"
#include "core/valeurs.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr f64 centimes = 100;

/// The same day in another year, the last of its month where there is none.
Date DansLAnnee(Date date, unsigned annee) {
  const unsigned jours = GetNbJours(FaitDate(1, Mois(date), annee));
  return FaitDate(std::min(Jour(date), jours), Mois(date), annee);
}

bool EstCheque(const Line& ligne, const std::string& compte) {
  return LitTexte(ligne.Compte) == compte && ligne.Sens == 0 && ligne.ModePaiement == PaiementCheque;
}

bool Retenue(const Line& ligne, const CriteresRemise& criteres) {
  if (criteres.monnaie != MonnaieRemise::Toutes &&
      (ligne.SaisieEuro != 0) != (criteres.monnaie == MonnaieRemise::Euro))
    return false;
  switch (criteres.etat) {
    case EtatRemise::NonRemis:
      return ligne.Remise == 0 && ligne.Rapprochee == 0;  // what the bank has is not brought there
    case EtatRemise::Remis:
      return ligne.Remise != 0;
    case EtatRemise::RemisACetteDate:
      return ligne.DateRemise == criteres.date;
    case EtatRemise::Tous:
      break;
  }
  return true;
}

/// What the journal says of a cheque; the ticks stay.
void Recopie(const Line& ligne, Position position, Cheque& cheque) {
  cheque.position = position;
  cheque.mouvement = ligne.Mouvement;
  cheque.rang = ligne.Rang;
  cheque.journal = ligne.Journal;
  cheque.genre = ligne.Genre;
  cheque.date = ligne.DateLigne;
  cheque.libelle = NomDeLigne(ligne);
  cheque.franc = ligne.MontantFranc;
  cheque.euro = ligne.MontantEuro;
  cheque.enEuro = ligne.SaisieEuro != 0;
  cheque.remise = ligne.Remise != 0;
  cheque.dateRemise = ligne.DateRemise;
}

Cheque ChequeDe(const Line& ligne, Position position) {
  Cheque cheque;
  Recopie(ligne, position, cheque);
  cheque.remis = cheque.remise;
  return cheque;
}

/// Gives a line its mark, inside the caller's unit of work.
Refus MarqueLigne(CFenlorApp& app, Position position, Line& ligne, bool remis, Date date) {
  assert(app.Magasin.QVEnUnite() && position != 0);
  if ((ligne.Remise != 0) == remis) return {};
  if (const Refus r = app.ControleEcriture()) return r;
  ligne.Remise = remis;
  ligne.DateRemise = remis ? date : 0;
  return app.Magasin.UpdateLines(app.PathExercice, position, ligne) ? Refus() : app.EchecDit();
}

}  // namespace

CriteresRemise CriteresRemiseProposes(CFenlorApp& app) {
  CriteresRemise criteres;
  const unsigned annee = Annee(app.Reglages.GetDebutExercice());
  criteres.date = app.Magasin.Today();
  GetWeek(criteres.date, criteres.du, criteres.au);
  criteres.du = DansLAnnee(criteres.du, annee);
  criteres.au = DansLAnnee(criteres.au, annee);
  if (criteres.du > criteres.au) criteres.du = criteres.au = DansLAnnee(criteres.date, annee);
  return criteres;
}

Refus ChequesDe(CFenlorApp& app, CriteresRemise& criteres, std::vector<Cheque>& cheques) {
  cheques.clear();
  if (criteres.du > criteres.au) std::swap(criteres.du, criteres.au);
  if (criteres.etat == EtatRemise::RemisACetteDate) {
    criteres.du = app.Reglages.GetDebutExercice();
    criteres.au = app.Reglages.GetFinExercice();
  }
  CLines lignes(app, app.PathExercice);
  if (!lignes.OpenFile()) return EchecFichier();
  const std::string debut = MakeJournalKey3(criteres.compte, criteres.du, 0, 0, 0, 0);
  const bool lu = app.Magasin.QVParcoursCle(
      static_cast<u16>(lignes.NumCle + IndiceCompteDate), debut, {}, [&](Position position, const void* rec) {
        const Line& ligne = *static_cast<const Line*>(rec);
        if (LitTexte(ligne.Compte) != criteres.compte || ligne.DateLigne > criteres.au) return false;
        if (EstCheque(ligne, criteres.compte) && Retenue(ligne, criteres))
          cheques.push_back(ChequeDe(ligne, position));
        return true;
      });
  return lu ? Refus() : app.EchecMagasin();
}

Refus ChequesDeLEcriture(CFenlorApp& app, u32 mouvement, std::vector<Cheque>& cheques) {
  LivresOuverts livres;
  if (const Refus refus = livres.Ouvre(app)) return refus;
  cheques.clear();
  const std::vector<Position> positions = app.Magasin.LignesMouvement(app.PathExercice, mouvement);
  if (positions.empty()) return Refus(ErrEcritureInconnue, "mouvement", {std::to_string(mouvement)});
  for (const Position position : positions) {
    Line ligne;
    Plan plan;
    if (!app.Magasin.ReadLines(app.PathExercice, position, ligne)) return app.EchecMagasin();
    if (ligne.TypeCompte == Tresorerie && EstCheque(ligne, LitTexte(ligne.Compte)) &&
        LitCompte(app, LitTexte(ligne.Compte), plan) && plan.TypeTresorerie != 0)
      cheques.push_back(ChequeDe(ligne, position));
  }
  return cheques.empty() ? Refus(ErrSansCheque, "mouvement", {std::to_string(mouvement)}) : Refus();
}

std::optional<f64> TotalRemise(const std::vector<Cheque>& cheques, MonnaieRemise monnaie) {
  if (monnaie == MonnaieRemise::Toutes) return std::nullopt;
  i64 total = 0;
  for (const Cheque& cheque : cheques)
    if (cheque.remis) total += std::llround(cheque.Montant() * centimes);
  return static_cast<f64>(total) / centimes;
}

TableColonnes<Cheque> ColonnesCheques() {
  const auto coche = [](bool Cheque::*champ) {
    return [champ](const Cheque& c) { return std::string(c.*champ ? "x" : ""); };
  };
  return {
      {"R", 16, coche(&Cheque::remis), Cote::Centre, nullptr, Texte(MotRemis)},
      {"I", 15, coche(&Cheque::imprime), Cote::Centre, nullptr, Texte(MotAImprimer)},
      {"Date", 18, [](const Cheque& c) { return StrDate(c.date); }},
      {"Libellé"_w, 52, [](const Cheque& c) { return c.libelle; }},
      {"Montant", 22, [](const Cheque& c) { return c.enEuro ? FormatEuro(c.euro) : FormatFranc(c.franc); },
       Cote::Droite}};
}

Refus ListeRemise::Remplit(CriteresRemise& criteres) {
  m_cheques.clear();
  m_compte = criteres.compte;
  if (const Refus refus = m_fichier.Cree()) return refus;
  std::vector<Cheque> cheques;
  if (const Refus refus = ChequesDe(m_app, criteres, cheques)) return refus;
  for (Cheque& cheque : cheques) {
    cheque.rangFichier = static_cast<u32>(m_cheques.size());
    if (EcritRang(cheque, cheque.position)) m_cheques.push_back(std::move(cheque));
  }
  return {};
}

bool ListeRemise::EcritRang(const Cheque& cheque, Position position) {
  EnregistrementRemise rec{};
  rec.Remis = cheque.remis;
  rec.Imprime = cheque.imprime;
  rec.Place = position;
  return m_fichier.Ecrit(cheque.rangFichier, rec);
}

void ListeRemise::Pose(Cheque& cheque, bool remis, bool imprime) {
  const Cheque avant = cheque;
  cheque.remis = remis;
  cheque.imprime = imprime;
  if (!EcritRang(cheque, cheque.position)) cheque = avant;
}

Refus ListeRemise::ControleCloture() const { return m_app.ControleEcriture(); }

Refus ListeRemise::Bascule(std::size_t rang) {
  assert(rang < m_cheques.size());
  if (const Refus refus = ControleCloture()) return refus;
  const bool remis = !m_cheques[rang].remis;
  Pose(m_cheques[rang], remis, remis);
  return {};
}

void ListeRemise::BasculeImprime(std::size_t rang) {
  assert(rang < m_cheques.size());
  Pose(m_cheques[rang], m_cheques[rang].remis, !m_cheques[rang].imprime);
}

Refus ListeRemise::RemetTout(bool remis) {
  if (const Refus refus = ControleCloture()) return refus;
  for (Cheque& cheque : m_cheques) Pose(cheque, remis, cheque.imprime);
  return {};
}

void ListeRemise::ImprimeTout(bool imprime) {
  for (Cheque& cheque : m_cheques) Pose(cheque, cheque.remis, imprime);
}

Refus ListeRemise::Relit() {
  LivresOuverts livres;
  if (const Refus refus = livres.Ouvre(m_app)) return refus;
  // An entry that is saved anew may have its lines in other places.
  std::set<Position> prises;
  const auto retrouve = [&](Cheque& cheque) {
    std::vector<Position> places = m_app.Magasin.LignesMouvement(m_app.PathExercice, cheque.mouvement);
    std::stable_partition(places.begin(), places.end(),
                          [&](Position place) { return place == cheque.position; });
    for (const Position place : places) {
      Line ligne;
      if (prises.contains(place) || !m_app.Magasin.ReadLines(m_app.PathExercice, place, ligne) ||
          !EstCheque(ligne, m_compte))
        continue;
      prises.insert(place);
      Recopie(ligne, place, cheque);
      return true;
    }
    return false;
  };
  std::erase_if(m_cheques, [&](Cheque& cheque) {
    const bool garde = retrouve(cheque);
    EcritRang(cheque, garde ? cheque.position : 0);
    return !garde;
  });
  return {};
}

Refus AppliqueRemise(CFenlorApp& app, const std::string& chemin, Date date) {
  if (!IsDateOk(date)) return Refus(ErrDateIncorrecte, "date");
  FichierRemise fichier(app, chemin);
  LivresOuverts livres;
  if (const Refus refus = fichier.Ouvre()) return refus;
  if (const Refus refus = livres.Ouvre(app)) return refus;
  QVAPI::Unite unite(app.Magasin);
  for (u32 rang = 0, nombre = fichier.Nombre(); rang < nombre; ++rang) {
    EnregistrementRemise rec;
    Line ligne;
    if (!fichier.Lit(rang, rec)) return app.EchecMagasin();
    if (rec.Place == 0) continue;
    if (!app.Magasin.ReadLines(app.PathExercice, rec.Place, ligne)) return app.EchecMagasin();
    if (Refus refus = MarqueLigne(app, rec.Place, ligne, rec.Remis != 0, date)) return refus;
  }
  return unite.Valide() ? Refus() : app.EchecMagasin();
}

Refus MarqueCheques(CFenlorApp& app, std::vector<Cheque>& cheques, bool remis, Date date) {
  if (remis && !IsDateOk(date)) return Refus(ErrDateIncorrecte, "date");
  LivresOuverts livres;
  if (const Refus refus = livres.Ouvre(app)) return refus;
  QVAPI::Unite unite(app.Magasin);
  for (Cheque& cheque : cheques) {
    Line ligne;
    if (!app.Magasin.ReadLines(app.PathExercice, cheque.position, ligne)) return app.EchecMagasin();
    if (Refus refus = MarqueLigne(app, cheque.position, ligne, remis, date)) return refus;
    Recopie(ligne, cheque.position, cheque);
  }
  return unite.Valide() ? Refus() : app.EchecMagasin();
}

Refus ParcourtBordereau(CFenlorApp& app, const std::string& chemin,
                        const std::function<bool(const Line&, bool imprime)>& suite) {
  FichierRemise fichier(app, chemin);
  LivresOuverts livres;
  if (const Refus refus = fichier.Ouvre()) return refus;
  if (const Refus refus = livres.Ouvre(app)) return refus;
  for (u32 rang = 0, nombre = fichier.Nombre(); rang < nombre; ++rang) {
    EnregistrementRemise rec;
    Line ligne;
    if (!fichier.Lit(rang, rec)) return app.EchecMagasin();
    if (rec.Place == 0) continue;
    if (!app.Magasin.ReadLines(app.PathExercice, rec.Place, ligne)) return app.EchecMagasin();
    if (!suite(ligne, rec.Imprime != 0)) break;
  }
  return {};
}

}  // namespace fenlor

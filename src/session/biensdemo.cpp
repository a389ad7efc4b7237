#include "session/biensdemo.h"

#include <algorithm>
#include <cassert>

#include "assets/amortissements.h"
#include "assets/cessions.h"
#include "assets/detail.h"
#include "assets/dureetaux.h"
#include "assets/immobilisations.h"
#include "core/fiche.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct BienDemo {
  Date achat;
  const char* designation;
  f64 prix;  ///< in Franc up to 17/02/2002, then in Euro
  TypeAmortissement type;
  ModeDuree mode;
  f64 saisi;  ///< years or percent, by the mode
  bool amortissable = true;
  Date cession = 0;
  f64 prixCession = 0;  ///< in Euro; 0: scrapped
  u32 anneeCorrigee = 0;
  f64 reel = 0;  ///< in Euro
};

constexpr BienDemo Biens[] = {
    {FaitDate(1, 9, 1987), "Droit de présentation de la clientèle", 200000, Lineaire, ParDuree, 10, false},
    {FaitDate(2, 1, 1990), "Cabinet, 12 rue des Tilleuls", 480000, Lineaire, ParTaux, 5},
    {FaitDate(15, 11, 1995), "Radiologie Hardouin, table et tube", 120000, Degressif, ParDuree, 10},
    {FaitDate(10, 9, 1996), "Meubles Lenoir, salle d'attente", 18500, Lineaire, ParDuree, 10},
    {FaitDate(1, 10, 1996), "Echographe", 160000, Degressif, ParTaux, 35},
    {FaitDate(3, 3, 1997), "Fauteuil de consultation", 6200, Lineaire, ParDuree, 10, true,
     FaitDate(10, 3, 2003)},
    {FaitDate(12, 6, 1998), "Voiture, première", 98000, Lineaire, ParDuree, 5, true, FaitDate(15, 1, 2003),
     4500},
    {FaitDate(12, 5, 1999), "Table d'examen électrique", 21000, Lineaire, ParDuree, 8},
    {FaitDate(14, 2, 2000), "Electrocardiographe", 24000, Lineaire, ParDuree, 5, true, FaitDate(28, 2, 2003),
     800},
    {FaitDate(5, 4, 2001), "Ordinateur et imprimante", 15990, Degressif, ParDuree, 3},
    {FaitDate(1, 3, 2002), "Standard téléphonique", 2400, Lineaire, ParTaux, 25, true, 0, 0, 2002, 300},
    {FaitDate(20, 6, 2002), "Logiciel de gestion du cabinet", 1450, Exceptionnel, ParDuree, 1},
    {FaitDate(8, 1, 2003), "Voiture, seconde", 17200, Lineaire, ParDuree, 5},
};

/// As the form would have it: what is typed, and what follows.
void PoseDuree(CFenlorApp& app, const BienDemo& bien, FicheImmobilisation& fiche) {
  DureeEtTaux saisie(app, bien.achat, Lineaire, bien.mode, 10, 10);
  if (bien.type == Degressif) {
    const std::vector<TauxDegressif>& table = saisie.Table();
    const auto rangee = std::find_if(table.begin(), table.end(), [&](const TauxDegressif& r) {
      return (bien.mode == ParDuree ? r.Duree : r.TauxAnnuel) == bien.saisi;
    });
    assert(rangee != table.end());
    saisie.ChangeType(Degressif);
    saisie.ChoisitRangee(static_cast<int>(rangee - table.begin()));
  } else if (bien.type == Exceptionnel) {
    saisie.ChangeType(Exceptionnel);
  } else {
    bien.mode == ParDuree ? saisie.ChangeDuree(bien.saisi) : saisie.ChangeTaux(bien.saisi);
  }
  fiche.type = saisie.Type();
  fiche.mode = saisie.Mode();
  fiche.duree = saisie.Duree();
  fiche.taux = saisie.Taux();
}

Refus Corrige(CFenlorApp& app, const BienDemo& bien, Position position) {
  DetailAmortissements detail;
  if (const Refus refus = LitDetail(app, position, detail)) return refus;
  for (LigneDetail& ligne : detail.lignes)
    if (ligne.annee == bien.anneeCorrigee) ligne.reel = bien.reel;
  return EnregistreDetail(app, detail);
}

Refus Ajoute(CFenlorApp& app, const BienDemo& bien) {
  FicheImmobilisation fiche = NouvelleImmobilisation(app);
  fiche.designation = DepuisUtf8(bien.designation).value_or(std::string());
  fiche.dateAchat = bien.achat;
  fiche.monnaie = bien.achat > DernierJourFranc;
  fiche.prix = bien.prix;
  fiche.valeur = bien.amortissable ? bien.prix : 0;
  PoseDuree(app, bien, fiche);
  if (const Refus refus = ControleAcquisition(app, fiche)) return refus;
  PoseAcquisition(app, fiche);
  if (bien.cession != 0 && bien.cession <= app.Magasin.Today()) {
    if (const Refus refus = bien.prixCession == 0
                                ? PoseRebut(app, bien.cession, fiche.rec)
                                : PoseCession(app, {bien.cession, bien.prixCession, true}, fiche.rec))
      return refus;
  }
  if (const Refus refus = EcritImmobilisation(app, fiche)) return refus;
  return bien.anneeCorrigee != 0 ? Corrige(app, bien, fiche.position) : Refus();
}

}  // namespace

Refus AjouteBiensDemo(CFenlorApp& app) {
  CImmobilisations fichier(app, app.PathCabinet);
  CAmortissements corrections(app, app.PathCabinet);
  if (!fichier.OpenFile() || !corrections.OpenFile()) return EchecFichier();
  QVAPI::Unite unite(app.Magasin);
  for (const BienDemo& bien : Biens)
    if (const Refus refus = Ajoute(app, bien)) return refus;
  return unite.Valide() ? Refus() : app.EchecMagasin();
}

}  // namespace fenlor

#include "auto/modeleauto.h"

#include <algorithm>
#include <cassert>

#include "auto/ecrituresauto.h"
#include "auto/parcoursauto.h"
#include "auto/textes.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "core/valeurs.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "store/membre.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

using G = GenreChamp;
using Fiche = FicheAuto;

constexpr ChampFiche Champs[] = {
    {"libelle", Membre<&Fiche::libelle>, G::Texte, "Libelle"},
    {"date", Membre<&Fiche::date>, G::Date, "Date"},
    {"tresorerie", Membre<&Fiche::tresorerie>, G::Compte, "Tresorerie"},
    {"compte", Membre<&Fiche::compte>, G::Compte, "Compte"},
    {"annoncer", Membre<&Fiche::annoncer>, G::Drapeau, "Annoncer"},
};

Refus ControleNombre(const CEcrituresAuto& autos) {
  return autos.Nombre() < ModelesAutoMax ? Refus()
                                         : Refus(ErrNombreAuto, "", {std::to_string(ModelesAutoMax)});
}

class Enregistrement {
 public:
  Enregistrement(CFenlorApp& app, FicheAuto& fiche) : m_app(app), m_fiche(fiche), m_autos(app) {
    m_autos.Signale = false;
  }
  Refus Execute() {
    if (Refus refus = Controle()) return refus;
    Remplit();
    if (!m_autos.Write()) return Refus(ErrEnregistrementAuto);
    m_fiche.position = m_autos.Numero;
    return {};
  }

 private:
  Refus Controle();
  Refus ControleLimites() const;
  void Remplit();

  CFenlorApp& m_app;
  FicheAuto& m_fiche;
  CEcrituresAuto m_autos;
  LivresOuverts m_livres;
  Plan m_compte{}, m_tresorerie{};
};

Refus Enregistrement::Controle() {
  if (Refus refus = ControleExercice(m_app, m_livres)) return refus;
  if (!m_autos) return m_app.EchecMagasin();
  if (m_fiche.position == 0)
    if (Refus refus = ControleNombre(m_autos)) return refus;
  if (m_fiche.position != 0 && !m_autos.Read(m_fiche.position))
    return Refus(ErrModeleAbsent, "numero", {std::to_string(m_fiche.position)});
  if (m_fiche.genre != JournalRecettes && m_fiche.genre != JournalDepenses)
    return Refus(ErrGenreAuto, "genre");
  if (!IsDateOk(m_fiche.date)) return Refus(ErrDateIncorrecte, "date");
  const i16 type = m_fiche.genre == JournalRecettes ? Recette : Depense;
  if (!LitCompte(m_app, QVAPI::GetLongCompte(m_fiche.compte), m_compte) || m_compte.Type != type)
    return Refus(ErrCompteIncorrect, "compte");
  if (m_fiche.montants.ttc == 0) return Refus(ErrMontantNul, "ttc");
  if (Refus refus = ControleFranc(m_app, m_fiche.euro, m_fiche.date)) return refus;
  if (!LitCompte(m_app, QVAPI::GetLongCompte(m_fiche.tresorerie), m_tresorerie) ||
      m_tresorerie.Type != Tresorerie)
    return Refus(ErrCompteIncorrect, "tresorerie");
  return ControleLimites();
}

Refus Enregistrement::ControleLimites() const {
  if (GetPeriodiciteString(m_fiche.periodicite).empty()) return Refus(ErrPeriodicite, "periodicite");
  if (m_fiche.nombre < 1 || m_fiche.nombre > PaiementsMax || m_fiche.payes >= m_fiche.nombre)
    return Refus(ErrNombrePaiements, "nombre", {std::to_string(PaiementsMax)});
  if (Refus refus = ControleTextes(FicheAuto::Table, &m_fiche)) return refus;
  return ControleMontant("ttc", m_fiche.montants.ttc);
}

void Enregistrement::Remplit() {
  if (m_fiche.position == 0) m_autos.Clear();
  EcrituresAuto& rec = m_autos.Rec;
  m_fiche.compte = LitTexte(m_compte.Compte);
  m_fiche.tresorerie = LitTexte(m_tresorerie.Compte);
  if (EstVide(m_fiche.libelle)) m_fiche.libelle = LitTexte(m_compte.Designation);
  FicheVers(m_app, FicheAuto::Table, &m_fiche, &rec);
  rec.Genre = m_fiche.genre;
  rec.ModePaiement = m_tresorerie.TypeTresorerie == 0 ? i16{PaiementAutre} : m_fiche.paiement;
  rec.Periodicite = m_fiche.periodicite;
  rec.NbPaiements = m_fiche.nombre;
  rec.NbRestants = m_fiche.nombre - m_fiche.payes;
  rec.SaisieEuro = m_fiche.euro;
  const f64 taux = m_app.Magasin.GetTauxEuro(m_fiche.date);
  using Montant = f64 EcrituresAuto::*;
  const auto pose = [&](f64 montant, Montant franc, Montant euro) {
    const DeuxMonnaies deux = EnDeuxMonnaies(m_fiche.euro, taux, montant);
    PoseMembre(rec, franc, f64{deux.franc});
    PoseMembre(rec, euro, f64{deux.euro});
  };
  const MontantsSaisie& montants = m_fiche.montants;
  const bool taxe = montants.taux > 0 && m_compte.CompteTVA[0] != '\0';
  pose(montants.ttc, &EcrituresAuto::MontantFranc, &EcrituresAuto::MontantEuro);
  pose(montants.professionnel, &EcrituresAuto::RepartitionFranc, &EcrituresAuto::RepartitionEuro);
  pose(taxe ? montants.tva : 0, &EcrituresAuto::TaxeFranc, &EcrituresAuto::TaxeEuro);
  rec.TauxTaxe = taxe ? montants.taux : 0;
  PoseTexte(rec.CompteTaxe, taxe ? LitTexte(m_compte.CompteTVA) : std::string());
  assert(rec.NbRestants >= 1 && rec.NbRestants <= rec.NbPaiements);
}

}  // namespace

const TableFiche FicheAuto::Table{"EcrituresAuto", Champs};

FicheAuto NouvelleAuto(CFenlorApp& app) {
  FicheAuto fiche;
  fiche.date = app.Magasin.Today();
  fiche.euro = app.Reglages.IsEuro();
  return fiche;
}

Refus ControleAjoutAuto(CFenlorApp& app) {
  LivresOuverts livres;
  if (Refus refus = ControleExercice(app, livres)) return refus;
  const CEcrituresAuto autos(app);
  return autos ? ControleNombre(autos) : app.EchecMagasin();
}

Refus LitFiche(CFenlorApp& app, Position numero, FicheAuto& fiche) {
  CEcrituresAuto autos(app);
  autos.Signale = false;
  if (!autos) return app.EchecMagasin();
  if (!autos.Read(numero)) return Refus(ErrModeleAbsent, "numero", {std::to_string(numero)});
  const EcrituresAuto& rec = autos.Rec;
  fiche = {};
  FicheDepuis(app, FicheAuto::Table, &rec, &fiche);
  fiche.position = numero;
  fiche.genre = rec.Genre;
  fiche.paiement = rec.ModePaiement;
  fiche.euro = rec.SaisieEuro != 0;
  fiche.periodicite = static_cast<i16>(PeriodiciteDe(rec));
  if (GetPeriodiciteString(fiche.periodicite).empty()) fiche.periodicite = 1;
  fiche.nombre = rec.NbPaiements;
  fiche.payes = rec.NbRestants ? rec.NbPaiements - std::min(u32{rec.NbRestants}, u32{rec.NbPaiements}) : 0;
  const auto montant = [&](f64 franc, f64 euro) { return fiche.euro ? euro : franc; };
  MontantsSaisie& m = fiche.montants;
  m.ttc = montant(rec.MontantFranc, rec.MontantEuro);
  m.professionnel = montant(rec.RepartitionFranc, rec.RepartitionEuro);
  m.personnel = Arrondi2(m.ttc - m.professionnel);
  m.tva = montant(rec.TaxeFranc, rec.TaxeEuro);
  m.ht = Arrondi2(m.professionnel - m.tva);
  m.taux = rec.TauxTaxe;
  return {};
}

void ChangePeriodicite(FicheAuto& fiche, i16 periodicite) {
  fiche.periodicite = periodicite;
  fiche.nombre = periodicite == 1 ? fiche.payes + 1 : PaiementsMax;
}

u32 NombreTape(const FicheAuto& fiche, u32 nombre) { return std::max({nombre, 1u, fiche.payes + 1}); }

std::string AvancementAuto(const FicheAuto& fiche) {
  return std::to_string(fiche.payes) + " / " + std::to_string(fiche.nombre);
}

Refus EnregistreFiche(CFenlorApp& app, FicheAuto& fiche) { return Enregistrement(app, fiche).Execute(); }

Refus SupprimeFiche(CFenlorApp& app, const FicheAuto& fiche) {
  const u32 numero = fiche.position;
  LivresOuverts livres;
  if (Refus refus = ControleExercice(app, livres)) return refus;
  CEcrituresAuto autos(app);
  autos.Signale = false;
  if (!autos.Read(numero)) return Refus(ErrModeleAbsent, "numero", {std::to_string(numero)});
  if (Refus refus = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionSupprimeAuto)) return refus;
  return autos.Delete(numero) ? Refus() : Refus(ErrSuppressionAuto);
}

Refus ListeAutos(CFenlorApp& app, std::vector<EcrituresAuto>& modeles) {
  modeles.clear();
  if (app.PathExercice.empty()) return Refus(ErrAucunExercice);
  const CEcrituresAuto autos(app);
  return autos && app.Magasin.ListeEcrituresAuto(modeles) ? Refus() : app.EchecMagasin();
}

}  // namespace fenlor

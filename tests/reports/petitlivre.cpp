#include "reports/petitlivre.h"

#include <cstdlib>

#include "core/btfiles.h"
#include "journal/saisie.h"
#include "outils/attendu.h"
#include "pages/enregistreur.h"
#include "pages/page.h"

namespace fenlor::test {

namespace {

constexpr const char* modele = R"(fenlor-modele 1
date 15/05/2024

[comptes]
108  | EXPLOIT | autre   | Exploitant
4451 | TVA     | tva     | T.V.A. à 19,60 %  |    | taux=19,6
512  | BQ      | banque  | Banque
531  | CA      | caisse  | Caisse
606  | ACHATS  | depense | Achats            | 08 | tva=4451
613  | LOYER   | depense | Loyer             | 15
658  | ECARTD  | depense | Écarts
706  | HONOR   | recette | Honoraires        | 01
707  | VENTES  | recette | Ventes            | 01 | tva=4451
[rubriques]
01 | 1  | recette  | Recettes encaissées
07 | 7  | resultat | TOTAL DES RECETTES | 01
08 | 8  | depense  | Achats
15 | 15 | depense  | Loyer et charges locatives
32 | 32 | resultat | TOTAL DES DEPENSES | 08+15
41 | 41 | resultat | Amortissements     | &AMORT
46 | 46 | resultat | BENEFICE           | 07-32-41
[particuliers]
Prelevement = 108
[libelles]
Consultations
Loyer du cabinet
)";

constexpr f64 taux = 6.55957;

/// Franc, then Euro.
std::pair<f64, f64> DansLesDeuxMonnaies(bool enEuro, f64 montant) {
  if (enEuro) return {QVAPI::ConvertEuroToFranc(taux, montant), montant};
  return {montant, QVAPI::ConvertFrancToEuro(taux, montant)};
}

}  // namespace

bool DemandeurScript::Demande(FormeCriteres forme, const std::string& titre, unsigned comptes,
                              CriteresEtat& criteres) {
  ++Nombre;
  Forme = forme;
  Titre = titre;
  Comptes = comptes;
  Propose = criteres;
  if (Change) Change(criteres);
  return Accepte;
}

void PetitLivre::Installe(AffichageLivre affichage, bool ecritures) {
  m_euro = affichage != AffichageLivre::Franc;
  Annee = affichage == AffichageLivre::Franc ? "2001" : affichage == AffichageLivre::Euro ? "2003" : "2002";
  Magasin().FixeAujourdhui(Le(15, 3));
  const std::string programmes = Dossier() + "/programmes";
  std::filesystem::create_directories(programmes);
  EcritFichier(programmes + "/defaut.qvc", modele);
  Magasin().QVSetPathProgrammes(programmes);
  ASSERT_TRUE(CreeExercice(Annee, m_euro, true));
  App().AfficherDouble = affichage == AffichageLivre::Double;
  ASSERT_TRUE(App().Reglages.EcritIniExercice(Annee, "AFFICHERDOUBLE", App().AfficherDouble ? "Oui" : "Non"));
  ASSERT_TRUE(Magasin().SetComptePerso("108"));
  ASSERT_TRUE(Magasin().SetCompteEcartCredit("707") && Magasin().SetCompteEcartDebit("658"));
  if (!ecritures) return;

  const u32 plan = Magasin().OpenPlan({}), journal = Magasin().OpenJournal({});
  QVAPI::Unite unite(Magasin());
  ChangeCompte("512", [this](Plan& banque) {
    const auto [franc, euro] = DansLesDeuxMonnaies(m_euro, -1000);
    banque.SoldeInitialFranc = franc;
    banque.SoldeInitialEuro = euro;
  });

  const u32 premiere = Ajoute(JournalRecettes, Le(10, 1), "706", 500, 0, 0, "512", "Consultations");
  const u32 seconde = Ajoute(JournalRecettes, Le(24, 1), "707", 119.60, 19.60, 0, "512", "Certificats A\\B");
  Ajoute(JournalRecettes, Le(30, 1), "706", 200, 0, 0, "531", "Espèces");
  Ajoute(JournalRecettes, Le(1, 2), "706", 300, 0, 0, "512+531", "Consultations");
  Ajoute(JournalDepenses, Le(15, 1), "606", 59.80, 9.80, 0, "512", "Fournitures");
  const u32 loyer = Ajoute(JournalDepenses, Le(5, 2), "613", 400, 0, 100, "512", "Loyer");
  Ajoute(JournalDepenses, Le(12, 3), "606", 29.90, 4.90, 0, "531", "Timbres");
  const SaisieOD od{.date = Le(28, 2),
                    .libelle = "Remise d'espèces"_w,
                    .euro = m_euro,
                    .lignes = {{"5120000000", {}, 150, 0}, {"5310000000", {}, 0, 150}}};
  EcritureFaite faite;
  ASSERT_FALSE(EnregistreOD(App(), od, faite));

  const auto rapproche = [&](u32 mouvement, Date date, i16 sens) {
    for (const Position position : Magasin().LignesMouvement(App().PathExercice, mouvement)) {
      Line ligne;
      ASSERT_TRUE(Magasin().ReadLines(App().PathExercice, position, ligne));
      if (ligne.TypeCompte != Tresorerie) continue;
      Banque releve{};
      PoseTexte(releve.Compte, LitTexte(ligne.Compte));
      PoseTexte(releve.Libelle, "Releve");
      releve.Date = releve.DateValeur = date;
      releve.MontantFranc = ligne.MontantFranc;
      releve.MontantEuro = ligne.MontantEuro;
      releve.Sens = sens;
      ASSERT_TRUE(Magasin().RappLines(App().PathExercice, position, releve));
    }
  };
  rapproche(premiere, Le(15, 1), 1);
  rapproche(loyer, Le(8, 2), 0);
  ASSERT_TRUE(Magasin().ReverseMarkMouvements(App().PathExercice, seconde));
  ChangeLignes(seconde, [this](Line& ligne) {
    if (ligne.TypeCompte != Tresorerie) return;
    ligne.Remise = 1;
    ligne.DateRemise = Le(25, 1);
  });
  ASSERT_TRUE(Magasin().ValidEcrSimple(App().PathExercice, premiere, 1));
  ASSERT_TRUE(unite.Valide());
  ASSERT_TRUE(Magasin().ClosePlan(plan) && Magasin().CloseJournal(journal));
}

Date PetitLivre::Le(unsigned jour, unsigned mois) const {
  return FaitDate(jour, mois, static_cast<unsigned>(std::stoul(Annee)));
}

f64 PetitLivre::Franc(f64 montant) const {
  return m_euro ? QVAPI::ConvertEuroToFranc(taux, montant) : montant;
}
f64 PetitLivre::Euro(f64 montant) const {
  return m_euro ? montant : QVAPI::ConvertFrancToEuro(taux, montant);
}

u32 PetitLivre::Ajoute(i16 journal, Date date, std::string_view compte, f64 montant, f64 taxe, f64 perso,
                       std::string_view tresorerie, std::string_view libelle) {
  EcrSimple rec{};
  rec.Journal = journal;
  rec.Genre = GenreSimple;
  rec.Date = date;
  rec.SaisieEuro = m_euro;
  rec.EstRecette = journal == JournalRecettes;
  PoseTexte(rec.Libelle, DepuisUtf8(libelle).value_or(std::string(libelle)));
  PoseTexte(rec.Compte, QVAPI::GetLongCompte(std::string(compte)));
  PoseTexte(rec.ComptePerso, Magasin().GetComptePerso());
  rec.MontantFranc = Franc(montant);
  rec.MontantEuro = Euro(montant);
  rec.RepartitionFranc = rec.MontantFranc - Franc(perso);
  rec.RepartitionEuro = rec.MontantEuro - Euro(perso);
  if (taxe != 0) {
    PoseTexte(rec.CompteTaxe, "4451000000");
    rec.TaxeFranc = Franc(taxe);
    rec.TaxeEuro = Euro(taxe);
    rec.TauxTaxe = 19.6;
  }
  const std::string exercice = App().PathExercice;
  rec.Ligne = Magasin().GetFreeJournalLine(exercice, static_cast<u16>(journal), {}, date);
  u32 mouvement = 0;
  if (const std::size_t plus = tresorerie.find('+'); plus == std::string_view::npos) {
    PoseTexte(rec.CompteTresorerie, QVAPI::GetLongCompte(std::string(tresorerie)));
    mouvement = Magasin().AddEcrSimple(exercice, rec);
  } else {
    EcrStandard standard{};
    std::memcpy(&standard, &rec, offsetof(EcrSimple, CompteTresorerie));
    standard.Genre = GenreStandard;
    standard.MontantFranc = standard.RepartitionFranc = rec.MontantFranc;
    standard.MontantEuro = standard.RepartitionEuro = rec.MontantEuro;
    std::memcpy(standard.Compte, rec.Compte, sizeof rec.Compte);
    standard.EstRecette = rec.EstRecette;
    constexpr f64 especes = 50;
    const auto ligne = [&](std::string_view t, f64 m) {
      LineTresor tresor{};
      PoseTexte(tresor.Compte, QVAPI::GetLongCompte(std::string(t)));
      tresor.MontantFranc = Franc(m);
      tresor.MontantEuro = Euro(m);
      EXPECT_TRUE(Magasin().SetEcrLineTresor(standard.NbLignesTresorerie, standard, tresor));
    };
    ligne(tresorerie.substr(0, plus), montant - especes);
    ligne(tresorerie.substr(plus + 1), especes);
    mouvement = Magasin().AddEcrStandard(exercice, standard);
    Magasin().LibereLignes(standard);
  }
  EXPECT_NE(mouvement, 0u) << libelle << ": " << Magasin().QVFileErrorCode();
  return mouvement;
}

TemporaireAPart::TemporaireAPart() {
  if (const char* avant = std::getenv("TMPDIR")) m_avant = avant;
  setenv("TMPDIR", m_dossier.Chemin().c_str(), 1);
}

TemporaireAPart::~TemporaireAPart() { m_avant ? setenv("TMPDIR", m_avant->c_str(), 1) : unsetenv("TMPDIR"); }

std::size_t TemporaireAPart::Nombre() const {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(m_dossier.Chemin()), {}));
}

std::string Marquage(CEtatDoc& etat) {
  const auto tete = [](const char* nom, const std::string& texte) {
    return std::string(nom) + VersUtf8(texte) + "\n";
  };
  std::string sortie = tete("titre: ", etat.Titre()) + tete("entete: ", etat.Entete()) +
                       tete("pied: ", etat.Pied()) + (etat.Paysage() ? "paysage\n" : "");
  u32 debut = 0;
  for (u32 numero = 1; numero <= etat.NombreBlocs() + 1; ++numero) {
    const BlocEtat bloc = etat.LitBloc(numero);
    if (numero > 1) {
      const std::string texte = VersUtf8(etat.LitTexte(debut, bloc.fin));
      sortie += texte;
      if (!texte.empty() && texte.back() != '\n') sortie += '\n';
    }
    sortie += "== " + std::to_string(bloc.lignes);
    if (bloc.drapeaux & BlocEntete) sortie += " H";
    if (bloc.drapeaux & BlocFinEntete) sortie += " X";
    if (bloc.drapeaux & BlocSaut) sortie += " P";
    sortie += '\n';
    debut = bloc.fin;
  }
  return sortie;
}

std::string TexteEtat(CEtatDoc& etat) { return etat.LitTexte(0, etat.TailleTexte()); }

void PetitLivre::VerifieMarquage(CEtatDoc& etat, const std::string& nom) {
  VerifieAttendu(__FILE__, nom, Marquage(etat));
}

namespace {

MiseEnPage DessineFeuilles(CEtatDoc& etat, StylePapier style, Enregistreur& feuille) {
  const MiseEnPage page = PreparePage(feuille, {"Courier", 8}, false, true, style);
  const auto pages =
      PagineEtat(etat, etat.Mesures(), static_cast<u32>(page.lignesParPage), DessinDe(style).titresSuivis)
          .value();
  const ImpressionEtat impression{etat, pages, page, {"Docteur Essai", ""}, FaitDate(15, 3, 2003)};
  for (feuille.Page = 1; feuille.Page <= NombrePages(pages); ++feuille.Page)
    EXPECT_TRUE(DessinePage(impression, feuille.Page, feuille));
  return page;
}

}  // namespace

void PetitLivre::VerifieFeuilles(CEtatDoc& etat, StylePapier style, const std::string& nom) {
  Enregistreur feuille = Enregistreur::A4(UnitesPeripherique, etat.Paysage());
  DessineFeuilles(etat, style, feuille);
  std::string obtenu;
  for (const ElementPage& e : feuille.Elements) {
    std::string texte = e.texte;
    std::replace(texte.begin(), texte.end(), BlancFin, '_');
    const char* quoi = e.ton ? (*e.ton == Ton::Bande ? "bande" : "filet") : e.trait ? "trait" : "";
    for (const i32 nombre : {e.cadre.haut, e.cadre.gauche, e.cadre.droite})
      obtenu += std::to_string(nombre) + ' ';
    obtenu += quoi + VersUtf8(texte) + '\n';
  }
  VerifieAttendu(__FILE__, nom, obtenu);
}

void PetitLivre::VerifiePages(CEtatDoc& etat, const std::string& nom) {
  for (const StylePapier style : {StylePapier::Classique, StylePapier::Soignee}) {
    Enregistreur feuille = Enregistreur::A4(UnitesPeripherique, etat.Paysage());
    const MiseEnPage page = DessineFeuilles(etat, style, feuille);
    for (const ElementPage& element : feuille.Elements) {
      const std::string quoi =
          nom + ", page " + std::to_string(element.page) + ": " + VersUtf8(element.texte);
      EXPECT_GE(element.cadre.gauche, 0) << quoi;
      EXPECT_LE(element.cadre.droite, page.largeur) << quoi;
      EXPECT_LE(element.cadre.bas, page.hauteur) << quoi;
      if (element.trait) continue;
      EXPECT_TRUE(element.cadre.droite > element.cadre.gauche || element.texte == "V") << quoi;
      for (const ElementPage& autre : feuille.Elements) {
        if (&autre == &element) break;
        if (autre.trait || autre.page != element.page || autre.cadre.haut != element.cadre.haut) continue;
        EXPECT_TRUE(autre.cadre.droite <= element.cadre.gauche || element.cadre.droite <= autre.cadre.gauche)
            << quoi << " covers " << VersUtf8(autre.texte);
      }
    }
  }
}

}  // namespace fenlor::test

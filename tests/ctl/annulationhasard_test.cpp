// Random units of every kind, taken back and done again in random depth, against copies of the export at each
// step. FENLOR_PAS sets the number of steps, FENLOR_GRAINE the seed, FENLOR_MORTS the number of kills.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <map>
#include <random>

#include "assets/cessions.h"
#include "assets/detail.h"
#include "assets/immobilisations.h"
#include "auto/echeances.h"
#include "auto/modeleauto.h"
#include "banque/importreleve.h"
#include "banque/operations.h"
#include "banque/rapprochement.h"
#include "banque/remise.h"
#include "core/valeurs.h"
#include "ctl/reprises.h"
#include "journal/controles.h"
#include "journal/corbeille.h"
#include "journal/ecriturelue.h"
#include "journal/traitements.h"
#include "journal/virement.h"
#include "master/comptes.h"
#include "master/fraiskm.h"
#include "master/libelles.h"
#include "master/optionstva.h"
#include "master/rubriques.h"
#include "outils/systemesanssynchro.h"

namespace fenlor::test {
namespace {

/// Random commands of every kind that there is: each a unit or a few, or refused.
class Hasard : public Reprises {
 protected:
  Hasard() : Reprises(SansSynchro()) {
    for (const char* compte : {"1081", "1082"}) EXPECT_TRUE(PoseCompte(compte, Autre, compte, "Transit"));
    EXPECT_TRUE(Magasin().SetCompteVireTo(Long("1081")) && Magasin().SetCompteVireFrom(Long("1082")));
  }
  static Systeme* SansSynchro() {
    static SystemeSansSynchro systeme;
    return &systeme;
  }

  unsigned Entre(unsigned bas, unsigned haut) {
    return std::uniform_int_distribution<unsigned>(bas, haut)(m_hasard);
  }
  Date Jour() { return FaitDate(Entre(1, 28), Entre(1, 12), 2003); }
  f64 Montant() { return Arrondi2(Entre(3, 30) / 3.0); }
  std::string Un(std::initializer_list<const char*> mots) {
    return mots.begin()[Entre(0, static_cast<unsigned>(mots.size()) - 1)];
  }
  const std::string& Exercice() { return App().PathExercice; }
  u32 UnMouvement() {
    const Position position = Une(FichierJournal);
    Line ligne{};
    return position && Magasin().ReadLines(Exercice(), position, ligne) ? +ligne.Mouvement : 0;
  }
  Position Une(u16 fichier) {
    std::vector<Position> toutes;
    Magasin().QVParcours(fichier, [&](Position p, const void*) { return toutes.push_back(p), true; });
    return toutes.empty() ? 0 : toutes[Entre(0, static_cast<unsigned>(toutes.size()) - 1)];
  }
  SaisieEcriture UneSaisie() {
    const bool recette = Entre(0, 1) != 0;
    SaisieEcriture saisie = Ecriture(recette ? JournalRecettes : JournalDepenses,
                                     recette ? Un({"706", "7065", "7070"}) : Un({"6132", "6063", "6154"}),
                                     Montant(), Un({"512", "531", "514"}), Jour());
    if (Entre(0, 3) != 0) return saisie;
    saisie.genre = GenreStandard;
    const f64 un = Arrondi2(saisie.montants.ttc / 3);
    saisie.tresoreries = {{Long("512"), un, PaiementCheque},
                          {Long("531"), Arrondi2(saisie.montants.ttc - un), PaiementAutre}};
    return saisie;
  }
  void Saisit() { (void)Essaie(UneSaisie()); }
  void Modifie() {
    EcritureLue lue;
    if (LitEcriture(App(), UnMouvement(), lue)) return;
    SaisieEcriture saisie = UneSaisie();
    saisie.journal = lue.saisie.journal;
    saisie.genre = lue.saisie.genre;
    saisie.mouvement = lue.saisie.mouvement;
    saisie.date = FaitDate(Entre(1, 28), Mois(lue.saisie.date), 2003);
    saisie.compte = Long(saisie.journal == JournalRecettes ? "7065" : "6154");
    if (saisie.genre == GenreStandard && saisie.tresoreries.empty())
      saisie.tresoreries = {{Long("514"), saisie.montants.ttc, PaiementCheque}};
    (void)Essaie(saisie);
  }
  void SaisitOD() {
    const f64 un = Montant(), deux = Entre(0, 1) ? un : Montant();
    (void)Essaie(OD({{Un({"512", "531"}), "a", 0, un}, {Un({"108", "706", "6132"}), "", deux, 0}}, Jour()));
  }
  /// Several entries as one unit, and inner ones that are undone.
  void Plusieurs() {
    QVAPI::Unite unite(Magasin());
    for (unsigned n = Entre(1, 9); n > 0; --n) {
      QVAPI::Unite interne(Magasin());
      Saisit();
      if (const u32 autre = UnMouvement()) Magasin().RemoveMouvements(Exercice(), autre);
      if (n != 3) interne.Valide();
    }
    EXPECT_TRUE(unite.Valide());
  }
  void Renumerote(u32 mouvement) {
    DemandeListe demande;
    if (mouvement == 0) return;
    demande.journal = Entete(mouvement).Journal;
    demande.mois = Mois(Entete(mouvement).Date);
    u32 nombre = 0;
    EXPECT_FALSE(RenumeroteEcritures(App(), demande, nombre));
  }
  void Vire() {
    VirementFait fait;
    (void)EnregistreVirement(App(), {Jour(), Long("512"), Long("531"), "Virement", true, Montant()}, fait);
  }
  void Restaure() {
    std::vector<Suppression> suppressions;
    EXPECT_FALSE(LitCorbeille(App(), suppressions));
    u32 mouvement = 0;
    if (!suppressions.empty()) (void)RestaureSuppression(App(), suppressions.back().numero, mouvement);
  }
  void Importe() {
    std::string octets = "!Type:Bank\n";
    for (unsigned n = Entre(1, 5); n > 0; --n)
      octets += "D" + StrDate(Jour()) + "\nT" + std::to_string(Entre(1, 600)) + ".00\nPVIR\n^\n";
    ApercuReleve apercu;
    const LectureReleve lecture = LitReleve(octets, FormatReleve::Inconnu);
    if (!PrepareReleve(App(), "512", lecture, {}, apercu)) (void)ImporteReleve(App(), apercu);
  }
  void SaisitOperation() {
    FicheOperation fiche{.compte = "512", .date = Jour(), .libelle = "VIR", .montant = Montant()};
    fiche.sens = static_cast<i16>(Entre(0, 1));
    if (Entre(0, 2) == 0) fiche.position = Une(FichierBanques);
    (void)EnregistreOperation(App(), fiche);
  }
  void Rapproche() {
    BilanRapprochement bilan;
    (void)RapprocheAutomatique(
        App(), {{Banque512, FaitDate(1, 1, 2003), FaitDate(31, 12, 2003)}, false, true}, bilan);
  }
  /// An operation that is the first line, or the entry that it asks for.
  void RapprocheALaMain() {
    const auto lignes = LignesARapprocher(App(), {Banque512, FaitDate(1, 1, 2003), FaitDate(31, 12, 2003)});
    FicheOperation fiche{
        .compte = "512", .date = FaitDate(31, 12, 2003), .libelle = "VIR", .montant = Montant()};
    if (!lignes.empty()) {
      fiche.sens = lignes[0].credit ? 0 : 1;
      fiche.montant = static_cast<f64>(lignes[0].euro) / 100;
    }
    QVAPI::Unite unite(Magasin());
    if (EnregistreOperation(App(), fiche)) return;
    SaisieEcriture saisie;
    if (Entre(0, 1) && !lignes.empty()) {
      if (RapprocheManuel(App(), fiche.position, {lignes[0].position}, true)) return;
    } else if (!ProposeEcriture(App(), fiche.position, saisie)) {
      saisie.compte = Long(saisie.journal == JournalRecettes ? "706" : "6132");
      saisie.montants = ChaineMontants(App(), LitCompte(saisie.compte), fiche.montant);
      if (EnregistreEcritureDe(App(), fiche.position, saisie, Faite)) return;
    }
    EXPECT_TRUE(unite.Valide());
  }
  void Remet() {
    std::vector<Cheque> cheques;
    if (ChequesDeLEcriture(App(), UnMouvement(), cheques) || cheques.empty()) return;
    for (Cheque& cheque : cheques) cheque.remis = !cheque.remise;
    (void)MarqueCheques(App(), cheques, !cheques[0].remise, Jour());
  }
  void ChangeCompte() {
    const bool banque = Entre(0, 1) != 0;
    const FormeCompte forme = banque ? FormeCompte::Tresorerie : FormeCompte::RecettesDepenses;
    const std::string numero = std::to_string(banque ? Entre(5150, 5155) : Entre(6100, 6110));
    FicheCompte fiche = NouvelleFiche(App(), forme, banque ? Tresorerie : Depense);
    CPlan plan(App(), Exercice());
    ASSERT_TRUE(plan.OpenFile());
    PoseTexte(plan.Rec->Compte, Long(numero));
    if (plan.Find(0)) {
      fiche.position = plan.Position;
      if (Entre(0, 1)) return (void)SupprimeFiche(App(), fiche);
    }
    fiche.code = "C" + numero;
    fiche.compte = numero;
    fiche.designation = "Compte " + std::to_string(Entre(1, 9));
    if (banque) fiche.debitInitial = Montant();
    (void)EnregistreFiche(App(), fiche);
  }
  void ChangeRubrique() {
    FicheRubrique fiche;
    const Position position = Une(FichierRubriques);
    if (position && Entre(0, 2) != 0) {
      if (Entre(0, 1)) return (void)SupprimeFiche(App(), FicheA<FicheRubrique>(position));
      if (LitFiche(App(), position, fiche)) return;
    } else {
      fiche.code = "Z" + std::to_string(Entre(10, 40));
    }
    fiche.designation = "Rubrique " + std::to_string(Entre(1, 9));
    (void)EnregistreFiche(App(), fiche);
  }
  void ChangeTaxe() {
    std::vector<LigneTva> lignes = LitComptesTva(App());
    if (Entre(0, 1))
      lignes.push_back({0, Long(ProposeCompteTva(App(), lignes)), 5.5});
    else if (lignes.size() > 1)
      lignes.pop_back();
    unsigned comptes = 0;
    (void)AppliqueComptesTva(App(), lignes, comptes);
  }
  void ChangeBien() {
    FicheImmobilisation fiche = NouvelleImmobilisation(App());
    const Position position = Une(FichierImmo);
    if (position && Entre(0, 1)) {
      if (Entre(0, 1)) return (void)SupprimeFiche(App(), FicheA<FicheImmobilisation>(position));
      if (LitFiche(App(), position, fiche)) return;
      if (!EstCedee(fiche.rec) && !PoseCession(App(), {FaitDate(1, 6, 2004), Montant(), true}, fiche.rec))
        return (void)EcritImmobilisation(App(), fiche);
      DetailAmortissements detail;
      if (LitDetail(App(), position, detail) || detail.lignes.empty()) return;
      detail.lignes[0].reel += 0.5;
      return (void)EnregistreDetail(App(), detail);
    }
    fiche.designation = "Table";
    fiche.dateAchat = Jour();
    fiche.prix = fiche.valeur = Montant();
    (void)EnregistreFiche(App(), fiche);
  }
  void ChangeModele() {
    std::vector<EcrituresAuto> modeles;
    EXPECT_FALSE(ListeAutos(App(), modeles));
    if (modeles.size() > 2 && Entre(0, 1)) return (void)SupprimeFiche(App(), FicheA<FicheAuto>(Entre(1, 3)));
    FicheAuto fiche = NouvelleAuto(App());
    fiche.genre = JournalDepenses;
    fiche.date = Jour();
    fiche.tresorerie = "512";
    fiche.compte = "6132";
    fiche.libelle = "Loyer";
    fiche.nombre = 6;
    fiche.annoncer = Entre(0, 1) != 0;
    fiche.montants = ChaineMontants(App(), LitCompte("6132"), Montant());
    (void)EnregistreFiche(App(), fiche);
  }
  void Echoit() {
    Magasin().FixeAujourdhui(Jour());
    BilanEcheances bilan;
    EXPECT_FALSE(CalculeEcheances(App(), bilan));
    std::vector<EcheanceAnnoncee> annoncees;
    if (!ListeAnnoncees(App(), annoncees) && !annoncees.empty())
      (void)ConfirmeEcheances(App(), annoncees, {0}, bilan);
  }
  void ChangeLien() {
    RecetteLiee lien{};
    lien.LienPoste = 2;
    lien.LienA = static_cast<i32>(Entre(1, 9));
    lien.LienB = 0x10000u + 5;
    lien.LienId = 100 + static_cast<u32>(+lien.LienA);
    lien.Date = Jour();
    if (const Position position = Une(FichierRecettes); position && Entre(0, 1))
      return (void)Magasin().DeleteRecettes(position);
    EcrSimple rec = Simple(JournalRecettes, lien.Date, "706", Montant(), "512");
    rec.LienA = lien.LienA;
    rec.LienB = lien.LienB;
    rec.LienId = lien.LienId;
    rec.LienPoste = lien.LienPoste;
    rec.LienApplication = static_cast<i16>(App().Edition);
    QVAPI::Unite unite(Magasin());
    EXPECT_TRUE(Magasin().WriteRecettes(lien) && Magasin().AddEcrSimple(Exercice(), rec));
    EXPECT_TRUE(unite.Valide());
  }
  void ChangeFrais() {
    FicheFraisKm fiche = LitFraisKm(App());
    fiche.compteur = false;
    fiche.kms = std::to_string(Entre(1000, 30000));
    fiche.taux = {"0,5", "0,4", "0,3"};
    bool supprimees = false;
    (void)EnregistreFraisKm(App(), fiche, supprimees);
  }
  void ChangeReglage() {
    QVAPI::Unite unite(Magasin());
    Saisit();
    App().Reglages.EcritIni("Essai", "Compteur", std::to_string(Entre(1, 99)));
    EXPECT_TRUE(unite.Valide());
  }

  void UneCommande() {
    const u32 un = UnMouvement();
    const std::function<void()> commandes[] = {
        [&] { Modifie(); },
        [&] { SaisitOD(); },
        [&] { Plusieurs(); },
        [&] { (void)SupprimeEcriture(App(), un); },
        [&] {
          (void)SupprimeEcritures(App(), {un, UnMouvement()});
        },
        [&] {
          (void)PointeEcritures(App(), {un, UnMouvement()});
        },
        [&] {
          (void)DeplaceEcritures(App(), {un, UnMouvement()}, Entre(1, 12));
        },
        [&] { (void)RapprocheEcriture(App(), un, Entre(0, 1) != 0); },
        [&] { Renumerote(un); },
        [&] { Vire(); },
        [&] { Restaure(); },
        [&] { Importe(); },
        [&] { SaisitOperation(); },
        [&] { Rapproche(); },
        [&] { RapprocheALaMain(); },
        [&] { Remet(); },
        [&] { (void)SupprimeOperation(App(), Une(FichierBanques), true); },
        [&] { ChangeCompte(); },
        [&] { ChangeRubrique(); },
        [&] { ChangeTaxe(); },
        [&] { ChangeBien(); },
        [&] { ChangeModele(); },
        [&] { Echoit(); },
        [&] { ChangeLien(); },
        [&] { ChangeFrais(); },
        [&] { ChangeReglage(); },
        [&] {
          (void)EcritLibelles(App(), {"Libelle " + std::to_string(Entre(1, 99)), "Autre"});
        },
    };
    m_genre = Entre(0, 31);
    m_genre < std::size(commandes) ? commandes[m_genre]() : Saisit();
  }

  unsigned m_genre = 0;
  std::mt19937 m_hasard{[] {
    const char* graine = std::getenv("FENLOR_GRAINE");
    return graine ? static_cast<unsigned>(std::strtoul(graine, nullptr, 10)) : 20261122u;
  }()};
};

TEST_F(Hasard, ToutRevientOctetPourOctet) {
  std::vector<std::string> libelles;
  ASSERT_FALSE(LitLibelles(App(), libelles));
  // Held open, as windows do: a file is made before a unit begins.
  std::vector<Ouverture> tenus;
  for (const DefinitionFichier& def : Definitions()) tenus.emplace_back(Magasin(), def.numero);
  const char* voulus = std::getenv("FENLOR_PAS");
  std::map<unsigned, unsigned> faites;
  unsigned reprises = 0;
  // The naive model: a copy at each step; of a command of several units none between them.
  std::vector<std::string> pas{Export()};
  std::size_t ici = 0;
  const auto reprend = [&](Sens sens) {
    const std::string nom = Nom(sens);
    ASSERT_EQ(Fais(sens), 0u) << nom;
    ASSERT_EQ(Nom(sens == Sens::Annuler ? Sens::Retablir : Sens::Annuler), nom);
    ici += sens == Sens::Annuler ? -1 : 1;
    ++reprises;
    ASSERT_TRUE(pas[ici].empty() || Export() == pas[ici]) << nom << ", step " << ici;
  };
  for (unsigned n = voulus ? static_cast<unsigned>(std::strtoul(voulus, nullptr, 10)) : 400; n > 0; --n) {
    if (Entre(0, 3) != 0) {
      const u64 version = Magasin().QVVersionReprises();
      UneCommande();
      const std::size_t unites = Magasin().QVVersionReprises() - version;
      if (unites == 0) continue;
      pas.resize(ici + unites);
      pas.push_back(Export());
      std::fill(pas.begin() + static_cast<long>(ici) + 1, pas.end() - 1, std::string());
      ici += unites;
      ++faites[m_genre];
      continue;
    }
    for (unsigned fois = Entre(1, 12); fois > 0 && ici > 0; --fois)
      ASSERT_NO_FATAL_FAILURE(reprend(Sens::Annuler));
    for (unsigned fois = Entre(0, 12); fois > 0 && ici + 1 < pas.size(); --fois)
      ASSERT_NO_FATAL_FAILURE(reprend(Sens::Retablir));
  }
  EXPECT_GE(faites.size(), 27u) << "kinds of commands that changed something";
  EXPECT_GT(reprises, 100u);
  while (ici > 0) {
    ASSERT_EQ(Fais(Sens::Annuler), 0u);
    --ici;
  }
  EXPECT_TRUE(Export() == pas[0]);
  for (const DefinitionFichier& def : Definitions()) {
    const EtatFichier etat = Magasin().QVVerifie(def.numero);
    EXPECT_TRUE(etat.anomalies.empty()) << def.nom << ": " << etat.anomalies[0];
  }
}

/// What a run that may be killed tells before each step: the state it stands in, and the one it goes to where
/// that is known.
struct Annonce {
  std::size_t ici = 0, la = 0;
};

TEST_F(Hasard, UneMortNeLaisseRienAMoitieRepris) {
  const char* voulues = std::getenv("FENLOR_MORTS");
  const unsigned morts = voulues ? static_cast<unsigned>(std::strtoul(voulues, nullptr, 10)) : 12;
  const auto etat = [this] { return std::hash<std::string>()(Export()); };
  Export();  // makes the files
  unsigned pendant = 0;
  for (unsigned tuees = 0; tuees < morts || pendant < morts / 4; ++tuees) {
    Magasin().QVCloseSession();
    int tube[2];
    ASSERT_EQ(pipe(tube), 0);
    const pid_t enfant = fork();
    if (enfant == 0) {
      m_hasard.seed(tuees);
      if (!Rouvre()) _exit(1);
      SuitReprises(App());
      std::vector<Ouverture> tenus;
      for (const DefinitionFichier& def : Definitions()) tenus.emplace_back(Magasin(), def.numero);
      for (std::vector<std::size_t> pas{etat()};;) {
        const u64 version = Magasin().QVVersionReprises();
        const bool reprend = pas.size() > 1 && Entre(0, 1) != 0;
        const Annonce annonce{pas.back(), reprend ? pas[pas.size() - 2] : 0};
        if (write(tube[1], &annonce, sizeof annonce) != sizeof annonce) _exit(1);
        if (!reprend) UneCommande();
        if (reprend && Fais() != 0) _exit(1);
        const u64 unites = Magasin().QVVersionReprises() - version;
        if (reprend) pas.pop_back();
        if (reprend || unites == 0) continue;
        if (unites > 1) pas.clear();  // nobody knows what stood between them
        pas.push_back(etat());
      }
    }
    close(tube[1]);
    Annonce annonce, derniere;
    ASSERT_EQ(read(tube[0], &derniere, sizeof derniere), ssize_t{sizeof derniere}) << "the run did not begin";
    usleep(Entre(1, 150) * 1000);
    kill(enfant, SIGKILL);
    int fin = 0;
    waitpid(enfant, &fin, 0);
    ASSERT_TRUE(WIFSIGNALED(fin)) << "it ended by itself";
    while (read(tube[0], &annonce, sizeof annonce) == ssize_t{sizeof annonce}) derniere = annonce;
    close(tube[0]);
    ASSERT_TRUE(Rouvre());
    EXPECT_EQ(Nom(), "") << "images of a session that is gone";
    const std::size_t present = etat();
    if (derniere.la != 0) {
      ++pendant;
      ASSERT_TRUE(present == derniere.ici || present == derniere.la) << "after " << tuees << " kills";
    }
    for (const DefinitionFichier& def : Definitions()) {
      const Ouverture ouverture(Magasin(), def.numero);
      ASSERT_TRUE(Magasin().QVVerifie(def.numero).anomalies.empty()) << def.nom;
    }
  }
}

}  // namespace
}  // namespace fenlor::test

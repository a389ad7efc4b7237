#include "outils/cabinetdetest.h"

#include <stdlib.h>

#include <fstream>
#include <sstream>

#include "core/btfiles.h"
#include "core/valeurs.h"
#include "store/fichierdat.h"

namespace fenlor::test {

DossierTemporaire::DossierTemporaire(bool enMemoire) {
  const std::filesystem::path memoire = "/dev/shm";
  const bool la = enMemoire && std::filesystem::is_directory(memoire);
  m_chemin = ((la ? memoire : std::filesystem::temp_directory_path()) / "fenlor-test-XXXXXX").string();
  if (!mkdtemp(m_chemin.data())) std::abort();
}

DossierTemporaire::~DossierTemporaire() {
  std::error_code erreur;
  std::filesystem::remove_all(m_chemin, erreur);
}

void DialogueScript::Erreur(unsigned numero, const std::string& texte) {
  Erreurs.push_back({numero, texte, 0, 0});
}

int DialogueScript::Message(unsigned style, unsigned numero, const std::string& texte) {
  int reponse = Defaut;
  if (!Reponses.empty()) {
    reponse = Reponses.front();
    Reponses.pop_front();
  } else if (reponse == 0) {
    switch (style & 15) {
      case BoutonsOk:
        reponse = RepOk;
        break;
      case BoutonsReessayerAbandonnerIgnorer:
        reponse = RepAbandonner;
        break;
      case BoutonsOuiNon:
        reponse = RepNon;
        break;
      default:
        reponse = RepAnnuler;
    }
  }
  Questions.push_back({numero, texte, style, reponse});
  return reponse;
}

void DialogueScript::OuvreProgress(const std::string& titre, const std::string& texte, bool annulable,
                                   u32 maximum) {
  if (Profondeur++ > 0) return;
  ++Ouvertures;
  Titre = titre;
  Annulable = annulable;
  Maximum = maximum;
  Place = 0;
  Textes.push_back(texte);
}

void DialogueScript::FermeProgress() {
  ASSERT_GT(Profondeur, 0u) << "progress closed more often than opened";
  --Profondeur;
}

void DialogueScript::SetMax(u32 maximum) {
  Maximum = maximum;
  ++NbMaximum;
}

bool DialogueScript::IsAborted() { return ArretApres >= 0 && NbArrets++ >= ArretApres; }

std::vector<unsigned> DialogueScript::NumerosErreurs() const {
  std::vector<unsigned> numeros;
  for (const Echange& e : Erreurs) numeros.push_back(e.numero);
  return numeros;
}

std::vector<unsigned> DialogueScript::NumerosQuestions() const {
  std::vector<unsigned> numeros;
  for (const Echange& e : Questions) numeros.push_back(e.numero);
  return numeros;
}

void DialogueScript::Oublie() {
  Erreurs.clear();
  Questions.clear();
  Textes.clear();
  Ouvertures = NbMaximum = 0;
  NbArrets = 0;
}

CabinetDeTest::CabinetDeTest(Cles cles, std::size_t tailleReprise, Systeme* systeme)
    : m_typeCles(cles), m_tailleReprise(tailleReprise), m_systeme(systeme) {
  EXPECT_TRUE(Ouvre());
}

CabinetDeTest::~CabinetDeTest() {
  m_app.reset();
  EXPECT_TRUE(m_magasin->QVCloseSession());
}

bool CabinetDeTest::Ouvre() {
  OptionsQVAPI options;
  options.systeme = m_systeme;
  if (m_typeCles == Cles::Memoire)
    options.cles = &m_memoire;
  else
    options.cles = &m_lmdb;
  options.tailleReprise = m_tailleReprise;
  options.dossierRegistre = Dossier() + "/registre";
  options.dossierRegistreMachine = Dossier() + "/registre-machine";
  m_magasin = std::make_unique<QVAPI>(options);
  m_app = std::make_unique<CFenlorApp>(*m_magasin, Boite);
  m_magasin->FixeAujourdhui(FaitDate(15, 3, 2003));
  m_magasin->QVSetCallback([this](u32 evenement, u32 valeur, const std::string& texte) -> u32 {
    if (evenement == EvErreur) Boite.Erreur(valeur, texte);
    if (evenement == EvQuestion) return static_cast<u32>(Boite.Message(valeur, 0, texte));
    return evenement == EvQuestionRefusee ? RepNon : 1;
  });
  const std::string cabinet = Dossier() + "/cabinet";
  std::filesystem::create_directories(cabinet);
  m_app->PathCabinet = cabinet;
  return m_magasin->QVOpenSession(1) && m_magasin->QVOpenCompta(cabinet, {});
}

bool CabinetDeTest::Rouvre() {
  const std::string exercice = m_app->NomExercice;
  m_app.reset();
  const bool fermee = m_magasin->QVCloseSession();
  m_magasin.reset();
  return fermee && Ouvre() && (exercice.empty() || OuvreExercice(exercice));
}

bool CabinetDeTest::CreeExercice(const std::string& nom, bool euro, bool tva, Date debut, Date fin) {
  const auto annee = static_cast<unsigned>(TexteVersEntier(nom));
  if (debut == 0) debut = FaitDate(1, 1, annee);
  if (fin == 0) fin = FaitDate(31, 12, annee);
  return m_magasin->QVCreateExercice(nom, debut, fin, euro, tva) && OuvreExercice(nom);
}

bool CabinetDeTest::OuvreExercice(const std::string& nom) {
  if (!m_magasin->QVOpenExercice(nom)) return false;
  m_app->NomExercice = nom;
  m_app->PathExercice = m_magasin->PathExercice();
  m_app->ExerciceOuvert = 1;
  return true;
}

Plan CabinetDeTest::LitCompte(std::string_view compte) {
  CPlan plan(*m_app, m_app->PathExercice);
  PoseTexte(plan.Rec->Compte, QVAPI::GetLongCompte(std::string(compte)));
  if (plan.OpenFile() && plan.Find(0)) return *plan.Rec;
  Plan absent{};
  absent.Type = -1;
  return absent;
}

bool CabinetDeTest::PoseCompte(std::string_view compte, i16 type, std::string_view code,
                               std::string_view designation, i16 typeTresorerie) {
  CPlan plan(*m_app, m_app->PathExercice);
  PoseTexte(plan.Rec->Compte, QVAPI::GetLongCompte(std::string(compte)));
  PoseTexte(plan.Rec->Code, code);
  PoseTexte(plan.Rec->Designation, designation.empty() ? compte : designation);
  plan.Rec->Type = type;
  plan.Rec->TypeTresorerie = typeTresorerie;
  plan.Rec->PartPro = 100;
  return plan.OpenFile() && plan.Add();
}

void CabinetDeTest::ChangeCompte(std::string_view compte, const std::function<void(Plan&)>& change) {
  CPlan plan(*m_app, m_app->PathExercice);
  Plan rec = LitCompte(compte);
  change(rec);
  *plan.Rec = rec;
  ASSERT_TRUE(plan.OpenFile() && plan.Add()) << compte;
}

void CabinetDeTest::ChangeLignes(u32 mouvement, const std::function<void(Line&)>& change) {
  for (const Position position : Magasin().LignesMouvement(App().PathExercice, mouvement)) {
    Line ligne;
    ASSERT_TRUE(Magasin().ReadLines(App().PathExercice, position, ligne));
    change(ligne);
    ASSERT_TRUE(Magasin().UpdateLines(App().PathExercice, position, ligne));
  }
}

std::vector<Line> CabinetDeTest::Lignes(u32 mouvement) {
  std::vector<Line> lignes;
  for (const Position position : m_magasin->LignesMouvement(m_app->PathExercice, mouvement)) {
    Line ligne{};
    EXPECT_TRUE(m_magasin->ReadLines(m_app->PathExercice, position, ligne));
    lignes.push_back(ligne);
  }
  return lignes;
}

EcrSimple CabinetDeTest::Simple(i16 journal, Date date, std::string_view compte, f64 montant,
                                std::string_view tresorerie, std::string_view libelle) {
  const f64 franc = QVAPI::ConvertEuroToFranc(m_magasin->GetTauxEuro(date), montant);
  EcrSimple rec{};
  rec.Journal = journal;
  rec.Genre = GenreSimple;
  rec.Date = date;
  rec.SaisieEuro = 1;
  rec.EstRecette = journal == JournalRecettes;
  PoseTexte(rec.Libelle, libelle);
  PoseTexte(rec.Compte, QVAPI::GetLongCompte(std::string(compte)));
  PoseTexte(rec.CompteTresorerie, QVAPI::GetLongCompte(std::string(tresorerie)));
  rec.MontantEuro = rec.RepartitionEuro = montant;
  rec.MontantFranc = rec.RepartitionFranc = franc;
  rec.Ligne = m_magasin->GetFreeJournalLine(m_app->PathExercice, static_cast<u16>(journal),
                                            rec.CompteTresorerie, date);
  return rec;
}

u32 CabinetDeTest::AjouteSimple(i16 journal, Date date, std::string_view compte, f64 montant,
                                std::string_view tresorerie, std::string_view libelle) {
  EcrSimple rec = Simple(journal, date, compte, montant, tresorerie, libelle);
  return m_magasin->AddEcrSimple(m_app->PathExercice, rec);
}

std::string LitFichier(const std::string& chemin) {
  std::ostringstream contenu;  // by its buffer: byte by byte it was half of the power cuts' time
  contenu << std::ifstream(chemin, std::ios::binary).rdbuf();
  return std::move(contenu).str();
}

void EcritFichier(const std::string& chemin, const std::string& contenu) {
  std::ofstream flux(chemin, std::ios::binary | std::ios::trunc);
  flux.write(contenu.data(), static_cast<std::streamsize>(contenu.size()));
  ASSERT_TRUE(flux.good());
}

void OteSommes(const std::string& chemin) {
  if (std::filesystem::is_directory(chemin)) {
    for (const auto& entree : std::filesystem::recursive_directory_iterator(chemin))
      if (entree.path().extension() == ".dat" && entree.path().filename() != "TEXTES.dat")
        OteSommes(entree.path().string());
    return;
  }
  const std::string contenu = LitFichier(chemin);
  std::string ancien = contenu.substr(0, DebutEmplacements);
  EnteteDat entete;
  for (const std::size_t copie : {0, 512}) {
    u8* octets = reinterpret_cast<u8*>(ancien.data() + copie);
    ASSERT_TRUE(FichierDat::Decode(octets, entete)) << chemin;
    const u32 pas = entete.Pas();
    entete.version = 1;
    FichierDat::Code(entete, octets);
    if (copie == 0) continue;
    for (u64 place = DebutEmplacements; place < contenu.size(); place += pas)
      ancien.append(contenu, place, entete.taille);
  }
  EcritFichier(chemin, ancien);
}

}  // namespace fenlor::test

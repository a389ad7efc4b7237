// Session, clock, unit of work and messages of the store.

#include "store/qvapi.h"

#include <cassert>
#include <cstdlib>
#include <ctime>

#include "store/etat.h"
#include "store/exercices.h"
#include "store/motdepasse.h"
#include "store/texte1252.h"

namespace fenlor {

QVAPI::QVAPI(OptionsQVAPI options) : m_etat(std::make_unique<EtatQVAPI>()) {
  m_etat->options = std::move(options);
  if (m_etat->options.systeme) m_etat->garde = std::make_unique<SystemeGarde>(*m_etat->options.systeme);
  m_etat->systeme = m_etat->garde.get();
  if (!m_etat->options.cles) m_etat->options.cles = &m_etat->cleLmdb;
  m_etat->moteur =
      std::make_unique<Moteur>(*m_etat->systeme, *m_etat->options.cles, m_etat->options.tailleReprise);
}

QVAPI::~QVAPI() { QVCloseSession(); }

bool QVAPI::QVOpenSession(i32 version) {
  if (version != 1) return m_etat->Refuse(ErrValeur);
  return m_etat->session = true;
}

bool QVAPI::QVCloseSession() {
  if (!m_etat->session) return true;
  QVCloseExercice();
  const bool bien = m_etat->moteur->FermeCabinet();
  m_etat->garde->Garde({});
  m_etat->ouvertures.clear();
  m_etat->plats.clear();
  m_etat->lignesTresor.clear();
  m_etat->reglages.reset();
  m_etat->session = false;
  return bien;
}

void QVAPI::QVSetPathProgrammes(const std::string& chemin) { m_etat->pathProgrammes = chemin; }
void QVAPI::QVSetPathCabinet(const std::string& chemin) { m_etat->pathCabinetImpose = chemin; }
void QVAPI::QVSetNomCabinet(const std::string& texte) { m_etat->nomCabinet = texte; }
void QVAPI::QVSetUserCabinet(const std::string& texte) { m_etat->userCabinet = texte; }
void QVAPI::QVSetWithQuorbane(bool avec, u16 edition) {
  m_etat->avecQuorbane = avec;
  m_etat->edition = edition;
}
void QVAPI::QVSetCallback(RappelMagasin rappel) { m_etat->rappel = std::move(rappel); }
bool QVAPI::QVHasCallback() const { return static_cast<bool>(m_etat->rappel); }

namespace {

std::unique_ptr<Profil> ReglagesDe(EtatQVAPI& etat, const std::string& dossier) {
  auto reglages =
      std::make_unique<Profil>(*etat.systeme, Joint(dossier, FichierReglages), true, &etat.instant);
  reglages->Suit([&etat](const std::string& section, const std::string& cle, const std::string& avant,
                         const std::string& apres) {
    etat.moteur->RetientReglage({section, cle, avant, apres});
  });
  return reglages;
}

/// Told once, and before the settings are written the first time: they are then vouched for again.
void DitReglagesModifies(EtatQVAPI& etat) {
  const std::string& chemin = etat.reglages->Chemin();
  if (!etat.modifiesDits.contains(chemin) && etat.reglages->ModifieAilleurs()) etat.DitModifie(chemin);
}

std::string LitMotDePasse(Profil& reglages) { return reglages.Lit("Activite", "Mot de Passe"); }

}  // namespace

bool QVAPI::QVIsComptaPassword(const std::string& chemin) {
  const std::string& dossier = m_etat->pathCabinetImpose.empty() ? chemin : m_etat->pathCabinetImpose;
  Profil reglages(*m_etat->systeme, Joint(dossier, FichierReglages));
  return MotDePasseDefini(LitMotDePasse(reglages));
}

bool QVAPI::QVReserveCabinet(const std::string& chemin) {
  if (!m_etat->session) return m_etat->Refuse(ErrPasOuvert);
  const std::string& dossier = m_etat->pathCabinetImpose.empty() ? chemin : m_etat->pathCabinetImpose;
  if (m_etat->moteur->EstOuvert()) return m_etat->pathCabinet == dossier || m_etat->Refuse(ErrOccupe);
  m_etat->garde->Garde({});
  if (!m_etat->moteur->ReserveCabinet(dossier)) return false;
  if (QVEnLecture()) m_etat->garde->Garde(dossier);
  m_etat->pathCabinet = dossier;
  m_etat->reglages = ReglagesDe(*m_etat, dossier);
  DitReglagesModifies(*m_etat);
  return true;
}

bool QVAPI::QVOpenCompta(const std::string& chemin, const std::string& motDePasse) {
  if (!m_etat->session) return m_etat->Refuse(ErrPasOuvert);
  const std::string& dossier = m_etat->pathCabinetImpose.empty() ? chemin : m_etat->pathCabinetImpose;
  auto reglages = ReglagesDe(*m_etat, dossier);
  const std::string stocke = LitMotDePasse(*reglages);
  if (reglages->Erreur()) return m_etat->Refuse(reglages->Erreur(), reglages->Chemin());
  if (!MotDePasseJuste(stocke, motDePasse)) return m_etat->Refuse(ErrMotDePasse);
  if (m_etat->moteur->EstOuvert()) {
    if (m_etat->pathCabinet == dossier) return true;
    if (!QVCloseSession()) return false;
    m_etat->session = true;
  }
  if (!m_etat->moteur->OuvreCabinet(dossier, m_etat->options.reparation)) return false;
  m_etat->pathCabinet = dossier;
  m_etat->reglages = std::move(reglages);
  DitReglagesModifies(*m_etat);
  if (QVEnLecture()) {
    m_etat->garde->Garde(dossier);
    QVAvertit(
        "Le cabinet " + dossier +
        " est sur un disque ou dans un dossier protégé en écriture : il est ouvert en lecture seule, et "
        "rien ne peut y être enregistré.");
    return true;
  }
  if (AcheveReprise(*m_etat) && AcheveExercices(*m_etat)) return true;
  const int code = QVFileErrorCode();
  const std::string fautif = QVFichierErreur();
  m_etat->moteur->FermeCabinet();
  return m_etat->Refuse(code, fautif);
}

bool QVAPI::QVEnLecture() const { return m_etat->moteur->EnLecture(); }
std::string QVAPI::QVDetenteur() const { return m_etat->moteur->Detenteur(); }

std::string QVAPI::QVGetFilename(i32 numero, i32) const {
  return numero == 10099 && !m_etat->pathCabinet.empty() ? Joint(m_etat->pathCabinet, FichierReglages)
                                                         : std::string();
}

const std::string& QVAPI::PathCabinet() const { return m_etat->pathCabinet; }
const std::string& QVAPI::PathProgrammes() const { return m_etat->pathProgrammes; }

Profil& QVAPI::Reglages() {
  if (!m_etat->reglages) m_etat->reglages = ReglagesDe(*m_etat, m_etat->pathCabinet);
  return *m_etat->reglages;
}

Systeme& QVAPI::SystemeFichiers() { return *m_etat->systeme; }

namespace {

std::tm HeureLocale() {
  const std::time_t maintenant = std::time(nullptr);
  std::tm local{};
  localtime_r(&maintenant, &local);
  return local;
}

}  // namespace

Date QVAPI::Today() const {
  if (m_etat->aujourdhuiFixe) return m_etat->aujourdhuiFixe;
  if (const char* texte = std::getenv("FENLOR_AUJOURDHUI")) {
    const Date date = GetDate(texte);
    if (IsDateOk(date)) return date;
  }
  const std::tm local = HeureLocale();
  return FaitDate(static_cast<unsigned>(local.tm_mday), static_cast<unsigned>(local.tm_mon + 1),
                  static_cast<unsigned>(local.tm_year + 1900));
}

Heure QVAPI::Now() const {
  const std::tm local = HeureLocale();
  return static_cast<Heure>(local.tm_hour << 8 | local.tm_min);
}

void QVAPI::FixeAujourdhui(Date date) { m_etat->aujourdhuiFixe = date; }

QVAPI::Instant::Instant(QVAPI& magasin) : m_magasin(magasin) {
  EtatQVAPI& etat = *m_magasin.m_etat;
  if (etat.emboites++ == 0) etat.instant = ++etat.instants;
}

QVAPI::Instant::~Instant() {
  assert(m_magasin.m_etat->emboites > 0);
  if (--m_magasin.m_etat->emboites == 0) m_magasin.m_etat->instant = 0;
}

QVAPI::Unite::Unite(QVAPI& magasin, const std::string& nom) : m_magasin(magasin), m_instant(magasin) {
  m_magasin.m_etat->moteur->DebutUnite();
  if (!nom.empty()) m_magasin.m_etat->moteur->NommeUnite(nom);
}

void QVAPI::Unite::SansRetour() { m_magasin.m_etat->moteur->SansRetour(); }

QVAPI::Unite::~Unite() {
  if (!m_fini) m_magasin.m_etat->moteur->AnnuleUnite();
}

bool QVAPI::Unite::Valide() {
  if (m_fini) return m_magasin.m_etat->Refuse(ErrValeur);
  m_fini = true;
  return m_magasin.m_etat->moteur->ValideUnite();
}

void QVAPI::QVSuitChangements(std::function<void(const Changements&)> suite) {
  m_etat->moteur->SuitChangements(std::move(suite));
}
void QVAPI::QVNoteChangement(NumeroFichier numero) { m_etat->moteur->NoteChangement(numero); }
bool QVAPI::QVEnUnite() const { return m_etat->moteur->Profondeur() > 0; }

bool QVAPI::QVFlush() { return m_etat->moteur->Vidange(); }
u64 QVAPI::NbSynchros() const { return m_etat->moteur->NbSynchros(); }

int QVAPI::QVFileErrorCode() const { return m_etat->moteur->Erreur(); }
std::string QVAPI::QVFichierErreur() const { return m_etat->moteur->FichierErreur(); }
std::string QVAPI::QVEchecTexte() const {
  const std::string texte = QVErreurTexte(QVFileErrorCode()), fichier = QVFichierErreur();
  return fichier.empty() ? texte : texte + " : " + DepuisUtf8(fichier).value_or(fichier);
}
void QVAPI::PoseErreur(int code) { m_etat->Refuse(code); }

void QVAPI::QVAvertit(const std::string& phrase) { m_etat->moteur->Avertit(phrase); }

std::vector<std::string> QVAPI::AvertissementsMagasin() {
  std::vector<std::string> phrases = m_etat->moteur->Avertissements();
  for (std::string& phrase : phrases) phrase = DepuisUtf8(phrase).value_or(phrase);
  return phrases;
}

std::string QVAPI::QVErreurTexte(int code) const {
  switch (code) {
    case ErrAucune:
      return "Aucune erreur"_w;
    case ErrPasOuvert:
      return "Le fichier n'est pas ouvert"_w;
    case ErrEndommage:
      return "Le fichier est endommagé"_w;
    case ErrFormat:
      return "Ce n'est pas un fichier de Fenlor, ou il est d'une autre version"_w;
    case ErrPosition:
      return "Il n'y a pas d'enregistrement à cet endroit"_w;
    case ErrCleDouble:
      return "La clé existe déjà"_w;
    case ErrCleAbsente:
      return "La clé n'existe pas"_w;
    case ErrOccupe:
      return "Le cabinet est déjà ouvert"_w;
    case ErrCompteAbsent:
      return "Un compte de l'écriture n'existe pas"_w;
    case ErrEcritureAbsente:
      return "L'écriture n'existe pas"_w;
    case ErrEcritureVide:
      return "L'écriture n'a pas de montant"_w;
    case ErrValeur:
      return "Une valeur est hors de ses limites"_w;
    case ErrMotDePasse:
      return "Mot de passe erroné !"_w;
    case ErrExistant:
      return "L'exercice existe déjà"_w;
    case ErrConflit:
      return "La période est en conflit avec un autre exercice"_w;
    case ErrJournalReprise:
      return "Le journal de reprise est endommagé"_w;
    case ErrModele:
      return "Le modèle \"defaut.qvc\" est illisible"_w;
    case ErrCompteurMouvement:
      return "Le compteur \"Mouvement\" est épuisé : l'exercice n'a plus de numéro d'écriture libre"_w;
    case ErrCompteurImmo:
      return "Le compteur des immobilisations est épuisé : il n'y a plus de numéro libre"_w;
    case ErrRetour:
      return "Ces données ont été modifiées depuis"_w;
    case ErrRetourAncien:
      return "trop d'opérations ont été enregistrées depuis"_w;
    case ErrRetourGrand:
      return "elle change trop de données"_w;
    case ErrAltere:
      return "Un autre programme a supprimé, remplacé ou raccourci le fichier"_w;
    case ErrLectureSeule:
      return TexteLectureSeule();
    case ErrSuspens:
      return "La dernière session de ce cabinet ne s'est pas terminée, et il ne peut pas être remis en ordre "
             "sur "
             "un disque ou dans un dossier protégé en écriture. Copiez son dossier là où l'on peut écrire, "
             "et "
             "ouvrez la copie"_w;
    case ErrTenu:
      return "Une autre session de Fenlor tient ce fichier, bien que son verrou ait été supprimé : fermez-la "
             "d'abord"_w;
    case ErrCles:
      return "Le fichier de clés est endommagé"_w;
    default:
      return code > 0 && code < 1000 ? TexteErreurSysteme(code) : "Erreur "_w + std::to_string(code);
  }
}

}  // namespace fenlor

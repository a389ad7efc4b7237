#include "session/lancement.h"

#include <algorithm>
#include <cassert>
#include <filesystem>

#include "core/cles.h"
#include "core/valeurs.h"
#include "journal/textes.h"
#include "master/textes.h"
#include "session/textes.h"
#include "store/motdepasse.h"
#include "store/systeme.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::string_view LettresTexte = "CDFPSU", LettresChemin = "DFP", LettresConnues = "CDFHPSU";

bool Blanc(std::string_view texte) {
  return std::all_of(texte.begin(), texte.end(), [](unsigned char c) { return c <= 32; });
}

bool EstLettre(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool EstChiffre(char c) { return c >= '0' && c <= '9'; }

void PoseTexte(ArgumentsLancement& ligne, char lettre, std::string_view texte) {
  assert(LettresTexte.find(lettre) != std::string_view::npos);
  if (Blanc(texte)) return;
  std::string valeur(texte);
  switch (lettre) {
    case 'C':
      ligne.nomCabinet = std::move(valeur);
      break;
    case 'D':
      ligne.pathCabinet = std::move(valeur);
      break;
    case 'F':
      ligne.pathMagasin = std::move(valeur);
      break;
    case 'P':
      ligne.pathProgrammes = std::move(valeur);
      break;
    case 'S':
      ligne.edition = std::move(valeur);
      break;
    case 'U':
      ligne.utilisateur = std::move(valeur);
      break;
    default:
      break;
  }
}

/// Looks for digits from `debut` on, up to the next switch; behind them, or `debut`
/// when there are none.
std::size_t LitNombre(ArgumentsLancement& ligne, std::string_view texte, std::size_t debut) {
  assert(debut <= texte.size());
  std::size_t i = debut;
  while (i < texte.size() && !EstChiffre(texte[i])) {
    if (texte[i] == '/' || texte[i] == '-') return debut;
    ++i;
  }
  if (i == texte.size()) return debut;
  u64 valeur = 0;
  for (; i < texte.size() && EstChiffre(texte[i]); ++i)
    valeur = valeur * 10 + static_cast<u64>(texte[i] - '0');
  ligne.parent = valeur;
  return i;
}

/// A word that is a line of its own: `/D "path" /H 12`.
void LitMot(ArgumentsLancement& ligne, std::string_view mot) {
  assert(!mot.empty());
  for (std::size_t i = mot.find('/'); i < mot.size(); i = mot.find('/', i)) {
    if (++i == mot.size()) return;
    const char lettre = Majuscule(mot[i]);
    if (!EstLettre(lettre)) continue;
    ++i;
    if (lettre == 'H') {
      i = LitNombre(ligne, mot, i);
    } else if (LettresTexte.find(lettre) != std::string_view::npos) {
      const std::size_t ouvre = mot.find_first_not_of(' ', i);
      if (ouvre == std::string_view::npos || mot[ouvre] != '"') continue;
      const std::size_t ferme = std::min(mot.find('"', ouvre + 1), mot.size());
      PoseTexte(ligne, lettre, mot.substr(ouvre + 1, ferme - ouvre - 1));
      i = std::min(ferme + 1, mot.size());
    }
  }
}

bool EstCommutateur(std::string_view mot) { return mot.size() == 2 && mot[0] == '/' && EstLettre(mot[1]); }

/// A word without a switch of its own: one number or one quoted text, or a line of them.
bool EstLigne(std::string_view mot) {
  if (mot.find('"') != std::string_view::npos) return true;
  return mot.size() > 2 && Majuscule(mot[1]) == 'H' && EstChiffre(mot[2]);
}

/// The full path of a folder, empty when the word names none.
std::string CheminDossier(const std::string& mot) {
  std::error_code erreur;
  if (!std::filesystem::is_directory(mot, erreur)) return {};
  return std::filesystem::canonical(mot, erreur).string();
}

std::string En1252(const std::string& utf8) { return DepuisUtf8(utf8).value_or(utf8); }

const TexteFixe& CleParent(const CFenlorApp& app) {
  if (!app.WithQuorbane) return CleRegistreFenlor;
  switch (app.Edition) {
    case 3:
      return CleRegistreTessamaris;
    case 1:
    case 4:
      return CleRegistreQuorbaneSpeciale;
    default:
      return CleRegistreQuorbane;
  }
}

}  // namespace

ArgumentsLancement LitLigneCommande(const std::vector<std::string>& arguments) {
  ArgumentsLancement ligne;
  std::string dossier;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& mot = arguments[i];
    const bool suite = i + 1 < arguments.size();
    if (mot == "--help" || mot == "-h") {
      ligne.aide = true;
    } else if (mot == "--version") {
      ligne.version = true;
    } else if (mot == "--sans-accueil") {
      ligne.sansAccueil = true;
    } else if (EstCommutateur(mot) && LettresConnues.find(Majuscule(mot[1])) != std::string_view::npos) {
      const char lettre = Majuscule(mot[1]);
      if (lettre == 'H') {
        if (suite && LitNombre(ligne, arguments[i + 1], 0) != 0) ++i;
      } else if (suite) {
        PoseTexte(ligne, lettre, arguments[++i]);
      }
    } else if (mot.size() > 2 && mot[0] == '/' && mot[2] == '/' &&
               LettresChemin.find(Majuscule(mot[1])) != std::string_view::npos) {
      PoseTexte(ligne, Majuscule(mot[1]), std::string_view(mot).substr(2));
    } else if (mot.starts_with('/') && EstLigne(mot)) {
      LitMot(ligne, mot);
    } else if (std::string chemin = CheminDossier(mot); !chemin.empty() && dossier.empty()) {
      dossier = std::move(chemin);
    } else {
      ligne.inconnus.push_back(mot);
    }
  }
  if (!dossier.empty() && (ligne.pathCabinet || ligne.pathMagasin)) ligne.inconnus.push_back(dossier);
  if (!dossier.empty() && !ligne.pathCabinet) ligne.pathCabinet = dossier;
  return ligne;
}

std::string AideLigneCommande() {
  return "Fenlor, la comptabilité des professions libérales\n"
         "\n"
         "Usage : fenlor [OPTION]... [DOSSIER]\n"
         "\n"
         "  DOSSIER       dossier du cabinet, comme /D\n"
         "  /D DOSSIER    dossier du cabinet : réglages, immobilisations, un sous-dossier par exercice\n"
         "  /P DOSSIER    dossier du programme : modèle des exercices, astuces\n"
         "  /F DOSSIER    dossier du cabinet imposé au magasin de données, avant celui de /D\n"
         "  /C TEXTE      nom du cabinet\n"
         "  /U TEXTE      utilisateur du cabinet\n"
         "  /S EDITION    application qui lance Fenlor : Quorbane, QVES, Tessamaris ou TMES\n"
         "  /H NUMERO     numéro de l'application qui lance Fenlor, prévenue de la fermeture\n"
         "  --sans-accueil  sans l'écran d'accueil\n"
         "  -h, --help    affiche cette aide\n"
         "  --version     affiche la version\n"
         "\n"
         "La lettre d'une option peut être majuscule ou minuscule. Sans dossier, c'est celui de la variable\n"
         "FENLOR_CABINET, sinon celui de l'utilisateur.\n"
         "Exemple : fenlor /D ~/Documents/cabinet\n";
}

void AppliqueLigneCommande(CFenlorApp& app, const ArgumentsLancement& ligne) {
  if (ligne.nomCabinet) app.Magasin.QVSetNomCabinet(En1252(*ligne.nomCabinet));
  if (ligne.pathCabinet) app.PathCabinet = *ligne.pathCabinet;
  if (ligne.pathMagasin) app.Magasin.QVSetPathCabinet(*ligne.pathMagasin);
  if (ligne.parent) app.ParentWindow = *ligne.parent;
  if (ligne.pathProgrammes) app.PathProgrammes = *ligne.pathProgrammes;
  if (ligne.utilisateur) app.Magasin.QVSetUserCabinet(En1252(*ligne.utilisateur));
  if (ligne.edition) {
    constexpr std::pair<const char*, u16> editions[] = {
        {"Quorbane", 0}, {"Tessamaris", 3}, {"QVES", 1}, {"TMES", 4}};
    app.Edition = 2;
    for (const auto& [mot, edition] : editions) {
      if (*ligne.edition != mot) continue;
      app.Edition = edition;
      app.WithQuorbane = true;
    }
  }
  if (!app.PathProgrammes.empty()) app.Magasin.QVSetPathProgrammes(app.PathProgrammes);
}

std::string DossierCabinetDefaut(const std::string& pathProgrammes, const std::string& xdgDataHome,
                                 const std::string& home) {
  std::error_code erreur;
  const bool absolu = xdgDataHome.starts_with('/');
  if (std::filesystem::exists(Joint(pathProgrammes, FichierReglages), erreur) || (!absolu && home.empty()))
    return pathProgrammes;
  return Joint(absolu ? xdgDataHome : Joint(home, ".local/share"), "fenlor/cabinet");
}

void LitVersionParent(CFenlorApp& app) {
  const std::string cle = Texte(CleParent(app)), nom = Texte(CleVersion);
  assert(!cle.empty() && !nom.empty());
  std::string version;
  if (!app.Magasin.QVGetRegString("HKEY_LOCAL_MACHINE", cle, "", nom, version) || EstVide(version)) {
    version = std::to_string(VersionProgramme) + "." + std::to_string(RevisionProgramme);
    if (version.back() == '0') version.pop_back();
    app.Magasin.QVSetRegString("HKEY_LOCAL_MACHINE", cle, "", nom, version);
  }
  app.ParentAncien = app.WithQuorbane && TexteVersMontant(version, app.Reglages.SeparateurDecimal()) < 5.0;
}

bool IsSpecialiteTessamaris(CFenlorApp& app) {
  std::string specialite;
  if (!app.Magasin.QVGetRegString("HKEY_CURRENT_USER", Texte(CleRegistreSesam), "", Texte(CleSpecialite),
                                  specialite))
    return false;
  const std::string liste = Texte(ListeSpecialites);
  for (unsigned n = 0; n < ComptePartie(liste, ','); ++n)
    if (TexteVersEntier(ChampTexte(n, liste, ',')) == TexteVersEntier(specialite)) return true;
  return false;
}

bool MigreReglages(CFenlorApp& app) {
  if (app.Magasin.QVEnLecture()) return true;
  const std::string section = Texte(SecFenlor);
  const int version = TexteVersEntier(app.Reglages.LitIni(section, Texte(CleVersion)));
  const int revision = TexteVersEntier(app.Reglages.LitIni(section, Texte(CleRevision)));
  Profil& profil = app.Magasin.Reglages();
  if (profil.Erreur() != 0) return false;

  std::vector<Profil::Changement> changements;
  if (version < 2)
    changements.push_back({Texte(SecActivite), Texte(CleMotDePasseCabinet), MotDePasseBrouille({})});
  if (version < 4 || (version == 4 && revision < 1)) {
    changements.push_back({Texte(SecBarreOutils), {}, std::nullopt});
    changements.push_back({Texte(SecBarreOutilsSummary), {}, std::nullopt});
    for (int i = 0; i <= 9; ++i)
      changements.push_back({TexteFormat(FormatSecBarreOutils, {std::to_string(i)}), {}, std::nullopt});
  }
  changements.push_back({section, Texte(CleVersion), std::to_string(VersionProgramme)});
  changements.push_back({section, Texte(CleRevision), std::to_string(RevisionProgramme)});
  changements.push_back({section, Texte(CleBuild), std::to_string(BuildProgramme)});
  assert(changements.size() >= 3);
  if (!profil.Ecrit(changements)) return false;
  if (version != 0 && version < 2) app.MessageId(BoutonsOk | IconeAttention, InfoMotDePasseSupprime);
  return true;
}

void DitAvertissements(CFenlorApp& app) {
  std::string texte;
  for (const std::string& phrase : app.Magasin.AvertissementsMagasin())
    texte += (texte.empty() ? "" : "\n") + phrase;
  if (!texte.empty()) app.Boite.Message(BoutonsOk | IconeAttention, 0, texte);
}

void LitTauxCourant(CFenlorApp& app) {
  std::string dernier;
  for (int n = 1;; ++n) {
    std::string ligne = app.Reglages.LitIni(Texte(SecTauxEuro), std::to_string(n));
    if (ligne.empty()) break;
    dernier = std::move(ligne);
  }
  if (!dernier.empty())
    app.TauxEuroCourant = TexteVersMontant(ChampTexte(1, dernier, '|'), app.Reglages.SeparateurDecimal());
}

std::string MessageParent(unsigned wparam, unsigned lparam) {
  return "2023 " + std::to_string(wparam) + " " + std::to_string(lparam);
}

RappelSession::RappelSession(CFenlorApp& app, Crochets crochets)
    : m_app(app), m_crochets(std::move(crochets)) {}

u32 RappelSession::operator()(u32 evenement, u32 valeur, const std::string& texte) {
  constexpr u32 arrete = 3;
  switch (evenement) {
    case EvDebut:
      if (m_profondeur++ == 0)
        m_progression = std::make_shared<Progression>(m_app.Boite, Texte(TexteTraitement), texte, true, 0u);
      return 1;
    case EvFin:
      if (m_profondeur != 0 && --m_profondeur == 0) m_progression.reset();
      return 1;
    case EvTexte:
      m_app.Boite.SetTexte(texte);
      return 1;
    case EvMaximum:
      m_app.Boite.SetMax(valeur);
      return 1;
    case EvProgres:
      m_app.Boite.SetPos(valeur);
      return (m_crochets.arret ? m_crochets.arret() : m_app.Boite.IsAborted()) ? arrete : 1;
    case EvErreur:
      m_app.Boite.Erreur(valeur, texte);
      return 1;
    case EvQuestion:
      return static_cast<u32>(m_app.Boite.Message(valeur, 0, texte));
    case EvExerciceAbsent:
      return ExerciceAbsent(valeur, texte);
    case EvQuestionRefusee:
      return RepNon;
    case 14:
    case 15:
      if (m_app.ParentWindow != 0 && m_crochets.parent) m_crochets.parent(ParentEvenement, evenement);
      return 1;
    default:
      return 1;
  }
}

u32 RappelSession::ExerciceAbsent(u32 valeur, const std::string& nom) {
  const u32 action = valeur >> 16;
  const bool recette = (valeur & 0xFFFF) == 1;
  if (action < 1 || action > 3) return RepNon;
  // Save, change, delete: of a receipt, then of an expense.
  const TexteFixe& question = QuestionRecetteSansExercice[2 * (action - 1) + (recette ? 0 : 1)];
  assert(question.numero != 0);
  if (m_app.MessageId(BoutonsOuiNon | IconeQuestion, question, {nom}) != RepOui) return RepNon;
  return m_crochets.creeExercice && m_crochets.creeExercice(nom) ? RepOui : RepNon;
}

}  // namespace fenlor

#include "garde/restauration.h"

#include <algorithm>
#include <cassert>
#include <cerrno>

#include "core/cles.h"
#include "core/erreurs.h"
#include "garde/communs.h"
#include "garde/restes.h"
#include "garde/textes.h"
#include "master/textes.h"
#include "session/exercices.h"
#include "session/verification.h"
#include "store/dates.h"
#include "store/definitions.h"
#include "store/exercices.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::size_t ConstatsMax = 100;
using CleValeur = std::pair<std::string, std::string>;

class Atelier {
 public:
  Atelier(Systeme& systeme, const std::string& cabinet)
      : m_systeme(systeme), m_dossier(Joint(cabinet, NomAtelier)) {
    OteAtelier(m_systeme, m_dossier);  // what an unclean stop left
  }
  ~Atelier() {
    m_fichier.reset();
    OteAtelier(m_systeme, m_dossier);
  }
  Atelier(const Atelier&) = delete;
  Atelier& operator=(const Atelier&) = delete;

  const std::string& Dossier() const { return m_dossier; }

  /// Unpacks the pieces that are wanted, each synced as it ends.
  Refus Deballe(const DemandeRestauration& demande, const std::function<bool(const std::string&)>& voulue,
                Manifeste& manifeste, const AvanceArchive& avance) {
    int erreur = m_systeme.CreeDossier(m_dossier);
    if (erreur) return Echec(erreur);
    std::size_t courante = SIZE_MAX;
    const auto recoit = [&](std::size_t indice, const void* octets, std::size_t taille) {
      assert(indice < manifeste.pieces.size());
      const PieceArchive& piece = manifeste.pieces[indice];
      if (!voulue(piece.nom)) return 0;
      if (indice != courante && ((erreur = Ferme()) || (erreur = Cree(piece.nom)))) return erreur;
      courante = indice;
      assert(m_fichier);
      erreur = m_fichier->Ecrit(octets, taille, m_place);
      m_place += taille;
      return erreur;
    };
    const Refus refus =
        ParcourtArchive(m_systeme, demande.chemin, demande.motDePasse, manifeste, avance, recoit);
    // The archive is good, the place for its books is not.
    if (erreur) return Echec(erreur);
    if (refus) return refus;
    if ((erreur = Ferme())) return Echec(erreur);
    // A file without a byte came without a call.
    for (const PieceArchive& piece : manifeste.pieces)
      if (piece.taille == 0 && voulue(piece.nom))
        if ((erreur = Cree(piece.nom)) || (erreur = Ferme())) return Echec(erreur);
    for (const std::string& dossier : m_dossiers)
      if ((erreur = m_systeme.SynchroniseDossier(dossier))) return Echec(erreur);
    return {};
  }

  Refus Echec(int erreur) const {
    return Refus(ErrRestauration, "", {m_dossier, TexteErreurSysteme(erreur)});
  }

 private:
  int Cree(const std::string& nom) {
    assert(!m_fichier);
    const std::string chemin = Joint(m_dossier, nom), dossier = DossierDe(chemin);
    if (dossier != m_dossier &&
        std::find(m_dossiers.begin(), m_dossiers.end(), dossier) == m_dossiers.end()) {
      if (const int rc = m_systeme.CreeDossier(dossier)) return rc;
      m_dossiers.push_back(dossier);
    }
    m_place = 0;
    return m_systeme.Ouvre(chemin, Systeme::Creation, m_fichier);
  }
  int Ferme() {
    const int rc = m_fichier ? m_fichier->Synchronise() : 0;
    m_fichier.reset();
    return rc;
  }

  Systeme& m_systeme;
  const std::string m_dossier;
  std::unique_ptr<Fichier> m_fichier;
  u64 m_place = 0;
  std::vector<std::string> m_dossiers;
};

/// Opens what was unpacked as the practice that it is, and verifies its exercices. The settings of each come
/// out, and what it holds for all exercices that the practice does not.
Refus VerifieAtelier(CFenlorApp& app, const std::string& dossier, std::vector<ExerciceRestaure>& exercices,
                     std::vector<std::vector<CleValeur>>& reglages, std::vector<FichierCommun>& communs) {
  OptionsQVAPI options;
  options.systeme = &app.Magasin.SystemeFichiers();
  QVAPI magasin(options);
  CFenlorApp essai(magasin, app.Boite);
  std::string raison;
  magasin.QVSetCallback([&](u32 evenement, u32, const std::string& texte) -> u32 {
    if (evenement == EvErreur) raison = texte;
    return 0;
  });
  magasin.FixeAujourdhui(app.Magasin.Today());
  const auto echec = [&](const std::string& exercice) {
    if (raison.empty()) raison = magasin.QVErreurTexte(magasin.QVFileErrorCode());
    return Refus(ErrRestaurationLivres, "", {exercice, raison});
  };
  // The password of the practice guards the windows, not the files: who may write here may verify them.
  if (!magasin.QVOpenSession(1) || !magasin.QVReserveCabinet(dossier) ||
      !magasin.Reglages().Ecrit(Texte(SecActivite), Texte(CleMotDePasseCabinet), std::nullopt) ||
      !magasin.QVOpenCompta(dossier, {}))
    return echec(dossier);
  essai.PathCabinet = dossier;
  assert(reglages.empty());
  for (ExerciceRestaure& exercice : exercices) {
    if (!magasin.QVConvertCompta(exercice.nom)) return echec(exercice.nom);
    if (const Refus refus = OuvreExercice(essai, exercice.nom)) return echec(exercice.nom);
    VerifieExercice(essai, [&](const std::string& phrase) {
      if (++exercice.nbConstats <= ConstatsMax) exercice.constats.push_back(phrase);
    });
    if (exercice.nbConstats > ConstatsMax)
      exercice.constats.push_back(
          TexteFormat(FormatAutresConstats, {std::to_string(exercice.nbConstats - ConstatsMax)}));
    FermeExercice(essai);
    auto& cles = reglages.emplace_back();
    for (const std::string& cle : magasin.Reglages().Cles(exercice.nom))
      cles.emplace_back(cle, magasin.Reglages().Lit(exercice.nom, cle));
  }
  if (const Refus refus = CompareCommuns(app, magasin, communs)) return refus;
  return magasin.QVCloseSession() ? Refus() : echec(dossier);
}

/// Settings of the practice itself as the archive holds them: all but the sections of exercices and their
/// list.
std::vector<Profil::Changement> ReglagesCabinet(Systeme& systeme, const std::string& chemin) {
  std::vector<Profil::Changement> changements;
  Profil profil(systeme, chemin, true);
  for (const std::string& section : profil.Sections()) {
    if (NomExerciceCorrect(section) && GetDate(profil.Lit(section, Texte(CleDebut)))) continue;
    for (const std::string& cle : profil.Cles(section))
      if (CompareSansCasse(section, Texte(SecActivite)) != 0 ||
          CompareSansCasse(cle, Texte(CleExercices)) != 0)
        changements.push_back({section, cle, profil.Lit(section, cle)});
  }
  return changements;
}

/// Leaves in `communs` what comes back: what the practice has nothing of, and the rest when the user wants
/// it.
Refus TrieCommuns(CFenlorApp& app, std::vector<FichierCommun>& communs, std::string& gardes) {
  std::vector<FichierCommun> occupes;
  std::copy_if(communs.begin(), communs.end(), std::back_inserter(occupes),
               [](const FichierCommun& commun) { return !commun.Libre(); });
  if (occupes.empty()) return {};
  const std::string noms = NomsCommuns(occupes);
  const int reponse = app.MessageId(BoutonsNonOuiAnnuler | IconeQuestion, QuestionCommuns, {noms});
  if (reponse == RepOui) return {};
  if (reponse != RepNon) return Refus(ErrRestaurationAbandonnee);
  gardes = noms;
  std::erase_if(communs, [](const FichierCommun& commun) { return !commun.Libre(); });
  return {};
}

/// ".avant-20261122-1053"
std::string SuffixeAncien(CFenlorApp& app) {
  std::string heure = StrHHMM(app.Magasin.Now());
  heure.erase(std::remove(heure.begin(), heure.end(), ':'), heure.end());
  return ".avant-" + StrSDate(app.Magasin.Today()) + "-" + heure;
}

/// Behind the name of an exercice, with a rank behind it when there is one already.
std::string NomAncien(CFenlorApp& app, const std::string& exercice) {
  assert(NomExerciceCorrect(exercice));
  const std::string nom = exercice + SuffixeAncien(app);
  std::string libre = nom;
  for (unsigned rang = 2;
       rang <= HomonymesMax && app.Magasin.SystemeFichiers().Existe(Joint(app.Magasin.PathCabinet(), libre));
       ++rang)
    libre = nom + "-" + std::to_string(rang);
  return libre;
}

/// Which exercices of the archive are wanted; all of them when nobody said.
Refus Choisit(const DemandeRestauration& demande, const Manifeste& manifeste,
              std::vector<ExerciceRestaure>& exercices) {
  std::vector<std::string> noms = demande.exercices;
  if (noms.empty())
    for (const ExerciceArchive& e : manifeste.exercices) noms.push_back(e.nom);
  for (const std::string& nom : noms) {
    const bool connu = std::any_of(manifeste.exercices.begin(), manifeste.exercices.end(),
                                   [&](const ExerciceArchive& e) { return e.nom == nom; });
    if (!connu) return Refus(ErrExerciceInconnu, "exercice", {nom});
    exercices.push_back({nom, {}, {}});
  }
  return {};
}

}  // namespace

Refus Restaure(CFenlorApp& app, const DemandeRestauration& demande, RestaurationFaite& faite) {
  assert(!app.Magasin.QVEnUnite());
  faite = {};
  if (const Refus refus = app.ControleLecture()) return refus;
  Systeme& systeme = app.Magasin.SystemeFichiers();
  if (const Refus refus = LitManifesteArchive(systeme, demande.chemin, demande.motDePasse, faite.manifeste))
    return refus;
  if (const Refus refus = Choisit(demande, faite.manifeste, faite.exercices)) return refus;
  const Progression progression(app.Boite, Texte(TitreRestauration), Texte(TexteRestauration), true, 100);
  const u64 total = std::max<u64>(1, 2 * faite.manifeste.Octets());
  const auto avance = [&](u64 octets) {
    app.Boite.SetPos(static_cast<u32>(octets * 100 / total));
    return !app.Boite.IsAborted();
  };
  const auto voulue = [&](const std::string& nom) {
    std::string exercice;
    NomDePiece(nom, exercice);
    return exercice.empty() || std::any_of(faite.exercices.begin(), faite.exercices.end(),
                                           [&](const ExerciceRestaure& e) { return e.nom == exercice; });
  };
  Atelier atelier(systeme, app.Magasin.PathCabinet());
  if (const Refus refus = atelier.Deballe(demande, voulue, faite.manifeste, avance))
    return refus.numero == ErrArchiveInterrompue ? Refus(ErrRestaurationAbandonnee) : refus;
  const auto reglagesCabinet = ReglagesCabinet(systeme, Joint(atelier.Dossier(), FichierReglages));
  std::vector<std::vector<CleValeur>> reglages;
  std::vector<FichierCommun> communs;
  if (const Refus refus = VerifieAtelier(app, atelier.Dossier(), faite.exercices, reglages, communs))
    return refus;

  const std::string ouvert = app.NomExercice;
  faite.cabinet = app.Magasin.ListeExercices().empty();
  if (const Refus refus = TrieCommuns(app, communs, faite.communsGardes)) return refus;
  if (faite.cabinet && !app.Magasin.Reglages().Ecrit(reglagesCabinet)) return app.EchecReglages();
  FermeExercice(app);
  Refus refus;
  assert(app.NomExercice.empty() && reglages.size() == faite.exercices.size());
  for (std::size_t i = 0; i < faite.exercices.size() && !refus; ++i) {
    ExerciceRestaure& exercice = faite.exercices[i];
    const std::string ancien = NomAncien(app, exercice.nom);
    if (!app.Magasin.QVInstalleExercice(exercice.nom, Joint(atelier.Dossier(), exercice.nom), reglages[i],
                                        ancien))
      refus = app.EchecDit();
    else if (systeme.Existe(Joint(app.Magasin.PathCabinet(), ancien)))
      exercice.ancien = ancien;
  }
  if (!refus) refus = RameneCommuns(app, communs, SuffixeAncien(app));
  if (!ouvert.empty())
    if (const Refus reouverture = OuvreExercice(app, ouvert); reouverture && !refus) refus = reouverture;
  return refus;
}

}  // namespace fenlor

#include "ctl/contexte.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <utility>

#include "core/cles.h"
#include "core/erreurs.h"
#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "ctl/textes.h"
#include "garde/restes.h"
#include "journal/corbeille.h"
#include "journal/textes.h"
#include "master/textes.h"
#include "session/textes.h"
#include "store/texte1252.h"

namespace fenlor {

std::string SurUneLigne(const std::string& texte) {
  std::string ligne = texte;
  for (char& c : ligne)
    if (static_cast<unsigned char>(c) < 32) c = ' ';
  return CompacteTexte(ligne);
}

int RefuseUsage(std::ostream& erreurs, const std::string& faute) {
  assert(!faute.empty());
  erreurs << "fenlorctl : " << faute << "\nVoir fenlorctl --help, ou fenlorctl COMMANDE --help." << std::endl;
  return StatutUsage;
}

Contexte::Contexte(const OptionsGlobales& globales, const OptionsCtl& options, std::istream& entree,
                   std::ostream& sortie, std::ostream& erreurs)
    : Globales(globales),
      Entree(entree),
      Dialogue(globales.oui),
      EcritPdf(options.ecritPdf),
      EcritPdfGraphique(options.ecritPdfGraphique),
      Magasin(options.magasin),
      App(Magasin, Dialogue),
      m_sortie(sortie),
      m_erreurs(erreurs),
      m_pathProgrammes(options.pathProgrammes) {
  Magasin.QVSetCallback([this](u32 evenement, u32 valeur, const std::string& texte) {
    return Evenement(evenement, valeur, texte);
  });
}

Contexte::~Contexte() { Magasin.QVSetCallback({}); }

u32 Contexte::Evenement(u32 evenement, u32 valeur, const std::string& texte) {
  switch (evenement) {
    case EvErreur:
    case EvExerciceAbsent:
    case EvQuestionRefusee:
      m_numeroMagasin = evenement == EvErreur ? valeur : 0;
      m_texteMagasin = texte;
      return 0;
    case EvQuestion:
      if (Dialogue.Oui()) return RepOui;
      m_numeroMagasin = 0;
      m_texteMagasin = texte;
      return RepNon;
    default:
      return 0;
  }
}

bool Contexte::OuvreCabinet(bool cree) {
  assert(!m_sessionOuverte);
  if (!Globales.aujourdhui.empty()) Magasin.FixeAujourdhui(GetDate(Globales.aujourdhui));
  if (!Magasin.QVOpenSession(1)) {
    RefuseMagasin();
    return false;
  }
  m_sessionOuverte = true;
  Magasin.QVSetPathProgrammes(m_pathProgrammes);
  Magasin.QVSetWithQuorbane(false, App.Edition);
  Systeme& systeme = Magasin.SystemeFichiers();
  if (cree && !systeme.Existe(Globales.cabinet)) {
    int erreur = systeme.CreeDossier(Globales.cabinet);
    std::string sansBarre = Globales.cabinet;
    while (sansBarre.size() > 1 && sansBarre.back() == '/') sansBarre.pop_back();
    if (!erreur) erreur = systeme.SynchroniseDossier(DossierDe(sansBarre));
    if (erreur) {
      Refuse(ErrCreationFichier,
             {DepuisUtf8(Globales.cabinet).value_or(Globales.cabinet) + " : " + TexteErreurSysteme(erreur)});
      return false;
    }
  }
  const auto motDePasse = DepuisUtf8(Globales.motDePasse);
  if (!Magasin.QVOpenCompta(Globales.cabinet, motDePasse.value_or(std::string()))) {
    const int code = Magasin.QVFileErrorCode();
    if (code == ErrMotDePasse)
      Refuse(ErrMotDePasseErrone, {});
    else if (code == ErrOccupe)
      Refuse(ErrCabinetOccupe, {Magasin.QVDetenteur()});
    else
      RefuseMagasin();
    return false;
  }
  App.PathCabinet = Magasin.PathCabinet();
  App.PathProgrammes = m_pathProgrammes;
  RangeRestes(App);
  return true;
}

bool Contexte::TrouveExercice(std::string& nom) {
  const auto liste = Magasin.ListeExercices();
  const auto existe = [&](const std::string& n) {
    return std::find(liste.begin(), liste.end(), n) != liste.end();
  };
  if (!Globales.exercice.empty()) {
    nom = DepuisUtf8(Globales.exercice).value_or(Globales.exercice);
    if (existe(nom)) return true;
    Refuse(ErrExerciceInconnu, {nom});
    return false;
  }
  nom = App.Reglages.LitIni(Texte(SecActivite), Texte(CleExercice));
  if (!nom.empty() && existe(nom)) return true;
  nom = Magasin.GetLastExercice();
  if (!nom.empty()) return true;
  Refuse(ErrAucunExercice, {});
  return false;
}

bool Contexte::OuvreExercice(const std::string& nom) {
  assert(m_sessionOuverte && !nom.empty());
  if (!Magasin.QVOpenExercice(nom)) {
    RefuseMagasin();
    return false;
  }
  App.NomExercice = nom;
  App.PathExercice = Magasin.PathExercice();
  App.ExerciceOuvert = 1;
  App.AfficherDouble = Parametres::IsOui(App.Reglages.LitIniExercice({}, Texte(CleAfficherDouble)));
  RangeCorbeille(App);
  return true;
}

bool Contexte::OuvreExercice() {
  std::string nom;
  return TrouveExercice(nom) && OuvreExercice(nom);
}

int Contexte::Termine(int statut) {
  if (!Vide()) statut = std::max(statut, int{StatutRefuse});
  // What a rule told on its way to a success: done, but not all of it.
  if (statut == StatutFait && Dialogue.ErreurEnAttente()) {
    Refus refus;
    refus.numero = std::max(Dialogue.Numero(), 1u);
    refus.texte = Dialogue.Texte();
    statut = Refuse(refus);
  }
  if (m_sessionOuverte) {
    m_sessionOuverte = false;
    Magasin.QVCloseExercice();
    Oublie();
    if (!Magasin.QVCloseSession()) statut = std::max(statut, RefuseMagasin());
  }
  // Told, though the work itself was done.
  for (const std::string& phrase : Magasin.AvertissementsMagasin()) Avertit(SurUneLigne(phrase));
  return statut;
}

void Contexte::Avertit(const std::string& texte) {
  const char* avant = "Attention : ";
  for (unsigned i = 0; i < ComptePartie(texte, '\n'); ++i) {
    const std::string ligne = SurUneLigne(ChampTexte(i, texte, '\n'));
    if (!ligne.empty()) m_erreurs << std::exchange(avant, "  ") << VersUtf8(ligne) << std::endl;
  }
}

int Contexte::Refuse(const Refus& regle, u32 ligne) {
  assert(regle);
  // What the files told has no words of its own, and the number by which they told it.
  Refus refus = regle;
  if (refus.texte.empty()) {
    const Refus dit = DernierEchec();
    refus.texte = dit.texte;
    if (refus.numero == ErrFichierIndexe) refus.numero = dit.numero;
  }
  Oublie();
  std::string reste = refus.texte;
  assert(refus.numero != 0);
  std::string message = "Erreur " + std::to_string(refus.numero);
  if (ligne != 0) {
    message += ", ligne " + std::to_string(ligne);
    // The text of ErrLigneIllisible names its line itself.
    const std::string debut = TexteFormat(ErrLigneIllisible, {std::to_string(ligne), {}});
    if (refus.numero == ErrLigneIllisible && reste.starts_with(debut)) reste.erase(0, debut.size());
  }
  m_erreurs << message << " : " << VersUtf8(SurUneLigne(reste)) << std::endl;
  return StatutRefuse;
}

int Contexte::Refuse(const TexteFixe& erreur, std::initializer_list<std::string> arguments, u32 ligne) {
  return Refuse(Refus(erreur, "", arguments), ligne);
}

bool Contexte::Invalide(const char* champ, const std::string& raison) {
  assert(champ && *champ && !raison.empty());
  Refuse(ErrChampInvalide, {champ, raison});
  return false;
}

int Contexte::RefuseUsage(const std::string& faute) { return fenlor::RefuseUsage(m_erreurs, faute); }

int Contexte::RefuseOuverture(const std::string& chemin) {
  return Refuse(ErrOuvertureDe, {DepuisUtf8(chemin).value_or(chemin)});
}

int Contexte::RefuseLecture(int erreur, const std::string& chemin) {
  assert(erreur != 0);
  return Refuse(ErrCodeLecture, {std::to_string(erreur),
                                 DepuisUtf8(chemin).value_or(chemin) + " : " + TexteErreurSysteme(erreur)});
}

Refus Contexte::DernierEchec() {
  Refus refus = App.EchecMagasin();
  if (!m_texteMagasin.empty()) {
    if (m_numeroMagasin != 0) refus.numero = m_numeroMagasin;
    refus.texte = m_texteMagasin;
  } else if (Dialogue.Numero() != 0 || !Dialogue.Texte().empty()) {
    if (Dialogue.Numero() != 0) refus.numero = Dialogue.Numero();
    refus.texte = Dialogue.Texte();
  }
  Oublie();
  return refus;
}

void Contexte::Oublie() {
  m_numeroMagasin = 0;
  m_texteMagasin.clear();
  Dialogue.Oublie();
}

int Contexte::RefuseMagasin() { return Refuse(DernierEchec()); }

bool Contexte::FinDeCle() const {
  const int code = Magasin.QVFileErrorCode();
  return code == ErrAucune || code == ErrCleAbsente;
}

bool Contexte::Ecrit(const std::string& utf8) {
  return !m_sortiePerdue &&
         Sort([&] { m_sortie.write(utf8.data(), static_cast<std::streamsize>(utf8.size())); });
}

bool Contexte::Sort(const std::function<void()>& acte) {
  errno = 0;
  acte();
  if (m_sortie.good()) return true;
  m_sortiePerdue = true;
  // A reader that went away, as "head" does, has all it wanted.
  if (errno != EPIPE) Refuse(ErrEcritureFichier, {});
  return false;
}

bool Contexte::Vide() {
  return !m_sortiePerdue && Sort([this] { m_sortie.flush(); });
}

}  // namespace fenlor

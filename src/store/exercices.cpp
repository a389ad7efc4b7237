// Exercices: list, names, periods, opening and closing. creationexercice.cpp makes
// and removes them.
#include "store/exercices.h"

#include <algorithm>
#include <cassert>
#include <cerrno>

#include "store/definitions.h"
#include "store/fichiertextes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

std::string SansBlancs(const std::string& texte) {
  const std::size_t debut = texte.find_first_not_of(" \t");
  return debut == std::string::npos ? std::string()
                                    : texte.substr(debut, texte.find_last_not_of(" \t") - debut + 1);
}

}  // namespace

bool NomExerciceCorrect(const std::string& nom) {
  return !nom.empty() && nom.size() <= 4 && std::all_of(nom.begin(), nom.end(), [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  });
}

std::string LitReglage(EtatQVAPI& etat, const std::string& section, const std::string& cle, int& erreur) {
  std::string valeur = etat.reglages->Lit(section, cle);
  if (erreur == 0) erreur = etat.reglages->Erreur();
  return valeur;
}

std::vector<std::string> LitNoms(EtatQVAPI& etat, int& erreur) {
  std::vector<std::string> noms;
  const std::string liste = LitReglage(etat, "Activite", "Exercices", erreur) + ',';
  for (std::size_t debut = 0, fin; (fin = liste.find(',', debut)) != std::string::npos; debut = fin + 1) {
    const std::string nom = SansBlancs(liste.substr(debut, fin - debut));
    const bool deja = std::any_of(noms.begin(), noms.end(), [&](const std::string& autre) {
      return CompareSansCasse(autre, nom) == 0;
    });
    if (!nom.empty() && !deja) noms.push_back(nom);
  }
  return noms;
}

std::string NomListe(EtatQVAPI& etat, const std::string& nom, int& erreur) {
  for (const std::string& autre : LitNoms(etat, erreur))
    if (CompareSansCasse(autre, nom) == 0) return autre;
  return {};
}

PeriodeExercice LitPeriode(EtatQVAPI& etat, const std::string& nom, int& erreur) {
  PeriodeExercice p{GetDate(LitReglage(etat, nom, "Debut", erreur)),
                    GetDate(LitReglage(etat, nom, "Fin", erreur))};
  if (!IsDateOk(p.debut) || p.fin == 0) return {};
  if (p.fin <= p.debut) p.fin = PrevDate(DecaleAnnees(p.debut, 1));
  return p;
}

std::vector<std::string> ClesExercice() {
  return {"Debut",
          "Fin",
          "Cloture",
          "Sceau",
          "TVA",
          "EURO",
          "AFFICHERDOUBLE",
          "Consultation",
          "Ecritures automatiques",
          "Frais kilométriques"_w,
          "Compteur",
          "Ancien relevé"_w,
          "Dernier relevé"_w,
          "Kms",
          "Borne Inf",
          "Borne Sup",
          "Coef",
          "Coef Euro",
          "Frs/Km 1",
          "Frs/Km 2",
          "Frs/Km 3",
          "€/Km 1"_w,
          "€/Km 2"_w,
          "€/Km 3"_w};
}

bool RefuseDit(QVAPI& magasin, EtatQVAPI& etat, int code, const std::string& fichier) {
  etat.Refuse(code, fichier);
  etat.DitErreur(magasin.QVEchecTexte());
  return false;
}

bool RefuseReglages(QVAPI& magasin, EtatQVAPI& etat, int code) {
  return RefuseDit(magasin, etat, code, etat.reglages->Chemin());
}

bool RefuseDit(EtatQVAPI& etat, int code, u32 numero, const std::string& texte) {
  etat.Refuse(code);
  etat.DitErreur(texte, numero);
  return etat.Refuse(code);
}

bool CabinetPret(EtatQVAPI& etat) {
  if (!etat.moteur->EstOuvert() || !etat.reglages) return etat.Refuse(ErrPasOuvert);
  etat.reglages->Existe("Activite");
  if (etat.reglages->Erreur() == 0) return true;
  return RefuseDit(etat, etat.reglages->Erreur(), MsgOuvertureImpossible,
                   "Ouverture fichier (" + etat.reglages->Chemin() +
                       ") impossible : " + TexteErreurSysteme(etat.reglages->Erreur()));
}

const std::vector<u16>& FichiersExercice() {
  static const std::vector<u16> numeros = [] {
    std::vector<u16> n;
    for (const DefinitionFichier& d : Definitions()) {
      if (d.duDepart) n.push_back(d.numero);
    }
    return n;
  }();
  return numeros;
}

bool OuvreFichier(EtatQVAPI& etat, u16 numero, const std::string& dossier) {
  assert(DefinitionFichierNumero(numero) && !dossier.empty());
  const DefinitionFichier& definition = *DefinitionFichierNumero(numero);
  const std::string base = Joint(dossier, definition.nom);
  if (!etat.moteur->Ouvre(numero, base + ".dat")) return false;
  if (etat.moteur->Ouvre(definition.premiereCle, base + ".idx")) return true;
  const int erreur = etat.moteur->Erreur();
  const std::string fautif = etat.moteur->FichierErreur();
  etat.moteur->Ferme(numero);
  return etat.Refuse(erreur, fautif);
}

void FermeFichier(EtatQVAPI& etat, u16 numero) {
  etat.moteur->Ferme(DefinitionFichierNumero(numero)->premiereCle);
  etat.moteur->Ferme(numero);
}

bool EssaieFichiers(QVAPI& magasin, EtatQVAPI& etat, const std::string& nom) {
  EmpruntFichiers emprunt(etat);
  for (const u16 numero : FichiersExercice()) {
    if (OuvreFichier(etat, numero, Joint(etat.pathCabinet, nom))) {
      FermeFichier(etat, numero);
      continue;
    }
    const int code = etat.moteur->Erreur();
    const std::string relatif = Joint(nom, DefinitionFichierNumero(numero)->nom) + ".dat";
    if (code == ErrEndommage || code == ErrFormat)
      return RefuseDit(etat, code, MsgFichierEndommage,
                       "Fichier (" + relatif + ") endommagé\nIndexation recommandé."_w);
    return RefuseDit(etat, code, MsgOuvertureImpossible,
                     "Ouverture fichier (" + relatif + ") impossible : " + magasin.QVErreurTexte(code));
  }
  return true;
}

EmpruntFichiers::EmpruntFichiers(EtatQVAPI& etat) : m_etat(etat) {
  for (const u16 numero : FichiersExercice()) {
    const std::string chemin = etat.moteur->CheminOuvert(numero);
    if (chemin.empty()) continue;
    const bool cles = etat.moteur->Ferme(DefinitionFichierNumero(numero)->premiereCle);
    etat.moteur->Ferme(numero);
    m_pretes[numero] = {DossierDe(chemin), cles, etat.ouvertures[numero]};
    etat.ouvertures[numero] = 0;
  }
}

EmpruntFichiers::~EmpruntFichiers() {
  if (m_pretes.empty()) return;
  const int erreur = m_etat.moteur->Erreur();
  const std::string fautif = m_etat.moteur->FichierErreur();
  for (const auto& [numero, prete] : m_pretes) {
    assert(!m_etat.moteur->EstOuvertFichier(numero) && m_etat.ouvertures[numero] == 0);
    const bool ouvert = OuvreFichier(m_etat, numero, prete.dossier);
    if (ouvert && !prete.cles) m_etat.moteur->Ferme(DefinitionFichierNumero(numero)->premiereCle);
    m_etat.ouvertures[numero] = ouvert ? prete.ouvertures : 0;
  }
  m_etat.OublieCompteurs();
  m_etat.moteur->PoseErreur(erreur, fautif);
}

u32 QVAPI::GetExercicesRec() { return static_cast<u32>(ListeExercices().size()); }

std::vector<std::string> QVAPI::ListeExercices() {
  int erreur = 0;
  return m_etat->reglages ? LitNoms(*m_etat, erreur) : std::vector<std::string>();
}

std::string QVAPI::GetLastExercice() {
  std::string dernier;
  Date fin = 0;
  int erreur = 0;
  for (const std::string& nom : ListeExercices()) {
    const Date finNom = LitPeriode(*m_etat, nom, erreur).fin;
    if (finNom < fin) continue;
    fin = finNom;
    dernier = nom;
  }
  return dernier;
}

const std::string& QVAPI::NomExercice() const { return m_etat->nomExercice; }
const std::string& QVAPI::PathExercice() const { return m_etat->pathExercice; }

std::string QVAPI::CheminExercice(const std::string& nom) const {
  int erreur = 0;
  const std::string listee = m_etat->reglages ? NomListe(*m_etat, nom, erreur) : std::string();
  return Joint(m_etat->pathCabinet, listee.empty() ? nom : listee);
}

bool QVAPI::QVOpenExercice(const std::string& nomDonne) {
  if (!CabinetPret(*m_etat)) return false;
  if (!NomExerciceCorrect(nomDonne))
    return RefuseDit(
        *m_etat, ErrValeur, MsgNomExercice,
        "Le nom de l'exercice \""_w + nomDonne + "\" est incorrect : 1 à 4 lettres ou chiffres."_w);
  // Another exercice that cannot be put back is no reason to refuse this one.
  const int echec = AcheveExercices(*m_etat) ? 0 : QVFileErrorCode();
  int erreur = 0;
  const std::string listee = NomListe(*m_etat, nomDonne, erreur), nom = listee.empty() ? nomDonne : listee;
  const bool connu = !listee.empty() || !LitReglage(*m_etat, nom, "Debut", erreur).empty();
  const bool enSuspens = !LitReglage(*m_etat, nom, CleRemplacement, erreur).empty();
  if (erreur != 0) return RefuseReglages(*this, *m_etat, erreur);
  if (enSuspens) return m_etat->Refuse(echec);
  QVCloseExercice();
  // A directory without a section is what an unclean stop left.
  if (!connu) return RefuseDit(*m_etat, ENOENT, MsgExerciceInconnu, "L'exercice "_w + nom + " n'existe pas.");
  if (!EssaieFichiers(*this, *m_etat, nom)) return false;
  m_etat->nomExercice = nom;
  m_etat->pathExercice = Joint(m_etat->pathCabinet, nom);
  const std::string chemin = Joint(m_etat->pathExercice, "TEXTES.dat");
  std::string textes;
  if (!m_etat->modifiesDits.contains(chemin) && LitTextes(*m_etat->systeme, chemin, textes) == 0 &&
      TextesModifies(textes))
    m_etat->DitModifie(chemin);
  return true;
}

void QVAPI::QVCloseExercice() {
  QVOublieUnites();
  m_etat->nomExercice.clear();
  m_etat->pathExercice.clear();
  m_etat->OublieCompteurs();
  m_etat->positionsComptes.clear();
}

u32 QVAPI::QVConvertCompta(const std::string& nom) {
  if (!CabinetPret(*m_etat)) return 0;
  int erreur = 0;
  const std::string listee = NomListe(*m_etat, nom, erreur);
  if (erreur != 0) return RefuseReglages(*this, *m_etat, erreur);
  if (!EssaieFichiers(*this, *m_etat, listee.empty() ? nom : listee)) return 0;
  // Opening a file checks its sums and converts one of an older form: those that nobody has opened yet
  // follow. What is wrong with one of them is told by whoever needs it.
  for (const DefinitionFichier& def : Definitions()) {
    const std::string dossier = def.duCabinet ? m_etat->pathCabinet : CheminExercice(nom);
    const std::string chemin = Joint(dossier, def.nom) + ".dat";
    if (m_etat->moteur->EstOuvertFichier(def.numero) || !m_etat->systeme->Existe(chemin)) continue;
    if (m_etat->moteur->Ouvre(def.numero, chemin)) m_etat->moteur->Ferme(def.numero);
  }
  return 1;
}

}  // namespace fenlor

// Exercices: list, names, periods, opening and closing. creationexercice.cpp makes
// and removes them.
#include "store/exercices.h"

#include <algorithm>
#include <cerrno>

#include "store/definitions.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct Famille {
  u16 numero;
  u32 (QVAPI::*ouvre)(const std::string&);
  bool (QVAPI::*ferme)(u32);
};
constexpr Famille Familles[] = {{FichierComptes, &QVAPI::OpenPlan, &QVAPI::ClosePlan},
                                {FichierJournal, &QVAPI::OpenJournal, &QVAPI::CloseJournal},
                                {FichierRubriques, &QVAPI::OpenRubriques, &QVAPI::CloseRubriques},
                                {FichierBanques, &QVAPI::OpenBanques, &QVAPI::CloseBanques}};

std::string SansBlancs(const std::string& texte) {
  const std::size_t debut = texte.find_first_not_of(" \t");
  return debut == std::string::npos ? std::string() : texte.substr(debut, texte.find_last_not_of(" \t") - debut + 1);
}

void OublieExercice(EtatQVAPI& etat) {
  etat.nomExercice.clear();
  etat.pathExercice.clear();
  etat.OublieCompteurs();
  etat.positionsComptes.clear();
}

}  // namespace

bool NomExerciceCorrect(const std::string& nom) {
  return !nom.empty() && nom.size() <= 4 && std::all_of(nom.begin(), nom.end(), [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  });
}

std::string NomListe(EtatQVAPI& etat, const std::string& nom) {
  const std::string liste = etat.reglages->Lit("Activite", "Exercices") + ',';
  for (std::size_t debut = 0, fin; (fin = liste.find(',', debut)) != std::string::npos; debut = fin + 1) {
    const std::string element = SansBlancs(liste.substr(debut, fin - debut));
    if (!element.empty() && CompareSansCasse(element, nom) == 0) return element;
  }
  return {};
}

PeriodeExercice LitPeriode(EtatQVAPI& etat, const std::string& nom) {
  PeriodeExercice p{GetDate(etat.reglages->Lit(nom, "Debut")), GetDate(etat.reglages->Lit(nom, "Fin"))};
  if (!IsDateOk(p.debut) || p.fin == 0) return {};
  if (p.fin <= p.debut) p.fin = PrevDate(DecaleAnnees(p.debut, 1));
  return p;
}

std::vector<std::string> ClesExercice() {
  return {"Debut",    "Fin",      "Cloture",  "TVA",
          "EURO",     "AFFICHERDOUBLE",       "Consultation",
          "Ecritures automatiques",           "Frais kilométriques"_w,
          "Compteur", "Ancien relevé"_w,      "Dernier relevé"_w,
          "Kms",      "Borne Inf", "Borne Sup", "Coef",
          "Coef Euro", "Frs/Km 1", "Frs/Km 2", "Frs/Km 3",
          "€/Km 1"_w, "€/Km 2"_w, "€/Km 3"_w};
}

bool RefuseDit(QVAPI& magasin, EtatQVAPI& etat, int code) {
  return RefuseDit(etat, code, 0, magasin.QVErreurTexte(code));
}

bool RefuseDit(EtatQVAPI& etat, int code, u32 numero, const std::string& texte) {
  etat.DitErreur(texte, numero);
  return etat.Refuse(code);
}

bool CabinetPret(EtatQVAPI& etat) {
  if (!etat.moteur || !etat.moteur->EstOuvert() || !etat.reglages) return etat.Refuse(ErrPasOuvert);
  etat.reglages->Existe("Activite");
  if (etat.reglages->Erreur() == 0) return true;
  return RefuseDit(etat, etat.reglages->Erreur(), MsgOuvertureImpossible,
                   "Ouverture fichier (" + etat.reglages->Chemin() + ") impossible");
}

bool EssaieFichiers(QVAPI& magasin, EtatQVAPI& etat, const std::string& nom) {
  const std::string dossier = magasin.CheminExercice(nom);
  EmpruntFichiers emprunt(etat);
  for (const Famille& famille : Familles) {
    const std::string fichier = std::string(DefinitionFichierNumero(famille.numero)->nom) + ".dat";
    // A family creates what is missing: books would come back empty.
    Empreinte empreinte;
    int code = etat.systeme->Mesure(Joint(dossier, fichier), empreinte);
    if (code == 0) {
      if (const u32 poignee = (magasin.*famille.ouvre)(dossier)) {
        (magasin.*famille.ferme)(poignee);
        continue;
      }
      code = magasin.QVFileErrorCode();
    }
    const std::string relatif = Joint(nom, fichier);
    if (code == ErrEndommage || code == ErrFormat)
      return RefuseDit(etat, code, MsgFichierEndommage,
                       "Fichier (" + relatif + ") endommagé\nIndexation recommandé."_w);
    return RefuseDit(etat, code, MsgOuvertureImpossible, "Ouverture fichier (" + relatif + ") impossible");
  }
  return true;
}

EmpruntFichiers::EmpruntFichiers(EtatQVAPI& etat) : m_etat(etat) {
  for (const Famille& famille : Familles) {
    const std::string chemin = etat.moteur->CheminOuvert(famille.numero);
    if (chemin.empty()) continue;
    const u16 cle = DefinitionFichierNumero(famille.numero)->premiereCle;
    const bool cles = etat.moteur->Ferme(cle);
    etat.moteur->Ferme(famille.numero);
    m_pretes[famille.numero] = {chemin, cles, etat.ouvertures[famille.numero]};
    etat.ouvertures[famille.numero] = 0;
  }
}

EmpruntFichiers::~EmpruntFichiers() {
  if (m_pretes.empty()) return;
  const int erreur = m_etat.moteur->Erreur();
  for (const auto& [numero, prete] : m_pretes) {
    bool ouvert = m_etat.moteur->Ouvre(numero, prete.chemin);
    if (ouvert && prete.cles) {
      const u16 cle = DefinitionFichierNumero(numero)->premiereCle;
      ouvert = m_etat.moteur->Ouvre(cle, prete.chemin.substr(0, prete.chemin.size() - 4) + ".idx");
    }
    m_etat.ouvertures[numero] = ouvert ? prete.ouvertures : 0;
  }
  m_etat.OublieCompteurs();
  if (erreur != 0) m_etat.moteur->PoseErreur(erreur);
}

u32 QVAPI::GetExercicesRec() { return static_cast<u32>(ListeExercices().size()); }

std::vector<std::string> QVAPI::ListeExercices() {
  std::vector<std::string> noms;
  if (!m_etat->reglages) return noms;
  const std::string liste = m_etat->reglages->Lit("Activite", "Exercices") + ',';
  for (std::size_t debut = 0, fin; (fin = liste.find(',', debut)) != std::string::npos; debut = fin + 1) {
    const std::string nom = SansBlancs(liste.substr(debut, fin - debut));
    const bool deja = std::any_of(noms.begin(), noms.end(),
                                  [&](const std::string& autre) { return CompareSansCasse(autre, nom) == 0; });
    if (!nom.empty() && !deja) noms.push_back(nom);
  }
  return noms;
}

std::string QVAPI::GetLastExercice() {
  std::string dernier;
  Date fin = 0;
  for (const std::string& nom : ListeExercices()) {
    const Date finNom = LitPeriode(*m_etat, nom).fin;
    if (finNom < fin) continue;
    fin = finNom;
    dernier = nom;
  }
  return dernier;
}

const std::string& QVAPI::NomExercice() const { return m_etat->nomExercice; }
const std::string& QVAPI::PathExercice() const { return m_etat->pathExercice; }

std::string QVAPI::CheminExercice(const std::string& nom) const {
  std::string listee = m_etat->reglages ? NomListe(*m_etat, nom) : std::string();
  return Joint(m_etat->pathCabinet, listee.empty() ? nom : listee);
}

bool QVAPI::QVOpenExercice(const std::string& nomDonne) {
  if (!CabinetPret(*m_etat) || !AcheveExercices(*m_etat)) return false;
  if (!NomExerciceCorrect(nomDonne))
    return RefuseDit(*m_etat, ErrValeur, MsgNomExercice,
                     "Le nom de l'exercice \""_w + nomDonne + "\" est incorrect : 1 à 4 lettres ou chiffres."_w);
  std::string nom = NomListe(*m_etat, nomDonne);
  if (nom.empty()) nom = nomDonne;
  QVCloseExercice();
  // A directory without a section is what an unclean stop left.
  if (NomListe(*m_etat, nom).empty() && m_etat->reglages->Lit(nom, "Debut").empty())
    return RefuseDit(*m_etat, ENOENT, MsgExerciceInconnu, "L'exercice "_w + nom + " n'existe pas.");
  if (!EssaieFichiers(*this, *m_etat, nom)) return false;
  m_etat->nomExercice = nom;
  m_etat->pathExercice = CheminExercice(nom);
  return true;
}

void QVAPI::QVCloseExercice() { OublieExercice(*m_etat); }

u32 QVAPI::QVConvertCompta(const std::string& nom) {
  if (!CabinetPret(*m_etat)) return 0;
  const std::string listee = NomListe(*m_etat, nom);
  return EssaieFichiers(*this, *m_etat, listee.empty() ? nom : listee) ? 1 : 0;
}

}  // namespace fenlor

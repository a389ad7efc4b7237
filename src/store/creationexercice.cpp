// Making, replacing and removing an exercice.
//
// A new exercice exists once its section and its name stand in the settings,
// which is one replacement of one file and comes last. What an unclean stop
// leaves before that is a directory without a section.
//
// A replacement first notes "Remplacement" in the section, then moves the old
// directory aside ("2003.remplace~"); the settings of the new exercice take the
// note away again. Books that are brought back replace in the same way, but the settings then say under
// "Avant" which name the old directory keeps, instead of being removed. A deletion takes the section away
// first, then moves the directory aside ("2003.supprime~") and removes it.
#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>

#include "store/cumuls.h"
#include "store/definitions.h"
#include "store/exercices.h"
#include "store/fichiertextes.h"
#include "store/modele.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::string_view SuffixeRemplace = ".remplace~", SuffixeSupprime = ".supprime~";
/// Yes and no, of which no is the default: yes destroys.
constexpr u32 StyleOuiNonQuestion = 4 | 32 | 256;
constexpr u32 ReponseOui = 6;
constexpr unsigned RangAvantMax = 1000;  ///< names tried for old books

std::string CheminCote(EtatQVAPI& etat, const std::string& nom, std::string_view suffixe) {
  assert(NomExerciceCorrect(nom) && suffixe.ends_with('~'));
  return Joint(etat.pathCabinet, nom + std::string(suffixe));
}

/// True for a file that the store made in an exercice's directory.
bool EstFichierDuMagasin(const std::string& nom) {
  if (nom == "SAISIE.ini" || nom == "witness") return true;
  const std::size_t point = nom.rfind('.');
  if (point == std::string::npos) return false;
  const std::string base = nom.substr(0, nom.find('.')), extension = nom.substr(point);
  if (base != "TEXTES" && base != "SCEAU" && base != "CORBEILLE" && !DefinitionNom(base)) return false;
  return extension == ".dat" || extension == ".idx" || extension == ".neuf" || extension == ".tmp";
}

/// Removes what the store made in a directory left by an unclean stop, and the
/// directory when nothing else is in it.
int OteRestes(Systeme& systeme, const std::string& dossier) {
  assert(!dossier.empty());
  std::vector<std::string> noms;
  int code = systeme.Liste(dossier, noms);
  if (code != 0) return code == ENOENT ? 0 : code;
  for (const std::string& nom : noms)
    if (EstFichierDuMagasin(nom))
      if (const int rc = systeme.Supprime(Joint(dossier, nom))) code = rc;
  if (code == 0) systeme.SupprimeDossier(dossier);
  return code;
}

/// Removes a directory and the files in it. Directories inside it stay, and it
/// with them.
int OteDossier(Systeme& systeme, const std::string& dossier) {
  std::vector<std::string> noms;
  int code = systeme.Liste(dossier, noms);
  if (code != 0) return code == ENOENT ? 0 : code;
  for (const std::string& nom : noms)
    if (const int rc = systeme.Supprime(Joint(dossier, nom))) code = rc;
  const int rc = systeme.SupprimeDossier(dossier);
  return code != 0 ? code : rc;
}

/// The replacement of an exercice is settled: its old directory is removed, or gets the name that the
/// settings keep for it. The name in the settings goes last: until then this is done again.
int RangeAncien(EtatQVAPI& etat, const std::string& nom) {
  int code = 0;
  const std::string cote = CheminCote(etat, nom, SuffixeRemplace);
  const std::string avant = LitReglage(etat, nom, CleAvant, code);
  if (code != 0) return code;
  if (avant.empty()) return OteDossier(*etat.systeme, cote);
  assert(avant.find('/') == std::string::npos);
  // Somebody may have taken the name meanwhile: that is no reason to open no practice any more.
  std::string nomAvant = avant;
  for (unsigned rang = 2; rang <= RangAvantMax; ++rang) {
    code = etat.systeme->Renomme(cote, Joint(etat.pathCabinet, nomAvant));
    if (code != ENOTEMPTY && code != EEXIST && code != ENOTDIR) break;
    nomAvant = avant + "-" + std::to_string(rang);
  }
  if (code != 0 && code != ENOENT) return code;
  if ((code = etat.systeme->SynchroniseDossier(etat.pathCabinet))) return code;
  return etat.reglages->Ecrit(nom, CleAvant, std::nullopt) ? 0 : etat.reglages->Erreur();
}

/// Puts the old directory of an exercice back in the place of the new one.
int Retablit(EtatQVAPI& etat, const std::string& nom) {
  const std::string dossier = Joint(etat.pathCabinet, nom);
  if (!etat.moteur->Relache(dossier)) return etat.moteur->Erreur();
  int code = OteRestes(*etat.systeme, dossier);
  if (code == 0) code = etat.systeme->Renomme(CheminCote(etat, nom, SuffixeRemplace), dossier);
  return code == 0 ? etat.systeme->SynchroniseDossier(etat.pathCabinet) : code;
}

/// Everything that a new exercice takes over.
struct Contenu {
  std::vector<Plan> comptes;
  std::vector<Rubrique> rubriques;
  std::string textes;  ///< of the labels file
  std::vector<Profil::Changement> reglages;
  std::string afficherDouble = "Non";
};

/// Reads all records of an open file.
template <class Rec>
bool LitTout(QVAPI& magasin, u16 fichier, std::vector<Rec>& recs) {
  assert(recs.empty() && DefinitionFichierNumero(fichier)->taille == sizeof(Rec));
  return magasin.QVParcours(fichier, [&](Position, const void* octets) {
    std::memcpy(&recs.emplace_back(), octets, sizeof(Rec));
    return true;
  });
}

f64 SoldeReel(f64 initial, f64 credit, f64 debit) {
  return DeCentimes(Centimes(initial) + Centimes(credit) - Centimes(debit));
}

/// Account of a following exercice: totals zero, what the treasury holds carried over.
void ReporteCompte(Plan& compte, bool soldes) {
  const bool garde = soldes && compte.Type == Tresorerie;
  compte.SoldeInitialFranc =
      garde ? SoldeReel(compte.SoldeInitialFranc, compte.CreditFranc, compte.DebitFranc) : 0;
  compte.SoldeInitialEuro =
      garde ? SoldeReel(compte.SoldeInitialEuro, compte.CreditEuro, compte.DebitEuro) : 0;
  PoseCumuls(compte, Cumuls());
}

template <class Rec>
bool LitFichierEntier(QVAPI& magasin, EtatQVAPI& etat, u16 numero, const std::string& dossier,
                      std::vector<Rec>& recs) {
  if (!OuvreFichier(etat, numero, dossier)) return false;
  const bool lu = LitTout(magasin, numero, recs);
  const int erreur = etat.moteur->Erreur();
  const std::string fautif = etat.moteur->FichierErreur();
  FermeFichier(etat, numero);
  return lu || etat.Refuse(erreur, fautif);
}

/// Takes over accounts, headings and labels of the exercice `nom`.
bool ContenuExercice(QVAPI& magasin, EtatQVAPI& etat, const std::string& nom, bool soldes, Contenu& contenu) {
  if (!EssaieFichiers(magasin, etat, nom)) return false;
  const std::string dossier = Joint(etat.pathCabinet, nom);
  EmpruntFichiers emprunt(etat);
  if (!LitFichierEntier(magasin, etat, FichierComptes, dossier, contenu.comptes) ||
      !LitFichierEntier(magasin, etat, FichierRubriques, dossier, contenu.rubriques))
    return RefuseDit(magasin, etat, magasin.QVFileErrorCode());
  int code = 0;
  const std::string textes = Joint(dossier, "TEXTES.dat");
  if ((code = LitTextes(*etat.systeme, textes, contenu.textes)) != 0)
    return RefuseDit(magasin, etat, code, textes);
  for (Plan& compte : contenu.comptes) ReporteCompte(compte, soldes);
  for (Rubrique& rubrique : contenu.rubriques) rubrique.ManuelFranc = rubrique.ManuelEuro = 0;
  const std::string affichage = LitReglage(etat, nom, "AFFICHERDOUBLE", code);
  if (code != 0) return RefuseReglages(magasin, etat, code);
  if (!affichage.empty()) contenu.afficherDouble = affichage;
  return true;
}

/// The accounts' VAT as the account form stores it: number and rate in an exercice
/// that is subject to it, nothing in another.
void PoseTva(std::vector<Plan>& comptes, bool tva) {
  for (Plan& compte : comptes) {
    if (compte.Type == Tva || !compte.CompteTVA[0]) continue;
    const auto duTaux = std::find_if(comptes.begin(), comptes.end(), [&](const Plan& p) {
      return p.Type == Tva && LitTexte(p.Compte) == LitTexte(compte.CompteTVA);
    });
    if (tva && duTaux != comptes.end()) {
      compte.TauxTVA = duTaux->TauxTVA;
    } else {
      PoseTexte(compte.CompteTVA, "");
      compte.TauxTVA = 0;
    }
  }
}

bool ContenuModele(EtatQVAPI& etat, Contenu& contenu) {
  Modele modele;
  ErreurModele erreur;
  if (!ChargeModele(*etat.systeme, etat.pathProgrammes, modele, erreur)) {
    const std::string endroit = erreur.ligne != 0 ? ", ligne " + std::to_string(erreur.ligne) : std::string();
    return RefuseDit(etat, ErrModele, MsgMagasin,
                     "Le modèle defaut.qvc est illisible"_w + endroit + " : " + erreur.raison);
  }
  contenu.comptes = std::move(modele.comptes);
  contenu.rubriques = std::move(modele.rubriques);
  contenu.reglages = std::move(modele.reglages);
  contenu.textes = "@Texte\r\n";
  for (const std::string& libelle : modele.libelles) contenu.textes += libelle + "\r\n";
  contenu.textes = ScelleTextes(contenu.textes);
  return true;
}

template <class Rec>
bool AjouteTout(Moteur& moteur, u16 fichier, const std::vector<Rec>& recs) {
  for (const Rec& rec : recs) {
    const Position position = moteur.Ajoute(fichier, &rec);
    if (position == 0 || !moteur.AjouteCles(fichier, position, &rec, false)) return false;
  }
  return true;
}

bool CreeFichier(EtatQVAPI& etat, u16 numero, const std::string& dossier) {
  const DefinitionFichier& definition = *DefinitionFichierNumero(numero);
  const std::string base = Joint(dossier, definition.nom);
  assert(!definition.duCabinet);
  if (!etat.moteur->CreeDat(numero, base + ".dat", definition.taille)) return false;
  return etat.moteur->CreeIdx(definition.premiereCle, base + ".idx", definition.doubles[0]);
}

bool RemplitFichiers(QVAPI& magasin, EtatQVAPI& etat, const std::string& dossier, const Contenu& contenu) {
  for (const u16 numero : FichiersExercice())
    if (!CreeFichier(etat, numero, dossier)) return false;
  QVAPI::Unite unite(magasin);
  unite.SansRetour();
  return AjouteTout(*etat.moteur, FichierComptes, contenu.comptes) &&
         AjouteTout(*etat.moteur, FichierRubriques, contenu.rubriques) && unite.Valide();
}

/// Makes the files of an exercice in an empty directory.
bool RemplitDossier(QVAPI& magasin, EtatQVAPI& etat, const std::string& dossier, const Contenu& contenu) {
  EmpruntFichiers emprunt(etat);
  const bool fait = RemplitFichiers(magasin, etat, dossier, contenu);
  int code = fait ? 0 : etat.moteur->Erreur();
  const std::string fautif = etat.moteur->FichierErreur();
  for (const u16 numero : FichiersExercice()) FermeFichier(etat, numero);
  if (!fait) return etat.Refuse(code, fautif);
  const std::string textes = Joint(dossier, "TEXTES.dat");
  code = EcritTextes(*etat.systeme, textes, contenu.textes);
  if (code == 0) code = etat.systeme->SynchroniseDossier(dossier);
  return code == 0 || etat.Refuse(code, textes);
}

/// The directory of an exercice in the making: it is removed again, and what
/// stood there put back, unless it is kept.
class DossierEnCours {
 public:
  DossierEnCours(EtatQVAPI& etat, std::string nom)
      : m_etat(etat), m_nom(std::move(nom)), m_dossier(Joint(etat.pathCabinet, m_nom)) {}
  ~DossierEnCours() {
    if (m_garde) return;
    const int erreur = m_etat.moteur->Erreur();
    if (m_cree && m_etat.moteur->Relache(m_dossier)) OteRestes(*m_etat.systeme, m_dossier);
    AcheveExercices(m_etat);
    m_etat.moteur->PoseErreur(erreur);
  }

  /// Makes an empty directory; `remplace`: what stands there may be put back.
  bool Prepare(bool remplace) {
    assert(!m_cree && !m_garde && m_etat.moteur->Profondeur() == 0);
    Systeme& systeme = *m_etat.systeme;
    if (!m_etat.moteur->Relache(m_dossier)) return false;
    int code = 0;
    if (remplace) {
      if (!m_etat.reglages->Ecrit(m_nom, CleRemplacement, std::string("Oui")))
        return m_etat.Refuse(m_etat.reglages->Erreur(), m_etat.reglages->Chemin());
      code = systeme.Renomme(m_dossier, CheminCote(m_etat, m_nom, SuffixeRemplace));
      if (code == ENOENT) code = 0;
      // The old books have their other name for good before a new directory takes this one.
      if (code == 0) code = systeme.SynchroniseDossier(m_etat.pathCabinet);
    } else {
      code = OteRestes(systeme, m_dossier);
    }
    if (code == 0) code = systeme.CreeDossier(m_dossier);
    if (code == EEXIST) code = 0;
    m_cree = code == 0;
    if (code == 0) code = systeme.SynchroniseDossier(m_etat.pathCabinet);
    return code == 0 || m_etat.Refuse(code, m_dossier);
  }

  void Garde() {
    assert(m_cree && !m_garde);
    m_garde = true;
    RangeAncien(m_etat, m_nom);
  }

  const std::string& Chemin() const { return m_dossier; }

 private:
  EtatQVAPI& m_etat;
  std::string m_nom, m_dossier;
  bool m_cree = false, m_garde = false;
};

/// Exercice whose content a new one takes over: the one that ends last before it
/// begins, whose balances are carried over; else the one that ends last.
std::string Source(EtatQVAPI& etat, const std::string& nom, Date debut, bool& soldes, int& erreur) {
  assert(IsDateOk(debut));
  std::string precedent, dernier;
  Date finPrecedent = 0, finDernier = 0;
  for (const std::string& autre : LitNoms(etat, erreur)) {
    if (CompareSansCasse(autre, nom) == 0) continue;
    const Date fin = LitPeriode(etat, autre, erreur).fin;
    if (fin >= finDernier) {
      finDernier = fin;
      dernier = autre;
    }
    if (fin != 0 && fin < debut && fin >= finPrecedent) {
      finPrecedent = fin;
      precedent = autre;
    }
  }
  soldes = !precedent.empty();
  return soldes ? precedent : dernier;
}

std::string ListeAvec(EtatQVAPI& etat, const std::string& sans, const std::string& avec, int& erreur) {
  std::string liste;
  bool place = avec.empty();
  const auto ajoute = [&](const std::string& nom) { liste += (liste.empty() ? "" : ",") + nom; };
  for (const std::string& nom : LitNoms(etat, erreur)) {
    if (CompareSansCasse(nom, sans) != 0) {
      ajoute(nom);
    } else if (!place) {
      ajoute(avec);
      place = true;
    }
  }
  if (!place) ajoute(avec);
  return liste;
}

/// All settings of a new exercice, written in one replacement of the file.
bool EcritReglages(EtatQVAPI& etat, const std::string& nom, Date debut, Date fin, bool euro, bool tva,
                   const Contenu& contenu) {
  int erreur = 0;
  assert(debut < fin && !contenu.afficherDouble.empty());
  std::vector<Profil::Changement> changements;
  for (const std::string& cle : ClesExercice()) changements.push_back({nom, cle, std::nullopt});
  changements.push_back({nom, CleRemplacement, std::nullopt});
  changements.push_back({nom, "Debut", StrDate(debut)});
  changements.push_back({nom, "Fin", StrDate(fin)});
  changements.push_back({nom, "TVA", tva ? "Oui" : "Non"});
  changements.push_back({nom, "EURO", euro ? "Oui" : "Non"});
  changements.push_back({nom, "AFFICHERDOUBLE", contenu.afficherDouble});
  std::vector<Profil::Changement> defauts = contenu.reglages;
  defauts.push_back({"2035", "Recettes", "1, 7"});
  defauts.push_back({"2035", "Depenses", "8, 32"});
  defauts.push_back({"2035", "Résultat"_w, "33, 47"});
  defauts.push_back({"2035", "T.V.A.", "48, 52"});
  for (const Profil::Changement& defaut : defauts)
    if (LitReglage(etat, defaut.section, defaut.cle, erreur).empty()) changements.push_back(defaut);
  changements.push_back({"Activite", "Exercices", ListeAvec(etat, nom, nom, erreur)});
  if (erreur == 0 && etat.reglages->Ecrit(changements)) return true;
  return etat.Refuse(erreur != 0 ? erreur : etat.reglages->Erreur(), etat.reglages->Chemin());
}

/// Exercice whose period overlaps; empty when none does.
std::string Conflit(EtatQVAPI& etat, const std::string& nom, Date debut, Date fin, int& erreur) {
  assert(debut < fin);
  for (const std::string& autre : LitNoms(etat, erreur)) {
    if (CompareSansCasse(autre, nom) == 0) continue;
    const PeriodeExercice periode = LitPeriode(etat, autre, erreur);
    if (periode.Connue() && debut <= periode.fin && fin >= periode.debut) return autre;
  }
  return {};
}

/// True when something stands under the name that a new exercice would destroy.
bool Existe(EtatQVAPI& etat, const std::string& nom, int& erreur) {
  if (!NomListe(etat, nom, erreur).empty() || !LitReglage(etat, nom, "Debut", erreur).empty()) return true;
  Empreinte journal;
  const int rc = etat.systeme->Mesure(Joint(Joint(etat.pathCabinet, nom), "JOURNAL.dat"), journal);
  if (rc != 0 && rc != ENOENT && rc != ENOTDIR && erreur == 0) erreur = rc;
  return rc == 0 && journal.taille > QVAPI::QVGetFirstRecPos(sizeof(Line));
}

/// Removes an exercice's keys from its section, and the section when nothing else is in it.
void OteSection(EtatQVAPI& etat, const std::string& nom, std::vector<Profil::Changement>& changements,
                int& erreur) {
  std::vector<std::string> siennes = ClesExercice();
  siennes.push_back(CleRemplacement);
  bool reste = false;
  const std::vector<std::string> cles = etat.reglages->Cles(nom);
  if (erreur == 0) erreur = etat.reglages->Erreur();
  for (const std::string& cle : cles) {
    const bool sienne = std::any_of(siennes.begin(), siennes.end(),
                                    [&](const std::string& s) { return CompareSansCasse(s, cle) == 0; });
    if (sienne)
      changements.push_back({nom, cle, std::nullopt});
    else
      reste = true;
  }
  if (!reste) changements.push_back({nom, {}, std::nullopt});
}

}  // namespace

bool AcheveExercices(EtatQVAPI& etat) {
  if (etat.moteur->EnLecture()) return true;
  Systeme& systeme = *etat.systeme;
  bool bien = true;
  const auto echoue = [&](const std::string& nom, int code) {
    bien = RefuseDit(etat, code, MsgMagasin,
                     "L'exercice "_w + nom + " n'a pas pu être rétabli : "_w + TexteErreurSysteme(code));
  };
  const auto refuse = [&](const std::string& chemin, int code) {
    return RefuseDit(etat, code, MsgMagasin, TexteErreurSysteme(code) + " : " + chemin);
  };
  std::vector<std::string> noms;
  if (const int rc = systeme.Liste(etat.pathCabinet, noms)) return refuse(etat.pathCabinet, rc);
  for (const std::string& nom : noms) {
    const std::size_t point = nom.find('.');
    if (point == std::string::npos) continue;
    const std::string exercice = nom.substr(0, point), suffixe = nom.substr(point);
    if (!NomExerciceCorrect(exercice) || (suffixe != SuffixeRemplace && suffixe != SuffixeSupprime)) continue;
    int code = 0;
    const bool rendu =
        suffixe == SuffixeRemplace && !LitReglage(etat, exercice, CleRemplacement, code).empty();
    if (code == 0 && rendu) code = Retablit(etat, exercice);
    if (code != 0)
      echoue(exercice, code);
    else if (suffixe == SuffixeSupprime)
      OteDossier(systeme, Joint(etat.pathCabinet, nom));
    else if (!rendu)
      RangeAncien(etat, exercice);
  }
  const std::vector<std::string> sections = etat.reglages->Sections();
  if (etat.reglages->Erreur() != 0) return refuse(etat.reglages->Chemin(), etat.reglages->Erreur());
  for (const std::string& section : sections) {
    if (!NomExerciceCorrect(section)) continue;
    // The old books have their name, which the settings do not know yet.
    if (!etat.reglages->Lit(section, CleAvant).empty())
      if (const int rc = RangeAncien(etat, section)) echoue(section, rc);
    if (etat.reglages->Lit(section, CleRemplacement).empty()) continue;
    Empreinte cote;
    const std::string chemin = CheminCote(etat, section, SuffixeRemplace);
    const int rc = systeme.Mesure(chemin, cote);
    if (rc != ENOENT)
      bien = rc == 0 ? false : refuse(chemin, rc);
    else if (!etat.reglages->Ecrit(section, CleRemplacement, std::nullopt))
      echoue(section, etat.reglages->Erreur());
  }
  return bien;
}

bool QVAPI::QVCreateExercice(const std::string& nomDonne, Date debut, Date fin, bool euro, bool tva) {
  EtatQVAPI& etat = *m_etat;
  if (!CabinetPret(etat)) return false;
  if (etat.moteur->Profondeur() != 0) return RefuseDit(*this, etat, ErrValeur);
  if (!NomExerciceCorrect(nomDonne))
    return RefuseDit(
        etat, ErrValeur, MsgNomExercice,
        "Le nom de l'exercice \""_w + nomDonne + "\" est incorrect : 1 à 4 lettres ou chiffres."_w);
  if (!IsDateOk(debut) || !IsDateOk(fin) || debut >= fin)
    return RefuseDit(etat, ErrValeur, MsgPeriode,
                     "La période du "_w + StrDate(debut) + " au " + StrDate(fin) + " est incorrecte.");
  if (!AcheveExercices(etat)) return false;
  int erreur = 0;
  const std::string conflit = Conflit(etat, nomDonne, debut, fin, erreur);
  const std::string listee = NomListe(etat, nomDonne, erreur), nom = listee.empty() ? nomDonne : listee;
  const bool remplace = Existe(etat, nom, erreur);
  bool soldes = false;
  const std::string source = Source(etat, nom, debut, soldes, erreur);
  if (erreur != 0) return RefuseReglages(*this, etat, erreur);
  if (!conflit.empty())
    return RefuseDit(etat, ErrConflit, MsgConflit,
                     "Cette période est en conflit avec l'exercice "_w + conflit);
  if (remplace) {
    const std::string question = "Cet exercice existe déja désirez vous le remplacer ?\n"_w;
    if (!etat.rappel || etat.rappel(EvQuestion, StyleOuiNonQuestion, question) != ReponseOui)
      return etat.Refuse(ErrExistant);
    if (CompareSansCasse(etat.nomExercice, nom) == 0) QVCloseExercice();
  }
  Contenu contenu;
  if (!(source.empty() ? ContenuModele(etat, contenu)
                       : ContenuExercice(*this, etat, source, soldes, contenu)))
    return false;
  PoseTva(contenu.comptes, tva);
  DossierEnCours dossier(etat, nom);
  if (!dossier.Prepare(remplace) || !RemplitDossier(*this, etat, dossier.Chemin(), contenu) ||
      !EcritReglages(etat, nom, debut, fin, euro, tva, contenu))
    return RefuseDit(*this, etat, QVFileErrorCode());
  dossier.Garde();
  return true;
}

bool QVAPI::QVInstalleExercice(const std::string& nomDonne, const std::string& pret,
                               const std::vector<std::pair<std::string, std::string>>& reglages,
                               const std::string& avant) {
  EtatQVAPI& etat = *m_etat;
  if (!CabinetPret(etat)) return false;
  if (etat.moteur->Profondeur() != 0 || !NomExerciceCorrect(nomDonne) ||
      avant.find('/') != std::string::npos ||
      pret.compare(0, etat.pathCabinet.size() + 1, etat.pathCabinet + "/") != 0)
    return RefuseDit(*this, etat, ErrValeur);
  if (!AcheveExercices(etat)) return false;
  int erreur = 0;
  const std::string listee = NomListe(etat, nomDonne, erreur), nom = listee.empty() ? nomDonne : listee;
  const bool remplace = Existe(etat, nom, erreur);
  Empreinte ancien;
  const int prise = remplace ? etat.systeme->Mesure(Joint(etat.pathCabinet, avant), ancien) : ENOENT;
  if (prise != ENOENT) return RefuseDit(*this, etat, prise ? prise : EEXIST);
  std::vector<Profil::Changement> changements;
  // The section goes as a whole, the note of the replacement with it.
  changements.push_back({nom, {}, std::nullopt});
  for (const auto& [cle, valeur] : reglages) changements.push_back({nom, cle, valeur});
  if (remplace) changements.push_back({nom, CleAvant, avant});
  changements.push_back({"Activite", "Exercices", ListeAvec(etat, nom, nom, erreur)});
  if (erreur != 0) return RefuseDit(*this, etat, erreur);
  if (CompareSansCasse(etat.nomExercice, nom) == 0) QVCloseExercice();
  DossierEnCours dossier(etat, nom);
  if (!dossier.Prepare(remplace)) return RefuseDit(*this, etat, QVFileErrorCode());
  // The directory that `Prepare` made is empty: the one that is ready takes its name, for good before the
  // settings say that the exercice is this one.
  if (!(erreur = etat.systeme->Renomme(pret, dossier.Chemin())))
    erreur = etat.systeme->SynchroniseDossier(etat.pathCabinet);
  if (erreur == 0) erreur = etat.systeme->SynchroniseDossier(DossierDe(pret));
  if (erreur == 0 && !etat.reglages->Ecrit(changements)) erreur = etat.reglages->Erreur();
  if (erreur != 0) return RefuseDit(*this, etat, erreur);
  dossier.Garde();
  return true;
}

bool QVAPI::QVDeleteExercice(const std::string& nomDonne) {
  EtatQVAPI& etat = *m_etat;
  if (!CabinetPret(etat)) return false;
  if (etat.moteur->Profondeur() != 0) return RefuseDit(*this, etat, ErrValeur);
  if (!AcheveExercices(etat)) return false;
  int erreur = 0;
  const std::string nom = NomListe(etat, nomDonne, erreur);
  std::vector<Profil::Changement> changements;
  OteSection(etat, nom, changements, erreur);
  changements.push_back({"Activite", "Exercices", ListeAvec(etat, nom, {}, erreur)});
  if (CompareSansCasse(LitReglage(etat, "Activite", "Exercice", erreur), nom) == 0)
    changements.push_back({"Activite", "Exercice", std::string()});
  if (erreur != 0) return RefuseReglages(*this, etat, erreur);
  if (!NomExerciceCorrect(nom)) return RefuseDit(*this, etat, ErrValeur);
  if (CompareSansCasse(etat.nomExercice, nom) == 0) QVCloseExercice();
  const std::string dossier = Joint(etat.pathCabinet, nom);
  if (!etat.moteur->Relache(dossier)) return RefuseDit(*this, etat, QVFileErrorCode());
  if (!etat.reglages->Ecrit(changements)) return RefuseReglages(*this, etat, etat.reglages->Erreur());
  // The exercice is gone; what cannot be removed now is tried again later.
  const std::string cote = CheminCote(etat, nom, SuffixeSupprime);
  const bool deplace = etat.systeme->Renomme(dossier, cote) == 0;
  OteDossier(*etat.systeme, deplace ? cote : dossier);
  return true;
}

}  // namespace fenlor

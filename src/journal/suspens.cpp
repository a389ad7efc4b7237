#include "journal/suspens.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>

#include "core/valeurs.h"
#include "journal/ecriturelue.h"
#include "journal/odlue.h"
#include "journal/textes.h"
#include "store/dates.h"
#include "store/profil.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

const std::string Section = "Saisie";
constexpr u32 NbLignesMax = 10'000;
constexpr u32 NbCherchees = 1'000;  ///< entries made since that are compared

std::string Chemin(CFenlorApp& app) { return Joint(app.PathExercice, "SAISIE.ini"); }
Profil FichierDe(CFenlorApp& app) { return {app.Magasin.SystemeFichiers(), Chemin(app)}; }

/// Puts each field into the list of keys.
class Ecrivain {
 public:
  explicit Ecrivain(std::vector<Profil::Changement>& cles) : m_cles(cles) {}
  static constexpr bool Lit = false;
  void operator()(const std::string& cle, const std::string& valeur) {
    m_cles.push_back({Section, cle, EncodeRetours(valeur)});
  }
  void operator()(const std::string& cle, f64 valeur) {
    char texte[32];
    const auto fin = std::to_chars(texte, texte + sizeof texte, valeur).ptr;
    m_cles.push_back({Section, cle, std::string(texte, fin)});
  }
  template <class T>
  requires std::is_integral_v<T>
  void operator()(const std::string& cle, T valeur) {
    m_cles.push_back({Section, cle, std::to_string(valeur)});
  }

 private:
  std::vector<Profil::Changement>& m_cles;
};

/// Takes each field from the file; what is not there, or is no number, leaves it.
class Lecteur {
 public:
  explicit Lecteur(Profil& fichier) : m_fichier(fichier) {}
  static constexpr bool Lit = true;
  void operator()(const std::string& cle, std::string& valeur) {
    valeur = DecodeRetours(m_fichier.Lit(Section, cle));
  }
  template <class T>
  requires std::is_arithmetic_v<T>
  void operator()(const std::string& cle, T& valeur) {
    const std::string texte = m_fichier.Lit(Section, cle);
    using Nombre = std::conditional_t<std::is_same_v<T, bool>, int, T>;
    Nombre lu{};
    const auto fin = std::from_chars(texte.data(), texte.data() + texte.size(), lu);
    if (fin.ec != std::errc{} || fin.ptr != texte.data() + texte.size()) return;
    if constexpr (std::is_floating_point_v<T>)
      if (!std::isfinite(lu)) return;
    valeur = static_cast<T>(lu);
  }

 private:
  Profil& m_fichier;
};

/// A list: its length, then each of its rows.
template <class Sens, class Lignes, class Ligne>
void Parcourt(Sens& sens, const std::string& nom, Lignes& lignes, const Ligne& ligne) {
  u32 nombre = static_cast<u32>(lignes.size());
  sens(nom, nombre);
  if constexpr (Sens::Lit) lignes.resize(std::min(nombre, NbLignesMax));
  for (std::size_t i = 0; i < lignes.size(); ++i) ligne(nom + std::to_string(i + 1), lignes[i]);
}

/// The one description of the file: both ways.
template <class Sens, class Saisie>
void Parcourt(Sens sens, Saisie& s, u32& prochain) {
  auto& e = s.ecriture;
  sens("Prochaine", prochain);
  sens("OD", s.operationDiverse);
  sens("Journal", e.journal);
  sens("Genre", e.genre);
  sens("Mouvement", e.mouvement);
  sens("Ligne", e.ligne);
  sens("Date", e.date);
  sens("Compte", e.compte);
  sens("Libelle", e.libelle);
  sens("Euro", e.euro);
  sens("TTC", e.montants.ttc);
  sens("Professionnel", e.montants.professionnel);
  sens("Personnel", e.montants.personnel);
  sens("HT", e.montants.ht);
  sens("TVA", e.montants.tva);
  sens("Taux", e.montants.taux);
  sens("Tresorerie", e.tresorerie);
  sens("Paiement", e.paiement);
  sens("FrappeCode", s.code);
  sens("FrappeTresorerie", s.tresorerie);
  sens("FrappeTTC", s.ttc);
  sens("FrappeProfessionnel", s.professionnelle);
  Parcourt(sens, "Tresoreries", e.tresoreries, [&](const std::string& cle, auto& ligne) {
    sens(cle + "Compte", ligne.compte);
    sens(cle + "Montant", ligne.montant);
    sens(cle + "Paiement", ligne.paiement);
  });
  Parcourt(sens, "Lignes", s.lignes, [&](const std::string& cle, auto& ligne) {
    sens(cle + "Compte", ligne.compte);
    sens(cle + "Libelle", ligne.libelle);
    sens(cle + "Debit", ligne.debit);
    sens(cle + "Credit", ligne.credit);
    sens(cle + "Paiement", ligne.paiement);
  });
  sens("LigneOuverte", s.ligneOuverte);
  sens("LigneRang", s.ligne.rang);
  sens("LigneCompte", s.ligne.saisie.compte);
  sens("LigneLibelle", s.ligne.saisie.libelle);
  sens("LignePaiement", s.ligne.saisie.paiement);
  sens("LigneCode", s.ligne.code);
  sens("LigneDebit", s.ligne.debit);
  sens("LigneCredit", s.ligne.credit);
}

std::vector<Profil::Changement> Cles(const SaisieSuspendue& saisie, u32 prochain) {
  std::vector<Profil::Changement> cles;
  Parcourt(Ecrivain(cles), saisie, prochain);
  assert(!cles.empty());
  return cles;
}

/// A line whose form was open may have been finished since, and others may have followed.
bool MemesLignes(const SaisieSuspendue& s, const ODLue& od) {
  if (s.ligneOuverte ? od.lignes.size() < s.lignes.size() : od.lignes.size() != s.lignes.size()) return false;
  if (s.ligneOuverte && s.ligne.rang == 0 && od.lignes.size() == s.lignes.size()) return false;
  for (std::size_t i = 0; i < s.lignes.size(); ++i) {
    const LigneODSaisie &a = s.lignes[i], &b = od.lignes[i];
    const bool ouverte = s.ligneOuverte && s.ligne.rang == i + 1;
    if (!ouverte && (a.compte != b.compte || a.debit != b.debit || a.credit != b.credit)) return false;
  }
  return true;
}

bool MemesTresoreries(const SaisieEcriture& s, const EcritureLue& lue) {
  assert(s.genre == GenreSimple || s.genre == GenreStandard);
  if (s.genre != lue.saisie.genre) return false;
  if (s.genre == GenreSimple) return s.tresorerie == lue.saisie.tresorerie;
  return std::equal(s.tresoreries.begin(), s.tresoreries.end(), lue.lignes.begin(), lue.lignes.end(),
                    [](const LigneTresorSaisie& a, const LigneTresorSaisie& b) {
                      return a.compte == b.compte && a.montant == b.montant;
                    });
}

/// The books hold what was typed, under that number.
bool Tient(CFenlorApp& app, const SaisieSuspendue& s, u32 mouvement) {
  const SaisieEcriture& e = s.ecriture;
  const auto entete = [&e](const auto& lue) {
    // A label that nobody typed is that of the account.
    return lue.journal == e.journal && lue.date == e.date && (EstVide(e.libelle) || lue.libelle == e.libelle);
  };
  if (s.operationDiverse) {
    ODLue od;
    return !LitOD(app, mouvement, od) && entete(od.saisie) && MemesLignes(s, od);
  }
  EcritureLue lue;
  return s.tresorerie.empty() && s.ttc.empty() && s.professionnelle.empty() &&
         !LitEcriture(app, mouvement, lue) && entete(lue.saisie) && lue.saisie.compte == e.compte &&
         lue.saisie.montants.ttc == e.montants.ttc &&
         lue.saisie.montants.professionnel == e.montants.professionnel && MemesTresoreries(e, lue);
}

bool DejaEnregistree(CFenlorApp& app, const SaisieSuspendue& s, u32 prochain) {
  if (s.ecriture.mouvement != 0) return Tient(app, s, s.ecriture.mouvement);
  const u32 fin = app.Magasin.GetFreeMouvementsID(app.PathExercice, static_cast<u16>(s.ecriture.journal));
  for (u32 m = prochain; m < fin && m - prochain < NbCherchees; ++m)
    if (Tient(app, s, m)) return true;
  return false;
}

}  // namespace

std::string TexteSuspens(const SaisieSuspendue& saisie) {
  std::string texte;
  for (const Profil::Changement& cle : Cles(saisie, 0)) texte += cle.cle + '=' + *cle.valeur + '\n';
  return texte;
}

bool NoteSuspens(CFenlorApp& app, const SaisieSuspendue& saisie) {
  if (app.PathExercice.empty()) return false;
  Profil fichier = FichierDe(app);
  // What the last one had more of goes with its section, in the same replacement of the file.
  std::vector<Profil::Changement> changements{{Section, {}, {}}};
  const u32 prochain =
      app.Magasin.GetFreeMouvementsID(app.PathExercice, static_cast<u16>(saisie.ecriture.journal));
  for (Profil::Changement& cle : Cles(saisie, prochain)) changements.push_back(std::move(cle));
  return fichier.Ecrit(changements);
}

bool OublieSuspens(CFenlorApp& app) {
  Systeme& systeme = app.Magasin.SystemeFichiers();
  if (app.PathExercice.empty() || !systeme.Existe(Chemin(app))) return true;
  // The name must not come back with the power: what was saved would be offered again.
  return systeme.Supprime(Chemin(app)) == 0 && systeme.SynchroniseDossier(app.PathExercice) == 0;
}

std::optional<SaisieSuspendue> LitSuspens(CFenlorApp& app) {
  if (app.PathExercice.empty() || app.Reglages.IsFige()) return std::nullopt;
  Profil fichier = FichierDe(app);
  if (!fichier.Existe(Section)) return std::nullopt;
  SaisieSuspendue s;
  u32 prochain = 0;
  Parcourt(Lecteur(fichier), s, prochain);
  SaisieEcriture& e = s.ecriture;
  const bool connu = e.journal >= JournalRecettes && e.journal <= JournalOD &&
                     (s.operationDiverse ||
                      (e.journal != JournalOD && (e.genre == GenreSimple || e.genre == GenreStandard)));
  if (s.ligne.rang > (s.operationDiverse ? s.lignes.size() : e.tresoreries.size())) s.ligneOuverte = false;
  if (!connu || !IsDateOk(e.date) || DejaEnregistree(app, s, prochain)) return std::nullopt;
  Mouvement entete{};
  if (e.mouvement != 0 && !app.Magasin.ReadMouvements(app.PathExercice, e.mouvement, entete))
    e.mouvement = e.ligne = 0;
  return s;
}

std::string DecritSuspens(const SaisieSuspendue& saisie) {
  f64 montant = saisie.ecriture.montants.ttc;
  for (const LigneODSaisie& ligne : saisie.lignes) montant += ligne.debit;
  std::string parties = saisie.ecriture.libelle;
  if (montant != 0) {
    if (!parties.empty()) parties += ", ";
    parties += (saisie.ecriture.euro ? FormatEuro : FormatFranc)(montant);
  }
  const std::string jour = StrDate(saisie.ecriture.date).substr(0, 5);
  return parties.empty() ? TexteFormat(TexteReprendre, {jour})
                         : TexteFormat(TexteReprendreDetail, {jour, parties});
}

}  // namespace fenlor

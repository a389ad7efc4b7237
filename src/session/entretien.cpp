#include "session/entretien.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <optional>

#include "core/erreursexercice.h"
#include "core/texte.h"
#include "core/valeurs.h"
#include "journal/textes.h"
#include "session/textes.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr FichierReconstructible fichiers[] = {
    {FichierListeBanques, "BANQUE", false},  {FichierListeComptes, "COMPTES", false},
    {FichierListeJournal, "JOURNAL", false}, {FichierListeRubriques, "RUBRIQUE", false},
    {FichierListeImmo, "Immo", true},        {FichierListeAmo, "Amo", true},
    {FichierListeReleves, "RELEVES", false},
};

/// Lines of the journal in one unit of work.
constexpr u32 lotAjustement = 1000;

template <std::size_t N>
void Termine(char (&champ)[N]) {
  champ[N - 1] = 0;
}

RapportReindex Reconstruit(CFenlorApp& app, NumeroFichier numero) {
  assert(!app.Magasin.QVEnUnite());
  // The records of a closed exercice stand under its seal: they keep what they hold.
  if (app.Reglages.IsExerciceCloture() && !DefinitionFichierNumero(numero)->duCabinet)
    return CBTFiles(app, {}, numero).Reindex();
  switch (numero) {
    case FichierBanques:
      return CBanques(app, {}).Reindex(FiltreBanque);
    case FichierReleves:
      return CReleves(app, {}).Reindex(FiltreReleve);
    case FichierComptes:
      return CPlan(app, {}).Reindex(FiltrePlan);
    case FichierRubriques:
      return CRubriques(app, {}).Reindex(FiltreRubrique);
    case FichierImmo:
      return CImmobilisations(app, {}).Reindex(FiltreImmo);
    case FichierAmo:
      return CAmortissements(app, {}).Reindex(FiltreAmo);
    default:
      return CBTFiles(app, {}, numero).Reindex();
  }
}

void Execute(const Autour& autour, const std::function<void()>& travail) {
  if (autour) {
    autour(travail);
  } else {
    travail();
  }
}

/// Rates by date, for lines that come in order of date.
class TauxDuJour {
 public:
  explicit TauxDuJour(QVAPI& magasin) : m_magasin(magasin) {}
  f64 Taux(Date date) {
    if (!m_connu || date != m_date) {
      m_taux = m_magasin.GetTauxEuro(date);
      m_date = date;
      m_connu = true;
    }
    return m_taux;
  }

 private:
  QVAPI& m_magasin;
  Date m_date = 0;
  f64 m_taux = 0;
  bool m_connu = false;
};

void Ajuste(Line& ligne, f64 taux) {
  assert(taux > 0);
  if (ligne.SaisieEuro == 0)
    ligne.MontantEuro = QVAPI::ConvertFrancToEuro(taux, ligne.MontantFranc);
  else
    ligne.MontantFranc = QVAPI::ConvertEuroToFranc(taux, ligne.MontantEuro);
  ligne.MontantEuro = Arrondi(ligne.MontantEuro, 2);
  ligne.MontantFranc = Arrondi(ligne.MontantFranc, 2);
}

Refus ParcourtJournal(CFenlorApp& app, AjustementEuros& resultat) {
  QVAPI& magasin = app.Magasin;
  const u16 numCle = DefinitionFichierNumero(FichierJournal)->premiereCle;
  const Progression progression(app.Boite, Texte(TitreMontantsEuros), Texte(TexteTraitement), true,
                                magasin.QVNumberOfKey(numCle));
  TauxDuJour taux(magasin);
  std::optional<QVAPI::Unite> lot;
  std::string cle;
  Position position = magasin.QVFirstKey(numCle, cle);
  while (position != 0 && !resultat.arrete) {
    if (!lot) lot.emplace(magasin);
    Line ligne;
    if (!magasin.ReadLines(app.PathExercice, position, ligne)) return app.EchecMagasin();
    const Line avant = ligne;
    Ajuste(ligne, taux.Taux(ligne.DateLigne));
    if (std::memcmp(&avant, &ligne, sizeof ligne) != 0) {
      if (!magasin.WriteJournal(ligne)) return app.EchecDit();
      ++resultat.changees;
    }
    position = magasin.QVNextKey(numCle, cle);
    app.Boite.Step();
    if (++resultat.parcourues % lotAjustement == 0) {
      if (!lot->Valide()) return app.EchecMagasin();
      lot.reset();
    }
    resultat.arrete = app.Boite.IsAborted();
  }
  return !lot || lot->Valide() ? Refus{} : app.EchecMagasin();
}

}  // namespace

bool FiltrePlan(Plan& rec) {
  if (EstVide(LitTexte(rec.Compte)) || rec.Type > Autre) return false;
  Termine(rec.Compte);
  Termine(rec.Code);
  Termine(rec.Designation);
  Termine(rec.Rubrique);
  if (rec.Type == Recette) rec.PartPro = 100.0;
  return true;
}

bool FiltreRubrique(Rubrique& rec) {
  if (EstVide(LitTexte(rec.Rubrique))) return false;
  Termine(rec.Rubrique);
  Termine(rec.Designation);
  Termine(rec.Formule);
  return true;
}

bool FiltreBanque(Banque& rec) {
  if (EstVide(LitTexte(rec.Compte)) || !IsDateOk(rec.Date)) return false;
  if (rec.MontantFranc == 0 && rec.MontantEuro == 0) return false;
  Termine(rec.Compte);
  Termine(rec.Libelle);
  if (!IsDateOk(rec.DateValeur)) rec.DateValeur = rec.Date;
  return true;
}

bool FiltreReleve(OperationImportee& rec) {
  if (EstVide(LitTexte(rec.Compte)) || !IsDateOk(rec.Date)) return false;
  Termine(rec.Compte);
  Termine(rec.Monnaie);
  Termine(rec.Libelle);
  Termine(rec.Identifiant);
  return true;
}

bool FiltreImmo(Immobilisation& rec) {
  if (rec.Numero == 0 || !IsDateOk(rec.DateAchat)) return false;
  Termine(rec.Designation);
  return true;
}

bool FiltreAmo(Amortissement& rec) { return rec.Numero != 0 && rec.Annee != 0; }

std::span<const FichierReconstructible> FichiersReconstructibles() { return fichiers; }

Refus ReconstruitCles(CFenlorApp& app, const std::vector<std::string>& noms, Reconstruction& resultat) {
  resultat = {};
  const auto demande = [&noms](const FichierReconstructible& fichier) {
    return std::any_of(noms.begin(), noms.end(),
                       [&](const std::string& nom) { return CompareSansCasse(nom, fichier.nom) == 0; });
  };
  for (const std::string& nom : noms) {
    const auto* fichier = std::find_if(std::begin(fichiers), std::end(fichiers),
                                       [&](const auto& f) { return CompareSansCasse(nom, f.nom) == 0; });
    if (fichier == std::end(fichiers)) return Refus(ErrChampInconnu, "", {nom});
    if (!fichier->duCabinet && app.PathExercice.empty()) return Refus(ErrAucunExercice);
  }
  if (const Refus r = app.ControleLecture()) return r;

  Refus refus;
  const Progression progression(app.Boite, Texte(TitreReconstruction), {}, true, 0);
  for (const FichierReconstructible& fichier : fichiers) {
    if (!demande(fichier)) continue;
    app.Boite.SetTexte(TexteFormat(TexteReconstruction, {fichier.nom}));
    const auto numero = static_cast<NumeroFichier>(DefinitionNom(fichier.nom)->numero);
    const RapportReindex rapport = Reconstruit(app, numero);
    assert(!rapport.fait || !rapport.arrete);
    resultat.fichiers.push_back({fichier.nom, rapport});
    if (rapport.arrete || app.Boite.IsAborted()) {
      resultat.arrete = true;
      break;
    }
    if (rapport.fait || refus) continue;
    const bool disque = rapport.code > 0 && rapport.code < 1000;
    refus = disque ? Refus(ErrReconstruction, "", {fichier.nom, TexteErreurSysteme(rapport.code)})
                   : Refus::DejaDit(ErrFichierEndommage, "", {fichier.nom});
  }
  return refus;
}

std::string ResumeReconstruction(const Reconstruction& reconstruction) {
  std::string resume;
  for (const FichierReconstruit& fichier : reconstruction.fichiers) {
    const RapportReindex& r = fichier.rapport;
    const bool change = r.ecartes || r.remplaces || r.inconnus || r.repares || r.vierges ||
                        r.octetsRestants || r.endommage || r.clesManquantes;
    if (!r.fait || !change) continue;
    std::string ligne = TexteFormat(FormatFichierReconstruit, {fichier.nom, std::to_string(r.gardes)});
    const std::pair<TexteFixe, u64> comptes[] = {
        {FormatReconstruitEcartes, r.ecartes},    {FormatReconstruitRemplaces, r.remplaces},
        {FormatReconstruitInconnus, r.inconnus},  {FormatReconstruitRepares, r.repares},
        {FormatReconstruitVierges, r.vierges},    {FormatReconstruitRestants, r.octetsRestants},
        {FormatReconstruitCles, r.clesManquantes}};
    for (const auto& [format, nombre] : comptes)
      if (nombre) ligne += TexteFormat(format, {std::to_string(nombre)});
    if (r.endommage) ligne += Texte(MotFichierEndommage);
    if (!r.copie.empty())
      ligne += TexteFormat(FormatReconstruitCopie, {DepuisUtf8(r.copie).value_or(r.copie)});
    resume += (resume.empty() ? "" : "\n") + ligne;
  }
  return resume;
}

bool RecalculComptes(CFenlorApp& app, Statistiques& statistiques) {
  assert(!app.NomExercice.empty() && !app.Magasin.QVEnUnite());
  return app.Magasin.QVCalculCompta(app.NomExercice, statistiques);
}

Refus RecalculEntoure(CFenlorApp& app, Statistiques& statistiques, const Autour& autour, bool& fait) {
  fait = false;
  int code = ErrAucune;
  Execute(autour, [&] {
    fait = RecalculComptes(app, statistiques);
    code = app.Magasin.QVFileErrorCode();
  });
  if (fait) return {};
  app.Magasin.PoseErreur(code);
  return code == ErrAucune ? Refus{} : app.EchecDit();
}

Refus CommandeRecalcul(CFenlorApp& app, Statistiques& statistiques, const Autour& autour) {
  if (app.NomExercice.empty()) return Refus(ErrAucunExercice);
  if (const Refus r = app.ControleLecture()) return r;
  if (const Refus r = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionRecalcul)) return r;
  bool fait = false;
  if (const Refus r = RecalculEntoure(app, statistiques, autour, fait)) return r;
  if (!fait) return {};
  const auto nombre = [](u32 valeur) { return std::to_string(valeur); };
  app.MessageId(BoutonsOk | IconeInformation, InfoRecalcul,
                {nombre(statistiques.NbRecettes), nombre(statistiques.NbDepenses), nombre(statistiques.NbOD),
                 nombre(statistiques.NbPointees), nombre(statistiques.NbRemises),
                 nombre(statistiques.NbRapprochees), nombre(statistiques.NbValidees)});
  return {};
}

Refus AjusteEuros(CFenlorApp& app, AjustementEuros& ajustement, const Autour& autour) {
  ajustement = {};
  if (app.PathExercice.empty()) return Refus(ErrAucunExercice);
  if (const Refus r = app.ControleEcriture()) return r;
  if (const Refus r = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionAjustementEuro)) return r;
  Refus refus;
  Execute(autour, [&] {
    const Ouverture journal(app.Magasin, FichierJournal);
    refus = journal ? ParcourtJournal(app, ajustement) : app.EchecMagasin();
  });
  return refus;
}

}  // namespace fenlor

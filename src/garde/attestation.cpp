#include "garde/attestation.h"

#include <array>

#include "core/cles.h"
#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "garde/textes.h"
#include "journal/textes.h"
#include "store/definitions.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct SommesJournal {
  u32 ecritures = 0, lignes = 0;
  SommesEtat montants;
};

}  // namespace

std::string PhraseSceau(const ExamenSceau& examen) {
  switch (examen.etat) {
    case EtatSceau::Intact:
      return Texte(PhraseSceauIntact);
    case EtatSceau::Absent:
      return Texte(PhraseSceauAbsent);
    default:
      return Texte(PhraseSceauRompu);
  }
}

void CEtatAttestationDoc::BuildEtat() {
  PoseTitre(Texte(TitreAttestation));
  SetEtatEntete(EnteteAttestation);
  if (App.NomExercice.empty()) return Abandonne(Refus(ErrAucunExercice));
  const Parametres& reglages = App.Reglages;
  if (!reglages.IsExerciceCloture()) return Abandonne(Refus(ErrExerciceOuvert, "", {App.NomExercice}));
  EtatPrintf(TeteAttestation,
             {EchappeEtat(reglages.LitIni(Texte(SecActivite), Texte(CleIdentification))), App.NomExercice,
              StrDate(reglages.GetDebutExercice()), StrDate(reglages.GetFinExercice()),
              reglages.LitIniExercice({}, Texte(CleCloture)), StrDate(App.Magasin.Today())});
  EcritJournaux();
  EcritSceau();
}

void CEtatAttestationDoc::EcritJournaux() {
  std::array<SommesJournal, 3> journaux;
  const Ouverture ouverture(App.Magasin, FichierJournal);
  if (!ouverture) return Abandonne(App.EchecMagasin());
  const bool entier = App.Magasin.QVParcours(FichierJournal, [&](Position, const void* rec) {
    const Line& ligne = *static_cast<const Line*>(rec);
    const i16 journal = ligne.Journal;
    if (journal < JournalRecettes || journal > JournalOD) return true;
    SommesJournal& sommes = journaux[static_cast<std::size_t>(journal - JournalRecettes)];
    sommes.ecritures += ligne.Rang == 0;
    ++sommes.lignes;
    sommes.montants.Ajoute(ligne);
    return true;
  });
  if (!entier) return Abandonne(App.EchecMagasin());
  EcritEtat("\\H");
  for (std::size_t i = 0; i < journaux.size(); ++i) {
    const SommesJournal& s = journaux[i];
    const auto montant = [&](f64 franc, f64 euro) {
      return OptionEuro() ? FormatEuro(Arrondi2(euro)) : FormatFranc(Arrondi2(franc));
    };
    EtatPrintf(RangeeAttestation,
               {Texte(MotJournal[i]), std::to_string(s.ecritures), std::to_string(s.lignes),
                montant(s.montants.debitFranc, s.montants.debitEuro),
                montant(s.montants.creditFranc, s.montants.creditEuro)});
  }
  EcritEtat("\\X");
}

void CEtatAttestationDoc::EcritSceau() {
  ExamenSceau examen;
  if (const Refus refus = ExamineSceau(App, examen)) return Abandonne(refus);
  const std::size_t moitie = examen.hexa.size() / 2;
  EtatPrintf(SceauAttestation,
             {examen.hexa.substr(0, moitie), examen.hexa.substr(moitie), PhraseSceau(examen)});
  for (const std::string& constat : examen.constats) EtatPrintf(ConstatAttestation, {EchappeEtat(constat)});
}

}  // namespace fenlor

// Lines of the journal that are matched with operations of the bank.

#include <algorithm>
#include <cassert>
#include <cstring>
#include <numeric>
#include <vector>

#include "store/ecritures_operation.h"

namespace fenlor {

namespace {

/// Records on their way from the memory while the one in front of them is written.
constexpr std::size_t Avance = 8;

/// From so many operations of a file on its keys are made again, rather than each sought.
constexpr std::size_t BeaucoupDOperations = 1000;

/// Pairs in the order of one of their slots: counted where they are many beside the slots of the file.
std::vector<QVAPI::Rapprochement> ParPlace(std::span<const QVAPI::Rapprochement> paires,
                                           Position QVAPI::Rapprochement::*place, u32 emplacements) {
  std::vector<QVAPI::Rapprochement> ordre(paires.begin(), paires.end());
  const auto avant = [&](const auto& a, const auto& b) { return a.*place < b.*place; };
  if (std::is_sorted(ordre.begin(), ordre.end(), avant)) return ordre;
  const auto absente = [&](const auto& paire) { return paire.*place > emplacements; };
  if (paires.size() < emplacements / 16 || std::any_of(ordre.begin(), ordre.end(), absente)) {
    std::stable_sort(ordre.begin(), ordre.end(), avant);
    return ordre;
  }
  std::vector<u32> rangs(emplacements + std::size_t{2});
  for (const auto& paire : paires) ++rangs[paire.*place + std::size_t{1}];
  std::partial_sum(rangs.begin(), rangs.end(), rangs.begin());
  for (const auto& paire : paires) ordre[rangs[paire.*place]++] = paire;
  assert(std::is_sorted(ordre.begin(), ordre.end(), avant));
  return ordre;
}

void Rapproche(Line& ligne, const Banque& operation) {
  ligne.Rapprochee = 1;
  std::memcpy(ligne.RappCompte, operation.Compte, sizeof ligne.RappCompte);
  std::memcpy(ligne.RappLibelle, operation.Libelle, sizeof ligne.RappLibelle);
  ligne.RappDate = operation.Date;
  ligne.RappDateValeur = operation.DateValeur;
  ligne.RappFranc = operation.MontantFranc;
  ligne.RappEuro = operation.MontantEuro;
  ligne.RappSens = operation.Sens != 0;
}

/// No key of a line knows what it is matched with, nor does a counter of the journal.
bool EcritRapprochee(OperationEcriture& op, Position position, const Banque& operation,
                     EffetsComptes& effets) {
  Moteur& moteur = op.moteur();
  Line ligne;
  if (!moteur.Lit(FichierJournal, position, &ligne)) return op.Refuse(ErrPosition);
  effets.Retire(ligne);
  Rapproche(ligne, operation);
  effets.Ajoute(ligne);
  return moteur.Ecrit(FichierJournal, position, &ligne) || op.Echoue();
}

}  // namespace

bool QVAPI::RappLines(const std::string& exercice, Position position, const Banque& rec) {
  OperationEcriture op(*this, *m_etat, exercice);
  if (!op) return false;
  Unite unite(*this);
  EffetsComptes effets;
  if (!EcritRapprochee(op, position, rec, effets) || !op.Applique(effets)) return false;
  return unite.Valide() || op.Echoue();
}

bool QVAPI::RappLines(const std::string& exercice, std::span<const Rapprochement> paires) {
  OperationEcriture op(*this, *m_etat, exercice);
  if (!op) return false;
  Moteur& moteur = op.moteur();
  Unite unite(*this);
  EffetsComptes effets;
  const bool beaucoup =
      paires.size() >= BeaucoupDOperations && paires.size() > moteur.NombreEmplacements(FichierBanques) / 3;
  if (beaucoup && !moteur.RemetCles(FichierBanques)) return op.Echoue();
  // In the order of their slots: the unit's images then stand in it from the start.
  std::vector<Rapprochement> ordre =
      ParPlace(paires, &Rapprochement::ligne, moteur.NombreEmplacements(FichierJournal));
  for (std::size_t i = 0; i < ordre.size(); ++i) {
    if (i + Avance < ordre.size()) {
      moteur.Annonce(FichierJournal, ordre[i + Avance].ligne);
      moteur.Annonce(FichierBanques, ordre[i + Avance].operation);
    }
    Banque operation;
    if (!moteur.Lit(FichierBanques, ordre[i].operation, &operation)) return op.Echoue();
    if (!EcritRapprochee(op, ordre[i].ligne, operation, effets)) return false;
    if (!beaucoup && !moteur.SupprimeCles(FichierBanques, ordre[i].operation, &operation)) return op.Echoue();
  }
  ordre = ParPlace(paires, &Rapprochement::operation, moteur.NombreEmplacements(FichierBanques));
  for (std::size_t i = 0; i < ordre.size(); ++i) {
    if (i + Avance < ordre.size()) moteur.Annonce(FichierBanques, ordre[i + Avance].operation);
    if (!moteur.Supprime(FichierBanques, ordre[i].operation)) return op.Echoue();
  }
  if (!op.Applique(effets)) return false;
  return unite.Valide() || op.Echoue();
}

}  // namespace fenlor

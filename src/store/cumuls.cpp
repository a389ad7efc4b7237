#include "store/cumuls.h"

#include <algorithm>
#include <cassert>
#include <string>
#include <unordered_map>
#include <utility>

#include "store/ecritures_operation.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr i64 TotalMax = static_cast<i64>(MontantMax) * 100;
constexpr u32 PasProgres = 8192;

using CumulsPlan = f64[NbCumuls][2];
static_assert(offsetof(Plan, PersoFranc) + sizeof(CumulsPlan) == offsetof(Plan, Reserve250));

void LitChamps(const Plan& plan, CumulsPlan& champs) {
  std::memcpy(champs, reinterpret_cast<const char*>(&plan) + offsetof(Plan, PersoFranc), sizeof champs);
}
void EcritChamps(const CumulsPlan& champs, Plan& plan) {
  std::memcpy(reinterpret_cast<char*>(&plan) + offsetof(Plan, PersoFranc), champs, sizeof champs);
}

bool PorteRepartition(const Plan& plan) { return plan.Type == Recette || plan.Type == Depense; }

bool Calcule(Plan& plan, const Cumuls& cumuls, bool ajoute) {
  CumulsPlan champs;
  LitChamps(plan, champs);
  for (int champ = 0; champ < NbCumuls; ++champ) {
    const bool repartition = champ == CumulPerso || champ == CumulTva;
    for (int monnaie = 0; monnaie < 2; ++monnaie) {
      const i64 centimes = repartition && !PorteRepartition(plan) ? 0 : cumuls.centimes[champ][monnaie];
      if (ajoute && centimes == 0) continue;
      const i64 total = (ajoute ? Centimes(champs[champ][monnaie]) : 0) + centimes;
      if (total > TotalMax || total < -TotalMax) return false;
      champs[champ][monnaie] = DeCentimes(total);
      assert(Centimes(champs[champ][monnaie]) == total);
    }
  }
  EcritChamps(champs, plan);
  return true;
}

/// Account number with nothing behind its end, for the table.
struct NumeroCompte {
  u64 debut = 0;
  u32 fin = 0;

  explicit NumeroCompte(const char* compte) {
    char tampon[12] = {};
    std::memcpy(tampon, compte, strnlen(compte, 11));
    std::memcpy(&debut, tampon, 8);
    std::memcpy(&fin, tampon + 8, 4);
  }
  bool operator==(const NumeroCompte&) const = default;
};
struct HachageCompte {
  std::size_t operator()(const NumeroCompte& n) const {
    u64 h = (n.debut ^ (u64{n.fin} << 29)) * 0x9E3779B97F4A7C15u;
    return static_cast<std::size_t>(h ^ (h >> 32));
  }
};

struct PosteCalcul {
  Cumuls cumuls;
  Position position = 0;  ///< 0: not in the chart
  bool bancaire = false;
};

enum MarqueEcriture : u8 { DejaVue = 1, NonValidee = 2, EcrPointee = 4, NonRapprochee = 8 };

/// One pass over the lines: totals by account, counts by entry.
class Calcul {
 public:
  explicit Calcul(u32 lignes) { m_ecritures.reserve(lignes / 4 + 1); }

  void Compte(Position position, const Plan& plan) {
    PosteCalcul& poste = m_comptes[NumeroCompte(plan.Compte)];
    assert(position > 0);
    poste.position = position;
    poste.bancaire = plan.Type == Tresorerie && plan.TypeTresorerie != 0;
  }

  bool Ligne(const Line& ligne) {
    if (!MontantPossible(ligne.MontantFranc) || !MontantPossible(ligne.MontantEuro)) return false;
    const PosteCalcul* poste = nullptr;
    ReporteLigne(ligne, 1, [&](const char* compte) -> Cumuls& {
      PosteCalcul& p = m_comptes[NumeroCompte(compte)];
      if (!poste) poste = &p;
      return p.cumuls;
    });
    u8& marques = Marques(ligne.Mouvement);
    if (!(marques & DejaVue)) {
      marques |= DejaVue;
      if (ligne.Journal == JournalRecettes) ++m_stats.NbRecettes;
      if (ligne.Journal == JournalDepenses) ++m_stats.NbDepenses;
      if (ligne.Journal == JournalOD) ++m_stats.NbOD;
    }
    if (!ligne.Validee) marques |= NonValidee;
    if (ligne.Pointee) marques |= EcrPointee;
    assert(poste);
    if (ligne.Rapprochee) {
      ++m_stats.NbRapprochees;
    } else if (poste->bancaire) {
      marques |= NonRapprochee;
    }
    if (ligne.Remise) ++m_stats.NbRemises;
    return true;
  }

  Statistiques Statistique() const {
    Statistiques s = m_stats;
    for (const auto& [mouvement, marques] : m_ecritures) {
      if (!(marques & NonValidee)) ++s.NbValidees;
      if (marques & EcrPointee) ++s.NbPointees;
      if (marques & NonRapprochee) ++s.NbNonRapprochees;
    }
    return s;
  }

  /// Accounts of the chart by position.
  std::vector<std::pair<Position, Cumuls>> Totaux() const {
    std::vector<std::pair<Position, Cumuls>> totaux;
    for (const auto& [numero, poste] : m_comptes) {
      if (poste.position) totaux.emplace_back(poste.position, poste.cumuls);
    }
    std::sort(totaux.begin(), totaux.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    return totaux;
  }

 private:
  u8& Marques(u32 mouvement) {
    if (!m_marques || mouvement != m_mouvement) {
      m_mouvement = mouvement;
      m_marques = &m_ecritures[mouvement];
    }
    return *m_marques;
  }

  std::unordered_map<NumeroCompte, PosteCalcul, HachageCompte> m_comptes;
  std::unordered_map<u32, u8> m_ecritures;
  u32 m_mouvement = 0;
  u8* m_marques = nullptr;
  Statistiques m_stats{};
};

}  // namespace

void EffetsComptes::Reporte(const Line& ligne, int signe) {
  assert(signe == 1 || signe == -1);
  ReporteLigne(ligne, signe, [this](const char* compte) -> Cumuls& {
    for (Poste& poste : m_postes) {
      if (std::strncmp(poste.compte, compte, sizeof poste.compte) == 0) return poste.cumuls;
    }
    Poste& poste = m_postes.emplace_back();
    std::memcpy(poste.compte, compte, sizeof poste.compte);
    return poste.cumuls;
  });
}

bool AjouteCumuls(Plan& plan, const Cumuls& cumuls) { return Calcule(plan, cumuls, true); }
bool PoseCumuls(Plan& plan, const Cumuls& cumuls) { return Calcule(plan, cumuls, false); }

bool QVAPI::QVCalculCompta(const std::string& nom, Statistiques& statistiques) {
  OperationEcriture op(*this, *m_etat, nom.empty() ? std::string() : CheminExercice(nom));
  if (!op) return false;

  const auto dit = [this](EvenementMagasin evenement, u32 valeur, const std::string& texte = {}) {
    return m_etat->rappel ? m_etat->rappel(evenement, valeur, texte) : 0u;
  };
  struct Fin {
    decltype(dit)& dire;
    ~Fin() { dire(EvFin, 0); }
  };
  dit(EvDebut, 0, "Calcul des cumuls"_w);
  const Fin fin{dit};

  const u32 nombre = op.moteur().NombreEmplacements(FichierJournal);
  Calcul calcul(nombre);
  dit(EvTexte, 0, "Mise à zéro du fichier PLAN\n\nen cours..."_w);
  if (!QVParcours(FichierComptes, [&](Position position, const void* rec) {
        calcul.Compte(position, *static_cast<const Plan*>(rec));
        return true;
      })) {
    return op.Echoue();
  }

  dit(EvTexte, 0, "Recalcul des cumuls\n\nen cours..."_w);
  dit(EvMaximum, nombre);
  Position mauvaise = 0;
  u32 seuil = PasProgres;
  bool arret = dit(EvProgres, 0) == 3;
  const bool lu = arret || QVParcours(FichierJournal, [&](Position position, const void* rec) {
                    if (!calcul.Ligne(*static_cast<const Line*>(rec))) {
                      mauvaise = position;
                      return false;
                    }
                    if (position < seuil) return true;
                    seuil = position + PasProgres;
                    arret = dit(EvProgres, position) == 3;
                    return !arret;
                  });
  if (mauvaise) {
    return op.Refuse(ErrEndommage, "JOURNAL : le montant de l'enregistrement "_w + std::to_string(mauvaise) +
                                       " est illisible."_w);
  }
  if (!lu) return op.Echoue();
  if (!arret) arret = dit(EvProgres, nombre) == 3;
  if (arret) {
    op.moteur().PoseErreur(ErrAucune);
    return false;
  }

  Unite unite(*this);
  unite.SansRetour();
  for (const auto& [position, cumuls] : calcul.Totaux()) {
    const Plan* vu = op.VuePlan(position);
    if (!vu) return op.Echoue();
    Plan plan = *vu;
    if (!PoseCumuls(plan, cumuls)) return op.Refuse(ErrValeur);
    if (std::memcmp(&plan, vu, sizeof plan) == 0) continue;
    if (!op.moteur().Ecrit(FichierComptes, position, &plan)) return op.Echoue();
  }
  if (!unite.Valide()) return op.Echoue();
  statistiques = calcul.Statistique();
  return true;
}

}  // namespace fenlor

// The pairs of two nested walks, operations outside and lines inside, without walking: lines of the same
// amounts and side hang on one chain, in list order, and a line that was taken leaves its chain.
#include <cassert>
#include <unordered_map>

#include "banque/rapprochement.h"
#include "banque/textes.h"
#include "core/erreursexercice.h"
#include "journal/textes.h"
#include "store/cumuls.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 Aucune = 0xFFFFFFFFu;

struct Montants {
  i64 franc, euro;
  bool credit;
  bool operator==(const Montants&) const = default;
};
struct Hachage {
  std::size_t operator()(const Montants& m) const {
    u64 h = (static_cast<u64>(m.franc) * 2 + m.credit) * 0x9E3779B97F4A7C15u;
    h = (h ^ (h >> 29) ^ static_cast<u64>(m.euro)) * 0xBF58476D1CE4E5B9u;
    return static_cast<std::size_t>(h ^ (h >> 32));
  }
};

class Automatique {
 public:
  Automatique(CFenlorApp& app, const DemandeAutomatique& demande, BilanRapprochement& bilan)
      : m_app(app),
        m_demande(demande),
        m_bilan(bilan),
        m_banques(app, app.PathExercice),
        m_journal(app, app.PathExercice),
        m_plan(app, app.PathExercice) {}

  Refus Fais() {
    if (const Refus r = m_app.ControleEcriture()) return r;
    if (!m_banques.OpenFile() || !m_journal.OpenFile() || !m_plan.OpenFile()) return EchecFichier();
    m_operations = LitOperations(m_app, m_demande.periode.compte);
    m_lignes = LignesARapprocher(m_app, m_demande.periode);
    m_bilan = {0, static_cast<u32>(m_operations.size())};
    if (m_operations.empty()) return Refus(ErrSansOperation, "operations");
    if (m_lignes.empty()) return Refus(ErrSansEcriture, "lignes");
    Enchaine();
    const Progression progression(m_app.Boite, Texte(TitreRapprochement), Texte(TexteTraitement), true,
                                  m_bilan.operations);
    if (const Refus refus = Marche()) return refus;
    const Refus refus = Ecrit();
    if (refus) m_bilan.rapproches = 0;
    return refus;
  }

 private:
  void Enchaine() {
    m_tetes.reserve(m_lignes.size());
    m_suivantes.assign(m_lignes.size(), Aucune);
    for (u32 i = static_cast<u32>(m_lignes.size()); i-- > 0;) {
      const LigneARapprocher& l = m_lignes[i];
      const auto [tete, neuve] = m_tetes.try_emplace({l.franc, l.euro, l.credit}, i);
      if (neuve) continue;
      assert(tete->second > i);
      m_suivantes[i] = tete->second;
      tete->second = i;
    }
  }

  Refus Marche() {
    for (const OperationLue& operation : m_operations) {
      m_app.Boite.Step();
      if (m_app.Boite.IsAborted()) break;
      if (const Refus refus = Cherche(operation)) return refus;
      if (m_arret) break;
    }
    return {};
  }

  Refus Cherche(const OperationLue& operation) {
    const Banque& rec = operation.rec;
    const auto tete = m_tetes.find({Centimes(rec.MontantFranc), Centimes(rec.MontantEuro), rec.Sens == 0});
    if (tete == m_tetes.end()) return {};
    for (u32* place = &tete->second; *place != Aucune; place = &m_suivantes[*place]) {
      const LigneARapprocher& ligne = m_lignes[*place];
      if (ligne.date > rec.Date) break;  // so are those behind it
      const int reponse = m_demande.confirmation ? Demande(operation, ligne) : int{RepOui};
      m_arret = reponse == RepAnnuler;
      if (m_arret) break;
      if (reponse != RepOui) continue;
      if (const Refus refus = Prend(operation, ligne)) return refus;
      *place = m_suivantes[*place];
      ++m_bilan.rapproches;
      assert(m_bilan.rapproches <= m_bilan.operations);
      break;
    }
    return {};
  }

  int Demande(const OperationLue& operation, const LigneARapprocher& ligne) {
    if (!m_journal.ReadRec(ligne.position)) return RepNon;
    const bool euro = m_demande.euro;
    const Line& lue = *m_journal.Rec;
    return m_app.MessageId(BoutonsNonOuiAnnuler | IconeQuestion | DefautSecond, QuestionRapprochement,
                           {StrDate(operation.rec.Date), LitTexte(operation.rec.Libelle),
                            MontantEnTexte(operation.Montant(euro), euro), StrDate(lue.DateLigne),
                            LitTexte(lue.Libelle), MontantEnTexte(DeCentimes(ligne.Montant(euro)), euro)});
  }

  /// Without questions all pairs are written at the end, as one unit.
  Refus Prend(const OperationLue& operation, const LigneARapprocher& ligne) {
    m_paires.push_back({ligne.position, operation.position});
    return m_demande.confirmation ? Ecrit() : Refus{};
  }

  Refus Ecrit() {
    if (m_paires.empty()) return {};
    if (!m_app.Magasin.RappLines(m_app.PathExercice, m_paires)) return m_app.EchecDit();
    m_paires.clear();
    return {};
  }

  CFenlorApp& m_app;
  const DemandeAutomatique& m_demande;
  BilanRapprochement& m_bilan;
  CBanques m_banques;
  CLines m_journal;
  CPlan m_plan;  ///< held open with the others for as long as the run takes
  std::vector<OperationLue> m_operations;
  std::vector<LigneARapprocher> m_lignes;
  std::unordered_map<Montants, u32, Hachage> m_tetes;  ///< first line of a chain that is not taken
  std::vector<u32> m_suivantes;                        ///< the next one behind a line
  std::vector<QVAPI::Rapprochement> m_paires;          ///< taken, and not yet written
  bool m_arret = false;
};

}  // namespace

Refus RapprocheAutomatique(CFenlorApp& app, const DemandeAutomatique& demande, BilanRapprochement& bilan) {
  return Automatique(app, demande, bilan).Fais();
}

}  // namespace fenlor

// Finds in the books: entries, accounts and headings of the open exercice or of all of them, best first.
//
// Nothing is indexed: the records are walked as they stand in their files, an entry of sixty thousand costs
// a fraction of a microsecond (bench/bench_recherche). The walk is made in slices, so that whoever types goes
// on typing; dropping the object ends it.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/fenlorapp.h"
#include "core/fichierbrut.h"
#include "recherche/requete.h"

namespace fenlor {

enum class SorteTrouvaille : u8 { Ecriture, Compte, Rubrique };

struct Trouvaille {
  SorteTrouvaille sorte = SorteTrouvaille::Ecriture;
  unsigned note = 0;  ///< from 1 to 100
  std::string exercice;
  /// Of an account or a heading, its designation.
  std::string libelle;
  std::string compte;  ///< short form: the entry's account of income or expense; or the account itself
  std::string code;    ///< of an account or a heading

  // Of an entry:
  u32 mouvement = 0;
  i16 journal = 0;
  u32 ligne = 0;
  Date date = 0;
  std::string piece, banque;  ///< number of the piece, label of the bank's operation
  f64 franc = 0, euro = 0;    ///< the sum of its debits
  bool validee = false;

  i16 type = 0;           ///< of an account (`TypeCompte`)
  Position position = 0;  ///< of an account or a heading, in its file
};

/// What is before what: a better note, commands of the books (accounts, headings) before entries, later
/// entries before earlier ones.
bool Avant(const Trouvaille& a, const Trouvaille& b);

class Recherche {
 public:
  /// At most so many finds are kept; 0: all.
  struct Etendue {
    bool tous = false;  ///< all exercices, else the open one
    std::size_t ecrituresAuPlus = 0;
  };

  /// An entry is found when each word fits it: its label or that of the bank's operation, the words of its
  /// lines, its piece, an account of its lines (number, code, name), its date, the amount of a line or its
  /// total. The session outlives the object.
  Recherche(CFenlorApp& app, const Requete& requete, Etendue etendue);
  ~Recherche();
  Recherche(const Recherche&) = delete;
  Recherche& operator=(const Recherche&) = delete;

  /// Goes on over so many slots; false when all was looked at. No slot is looked at without words.
  bool Avance(u32 emplacements);
  /// Best first. Meant for the end; before it, what was found so far.
  std::vector<Trouvaille> Trouvailles();
  /// Entries found, the ones that were not kept included.
  std::size_t NbEcritures() const { return m_nbEcritures; }
  /// The first file that could not be read; what else was found stands.
  const Refus& Echec() const { return m_echec; }

 private:
  struct CompteVu {
    Accord accord;
    std::string court;
  };
  /// An entry as far as its lines were met.
  struct Vue {
    u32 mouvement = 0;
    Position position = 0;  ///< of one of its lines
    Position banque = 0;    ///< of one that has a label of the bank, if any
    Date date = 0;
    Accord accord;
    i64 debitFranc = 0, debitEuro = 0;  ///< cents
  };

  void Commence();
  void LitComptes(const std::string& dossier);
  void LitRubriques(const std::string& dossier);
  void Ajoute(Position position, const Line& ligne);
  void FinitEcriture();
  void Termine();
  Trouvaille Ecriture(const Vue& vue);
  void Note(const LecteurRecs& lecteur);

  CFenlorApp& m_app;
  const Requete m_requete;
  const Etendue m_etendue;
  const bool m_montants;
  Comparateur m_comparateur{m_requete};
  std::vector<std::string> m_exercices;  ///< still to be looked at, the last one first
  std::string m_exercice;                ///< at work
  std::unique_ptr<LecteurRecs> m_journal;
  struct Hache : std::hash<std::string_view> {
    using is_transparent = void;
  };
  std::unordered_map<std::string, CompteVu, Hache, std::equal_to<>> m_comptes;
  Vue m_courante;
  char m_libelle[sizeof(Line::Libelle)] = {};  ///< of the entry at hand, compared already
  std::vector<Vue> m_vues;
  std::vector<Trouvaille> m_trouvailles;
  std::size_t m_nbEcritures = 0;
  Refus m_echec;
};

}  // namespace fenlor

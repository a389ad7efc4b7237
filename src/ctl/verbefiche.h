// The verb of a record: "rubrique ajouter --code X1". The table of the record (`core/fiche.h`) gives the
// options of `ajouter` and `modifier`; finding the record, filling it, saving, deleting, listing and telling
// stand here, once. A verb says its words, how its record is found and listed, and what else it takes.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/colonneliste.h"
#include "core/fiche.h"
#include "ctl/json.h"
#include "ctl/lignecommande.h"
#include "store/champs.h"

namespace fenlor {

/// What was given on the command line, UTF-8.
struct OptionsFiche {
  std::string action;                                         ///< empty: none
  std::string cle;                                            ///< the record that is modified or deleted
  std::map<std::string, std::optional<std::string>> valeurs;  ///< by option
  std::map<std::string, bool> drapeaux;                       ///< words that stand alone

  bool Donne(const std::string& option) const {
    const auto place = valeurs.find(option);
    return Drapeau(option) || (place != valeurs.end() && place->second.has_value());
  }
  bool Drapeau(const std::string& option) const { return drapeaux.contains(option) && drapeaux.at(option); }
};

/// Words of a verb, UTF-8.
struct MotsVerbe {
  const char *nom, *description;
  const char *un, *objet;              ///< "une rubrique", "Rubrique"
  const char *cle, *texteCle, *laCle;  ///< "rubrique", "CODE", "Code de la rubrique"
  const char* lister;                  ///< what `lister` does
  bool feminin;
};

/// One line a record of the file: its JSON, or what `ligne` makes of it, under `titres`, of which the first
/// `gauches` are aligned on the left.
int ListeEnregistrements(Contexte& contexte, CBTFiles& fichier, const std::vector<Position>& positions,
                         std::vector<std::string> titres, std::size_t gauches,
                         const std::function<std::vector<std::string>(Position)>& ligne);

class VerbeFiche {
 public:
  virtual ~VerbeFiche() = default;
  int Execute();

 protected:
  VerbeFiche(Contexte& contexte, const OptionsFiche& options, const MotsVerbe& mots, const TableFiche& table,
             void* fiche)
      : m_contexte(contexte),
        m_app(contexte.App),
        m_options(options),
        m_mots(mots),
        m_table(table),
        m_fiche(fiche) {}

  /// Reads the record of the command line.
  virtual Refus Trouve(const std::string& cle) = 0;
  virtual void Commence() {}  ///< a new record, before it is filled
  /// What was given goes into the record; false: told.
  virtual bool Remplit() { return PoseOptions(); }
  /// What is wrong with a field that was given, once all are there; empty: nothing.
  virtual std::string Faute(const ChampFiche&) { return {}; }
  virtual Refus Enregistre() = 0;
  virtual Refus Supprime() = 0;
  /// What names the record: field of the answer's JSON and text.
  virtual std::vector<std::pair<const char*, std::string>> Cles() = 0;
  virtual std::string Nom() = 0;
  virtual int Liste() = 0;

  bool PoseOptions();
  /// Finds the record whose first key stands in the buffer of the file, refused with `absent` when there is
  /// none.
  Refus TrouveCle(CBTFiles& fichier, const std::string& absent);
  int Liste(CBTFiles& fichier, const std::vector<Position>& positions, std::vector<std::string> titres,
            std::size_t gauches, const std::function<std::vector<std::string>(Position)>& ligne) {
    return ListeEnregistrements(m_contexte, fichier, positions, std::move(titres), gauches, ligne);
  }
  /// The columns of a list as its window shows them.
  template <class Rec, NumeroFichier numero>
  int Liste(CFichier<Rec, numero>& fichier, const std::vector<Position>& positions,
            const TableColonnes<Rec>& colonnes) {
    std::vector<std::string> titres;
    std::size_t gauches = 0;
    for (const ColonneListe<Rec>& colonne : colonnes) {
      titres.push_back(colonne.titre);
      gauches += colonne.cote == Cote::Gauche;
    }
    return Liste(fichier, positions, titres, gauches,
                 [&](Position) { return Cellules(colonnes, *fichier.Rec); });
  }

  Contexte& m_contexte;
  CFenlorApp& m_app;
  const OptionsFiche& m_options;

 private:
  bool Pose(const ChampFiche& champ, const std::string& mot);
  const MotsVerbe& m_mots;
  const TableFiche& m_table;
  void* m_fiche;
};

/// The verb of the records of one file, by their rules (`core/fiche.h`).
template <class F, class Fichier>
class VerbeDe : public VerbeFiche {
 public:
  using Fiche = F;

 protected:
  VerbeDe(Contexte& contexte, const OptionsFiche& options, const MotsVerbe& mots)
      : VerbeFiche(contexte, options, mots, Fiche::Table, &m_fiche), m_fichier(m_app, m_app.PathExercice) {}

  /// Reads the record that `TrouveCle` finds.
  Refus LitCle(const std::string& absent) {
    if (const Refus refus = TrouveCle(m_fichier, absent)) return refus;
    return LitFiche(m_app, m_fichier.GetPos(), m_fiche);
  }
  Refus Enregistre() override {
    Refus refus = EnregistreFiche(m_app, m_fiche);
    if (!refus) m_app.Dit(AvisFiche(m_app, m_fiche));
    return refus;
  }
  Refus Supprime() override { return SupprimeFiche(m_app, m_fiche); }

  Fiche m_fiche;
  Fichier m_fichier;
};

/// The four actions of a verb, before its own options and checks.
struct ActionsFiche {
  Commande verbe, ajouter, modifier, supprimer, lister;
};
ActionsFiche DeclareActions(LigneCommande& ligne, const MotsVerbe& mots, const TableFiche& table,
                            const std::shared_ptr<OptionsFiche>& options,
                            std::function<int(Contexte&)> execute);

/// `Verbe` has `Mots` and takes the context, with the exercice open, and the options; its record is a
/// `Verbe::Fiche`.
template <class Verbe>
ActionsFiche DeclareVerbe(LigneCommande& ligne, const std::shared_ptr<OptionsFiche>& options) {
  return DeclareActions(ligne, Verbe::Mots, Verbe::Fiche::Table, options, [options](Contexte& contexte) {
    return contexte.OuvreExercice() ? Verbe(contexte, *options).Execute() : int{StatutRefuse};
  });
}

}  // namespace fenlor

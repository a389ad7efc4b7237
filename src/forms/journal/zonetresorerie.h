// Group "Trésorerie" of the form of an entry: one account and its payment mode, or a list of lines. Only
// what belongs to the kind of the entry shows.
#pragma once

#include <QGroupBox>

#include "forms/journal/dialoglinetresor.h"

class QPushButton;
class QStackedLayout;

namespace fenlor {

class ListeEditee;

class ZoneTresorerie : public QGroupBox {
  Q_OBJECT
 public:
  /// The entry as its form holds it now.
  struct Ecriture {
    Date date = 0;
    f64 ttc = 0;
    bool euro = true;
  };
  ZoneTresorerie(ContexteUi& contexte, std::function<Ecriture()> ecriture, QWidget* parent);

  /// The lines, or the kind, were changed by the user; the lines may exceed T.T.C. now.
  void SurChangement(std::function<void()> action) { m_change = std::move(action); }

  i16 Genre() const { return m_genre; }
  /// Of a simple entry; empty when the exercice has no treasury account.
  std::string Tresorerie() const;
  i16 Paiement() const { return m_champs.Marque(); }
  const LignesTresor& Lignes() const { return m_lignes; }

  /// A code that was typed and names no account.
  std::string CodeInconnu() const { return m_genre == GenreSimple ? m_champs.Inconnu() : std::string(); }
  /// What stands in the form of a line, while it is open.
  std::optional<LigneSuspendue> LigneOuverte() const;
  /// Behind `Pose`, what was typed before the program ended.
  void Retape(const SaisieSuspendue& reprise);

  /// Shows an entry; of a standard one the simple part keeps its account.
  void Pose(const EcritureLue& ecriture);
  /// A new simple entry on the account shown, or on `tresorerie` when there is one.
  void Vide(const std::string& tresorerie = {});
  void ChoisitLigne(int rang);
  /// An entry that may not be changed; its lines can be looked at.
  void Permet(bool permis);
  /// The lines are no longer those of the entry that was shown.
  bool Modifiee() const { return m_modifiee; }
  void OublieModifications() { m_modifiee = false; }

 private:
  QWidget* PageSimple();
  QWidget* PageMultiple();
  void PoseGenre(i16 genre);
  void PasseMultiple();
  void PasseSimple();
  void Ajoute();
  void ModifieLigne();
  void Supprime();
  void OuvreLigne(bool modification, const std::optional<LigneSuspendue>& reprise = {});
  void Remplit(int choisie);
  void LignesChangees(int choisie);
  void ActualiseBoutons();

  ContexteUi& m_contexte;
  CFenlorApp& m_app;
  std::function<Ecriture()> m_ecriture;
  std::function<void()> m_change;
  const bool m_cloture;
  i16 m_genre = GenreSimple;
  bool m_permis = true, m_modifiee = false;
  MarquesEcriture m_marques;  ///< of the simple entry shown, for the line it may become
  LignesTresor m_lignes;
  std::vector<CompteOffert> m_comptes;  ///< of the lines

  CDialogLineTresor* m_ligneOuverte = nullptr;
  QStackedLayout* m_pages;
  ChampsTresorerieEcriture m_champs;
  QPushButton* m_multiple;
  ListeEditee* m_liste;
  QPushButton* m_simplifiee;
};

}  // namespace fenlor

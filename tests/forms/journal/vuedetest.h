// A journal window over a small practice, for the tests of the window and of its commands.
#pragma once

#include "core/valeurs.h"
#include "forms/journal/ecritureview.h"
#include "forms/journal/ecrlist.h"
#include "forms/journal/ecrtotal.h"
#include "forms/journal/formesjournal.h"
#include "forms/journal/month.h"
#include "forms/journal/textes.h"

namespace fenlor::test {

class VueDeTest : public FormesJournal {
 protected:
  u32 Recette(f64 ttc, unsigned jour = 15, unsigned mois = 3, std::string_view tresorerie = "512") {
    return Enregistre(Ecriture(JournalRecettes, "706", ttc, tresorerie, FaitDate(jour, mois, 2003)));
  }
  u32 Depense(f64 ttc, unsigned jour = 15, unsigned mois = 3) {
    return Enregistre(Ecriture(JournalDepenses, "6132", ttc, "512", FaitDate(jour, mois, 2003)));
  }
  /// Validated behind the window's back.
  void Validee(u32 mouvement) { ASSERT_TRUE(Magasin().ValidMouvements(App().PathExercice, mouvement, 1)); }
  /// What the window wrote when it was last closed, or will read when it opens.
  std::string EtatEcrit(i16 journal = JournalRecettes) {
    return App().Reglages.LitIniExercice("2003", Texte(CleJournal[static_cast<unsigned>(journal) - 1]));
  }
  void PoseEtat(const std::string& etat, i16 journal = JournalRecettes) {
    Regle("2003", Texte(CleJournal[static_cast<unsigned>(journal) - 1]), etat);
  }
  /// The window of a month, from 1, as the settings would open it.
  std::unique_ptr<CEcritureView> Ouvre(i16 journal = JournalRecettes, const std::string& mode = "Toutes",
                                       bool comptable = false, unsigned mois = 3) {
    PoseEtat("< Tous >, " + std::to_string(mois - 1) + ", " + mode + (comptable ? "" : ", 1"), journal);
    return OuvreTelle(journal);
  }
  std::unique_ptr<CEcritureView> OuvreTelle(i16 journal = JournalRecettes) {
    auto vue = std::make_unique<CEcritureView>(Ui, journal);
    vue->resize(900, 400);
    vue->Charge();
    MontreFenetre(*vue);
    return vue;
  }

  static std::vector<u32> Rangees(const CEcritureView& vue) {
    std::vector<u32> mouvements;
    for (int i = 0; i < vue.GetEcrCount(); ++i) mouvements.push_back(vue.GetEcrId(i));
    return mouvements;
  }
  static void Choisit(CEcritureView& vue, const std::vector<u32>& mouvements) {
    auto& selection = *vue.Liste().selectionModel();
    selection.clearSelection();
    for (const u32 mouvement : mouvements)
      selection.select(vue.Liste().Modele().index(vue.FindEcrItem(mouvement), 0),
                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
  }
  static std::vector<u32> Choisies(CEcritureView& vue) {
    std::vector<u32> mouvements;
    for (const int ligne : vue.Liste().LignesChoisies()) mouvements.push_back(vue.GetEcrId(ligne));
    return mouvements;
  }
  /// Texts of a row, "|" between columns, "/" between the lines of a cell.
  static std::string Rangee(CEcritureView& vue, int ligne) {
    const ModeleListe& modele = vue.Liste().Modele();
    QStringList cellules;
    for (int i = 0; i < modele.columnCount(); ++i)
      cellules += modele.index(ligne, i).data().toString().replace(QLatin1Char('\n'), QLatin1Char('/'));
    return cellules.join(QLatin1Char('|')).toStdString();
  }
  static std::string Titres(CEcritureView& vue) {
    const ModeleListe& modele = vue.Liste().Modele();
    QStringList titres;
    for (int i = 0; i < modele.columnCount(); ++i)
      titres += modele.headerData(i, Qt::Horizontal, Qt::DisplayRole).toString();
    return titres.join(QLatin1Char('|')).toStdString();
  }
  /// "total" or "selection", and the column: the text, empty for a label that is not shown.
  static std::string Total(CEcritureView& vue, const char* nom) {
    auto& total = Trouve<CEcrTotal>(vue, nom);
    return total.isHidden() ? "" : total.text().toStdString();
  }
  static std::string Lu(CEcritureView& vue, const char* nom) {
    return Trouve<QLabel>(vue, nom).text().toStdString();
  }
  static CMonth& Mois(CEcritureView& vue) { return Trouve<CMonth>(vue, "mois"); }
};

}  // namespace fenlor::test

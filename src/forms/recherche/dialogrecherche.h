// `CDialogRecherche`: one box that finds what the books hold and what the program can do.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

#include "recherche/recherche.h"
#include "ui/czndialog.h"
#include "ui/tableliste.h"

namespace fenlor {

/// What the program itself can be asked for, beside the books. Texts Windows-1252.
struct CibleRecherche {
  std::string sorte;    ///< "Commande"
  std::string nom;      ///< what is shown, and looked for first
  std::string precise;  ///< where it stands, shown beside
  std::string autres;   ///< looked for, too, and shown nowhere
  std::function<void()> action;
};

/// What is typed is looked for as it is typed; the books are walked a little at a time while the program
/// waits for keys. Arrows and pages move in the list without leaving the field, Enter chooses.
class CDialogRecherche : public CZNDialog {
  Q_OBJECT
 public:
  CDialogRecherche(ContexteUi& contexte, std::vector<CibleRecherche> cibles, QWidget* parent = nullptr);

  /// After OK: what was chosen in the books, or null.
  const Trouvaille* Choisie() const;
  /// After OK: what was chosen of the program, or null.
  const CibleRecherche* Cible() const;
  /// Nothing is looked for at the moment.
  bool Repos() const { return !m_recherche && !m_frappe.isActive(); }

 protected:
  bool Enregistre() override { return Choix() != nullptr; }
  bool Modifie() const override { return false; }
  bool eventFilter(QObject* objet, QEvent* evenement) override;

 private:
  struct Ligne {
    unsigned note = 0;
    int rang = 0;  ///< among equal notes, the lower the better
    std::string quoi, date, libelle, montant, ou;
    int trouvaille = -1, cible = -1;
  };
  const Ligne* Choix() const;
  void Cherche();
  void Avance();
  void Montre();
  Ligne LigneDe(const Trouvaille& t, int i);

  const std::vector<CibleRecherche> m_cibles;
  QLineEdit m_texte;
  QCheckBox m_tous;
  CZNListCtrl m_liste;
  QLabel m_compte;
  QTimer m_frappe;  ///< runs from a key until nothing came behind it
  QTimer m_pas;     ///< the next slice
  Requete m_requete;
  std::unique_ptr<Recherche> m_recherche;
  std::vector<Trouvaille> m_trouvailles;
  std::size_t m_nombre = 0;
  std::vector<Ligne> m_lignes;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

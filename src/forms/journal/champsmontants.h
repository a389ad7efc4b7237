// The amounts of a receipt or expense as its form has them.
#pragma once

#include <functional>
#include <string>

#include "journal/saisie.h"
#include "ui/editeurs.h"
#include "ui/formulaire.h"

namespace fenlor {

/// Groups "Montants" and "Répartition": T.T.C. and the professional share are typed, the other figures follow
/// (`ChaineMontants`). Names of the fields: "ttc", "tva", "ht", "taux", "professionnelle", "personnelle".
/// What follows from an amount that cannot be read is blank.
class ChampsMontants {
 public:
  /// `compte` reads the account chosen, false when there is none; `euro` says in what amounts are typed.
  ChampsMontants(CFenlorApp& app, std::function<bool(Plan&)> compte, std::function<bool()> euro);
  /// Both groups under each other. Without `taxes` the figures of VAT are not there.
  QWidget* Colonne(QWidget& zone, bool taxes = true);

  /// As the fields hold them.
  MontantsSaisie Valeur() const;
  f64 Ttc() const;
  void Pose(const MontantsSaisie& montants);
  void PoseTtc(f64 ttc);  ///< and all that follows
  /// Shown in grey while no T.T.C. is typed; empty: nothing.
  void OffreTtc(const QString& montant) { m_ttc.setPlaceholderText(montant); }
  void Calcule();  ///< the account is another one
  void Vide();
  void Permet(bool ttc, bool professionnelle);

  /// What was typed and cannot be read as it stands there; empty: it can.
  struct Frappe {
    std::string ttc, professionnelle;
  };
  Frappe Illisible() const;
  void Retape(const Frappe& frappe);

 private:
  void Declare(Formulaire& formulaire, bool taxes);
  void Astuce(QWidget& champ, f64 MontantsSaisie::*montant);
  void ProfessionnelChange();
  void Montre(bool partPro);

  CFenlorApp& m_app;
  std::function<bool(Plan&)> m_compte;
  std::function<bool()> m_euro;
  MontantsSaisie m_montants;
  EditeurMontant m_ttc;
  Lecture m_tva, m_ht, m_taux;
  EditeurMontant m_professionnelle;
  Lecture m_personnelle;
};

}  // namespace fenlor

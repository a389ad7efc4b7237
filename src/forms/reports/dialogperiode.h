// `CDialogPeriode`: the criteria of a report, in the five forms that reports ask for.
#pragma once

#include <QRadioButton>
#include <array>
#include <vector>

#include "forms/session/champsperiode.h"
#include "journal/choixcomptes.h"
#include "reports/etatcomptable.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

class CDialogPeriode : public CZNDialog {
  Q_OBJECT
 public:
  /// `criteres` outlives the form: what it proposes, and with OK the answer. `comptes`: the kinds of
  /// accounts offered (`MasqueComptes`); with the last of them "Tous" is offered too, and taken.
  CDialogPeriode(ContexteUi& contexte, FormeCriteres forme, const QString& titre, unsigned comptes,
                 CriteresEtat& criteres, QWidget* parent = nullptr);
  ~CDialogPeriode() override;

 protected:
  bool Enregistre() override;

 private:
  struct CompteListe {
    std::string compte, code;  ///< long form; code in capitals
  };
  bool AvecCompte() const;
  bool AvecPeriode() const { return m_forme != FormeCriteres::Compte; }
  bool AvecAffichage() const;
  void DeclareCompte(Formulaire& formulaire);
  void DeclareGenre(Formulaire& formulaire);
  void DeclareCentralisation(Formulaire& formulaire);
  void DeclareAffichage(Formulaire& formulaire);
  void RemplitComptes(unsigned comptes);
  /// Selects the account of the typed code; none for an unknown one.
  void ChercheCode();
  QStringList Propose(const std::string& tape);
  void QuitteCode();
  void ChoisitCompte();
  void BasculeTous();
  void ChangeGenre();
  const CompteListe* Choisi() const;

  const FormeCriteres m_forme;
  CriteresEtat& m_criteres;
  EditeurTexte m_code;
  QCheckBox m_tous;
  EditeurChoix m_compte, m_genre;
  ChampsPeriode m_periode;
  std::array<QRadioButton, 2> m_affichage;
  std::array<QRadioButton, 4> m_centralisation;
  QCheckBox m_progressif;
  std::vector<CompteListe> m_comptes;   ///< by row of the list; blank for a heading
  std::vector<CompteOffert> m_offerts;  ///< the same without headings
  std::vector<std::string> m_proposes;  ///< numbers, under the code that is typed
  FinDesLiens m_finLiens{*this};
};

/// Asks with the form.
class DemandeurForme : public DemandeurCriteres {
 public:
  explicit DemandeurForme(ContexteUi& contexte) : m_contexte(contexte) {}
  bool Demande(FormeCriteres forme, const std::string& titre, unsigned comptes,
               CriteresEtat& criteres) override;
  bool DemandeRemise(const std::string& fichier, CriteresRemise& criteres) override;

 private:
  ContexteUi& m_contexte;
};

}  // namespace fenlor

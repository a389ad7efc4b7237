// `CDialogPeriode`: the criteria of a report, in the five forms that reports ask for.
#pragma once

#include <QRadioButton>
#include <array>
#include <utility>
#include <vector>

#include "forms/session/champsperiode.h"
#include "journal/choixcomptes.h"
#include "reports/etatcomptable.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

/// What becomes of a report when it is built.
enum class DemandeEtat {
  SelonPreference = 0,  ///< preview when the preference says so, else print
  Impression = 1,
  Apercu = 2,
  Pdf = 3,
};
/// By the `Issue` of a form.
DemandeEtat DemandeDe(const QString& issue);

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
  bool AvecCompte() const;
  bool AvecPeriode() const {
    return m_forme != FormeCriteres::Compte && m_forme != FormeCriteres::Mouvements;
  }
  bool AvecAffichage() const;
  void DeclareCompte(Formulaire& formulaire);
  void DeclareGenre(Formulaire& formulaire);
  void DeclareCentralisation(Formulaire& formulaire);
  void DeclareAffichage(Formulaire& formulaire);
  bool AvecMouvements() const { return AvecAffichage() || m_forme == FormeCriteres::Mouvements; }
  void RemplitComptes(unsigned comptes);
  /// Selects the account of the typed code; none for an unknown one.
  void ChercheCode();
  QStringList Propose(const std::string& tape);
  void QuitteCode();
  void ChoisitCompte();
  void BasculeTous();
  void ChangeGenre();
  const CompteOffert* Choisi() const;

  const FormeCriteres m_forme;
  CriteresEtat& m_criteres;
  EditeurTexte m_code;
  QCheckBox m_tous, m_mouvementes;
  EditeurChoix m_compte, m_genre;
  ChampsPeriode m_periode;
  std::array<QRadioButton, 2> m_affichage;
  std::array<QRadioButton, 4> m_centralisation;
  QCheckBox m_progressif;
  std::vector<CompteOffert> m_comptes;  ///< by row of the list; blank for a heading
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
  /// Which button ended the last form, since it was asked; none was shown: by the preference.
  DemandeEtat Issue() { return std::exchange(m_issue, DemandeEtat::SelonPreference); }

 private:
  bool Execute(CZNDialog& forme);
  ContexteUi& m_contexte;
  DemandeEtat m_issue = DemandeEtat::SelonPreference;
};

}  // namespace fenlor

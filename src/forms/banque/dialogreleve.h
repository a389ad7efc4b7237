// `CDialogReleve`: what an import would do, before anything is written.
#pragma once

#include "banque/importreleve.h"
#include "forms/banque/choixbanque.h"
#include "ui/czndialog.h"

namespace fenlor {

class CZNListCtrl;

/// The four kinds of a statement's lines. OK imports.
class CDialogReleve : public CZNDialog {
  Q_OBJECT
 public:
  /// `octets` outlive the form; `nom` is that of the file. `compte` is the account that is proposed, in long
  /// form, or empty. A table whose form was never asked for opens `CDialogReleveCsv` first, once this form is
  /// shown.
  CDialogReleve(ContexteUi& contexte, const std::string& octets, const QString& nom,
                const std::string& compte, QWidget* parent = nullptr);
  /// Account of the last import.
  std::string Compte() const { return m_compte.Valeur(); }

 protected:
  bool Enregistre() override;
  void showEvent(QShowEvent* evenement) override;

 private:
  /// Reads the bytes for the account: with the form that it has, or the proposed one.
  void Lit();
  void Prepare();
  void Montre();
  void ChangeForme();

  const std::string& m_octets;
  LectureReleve m_lecture;
  ApercuReleve m_apercu;
  Refus m_refus;                      ///< of the preview
  FormeCsv m_forme;                   ///< of a table
  bool m_demande = false;             ///< that form was never asked for
  std::vector<LigneApercu> m_lignes;  ///< that are shown
  ChoixBanque m_compte;
  EditeurChoix m_numero, m_sorte;
  Lecture m_fichier, m_solde, m_avis;
  CZNListCtrl* m_table;
  QPushButton* m_tableau = nullptr;
  FinDesLiens m_finLiens{*this};
};

/// Asks for a file and shows its preview. True when something was imported; `compte` is proposed, and becomes
/// the account of the import.
bool ImporteFichierReleve(ContexteUi& contexte, std::string& compte, QWidget* parent = nullptr);

}  // namespace fenlor

// `CDialogCritere`: what a journal window is narrowed to.
#pragma once

#include <QCheckBox>
#include <array>

#include "forms/journal/bornesmontants.h"
#include "journal/choixcomptes.h"
#include "journal/criteres.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

class CDialogCritere : public CZNDialog {
  Q_OBJECT
 public:
  CDialogCritere(ContexteUi& contexte, i16 journal, const CritereEcriture& criteres,
                 QWidget* parent = nullptr);
  ~CDialogCritere() override;
  /// As Ok left them, normalised.
  const CritereEcriture& Criteres() const { return m_criteres; }

 protected:
  bool Enregistre() override;

 private:
  /// A mark and its opposite: at most one of them is ticked, and it disables the other.
  struct Paire {
    u32 CritereEcriture::*presente;
    u32 CritereEcriture::*absente;
    QCheckBox coche{nullptr}, oppose{nullptr};
  };
  /// An "all" box and the two bounds that it closes.
  struct Bornes {
    QCheckBox tout;
    EditeurChoix de, a;
    void Ajoute(const std::string& code, const std::string& astuce);
  };

  void DeclareMarques(Formulaire& formulaire);
  void DeclareBornes(Formulaire& formulaire, Bornes& bornes, const QString& groupe, const QString& tout,
                     const char* nom);
  void RemplitComptes(i16 journal);
  void RemplitRubriques(i16 journal);
  void RemplitJours();
  void Montre();
  void Permet();
  /// The bound that was not set gives way.
  void SuitJour(bool premier);
  void RetientJours();

  CritereEcriture m_criteres;
  QCheckBox m_toutes;
  std::array<Paire, 4> m_paires;
  BornesMontants m_montants;
  Bornes m_comptes, m_rubriques, m_jours;
  std::vector<CompteOffert> m_offerts;  ///< the rows of the accounts
  int m_jourDe = 0, m_jourA = 0;        ///< rows of the days, as they were set
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor

// What the assistants of backup and restoration share: their frame, and the choice of a folder.
#pragma once

#include <QComboBox>
#include <QWizard>
#include <string>

#include "core/refus.h"
#include "garde/destinations.h"
#include "ui/fenetres.h"
#include "ui/findesliens.h"
#include "ui/formulaire.h"

namespace fenlor {

/// Buttons, keys and help as the forms have them. `objectName` is the class name without "C"; F1 and "A&ide"
/// show its help page. Its last page but one is the commit page, whose button is named `fait`.
class CWizardGarde : public QWizard {
  Q_OBJECT
 public:
  CWizardGarde(ContexteUi& contexte, const QString& titre, const char* nom, const QString& fait,
               QWidget* parent);
  CFenlorApp& App() { return m_contexte.App; }
  ContexteUi& Contexte() { return m_contexte; }
  /// Tells a refusal and points at its field; true when there is none.
  bool Accepte(const Refus& refus);

 protected:
  void keyPressEvent(QKeyEvent* evenement) override;
  void showEvent(QShowEvent* evenement) override;

 private:
  ContexteUi& m_contexte;
  FinDesLiens m_finLiens{*this};
};

/// The field "&Dossier :" with folders to choose from, and a button to look for another one.
class ChoixDossier {
 public:
  /// `choisi`: the folder that stands in the field, in the platform's bytes; may be empty.
  ChoixDossier(Formulaire& formulaire, const std::vector<std::string>& dossiers, const std::string& choisi);
  std::string Dossier() const;
  /// A path that is none of a folder is 3554, none at all 3552; both point at the field.
  Refus Controle() const;
  QComboBox& Champ() { return *m_champ; }

 private:
  QComboBox* m_champ;
};

/// What is proposed on this machine, `retenu` in front.
Destinations DestinationsIci(const CFenlorApp& app, const std::string& retenu);

/// A path for a field, and back.
QString CheminQ(const std::string& octets);
std::string OctetsDe(const QString& chemin);

}  // namespace fenlor

// Keeps what stands in the form of an entry while it is being typed (journal/suspens.h).
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>

#include "journal/suspens.h"

class QWidget;

namespace fenlor {

/// From `Commence` on, the content is written whenever a field of the form, or of one above it, is left, and
/// every two seconds while it changes. A form that dies with the program leaves it behind.
class GardeSaisie : public QObject {
  Q_OBJECT
 public:
  /// `saisie` gives what the form holds; none while nothing was typed. Session and form outlive the object.
  GardeSaisie(CFenlorApp& app, QWidget& forme, std::function<std::optional<SaisieSuspendue>()> saisie);
  void Commence();
  /// Now: before something that ends more than a field.
  void Note();
  /// What was typed is saved or given up.
  void Oublie();

 private:
  CFenlorApp& m_app;
  std::function<std::optional<SaisieSuspendue>()> m_saisie;
  std::string m_notee;  ///< as it stands in the file; empty: nothing does
  QTimer m_horloge;
};

}  // namespace fenlor

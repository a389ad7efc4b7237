// The platform's own dialogs in French.
#pragma once

#include <QJsonObject>
#include <QTranslator>

namespace fenlor {

/// While it lives, the texts of the toolkit are French: from the program's resources, else from the
/// system's translations; and those of printing that these lack or tell badly.
class Traductions {
 public:
  Traductions();
  ~Traductions();
  Traductions(const Traductions&) = delete;
  Traductions& operator=(const Traductions&) = delete;

 private:
  class Complement : public QTranslator {
   public:
    Complement();
    QString translate(const char* contexte, const char* texte, const char* precision, int n) const override;
    bool isEmpty() const override { return false; }

   private:
    QJsonObject m_impression;
  };
  QTranslator m_systeme;
  Complement m_complement;
};

}  // namespace fenlor

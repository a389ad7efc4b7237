// What the programs stand on that work at a window, offscreen, until they are killed.
#pragma once

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "ui/dialogueqt.h"
#include "ui/fenetres.h"

namespace fenlor::pannes {

[[noreturn]] inline void Abandonne(const std::string& texte) {
  std::fprintf(stderr, "%s: %s\n", program_invocation_short_name, texte.c_str());
  std::exit(3);
}

class DialogueMuet : public DialogueQt {
 public:
  void Erreur(unsigned, const std::string& texte) override { Abandonne(texte); }
  int Message(unsigned, unsigned, const std::string& texte) override {
    if (!Reponse) Abandonne(texte);
    return Reponse;
  }
  int Reponse = 0;  ///< to all questions; 0: none is expected
};

class Bureau : public Fenetres {
 public:
  void FermeToutes() override {}
  void Sauve() override {}
  void Restaure() override {}
  void MontreExercice() override {}
  void Aide(const QString&) override {}
  bool Touche(const QKeySequence&) override { return false; }
  QWidget* Cadre() override { return nullptr; }
};

/// A practice with no exercice open yet.
struct FenetreTuee {
  explicit FenetreTuee(const std::string& cabinet, const OptionsQVAPI& options = {})
      : magasin(options), app(magasin, dialogue) {
    if (!magasin.QVOpenSession(1) || !magasin.QVOpenCompta(cabinet, {}))
      Abandonne(magasin.QVErreurTexte(magasin.QVFileErrorCode()));
    app.PathCabinet = cabinet;
    ChargePreferences(dessin, app, QApplication::palette());
  }
  QVAPI magasin;
  DialogueMuet dialogue;
  CFenlorApp app;
  Bureau bureau;
  Preferences dessin;
  ContexteUi ui{app, bureau, dessin};
};

}  // namespace fenlor::pannes

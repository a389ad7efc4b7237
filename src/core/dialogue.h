// How rules talk to whoever runs them: errors, questions and progress behind one
// interface. A window answers with boxes, fenlorctl with options and stderr, a
// test with a script. No rule ever opens a box itself.
#pragma once

#include <string>

#include "store/enregistrements.h"

namespace fenlor {

/// Results of a question.
enum ReponseMessage : int {
  RepOk = 1,
  RepAnnuler = 2,
  RepAbandonner = 3,
  RepReessayer = 4,
  RepIgnorer = 5,
  RepOui = 6,
  RepNon = 7,
  RepTous = 8,  ///< yes, here and for all that follow
};
/// Style word: low four bits the button set, bits 4 to 7 the icon. `DefautSecond`: Enter is the second
/// button of the set, in "Oui, Non" the harmless one of a question that destroys. `FuitePremier`: Escape is
/// the first one, because "Non" goes on.
enum StyleMessage : unsigned {
  BoutonsOk = 0,
  BoutonsOkAnnuler = 1,
  BoutonsReessayerAbandonnerIgnorer = 2,
  BoutonsNonOuiAnnuler = 3,
  BoutonsOuiNon = 4,
  BoutonsReessayerAnnuler = 5,
  BoutonsSerie = 6,  ///< yes, no, all, cancel: one of many questions, which cancelling ends
  IconeStop = 16,
  IconeQuestion = 32,
  IconeAttention = 48,
  IconeInformation = 64,
  DefautSecond = 256,
  FuitePremier = 512,
};

class Dialogue {
 public:
  virtual ~Dialogue() = default;

  /// Shows a failure. `numero` is that of the error table (textes.h), 0 for a
  /// text of the store. `texte` is complete, Windows-1252.
  virtual void Erreur(unsigned numero, const std::string& texte) = 0;
  /// Asks. `numero` identifies the question (textes.h). Returns a ReponseMessage.
  virtual int Message(unsigned style, unsigned numero, const std::string& texte) = 0;

  // Progress. Calls nest: only the outermost opening shows a window.
  /// `maximum` 0: no bar. `annulable`: the user may stop the work.
  virtual void OuvreProgress(const std::string& titre, const std::string& texte, bool annulable,
                             u32 maximum) = 0;
  virtual void FermeProgress() = 0;
  virtual void SetTexte(const std::string& texte) = 0;
  virtual void SetMax(u32 maximum) = 0;
  virtual void SetPos(u32 position) = 0;
  virtual void Step() = 0;
  /// True when the user asked to stop; lets waiting messages pass first.
  virtual bool IsAborted() = 0;
};

/// Progress that is shown while the object lives.
class Progression {
 public:
  Progression(Dialogue& boite, const std::string& titre, const std::string& texte, bool annulable,
              u32 maximum)
      : m_boite(boite) {
    m_boite.OuvreProgress(titre, texte, annulable, maximum);
  }
  ~Progression() { m_boite.FermeProgress(); }
  Progression(const Progression&) = delete;
  Progression& operator=(const Progression&) = delete;

 private:
  Dialogue& m_boite;
};

/// Percent shown for a position: position clamped to the maximum, truncated; 0
/// when the maximum is 0.
unsigned PourcentProgress(u32 position, u32 maximum);

}  // namespace fenlor

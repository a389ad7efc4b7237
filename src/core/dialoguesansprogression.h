// A dialogue of a program without windows.
#pragma once

#include "core/dialogue.h"

namespace fenlor {

/// Shows no progress, and nobody stops what is under way.
class DialogueSansProgression : public Dialogue {
 public:
  void OuvreProgress(const std::string&, const std::string&, bool, u32) override {}
  void FermeProgress() override {}
  void SetTexte(const std::string&) override {}
  void SetMax(u32) override {}
  void SetPos(u32) override {}
  void Step() override {}
  bool IsAborted() override { return false; }
};

}  // namespace fenlor

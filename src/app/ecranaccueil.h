// The picture that is shown while the program starts.
#pragma once

#include <QSplashScreen>

namespace fenlor {

/// Drawn at the scale of the screen; `tessamaris` has its own colours.
class EcranAccueil : public QSplashScreen {
  Q_OBJECT
 public:
  explicit EcranAccueil(bool tessamaris);
};

}  // namespace fenlor

// The end of a form's connections.
#pragma once

class QWidget;

namespace fenlor {

/// Last member of a window's class, so that it dies first: from then on no signal of a widget
/// inside, and none of the application, reaches the window or what stands in it, while its
/// fields die one after the other.
///
///   EditeurTexte m_nom;
///   FinDesLiens m_finLiens{*this};
class FinDesLiens {
 public:
  explicit FinDesLiens(QWidget& fenetre) : m_fenetre(fenetre) {}
  ~FinDesLiens();
  FinDesLiens(const FinDesLiens&) = delete;
  FinDesLiens& operator=(const FinDesLiens&) = delete;

 private:
  QWidget& m_fenetre;
};

}  // namespace fenlor

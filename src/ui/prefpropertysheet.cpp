#include "ui/prefpropertysheet.h"

#include <QApplication>

#include "ui/pageprefcouleurs.h"
#include "ui/pageprefpolices.h"
#include "ui/pageprefpreferences.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPrefPropertySheet::CPrefPropertySheet(ContexteUi& contexte, QWidget* parent)
    : CZNSheet(contexte, u"Préférences"_s, "PrefPropertySheet", parent) {
  AjoutePage(new CPagePrefPreferences(contexte));
  AjoutePage(new CPagePrefCouleurs(contexte));
  AjoutePage(new CPagePrefPolices(contexte));
  Fini();
}

void CPrefPropertySheet::Apres() {
  ChargePreferences(Contexte().Dessin, App(), QApplication::palette());
  Contexte().Cadre.Note(ReglagePreferences);
}

}  // namespace fenlor

#include "ui/prefpropertysheet.h"

#include "ui/pageprefcouleurs.h"
#include "ui/pageprefpolices.h"
#include "ui/pageprefpreferences.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPrefPropertySheet::CPrefPropertySheet(ContexteUi& contexte, QWidget* parent,
                                       const std::vector<CZNPage*>& suivantes)
    : CZNSheet(contexte, u"Préférences"_s, "PrefPropertySheet", parent) {
  AjoutePage(new CPagePrefPreferences(contexte));
  AjoutePage(new CPagePrefCouleurs(contexte));
  AjoutePage(new CPagePrefPolices(contexte));
  for (CZNPage* page : suivantes) AjoutePage(page);
  Fini();
}

void CPrefPropertySheet::Apres() {
  AppliquePreferences(Contexte().Dessin, App());
  Contexte().Cadre.Note(ReglagePreferences);
}

}  // namespace fenlor

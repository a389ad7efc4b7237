#include "master/forms/sheetoptions.h"

#include <QScreen>
#include <QTabBar>
#include <algorithm>

#include "master/forms/dialogcompteparticulier.h"
#include "master/forms/pageoptionactivite.h"
#include "master/forms/pageoptionadressebanque.h"
#include "master/forms/pageoptionconseils.h"
#include "master/forms/pageoptionpassword.h"
#include "master/forms/pageoptionsupdate.h"
#include "master/forms/pageoptiontva.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CSheetOptions::CSheetOptions(ContexteUi& contexte, QWidget* parent)
    : CZNSheet(contexte, u"Options"_s, "SheetOptions", parent) {
  AjoutePage(new CPageOptionActivite(contexte));
  AjoutePage(new CPageOptionAdresseBanque(contexte));
  AjoutePage(new CPageOptionAssociation(contexte));
  AjoutePage(new CPageOptionComptable(contexte));
  AjoutePage(new CPageOptionCompte(contexte));
  AjoutePage(new CPageOptionPassword(contexte));
  AjoutePage(new CPageOptionTVA(contexte));
  AjoutePage(new CPageOptionsUpdate(contexte));
  Fini();
  // All tabs at once where the screen has room for them, else with arrows.
  auto& onglets = *findChild<QTabWidget*>();
  const int place = screen()->availableSize().width() - 4 * fontMetrics().height();
  onglets.setMinimumWidth(
      std::max(onglets.minimumSizeHint().width(), std::min(onglets.tabBar()->sizeHint().width(), place)));
}

}  // namespace fenlor

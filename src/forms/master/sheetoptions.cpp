#include "forms/master/sheetoptions.h"

#include <QScreen>
#include <QTabBar>
#include <algorithm>

#include "forms/master/dialogcompteparticulier.h"
#include "forms/master/pageoptionactivite.h"
#include "forms/master/pageoptionadressebanque.h"
#include "forms/master/pageoptionconseils.h"
#include "forms/master/pageoptionpassword.h"
#include "forms/master/pageoptionsupdate.h"
#include "forms/master/pageoptiontva.h"

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

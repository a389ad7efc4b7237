#include "pages/stylepapier.h"

#include "core/cles.h"

namespace fenlor {

StylePapier LitStylePapier(const CFenlorApp& app) {
  return app.Reglages.IsPapierSoigne() ? StylePapier::Soignee : StylePapier::Classique;
}

bool EcritStylePapier(CFenlorApp& app, StylePapier style) {
  return app.Reglages.EcritIni(Texte(SecPreferences), Texte(CleStyleEtats),
                               Texte(style == StylePapier::Soignee ? MotSoignee : MotClassique));
}

}  // namespace fenlor

#include "forms/session/dialogpassword.h"

#include "core/erreurs.h"
#include "store/motdepasse.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

CDialogPassword::CDialogPassword(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, u"Mot de passe"_s, "DialogPassword", parent) {
  m_motDePasse.setEchoMode(QLineEdit::Password);
  Formulaire(Zone())
      .Texte(u"Ce cabinet est protégé par un mot de passe."_s)
      .Champ(u"&Mot de passe :"_s, m_motDePasse, "motDePasse")
      .Limite(static_cast<int>(LongueurMotDePasse));
  Boutons(Mode::Simple);
}

int CDialogPassword::exec() {
  return App().Magasin.QVIsComptaPassword(App().PathCabinet) ? CZNDialog::exec() : int{Accepted};
}

bool CDialogPassword::Enregistre() {
  QVAPI& magasin = App().Magasin;
  if (magasin.QVOpenCompta(App().PathCabinet, m_motDePasse.Valeur())) {
    magasin.QVSetWithQuorbane(App().Edition != 2, App().Edition);
    return true;
  }
  const int code = magasin.QVFileErrorCode();
  m_motDePasse.clear();
  if (code == ErrOccupe) return Refuse(ErrCabinetOccupe, m_motDePasse, {magasin.QVDetenteur()});
  if (code != ErrMotDePasse) return Refuse(ErrMagasin, m_motDePasse, {magasin.QVErreurTexte(code)});
  return Refuse(ErrMotDePasseErrone, m_motDePasse);
}

}  // namespace fenlor

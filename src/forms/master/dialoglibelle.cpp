#include "forms/master/dialoglibelle.h"

#include <QPushButton>

#include "forms/master/libelleview.h"
#include "forms/master/textes.h"
#include "master/libelles.h"
#include "master/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CDialogLibelle::CDialogLibelle(ContexteUi& contexte, CLibelleView& liste, int ligne, QWidget* parent)
    : CZNDialog(contexte, TexteQ(ligne < 0 ? TitreAjoutLibelle : TitreModificationLibelle), "DialogLibelle",
                parent),
      m_liste(liste),
      m_ligne(ligne) {
  Formulaire{Zone()}
      .Champ(u"&Libellé :"_s, m_libelle, "libelle")
      .Limite(static_cast<int>(LongueurLibelle))
      .Largeur(60)
      .Pousse();
  Boutons(ligne < 0 ? Mode::Ajout : Mode::Modification, true);
  if (ligne < 0)
    for (const char* nom : {"precedent", "suivant"}) findChild<QPushButton*>(QLatin1String(nom))->hide();
  FigeSiCloture();
  Montre();
}

void CDialogLibelle::Montre() {
  if (m_ligne < 0) return;
  m_libelle.Pose(m_liste.Libelle(m_ligne));
  findChild<QPushButton*>(u"precedent"_s)->setEnabled(m_ligne > 0);
  findChild<QPushButton*>(u"suivant"_s)->setEnabled(m_ligne + 1 < m_liste.NbLibelles());
}

bool CDialogLibelle::Enregistre() {
  const std::string libelle = NormeLibelle(m_libelle.Valeur());
  if (!LibelleRelisible(libelle)) return Refuse(ErrLibelleRefuse, m_libelle);
  return m_ligne < 0 ? m_liste.Insere(libelle) : m_liste.Change(m_ligne, libelle);
}

void CDialogLibelle::Vide() { m_libelle.Pose({}); }

void CDialogLibelle::Voisin(int pas) {
  const int ligne = m_ligne + pas;
  if (ligne < 0 || ligne >= m_liste.NbLibelles()) return;
  m_ligne = ligne;
  m_liste.Table().SelectionneLigne(m_ligne);
  Montre();
}

}  // namespace fenlor

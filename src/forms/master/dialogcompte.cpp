#include "forms/master/dialogcompte.h"

#include "core/valeurs.h"
#include "forms/master/champscompte.h"
#include "forms/master/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

DialogCompte::DialogCompte(ContexteUi& contexte, const char* nom, FormeCompte forme, i16 type,
                           SuiteFiches* vue, Position position, QWidget* parent)
    : FormulaireFiche(contexte, nom, vue, position, parent), m_forme(forme), m_type(type) {}

void DialogCompte::CodeEtNumero(Formulaire& formulaire, const QString& code, const QString& numero) {
  formulaire.Champ(code, m_code, "code")
      .SurChangement([this] { MontreTitre(); })
      .SurDepart(Controle(m_code, &Fiche::code, ControleCode))
      .Champ(numero, m_numero, "compte")
      .SurDepart([this] { QuitteNumero(); });
}

QString DialogCompte::Titre() const {
  const auto type = static_cast<unsigned>(Type());
  if (!Ajout()) return TexteQ(TitreCompte[type], {CompacteTexte(m_code.Valeur())});
  return TexteQ(m_forme == FormeCompte::PlanComptable ? TitreAjoutAuPlan : TitreAjoutCompte[type]);
}

void DialogCompte::Montre() {
  MontreChamps();
  FigeChamp(m_numero, ADesMouvements(m_compte));
}

FicheCompte DialogCompte::Nouvelle() {
  m_compte = {};
  return NouvelleFiche(App(), m_forme, m_type);
}

Refus DialogCompte::Sauve(FicheCompte& fiche) {
  m_type = fiche.type;
  return FormulaireFiche::Sauve(fiche);
}

void DialogCompte::QuitteNumero() {
  const std::string compte = QVAPI::GetLongCompte(m_numero.Valeur());
  if (m_numero.isReadOnly() || compte.empty()) return;
  m_numero.Pose(App().NumeroCourt(compte));
  if (compte != QVAPI::GetLongCompte(EnMain().compte)) Refuse(ControleNumero(App(), Saisie()));
}

}  // namespace fenlor

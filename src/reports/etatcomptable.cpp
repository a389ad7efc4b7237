#include "reports/etatcomptable.h"

#include <cassert>

#include "core/texte.h"
#include "core/valeurs.h"

namespace fenlor {

namespace {

constexpr int premiereAnneeEuro = 2002;

}  // namespace

bool CEtatComptable::DemandeCriteres(FormeCriteres forme, const TexteFixe& titre, unsigned comptes) {
  assert((comptes & ~unsigned{MasqueTous}) == 0);
  m_criteres = {};
  m_criteres.du = App.Reglages.GetDebutExercice();
  m_criteres.au = App.Reglages.GetFinExercice();
  const std::string texte = Texte(titre);
  PoseTitre(texte);
  if (!m_demandeur.Demande(forme, texte, comptes, m_criteres)) Abandonne();
  return EnCours();
}

void CEtatComptable::PoseTitre(const std::string& titre) {
  assert(!titre.empty());
  m_titreDocument = titre;
  SetEtatTitre("%s", {titre});
}

CEtatComptable::Travail::Travail(CEtatComptable& etat, const TexteFixe& avancement, u32 maximum)
    : m_etat(etat), m_progression(etat.App.Boite, etat.TitreDocument(), Texte(avancement), true, maximum) {}

void CEtatComptable::Travail::Pas() {
  if (!m_etat.EnCours()) return;
  m_etat.App.Boite.Step();
  if (m_etat.App.Boite.IsAborted()) m_etat.Abandonne();
}

bool CEtatComptable::Travail::PasOuFin() {
  m_etat.App.Boite.Step();
  return !m_etat.App.Boite.IsAborted();
}

void CEtatComptable::Travail::Recommence(u32 maximum) {
  m_etat.App.Boite.SetMax(maximum);
  m_etat.App.Boite.SetPos(0);
}

bool CEtatComptable::AfficheDouble() const { return App.AfficherDouble; }
bool CEtatComptable::AnneeEuro() const { return TexteVersEntier(App.NomExercice) >= premiereAnneeEuro; }
bool CEtatComptable::OptionEuro() const { return App.Reglages.IsEuro(); }

std::string CEtatComptable::MontantAnnee(f64 franc, f64 euro) const {
  return AnneeEuro() ? FormatEuro(euro) : FormatFranc(franc);
}

std::string CEtatComptable::SoldeAnnee(f64 franc, f64 euro) const {
  return AnneeEuro() ? FormatSoldeEuro(euro) : FormatSoldeFranc(franc);
}

void SommesEtat::Ajoute(const Line& ligne) {
  (ligne.Sens ? creditFranc : debitFranc) += ligne.MontantFranc;
  (ligne.Sens ? creditEuro : debitEuro) += ligne.MontantEuro;
}

void SommesEtat::Ajoute(const SommesEtat& autre) {
  debitFranc += autre.debitFranc;
  debitEuro += autre.debitEuro;
  creditFranc += autre.creditFranc;
  creditEuro += autre.creditEuro;
}

}  // namespace fenlor

#include "reports/etatdecompte.h"

#include "core/textes.h"
#include "core/valeurs.h"
#include "reports/livresetat.h"
#include "store/texte1252.h"

namespace fenlor {

bool CEtatDeCompte::EcritTete(const Plan& plan, unsigned tva) {
  const auto type =
      static_cast<unsigned>(plan.Type < Tresorerie || plan.Type > Autre ? i16{Autre} : plan.Type);
  const std::string compte = App.Magasin.GetShortCompte(fenlor::LitTexte(plan.Compte));
  return EtatPrintf(CompteEtatExtrait,
                    {Texte(type == Tva ? tva : MotNatureCompte + type), EchappeEtat(CompacteTexte(compte)),
                     EchappeEtat(fenlor::LitTexte(plan.Designation)), StrDate(m_criteres.du),
                     StrDate(m_criteres.au)}) >= 0 &&
         EcritEtat("\\H") >= 0;
}

bool CEtatDeCompte::EcritRangee(const FormatEtat& format, const Line& ligne, SommesEtat& sommes) {
  sommes = {};
  sommes.Ajoute(ligne);
  const std::string_view nom = TexteSur(NomDeLigne(ligne), m_tampon);
  const std::string date = StrDate(ligne.DateLigne);
  if (Montant()) {
    const auto c = ColonnesMontant(sommes);
    return EtatPrintf(format, {ligne.Ligne, date, nom, c[0], c[1]}) >= 0;
  }
  const ColonnesEtat c = ColonnesTotaux(sommes);
  return EtatPrintf(format, {ligne.Ligne, date, nom, c[0], c[1], c[2], c[3]}) >= 0;
}

bool CEtatDeCompte::EcritSommes(const FormatEtat& format, const SommesEtat& sommes) {
  if (!Montant()) return EcritTotaux(format, sommes);
  const auto c = ColonnesMontant(sommes);
  return EtatPrintf(format, {c[0], c[1]}) >= 0;
}

}  // namespace fenlor

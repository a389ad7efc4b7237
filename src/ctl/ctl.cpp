#include "ctl/ctl.h"

#include "ctl/commandes.h"
#include "ctl/contexte.h"
#include "ctl/lignecommande.h"

namespace fenlor {

int ExecuteCtl(const std::vector<std::string>& args, std::istream& entree, std::ostream& sortie,
               std::ostream& erreurs, const OptionsCtl& options) {
  LigneCommande ligne;
  for (const auto declare :
       {DeclareExercices,     DeclareDemo,         DeclareSaisie,          DeclareJournal,
        DeclareEtats,         DeclareEchanges,     DeclareEntretien,       DeclareComptes,
        DeclareRubriques,     DeclareTraitements,  DeclareImmobilisations, DeclareRapprochement,
        DeclareAmortissement, DeclareAutomatiques, DeclareFraisKm,         DeclareRemise,
        DeclareReleve,        DeclareGarde,        DeclareChercher,        DeclareGraphiques,
        DeclareCorbeille})
    declare(ligne);

  const LigneCommande::Lecture lecture = ligne.Lit(args);
  if (!lecture.aide.empty()) {
    sortie << lecture.aide << std::flush;
    return sortie.good() ? StatutFait : StatutRefuse;
  }
  if (!lecture.faute.empty()) return RefuseUsage(erreurs, lecture.faute);

  OptionsCtl particulieres = options;
  particulieres.magasin.reparation = ligne.Repare();
  Contexte contexte(ligne.Globales(), particulieres, entree, sortie, erreurs);
  int statut = StatutRefuse;
  if (contexte.OuvreCabinet(ligne.CreeDossier())) statut = ligne.Execute(contexte);
  return contexte.Termine(statut);
}

}  // namespace fenlor

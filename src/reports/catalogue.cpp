#include "reports/catalogue.h"

#include "reports/etat2035.h"
#include "reports/etatamortissements.h"
#include "reports/etatbalance.h"
#include "reports/etatcentralisation.h"
#include "reports/etatdetail.h"
#include "reports/etatextrait.h"
#include "reports/etatgrandlivre.h"
#include "reports/etatimmobilisations.h"
#include "reports/etatjournal.h"
#include "reports/etatpmv.h"
#include "reports/etatrapprochement.h"
#include "reports/etatremise.h"
#include "reports/etatslistes.h"
#include "reports/etattva.h"

namespace fenlor {

namespace {

template <class Etat>
std::unique_ptr<CEtatComptable> Fait(CFenlorApp& app, DemandeurCriteres& demandeur) {
  return std::make_unique<Etat>(app, demandeur);
}

template <i16 type>
std::unique_ptr<CEtatComptable> FaitPlan(CFenlorApp& app, DemandeurCriteres& demandeur) {
  return std::make_unique<CEtatPlanDoc>(app, demandeur, type);
}

constexpr DefinitionEtat etats[] = {
    {"detail", 1026, Fait<CEtatDetailDoc>},
    {"extrait", 1027, Fait<CEtatExtraitDoc>},
    {"grand-livre", 1028, Fait<CEtatGrandLivreDoc>},
    {"balance", 1029, Fait<CEtatBalanceDoc>},
    {"tva", 1030, Fait<CEtatTVADoc>},
    {"rapprochement", 1031, Fait<CEtatRapprochementDoc>},
    {"centralisation", 1032, Fait<CEtatCentralisationDoc>},
    {"2035", 1033, Fait<CEtat2035Doc>},
    {"remise", 1034, Fait<CEtatRemiseDoc>},
    {"amortissements", 1035, Fait<CEtatAmortissementsDoc>},
    {"plus-values", 1036, Fait<CEtatPMVDoc>},
    {"immobilisations", 0, Fait<CEtatImmobilisationsDoc>},
    {"journal", 0, Fait<CEtatJournalDoc>},
    {"comptes-recettes", 0, FaitPlan<Recette>},
    {"comptes-depenses", 0, FaitPlan<Depense>},
    {"plan-comptable", 0, Fait<CEtatPlanComptableDoc>},
    {"tresorerie", 0, Fait<CEtatTresorerieDoc>},
    {"rubriques", 0, Fait<CEtatRubriqueDoc>},
    {"libelles", 0, Fait<CEtatLibelleDoc>},
    {"previsions", 0, Fait<CEtatPrevisionsDoc>},
};

}  // namespace

std::span<const DefinitionEtat> CatalogueEtats() { return etats; }

const DefinitionEtat* TrouveEtat(std::string_view nom) {
  for (const DefinitionEtat& etat : etats)
    if (etat.nom == nom) return &etat;
  return nullptr;
}

const DefinitionEtat* TrouveEtat(unsigned commande) {
  for (const DefinitionEtat& etat : etats)
    if (commande != 0 && etat.commande == commande) return &etat;
  return nullptr;
}

}  // namespace fenlor

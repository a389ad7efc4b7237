#include "app/fabriques.h"

#include <QApplication>

#include "app/gestioncommandes.h"
#include "app/mainframe.h"
#include "forms/assets/immoview.h"
#include "forms/journal/ecritureview.h"
#include "forms/master/comptesview.h"
#include "forms/master/dialogcompteparticulier.h"
#include "forms/master/dialogplan.h"
#include "forms/master/libelleview.h"
#include "forms/master/rubriqueview.h"
#include "forms/reports/impressions.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "reports/etatjournal.h"
#include "ui/dialogueqt.h"

namespace fenlor {

namespace {

std::string CompteManquant(QVAPI& magasin, unsigned question) {
  switch (question) {
    case ErrCompteEcartCredit:
      return magasin.GetCompteEcartCredit();
    case ErrCompteEcartDebit:
      return magasin.GetCompteEcartDebit();
    case ErrComptePersonnelAbsent:
      return magasin.GetComptePerso();
    case ErrCompteVirementDepenses:
      return magasin.GetCompteVireFrom();
    default:
      return magasin.GetCompteVireTo();
  }
}

DemandeEtat Demande(bool apercu) { return apercu ? DemandeEtat::Apercu : DemandeEtat::Impression; }

}  // namespace

void PoseFabriques(CMainFrame& cadre) {
  const auto liste = [&cadre](u32 bit, const char* etat, auto fait, bool memeVide = true) {
    cadre.PoseFabrique(bit, [&cadre, etat, fait, memeVide](ContexteUi& contexte) {
      CZNListView* vue = fait(contexte);
      const auto imprime = [&cadre, etat](bool apercu) {
        cadre.Table().Etats().Ouvre(TrouveEtat(etat)->fabrique, Demande(apercu));
      };
      vue->SurImpression(imprime, [=] { return memeVide || vue->Table().Modele().NbLignes() > 0; });
      return vue;
    });
  };
  liste(FenTresorerie, "tresorerie", [](ContexteUi& contexte) { return new CTresorerieView(contexte); });
  liste(FenComptesRecettes, "comptes-recettes",
        [](ContexteUi& contexte) { return new CPlanView(contexte, Recette); });
  liste(FenComptesDepenses, "comptes-depenses",
        [](ContexteUi& contexte) { return new CPlanView(contexte, Depense); });
  liste(FenPlanComptable, "plan-comptable",
        [](ContexteUi& contexte) { return new CPlanComptableView(contexte); });
  liste(FenRubriques, "rubriques", [](ContexteUi& contexte) { return new CRubriqueView(contexte); });
  liste(FenLibelles, "libelles", [](ContexteUi& contexte) { return new CLibelleView(contexte); });
  liste(
      FenImmobilisations, "immobilisations", [](ContexteUi& contexte) { return new CImmoView(contexte); },
      false);
  for (const auto& [bit, journal] : {std::pair{FenRecettes, JournalRecettes},
                                     {FenDepenses, JournalDepenses},
                                     {FenOperationsDiverses, JournalOD}})
    cadre.PoseFabrique(bit, [&cadre, numero = journal](ContexteUi& contexte) {
      auto* vue = new CEcritureView(contexte, numero);
      vue->SurImpression([&cadre, vue](bool apercu) {
        const auto etat = [vue](CFenlorApp& app, DemandeurCriteres& demandeur) {
          auto doc = std::make_unique<CEtatJournalDoc>(app, demandeur);
          doc->SetCriteres(vue->Demande(), vue->JournalComptable());
          return doc;
        };
        cadre.Table().Etats().Ouvre(etat, Demande(apercu));
      });
      return vue;
    });
}

void PoseManques(DialogueQt& dialogue, CMainFrame& cadre) {
  dialogue.PoseManque({ErrCompteEcartCredit, ErrCompteEcartDebit, ErrComptePersonnelAbsent,
                       ErrCompteVirementDepenses, ErrCompteVirementRecettes},
                      [&cadre](unsigned question) {
                        CFenlorApp& app = cadre.App();
                        QWidget* parent = QApplication::activeModalWidget();
                        if (!parent) parent = &cadre;
                        const auto nouveau = [&cadre, parent] {
                          return CDialogPlan::Nouveau(cadre.Contexte(), parent);
                        };
                        CDialogCompteParticulier(cadre.Contexte(), nouveau, parent).Execute();
                        Plan plan;
                        return LitCompte(app, CompteManquant(app.Magasin, question), plan);
                      });
}

}  // namespace fenlor

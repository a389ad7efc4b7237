// The commands of fenlorctl, family by family. Each declares its words and options and
// brings the action, which gets an opened practice, does its work through the rules,
// tells refusals on the context and returns a StatutCtl.
#pragma once

#include "ctl/lignecommande.h"

namespace fenlor {

void DeclareExercices(LigneCommande& ligne);        ///< creer, exercices
void DeclareDemo(LigneCommande& ligne);             ///< demo
void DeclareSaisie(LigneCommande& ligne);           ///< saisir
void DeclareJournal(LigneCommande& ligne);          ///< journal
void DeclareEtats(LigneCommande& ligne);            ///< etat
void DeclareGraphiques(LigneCommande& ligne);       ///< graphique
void DeclareEchanges(LigneCommande& ligne);         ///< exporter, importer
void DeclareEntretien(LigneCommande& ligne);        ///< balance, recalculer, verifier, reconstruire
void DeclareComptes(LigneCommande& ligne);          ///< compte
void DeclareRubriques(LigneCommande& ligne);        ///< rubrique
void DeclareTraitements(LigneCommande& ligne);      ///< valider, virement, renumeroter, deplacer
void DeclareAmortissement(LigneCommande& ligne);    ///< amortissement
void DeclareImmobilisations(LigneCommande& ligne);  ///< immobilisation
void DeclareFraisKm(LigneCommande& ligne);          ///< frais-km
void DeclareAutomatiques(LigneCommande& ligne);     ///< automatique, echeances
void DeclareRemise(LigneCommande& ligne);           ///< remise
void DeclareRapprochement(LigneCommande& ligne);    ///< rapprochement
void DeclareChercher(LigneCommande& ligne);         ///< chercher
void DeclareGarde(LigneCommande& ligne);            ///< sauvegarder, restaurer, sauvegardes, cloturer, sceau
void DeclareReleve(LigneCommande& ligne);           ///< releve
void DeclareCorbeille(LigneCommande& ligne);        ///< corbeille

}  // namespace fenlor

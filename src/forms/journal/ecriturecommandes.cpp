// What the commands of a journal window do, and when.
#include <QScopedValueRollback>
#include <algorithm>

#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "forms/journal/dialogcritere.h"
#include "forms/journal/dialogecriture.h"
#include "forms/journal/dialogmonth.h"
#include "forms/journal/dialogmouvement.h"
#include "forms/journal/ecrcombo.h"
#include "forms/journal/ecritureview.h"
#include "forms/journal/ecrlist.h"
#include "forms/journal/ecrtotal.h"
#include "forms/journal/month.h"
#include "journal/controles.h"
#include "journal/traitements.h"
#include "ui/curseurattente.h"
#include "ui/cznlistview.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

/// Of a long selection no more is read to tell what can be done; the commands pass over the rows that they
/// do not concern.
constexpr int luesAuPlus = 200;

}  // namespace

std::vector<unsigned> CEcritureView::MenuContextuel() {
  return {CmdCopier,
          CmdCopierTout,
          CmdFiltrer,
          0,
          CmdAjouter,
          CmdModifier,
          CmdSupprimer,
          0,
          CmdPointer,
          CmdRapprocher,
          CmdValider,
          CmdChangerDate,
          CmdRenumeroter,
          0,
          CmdMois,
          CmdCriteres,
          CmdColonnes,
          0,
          CmdBrouillard,
          CmdValidees,
          CmdToutes,
          CmdComptable,
          0,
          CmdAide};
}

void CEcritureView::DeclareCommandes() {
  const auto choisie = [this] { return GetEcrId(GetEcrSel()) != 0; };
  const auto brouillon = [this] { return Etat().brouillon; };
  Declare({
      {CmdColonnes, [this] { MontreColonnes(*this, *m_liste); }},
      {CmdAjouter, [this] { Ajoute(); }},
      {CmdModifier, [this] { Modifie(); }, [=, this] { return m_liste->NbChoisies() == 1 && choisie(); }},
      {CmdSupprimer, [this] { Supprime(); }, choisie},
      {CmdPointer, [this] { Pointe(); }, choisie, [this] { return Etat().pointee; }},
      {CmdRapprocher, [this] { Rapproche(); }, [this] { return PeutRapprocher(); },
       [this] { return Etat().rapprochee; }},
      {CmdValider, [this] { Valide(); }, brouillon, [=] { return choisie() && !brouillon(); }},
      {CmdChangerDate, [this] { ChangeDate(); }, choisie},
      {CmdRenumeroter, [this] { Renumerote(); }},
      {CmdMois, [this] { AutreMois(); }},
      {CmdCriteres, [this] { Criteres(); }},
      {CmdComptable, [this] { BasculeComptable(); }, [this] { return !EstOD(); },
       [this] { return Comptable(); }},
      {CmdCopier, [this] { m_liste->Copie(); }, choisie},
      {CmdCopierMenu, [this] { m_liste->Copie(); }, choisie},
      {CmdCopierTout, [this] { m_liste->CopieTout(); }, [this] { return GetEcrCount() > 0; }},
      {CmdFiltrer, [this] { m_liste->OuvreFiltre(); }},
  });
  for (const auto& [commande, mode] :
       {std::pair{CmdBrouillard, ListeBrouillard}, {CmdValidees, ListeValidees}, {CmdToutes, ListeToutes}})
    Declare({{commande,
              [this, mode = mode] { ChangeMode(mode); },
              {},
              [this, mode = mode] { return m_mode == mode; }}});
}

bool CEcritureView::PeutRapprocher() const {
  if (GetEcrId(GetEcrSel()) == 0) return false;
  if (!EstOD() && m_combo->Choisi())
    return m_combo->Choisi()->banque || m_contexte.App.Reglages.IsRapprochementEspeces();
  return Etat().rapprochable;
}

const CEcritureView::EtatSelection& CEcritureView::Etat() const {
  if (m_etat) return *m_etat;
  m_etat.emplace();
  CFenlorApp& app = m_contexte.App;
  bool premiere = true;
  int lues = 0;
  for (const u32 mouvement : Choisis()) {
    if (++lues > luesAuPlus) {
      m_etat->brouillon = m_etat->brouillon || m_mode != ListeValidees;
      m_etat->rapprochable = true;
      break;
    }
    EntreeJournal entree;
    if (!LitEntreeJournal(app, mouvement, false, {}, entree)) continue;
    m_etat->brouillon = m_etat->brouillon || !entree.validee;
    if (premiere || !m_etat->rapprochable) {
      const LignesRapprochables lignes = CompteRapprochables(app, mouvement);
      m_etat->rapprochable = m_etat->rapprochable || lignes.nombre > 0;
      if (premiere) {
        m_etat->pointee = entree.pointee;
        m_etat->rapprochee = lignes.nombre > 0 && lignes.rapprochees == lignes.nombre;
      }
    }
    premiere = false;
    if (m_etat->brouillon && m_etat->rapprochable) break;
  }
  return *m_etat;
}

bool CEcritureView::RefuseCloture() { return !App().Dit(App().ControleEcriture()); }

// -- The forms

Date CEcritureView::DateProposee() {
  EntreeJournal derniere;
  if (GetEcrCount() > 0 && LitEntreeJournal(App(), GetEcrId(GetEcrCount() - 1), false, {}, derniere))
    return IsDateOk(derniere.date)
               ? derniere.date
               : FaitDate(GetNbJours(derniere.date), Mois(derniere.date), Annee(derniere.date));
  const Date aujourdhui = App().Magasin.Today(), mois = m_mois->PremierJour();
  return Mois(aujourdhui) == Mois(mois) && Annee(aujourdhui) == Annee(mois) ? aujourdhui : mois;
}

void CEcritureView::Ajoute() {
  if (RefuseCloture()) return;
  if (EstOD()) {
    SelectEcrItem(GetEcrCount() - 1);
    return OuvreForme(GetEcrId(GetEcrCount() - 1));
  }
  if (!m_combo->CompteParDefaut().empty()) OuvreForme(0);
}

void CEcritureView::Modifie() {
  if (Disponible(CmdModifier)) OuvreForme(GetEcrId(GetEcrSel()));
}

void CEcritureView::MontreMois(Date jour) {
  const std::vector<CMonth::Cellule>& mois = m_mois->Cellules();
  for (std::size_t i = 0; i < mois.size(); ++i)
    if (mois[i].premier <= jour && jour <= mois[i].dernier) return m_mois->Choisit(static_cast<int>(i));
}

void CEcritureView::Reprend(const SaisieSuspendue& reprise) {
  MontreMois(reprise.ecriture.date);
  OuvreForme(reprise.ecriture.mouvement, &reprise);
}

void CEcritureView::OuvreForme(u32 mouvement, const SaisieSuspendue* reprise) {
  OuvertureEcriture ouverture;
  ouverture.journal = m_document.Journal;
  ouverture.date = DateProposee();
  ouverture.tresorerie = m_combo->CompteParDefaut();
  ouverture.mouvement = mouvement;
  ouverture.proprietaire = this;
  ouverture.reprise = reprise;
  bool change = false, nouvelle = false;
  u32 aChoisir = 0;
  const auto execute = [&](auto& forme) {
    forme.Execute();
    change = forme.Change();
    aChoisir = forme.Montree() ? forme.Montree() : forme.Derniere();
  };
  EntreeJournal entree;
  const bool libre =
      mouvement != 0 && LitEntreeJournal(App(), mouvement, true, {}, entree) && entree.genre == GenreOD;
  if (EstOD() || libre || (reprise && reprise->operationDiverse)) {
    CDialogMouvement forme(Contexte(), ouverture, this);
    execute(forme);
    nouvelle = forme.NouvelleVoulue();
  } else {
    CDialogEcriture forme(Contexte(), ouverture, this);
    execute(forme);
  }
  if (change) SelectEcrItem(FindEcrItem(aChoisir));
  if (nouvelle) return OuvreForme(0);
  m_liste->setFocus();
}

void CEcritureView::AutreMois() {
  CDialogMonth forme(Contexte(), m_mois->Courant(), this);
  if (forme.Execute()) {
    m_mois->Montre(forme.Choisi());
    RefreshJournal();
  }
  m_liste->setFocus();
}

void CEcritureView::Criteres() {
  CDialogCritere forme(Contexte(), m_document.Journal, m_criteres, this);
  if (forme.Execute()) {
    m_criteres = forme.Criteres();
    RefreshJournal();
  }
  m_liste->setFocus();
}

// -- On the selected rows

void CEcritureView::Supprime() {
  if (RefuseCloture()) return;
  const std::vector<u32> choisis = Choisis();
  if (choisis.empty()) return;
  App().Dit(SupprimeEcritures(App(), choisis));
  Contexte().Cadre.Actualise();
  m_liste->setFocus();
}

void CEcritureView::Pointe() {
  const std::vector<u32> choisis = Choisis();
  if (choisis.empty()) return;
  Refus refus;
  {
    const CurseurAttente attente;
    refus = PointeEcritures(App(), choisis);
  }
  App().Dit(refus);
  RetireNonListees();
}

void CEcritureView::Rapproche() {
  const std::vector<u32> choisis = Choisis();
  if (choisis.empty()) return;
  App().Dit(RapprocheEcritures(App(), choisis));
  RetireNonListees();
}

void CEcritureView::Valide() {
  const std::vector<u32> choisis = Choisis();
  if (choisis.empty()) return;
  App().Dit(ValideEcritures(App(), choisis));
  RetireNonListees();
}

void CEcritureView::ChangeDate() {
  if (RefuseCloture()) return;
  const std::vector<u32> choisis = Choisis();
  unsigned mois = 0;
  if (choisis.empty() || !App().Dit(ControleDeplacement(App(), choisis.front(), mois))) return;
  ZNDialogChangeMois forme(Contexte(), mois, this);
  if (!forme.Execute()) return m_liste->setFocus();
  App().Dit(DeplaceEcritures(App(), choisis, forme.Mois()));
  RetireNonListees();
}

void CEcritureView::Renumerote() {
  u32 nombre = 0;
  App().Dit(RenumeroteEcritures(App(), Demande(), nombre));
  Contexte().Cadre.Actualise();
  m_liste->setFocus();
}

/// Takes the selected rows whose entry is of this list no more out of it; the others stay selected.
void CEcritureView::RetireNonListees() {
  const std::vector<int> lignes = m_liste->LignesChoisies();
  const DemandeListe demande = Demande();
  std::vector<u32> partis;
  {
    const QScopedValueRollback suspendue(m_suspendue, true);
    m_liste->Redessine();
    int debut = -1, nombre = 0;  // rows that go, one behind the other
    const auto retire = [&] {
      m_liste->Modele().Supprime(debut, nombre);
      nombre = 0;
    };
    for (auto ligne = lignes.rbegin(); ligne != lignes.rend(); ++ligne) {
      const u32 mouvement = GetEcrId(*ligne);
      bool listee = false;
      App().Dit(EstListee(App(), demande, mouvement, listee));
      if (listee) continue;
      partis.push_back(mouvement);
      if (nombre > 0 && *ligne != debut - 1) retire();
      debut = *ligne;
      ++nombre;
    }
    retire();
    Contexte().Cadre.Actualise();
  }
  if (GetEcrCount() == 0)
    m_totaux = {};
  else if (!partis.empty())
    Additionne(m_totaux, -1, partis);
  if (m_liste->NbChoisies() == 0 && !lignes.empty())
    SelectEcrItem(std::min(lignes.front(), GetEcrCount() - 1));
  MontreSelection();
  m_liste->setFocus();
}

}  // namespace fenlor

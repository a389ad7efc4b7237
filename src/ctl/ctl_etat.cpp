#include <cassert>
#include <memory>
#include <utility>

#include "ctl/commandes.h"
#include "ctl/demandecriteres.h"
#include "ctl/demandejournal.h"
#include "ctl/optionscommunes.h"
#include "ctl/sortieetat.h"
#include "ctl/textes.h"
#include "pages/textes.h"
#include "reports/catalogue.h"
#include "reports/etatjournal.h"
#include "store/ouverture.h"

namespace fenlor {

namespace {

constexpr const char* EtatJournal = "journal";
constexpr const char* StylesPapier[] = {"classique", "soignee"};

struct OptionsEtat {
  std::string nom;
  OptionsCriteres criteres;
  std::optional<std::string> journal, mode;  ///< of the journal report
  bool comptable = false;
  bool marquage = false, texte = false;
  std::optional<std::string> pdf, style;

  bool Journal() const { return nom == EtatJournal; }
};

std::string NomsEtats() {
  std::string noms;
  for (const DefinitionEtat& etat : CatalogueEtats())
    noms += (noms.empty() ? "" : ", ") + std::string(etat.nom);
  return noms;
}

/// The names on lines that a terminal shows whole.
std::string AideEtats() {
  constexpr std::size_t largeur = 90;
  std::string texte = "États :", ligne;
  for (const DefinitionEtat& etat : CatalogueEtats()) {
    if (ligne.size() + std::string(etat.nom).size() > largeur) texte += std::exchange(ligne, {}) + "\n ";
    ligne += ' ' + std::string(etat.nom);
  }
  return texte + ligne;
}

FormeOption FormeEtat() {
  return {"NOM", [](const std::string& nom) {
            return TrouveEtat(std::string_view(nom)) ? std::string()
                                                     : "état inconnu : " + nom + " (" + NomsEtats() + ")";
          }};
}

std::string NePasAvec(const std::string& option, const std::string& etat) {
  return option + " ne va pas avec l'état " + etat;
}

std::string Faute(const OptionsEtat& o) {
  if (o.marquage + o.texte + o.pdf.has_value() != 1)
    return "il faut une sortie, et une seule : --marquage, --texte ou --pdf";
  if (!o.Journal()) {
    for (const auto& [nom, donnee] :
         {std::pair{"--journal", o.journal.has_value()}, std::pair{"--mode", o.mode.has_value()},
          std::pair{"--comptable", o.comptable}})
      if (donnee) return NePasAvec(nom, o.nom);
    return FauteOptionsCriteres(o.criteres);
  }
  if (const std::string trop = OptionEnTrop(o.criteres, GroupeMois | GroupeCompte); !trop.empty())
    return NePasAvec(trop, o.nom);
  if (!o.journal) return "il manque --journal";
  return o.criteres.mois ? std::string() : "il manque --mois";
}

/// What the journal report is told before it is built. False: told.
bool PoseDemande(Contexte& contexte, const OptionsEtat& options, CEtatJournalDoc& etat) {
  assert(options.Journal() && options.journal && options.criteres.mois);
  OptionsJournal journal;
  journal.journal = *options.journal;
  journal.mois = *options.criteres.mois;
  if (options.mode) journal.mode = *options.mode;
  if (options.criteres.compte != "tous") journal.compte = options.criteres.compte;
  DemandeListe demande;
  const Ouverture plan(contexte.Magasin, FichierComptes);
  if (!plan) contexte.RefuseMagasin();
  if (!plan || !LitDemandeJournal(contexte, journal, demande)) return false;
  etat.SetCriteres(demande, options.comptable);
  return true;
}

bool Donne(Contexte& contexte, const OptionsEtat& options, CEtatComptable& etat) {
  assert(options.marquage + options.texte + options.pdf.has_value() == 1);
  if (options.marquage) return EcritMarquage(contexte, etat);
  if (options.texte) return EcritRuns(contexte, etat);
  if (*options.pdf == "-")
    return DonneParFichier(
        contexte, [&](int descripteur) { return contexte.EcritPdf(contexte.App, etat, {}, descripteur); });
  if (contexte.EcritPdf(contexte.App, etat, *options.pdf, -1)) return true;
  contexte.RefuseMagasin();
  return false;
}

int Execute(Contexte& contexte, const OptionsEtat& options) {
  if (options.pdf && !contexte.EcritPdf) return contexte.Refuse(ErrSansPdf, {});
  if (!contexte.OuvreExercice()) return StatutRefuse;
  DemandeurOptions demandeur(contexte, options.criteres);
  if (!options.Journal() && !demandeur.Prepare()) return StatutRefuse;
  assert(TrouveEtat(std::string_view(options.nom)));
  const DefinitionEtat& definition = *TrouveEtat(std::string_view(options.nom));
  const std::unique_ptr<CEtatComptable> etat = definition.fabrique(contexte.App, demandeur);
  if (options.style)
    etat->PoseStyle(*options.style == StylesPapier[0] ? StylePapier::Classique : StylePapier::Soignee);
  if (options.Journal() && !PoseDemande(contexte, options, dynamic_cast<CEtatJournalDoc&>(*etat)))
    return StatutRefuse;

  contexte.Oublie();
  const Refus refus = etat->OnNewDocument();
  contexte.Avertit(contexte.Dialogue.Information());
  if (refus && refus.numero != ErrEtatAbsent) return contexte.Refuse(refus);
  if (const std::string faute = demandeur.Faute(); !options.Journal() && !faute.empty())
    return contexte.RefuseUsage(NePasAvec(faute, options.nom));
  if (!refus) return Donne(contexte, options, *etat) ? StatutFait : StatutRefuse;
  if (demandeur.Refuse()) return StatutRefuse;
  return contexte.Refuse(ErrEtatAbsent, {options.nom});
}

}  // namespace

void DeclareEtats(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsEtat>();
  Commande etat = ligne.Ajoute("etat", "Établit un état : son texte, ses pages ou un fichier PDF",
                               [o](Contexte& c) { return Execute(c, *o); });
  etat.Controle([o](const OptionsGlobales&) { return Faute(*o); });
  etat.Option("nom", o->nom, FormeEtat(), "État (voir plus bas)").Obligatoire().Pied(AideEtats());
  DeclareOptionsCriteres(etat, o->criteres);
  etat.Option("--journal", o->journal, FormeJournal(), "Journal, pour l'état journal")
      .Option("--mode", o->mode, FormeMode(), "Écritures de l'état journal (toutes)")
      .Drapeau("--comptable", o->comptable, "État journal : chaque ligne des écritures")
      .Drapeau("--marquage", o->marquage, "Écrit le texte avec ses codes et la fin de ses blocs")
      .Drapeau("--texte", o->texte,
               "Écrit ce qui s'imprime : page, gauche, droite, ligne, alignement, style, texte")
      .Option("--style", o->style, FormeMots({StylesPapier[0], StylesPapier[1]}),
              "Présentation des pages (par défaut : celle des préférences)")
      .Option("--pdf", o->pdf, {"FICHIER"},
              "Écrit les pages dans ce fichier PDF (- : sur la sortie standard)");
}

}  // namespace fenlor

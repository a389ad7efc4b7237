#include <cassert>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

#include "core/btfiles.h"
#include "core/erreursexercice.h"
#include "ctl/commandes.h"
#include "ctl/enregistrementjson.h"
#include "ctl/optionscommunes.h"
#include "ctl/textes.h"
#include "store/definitions.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct OptionsExporter {
  std::string nom;         ///< store name: "JOURNAL"
  std::optional<u32> cle;  ///< from 0; none: file order
};
struct OptionsImporter {
  std::string nom;
  std::string source = "-";
};

using Suite = std::function<bool(const void* rec)>;

bool ParcoursCle(Contexte& contexte, const DefinitionFichier& definition, u32 cle, const Suite& suite) {
  assert(cle < definition.nbCles && suite);
  QVAPI& magasin = contexte.Magasin;
  std::vector<u8> rec(definition.taille);
  const u16 numCle = static_cast<u16>(definition.premiereCle + cle);
  std::string texte;
  for (Position p = magasin.QVFirstKey(numCle, texte); p != 0; p = magasin.QVNextKey(numCle, texte))
    if (!magasin.QVReadRec(definition.numero, p, rec.data()) || !suite(rec.data())) return false;
  return contexte.FinDeCle();
}

bool ParcoursAuto(QVAPI& magasin, u32 poignee, const Suite& suite) {
  const u32 nombre = magasin.GetEcrituresAutoRec(poignee);
  for (u32 i = 1; i <= nombre; ++i) {
    EcrituresAuto rec{};
    if (!magasin.ReadEcrituresAuto(i, rec, poignee) || !suite(&rec)) return false;
  }
  return true;
}

/// Adds records, one at a time, by the way that is their file's.
class Ajouteur {
 public:
  Ajouteur(CFenlorApp& app, const DefinitionFichier& definition)
      : m_app(app), m_definition(definition), m_ouverture(app.Magasin, definition.numero) {
    if (definition.nbCles)
      m_fichier =
          std::make_unique<CBTFiles>(app, std::string(), static_cast<NumeroFichier>(definition.numero));
  }

  bool Ouvre() { return m_ouverture && (!m_fichier || m_fichier->OpenFile()); }

  bool Ajoute(void* rec) {
    QVAPI& magasin = m_app.Magasin;
    switch (m_definition.numero) {
      case FichierRecettes:
        return magasin.WriteRecettes(*static_cast<RecetteLiee*>(rec)) != 0;
      case FichierDepenses:
        return magasin.WriteDepenses(*static_cast<DepenseLiee*>(rec)) != 0;
      case FichierAuto: {
        auto& automatique = *static_cast<EcrituresAuto*>(rec);
        if (automatique.Numero > magasin.GetEcrituresAutoRec(m_ouverture.Poignee())) automatique.Numero = 0;
        return magasin.WriteEcrituresAuto(automatique, m_ouverture.Poignee());
      }
      default:
        assert(m_fichier);
        m_fichier->ClearRec();
        std::memcpy(m_fichier->GetRec(), rec, m_definition.taille);
        return m_fichier->Add();
    }
  }

 private:
  CFenlorApp& m_app;
  const DefinitionFichier& m_definition;
  Ouverture m_ouverture;
  std::unique_ptr<CBTFiles> m_fichier;
};

Refus Manquant(const char* champ) { return Refus(ErrChampManquant, "", {champ}); }

Refus ControleNumero(const char* champ, u32 numero) {
  if (numero == 0) return Manquant(champ);
  if (numero != 0xFFFFFFFF) return {};
  return RefusChamp(champ, "ce numéro est réservé."_w);
}

/// What a record cannot do without: a rebuild of its file would drop it.
Refus ControleCle(u16 numFichier, const void* rec) {
  assert(rec && DefinitionFichierNumero(numFichier));
  Refus refus;
  switch (numFichier) {
    case FichierComptes: {
      const auto& plan = *static_cast<const Plan*>(rec);
      if (plan.Compte[0] == 0) return Manquant("Compte");
      if (plan.Type < Tresorerie || plan.Type > Autre)
        return RefusChamp("Type", raison::EntierAttendu(Tresorerie, Autre));
      return {};
    }
    case FichierJournal: {
      const auto& ligne = *static_cast<const Line*>(rec);
      refus = ControleNumero("Mouvement", ligne.Mouvement);
      if (!refus && ligne.Compte[0] == 0) refus = Manquant("Compte");
      return refus;
    }
    case FichierRubriques:
      return static_cast<const Rubrique*>(rec)->Rubrique[0] ? refus : Manquant("Rubrique");
    case FichierBanques:
      return static_cast<const Banque*>(rec)->Compte[0] ? refus : Manquant("Compte");
    case FichierReleves:
      return static_cast<const OperationImportee*>(rec)->Compte[0] ? refus : Manquant("Compte");
    case FichierImmo:
      return ControleNumero("Numero", static_cast<const Immobilisation*>(rec)->Numero);
    case FichierAmo: {
      const auto& amo = *static_cast<const Amortissement*>(rec);
      refus = ControleNumero("Numero", amo.Numero);
      return refus ? refus : ControleNumero("Annee", amo.Annee);
    }
    default:
      return {};
  }
}

int Exporte(Contexte& contexte, const OptionsExporter& options) {
  assert(DefinitionNom(options.nom));
  const DefinitionFichier& definition = *DefinitionNom(options.nom);
  if (!definition.duCabinet && !contexte.OuvreExercice()) return StatutRefuse;
  const Ouverture ouverture(contexte.Magasin, definition.numero);
  if (!ouverture) return contexte.RefuseMagasin();

  const auto champs = Champs(definition.numero);
  std::string ligne;
  bool ecrit = true;
  const Suite suite = [&](const void* rec) {
    ligne.clear();
    AjouteEnregistrement(ligne, champs, rec);
    return ecrit = contexte.Ecrit(ligne);
  };
  const bool lu = options.cle ? ParcoursCle(contexte, definition, *options.cle, suite)
                  : definition.numero == FichierAuto
                      ? ParcoursAuto(contexte.Magasin, ouverture.Poignee(), suite)
                      : contexte.Magasin.QVParcours(definition.numero,
                                                    [&](Position, const void* rec) { return suite(rec); });
  if (!ecrit) return StatutRefuse;
  return lu ? StatutFait : contexte.RefuseMagasin();
}

int Importe(Contexte& contexte, const OptionsImporter& options) {
  assert(DefinitionNom(options.nom));
  const DefinitionFichier& definition = *DefinitionNom(options.nom);
  LecteurLignes lignes(contexte.Entree, options.source);
  if (!lignes.Ouvert()) return contexte.RefuseOuverture(options.source);
  std::string exercice;
  if (!definition.duCabinet) {
    if (!contexte.OuvreExercice()) return StatutRefuse;
    exercice = contexte.App.NomExercice;
  } else if (contexte.Magasin.GetExercicesRec() != 0 && !contexte.TrouveExercice(exercice)) {
    return StatutRefuse;
  }
  // The register is frozen with the exercice that is at hand.
  if (const Refus r =
          exercice.empty() ? contexte.App.ControleLecture() : contexte.App.ControleEcriture(exercice))
    return contexte.Refuse(r);
  Ajouteur ajouteur(contexte.App, definition);
  if (!ajouteur.Ouvre()) return contexte.RefuseMagasin();

  const auto champs = Champs(definition.numero);
  std::vector<u8> rec(definition.taille);
  u32 importes = 0, refuses = 0;
  QVAPI::Unite unite(contexte.Magasin);
  Json objet;
  Refus refus;
  while (lignes.Suivante(objet, refus)) {
    if (!refus) refus = LitEnregistrement(objet, champs, rec.data());
    if (!refus) refus = ControleCle(definition.numero, rec.data());
    if (refus) {
      ++refuses;
      contexte.Refuse(refus, lignes.Numero());
      continue;
    }
    if (ajouteur.Ajoute(rec.data())) {
      ++importes;
      continue;
    }
    // Another record has one of its keys behind the first: its own fault.
    if (contexte.Magasin.QVFileErrorCode() != ErrCleDouble) return contexte.RefuseMagasin();
    ++refuses;
    contexte.Refuse(contexte.DernierEchec(), lignes.Numero());
  }
  if (lignes.Erreur()) return contexte.RefuseLecture(lignes.Erreur(), options.source);
  if (definition.numero == FichierJournal && importes > 0) {
    Statistiques statistiques{};
    if (!contexte.Magasin.QVCalculCompta(contexte.App.NomExercice, statistiques))
      return contexte.RefuseMagasin();
  }
  if (!unite.Valide()) return contexte.RefuseMagasin();

  const bool ecrit =
      contexte.Globales.json
          ? contexte.Ecrit(LigneJson()
                               .Texte("fichier", definition.nom)
                               .Entier("importes", importes)
                               .Entier("refuses", refuses)
                               .Fin())
          : contexte.Ecrit(std::string(definition.nom) + " : " + std::to_string(importes) +
                           " enregistrement(s) importé(s), " + std::to_string(refuses) + " refusé(s).\n");
  return ecrit && refuses == 0 ? StatutFait : StatutRefuse;
}

std::string FauteCle(const OptionsExporter& options) {
  if (!options.cle || *options.cle < DefinitionNom(options.nom)->nbCles) return {};
  return options.nom + " n'a pas de clé " + std::to_string(*options.cle);
}

std::string NomsFichiers() {
  std::string noms;
  for (const DefinitionFichier& d : Definitions()) noms += (noms.empty() ? "" : ", ") + std::string(d.nom);
  return noms;
}

FormeOption FormeFichier() {
  return {"FICHIER", [](const std::string& nom) {
            return DefinitionNom(nom) ? std::string()
                                      : "fichier inconnu : " + nom + " (" + NomsFichiers() + ")";
          }};
}

}  // namespace

void DeclareEchanges(LigneCommande& ligne) {
  const auto sortie = std::make_shared<OptionsExporter>();
  ligne
      .Ajoute("exporter", "Écrit les enregistrements d'un fichier, un objet JSON par ligne",
              [sortie](Contexte& c) { return Exporte(c, *sortie); })
      .Controle([sortie](const OptionsGlobales&) { return FauteCle(*sortie); })
      .Option("fichier", sortie->nom, FormeFichier(), NomsFichiers())
      .Obligatoire()
      .Option("--cle", sortie->cle, FormeChiffres("N", 1, std::string::npos, "numéro de clé incorrect"),
              "Dans l'ordre de cette clé, à partir de 0 (sinon celui du fichier)");
  const auto entree = std::make_shared<OptionsImporter>();
  ligne
      .Ajoute("importer", "Reprend ce qu'exporter a écrit",
              [entree](Contexte& c) { return Importe(c, *entree); })
      .Option("fichier", entree->nom, FormeFichier(), NomsFichiers())
      .Obligatoire()
      .Option("source", entree->source, {"[SOURCE|-]"}, "Source (- : l'entrée standard)");
}

}  // namespace fenlor

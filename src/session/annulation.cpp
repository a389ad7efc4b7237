#include "session/annulation.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstring>
#include <map>

#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "session/textes.h"
#include "store/ecritures_lignes.h"
#include "store/membre.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

const Line& EnLigne(const void* rec) { return *static_cast<const Line*>(rec); }

/// Two lines that differ by marks alone.
bool MemesAuxMarquesPres(const Line& a, const Line& b) {
  Line autre = a;
  CopieMarques(b, autre);
  autre.Reserve0 = b.Reserve0;
  return std::memcmp(&autre, &b, sizeof autre) == 0;
}

/// Two accounts that differ by their totals alone: an effect of entries.
bool MemesAuxCumulsPres(const void* a, const void* b) {
  constexpr std::size_t debut = offsetof(Plan, PersoFranc), fin = offsetof(Plan, Reserve250);
  const auto* x = static_cast<const u8*>(a);
  const auto* y = static_cast<const u8*>(b);
  return std::memcmp(x, y, debut) == 0 && std::memcmp(x + fin, y + fin, sizeof(Plan) - fin) == 0;
}

/// What happened to an entry, or to another record.
enum Acte {
  Saisie,
  Ajout,
  Retrait,
  Modification,
  Rapprochement,
  Derapprochement,
  Pointage,
  Depointage,
  Remise,
  Renumerotation,
  Date_,
  NbActes
};

/// Of one line that stands on both sides.
Acte ActeDe(const Line& avant, const Line& apres) {
  if (MemesAuxMarquesPres(avant, apres)) {
    if ((avant.Rapprochee != 0) != (apres.Rapprochee != 0))
      return apres.Rapprochee != 0 ? Rapprochement : Derapprochement;
    if ((avant.Pointee != 0) != (apres.Pointee != 0)) return apres.Pointee != 0 ? Pointage : Depointage;
    if ((avant.Remise != 0) != (apres.Remise != 0)) return Remise;
    return Modification;
  }
  Line autre = avant;
  autre.Ligne = apres.Ligne;
  if (std::memcmp(&autre, &apres, sizeof autre) == 0) return Renumerotation;
  autre.Date = apres.Date;
  autre.DateLigne = apres.DateLigne;
  return std::memcmp(&autre, &apres, sizeof autre) == 0 ? Date_ : Modification;
}

/// A record that is no line of the journal; the first one of which a unit changes a record gives its name.
struct Sorte {
  u16 fichier;
  std::size_t libelle, taille;  ///< of the field that names it; 0: it has none
};
#define FENLOR_LIBELLE(Rec, champ) offsetof(Rec, champ), sizeof(Rec::champ)
constexpr Sorte Sortes[] = {
    {FichierImmo, FENLOR_LIBELLE(Immobilisation, Designation)},
    {FichierBanques, FENLOR_LIBELLE(Banque, Libelle)},
    {FichierAuto, FENLOR_LIBELLE(EcrituresAuto, Libelle)},
    {FichierRubriques, FENLOR_LIBELLE(Rubrique, Designation)},
    {FichierComptes, FENLOR_LIBELLE(Plan, Designation)},
    {FichierAmo, 0, 0},
};
#undef FENLOR_LIBELLE
static_assert(std::size(MotActe) == NbActes && std::size(MotSorte) == std::size(Sortes) + 1);
constexpr unsigned SorteEcriture = 0;  ///< place in the words; those of `Sortes` follow

std::string Phrase(Acte acte, std::size_t nombre, const std::string& libelle, unsigned sorte,
                   const std::string& montant = {}) {
  const std::string mot = Texte(MotActe[acte]);
  if (nombre > 1)
    return TexteFormat(FormatActePlusieurs, {mot, std::to_string(nombre), Texte(MotSorte[sorte].plusieurs)});
  if (EstVide(libelle)) return TexteFormat(FormatActeUn, {mot, Texte(MotSorte[sorte].une)});
  const std::string court = CompacteTexte(libelle);
  if (montant.empty()) return TexteFormat(FormatActeNomme, {mot, court});
  return TexteFormat(FormatActeMontant, {mot, court, montant});
}

/// The entries of a unit.
class Ecritures {
 public:
  void Ajoute(const EcartUnite& ecart) {
    const Line& ligne = EnLigne(ecart.apres ? ecart.apres : ecart.avant);
    Une& une = m_ecritures[+ligne.Mouvement];
    if (une.libelle.empty()) une.libelle = LitTexte(ligne.Libelle);
    if (ecart.avant && ecart.apres) {
      const Acte acte = ActeDe(EnLigne(ecart.avant), EnLigne(ecart.apres));
      // Of the lines of an entry the one that says most.
      if (!une.restee || acte == Modification || une.acte == acte) une.acte = acte;
      une.restee = true;
      return;
    }
    (ecart.apres ? une.ajoutee : une.otee) = true;
    if (ligne.Sens != 0) return;
    une.franc += ligne.MontantFranc;
    une.euro += ligne.MontantEuro;
  }

  bool Vides() const { return m_ecritures.empty(); }

  std::string Nom(CFenlorApp& app) const {
    std::array<std::size_t, NbActes> nombres{};
    for (const auto& [mouvement, une] : m_ecritures) ++nombres[ActeDeUne(une)];
    const auto plus = std::max_element(nombres.begin(), nombres.end());
    const auto acte = static_cast<Acte>(plus - nombres.begin());
    const Une& une = m_ecritures.begin()->second;
    const bool entiere = acte == Saisie || acte == Retrait;
    const std::string montant = !entiere                ? std::string()
                                : app.Reglages.IsEuro() ? FormatEuro(une.euro)
                                                        : FormatFranc(une.franc);
    return Phrase(acte, m_ecritures.size(), une.libelle, SorteEcriture, montant);
  }

 private:
  struct Une {
    std::string libelle;
    bool ajoutee = false, otee = false, restee = false;
    Acte acte = Modification;
    f64 franc = 0, euro = 0;
  };
  static Acte ActeDeUne(const Une& une) {
    if (une.ajoutee && !une.otee && !une.restee) return Saisie;
    if (une.otee && !une.ajoutee && !une.restee) return Retrait;
    return une.ajoutee || une.otee ? Modification : une.acte;
  }
  std::map<u32, Une> m_ecritures;
};

}  // namespace

std::string NomUnite(CFenlorApp& app, std::span<const EcartUnite> ecarts) {
  Ecritures ecritures;
  for (const EcartUnite& ecart : ecarts) {
    assert(ecart.avant || ecart.apres);
    if (ecart.fichier == FichierJournal) ecritures.Ajoute(ecart);
  }
  if (!ecritures.Vides()) return ecritures.Nom(app);
  for (unsigned rang = 0; rang < std::size(Sortes); ++rang) {
    const Sorte& sorte = Sortes[rang];
    std::size_t ajouts = 0, retraits = 0, nombre = 0;
    std::string libelle;
    for (const EcartUnite& ecart : ecarts) {
      if (ecart.fichier != sorte.fichier) continue;
      if (sorte.fichier == FichierComptes && ecart.avant && ecart.apres &&
          MemesAuxCumulsPres(ecart.avant, ecart.apres))
        continue;
      ++nombre;
      ajouts += ecart.avant == nullptr;
      retraits += ecart.apres == nullptr;
      const char* texte = static_cast<const char*>(ecart.apres ? ecart.apres : ecart.avant) + sorte.libelle;
      if (libelle.empty()) libelle.assign(texte, strnlen(texte, sorte.taille));
    }
    // The real amount of a year is what changes, though its record comes or goes.
    if (sorte.fichier == FichierAmo) ajouts = retraits = nombre + 1;
    // One that goes and one that comes is one that was changed.
    if (nombre == 2 && ajouts == 1 && retraits == 1) nombre = 1, ajouts = 0, retraits = 0;
    const Acte acte = nombre == ajouts ? Ajout : nombre == retraits ? Retrait : Modification;
    if (nombre > 0) return Phrase(acte, nombre, libelle, rang + 1);
  }
  return Texte(ActeReglages);
}

std::string MotSuppression() { return Texte(MotActe[Retrait]); }

void SuitReprises(CFenlorApp& app) {
  app.Magasin.QVRetientUnites(true,
                              [&app](std::span<const EcartUnite> ecarts) { return NomUnite(app, ecarts); });
}

std::string NomReprise(CFenlorApp& app, Sens sens) {
  return app.Magasin.QVNomReprise(sens == Sens::Retablir);
}

bool EstGardee(CFenlorApp& app, Sens sens) {
  return !NomReprise(app, sens).empty() && app.Magasin.QVPerteReprise(sens == Sens::Retablir) == 0;
}

Refus Reprend(CFenlorApp& app, Sens sens) {
  const bool refaire = sens == Sens::Retablir;
  const std::string acte = Texte(refaire ? MotDeRetablir : MotDAnnuler);
  if (app.PathExercice.empty()) return Refus(ErrAucunExercice);
  if (const Refus r = app.ControleEcriture()) return r;
  const std::string nom = NomReprise(app, sens);
  if (nom.empty()) return Refus(ErrRienAReprendre, "", {Texte(refaire ? MotARetablir : MotAAnnuler)});
  if (const int perte = app.Magasin.QVPerteReprise(refaire))
    return Refus(ErrReprisePerdue, "", {acte, nom, app.Magasin.QVErreurTexte(perte)});
  std::string validee;
  const auto controle = [&](const EcartUnite& ecart) {
    if (ecart.fichier != FichierJournal) return true;
    const Line* avant = static_cast<const Line*>(ecart.avant);
    const Line* apres = static_cast<const Line*>(ecart.apres);
    if (!(avant && avant->Validee) && !(apres && apres->Validee)) return true;
    // Reconciling and depositing is no change of what was validated.
    if (avant && apres && MemesAuxMarquesPres(*avant, *apres)) return true;
    validee = LitTexte((avant ? avant : apres)->Libelle);
    return false;
  };
  if (app.Magasin.QVReprend(refaire, controle)) return {};
  const int code = app.Magasin.QVFileErrorCode();
  if (code == ErrAucune) return Refus(ErrRepriseValidee, "", {acte, nom, validee});
  if (code == ErrRetour) return Refus(ErrRepriseChangee, "", {acte, nom});
  return app.EchecMagasin();
}

}  // namespace fenlor

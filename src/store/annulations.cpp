// Taking units back: the door to what the engine keeps, and what a unit has outside of slots.

#include <cstdlib>
#include <optional>

#include "store/etat.h"
#include "store/fichiertextes.h"
#include "store/ouverture.h"
#include "store/remplacement.h"

namespace fenlor {

namespace {

// While slots and settings go back the settings hold, in a section of its own, what is still to be done to
// them and the number of the unit that does the slots: whoever opens the practice next knows whether it is
// durable.
const std::string SectionRetour = "Annulation";

struct Remise {
  std::string section, cle, present, voulu;  ///< empty: no such key
};
using Remises = std::vector<Remise>;
using Changements = std::vector<Profil::Changement>;

std::optional<std::string> Valeur(const std::string& texte) {
  return texte.empty() ? std::nullopt : std::optional(texte);
}

Remises RemisesDe(const UniteRetenue& unite) {
  Remises remises;
  for (const auto& r : unite.reglages) remises.push_back({r.section, r.cle, r.apres, r.avant});
  return remises;
}

bool Note(EtatQVAPI& etat, const Remises& remises) {
  Changements changements{{SectionRetour, {}, {}},
                          {SectionRetour, "Journal", std::to_string(etat.moteur->IdReprise())},
                          {SectionRetour, "Unite", std::to_string(etat.moteur->ProchaineUnite())}};
  for (std::size_t i = 0; i < remises.size(); ++i) {
    const std::string rang = std::to_string(i + 1);
    changements.push_back({SectionRetour, "Section" + rang, remises[i].section});
    changements.push_back({SectionRetour, "Cle" + rang, remises[i].cle});
    changements.push_back({SectionRetour, "Present" + rang, Valeur(remises[i].present)});
    changements.push_back({SectionRetour, "Voulu" + rang, Valeur(remises[i].voulu)});
  }
  return etat.reglages->Ecrit(changements);
}

/// In one replacement with the note's end. A setting that somebody changed since is his.
bool RemetReglages(Profil& reglages, const Remises& remises) {
  Changements changements;
  if (reglages.Existe(SectionRetour)) changements.push_back({SectionRetour, {}, {}});
  for (const Remise& r : remises)
    if (reglages.Lit(r.section, r.cle) == r.present)
      changements.push_back({r.section, r.cle, Valeur(r.voulu)});
  return changements.empty() || reglages.Ecrit(changements);
}

int EcritTexte(Systeme& systeme, const std::string& chemin, const std::string& contenu) {
  Empreinte neuve;
  const int code = RemplaceFichier(systeme, chemin, chemin + ".neuf", contenu, neuve);
  return code ? code : systeme.SynchroniseDossier(DossierDe(chemin));
}

/// The undo is none. While its note stands no unit is made durable: the next one would have the number that
/// the note bears, and pass for the undo.
void OteNote(EtatQVAPI& etat) {
  const auto ote = [&etat] {
    RemetReglages(*etat.reglages, {});
    return etat.reglages->Erreur();  // where they cannot be read the note may stand, too
  };
  if (ote() != 0) etat.moteur->Exige(ote);
}

/// The text as it stands is what the unit left.
int RemetTexte(Systeme& systeme, const UniteRetenue::TexteRetenu& texte) {
  std::string present;
  if (const int code = LitTextes(systeme, texte.chemin, present)) return code;
  if (present != texte.apres) return ErrRetour;
  const int code = EcritTexte(systeme, texte.chemin, texte.avant);
  if (code) EcritTexte(systeme, texte.chemin, texte.apres);
  return code;
}

}  // namespace

bool AcheveReprise(EtatQVAPI& etat) {
  Profil& reglages = *etat.reglages;
  if (!reglages.Existe(SectionRetour)) return true;
  Remises remises;
  const auto lit = [&](const char* cle, std::size_t rang) {
    return reglages.Lit(SectionRetour, cle + (rang ? std::to_string(rang) : std::string()));
  };
  const bool durable = lit("Journal", 0) == std::to_string(etat.moteur->IdReprise()) &&
                       std::strtoull(lit("Unite", 0).c_str(), nullptr, 10) < etat.moteur->ProchaineUnite();
  for (std::size_t rang = 1; durable && !lit("Section", rang).empty(); ++rang)
    remises.push_back({lit("Section", rang), lit("Cle", rang), lit("Present", rang), lit("Voulu", rang)});
  return RemetReglages(reglages, remises) || etat.Refuse(reglages.Erreur(), reglages.Chemin());
}

void QVAPI::QVRetientUnites(bool actives, NommeurUnites nommeur) {
  m_etat->moteur->RetientUnites(actives, std::move(nommeur));
}

void QVAPI::QVOublieUnites() { m_etat->moteur->OublieUnites(); }

void QVAPI::QVRetientTexte(NumeroFichier numero, const std::string& chemin, const std::string& avant,
                           const std::string& apres, const std::string& nom) {
  m_etat->moteur->RetientTexte({numero, chemin, avant, apres}, nom);
  m_etat->moteur->NoteChangement(numero);
}

std::string QVAPI::QVNomReprise(bool refaire) const { return m_etat->moteur->NomRetenue(refaire); }

int QVAPI::QVPerteReprise(bool refaire) const { return m_etat->moteur->PerteRetenue(refaire); }

u64 QVAPI::QVVersionReprises() const { return m_etat->moteur->VersionRetenues(); }

bool QVAPI::QVReprend(bool refaire, const std::function<bool(const EcartUnite&)>& controle) {
  Moteur& moteur = *m_etat->moteur;
  UniteRetenue unite;
  const Instant instant(*this);
  if (!moteur.LitRetenue(refaire, unite) || !AcheveReprise(*m_etat)) return false;
  if (unite.texte) {
    if (const int code = RemetTexte(*m_etat->systeme, *unite.texte)) return m_etat->Refuse(code);
    moteur.NoteChangement(unite.texte->numero);
    return moteur.Reprend(refaire, unite);
  }
  std::vector<Ouverture> ouvertures;
  for (const auto& fichier : unite.fichiers) {
    ouvertures.emplace_back(*this, fichier.numero, DossierDe(fichier.chemin));
    if (!ouvertures.back()) return false;
  }
  if (!moteur.PeutReprendre(unite, controle)) return false;
  Profil& reglages = *m_etat->reglages;
  const Remises remises = RemisesDe(unite);
  const bool note = !unite.ecarts.empty() && !remises.empty();
  if (note ? !Note(*m_etat, remises) : unite.ecarts.empty() && !RemetReglages(reglages, remises)) {
    const int code = reglages.Erreur();
    OteNote(*m_etat);  // where the folder cannot be synced it may bear the name all the same
    return m_etat->Refuse(code, reglages.Chemin());
  }
  if (!moteur.Reprend(refaire, unite)) {
    const int code = moteur.Erreur();
    if (note) OteNote(*m_etat);
    return m_etat->Refuse(code);
  }
  m_etat->OublieCompteurs();
  m_etat->derniereLigneLue = 0;
  if (note && !RemetReglages(reglages, remises))
    moteur.Avertit("Les réglages seront remis comme avant à la prochaine ouverture : " + reglages.Chemin());
  return true;
}

}  // namespace fenlor

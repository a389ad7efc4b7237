// Taking units back: the door to what the engine keeps, and what a unit has outside of slots.

#include <cassert>

#include "store/etat.h"
#include "store/fichiertextes.h"
#include "store/ouverture.h"
#include "store/remplacement.h"

namespace fenlor {

namespace {

int EcritTexte(Systeme& systeme, const std::string& chemin, const std::string& contenu) {
  Empreinte neuve;
  const int code = RemplaceFichier(systeme, chemin, chemin + ".neuf", contenu, neuve);
  return code ? code : systeme.SynchroniseDossier(DossierDe(chemin));
}

/// The texts as they stand are what the unit left.
int ControleTextes(Systeme& systeme, const UniteRetenue& unite) {
  for (const auto& texte : unite.textes) {
    std::string present;
    if (const int code = LitTextes(systeme, texte.chemin, present)) return code;
    if (present != texte.apres) return ErrRetour;
  }
  return 0;
}

/// A setting that somebody changed since is his.
bool RemetReglages(Profil& reglages, const UniteRetenue& unite) {
  std::vector<Profil::Changement> changements;
  for (auto r = unite.reglages.rbegin(); r != unite.reglages.rend(); ++r) {
    if (reglages.Lit(r->section, r->cle) != r->apres) continue;
    changements.push_back({r->section, r->cle, {}});
    if (!r->avant.empty()) changements.back().valeur = r->avant;
  }
  return changements.empty() || reglages.Ecrit(changements);
}

}  // namespace

void QVAPI::QVRetientUnites(bool actives, NommeurUnites nommeur) {
  m_etat->moteur->RetientUnites(actives, std::move(nommeur));
}

void QVAPI::QVOublieUnites() { m_etat->moteur->OublieUnites(); }

void QVAPI::QVRetientTexte(NumeroFichier numero, const std::string& chemin, const std::string& avant,
                           const std::string& apres, const std::string& nom) {
  m_etat->moteur->RetientTexte({numero, chemin, avant, apres}, nom);
  m_etat->moteur->NoteChangement(numero);
}

std::string QVAPI::QVNomReprise(bool refaire) const {
  const UniteRetenue* unite = m_etat->moteur->Retenue(refaire);
  return unite ? unite->nom : std::string();
}

u64 QVAPI::QVVersionReprises() const { return m_etat->moteur->VersionRetenues(); }

bool QVAPI::QVReprend(bool refaire, const std::function<bool(const EcartUnite&)>& controle) {
  Moteur& moteur = *m_etat->moteur;
  const UniteRetenue* retenue = moteur.Retenue(refaire);
  if (!retenue || moteur.Profondeur() > 0) return m_etat->Refuse(ErrRetour);
  const Instant instant(*this);
  std::vector<Ouverture> ouvertures;
  for (const auto& fichier : retenue->fichiers) {
    ouvertures.emplace_back(*this, fichier.numero, DossierDe(fichier.chemin));
    if (!ouvertures.back()) return false;
  }
  if (const int code = ControleTextes(*m_etat->systeme, *retenue)) return m_etat->Refuse(code);
  UniteRetenue cote;
  cote.reglages = retenue->reglages;
  cote.textes = retenue->textes;
  // Labels first: they can be put back when the slots are refused.
  int code = 0;
  std::size_t ecrits = 0;
  for (; !code && ecrits < cote.textes.size(); ++ecrits)
    code = EcritTexte(*m_etat->systeme, cote.textes[ecrits].chemin, cote.textes[ecrits].avant);
  if (!code && !moteur.Reprend(refaire, controle)) code = moteur.Erreur() ? moteur.Erreur() : -1;
  if (code) {
    while (ecrits-- > 0) EcritTexte(*m_etat->systeme, cote.textes[ecrits].chemin, cote.textes[ecrits].apres);
    return m_etat->Refuse(code < 0 ? static_cast<int>(ErrAucune) : code);
  }
  m_etat->OublieCompteurs();
  m_etat->derniereLigneLue = 0;
  for (const auto& texte : cote.textes) moteur.NoteChangement(texte.numero);
  if (!RemetReglages(*m_etat->reglages, cote))
    moteur.Avertit("Les réglages n'ont pas été remis comme avant : " + m_etat->reglages->Chemin());
  return true;
}

}  // namespace fenlor

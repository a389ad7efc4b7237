#include "store/annulation.h"

#include <cassert>
#include <cstring>
#include <utility>

#include "store/qvapi.h"
#include "store/somme.h"

namespace fenlor {

namespace {

constexpr std::size_t Versement = 1u << 20;  ///< bytes that are written at once

enum Partie : u8 { PartieFichier, PartieEcart, PartieReglage, PartieTexte };

/// Takes what `Retenues` put; its sum was right.
class Lecteur {
 public:
  explicit Lecteur(const std::vector<u8>& octets) : m_octets(octets) {}
  bool Fini() const { return m_place == m_octets.size(); }
  u32 Saute(std::size_t taille) {
    assert(taille <= m_octets.size() - m_place);
    return static_cast<u32>(std::exchange(m_place, m_place + taille));
  }
  template <class T>
  T Prend() {
    T valeur;
    std::memcpy(&valeur, m_octets.data() + Saute(sizeof valeur), sizeof valeur);
    return valeur;
  }
  std::string Texte() {
    const u32 taille = Prend<u32>();
    const u32 debut = Saute(taille);
    return {m_octets.begin() + debut, m_octets.begin() + m_place};
  }

 private:
  const std::vector<u8>& m_octets;
  u32 m_place = 0;
};

void Decompose(Lecteur lecteur, bool retournee, UniteRetenue& unite) {
  while (!lecteur.Fini()) {
    switch (lecteur.Prend<Partie>()) {
      case PartieFichier: {
        auto& f = unite.fichiers.emplace_back();
        f.numero = lecteur.Prend<u16>();
        f.id = lecteur.Prend<u64>();
        f.chemin = lecteur.Texte();
        break;
      }
      case PartieEcart: {
        auto& e = unite.ecarts.emplace_back(lecteur.Prend<UniteRetenue::Ecart>());
        assert(e.fichier < unite.fichiers.size());
        e.placeAvant = lecteur.Saute(e.avant ? e.longueur : 0);
        e.placeApres = lecteur.Saute(e.apres ? e.longueur : 0);
        if (!retournee) break;
        std::swap(e.avant, e.apres);
        std::swap(e.placeAvant, e.placeApres);
        break;
      }
      case PartieReglage: {
        auto& r = unite.reglages.emplace_back();
        for (std::string* texte : {&r.section, &r.cle, &r.avant, &r.apres}) *texte = lecteur.Texte();
        if (retournee) std::swap(r.avant, r.apres);
        break;
      }
      case PartieTexte: {
        auto& t = unite.texte.emplace(UniteRetenue::TexteRetenu{});
        t.numero = lecteur.Prend<NumeroFichier>();
        for (std::string* texte : {&t.chemin, &t.avant, &t.apres}) *texte = lecteur.Texte();
        if (retournee) std::swap(t.avant, t.apres);
        break;
      }
    }
  }
}

}  // namespace

void Retenues::Commence(u64 borne) {
  m_commencee = false;
  m_borne = borne;
  m_neuve = {};
  m_tampon.clear();
}

void Retenues::Pose(const void* octets, std::size_t taille) {
  m_commencee = true;
  if (m_neuve.perte || taille == 0) return;
  const auto* debut = static_cast<const u8*>(octets);
  m_tampon.insert(m_tampon.end(), debut, debut + taille);
  if (m_tampon.size() >= Versement) Verse(false);
}

void Retenues::Pose(const std::string& texte) {
  const u32 taille = static_cast<u32>(texte.size());
  Pose(&taille, sizeof taille);
  Pose(texte.data(), texte.size());
}

void Retenues::Ajoute(const UniteRetenue::FichierRetenu& fichier) {
  const Partie partie = PartieFichier;
  Pose(&partie, sizeof partie);
  Pose(&fichier.numero, sizeof fichier.numero);
  Pose(&fichier.id, sizeof fichier.id);
  Pose(fichier.chemin);
}

void Retenues::Ajoute(const UniteRetenue::Ecart& ecart, const u8* avant, const u8* apres) {
  assert(ecart.avant == (avant != nullptr) && ecart.apres == (apres != nullptr));
  const Partie partie = PartieEcart;
  Pose(&partie, sizeof partie);
  Pose(&ecart, sizeof ecart);
  if (avant) Pose(avant, ecart.longueur);
  if (apres) Pose(apres, ecart.longueur);
}

void Retenues::Ajoute(const UniteRetenue::ReglageRetenu& reglage) {
  const Partie partie = PartieReglage;
  Pose(&partie, sizeof partie);
  for (const std::string* texte : {&reglage.section, &reglage.cle, &reglage.avant, &reglage.apres})
    Pose(*texte);
}

void Retenues::Ajoute(const UniteRetenue::TexteRetenu& texte) {
  const Partie partie = PartieTexte;
  Pose(&partie, sizeof partie);
  Pose(&texte.numero, sizeof texte.numero);
  for (const std::string* t : {&texte.chemin, &texte.avant, &texte.apres}) Pose(*t);
}

/// The oldest unit that could be taken back cannot be any more.
void Retenues::PerdLaPremiere() {
  if (m_faites.front().perte) m_faites.pop_front();
  assert(!m_faites.empty() && !m_faites.front().perte);
  m_faites.front().perte = ErrRetourAncien;
}

/// Room for the new unit behind the newest one, or at the start of the file where the end is reached.
bool Retenues::Loge(u64 taille) {
  if (taille > m_place) return false;
  for (m_neuve.debut = 0; !m_faites.empty() && !m_faites.back().perte; PerdLaPremiere()) {
    const Repere& premiere = m_faites.front().perte ? m_faites[1] : m_faites.front();
    const u64 tete = premiere.debut, fin = m_faites.back().debut + m_faites.back().taille;
    if (fin + taille <= (fin > tete ? m_place : tete)) {
      m_neuve.debut = fin;
      return true;
    }
    if (fin > tete && taille <= tete) return true;
  }
  return true;
}

/// Writes what was gathered; behind a failure nothing more of the unit is.
void Retenues::Verse(bool fin) {
  if (m_neuve.perte) return;
  const bool debut = m_neuve.taille == 0;
  if (debut) {
    m_defaites.clear();
    if (!Loge(fin ? m_tampon.size() : m_borne)) m_neuve.perte = ErrRetourGrand;
  }
  if (!m_fichier && !m_neuve.perte) {
    const std::string chemin = dossier + "/" + NomFichierRetenues;
    m_neuve.perte = m_systeme.Ouvre(chemin, Systeme::Creation, m_fichier);
    if (!m_neuve.perte) m_systeme.Supprime(chemin);
  }
  if (!m_neuve.perte)
    m_neuve.perte = m_fichier->Ecrit(m_tampon.data(), m_tampon.size(), m_neuve.debut + m_neuve.taille);
  m_neuve.somme = Crc32c(m_tampon.data(), m_tampon.size(), m_neuve.somme);
  m_neuve.taille += m_tampon.size();
  assert(m_neuve.perte || m_neuve.taille <= (fin && debut ? m_neuve.taille : m_borne));
  m_tampon.clear();
}

void Retenues::Acheve(const std::string& nom) {
  if (!std::exchange(m_commencee, false)) return;
  if (!m_tampon.empty()) Verse(true);
  m_defaites.clear();
  // What stands before a unit that was not kept cannot be reached without it.
  if (m_neuve.perte) m_faites.clear();
  m_neuve.nom = nom;
  m_faites.push_back(std::move(m_neuve));
  const std::size_t perdues = m_faites.front().perte ? 1 : 0;
  if (m_faites.size() - perdues > UnitesRetenuesMax) PerdLaPremiere();
  ++m_version;
}

const Retenues::Repere* Retenues::Sommet(bool refaire) const {
  const Pile& pile = refaire ? m_defaites : m_faites;
  return pile.empty() ? nullptr : &pile.back();
}

const std::string* Retenues::Nom(bool refaire) const {
  const Repere* sommet = Sommet(refaire);
  return sommet ? &sommet->nom : nullptr;
}

int Retenues::Perte(bool refaire) const {
  const Repere* sommet = Sommet(refaire);
  return sommet ? sommet->perte : 0;
}

int Retenues::Lit(bool refaire, UniteRetenue& unite) const {
  unite = {};
  const Repere* sommet = Sommet(refaire);
  if (!sommet) return ErrRetour;
  if (sommet->perte) return sommet->perte;
  assert(m_fichier && sommet->debut + sommet->taille <= m_place);
  unite.octets.resize(sommet->taille);
  std::size_t lus = 0;
  if (const int code = m_fichier->Lit(unite.octets.data(), unite.octets.size(), sommet->debut, lus))
    return code;
  if (lus != unite.octets.size() || Crc32c(unite.octets.data(), lus) != sommet->somme) return ErrEndommage;
  Decompose(Lecteur(unite.octets), sommet->retournee, unite);
  return 0;
}

void Retenues::Bascule(bool refaire) {
  Pile &de = refaire ? m_defaites : m_faites, &vers = refaire ? m_faites : m_defaites;
  assert(!de.empty() && !de.back().perte);
  vers.push_back(std::move(de.back()));
  de.pop_back();
  vers.back().retournee = !vers.back().retournee;
  ++m_version;
}

void Retenues::Oublie() {
  m_faites.clear();
  m_defaites.clear();
  m_fichier.reset();
  Commence(0);
  ++m_version;
}

}  // namespace fenlor

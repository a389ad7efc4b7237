#include "store/profil.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstdio>
#include <set>
#include <string_view>

#include "store/remplacement.h"
#include "store/somme.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u64 TailleMaximale = 64u << 20;
constexpr std::size_t Absent = static_cast<std::size_t>(-1);

bool EstBlanc(char c) { return static_cast<unsigned char>(c) <= ' '; }

std::string_view SansBlancs(std::string_view texte) {
  while (!texte.empty() && EstBlanc(texte.front())) texte.remove_prefix(1);
  while (!texte.empty() && EstBlanc(texte.back())) texte.remove_suffix(1);
  return texte;
}

bool EstGuillemet(char c) { return c == '"' || c == '\''; }

std::string_view SansGuillemets(std::string_view texte) {
  if (texte.size() >= 2 && EstGuillemet(texte.front()) && texte.front() == texte.back()) {
    texte.remove_prefix(1);
    texte.remove_suffix(1);
  }
  return texte;
}

struct Lue {
  enum Sorte { Section, Cle, Reste } sorte = Reste;
  std::string_view nom, valeur;
};

Lue AnalyseLigne(std::string_view ligne) {
  ligne = SansBlancs(ligne);
  if (ligne.empty() || ligne.front() == ';') return {};
  if (ligne.front() == '[') {
    const std::size_t fin = ligne.find(']');
    if (fin == std::string_view::npos) return {};
    return {Lue::Section, SansBlancs(ligne.substr(1, fin - 1)), {}};
  }
  const std::size_t egal = ligne.find('=');
  if (egal == std::string_view::npos) return {};
  const std::string_view nom = SansBlancs(ligne.substr(0, egal));
  if (nom.empty()) return {};
  return {Lue::Cle, nom, SansGuillemets(SansBlancs(ligne.substr(egal + 1)))};
}

bool SansControle(std::string_view texte) {
  return std::none_of(texte.begin(), texte.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; });
}

// Texts of the lines that hold a section and a setting; the carriage return
// belongs to them because the file is cut at its line feeds.
std::string LigneSection(const std::string& section) { return '[' + section + "]\r"; }

std::string LigneCle(const std::string& cle, const std::string& valeur) {
  const auto special = [](char c) { return EstBlanc(c) || EstGuillemet(c); };
  const bool entoure = !valeur.empty() && (special(valeur.front()) || special(valeur.back()));
  return entoure ? cle + "=\"" + valeur + "\"\r" : cle + '=' + valeur + '\r';
}

bool SectionRelisible(const std::string& section) {
  if (section.empty() || !SansControle(section)) return false;
  const std::string texte = LigneSection(section);
  const Lue lue = AnalyseLigne(texte);
  return lue.sorte == Lue::Section && lue.nom == section;
}

bool CleRelisible(const std::string& cle, const std::string& valeur) {
  if (!SansControle(cle) || !SansControle(valeur)) return false;
  const std::string texte = LigneCle(cle, valeur);
  const Lue lue = AnalyseLigne(texte);
  return lue.sorte == Lue::Cle && lue.nom == cle && lue.valeur == valeur;
}

int LitTout(Fichier& fichier, u64 taille, std::string& contenu) {
  if (taille > TailleMaximale) return EFBIG;
  contenu.resize(static_cast<std::size_t>(taille));
  std::size_t lus = 0;
  const int erreur = fichier.Lit(contenu.data(), contenu.size(), 0, lus);
  contenu.resize(lus);
  return erreur;
}

constexpr std::string_view DebutSomme = ";Somme=";

std::string LigneSomme(const std::string& contenu) {
  char chiffres[12];
  std::snprintf(chiffres, sizeof chiffres, "%08X\r", Crc32c(contenu.data(), contenu.size()));
  return std::string(DebutSomme) + chiffres;
}

}  // namespace

Profil::Profil(Systeme& systeme, std::string chemin, bool avecSomme, const u64* instant)
    : m_systeme(systeme), m_chemin(std::move(chemin)), m_avecSomme(avecSomme), m_instant(instant) {}

bool Profil::ModifieAilleurs() {
  Charge();
  return m_sommeFausse;
}

std::string Profil::Assemble(const std::vector<Ligne>& lignes) const {
  std::string contenu;
  for (const Ligne& ligne : lignes) contenu.append(ligne.texte).append(1, '\n');
  return m_avecSomme ? contenu + LigneSomme(contenu) + '\n' : contenu;
}

bool Profil::Charge() {
  const u64 instant = m_instant ? *m_instant : 0;
  if (instant && instant == m_vuA) {
    m_erreur = 0;
    return true;
  }
  Empreinte vue;
  m_erreur = m_systeme.Mesure(m_chemin, vue);
  if (!m_erreur && m_empreinte == vue) {
    m_vuA = instant;
    return true;
  }
  // What was read before stays good while the disk refuses to answer.
  if (m_erreur && m_erreur != ENOENT) return false;
  m_indexe = false;
  if (m_erreur) {
    m_lignes.clear();
    m_empreinte.reset();
    m_sommeFausse = false;
    m_erreur = 0;
    return true;
  }

  m_empreinte.reset();
  std::unique_ptr<Fichier> fichier;
  std::string contenu;
  m_erreur = m_systeme.Ouvre(m_chemin, Systeme::Lecture, fichier);
  if (!m_erreur) m_erreur = fichier->Mesure(vue);
  if (!m_erreur) m_erreur = LitTout(*fichier, vue.taille, contenu);
  if (m_erreur) return false;
  Analyse(contenu);
  // A file that somebody changed while it was read is parsed again next time.
  Empreinte apres;
  if (fichier->Mesure(apres) == 0 && apres == vue) {
    m_empreinte = vue;
    m_vuA = instant;
  }
  return true;
}

namespace {

/// Where a value stands in the index: no name holds a line feed.
void PoseCherchee(std::string& cherchee, std::string_view section, std::string_view cle) {
  cherchee.assign(section).append(1, '\n').append(cle);
  std::transform(cherchee.begin(), cherchee.end(), cherchee.begin(), Majuscule);
}

}  // namespace

/// The first section of a name counts, and the first key in it.
void Profil::Indexe() {
  m_valeurs.clear();
  std::set<std::string> vues;
  const std::string* section = nullptr;
  for (const Ligne& ligne : m_lignes) {
    if (ligne.sorte == Ligne::Section)
      section = vues.insert(EnMajuscules(ligne.nom)).second ? &ligne.nom : nullptr;
    if (ligne.sorte != Ligne::Cle || !section) continue;
    PoseCherchee(m_cherchee, *section, ligne.nom);
    m_valeurs.emplace(m_cherchee, ligne.valeur);
  }
  m_indexe = true;
}

void Profil::Analyse(const std::string& contenu) {
  m_lignes.clear();
  for (std::size_t debut = 0; debut < contenu.size();) {
    std::size_t fin = contenu.find('\n', debut);
    Ligne ligne;
    if (fin == std::string::npos) {
      fin = contenu.size();
      ligne.texte = contenu.substr(debut);
      if (ligne.texte.back() != '\r') ligne.texte += '\r';
    } else {
      ligne.texte = contenu.substr(debut, fin - debut);
    }
    const Lue lue = AnalyseLigne(ligne.texte);
    ligne.sorte = lue.sorte == Lue::Section ? Ligne::Section
                  : lue.sorte == Lue::Cle   ? Ligne::Cle
                                            : Ligne::Reste;
    ligne.nom = lue.nom;
    ligne.valeur = lue.valeur;
    m_lignes.push_back(std::move(ligne));
    debut = fin + 1;
  }
  if (!m_avecSomme) return;
  const auto estSomme = [](const Ligne& ligne) { return ligne.texte.starts_with(DebutSomme); };
  std::erase_if(m_lignes, estSomme);
  m_sommeFausse = contenu.find(DebutSomme) != std::string::npos && Assemble(m_lignes) != contenu;
}

std::size_t Profil::TrouveSection(const std::string& section) const {
  for (std::size_t i = 0; i < m_lignes.size(); ++i) {
    if (m_lignes[i].sorte == Ligne::Section && CompareSansCasse(m_lignes[i].nom, section) == 0) return i;
  }
  return Absent;
}

std::string Profil::Lit(const std::string& section, const std::string& cle) {
  Charge();
  return ValeurDe(section, cle);
}

std::string Profil::ValeurDe(const std::string& section, const std::string& cle) {
  if (!m_indexe) Indexe();
  PoseCherchee(m_cherchee, section, cle);
  const auto trouvee = m_valeurs.find(m_cherchee);
  return trouvee == m_valeurs.end() ? std::string() : trouvee->second;
}

bool Profil::Existe(const std::string& section) {
  Charge();
  return TrouveSection(section) != Absent;
}

std::vector<std::string> Profil::Sections() {
  std::vector<std::string> noms;
  Charge();
  std::set<std::string> vus;
  for (const Ligne& ligne : m_lignes) {
    if (ligne.sorte == Ligne::Section && vus.insert(EnMajuscules(ligne.nom)).second)
      noms.push_back(ligne.nom);
  }
  return noms;
}

std::vector<std::string> Profil::Cles(const std::string& section) {
  std::vector<std::string> noms;
  Charge();
  const std::size_t debut = TrouveSection(section);
  if (debut == Absent) return noms;
  std::set<std::string> vus;
  for (std::size_t i = debut + 1; i < m_lignes.size() && m_lignes[i].sorte != Ligne::Section; ++i) {
    const Ligne& ligne = m_lignes[i];
    if (ligne.sorte == Ligne::Cle && vus.insert(EnMajuscules(ligne.nom)).second) noms.push_back(ligne.nom);
  }
  return noms;
}

bool Profil::Ecrit(const std::string& section, const std::string& cle,
                   const std::optional<std::string>& valeur) {
  return Ecrit({{section, cle, valeur}});
}

void Profil::Applique(const Changement& c) {
  if (c.cle.empty()) {
    // Every section of the name goes, or the second would come to light.
    bool dedans = false;
    std::erase_if(m_lignes, [&](const Ligne& ligne) {
      if (ligne.sorte == Ligne::Section) dedans = CompareSansCasse(ligne.nom, c.section) == 0;
      return dedans;
    });
    return;
  }
  assert(!c.section.empty());
  std::size_t debut = TrouveSection(c.section);
  if (debut == Absent && !c.valeur) return;
  if (debut == Absent) {
    if (!m_lignes.empty() && !SansBlancs(m_lignes.back().texte).empty()) {
      m_lignes.push_back({Ligne::Reste, "\r", {}, {}});
    }
    debut = m_lignes.size();
    m_lignes.push_back({Ligne::Section, LigneSection(c.section), c.section, {}});
  }
  assert(debut < m_lignes.size() && m_lignes[debut].sorte == Ligne::Section);
  const auto premiere = m_lignes.begin() + static_cast<std::ptrdiff_t>(debut) + 1;
  const auto fin =
      std::find_if(premiere, m_lignes.end(), [](const Ligne& l) { return l.sorte == Ligne::Section; });
  const auto laMeme = [&](const Ligne& l) {
    return l.sorte == Ligne::Cle && CompareSansCasse(l.nom, c.cle) == 0;
  };
  if (!c.valeur) {
    m_lignes.erase(std::remove_if(premiere, fin, laMeme), fin);
    return;
  }
  const auto trouvee = std::find_if(premiere, fin, laMeme);
  if (trouvee == fin) {
    // Behind the last setting of the section, before the blank lines and
    // comments that introduce the next one.
    auto place = fin;
    while (place != premiere && std::prev(place)->sorte != Ligne::Cle) --place;
    m_lignes.insert(place, {Ligne::Cle, LigneCle(c.cle, *c.valeur), c.cle, *c.valeur});
  } else if (trouvee->valeur != *c.valeur) {
    trouvee->texte = LigneCle(trouvee->nom, *c.valeur);
    trouvee->valeur = *c.valeur;
  }
}

bool Profil::Ecrit(const std::vector<Changement>& changements) {
  for (const Changement& c : changements) {
    const bool relisible = SectionRelisible(c.section) &&
                           (c.cle.empty() || CleRelisible(c.cle, c.valeur.value_or(std::string())));
    if (!relisible) {
      m_erreur = EINVAL;
      return false;
    }
  }
  m_vuA = 0;  // what is replaced is what stands there now
  if (!Charge()) return false;

  std::vector<std::string> anciennes;
  for (const Changement& c : changements)
    if (m_suite) anciennes.push_back(ValeurDe(c.section, c.cle));
  m_indexe = false;
  const std::vector<Ligne> avant = m_lignes;
  for (const Changement& c : changements) Applique(c);

  const auto memeTexte = [](const Ligne& a, const Ligne& b) { return a.texte == b.texte; };
  if (std::equal(avant.begin(), avant.end(), m_lignes.begin(), m_lignes.end(), memeTexte)) return true;

  const bool existait = m_systeme.Existe(m_chemin);
  // A file that its owner made read-only is not to be replaced either.
  std::unique_ptr<Fichier> essai;
  m_erreur = existait ? m_systeme.Ouvre(m_chemin, Systeme::LectureEcriture, essai) : 0;
  if (m_erreur != 0 && m_erreur != ENOENT) {
    m_lignes = avant;
    m_empreinte.reset();
    m_vuA = 0;
    return false;
  }
  Empreinte neuve;
  m_erreur = RemplaceFichier(m_systeme, m_chemin, NomProvisoire(m_chemin), Assemble(m_lignes), neuve);
  if (!m_erreur) {
    m_erreur = m_systeme.SynchroniseDossier(DossierDe(m_chemin));
    if (!m_erreur) {
      m_empreinte = neuve;
      m_sommeFausse = false;
      for (std::size_t i = 0; m_suite && i < changements.size(); ++i) {
        const Changement& c = changements[i];
        if (!c.cle.empty()) m_suite(c.section, c.cle, anciennes[i], c.valeur.value_or(std::string()));
      }
      return true;
    }
    // The new file has the name already, and may or may not keep it: the old
    // settings go back in its place.
    Empreinte remise;
    if (existait) {
      RemplaceFichier(m_systeme, m_chemin, NomProvisoire(m_chemin), Assemble(avant), remise);
    } else {
      m_systeme.Supprime(m_chemin);
    }
  }
  m_lignes = avant;
  m_empreinte.reset();
  m_vuA = 0;
  return false;
}

}  // namespace fenlor

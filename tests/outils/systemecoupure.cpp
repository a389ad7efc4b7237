#include "outils/systemecoupure.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <functional>
#include <set>
#include <stdexcept>

namespace fenlor {

namespace {

constexpr u64 Secteur = 512;
constexpr u64 Page = 4096;

class Hasard {
 public:
  explicit Hasard(u64 graine) : m_etat(graine) {}
  u64 Sous(u64 n) {
    m_etat += 0x9E3779B97F4A7C15u;
    u64 z = m_etat;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return (z ^ (z >> 31)) % n;
  }

 private:
  u64 m_etat;
};

// What becomes of the pieces in flight, by seed.
class Sort {
 public:
  explicit Sort(u64 graine) : m_graine(graine), m_hasard(graine), m_garde(2 + m_hasard.Sous(7)) {}
  bool Garde() { return m_graine == 1 || (m_graine != 0 && m_hasard.Sous(10) < m_garde); }
  bool Dechire() { return m_graine > 1 && m_hasard.Sous(3) == 0; }
  u64 Sous(u64 n) { return m_hasard.Sous(n); }
  bool ToutPerdu() const { return m_graine == 0; }

 private:
  u64 m_graine;
  Hasard m_hasard;
  u64 m_garde;
};

}  // namespace

struct SystemeCoupure::Geste {
  bool ecriture = false;  ///< else a change of size
  u64 offset = 0;
  std::string anciens;  ///< bytes that were overwritten or cut off
  std::string nouveaux;
  u64 avant = 0, apres = 0;  ///< size of the file

  void Defait(std::string& contenu) const {
    if (contenu.size() != apres) throw std::logic_error("a simulated file was changed behind the simulation");
    contenu.resize(avant);
    if (!anciens.empty()) contenu.replace(ecriture ? offset : apres, anciens.size(), anciens);
  }

  void Refait(std::string& contenu, Sort& sort) const {
    const bool garde = sort.Garde();
    if (!ecriture) {
      if (garde) contenu.resize(apres);
      return;
    }
    const u64 fin = offset + nouveaux.size();
    const auto pose = [&](u64 de, u64 a) {
      if (contenu.size() < a) contenu.resize(a);
      contenu.replace(de, a - de, nouveaux, de - offset, a - de);
    };
    const u64 premier = offset / Secteur, nombre = nouveaux.empty() ? 0 : (fin - 1) / Secteur - premier + 1;
    if (nombre > 1 && sort.Dechire()) {
      const bool debut = sort.Sous(2) == 0;
      const u64 gardes = 1 + sort.Sous(nombre - 1);
      for (u64 s = 0; s < nombre; ++s) {
        const bool la = debut ? s < gardes : sort.Sous(2) == 0;
        if (la) pose(std::max(offset, (premier + s) * Secteur), std::min(fin, (premier + s + 1) * Secteur));
      }
    } else if (garde) {
      pose(offset, fin);
      return;
    }
    // The new size may have reached the disk without the bytes.
    if (!sort.ToutPerdu() && contenu.size() < fin && sort.Sous(4) == 0) contenu.resize(fin);
  }
};

struct SystemeCoupure::Noeud {
  explicit Noeud(bool d) : dossier(d) {}
  ~Noeud() {
    if (descripteur >= 0) ::close(descripteur);
  }
  Noeud(const Noeud&) = delete;
  Noeud& operator=(const Noeud&) = delete;

  const bool dossier;
  // Of a file. The descriptor keeps the content of one that lost its name.
  int descripteur = -1;
  std::vector<Geste> gestes;
  std::map<u64, std::vector<std::string>>
      oubliees;  ///< what the disk may hold of pages that failed syncs forgot
  // Of a directory.
  Entrees entrees;   ///< names as the program sees them
  Entrees durables;  ///< names that a cut leaves

  void Tient(const std::string& chemin) {
    if (descripteur < 0) descripteur = ::open(chemin.c_str(), O_RDONLY | O_CLOEXEC);
  }

  bool Contenu(const std::string& chemin, std::string& contenu) {
    Tient(chemin);
    contenu.clear();
    char bloc[1 << 16];
    for (;;) {
      const ssize_t n = ::pread(descripteur, bloc, sizeof bloc, static_cast<off_t>(contenu.size()));
      if (n < 0) return false;
      if (n == 0) return true;
      contenu.append(bloc, static_cast<std::size_t>(n));
    }
  }

  template <class Suite>
  void ChaquePage(const Suite& suite) const {
    for (const Geste& g : gestes) {
      if (!g.ecriture) continue;
      for (u64 p = g.offset / Page; p * Page < g.offset + g.nouveaux.size(); ++p) suite(p);
    }
  }

  void Defait(std::string& contenu) const {
    for (auto g = gestes.rbegin(); g != gestes.rend(); ++g) g->Defait(contenu);
  }

  // Whole pages are written, with what an earlier sync forgot in them.
  void Synchronise() {
    ChaquePage([this](u64 p) { oubliees.erase(p); });
    gestes.clear();
  }

  // Sizes are the business of the file system's own journal: they count.
  int Oublie(const std::string& chemin) {
    std::string contenu;
    if (!Contenu(chemin, contenu)) return EIO;
    Defait(contenu);
    ChaquePage([&](u64 p) {
      std::string page = p * Page < contenu.size() ? contenu.substr(p * Page, Page) : std::string();
      page.resize(Page);
      std::vector<std::string>& versions = oubliees[p];
      if (versions.empty() || versions.back() != page) versions.push_back(std::move(page));
    });
    gestes.clear();
    return EIO;
  }

  void Retrouve(std::string& contenu, Sort& sort) const {
    for (const auto& [p, versions] : oubliees) {
      if (p * Page >= contenu.size() || sort.Garde()) continue;
      const std::string& page = sort.ToutPerdu() ? versions.back() : versions[sort.Sous(versions.size())];
      const u64 taille = std::min<u64>(Page, contenu.size() - p * Page);
      contenu.replace(p * Page, taille, page, 0, taille);
    }
  }
};

class SystemeCoupure::FichierCoupure : public Fichier {
 public:
  FichierCoupure(SystemeCoupure& systeme, std::string chemin, Ref noeud, std::unique_ptr<Fichier> fichier)
      : m_systeme(systeme),
        m_chemin(std::move(chemin)),
        m_noeud(std::move(noeud)),
        m_fichier(std::move(fichier)) {}

  int Lit(void* tampon, std::size_t taille, u64 offset, std::size_t& lus) override {
    lus = 0;
    return m_systeme.Muet() ? EIO : m_fichier->Lit(tampon, taille, offset, lus);
  }

  int Ecrit(const void* tampon, std::size_t taille, u64 offset) override {
    if (m_systeme.Muet()) return EIO;
    if (taille == 0) return 0;
    Geste geste;
    geste.ecriture = true;
    geste.offset = offset;
    if (const int erreur = Anciens(geste, offset, taille)) return erreur;
    if (const int erreur = m_fichier->Ecrit(tampon, taille, offset)) return erreur;
    geste.nouveaux.assign(static_cast<const char*>(tampon), taille);
    geste.apres = std::max(geste.avant, offset + taille);
    m_noeud->gestes.push_back(std::move(geste));
    return 0;
  }

  int Tronque(u64 taille) override {
    if (m_systeme.Muet()) return EIO;
    Geste geste;
    if (const int erreur = Anciens(geste, taille, 0)) return erreur;
    if (const int erreur = m_fichier->Tronque(taille)) return erreur;
    geste.apres = taille;
    if (geste.apres != geste.avant) m_noeud->gestes.push_back(std::move(geste));
    return 0;
  }

  int Reserve(u64 debut, u64 fin) override {
    if (m_systeme.Muet()) return EIO;
    Geste geste;
    Empreinte e;
    if (const int erreur = m_fichier->Mesure(e)) return erreur;
    if (const int erreur = m_fichier->Reserve(debut, fin)) return erreur;
    geste.avant = e.taille;
    geste.apres = std::max(e.taille, fin > debut ? fin : 0);
    if (geste.apres != geste.avant) m_noeud->gestes.push_back(std::move(geste));
    return 0;
  }

  int Synchronise() override {
    if (m_systeme.Muet()) return EIO;
    const Synchro synchro = m_systeme.PasseSynchro(m_chemin);
    if (m_systeme.m_coupe) return EIO;
    if (synchro == Synchro::Manquee) return m_noeud->Oublie(m_chemin);
    if (synchro == Synchro::Faite) m_noeud->Synchronise();
    return 0;
  }

  int Mesure(Empreinte& empreinte) override { return m_systeme.Muet() ? EIO : m_fichier->Mesure(empreinte); }
  int Descripteur() const override { return m_fichier->Descripteur(); }

 private:
  // Size, and the bytes from `offset` on: `taille` of them, or to the end.
  int Anciens(Geste& geste, u64 offset, std::size_t taille) {
    Empreinte e;
    if (const int erreur = m_fichier->Mesure(e)) return erreur;
    geste.avant = e.taille;
    if (offset >= e.taille) return 0;
    const u64 reste = e.taille - offset;
    geste.anciens.resize(static_cast<std::size_t>(taille ? std::min<u64>(taille, reste) : reste));
    std::size_t lus = 0;
    const int erreur = m_fichier->Lit(geste.anciens.data(), geste.anciens.size(), offset, lus);
    return !erreur && lus != geste.anciens.size() ? EIO : erreur;
  }

  SystemeCoupure& m_systeme;
  std::string m_chemin;
  Ref m_noeud;
  std::unique_ptr<Fichier> m_fichier;
};

SystemeCoupure::SystemeCoupure(std::string racine)
    : m_racine(std::move(racine)), m_arbre(std::make_shared<Noeud>(true)) {
  while (m_racine.size() > 1 && m_racine.back() == '/') m_racine.pop_back();
}

SystemeCoupure::~SystemeCoupure() = default;

void SystemeCoupure::Affecte(Entrees& entrees, const Affectation& a) {
  if (a.noeud) {
    entrees[a.nom] = a.noeud;
  } else {
    entrees.erase(a.nom);
  }
}

bool SystemeCoupure::Simule(const std::string& chemin) const {
  return chemin == m_racine || chemin.starts_with(m_racine + '/');
}

// Directory and name of a path; no directory when one on the way is missing.
SystemeCoupure::Lieu SystemeCoupure::TrouveLieu(const std::string& chemin) {
  Lieu lieu{m_arbre, {}};
  std::string ici = m_racine;
  for (std::size_t debut = m_racine.size(); debut < chemin.size();) {
    const std::size_t fin = std::min(chemin.find('/', debut), chemin.size());
    const std::string nom = chemin.substr(debut, fin - debut);
    debut = fin + 1;
    if (nom.empty() || nom == ".") continue;
    if (nom == "..") throw std::logic_error("the simulated disk wants paths without \"..\"");
    if (!lieu.nom.empty()) {
      const Ref suivant = Cherche(lieu, ici);
      if (!suivant || !suivant->dossier) return {};
      lieu.dossier = suivant;
    }
    lieu.nom = nom;
    ici += '/' + nom;
  }
  return lieu;
}

// What stands at a place. What others put there is taken in as durable, unless
// the name itself is in flight.
SystemeCoupure::Ref SystemeCoupure::Cherche(const Lieu& lieu, const std::string& chemin) {
  if (!lieu.dossier) return nullptr;
  if (lieu.nom.empty()) return lieu.dossier;
  if (const auto place = lieu.dossier->entrees.find(lieu.nom); place != lieu.dossier->entrees.end()) {
    return place->second;
  }
  std::error_code erreur;
  const auto etat = std::filesystem::status(chemin, erreur);
  if (!std::filesystem::exists(etat)) return nullptr;
  const Ref noeud = std::make_shared<Noeud>(std::filesystem::is_directory(etat));
  if (!noeud->dossier) m_fichiers.push_back(noeud);
  lieu.dossier->entrees[lieu.nom] = noeud;
  const bool enVol = std::any_of(m_noms.begin(), m_noms.end(), [&](const GesteNom& g) {
    return std::any_of(g.affectations.begin(), g.affectations.end(),
                       [&](const Affectation& a) { return a.dossier == lieu.dossier && a.nom == lieu.nom; });
  });
  if (!enVol) lieu.dossier->durables[lieu.nom] = noeud;
  return noeud;
}

// Takes in all that stands below a directory, before it moves away from its path.
void SystemeCoupure::Recense(const Ref& dossier, const std::string& chemin) {
  std::vector<std::string> noms;
  m_posix.Liste(chemin, noms);
  for (const std::string& nom : noms) {
    const Ref noeud = Cherche({dossier, nom}, chemin + '/' + nom);
    if (noeud && noeud->dossier) Recense(noeud, chemin + '/' + nom);
    if (noeud && !noeud->dossier) noeud->Tient(chemin + '/' + nom);
  }
}

void SystemeCoupure::Note(Ref sujet, std::vector<Affectation> affectations) {
  for (const Affectation& a : affectations) Affecte(a.dossier->entrees, a);
  m_noms.push_back({std::move(sujet), std::move(affectations)});
}

SystemeCoupure::Synchro SystemeCoupure::PasseSynchro(const std::string& chemin) {
  if (m_reste > 0 && --m_reste == 0) m_coupe = true;
  if (m_echec > 1) {
    --m_echec;
  } else if (m_echecs > 0) {
    m_mort = --m_echecs == 0 && m_meurt;
    return Synchro::Manquee;
  }
  const bool faite = !m_coupe && (m_ignore.empty() || chemin.find(m_ignore) == std::string::npos);
  return faite ? Synchro::Faite : Synchro::Ignoree;
}

int SystemeCoupure::Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) {
  fichier.reset();
  if (Muet()) return EIO;
  if (!Simule(chemin)) return m_posix.Ouvre(chemin, mode, fichier);
  const Lieu lieu = TrouveLieu(chemin);
  Ref noeud = Cherche(lieu, chemin);
  Geste vidage;
  if (noeud && !noeud->dossier) {
    noeud->Tient(chemin);
    if (mode == Creation && !noeud->Contenu(chemin, vidage.anciens)) return EIO;
  }
  std::unique_ptr<Fichier> vrai;
  if (const int erreur = m_posix.Ouvre(chemin, mode, vrai)) return erreur;
  if (!noeud) {
    noeud = std::make_shared<Noeud>(false);
    noeud->Tient(chemin);
    m_fichiers.push_back(noeud);
    Note(noeud, {{lieu.dossier, lieu.nom, noeud}});
  } else if (!vidage.anciens.empty()) {
    vidage.avant = vidage.anciens.size();
    noeud->gestes.push_back(std::move(vidage));
  }
  fichier = std::make_unique<FichierCoupure>(*this, chemin, noeud, std::move(vrai));
  return 0;
}

int SystemeCoupure::Mesure(const std::string& chemin, Empreinte& empreinte) {
  return Muet() ? EIO : m_posix.Mesure(chemin, empreinte);
}

int SystemeCoupure::Renomme(const std::string& de, const std::string& vers) {
  if (Muet()) return EIO;
  if (!Simule(de) || !Simule(vers)) return m_posix.Renomme(de, vers);
  const Lieu source = TrouveLieu(de), but = TrouveLieu(vers);
  const Ref sujet = Cherche(source, de), victime = Cherche(but, vers);
  if (sujet && !sujet->dossier) sujet->Tient(de);
  if (sujet && sujet->dossier) Recense(sujet, de);
  if (victime && !victime->dossier) victime->Tient(vers);
  if (const int erreur = m_posix.Renomme(de, vers)) return erreur;
  if (sujet != victime) Note(sujet, {{source.dossier, source.nom, nullptr}, {but.dossier, but.nom, sujet}});
  return 0;
}

int SystemeCoupure::Supprime(const std::string& chemin) {
  if (Muet()) return EIO;
  if (!Simule(chemin)) return m_posix.Supprime(chemin);
  const Lieu lieu = TrouveLieu(chemin);
  const Ref sujet = Cherche(lieu, chemin);
  if (sujet && !sujet->dossier) sujet->Tient(chemin);
  if (const int erreur = m_posix.Supprime(chemin)) return erreur;
  Note(sujet, {{lieu.dossier, lieu.nom, nullptr}});
  return 0;
}

int SystemeCoupure::SynchroniseDossier(const std::string& dossier) {
  if (Muet()) return EIO;
  Empreinte e;
  if (const int erreur = m_posix.Mesure(dossier, e)) return erreur;
  const Synchro synchro = PasseSynchro(dossier);
  if (m_coupe || synchro == Synchro::Manquee) return EIO;
  if (synchro == Synchro::Ignoree || !Simule(dossier)) return 0;
  const Ref noeud = Cherche(TrouveLieu(dossier), dossier);
  if (!noeud || !noeud->dossier) return ENOTDIR;

  // A change that also touches another directory is durable as a whole, and so
  // is every earlier one that it stands on: to the same file, to the same name,
  // inside a directory that it removes or moves.
  std::set<const Noeud*> sujets;
  std::set<std::pair<const Noeud*, std::string>> noms;
  std::vector<GesteNom> durables, restent;
  for (auto g = m_noms.rbegin(); g != m_noms.rend(); ++g) {
    const bool prise = sujets.contains(g->sujet.get()) ||
                       std::any_of(g->affectations.begin(), g->affectations.end(), [&](const Affectation& a) {
                         return a.dossier == noeud || sujets.contains(a.dossier.get()) ||
                                noms.contains({a.dossier.get(), a.nom});
                       });
    if (prise) {
      sujets.insert(g->sujet.get());
      for (const Affectation& a : g->affectations) noms.insert({a.dossier.get(), a.nom});
    }
    (prise ? durables : restent).push_back(std::move(*g));
  }
  m_noms.assign(std::make_move_iterator(restent.rbegin()), std::make_move_iterator(restent.rend()));
  for (auto g = durables.rbegin(); g != durables.rend(); ++g) {
    for (const Affectation& a : g->affectations) Affecte(a.dossier->durables, a);
  }
  noeud->durables = noeud->entrees;
  return 0;
}

int SystemeCoupure::CreeDossier(const std::string& dossier) {
  if (Muet()) return EIO;
  if (!Simule(dossier)) return m_posix.CreeDossier(dossier);
  const Lieu lieu = TrouveLieu(dossier);
  if (const int erreur = m_posix.CreeDossier(dossier)) return erreur;
  const Ref noeud = std::make_shared<Noeud>(true);
  Note(noeud, {{lieu.dossier, lieu.nom, noeud}});
  return 0;
}

int SystemeCoupure::SupprimeDossier(const std::string& dossier) {
  if (Muet()) return EIO;
  if (!Simule(dossier)) return m_posix.SupprimeDossier(dossier);
  const Lieu lieu = TrouveLieu(dossier);
  const Ref sujet = Cherche(lieu, dossier);
  if (const int erreur = m_posix.SupprimeDossier(dossier)) return erreur;
  Note(sujet, {{lieu.dossier, lieu.nom, nullptr}});
  return 0;
}

int SystemeCoupure::Liste(const std::string& dossier, std::vector<std::string>& noms) {
  noms.clear();
  return Muet() ? EIO : m_posix.Liste(dossier, noms);
}

/// Brings the disk from one tree to another.
bool SystemeCoupure::Range(const Arbre& avant, const Arbre& apres,
                           const std::map<std::string, std::string>& contenus) {
  std::error_code erreur;
  for (const auto& [chemin, noeud] : avant) {
    const auto reste = apres.find(chemin);
    if (reste == apres.end() || reste->second->dossier != noeud->dossier)
      std::filesystem::remove_all(chemin, erreur);
  }
  for (const auto& [chemin, noeud] : apres) {
    if (noeud->dossier) std::filesystem::create_directory(chemin, erreur);
  }
  for (const auto& [chemin, contenu] : contenus) {
    const std::string provisoire = chemin + ".coupure";
    std::unique_ptr<Fichier> fichier;
    if (m_posix.Ouvre(provisoire, Creation, fichier) || fichier->Ecrit(contenu.data(), contenu.size(), 0))
      return false;
    fichier.reset();
    // A file that comes back has times of its own: on a fast machine this one's may be those of the tick in
    // which another one of that name was sealed.
    std::filesystem::last_write_time(
        provisoire, std::filesystem::last_write_time(provisoire, erreur) + std::chrono::seconds(1), erreur);
    if (erreur || m_posix.Renomme(provisoire, chemin)) return false;
  }
  return true;
}

bool SystemeCoupure::Applique(u64 graine) {
  m_coupe = true;
  Sort sort(graine);

  std::map<const Noeud*, Entrees> finales;
  const auto entrees = [&](const Ref& dossier) -> Entrees& {
    return finales.try_emplace(dossier.get(), dossier->durables).first->second;
  };
  // A change is lost with an earlier one that it stands on: to the same file,
  // the creation of the directory it goes into, the emptying of the one it removes.
  std::set<const Noeud*> perdus, incomplets;
  for (const GesteNom& g : m_noms) {
    const bool enPlace =
        std::none_of(g.affectations.begin(), g.affectations.end(),
                     [&](const Affectation& a) { return a.noeud && perdus.contains(a.dossier.get()); });
    const bool garde = sort.Garde();
    if (garde && enPlace && !perdus.contains(g.sujet.get()) && !incomplets.contains(g.sujet.get())) {
      for (const Affectation& a : g.affectations) Affecte(entrees(a.dossier), a);
    } else {
      perdus.insert(g.sujet.get());
      for (const Affectation& a : g.affectations) incomplets.insert(a.dossier.get());
    }
  }

  const auto parcourt = [&](bool apres) {
    Arbre arbre;
    const std::function<void(const Ref&, const std::string&)> descend = [&](const Ref& dossier,
                                                                            const std::string& ici) {
      for (const auto& [nom, noeud] : apres ? entrees(dossier) : dossier->entrees) {
        arbre[ici + '/' + nom] = noeud;
        if (noeud->dossier) descend(noeud, ici + '/' + nom);
      }
    };
    descend(m_arbre, m_racine);
    return arbre;
  };
  const Arbre avant = parcourt(false), apres = parcourt(true);

  // All contents are read before the first file is touched.
  std::map<std::string, std::string> contenus;
  for (const auto& [chemin, noeud] : apres) {
    if (noeud->dossier) continue;
    const auto la = avant.find(chemin);
    if (noeud->gestes.empty() && noeud->oubliees.empty() && la != avant.end() && la->second == noeud)
      continue;
    std::string& contenu = contenus[chemin];
    if (!noeud->Contenu(chemin, contenu)) return false;
    noeud->Defait(contenu);
    noeud->Retrouve(contenu, sort);
    for (const Geste& g : noeud->gestes) g.Refait(contenu, sort);
  }

  if (!Range(avant, apres, contenus)) return false;
  m_noms.clear();
  m_fichiers.clear();
  m_arbre = std::make_shared<Noeud>(true);
  return true;
}

}  // namespace fenlor

// bench_pages [RECORDS [LINES]]
// Cuts an index of so many records (1000000) into pages, beside a plain read() of that
// file in the same run, and writes a report of so many lines (300000), beside plain
// writes of its two files. The temporary files stand where TMPDIR says. It judges nothing.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "dialoguemuet.h"
#include "etatlivre.h"
#include "mesures.h"
#include "pages/enregistreur.h"
#include "pages/page.h"
#include "store/magasincles.h"

namespace fenlor::bench {

namespace {

constexpr unsigned paires = 9;
constexpr u32 lignesParPage = 78;

/// A file of its own in the temporary directory, gone with the object.
class Fichier {
 public:
  Fichier() {
    m_chemin = (std::filesystem::temp_directory_path() / "fenlor-bench-XXXXXX").string();
    m_poignee = mkstemp(m_chemin.data());
    if (m_poignee < 0) Echec("no temporary file");
    unlink(m_chemin.c_str());
  }
  ~Fichier() { close(m_poignee); }
  int Poignee() const { return m_poignee; }

 private:
  std::string m_chemin;
  int m_poignee;
};

void Ecrit(int poignee, const char* octets, std::size_t taille, std::size_t morceau) {
  lseek(poignee, 0, SEEK_SET);
  for (std::size_t i = 0; i < taille; i += morceau) {
    const std::size_t n = std::min(morceau, taille - i);
    if (write(poignee, octets + i, n) != static_cast<ssize_t>(n)) Echec("write");
  }
}

/// The index of a report whose records stand in a plain file, read through the store.
class IndexSurDisque : public LecteurBlocs {
 public:
  IndexSurDisque(QVAPI& magasin, u32 nombre) : m_fichier(magasin), m_nombre(nombre) {
    if (!m_fichier.Cree()) Echec("no index");
    for (u32 i = 0; i < nombre; ++i) {
      BlocEtat bloc;
      bloc.lignes = i ? 1 + i % 3 : 0;
      bloc.fin = i * 90;
      bloc.drapeaux = i % 50 == 1 ? BlocEntete : i % 50 == 40 ? BlocFinEntete : 0;
      m_fichier.Ajoute({reinterpret_cast<const char*>(&bloc), sizeof bloc});
    }
    if (!m_fichier.Vide()) Echec("index not written");
  }
  int LitBlocs(u32 premier, BlocEtat* blocs, u32 nombre) override {
    if (premier > m_nombre) return 0;
    nombre = std::min(nombre, m_nombre - premier + 1);
    const auto lecture = m_fichier.Lit(u64{premier - 1} * sizeof(BlocEtat), reinterpret_cast<char*>(blocs),
                                       nombre * static_cast<u32>(sizeof(BlocEtat)));
    return lecture.lue ? static_cast<int>(nombre) : -1;
  }

 private:
  FichierTampon m_fichier;
  u32 m_nombre;
};

long Resident() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

void Pagination(QVAPI& magasin, u32 records, Tableau& tableau) {
  IndexSurDisque index(magasin, records);
  std::vector<char> tampon(48u << 10);
  // As many bytes in a bare file.
  const Fichier nu;
  const std::vector<char> memes(std::size_t{records} * sizeof(BlocEtat), 'x');
  Ecrit(nu.Poignee(), memes.data(), memes.size(), 64u << 10);
  const int poignee = nu.Poignee();
  std::size_t pages = 0, lus = 0;
  const Paires p = MesurePaires(
      paires,
      [&] {
        const auto table = PagineEtat(index, {4, 2, 0}, lignesParPage);
        if (!table) Echec("pagination");
        pages = table->size() - 1;
      },
      [&] {
        lseek(poignee, 0, SEEK_SET);
        lus = 0;
        for (ssize_t n; (n = read(poignee, tampon.data(), tampon.size())) > 0;)
          lus += static_cast<std::size_t>(n);
      });
  if (lus != std::size_t{records} * sizeof(BlocEtat)) Echec("index cut short");
  tableau.Ligne(("pages of " + std::to_string(records) + " records / read()").c_str(), EnTemps(p.nous),
                EnTemps(p.autre), 1 / p.rapport, "x", 0, false);
  std::printf("  %zu pages\n", pages);
}

void Ecriture(CFenlorApp& app, unsigned lignes, Tableau& tableau) {
  EtatLivre doc(app, lignes);
  if (doc.OnNewDocument()) Echec("no report");
  std::vector<char> index(std::size_t{doc.NombreBlocs() + 1} * sizeof(BlocEtat), 'x');
  std::vector<char> texte(doc.TailleTexte(), 'x');
  const Paires p = MesurePaires(
      paires,
      [&] {
        EtatLivre autre(app, lignes);
        if (autre.OnNewDocument()) Echec("no report");
      },
      [&] {
        const Fichier a, b;
        Ecrit(a.Poignee(), texte.data(), texte.size(), 64u << 10);
        Ecrit(b.Poignee(), index.data(), index.size(), 64u << 10);
      });
  tableau.Ligne(("writing " + std::to_string(lignes) + " lines / write()").c_str(), EnTemps(p.nous),
                EnTemps(p.autre), 1 / p.rapport, "x", 0, false);
  std::printf("  %.1f MB of text, %u blocks, %.2f us a line\n", doc.TailleTexte() / 1e6, doc.NombreBlocs(),
              p.nous * 1e6 / lignes);

  Enregistreur appareil = Enregistreur::A4();
  const MiseEnPage page = PreparePage(appareil, {}, false);
  const auto pages = PagineEtat(doc, doc.Mesures(), static_cast<u32>(page.lignesParPage));
  if (!pages) Echec("pagination");
  const ImpressionEtat impression{doc, *pages, page, {"Docteur", "Cabinet"}, FaitDate(15, 3, 2003)};
  std::size_t elements = 0;
  const double duree = Duree([&] {
    for (u32 n = 1; n <= NombrePages(*pages); ++n) {
      if (!DessinePage(impression, n, appareil)) Echec("page");
      elements += appareil.Elements.size();
      appareil.Elements.clear();
    }
  });
  tableau.Ligne("drawing its pages on the recorder", EnTemps(duree), "", NombrePages(*pages) / duree,
                "page/s", 0, true);
  std::printf("  %u pages, %zu runs and rules\n", NombrePages(*pages), elements);
}

}  // namespace

int Mesure(u32 records, unsigned lignes) {
  const auto dossier =
      std::filesystem::temp_directory_path() / ("fenlor-bench-pages-" + std::to_string(getpid()));
  std::filesystem::create_directory(dossier);
  FabriqueMemoire cles;
  OptionsQVAPI options;
  options.cles = &cles;
  options.dossierRegistre = options.dossierRegistreMachine = dossier.string();
  {
    QVAPI magasin(options);
    if (!magasin.QVOpenSession(1) || !magasin.QVOpenCompta(dossier.string(), "")) Echec("no practice");
    DialogueMuet dialogue;
    CFenlorApp app(magasin, dialogue);
    Tableau tableau;
    tableau.EnTete();
    const long avant = Resident();
    Ecriture(app, std::max(1u, lignes / 10), tableau);
    const long petit = Resident();
    {
      EtatLivre grand(app, lignes);
      if (grand.OnNewDocument()) Echec("no report");
    }
    const long grand = Resident();
    Ecriture(app, lignes, tableau);
    Pagination(magasin, records, tableau);
    std::printf(
        "\nresident at most: %ld kB before, %ld kB with %u lines built and drawn, %ld kB with %u built\n",
        avant, petit, std::max(1u, lignes / 10), grand, lignes);
  }
  std::filesystem::remove_all(dossier);
  return 0;
}

}  // namespace fenlor::bench

int main(int argc, char** argv) {
  const auto nombre = [&](int i, unsigned defaut) {
    return argc > i ? static_cast<unsigned>(std::strtoul(argv[i], nullptr, 10)) : defaut;
  };
  return fenlor::bench::Mesure(nombre(1, 1000000), nombre(2, 300000));
}

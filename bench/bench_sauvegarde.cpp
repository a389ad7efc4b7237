// bench_sauvegarde [RUNS [LINES [DIRECTORY]]]
// Backs a practice up whose journal has so many lines (300000), beside "tar | zstd -3" of the same files and
// a sync, in turn. The reading back, which the rival leaves out, stands in a row of its own. The bar: 1.4
// times the rival; the status is 1 when it is missed, unless the size is another.
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "classeur.h"
#include "dialoguemuet.h"
#include "garde/sauvegarde.h"
#include "mesures.h"

namespace fenlor::bench {
namespace {

constexpr unsigned LignesBarre = 300'000;

void Lance(const std::string& commande) {
  if (std::system(commande.c_str()) != 0) Echec(commande);
}

/// Processor time of this process, and of the children that ended.
double Processeur(int qui) {
  rusage usage{};
  getrusage(qui, &usage);
  const auto secondes = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_usec);
  };
  return secondes(usage.ru_utime) + secondes(usage.ru_stime);
}

std::string EnMo(u64 octets) { return std::to_string(octets >> 20) + " MB"; }

int Execute(unsigned tours, unsigned lignes, const std::string& ou) {
  const std::string dossier = ou + "/fenlor-bench-sauvegarde-" + std::to_string(getpid()),
                    cabinet = dossier + "/cabinet", rivale = dossier + "/rivale.tar.zst";
  std::filesystem::create_directories(dossier);
  Tableau tableau;
  {
    Classeur classeur(cabinet);
    classeur.Remplit(lignes / LignesParEcriture);
    QVAPI& magasin = classeur.Magasin();
    DialogueMuet dialogue;
    CFenlorApp app(magasin, dialogue);
    app.PathCabinet = magasin.PathCabinet();
    app.NomExercice = magasin.NomExercice();
    app.PathExercice = magasin.PathExercice();
    std::string fichiers;
    Manifeste manifeste;
    u64 taille = 0;
    std::vector<double> lectures;
    const auto nous = [&] {
      Photographie photographie;
      if (photographie.Prend(app, {app.NomExercice}, false)) Echec("no photograph");
      manifeste = photographie.Tete();
      std::unique_ptr<Fichier> fichier;
      if (magasin.SystemeFichiers().Ouvre(dossier + "/a.fnz", Systeme::Creation, fichier)) Echec("no file");
      if (EcritArchive(*fichier, dossier + "/a.fnz", manifeste, photographie.Pieces(), {}))
        Echec("no archive");
      Empreinte empreinte;
      if (fichier->Mesure(empreinte)) Echec("no size");
      taille = empreinte.taille;
    };
    const auto relit = [&] {
      Manifeste relu;
      if (ParcourtArchive(magasin.SystemeFichiers(), dossier + "/a.fnz", {}, relu) || !(relu == manifeste))
        Echec("not what was written");
    };
    nous();
    for (const PieceArchive& piece : manifeste.pieces) fichiers += " " + piece.nom;
    const std::string commande =
        "tar -C " + cabinet + " -cf -" + fichiers + " | zstd -q -3 -f -o " + rivale + " && sync " + rivale;
    const double avant = Processeur(RUSAGE_SELF), avantAutre = Processeur(RUSAGE_CHILDREN);
    const Paires paires = MesurePaires(tours, nous, [&] { Lance(commande); });
    const double travail = (Processeur(RUSAGE_SELF) - avant) / tours,
                 travailAutre = (Processeur(RUSAGE_CHILDREN) - avantAutre) / tours;
    for (unsigned i = 0; i < tours; ++i) lectures.push_back(Duree(relit));
    const u64 autre = std::filesystem::file_size(rivale);
    const double lecture = Mediane(lectures);
    tableau.Titre(std::to_string(lignes) + " lines, " + EnMo(manifeste.Octets()) + ", medians of " +
                  std::to_string(tours) + " runs");
    tableau.EnTete();
    tableau.Ligne("a backup, copied, written and synced", EnTemps(paires.nous), EnTemps(paires.autre),
                  1 / paires.rapport, "x", lignes == LignesBarre ? 1.4 : 0, false);
    tableau.Ligne("its processor time", EnTemps(travail), EnTemps(travailAutre), travail / travailAutre, "x",
                  0, false);
    tableau.Ligne("its verification, read whole", EnTemps(lecture), EnTemps(paires.nous),
                  lecture / paires.nous, "x", 0, false);
    tableau.Ligne("size", EnMo(taille), EnMo(autre), static_cast<double>(taille) / static_cast<double>(autre),
                  "x", 0, false);
  }
  std::filesystem::remove_all(dossier);
  return tableau.Manquees() ? 1 : 0;
}

}  // namespace
}  // namespace fenlor::bench

int main(int nombre, char** arguments) {
  const auto valeur = [&](int rang, unsigned defaut) {
    return nombre > rang ? static_cast<unsigned>(std::strtoul(arguments[rang], nullptr, 10)) : defaut;
  };
  return fenlor::bench::Execute(valeur(1, 9), valeur(2, fenlor::bench::LignesBarre),
                                nombre > 3 ? arguments[3] : std::filesystem::temp_directory_path().string());
}

#include "master/libelles.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <memory>

#include "core/valeurs.h"
#include "master/textes.h"
#include "store/fichiertextes.h"
#include "store/remplacement.h"

namespace fenlor {

namespace {

std::string Chemin(const CFenlorApp& app, const TexteFixe& nom) {
  assert(!app.PathExercice.empty());
  return Joint(app.PathExercice, Texte(nom));
}

int LitContenu(Fichier& fichier, std::string& contenu) {
  Empreinte empreinte;
  if (const int code = fichier.Mesure(empreinte)) return code;
  if (empreinte.taille > TailleTextesMax) return EFBIG;
  contenu.resize(static_cast<std::size_t>(empreinte.taille));
  std::size_t lus = 0;
  const int code = fichier.Lit(contenu.data(), contenu.size(), 0, lus);
  contenu.resize(code ? 0 : lus);
  return code;
}

int EcritContenu(CFenlorApp& app, const std::string& lignes) {
  const std::string contenu = ScelleTextes(lignes);
  assert(contenu.size() >= lignes.size());
  Systeme& systeme = app.Magasin.SystemeFichiers();
  const std::string chemin = Chemin(app, FichierLibelles);
  const std::string provisoire = Chemin(app, FichierLibellesProvisoire);
  if (contenu.size() > TailleTextesMax) return EFBIG;
  // A file that may not be written is not to be replaced either.
  std::unique_ptr<Fichier> fichier;
  std::string ancien;
  int code = systeme.Ouvre(chemin, Systeme::LectureEcriture, fichier);
  const bool nouveau = code == ENOENT;
  if (!code) code = LitContenu(*fichier, ancien);
  fichier.reset();
  if (code && !nouveau) return code;
  if (!nouveau && ancien == contenu) return 0;
  Empreinte neuve;
  code = RemplaceFichier(systeme, chemin, provisoire, contenu, neuve);
  if (code) return code;
  code = systeme.SynchroniseDossier(DossierDe(chemin));
  if (code && nouveau) systeme.Supprime(chemin);
  if (code && !nouveau) RemplaceFichier(systeme, chemin, provisoire, ancien, neuve);
  if (!code && nouveau) app.Magasin.QVNoteChangement(FichierTextes);
  if (!code && !nouveau)
    app.Magasin.QVRetientTexte(FichierTextes, chemin, ancien, contenu, Texte(ActeLibelles));
  return code;
}

std::string PremiereLigne() { return Texte(LigneLibelles) + "\r\n"; }

bool EstMarque(char c) { return c == '@' || c == '['; }

}  // namespace

std::string NormeLibelle(std::string_view texte) {
  std::string norme(texte);
  std::replace_if(
      norme.begin(), norme.end(), [](char c) { return static_cast<u8>(c) < ' '; }, ' ');
  return CompacteTexte(CompacteTexte(norme).substr(0, LongueurLibelle));
}

bool LibelleRelisible(std::string_view texte) {
  const std::string norme = NormeLibelle(texte);
  assert(norme.size() <= LongueurLibelle);
  return !norme.empty() && !EstMarque(norme.front());
}

Refus LitLibelles(CFenlorApp& app, std::vector<std::string>& libelles) {
  libelles.clear();
  const std::string chemin = Chemin(app, FichierLibelles);
  std::unique_ptr<Fichier> fichier;
  std::string contenu;
  int code = app.Magasin.SystemeFichiers().Ouvre(chemin, Systeme::Lecture, fichier);
  if (code == ENOENT)
    code = EcritContenu(app, PremiereLigne());
  else if (!code)
    code = LitContenu(*fichier, contenu);
  if (code) return Refus(ErrOuvertureDe, "", {chemin});
  for (std::string_view reste = contenu; !reste.empty();) {
    const std::size_t fin = reste.find('\n');
    if (const std::string libelle = NormeLibelle(reste.substr(0, fin)); LibelleRelisible(libelle))
      libelles.push_back(libelle);
    reste.remove_prefix(fin == std::string_view::npos ? reste.size() : fin + 1);
  }
  return {};
}

Refus EcritLibelles(CFenlorApp& app, const std::vector<std::string>& libelles) {
  std::string contenu = PremiereLigne();
  for (const std::string& libelle : libelles)
    if (const std::string norme = NormeLibelle(libelle); !norme.empty()) contenu += norme + "\r\n";
  const int code = EcritContenu(app, contenu);
  if (code) return Refus(ErrLibelles, "", {Chemin(app, FichierLibelles), TexteErreurSysteme(code)});
  return {};
}

}  // namespace fenlor

// Indexed files and plain files of the store.

#include <cassert>
#include <cerrno>

#include "store/etat.h"
#include "store/fichierdat.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

bool CleDuJournal(u16 numCle) {
  unsigned indice = 0;
  const DefinitionFichier* def = DefinitionCle(numCle, indice);
  return def && def->numero == FichierJournal;
}

}  // namespace

bool QVAPI::QVNewDat(u16 numFichier, const std::string& chemin, u16 tailleRec) {
  return m_etat->moteur->CreeDat(numFichier, chemin, tailleRec);
}

bool QVAPI::QVNewIdx(u16 premiereCle, const std::string& chemin, u32 tailleCle0, bool doubles,
                     u16 derniereCle) {
  unsigned indice = 0;
  const DefinitionFichier* def = DefinitionCle(premiereCle, indice);
  if (def &&
      (tailleCle0 != def->tailleCle[0] || doubles != def->doubles[0] || derniereCle + 1 != def->nbCles)) {
    return m_etat->Refuse(ErrValeur);
  }
  return m_etat->moteur->CreeIdx(premiereCle, chemin, doubles);
}

bool QVAPI::QVAddIdx(u16 premiereCle, u32 tailleCle, bool doubles, u16 indice) {
  unsigned premier = 0;
  const DefinitionFichier* def = DefinitionCle(premiereCle, premier);
  if (def && (indice >= def->nbCles || tailleCle != def->tailleCle[indice])) return m_etat->Refuse(ErrValeur);
  return m_etat->moteur->AjouteIdx(premiereCle, indice, doubles);
}

bool QVAPI::QVOpen(u16 numero, const std::string& chemin) { return m_etat->moteur->Ouvre(numero, chemin); }
bool QVAPI::QVClose(u16 numero) { return m_etat->moteur->Ferme(numero); }
// Lines that come and go behind the entry operations change what those have
// counted.
Position QVAPI::QVAddRec(u16 numFichier, const void* rec) {
  if (numFichier == FichierJournal) m_etat->OublieCompteurs();
  return m_etat->moteur->Ajoute(numFichier, rec);
}
bool QVAPI::QVDelRec(u16 numFichier, Position position) {
  if (numFichier == FichierJournal) m_etat->OublieCompteurs();
  return m_etat->moteur->Supprime(numFichier, position);
}
bool QVAPI::QVReadRec(u16 numFichier, Position position, void* rec) {
  return m_etat->moteur->Lit(numFichier, position, rec);
}
bool QVAPI::QVWriteRec(u16 numFichier, Position position, const void* rec) {
  if (numFichier == FichierJournal) m_etat->OublieCompteurs();
  return m_etat->moteur->Ecrit(numFichier, position, rec);
}
bool QVAPI::QVAddKey(u16 numCle, const std::string& cle, Position position) {
  if (CleDuJournal(numCle)) m_etat->OublieCompteurs();
  return m_etat->moteur->AjouteCle(numCle, cle, position);
}
bool QVAPI::QVAddKeys(u16 numFichier, const void* rec, Position position, bool neuf) {
  if (numFichier == FichierJournal) m_etat->OublieCompteurs();
  return m_etat->moteur->AjouteCles(numFichier, position, rec, neuf);
}
bool QVAPI::QVDelKey(u16 numCle, const std::string& cle) {
  if (CleDuJournal(numCle)) m_etat->OublieCompteurs();
  const Position position = m_etat->moteur->TrouveCle(numCle, cle);
  return position && m_etat->moteur->SupprimeCle(numCle, cle, position);
}
bool QVAPI::QVDelDupKey(u16 numCle, const std::string& cle, Position position) {
  if (CleDuJournal(numCle)) m_etat->OublieCompteurs();
  return m_etat->moteur->SupprimeCle(numCle, cle, position);
}
Position QVAPI::QVFindKey(u16 numCle, const std::string& cle) {
  return m_etat->moteur->TrouveCle(numCle, cle);
}
Position QVAPI::QVBrowseKey(u16 numCle, std::string& cle) { return m_etat->moteur->Borne(numCle, cle); }
Position QVAPI::QVFirstKey(u16 numCle, std::string& cle) { return m_etat->moteur->Premier(numCle, cle); }
Position QVAPI::QVLastKey(u16 numCle, std::string& cle) { return m_etat->moteur->Dernier(numCle, cle); }
Position QVAPI::QVNextKey(u16 numCle, std::string& cle) { return m_etat->moteur->Suivant(numCle, cle); }
Position QVAPI::QVPrevKey(u16 numCle, std::string& cle) { return m_etat->moteur->Precedent(numCle, cle); }
u32 QVAPI::QVNumberOfKey(u16 numCle) { return m_etat->moteur->NombreCles(numCle); }
u32 QVAPI::QVNumberOfRec(u16 numFichier) { return m_etat->moteur->NombreEmplacements(numFichier); }
u32 QVAPI::QVGetFirstRecPos(u16) { return DebutEmplacements; }

bool QVAPI::QVEstVide(u16 numFichier, const void* rec) {
  const DefinitionFichier* def = DefinitionFichierNumero(numFichier);
  const EtatEmplacement etat = FichierDat::EtatDe(def ? def->marque : 1, static_cast<const u8*>(rec));
  return etat == EtatEmplacement::Libre || etat == EtatEmplacement::Jamais;
}

bool QVAPI::QVParcours(u16 numFichier, const std::function<bool(Position, const void*)>& suite) {
  Moteur& moteur = *m_etat->moteur;
  if (!moteur.EstOuvertFichier(numFichier)) return m_etat->Refuse(ErrPasOuvert);
  const u32 nombre = moteur.NombreEmplacements(numFichier);
  assert(suite);
  for (Position p = 1; p <= nombre; ++p) {
    const u8* rec = moteur.Vue(numFichier, p);
    if (!rec) {
      if (moteur.EstLibre(numFichier, p)) continue;
      return false;
    }
    if (!suite(p, rec)) break;
  }
  return true;
}

bool QVAPI::QVParcoursCle(u16 numCle, const std::string& debut, const std::string& fin,
                          const std::function<bool(Position, const void*)>& suite) {
  return m_etat->moteur->Parcours(numCle, debut, fin, suite);
}

namespace {

/// Notes what is wrong with one slot: its sum, the record in it, keys that do not lead to it.
template <class Note>
void VerifieEmplacement(Moteur& moteur, const DefinitionFichier& def, Position p, const Note& note) {
  assert(p != 0 && p <= moteur.NombreEmplacements(def.numero));
  const std::string numero = std::to_string(p);
  if (!moteur.EstJuste(def.numero, p)) note("somme de contrôle fausse à l'enregistrement " + numero);
  const u8* rec = moteur.Vue(def.numero, p);
  if (!rec && !moteur.EstLibre(def.numero, p)) note("enregistrement " + numero + " illisible");
  char texte[TailleCleMax];
  for (unsigned i = 0; rec && i < def.nbCles; ++i) {
    const std::string cle(texte, def.compose(i, rec, texte));
    const u16 numCle = static_cast<u16>(def.premiereCle + i);
    std::string trouvee = cle;
    Position place = moteur.Borne(numCle, trouvee);
    while (def.doubles[i] && place && place != p && trouvee == cle) place = moteur.Suivant(numCle, trouvee);
    if (place != p || trouvee != cle)
      note("clé " + std::to_string(i) + " absente pour l'enregistrement " + numero);
    rec = moteur.Vue(def.numero, p);
  }
}

}  // namespace

EtatFichier QVAPI::QVVerifie(u16 numFichier) {
  EtatFichier etat;
  const DefinitionFichier* def = DefinitionFichierNumero(numFichier);
  if (!def) return etat;
  Moteur& moteur = *m_etat->moteur;
  etat.nom = def->nom;
  constexpr std::size_t montrees = 100;
  std::size_t nombre = 0;
  const auto note = [&](const std::string& phrase) {
    if (++nombre <= montrees) etat.anomalies.push_back(DepuisUtf8(phrase).value_or(phrase));
  };
  etat.emplacements = moteur.NombreEmplacements(numFichier);
  const Moteur::Revue revue = moteur.PasseEnRevue(numFichier);
  etat.vivants = revue.vivants;
  // All is well, or each record is asked what is wrong with it.
  if (!revue.sommes || !revue.cles || revue.illisibles > 0)
    for (Position p = 1; p <= etat.emplacements; ++p) VerifieEmplacement(moteur, *def, p, note);
  if (!revue.cles && etat.anomalies.empty()) note("fichier de clés endommagé : ses clés ne se suivent pas");
  for (unsigned i = 0; i < def->nbCles; ++i) {
    const u32 nombre = moteur.NombreCles(static_cast<u16>(def->premiereCle + i));
    if (nombre != etat.vivants) {
      note("clé " + std::to_string(i) + " : " + std::to_string(nombre) + " clés pour " +
           std::to_string(etat.vivants) + " enregistrements");
    }
  }
  if (moteur.ClesEndommagees(numFichier)) note("fichier de clés endommagé : ses clés ont été refaites");
  std::vector<Position> libres;
  if (!moteur.ListeLibre(numFichier, libres) || libres.size() != revue.libres) {
    note("liste des emplacements libres endommagée");
  }
  etat.libres = static_cast<u32>(libres.size());
  if (nombre > montrees)
    etat.anomalies.push_back("... et "_w + std::to_string(nombre - montrees) + " autre(s) anomalie(s)"_w);
  return etat;
}

// ------------------------------------------------------------- plain files

int QVAPI::QVCreateFile(const std::string& chemin) {
  std::unique_ptr<Fichier> fichier;
  if (const int rc = m_etat->systeme->Ouvre(chemin, Systeme::Creation, fichier))
    return m_etat->Refuse(rc), -1;
  assert(fichier);
  const int poignee = m_etat->prochainPlat++;
  m_etat->plats[poignee] = {std::move(fichier), 0, true};
  return poignee;
}

int QVAPI::QVOpenFile(const std::string& chemin, u32 acces) {
  const bool ecriture = (acces & 0x40000000u) != 0;
  std::unique_ptr<Fichier> fichier;
  const auto mode = ecriture ? Systeme::LectureEcriture : Systeme::Lecture;
  if (const int rc = m_etat->systeme->Ouvre(chemin, mode, fichier)) return m_etat->Refuse(rc), -1;
  assert(fichier);
  const int poignee = m_etat->prochainPlat++;
  m_etat->plats[poignee] = {std::move(fichier), 0, ecriture};
  return poignee;
}

bool QVAPI::QVCloseFile(int fichier) { return m_etat->plats.erase(fichier) || m_etat->Refuse(EBADF); }

int QVAPI::QVReadFile(int fichier, void* tampon, u32 taille) {
  const auto plat = m_etat->plats.find(fichier);
  if (plat == m_etat->plats.end()) return m_etat->Refuse(EBADF), -1;
  std::size_t lus = 0;
  if (const int rc = plat->second.fichier->Lit(tampon, taille, plat->second.place, lus))
    return m_etat->Refuse(rc), -1;
  assert(lus <= taille);
  plat->second.place += lus;
  return static_cast<int>(lus);
}

int QVAPI::QVWriteFile(int fichier, const void* tampon, u32 taille) {
  const auto plat = m_etat->plats.find(fichier);
  if (plat == m_etat->plats.end() || !plat->second.ecriture) return m_etat->Refuse(EBADF), -1;
  if (const int rc = plat->second.fichier->Ecrit(tampon, taille, plat->second.place))
    return m_etat->Refuse(rc), -1;
  plat->second.place += taille;
  return static_cast<int>(taille);
}

i64 QVAPI::QVSeekFile(int fichier, i64 offset, int origine) {
  const auto plat = m_etat->plats.find(fichier);
  if (plat == m_etat->plats.end()) return m_etat->Refuse(EBADF), -1;
  i64 base = 0;
  if (origine == 2) {
    Empreinte empreinte;
    if (const int rc = plat->second.fichier->Mesure(empreinte)) return m_etat->Refuse(rc), -1;
    base = static_cast<i64>(empreinte.taille);
  }
  if ((origine != 0 && origine != 2) || base + offset < 0) return m_etat->Refuse(EINVAL), -1;
  plat->second.place = static_cast<u64>(base + offset);
  return base + offset;
}

bool QVAPI::QVExistFile(const std::string& chemin) { return m_etat->systeme->Existe(chemin); }

bool QVAPI::QVDeleteFile(const std::string& chemin) {
  if (!m_etat->moteur->Relache(chemin)) return false;
  int rc = m_etat->systeme->Supprime(chemin);
  if (!rc) rc = m_etat->systeme->SynchroniseDossier(DossierDe(chemin));
  return rc == 0 || m_etat->Refuse(rc);
}

bool QVAPI::QVRenameFile(const std::string& de, const std::string& vers) {
  if (!m_etat->moteur->Relache(de) || !m_etat->moteur->Relache(vers)) return false;
  int rc = m_etat->systeme->Renomme(de, vers);
  if (!rc) rc = m_etat->systeme->SynchroniseDossier(DossierDe(vers));
  return rc == 0 || m_etat->Refuse(rc);
}

}  // namespace fenlor

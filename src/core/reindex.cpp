#include <algorithm>
#include <cassert>
#include <unordered_map>

#include "core/btfiles.h"
#include "core/erreurs.h"
#include "core/fichierbrut.h"
#include "core/textes.h"

namespace fenlor {

namespace {

/// Copies the bytes of a plain file.
bool Copie(QVAPI& magasin, const std::string& de, const std::string& vers) {
  const FichierBrut source(magasin, de);
  const int cible = source.EstOuvert() ? magasin.QVCreateFile(vers) : -1;
  if (cible < 0) return false;
  std::vector<u8> tampon(1u << 16);
  int lus = 0;
  bool bien = true;
  while (bien &&
         (lus = magasin.QVReadFile(source.Poignee(), tampon.data(), static_cast<u32>(tampon.size()))) > 0)
    bien = magasin.QVWriteFile(cible, tampon.data(), static_cast<u32>(lus)) == lus;
  return magasin.QVCloseFile(cible) && bien && lus == 0;
}

/// Whether the slots have sums, where no header says so: one that is right is no accident, and without
/// any a file of whole records is one of the form before. False: the disk did not answer.
bool ChercheSommes(QVAPI& magasin, int fichier, u32 taille, bool& sommes) {
  assert(fichier >= 0 && taille > 0);
  const i64 debut = QVAPI::QVGetFirstRecPos(static_cast<u16>(taille)),
            fin = magasin.QVSeekFile(fichier, 0, 2);
  std::vector<u8> rec(taille + TailleSomme);
  const int pas = static_cast<int>(rec.size());
  sommes = fin <= debut || (fin - debut) % taille != 0;
  if (fin < 0 || (!sommes && magasin.QVSeekFile(fichier, debut, 0) < 0)) return false;
  int lus = pas;
  for (u32 i = 1; !sommes && lus == pas; ++i) {
    lus = magasin.QVReadFile(fichier, rec.data(), static_cast<u32>(pas));
    sommes = lus == pas && SommeJuste(rec.data(), taille, i);
  }
  return lus >= 0;
}

}  // namespace

/// A read of any other outcome than this one refusal says that it is.
bool CBTFiles::EstOuvertPhysique() {
  std::vector<u8> rec(TailleRec);
  return m_app.Magasin.QVReadRec(NumFichier, 1, rec.data()) ||
         m_app.Magasin.QVFileErrorCode() != ErrPasOuvert;
}

bool CBTFiles::Recopie(int ancien, bool avecSommes, const Filtre& filtre, RapportReindex& rapport) {
  assert(ancien >= 0);
  QVAPI& magasin = m_app.Magasin;
  const u32 pas = static_cast<u32>(TailleRec) + (avecSommes ? TailleSomme : 0);
  const i64 debut = QVAPI::QVGetFirstRecPos(static_cast<u16>(TailleRec));
  const i64 fin = magasin.QVSeekFile(ancien, 0, 2);
  const u64 octets = fin > debut ? static_cast<u64>(fin - debut) : 0;
  if (rapport.endommage) rapport.n = static_cast<u32>(octets / pas);
  rapport.octetsRestants = octets - std::min(octets, u64{rapport.n} * pas);
  if (fin < 0 || (rapport.n > 0 && magasin.QVSeekFile(ancien, debut, 0) < 0)) {
    ErreurLecture();
    return false;
  }
  if (rapport.n > 0) {
    m_app.Boite.SetMax(rapport.n);
    m_app.Boite.SetPos(0);
  }

  std::vector<u8> rec(pas);
  const AutreRec autre(*this, rec.data());
  std::unordered_map<std::string, fenlor::Position> places;
  for (u32 i = 0; i < rapport.n; ++i) {
    if (m_app.Boite.IsAborted()) {
      rapport.arrete = true;
      return false;
    }
    if (magasin.QVReadFile(ancien, rec.data(), pas) != static_cast<int>(pas)) {
      ErreurLecture();
      return false;
    }
    m_app.Boite.Step();
    const bool vierge = std::all_of(rec.begin(), rec.end(), [](u8 octet) { return octet == 0; });
    if (avecSommes && !vierge && !SommeJuste(rec.data(), static_cast<u32>(TailleRec), i + 1)) {
      if (!RepareBit(rec.data(), static_cast<u32>(TailleRec), i + 1)) {
        ++rapport.inconnus;
        continue;
      }
      ++rapport.repares;
    }
    if (QVAPI::QVEstVide(NumFichier, rec.data())) {
      ++(rec[0] == 255 ? rapport.supprimes : rapport.vierges);
      continue;
    }
    if (m_definition.marque == 1) {
      if (rec[0] != 1) {
        ++rapport.inconnus;
        continue;
      }
      rec[0] = 0;
    }
    if (filtre && !filtre(rec.data())) {
      ++rapport.ecartes;
      continue;
    }
    fenlor::Position seule = 0;
    fenlor::Position& place = CleDouble[0] ? seule : places[MakeKey(0)];
    const bool remplace = place != 0;
    if (!remplace) place = magasin.QVAddRec(NumFichier, rec.data());
    if (place == 0 || (remplace && !magasin.QVWriteRec(NumFichier, place, rec.data()))) {
      Erreur(0, MessageCreation);
      return false;
    }
    ++(remplace ? rapport.remplaces : rapport.gardes);
  }
  // Every slot of the old file has become one of these.
  assert(rapport.n == rapport.gardes + rapport.ecartes + rapport.remplaces + rapport.inconnus +
                          rapport.supprimes + rapport.vierges);
  return true;
}

bool CBTFiles::Substitue(const std::string& nouveau, RapportReindex& rapport) {
  QVAPI& magasin = m_app.Magasin;
  if (rapport.endommage || rapport.inconnus > 0 || rapport.vierges > 0 || rapport.octetsRestants > 0) {
    const std::string copie = Chemin("avarie");
    if (!Copie(magasin, Chemin("dat"), copie)) return m_app.ReportErreur(ErrCreationFichier, {copie});
    rapport.copie = copie;
  }
  assert(magasin.QVExistFile(nouveau));
  // A data file without its key file is whole: the store makes its keys anew, so
  // that a crash between these steps costs nothing.
  magasin.QVDeleteFile(Chemin("idx"));
  return magasin.QVRenameFile(nouveau, Chemin("dat")) ||
         m_app.ReportErreur(ErrRecuperationFichier, {Chemin("dat")});
}

bool CBTFiles::Reconstruit(const Filtre& filtre, RapportReindex& rapport) {
  QVAPI& magasin = m_app.Magasin;
  const std::string nouveau = Chemin("neuf");
  const bool ouvrable = OpenDat();
  const int raison = ouvrable ? 0 : magasin.QVFileErrorCode();
  const auto muet = [&](int code) {
    rapport.code = code;
    return m_app.ReportErreur(ErrCodeOuverture, {std::to_string(code), Chemin("dat")});
  };
  // A disk that does not answer says nothing about the file.
  if (!ouvrable && raison < ErrPasOuvert) return muet(raison);
  rapport.endommage = !ouvrable;
  const bool autreForme = raison == ErrFormat;
  if (!rapport.endommage) {
    rapport.n = magasin.QVNumberOfRec(NumFichier);
    magasin.QVClose(NumFichier);
  }
  bool fait = false;
  {
    const FichierBrut ancien(magasin, Chemin("dat"));
    EnteteDat entete;
    if (!ancien.EstOuvert() || !LitEntete(magasin, ancien.Poignee(), entete))
      return muet(magasin.QVFileErrorCode());
    bool avecSommes = entete.version >= VersionSommes;
    if (entete.id == 0 && !ChercheSommes(magasin, ancien.Poignee(), static_cast<u32>(TailleRec), avecSommes))
      return muet(magasin.QVFileErrorCode());
    if (autreForme || (rapport.endommage && entete.id != 0 && entete.numero != NumFichier))
      return m_app.ReportErreur(ErrOuvertureFichier, {Chemin("dat")});
    if (magasin.QVExistFile(nouveau) && !magasin.QVDeleteFile(nouveau))
      return m_app.ReportErreur(ErrCreationFichier, {nouveau});
    if (!magasin.QVNewDat(NumFichier, nouveau, static_cast<u16>(TailleRec)))
      return m_app.ReportErreur(ErrCreationFichier, {nouveau});

    QVAPI::Unite unite(magasin);
    unite.SansRetour();
    fait = Recopie(ancien.Poignee(), avecSommes, filtre, rapport);
    if (fait && !(unite.Valide() && magasin.QVFlush())) {
      Erreur(0, MessageCreation);
      fait = false;
    }
  }
  magasin.QVClose(NumFichier);
  fait = fait && Substitue(nouveau, rapport);
  if (!fait) rapport.code = magasin.QVFileErrorCode();
  if (!fait) magasin.QVDeleteFile(nouveau);
  return fait;
}

RapportReindex CBTFiles::Reindex(const Filtre& filtre) {
  QVAPI& magasin = m_app.Magasin;
  RapportReindex rapport;
  if (!magasin.QVFlush()) {
    Erreur(0, MessageEcriture);
    return rapport;
  }
  const bool ouvert = EstOuvertPhysique();
  if (ouvert) {
    magasin.QVClose(NumCle);
    magasin.QVClose(NumFichier);
  }
  magasin.PoseErreur(ErrAucune);
  rapport.fait = Reconstruit(filtre, rapport);
  if (!rapport.fait && rapport.code == ErrAucune) rapport.code = magasin.QVFileErrorCode();

  const bool rouvert = OpenDat() && OpenIdx();
  if (!rouvert && (rapport.fait || !rapport.endommage)) RefuseOuverture();
  for (u32 i = 0; rouvert && rapport.fait && i <= DerniereCle; ++i) {
    const u32 cles = magasin.QVNumberOfKey(static_cast<u16>(NumCle + i));
    if (cles == rapport.gardes) continue;
    rapport.clesManquantes += rapport.gardes - std::min(cles, rapport.gardes);
    Erreur(ErrCleDouble, MessageAjoutCle, {std::to_string(i)});
  }
  if (!ouvert || !rouvert) {
    magasin.QVClose(NumCle);
    magasin.QVClose(NumFichier);
  }
  Position = 0;
  return rapport;
}

}  // namespace fenlor

// Record families: opening, counting and describing the known files.

#include "store/etat.h"
#include "store/ouverture.h"
#include "store/somme.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

bool EstOuverte(const EtatQVAPI& etat, u16 numero) { return etat.moteur->EstOuvertFichier(numero); }

u64 Octets(QVAPI& magasin, u16 numero) {
  const Ouverture fichier(magasin, numero);
  const u16 taille = DefinitionFichierNumero(numero)->taille;
  return fichier
             ? QVAPI::QVGetFirstRecPos(taille) + u64{magasin.QVNumberOfRec(numero)} * (taille + TailleSomme)
             : 0;
}

u32 Enregistrements(QVAPI& magasin, u16 numero) {
  const Ouverture fichier(magasin, numero);
  return fichier ? magasin.QVNumberOfKey(DefinitionFichierNumero(numero)->premiereCle) : 0;
}

}  // namespace

u32 QVAPI::OpenFichier(u16 numero, const std::string& chemin) {
  EtatQVAPI& etat = *m_etat;
  const DefinitionFichier* def = DefinitionFichierNumero(numero);
  if (!etat.moteur->EstOuvert() || !def) return etat.Refuse(def ? ErrPasOuvert : ErrValeur), 0;
  const std::string& dossier = !chemin.empty()  ? chemin
                               : def->duCabinet ? etat.pathCabinet
                                                : etat.pathExercice;
  if (dossier.empty()) return etat.Refuse(ErrPasOuvert), 0;
  const std::string base = Joint(dossier, def->nom), dat = base + ".dat", idx = base + ".idx";
  unsigned& nombre = etat.ouvertures[numero];
  if (!etat.systeme->Existe(dat) && !etat.moteur->EstOuvertFichier(numero)) {
    if (!etat.moteur->CreeDat(numero, dat, def->taille)) return 0;
  }
  if (!etat.moteur->Ouvre(numero, dat)) return 0;
  if (def->nbCles && !etat.moteur->Ouvre(def->premiereCle, idx)) {
    const int code = etat.moteur->Erreur();
    if (nombre == 0) QVClose(numero);
    etat.Refuse(code);
    return 0;
  }
  ++nombre;
  return numero;
}

bool QVAPI::CloseFichier(u16 numero, u32 poignee) {
  const auto ouverture = m_etat->ouvertures.find(numero);
  if (poignee != numero || ouverture == m_etat->ouvertures.end() || ouverture->second == 0)
    return m_etat->Refuse(ErrPasOuvert);
  // Whatever was written meanwhile, and by whom, the settings name as many models as there are.
  if (numero == FichierAuto && ouverture->second == 1 && !QVEnUnite()) FlushEcrituresAuto(poignee);
  if (--ouverture->second) return true;
  const DefinitionFichier& def = *DefinitionFichierNumero(numero);
  const bool cles = def.nbCles == 0 || QVClose(def.premiereCle);
  return QVClose(numero) && cles;
}

bool QVAPI::CloseTauxDegressif(u32 poignee) { return poignee == 1 || m_etat->Refuse(ErrPasOuvert); }

bool QVAPI::GetOpenFlagPlan() const { return EstOuverte(*m_etat, FichierComptes); }
bool QVAPI::GetOpenFlagJournal() const { return EstOuverte(*m_etat, FichierJournal); }
bool QVAPI::GetOpenFlagRubriques() const { return EstOuverte(*m_etat, FichierRubriques); }
bool QVAPI::GetOpenFlagBanques() const { return EstOuverte(*m_etat, FichierBanques); }

u64 QVAPI::GetPlanSize(u32) { return Octets(*this, FichierComptes); }
u64 QVAPI::GetJournalSize(u32) { return Octets(*this, FichierJournal); }
u64 QVAPI::GetRubriquesSize(u32) { return Octets(*this, FichierRubriques); }
u64 QVAPI::GetBanquesSize(u32) { return Octets(*this, FichierBanques); }
u32 QVAPI::GetPlanRec(u32) { return Enregistrements(*this, FichierComptes); }
u32 QVAPI::GetJournalRec(u32) { return Enregistrements(*this, FichierJournal); }
u32 QVAPI::GetRubriquesRec(u32) { return Enregistrements(*this, FichierRubriques); }
u32 QVAPI::GetBanquesRec(u32) { return Enregistrements(*this, FichierBanques); }

Position QVAPI::ReadPlan(Plan& rec, u32) {
  const Position position =
      QVFindKey(DefinitionFichierNumero(FichierComptes)->premiereCle, MakePlanKey1(LitTexte(rec.Compte)));
  return position && QVReadRec(FichierComptes, position, &rec) ? position : 0;
}

bool QVAPI::DeletePlan(Position position) {
  Plan rec;
  if (!QVReadRec(FichierComptes, position, &rec)) return false;
  Unite unite(*this);
  if (!m_etat->moteur->SupprimeCles(FichierComptes, position, &rec)) return false;
  return QVDelRec(FichierComptes, position) && unite.Valide();
}

}  // namespace fenlor

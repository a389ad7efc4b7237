// Record families: opening, counting and describing the known files.

#include "store/etat.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Opens data and keys of a known file in a directory, creating what is missing.
u32 OuvreFamille(QVAPI& magasin, EtatQVAPI& etat, u16 numero, const std::string& chemin) {
  if (!etat.moteur->EstOuvert()) return etat.Refuse(ErrPasOuvert), 0;
  const DefinitionFichier& def = *DefinitionFichierNumero(numero);
  const std::string& dossier = !chemin.empty() ? chemin : def.duCabinet ? etat.pathCabinet : etat.pathExercice;
  if (dossier.empty()) return etat.Refuse(ErrPasOuvert), 0;
  const std::string base = Joint(dossier, def.nom), dat = base + ".dat", idx = base + ".idx";
  unsigned& nombre = etat.ouvertures[numero];
  if (!etat.systeme->Existe(dat) && !etat.moteur->EstOuvertFichier(numero)) {
    if (!etat.moteur->CreeDat(numero, dat, def.taille)) return 0;
  }
  if (!etat.moteur->Ouvre(numero, dat)) return 0;
  if (def.nbCles && !etat.moteur->Ouvre(def.premiereCle, idx)) {
    const int code = etat.moteur->Erreur();
    if (nombre == 0) magasin.QVClose(numero);
    etat.Refuse(code);
    return 0;
  }
  ++nombre;
  return numero;
}

bool FermeFamille(QVAPI& magasin, EtatQVAPI& etat, u16 numero, u32 poignee) {
  const auto ouverture = etat.ouvertures.find(numero);
  if (poignee != numero || ouverture == etat.ouvertures.end() || ouverture->second == 0) return etat.Refuse(ErrPasOuvert);
  if (--ouverture->second) return true;
  const DefinitionFichier& def = *DefinitionFichierNumero(numero);
  const bool cles = def.nbCles == 0 || magasin.QVClose(def.premiereCle);
  return magasin.QVClose(numero) && cles;
}

bool EstOuverte(const EtatQVAPI& etat, u16 numero) {
  return etat.moteur->EstOuvertFichier(numero);
}

/// Runs `suite` with the file of the open exercice open.
template <class Suite>
u64 AvecFamille(QVAPI& magasin, EtatQVAPI& etat, u16 numero, Suite&& suite) {
  const u32 poignee = OuvreFamille(magasin, etat, numero, {});
  if (!poignee) return 0;
  const u64 valeur = suite();
  FermeFamille(magasin, etat, numero, poignee);
  return valeur;
}

u64 Octets(QVAPI& magasin, EtatQVAPI& etat, u16 numero) {
  return AvecFamille(magasin, etat, numero, [&]() -> u64 {
    const u16 taille = etat.moteur->TailleRec(numero);
    return QVAPI::QVGetFirstRecPos(taille) + u64{magasin.QVNumberOfRec(numero)} * taille;
  });
}

u32 Enregistrements(QVAPI& magasin, EtatQVAPI& etat, u16 numero) {
  return static_cast<u32>(AvecFamille(magasin, etat, numero, [&]() -> u64 {
    return magasin.QVNumberOfKey(DefinitionFichierNumero(numero)->premiereCle);
  }));
}

}  // namespace

u32 QVAPI::OpenPlan(const std::string& chemin) { return OuvreFamille(*this, *m_etat, FichierComptes, chemin); }
u32 QVAPI::OpenRubriques(const std::string& chemin) { return OuvreFamille(*this, *m_etat, FichierRubriques, chemin); }
u32 QVAPI::OpenBanques(const std::string& chemin) { return OuvreFamille(*this, *m_etat, FichierBanques, chemin); }
u32 QVAPI::OpenJournal(const std::string& chemin) { return OuvreFamille(*this, *m_etat, FichierJournal, chemin); }
u32 QVAPI::OpenImmobilisations(const std::string& chemin) { return OuvreFamille(*this, *m_etat, FichierImmo, chemin); }
u32 QVAPI::OpenAmortissements(const std::string& chemin) { return OuvreFamille(*this, *m_etat, FichierAmo, chemin); }
u32 QVAPI::OpenRecettes(const std::string& chemin) { return OuvreFamille(*this, *m_etat, FichierRecettes, chemin); }
u32 QVAPI::OpenDepenses(const std::string& chemin) { return OuvreFamille(*this, *m_etat, FichierDepenses, chemin); }
u32 QVAPI::OpenEcrituresAuto(const std::string& chemin) { return OuvreFamille(*this, *m_etat, FichierAuto, chemin); }
u32 QVAPI::OpenTauxDegressif(const std::string&) { return 1; }

bool QVAPI::ClosePlan(u32 poignee) { return FermeFamille(*this, *m_etat, FichierComptes, poignee); }
bool QVAPI::CloseRubriques(u32 poignee) { return FermeFamille(*this, *m_etat, FichierRubriques, poignee); }
bool QVAPI::CloseBanques(u32 poignee) { return FermeFamille(*this, *m_etat, FichierBanques, poignee); }
bool QVAPI::CloseJournal(u32 poignee) { return FermeFamille(*this, *m_etat, FichierJournal, poignee); }
bool QVAPI::CloseImmobilisations(u32 poignee) { return FermeFamille(*this, *m_etat, FichierImmo, poignee); }
bool QVAPI::CloseAmortissements(u32 poignee) { return FermeFamille(*this, *m_etat, FichierAmo, poignee); }
bool QVAPI::CloseRecettes(u32 poignee) { return FermeFamille(*this, *m_etat, FichierRecettes, poignee); }
bool QVAPI::CloseDepenses(u32 poignee) { return FermeFamille(*this, *m_etat, FichierDepenses, poignee); }
bool QVAPI::CloseEcrituresAuto(u32 poignee) { return FermeFamille(*this, *m_etat, FichierAuto, poignee); }
bool QVAPI::CloseTauxDegressif(u32 poignee) { return poignee == 1 || m_etat->Refuse(ErrPasOuvert); }

bool QVAPI::GetOpenFlagPlan() const { return EstOuverte(*m_etat, FichierComptes); }
bool QVAPI::GetOpenFlagJournal() const { return EstOuverte(*m_etat, FichierJournal); }
bool QVAPI::GetOpenFlagRubriques() const { return EstOuverte(*m_etat, FichierRubriques); }
bool QVAPI::GetOpenFlagBanques() const { return EstOuverte(*m_etat, FichierBanques); }

u64 QVAPI::GetPlanSize(u32) { return Octets(*this, *m_etat, FichierComptes); }
u64 QVAPI::GetJournalSize(u32) { return Octets(*this, *m_etat, FichierJournal); }
u64 QVAPI::GetRubriquesSize(u32) { return Octets(*this, *m_etat, FichierRubriques); }
u64 QVAPI::GetBanquesSize(u32) { return Octets(*this, *m_etat, FichierBanques); }
u32 QVAPI::GetPlanRec(u32) { return Enregistrements(*this, *m_etat, FichierComptes); }
u32 QVAPI::GetJournalRec(u32) { return Enregistrements(*this, *m_etat, FichierJournal); }
u32 QVAPI::GetRubriquesRec(u32) { return Enregistrements(*this, *m_etat, FichierRubriques); }
u32 QVAPI::GetBanquesRec(u32) { return Enregistrements(*this, *m_etat, FichierBanques); }

Position QVAPI::ReadPlan(Plan& rec, u32) {
  const Position position = QVFindKey(DefinitionFichierNumero(FichierComptes)->premiereCle, MakePlanKey1(LitTexte(rec.Compte)));
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

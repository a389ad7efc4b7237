#include "ctl/ouverture.h"

#include "store/definitions.h"

namespace fenlor {

namespace {

struct Famille {
  u16 numero;
  u32 (QVAPI::*ouvre)(const std::string&);
  bool (QVAPI::*ferme)(u32);
};

constexpr Famille Familles[] = {
    {FichierComptes, &QVAPI::OpenPlan, &QVAPI::ClosePlan},
    {FichierJournal, &QVAPI::OpenJournal, &QVAPI::CloseJournal},
    {FichierRubriques, &QVAPI::OpenRubriques, &QVAPI::CloseRubriques},
    {FichierBanques, &QVAPI::OpenBanques, &QVAPI::CloseBanques},
    {FichierImmo, &QVAPI::OpenImmobilisations, &QVAPI::CloseImmobilisations},
    {FichierAmo, &QVAPI::OpenAmortissements, &QVAPI::CloseAmortissements},
    {FichierRecettes, &QVAPI::OpenRecettes, &QVAPI::CloseRecettes},
    {FichierDepenses, &QVAPI::OpenDepenses, &QVAPI::CloseDepenses},
    {FichierAuto, &QVAPI::OpenEcrituresAuto, &QVAPI::CloseEcrituresAuto},
};

}  // namespace

Ouverture::Ouverture(QVAPI& magasin, u16 numFichier) : m_magasin(magasin) {
  for (const Famille& famille : Familles) {
    if (famille.numero != numFichier) continue;
    Poignee = (m_magasin.*famille.ouvre)({});
    m_ferme = famille.ferme;
  }
}

Ouverture::~Ouverture() {
  if (Poignee) (m_magasin.*m_ferme)(Poignee);
}

}  // namespace fenlor

// What the tests of the register and of its forms share.
#pragma once

#include "assets/immobilisations.h"
#include "forms/journal/formesjournal.h"
#include "ui/editeurs.h"

namespace fenlor::test {

class FormesImmobilisations : public FormesJournal {
 protected:
  FicheImmobilisation Bien(const char* designation, const char* achat, f64 valeur, const char* fin = "",
                           bool rebut = false) {
    FicheImmobilisation fiche = NouvelleImmobilisation(App());
    fiche.designation = designation;
    fiche.dateAchat = GetDate(achat);
    fiche.prix = fiche.valeur = valeur;
    fiche.duree = 5;
    fiche.taux = 20;
    fiche.rec.DateCession = GetDate(fin);
    fiche.rec.Rebut = rebut;
    return fiche;
  }
  FicheImmobilisation Ajoute(FicheImmobilisation fiche) {
    EXPECT_FALSE(EnregistreFiche(App(), fiche));
    return fiche;
  }
  /// As it stands in the file.
  FicheImmobilisation Relue(u32 numero) {
    FicheImmobilisation fiche;
    EXPECT_FALSE(LitFiche(App(), PositionImmobilisation(App(), numero), fiche));
    return fiche;
  }
  std::size_t Nombre() {
    CImmobilisations fichier(App(), App().PathCabinet);
    return PositionsDe(App(), fichier).size();
  }

  static std::string Lu(QDialog& f, const char* nom) { return test::Lu(f, nom).toStdString(); }
};

}  // namespace fenlor::test

// Reports for tests: a document that writes what it is told, drawn on the recorder.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "core/fenlorapp.h"
#include "pages/enregistreur.h"
#include "pages/etatdoc.h"
#include "pages/page.h"

namespace fenlor::test {

/// What its `ecrit` does is its `BuildEtat`.
class EtatDeTest : public CEtatDoc {
 public:
  using CEtatDoc::CEtatDoc;
  using CEtatDoc::EcritEtat;
  using CEtatDoc::EtatPrintf;
  using CEtatDoc::SetEtatEntete;
  using CEtatDoc::SetEtatPaysage;
  using CEtatDoc::SetEtatPied;
  using CEtatDoc::SetEtatTitre;

  std::function<void(EtatDeTest&)> ecrit;

 protected:
  void BuildEtat() override { ecrit ? ecrit(*this) : CEtatDoc::BuildEtat(); }
};

struct Dessin {
  MiseEnPage page;
  TablePages pages;
  std::vector<ElementPage> elements;
};

/// The whole report. The pages are those of `doc`.
inline Dessin Dessine(CEtatDoc& doc, Enregistreur appareil, const ReglagePolice& police = {},
                      bool brouillon = false) {
  Dessin dessin;
  dessin.page = PreparePage(appareil, police, brouillon);
  dessin.pages = PagineEtat(doc, doc.Mesures(), static_cast<u32>(dessin.page.lignesParPage)).value();
  const ImpressionEtat impression{
      doc, dessin.pages, dessin.page, {"Docteur A\\HENRI", "Cabinet"}, FaitDate(15, 3, 2003)};
  for (appareil.Page = 1; appareil.Page <= NombrePages(dessin.pages); ++appareil.Page)
    EXPECT_TRUE(DessinePage(impression, appareil.Page, appareil));
  dessin.elements = std::move(appareil.Elements);
  return dessin;
}

}  // namespace fenlor::test

#include "pages/pagination.h"

#include <gtest/gtest.h>

namespace fenlor {
namespace {

/// Records of an index that nobody wrote.
class IndexDeTest : public LecteurBlocs {
 public:
  explicit IndexDeTest(std::vector<BlocEtat> blocs) : m_blocs(std::move(blocs)) {
    for (u32 i = 0; i < m_blocs.size(); ++i) m_blocs[i].fin = 10 * (i + 1);
  }
  int LitBlocs(u32 premier, BlocEtat* blocs, u32 nombre) override {
    u32 lus = 0;
    for (; lus < nombre && premier - 2 + lus < m_blocs.size(); ++lus) blocs[lus] = m_blocs[premier - 2 + lus];
    return casse ? -1 : static_cast<int>(lus);
  }
  bool casse = false;

 private:
  std::vector<BlocEtat> m_blocs;
};

TEST(PaginationTest, BlocksFallOnPages) {
  const MesuresEtat mesures{4, 2, 3};  // 20 lines: 10 on the first page, 13 behind it, 11 under a header
  struct Cas {
    const char* nom;
    std::vector<BlocEtat> blocs;
    TablePages pages;
  };
  const Cas titres[] = {
      {"a heading goes with its rows", {{8}, {2, 0, BlocTitre}, {1}}, {{}, {10}, {30}}},
      {"two of them, the second a table's",
       {{6}, {2, 0, BlocTitre}, {2, 0, BlocEntete}, {8}, {2}},
       {{}, {10}, {40, false, true}, {50, true, true}}},
      {"one that fills the page alone stays", {{10, 0, BlocTitre}, {1}}, {{}, {10}, {20}}},
      {"one inside a table",
       {{7, 0, BlocEntete}, {2}, {1, 0, BlocTitre}, {1}},
       {{}, {20, false, true}, {40, true, true}}},
      {"not behind a break", {{2, 0, BlocTitre | BlocSaut}, {1}}, {{}, {10}, {20}}},
  };
  for (const Cas& c : titres) {
    IndexDeTest index(c.blocs);
    EXPECT_EQ(PagineEtat(index, mesures, 20, true), c.pages) << c.nom;
  }
  for (const auto& [bloc, titre] :
       std::initializer_list<std::pair<const char*, bool>>{{"\\L\\0\\M010\\BClasse 1\\0\n\\S001", true},
                                                           {"\n\n\\B\\R030du :\\0 01/01", true},
                                                           {"\\0\\M010\\S002\\BTotal", false},
                                                           {"\\B\\0Ligne", false},
                                                           {"\\H", false}})
    EXPECT_EQ(CommenceEnTitre(bloc), titre) << bloc;

  IndexDeTest grand(std::vector<BlocEtat>(10000, BlocEtat{13}));  // more than is read in one go
  const auto pages = PagineEtat(grand, mesures, 20);
  ASSERT_TRUE(pages);
  ASSERT_EQ(pages->size(), 10002u);
  for (u32 n = 1; n < pages->size(); ++n) ASSERT_EQ((*pages)[n].fin, 10 * (n - 1));

  IndexDeTest index(std::vector<BlocEtat>{{1}});
  index.casse = true;
  EXPECT_FALSE(PagineEtat(index, mesures, 20));
}

}  // namespace
}  // namespace fenlor

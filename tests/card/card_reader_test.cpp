#include "card/card_reader.h"

#include <gtest/gtest.h>

#include "card_fixture.h"

using cardtest::Wide;

namespace {

std::vector<std::wstring> Describe(const std::vector<KrmCardFile>& entries, const std::wstring& root) {
  std::vector<std::wstring> out;
  for (const auto& e : entries) {
    out.push_back(L"<root>" + e.GetPath().substr(root.size()) + L" | " + e.GetFileName() + L" | " + e.GetShowName() +
                  L" | " + e.GetType());
  }
  return out;
}

}  // namespace

TEST(KrmCardReader, ListsFoldersAndTemplatesDepthFirst) {
  tabulon::test::ScratchDir dir;
  const std::wstring root = Wide(dir.path());
  std::filesystem::create_directories(dir / "机加" / "深");
  std::filesystem::create_directories(dir / "empty");
  std::filesystem::create_directories(dir / ".hidden");
  cardtest::WriteProcessCard(root + L"/机加");
  cardtest::ProcessTable(L"deep", 4).OutputTable(root + L"/机加/深/deep.tbl");
  cardtest::ProcessTable(L"h", 4).OutputTable(root + L"/.hidden/h.tbl");
  tabulon::test::writeFile(dir / "broken.crd", "{");
  tabulon::test::writeFile(dir / "UPPER.TBL", "x");

  KrmCardReader reader;
  ASSERT_EQ(reader.Load(root + L"/"), 1);
  std::vector<KrmCardFile> cards, tables;
  reader.GetCardTree(cards);
  reader.GetTblTree(tables);
  EXPECT_EQ(Describe(cards, root), (std::vector<std::wstring>{
                                       L"<root> | empty | empty | ",
                                       L"<root> | 机加 | 机加 | ",
                                       L"<root> | broken | broken | .crd",
                                       L"<root>/机加 | 深 | 深 | ",
                                       L"<root>/机加 | card | 机加工艺卡 | .crd",
                                   }));
  EXPECT_EQ(Describe(tables, root), (std::vector<std::wstring>{
                                        L"<root> | empty | empty | ",
                                        L"<root> | 机加 | 机加 | ",
                                        L"<root>/机加 | 深 | 深 | ",
                                        L"<root>/机加 | first | first 工艺卡 | .tbl",
                                        L"<root>/机加 | next | next 工艺卡 | .tbl",
                                        L"<root>/机加/深 | deep | deep 工艺卡 | .tbl",
                                    }));
  KrmCardAttributes card;
  ASSERT_EQ(card.InitCard(root + L"/机加/card"), 1);
  EXPECT_EQ(cards[4].GetID(), card.getID());
  EXPECT_EQ(cards[2].GetID(), L"");

  EXPECT_EQ(reader.Load(root + L"/nowhere"), 0);
  reader.GetCardTree(cards);
  EXPECT_TRUE(cards.empty());
}

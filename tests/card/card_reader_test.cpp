#include "card/card_reader.h"

#include <gtest/gtest.h>

#include "card_fixture.h"

using cardtest::Wide;
using tabulon::test::ScratchDir;
using tabulon::test::writeFile;

namespace {

std::vector<std::wstring> Describe(const std::vector<KrmCardFile>& entries, const std::wstring& root) {
  std::vector<std::wstring> out;
  for (const auto& e : entries) {
    std::wstring path = e.GetPath();
    path.replace(0, root.size(), L"<root>");
    out.push_back(path + L" | " + e.GetFileName() + L" | " + e.GetShowName() + L" | " + e.GetType());
  }
  return out;
}

}  // namespace

TEST(KrmCardReader, ListsFoldersAndTemplatesDepthFirst) {
  ScratchDir dir;
  const std::wstring root = Wide(dir.path());
  std::filesystem::create_directories(dir / "机加" / "深");
  std::filesystem::create_directories(dir / "empty");
  std::filesystem::create_directories(dir / ".hidden");
  cardtest::WriteProcessCard(root + L"/机加");
  cardtest::ProcessTable(L"deep", 4).OutputTable(root + L"/机加/深/deep.tbl");
  writeFile(dir / "broken.crd", "{");
  writeFile(dir / "drawing.dwg", "x");
  writeFile(dir / "UPPER.TBL", "x");
  cardtest::ProcessTable(L"h", 4).OutputTable(root + L"/.hidden/h.tbl");

  KrmCardReader reader;
  ASSERT_EQ(reader.Load(root + L"/"), 1);
  std::vector<KrmCardFile> cards, tables;
  reader.GetCardTree(cards);
  reader.GetTblTree(tables);

  const std::vector<std::wstring> expectedCards{
      L"<root> | empty | empty | ",
      L"<root> | 机加 | 机加 | ",
      L"<root> | broken | broken | .crd",
      L"<root>/机加 | 深 | 深 | ",
      L"<root>/机加 | card | 机加工艺卡 | .crd",
  };
  EXPECT_EQ(Describe(cards, root), expectedCards);
  const std::vector<std::wstring> expectedTables{
      L"<root> | empty | empty | ",
      L"<root> | 机加 | 机加 | ",
      L"<root>/机加 | 深 | 深 | ",
      L"<root>/机加 | first | first 工艺卡 | .tbl",
      L"<root>/机加 | next | next 工艺卡 | .tbl",
      L"<root>/机加/深 | deep | deep 工艺卡 | .tbl",
  };
  EXPECT_EQ(Describe(tables, root), expectedTables);
}

TEST(KrmCardReader, CarriesTheTemplateIdsForLookup) {
  ScratchDir dir;
  const std::wstring root = Wide(dir.path());
  cardtest::WriteProcessCard(root);
  KrmCardAttributes card;
  ASSERT_EQ(card.InitCard(root + L"/card.crd"), 1);

  KrmCardReader reader;
  ASSERT_EQ(reader.Load(root), 1);
  std::vector<KrmCardFile> cards;
  reader.GetCardTree(cards);
  ASSERT_EQ(cards.size(), 1u);
  EXPECT_EQ(cards[0].GetID(), card.getID());
  EXPECT_EQ(cards[0].GetPath() + L"/" + cards[0].GetFileName(), root + L"/card");
}

TEST(KrmCardReader, AMissingFolderGivesEmptyListings) {
  ScratchDir dir;
  KrmCardReader reader;
  cardtest::WriteProcessCard(Wide(dir.path()));
  ASSERT_EQ(reader.Load(Wide(dir.path())), 1);
  EXPECT_EQ(reader.Load(Wide(dir / "nowhere")), 0);
  std::vector<KrmCardFile> cards{KrmCardFile()};
  reader.GetCardTree(cards);
  EXPECT_TRUE(cards.empty());
}

#include "drawing/card_lookup.h"

#include <gtest/gtest.h>

#include "card/card_attributes.h"
#include "drawing/card_tag.h"
#include "host/svc/krm_card_root.h"
#include "records_test_support.h"
#include "support/test_support.h"

namespace {

TEST(CardLookup, PickedEntityLeadsToItsTemplateCodeAndClass) {
  tabulon::test::ScratchDir library;
  std::filesystem::create_directories(library / "machining");
  KrmCardAttributes card;
  card.setCardName(L"turning", L"车削卡");
  card.setID(L"id-turning");
  ASSERT_EQ(card.OutputCard((library / "machining" / "turning.crd").wstring()), 1);
  const std::wstring previousRoot = KrmCardRoot();
  KrmSetCardRoot(library.path().wstring());

  QaDbDatabase db;
  auto ref = std::make_unique<QaDbBlockReference>(QaGePoint3d(), recordstest::addBlock(db, L"tbl42_ROW", {}));
  auto line = std::make_unique<QaDbLine>();
  WriteCardTagOfEntity(ref.get(), KrmCardTag{L"id-turning", L"ABCDEFGH"});
  WriteCardTagOfEntity(line.get(), KrmCardTag{L"id-elsewhere", L"ABCDEFGH"});
  const QaDbObjectId picked = recordstest::addToModelSpace(db, std::move(ref));
  const QaDbObjectId foreign = recordstest::addToModelSpace(db, std::move(line));

  std::wstring path, code, blockName;
  const int found = IdentifyPickedEntity(picked, path, code, blockName);
  const std::wstring foundPath = path, foundClass = blockName;
  const int notFound = IdentifyPickedEntity(foreign, path, code, blockName);
  KrmSetCardRoot(previousRoot);

  EXPECT_EQ(found, 1);
  EXPECT_EQ(foundPath, (library / "machining" / "turning.crd").wstring());
  EXPECT_EQ(foundClass, L"ROW");
  EXPECT_EQ(code, L"ABCDEFGH");
  EXPECT_EQ(notFound, 0);
  EXPECT_EQ(path, L"");
}

}  // namespace

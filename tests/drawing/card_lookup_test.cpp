#include "drawing/card_lookup.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "card/card_attributes.h"
#include "drawing/card_tag.h"
#include "host/svc/krm_card_root.h"
#include "records_test_support.h"
#include "support/test_support.h"

namespace {

using recordstest::addBlock;
using recordstest::addToModelSpace;
using recordstest::makeRef;

// A library with two cards, one of them in a sub-folder, as the card root for the test.
class CardLookup : public ::testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directories(library.path() / "machining");
    WriteCard(library.path().wstring(), L"plain", L"id-plain");
    WriteCard((library.path() / "machining").wstring(), L"turning", L"id-turning");
    previousRoot = KrmCardRoot();
    KrmSetCardRoot(library.path().wstring());
  }
  void TearDown() override { KrmSetCardRoot(previousRoot); }

  static void WriteCard(const std::wstring& folder, const std::wstring& name, const std::wstring& id) {
    KrmCardAttributes card;
    card.setCardName(name, name);
    card.setID(id);
    card.addTblFile(L"first");
    card.addTblFile(L"next");
    ASSERT_EQ(card.OutputCard(folder + L"/" + name + L".crd"), 1);
  }

  QaDbObjectId Tagged(QaDbDatabase& db, std::unique_ptr<QaDbEntity> entity, const std::wstring& cardId) {
    KrmCardTag tag;
    tag.cardId = cardId;
    tag.cardCode = L"ABCDEFGH";
    WriteCardTagOfEntity(entity.get(), tag);
    return addToModelSpace(db, std::move(entity));
  }

  tabulon::test::ScratchDir library;
  std::wstring previousRoot;
};

TEST_F(CardLookup, FindsTheTemplateByIdAnywhereInTheLibrary) {
  EXPECT_EQ(FindCardPathById(L"id-turning"), (library.path() / "machining" / "turning.crd").wstring());
  EXPECT_EQ(FindCardPathById(L"id-plain"), (library.path() / "plain.crd").wstring());
  EXPECT_EQ(FindCardPathById(L"id-unknown"), L"");
  EXPECT_EQ(FindCardPathById(L""), L"");
}

TEST_F(CardLookup, PickedReferenceGivesTemplateCodeAndClass) {
  QaDbDatabase db;
  const QaDbObjectId block = addBlock(db, L"tbl42_ROW", {});
  const QaDbObjectId ref = Tagged(db, makeRef(block, {0, 0, 0}), L"id-turning");
  std::wstring path, code, blockName;
  ASSERT_EQ(IdentifyPickedEntity(ref, path, code, blockName), 1);
  EXPECT_EQ(path, (library.path() / "machining" / "turning.crd").wstring());
  EXPECT_EQ(code, L"ABCDEFGH");
  EXPECT_EQ(blockName, L"ROW");

  const QaDbObjectId line = Tagged(db, std::make_unique<QaDbLine>(), L"id-plain");
  ASSERT_EQ(IdentifyPickedEntity(line, path, code, blockName), 1);
  EXPECT_EQ(blockName, L"");
}

TEST_F(CardLookup, EntitiesOfNoKnownCardAreRefused) {
  QaDbDatabase db;
  std::wstring path, code, blockName = L"stale";
  const QaDbObjectId untagged = addToModelSpace(db, std::make_unique<QaDbLine>());
  EXPECT_EQ(IdentifyPickedEntity(untagged, path, code, blockName), 0);
  EXPECT_EQ(blockName, L"");
  const QaDbObjectId foreign = Tagged(db, std::make_unique<QaDbLine>(), L"id-of-another-library");
  EXPECT_EQ(IdentifyPickedEntity(foreign, path, code, blockName), 0);
  EXPECT_EQ(IdentifyPickedEntity(QaDbObjectId(), path, code, blockName), 0);
}

}  // namespace

#include "drawing/page_group.h"

#include <gtest/gtest.h>

#include "host/db/qadb_dictionary.h"
#include "host/db/qadb_group.h"
#include "host/db/qadb_line.h"
#include "records_test_support.h"

namespace {

using recordstest::addToModelSpace;

QaDbObjectId AddLine(QaDbDatabase& db, double y) {
  return addToModelSpace(db, std::make_unique<QaDbLine>(QaGePoint3d(0, y, 0), QaGePoint3d(10, y, 0)));
}

TEST(PageGroup, MakesAnAnonymousTaggedGroupOfThePage) {
  QaDbDatabase db;
  const std::vector<QaDbObjectId> ids = {AddLine(db, 0), AddLine(db, 1), AddLine(db, 2)};
  KrmCardTag tag;
  tag.cardId = L"card-id";
  tag.cardCode = L"00112233";
  tag.pageStep = 2;

  const QaDbObjectId groupId = MakePageGroup(ids, tag, 3, &db);
  ASSERT_FALSE(groupId.isNull());
  QaDbObjectPointer<QaDbGroup> group(groupId, QaDb::kForRead);
  ASSERT_TRUE(group);
  EXPECT_TRUE(group->isAnonymous());
  EXPECT_EQ(group->allEntityIds(), ids);
  EXPECT_EQ(group->name().substr(0, 2), L"*A");

  KrmCardTag read;
  ReadCardTagOfGroup(group.object(), read);
  EXPECT_EQ(read.cardCode, L"00112233");
  EXPECT_EQ(read.pageStep, 2);
  EXPECT_EQ(read.entityIndex, 3);

  QaDbDictionary* groups = nullptr;
  ASSERT_EQ(db.getGroupDictionary(groups, QaDb::kForRead), Qa::eOk);
  EXPECT_TRUE(groups->has(groupId));
  groups->close();
}

TEST(PageGroup, EachPageGetsItsOwnGroupAndNothingStaysOpen) {
  QaDbDatabase db;
  const QaDbObjectId first = MakePageGroup({AddLine(db, 0)}, KrmCardTag(), 0, &db);
  const QaDbObjectId second = MakePageGroup({AddLine(db, 1)}, KrmCardTag(), 1, &db);
  EXPECT_NE(first, second);
  EXPECT_FALSE(first.rawObject()->isOpen());
  EXPECT_FALSE(second.rawObject()->isOpen());
}

TEST(PageGroup, EntityFindsEveryGroupThatHoldsIt) {
  QaDbDatabase db;
  const QaDbObjectId shared = AddLine(db, 0);
  const QaDbObjectId alone = AddLine(db, 1);
  const QaDbObjectId g1 = MakePageGroup({shared}, KrmCardTag(), 0, &db);
  const QaDbObjectId g2 = MakePageGroup({shared, alone}, KrmCardTag(), 1, &db);

  std::vector<QaDbObjectId> found = {QaDbObjectId()};  // results are appended
  EXPECT_TRUE(GroupsOfEntity(shared, found));
  EXPECT_EQ(found, (std::vector<QaDbObjectId>{QaDbObjectId(), g1, g2}));

  std::vector<QaDbObjectId> none;
  EXPECT_FALSE(GroupsOfEntity(AddLine(db, 2), none));
  EXPECT_FALSE(GroupsOfEntity(QaDbObjectId(), none));
  EXPECT_TRUE(none.empty());
}

}  // namespace

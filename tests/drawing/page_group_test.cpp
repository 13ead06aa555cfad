#include "drawing/page_group.h"

#include <gtest/gtest.h>

#include "records_test_support.h"

namespace {

using recordstest::addLine;

TEST(PageGroup, PageGroupIsAnonymousTaggedAndFoundFromItsMembers) {
  QaDbDatabase db;
  const QaDbObjectId shared = addLine(db, 0, 0, 1, 0), alone = addLine(db, 0, 1, 1, 1);
  KrmCardTag tag;
  tag.cardCode = L"00112233";
  const QaDbObjectId first = MakePageGroup({shared}, tag, 0, &db);
  const QaDbObjectId second = MakePageGroup({shared, alone}, tag, 1, &db);
  ASSERT_FALSE(second.isNull());
  EXPECT_NE(first, second);
  EXPECT_FALSE(second.rawObject()->isOpen());  // the maker leaves nothing open

  QaDbObjectPointer<QaDbGroup> group(second, QaDb::kForRead);
  EXPECT_TRUE(group->isAnonymous());
  EXPECT_EQ(group->name().substr(0, 2), L"*A");
  EXPECT_EQ(group->allEntityIds(), (std::vector<QaDbObjectId>{shared, alone}));
  KrmCardTag read;
  ReadCardTagOfGroup(group.object(), read);
  EXPECT_EQ(read.cardCode, L"00112233");
  EXPECT_EQ(read.entityIndex, 1);

  std::vector<QaDbObjectId> found = {QaDbObjectId()};  // results are appended
  EXPECT_TRUE(GroupsOfEntity(shared, found));
  EXPECT_EQ(found, (std::vector<QaDbObjectId>{QaDbObjectId(), first, second}));
  std::vector<QaDbObjectId> none;
  EXPECT_FALSE(GroupsOfEntity(addLine(db, 0, 2, 1, 2), none));
}

}  // namespace

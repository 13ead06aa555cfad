#include "drawing/card_tag.h"

#include <gtest/gtest.h>

#include "host/db/qadb_group.h"
#include "host/db/qadb_line.h"

namespace {

const KrmCardTag kTag{L"9f3a", L"12345678", 1, 7, 2, 5, 3, 0};

TEST(CardTag, EachRecordReadsBackWithItsOwnReader) {
  QaDbLine line;
  QaDbGroup group;
  WriteCardTagOfEntity(&line, kTag);
  WriteCardTagOfGroup(&group, kTag, 4);

  KrmCardTag entity{L"x", L"y", 9, 9, 9, 9, 9, 9};  // readers start from the defaults
  ReadCardTagOfEntity(&line, entity);
  EXPECT_EQ(entity, (KrmCardTag{L"9f3a", L"12345678", 1, 7, 1, 1, 1, 0}));
  KrmCardTag page;
  ReadCardTagOfGroup(&group, page);
  EXPECT_EQ(page, (KrmCardTag{L"9f3a", L"12345678", 0, 4, 2, 5, 3, 1}));
}

TEST(CardTag, ReadersOfTheOtherLayoutMisreadTheItems) {
  QaDbLine line;
  QaDbGroup group;
  WriteCardTagOfEntity(&line, kTag);
  WriteCardTagOfGroup(&group, kTag, 4);
  KrmCardTag read;
  ReadCardTagOfEntity(&group, read);
  EXPECT_EQ(read, (KrmCardTag{L"9f3a", L"12345678", 4, 2, 1, 1, 1, 5}));
  ReadCardTagOfGroup(&line, read);  // item 1005 does not exist on entities
  EXPECT_EQ(read, (KrmCardTag{L"9f3a", L"12345678", 0, 1, 7, 0, 1, 1}));
}

TEST(CardTag, TaggingKeepsTheFirstWriterAndNumbersRows) {
  QaDbLine bare, side, row0, row1;
  side.setXData(kKrmCardTagApp, {});  // marked, no items: counts as tagged
  EXPECT_TRUE(HasCardTag(&side));
  EXPECT_FALSE(HasCardTag(&bare));

  KrmCardTag tag;
  tag.entityIndex = 42;
  TagListIfFree({&bare, &side}, {&row0, nullptr, &row1}, tag);
  KrmCardTag read;
  ReadCardTagOfEntity(&bare, read);
  EXPECT_EQ(read.entityKind, 0);
  EXPECT_EQ(read.entityIndex, 42);
  ReadCardTagOfEntity(&row1, read);
  EXPECT_EQ(read.entityKind, 1);
  EXPECT_EQ(read.entityIndex, 2);
  ReadCardTagOfEntity(&side, read);
  EXPECT_EQ(read, KrmCardTag());
}

}  // namespace

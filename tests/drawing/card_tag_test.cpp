#include "drawing/card_tag.h"

#include <gtest/gtest.h>

#include "drawing/cell_xdata.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_group.h"
#include "host/db/qadb_line.h"

namespace {

KrmCardTag SampleTag() {
  KrmCardTag tag;
  tag.cardId = L"9f3a";
  tag.cardCode = L"12345678";
  tag.entityKind = 1;
  tag.entityIndex = 7;
  tag.pageStep = 2;
  tag.pageStartSum = 5;
  tag.pageStartCur = 3;
  tag.recordHead = 0;
  return tag;
}

TEST(CardTag, EntityRecordReadsBackWithTheEntityReader) {
  QaDbLine line;
  WriteCardTagOfEntity(&line, SampleTag());
  KrmCardTag read;
  read.pageStep = 99;  // the reader starts from the defaults
  ASSERT_EQ(ReadCardTagOfEntity(&line, read), 1);
  KrmCardTag expected = SampleTag();
  expected.pageStep = expected.pageStartSum = expected.pageStartCur = 1;
  EXPECT_EQ(read, expected);

  // The items go in the documented order and numbering.
  KR_QRXAppXdata xdata(kKrmCardTagApp);
  xdata.getXdata(&line);
  EXPECT_EQ(xdata.itemNumbers(), (std::vector<int>{1001, 1002, 1003, 1004, 1501}));
}

TEST(CardTag, GroupRecordReadsBackWithTheGroupReader) {
  QaDbGroup group;
  WriteCardTagOfGroup(&group, SampleTag(), 4);
  KrmCardTag read;
  ASSERT_EQ(ReadCardTagOfGroup(&group, read), 1);
  EXPECT_EQ(read.cardId, L"9f3a");
  EXPECT_EQ(read.cardCode, L"12345678");
  EXPECT_EQ(read.pageStep, 2);
  EXPECT_EQ(read.pageStartSum, 5);
  EXPECT_EQ(read.pageStartCur, 3);
  EXPECT_EQ(read.entityIndex, 4);  // the page index
  EXPECT_EQ(read.entityKind, 0);
  EXPECT_EQ(read.recordHead, 1);
}

TEST(CardTag, ReadersOfTheOtherLayoutMisreadTheItems) {
  QaDbGroup group;
  WriteCardTagOfGroup(&group, SampleTag(), 4);
  KrmCardTag asEntity;
  ReadCardTagOfEntity(&group, asEntity);
  EXPECT_EQ(asEntity.entityKind, 4);   // the page index taken as kind
  EXPECT_EQ(asEntity.entityIndex, 2);  // the page step taken as index
  EXPECT_EQ(asEntity.recordHead, 5);

  QaDbLine line;
  WriteCardTagOfEntity(&line, SampleTag());
  KrmCardTag asGroup;
  ReadCardTagOfGroup(&line, asGroup);
  EXPECT_EQ(asGroup.pageStep, 7);
  EXPECT_EQ(asGroup.pageStartSum, 0);
  EXPECT_EQ(asGroup.pageStartCur, 1);  // item 1005 does not exist on entities
  EXPECT_EQ(asGroup.entityIndex, 1);
}

TEST(CardTag, MissingOrEmptyRecordReadsAsDefaults) {
  QaDbLine bare;
  KrmCardTag tag = SampleTag();
  ReadCardTagOfEntity(&bare, tag);
  EXPECT_EQ(tag, KrmCardTag());
  EXPECT_FALSE(HasCardTag(&bare));

  // A side drawing's entity: the application with no items counts as tagged.
  bare.setXData(kKrmCardTagApp, {});
  EXPECT_TRUE(HasCardTag(&bare));
  ReadCardTagOfGroup(&bare, tag);
  EXPECT_EQ(tag, KrmCardTag());
}

TEST(CardTag, TaggingListsKeepsTheFirstWriterAndNumbersRows) {
  QaDbLine other, taken, row0, row1;
  KrmCardTag first = SampleTag();
  first.cardCode = L"FIRST___";
  WriteCardTagOfEntity(&taken, first);

  KrmCardTag tag;
  tag.cardCode = L"SECOND__";
  tag.entityIndex = 42;
  TagListIfFree({&other, &taken}, {&row0, nullptr, &row1}, tag);

  KrmCardTag read;
  ReadCardTagOfEntity(&other, read);
  EXPECT_EQ(read.cardCode, L"SECOND__");
  EXPECT_EQ(read.entityKind, 0);
  EXPECT_EQ(read.entityIndex, 42);  // untouched for plain entities
  ReadCardTagOfEntity(&taken, read);
  EXPECT_EQ(read.cardCode, L"FIRST___");
  ReadCardTagOfEntity(&row1, read);
  EXPECT_EQ(read.entityKind, 1);
  EXPECT_EQ(read.entityIndex, 2);  // its index in the row list
}

TEST(CardTag, TaggingSortsRestartsTheIndexPerEntry) {
  QaDbBlockReference a0, a1, b0;
  KrmCardTag preset;
  preset.entityIndex = 9;
  WriteCardTagOfEntity(&a0, preset);
  std::vector<KrmDataSort> sorts(2);
  sorts[0].refs = {&a0, &a1};
  sorts[1].refs = {&b0};
  KrmCardTag tag;
  tag.entityKind = 1;
  TagPagesIfFree(sorts, tag);
  KrmCardTag read;
  ReadCardTagOfEntity(&a0, read);
  EXPECT_EQ(read.entityIndex, 9);
  ReadCardTagOfEntity(&a1, read);
  EXPECT_EQ(read.entityIndex, 1);
  EXPECT_EQ(read.entityKind, 0);
  ReadCardTagOfEntity(&b0, read);
  EXPECT_EQ(read.entityIndex, 0);
}

}  // namespace

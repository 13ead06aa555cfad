#include "drawing/page_reader.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "cell_test_support.h"
#include "drawing/block_texts.h"
#include "drawing/card_tag.h"
#include "host/db/qadb_circle.h"
#include "host/db/qadb_group.h"
#include "host/db/qadb_line.h"

namespace {

using tabulon::test::addBlock;
using tabulon::test::appendToModelSpace;
using tabulon::test::makeReference;

// A drawing with cards placed the way generation leaves them: each page a group of
// lines, a title block, a header block of another class, and row blocks in scrambled
// order, every entity tagged, the group tagged with its page.
class PageReader : public ::testing::Test {
 protected:
  void SetUp() override {
    rowBlock = addBlock(db, L"T01_ROW", {{L"序号", {0, 0, 0}}, {L"名称", {10, 0, 0}}, {L"数量", {40, 0, 0}}});
    headBlock = addBlock(db, L"T01_HEAD", {{L"图号", {0, 0, 0}}});
    titleBlock = addBlock(db, L"FRAME", {{L"TITLE", {0, 0, 0}}});
  }

  KrmCardTag tagOf(const std::wstring& code, int index, int head = 1) const {
    KrmCardTag tag;
    tag.cardId = L"card-id";
    tag.cardCode = code;
    tag.entityIndex = index;
    tag.recordHead = head;
    return tag;
  }

  QaDbObjectId addTagged(std::unique_ptr<QaDbEntity> entity, const KrmCardTag& tag) {
    WriteCardTagOfEntity(entity.get(), tag);
    return appendToModelSpace(db, std::move(entity));
  }

  QaDbObjectId addRow(const std::wstring& code, int page, int index, int head = 1) {
    const std::wstring n = std::to_wstring(page) + L"." + std::to_wstring(index);
    return addTagged(makeReference(rowBlock, {double(index) * 10, 100.0 - index * 8, 0},
                                   {{L"序号", n}, {L"名称", L"螺栓" + n}, {L"数量", L"2"}, {L"备注", L"x"}}),
                     tagOf(code, index, head));
  }

  QaDbObjectId makeGroup(const std::vector<QaDbObjectId>& ids, const std::wstring& code, int page) {
    QaDbDictionary* groups = nullptr;
    EXPECT_EQ(db.getGroupDictionary(groups, QaDb::kForWrite), Qa::eOk);
    QaDbObjectId id;
    auto group = std::make_unique<QaDbGroup>();
    QaDbGroup* raw = group.get();
    EXPECT_EQ(groups->setAt(L"*A", std::move(group), id), Qa::eOk);
    groups->close();
    raw->setAnonymous();
    raw->append(ids);
    WriteCardTagOfGroup(raw, tagOf(code, 0), page);
    raw->close();
    return id;
  }

  // One page of card `code`: rows with the given indexes, in that order of appending.
  QaDbObjectId addPage(const std::wstring& code, int page, const std::vector<int>& rowOrder,
                       std::vector<QaDbObjectId>* rows = nullptr, std::vector<QaDbObjectId>* others = nullptr) {
    std::vector<QaDbObjectId> ids;
    ids.push_back(addTagged(std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(297, 0, 0)), tagOf(code, 0)));
    ids.push_back(addTagged(makeReference(titleBlock, {200, 10, 0}, {{L"TITLE", L"工艺卡"}}), tagOf(code, 0)));
    ids.push_back(addTagged(makeReference(headBlock, {0, 150, 0}, {{L"图号", L"DWG-" + code}}), tagOf(code, 0)));
    if (others) others->insert(others->end(), ids.begin(), ids.begin() + 2);
    for (int index : rowOrder) {
      ids.push_back(addRow(code, page, index));
      if (rows) rows->push_back(ids.back());
    }
    return makeGroup(ids, code, page);
  }

  static KrmPlacedCard cardShape(const std::wstring& code) {
    KrmPlacedCard card;
    card.cardCode = code;
    card.baseBlockName = L"ROW";
    card.baseColNames = {L"序号", L"名称", L"数量"};
    card.baseFillOrder = 1;
    card.otherGrids = {KrmLoadGrid{L"HEAD", {L"图号"}, 0}};
    return card;
  }

  QaDbDatabase db;
  QaDbObjectId rowBlock, headBlock, titleBlock;
};

TEST_F(PageReader, ReadsPagesInOrderWithRowsInOrderAndClassesFiled) {
  std::vector<QaDbObjectId> rows1, others1;
  addPage(L"00112233", 1, {2, 0, 1}, &rows1, &others1);
  addPage(L"00112233", 0, {1, 0});
  addPage(L"99999999", 0, {0});  // another card
  addPage(L"00112233", 2, {0});

  KrmPlacedCard card = cardShape(L"00112233");
  EXPECT_EQ(ReadPageGroups(db, L"00112233", card), 3);
  ASSERT_EQ(card.pages.size(), 3u);
  for (int p = 0; p < 3; ++p) EXPECT_EQ(card.pages[p].pageIndex, p);

  const KrmLoadGroup& page = card.pages[1];
  EXPECT_EQ(page.blockName, L"ROW");
  EXPECT_EQ(page.fillOrder, 1);
  EXPECT_EQ(page.allIds.size(), 6u);
  ASSERT_EQ(page.refs.size(), 3u);
  for (int r = 0; r < 3; ++r) {
    EXPECT_EQ(page.refs[r].rowIndex, r);
    EXPECT_EQ(page.refs[r].recordHead, 1);
    EXPECT_TRUE(page.refs[r].position.isEqualTo(QaGePoint3d()));
    const std::wstring n = L"1." + std::to_wstring(r);
    // Texts follow the class's columns; the extra attribute "备注" is not read.
    EXPECT_EQ(page.refs[r].texts, (std::vector<std::wstring>{n, L"螺栓" + n, L"2"}));
  }
  // Appended as rows 2, 0, 1.
  EXPECT_EQ(page.refs[0].refId, rows1[1]);
  EXPECT_EQ(page.refs[1].refId, rows1[2]);
  EXPECT_EQ(page.refs[2].refId, rows1[0]);
  // The header block is filed under its class through the prefixed name; the line and
  // the frame's title block belong to no class.
  ASSERT_EQ(page.otherClasses.size(), 1u);
  EXPECT_EQ(page.otherClasses[0].blockName, L"HEAD");
  ASSERT_EQ(page.otherClasses[0].refs.size(), 1u);
  EXPECT_EQ(page.otherClasses[0].refs[0].texts, (std::vector<std::wstring>{L"DWG-00112233"}));
  EXPECT_EQ(page.otherIds, others1);
}

TEST_F(PageReader, DropsPagesWhoseEntitiesAreErasedAndFindsNothingForAnUnknownCode) {
  addPage(L"ABCDEFGH", 0, {0, 1});
  const QaDbObjectId second = addPage(L"ABCDEFGH", 1, {0});
  std::vector<QaDbObjectId> members;
  {
    QaDbObjectPointer<QaDbGroup> group(second, QaDb::kForRead);
    ASSERT_TRUE(group);
    members = group->allEntityIds();
  }
  ASSERT_EQ(members.size(), 4u);
  for (const QaDbObjectId& id : members) {
    QaDbObjectPointer<QaDbEntity> e(id, QaDb::kForWrite);
    ASSERT_TRUE(e);
    ASSERT_EQ(e->erase(), Qa::eOk);
  }
  KrmPlacedCard card = cardShape(L"ABCDEFGH");
  EXPECT_EQ(ReadPageGroups(db, L"ABCDEFGH", card), 1);
  ASSERT_EQ(card.pages.size(), 1u);
  EXPECT_EQ(card.pages[0].pageIndex, 0);

  KrmPlacedCard none = cardShape(L"NOSUCH00");
  EXPECT_EQ(ReadPageGroups(db, L"NOSUCH00", none), 0);
  EXPECT_TRUE(none.pages.empty());
  // A group without a card record is no page, even for an empty code.
  QaDbObjectId line = appendToModelSpace(db, std::make_unique<QaDbLine>(QaGePoint3d(), QaGePoint3d(1, 1, 0)));
  {
    QaDbDictionary* groups = nullptr;
    ASSERT_EQ(db.getGroupDictionary(groups, QaDb::kForWrite), Qa::eOk);
    QaDbObjectId id;
    auto group = std::make_unique<QaDbGroup>();
    QaDbGroup* raw = group.get();
    ASSERT_EQ(groups->setAt(L"PLAIN", std::move(group), id), Qa::eOk);
    groups->close();
    raw->append(line);
    raw->close();
  }
  KrmPlacedCard empty = cardShape(L"");
  EXPECT_EQ(ReadPageGroups(db, L"", empty), 0);
}

TEST_F(PageReader, OverflowRowsKeepTheirRecordHeadAndUntaggedBlocksReadAsRowZero) {
  std::vector<QaDbObjectId> ids;
  ids.push_back(addRow(L"C0DE0000", 0, 1, 0));
  ids.push_back(addRow(L"C0DE0000", 0, 0));
  ids.push_back(appendToModelSpace(db, makeReference(rowBlock, {0, 0, 0}, {{L"名称", L"no tag"}})));
  makeGroup(ids, L"C0DE0000", 0);
  KrmPlacedCard card = cardShape(L"C0DE0000");
  ASSERT_EQ(ReadPageGroups(db, L"C0DE0000", card), 1);
  const std::vector<KrmLoadAtt>& refs = card.pages[0].refs;
  ASSERT_EQ(refs.size(), 3u);
  // Equal row indexes keep the group's order.
  EXPECT_EQ(refs[0].refId, ids[1]);
  EXPECT_EQ(refs[1].refId, ids[2]);
  EXPECT_EQ(refs[1].texts, (std::vector<std::wstring>{L"", L"no tag", L""}));
  EXPECT_EQ(refs[2].refId, ids[0]);
  EXPECT_EQ(refs[2].recordHead, 0);
}

TEST_F(PageReader, SortsReadBackRowsByFillOrderCodesZeroToThree) {
  // A 2 x 2 grid of references; the upper row stands 0.9 off level, still one row.
  KrmLoadTAtt cls;
  const QaGePoint3d points[] = {{50, 0, 0}, {0, 10.9, 0}, {0, 0, 0}, {50, 10, 0}};
  for (int i = 0; i < 4; ++i) {
    KrmLoadAtt a;
    a.rowIndex = i;
    a.position = points[i];
    cls.refs.push_back(a);
  }
  auto order = [](const KrmLoadTAtt& c) {
    std::vector<int> out;
    for (const KrmLoadAtt& a : c.refs) out.push_back(a.rowIndex);
    return out;
  };
  struct Case {
    int code;
    std::vector<int> expected;
  };
  for (const Case& c : {Case{0, {1, 2, 3, 0}}, Case{1, {1, 3, 2, 0}}, Case{2, {2, 1, 0, 3}}, Case{3, {2, 0, 1, 3}},
                        Case{4, {0, 1, 2, 3}}, Case{-1, {0, 1, 2, 3}}}) {
    KrmLoadTAtt copy = cls;
    EXPECT_EQ(SortLoadAttsByOrder(copy, c.code), 1);
    EXPECT_EQ(order(copy), c.expected) << "code " << c.code;
  }
  KrmLoadTAtt empty;
  EXPECT_EQ(SortLoadAttsByOrder(empty, 1), 0);
}

TEST_F(PageReader, ReadCellBlockFilesByNameAndClearAttributesEmptiesEveryText) {
  KrmLoadGroup page;
  page.blockName = L"ROW";
  page.colNames = {L"名称", L"名称", L"缺少"};
  page.otherClasses.push_back(KrmLoadTAtt{L"HEAD", {}, {}, {L"图号"}, 0});
  const QaDbObjectId row = appendToModelSpace(db, makeReference(rowBlock, {}, {{L"名称", L"垫圈"}}));
  const QaDbObjectId head = appendToModelSpace(db, makeReference(headBlock, {}, {{L"图号", L"A-1"}}));
  const QaDbObjectId title = appendToModelSpace(db, makeReference(titleBlock, {}, {{L"TITLE", L"T"}}));
  for (const QaDbObjectId& id : {row, head, title}) {
    QaDbObjectPointer<QaDbBlockReference> ref(id, QaDb::kForRead);
    ASSERT_TRUE(ref);
    EXPECT_EQ(ReadCellBlock(*ref, page), id == title ? 0 : 1);
  }
  ASSERT_EQ(page.refs.size(), 1u);
  // Two columns of one name both get the text; a column without attribute gets "".
  EXPECT_EQ(page.refs[0].texts, (std::vector<std::wstring>{L"垫圈", L"垫圈", L""}));
  EXPECT_EQ(page.otherClasses[0].refs.size(), 1u);
  EXPECT_EQ(page.otherIds, std::vector<QaDbObjectId>{title});

  EXPECT_EQ(ClearAttributes(row), 1);
  EXPECT_EQ(ClearAttributes(QaDbObjectId()), 0);
  QaDbObjectPointer<QaDbBlockReference> ref(row, QaDb::kForRead);
  EXPECT_EQ(ReadBlockTexts(*ref, std::vector<std::wstring>{L"名称"}), std::vector<std::wstring>{L""});
}

}  // namespace

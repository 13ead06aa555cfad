#include "drawing/page_reader.h"

#include <gtest/gtest.h>

#include "cell_test_support.h"
#include "drawing/block_texts.h"
#include "drawing/card_tag.h"
#include "host/db/qadb_group.h"
#include "host/db/qadb_line.h"

namespace {

using tabulon::test::addBlock;
using tabulon::test::makeReference;
using Ids = std::vector<QaDbObjectId>;
using Texts = std::vector<std::wstring>;

// Cards placed as generation leaves them: per page a group holding a line, a frame
// block, a header block of another class and the row blocks, all tagged.
class PageReader : public ::testing::Test {
 protected:
  QaDbObjectId add(std::unique_ptr<QaDbEntity> entity, const std::wstring& code, int index = 0, int head = 1) {
    if (!code.empty()) WriteCardTagOfEntity(entity.get(), KrmCardTag{L"id", code, 0, index, 1, 1, 1, head});
    return tabulon::test::appendToModelSpace(db, std::move(entity));
  }
  QaDbObjectId addGroup(const Ids& ids, const std::wstring& code, int page) {
    QaDbObjectPointer<QaDbDictionary> groups(db.groupDictionaryId(), QaDb::kForWrite);
    QaDbObjectId id;
    auto group = std::make_unique<QaDbGroup>();
    group->append(ids);
    if (!code.empty()) WriteCardTagOfGroup(group.get(), KrmCardTag{L"id", code}, page);
    EXPECT_EQ(groups->setAt(L"*A", std::move(group), id), Qa::eOk);
    id.rawObject()->close();
    return id;
  }
  // A page whose rows are appended in `rowOrder`; row 3 continues row 2.
  QaDbObjectId addPage(const std::wstring& code, int page, const std::vector<int>& rowOrder, Ids* rows = nullptr,
                       Ids* others = nullptr) {
    Ids ids{add(std::make_unique<QaDbLine>(QaGePoint3d(), QaGePoint3d(297, 0, 0)), code),
            add(makeReference(frame, {200, 10, 0}, {{L"TITLE", L"工艺卡"}}), code),
            add(makeReference(head, {0, 150, 0}, {{L"图号", L"DWG-" + code}}), code)};
    if (others) others->assign(ids.begin(), ids.begin() + 2);
    for (int r : rowOrder) {
      const std::wstring n = std::to_wstring(page) + L"." + std::to_wstring(r);
      ids.push_back(add(makeReference(row, {}, {{L"名称", L"螺栓" + n}, {L"序号", n}}), code, r, r == 3 ? 0 : 1));
      if (rows) rows->push_back(ids.back());
    }
    return addGroup(ids, code, page);
  }
  KrmPlacedCard read(const std::wstring& code) {
    KrmPlacedCard card{{}, L"ROW", {L"序号", L"名称", L"数量"}, 1, {KrmLoadGrid{L"HEAD", {L"图号"}, 0}}, code};
    const int kept = ReadPageGroups(db, code, card);
    EXPECT_EQ(kept, static_cast<int>(card.pages.size()));
    return card;
  }

  QaDbDatabase db;
  QaDbObjectId row = addBlock(db, L"T01_ROW", {{L"序号", {}}, {L"名称", {10, 0, 0}}});
  QaDbObjectId head = addBlock(db, L"T01_HEAD", {{L"图号", {}}});
  QaDbObjectId frame = addBlock(db, L"FRAME", {{L"TITLE", {}}});
};

TEST_F(PageReader, ReadsPagesInOrderWithRowsInOrderAndClassesFiled) {
  Ids rows, others;
  addPage(L"00112233", 1, {2, 0, 3, 1}, &rows, &others);
  addPage(L"00112233", 0, {1, 0});
  addPage(L"99999999", 0, {0});  // another card
  addPage(L"00112233", 2, {0});
  addGroup({add(makeReference(row, {}, {}), L"")}, L"", 0);  // no card record: no page

  const KrmPlacedCard card = read(L"00112233");
  ASSERT_EQ(card.pages.size(), 3u);
  for (int p = 0; p < 3; ++p) EXPECT_EQ(card.pages[p].pageIndex, p);
  const KrmLoadGroup& page = card.pages[1];
  EXPECT_EQ(page.allIds.size(), 7u);
  ASSERT_EQ(page.refs.size(), 4u);
  const int appended[] = {1, 3, 0, 2};  // rows were appended as 2, 0, 3, 1
  for (int r = 0; r < 4; ++r) {
    const std::wstring n = L"1." + std::to_wstring(r);
    EXPECT_EQ(page.refs[r].refId, rows[appended[r]]);
    EXPECT_EQ(page.refs[r].rowIndex, r);
    EXPECT_EQ(page.refs[r].recordHead, r == 3 ? 0 : 1);
    EXPECT_EQ(page.refs[r].texts, (Texts{n, L"螺栓" + n, L""}));  // by column; "数量" has no attribute
  }
  // The header block is filed under its class; the line and the frame under none.
  ASSERT_EQ(page.otherClasses.at(0).refs.size(), 1u);
  EXPECT_EQ(page.otherClasses[0].refs[0].texts, Texts{L"DWG-00112233"});
  EXPECT_EQ(page.otherIds, others);
  EXPECT_TRUE(read(L"").pages.empty());
}

TEST_F(PageReader, DropsPagesWhoseEntitiesAreErased) {
  addPage(L"ABCDEFGH", 0, {0, 1});
  QaDbObjectPointer<QaDbGroup> group(addPage(L"ABCDEFGH", 1, {0}), QaDb::kForRead);
  for (const QaDbObjectId& id : group->allEntityIds()) QaDbObjectPointer<QaDbEntity>(id, QaDb::kForWrite)->erase();
  group.close();
  const KrmPlacedCard card = read(L"ABCDEFGH");
  ASSERT_EQ(card.pages.size(), 1u);
  EXPECT_EQ(card.pages[0].pageIndex, 0);
  EXPECT_TRUE(read(L"NOSUCH00").pages.empty());
}

TEST_F(PageReader, SortsReadBackRowsByFillOrderCodesZeroToThreeOnly) {
  // Two rows of two; the upper row stands 0.9 off level and is still one row.
  KrmLoadTAtt cls;
  for (const QaGePoint3d& p : {QaGePoint3d(50, 0, 0), QaGePoint3d(0, 10.9, 0), QaGePoint3d(), QaGePoint3d(50, 10, 0)})
    cls.refs.push_back(KrmLoadAtt{QaDbObjectId(), static_cast<int>(cls.refs.size()), {}, p, 1});
  auto order = [&](int code) {
    KrmLoadTAtt copy = cls;
    std::wstring out = std::to_wstring(SortLoadAttsByOrder(copy, code)) + L":";
    for (const KrmLoadAtt& a : copy.refs) out += std::to_wstring(a.rowIndex);
    return out;
  };
  EXPECT_EQ(order(1), L"1:1320");
  EXPECT_EQ(order(3), L"1:2013");
  EXPECT_EQ(order(4), L"1:0123");  // 4 and up are no read-back orders
  KrmLoadTAtt empty;
  EXPECT_EQ(SortLoadAttsByOrder(empty, 1), 0);
}

TEST_F(PageReader, ReadsTextsByColumnAndClearsAttributes) {
  const QaDbObjectId ref = add(makeReference(row, {}, {{L"名称", L"垫圈"}, {L"序号", L"x"}}), L"");
  auto texts = [&](const Texts& cols) {
    return ReadBlockTexts(*QaDbObjectPointer<QaDbBlockReference>(ref, QaDb::kForRead), cols);
  };
  // Two columns of one name both get the text; a column without attribute gets "".
  EXPECT_EQ(texts({L"名称", L"缺少", L"名称"}), (Texts{L"垫圈", L"", L"垫圈"}));
  EXPECT_EQ(ClearAttributes(ref), 1);
  EXPECT_EQ(ClearAttributes(row), 0);
  EXPECT_EQ(texts({L"名称", L"序号"}), (Texts{L"", L""}));
}

}  // namespace

#include "host/ed/qaed_selection.h"

#include "drawing_fixture.h"
#include "host/ed/qaed_prompts.h"
#include "host/ed/qaed_scripted_io.h"

#include <gtest/gtest.h>

using tabulon::test::DrawingFixture;

class QaEdSelection : public DrawingFixture {
 protected:
  void SetUp() override {
    DrawingFixture::SetUp();
    box = block(L"BOX");
    small = insert(box, {0, 0, 0});          // extents (0,0)-(10,10)
    big = insert(box, {0, 0, 0}, 5.0);       // extents (0,0)-(50,50)
    far = line({100, 100, 0}, {120, 100, 0});
    offside = qadbtest::append(*db, std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(1, 1, 0)),
                               db->paperSpaceId());
  }

  std::vector<QaDbObjectId> select(const std::wstring& answer, int* status = nullptr) {
    QaEdScriptedIO io({answer});
    QaEdUserIOScope scope(io);
    QaEdSelectionSet set;
    const int result = set.select();
    if (status) *status = result;
    transcript = io.transcript();
    return set.ids();
  }

  QaDbObjectId box, small, big, far, offside;
  std::wstring transcript;
};

TEST_F(QaEdSelection, ModeXTakesAllOfModelSpaceInDrawingOrder) {
  QaEdSSName ss;
  ASSERT_EQ(qaedSSGet(L"X", ss), RTNORM);
  std::int32_t length = 0;
  ASSERT_EQ(qaedSSLength(ss, length), RTNORM);
  ASSERT_EQ(length, 3);
  std::vector<QaDbObjectId> ids;
  for (std::int32_t i = 0; i < length; ++i) {
    QaEdEntName ent;
    ASSERT_EQ(qaedSSName(ss, i, ent), RTNORM);
    QaDbObjectId id;
    ASSERT_EQ(qadbGetObjectId(id, ent), Qa::eOk);
    ids.push_back(id);
  }
  EXPECT_EQ(ids, (std::vector<QaDbObjectId>{small, big, far}));
  QaEdEntName ent;
  EXPECT_EQ(qaedSSName(ss, 3, ent), RTERROR);
  EXPECT_EQ(qaedSSFree(ss), RTNORM);
  EXPECT_EQ(qaedSSLength(ss, length), RTERROR);
  EXPECT_EQ(qaedSSFree(ss), RTERROR);
  EXPECT_EQ(qaedSSGet(L"P", ss), RTREJ);
}

TEST_F(QaEdSelection, ErasedEntitiesAreNotSelected) {
  EXPECT_EQ(EraseObject({far, QaDbObjectId()}), 1);
  EXPECT_TRUE(far.isErased());
  EXPECT_EQ(select(L"all"), (std::vector<QaDbObjectId>{small, big}));
  int status = 0;
  EXPECT_TRUE(select(ref(far), &status).empty());
  EXPECT_EQ(status, RTERROR);
  EXPECT_NE(transcript.find(L"未找到对象"), std::wstring::npos);
}

TEST_F(QaEdSelection, UserSelectionsByWords) {
  struct Case {
    std::wstring answer;
    std::vector<QaDbObjectId> expected;
  };
  const Case cases[] = {
      {ref(far) + L"," + ref(small), {far, small}},
      {L"all r " + ref(big), {small, far}},
      {L"all r all a " + ref(far), {far}},
      {L"window -1,-1 11,11", {small}},
      {L"window 200,200 -5,-5", {small, big, far}},
      {L"5,5", {small}},  // the smallest entity holding the point
      {L"30,30 110,100", {big, far}},
      {ref(offside), {}},  // not in model space
  };
  for (const auto& c : cases) {
    EXPECT_EQ(select(c.answer), c.expected) << testing::PrintToString(c.answer);
  }
}

TEST_F(QaEdSelection, StatusOfEmptyCancelledAndGarbledSelections) {
  int status = 0;
  select(L"", &status);
  EXPECT_EQ(status, RTERROR);
  select(L"cancel", &status);
  EXPECT_EQ(status, RTCAN);
  select(L"500,500", &status);  // a miss
  EXPECT_EQ(status, RTERROR);
  // An answer with a word it cannot read is refused as a whole and asked again; the
  // next answer is gone, so the selection is cancelled.
  select(L"all banana", &status);
  EXPECT_EQ(status, RTCAN);
  EXPECT_EQ(qaedSSCount(), 0u);  // the holder freed every set
}

TEST_F(QaEdSelection, EntSelExPicksByHandleOrPoint) {
  QaEdScriptedIO io({ref(far), L"500,500", L"45,45", L"#FFFFF", L"", L"Remove", L"cancel"});
  QaEdUserIOScope scope(io);
  QaDbObjectId id;
  QaGePoint3d at;
  ASSERT_EQ(EntSelEx(L"\n选择: ", id, at), RTNORM);
  EXPECT_EQ(id, far);
  EXPECT_EQ(at, QaGePoint3d(110, 100, 0));  // centre of the picked entity
  ASSERT_EQ(EntSelEx(L"\n选择: ", id, at), RTNORM);  // a miss is asked again
  EXPECT_EQ(id, big);
  EXPECT_EQ(at, QaGePoint3d(45, 45, 0));
  EXPECT_EQ(EntSelEx(L"\n选择: ", id, at), RTNONE);  // the unknown handle is asked again, then Enter
  EXPECT_TRUE(id.isNull());
  qaedInitGet(0, L"Remove Add");
  EXPECT_EQ(EntSelEx(L"\n选择: ", id, at), RTKWORD);
  std::wstring keyword;
  qaedGetInput(keyword);
  EXPECT_EQ(keyword, L"Remove");
  EXPECT_EQ(EntSelEx(L"\n选择: ", id, at), RTCAN);
}

TEST_F(QaEdSelection, BaseLibrarySelectionResults) {
  struct Case {
    const wchar_t* answer;
    int expected;
  };
  for (const auto& c : {Case{L"all", 0}, Case{L"", 1}, Case{L"cancel", 2}}) {
    QaEdScriptedIO io({c.answer});
    QaEdUserIOScope scope(io);
    KR_QRXSelectSet set;
    EXPECT_EQ(set.userSelect(L"选择明细表所在的图框", L"移除"), c.expected) << c.answer;
    EXPECT_EQ(set.length(), c.expected == 0 ? 3 : 0);
    EXPECT_EQ(io.prompts().front(), L"选择明细表所在的图框");
  }
  QaEdScriptedIO io({L"all r " + ref(far)});
  QaEdUserIOScope scope(io);
  KR_QRXSelectSet set;
  EXPECT_EQ(set.userSelect(L"选择", L"\n移除对象: "), 0);
  EXPECT_EQ(set.ids(), (std::vector<QaDbObjectId>{small, big}));
  EXPECT_NE(io.printed().find(L"移除对象"), std::wstring::npos);
}

TEST(QaEdSelectionWithoutDrawing, IsRejected) {
  ASSERT_EQ(qaDocManager().documentCount(), 0);
  QaEdSSName ss;
  EXPECT_EQ(qaedSSGet(L"X", ss), RTREJ);
  KR_QRXSelectSet set;
  EXPECT_EQ(set.userSelect(L"?", L"?"), 1);
}

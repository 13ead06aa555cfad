#include "authoring/make_table_model.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "authoring_test_support.h"
#include "drawing/side_drawing.h"
#include "host/ed/qaed_scripted_io.h"
#include "support/test_support.h"

namespace {

namespace fs = std::filesystem;
using authtest::Choose;
using tabulon::svc::fromPath;

class MakeTable : public ::testing::Test {
 protected:
  MakeTable() : scope(io), model(fromPath(lib.path())) {}

  // Picked, TITLE and PAGE single, ROW multi with fill order 3, page base ROW, class
  // current page TITLE.页码, automatic number ROW.序号.
  void Complete() {
    ASSERT_TRUE(model.TakeSelection(form.ids).ok());
    ASSERT_TRUE(model.ChooseSingleBlocks(Choose({L"TITLE", L"PAGE"})));
    ASSERT_TRUE(model.ChooseMultiBlocks(Choose({L"ROW"})));
    model.SelectFillOrder(3);
    ASSERT_TRUE(model.ChoosePageBase(Choose({L"ROW"})));
    ASSERT_TRUE(model.ChoosePageAtt(0, Choose({L"TITLE"}, L"页码")));
    ASSERT_TRUE(model.ChoosePageAtt(4, Choose({L"ROW"}, L"序号")));
  }
  fs::path Tbl(const std::string& stem) const { return lib.path() / (stem + ".tbl"); }

  tabulon::test::ScratchDir lib;
  authtest::Form form;
  QaEdScriptedIO io;
  QaEdUserIOScope scope;
  KrmMakeTblModel model;
};

TEST_F(MakeTable, CompleteFormIsWrittenWithItsSideDrawing) {
  Complete();
  EXPECT_EQ(model.PageBaseLine(), L"块名:ROW");
  EXPECT_EQ(model.PageAttLine(0), L"块名:TITLE,属性名:页码");
  ASSERT_TRUE(model.OnOK().ok());

  KrmTableAttributes table;
  ASSERT_EQ(table.InitTable(fromPath(Tbl("Drawing1"))), 1);
  EXPECT_EQ(table.getShowName(), L"Drawing1");
  EXPECT_EQ(table.getPageBase(), L"ROW");
  EXPECT_DOUBLE_EQ(table.getWidth(), 250.0);  // the PAGE block reaches to x 350
  EXPECT_DOUBLE_EQ(table.getHeight(), 100.0);
  int order = -1, count = -1;
  ASSERT_EQ(table.getBlkNum(L"ROW", order, count), 1);
  EXPECT_EQ(order, 3);
  EXPECT_EQ(count, 3);
  std::wstring block, att;
  ASSERT_TRUE(table.PageBinding(kKrmAutoNum, block, att));
  EXPECT_EQ(att, L"序号");
  EXPECT_FALSE(table.PageBinding(kKrmClassSum, block, att));
  std::vector<std::wstring> singles;
  table.getSCell(singles);
  EXPECT_EQ(singles, (std::vector<std::wstring>{L"TITLE", L"PAGE"}));
  EXPECT_TRUE(fs::exists(lib.path() / "Drawing1.dxf"));
}

TEST_F(MakeTable, SelectionWithoutAttributeBlocksEmptiesTheDialog) {
  Complete();
  QaDbDatabase plain;
  const tabulon::Status picked = model.TakeSelection({authtest::AddLine(plain, 0, 0, 5, 5)});
  ASSERT_FALSE(picked.ok());
  EXPECT_EQ(picked.error().message, "没有选择有效的属性块");
  EXPECT_EQ(io.messageBoxes().back(), L"没有选择有效的属性块");
  EXPECT_TRUE(model.StatusLine().empty());
  EXPECT_TRUE(model.MultiSummary().empty());
  EXPECT_TRUE(model.PageBaseLine().empty());
  EXPECT_TRUE(model.PickedIds().empty());
  EXPECT_FALSE(model.Available().chooseSingle);
  EXPECT_FALSE(model.Available().ok);
}

TEST_F(MakeTable, OnlySingleReferencesLeaveNothingToSave) {
  authtest::Form one(1);
  ASSERT_TRUE(model.TakeSelection(one.ids).ok());
  ASSERT_TRUE(model.ChooseMultiBlocks(Choose({})));
  EXPECT_TRUE(model.MultiSummary().empty());
  EXPECT_FALSE(model.FillOrderEnabled());
  EXPECT_FALSE(model.Available().ok);
  EXPECT_FALSE(model.OnOK().ok());
  EXPECT_FALSE(fs::exists(Tbl("Drawing1")));
}

TEST_F(MakeTable, EachChoiceClearsTheLinesDrawnFromTheOtherArray) {
  Complete();
  ASSERT_TRUE(model.ChooseSingleBlocks(Choose({L"TITLE"})));
  EXPECT_EQ(model.PageAttLine(0), L"块名:TITLE,属性名:页码");
  EXPECT_TRUE(model.PageBaseLine().empty());
  EXPECT_TRUE(model.PageAttLine(4).empty());
  ASSERT_TRUE(model.ChoosePageBase(Choose({L"ROW"})));
  ASSERT_TRUE(model.ChooseMultiBlocks(Choose({L"ROW"})));
  EXPECT_EQ(model.PageBaseLine(), L"块名:ROW");
  EXPECT_TRUE(model.PageAttLine(0).empty());
  EXPECT_EQ(model.CurrentFillOrder(), 0);  // chosen again from the pick
}

TEST_F(MakeTable, CancelledChooserChangesNothingAndClearChoiceEmptiesTheLine) {
  Complete();
  EXPECT_FALSE(model.ChooseMultiBlocks(authtest::Cancel));
  EXPECT_EQ(model.PageAttLine(0), L"块名:TITLE,属性名:页码");
  ASSERT_TRUE(model.ChoosePageAtt(0, authtest::ClearChoice));
  EXPECT_TRUE(model.PageAttLine(0).empty());
}

struct RefusalCase {
  const wchar_t* name;
  bool chooseBase;
  const wchar_t* message;
};

class MakeTableRefusals : public MakeTable, public ::testing::WithParamInterface<RefusalCase> {};

TEST_P(MakeTableRefusals, ShowTheMessageAndWriteNothing) {
  Complete();
  if (!GetParam().chooseBase) {
    ASSERT_TRUE(model.ChoosePageBase(authtest::ClearChoice));
  }
  model.SetName(GetParam().name);
  const tabulon::Status saved = model.OnOK();
  ASSERT_FALSE(saved.ok());
  EXPECT_EQ(io.messageBoxes().back(), GetParam().message);
  EXPECT_TRUE(fs::is_empty(lib.path()));
}

INSTANTIATE_TEST_SUITE_P(
    Messages, MakeTableRefusals,
    ::testing::Values(RefusalCase{L"a/b", true, L"卡片名称中不能包含'\\ / : * ? \" < > | '中的字符之一"},
                      RefusalCase{L"a|b", true, L"卡片名称中不能包含'\\ / : * ? \" < > | '中的字符之一"},
                      RefusalCase{L"", true, L"请指定模板名称"},
                      RefusalCase{L"卡", false, L"请指定分页基准块"}));

struct AnswerCase {
  const wchar_t* answer;
  bool written;
  bool keepsId;
};

class MakeTableSameName : public MakeTable, public ::testing::WithParamInterface<AnswerCase> {};

TEST_P(MakeTableSameName, AnswerDecidesWritingAndIdentity) {
  authtest::WriteTable(lib.path(), L"Drawing1", L"OLD");
  KrmTableAttributes old;
  ASSERT_EQ(old.InitTable(fromPath(Tbl("Drawing1"))), 1);
  Complete();
  io.addAnswer(GetParam().answer);
  EXPECT_EQ(model.OnOK().ok(), GetParam().written);
  EXPECT_EQ(io.messageBoxes().back(), L"相同名称的模板已经存在.....");
  KrmTableAttributes now;
  ASSERT_EQ(now.InitTable(fromPath(Tbl("Drawing1"))), 1);
  EXPECT_EQ(now.getPageBase(), GetParam().written ? L"ROW" : L"OLD");
  EXPECT_EQ(now.getID() == old.getID(), GetParam().keepsId);
}

INSTANTIATE_TEST_SUITE_P(Answers, MakeTableSameName,
                         ::testing::Values(AnswerCase{L"yes", true, true}, AnswerCase{L"no", true, false},
                                           AnswerCase{L"cancel", false, true}));

TEST_F(MakeTable, LoadedTemplateIsLockedAndSavedWithoutQuestionOrNewDrawing) {
  Complete();
  model.SetName(L"T1");
  ASSERT_TRUE(model.OnOK().ok());
  const auto drawingTime = fs::last_write_time(lib.path() / "T1.dxf");

  KrmMakeTblModel again(fromPath(lib.path()));
  ASSERT_TRUE(again.LoadTable(authtest::Pick(L"/", L"T1")).ok());
  EXPECT_TRUE(again.NameLocked());
  EXPECT_FALSE(again.Available().chooseName);
  EXPECT_EQ(again.PageBaseLine(), L"块名:ROW");
  EXPECT_EQ(again.PageAttLine(4), L"块名:ROW,属性名:序号");
  EXPECT_EQ(again.CurrentFillOrder(), 3);
  EXPECT_EQ(again.AllBlocks().size(), 3u);
  again.SetName(L"other");
  EXPECT_EQ(again.Name(), L"T1");
  const std::size_t boxes = io.messageBoxes().size();
  ASSERT_TRUE(again.OnOK().ok());
  EXPECT_EQ(io.messageBoxes().size(), boxes);
  EXPECT_EQ(fs::last_write_time(lib.path() / "T1.dxf"), drawingTime);
  KrmTableAttributes table;
  ASSERT_EQ(table.InitTable(fromPath(Tbl("T1"))), 1);
  EXPECT_DOUBLE_EQ(table.getWidth(), 250.0);  // kept: nothing picked since loading
}

TEST_F(MakeTable, DamagedTemplateDoesNotLoadAndEmptiesTheDialog) {
  Complete();
  tabulon::test::writeFile(Tbl("bad"), "{\"format\": \"tabulon-table\", \"multiBlocks\": 7}");
  const tabulon::Status loaded = model.LoadTable(authtest::Pick(L"/", L"bad"));
  ASSERT_FALSE(loaded.ok());
  EXPECT_EQ(io.messageBoxes().back(), L"读取文件失败.");
  EXPECT_EQ(model.Name(), L"Drawing1");
  EXPECT_FALSE(model.NameLocked());
  EXPECT_TRUE(model.PickedIds().empty());
  EXPECT_TRUE(model.StatusLine().empty());
}

TEST_F(MakeTable, ChosenNameTakesTheFolderOfTheLibrary) {
  authtest::WriteTable(lib.path() / "机加", L"T9", L"ROW");
  ASSERT_TRUE(model.ChooseName(authtest::Pick(L"/机加/", L"T9")));
  EXPECT_EQ(model.Name(), L"T9");
  EXPECT_EQ(model.ShowName(), L"T9 显示");
  EXPECT_EQ(model.Folder(), L"/机加/");
  ASSERT_TRUE(model.ChooseName(authtest::Pick(L"/", L"")));
  EXPECT_TRUE(model.Name().empty());
  EXPECT_EQ(model.Folder(), L"/");
}

}  // namespace

namespace {

TEST(MakeTableOpening, WaitsForAPickBeforeOfferingChoices) {
  KrmMakeTblModel model(L"/nowhere");
  EXPECT_EQ(model.StatusLine(), L"需要布满！");
  EXPECT_EQ(model.ShowName(), L"Drawing1");
  const auto available = model.Available();
  EXPECT_TRUE(available.chooseName);
  EXPECT_FALSE(available.chooseSingle);
  EXPECT_FALSE(available.choosePageAtt[0]);
  EXPECT_FALSE(available.ok);
  EXPECT_FALSE(model.ChooseSingleBlocks(authtest::Choose({})));
  EXPECT_FALSE(model.FillOrderEnabled());
  EXPECT_EQ(KrmMakeTblModel::FillOrderLabels().at(7), L"从下到上(行优先)<从右往左>");
  authtest::Form form;
  ASSERT_TRUE(model.TakeSelection(form.ids).ok());
  EXPECT_EQ(model.StatusLine(), L"选择集包含了3类属性块");
  EXPECT_TRUE(model.Available().chooseMulti);
  EXPECT_FALSE(model.Available().choosePageBase);
}

}  // namespace

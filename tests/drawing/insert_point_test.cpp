#include "drawing/insert_point.h"

#include <gtest/gtest.h>

#include "host/ed/qaed_scripted_io.h"

namespace {

TEST(InsertPoint, SuggestsThePlaceBesideTheCardsSoFar) {
  KrmCardDir dir;
  dir.SetHor(10);
  const QaGePoint3d lower(0, 0, 4), upper(300, 200, 4);
  struct Case {
    int dir;
    QaGePoint3d expected;
  } cases[] = {
      {0, {310, 0, 0}}, {1, {-10, 0, 0}}, {2, {-10, 50, 0}}, {3, {310, 50, 0}},
  };
  for (const Case& c : cases) {
    dir.SetDir(c.dir);
    EXPECT_EQ(SuggestInsertPoint(dir, lower, upper, 150), c.expected) << "Dir " << c.dir;
  }
}

TEST(InsertPoint, EmptyExtentsTakeNoGap) {
  KrmCardDir dir;
  dir.SetHor(10);
  const QaGePoint3d here(5, 5, 0), almost(5.05, 9, 0);
  dir.SetDir(0);
  EXPECT_EQ(SuggestInsertPoint(dir, here, here, 150), QaGePoint3d(5, 5, 0));
  dir.SetDir(2);
  EXPECT_EQ(SuggestInsertPoint(dir, here, almost, 150), QaGePoint3d(5, -141, 0));
}

TEST(InsertPoint, AskPointAcceptsAPointOrEnterAndReportsACancel) {
  QaEdScriptedIO io({L"30,40", L"", L"cancel"});
  QaEdUserIOScope scope(io);
  const QaGePoint3d base(1, 2, 0);
  QaGePoint3d out;

  EXPECT_EQ(AskPoint(L"\nPick", base, out), 1);
  EXPECT_EQ(out, QaGePoint3d(30, 40, 0));
  EXPECT_EQ(AskPoint(L"\nPick", base, out), 1);
  EXPECT_EQ(out, base);
  out = {9, 9, 9};
  EXPECT_EQ(AskPoint(L"\nPick", base, out), 0);
  EXPECT_EQ(out, base);
  EXPECT_EQ(io.prompts().size(), 3u);
}

TEST(InsertPoint, PagePromptNamesThePage) {
  const std::wstring prompt = PageInsertPointPrompt(3);
  EXPECT_NE(prompt.find(L'3'), std::wstring::npos);
  EXPECT_EQ(prompt.find(L"%d"), std::wstring::npos);
  EXPECT_FALSE(NewInsertPointPrompt().empty());
}

}  // namespace

#include "drawing/insert_point.h"

#include <gtest/gtest.h>

#include "host/ed/qaed_scripted_io.h"

TEST(InsertPoint, AskPointAcceptsAPointOrEnterAndReportsACancel) {
  QaEdScriptedIO io({L"30,40", L"", L"cancel"});
  QaEdUserIOScope scope(io);
  const QaGePoint3d base(1, 2, 0);
  QaGePoint3d out;
  EXPECT_EQ(AskPoint(PageInsertPointPrompt(2), base, out), 1);
  EXPECT_EQ(out, QaGePoint3d(30, 40, 0));
  EXPECT_EQ(AskPoint(NewInsertPointPrompt(), base, out), 1);
  EXPECT_EQ(out, base);
  EXPECT_EQ(AskPoint(NewInsertPointPrompt(), base, out), 0);
  EXPECT_EQ(io.prompts().at(0).find(L"%d"), std::wstring::npos);
  EXPECT_NE(io.prompts().at(0).find(L'2'), std::wstring::npos);
}

#include "host/ed/qaed_prompts.h"

#include "host/ed/qaed_scripted_io.h"

#include <gtest/gtest.h>

namespace {

struct PointRun {
  int status;
  QaGePoint3d point;
  std::wstring input;
};

PointRun askPoint(std::vector<std::wstring> answers, int flags = 0, const wchar_t* keywords = nullptr,
                  const QaGePoint3d* base = nullptr) {
  QaEdScriptedIO io(std::move(answers));
  QaEdUserIOScope scope(io);
  qaedInitGet(flags, keywords);
  PointRun run{0, QaGePoint3d(-1, -1, -1), L""};
  run.status = qaedGetPoint(base, L"\n插入点: ", run.point);
  if (run.status == RTKWORD) qaedGetInput(run.input);
  return run;
}

}  // namespace

TEST(QaEdGetPoint, AnswersEachResultCode) {
  const auto picked = askPoint({L"10,20"});
  EXPECT_EQ(picked.status, RTNORM);
  EXPECT_EQ(picked.point, QaGePoint3d(10, 20, 0));

  const auto enter = askPoint({L""});
  EXPECT_EQ(enter.status, RTNONE);
  EXPECT_EQ(enter.point, QaGePoint3d(-1, -1, -1));  // untouched

  const auto keyword = askPoint({L"2"}, 0, L" 1 2");
  EXPECT_EQ(keyword.status, RTKWORD);
  EXPECT_EQ(keyword.input, L"2");

  EXPECT_EQ(askPoint({L"cancel"}).status, RTCAN);
  EXPECT_EQ(askPoint({}).status, RTCAN);  // nobody left to answer
}

TEST(QaEdGetPoint, AsksAgainAfterAnAnswerItCannotUse) {
  QaEdScriptedIO io({L"banana", L"3,4,5"});
  QaEdUserIOScope scope(io);
  QaGePoint3d point;
  EXPECT_EQ(qaedGetPoint(nullptr, L"\n点: ", point), RTNORM);
  EXPECT_EQ(point, QaGePoint3d(3, 4, 5));
  EXPECT_EQ(io.prompts().size(), 2u);
  EXPECT_NE(io.printed().find(L"需要点或选项关键字"), std::wstring::npos);
}

TEST(QaEdGetPoint, HonoursNoNullAndOtherInputFlags) {
  const auto noNull = askPoint({L"", L"1,1"}, RSG_NONULL);
  EXPECT_EQ(noNull.status, RTNORM);
  EXPECT_EQ(noNull.point, QaGePoint3d(1, 1, 0));

  const auto other = askPoint({L"free text"}, RSG_OTHER, L"A B");
  EXPECT_EQ(other.status, RTKWORD);
  EXPECT_EQ(other.input, L"free text");
}

TEST(QaEdGetPoint, KeywordsHoldForOneRequestOnly) {
  QaEdScriptedIO io({L"1", L"1", L"0,0"});
  QaEdUserIOScope scope(io);
  QaGePoint3d point;
  qaedInitGet(0, L"1 2");
  EXPECT_EQ(qaedGetPoint(nullptr, L"a", point), RTKWORD);
  // The second request has no keywords: "1" is refused and the point that follows taken.
  EXPECT_EQ(qaedGetPoint(nullptr, L"b", point), RTNORM);
  EXPECT_EQ(io.pendingAnswers(), 0u);
}

TEST(QaEdGetPoint, PassesTheBasePointWithTheRequest) {
  struct Recorder : QaEdScriptedIO {
    std::optional<QaGePoint3d> base;
    QaEdInput request(const QaEdRequest& r) override {
      base = r.base;
      return QaEdInput::enter();
    }
  } io;
  QaEdUserIOScope scope(io);
  const QaGePoint3d base(7, 8, 0);
  QaGePoint3d out;
  EXPECT_EQ(qaedGetPoint(&base, L"", out), RTNONE);
  EXPECT_EQ(io.base, base);
}

TEST(QaEdGetString, GivesTextKeywordsEnterAndCancel) {
  QaEdScriptedIO io({L"hello world", L"", L"yes", L"cancel"});
  QaEdUserIOScope scope(io);
  std::wstring text = L"x";
  EXPECT_EQ(qaedGetString(L"名称: ", text), RTNORM);
  EXPECT_EQ(text, L"hello world");
  EXPECT_EQ(qaedGetString(L"名称: ", text), RTNORM);
  EXPECT_EQ(text, L"");
  qaedInitGet(0, L"Yes No");
  EXPECT_EQ(qaedGetString(L"?", text), RTKWORD);
  std::wstring input;
  qaedGetInput(input);
  EXPECT_EQ(input, L"Yes");
  EXPECT_EQ(qaedGetString(L"?", text), RTCAN);
}

#include "host/ed/qa_message_box.h"
#include "host/ed/qaed_console_io.h"
#include "host/ed/qaed_prompts.h"
#include "host/ed/qaed_scripted_io.h"

#include <gtest/gtest.h>

#include <sstream>

TEST(QaMessageBox, TakesAButtonAnswerOnlyWhenTheBoxHasThatButton) {
  QaEdScriptedIO io({L"no", L"yes", L"Yes", L"cancel"});
  QaEdUserIOScope scope(io);
  EXPECT_EQ(QaMessageBox(L"提示", MB_OK), IDOK);                          // OK boxes take no answer
  EXPECT_EQ(QaMessageBox(L"覆盖?", MB_YESNOCANCEL | MB_ICONQUESTION), IDNO);
  EXPECT_EQ(QaMessageBox(L"删除?", MB_YESNO), IDYES);
  EXPECT_EQ(QaMessageBox(L"继续?", MB_OKCANCEL), IDCANCEL);              // "Yes" is no button here
  EXPECT_EQ(io.pendingAnswers(), 2u);
  EXPECT_EQ(io.messageBoxes().size(), 4u);
  EXPECT_NE(io.transcript().find(L"[Ostrel Suite] 覆盖? -> no"), std::wstring::npos);
}

TEST(QaMessageBox, NobodyAnsweringGivesTheSafestButton) {
  struct Case {
    unsigned type;
    int expected;
  };
  for (const auto& c : {Case{MB_OK, IDOK}, Case{MB_OKCANCEL, IDCANCEL}, Case{MB_YESNO, IDNO},
                        Case{MB_YESNOCANCEL | MB_ICONWARNING, IDCANCEL}}) {
    QaEdScriptedIO io;
    QaEdUserIOScope scope(io);
    EXPECT_EQ(QaMessageBox(L"?", c.type), c.expected) << c.type;
  }
  // Without any channel installed nothing blocks either.
  EXPECT_EQ(QaMessageBox(L"?", MB_YESNO), IDNO);
}

TEST(QaEdScriptedIO, KeepsATranscriptAndMirrorsItAsUtf8) {
  std::ostringstream echo;
  QaEdScriptedIO io({L"1,2"});
  io.setEcho(&echo);
  QaEdUserIOScope scope(io);
  QaGePoint3d p;
  qaedGetPoint(nullptr, L"\n点: ", p);
  qaedGetPoint(nullptr, L"\n点: ", p);
  EXPECT_EQ(io.transcript(), L"\n点: 1,2\n\n点: *cancel*\n");
  EXPECT_EQ(echo.str(), "\n\xE7\x82\xB9: 1,2\n\n\xE7\x82\xB9: *cancel*\n");
  EXPECT_TRUE(io.printed().empty());
}

TEST(QaEdConsoleIO, ReadsAnswersLineByLineAndCancelsAtTheEnd) {
  std::istringstream in("5,6\r\nmaybe\ny\n");
  std::ostringstream out;
  QaEdConsoleIO io(in, out);
  QaEdUserIOScope scope(io);
  QaGePoint3d p;
  EXPECT_EQ(qaedGetPoint(nullptr, L"\n点: ", p), RTNORM);
  EXPECT_EQ(p, QaGePoint3d(5, 6, 0));
  EXPECT_EQ(QaMessageBox(L"删除?", MB_YESNO), IDYES);  // "maybe" is asked again
  EXPECT_EQ(qaedGetPoint(nullptr, L"\n点: ", p), RTCAN);
  const std::string shown = out.str();
  EXPECT_NE(shown.find("[Ostrel Suite]"), std::string::npos);
  EXPECT_EQ(std::count(shown.begin(), shown.end(), '/'), 2);  // "(Y)es/(N)o" asked twice
}

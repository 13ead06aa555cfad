// The command line: keywords shown as links, the idle prompt, recall of earlier input.
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "ui/studio/command_line.h"
#include "ui/ui_strings.h"

namespace {

using tabulon::ui::CommandLine;

TEST(CommandLine, PromptShowsEachKeywordAsALink) {
  tabulon::ui::UiStrings strings("en");
  CommandLine line(strings);
  line.setPrompt(QStringLiteral("\nPick a point"), {QStringLiteral("Base"), QStringLiteral("Undo")});
  EXPECT_TRUE(line.promptText().contains(QStringLiteral("<a href=\"Base\">Base</a>")));
  EXPECT_TRUE(line.promptText().contains(QStringLiteral("<a href=\"Undo\">Undo</a>")));
  EXPECT_TRUE(line.historyText().endsWith(QStringLiteral("Pick a point")));
  line.clearPrompt();
  EXPECT_EQ(line.promptText(), QStringLiteral("Command:"));
  EXPECT_TRUE(line.keywords().isEmpty());
}

TEST(CommandLine, UpRecallsEarlierInputAndTypedCommandsGoToTheHistory) {
  tabulon::ui::UiStrings strings("en");
  CommandLine line(strings);
  QSignalSpy submitted(&line, &CommandLine::submitted);
  QTest::keyClicks(line.input(), QStringLiteral("KrmDelBlkID"));
  QTest::keyClick(line.input(), Qt::Key_Return);
  QTest::keyClicks(line.input(), QStringLiteral("1,2"));
  QTest::keyClick(line.input(), Qt::Key_Space);
  ASSERT_EQ(submitted.count(), 2);
  EXPECT_EQ(submitted.at(1).at(0).toString(), QStringLiteral("1,2"));
  EXPECT_TRUE(line.historyText().contains(QStringLiteral("Command: KrmDelBlkID")));
  QTest::keyClick(line.input(), Qt::Key_Up);
  QTest::keyClick(line.input(), Qt::Key_Up);
  EXPECT_EQ(line.input()->text(), QStringLiteral("KrmDelBlkID"));
}

TEST(CommandLine, SpaceIsTextWhenFreeTextIsAsked) {
  tabulon::ui::UiStrings strings("en");
  CommandLine line(strings);
  line.setSpaceSubmits(false);
  QSignalSpy submitted(&line, &CommandLine::submitted);
  QTest::keyClicks(line.input(), QStringLiteral("two words"));
  EXPECT_EQ(submitted.count(), 0);
  QTest::keyClick(line.input(), Qt::Key_Return);
  ASSERT_EQ(submitted.count(), 1);
  EXPECT_EQ(submitted.at(0).at(0).toString(), QStringLiteral("two words"));
}

}  // namespace

// The studio on the demo drawing: a script strips the block prefixes, the drawing is
// saved, and an independent reader finds it sound; undo brings the names back.
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

#include "samples/sample_demo.h"
#include "support/test_support.h"
#include "ui/studio/script_file.h"
#include "ui/studio/studio_window.h"
#include "ui/ui_strings.h"

namespace {

using tabulon::test::runPython;

// How many block references of model space name a block with a prefix ("_" in the
// name), the entities of model space, and the audit's error count.
const char *const kDescribe = R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
auditor = doc.audit()
print(sum(1 for e in doc.modelspace().query('INSERT') if '_' in e.dxf.name))
print(len(doc.modelspace()))
print(len(auditor.errors))
)";

struct Description {
  int prefixed = -1;
  int entities = -1;
  int errors = -1;
};

Description describe(const std::filesystem::path &file) {
  const auto out = runPython(kDescribe, {file.string()});
  EXPECT_EQ(out.exitCode, 0) << out.output;
  Description d;
  std::istringstream in(out.output);
  in >> d.prefixed >> d.entities >> d.errors;
  return d;
}

class StudioScript : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    // The demo points the configuration at its own folder; it is put back afterwards.
    if (const char *home = std::getenv("TABULON_HOME")) savedHome = home;
    folder = new tabulon::test::ScratchDir;
    tabulon::samples::DemoOptions options;
    options.folder = folder->path();
    demo = tabulon::samples::RunSampleDemo(options).drawing;
  }
  static void TearDownTestSuite() {
    delete folder;
    folder = nullptr;
    if (savedHome) setenv("TABULON_HOME", savedHome->c_str(), 1);
    else unsetenv("TABULON_HOME");
  }
  static inline std::optional<std::string> savedHome;
  static inline tabulon::test::ScratchDir *folder = nullptr;
  static inline std::filesystem::path demo;
};

TEST_F(StudioScript, StripsBlockPrefixesAndSavesADrawingThatPassesTheAudit) {
  ASSERT_TRUE(tabulon::test::ezdxfAvailable());
  const Description before = describe(demo);
  ASSERT_GT(before.prefixed, 0);

  tabulon::ui::UiStrings strings("zh_CN");
  tabulon::ui::StudioWindow window(strings);
  ASSERT_TRUE(window.openDrawing(demo).ok());
  QSignalSpy finished(&window, &tabulon::ui::StudioWindow::scriptFinished);
  window.runScript(tabulon::ui::ParseScript("KrmDelBlkID\nall\n\n"));
  ASSERT_TRUE(finished.wait(20000));
  EXPECT_TRUE(window.isChanged(window.currentDocument()));

  const auto saved = folder->path() / "stripped.dxf";
  ASSERT_TRUE(window.saveDrawing(saved).ok());
  EXPECT_FALSE(window.isChanged(window.currentDocument()));
  const Description after = describe(saved);
  // Renames that would clash are left undone, so some prefixes stay.
  EXPECT_LT(after.prefixed, before.prefixed);
  EXPECT_EQ(after.entities, before.entities);
  EXPECT_EQ(after.errors, 0);

  ASSERT_TRUE(window.undo().ok());
  const auto undone = folder->path() / "undone.dxf";
  ASSERT_TRUE(window.saveDrawing(undone).ok());
  EXPECT_EQ(describe(undone).prefixed, before.prefixed);
}

TEST_F(StudioScript, FailedSaveLeavesTheOldFileAndSaysWhere) {
  tabulon::ui::UiStrings strings("zh_CN");
  tabulon::ui::StudioWindow window(strings);
  ASSERT_TRUE(window.openDrawing(demo).ok());
  const auto target = folder->path() / "no-such-folder" / "x.dxf";
  const auto status = window.saveDrawing(target);
  ASSERT_FALSE(status.ok());
  EXPECT_EQ(status.error().file, target.string());
  EXPECT_FALSE(std::filesystem::exists(target));
}

TEST_F(StudioScript, OpeningABadFileNamesIt) {
  tabulon::ui::UiStrings strings("zh_CN");
  tabulon::ui::StudioWindow window(strings);
  const auto bad = folder->path() / "bad.dxf";
  tabulon::test::writeFile(bad, "0\nSECTION\n2\nENTITIES\n0\nLINE\n10\nnot-a-number\n");
  const auto opened = window.openDrawing(bad);
  ASSERT_FALSE(opened.ok());
  EXPECT_NE(opened.describe().find("bad.dxf"), std::string::npos);
  EXPECT_EQ(window.documentCount(), 0);
}

TEST(ScriptFile, ReadsLinesAsTypedSkippingCommentsAndTheLastLineEnd) {
  const QStringList lines = tabulon::ui::ParseScript("\xEF\xBB\xBFKrmDelBlkID\r\n; a note\r\nall\r\n\r\n");
  EXPECT_EQ(lines, (QStringList{QStringLiteral("KrmDelBlkID"), QStringLiteral("all"), QString()}));
}

TEST(ScriptFile, ReadsChineseInGb18030) {
  const QStringList lines = tabulon::ui::ParseScript("\xB9\xA4\xD0\xF2\n");  // 工序
  EXPECT_EQ(lines, QStringList{QStringLiteral("工序")});
}

}  // namespace

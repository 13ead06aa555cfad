// The gallery opens every dialog on the demo's library and drawing and leaves one
// picture of each, in the language of the strings given.
#include "ui/dialogs/dialog_gallery.h"

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "host/svc/tabulon_paths.h"
#include "samples/sample_demo.h"
#include "support/test_support.h"
#include "ui/studio/studio_window.h"
#include "ui/ui_strings.h"

namespace {

TEST(DialogGallery, EveryDialogLeavesAPictureOfItself) {
  // The demo points the configuration and the library at its own folder; both are put back.
  std::optional<std::string> savedHome;
  if (const char *home = std::getenv("TABULON_HOME")) savedHome = home;
  tabulon::test::ScratchDir dir;
  tabulon::samples::DemoOptions options;
  options.folder = dir.path() / "demo";
  const auto demo = tabulon::samples::RunSampleDemo(options);

  {
    tabulon::ui::UiStrings strings("en");
    tabulon::ui::StudioWindow window(strings);
    ASSERT_TRUE(window.openDrawing(demo.drawing).ok());
    auto saved = tabulon::ui::SaveDialogGallery(window, strings, dir.path() / "pictures");
    ASSERT_TRUE(saved.ok()) << saved.describe();
    for (const char *name : {"KrmDlgMakeTbl.png", "KrmDlgSelSgl.png", "KrmDlgMakeCard.png", "KrmDlgLoadCards.png",
                             "KrmDlgCardOut.png", "KrmDlgCellDesc.png", "KrmDlgCreateCrd.png", "KrmDlgArrang.png"}) {
      EXPECT_NE(std::find(saved->begin(), saved->end(), name), saved->end()) << name;
      const QImage picture(QString::fromStdString((dir.path() / "pictures" / name).string()));
      EXPECT_GT(picture.width(), 100) << name;
    }
  }
  tabulon::svc::setLibraryOverride({});
  if (savedHome) setenv("TABULON_HOME", savedHome->c_str(), 1);
  else unsetenv("TABULON_HOME");
}

}  // namespace

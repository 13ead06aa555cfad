// tabulon-studio [DRAWING...] [--script FILE.scr] [--screenshot FILE.png]
// Opens the drawings, types the script's lines at the command line, and with
// --screenshot saves a picture of the window after the script and exits. --gallery DIR
// makes the demo's library and drawing, opens every dialog on them and saves a picture
// of each as DIR/<dialog>.png, in the configured language, then exits.
#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QTimer>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <exception>
#include <memory>

#include "samples/sample_demo.h"
#include "ui/dialogs/dialog_gallery.h"
#include "ui/studio/script_file.h"
#include "ui/studio/studio_window.h"
#include "ui/ui_strings.h"
#include "ui/view/drawing_view.h"

namespace {

// The demo is made in DIR/demo; its configuration keeps the language of the pictures.
int runGallery(const tabulon::ui::UiStrings &strings, const std::filesystem::path &dir) {
  tabulon::samples::DemoResult demo;
  try {
    tabulon::samples::DemoOptions options;
    options.folder = dir / "demo";
    demo = tabulon::samples::RunSampleDemo(options);
  } catch (const std::exception &e) {
    std::fprintf(stderr, "tabulon-studio: %s\n", e.what());
    return 1;
  }
  if (std::ofstream ini(demo.options.parent_path() / "tabulon.ini", std::ios::trunc); ini)
    ini << "[Paths]\nLocale=" << strings.locale() << "\n";
  tabulon::ui::StudioWindow window(strings);
  if (auto opened = window.openDrawing(demo.drawing); !opened) {
    std::fprintf(stderr, "tabulon-studio: %s\n", opened.describe().c_str());
    return 1;
  }
  window.resize(1200, 800);
  window.show();
  auto saved = tabulon::ui::SaveDialogGallery(window, strings, dir);
  if (!saved) {
    std::fprintf(stderr, "tabulon-studio: %s\n", saved.describe().c_str());
    return 1;
  }
  for (const auto &name : *saved) std::printf("%s\n", (dir / name).string().c_str());
  return 0;
}

}  // namespace

int main(int argc, char *argv[]) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("tabulon-studio"));
  tabulon::ui::UiStrings strings;

  QCommandLineParser parser;
  parser.setApplicationDescription(strings.text(9000, L"Tabulon Studio"));
  parser.addHelpOption();
  parser.addPositionalArgument(QStringLiteral("drawing"), strings.text(9070, L"要打开的 DXF 图纸"),
                               QStringLiteral("[DRAWING...]"));
  QCommandLineOption script(QStringLiteral("script"), strings.text(9071, L"逐行输入到命令行的脚本文件"),
                            QStringLiteral("FILE.scr"));
  QCommandLineOption shot(QStringLiteral("screenshot"), strings.text(9072, L"脚本之后保存窗口图片并退出"),
                          QStringLiteral("FILE.png"));
  QCommandLineOption gallery(QStringLiteral("gallery"), strings.text(9073, L"在演示库和图纸上打开每个对话框, 各存一张图片后退出"),
                             QStringLiteral("DIR"));
  parser.addOption(script);
  parser.addOption(shot);
  parser.addOption(gallery);
  parser.process(app);

  if (parser.isSet(gallery)) return runGallery(strings, std::filesystem::path(parser.value(gallery).toStdString()));

  QStringList lines;
  if (parser.isSet(script)) {
    auto read = tabulon::ui::ReadScriptFile(parser.value(script).toStdString());
    if (!read) {
      std::fprintf(stderr, "tabulon-studio: %s\n", read.describe().c_str());
      return 2;
    }
    lines = *read;
  }

  std::unique_ptr<tabulon::ui::StudioWindow> made;
  try {
    made = std::make_unique<tabulon::ui::StudioWindow>(strings);
  } catch (const std::exception &e) {
    std::fprintf(stderr, "tabulon-studio: %s\n", e.what());
    return 1;
  }
  tabulon::ui::StudioWindow &window = *made;
  int status = 0;
  for (const QString &file : parser.positionalArguments()) {
    if (auto opened = window.openDrawing(file.toStdString()); !opened) {
      std::fprintf(stderr, "tabulon-studio: %s\n", opened.describe().c_str());
      status = 1;
    }
  }
  window.show();

  const QString screenshot = parser.value(shot);
  auto finish = [&] {
    if (screenshot.isEmpty()) return;
    QApplication::processEvents();  // layouts settle before the picture
    if (auto *view = window.currentView()) view->renderNow();
    if (!window.grab().save(screenshot, "PNG")) {
      std::fprintf(stderr, "tabulon-studio: cannot write %s\n", screenshot.toLocal8Bit().constData());
      status = 1;
    }
    QApplication::exit(status);
  };
  QObject::connect(&window, &tabulon::ui::StudioWindow::scriptFinished, &window, finish);
  if (!lines.isEmpty()) window.runScript(lines);
  else if (!screenshot.isEmpty()) QTimer::singleShot(200, &window, finish);
  const int code = QApplication::exec();
  return status != 0 ? status : code;
}

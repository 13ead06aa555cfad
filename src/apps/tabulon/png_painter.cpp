#include "png_painter.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "ui/paint/scene_painter.h"

namespace tabulon::cli {

namespace {

using namespace tabulon::render;

// Qt needs an application object for fonts. One is made on first use, on the offscreen
// platform unless the environment chose another, and lives until the program ends.
void ensureGuiApplication() {
  if (QCoreApplication::instance() != nullptr) return;
  if (std::getenv("QT_QPA_PLATFORM") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  // Qt's notes about its own start-up (a missing runtime folder and the like) are of no
  // use to a user who asked for a picture; real failures show as a failed save.
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
  });
  static int argc = 1;
  static char name[] = "tabulon";
  static char* argv[] = {name, nullptr};
  static std::unique_ptr<QGuiApplication> app = std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace

bool PaintPng(const RenderScene& scene, const SvgOptions& options, const std::filesystem::path& path,
              std::string& error) {
  ensureGuiApplication();
  const SvgFrame frame = ComputeSvgFrame(scene, options);
  QImage image(static_cast<int>(frame.pixelWidth), static_cast<int>(frame.pixelHeight), QImage::Format_RGB32);
  if (image.isNull()) {
    error = "cannot make an image of " + std::to_string(static_cast<int>(frame.pixelWidth)) + " x " +
            std::to_string(static_cast<int>(frame.pixelHeight)) + " pixels";
    return false;
  }
  image.fill(Qt::white);
  {
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    // SVG coordinates (y down, in drawing units) onto pixels.
    painter.scale(frame.pixelWidth / frame.width, frame.pixelHeight / frame.height);
    painter.translate(-frame.minX, -frame.minY);
    tabulon::ui::ScenePainter scenePainter(
        [&frame](double lineWeight, double width) { return StrokeWidth(frame, lineWeight, width); },
        frame.pixelWidth / frame.width);
    for (const auto& item : scene.items) scenePainter.paint(painter, item);
  }
  if (!image.save(QString::fromStdString(path.string()), "PNG")) {
    error = "cannot write " + path.string();
    return false;
  }
  return true;
}

}  // namespace tabulon::cli

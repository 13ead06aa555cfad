#include "ui/dialogs/drawing_preview.h"

#include <QPainter>

#include <algorithm>

#include "drawing/render/render_scene.h"
#include "drawing/render/scene_builder.h"
#include "host/db/qadb.h"
#include "ui/paint/scene_painter.h"

namespace tabulon::ui {

DrawingPreview::DrawingPreview(QWidget *parent) : QWidget(parent) {
  setObjectName(QStringLiteral("preview"));
  setMinimumSize(200, 150);
  setAutoFillBackground(true);
  QPalette shade = palette();
  shade.setColor(QPalette::Window, Qt::white);
  setPalette(shade);
}

DrawingPreview::~DrawingPreview() = default;

void DrawingPreview::showDrawing(const std::filesystem::path &path) {
  scene_.reset();
  path_.clear();
  zoom_ = 1.0;
  if (!path.empty()) {
    std::filesystem::path file = path;
    file += ".dxf";
    QaDbDatabase db;
    if (std::error_code ec; std::filesystem::is_regular_file(file, ec) && db.readDwgFile(file) == Qa::eOk) {
      scene_ = std::make_unique<render::RenderScene>(render::BuildModelSpaceScene(db));
      path_ = path;
    }
  }
  update();
}

int DrawingPreview::itemCount() const { return scene_ ? static_cast<int>(scene_->items.size()) : 0; }

void DrawingPreview::setZoom(double zoom) {
  zoom_ = std::clamp(zoom, 0.1, 50.0);
  update();
}

void DrawingPreview::paintEvent(QPaintEvent *) {
  if (!scene_ || scene_->extents.isEmpty()) return;
  const auto &low = scene_->extents.minPoint();
  const auto &high = scene_->extents.maxPoint();
  const double width = std::max(high.x - low.x, 1e-6);
  const double height = std::max(high.y - low.y, 1e-6);
  const double margin = 8.0;
  const double scale = zoom_ * std::min((this->width() - 2 * margin) / width, (this->height() - 2 * margin) / height);
  if (scale <= 0) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setRenderHint(QPainter::TextAntialiasing, true);
  // The middle of the drawing in the middle of the widget; the painter works in (x, -y).
  painter.translate(this->width() / 2.0, this->height() / 2.0);
  painter.scale(scale, scale);
  painter.translate(-(low.x + high.x) / 2.0, (low.y + high.y) / 2.0);
  ScenePainter scenePainter([scale](double, double lineWidth) { return std::max(lineWidth, 1.0 / scale); }, scale,
                            3.0);
  for (const auto &item : scene_->items) scenePainter.paint(painter, item);
}

}  // namespace tabulon::ui

// A small picture of a side drawing for the library dialog: the drawing's model space
// fitted into the widget, zoomed in and out by steps about its middle. Owns the scene it
// shows; nothing of the drawing is kept.
#pragma once

#include <QWidget>

#include <filesystem>
#include <memory>

namespace tabulon::render {
struct RenderScene;
}

namespace tabulon::ui {

class DrawingPreview : public QWidget {
  Q_OBJECT

 public:
  explicit DrawingPreview(QWidget *parent = nullptr);
  ~DrawingPreview() override;

  // Reads `path` (the side drawing without extension; ".dxf" is added) and shows it;
  // an empty path or a file that does not read leaves the picture empty. The zoom goes
  // back to fitting the drawing.
  void showDrawing(const std::filesystem::path &path);
  void zoomIn() { setZoom(zoom_ * 1.25); }
  void zoomOut() { setZoom(zoom_ / 1.25); }
  double zoom() const { return zoom_; }
  // Items of the scene shown (0 for an empty picture).
  int itemCount() const;
  const std::filesystem::path &shownPath() const { return path_; }

  QSize sizeHint() const override { return {320, 240}; }

 protected:
  void paintEvent(QPaintEvent *event) override;

 private:
  void setZoom(double zoom);

  std::unique_ptr<render::RenderScene> scene_;
  std::filesystem::path path_;
  double zoom_ = 1.0;
};

}  // namespace tabulon::ui

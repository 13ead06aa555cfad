// The owner-drawn menu of the dialogs: each entry drawn with its image in a left band
// of its own colour, the text beside it and the shortcut at the right, the entry under
// the mouse framed.
#pragma once

#include <QMenu>

namespace tabulon::ui {

class SMenu : public QMenu {
  Q_OBJECT

 public:
  explicit SMenu(const QString &title, QWidget *parent = nullptr);
  explicit SMenu(QWidget *parent = nullptr) : SMenu(QString(), parent) {}
  ~SMenu() override;

  // The width of the image band, in pixels.
  static constexpr int kBandWidth = 26;

 protected:
  void paintEvent(QPaintEvent *event) override;
};

}  // namespace tabulon::ui

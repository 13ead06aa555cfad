// A flat tool button that shows its frame and a lighter face only while the mouse is
// over it, with an icon and an optional text.
#pragma once

#include <QToolButton>

namespace tabulon::ui {

class CHoverButton : public QToolButton {
  Q_OBJECT

 public:
  explicit CHoverButton(QWidget *parent = nullptr);
  bool hovering() const { return hovering_; }

 signals:
  void hoverChanged(bool hovering);

 protected:
  void enterEvent(QEnterEvent *event) override;
  void leaveEvent(QEvent *event) override;
  void paintEvent(QPaintEvent *event) override;

 private:
  bool hovering_ = false;
};

}  // namespace tabulon::ui

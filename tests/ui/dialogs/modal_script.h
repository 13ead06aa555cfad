// Drives modal dialogs in tests: each step waits for the next dialog of its type to
// become the active modal widget and then acts on it, while the code under test sits
// in the dialog's own event loop. Steps run in the order given.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <deque>
#include <functional>
#include <set>

namespace tabulon::test {

class ModalScript {
 public:
  ModalScript() {
    timer_.setInterval(10);
    QObject::connect(&timer_, &QTimer::timeout, [this] { poll(); });
    timer_.start();
  }

  template <class Dialog>
  void then(std::function<void(Dialog &)> step) {
    steps_.push_back([step](QWidget *widget) {
      auto *dialog = qobject_cast<Dialog *>(widget);
      if (dialog == nullptr) return false;
      step(*dialog);
      return true;
    });
  }
  bool done() const { return steps_.empty(); }

 private:
  void poll() {
    QWidget *modal = QApplication::activeModalWidget();
    if (modal == nullptr || steps_.empty() || handled_.count(modal) != 0) return;
    auto step = steps_.front();
    // A dialog of another type is left alone (a step may be waiting for its nested one).
    if (!qobject_cast<QDialog *>(modal)) return;
    handled_.insert(modal);
    QObject::connect(modal, &QObject::destroyed, [this, modal] { handled_.erase(modal); });
    steps_.pop_front();
    QPointer<QWidget> target(modal);
    QTimer::singleShot(0, modal, [this, step, target] {
      if (target && !step(target)) failed_ = true;
    });
  }

 public:
  // True when a step met a dialog of another type than it expected.
  bool failed() const { return failed_; }

 private:
  QTimer timer_;
  std::deque<std::function<bool(QWidget *)>> steps_;
  std::set<QWidget *> handled_;
  bool failed_ = false;
};

}  // namespace tabulon::test

// The list of the authoring dialogs: it keeps its texts in a list of its own as well,
// takes its row height from its font, and scrolls sideways as far as the widest text.
#pragma once

#include <QListWidget>
#include <QStringList>

namespace tabulon::ui {

class KrmListBox : public QListWidget {
  Q_OBJECT

 public:
  explicit KrmListBox(QWidget *parent = nullptr);

  int AddString(const QString &text);
  int InsertString(int index, const QString &text);
  int DeleteString(int index);
  void ResetContent();
  QString GetText(int index) const;
  int GetCount() const { return static_cast<int>(texts_.size()); }
  const QStringList &texts() const { return texts_; }
  // The height of one row and the width of the widest text, in pixels.
  int itemHeight() const;
  int horizontalExtent() const { return extent_; }

 protected:
  void changeEvent(QEvent *event) override;

 private:
  void measure();

  QStringList texts_;
  int extent_ = 0;
};

}  // namespace tabulon::ui

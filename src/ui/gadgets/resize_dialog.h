// The base of the studio's dialogs: resizable, it remembers where it stood and how
// large it was under its dialog name in the settings store (KrmRegService), and it can
// step aside for the drawing while it stays open (BeginEditorCommand hides it and
// gives the screen to the drawing; CompleteEditorCommand shows it again), so that a
// modal dialog can let the user pick in the view.
#pragma once

#include <QDialog>
#include <QRect>
#include <QString>

#include <optional>

namespace tabulon::ui {

class CResizeDlg : public QDialog {
  Q_OBJECT

 public:
  // `name` is the settings section the geometry is kept in (empty: not kept).
  explicit CResizeDlg(const QString &name, QWidget *parent = nullptr);

  const QString &dialogName() const { return name_; }

  // Hides the dialog without ending it (a modal run goes on).
  void BeginEditorCommand();
  // Shows it again; `restore` 0 leaves it hidden.
  void CompleteEditorCommand(int restore = 1);
  bool inEditorCommand() const { return inEditorCommand_; }

  // The geometry kept for `name`, if any.
  static std::optional<QRect> StoredGeometry(const QString &name);
  static bool StoreGeometry(const QString &name, const QRect &rect);

 protected:
  void showEvent(QShowEvent *event) override;
  void done(int result) override;

 private:
  QString name_;
  bool restored_ = false;
  bool inEditorCommand_ = false;
};

}  // namespace tabulon::ui

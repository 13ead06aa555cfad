// The studio's main window: one tab per open drawing (each a document of the host's
// document manager with its view), the command line docked at the bottom, menus and
// a toolbar for the files, undo and redo, the view and the six commands, and the
// cursor's drawing coordinates in the status bar. It makes the host session of the
// studio (with its own user channel) and owns it; `strings` must outlive it.
#pragma once

#include <QMainWindow>
#include <QStringList>

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "host/svc/result.h"
#include "ui/dialogs/card_editor_services.h"

class QaApDocument;
class KrmHostSession;
class QTabWidget;
class QLabel;
class QMenu;
class QAction;

namespace tabulon::ui {

class CommandLine;
class DrawingView;
class StudioUserIO;
class UiStrings;
struct StudioDocument;

class StudioWindow : public QMainWindow {
  Q_OBJECT

 public:
  // Throws std::runtime_error when the host session cannot start (one runs already).
  explicit StudioWindow(const UiStrings &strings, QWidget *parent = nullptr);
  ~StudioWindow() override;

  Result<QaApDocument *> openDrawing(const std::filesystem::path &path);
  // Saves the current drawing to `path` (its own file when empty), in the format
  // version it was read in. A failed save leaves the old file as it was.
  Status saveDrawing(const std::filesystem::path &path = {});
  // Closes the current drawing, asking first when it changed; false when the user
  // kept it open.
  bool closeCurrent();
  // Runs what was typed with nothing asked: a command name, or the last command again
  // for an empty line. The command's answer; nothing when no command ran.
  std::optional<int> runCommandLine(const QString &text);
  // Types the lines at the command line one by one (answers included), then emits
  // scriptFinished. Message boxes answer by themselves while it runs.
  void runScript(const QStringList &lines);
  bool scriptRunning() const { return scriptRunning_; }

  // Publishes the card editor of the card commands; `setup` gets each of its windows
  // before it runs (tests drive them through it).
  void setCardDialogSetup(CardDialogSetup setup);

  Status undo();
  Status redo();

  QaApDocument *currentDocument() const;
  DrawingView *currentView() const;
  bool isChanged(QaApDocument *doc) const;
  int documentCount() const { return static_cast<int>(documents_.size()); }
  CommandLine &commandLine() { return *line_; }
  StudioUserIO &userIO() { return *io_; }
  QStringList recentFiles() const;

 signals:
  void scriptFinished();
  void commandEnded(const QString &name, int result);

 protected:
  void closeEvent(QCloseEvent *event) override;

 private:
  void registerViewCommands();
  void buildActions();
  void buildMenus();
  void onSubmitted(const QString &text);
  void onCancelled();
  void feedScript();
  void currentTabChanged();
  void refresh(StudioDocument &doc);
  void updateTitle();
  void updateActions();
  void addRecent(const std::filesystem::path &path);
  void rebuildRecentMenu();
  StudioDocument *current() const;
  bool askSave(StudioDocument &doc);
  void report(const tabulon::Error &error);
  std::optional<int> runCommand(const QString &name);

  const UiStrings &strings_;
  CommandLine *line_ = nullptr;
  StudioUserIO *io_ = nullptr;
  std::unique_ptr<KrmHostSession> session_;
  QTabWidget *tabs_ = nullptr;
  QLabel *coordinates_ = nullptr;
  std::vector<std::unique_ptr<StudioDocument>> documents_;
  QString lastCommand_;
  QStringList script_;
  bool scriptRunning_ = false;
  bool commandRunning_ = false;
  QMenu *recentMenu_ = nullptr;
  QAction *saveAction_ = nullptr;
  QAction *saveAsAction_ = nullptr;
  QAction *closeAction_ = nullptr;
  QAction *undoAction_ = nullptr;
  QAction *redoAction_ = nullptr;
  std::vector<QAction *> commandActions_;
  std::vector<QAction *> viewActions_;
};

}  // namespace tabulon::ui

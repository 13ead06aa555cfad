// The studio's implementation of the host's channel to the user: printed text goes to
// the command line's history; a request shows its prompt and keywords there, lets the
// drawing view pick (a point with a rubber line from the base point, an entity with
// the pick box, a selection by clicks, windows and crossings with "R" to remove and
// "A" to add again, ended by Enter) and waits in a nested event loop until the user
// (or a script) answers; message boxes carry the suite's caption. The command line,
// the view and the box parent are not owned and must outlive their use here.
#pragma once

#include <QObject>
#include <QPointF>

#include <optional>
#include <vector>

#include "host/db/qadb_object_id.h"
#include "host/ed/qaed_user_io.h"
#include "ui/view/view_transform.h"

class QEventLoop;
class QWidget;

namespace tabulon::ui {

class CommandLine;
class DrawingView;
class UiStrings;

class StudioUserIO : public QObject, public QaEdUserIO {
  Q_OBJECT

 public:
  StudioUserIO(CommandLine &line, const UiStrings &strings, QWidget *boxParent, QObject *parent = nullptr);
  ~StudioUserIO() override;

  // The view of the current document; null when none is open.
  void setView(DrawingView *view);

  void print(std::wstring_view text) override;
  QaEdInput request(const QaEdRequest &request) override;
  int messageBox(std::wstring_view text, std::wstring_view caption, unsigned type) override;

  // True while a request waits for its answer (not once it has one, while its loop
  // winds down).
  bool waiting() const { return loop_ != nullptr && !answer_; }
  const QaEdRequest *pending() const { return waiting() ? &request_ : nullptr; }
  // Answers the waiting request with a typed line (empty: Enter).
  void answerText(const QString &text);
  // Ends the waiting request with Cancel (Esc, closing the window, end of a script).
  void answerCancel();
  // The entities collected so far by the selection being made.
  const std::vector<QaDbObjectId> &selection() const { return selection_; }
  // Answers message boxes from here on without showing them (scripts, tests): the
  // next queued button, else the box's safest one.
  void setUnattendedBoxes(bool on) { unattended_ = on; }
  void queueBoxAnswer(int button) { boxAnswers_.push_back(button); }

 signals:
  // A request started waiting (scripts feed their next line then).
  void waitingForInput();

 private:
  void finish(QaEdInput input);
  void pointPicked(QPointF world);
  void entityPicked(QaDbObjectId id, QPointF world);
  void nothingPicked(QPointF world);
  void windowPicked(const WorldBox &box, bool crossing);
  void addToSelection(const std::vector<QaDbObjectId> &ids);
  void connectView();

  CommandLine &line_;
  const UiStrings &strings_;
  QWidget *boxParent_;
  DrawingView *view_ = nullptr;
  std::vector<QMetaObject::Connection> viewConnections_;
  QEventLoop *loop_ = nullptr;
  QaEdRequest request_;
  std::optional<QaEdInput> answer_;
  std::vector<QaDbObjectId> selection_;
  bool removing_ = false;
  bool unattended_ = false;
  std::vector<int> boxAnswers_;
};

}  // namespace tabulon::ui

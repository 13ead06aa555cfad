// Undo and redo of whole commands on one drawing. Before a command the drawing is
// written to a snapshot; when the command changed nothing the snapshot is dropped.
// Undo reads the snapshot back and exchanges it with the drawing's contents (the
// objects the command changed come back as they were, and those it added go), keeping
// what it replaced for redo. Snapshots are files in a folder of the history's own,
// removed with it. Not copyable; the database must outlive each call.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/db/qadb_object_id.h"
#include "host/svc/result.h"

class QaDbDatabase;

namespace tabulon::ui {

class DrawingHistory {
 public:
  DrawingHistory();
  ~DrawingHistory();
  DrawingHistory(const DrawingHistory&) = delete;
  DrawingHistory& operator=(const DrawingHistory&) = delete;

  // Before a command: keeps the drawing as it is. The objects' modified flags are
  // cleared for the command's run and put back afterwards (the writer writes changed
  // objects from their fields and others as they were read).
  Status begin(QaDbDatabase& db);
  // After the command: true when it changed the drawing (then it becomes an undo step
  // named `name` and the redo steps go); otherwise the snapshot is dropped.
  bool end(QaDbDatabase& db, const std::wstring& name);

  bool canUndo() const { return !undo_.empty(); }
  bool canRedo() const { return !redo_.empty(); }
  std::wstring undoName() const { return canUndo() ? undo_.back().name : std::wstring(); }
  std::wstring redoName() const { return canRedo() ? redo_.back().name : std::wstring(); }

  // Restores the drawing before the last step; the drawing as it was goes to redo.
  Status undo(QaDbDatabase& db);
  Status redo(QaDbDatabase& db);

  // True when any object of `db` is flagged modified.
  static bool changed(const QaDbDatabase& db);

 private:
  struct Step {
    std::wstring name;
    std::filesystem::path file;
  };
  Result<std::filesystem::path> write(QaDbDatabase& db);
  Status restore(QaDbDatabase& db, const Step& from, std::vector<Step>& other);

  std::filesystem::path folder_;
  int next_ = 0;
  std::filesystem::path pending_;
  std::vector<QaDbObjectId> modifiedBefore_;
  std::vector<Step> undo_;
  std::vector<Step> redo_;
};

}  // namespace tabulon::ui

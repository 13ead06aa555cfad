#include "ui/studio/drawing_history.h"

#include <random>
#include <system_error>

#include "host/db/qadb_database.h"
#include "host/db/qadb_object.h"

namespace tabulon::ui {

namespace {

std::filesystem::path makeFolder() {
  std::random_device rd;
  const auto base = std::filesystem::temp_directory_path();
  for (int attempt = 0; attempt < 16; ++attempt) {
    auto folder = base / ("tabulon-history-" + std::to_string(rd()));
    std::error_code ec;
    if (std::filesystem::create_directory(folder, ec)) return folder;
  }
  return {};
}

void removeFile(const std::filesystem::path& path) {
  std::error_code ec;
  if (!path.empty()) std::filesystem::remove(path, ec);
}

}  // namespace

DrawingHistory::DrawingHistory() : folder_(makeFolder()) {}

DrawingHistory::~DrawingHistory() {
  std::error_code ec;
  if (!folder_.empty()) std::filesystem::remove_all(folder_, ec);
}

bool DrawingHistory::changed(const QaDbDatabase& db) {
  for (auto id : db.objectIds(true)) {
    const QaDbObject* object = id.rawObject();
    if (object && object->isModified()) return true;
  }
  return false;
}

Result<std::filesystem::path> DrawingHistory::write(QaDbDatabase& db) {
  if (folder_.empty()) return MakeError("no folder for undo snapshots");
  auto file = folder_ / ("step" + std::to_string(next_++) + ".dxf");
  // The snapshot must not take the drawing's own file name.
  const auto name = db.filename();
  std::string error;
  const auto status = db.saveAs(file, QaDb::kDwgCurrent, &error);
  db.setFilename(name);
  if (status != Qa::eOk) return MakeError("cannot keep the drawing for undo: " + error).inFile(file.string());
  return file;
}

Status DrawingHistory::begin(QaDbDatabase& db) {
  removeFile(pending_);
  pending_.clear();
  auto file = write(db);
  if (!file) return file.status();
  pending_ = *file;
  modifiedBefore_.clear();
  for (auto id : db.objectIds(true))
    if (const QaDbObject* object = id.rawObject(); object && object->isModified()) modifiedBefore_.push_back(id);
  db.clearModifiedFrom(0);
  return Status::Ok();
}

bool DrawingHistory::end(QaDbDatabase& db, const std::wstring& name) {
  if (pending_.empty()) return changed(db);
  const bool commandChanged = changed(db);
  for (auto id : modifiedBefore_)
    if (QaDbObject* object = id.rawObject()) object->setModified();
  modifiedBefore_.clear();
  if (!commandChanged) {
    removeFile(pending_);
    pending_.clear();
    return false;
  }
  undo_.push_back({name, pending_});
  pending_.clear();
  for (auto& step : redo_) removeFile(step.file);
  redo_.clear();
  return true;
}

Status DrawingHistory::restore(QaDbDatabase& db, const Step& from, std::vector<Step>& other) {
  auto current = write(db);
  if (!current) return current.status();
  QaDbDatabase previous(false);
  std::string error;
  if (previous.readDwgFile(from.file, 0, &error) != Qa::eOk) {
    removeFile(*current);
    return MakeError("cannot read the undo snapshot back: " + error).inFile(from.file.string());
  }
  const auto name = db.filename();
  db.swap(previous);
  db.setFilename(name);
  other.push_back({from.name, *current});
  removeFile(from.file);
  return Status::Ok();
}

Status DrawingHistory::undo(QaDbDatabase& db) {
  if (!canUndo()) return MakeError("nothing to undo");
  const Step step = undo_.back();
  auto status = restore(db, step, redo_);
  if (status) undo_.pop_back();
  return status;
}

Status DrawingHistory::redo(QaDbDatabase& db) {
  if (!canRedo()) return MakeError("nothing to redo");
  const Step step = redo_.back();
  auto status = restore(db, step, undo_);
  if (status) redo_.pop_back();
  return status;
}

}  // namespace tabulon::ui

// One open drawing of the host: its database and the file it came from, with the
// document lock. Owned by the document manager; the document owns its database.
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

class QaDbDatabase;

namespace QaAp {
// Lock modes of a document, with the host's numbers.
enum DocLockMode {
  kNone = 0x0,
  kAutoWrite = 0x1,
  kNotLocked = 0x2,
  kWrite = 0x4,
  kProtectedAutoWrite = 0x8,
  kRead = 0x10,
  kXWrite = 0x20,
};
}  // namespace QaAp

class QaApDocument {
 public:
  QaApDocument(std::unique_ptr<QaDbDatabase> database, std::filesystem::path fileName);
  ~QaApDocument();
  QaApDocument(const QaApDocument&) = delete;
  QaApDocument& operator=(const QaApDocument&) = delete;

  QaDbDatabase* database() const { return database_.get(); }
  // The drawing's file; empty for a drawing never saved.
  const std::filesystem::path& fileName() const { return fileName_; }
  void setFileName(std::filesystem::path path) { fileName_ = std::move(path); }

  // The mode of the innermost lock held, kNotLocked when none is.
  QaAp::DocLockMode myLockMode() const;
  bool isLocked() const { return !locks_.empty(); }
  int lockDepth() const { return static_cast<int>(locks_.size()); }

 private:
  friend class QaApDocManager;
  std::unique_ptr<QaDbDatabase> database_;
  std::filesystem::path fileName_;
  std::vector<QaAp::DocLockMode> locks_;
};

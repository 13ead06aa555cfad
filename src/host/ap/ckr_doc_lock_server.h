// Holds the host's document lock for a scope: locks in the constructor, unlocks in the
// destructor, on every way out. The document must outlive the lock.
#pragma once

#include "host/ap/qaap_doc_manager.h"

class CKR_DocLockServer {
 public:
  // Locks `doc`, or the current document when null. Without any document nothing is
  // locked (isLocked() false).
  explicit CKR_DocLockServer(QaApDocument* doc = nullptr, QaAp::DocLockMode mode = QaAp::kWrite);
  ~CKR_DocLockServer();
  CKR_DocLockServer(const CKR_DocLockServer&) = delete;
  CKR_DocLockServer& operator=(const CKR_DocLockServer&) = delete;

  bool isLocked() const { return doc_ != nullptr; }
  QaApDocument* document() const { return doc_; }

 private:
  QaApDocument* doc_ = nullptr;
};

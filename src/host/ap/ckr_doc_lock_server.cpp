#include "host/ap/ckr_doc_lock_server.h"

CKR_DocLockServer::CKR_DocLockServer(QaApDocument* doc, QaAp::DocLockMode mode) {
  if (!doc) doc = qaDocManager().curDoc();
  if (doc && qaDocManager().lockDocument(doc, mode) == Qa::eOk) doc_ = doc;
}

CKR_DocLockServer::~CKR_DocLockServer() {
  if (doc_) qaDocManager().unlockDocument(doc_);
}

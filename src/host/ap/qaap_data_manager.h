// Per-document data of a plug-in: one T for each document, made on first use and
// dropped when the document is destroyed. The manager adds itself to the host's
// document manager as a reactor while it lives; it is not copyable. References to a
// document's T stay valid until that document is destroyed or the manager dies.
#pragma once

#include "host/ap/qaap_doc_manager.h"

#include <map>
#include <stdexcept>

template <class T>
class QaApDataManager : public QaApDocManagerReactor {
 public:
  QaApDataManager() { qaDocManager().addReactor(this); }
  ~QaApDataManager() override {
    if (qaDocManagerAlive()) qaDocManager().removeReactor(this);
  }
  QaApDataManager(const QaApDataManager&) = delete;
  QaApDataManager& operator=(const QaApDataManager&) = delete;

  // The record of `doc`, made on first use.
  T& docData(QaApDocument* doc) { return data_[doc]; }
  // The record of the current document; std::logic_error when there is none.
  T& docData() {
    QaApDocument* doc = qaDocManager().curDoc();
    if (!doc) throw std::logic_error("per-document data asked for without a current document");
    return data_[doc];
  }
  bool hasData(const QaApDocument* doc) const { return data_.count(const_cast<QaApDocument*>(doc)) != 0; }
  std::size_t size() const { return data_.size(); }

  void documentToBeDestroyed(QaApDocument* doc) override { data_.erase(doc); }

 private:
  std::map<QaApDocument*, T> data_;
};

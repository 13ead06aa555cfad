// The host's document manager: the open drawings, the current one, the working
// database, document locks, and reactors told when documents come and go. It owns the
// documents; reactors are not owned and must remove themselves before they die.
#pragma once

#include "host/ap/qaap_document.h"
#include "host/db/qa_error_status.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

class QaDbDatabase;

// Told about documents; the default reactions do nothing.
class QaApDocManagerReactor {
 public:
  virtual ~QaApDocManagerReactor() = default;
  virtual void documentCreated(QaApDocument* doc) {}
  virtual void documentToBeDestroyed(QaApDocument* doc) {}
  virtual void documentBecameCurrent(QaApDocument* doc) {}
};

class QaApDocManager {
 public:
  QaApDocManager() = default;
  ~QaApDocManager();
  QaApDocManager(const QaApDocManager&) = delete;
  QaApDocManager& operator=(const QaApDocManager&) = delete;

  // Takes a database as a new document, makes it current, tells the reactors and the
  // loaded modules (load drawing message). Returns the document, owned by the manager.
  QaApDocument* addDocument(std::unique_ptr<QaDbDatabase> database, std::filesystem::path fileName = {});
  // Reads a drawing file into a new document; nullptr and the reader's message in
  // `error` when it cannot be read.
  QaApDocument* openDocument(const std::filesystem::path& path, std::string* error = nullptr);
  // Tells reactors and modules, then destroys the document (and its database). The next
  // document, if any, becomes current. eInvalidInput for a document not managed here.
  Qa::ErrorStatus closeDocument(QaApDocument* doc);
  void closeAll();

  QaApDocument* curDoc() const { return current_; }
  Qa::ErrorStatus setCurDocument(QaApDocument* doc);
  // The database commands work on: the current document's, null without documents.
  QaDbDatabase* workingDatabase() const;
  QaApDocument* document(const QaDbDatabase* database) const;
  std::vector<QaApDocument*> documents() const;
  int documentCount() const { return static_cast<int>(documents_.size()); }

  // Locks nest; every lock needs its unlock. eInvalidInput for a document not managed
  // here, eNotApplicable for unlocking a document that holds no lock.
  Qa::ErrorStatus lockDocument(QaApDocument* doc, QaAp::DocLockMode mode = QaAp::kWrite);
  Qa::ErrorStatus unlockDocument(QaApDocument* doc);

  void addReactor(QaApDocManagerReactor* reactor);
  void removeReactor(QaApDocManagerReactor* reactor);
  bool hasReactor(const QaApDocManagerReactor* reactor) const;

 private:
  bool manages(const QaApDocument* doc) const;

  std::vector<std::unique_ptr<QaApDocument>> documents_;
  QaApDocument* current_ = nullptr;
  std::vector<QaApDocManagerReactor*> reactors_;
};

// The host's document manager.
QaApDocManager& qaDocManager();
// False once the process-wide manager has been destroyed at exit (for objects that
// might outlive it and want to unregister).
bool qaDocManagerAlive();
// qaDocManager().curDoc() and .workingDatabase().
QaApDocument* qaCurDoc();
QaDbDatabase* qaWorkingDatabase();

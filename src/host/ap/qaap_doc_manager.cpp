#include "host/ap/qaap_doc_manager.h"

#include "host/db/qadb_database.h"
#include "host/rx/qarx_app.h"
#include "host/rx/qarx_dynamic_linker.h"

#include <algorithm>

namespace {
const QaApDocManager* g_processManager = nullptr;
bool g_processManagerGone = false;
}  // namespace

QaApDocManager::~QaApDocManager() {
  if (this == g_processManager) g_processManagerGone = true;
}

bool qaDocManagerAlive() { return !g_processManagerGone; }

bool QaApDocManager::manages(const QaApDocument* doc) const {
  return doc && std::any_of(documents_.begin(), documents_.end(), [&](const auto& d) { return d.get() == doc; });
}

QaApDocument* QaApDocManager::addDocument(std::unique_ptr<QaDbDatabase> database, std::filesystem::path fileName) {
  documents_.push_back(std::make_unique<QaApDocument>(std::move(database), std::move(fileName)));
  QaApDocument* doc = documents_.back().get();
  setCurDocument(doc);
  // A copy: a reactor may remove itself while being told.
  for (auto* reactor : std::vector<QaApDocManagerReactor*>(reactors_))
    if (hasReactor(reactor)) reactor->documentCreated(doc);
  qarxDynamicLinker().sendToAll(QaRx::kLoadDwgMsg, doc);
  return doc;
}

QaApDocument* QaApDocManager::openDocument(const std::filesystem::path& path, std::string* error) {
  auto database = std::make_unique<QaDbDatabase>(false);
  if (database->readDwgFile(path, 0, error) != Qa::eOk) return nullptr;
  return addDocument(std::move(database), path);
}

Qa::ErrorStatus QaApDocManager::closeDocument(QaApDocument* doc) {
  if (!manages(doc)) return Qa::eInvalidInput;
  if (current_ != doc) setCurDocument(doc);
  qarxDynamicLinker().sendToAll(QaRx::kUnloadDwgMsg, doc);
  for (auto* reactor : std::vector<QaApDocManagerReactor*>(reactors_))
    if (hasReactor(reactor)) reactor->documentToBeDestroyed(doc);
  auto it = std::find_if(documents_.begin(), documents_.end(), [&](const auto& d) { return d.get() == doc; });
  auto owned = std::move(*it);
  documents_.erase(it);
  current_ = nullptr;
  if (!documents_.empty()) setCurDocument(documents_.back().get());
  return Qa::eOk;
}

void QaApDocManager::closeAll() {
  while (!documents_.empty()) closeDocument(documents_.back().get());
}

Qa::ErrorStatus QaApDocManager::setCurDocument(QaApDocument* doc) {
  if (!manages(doc)) return Qa::eInvalidInput;
  if (current_ == doc) return Qa::eOk;
  current_ = doc;
  for (auto* reactor : std::vector<QaApDocManagerReactor*>(reactors_))
    if (hasReactor(reactor)) reactor->documentBecameCurrent(doc);
  return Qa::eOk;
}

QaDbDatabase* QaApDocManager::workingDatabase() const { return current_ ? current_->database() : nullptr; }

QaApDocument* QaApDocManager::document(const QaDbDatabase* database) const {
  for (const auto& d : documents_)
    if (database && d->database() == database) return d.get();
  return nullptr;
}

std::vector<QaApDocument*> QaApDocManager::documents() const {
  std::vector<QaApDocument*> out;
  for (const auto& d : documents_) out.push_back(d.get());
  return out;
}

Qa::ErrorStatus QaApDocManager::lockDocument(QaApDocument* doc, QaAp::DocLockMode mode) {
  if (!manages(doc)) return Qa::eInvalidInput;
  doc->locks_.push_back(mode);
  return Qa::eOk;
}

Qa::ErrorStatus QaApDocManager::unlockDocument(QaApDocument* doc) {
  if (!manages(doc)) return Qa::eInvalidInput;
  if (doc->locks_.empty()) return Qa::eNotApplicable;
  doc->locks_.pop_back();
  return Qa::eOk;
}

void QaApDocManager::addReactor(QaApDocManagerReactor* reactor) {
  if (reactor && !hasReactor(reactor)) reactors_.push_back(reactor);
}

void QaApDocManager::removeReactor(QaApDocManagerReactor* reactor) {
  reactors_.erase(std::remove(reactors_.begin(), reactors_.end(), reactor), reactors_.end());
}

bool QaApDocManager::hasReactor(const QaApDocManagerReactor* reactor) const {
  return std::find(reactors_.begin(), reactors_.end(), reactor) != reactors_.end();
}

QaApDocManager& qaDocManager() {
  static QaApDocManager manager;
  g_processManager = &manager;
  return manager;
}

QaApDocument* qaCurDoc() { return qaDocManager().curDoc(); }

QaDbDatabase* qaWorkingDatabase() { return qaDocManager().workingDatabase(); }

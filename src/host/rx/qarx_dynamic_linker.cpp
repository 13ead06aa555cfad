#include "host/rx/qarx_dynamic_linker.h"

#include "host/ap/qaap_doc_manager.h"
#include "host/rx/qarx_app.h"

#include <algorithm>

// Modules still loaded at exit are dropped without messages: the host's other parts
// may already be gone by then. Programs unload explicitly.
QaRxDynamicLinker::~QaRxDynamicLinker() = default;

QaRxDynamicLinker::Loaded* QaRxDynamicLinker::find(const std::wstring& name) const {
  for (const auto& m : modules_)
    if (m->module.name == name) return m.get();
  return nullptr;
}

QaRxDynamicLinker::Loaded* QaRxDynamicLinker::findById(const void* appId) const {
  for (const auto& m : modules_)
    if (m.get() == appId) return m.get();
  return nullptr;
}

void QaRxDynamicLinker::sendPerDocument(Loaded& loaded, int msg) {
  auto& docs = qaDocManager();
  QaApDocument* current = docs.curDoc();
  for (QaApDocument* doc : docs.documents()) {
    docs.setCurDocument(doc);
    if (loaded.module.entryPoint) loaded.module.entryPoint(msg, doc);
  }
  if (current) docs.setCurDocument(current);
}

bool QaRxDynamicLinker::loadModule(QaRxModule module) {
  if (module.name.empty() || find(module.name)) return false;
  if (module.attach && !module.attach()) return false;
  modules_.push_back(std::make_unique<Loaded>(Loaded{std::move(module)}));
  Loaded& loaded = *modules_.back();
  const int status = loaded.module.entryPoint ? loaded.module.entryPoint(QaRx::kInitAppMsg, &loaded) : QaRx::kRetOK;
  if (status != QaRx::kRetOK) {
    auto detach = std::move(loaded.module.detach);
    modules_.pop_back();
    if (detach) detach();
    return false;
  }
  sendPerDocument(loaded, QaRx::kLoadDwgMsg);
  return true;
}

bool QaRxDynamicLinker::unloadModule(const std::wstring& name, bool force) {
  Loaded* loaded = find(name);
  if (!loaded || (!loaded->unloadable && !force)) return false;
  sendPerDocument(*loaded, QaRx::kUnloadDwgMsg);
  if (loaded->module.entryPoint) loaded->module.entryPoint(QaRx::kUnloadAppMsg, loaded);
  auto detach = std::move(loaded->module.detach);
  modules_.erase(std::find_if(modules_.begin(), modules_.end(), [&](const auto& m) { return m.get() == loaded; }));
  if (detach) detach();
  return true;
}

void QaRxDynamicLinker::unloadAll() {
  while (!modules_.empty()) unloadModule(modules_.back()->module.name, true);
}

bool QaRxDynamicLinker::isLoaded(const std::wstring& name) const { return find(name) != nullptr; }

std::vector<std::wstring> QaRxDynamicLinker::loadedModules() const {
  std::vector<std::wstring> names;
  for (const auto& m : modules_) names.push_back(m->module.name);
  return names;
}

int QaRxDynamicLinker::sendMessage(const std::wstring& name, int msg, void* appData) {
  Loaded* loaded = find(name);
  if (!loaded) return QaRx::kRetError;
  return loaded->module.entryPoint ? loaded->module.entryPoint(msg, appData) : QaRx::kRetOK;
}

void QaRxDynamicLinker::sendToAll(int msg, void* appData) {
  // A copy of the list: a handler may load or unload modules.
  std::vector<Loaded*> targets;
  for (const auto& m : modules_) targets.push_back(m.get());
  for (Loaded* target : targets)
    if (findById(target) && target->module.entryPoint) target->module.entryPoint(msg, appData);
}

bool QaRxDynamicLinker::allowUnload(const void* appId) {
  Loaded* loaded = findById(appId);
  if (!loaded) return false;
  loaded->unloadable = true;
  return true;
}

bool QaRxDynamicLinker::declareMultiDocument(const void* appId) {
  Loaded* loaded = findById(appId);
  if (!loaded) return false;
  loaded->multiDocument = true;
  return true;
}

bool QaRxDynamicLinker::isUnloadAllowed(const std::wstring& name) const {
  const Loaded* loaded = find(name);
  return loaded && loaded->unloadable;
}

bool QaRxDynamicLinker::isMultiDocument(const std::wstring& name) const {
  const Loaded* loaded = find(name);
  return loaded && loaded->multiDocument;
}

QaRxDynamicLinker& qarxDynamicLinker() {
  static QaRxDynamicLinker linker;
  return linker;
}

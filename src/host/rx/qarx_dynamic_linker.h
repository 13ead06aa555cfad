// The host's module loader: loads plug-in modules (runs their library-load hook, then
// sends the init message), tells them about drawings, and unloads them again. A module
// may ask, while it initialises, to be unloadable at any time and to be aware of
// several documents; a module that did not ask to be unloadable stays until the host
// shuts down (forced unload).
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

// What the host knows of a module. `attach` runs when the library is loaded (false
// refuses the load), `detach` when it is unloaded; `entryPoint` receives the messages.
struct QaRxModule {
  std::wstring name;
  std::function<bool()> attach;
  std::function<void()> detach;
  std::function<int(int msg, void* appData)> entryPoint;
};

class QaRxDynamicLinker {
 public:
  QaRxDynamicLinker() = default;
  ~QaRxDynamicLinker();
  QaRxDynamicLinker(const QaRxDynamicLinker&) = delete;
  QaRxDynamicLinker& operator=(const QaRxDynamicLinker&) = delete;

  // Attaches the module, sends the init message with the module's application id as
  // data, then the load-drawing message once per open document (each made current in
  // turn, the current one restored). False when a module of that name is loaded, when
  // attach refuses, or when init answers an error (the module is detached again).
  bool loadModule(QaRxModule module);
  // Sends unload-drawing per open document and the unload message, then detaches.
  // Without `force`, a module that did not ask to be unloadable stays (false).
  bool unloadModule(const std::wstring& name, bool force = false);
  // Unloads every module, last loaded first (host shutdown).
  void unloadAll();

  bool isLoaded(const std::wstring& name) const;
  std::vector<std::wstring> loadedModules() const;
  // Sends a message to one module; kRetError (3) when it is not loaded.
  int sendMessage(const std::wstring& name, int msg, void* appData);
  // Sends a message to every module in load order.
  void sendToAll(int msg, void* appData);

  // Requests of a module during init, by the application id it was given.
  bool allowUnload(const void* appId);
  bool declareMultiDocument(const void* appId);
  bool isUnloadAllowed(const std::wstring& name) const;
  bool isMultiDocument(const std::wstring& name) const;

 private:
  struct Loaded {
    QaRxModule module;
    bool unloadable = false;
    bool multiDocument = false;
  };
  Loaded* find(const std::wstring& name) const;
  Loaded* findById(const void* appId) const;
  void sendPerDocument(Loaded& loaded, int msg);

  std::vector<std::unique_ptr<Loaded>> modules_;
};

QaRxDynamicLinker& qarxDynamicLinker();

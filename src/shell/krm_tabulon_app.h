// The plug-in KrmTabulon as the host sees it: the application object CKrmTabulonApp
// with its message handlers, the two exports qarxEntryPoint and qarxGetApiVersion, and
// the module description the host's loader takes (library load and unload hooks).
//
// Library load: the language module of the user's locale becomes the plug-in's
// resource, and the per-document data managers come into being. Init: the command
// table goes onto the host's command stack and the card root is set to "Cards".
// Unload reverses both.
#pragma once

#include "host/rx/qarx_app.h"
#include "host/rx/qarx_dynamic_linker.h"

class QaLangResource;

inline constexpr wchar_t kKrmTabulonModuleName[] = L"KrmTabulon";

class CKrmTabulonApp : public QaRxQrxApp {
 public:
  CKrmTabulonApp() = default;

  // Registrations asked of the host's loader at init: may be unloaded at any time,
  // and works with several open drawings.
  bool m_allowUnload = true;
  bool m_multiDocument = true;

  // The plug-in's resource: its language module while loaded, else null. Not owned.
  const QaLangResource* resourceInstance() const;
  // True between init and unload.
  bool isInitialised() const { return initialised_; }

  QaRx::AppRetCode On_kInitAppMsg(void* appId) override;
  QaRx::AppRetCode On_kUnloadAppMsg(void* appId) override;

 private:
  bool initialised_ = false;
};

// The one application object.
CKrmTabulonApp& KrmTabulonApp();

// All host messages. Numbers 0 to 15 go to the application's handlers; any other
// number answers 0 and changes nothing.
int qarxEntryPoint(int msg, void* appData);
// The host API version the plug-in was built for.
int qarxGetApiVersion();
inline constexpr int kKrmHostApiVersion = 0x7E9000A;

// Library load and unload (the host's loader calls them around the messages). Load
// answers true in all cases: without a language module texts fall back on their literals.
bool KrmTabulonAttach();
void KrmTabulonDetach();
// True while the language module is initialised as the plug-in's resource.
bool KrmTabulonExtensionInitialised();

// The module as the host's loader takes it.
QaRxModule KrmTabulonModule();

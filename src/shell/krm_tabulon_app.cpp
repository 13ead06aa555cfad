#include "shell/krm_tabulon_app.h"

#include "host/ap/krm_doc_value.h"
#include "host/ed/qaed_command_stack.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/krm_card_root.h"
#include "shell/krm_command_table.h"

#include <memory>

namespace {

// What the library holds between load and unload.
struct ModuleState {
  std::unique_ptr<QaLangResource> language;
  bool extensionInitialised = false;
};

ModuleState& moduleState() {
  static ModuleState state;
  return state;
}

}  // namespace

CKrmTabulonApp& KrmTabulonApp() {
  static CKrmTabulonApp app;
  return app;
}

const QaLangResource* CKrmTabulonApp::resourceInstance() const {
  const auto& state = moduleState();
  return state.extensionInitialised ? state.language.get() : nullptr;
}

QaRx::AppRetCode CKrmTabulonApp::On_kInitAppMsg(void* appId) {
  auto& linker = qarxDynamicLinker();
  if (m_allowUnload) linker.allowUnload(appId);
  if (m_multiDocument) linker.declareMultiDocument(appId);
  // The plug-in registers no classes of its own: its objects are plain C++ types.
  auto& commands = qaedCommandStack();
  for (const auto& entry : KrmCommandTable()) {
    const QaLangResource* resource = (entry.flags & QA_CMD_NO_RESOURCE) ? nullptr : resourceInstance();
    commands.addCommand(entry.group, entry.globalName, KrmLocalNameOf(entry), entry.flags, entry.handler, resource);
  }
  KrmSetCardRoot(L"Cards");
  initialised_ = true;
  return QaRx::kRetOK;
}

QaRx::AppRetCode CKrmTabulonApp::On_kUnloadAppMsg(void*) {
  qaedCommandStack().removeGroup(kKrmCommandGroup);
  initialised_ = false;
  return QaRx::kRetOK;
}

int qarxEntryPoint(int msg, void* appData) {
  if (msg < QaRx::kNullMsg || msg > QaRx::kEndDialogMsg) return 0;
  return KrmTabulonApp().dispatch(msg, appData);
}

int qarxGetApiVersion() { return kKrmHostApiVersion; }

bool KrmTabulonAttach() {
  auto& state = moduleState();
  // A broken string table must not keep the plug-in from loading: its texts then come
  // from the literals in the code.
  try {
    state.language = loadLangResourceDLL("KrmTabulon", 1);
  } catch (const std::exception&) {
    state.language.reset();
  }
  if (!state.extensionInitialised && state.language) {
    state.extensionInitialised = true;
    qaSetResourceHandle(state.language.get());
  }
  KrmCreateDocDataManagers();
  return true;
}

void KrmTabulonDetach() {
  auto& state = moduleState();
  KrmDestroyDocDataManagers();
  if (state.extensionInitialised) {
    state.extensionInitialised = false;
    if (qaResourceHandle() == state.language.get()) qaSetResourceHandle(nullptr);
  }
  freeLangResourceDLL(state.language);
}

bool KrmTabulonExtensionInitialised() { return moduleState().extensionInitialised; }

QaRxModule KrmTabulonModule() {
  return QaRxModule{kKrmTabulonModuleName, &KrmTabulonAttach, &KrmTabulonDetach, &qarxEntryPoint};
}

#include "shell/krm_host_session.h"

#include "host/ap/qaap_doc_manager.h"
#include "host/ed/qaed_command_stack.h"
#include "host/rx/qarx_dynamic_linker.h"
#include "host/svc/krm_base_services.h"
#include "shell/krm_tabulon_app.h"

#include <stdexcept>

KrmHostSession::KrmHostSession(QaEdUserIO& io) : io_(io) {
  KrmRegisterBaseServices();
  if (!qarxDynamicLinker().loadModule(KrmTabulonModule())) {
    KrmUnregisterBaseServices();
    throw std::runtime_error("the KrmTabulon plug-in cannot be loaded: it is loaded already");
  }
}

KrmHostSession::~KrmHostSession() {
  qarxDynamicLinker().unloadModule(kKrmTabulonModuleName, true);
  qaDocManager().closeAll();
  KrmUnregisterBaseServices();
}

QaApDocument* KrmHostSession::openDrawing(const std::filesystem::path& path, std::string* error) {
  return qaDocManager().openDocument(path, error);
}

std::optional<int> KrmHostSession::runCommand(const std::wstring& name) { return qaedCommandStack().invoke(name); }

#include "shell/krm_host_session.h"

#include "host/ap/qaap_doc_manager.h"
#include "host/ed/qaed_command_stack.h"
#include "host/rx/qarx_dynamic_linker.h"
#include "shell/krm_tabulon_app.h"

#include <stdexcept>

KrmHostSession::KrmHostSession(QaEdUserIO& io) : host_(io) {
  if (!qarxDynamicLinker().loadModule(KrmTabulonModule()))
    throw std::runtime_error("the KrmTabulon plug-in cannot be loaded: it is loaded already");
}

KrmHostSession::~KrmHostSession() {
  // The host session then closes the drawings and takes the services out, as the host
  // does when it stops.
  qarxDynamicLinker().unloadModule(kKrmTabulonModuleName, true);
}

QaApDocument* KrmHostSession::openDrawing(const std::filesystem::path& path, std::string* error) {
  return host_.openDrawing(path, error);
}

std::optional<int> KrmHostSession::runCommand(const std::wstring& name) { return qaedCommandStack().invoke(name); }

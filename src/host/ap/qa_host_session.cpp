#include "host/ap/qa_host_session.h"

#include "host/ap/qaap_doc_manager.h"
#include "host/svc/krm_base_services.h"

QaHostSession::QaHostSession(QaEdUserIO& io) : io_(io) { KrmRegisterBaseServices(); }

QaHostSession::~QaHostSession() {
  qaDocManager().closeAll();
  KrmUnregisterBaseServices();
}

QaApDocument* QaHostSession::openDrawing(const std::filesystem::path& path, std::string* error) {
  return qaDocManager().openDocument(path, error);
}

#include "host/svc/krm_card_root.h"

#include "host/ap/qaap_doc_manager.h"
#include "host/rx/qarx_system_registry.h"
#include "host/svc/krm_base_services.h"
#include "host/svc/krm_std_service.h"

#include <stdexcept>

namespace {

std::wstring& cardRoot() {
  static std::wstring root = L"Cards";
  return root;
}

}  // namespace

const std::wstring& KrmCardRoot() { return cardRoot(); }

void KrmSetCardRoot(const std::wstring& root) { cardRoot() = root; }

bool KrmResolveCardRoot() {
  auto* service = qaFindService<KrmStdService>(KRM_STD_SERVICE);
  if (!service) throw std::runtime_error("the host offers no KRM_STD_SERVICE");
  std::wstring dir = service->getTabulonDir(qaWorkingDatabase());
  while (!dir.empty() && (dir.back() == L'/' || dir.back() == L'\\')) dir.pop_back();
  cardRoot() = dir;
  return !dir.empty();
}

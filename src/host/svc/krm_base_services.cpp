#include "host/svc/krm_base_services.h"

#include "host/rx/qarx_system_registry.h"
#include "host/svc/krm_frm_service.h"
#include "host/svc/krm_reg_service.h"
#include "host/svc/krm_std_service.h"

#include <memory>

void KrmRegisterBaseServices() {
  auto& services = qaServiceDictionary();
  if (!services.at(KRM_STD_SERVICE)) services.atPut(KRM_STD_SERVICE, std::make_unique<KrmStdService>());
  if (!services.at(KRM_REG_SERVICE)) services.atPut(KRM_REG_SERVICE, std::make_unique<KrmRegService>());
  if (!services.at(KRM_FRM_SERVICE)) services.atPut(KRM_FRM_SERVICE, std::make_unique<KrmFrmService>());
}

void KrmUnregisterBaseServices() {
  auto& services = qaServiceDictionary();
  services.remove(KRM_STD_SERVICE);
  services.remove(KRM_REG_SERVICE);
  services.remove(KRM_FRM_SERVICE);
}

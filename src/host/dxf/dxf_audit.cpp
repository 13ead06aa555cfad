#include "host/dxf/dxf_audit.h"

namespace tabulon::dxf {

std::vector<std::string> DxfAuditReport::lines() const {
  std::vector<std::string> out;
  out.reserve(findings_.size());
  for (const auto& f : findings_)
    out.push_back(f.line ? "line " + std::to_string(f.line) + ": " + f.message : f.message);
  return out;
}

}  // namespace tabulon::dxf

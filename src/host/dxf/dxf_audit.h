// Flaws of a drawing that the reader repaired while loading it (duplicate
// handles, missing owners, unregistered application names...). They are
// reported, not thrown: the drawing loaded.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tabulon::dxf {

struct DxfFinding {
  std::size_t line = 0;  // 0 when not tied to a line
  std::string message;   // what was wrong and what was done
};

class DxfAuditReport {
 public:
  void add(std::size_t line, std::string message) { findings_.push_back({line, std::move(message)}); }
  const std::vector<DxfFinding>& findings() const { return findings_; }
  bool empty() const { return findings_.empty(); }
  std::size_t size() const { return findings_.size(); }
  // Lines "line N: message" (or just the message), one per finding.
  std::vector<std::string> lines() const;

 private:
  std::vector<DxfFinding> findings_;
};

}  // namespace tabulon::dxf

// One block class of a table template: the block name and its attribute
// definitions in the template's order. A plain copyable value.
#pragma once

#include <string>
#include <vector>

#include "card/att_set.h"

class KrmBlockSet {
 public:
  KrmBlockSet() = default;
  KrmBlockSet(const std::wstring& blockName, const std::vector<KrmAttSet>& atts)
      : blockName_(blockName), atts_(atts) {}

  const std::wstring& GetBlockName() const { return blockName_; }
  // Replaces `out` with a copy of the attributes.
  void GetAtt(std::vector<KrmAttSet>& out) const { out = atts_; }
  const std::vector<KrmAttSet>& Atts() const { return atts_; }

  friend bool operator==(const KrmBlockSet&, const KrmBlockSet&) = default;

 private:
  std::wstring blockName_;
  std::vector<KrmAttSet> atts_;
};

// The HEADER section: every variable in the order of the file, each with its
// tags (one for most, two or three for points). Values are kept as UTF-8 text
// exactly as read (escapes included), so unknown variables pass through.
// $ACADVER, $DWGCODEPAGE and $HANDSEED have typed accessors.
#pragma once

#include "host/dxf/dxf_version.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tabulon::dxf {

struct DxfHeaderTag {
  int code = 0;
  std::string value;
  bool operator==(const DxfHeaderTag&) const = default;
};

struct DxfHeaderVariable {
  std::string name;  // with the leading '$'
  std::vector<DxfHeaderTag> tags;  // 999 comments that followed the values included
  bool operator==(const DxfHeaderVariable&) const = default;
};

class DxfHeader {
 public:
  const std::vector<DxfHeaderVariable>& variables() const { return vars_; }
  std::vector<DxfHeaderVariable>& variables() { return vars_; }

  const DxfHeaderVariable* find(std::string_view name) const;
  // The first value of a variable, if present.
  std::optional<std::string_view> value(std::string_view name) const;
  // Replaces a variable's tags, or appends the variable at the end (or after
  // `after` when that one exists).
  void set(std::string_view name, std::vector<DxfHeaderTag> tags, std::string_view after = {});
  void setValue(std::string_view name, int code, std::string value, std::string_view after = {});
  void remove(std::string_view name);

  std::optional<DxfVersion> version() const;
  void setVersion(DxfVersion version);
  std::optional<std::string> codePage() const;
  void setCodePage(const std::string& codePage);
  std::optional<std::uint64_t> handSeed() const;
  void setHandSeed(std::uint64_t seed);

 private:
  std::vector<DxfHeaderVariable> vars_;
};

}  // namespace tabulon::dxf

// Where the tags of R12 entities and table records go when they are written
// with subclass markers (R12 files have none): the subclasses of each kind
// the database does not model, with the group codes each one holds.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace tabulon::dxf {

struct DxfR12Subclass {
  std::string_view marker;
  std::span<const int> codes;
};

// Empty for kinds without a known layout: their tags follow AcDbEntity.
const std::vector<DxfR12Subclass>& dxfR12Subclasses(std::string_view type);
// The record subclass of a table record type ("VPORT" -> "AcDbViewportTableRecord").
std::string_view dxfRecordSubclass(std::string_view recordType);

}  // namespace tabulon::dxf

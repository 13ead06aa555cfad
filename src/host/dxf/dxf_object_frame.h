// The parts every entity and object shares, found in its tags: handle (5, or
// 105 for DIMSTYLE), application groups (102 {NAME ... 102 }), persistent
// reactors, extension dictionary, owner (330), the body, and the extended
// data that closes it (from the first 1001). Indexes refer to the tag list
// the frame was made from.
#pragma once

#include "host/dxf/dxf_tag.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tabulon::dxf {

struct DxfAppGroup {
  std::string_view name;  // without the "{"
  std::size_t begin = 0;  // index of "102 {NAME"
  std::size_t end = 0;    // one past "102 }"
};

struct DxfObjectFrame {
  std::string_view type;
  std::uint64_t handle = 0;  // 0 when the object has none
  int handleIndex = -1;
  std::vector<DxfAppGroup> appGroups;  // in order, reactors and xdictionary included
  std::vector<std::uint64_t> reactors;
  std::uint64_t xdictionary = 0;
  std::uint64_t owner = 0;  // 0 when none is given
  int ownerIndex = -1;
  std::size_t bodyBegin = 0;   // first tag after the common part
  std::size_t xdataBegin = 0;  // first 1001 tag, or the number of tags

  bool hasXData(std::size_t tagCount) const { return xdataBegin < tagCount; }
};

// Reads the frame of `tags` (the "0" tag first). Malformed handles are left 0;
// an application group without its closing "102 }" ends at the first tag that
// cannot belong to it.
// `first` is where the common part starts (2 for a TABLE head, whose name
// comes before its handle). `firstXData`, when known, is the index of the first
// 1001 tag of all (tags.size() when there is none), which spares looking for it.
DxfObjectFrame dxfReadFrame(std::span<const DxfTag> tags, std::size_t first = 1,
                            std::size_t firstXData = std::string_view::npos);

// True when the body holds no subclass marker (100): every object of an R12 file,
// and the entities some writers of R13 and R14 files leave in that older form.
// Their tags are read and written as in R12, whatever the file's version.
bool dxfBodyIsFlat(std::span<const DxfTag> tags, const DxfObjectFrame& frame);

}  // namespace tabulon::dxf

#include "host/dxf/dxf_object_frame.h"

#include <algorithm>

namespace tabulon::dxf {

DxfObjectFrame dxfReadFrame(std::span<const DxfTag> tags, std::size_t first, std::size_t firstXData) {
  DxfObjectFrame frame;
  if (tags.empty()) return frame;
  frame.type = dxfTrim(tags[0].value);
  const std::size_t n = tags.size();
  std::size_t i = std::min(first, n);
  while (i < n) {
    const DxfTag& t = tags[i];
    if ((t.code == 5 || t.code == 105) && frame.handleIndex < 0) {
      frame.handle = dxfParseHandle(t.value).value_or(0);
      frame.handleIndex = static_cast<int>(i);
      ++i;
    } else if (t.code == 102 && !t.value.empty() && dxfTrim(t.value).front() == '{') {
      DxfAppGroup group;
      group.name = dxfTrim(t.value).substr(1);
      group.begin = i;
      std::size_t j = i + 1;
      while (j < n && !(tags[j].code == 102 && dxfTrim(tags[j].value) == "}") && tags[j].code != 100 &&
             tags[j].code != 102 && tags[j].code != 0) {
        if (group.name == "ACAD_REACTORS" && tags[j].code == 330) {
          if (auto h = dxfParseHandle(tags[j].value)) frame.reactors.push_back(*h);
        } else if (group.name == "ACAD_XDICTIONARY" && tags[j].code == 360) {
          frame.xdictionary = dxfParseHandle(tags[j].value).value_or(0);
        }
        ++j;
      }
      if (j < n && tags[j].code == 102 && dxfTrim(tags[j].value) == "}") ++j;
      group.end = j;
      frame.appGroups.push_back(group);
      i = j;
    } else if (t.code == 330 && frame.ownerIndex < 0) {
      frame.owner = dxfParseHandle(t.value).value_or(0);
      frame.ownerIndex = static_cast<int>(i);
      ++i;
    } else if (t.code == 999) {
      ++i;
    } else {
      break;
    }
  }
  frame.bodyBegin = i;
  frame.xdataBegin = n;
  // No 1001 comes before firstXData: when that lies in the body, it is the start.
  if (firstXData != std::string_view::npos && firstXData >= i) {
    frame.xdataBegin = std::min(firstXData, n);
    return frame;
  }
  for (std::size_t k = i; k < n; ++k) {
    if (tags[k].code == 1001) {
      frame.xdataBegin = k;
      break;
    }
  }
  return frame;
}

bool dxfBodyIsFlat(std::span<const DxfTag> tags, const DxfObjectFrame& frame) {
  // The marker comes first in the body of nearly every modern object: one look.
  for (std::size_t i = frame.bodyBegin; i < frame.xdataBegin && i < tags.size(); ++i)
    if (tags[i].code == 100) return false;
  return true;
}

}  // namespace tabulon::dxf

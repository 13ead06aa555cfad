#include "host/dxf/dxf_r12_subclasses.h"

#include <map>
#include <string>

namespace tabulon::dxf {

namespace {

constexpr int kFace[] = {10, 20, 30, 11, 21, 31, 12, 22, 32, 13, 23, 33, 70};
constexpr int kTrace[] = {10, 20, 30, 11, 21, 31, 12, 22, 32, 13, 23, 33, 39, 210, 220, 230};
constexpr int kShape[] = {39, 10, 20, 30, 40, 2, 50, 41, 51, 210, 220, 230};
constexpr int kViewport[] = {10, 20, 30, 40, 41, 68, 69};
constexpr int kLine3d[] = {39, 10, 20, 30, 11, 21, 31, 210, 220, 230};

}  // namespace

const std::vector<DxfR12Subclass>& dxfR12Subclasses(std::string_view type) {
  static const std::map<std::string, std::vector<DxfR12Subclass>, std::less<>> table = {
      {"3DFACE", {{"AcDbFace", kFace}}},
      {"TRACE", {{"AcDbTrace", kTrace}}},
      {"SHAPE", {{"AcDbShape", kShape}}},
      {"VIEWPORT", {{"AcDbViewport", kViewport}}},
      {"3DLINE", {{"AcDbLine", kLine3d}}},
  };
  static const std::vector<DxfR12Subclass> none;
  auto it = table.find(type);
  return it == table.end() ? none : it->second;
}

std::string_view dxfRecordSubclass(std::string_view type) {
  if (type == "VPORT") return "AcDbViewportTableRecord";
  if (type == "LTYPE") return "AcDbLinetypeTableRecord";
  if (type == "LAYER") return "AcDbLayerTableRecord";
  if (type == "STYLE") return "AcDbTextStyleTableRecord";
  if (type == "VIEW") return "AcDbViewTableRecord";
  if (type == "UCS") return "AcDbUCSTableRecord";
  if (type == "APPID") return "AcDbRegAppTableRecord";
  if (type == "DIMSTYLE") return "AcDbDimStyleTableRecord";
  if (type == "BLOCK_RECORD") return "AcDbBlockTableRecord";
  return "AcDbSymbolTableRecord";
}

}  // namespace tabulon::dxf

// The sample assembly drawing: an A3 sheet with a drawing frame (block A3FRAME), a
// title block (TITLE) and the bill of materials as one BOMROW reference per part,
// stacked above the title block, around an outline of the assembly. The options of
// SampleOptionsText() make these known to the frame rules.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/db/qadb_object_id.h"
#include "host/ge/qage_point3d.h"

class QaDbDatabase;

namespace tabulon::samples {

inline constexpr wchar_t kFrameBlock[] = L"A3FRAME";
inline constexpr wchar_t kTitleBlock[] = L"TITLE";
inline constexpr wchar_t kBomRowBlock[] = L"BOMROW";
inline constexpr double kSheetWidth = 420;
inline constexpr double kSheetHeight = 297;

// One line of the bill of materials; fields by the BOMROW attribute tags.
struct BomLine {
  std::wstring number;    // 序号
  std::wstring code;      // 代号
  std::wstring name;      // 名称
  std::wstring quantity;  // 数量
  std::wstring material;  // 材料
  std::wstring weight;    // 单重
  std::wstring total;     // 总重
  std::wstring note;      // 备注
};

// The title block's fields by tag (图样代号, 图样名称, 单位名称, 材料, 比例, 重量, 设计,
// 审核, 工艺, 批准), and the parts.
struct AssemblySheet {
  enum class Outline { OutputShaft, Cover };
  std::vector<std::pair<std::wstring, std::wstring>> title;
  std::vector<BomLine> parts;
  Outline outline = Outline::OutputShaft;  // what the sheet shows of the assembly
};

// The output shaft assembly of a gear reducer, and its cover assembly: two sheets
// with parts of their own.
AssemblySheet SampleOutputShaftSheet();
AssemblySheet SampleCoverSheet();

// Draws a sheet with its lower-left corner at `origin`; the three blocks are defined on
// first use. Returns the frame's reference.
QaDbObjectId DrawAssemblySheet(QaDbDatabase& db, const QaGePoint3d& origin, const AssemblySheet& sheet);

}  // namespace tabulon::samples

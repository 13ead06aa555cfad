// Drawing paper forms into a database the way a template author would by hand: border
// and table lines on their layers, centred labels, and attribute blocks whose attribute
// definitions carry the cell descriptions as extended data ("KRM_XDATA_…", plain
// lists as outside authoring tools write them). Used to make the sample card library
// and the sample assembly drawing. The database is not owned and must outlive the form.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/db/qadb_object_id.h"

class QaDbDatabase;
class QaDbEntity;

namespace tabulon::samples {

// Layers of the forms, with their colours and line weights.
inline constexpr wchar_t kLayerThick[] = L"粗实线";   // frames: 0.5 mm
inline constexpr wchar_t kLayerThin[] = L"细实线";    // table lines: 0.18 mm
inline constexpr wchar_t kLayerLabel[] = L"文字";     // printed labels
inline constexpr wchar_t kLayerFill[] = L"填写";      // cells filled in (blue)
inline constexpr wchar_t kLayerDrawing[] = L"轮廓线";  // part outlines of the sample assembly
inline constexpr wchar_t kLayerCentre[] = L"中心线";   // centre lines (red)
// The text style of all forms: the CJK TrueType font of the platform.
inline constexpr wchar_t kFormTextStyle[] = L"HZ";
inline constexpr wchar_t kFormFontFile[] = L"wqy-microhei.ttc";

// Makes the layers and the text style above in `db` when they are missing. Returns
// the text style's id.
QaDbObjectId EnsureFormStyles(QaDbDatabase& db);

// One cell of an attribute block: an attribute definition set as fit text between
// the cell's side margins, on a baseline that centres it vertically. Empty
// descriptors are not written.
struct FormCell {
  std::wstring tag;
  double x0 = 0, y0 = 0, x1 = 0, y1 = 0;  // the cell's box in block coordinates
  double textHeight = 3.0;
  std::wstring code;           // KRM_XDATA_CODE
  std::wstring valueType;      // KRM_XDATA_VTYPE word: "NumberInt", "Number", ...
  std::wstring decimals;       // second item of KRM_XDATA_VTYPE
  std::wstring align;          // "CENTER", "RIGHT", "" left
  std::wstring rowType;        // "kFit", "kNewline", ""
  std::wstring control;        // "CMB_DOWN", "CMB_LIST", "EDT_REAL", ...
  std::wstring controlValues;  // items joined by ";"
  std::wstring defaultValue;
  std::wstring expression;     // KRM_XDATA_EXPRE
  std::wstring order;          // KRM_XDATA_ORDER
};

class FormSheet {
 public:
  explicit FormSheet(QaDbDatabase& db);

  QaDbDatabase& database() const { return db_; }

  // Where lines, boxes and labels go: a block definition, or model space (null id, the
  // start).
  void DrawInto(QaDbObjectId block) { target_ = block; }
  // Moves everything drawn into model space from now on by (dx, dy).
  void SetOffset(double dx, double dy) {
    dx_ = dx;
    dy_ = dy;
  }
  // An empty block definition to draw into.
  QaDbObjectId NewBlock(const std::wstring& name);

  // Lines and boxes, thick (frames) or thin (table lines).
  QaDbObjectId Line(double x0, double y0, double x1, double y1, bool thick = false);
  QaDbObjectId Box(double x0, double y0, double x1, double y1, bool thick = false);
  // Lines on another layer (part outlines, centre lines).
  QaDbObjectId LineOn(const std::wstring& layer, double x0, double y0, double x1, double y1);
  QaDbObjectId CircleOn(const std::wstring& layer, double cx, double cy, double r);
  // A label centred in the box, made smaller when it would not fit its width.
  QaDbObjectId Label(const std::wstring& text, double x0, double y0, double x1, double y1, double height = 3.5);
  // A label set left in the box, with a margin of 1.
  QaDbObjectId LabelLeft(const std::wstring& text, double x0, double y0, double y1, double height = 3.5);

  // A block definition of attribute definitions, one per cell (base point 0,0).
  QaDbObjectId Block(const std::wstring& name, const std::vector<FormCell>& cells);
  // Adds attribute definitions for `cells` to an existing block.
  void AddCells(QaDbObjectId block, const std::vector<FormCell>& cells);
  // A reference in model space at (x, y) with one attribute per definition of the block,
  // holding the definition's default text.
  QaDbObjectId Insert(QaDbObjectId block, double x, double y);
  // Sets the text of the reference's attribute `tag`; false when it has none.
  bool SetAttribute(QaDbObjectId reference, const std::wstring& tag, const std::wstring& text);
  // Marks a reference with an application of no items (frames, title blocks, BOM rows
  // may be recognised by such a mark instead of by block name).
  void Mark(QaDbObjectId reference, const std::wstring& appName);

  // Every live entity of model space, in drawing order.
  std::vector<QaDbObjectId> ModelSpaceIds() const;

 private:
  QaDbObjectId Append(std::unique_ptr<QaDbEntity> entity, QaDbObjectId owner);
  // `height`, or less so that `text` is no wider than `room`.
  double FittingHeight(const std::wstring& text, double room, double height) const;

  QaDbDatabase& db_;
  QaDbObjectId style_;
  QaDbObjectId target_;
  double dx_ = 0, dy_ = 0;
};

}  // namespace tabulon::samples

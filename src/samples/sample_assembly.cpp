#include "samples/sample_assembly.h"

#include "host/db/qadb_block_table.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_open.h"
#include "samples/sample_form.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tabulon::samples {

namespace {

// The title block, 180 x 56 in four rows of 14, placed at the frame's lower right.
constexpr double kTitleX = 235, kTitleY = 5;
constexpr double kTitleW = 180, kTitleRow = 14;
// Rows of the bill of materials above it.
constexpr double kBomRowHeight = 7;
constexpr double kBomColumns[] = {8, 36, 40, 8, 32, 12, 12, 32};
constexpr const wchar_t* kBomTags[] = {L"序号", L"代号", L"名称", L"数量", L"材料", L"单重", L"总重", L"备注"};

FormCell cell(const wchar_t* tag, double x0, double y0, double x1, double y1, double height,
              const wchar_t* align = L"CENTER") {
  FormCell c;
  c.tag = tag;
  c.x0 = x0;
  c.y0 = y0;
  c.x1 = x1;
  c.y1 = y1;
  c.textHeight = height;
  c.align = align;
  c.rowType = L"kFit";
  return c;
}

QaDbObjectId existingBlock(QaDbDatabase& db, const std::wstring& name) {
  QaDbObjectPointer<QaDbBlockTable> table(db.blockTableId(), QaDb::kForRead);
  return table ? table->getAt(name) : QaDbObjectId();
}

QaDbObjectId frameBlock(FormSheet& s) {
  QaDbObjectId id = existingBlock(s.database(), kFrameBlock);
  if (!id.isNull()) return id;
  id = s.NewBlock(kFrameBlock);
  s.DrawInto(id);
  s.Box(0, 0, kSheetWidth, kSheetHeight);
  s.Box(25, 5, kSheetWidth - 5, kSheetHeight - 5, true);
  s.DrawInto({});
  return id;
}

QaDbObjectId titleBlock(FormSheet& s) {
  QaDbObjectId id = existingBlock(s.database(), kTitleBlock);
  if (!id.isNull()) return id;
  id = s.NewBlock(kTitleBlock);
  s.DrawInto(id);
  const double h = 4 * kTitleRow;
  s.Box(0, 0, kTitleW, h, true);
  s.Line(18, 0, 18, h);
  s.Line(58, 0, 58, h);
  s.Line(76, kTitleRow, 76, h);  // the sheet count spans the last row
  s.Line(118, 0, 118, h, true);
  for (int r = 1; r < 4; ++r) s.Line(0, r * kTitleRow, 118, r * kTitleRow);
  s.Line(118, kTitleRow, kTitleW, kTitleRow);
  s.Line(118, 3 * kTitleRow, kTitleW, 3 * kTitleRow);
  const wchar_t* people[] = {L"批准", L"工艺", L"审核", L"设计"};
  const wchar_t* data[] = {nullptr, L"比例", L"重量", L"材料"};
  std::vector<FormCell> cells;
  for (int r = 0; r < 4; ++r) {
    const double y0 = r * kTitleRow, y1 = y0 + kTitleRow;
    s.Label(people[r], 0, y0, 18, y1, 3.5);
    cells.push_back(cell(people[r], 18, y0, 58, y1, 3.5));
    if (data[r]) {
      s.Label(data[r], 58, y0, 76, y1, 3.5);
      cells.push_back(cell(data[r], 76, y0, 118, y1, 3.5));
    }
  }
  s.Label(L"共 1 张    第 1 张", 58, 0, 118, kTitleRow, 3.5);
  cells.push_back(cell(L"单位名称", 118, 3 * kTitleRow, kTitleW, h, 4.0));
  cells.push_back(cell(L"图样名称", 118, kTitleRow, kTitleW, 3 * kTitleRow, 6.0));
  cells.push_back(cell(L"图样代号", 118, 0, kTitleW, kTitleRow, 5.0));
  s.AddCells(id, cells);
  s.DrawInto({});
  return id;
}

QaDbObjectId bomRowBlock(FormSheet& s) {
  QaDbObjectId id = existingBlock(s.database(), kBomRowBlock);
  if (!id.isNull()) return id;
  id = s.NewBlock(kBomRowBlock);
  s.DrawInto(id);
  s.Box(0, 0, kTitleW, kBomRowHeight);
  std::vector<FormCell> cells;
  double x = 0;
  for (std::size_t i = 0; i < std::size(kBomColumns); ++i) {
    if (i > 0) s.Line(x, 0, x, kBomRowHeight);
    const bool left = i == 1 || i == 2 || i == 7;
    cells.push_back(cell(kBomTags[i], x, 0, x + kBomColumns[i], kBomRowHeight, 2.5, left ? L"" : L"CENTER"));
    x += kBomColumns[i];
  }
  s.AddCells(id, cells);
  s.DrawInto({});
  return id;
}

// The BOM's column heads, right above the title block.
void drawBomHead(FormSheet& s, double y) {
  s.Box(kTitleX, y, kTitleX + kTitleW, y + kBomRowHeight);
  double x = kTitleX;
  for (std::size_t i = 0; i < std::size(kBomColumns); ++i) {
    if (i > 0) s.Line(x, y, x, y + kBomRowHeight);
    s.Label(kBomTags[i], x, y, x + kBomColumns[i], y + kBomRowHeight, 3.0);
    x += kBomColumns[i];
  }
}

// A balloon: a leader from the part to a circle with the part's number.
void balloon(FormSheet& s, const wchar_t* number, double px, double py, double bx, double by) {
  const double r = 5;
  const double dx = px - bx, dy = py - by;
  const double len = std::sqrt(dx * dx + dy * dy);
  s.LineOn(kLayerThin, px, py, bx + dx / len * r, by + dy / len * r);
  s.CircleOn(kLayerThin, bx, by, r);
  s.Label(number, bx - r, by - r, bx + r, by + r, 4.0);
}

// Front view and top view of the gearbox cover with its inspection cover and breather.
void drawCoverOutline(FormSheet& s) {
  // Front view: flange, body, inspection cover, breather.
  s.LineOn(kLayerCentre, 140, 95, 140, 265);
  const double body[][2] = {{50, 110}, {230, 110}, {230, 135}, {210, 135}, {190, 225}, {90, 225}, {70, 135}, {50, 135}};
  for (std::size_t i = 0; i < std::size(body); ++i) {
    const auto& a = body[i];
    const auto& b = body[(i + 1) % std::size(body)];
    s.LineOn(kLayerDrawing, a[0], a[1], b[0], b[1]);
  }
  s.LineOn(kLayerDrawing, 110, 225, 110, 233);
  s.LineOn(kLayerDrawing, 110, 233, 170, 233);
  s.LineOn(kLayerDrawing, 170, 233, 170, 225);
  s.LineOn(kLayerDrawing, 135, 233, 135, 245);
  s.LineOn(kLayerDrawing, 135, 245, 145, 245);
  s.LineOn(kLayerDrawing, 145, 245, 145, 233);
  for (double x : {62.0, 218.0}) {
    s.LineOn(kLayerThin, x - 4, 110, x - 4, 135);
    s.LineOn(kLayerThin, x + 4, 110, x + 4, 135);
    s.LineOn(kLayerCentre, x, 105, x, 140);
  }
  // Top view: the flange outline with bolt holes and the two bearing bores.
  s.LineOn(kLayerCentre, 245, 205, 415, 205);
  s.Box(255, 140, 405, 270);
  for (double x : {270.0, 330.0, 390.0})
    for (double y : {152.0, 258.0}) s.CircleOn(kLayerDrawing, x, y, 5);
  s.LineOn(kLayerCentre, 300, 150, 300, 260);
  s.LineOn(kLayerCentre, 365, 150, 365, 260);
  s.CircleOn(kLayerDrawing, 300, 205, 34);
  s.CircleOn(kLayerDrawing, 365, 205, 26);
  balloon(s, L"1", 80, 180, 60, 255);
  balloon(s, L"2", 150, 230, 120, 262);
  balloon(s, L"3", 140, 242, 160, 270);
  balloon(s, L"4", 218, 125, 235, 255);
}

// Section of the output shaft with its gear and bearings, and an end view.
void drawShaftOutline(FormSheet& s) {
  const double cy = 170;
  s.LineOn(kLayerCentre, 42, cy, 222, cy);
  s.LineOn(kLayerCentre, 144, 100, 144, 240);
  struct Step {
    double x0, x1, r;
  } steps[] = {{50, 80, 10}, {80, 100, 13}, {100, 118, 15}, {118, 170, 18}, {170, 178, 21}, {178, 196, 15},
               {196, 215, 12}};
  for (const auto& st : steps) {
    s.LineOn(kLayerDrawing, st.x0, cy + st.r, st.x1, cy + st.r);
    s.LineOn(kLayerDrawing, st.x0, cy - st.r, st.x1, cy - st.r);
  }
  for (std::size_t i = 0; i <= std::size(steps); ++i) {
    const double x = i < std::size(steps) ? steps[i].x0 : steps[i - 1].x1;
    const double r0 = i > 0 ? steps[i - 1].r : 0;
    const double r1 = i < std::size(steps) ? steps[i].r : 0;
    const double r = std::max(r0, r1);
    s.LineOn(kLayerDrawing, x, cy - r, x, cy + r);
  }
  // The gear on its seat, with its pitch line.
  for (double y : {110.0, 230.0}) s.LineOn(kLayerDrawing, 125, y, 163, y);
  s.LineOn(kLayerDrawing, 125, 110, 125, 230);
  s.LineOn(kLayerDrawing, 163, 110, 163, 230);
  for (double y : {114.0, 226.0}) s.LineOn(kLayerCentre, 122, y, 166, y);
  // Two bearings: outer rings with the crossed rolling elements.
  for (double x0 : {100.0, 178.0}) {
    for (double sign : {1.0, -1.0}) {
      const double y0 = cy + sign * 15, y1 = cy + sign * 27;
      s.LineOn(kLayerDrawing, x0, y1, x0 + 18, y1);
      s.LineOn(kLayerDrawing, x0, y0, x0, y1);
      s.LineOn(kLayerDrawing, x0 + 18, y0, x0 + 18, y1);
      s.LineOn(kLayerThin, x0, y0, x0 + 18, y1);
      s.LineOn(kLayerThin, x0, y1, x0 + 18, y0);
    }
  }
  // End view of the gear.
  const double ex = 330, ey = 205;
  s.LineOn(kLayerCentre, ex - 70, ey, ex + 70, ey);
  s.LineOn(kLayerCentre, ex, ey - 70, ex, ey + 70);
  s.CircleOn(kLayerDrawing, ex, ey, 60);
  s.CircleOn(kLayerCentre, ex, ey, 56);
  s.CircleOn(kLayerDrawing, ex, ey, 30);
  s.CircleOn(kLayerDrawing, ex, ey, 18);
  s.LineOn(kLayerDrawing, ex - 4, ey + 17.5, ex - 4, ey + 22);
  s.LineOn(kLayerDrawing, ex + 4, ey + 17.5, ex + 4, ey + 22);
  s.LineOn(kLayerDrawing, ex - 4, ey + 22, ex + 4, ey + 22);
  balloon(s, L"1", 65, cy + 5, 60, 255);
  balloon(s, L"2", 150, 200, 150, 262);
  balloon(s, L"3", 109, cy + 24, 100, 255);
  balloon(s, L"4", 174, cy + 18, 190, 255);
}

}  // namespace

AssemblySheet SampleOutputShaftSheet() {
  AssemblySheet sheet;
  sheet.title = {{L"图样代号", L"XH-01-00"}, {L"图样名称", L"输出轴组件"}, {L"单位名称", L"星河减速机有限公司"},
                 {L"材料", L""},          {L"比例", L"1:2"},          {L"重量", L"8.6"},
                 {L"设计", L"张伟"},      {L"审核", L"李强"},        {L"工艺", L"王芳"},
                 {L"批准", L"赵敏"}};
  sheet.parts = {
      {L"1", L"XH-01-01", L"输出轴", L"1", L"45", L"2.35", L"2.35", L"调质"},
      {L"2", L"XH-01-02", L"大齿轮 m3 z38", L"1", L"40Cr", L"3.80", L"3.80", L""},
      {L"3", L"GB/T 276-2013", L"深沟球轴承 6206", L"2", L"GCr15", L"0.20", L"0.40", L"外购"},
      {L"4", L"XH-01-03", L"轴套", L"1", L"Q235", L"0.21", L"0.21", L""},
      {L"5", L"GB/T 1096-2003", L"平键 10×8×32", L"1", L"45", L"0.02", L"0.02", L""},
      {L"6", L"XH-01-04", L"轴承端盖", L"1", L"HT200", L"0.95", L"0.95", L""},
      {L"7", L"GB/T 5783-2016", L"六角头螺栓 M8×20", L"6", L"8.8级", L"0.01", L"0.06", L"镀锌"},
      {L"8", L"XH-01-05", L"骨架油封 30×52×7", L"1", L"丁腈橡胶", L"0.01", L"0.01", L"外购"},
  };
  return sheet;
}

AssemblySheet SampleCoverSheet() {
  AssemblySheet sheet;
  sheet.title = {{L"图样代号", L"XH-02-00"}, {L"图样名称", L"箱盖组件"}, {L"单位名称", L"星河减速机有限公司"},
                 {L"比例", L"1:5"},          {L"重量", L"21.4"},       {L"设计", L"陈晨"},
                 {L"审核", L"李强"},        {L"批准", L"赵敏"}};
  sheet.parts = {
      {L"1", L"XH-02-01", L"箱盖", L"1", L"HT200", L"18.60", L"18.60", L""},
      {L"2", L"XH-02-02", L"窥视孔盖", L"1", L"Q235", L"0.45", L"0.45", L""},
      {L"3", L"XH-02-03", L"通气器", L"1", L"Q235", L"0.12", L"0.12", L""},
      {L"4", L"GB/T 5783-2016", L"六角头螺栓 M6×16", L"4", L"8.8级", L"0.01", L"0.04", L"镀锌"},
      {L"5", L"GB/T 117-2000", L"圆锥销 8×35", L"2", L"35", L"0.02", L"0.04", L""},
  };
  sheet.outline = AssemblySheet::Outline::Cover;
  return sheet;
}

QaDbObjectId DrawAssemblySheet(QaDbDatabase& db, const QaGePoint3d& origin, const AssemblySheet& sheet) {
  FormSheet s(db);
  const QaDbObjectId frame = frameBlock(s);
  const QaDbObjectId title = titleBlock(s);
  const QaDbObjectId row = bomRowBlock(s);
  s.SetOffset(origin.x, origin.y);
  const QaDbObjectId frameRef = s.Insert(frame, 0, 0);
  const QaDbObjectId titleRef = s.Insert(title, kTitleX, kTitleY);
  for (const auto& [tag, text] : sheet.title) s.SetAttribute(titleRef, tag, text);
  const double headY = kTitleY + 4 * kTitleRow;
  drawBomHead(s, headY);
  for (std::size_t i = 0; i < sheet.parts.size(); ++i) {
    const BomLine& part = sheet.parts[i];
    const QaDbObjectId ref = s.Insert(row, kTitleX, headY + (i + 1) * kBomRowHeight);
    const std::wstring* fields[] = {&part.number, &part.code,   &part.name,  &part.quantity,
                                    &part.material, &part.weight, &part.total, &part.note};
    for (std::size_t k = 0; k < std::size(fields); ++k) s.SetAttribute(ref, kBomTags[k], *fields[k]);
  }
  if (sheet.outline == AssemblySheet::Outline::Cover)
    drawCoverOutline(s);
  else
    drawShaftOutline(s);
  return frameRef;
}

}  // namespace tabulon::samples

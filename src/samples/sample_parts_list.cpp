// The parts list card: a portrait A4 page with the assembly's drawing number and name,
// a table of parts as the bill of materials gives them, a sign-off band and the page
// numbers. The columns take the BOM's fields by their show names; the header takes the
// title data by the cells' codes.
#include <string>

#include "samples/sample_library.h"
#include "samples/sample_pages.h"

namespace tabulon::samples {

namespace {

constexpr double kWidth = 210, kHeight = 297;
constexpr double kLeft = 25, kRight = 205, kTop = 292, kBottom = 5;
constexpr double kRowHeight = 8;
constexpr double kBandTop = 21, kBandMid = 13;

const std::vector<FormColumn>& partColumns() {
  static const std::vector<FormColumn> columns = {
      {L"序号", 10}, {L"代号", 40}, {L"名称", 40}, {L"数量", 12}, {L"材料", 25}, {L"单件", 14}, {L"总计", 14}, {L"备注", 25},
  };
  return columns;
}

FormCell box(const wchar_t* tag, double x0, double y0, double x1, double y1, double height) {
  FormCell c;
  c.tag = tag;
  c.x0 = x0;
  c.y0 = y0;
  c.x1 = x1;
  c.y1 = y1;
  c.textHeight = height;
  return c;
}

std::vector<FormCell> partCells() {
  const auto edges = ColumnEdges(0, partColumns());
  const wchar_t* tags[] = {L"序号", L"代号", L"名称", L"数量", L"材料", L"单重", L"总重", L"备注"};
  std::vector<FormCell> cells;
  for (std::size_t i = 0; i < edges.size(); ++i) {
    FormCell c = box(tags[i], i == 0 ? 0 : edges[i - 1], 0, edges[i], kRowHeight, 3.0);
    c.order = std::to_wstring(i + 1);
    cells.push_back(c);
  }
  cells[0].valueType = L"NumberInt";
  cells[0].align = L"CENTER";
  cells[1].rowType = L"kFit";
  cells[2].rowType = L"kFit";
  cells[3].valueType = L"NumberInt";
  cells[3].align = L"CENTER";
  cells[3].control = L"EDT_NUM";
  cells[4].align = L"CENTER";
  cells[4].rowType = L"kFit";
  for (std::size_t i : {5u, 6u}) {
    cells[i].valueType = L"Number";
    cells[i].decimals = L"2";
    cells[i].align = L"RIGHT";
    cells[i].control = L"EDT_REAL";
  }
  // The weight of all pieces of a line.
  cells[6].expression = L"数量*单重";
  cells[6].control = L"NOCTRL";
  cells[7].rowType = L"kNewline";
  return cells;
}

void drawTableHead(FormSheet& s, double y0, double y1) {
  const auto& columns = partColumns();
  const auto edges = ColumnEdges(kLeft, columns);
  const double split = (y0 + y1) / 2;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const double x0 = i == 0 ? kLeft : edges[i - 1];
    const bool weight = i == 5 || i == 6;
    s.Label(columns[i].label, x0, y0, edges[i], weight ? split : y1, weight ? 3.0 : 3.5);
    if (i + 1 < columns.size()) s.Line(edges[i], y0, edges[i], i == 5 ? split : y1);
  }
  s.Line(edges[4], split, edges[6], split);
  s.Label(L"重量(kg)", edges[4], split, edges[6], y1, 3.0);
}

void drawRows(FormSheet& s, double top, int rows) {
  const QaDbObjectId line = s.Block(kBomLineBlock, partCells());
  const auto edges = ColumnEdges(kLeft, partColumns());
  for (std::size_t i = 0; i + 1 < edges.size(); ++i) s.Line(edges[i], top - rows * kRowHeight, edges[i], top);
  for (int r = 1; r < rows; ++r) s.Line(kLeft, top - r * kRowHeight, kRight, top - r * kRowHeight);
  for (int r = 0; r < rows; ++r) s.Insert(line, kLeft, top - (r + 1) * kRowHeight);
}

// Sign-off cells of the header class, taking the title block's fields by code.
std::vector<FormCell> signCells() {
  struct S {
    const wchar_t* tag;
    const wchar_t* code;
    double x0, x1;
    bool top;
  } signs[] = {{L"编制", L"设计", 40, 80, true},
               {L"审核", L"审核", 95, 135, true},
               {L"日期", L"日期", 40, 80, false},
               {L"批准", L"批准", 95, 135, false}};
  std::vector<FormCell> cells;
  for (const auto& sign : signs) {
    FormCell c = box(sign.tag, sign.x0, sign.top ? kBandMid : kBottom, sign.x1, sign.top ? kBandTop : kBandMid, 2.5);
    c.code = sign.code;
    c.align = L"CENTER";
    c.rowType = L"kFit";
    c.order = std::to_wstring(10 + cells.size());
    cells.push_back(c);
  }
  return cells;
}

void drawBand(FormSheet& s) {
  s.Line(kLeft, kBandTop, kRight, kBandTop, true);
  s.Line(kLeft, kBandMid, kRight, kBandMid);
  for (double x : {40.0, 80.0, 95.0, 145.0, 160.0, 168.0, 178.0, 195.0}) s.Line(x, kBottom, x, kBandTop);
  s.Line(135, kBottom, 135, kBandTop, true);
  struct L {
    const wchar_t* text;
    double x0, x1;
    bool top;
  } labels[] = {
      {L"编制", 25, 40, true},    {L"审核", 80, 95, true},   {L"日期", 25, 40, false},  {L"批准", 80, 95, false},
      {L"共", 135, 145, true},    {L"页", 160, 168, true},   {L"第", 168, 178, true},   {L"页", 195, 205, true},
      {L"批共", 135, 145, false}, {L"页", 160, 168, false},  {L"批第", 168, 178, false}, {L"页", 195, 205, false},
  };
  for (const auto& l : labels) s.Label(l.text, l.x0, l.top ? kBandMid : kBottom, l.x1, l.top ? kBandTop : kBandMid, 2.5);
  auto number = [](const wchar_t* tag, double x0, double y0, double x1, double y1) {
    FormCell c = box(tag, x0, y0, x1, y1, 3.0);
    c.valueType = L"NumberInt";
    c.align = L"CENTER";
    c.control = L"NOCTRL";
    return c;
  };
  s.Insert(s.Block(kPageNoBlock, {number(kClassSumTag, 145, kBandMid, 160, kBandTop),
                                  number(kClassCurTag, 178, kBandMid, 195, kBandTop)}),
           0, 0);
  s.Insert(s.Block(kBatchSumBlock, {number(kBatchSumTag, 145, kBottom, 160, kBandMid)}), 0, 0);
  s.Insert(s.Block(kBatchNoBlock, {number(kBatchCurTag, 178, kBottom, 195, kBandMid)}), 0, 0);
}

FormCell titleCell(const wchar_t* tag, const wchar_t* code, double y0, double y1) {
  FormCell c = box(tag, 125, y0, kRight, y1, 3.5);
  c.code = code;
  c.align = L"CENTER";
  c.rowType = L"kFit";
  return c;
}

// Drawing number and name of the assembly: label and value, in two rows from y0 to y1.
void drawTitleFields(FormSheet& s, double y0, double y1, std::vector<FormCell>& head) {
  const double mid = (y0 + y1) / 2;
  s.Line(105, y0, 105, y1);
  s.Line(125, y0, 125, y1);
  s.Line(105, mid, kRight, mid);
  s.Label(L"产品图号", 105, mid, 125, y1, 3.0);
  s.Label(L"产品名称", 105, y0, 125, mid, 3.0);
  head.push_back(titleCell(L"产品图号", L"图号", mid, y1));
  head.push_back(titleCell(L"产品名称", L"名称", y0, mid));
  head[0].order = L"1";
  head[1].order = L"2";
}

}  // namespace

PageLayout DrawPartsListFirstPage(FormSheet& s) {
  DrawSheetBorder(s, kWidth, kHeight);
  s.Label(L"零件明细表", kLeft, 268, 105, kTop, 7.0);
  std::vector<FormCell> head;
  drawTitleFields(s, 268, kTop, head);
  s.Line(kLeft, 268, kRight, 268, true);
  for (auto& c : signCells()) head.push_back(c);
  s.Insert(s.Block(kBomHeadBlock, head), 0, 0);
  drawTableHead(s, 253, 268);
  s.Line(kLeft, 253, kRight, 253);
  drawRows(s, 253, kPartsListFirstRows);
  drawBand(s);
  return {kBomLineBlock, 0, SamplePageBindings()};
}

PageLayout DrawPartsListNextPage(FormSheet& s) {
  DrawSheetBorder(s, kWidth, kHeight);
  s.Label(L"零件明细表（续）", kLeft, 276, 105, kTop, 5.0);
  std::vector<FormCell> head;
  drawTitleFields(s, 276, kTop, head);
  s.Line(kLeft, 276, kRight, 276, true);
  for (auto& c : signCells()) head.push_back(c);
  s.Insert(s.Block(kBomHeadBlock, head), 0, 0);
  drawTableHead(s, 261, 276);
  s.Line(kLeft, 261, kRight, 261);
  drawRows(s, 261, kPartsListNextRows);
  drawBand(s);
  return {kBomLineBlock, 0, SamplePageBindings()};
}

}  // namespace tabulon::samples

// The machining process card: a landscape A4 page with the part's title data, a table
// of operations, a sign-off band and the page numbers of the card and of the batch.
#include <string>

#include "samples/sample_library.h"
#include "samples/sample_pages.h"

namespace tabulon::samples {

namespace {

// Page and frame.
constexpr double kWidth = 297, kHeight = 210;
constexpr double kLeft = 25, kRight = 292, kTop = 205, kBottom = 5;
constexpr double kRowHeight = 8;
// The bottom band: sign-off, change record, page numbers.
constexpr double kBandTop = 21, kBandMid = 13;

const std::vector<FormColumn>& operationColumns() {
  static const std::vector<FormColumn> columns = {
      {L"工序号", 12}, {L"工序名称", 18}, {L"工序内容", 98}, {L"车间", 12}, {L"工段", 10}, {L"设备", 24},
      {L"工艺装备", 45}, {L"准终", 12}, {L"机动", 12}, {L"辅助", 12}, {L"单件", 12},
  };
  return columns;
}

// The cells of one operation row, in block coordinates (the row's lower-left at 0,0).
std::vector<FormCell> operationCells() {
  const auto edges = ColumnEdges(0, operationColumns());
  auto cell = [&](int col, const wchar_t* tag) {
    FormCell c;
    c.tag = tag;
    c.x0 = col == 0 ? 0 : edges[static_cast<std::size_t>(col - 1)];
    c.x1 = edges[static_cast<std::size_t>(col)];
    c.y0 = 0;
    c.y1 = kRowHeight;
    c.textHeight = 3.0;
    c.order = std::to_wstring(col + 1);
    return c;
  };
  std::vector<FormCell> cells;
  FormCell no = cell(0, L"工序号");
  no.valueType = L"NumberInt";
  no.align = L"CENTER";
  no.control = L"EDT_NUM";
  cells.push_back(no);
  FormCell name = cell(1, L"工序名称");
  name.align = L"CENTER";
  name.rowType = L"kFit";
  name.control = L"CMB_DOWN";
  name.controlValues = L"下料;锻造;正火;调质;粗车;精车;铣;钻;磨;钳;检验;入库";
  cells.push_back(name);
  FormCell content = cell(2, L"工序内容");
  content.rowType = L"kNewline";
  cells.push_back(content);
  FormCell shop = cell(3, L"车间");
  shop.align = L"CENTER";
  shop.rowType = L"kFit";
  shop.control = L"CMB_LIST";
  shop.controlValues = L"机加;锻工;热处理;装配;质检";
  cells.push_back(shop);
  FormCell section = cell(4, L"工段");
  section.align = L"CENTER";
  section.rowType = L"kFit";
  cells.push_back(section);
  FormCell machine = cell(5, L"设备");
  machine.align = L"CENTER";
  machine.rowType = L"kFit";
  cells.push_back(machine);
  FormCell tooling = cell(6, L"工艺装备");
  tooling.rowType = L"kFit";
  cells.push_back(tooling);
  const wchar_t* times[] = {L"准终", L"机动", L"辅助", L"单件"};
  for (int i = 0; i < 4; ++i) {
    FormCell t = cell(7 + i, times[i]);
    t.code = std::wstring(L"工时") + times[i];
    t.valueType = L"Number";
    t.decimals = i == 0 ? L"1" : L"2";
    t.align = L"RIGHT";
    t.control = L"EDT_REAL";
    cells.push_back(t);
  }
  // The unit time is the machine time plus the auxiliary time.
  cells.back().expression = L"机动+辅助";
  cells.back().control = L"NOCTRL";
  return cells;
}

// The table head: column labels, the four times under one "工时(min)" heading.
void drawTableHead(FormSheet& s, double y0, double y1) {
  const auto& columns = operationColumns();
  const auto edges = ColumnEdges(kLeft, columns);
  const double split = (y0 + y1) / 2;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const double x0 = i == 0 ? kLeft : edges[i - 1];
    if (i < 7) {
      s.Label(columns[i].label, x0, y0, edges[i], y1, 3.5);
    } else {
      s.Label(columns[i].label, x0, y0, edges[i], split, 3.0);
    }
    if (i + 1 < columns.size()) s.Line(edges[i], y0, edges[i], i >= 7 ? split : y1);
  }
  s.Line(edges[6], split, kRight, split);
  s.Label(L"工时(min)", edges[6], split, kRight, y1, 3.5);
}

// Rows: lines between them and the column lines through them; one ROW reference each.
void drawRows(FormSheet& s, double top, int rows) {
  const QaDbObjectId row = s.Block(kRowBlock, operationCells());
  const double bottom = top - rows * kRowHeight;
  const auto edges = ColumnEdges(kLeft, operationColumns());
  for (std::size_t i = 0; i + 1 < edges.size(); ++i) s.Line(edges[i], bottom, edges[i], top);
  for (int r = 1; r < rows; ++r) s.Line(kLeft, top - r * kRowHeight, kRight, top - r * kRowHeight);
  for (int r = 0; r < rows; ++r) s.Insert(row, kLeft, top - (r + 1) * kRowHeight);
}

FormCell pageCell(const wchar_t* tag, double x0, double y0, double x1, double y1, double height = 3.0) {
  FormCell c;
  c.tag = tag;
  c.x0 = x0;
  c.y0 = y0;
  c.x1 = x1;
  c.y1 = y1;
  c.textHeight = height;
  return c;
}

// The bottom band: sign-off cells, a change record and the page numbers.
void drawBand(FormSheet& s) {
  s.Line(kLeft, kBandTop, kRight, kBandTop, true);
  s.Line(kLeft, kBandMid, kRight, kBandMid);
  for (double x : {37.0, 62.0, 72.0, 92.0, 104.0, 129.0, 139.0, 169.0, 179.0, 200.0, 210.0, 230.0, 246.0, 254.0,
                   264.0, 282.0})
    s.Line(x, kBottom, x, kBandTop);
  s.Line(159, kBottom, 159, kBandTop, true);
  s.Line(220, kBottom, 220, kBandTop, true);
  struct L {
    const wchar_t* text;
    double x0, x1;
    bool top;
  } labels[] = {
      {L"编制", 25, 37, true},   {L"日期", 62, 72, true},  {L"批准", 92, 104, true},  {L"日期", 129, 139, true},
      {L"审核", 25, 37, false},  {L"日期", 62, 72, false}, {L"会签", 92, 104, false}, {L"日期", 129, 139, false},
      {L"标记", 159, 169, true}, {L"处数", 169, 179, true}, {L"更改文件号", 179, 200, true},
      {L"签字", 200, 210, true}, {L"日期", 210, 220, true}, {L"共", 220, 230, true},   {L"页", 246, 254, true},
      {L"第", 254, 264, true},   {L"页", 282, 292, true},   {L"批共", 220, 230, false}, {L"页", 246, 254, false},
      {L"批第", 254, 264, false}, {L"页", 282, 292, false},
  };
  for (const auto& l : labels) s.Label(l.text, l.x0, l.top ? kBandMid : kBottom, l.x1, l.top ? kBandTop : kBandMid, 2.5);

  std::vector<FormCell> sign = {
      pageCell(L"编制", 37, kBandMid, 62, kBandTop, 2.5),     pageCell(L"编制日期", 72, kBandMid, 92, kBandTop, 2.5),
      pageCell(L"批准", 104, kBandMid, 129, kBandTop, 2.5),   pageCell(L"批准日期", 139, kBandMid, 159, kBandTop, 2.5),
      pageCell(L"审核", 37, kBottom, 62, kBandMid, 2.5),      pageCell(L"审核日期", 72, kBottom, 92, kBandMid, 2.5),
      pageCell(L"会签", 104, kBottom, 129, kBandMid, 2.5),    pageCell(L"会签日期", 139, kBottom, 159, kBandMid, 2.5),
  };
  for (std::size_t i = 0; i < sign.size(); ++i) {
    sign[i].align = L"CENTER";
    sign[i].rowType = L"kFit";
    sign[i].order = std::to_wstring(i + 1);
    if (sign[i].tag.find(L"日期") != std::wstring::npos) sign[i].control = L"PTI_DATE";
  }
  s.Insert(s.Block(kSignBlock, sign), 0, 0);

  auto number = [](const wchar_t* tag, double x0, double y0, double x1, double y1) {
    FormCell c = pageCell(tag, x0, y0, x1, y1);
    c.valueType = L"NumberInt";
    c.align = L"CENTER";
    c.control = L"NOCTRL";
    return c;
  };
  s.Insert(s.Block(kPageNoBlock, {number(kClassSumTag, 230, kBandMid, 246, kBandTop),
                                  number(kClassCurTag, 264, kBandMid, 282, kBandTop)}),
           0, 0);
  s.Insert(s.Block(kBatchSumBlock, {number(kBatchSumTag, 230, kBottom, 246, kBandMid)}), 0, 0);
  s.Insert(s.Block(kBatchNoBlock, {number(kBatchCurTag, 264, kBottom, 282, kBandMid)}), 0, 0);
}

// Label and value cells of the part's title data in the header.
struct HeadField {
  const wchar_t* label;
  const wchar_t* tag;
  double lx0, lx1, vx1;  // label from lx0 to lx1, value from lx1 to vx1
  double y0, y1;
};

FormCell headCell(const HeadField& f, int order) {
  FormCell c = pageCell(f.tag, f.lx1, f.y0, f.vx1, f.y1, 3.0);
  c.rowType = L"kFit";
  c.align = L"CENTER";
  c.order = std::to_wstring(order);
  return c;
}

void drawHeadFields(FormSheet& s, const std::vector<HeadField>& fields, std::vector<FormCell>& cells) {
  for (const auto& f : fields) {
    s.Label(f.label, f.lx0, f.y0, f.lx1, f.y1, 3.0);
    s.Line(f.lx1, f.y0, f.lx1, f.y1);
    if (f.vx1 < kRight) s.Line(f.vx1, f.y0, f.vx1, f.y1);
    cells.push_back(headCell(f, static_cast<int>(cells.size()) + 1));
  }
}

}  // namespace

PageLayout DrawProcessFirstPage(FormSheet& s) {
  DrawSheetBorder(s, kWidth, kHeight);
  // Header: company and title over two rows, then the part's data.
  s.Line(65, 189, 65, kTop);
  s.Line(145, 189, 145, kTop);
  s.Line(145, 197, kRight, 197);
  s.Line(kLeft, 189, kRight, 189);
  s.Line(kLeft, 181, kRight, 181, true);
  s.Label(L"机械加工工艺过程卡片", 65, 189, 145, kTop, 5.0);
  std::vector<FormCell> head;
  FormCell company = pageCell(L"企业名称", kLeft, 189, 65, kTop, 4.0);
  company.align = L"CENTER";
  company.rowType = L"kFit";
  company.order = L"0";
  head.push_back(company);
  drawHeadFields(s,
                 {
                     {L"产品型号", L"产品型号", 145, 165, 210, 197, kTop},
                     {L"零件图号", L"零件图号", 210, 230, kRight, 197, kTop},
                     {L"产品名称", L"产品名称", 145, 165, 210, 189, 197},
                     {L"零件名称", L"零件名称", 210, 230, kRight, 189, 197},
                     {L"材料牌号", L"材料牌号", kLeft, 45, 75, 181, 189},
                     {L"毛坯种类", L"毛坯种类", 75, 95, 120, 181, 189},
                     {L"毛坯外形尺寸", L"毛坯外形尺寸", 120, 145, 180, 181, 189},
                     {L"每毛坯件数", L"每毛坯件数", 180, 202, 217, 181, 189},
                     {L"每台件数", L"每台件数", 217, 237, 252, 181, 189},
                     {L"备注", L"备注", 252, 267, kRight, 181, 189},
                 },
                 head);
  for (auto& c : head) {
    if (c.tag == L"毛坯种类") {
      c.control = L"CMB_LIST";
      c.controlValues = L"锻件;铸件;型材;板材";
    }
    if (c.tag == L"每毛坯件数" || c.tag == L"每台件数") c.valueType = L"NumberInt";
  }
  s.Insert(s.Block(kHeadBlock, head), 0, 0);

  drawTableHead(s, 165, 181);
  s.Line(kLeft, 165, kRight, 165);
  drawRows(s, 165, kProcessFirstRows);
  drawBand(s);
  return {kRowBlock, 0, SamplePageBindings()};
}

PageLayout DrawProcessNextPage(FormSheet& s) {
  DrawSheetBorder(s, kWidth, kHeight);
  s.Line(145, 189, 145, kTop);
  s.Line(145, 197, kRight, 197);
  s.Line(kLeft, 189, kRight, 189, true);
  s.Label(L"机械加工工艺过程卡片（续页）", kLeft, 189, 145, kTop, 5.0);
  std::vector<FormCell> head;
  drawHeadFields(s,
                 {
                     {L"产品型号", L"产品型号", 145, 165, 210, 197, kTop},
                     {L"零件图号", L"零件图号", 210, 230, kRight, 197, kTop},
                     {L"产品名称", L"产品名称", 145, 165, 210, 189, 197},
                     {L"零件名称", L"零件名称", 210, 230, kRight, 189, 197},
                 },
                 head);
  s.Insert(s.Block(kHeadBlock, head), 0, 0);
  drawTableHead(s, 173, 189);
  s.Line(kLeft, 173, kRight, 173);
  drawRows(s, 173, kProcessNextRows);
  drawBand(s);
  return {kRowBlock, 0, SamplePageBindings()};
}

KrmTextListMap SamplePageBindings() {
  return {
      {L"CLASSCUR", {kPageNoBlock, kClassCurTag}},
      {L"CLASSSUM", {kPageNoBlock, kClassSumTag}},
      {L"BATCHCUR", {kBatchNoBlock, kBatchCurTag}},
      {L"BATCHSUM", {kBatchSumBlock, kBatchSumTag}},
  };
}

void DrawSheetBorder(FormSheet& s, double width, double height) {
  s.Box(0, 0, width, height);
  s.Box(25, 5, width - 5, height - 5, true);
}

std::vector<double> ColumnEdges(double x0, const std::vector<FormColumn>& columns) {
  std::vector<double> edges;
  double x = x0;
  for (const auto& c : columns) edges.push_back(x += c.width);
  return edges;
}

}  // namespace tabulon::samples

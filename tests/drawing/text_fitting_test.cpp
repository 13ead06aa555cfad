#include "drawing/text_fitting.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "card/paging.h"
#include "cell_test_support.h"
#include "host/db/qadb_layer_table.h"
#include "host/gi/qagi_text_measure_hook.h"
#include "host/gi/qagi_text_style.h"

namespace {

using tabulon::test::addTextStyle;
using tabulon::test::kMicroHeiFile;

constexpr double kHeight = 3.5;

class TextFitting : public ::testing::Test {
 protected:
  void SetUp() override {
    qagiInstallTextWidthFunction();
    cellScale = 1.0;
    style = addTextStyle(db, L"CELL", 1.0);
    narrowStyle = addTextStyle(db, L"NARROW", 0.8);
  }
  void TearDown() override { cellScale = 1.0; }

  // A fresh attribute in memory at (10, 20) in `styleId`.
  QaDbAttribute attribute(const std::wstring& text, QaDbObjectId styleId) const {
    QaDbAttribute att(QaGePoint3d(10, 20, 0), text, L"CELL", styleId);
    att.setHeight(kHeight);
    return att;
  }

  // The measure of `text` as the cells measure it, for x scale `xScale`.
  double measure(const std::wstring& text, double xScale = 1.0) const {
    QaGiTextStyle m;
    m.setFileName(kMicroHeiFile);
    m.setTextSize(kHeight);
    m.setXScale(xScale);
    return m.width(text);
  }

  static KrmAttSet cellOf(double width, const std::wstring& rowType, const std::wstring& align = L"") {
    KrmAttSet cell;
    cell.SetShowName(L"CELL");
    cell.SetWidth(width);
    cell.SetRowType(rowType);
    cell.SetAlignType(align);
    return cell;
  }

  QaDbDatabase db;
  QaDbObjectId style;
  QaDbObjectId narrowStyle;
};

TEST_F(TextFitting, StyleXScaleDefaultsToOne) {
  EXPECT_DOUBLE_EQ(GetStyleXScale(narrowStyle), 0.8);
  EXPECT_DOUBLE_EQ(GetStyleXScale(style), 1.0);
  EXPECT_DOUBLE_EQ(GetStyleXScale(QaDbObjectId()), 1.0);
  QaDbObjectId layer;
  {
    QaDbLayerTable* layers = nullptr;
    ASSERT_EQ(db.getSymbolTable(layers, QaDb::kForRead), Qa::eOk);
    layer = layers->getAt(L"0");
    layers->close();
  }
  ASSERT_FALSE(layer.isNull());
  EXPECT_DOUBLE_EQ(GetStyleXScale(layer), 1.0);
}

TEST_F(TextFitting, FitSqueezesBetweenTwoPointsAndUndoesOnRefill) {
  const std::wstring longText = L"M12x1.5 六角头螺栓 GB/T 5783";
  const double tw = measure(longText, 0.8);
  const double width = tw * 2.0 / 3.0;  // the text is half as wide again as the cell
  KrmAttSet cell = cellOf(width, L"kFit");
  QaDbAttribute att = attribute(longText, narrowStyle);
  att.setWidthFactor(0.5);  // whatever stood there before

  EXPECT_EQ(FitCellText(att, cell), 1);
  EXPECT_EQ(cell.GetContent(), L"");
  EXPECT_EQ(att.textString(), longText);
  EXPECT_EQ(att.horizontalMode(), QaDb::kTextFit);
  EXPECT_TRUE(att.position().isEqualTo(QaGePoint3d(10, 20, 0)));
  EXPECT_TRUE(att.alignmentPoint().isEqualTo(QaGePoint3d(10 + width, 20, 0)));
  EXPECT_DOUBLE_EQ(att.height(), kHeight);
  // Filled again while squeezed: nothing moves.
  EXPECT_EQ(FitCellText(att, cell), 1);
  EXPECT_TRUE(att.alignmentPoint().isEqualTo(QaGePoint3d(10 + width, 20, 0)));

  // A short text takes the squeeze back: left mode, the style's own width factor.
  att.setTextString(L"M8");
  EXPECT_EQ(FitCellText(att, cell), 1);
  EXPECT_EQ(att.horizontalMode(), QaDb::kTextLeft);
  EXPECT_DOUBLE_EQ(att.widthFactor(), 0.8);
  EXPECT_TRUE(att.position().isEqualTo(QaGePoint3d(10, 20, 0)));
}

TEST_F(TextFitting, CentredTextSqueezesAroundItsCentre) {
  const std::wstring text = L"热处理：HRC 28~32，表面发黑";
  const double width = measure(text) / 2.0;
  QaDbAttribute att = attribute(text, style);
  att.setHorizontalMode(QaDb::kTextCenter);
  att.setAlignmentPoint(QaGePoint3d(50, 20, 0));
  KrmAttSet cell = cellOf(width, L"kFit", L"CENTER");
  AlignCellText(att, cell);
  EXPECT_EQ(att.horizontalMode(), QaDb::kTextFit);
  EXPECT_TRUE(att.position().isEqualTo(QaGePoint3d(50 - width / 2, 20, 0)));
  EXPECT_TRUE(att.alignmentPoint().isEqualTo(QaGePoint3d(50 + width / 2, 20, 0)));
}

TEST_F(TextFitting, CentredAlignmentIsSetOnceAndKeptOnRefill) {
  const double width = 40.0;
  QaDbAttribute att = attribute(L"序号", style);
  KrmAttSet cell = cellOf(width, L"kFit", L"CENTER");
  EXPECT_EQ(FitCellText(att, cell), 1);
  EXPECT_EQ(att.horizontalMode(), QaDb::kTextCenter);
  EXPECT_TRUE(att.alignmentPoint().isEqualTo(QaGePoint3d(10 + width / 2, 20, 0)));

  // Once centred, the alignment point is the text's anchor: a second fill leaves it,
  // wherever the first point has gone meanwhile.
  att.setPosition(QaGePoint3d(27, 20, 0));
  att.setTextString(L"12");
  EXPECT_EQ(FitCellText(att, cell), 1);
  EXPECT_EQ(att.horizontalMode(), QaDb::kTextCenter);
  EXPECT_TRUE(att.alignmentPoint().isEqualTo(QaGePoint3d(10 + width / 2, 20, 0)));
}

TEST_F(TextFitting, AlignmentWordsAndFrameScale) {
  struct Case {
    std::wstring align;
    QaDb::TextHorzMode mode;
  };
  for (const Case& c : {Case{L"RIGHT", QaDb::kTextRight}, Case{L"", QaDb::kTextLeft}, Case{L"center", QaDb::kTextLeft},
                        Case{L"LEFT", QaDb::kTextLeft}}) {
    QaDbAttribute att = attribute(L"A", style);
    att.setHorizontalMode(QaDb::kTextCenter);
    att.setAlignmentPoint(QaGePoint3d(1, 2, 0));
    KrmAttSet cell = cellOf(30, L"", c.align);
    EXPECT_EQ(AlignCellText(att, cell), 1);
    EXPECT_EQ(att.horizontalMode(), c.mode) << c.align;
    EXPECT_TRUE(att.alignmentPoint().isEqualTo(QaGePoint3d(1, 2, 0))) << c.align;
  }
  // The frame scale widens every cell.
  cellScale = 2.0;
  QaDbAttribute att = attribute(L"A", style);
  KrmAttSet cell = cellOf(30, L"", L"CENTER");
  AlignCellText(att, cell);
  EXPECT_TRUE(att.alignmentPoint().isEqualTo(QaGePoint3d(10 + 30, 20, 0)));
  // A text that fits only at the frame scale is not squeezed.
  const std::wstring text = L"零件名称零件名称";
  KrmAttSet fit = cellOf(measure(text) * 0.75, L"kFit");
  QaDbAttribute squeezed = attribute(text, style);
  AlignCellText(squeezed, fit);
  EXPECT_EQ(squeezed.horizontalMode(), QaDb::kTextLeft);
  cellScale = 1.0;
  AlignCellText(squeezed, fit);
  EXPECT_EQ(squeezed.horizontalMode(), QaDb::kTextFit);
}

TEST_F(TextFitting, ForcedBreakSendsTheRestToTheNextBlock) {
  struct Case {
    std::wstring text;
    std::wstring rowType;
    std::wstring written;
    std::wstring rest;
  };
  const Case cases[] = {
      {L"第一行\n第二行", L"", L"第一行\n", L"第二行"},
      {L"第一行\r\n第二行", L"kFit", L"第一行\n", L"第二行"},
      {L"a\nb\nc", L"kNewline", L"a\n", L"b\nc"},
      {L"末尾换行\n", L"", L"末尾换行\n", L""},
      {L"\n", L"kNewline", L"\n", L""},
  };
  for (const Case& c : cases) {
    QaDbAttribute att = attribute(c.text, style);
    KrmAttSet cell = cellOf(200, c.rowType);
    cell.SetContent(c.text);
    EXPECT_EQ(FitCellText(att, cell), 0) << c.text;
    EXPECT_EQ(att.textString(), c.written) << c.text;
    EXPECT_EQ(cell.GetContent(), c.rest) << c.text;
  }
  // A text that ends in a break uses up one more block, with nothing in it.
  QaDbAttribute next = attribute(L"", style);
  KrmAttSet cell = cellOf(200, L"kNewline");
  EXPECT_EQ(FitCellText(next, cell), 1);
  EXPECT_EQ(next.textString(), L"");
}

// Feeds `text` into blocks of a "kNewline" cell until it is all written; the pieces.
std::vector<std::wstring> wrapOverBlocks(QaDbAttribute prototype, KrmAttSet cell,
                                         const std::wstring& text, int maxBlocks) {
  std::vector<std::wstring> pieces;
  cell.SetContent(text);
  for (int block = 0; block < maxBlocks; ++block) {
    QaDbAttribute att = prototype;
    att.setTextString(cell.GetContent());
    const int done = FitCellText(att, cell);
    pieces.push_back(att.textString());
    if (done == 1) break;
  }
  return pieces;
}

TEST_F(TextFitting, NewlineCellWrapsChineseTextOverSeveralBlocks) {
  const std::wstring text = L"零件表面不得有划痕、擦伤等损伤零件表面的缺陷；去除毛刺飞边，锐角倒钝0.5x45°";
  const double width = 30.0;
  QaDbAttribute prototype = attribute(L"", style);
  const std::vector<std::wstring> pieces = wrapOverBlocks(prototype, cellOf(width, L"kNewline"), text, 50);

  ASSERT_GE(pieces.size(), 3u);
  std::wstring joined;
  for (std::size_t k = 0; k < pieces.size(); ++k) {
    joined += pieces[k];
    EXPECT_LE(measure(pieces[k]), width) << k;
    // Each block takes as much as fits: one more character would not.
    if (k + 1 < pieces.size()) {
      EXPECT_GT(measure(pieces[k] + pieces[k + 1].substr(0, 1)), width) << k;
    }
  }
  EXPECT_EQ(joined, text);
  // The page count is made without a drawing; it must agree with the drawing.
  QaGiTextStyle counter;
  counter.setTextSize(kHeight);
  EXPECT_EQ(WrappedLineCount(text, width, counter), static_cast<int>(pieces.size()));
}

TEST_F(TextFitting, TextExactlyAsWideAsTheCellStaysWhole) {
  const std::wstring text = L"检验员签字";
  KrmAttSet cell = cellOf(measure(text), L"kNewline");
  QaDbAttribute att = attribute(text, style);
  cell.SetContent(text);
  EXPECT_EQ(FitCellText(att, cell), 1);
  EXPECT_EQ(att.textString(), text);
  EXPECT_EQ(cell.GetContent(), L"");
}

TEST_F(TextFitting, TooWideFirstLineBreaksTheWholeTextKeepingTheBreakWithTheRest) {
  const std::wstring line = L"ABCDEFGH";
  const double width = measure(L"ABCDEFG") + 0.01;  // seven letters fit, not eight
  QaDbAttribute att = attribute(line + L"\nXY", style);
  KrmAttSet cell = cellOf(width, L"kNewline");
  cell.SetContent(line + L"\nXY");
  EXPECT_EQ(FitCellText(att, cell), 0);
  EXPECT_EQ(att.textString(), L"ABCDEFG");
  EXPECT_EQ(cell.GetContent(), L"H\r\nXY");

  // The next block: "H" fits, the break and "XY" follow as a line of their own.
  QaDbAttribute next = attribute(cell.GetContent(), style);
  EXPECT_EQ(FitCellText(next, cell), 0);
  EXPECT_EQ(next.textString(), L"H\n");
  EXPECT_EQ(cell.GetContent(), L"XY");

  // A cut right behind a character of no width leaves that character to the rest.
  QaDbAttribute lone = attribute(L"ABCDEFG\rHIJ", style);
  KrmAttSet same = cellOf(width, L"kNewline");
  same.SetContent(lone.textString());
  EXPECT_EQ(FitCellText(lone, same), 0);
  EXPECT_EQ(lone.textString(), L"ABCDEFG");
  EXPECT_EQ(same.GetContent(), L"\rHIJ");
}

TEST_F(TextFitting, CellNarrowerThanOneCharacterPassesEverythingOn) {
  const std::wstring text = L"材料";
  KrmAttSet cell = cellOf(measure(L"材") / 2, L"kNewline");
  cell.SetContent(text);
  for (int block = 0; block < 3; ++block) {
    QaDbAttribute att = attribute(cell.GetContent(), style);
    EXPECT_EQ(FitCellText(att, cell), 0);
    EXPECT_EQ(att.textString(), L"");
    EXPECT_EQ(cell.GetContent(), text);
  }
}

TEST_F(TextFitting, OtherRowTypesWriteTheTextAsItStands) {
  const std::wstring text = L"很长很长很长很长很长的备注";
  for (const std::wstring& rowType : {std::wstring(L""), std::wstring(L"knewline"), std::wstring(L"kFIT")}) {
    QaDbAttribute att = attribute(text, style);
    KrmAttSet cell = cellOf(5, rowType);
    cell.SetContent(text);
    EXPECT_EQ(FitCellText(att, cell), 1) << rowType;
    EXPECT_EQ(att.textString(), text);
    EXPECT_EQ(att.horizontalMode(), QaDb::kTextLeft);
    EXPECT_EQ(cell.GetContent(), L"");
  }
}

TEST_F(TextFitting, MultiLineAttributeIsNeverSqueezed) {
  const std::wstring text = L"多行属性文字多行属性文字多行属性文字";
  QaDbAttribute att = attribute(text, narrowStyle);
  ASSERT_EQ(att.convertIntoMTextAttribute(true), Qa::eOk);
  att.setWidthFactor(0.3);
  QaDbExtents ext;
  ASSERT_EQ(att.getGeomExtents(ext), Qa::eOk);
  KrmAttSet cell = cellOf(measure(text, 0.8) / 3, L"kFit");
  cell.SetContent(text);
  EXPECT_EQ(FitCellText(att, cell), 1);
  EXPECT_NE(att.horizontalMode(), QaDb::kTextFit);
  EXPECT_DOUBLE_EQ(att.widthFactor(), 0.8);
  // The alignment point is pulled half the text's extents to the left of the position.
  EXPECT_NEAR(att.alignmentPoint().x, 10 - (ext.maxPoint().x - ext.minPoint().x) / 2, 1e-9);
  EXPECT_DOUBLE_EQ(att.alignmentPoint().y, 20);
}

}  // namespace

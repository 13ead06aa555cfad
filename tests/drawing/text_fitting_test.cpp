#include "drawing/text_fitting.h"

#include <gtest/gtest.h>

#include <random>

#include "card/paging.h"
#include "cell_test_support.h"
#include "host/gi/qagi_text_measure_hook.h"
#include "host/gi/qagi_text_style.h"
#include "host/svc/utf8.h"

namespace {

using Texts = std::vector<std::wstring>;

class TextFitting : public ::testing::Test {
 protected:
  void TearDown() override { cellScale = 1.0; }
  QaGiFontTextWidth fonts_;

  QaDbAttribute attribute(const std::wstring& text, QaDbObjectId styleId) const {
    QaDbAttribute att(QaGePoint3d(10, 20, 0), text, L"CELL", styleId);
    att.setHeight(3.5);
    return att;
  }
  // Measured apart from the drawing, in the pinned font.
  static double measure(const std::wstring& text, double xScale = 1.0) {
    QaGiTextStyle m;
    m.setFileName(tabulon::test::kMicroHeiFile);
    m.setTextSize(3.5);
    m.setXScale(xScale);
    return m.width(text);
  }
  static KrmAttSet cellOf(double width, const std::wstring& rowType, const std::wstring& align = L"") {
    KrmAttSet cell;
    cell.SetWidth(width);
    cell.SetRowType(rowType);
    cell.SetAlignType(align);
    return cell;
  }
  // Writes `text` into row blocks one after the other until all is written.
  Texts fillBlocks(const std::wstring& text, KrmAttSet cell, std::size_t maxBlocks = 50) const {
    Texts pieces;
    cell.SetContent(text);
    for (int done = 0; done == 0 && pieces.size() < maxBlocks;) {
      QaDbAttribute att = attribute(cell.GetContent(), style);
      done = FitCellText(att, cell);
      pieces.push_back(att.textString());
    }
    return pieces;
  }

  QaDbDatabase db;
  QaDbObjectId style = tabulon::test::addTextStyle(db, L"CELL", 1.0);
  QaDbObjectId narrow = tabulon::test::addTextStyle(db, L"NARROW", 0.8);
};

TEST_F(TextFitting, FitSqueezesBetweenTwoPointsAWidthApartAndUndoesOnRefill) {
  EXPECT_DOUBLE_EQ(GetStyleXScale(narrow) + GetStyleXScale(db.modelSpaceId()), 1.8);
  const std::wstring text = L"M12x1.5 六角头螺栓 GB/T 5783";
  const double width = measure(text, 0.8) * 2 / 3;
  KrmAttSet cell = cellOf(width, L"kFit");
  QaDbAttribute att = attribute(text, narrow);
  for (int fill = 0; fill < 2; ++fill) {  // filled again while squeezed, nothing moves
    EXPECT_EQ(FitCellText(att, cell), 1);
    EXPECT_EQ(cell.GetContent(), L"");
    EXPECT_EQ(att.horizontalMode(), QaDb::kTextFit);
    EXPECT_TRUE(att.position().isEqualTo({10, 20, 0}));
    EXPECT_TRUE(att.alignmentPoint().isEqualTo({10 + width, 20, 0}));
    EXPECT_EQ(att.height(), 3.5);
  }
  att.setWidthFactor(0.5);
  att.setTextString(L"M8");
  FitCellText(att, cell);
  EXPECT_EQ(att.horizontalMode(), QaDb::kTextLeft);
  EXPECT_EQ(att.widthFactor(), 0.8);  // the style's own

  // A centred text squeezes around its centre, unless it fits at the frame scale.
  QaDbAttribute centred = attribute(text, style);
  centred.setHorizontalMode(QaDb::kTextCenter);
  centred.setAlignmentPoint({50, 20, 0});
  KrmAttSet half = cellOf(measure(text) / 2, L"kFit", L"CENTER");
  cellScale = 2.5;
  AlignCellText(centred, half);
  EXPECT_EQ(centred.horizontalMode(), QaDb::kTextCenter);
  cellScale = 1.0;
  AlignCellText(centred, half);
  EXPECT_EQ(centred.horizontalMode(), QaDb::kTextFit);
  EXPECT_TRUE(centred.position().isEqualTo({50 - half.GetWidth() / 2, 20, 0}));
  EXPECT_TRUE(centred.alignmentPoint().isEqualTo({50 + half.GetWidth() / 2, 20, 0}));
}

TEST_F(TextFitting, CentringSetsTheAlignmentPointOnceAndKeepsItOnRefill) {
  QaDbAttribute att = attribute(L"序号", style);
  cellScale = 2.0;
  for (const auto& [align, mode] : {std::pair{L"CENTER", QaDb::kTextCenter}, std::pair{L"CENTER", QaDb::kTextCenter},
                                    std::pair{L"RIGHT", QaDb::kTextRight}, std::pair{L"center", QaDb::kTextLeft}}) {
    KrmAttSet cell = cellOf(40, L"kFit", align);
    EXPECT_EQ(FitCellText(att, cell), 1);
    EXPECT_EQ(att.horizontalMode(), mode);
    EXPECT_TRUE(att.alignmentPoint().isEqualTo({10 + 40, 20, 0}));
    att.setPosition({27, 20, 0});  // a centred text's first point follows its anchor
  }
}

TEST_F(TextFitting, ForcedBreakKeepsTheFirstLineAndPassesOnTheRest) {
  EXPECT_EQ(fillBlocks(L"第一行\n第二行", cellOf(200, L"")), (Texts{L"第一行\n", L"第二行"}));
  EXPECT_EQ(fillBlocks(L"一\r\n二\n三", cellOf(200, L"kFit")), (Texts{L"一\n", L"二\n", L"三"}));
  // A text that ends in a break uses up one block more, which stays empty.
  EXPECT_EQ(fillBlocks(L"a\nb\n", cellOf(200, L"kNewline")), (Texts{L"a\n", L"b\n", L""}));
  // Other row types write a long text as it stands.
  EXPECT_EQ(fillBlocks(L"很长很长的备注", cellOf(5, L"knewline")), Texts{L"很长很长的备注"});
}

TEST_F(TextFitting, NewlineCellWrapsChineseTextOverSeveralBlocks) {
  const std::wstring text = L"零件表面不得有划痕、擦伤等损伤零件表面的缺陷；去除毛刺飞边，锐角倒钝0.5x45°";
  const double width = 30.0;
  const Texts pieces = fillBlocks(text, cellOf(width, L"kNewline"));
  ASSERT_GE(pieces.size(), 3u);
  std::wstring joined;
  for (std::size_t k = 0; k < pieces.size(); ++k) {
    joined += pieces[k];
    EXPECT_LE(measure(pieces[k]), width) << k;
    if (k + 1 < pieces.size()) {  // each block takes as much as fits
      EXPECT_GT(measure(pieces[k] + pieces[k + 1][0]), width) << k;
    }
  }
  EXPECT_EQ(joined, text);
  // The page count, made without a drawing, agrees with the drawing.
  QaGiTextStyle counter;
  counter.setTextSize(3.5);
  EXPECT_EQ(WrappedLineCount(text, width, counter), static_cast<int>(pieces.size()));
  EXPECT_EQ(fillBlocks(L"检验员", cellOf(measure(L"检验员"), L"kNewline")), Texts{L"检验员"});
}

TEST_F(TextFitting, WritesAsManyLinesAsPagingCountsOnMixedTexts) {
  const std::vector<std::wstring> pieces = {L"中", L"工序", L"a", L"W", L"M12", L" ", L"φ", L"±0.02", L"%%d",
                                            L"%%c", L"\r", L"，", L"Ra1.6", L"%"};
  std::mt19937 random(1207);
  std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
  std::uniform_int_distribution<int> length(1, 40);
  // Cells hold a character at least: narrower ones are counted up to one line per
  // character while the blocks take none.
  std::uniform_real_distribution<double> width(8.0, 60.0);
  QaGiTextStyle counter;
  counter.setFileName(tabulon::test::kMicroHeiFile);
  counter.setTextSize(3.5);
  for (int n = 0; n < 150; ++n) {
    std::wstring text;
    for (int k = length(random); k > 0; --k) text += pieces[pick(random)];
    const double cell = width(random);
    const Texts written = fillBlocks(text, cellOf(cell, L"kNewline"), text.size() + 1);
    EXPECT_EQ(static_cast<int>(written.size()), WrappedLineCount(text, cell, counter))
        << tabulon::svc::toUtf8(text) << " in " << cell << " pieces: " << [&] {
             std::string all;
             for (const auto& w : written) all += "[" + tabulon::svc::toUtf8(w) + "]";
             return all;
           }();
  }
}

TEST_F(TextFitting, TooWideFirstLineBreaksTheWholeTextAsOneLine) {
  const double width = measure(L"ABCDEFG");  // exactly: a prefix as wide as the cell fits
  EXPECT_EQ(fillBlocks(L"ABCDEFGH\nXY", cellOf(width, L"kNewline")), (Texts{L"ABCDEFG", L"H\n", L"XY"}));
  // A cut behind a character of no width leaves it to the rest.
  EXPECT_EQ(fillBlocks(L"ABCDEFG\rHIJ", cellOf(width, L"kNewline")), (Texts{L"ABCDEFG", L"\rHIJ"}));
}

TEST_F(TextFitting, CellNarrowerThanOneCharacterPassesEverythingOn) {
  EXPECT_EQ(fillBlocks(L"材料", cellOf(measure(L"材") / 2, L"kNewline"), 3), Texts(3, L""));
}

TEST_F(TextFitting, MultiLineAttributeIsNeverSqueezed) {
  const std::wstring text = L"多行属性文字多行属性文字多行属性文字";
  QaDbAttribute att = attribute(text, narrow);
  ASSERT_EQ(att.convertIntoMTextAttribute(true), Qa::eOk);
  att.setWidthFactor(0.3);
  QaDbExtents ext;
  ASSERT_EQ(att.getGeomExtents(ext), Qa::eOk);
  KrmAttSet cell = cellOf(measure(text, 0.8) / 3, L"kFit");
  EXPECT_EQ(FitCellText(att, cell), 1);
  EXPECT_NE(att.horizontalMode(), QaDb::kTextFit);
  EXPECT_EQ(att.widthFactor(), 0.8);
  // Its alignment point lies half its width left of its position.
  EXPECT_TRUE(att.alignmentPoint().isEqualTo({10 - (ext.maxPoint().x - ext.minPoint().x) / 2, 20, 0}));
}

}  // namespace

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "host/db/qadb_database.h"
#include "host/db/qadb_layer_table.h"
#include "host/db/qadb_text_measure.h"
#include "host/db/qadb_text_style_table.h"
#include "host/gi/qagi_font_locator.h"
#include "host/gi/qagi_text_measure_hook.h"
#include "host/gi/qagi_text_style.h"

namespace {

const std::wstring kDejaVuSans = L"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

struct StyleSpec {
  std::wstring name;
  std::wstring file;
  std::wstring bigFont;
  double size = 0.0;
  double xScale = 1.0;
  std::wstring typeface;
};

QaDbObjectId addStyle(QaDbDatabase& db, const StyleSpec& spec) {
  auto record = std::make_unique<QaDbTextStyleTableRecord>(spec.name);
  record->setFileName(spec.file);
  record->setBigFontFileName(spec.bigFont);
  record->setTextSize(spec.size);
  record->setXScale(spec.xScale);
  record->setObliquingAngle(0.25);
  record->setTypeface(spec.typeface);
  QaDbTextStyleTable* table = nullptr;
  EXPECT_EQ(db.getSymbolTable(table, QaDb::kForWrite), Qa::eOk);
  QaDbObjectId id;
  EXPECT_EQ(table->add(std::move(record), id), Qa::eOk);
  table->close();
  return id;
}

QaGiTextStyle pinned(const std::wstring& file, double size, double xScale) {
  QaGiTextStyle style;
  style.setFileName(file);
  style.setTextSize(size);
  style.setXScale(xScale);
  return style;
}

TEST(QaGiDbTextStyle, FillsTheMeasurerFromTheStyleRecord) {
  QaDbDatabase db;
  const QaDbObjectId id = addStyle(db, {L"工艺", kDejaVuSans, L"", 0.0, 0.8, L""});
  QaGiTextStyle style;
  style.setTextSize(2.5);
  ASSERT_EQ(fromQaDbTextStyle(id, style), Qa::eOk);
  EXPECT_EQ(style.styleName(), L"工艺");
  EXPECT_EQ(style.fileName(), kDejaVuSans);
  EXPECT_DOUBLE_EQ(style.xScale(), 0.8);
  EXPECT_DOUBLE_EQ(style.obliquingAngle(), 0.25);
  EXPECT_DOUBLE_EQ(style.textSize(), 2.5) << "a style without fixed height keeps the caller's size";
  EXPECT_EQ(style.width(L"Bolt 螺栓"), pinned(kDejaVuSans, 2.5, 0.8).width(L"Bolt 螺栓"));

  const QaDbObjectId fixed = addStyle(db, {L"H5", kDejaVuSans, L"", 5.0, 1.0, L""});
  ASSERT_EQ(fromQaDbTextStyle(fixed, style), Qa::eOk);
  EXPECT_DOUBLE_EQ(style.textSize(), 5.0);
}

TEST(QaGiDbTextStyle, ATypefaceKeptWithTheStyleWinsOverItsFile) {
  QaDbDatabase db;
  const QaDbObjectId id = addStyle(db, {L"TT", L"arial.ttf", L"", 0.0, 1.0, L"DejaVu Sans"});
  QaGiTextStyle style;
  ASSERT_EQ(fromQaDbTextStyle(id, style), Qa::eOk);
  EXPECT_EQ(style.measuringFontFile(), std::filesystem::path(kDejaVuSans));
}

TEST(QaGiDbTextStyle, ShapeFontStylesMeasureWithTheDefaultFont) {
  QaDbDatabase db;
  const QaDbObjectId id = addStyle(db, {L"HZ", L"txt.shx", L"gbcbig.shx", 0.0, 0.7, L""});
  QaGiTextStyle style;
  ASSERT_EQ(fromQaDbTextStyle(id, style), Qa::eOk);
  EXPECT_EQ(style.bigFontFileName(), L"gbcbig.shx");
  EXPECT_TRUE(style.usesDefaultFont());
  EXPECT_EQ(style.measuringFontFile(), tabulon::gi::defaultFontFile());
  // The drawing's own "Standard" style names the shape font "txt".
  QaDbTextStyleTable* table = nullptr;
  ASSERT_EQ(db.getSymbolTable(table, QaDb::kForRead), Qa::eOk);
  const QaDbObjectId standard = table->getAt(L"Standard");
  table->close();
  QaGiTextStyle fromStandard;
  ASSERT_EQ(fromQaDbTextStyle(standard, fromStandard), Qa::eOk);
  EXPECT_TRUE(fromStandard.usesDefaultFont());
}

TEST(QaGiDbTextStyle, AnIdThatIsNoTextStyleLeavesTheMeasurerAlone) {
  QaDbDatabase db;
  QaGiTextStyle style = pinned(kDejaVuSans, 3.0, 0.9);
  EXPECT_EQ(fromQaDbTextStyle(QaDbObjectId(), style), Qa::eNullObjectId);
  QaDbLayerTable* layers = nullptr;
  ASSERT_EQ(db.getSymbolTable(layers, QaDb::kForRead), Qa::eOk);
  const QaDbObjectId layerZero = layers->getAt(L"0");
  layers->close();
  EXPECT_EQ(fromQaDbTextStyle(layerZero, style), Qa::eWrongObjectType);
  EXPECT_EQ(style.fileName(), kDejaVuSans);
  EXPECT_DOUBLE_EQ(style.textSize(), 3.0);
  EXPECT_DOUBLE_EQ(style.xScale(), 0.9);
}

TEST(QaGiDbTextStyle, TheDatabaseMeasuresTextsThroughTheInstalledHook) {
  QaDbDatabase db;
  const QaDbObjectId id = addStyle(db, {L"工艺", kDejaVuSans, L"", 0.0, 0.5, L""});
  const std::wstring text = L"%%c20 零件";
  qagiInstallTextWidthFunction();
  const double hooked = qadbTextWidth(text, id, 3.5, 0.75);
  const double fallback = qadbTextWidth(text, QaDbObjectId(), 3.5, 0.75);
  qadbSetTextWidthFunction({});  // other tests expect the estimate
  // The entity's own width factor counts, not the style's.
  EXPECT_EQ(hooked, pinned(kDejaVuSans, 3.5, 0.75).width(text));
  EXPECT_EQ(fallback, pinned(tabulon::gi::defaultFontFile().wstring(), 3.5, 0.75).width(text));
  EXPECT_DOUBLE_EQ(qadbTextWidth(text, id, 3.5, 0.75), qadbEstimateTextWidth(text, 3.5, 0.75));
}

}  // namespace

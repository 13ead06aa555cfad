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
#include "support/test_support.h"

namespace {

const std::wstring kDejaVuSans = L"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

QaDbObjectId addStyle(QaDbDatabase& db, const std::wstring& name, const std::wstring& file, double size,
                      double xScale, const std::wstring& typeface = L"") {
  auto record = std::make_unique<QaDbTextStyleTableRecord>(name);
  record->setFileName(file);
  record->setBigFontFileName(L"gbcbig.shx");
  record->setTextSize(size);
  record->setXScale(xScale);
  record->setTypeface(typeface);
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
  QaGiTextStyle style;
  style.setTextSize(2.5);
  ASSERT_EQ(fromQaDbTextStyle(addStyle(db, L"工艺", kDejaVuSans, 0.0, 0.8), style), Qa::eOk);
  EXPECT_EQ(style.styleName(), L"工艺");
  EXPECT_EQ(style.bigFontFileName(), L"gbcbig.shx");
  EXPECT_DOUBLE_EQ(style.textSize(), 2.5) << "a style without fixed height keeps the caller's size";
  EXPECT_EQ(style.width(L"Bolt 螺栓"), pinned(kDejaVuSans, 2.5, 0.8).width(L"Bolt 螺栓"));

  ASSERT_EQ(fromQaDbTextStyle(addStyle(db, L"H5", L"txt.shx", 5.0, 1.0), style), Qa::eOk);
  EXPECT_DOUBLE_EQ(style.textSize(), 5.0);
  EXPECT_TRUE(style.usesDefaultFont());
  // A TrueType typeface kept with the style names the font better than its file.
  ASSERT_EQ(fromQaDbTextStyle(addStyle(db, L"TT", L"arial.ttf", 0.0, 1.0, L"DejaVu Sans"), style), Qa::eOk);
  EXPECT_EQ(style.measuringFontFile(), std::filesystem::path(kDejaVuSans));

  // An id that is no text style leaves the measurer alone.
  style = pinned(kDejaVuSans, 3.0, 0.9);
  EXPECT_EQ(fromQaDbTextStyle(QaDbObjectId(), style), Qa::eNullObjectId);
  QaDbLayerTable* layers = nullptr;
  ASSERT_EQ(db.getSymbolTable(layers, QaDb::kForRead), Qa::eOk);
  const QaDbObjectId layerZero = layers->getAt(L"0");
  layers->close();
  EXPECT_EQ(fromQaDbTextStyle(layerZero, style), Qa::eWrongObjectType);
  EXPECT_EQ(style.fileName(), kDejaVuSans);
  EXPECT_DOUBLE_EQ(style.xScale(), 0.9);
}

TEST(QaGiDbTextStyle, TheDatabaseMeasuresTextsThroughTheInstalledHook) {
  QaDbDatabase db;
  const QaDbObjectId id = addStyle(db, L"工艺", kDejaVuSans, 0.0, 0.5);
  const std::wstring text = L"%%c20 零件";
  double hooked = 0.0, withoutStyle = 0.0, estimated = 0.0;
  {
    QaGiFontTextWidth fonts;
    hooked = qadbTextWidth(text, id, 3.5, 0.75);
    withoutStyle = qadbTextWidth(text, QaDbObjectId(), 3.5, 0.75);
    QaDbEstimatedTextWidth estimate;  // an inner scope wins, and gives way when it ends
    estimated = qadbTextWidth(text, id, 3.5, 0.75);
  }
  // The entity's own width factor counts, not the style's.
  EXPECT_EQ(hooked, pinned(kDejaVuSans, 3.5, 0.75).width(text));
  EXPECT_EQ(withoutStyle, pinned(tabulon::gi::defaultFontFile().wstring(), 3.5, 0.75).width(text));
  EXPECT_DOUBLE_EQ(estimated, qadbEstimateTextWidth(text, 3.5, 0.75));
  EXPECT_DOUBLE_EQ(qadbTextWidth(text, id, 3.5, 0.75), qadbEstimateTextWidth(text, 3.5, 0.75));
}

TEST(QaGiDbTextStyle, MeasuresWithEveryTextStyleOfRealDrawings) {
  // Shape fonts with Chinese big fonts, Windows TrueType names, an empty font name.
  for (const char* file : {"libredwg_2013_gh109_1_cjk_utf8.dxf", "qcad_examples_flange.dxf",
                           "sdcad_zuankong_tuli_R2004_gbk.dxf", "ezdxf_text_attribs_mtext.dxf"}) {
    QaDbDatabase db(false);
    std::string error;
    ASSERT_EQ(db.readDwgFile(tabulon::test::fixturesDir() / file, 0, &error), Qa::eOk) << file << ": " << error;
    QaDbTextStyleTable* table = nullptr;
    ASSERT_EQ(db.getSymbolTable(table, QaDb::kForRead), Qa::eOk);
    int styles = 0;
    for (auto it = table->newIterator(); !it->done(); it->step(), ++styles) {
      QaGiTextStyle style;
      style.setTextSize(2.5);
      ASSERT_EQ(fromQaDbTextStyle(it->getRecordId(), style), Qa::eOk) << file;
      // Shape fonts, named with or without ".shx", have no metrics here.
      if (tabulon::gi::isShapeFontName(style.fileName()) || style.fileName().find(L'.') == std::wstring::npos) {
        EXPECT_TRUE(style.usesDefaultFont()) << file << " " << testing::PrintToString(style.fileName());
      }
      EXPECT_GT(style.width(L"技术要求 Ra3.2"), 7 * style.textSize() * style.xScale()) << file;
    }
    table->close();
    EXPECT_GT(styles, 0) << file;
  }
}

}  // namespace

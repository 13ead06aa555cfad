// The large drawing of the load benchmarks: 200,000 entities of model space (lines,
// single-line texts and block references with three attributes each) on a grid of
// 1000 columns 10 units apart, written to a file.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "host/db/qadb.h"
#include "host/db/qadb_open.h"
#include "host/dxf/dxf_writer.h"

namespace tabulon::bench {

inline constexpr int kLargeDrawingEntities = 200000;

inline void WriteLargeDrawing(const std::filesystem::path& path, int entities = kLargeDrawingEntities) {
  QaDbDatabase db;
  QaDbObjectId style = QaDbTextStyleTable::cast(db.textStyleTableId().rawObject())->getAt(L"Standard");
  QaDbObjectId block;
  {
    QaDbObjectPointer<QaDbBlockTable> blocks(db.blockTableId(), QaDb::kForWrite);
    blocks->add(std::make_unique<QaDbBlockTableRecord>(L"CELL"), block);
    block.rawObject()->close();
  }
  QaDbObjectPointer<QaDbBlockTableRecord> model(db.modelSpaceId(), QaDb::kForWrite);
  for (int i = 0; i < entities; ++i) {
    double x = (i % 1000) * 10.0, y = (i / 1000) * 10.0;
    QaDbObjectId id;
    if (i % 3 == 0) {
      model->appendQaDbEntity(std::make_unique<QaDbLine>(QaGePoint3d(x, y, 0), QaGePoint3d(x + 7.5, y + 2.25, 0)), id);
      id.rawObject()->close();
    } else if (i % 3 == 1) {
      auto text = std::make_unique<QaDbText>(QaGePoint3d(x, y, 0), L"工序 " + std::to_wstring(i), style, 2.5);
      model->appendQaDbEntity(std::move(text), id);
      id.rawObject()->close();
    } else {
      auto ref = std::make_unique<QaDbBlockReference>(QaGePoint3d(x, y, 0), block);
      model->appendQaDbEntity(std::move(ref), id);
      auto* r = QaDbBlockReference::cast(id.rawObject());
      for (const wchar_t* tag : {L"NO", L"NAME", L"QTY"}) {
        QaDbObjectId att;
        r->appendAttribute(att, std::make_unique<QaDbAttribute>(QaGePoint3d(x, y, 0), std::wstring(tag) + L"值", tag, style));
        att.rawObject()->close();
      }
      r->close();
    }
  }
  model.close();
  tabulon::dxf::dxfSaveFile(db, path.string());
}

}  // namespace tabulon::bench

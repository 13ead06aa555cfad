// A small drawing for the view and picking tests: two lines, a circle and a text at
// known places, saved to a file.
#pragma once

#include <filesystem>
#include <memory>

#include "host/db/qadb.h"
#include "host/db/qadb_open.h"

namespace tabulon::test {

struct TestDrawing {
  QaDbHandle left, right, circle, text;  // the entities' handles
};

// Left line (0,0)-(10,0), right line (50,0)-(60,10), circle at (30,30) radius 5, a
// text "ABC" at (0,40) 2.5 high.
inline TestDrawing FillTestDrawing(QaDbDatabase &db) {
  TestDrawing out;
  QaDbObjectPointer<QaDbBlockTableRecord> model(db.modelSpaceId(), QaDb::kForWrite);
  auto add = [&](std::unique_ptr<QaDbEntity> e) {
    QaDbObjectId id;
    model->appendQaDbEntity(std::move(e), id);
    id.rawObject()->close();
    return id.handle();
  };
  out.left = add(std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(10, 0, 0)));
  out.right = add(std::make_unique<QaDbLine>(QaGePoint3d(50, 0, 0), QaGePoint3d(60, 10, 0)));
  out.circle = add(std::make_unique<QaDbCircle>(QaGePoint3d(30, 30, 0), QaGeVector3d::kZAxis, 5.0));
  const QaDbObjectId style = QaDbTextStyleTable::cast(db.textStyleTableId().rawObject())->getAt(L"Standard");
  out.text = add(std::make_unique<QaDbText>(QaGePoint3d(0, 40, 0), L"ABC", style, 2.5));
  return out;
}

}  // namespace tabulon::test

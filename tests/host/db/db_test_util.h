// Helpers for the drawing database tests: appending entities and making blocks.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "host/db/qadb.h"

namespace qadbtest {

// Appends `entity` to the block `owner` (model space by default) and closes it.
inline QaDbObjectId append(QaDbDatabase& db, std::unique_ptr<QaDbEntity> entity,
                           QaDbObjectId owner = QaDbObjectId()) {
  if (owner.isNull()) owner = db.modelSpaceId();
  QaDbObjectPointer<QaDbBlockTableRecord> btr(owner, QaDb::kForWrite);
  EXPECT_TRUE(btr);
  QaDbObjectId id;
  EXPECT_EQ(btr->appendQaDbEntity(std::move(entity), id), Qa::eOk);
  id.rawObject()->close();
  return id;
}

// Adds an empty block definition named `name` with base point `origin`.
inline QaDbObjectId addBlock(QaDbDatabase& db, const std::wstring& name, const QaGePoint3d& origin = {}) {
  QaDbBlockTable* table = nullptr;
  EXPECT_EQ(db.getSymbolTable(table, QaDb::kForWrite), Qa::eOk);
  auto rec = std::make_unique<QaDbBlockTableRecord>(name);
  rec->setOrigin(origin);
  QaDbObjectId id;
  EXPECT_EQ(table->add(std::move(rec), id), Qa::eOk);
  id.rawObject()->close();
  table->close();
  return id;
}

// Adds a text style named `name`.
inline QaDbObjectId addTextStyle(QaDbDatabase& db, const std::wstring& name, double xScale = 1.0) {
  QaDbTextStyleTable* table = nullptr;
  EXPECT_EQ(db.getSymbolTable(table, QaDb::kForWrite), Qa::eOk);
  auto rec = std::make_unique<QaDbTextStyleTableRecord>(name);
  rec->setXScale(xScale);
  rec->setFileName(L"simsun.ttc");
  QaDbObjectId id;
  EXPECT_EQ(table->add(std::move(rec), id), Qa::eOk);
  id.rawObject()->close();
  table->close();
  return id;
}

inline void expectPoint(const QaGePoint3d& p, double x, double y, double z = 0.0, double tol = 1e-9) {
  EXPECT_NEAR(p.x, x, tol);
  EXPECT_NEAR(p.y, y, tol);
  EXPECT_NEAR(p.z, z, tol);
}

inline void expectBox(const QaDbExtents& e, const QaGePoint3d& lo, const QaGePoint3d& hi, double tol = 1e-9) {
  ASSERT_FALSE(e.isEmpty());
  expectPoint(e.minPoint(), lo.x, lo.y, lo.z, tol);
  expectPoint(e.maxPoint(), hi.x, hi.y, hi.z, tol);
}

// Texts are measured with the built-in estimate (0.6 of the height per narrow
// character, 1.0 per wide one) whatever measures outside the test.
class EstimatedTextWidth : public ::testing::Test {
 protected:
  QaDbEstimatedTextWidth estimate_;
};

}  // namespace qadbtest

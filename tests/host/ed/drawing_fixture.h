// A small drawing for the tests of picking and of the services: a block "BOX" (a 10 x 10
// square outline drawn by two lines), references of it, and loose lines, in the current
// document of the host's document manager.
#pragma once

#include "host/ap/qaap_doc_manager.h"
#include "host/db/db_test_util.h"

#include <gtest/gtest.h>

namespace tabulon::test {

class DrawingFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    auto owned = std::make_unique<QaDbDatabase>();
    db = owned.get();
    doc = qaDocManager().addDocument(std::move(owned), "fixture.dxf");
  }
  void TearDown() override { qaDocManager().closeAll(); }

  // A block of two lines spanning (0,0)-(w,h).
  QaDbObjectId block(const std::wstring& name, double w = 10, double h = 10) {
    auto id = qadbtest::addBlock(*db, name);
    qadbtest::append(*db, std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(w, 0, 0)), id);
    qadbtest::append(*db, std::make_unique<QaDbLine>(QaGePoint3d(w, 0, 0), QaGePoint3d(w, h, 0)), id);
    return id;
  }
  QaDbObjectId insert(QaDbObjectId blockId, const QaGePoint3d& at, double scale = 1.0) {
    auto ref = std::make_unique<QaDbBlockReference>(at, blockId);
    ref->setScaleFactors(QaGeScale3d(scale));
    return qadbtest::append(*db, std::move(ref));
  }
  QaDbObjectId line(const QaGePoint3d& a, const QaGePoint3d& b) {
    return qadbtest::append(*db, std::make_unique<QaDbLine>(a, b));
  }
  static std::wstring ref(QaDbObjectId id) { return L"#" + id.handle().text(); }

  QaDbDatabase* db = nullptr;
  QaApDocument* doc = nullptr;
};

}  // namespace tabulon::test

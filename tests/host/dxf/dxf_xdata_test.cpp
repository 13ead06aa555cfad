// Extended data of every item kind reads back as it was written, in a code
// page version and a UTF-8 one.
#include "dxf_example_builder.h"
#include "dxf_test_util.h"

#include <gtest/gtest.h>

using namespace tabulon::dxf;
using namespace tabulon::dxf::test;

TEST(DxfXData, EveryItemKindRoundTrips) {
  const std::vector<QaDbXDataItem> items = {
      QaDbXDataItem::string(L"工序 1"),
      QaDbXDataItem::control(true),
      QaDbXDataItem::int32(1),
      QaDbXDataItem::layerName(L"图层"),
      QaDbXDataItem::binary({0x00, 0x7f, 0xff}),
      QaDbXDataItem::handle(QaDbHandle(0x21)),
      QaDbXDataItem::point(QaGePoint3d(1.5, -2, 3)),
      QaDbXDataItem::point(QaGePoint3d(4, 5, 6), QaDbXDataItem::kWorldDirection),
      QaDbXDataItem::real(0.1),
      QaDbXDataItem::real(2.5, QaDbXDataItem::kDistance),
      QaDbXDataItem::real(0.75, QaDbXDataItem::kScaleFactor),
      QaDbXDataItem::int16(-7),
      QaDbXDataItem::control(false),
  };
  for (DxfVersion version : {DxfVersion::R2000, DxfVersion::R2018}) {
    QaDbDatabase db;
    buildExamplePage(db);
    QaDbObjectId id = addTo(db.modelSpaceId(), std::make_unique<QaDbLine>(QaGePoint3d(), QaGePoint3d(1, 0, 0)));
    {
      QaDbObjectPointer<QaDbLine> line(id, QaDb::kForWrite);
      line->setXData(L"KRM_XDATA_ALL", items);
      line->setXData(L"SECOND_APP", {QaDbXDataItem::string(L"b")});
    }
    auto back = loadText(saveText(db, DxfWriteOptions{version}));
    QaDbObject* o = back->objectIdFromHandle(id.handle()).rawObject();
    ASSERT_NE(o, nullptr);
    EXPECT_EQ(o->xData(L"KRM_XDATA_ALL"), items) << dxfVersionName(version);
    EXPECT_EQ(o->xDataApps(), (std::vector<std::wstring>{L"KRM_XDATA_ALL", L"SECOND_APP"}));
  }
}

TEST(DxfXData, ChangedExtendedDataIsWrittenAndUnchangedKeepsItsText) {
  // A value written with many digits stays so while the items do not change.
  QaDbDatabase db;
  buildExamplePage(db);
  std::string text = saveText(db);
  const std::string from = "1001\nKRM_TABULONPARA\n1000\nCARD-0001\n1070\n1\n";
  auto at = text.find(from);
  ASSERT_NE(at, std::string::npos);
  text.replace(at, from.size(), "1001\nKRM_TABULONPARA\n1000\nCARD-0001\n1070\n     1\n1040\n2.50000000\n");
  auto loaded = loadText(text);
  QaDbObjectId refId;
  for (QaDbObjectId id : loaded->objectIds())
    if (QaDbBlockReference::cast(id.rawObject())) refId = id;
  {
    QaDbObjectPointer<QaDbBlockReference> ref(refId, QaDb::kForWrite);
    ref->setPosition(QaGePoint3d(1, 1, 0));  // the reference changes, its extended data does not
  }
  std::string saved = saveText(*loaded);
  EXPECT_NE(saved.find("1001\nKRM_TABULONPARA\n1000\nCARD-0001\n1070\n     1\n1040\n2.50000000\n"), std::string::npos);
  {
    QaDbObjectPointer<QaDbBlockReference> ref(refId, QaDb::kForWrite);
    ref->setXData(L"KRM_TABULONPARA", {QaDbXDataItem::string(L"CARD-0002")});
  }
  saved = saveText(*loaded);
  EXPECT_NE(saved.find("1001\nKRM_TABULONPARA\n1000\nCARD-0002\n"), std::string::npos);
  EXPECT_EQ(saved.find("CARD-0001"), std::string::npos);
}

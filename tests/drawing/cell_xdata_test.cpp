#include "drawing/cell_xdata.h"

#include <gtest/gtest.h>

#include <memory>

#include "host/db/qadb_database.h"
#include "host/db/qadb_line.h"
#include "host/db/qadb_regapp_table.h"

namespace {

const std::wstring kApp = L"KRM_TABULONPARA";

TEST(KrQrxAppXdata, WritesNumberedPairsInSetOrderAndReadsThemBack) {
  QaDbLine line;
  KR_QRXAppXdata writer(kApp);
  writer.setString(1001, L"card-7");
  writer.setString(1002, L"21093045");
  writer.setInteger(1003, 4);
  writer.setInteger(1501, 1);
  writer.setInteger(1003, 5);  // replaces in place
  ASSERT_EQ(writer.setXdata(&line), Qa::eOk);

  const std::vector<QaDbXDataItem> stored = line.xData(kApp);
  ASSERT_EQ(stored.size(), 8u);
  EXPECT_EQ(stored[0], QaDbXDataItem::int32(1001));
  EXPECT_EQ(stored[1], QaDbXDataItem::string(L"card-7"));
  EXPECT_EQ(stored[4], QaDbXDataItem::int32(1003));
  EXPECT_EQ(stored[5], QaDbXDataItem::int32(5));
  EXPECT_EQ(stored[6], QaDbXDataItem::int32(1501));

  KR_QRXAppXdata reader(kApp);
  ASSERT_TRUE(reader.getXdata(&line));
  EXPECT_EQ(reader.itemNumbers(), (std::vector<int>{1001, 1002, 1003, 1501}));
  std::wstring s = L"unchanged";
  int n = -1;
  EXPECT_TRUE(reader.getString(1002, s));
  EXPECT_EQ(s, L"21093045");
  EXPECT_TRUE(reader.getInteger(1003, n));
  EXPECT_EQ(n, 5);
  // Absent items and items of another type leave the output alone.
  s = L"unchanged";
  n = -1;
  EXPECT_FALSE(reader.getString(1005, s));
  EXPECT_FALSE(reader.getString(1003, s));
  EXPECT_FALSE(reader.getInteger(1001, n));
  EXPECT_EQ(s, L"unchanged");
  EXPECT_EQ(n, -1);
}

TEST(KrQrxAppXdata, ReadsPlainListsByPosition) {
  QaDbLine line;
  ASSERT_EQ(line.setXData(L"KRM_XDATA_VTYPE",
                          {QaDbXDataItem::control(true), QaDbXDataItem::string(L"Number"), QaDbXDataItem::string(L"3"),
                           QaDbXDataItem::control(false)}),
            Qa::eOk);
  KR_QRXAppXdata xd(L"KRM_XDATA_VTYPE");
  ASSERT_TRUE(xd.getXdata(&line));
  std::wstring s;
  EXPECT_TRUE(xd.getString(1, s));
  EXPECT_EQ(s, L"Number");
  EXPECT_TRUE(xd.getString(2, s));
  EXPECT_EQ(s, L"3");
  int n = 0;
  EXPECT_FALSE(xd.getInteger(2, n));
  EXPECT_TRUE(xd.getInteger(2, n, true));
  EXPECT_EQ(n, 3);
  EXPECT_FALSE(xd.hasItem(3));

  // A single integer is a plain list of one value, not a half pair.
  ASSERT_EQ(line.setXData(L"KRM_XDATA_ORDER", {QaDbXDataItem::int32(7)}), Qa::eOk);
  KR_QRXAppXdata order(L"KRM_XDATA_ORDER");
  ASSERT_TRUE(order.getXdata(&line));
  EXPECT_FALSE(order.getString(1, s));
  EXPECT_TRUE(order.getString(1, s, true));
  EXPECT_EQ(s, L"7");
}

TEST(KrQrxAppXdata, ConversionsAcceptOnlyWholeNumbers) {
  QaDbLine line;
  KR_QRXAppXdata xd(L"KRM_TEST");
  xd.setString(1, L" 12 ");
  xd.setString(2, L"12x");
  xd.setString(3, L"");
  xd.setReal(4, 2.5);
  xd.setString(5, L"0.25");
  ASSERT_EQ(xd.setXdata(&line), Qa::eOk);
  KR_QRXAppXdata back(L"KRM_TEST");
  ASSERT_TRUE(back.getXdata(&line));
  int n = -1;
  EXPECT_TRUE(back.getInteger(1, n, true));
  EXPECT_EQ(n, 12);
  n = -1;
  EXPECT_FALSE(back.getInteger(2, n, true));
  EXPECT_FALSE(back.getInteger(3, n, true));
  EXPECT_FALSE(back.getInteger(4, n, true));
  EXPECT_EQ(n, -1);
  std::wstring s;
  EXPECT_TRUE(back.getString(4, s, true));
  EXPECT_EQ(s, L"2.5");
  double d = 0;
  EXPECT_TRUE(back.getReal(5, d, true));
  EXPECT_DOUBLE_EQ(d, 0.25);
  EXPECT_FALSE(back.getReal(5, d));
}

TEST(KrQrxAppXdata, PlainWriteFillsGapsAndReadsBackAlike) {
  QaDbLine line;
  KR_QRXAppXdata xd(L"KRM_XDATA_VTYPE");
  xd.setString(2, L"4");
  xd.setString(1, L"NumberDouble");
  ASSERT_EQ(xd.setXdataPlain(&line), Qa::eOk);
  const std::vector<QaDbXDataItem> stored = line.xData(L"KRM_XDATA_VTYPE");
  ASSERT_EQ(stored.size(), 2u);
  EXPECT_EQ(stored[0].asString(), L"NumberDouble");

  KR_QRXAppXdata gap(L"KRM_GAP");
  gap.setString(3, L"c");
  ASSERT_EQ(gap.setXdataPlain(&line), Qa::eOk);
  KR_QRXAppXdata back(L"KRM_GAP");
  ASSERT_TRUE(back.getXdata(&line));
  std::wstring s = L"x";
  EXPECT_TRUE(back.getString(1, s));
  EXPECT_EQ(s, L"");
  EXPECT_TRUE(back.getString(3, s));
  EXPECT_EQ(s, L"c");
}

TEST(KrQrxAppXdata, EmptyApplicationIsPresentButHasNoItems) {
  QaDbLine line;
  KR_QRXAppXdata xd(kApp);
  EXPECT_FALSE(xd.getXdata(&line));
  ASSERT_EQ(xd.setXdata(&line), Qa::eOk);
  EXPECT_TRUE(line.hasXData(kApp));
  KR_QRXAppXdata back(kApp);
  back.setString(1, L"stale");
  EXPECT_TRUE(back.getXdata(&line));
  EXPECT_EQ(back.itemCount(), 0);
}

TEST(KrQrxAppXdata, RegistersTheApplicationInItsDatabase) {
  QaDbDatabase db;
  auto line = std::make_unique<QaDbLine>();
  KR_QRXAppXdata xd(L"KRM_XDATA_CODE", &db);
  xd.setString(1, L"PART_NO");
  ASSERT_EQ(xd.setXdata(line.get()), Qa::eOk);
  QaDbRegAppTable* table = nullptr;
  ASSERT_EQ(db.getSymbolTable(table, QaDb::kForRead), Qa::eOk);
  EXPECT_TRUE(table->has(L"KRM_XDATA_CODE"));
  table->close();
}

}  // namespace

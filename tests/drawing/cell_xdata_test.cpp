#include "drawing/cell_xdata.h"

#include <gtest/gtest.h>

#include "host/db/qadb_line.h"

namespace {

using Item = QaDbXDataItem;

TEST(KrQrxAppXdata, NumberedItemsRoundTripInSetOrder) {
  QaDbLine line;
  KR_QRXAppXdata writer(L"KRM_TABULONPARA");
  writer.setString(1002, L"21093045");
  writer.setInteger(1501, 1);
  writer.setInteger(1003, 4);
  writer.setInteger(1501, 5);  // replaced in its place
  ASSERT_EQ(writer.setXdata(&line), Qa::eOk);
  EXPECT_EQ(line.xData(L"KRM_TABULONPARA"), (std::vector<Item>{Item::int32(1002), Item::string(L"21093045"),
                                                                Item::int32(1501), Item::int32(5), Item::int32(1003),
                                                                Item::int32(4)}));
  KR_QRXAppXdata reader(L"KRM_TABULONPARA");
  ASSERT_TRUE(reader.getXdata(&line));
  std::wstring s = L"kept";
  int n = -1;
  EXPECT_TRUE(reader.getInteger(1003, n));
  EXPECT_EQ(n, 4);
  EXPECT_FALSE(reader.getString(1501, s));
  EXPECT_FALSE(reader.getString(7, s));
  EXPECT_FALSE(reader.getInteger(1002, n));
  // Failed reads change nothing.
  EXPECT_EQ(s, L"kept");
  EXPECT_EQ(n, 4);
}

TEST(KrQrxAppXdata, PlainListsReadByPositionAndConvertOnRequest) {
  QaDbLine line;
  // Braces are structure, not values; a lone integer is a value, not half a pair.
  line.setXData(L"KRM_A", {Item::control(true), Item::string(L"Number"), Item::string(L" 12 "), Item::control(false)});
  line.setXData(L"KRM_B", {Item::int32(7), Item::string(L"12x"), Item::real(2.5)});
  KR_QRXAppXdata a(L"KRM_A"), b(L"KRM_B");
  ASSERT_TRUE(a.getXdata(&line));
  ASSERT_TRUE(b.getXdata(&line));
  std::wstring s;
  int n = 0;
  EXPECT_TRUE(a.getString(1, s));
  EXPECT_EQ(s, L"Number");
  EXPECT_FALSE(a.hasItem(3));
  // A string is an integer only on request, and then with blanks around it.
  EXPECT_FALSE(a.getInteger(2, n));
  EXPECT_TRUE(a.getInteger(2, n, true));
  EXPECT_EQ(n, 12);
  EXPECT_FALSE(b.getString(1, s));
  EXPECT_TRUE(b.getString(1, s, true));
  EXPECT_EQ(s, L"7");
  EXPECT_FALSE(b.getInteger(2, n, true));
  EXPECT_TRUE(b.getString(3, s, true));
  EXPECT_EQ(s, L"2.5");
  // Written plain, a gap in the numbers becomes an empty string.
  KR_QRXAppXdata gap(L"KRM_GAP");
  gap.setString(3, L"c");
  gap.setString(1, L"a");
  ASSERT_EQ(gap.setXdataPlain(&line), Qa::eOk);
  EXPECT_EQ(line.xData(L"KRM_GAP"), (std::vector<Item>{Item::string(L"a"), Item::string(L""), Item::string(L"c")}));
}

}  // namespace

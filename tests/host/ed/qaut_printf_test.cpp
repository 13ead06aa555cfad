#include "host/ed/qaut_printf.h"

#include "host/ed/qaed_scripted_io.h"

#include <gtest/gtest.h>

TEST(QaFormat, RewritesThePluginsFormatsForTheCLibrary) {
  struct Case {
    const wchar_t* format;
    const wchar_t* portable;
  };
  const Case cases[] = {
      {L"%s and %c", L"%ls and %lc"},
      {L"%-10s|%.3s", L"%-10ls|%.3ls"},
      {L"%hs %S %ls", L"%s %s %ls"},
      {L"%d%% %5.2f %x", L"%d%% %5.2f %x"},
      {L"%I64d %I32d %Iu", L"%lld %d %zu"},
      {L"%*s", L"%*ls"},
      {L"trailing %", L"trailing %"},
  };
  for (const auto& c : cases) EXPECT_EQ(qaPortableFormat(c.format), c.portable) << testing::PrintToString(std::wstring(c.format));
}

TEST(QaFormat, FormatsWideStringsNumbersAndLongTexts) {
  const std::wstring section = L"KrmcadTabulon_List";
  EXPECT_EQ(qaFormat(L"\ngetOstrelmOptionData %s FieldMap  %s error !", section.c_str(), L"LISTEXP_DATA_CARD"),
            L"\ngetOstrelmOptionData KrmcadTabulon_List FieldMap  LISTEXP_DATA_CARD error !");
  EXPECT_EQ(qaFormat(L"\n请选取第%d页的插入点", 3), L"\n请选取第3页的插入点");
  EXPECT_EQ(qaFormat(L"%0.2f mm; %I64d", 2.5, static_cast<long long>(1) << 40), L"2.50 mm; 1099511627776");
  const std::wstring big(5000, L'字');
  EXPECT_EQ(qaFormat(L"<%s>", big.c_str()), L"<" + big + L">");
}

TEST(QaUtPrintf, PrintsOnTheCurrentChannel) {
  QaEdScriptedIO io;
  {
    QaEdUserIOScope scope(io);
    qautPrintf(L"\n%s(%d)", L"卡片", 2);
    qautPrint(L" 100%");
  }
  qautPrint(L"after the scope: not collected");
  EXPECT_EQ(io.printed(), L"\n卡片(2) 100%");
}

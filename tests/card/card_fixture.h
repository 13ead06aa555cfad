// A small process-card library for the card tests: a first-page table, a
// continuation table and a card naming both, written to a scratch folder.
#pragma once

#include <string>

#include "card/card_attributes.h"
#include "card/table_attributes.h"
#include "card/utf8_text.h"
#include "support/test_support.h"

namespace cardtest {

inline KrmAttSet Att(const std::wstring& showName, const std::wstring& rowType = L"", double width = 40.0) {
  KrmAttSet att;
  att.SetShowName(showName);
  att.SetInName(showName + L"_CODE");
  att.SetRowType(rowType);
  att.SetWidth(width);
  att.SetHeight(3.5);
  return att;
}

// TITLE carries the four page numbers; ROW is the page base with `rows`
// references, an automatic number, and a wrapping content column; SIGN has 2.
inline KrmTableAttributes ProcessTable(const std::wstring& name, int rows) {
  KrmTableAttributes table;
  table.setTblName(name, name + L" 工艺卡");
  table.setPageBase(L"ROW");
  table.setWidth(297.9);
  table.setHeight(210.6);
  table.setSCell({KrmBlockSet(L"TITLE", {Att(L"图号"), Att(L"页码"), Att(L"总页"), Att(L"批页"), Att(L"批总")})});
  table.setMCell({KrmBlockSet(L"ROW", {Att(L"序号"), Att(L"工序"), Att(L"内容", kKrmRowNewline, 60.0)}),
                  KrmBlockSet(L"SIGN", {Att(L"签名")})});
  table.setPageAtt({{kKrmClassCur, {L"TITLE", L"页码"}}, {kKrmClassSum, {L"TITLE", L"总页"}},
                    {kKrmBatchCur, {L"TITLE", L"批页"}}, {kKrmBatchSum, {L"TITLE", L"批总"}},
                    {kKrmAutoNum, {L"ROW", L"序号"}}});
  table.setMDirType({{L"ROW", {L"1", std::to_wstring(rows)}}, {L"SIGN", {L"3", L"2"}}});
  return table;
}

// Writes first.tbl (20 rows), next.tbl (30 rows) and card.crd into `folder`
// and returns the card's path.
inline std::wstring WriteProcessCard(const std::wstring& folder) {
  ProcessTable(L"first", 20).OutputTable(folder + L"/first.tbl");
  ProcessTable(L"next", 30).OutputTable(folder + L"/next.tbl");
  KrmCardAttributes card;
  card.setCardName(L"card", L"机加工艺卡");
  card.addTblFile(L"first");
  card.addTblFile(L"next");
  card.OutputCard(folder + L"/card.crd");
  return folder + L"/card.crd";
}

inline std::wstring Wide(const std::filesystem::path& path) { return KrmFromFsPath(path); }

}  // namespace cardtest

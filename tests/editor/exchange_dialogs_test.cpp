#include "editor/exchange_dialogs.h"

#include <gtest/gtest.h>

namespace {

TEST(ExchangeDialogs, ExportSheetProposesTheDrawingsNameAsXlsx) {
  const KrmFileDialogSpec request = KrmExchangeDialog(KrmExchangeCommand::kExportSheet, L"", L"工艺卡", L"/work/a.b/part.dxf");
  EXPECT_TRUE(request.save);
  EXPECT_FALSE(request.askOverwrite);
  EXPECT_EQ(request.initialName, L"/work/a.b/part.xlsx");
  EXPECT_EQ(request.defaultExtension, L"xlsx");
  EXPECT_EQ(request.title, L"保存Excel文件");
}

TEST(ExchangeDialogs, TextDialogsShowThePatternAndAskBeforeOverwriting) {
  const KrmFileDialogSpec request = KrmExchangeDialog(KrmExchangeCommand::kExportText, L"", L"", L"");
  EXPECT_EQ(request.initialName, L"*.txt");
  EXPECT_EQ(request.filter, L"*.txt|*.txt||");
  EXPECT_TRUE(request.askOverwrite);
  EXPECT_EQ(KrmExchangeDialog(KrmExchangeCommand::kImportText, L"", L"", L"").title, L"打开文本文件");
  EXPECT_EQ(KrmExchangeInitialFolder(L"", L"工艺卡"), L"工艺卡");
  EXPECT_EQ(KrmExchangeInitialFolder(L"/tmp/x.txt", L"工艺卡"), L"/tmp/x.txt");
}

TEST(ExchangeDialogs, ImportSheetProposesNoNameAndOpensXls) {
  const KrmFileDialogSpec request = KrmExchangeDialog(KrmExchangeCommand::kImportSheet, L"/tmp/x.txt", L"", L"/a/b.dxf");
  EXPECT_FALSE(request.save);
  EXPECT_EQ(request.initialName, L"");
  EXPECT_EQ(request.defaultExtension, L"xls");
}

}  // namespace

#include "editor/exchange_dialogs.h"

#include <gtest/gtest.h>

namespace {

TEST(ExchangeDialogs, ExportSheetProposesTheDrawingsNameAsXlsx) {
  const KrmFileDialogSpec spec = KrmExchangeDialog(KrmExchangeCommand::kExportSheet, L"", L"工艺卡", L"/work/a.b/part.dxf");
  EXPECT_TRUE(spec.save);
  EXPECT_FALSE(spec.askOverwrite);
  EXPECT_EQ(spec.initialName, L"/work/a.b/part.xlsx");
  EXPECT_EQ(spec.defaultExtension, L"xlsx");
  EXPECT_EQ(spec.title, L"保存Excel文件");
}

TEST(ExchangeDialogs, TextDialogsShowThePatternAndAskBeforeOverwriting) {
  const KrmFileDialogSpec spec = KrmExchangeDialog(KrmExchangeCommand::kExportText, L"", L"", L"");
  EXPECT_EQ(spec.initialName, L"*.txt");
  EXPECT_EQ(spec.filter, L"*.txt|*.txt||");
  EXPECT_TRUE(spec.askOverwrite);
  EXPECT_EQ(KrmExchangeDialog(KrmExchangeCommand::kImportText, L"", L"", L"").title, L"打开文本文件");
  EXPECT_EQ(KrmExchangeInitialFolder(L"", L"工艺卡"), L"工艺卡");
  EXPECT_EQ(KrmExchangeInitialFolder(L"/tmp/x.txt", L"工艺卡"), L"/tmp/x.txt");
}

TEST(ExchangeDialogs, ImportSheetProposesNoNameAndOpensXls) {
  const KrmFileDialogSpec spec = KrmExchangeDialog(KrmExchangeCommand::kImportSheet, L"/tmp/x.txt", L"", L"/a/b.dxf");
  EXPECT_FALSE(spec.save);
  EXPECT_EQ(spec.initialName, L"");
  EXPECT_EQ(spec.defaultExtension, L"xls");
}

}  // namespace

// The exchange commands' file dialogs.
#include "editor/exchange_dialogs.h"

#include "host/rx/qa_lang_resource.h"

namespace {

std::wstring SheetFilter() {
  return KrmLoadString(189, L"Excel 工作簿(*.xlsx)|*.xlsx|Excel 97-2003 工作簿(*.xls)|*.xls||");
}

}  // namespace

std::wstring KrmExchangeInitialFolder(const std::wstring& lastDataFile, const std::wstring& cardShowName) {
  return lastDataFile.empty() ? cardShowName : lastDataFile;
}

KrmFileDialogSpec KrmExchangeDialog(KrmExchangeCommand command, const std::wstring&, const std::wstring&,
                                    const std::wstring& drawingPath) {
  KrmFileDialogSpec spec;
  switch (command) {
    case KrmExchangeCommand::kImportText:
    case KrmExchangeCommand::kExportText:
      spec.save = command == KrmExchangeCommand::kExportText;
      spec.title = spec.save ? KrmLoadString(154, L"保存文本文件") : KrmLoadString(151, L"打开文本文件");
      // The pattern stands in for the filter's text, which thus never shows.
      spec.filter = L"*.txt|*.txt||";
      spec.defaultExtension = L"txt";
      spec.initialName = L"*.txt";
      spec.askOverwrite = true;
      break;
    case KrmExchangeCommand::kExportSheet: {
      spec.save = true;
      spec.title = KrmLoadString(188, L"保存Excel文件");
      spec.filter = SheetFilter();
      spec.defaultExtension = L"xlsx";
      std::wstring name = drawingPath;
      const auto slash = name.find_last_of(L'/');
      const auto dot = name.find_last_of(L'.');
      if (dot != std::wstring::npos && (slash == std::wstring::npos || dot > slash)) name.erase(dot);
      spec.initialName = name.empty() ? name : (name + L".xlsx").substr(0, 259);
      break;
    }
    case KrmExchangeCommand::kImportSheet:
      spec.title = KrmLoadString(166, L"保存Excel文件");
      spec.filter = SheetFilter();
      spec.defaultExtension = L"xls";
      break;
  }
  return spec;
}

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
  KrmFileDialogSpec request;
  switch (command) {
    case KrmExchangeCommand::kImportText:
    case KrmExchangeCommand::kExportText:
      request.save = command == KrmExchangeCommand::kExportText;
      request.title = request.save ? KrmLoadString(154, L"保存文本文件") : KrmLoadString(151, L"打开文本文件");
      // The pattern stands in for the filter's text, which thus never shows.
      request.filter = L"*.txt|*.txt||";
      request.defaultExtension = L"txt";
      request.initialName = L"*.txt";
      request.askOverwrite = true;
      break;
    case KrmExchangeCommand::kExportSheet: {
      request.save = true;
      request.title = KrmLoadString(188, L"保存Excel文件");
      request.filter = SheetFilter();
      request.defaultExtension = L"xlsx";
      std::wstring name = drawingPath;
      const auto slash = name.find_last_of(L'/');
      const auto dot = name.find_last_of(L'.');
      if (dot != std::wstring::npos && (slash == std::wstring::npos || dot > slash)) name.erase(dot);
      request.initialName = name.empty() ? name : (name + L".xlsx").substr(0, 259);
      break;
    }
    case KrmExchangeCommand::kImportSheet:
      request.title = KrmLoadString(166, L"保存Excel文件");
      request.filter = SheetFilter();
      request.defaultExtension = L"xls";
      break;
  }
  return request;
}

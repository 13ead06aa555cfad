// What the file dialogs of the four exchange commands show: title, filter, default
// extension, direction and the proposed file, from the string tables. The window runs
// the dialog and hands the chosen path to the editor's command.
#pragma once

#include <string>

enum class KrmExchangeCommand { kImportText, kExportText, kImportSheet, kExportSheet };

struct KrmFileDialogSpec {
  std::wstring title;
  std::wstring filter;            // "text|pattern|...||"
  std::wstring defaultExtension;  // without the dot
  std::wstring initialName;       // the file or pattern proposed
  bool save = false;              // a save dialog, else an open dialog
  bool askOverwrite = false;
};

// `lastDataFile` is the path the last exchange used, `cardShowName` the card's show
// name, `drawingPath` the current drawing's file.
KrmFileDialogSpec KrmExchangeDialog(KrmExchangeCommand command, const std::wstring& lastDataFile,
                                    const std::wstring& cardShowName, const std::wstring& drawingPath);
// The folder a text dialog opens in: the last exchange's path, else the card's show name.
std::wstring KrmExchangeInitialFolder(const std::wstring& lastDataFile, const std::wstring& cardShowName);

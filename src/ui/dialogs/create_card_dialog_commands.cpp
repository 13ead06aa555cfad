// The card editor window's commands that open further windows or let the user work in
// the drawing: file exchange, word library, picking, page numbering and arrangement,
// preview, update and the pick of another card.
#include <QDesktopServices>
#include <QFileDialog>
#include <QUrl>

#include "editor/exchange_dialogs.h"
#include "editor/krm_dlg_create_crd.h"
#include "editor/word_lib.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/ap/qaap_document.h"
#include "host/rx/qarx_system_registry.h"
#include "host/svc/krm_base_services.h"
#include "host/svc/krm_std_service.h"
#include "ui/dialogs/create_card_dialog.h"
#include "ui/dialogs/row_dialogs.h"
#include "ui/dialogs/word_chooser.h"
#include "ui/ui_strings.h"

namespace tabulon::ui {

namespace {

// A file dialog filter "text|pattern|...||" as Qt writes it: "text (pattern);;...".
QString QtFilter(const std::wstring& filter) {
  const QStringList parts = toQString(filter).split(QLatin1Char('|'));
  QStringList out;
  for (int i = 0; i + 1 < parts.size(); i += 2) {
    if (parts[i].isEmpty()) break;
    QString pattern = parts[i + 1];
    pattern.replace(QLatin1Char(';'), QLatin1Char(' '));
    out << (parts[i].contains(pattern) ? parts[i] : parts[i] + QStringLiteral(" (") + pattern + QLatin1Char(')'));
  }
  return out.join(QStringLiteral(";;"));
}

std::wstring DrawingPath() {
  const QaApDocument* doc = qaDocManager().curDoc();
  return doc != nullptr ? doc->fileName().wstring() : std::wstring();
}

std::wstring CardShowName(const KrmDlgCreateCrd& model) { return model.Title(L""); }

}  // namespace

QString CreateCardDialog::chooseFile(bool sheet, bool save) {
  const auto command = sheet ? (save ? KrmExchangeCommand::kExportSheet : KrmExchangeCommand::kImportSheet)
                             : (save ? KrmExchangeCommand::kExportText : KrmExchangeCommand::kImportText);
  const KrmFileDialogSpec request = KrmExchangeDialog(command, model_.LastDataFile(), CardShowName(model_), DrawingPath());
  if (fileChooser_) return fileChooser_(request);
  QFileDialog dialog(this, toQString(request.title), QString(), QtFilter(request.filter));
  dialog.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(request.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setDefaultSuffix(toQString(request.defaultExtension));
  if (!request.askOverwrite) dialog.setOption(QFileDialog::DontConfirmOverwrite);
  if (!request.initialName.empty()) dialog.selectFile(toQString(request.initialName));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().front();
}

void CreateCardDialog::importFile(bool sheet) {
  const QString path = chooseFile(sheet, false);
  if (path.isEmpty()) return;
  if (sheet) model_.ImportSheetFile(toWString(path));
  else model_.ImportTextFile(toWString(path));
  gridDirty_ = true;
  refresh();
}

void CreateCardDialog::exportFile(bool sheet) {
  const QString path = chooseFile(sheet, true);
  if (path.isEmpty()) return;
  lastExport_ = sheet ? model_.ExportSheetFile(toWString(path)) : model_.ExportTextFile(toWString(path));
  refresh();
  // A spreadsheet written whole is shown to the user in their spreadsheet program.
  if (sheet && lastExport_.ok()) {
    if (fileOpener_) fileOpener_(path);
    else QDesktopServices::openUrl(QUrl::fromLocalFile(path));
  }
}

bool CreateCardDialog::chooseWordText(std::wstring& word) {
  CKrmWordLib library;
  if (auto* service = qaFindService<KrmStdService>(KRM_STD_SERVICE)) {
    library.SetLibPath(service->getCurrentWordLib(qaDocManager().workingDatabase()));
  }
  return library.GetWord(word, [this](const std::vector<KrmWordCategory>& categories, std::wstring& out) {
    return RunWordChooser(categories, out, strings_, this);
  });
}

void CreateCardDialog::chooseWord() {
  std::wstring word;
  if (!chooseWordText(word)) return;
  model_.InsertWord(word);
  gridDirty_ = true;
  refresh();
}

void CreateCardDialog::pickTableData() {
  stepAside([this] { model_.PickTableData(); });
}

void CreateCardDialog::takeDrawingData() {
  model_.TakeDrawingData(qaDocManager().workingDatabase());
  gridDirty_ = true;
  refresh();
}

void CreateCardDialog::pageNumbering() {
  KrmDlgPageSet proposal = model_.ProposePageSet();
  if (RunPageSetDialog(proposal, strings_, this)) model_.ApplyPageSet(proposal);
  gridDirty_ = true;
  refresh();
}

void CreateCardDialog::arrangement() {
  KrmDlgArrang proposal = model_.ProposeArrang();
  if (RunArrangDialog(proposal, strings_, this)) model_.ApplyArrang(proposal);
  refresh();
}

void CreateCardDialog::preview(bool all) {
  QaGePoint3d lower, upper;
  const bool found = all ? model_.PreviewAllArea(lower, upper) : model_.PreviewPageArea(lower, upper);
  if (!found) return;
  stepAside([&] {
    if (showArea_) showArea_(lower, upper);
    model_.ShowWindowArea(lower, upper);
  });
}

void CreateCardDialog::updateDrawing() {
  model_.UpdateDrawing();
  refresh();
}

void CreateCardDialog::pickCard() {
  if (!pickCard_) return;
  stepAside(pickCard_);
}

}  // namespace tabulon::ui

// The card editor's window: a thin view on KrmDlgCreateCrd (which it does not own). It
// shows one tab per table, the grid control on the model's grid projection, the row and
// page commands, the page controls and total, import and export, the word library, the
// picking commands (the window steps aside while the user picks in the drawing) and,
// in edit mode, update, auto update, preview and the pick button that edits another
// card. Every user action goes to the model; every change of the model is shown anew.
#pragma once

#include <QString>

#include <functional>
#include <string>

#include "editor/exchange_dialogs.h"
#include "host/ge/qage_point3d.h"
#include "host/svc/result.h"
#include "ui/gadgets/resize_dialog.h"

class KrmDlgCreateCrd;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabBar;

namespace tabulon::ui {

class CGridCtrl;
class UiStrings;

class CreateCardDialog : public CResizeDlg {
  Q_OBJECT

 public:
  // `model` has its template (and in edit mode its card) set and must outlive the
  // window; the window runs the model's OnInitDialog.
  CreateCardDialog(KrmDlgCreateCrd &model, const UiStrings &strings, QWidget *parent = nullptr);
  ~CreateCardDialog() override;

  // The pick button of edit mode: what it runs while the window is hidden (the re-edit
  // of another card). Without one the button is not shown.
  void setPickCard(std::function<void()> pickCard);

  // Where the preview shows an area of the drawing (the studio zooms its view there).
  void setShowArea(std::function<void(const QaGePoint3d&, const QaGePoint3d&)> showArea) { showArea_ = std::move(showArea); }
  // Replaces the file dialogs of import and export (tests): gets what the dialog would
  // show, answers the chosen path or "" for cancel.
  void setFileChooser(std::function<QString(const KrmFileDialogSpec&)> chooser) { fileChooser_ = std::move(chooser); }
  // Opens a file as the desktop does with a double click: a spreadsheet, once it is
  // exported, opens in the user's spreadsheet program. Tests record the path instead.
  void setFileOpener(std::function<void(const QString &)> opener) { fileOpener_ = std::move(opener); }
  // The result of the last export.
  const Status& lastExport() const { return lastExport_; }

  // Shows what the model says: tabs, grid, page controls, enabled commands.
  void refresh();

  // Views and controls, for the tests.
  CGridCtrl &grid() { return *grid_; }
  QTabBar &tabs() { return *tabs_; }
  QCheckBox &pageModeBox() { return *pageMode_; }
  QLineEdit &pageBox() { return *pageBox_; }
  QLabel &totalLabel() { return *total_; }
  // How the text of the cell being edited will land in the drawing ("" when as typed).
  QLabel &landingLabel() { return *landing_; }
  // Shows the landing of `text` in grid column `col` of the table shown.
  void showLanding(int col, const QString &text);
  QPushButton *button(const QString &objectName) const;

  // The commands as the buttons and keys run them.
  void finish();
  void cancelCard();
  void addRow();
  void insertRows();
  void deleteRows();
  void importText() { importFile(false); }
  void exportText() { exportFile(false); }
  void importSheet() { importFile(true); }
  void exportSheet() { exportFile(true); }
  void chooseWord();
  void pickTableData();
  void takeDrawingData();
  void arrangement();
  void pageNumbering();
  void previewThisPage() { preview(false); }
  void previewAllPages() { preview(true); }
  void updateDrawing();
  void pickCard();

 protected:
  void reject() override;
  void keyPressEvent(QKeyEvent *event) override;

 private:
  void build();
  void loadGrid();
  void endEdit(int row, int col, const QString &text, int key);
  // Hides the window while `body` lets the user work in the drawing.
  void stepAside(const std::function<void()> &body);
  QPushButton *makeButton(const char *name, unsigned id, const wchar_t *literal, void (CreateCardDialog::*slot)());
  void closeWithModel();
  void importFile(bool sheet);
  void exportFile(bool sheet);
  void preview(bool all);
  QString chooseFile(bool sheet, bool save);
  // The word library's chooser; true with the chosen phrase.
  bool chooseWordText(std::wstring &word);

  KrmDlgCreateCrd &model_;
  const UiStrings &strings_;
  std::function<void()> pickCard_;
  std::function<void(const QaGePoint3d&, const QaGePoint3d&)> showArea_;
  std::function<QString(const KrmFileDialogSpec&)> fileChooser_;
  std::function<void(const QString &)> fileOpener_;
  Status lastExport_;
  QTabBar *tabs_ = nullptr;
  CGridCtrl *grid_ = nullptr;
  QCheckBox *pageMode_ = nullptr;
  QLineEdit *pageBox_ = nullptr;
  QLabel *total_ = nullptr;
  QLabel *landing_ = nullptr;
  QCheckBox *autoUpdate_ = nullptr;
  QCheckBox *placePages_ = nullptr;
  QCheckBox *autoArrange_ = nullptr;
  bool loading_ = false;
  bool gridDirty_ = false;
};

}  // namespace tabulon::ui

#include "ui/dialogs/create_card_dialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QVBoxLayout>

#include <functional>

#include "editor/cell_landing.h"
#include "editor/editor_commands.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb.h"
#include "host/db/qadb_open.h"
#include "editor/krm_dlg_create_crd.h"
#include "ui/dialogs/row_dialogs.h"
#include "ui/grid/grid_ctrl.h"
#include "ui/grid/grid_delegate.h"
#include "ui/grid/grid_find.h"
#include "ui/grid/grid_model.h"
#include "ui/ui_strings.h"

namespace tabulon::ui {

namespace {

GridCellClass ViewClass(KrmCellClass cellClass) {
  switch (cellClass) {
    case KrmCellClass::kCombo: return GridCellClass::Combo;
    case KrmCellClass::kCheck: return GridCellClass::Check;
    case KrmCellClass::kNumeric: return GridCellClass::Numeric;
    case KrmCellClass::kDateTime: return GridCellClass::DateTime;
    case KrmCellClass::kText: break;
  }
  return GridCellClass::Text;
}

QColor ViewColour(unsigned rgb) {
  return rgb == 0 ? QColor() : QColor((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF);
}

}  // namespace

CreateCardDialog::CreateCardDialog(KrmDlgCreateCrd& model, const UiStrings& strings, QWidget* parent)
    : CResizeDlg(QStringLiteral("KrmDlgCreateCrd"), parent), model_(model), strings_(strings) {
  build();
  model_.Grid().SetChangeListener([this](const KrmGridChange&) { gridDirty_ = true; });
  model_.OnInitDialog();
  setWindowTitle(toQString(model_.Title(strings_.wtext(9400, L"卡片编辑") + L" - ")));
  KrmWindowRect rect;
  if (model_.RestoredWindowRect(rect)) setGeometry(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
  loadGrid();
  refresh();
}

CreateCardDialog::~CreateCardDialog() { model_.Grid().SetChangeListener(nullptr); }

QPushButton* CreateCardDialog::makeButton(const char* name, unsigned id, const wchar_t* literal,
                                          void (CreateCardDialog::*slot)()) {
  auto* button = new QPushButton(strings_.text(id, literal), this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [this, slot] { (this->*slot)(); });
  return button;
}

QPushButton* CreateCardDialog::button(const QString& objectName) const {
  return findChild<QPushButton*>(objectName);
}

void CreateCardDialog::build() {
  auto* layout = new QVBoxLayout(this);
  tabs_ = new QTabBar(this);
  layout->addWidget(tabs_);
  grid_ = new CGridCtrl(this);
  grid_->SetStrings(&strings_);
  layout->addWidget(grid_, 1);
  landing_ = new QLabel(this);
  landing_->setObjectName(QStringLiteral("landing"));
  layout->addWidget(landing_);
  // The cell editor's text, as it is typed, tells how it will land in the drawing.
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
    auto *line = qobject_cast<QLineEdit *>(now);
    if (line == nullptr || !grid_->viewport()->isAncestorOf(line)) return;
    const int col = grid_->gridModel().gridColumn(grid_->currentIndex());
    if (!line->property("tabulonLanding").toBool()) {
      line->setProperty("tabulonLanding", true);
      connect(line, &QLineEdit::textChanged, this, [this, col](const QString &text) { showLanding(col, text); });
    }
    showLanding(col, line->text());
  });

  auto* rows = new QHBoxLayout;
  rows->addWidget(makeButton("addRow", 9401, L"添加行", &CreateCardDialog::addRow));
  rows->addWidget(makeButton("insertRows", 9402, L"插入行", &CreateCardDialog::insertRows));
  rows->addWidget(makeButton("deleteRows", 9403, L"删除行", &CreateCardDialog::deleteRows));
  auto* up = new QPushButton(strings_.text(9404, L"上移"), this);
  up->setObjectName(QStringLiteral("moveUp"));
  connect(up, &QPushButton::clicked, this, [this] { model_.MoveRowUp(); refresh(); });
  auto* down = new QPushButton(strings_.text(9405, L"下移"), this);
  down->setObjectName(QStringLiteral("moveDown"));
  connect(down, &QPushButton::clicked, this, [this] { model_.MoveRowDown(); refresh(); });
  rows->addWidget(up);
  rows->addWidget(down);
  rows->addStretch(1);
  pageMode_ = new QCheckBox(strings_.text(9406, L"分页"), this);
  rows->addWidget(pageMode_);
  // Each page button turns the model's page and shows the result; the step is a plain
  // callable (a member pointer carried through two lambdas trips the address sanitizer).
  auto pageButton = [this, rows](const char* name, const QString& text, std::function<void()> step) {
    auto* b = new QPushButton(text, this);
    b->setObjectName(QString::fromLatin1(name));
    b->setAutoDefault(false);
    b->setMaximumWidth(32);
    connect(b, &QPushButton::clicked, this, [this, step = std::move(step)] {
      step();
      refresh();
    });
    rows->addWidget(b);
  };
  pageButton("firstPage", QStringLiteral("|<"), [this] { model_.OnFirstPage(); });
  pageButton("prevPage", QStringLiteral("<"), [this] { model_.OnPrevPage(); });
  pageBox_ = new QLineEdit(this);
  pageBox_->setMaximumWidth(48);
  rows->addWidget(pageBox_);
  total_ = new QLabel(this);
  rows->addWidget(total_);
  pageButton("nextPage", QStringLiteral(">"), [this] { model_.OnNextPage(); });
  pageButton("lastPage", QStringLiteral(">|"), [this] { model_.OnLastPage(); });
  layout->addLayout(rows);

  auto* data = new QHBoxLayout;
  data->addWidget(makeButton("importText", 9410, L"导入文本", &CreateCardDialog::importText));
  data->addWidget(makeButton("exportText", 9411, L"导出文本", &CreateCardDialog::exportText));
  data->addWidget(makeButton("importSheet", 9412, L"导入表格", &CreateCardDialog::importSheet));
  data->addWidget(makeButton("exportSheet", 9413, L"导出表格", &CreateCardDialog::exportSheet));
  data->addWidget(makeButton("wordLibrary", 9414, L"词库", &CreateCardDialog::chooseWord));
  data->addWidget(makeButton("pickTableData", 9415, L"拾取表格", &CreateCardDialog::pickTableData));
  data->addWidget(makeButton("takeDrawingData", 9416, L"图纸数据", &CreateCardDialog::takeDrawingData));
  data->addStretch(1);
  layout->addLayout(data);

  auto* place = new QHBoxLayout;
  placePages_ = new QCheckBox(strings_.text(9420, L"分页放置"), this);
  autoArrange_ = new QCheckBox(strings_.text(9421, L"自动排列"), this);
  place->addWidget(placePages_);
  place->addWidget(autoArrange_);
  place->addWidget(makeButton("arrangement", 9422, L"排列...", &CreateCardDialog::arrangement));
  place->addWidget(makeButton("pageNumbering", 9423, L"页码...", &CreateCardDialog::pageNumbering));
  place->addStretch(1);
  autoUpdate_ = new QCheckBox(strings_.text(9424, L"自动更新"), this);
  place->addWidget(autoUpdate_);
  place->addWidget(makeButton("previewPage", 9425, L"预览本页", &CreateCardDialog::previewThisPage));
  place->addWidget(makeButton("previewAll", 9426, L"预览全部", &CreateCardDialog::previewAllPages));
  place->addWidget(makeButton("updateDrawing", 9427, L"更新", &CreateCardDialog::updateDrawing));
  place->addWidget(makeButton("pickCard", 9428, L"拾取卡片", &CreateCardDialog::pickCard));
  place->addWidget(makeButton("finish", 9429, L"完成", &CreateCardDialog::finish));
  place->addWidget(makeButton("cancel", 9430, L"取消", &CreateCardDialog::cancelCard));
  layout->addLayout(place);

  connect(tabs_, &QTabBar::currentChanged, this, [this](int index) {
    if (loading_ || index < 0) return;
    grid_->EndEditing();
    model_.SelectTab(index);
    refresh();
  });
  connect(grid_, &CGridCtrl::notify, this, [this](int code, int row, int col, const QString& text, int key) {
    if (code == GVN_ENDLABELEDIT) endEdit(row, col, text, key);
  });
  // In an open cell editor the word or the picked text replaces the editor's selection;
  // the cell commits when the editor ends.
  connect(&grid_->gridDelegate(), &GridDelegate::wordLibraryRequested, this, [this] {
    auto *line = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    std::wstring word;
    if (line != nullptr && chooseWordText(word)) line->insert(toQString(word));
  });
  connect(&grid_->gridDelegate(), &GridDelegate::pickTextRequested, this, [this] {
    QPointer<QLineEdit> line = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    std::wstring text = L"Test1";
    bool picked = false;
    BeginEditorCommand();
    picked = model_.PickTextForEditor(text);
    CompleteEditorCommand();
    if (picked && line) line->insert(toQString(text));
  });
  // The user's selection is the model's: the row commands and the word library act on it.
  auto takeSelection = [this] {
    if (loading_) return;
    const CCellRange range = grid_->GetSelectedCellRange();
    model_.Grid().SetSelectedRange(range.minRow, range.minCol, range.maxRow, range.maxCol);
    const CCellID focus = grid_->GetFocusCell();
    if (focus.IsValid()) model_.Grid().SetFocusCell(focus.row, focus.col);
    gridDirty_ = false;  // the selection is shown already
    refresh();
  };
  connect(grid_->selectionModel(), &QItemSelectionModel::selectionChanged, this, takeSelection);
  connect(grid_->selectionModel(), &QItemSelectionModel::currentChanged, this, takeSelection);
  connect(pageMode_, &QCheckBox::clicked, this, [this](bool checked) { model_.OnPageModeBox(checked); refresh(); });
  connect(pageBox_, &QLineEdit::returnPressed, this, [this] {
    model_.SetPageBoxText(toWString(pageBox_->text()));
    model_.OnGoPage();
    refresh();
  });
  connect(autoUpdate_, &QCheckBox::clicked, this, [this](bool checked) { model_.SetAutoUpdate(checked ? 1 : 0); refresh(); });
  connect(placePages_, &QCheckBox::clicked, this, [this](bool checked) { model_.OnPlacePages(checked); refresh(); });
  connect(autoArrange_, &QCheckBox::clicked, this, [this](bool checked) { model_.OnAutoArrange(checked); refresh(); });
}

void CreateCardDialog::setPickCard(std::function<void()> pickCard) {
  pickCard_ = std::move(pickCard);
  refresh();
}

void CreateCardDialog::loadGrid() {
  gridDirty_ = false;
  loading_ = true;
  const KrmGridCtrl& source = model_.Grid();
  const int rows = source.GetRowCount();
  const int cols = source.GetColumnCount();
  grid_->SetFixedRowCount(0);
  grid_->SetFixedColumnCount(0);
  grid_->SetRowCount(rows);
  grid_->SetColumnCount(cols);
  if (rows > 0 && cols > 0) {
    grid_->SetFixedRowCount(1);
    grid_->SetFixedColumnCount(1);
  }
  for (int r = 0; r < rows; ++r) {
    for (int c = 0; c < cols; ++c) {
      const KrmGridCell* from = source.GetCell(r, c);
      if (from == nullptr) continue;
      GridCell cell;
      cell.cellClass = ViewClass(from->cellClass);
      cell.text = toQString(from->text);
      if (cell.cellClass == GridCellClass::Check) cell.text = toQString(source.GetItemText(r, c));
      cell.state = (from->readOnly ? GVIS_READONLY : 0u) | (from->modified ? GVIS_MODIFIED : 0u);
      cell.format = static_cast<unsigned>(from->format);
      cell.textColor = ViewColour(from->textColour);
      if (cell.cellClass == GridCellClass::Combo) {
        if (const auto* options = source.GetComboOptions(c)) {
          for (const auto& option : *options) cell.options << toQString(option);
        }
        cell.comboStyle = from->comboStyle;
      }
      grid_->setCell(r, c, cell);
    }
  }
  for (int c = 0; c < cols; ++c) grid_->SetColumnWidth(c, source.GetColumnWidth(c));
  for (int r = 0; r < rows; ++r) grid_->SetRowHeight(r, source.GetRowHeight(r));
  grid_->SetModified(source.GetModified() != 0);
  const KrmCellRange selected = source.GetSelectedCellRange();
  if (selected.IsValid() && selected.top < rows) grid_->SetSelectedRange(selected.top, selected.left, selected.bottom, selected.right);
  loading_ = false;
}

void CreateCardDialog::refresh() {
  if (gridDirty_) loadGrid();
  loading_ = true;
  const std::vector<std::wstring> names = model_.TabNames();
  if (tabs_->count() != static_cast<int>(names.size())) {
    while (tabs_->count() > 0) tabs_->removeTab(0);
    for (const auto& name : names) tabs_->addTab(toQString(name));
  } else {
    for (int i = 0; i < tabs_->count(); ++i) tabs_->setTabText(i, toQString(names[static_cast<std::size_t>(i)]));
  }
  tabs_->setCurrentIndex(model_.CurTab());
  loading_ = false;

  pageMode_->setChecked(model_.PageModeBoxChecked());
  pageMode_->setEnabled(model_.PageModeBoxEnabled());
  for (const char* name : {"firstPage", "prevPage", "nextPage", "lastPage"}) {
    button(QString::fromLatin1(name))->setEnabled(model_.PageControlsEnabled());
  }
  pageBox_->setEnabled(model_.PageControlsEnabled());
  pageBox_->setText(toQString(model_.PageBoxText()));
  total_->setText(toQString(model_.TotalLabel()));
  placePages_->setChecked(model_.PlacePagesChecked());
  autoArrange_->setChecked(model_.AutoArrangeChecked());
  autoArrange_->setEnabled(model_.AutoArrangeEnabled());
  autoUpdate_->setChecked(model_.GetAutoUpdate() != 0);

  const std::pair<const char*, KrmEditorCommand> commands[] = {
      {"addRow", KrmEditorCommand::kAddRow},           {"insertRows", KrmEditorCommand::kInsertRows},
      {"deleteRows", KrmEditorCommand::kDeleteRows},   {"moveUp", KrmEditorCommand::kMoveRowUp},
      {"moveDown", KrmEditorCommand::kMoveRowDown},    {"importText", KrmEditorCommand::kImportText},
      {"exportText", KrmEditorCommand::kExportText},   {"importSheet", KrmEditorCommand::kImportSheet},
      {"exportSheet", KrmEditorCommand::kExportSheet}, {"wordLibrary", KrmEditorCommand::kWordLibrary},
      {"pickTableData", KrmEditorCommand::kPickTableData}, {"takeDrawingData", KrmEditorCommand::kTakeDrawingData},
      {"arrangement", KrmEditorCommand::kArrangement}, {"pageNumbering", KrmEditorCommand::kPageNumbering},
      {"previewPage", KrmEditorCommand::kPreviewPage}, {"previewAll", KrmEditorCommand::kPreviewAllPages},
      {"updateDrawing", KrmEditorCommand::kUpdateDrawing},
  };
  for (const auto& [name, command] : commands) {
    QPushButton* b = button(QString::fromLatin1(name));
    b->setVisible(KrmCommandExists(model_, command));
    b->setEnabled(KrmCommandEnabled(model_, command));
  }
  autoUpdate_->setVisible(KrmCommandExists(model_, KrmEditorCommand::kAutoUpdate));
  button(QStringLiteral("pickCard"))->setVisible(model_.GetEditMode() != 0 && pickCard_ != nullptr);
}

void CreateCardDialog::showLanding(int col, const QString& text) {
  const KrmDataGrid& table = model_.Grid().GetGridData();
  if (col < 1 || col > static_cast<int>(table.cols.size())) return landing_->clear();
  const KrmAttSet& cell = table.cols[static_cast<std::size_t>(col - 1)].att;
  const KrmCellLook look = FindCellLook(table, cell, qaDocManager().workingDatabase());
  landing_->setText(toQString(DescribeCellLanding(MeasureCellLanding(cell, toWString(text), look))));
}

void CreateCardDialog::endEdit(int row, int col, const QString& text, int key) {
  landing_->clear();
  if (key == Qt::Key_Escape) return;
  model_.Grid().SetItemText(row, col, toWString(text));
  model_.OnGridEndEdit(row, col);
  if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    model_.Grid().SetSelectedRange(row + 1, col, row + 1, col);
    model_.OnReturn();
  }
  gridDirty_ = true;
  refresh();
}

void CreateCardDialog::closeWithModel() {
  const QRect rect = geometry();
  model_.SetWindowRect(KrmWindowRect{rect.left(), rect.top(), rect.right() + 1, rect.bottom() + 1});
}

void CreateCardDialog::finish() {
  grid_->EndEditing();
  closeWithModel();
  model_.OnFinish();
  model_.OnDestroy();
  accept();
}

void CreateCardDialog::cancelCard() {
  model_.OnCancelCard();
  if (model_.GetEnd() == KrmDlgCreateCrd::End::kOpen) return;
  model_.OnDestroy();
  CResizeDlg::reject();
}

void CreateCardDialog::reject() { cancelCard(); }

void CreateCardDialog::addRow() {
  model_.AddRow();
  refresh();
}

void CreateCardDialog::insertRows() {
  KrmDlgAddRow proposal = model_.ProposeInsertRows();
  const bool ok = RunAddRowDialog(proposal, strings_, this);
  model_.ApplyInsertRows(proposal, ok);
  refresh();
}

void CreateCardDialog::deleteRows() {
  KrmDlgDelRow proposal = model_.ProposeDeleteRows();
  const bool ok = RunDelRowDialog(proposal, strings_, this);
  model_.ApplyDeleteRows(proposal, ok);
  refresh();
}

void CreateCardDialog::keyPressEvent(QKeyEvent* event) {
  if (event->modifiers() == Qt::ControlModifier && event->key() >= Qt::Key_A && event->key() <= Qt::Key_Z) {
    const wchar_t letter = static_cast<wchar_t>(L'A' + (event->key() - Qt::Key_A));
    if (letter == L'S') return finish();
    if (letter == L'Q') {
      model_.OnQuit();
      model_.OnDestroy();
      return CResizeDlg::reject();
    }
    if (model_.OnCtrlKey(letter)) return refresh();
  }
  CResizeDlg::keyPressEvent(event);
}

void CreateCardDialog::stepAside(const std::function<void()>& body) {
  BeginEditorCommand();
  body();
  CompleteEditorCommand();
  gridDirty_ = true;
  refresh();
}

}  // namespace tabulon::ui

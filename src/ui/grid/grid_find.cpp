#include "ui/grid/grid_find.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/grid/grid_model.h"
#include "ui/ui_strings.h"

namespace tabulon::ui {

namespace {

Qt::CaseSensitivity caseOf(const GridFindOptions &o) { return o.matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive; }

QString textOf(const UiStrings *strings, unsigned id, const wchar_t *literal) {
  return strings ? strings->text(id, literal) : toQString(literal);
}

}  // namespace

std::optional<CCellID> FindInGrid(const GridModel &model, CCellID from, const QString &what,
                                  const GridFindOptions &options) {
  if (what.isEmpty()) return std::nullopt;
  const int r0 = model.fixedRowCount(), c0 = model.fixedColumnCount();
  const int rows = model.gridRowCount(), cols = model.gridColumnCount();
  if (rows <= r0 || cols <= c0) return std::nullopt;
  // Cells in row order as one sequence.
  const int width = cols - c0;
  const int last = (rows - r0) * width - 1;
  int pos;
  if (!from.IsValid() || from.row < r0 || from.col < c0) pos = options.down ? -1 : last + 1;
  else pos = (from.row - r0) * width + (from.col - c0);
  for (pos += options.down ? 1 : -1; pos >= 0 && pos <= last; pos += options.down ? 1 : -1) {
    const CCellID cell{r0 + pos / width, c0 + pos % width};
    if (model.text(cell.row, cell.col).contains(what, caseOf(options))) return cell;
  }
  return std::nullopt;
}

int ReplaceInCell(GridModel &model, CCellID cell, const QString &what, const QString &with,
                  const GridFindOptions &options) {
  const GridCell *c = model.cell(cell.row, cell.col);
  if (!c || what.isEmpty() || (c->state & GVIS_READONLY)) return 0;
  QString text = c->text;
  const int count = static_cast<int>(text.count(what, caseOf(options)));
  if (count == 0) return 0;
  text.replace(what, with, caseOf(options));
  model.setText(cell.row, cell.col, text);
  return count;
}

int ReplaceAllInGrid(GridModel &model, const QString &what, const QString &with, const GridFindOptions &options) {
  int count = 0;
  GridFindOptions down = options;
  down.down = true;
  std::optional<CCellID> at = FindInGrid(model, {}, what, down);
  while (at) {
    count += ReplaceInCell(model, *at, what, with, down);
    at = FindInGrid(model, *at, what, down);
  }
  return count;
}

GridFindDialog::GridFindDialog(CGridCtrl &grid, bool findOnly, const UiStrings *strings)
    : QDialog(&grid), grid_(grid), findOnly_(findOnly) {
  setWindowTitle(findOnly ? textOf(strings, 9101, L"查找") : textOf(strings, 9102, L"替换"));
  auto *form = new QFormLayout;
  what_ = new QLineEdit(this);
  form->addRow(textOf(strings, 9103, L"查找内容:"), what_);
  if (!findOnly) {
    with_ = new QLineEdit(this);
    form->addRow(textOf(strings, 9104, L"替换为:"), with_);
  }
  matchCase_ = new QCheckBox(textOf(strings, 9105, L"区分大小写"), this);
  up_ = new QRadioButton(textOf(strings, 9106, L"向上"), this);
  auto *down = new QRadioButton(textOf(strings, 9107, L"向下"), this);
  down->setChecked(true);
  auto *options = new QHBoxLayout;
  options->addWidget(matchCase_);
  options->addWidget(up_);
  options->addWidget(down);
  auto *buttons = new QHBoxLayout;
  auto *next = new QPushButton(textOf(strings, 9108, L"查找下一个"), this);
  next->setDefault(true);
  connect(next, &QPushButton::clicked, this, &GridFindDialog::findNext);
  buttons->addWidget(next);
  if (!findOnly) {
    auto *one = new QPushButton(textOf(strings, 9102, L"替换"), this);
    auto *all = new QPushButton(textOf(strings, 9109, L"全部替换"), this);
    connect(one, &QPushButton::clicked, this, &GridFindDialog::replace);
    connect(all, &QPushButton::clicked, this, &GridFindDialog::replaceAll);
    buttons->addWidget(one);
    buttons->addWidget(all);
  }
  auto *close = new QPushButton(textOf(strings, 9110, L"取消"), this);
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  buttons->addWidget(close);
  auto *layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addLayout(options);
  layout->addLayout(buttons);
  setAttribute(Qt::WA_DeleteOnClose);
}

void GridFindDialog::setSearchText(const QString &text) { what_->setText(text); }
QString GridFindDialog::searchText() const { return what_->text(); }
void GridFindDialog::setReplaceText(const QString &text) {
  if (with_) with_->setText(text);
}

GridFindOptions GridFindDialog::options() const { return {!up_->isChecked(), matchCase_->isChecked()}; }

bool GridFindDialog::findNext() {
  const auto found = FindInGrid(grid_.gridModel(), grid_.GetFocusCell(), searchText(), options());
  if (!found) return false;
  grid_.SetFocusCell(found->row, found->col);
  grid_.SetSelectedRange(found->row, found->col, found->row, found->col);
  return true;
}

void GridFindDialog::replace() {
  if (!with_) return;
  ReplaceInCell(grid_.gridModel(), grid_.GetFocusCell(), searchText(), with_->text(), options());
  findNext();
}

int GridFindDialog::replaceAll() {
  if (!with_) return 0;
  return ReplaceAllInGrid(grid_.gridModel(), searchText(), with_->text(), options());
}

}  // namespace tabulon::ui

#include "ui/gadgets/resize_dialog.h"

#include "host/svc/krm_reg_service.h"

namespace tabulon::ui {

namespace {
constexpr int kSettingsStore = 17;
}

CResizeDlg::CResizeDlg(const QString &name, QWidget *parent) : QDialog(parent), name_(name) {
  setSizeGripEnabled(true);
}

std::optional<QRect> CResizeDlg::StoredGeometry(const QString &name) {
  if (name.isEmpty()) return std::nullopt;
  KrmRegService reg;
  if (!reg.Open(kSettingsStore, 1, 0)) return std::nullopt;
  std::optional<QRect> out;
  if (reg.OpenSubKey(name.toStdWString())) {
    int x = 0, y = 0, w = 0, h = 0;
    if (reg.Read(L"Left", x) && reg.Read(L"Top", y) && reg.Read(L"Width", w) && reg.Read(L"Height", h) && w > 0 &&
        h > 0)
      out = QRect(x, y, w, h);
  }
  reg.Close();
  return out;
}

bool CResizeDlg::StoreGeometry(const QString &name, const QRect &rect) {
  if (name.isEmpty()) return false;
  KrmRegService reg;
  if (!reg.Open(kSettingsStore, 0, 1) || !reg.CreateSubKey(name.toStdWString())) return false;
  reg.Write(L"Left", rect.x());
  reg.Write(L"Top", rect.y());
  reg.Write(L"Width", rect.width());
  reg.Write(L"Height", rect.height());
  return reg.Close() != 0;
}

void CResizeDlg::showEvent(QShowEvent *event) {
  if (!restored_) {
    restored_ = true;
    if (auto rect = StoredGeometry(name_)) setGeometry(*rect);
  }
  QDialog::showEvent(event);
}

void CResizeDlg::done(int result) {
  StoreGeometry(name_, geometry());
  QDialog::done(result);
}

void CResizeDlg::BeginEditorCommand() {
  inEditorCommand_ = true;
  // QWidget's own hide: QDialog's would end a modal run.
  QWidget::setVisible(false);
}

void CResizeDlg::CompleteEditorCommand(int restore) {
  inEditorCommand_ = false;
  if (restore) QWidget::setVisible(true);
}

}  // namespace tabulon::ui

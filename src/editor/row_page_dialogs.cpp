// The small dialogs of the card editor.
#include "editor/row_page_dialogs.h"

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <utility>

#include "host/rx/qa_lang_resource.h"

namespace {

std::wstring RowsMessage() { return KrmLoadString(145, L"请输入大于0的整数"); }

std::wstring Format2(double value) {
  wchar_t buffer[64];
  std::swprintf(buffer, 64, L"%.2f", value);
  return buffer;
}

}  // namespace

int BoxInteger(const std::wstring& text) {
  std::size_t i = text.find_first_not_of(L" \t");
  if (i == std::wstring::npos) return 0;
  bool negative = false;
  if (text[i] == L'-' || text[i] == L'+') negative = text[i++] == L'-';
  long long value = 0;
  for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i) {
    value = value * 10 + (text[i] - L'0');
    if (value > 2147483647LL) return negative ? -2147483647 : 2147483647;
  }
  return static_cast<int>(negative ? -value : value);
}

double BoxNumber(const std::wstring& text) {
  wchar_t* end = nullptr;
  const double value = std::wcstod(text.c_str(), &end);
  return end == text.c_str() ? 0.0 : value;
}

bool KrmDlgAddRow::Accept(std::wstring& message) const {
  if (Count() >= kKrmSpinMin) return true;
  message = RowsMessage();
  return false;
}

bool KrmDlgDelRow::Accept(std::wstring& message) const {
  if (BoxInteger(fromText) >= kKrmSpinMin && BoxInteger(toText) >= kKrmSpinMin) return true;
  message = RowsMessage();
  return false;
}

int KrmDlgDelRow::From() const { return std::min(BoxInteger(fromText), BoxInteger(toText)); }
int KrmDlgDelRow::To() const { return std::max(BoxInteger(fromText), BoxInteger(toText)); }

bool KrmDlgPageSet::Accept() const { return Step() >= 1 && StartSum() >= 1 && StartCur() >= 1; }

void KrmDlgArrang::SetData(const KrmCardDir& dir) {
  horText = Format2(dir.GetHor());
  verText = Format2(dir.GetVer());
  direction = dir.GetDir() >= 0 && dir.GetDir() <= 3 ? dir.GetDir() : 3;
  rowFirst_ = dir.GetFstT() == 1;
  columnsText = std::to_wstring(dir.GetFstN());
  rowsText = columnsText;
}

void KrmDlgArrang::GetData(KrmCardDir& out) const {
  out.SetHor(BoxNumber(horText));
  out.SetVer(BoxNumber(verText));
  out.SetDir(direction);
  out.SetFstT(rowFirst_ ? 1 : 2);
  out.SetFstN(static_cast<int>(BoxNumber(rowFirst_ ? columnsText : rowsText)));
}

KrmDlgRowHeight::KrmDlgRowHeight(bool rows, int proposed) : rows_(rows), proposed_(proposed) { ChooseUnit(0); }

std::wstring KrmDlgRowHeight::Label() const { return rows_ ? KrmLoadString(170, L"行高") : KrmLoadString(171, L"列宽"); }

std::wstring KrmDlgRowHeight::Title() const {
  const std::wstring what = rows_ ? KrmLoadString(174, L"行标高度") : KrmLoadString(174, L"列表宽度");
  return Label() + L"(" + KrmLoadString(172, L"自动测量值为") + what + L")";
}

std::wstring KrmDlgRowHeight::UnitName(int unit) const { return unit == 0 ? KrmLoadString(175, L"毫米") : KrmLoadString(176, L"像素"); }

void KrmDlgRowHeight::ChooseUnit(int unit) {
  unit_ = unit == 1 ? 1 : 0;
  valueText = std::to_wstring(unit_ == 1 ? proposed_ * 10 : proposed_);
}

int KrmDlgRowHeight::Value() const {
  const int value = BoxInteger(valueText);
  return unit_ == 1 ? value / 10 : value;
}

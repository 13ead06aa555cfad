// The editor's small stored settings, kept through the settings service under a subkey
// per dialog: the page mode of the card editor and the grid's font. A missing service,
// store or value is silent and leaves the caller's default. The service belongs to the
// host; callers pass it (null when there is none).
#pragma once

#include <array>
#include <string>

class KrmRegService;

inline constexpr wchar_t kCreateCardSubKey[] = L"KrmDlgCreateCrd";
inline constexpr wchar_t kCutPageValue[] = L"CreateCard_CutPage";
inline constexpr wchar_t kGridSubKey[] = L"KrmGridCtrl";

// 1 and `value` read when the subkey and the value exist. A subkey that had to be made
// reads nothing.
int ReadDialogSetting(KrmRegService* service, const std::wstring& subKey, const std::wstring& name, std::wstring& value);
// 1 when written and saved.
int WriteDialogSetting(KrmRegService* service, const std::wstring& subKey, const std::wstring& name, const std::wstring& value);

// The grid's font: the thirteen integer fields of a logical font and the face name.
struct KrmGridFont {
  // FontHeight, FontWidth, FontEscapement, FontOrientation, FontWeight, FontItalic,
  // FontUnderline, FontStrikeOut, FontCharSet, FontOutPrecision, FontClipPrecision,
  // FontQuality, FontPitchAndFamily, in this order.
  std::array<int, 13> values{-12, 0, 0, 0, 400, 0, 0, 0, 1, 0, 0, 0, 0};
  std::wstring faceName;  // at most 32 characters
  bool operator==(const KrmGridFont&) const = default;
};

// The names of the 14 stored values, the face name last.
const std::array<const wchar_t*, 14>& GridFontValueNames();

// Reads the stored font over `font`: a value that is missing leaves its field. 1 when
// the subkey existed.
int ReadGridFont(KrmRegService* service, KrmGridFont& font);
// Stores all 14 values. 1 when saved.
int WriteGridFont(KrmRegService* service, const KrmGridFont& font);

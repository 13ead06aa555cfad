// One attribute definition of a block class in a table template: the column's
// identity (show name), its internal code, value type, editor, calculation,
// layout and cell size. A plain copyable value.
#pragma once

#include <string>

// Words of the string type.
inline constexpr const wchar_t* kKrmNumInt = L"KRM_XDATA_NUMINT";
inline constexpr const wchar_t* kKrmNumDouble = L"KRM_XDATA_NUMDOUBLE";
inline constexpr const wchar_t* kKrmNumStr = L"KRM_XDATA_NUMSTR";
// Words of the row type.
inline constexpr const wchar_t* kKrmRowFit = L"kFit";
inline constexpr const wchar_t* kKrmRowNewline = L"kNewline";

class KrmAttSet {
 public:
  KrmAttSet() = default;

  // Every text empty, every number 0.
  void Reset() { *this = KrmAttSet(); }

  const std::wstring& GetShowName() const { return showName_; }
  void SetShowName(const std::wstring& text) { showName_ = text; }
  const std::wstring& GetInName() const { return inName_; }
  void SetInName(const std::wstring& text) { inName_ = text; }
  const std::wstring& GetStringType() const { return stringType_; }
  void SetStringType(const std::wstring& text) { stringType_ = text; }
  int GetDecimalNum() const { return decimalNum_; }
  void SetDecimalNum(int count) { decimalNum_ = count; }
  // "CENTER", "RIGHT"; anything else means left.
  const std::wstring& GetAlignType() const { return alignType_; }
  void SetAlignType(const std::wstring& text) { alignType_ = text; }
  // "kFit", "kNewline"; anything else writes the text as it stands.
  const std::wstring& GetRowType() const { return rowType_; }
  void SetRowType(const std::wstring& text) { rowType_ = text; }
  // Stored and passed on; nothing in the card model reads it.
  const std::wstring& GetAttDir() const { return attDir_; }
  void SetAttDir(const std::wstring& text) { attDir_ = text; }
  const std::wstring& GetCanEdit() const { return canEdit_; }
  void SetCanEdit(const std::wstring& text) { canEdit_ = text; }
  const std::wstring& GetCtrType() const { return ctrType_; }
  void SetCtrType(const std::wstring& text) { ctrType_ = text; }
  // List items joined by ";".
  const std::wstring& GetCtrContent() const { return ctrContent_; }
  void SetCtrContent(const std::wstring& text) { ctrContent_ = text; }
  const std::wstring& GetDefault() const { return default_; }
  void SetDefault(const std::wstring& text) { default_ = text; }
  // Expression of a calculated column; empty for none.
  const std::wstring& GetCalc() const { return calc_; }
  void SetCalc(const std::wstring& text) { calc_ = text; }
  // Column order as decimal text.
  const std::wstring& GetShowType() const { return showType_; }
  void SetShowType(const std::wstring& text) { showType_ = text; }
  // Cell width and text height at scale 1.
  double GetWidth() const { return width_; }
  void SetWidth(double width) { width_ = width; }
  double GetHeight() const { return height_; }
  void SetHeight(double height) { height_ = height; }
  // The text in hand while a cell is being written.
  const std::wstring& GetContent() const { return content_; }
  void SetContent(const std::wstring& text) { content_ = text; }

  friend bool operator==(const KrmAttSet&, const KrmAttSet&) = default;

 private:
  std::wstring showName_;
  std::wstring inName_;
  std::wstring stringType_;
  int decimalNum_ = 0;
  std::wstring alignType_;
  std::wstring rowType_;
  std::wstring attDir_;
  std::wstring canEdit_;
  std::wstring ctrType_;
  std::wstring ctrContent_;
  std::wstring default_;
  std::wstring calc_;
  std::wstring showType_;
  double width_ = 0.0;
  double height_ = 0.0;
  std::wstring content_;
};

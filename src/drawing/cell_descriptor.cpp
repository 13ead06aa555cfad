#include "drawing/cell_descriptor.h"

#include <cwchar>

#include "drawing/cell_xdata.h"
#include "host/db/qadb_attribute.h"
#include "host/db/qadb_attribute_definition.h"
#include "host/rx/qa_lang_resource.h"

namespace {

// Leading digits as a C runtime would read them: "" and words give 0.
int leadingInteger(const std::wstring& text) {
  return static_cast<int>(std::wcstol(text.c_str(), nullptr, 10));
}

void readProperties(const QaDbObject& object, const std::wstring& tag, KrmAttSet& out) {
  out.SetShowName(tag);
  std::wstring code = ReadXdataString(object, kKrmXdataCode);
  if (code.empty()) code = out.GetShowName();
  out.SetInName(code);

  std::wstring type;
  int decimals = 2;
  ReadValueType(object, type, decimals);
  out.SetStringType(type);
  out.SetDecimalNum(decimals);

  out.SetAlignType(ReadXdataString(object, kKrmXdataAlign));
  out.SetRowType(ReadXdataString(object, kKrmXdataTextLengthMode));
  out.SetAttDir(ReadXdataString(object, kKrmXdataOrientation));
  out.SetCanEdit(ReadXdataString(object, kKrmXdataEditable));
  out.SetCtrType(ReadXdataString(object, kKrmXdataControlType));
  out.SetCtrContent(ReadXdataString(object, kKrmXdataControlValue));
  out.SetDefault(ReadXdataString(object, kKrmXdataDefaultValue));
  out.SetCalc(ReadXdataString(object, kKrmXdataExpression));
  out.SetShowType(ReadXdataString(object, kKrmXdataOrder));
}

}  // namespace

std::wstring ReadXdataString(const QaDbObject& object, const std::wstring& appName) {
  KR_QRXAppXdata xd(appName, object.database());
  xd.getXdata(&object);
  std::wstring out;
  xd.getString(1, out, false);
  return out;
}

std::wstring ValueTypeOfWord(const std::wstring& word) {
  if (word == L"NumberInt") return kKrmNumInt;
  if (word == L"Number" || word == L"NumberDouble") return kKrmNumDouble;
  return kKrmNumStr;
}

int ReadValueType(const QaDbObject& object, std::wstring& type, int& decimals) {
  decimals = 0;
  KR_QRXAppXdata xd(kKrmXdataVType, object.database());
  xd.getXdata(&object);
  std::wstring word;
  xd.getString(1, word, false);
  type = ValueTypeOfWord(word);
  if (type == kKrmNumDouble) {
    std::wstring digits;
    xd.getString(2, digits, true);
    decimals = leadingInteger(digits);
  }
  return 1;
}

int ReadCellDefinition(const QaDbAttributeDefinition& definition, KrmAttSet& out) {
  readProperties(definition, definition.tag(), out);
  return 1;
}

int ReadCellDefinition(const QaDbAttribute& attribute, KrmAttSet& out) {
  readProperties(attribute, attribute.tag(), out);
  return 1;
}

std::wstring ControlKindOfWord(const std::wstring& word) {
  if (word == L"CMB_DOWN") return L"LG_CBS_DROPDOWN";
  if (word == L"CMB_LIST_YESNO" || word == L"CMB_LIST") return L"LG_CBS_DROPDOWNLIST";
  if (word == L"NOCTRL") return L"LG_NONE";
  if (word == L"EDT_SPIN") return L"LG_EDIT";
  if (word == L"EDT_NUM" || word == L"EDT_REAL") return L"LG_EDITNUMERIC";
  if (word == L"PTI_DATE") return L"LG_DATETIME";
  if (word == L"CHK_CELLCHECK") return L"LG_CELLCHECK";
  return L"LG_EDIT";
}

std::vector<std::wstring> SplitControlContent(const std::wstring& text) {
  std::vector<std::wstring> out;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find(L';', start);
    if (end == std::wstring::npos) end = text.size();
    if (end > start) out.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return out;
}

int BuildControlLists(const std::vector<KrmAttSet>& atts, KrmControlLists& lists) {
  for (std::size_t i = 0; i < atts.size(); ++i) {
    const std::wstring& word = atts[i].GetCtrType();
    std::vector<std::wstring> items;
    if (word == L"CMB_LIST_YESNO") {
      items.push_back(KrmLoadString(179, L"是"));
      items.push_back(KrmLoadString(180, L"否"));
      items.insert(items.begin(), L"");
    } else if (word == L"CHK_CELLCHECK" || word == L"CMB_DOWN") {
      items = SplitControlContent(atts[i].GetCtrContent());
    } else {
      items = SplitControlContent(atts[i].GetCtrContent());
      items.insert(items.begin(), L"");
    }
    if (!items.empty()) lists[std::to_wstring(i + 1)] = std::move(items);
  }
  return 1;
}

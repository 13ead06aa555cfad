// Reading a cell's description from the extended data of an attribute definition (or
// of an attribute): one registered application per property, "KRM_XDATA_…", whose item
// 1 holds the value. Also the translations of value-type and control words, and the
// list items of list columns. Nothing here writes to the drawing.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "card/att_set.h"

class QaDbObject;
class QaDbAttribute;
class QaDbAttributeDefinition;

// Application names of the cell properties.
inline constexpr const wchar_t* kKrmXdataCode = L"KRM_XDATA_CODE";
inline constexpr const wchar_t* kKrmXdataVType = L"KRM_XDATA_VTYPE";
inline constexpr const wchar_t* kKrmXdataAlign = L"KRM_XDATA_ALIGN";
inline constexpr const wchar_t* kKrmXdataTextLengthMode = L"KRM_XDATA_TEXTLENGTHMODE";
inline constexpr const wchar_t* kKrmXdataOrientation = L"KRM_XDATA_ORIENTION";
inline constexpr const wchar_t* kKrmXdataEditable = L"KRM_XDATA_EDITABLE";
inline constexpr const wchar_t* kKrmXdataControlType = L"KRM_XDATA_CONTROLTYPE";
inline constexpr const wchar_t* kKrmXdataControlValue = L"KRM_XDATA_CONTROLVALUE";
inline constexpr const wchar_t* kKrmXdataDefaultValue = L"KRM_XDATA_DEFAULTVALUE";
inline constexpr const wchar_t* kKrmXdataExpression = L"KRM_XDATA_EXPRE";
inline constexpr const wchar_t* kKrmXdataOrder = L"KRM_XDATA_ORDER";

// List items of list columns, keyed by the one-based column number in decimal.
using KrmControlLists = std::map<std::wstring, std::vector<std::wstring>>;

// The string of item 1 of `appName` on `object`; "" when absent.
std::wstring ReadXdataString(const QaDbObject& object, const std::wstring& appName);

// The value type of a cell: "KRM_XDATA_NUMINT" for "NumberInt", "KRM_XDATA_NUMDOUBLE"
// with item 2 as decimals for "Number" and "NumberDouble", else "KRM_XDATA_NUMSTR".
// `decimals` is 0 unless the type is a real number. Returns 1.
int ReadValueType(const QaDbObject& object, std::wstring& type, int& decimals);
// The model's word for a drawing's value-type word.
std::wstring ValueTypeOfWord(const std::wstring& word);

// Fills `out` from the tag and the cell properties; every property is set, empty when
// absent. The in-name falls back on the tag. Width, height and content are untouched.
// Return 1.
int ReadCellDefinition(const QaDbAttributeDefinition& definition, KrmAttSet& out);
int ReadCellDefinition(const QaDbAttribute& attribute, KrmAttSet& out);

// The grid cell kind of a control word ("LG_EDIT" for unknown words).
std::wstring ControlKindOfWord(const std::wstring& word);

// The list items of every column of `atts` that has any, under "%d" of index + 1. A
// yes/no list gets "是" and "否" (string resources 179, 180) and a leading blank item;
// other words split the control content at ";" (empty pieces dropped) and, except for
// "CMB_DOWN" and "CHK_CELLCHECK", get a leading blank item too. Entries of `lists` under
// other keys are kept. Returns 1.
int BuildControlLists(const std::vector<KrmAttSet>& atts, KrmControlLists& lists);

// The pieces of `text` between ";" separators, empty pieces dropped.
std::vector<std::wstring> SplitControlContent(const std::wstring& text);

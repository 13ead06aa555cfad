#include "authoring/cell_descriptor_editor.h"

#include <algorithm>
#include <cwctype>

#include "drawing/cell_descriptor.h"
#include "drawing/cell_xdata.h"
#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_block_table.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_open.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/utf8.h"

namespace {

using tabulon::Status;
using tabulon::svc::toUtf8;

const KrmCellDescriptorEditor::Property* Find(const std::wstring& key) {
  for (const auto& property : KrmCellDescriptorEditor::Properties())
    if (key == property.key) return &property;
  return nullptr;
}

bool IsWholeNumber(const std::wstring& text) {
  std::size_t start = !text.empty() && (text[0] == L'-' || text[0] == L'+') ? 1 : 0;
  if (start == text.size()) return false;
  return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(),
                     [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

bool OneOf(const std::wstring& text, std::initializer_list<const wchar_t*> words) {
  return std::any_of(words.begin(), words.end(), [&](const wchar_t* word) { return text == word; });
}

tabulon::Error BadValue(const std::wstring& key, const std::wstring& value, const std::wstring& allowed) {
  std::wstring text = KrmLoadString(408, L"取值无效");
  return tabulon::MakeError(toUtf8(text + L": \"" + value + L"\"" + (allowed.empty() ? L"" : L" (" + allowed + L")")))
      .inField(toUtf8(key));
}

}  // namespace

const std::vector<KrmCellDescriptorEditor::Property>& KrmCellDescriptorEditor::Properties() {
  static const std::vector<Property> kProperties = {
      {L"code", kKrmXdataCode, 1},
      {L"type", kKrmXdataVType, 1},
      {L"decimals", kKrmXdataVType, 2},
      {L"align", kKrmXdataAlign, 1},
      {L"length", kKrmXdataTextLengthMode, 1},
      {L"orientation", kKrmXdataOrientation, 1},
      {L"editable", kKrmXdataEditable, 1},
      {L"control", kKrmXdataControlType, 1},
      {L"values", kKrmXdataControlValue, 1},
      {L"default", kKrmXdataDefaultValue, 1},
      {L"expression", kKrmXdataExpression, 1},
      {L"order", kKrmXdataOrder, 1},
  };
  return kProperties;
}

std::optional<std::wstring> KrmCellDescriptorEditor::Stored(const Property& property) const {
  QaDbObjectPointer<QaDbObject> object(definition_, QaDb::kForRead);
  if (!object) return std::nullopt;
  KR_QRXAppXdata xdata(property.appName, object->database());
  if (!xdata.getXdata(object.object())) return std::nullopt;
  std::wstring text;
  if (!xdata.getString(property.item, text, true)) return std::nullopt;
  return text;
}

std::wstring KrmCellDescriptorEditor::Value(const std::wstring& key) const {
  if (const auto pending = pending_.find(key); pending != pending_.end()) return pending->second.value_or(L"");
  const Property* property = Find(key);
  if (property == nullptr) return L"";
  return Stored(*property).value_or(L"");
}

Status KrmCellDescriptorEditor::Set(const std::wstring& key, const std::wstring& value) {
  if (Find(key) == nullptr) return BadValue(key, value, L"no such property");
  if (key == L"type" && !OneOf(value, {L"NumberInt", L"Number", L"NumberDouble", L"String"}))
    return BadValue(key, value, L"NumberInt, Number, NumberDouble, String");
  if ((key == L"decimals" || key == L"order") && !IsWholeNumber(value)) return BadValue(key, value, L"a whole number");
  if (key == L"decimals" && (value.size() > 2 || std::stoi(value) < 0 || std::stoi(value) > 15))
    return BadValue(key, value, L"0 to 15");
  if (key == L"align" && !OneOf(value, {L"LEFT", L"CENTER", L"RIGHT"})) return BadValue(key, value, L"LEFT, CENTER, RIGHT");
  if (key == L"length" && !OneOf(value, {L"kFit", L"kNewline", L"kNone"}))
    return BadValue(key, value, L"kFit, kNewline, kNone");
  if (key == L"control" && !OneOf(value, {L"CMB_DOWN", L"CMB_LIST_YESNO", L"CMB_LIST", L"NOCTRL", L"EDT_SPIN",
                                          L"EDT_NUM", L"EDT_REAL", L"PTI_DATE", L"CHK_CELLCHECK"}))
    return BadValue(key, value,
                    L"CMB_DOWN, CMB_LIST_YESNO, CMB_LIST, NOCTRL, EDT_SPIN, EDT_NUM, EDT_REAL, PTI_DATE, CHK_CELLCHECK");
  pending_[key] = value;
  return Status::Ok();
}

Status KrmCellDescriptorEditor::Clear(const std::wstring& key) {
  if (Find(key) == nullptr) return BadValue(key, L"", L"no such property");
  pending_[key] = std::nullopt;
  return Status::Ok();
}

Status KrmCellDescriptorEditor::Apply() {
  QaDbObjectPointer<QaDbObject> object(definition_, QaDb::kForWrite);
  if (!object) return tabulon::MakeError("the attribute definition does not open for writing");
  // Gather each application's items first, so that the value type and its decimals,
  // which share one application, are written together.
  std::map<std::wstring, KR_QRXAppXdata> apps;
  for (const auto& [key, value] : pending_) {
    const Property& property = *Find(key);
    auto at = apps.find(property.appName);
    if (at == apps.end()) {
      at = apps.emplace(property.appName, KR_QRXAppXdata(property.appName, object->database())).first;
      at->second.getXdata(object.object());
    }
    KR_QRXAppXdata& xdata = at->second;
    if (value) {
      // Item 1 must exist before item 2 for readers that go by position.
      if (property.item == 2 && !xdata.hasItem(1)) xdata.setString(1, L"");
      xdata.setString(property.item, *value);
      continue;
    }
    // Clearing: the whole application (a type's decimals go with it), or item 2 alone.
    KR_QRXAppXdata kept(property.appName, object->database());
    std::wstring first;
    if (property.item == 2 && xdata.getString(1, first, true)) kept.setString(1, first);
    xdata = kept;
  }
  for (auto& [appName, xdata] : apps) {
    const Qa::ErrorStatus status =
        xdata.itemCount() == 0 ? object->removeXData(appName) : xdata.setXdataPlain(object.object());
    if (status != Qa::eOk && xdata.itemCount() != 0)
      return tabulon::MakeError("the extended data could not be written").inField(toUtf8(appName));
  }
  pending_.clear();
  return Status::Ok();
}

tabulon::Result<QaDbObjectId> FindAttributeDefinition(QaDbDatabase& db, const std::wstring& blockName,
                                                      const std::wstring& tag) {
  QaDbBlockTable* table = nullptr;
  if (db.getBlockTable(table, QaDb::kForRead) != Qa::eOk)
    return tabulon::MakeError("the drawing has no block table");
  QaDbObjectId blockId;
  const Qa::ErrorStatus found = table->getAt(blockName, blockId);
  table->close();
  if (found != Qa::eOk) return tabulon::MakeError("there is no block of this name").inField(toUtf8(blockName));
  QaDbObjectPointer<QaDbBlockTableRecord> block(blockId, QaDb::kForRead);
  if (!block) return tabulon::MakeError("the block does not open").inField(toUtf8(blockName));
  for (QaDbObjectId id : block->entityIds()) {
    QaDbObjectPointer<QaDbAttributeDefinition> definition(id, QaDb::kForRead);
    if (definition && definition->tag() == tag) return id;
  }
  return tabulon::MakeError("the block has no attribute definition with this tag")
      .inField(toUtf8(blockName + L"." + tag));
}

#include "ui/dialogs/cell_descriptor_form.h"

#include "host/db/qadb.h"
#include "host/ed/qaed_result_codes.h"
#include "host/ed/qaed_selection.h"
#include "host/svc/utf8.h"
#include "host/rx/qa_lang_resource.h"

tabulon::Status CellDescriptorForm::PickBlock() {
  QaDbObjectId id;
  QaGePoint3d point;
  if (EntSelEx(KrmLoadString(412, L"\n请选择属性块:").c_str(), id, point) != RTNORM)
    return tabulon::MakeError("nothing was picked").inField("selection");
  return TakeBlock(id);
}

tabulon::Status CellDescriptorForm::TakeBlock(QaDbObjectId reference) {
  QaDbObjectPointer<QaDbBlockReference> ref(reference, QaDb::kForRead);
  if (!ref) return tabulon::MakeError("the entity picked is no block reference").inField("selection");
  QaDbObjectPointer<QaDbBlockTableRecord> block(ref->blockTableRecord(), QaDb::kForRead);
  if (!block) return tabulon::MakeError("the block of the reference does not open").inField("selection");
  std::vector<std::wstring> tags;
  for (QaDbObjectId id : block->entityIds()) {
    QaDbObjectPointer<QaDbAttributeDefinition> definition(id, QaDb::kForRead);
    if (definition) tags.push_back(definition->tag());
  }
  if (tags.empty())
    return tabulon::MakeError("the block has no attribute definition").inField(tabulon::svc::toUtf8(block->getName()));
  db_ = reference.database();
  blockName_ = block->getName();
  tags_ = std::move(tags);
  block.close();
  ref.close();
  return SelectTag(0);
}

tabulon::Status CellDescriptorForm::SelectTag(int index) {
  if (db_ == nullptr || index < 0 || index >= static_cast<int>(tags_.size()))
    return tabulon::MakeError("no such attribute").inField("tag");
  auto found = FindAttributeDefinition(*db_, blockName_, tags_[static_cast<std::size_t>(index)]);
  if (!found) return found.error();
  editor_.emplace(*found);
  current_ = index;
  return {};
}

std::vector<std::wstring> CellDescriptorForm::Keys() {
  std::vector<std::wstring> keys;
  for (const auto& property : KrmCellDescriptorEditor::Properties()) keys.emplace_back(property.key);
  return keys;
}

std::wstring CellDescriptorForm::Value(const std::wstring& key) const { return editor_ ? editor_->Value(key) : L""; }

tabulon::Status CellDescriptorForm::Set(const std::wstring& key, const std::wstring& value) {
  if (!editor_) return tabulon::MakeError("no attribute definition is chosen").inField(tabulon::svc::toUtf8(key));
  if (value == editor_->Value(key)) return {};
  return value.empty() ? editor_->Clear(key) : editor_->Set(key, value);
}

tabulon::Status CellDescriptorForm::Apply() {
  if (!editor_) return tabulon::MakeError("no attribute definition is chosen").inField("tag");
  return editor_->Apply();
}

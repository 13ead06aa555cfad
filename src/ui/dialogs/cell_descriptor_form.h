// The logic of the cell description dialog, free of any widget: a block reference
// picked in the drawing names the block, one of its attribute definitions is chosen
// by tag, and its cell description is read, changed and written through
// KrmCellDescriptorEditor. An emptied value removes the property. Refers to the
// drawing the block is in; owns the editor of the chosen definition.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "authoring/cell_descriptor_editor.h"
#include "host/db/qadb_object_id.h"
#include "host/svc/result.h"

class CellDescriptorForm {
 public:
  // Asks the user to pick a block reference in the working drawing.
  tabulon::Status PickBlock();
  // Takes the block of `reference`; the first tag is chosen. An entity that is no block
  // reference, or a block without attribute definitions, is refused and nothing changes.
  tabulon::Status TakeBlock(QaDbObjectId reference);

  const std::wstring& BlockName() const { return blockName_; }
  const std::vector<std::wstring>& Tags() const { return tags_; }
  int CurrentTag() const { return current_; }
  // Chooses the definition with tag `index`; pending changes of the former one go.
  tabulon::Status SelectTag(int index);
  bool HasDefinition() const { return editor_.has_value(); }

  // The property keys in the order the dialog lists them.
  static std::vector<std::wstring> Keys();
  // The value stored or pending; "" without a definition.
  std::wstring Value(const std::wstring& key) const;
  // Keeps a new value pending; an empty one removes the property. The error names the key.
  tabulon::Status Set(const std::wstring& key, const std::wstring& value);
  bool HasChanges() const { return editor_ && editor_->HasChanges(); }
  // Writes what is pending onto the definition.
  tabulon::Status Apply();

 private:
  QaDbDatabase* db_ = nullptr;
  std::wstring blockName_;
  std::vector<std::wstring> tags_;
  int current_ = -1;
  std::optional<KrmCellDescriptorEditor> editor_;
};

// Writing the description of a cell onto an attribute definition of a block: value
// type and decimals, alignment, text length mode, control type and values, default,
// expression, order, editable, orientation and code, each as the "KRM_XDATA_…"
// application that the cell reader takes. A form drawn in another CAD program is so
// prepared here. The model holds the pending changes until Apply; the definition
// belongs to its drawing.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/db/qadb_object_id.h"
#include "host/svc/result.h"

class QaDbDatabase;

class KrmCellDescriptorEditor {
 public:
  // One property: the key users type, and the application that stores it.
  struct Property {
    const wchar_t* key;
    const wchar_t* appName;
    int item;
  };
  // Keys: code, type, decimals, align, length, orientation, editable, control, values,
  // default, expression, order.
  static const std::vector<Property>& Properties();

  explicit KrmCellDescriptorEditor(QaDbObjectId definition) : definition_(definition) {}

  // The value stored on the definition, or pending when changed; "" when absent.
  std::wstring Value(const std::wstring& key) const;
  // Checks the value for the key (the words of type, align, length and control, whole
  // numbers for decimals and order) and keeps it pending. The error names the key.
  tabulon::Status Set(const std::wstring& key, const std::wstring& value);
  // Removes the property; for "decimals" only item 2 of the value type goes.
  tabulon::Status Clear(const std::wstring& key);
  bool HasChanges() const { return !pending_.empty(); }
  // Writes the pending changes; the definition is left as it was on an error.
  tabulon::Status Apply();

 private:
  std::optional<std::wstring> Stored(const Property& property) const;
  std::map<std::wstring, std::optional<std::wstring>> pending_;  // key to value, or none for cleared
  QaDbObjectId definition_;
};

// The attribute definition with tag `tag` in the block named `blockName` of `db`; the
// error names the block or tag that is missing.
tabulon::Result<QaDbObjectId> FindAttributeDefinition(QaDbDatabase& db, const std::wstring& blockName,
                                                      const std::wstring& tag);

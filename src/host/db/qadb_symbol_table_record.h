// Base of the named records of the symbol tables (layers, styles, blocks...). Owned by
// its table. Names compare without regard to ASCII case.
#pragma once

#include <string>

#include "host/db/qadb_object.h"

class QaDbSymbolTableRecord : public QaDbObject {
  QARX_DECLARE_MEMBERS(QaDbSymbolTableRecord)

 public:
  QaDbSymbolTableRecord() = default;
  explicit QaDbSymbolTableRecord(const std::wstring& name) : name_(name) {}

  Qa::ErrorStatus getName(std::wstring& name) const;
  const std::wstring& getName() const { return name_; }
  const std::wstring& name() const { return name_; }
  // eBadSymbolTableName for an empty name or one with characters < > / \ " : ; ? , = ` (or a
  // "*" after the first place); "|" of names from external references passes.
  // eDuplicateKey when another record of the same table has the name.
  Qa::ErrorStatus setName(const std::wstring& name);
  // Standard flags (group 70) beyond what subclasses model.
  int flags() const { return flags_; }
  Qa::ErrorStatus setFlags(int flags);
  bool isDependent() const { return (flags_ & 16) != 0; }

  static bool isValidName(const std::wstring& name);

 protected:
  QaDbSymbolTableRecord(const QaDbSymbolTableRecord&) = default;

 private:
  std::wstring name_;
  int flags_ = 0;
};

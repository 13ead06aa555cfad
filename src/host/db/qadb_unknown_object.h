// A non-graphical object of a kind the database does not model (layouts, xrecords,
// styles of tables...). The file codec keeps its tags in the dxfRecord.
#pragma once

#include <string>

#include "host/db/qadb_object.h"

class QaDbUnknownObject : public QaDbObject {
  QADB_DECLARE_MEMBERS(QaDbUnknownObject)

 public:
  QaDbUnknownObject() = default;
  explicit QaDbUnknownObject(std::wstring dxfType) : type_(std::move(dxfType)) {}

  std::wstring dxfType() const override { return type_; }
  void setDxfType(std::wstring type) { type_ = std::move(type); }

 private:
  std::wstring type_ = L"UNKNOWN";
};

// An entity of a kind the database does not model. It carries only the common
// properties; the file codec keeps its tags in the dxfRecord and writes them back.
// It has no extents and ignores transforms (eNotApplicable).
#pragma once

#include <string>

#include "host/db/qadb_entity.h"

class QaDbUnknownEntity : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbUnknownEntity)

 public:
  QaDbUnknownEntity() = default;
  explicit QaDbUnknownEntity(std::wstring dxfType) : type_(std::move(dxfType)) {}

  std::wstring dxfType() const override { return type_; }
  void setDxfType(std::wstring type) { type_ = std::move(type); }

  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;

 private:
  std::wstring type_ = L"UNKNOWN";
};

// An attribute of a block reference (ATTRIB): a text with a tag. Owned by its reference.
// A multi-line attribute carries an embedded multi-line text whose contents always
// equal textString().
#pragma once

#include "host/db/qadb_attribute_data.h"
#include "host/db/qadb_text.h"

class QaDbAttributeDefinition;

class QaDbAttribute : public QaDbText {
  QADB_DECLARE_MEMBERS(QaDbAttribute)

 public:
  QaDbAttribute();  // out of line: make_unique then does not clear the object first
  QaDbAttribute(const QaGePoint3d& position, const std::wstring& text, const std::wstring& tag,
                QaDbObjectId style = QaDbObjectId());

  std::wstring tag() const { return data_.tag; }
  const wchar_t* tagConst() const { return data_.tag.c_str(); }
  // Tags hold no spaces: eInvalidInput for an empty tag or one with a space.
  Qa::ErrorStatus setTag(std::wstring tag);

  int attributeFlags() const { return data_.flags; }
  Qa::ErrorStatus setAttributeFlags(int flags);
  bool isInvisible() const { return (data_.flags & QaDbAttributeData::kInvisible) != 0; }
  Qa::ErrorStatus setInvisible(bool on);
  bool isConstant() const { return (data_.flags & QaDbAttributeData::kConstant) != 0; }
  Qa::ErrorStatus setConstant(bool on);
  bool isVerifiable() const { return (data_.flags & QaDbAttributeData::kVerifiable) != 0; }
  Qa::ErrorStatus setVerifiable(bool on);
  bool isPreset() const { return (data_.flags & QaDbAttributeData::kPreset) != 0; }
  Qa::ErrorStatus setPreset(bool on);
  int fieldLength() const { return data_.fieldLength; }
  Qa::ErrorStatus setFieldLength(int length);
  bool lockPositionInBlock() const { return data_.lockPosition; }
  Qa::ErrorStatus setLockPositionInBlock(bool on);

  bool isMTextAttribute() const { return data_.mtext != nullptr; }
  const QaDbMText* getMTextAttribute() const { return data_.mtext.get(); }
  Qa::ErrorStatus setMTextAttribute(const QaDbMText& mtext);
  // Makes the attribute multi-line (an embedded text from its own values: contents,
  // anchor, height, rotation, style, attachment from the justification) or single-line
  // again (the embedded text is dropped, the text string stays).
  Qa::ErrorStatus convertIntoMTextAttribute(bool multiLine = true);
  // Brings the embedded text in line with the attribute's position, justification,
  // height, rotation, style and text; nothing for a single-line attribute.
  Qa::ErrorStatus updateMTextAttribute();

  // Sets tag, flags, field length, lock, justification, geometry, style, text and the
  // common properties from a definition, then applies `blockTransform`.
  Qa::ErrorStatus setAttributeFromBlock(const QaDbAttributeDefinition* def, const QaGeMatrix3d& blockTransform);

  Qa::ErrorStatus setTextString(std::wstring text) override;
  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;

  const QaDbAttributeData& attributeData() const { return data_; }

 private:
  QaDbAttributeData data_;
};

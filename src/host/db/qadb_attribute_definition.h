// An attribute definition of a block (ATTDEF): the template from which references get
// their attributes. A multi-line definition carries an embedded multi-line text.
#pragma once

#include "host/db/qadb_attribute_data.h"
#include "host/db/qadb_text.h"

class QaDbAttributeDefinition : public QaDbText {
  QADB_DECLARE_MEMBERS(QaDbAttributeDefinition)

 public:
  QaDbAttributeDefinition();  // out of line: make_unique then does not clear the object first
  QaDbAttributeDefinition(const QaGePoint3d& position, const std::wstring& text, const std::wstring& tag,
                          const std::wstring& prompt, QaDbObjectId style = QaDbObjectId());

  std::wstring tag() const { return data_.tag; }
  const wchar_t* tagConst() const { return data_.tag.c_str(); }
  // Tags hold no spaces: eInvalidInput for an empty tag or one with a space.
  Qa::ErrorStatus setTag(std::wstring tag);
  std::wstring prompt() const { return prompt_; }
  const wchar_t* promptConst() const { return prompt_.c_str(); }
  Qa::ErrorStatus setPrompt(const std::wstring& prompt);

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

  bool isMTextAttributeDefinition() const { return data_.mtext != nullptr; }
  // The embedded text, nullptr for a single-line definition.
  const QaDbMText* getMTextAttributeDefinition() const { return data_.mtext.get(); }
  // Copies `mtext` in as the embedded text (the definition becomes multi-line).
  Qa::ErrorStatus setMTextAttributeDefinition(const QaDbMText& mtext);
  // Makes the definition multi-line (an embedded text from its own values) or single-line
  // again (the embedded text is dropped; the text string stays).
  Qa::ErrorStatus convertIntoMTextAttributeDefinition(bool multiLine = true);
  Qa::ErrorStatus updateMTextAttributeDefinition();

  // Keeps the embedded text's contents equal to the text string.
  Qa::ErrorStatus setTextString(std::wstring text) override;
  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;

  const QaDbAttributeData& attributeData() const { return data_; }

 private:
  QaDbAttributeData data_;
  std::wstring prompt_;
};

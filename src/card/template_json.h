// The `.tbl` and `.crd` file formats: UTF-8 JSON objects that carry a "format"
// name ("tabulon-table", "tabulon-card") and a "version" (1). Everything a
// record holds is written, so what is written reads back unchanged.
// Readers take text and writers give text, so files stay out of the way.
#pragma once

#include <string>
#include <string_view>

#include "card/card_attributes.h"
#include "card/table_attributes.h"

inline constexpr const char* kKrmTableFormat = "tabulon-table";
inline constexpr const char* kKrmCardFormat = "tabulon-card";
inline constexpr int kKrmTemplateFormatVersion = 1;

// Serialise a record. Return false with a reason when a number cannot be
// written (not finite); `text` is then unchanged.
bool KrmTableToJson(const KrmTableAttributes& table, std::string& text, std::wstring& reason);
bool KrmCardToJson(const KrmCardAttributes& card, std::string& text, std::wstring& reason);

// Parse a record. Fields other than "format" and "version" may be absent and
// then keep their reset value; a field of the wrong type, a bad format name or
// version, or text that is not JSON fails with a reason that names the field
// (e.g. `singleBlocks[0].attributes[2].width`). On failure `out` is unchanged.
bool KrmTableFromJson(std::string_view text, KrmTableAttributes& out, std::wstring& reason);
bool KrmCardFromJson(std::string_view text, KrmCardAttributes& out, std::wstring& reason);

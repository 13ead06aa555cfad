// The `.tbl` and `.crd` file formats: UTF-8 JSON objects that carry a "format"
// name ("tabulon-table", "tabulon-card") and a "version" (1). Everything a
// record holds is written, so what is written reads back unchanged.
// Readers take text and writers give text, so files stay out of the way.
#pragma once

#include <string>
#include <string_view>

#include "card/card_attributes.h"
#include "card/table_attributes.h"
#include "host/svc/result.h"

inline constexpr const char* kKrmTableFormat = "tabulon-table";
inline constexpr const char* kKrmCardFormat = "tabulon-card";
inline constexpr int kKrmTemplateFormatVersion = 1;

// Serialise a record; an error naming the field when a number cannot be written (not
// finite).
tabulon::Result<std::string> KrmTableToJson(const KrmTableAttributes& table);
tabulon::Result<std::string> KrmCardToJson(const KrmCardAttributes& card);

// Parse a record. Fields other than "format" and "version" may be absent and
// then keep their reset value; a field of the wrong type, a bad format name or
// version fails with an error that names the field (e.g.
// `singleBlocks[0].attributes[2].width`), text that is not JSON with one that names the
// line. On failure `out` is unchanged.
tabulon::Status KrmTableFromJson(std::string_view text, KrmTableAttributes& out);
tabulon::Status KrmCardFromJson(std::string_view text, KrmCardAttributes& out);

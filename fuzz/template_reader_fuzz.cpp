// libFuzzer target of the `.tbl` and `.crd` readers: any bytes either read as a table
// (or a card), and then write and read back to the same record, or fail with a reason
// that says what is wrong; nothing else may happen (no crash, no exception, no leak,
// no undefined behaviour). The first byte chooses the reader, so one corpus serves
// both.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "card/card_attributes.h"
#include "card/table_attributes.h"
#include "card/template_json.h"

namespace {

template <class Record, class Read, class Write>
void Check(std::string_view text, Read read, Write write) {
  Record record;
  if (const auto status = read(text, record); !status.ok()) {
    if (status.error().message.empty()) std::abort();  // a refusal must say why
    return;
  }
  const auto written = write(record);
  if (!written.ok()) return;  // a number that cannot be written
  Record again;
  if (!read(*written, again).ok() || !(again == record)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  if (data[0] & 1)
    Check<KrmCardAttributes>(text, KrmCardFromJson, KrmCardToJson);
  else
    Check<KrmTableAttributes>(text, KrmTableFromJson, KrmTableToJson);
  return 0;
}

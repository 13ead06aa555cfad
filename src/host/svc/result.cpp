// Formatting of errors for people.
#include "host/svc/result.h"

namespace tabulon {

std::string Error::describe() const {
  std::string out;
  if (!file.empty()) {
    out += file;
    if (line > 0) out += ":" + std::to_string(line);
    out += ": ";
  } else if (line > 0) {
    out += "line " + std::to_string(line) + ": ";
  }
  if (!field.empty()) out += field + ": ";
  out += message;
  return out;
}

}  // namespace tabulon

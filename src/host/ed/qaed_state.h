// Internal: the state the host's input functions share between calls: the keywords of
// the next request, the text of the last keyword answer, and the selection sets handed
// out. Not part of the host's interface.
#pragma once

#include "host/db/qadb_object_id.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct QaEdState {
  int initFlags = 0;
  std::vector<std::wstring> keywords;
  std::wstring lastInput;
  std::map<std::uint64_t, std::vector<QaDbObjectId>> selectionSets;
  std::uint64_t nextSelectionSet = 1;
};

QaEdState& qaedState();

// The flags and keywords of qaedInitGet, which hold for one request only.
struct QaEdInitGet {
  int flags = 0;
  std::vector<std::wstring> keywords;
};
QaEdInitGet qaedTakeInitGet();

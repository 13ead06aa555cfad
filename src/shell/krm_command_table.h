// The plug-in's command table: the six commands of group KrmTabulon with their global
// and local names, flags and handlers, in registration order.
#pragma once

#include <string>
#include <vector>

inline constexpr wchar_t kKrmCommandGroup[] = L"KrmTabulon";

struct KrmCommandEntry {
  std::wstring group;
  std::wstring globalName;
  std::wstring localName;  // empty: loaded from localNameId
  unsigned localNameId = 0;
  int flags = 0;
  int (*handler)() = nullptr;
};

const std::vector<KrmCommandEntry>& KrmCommandTable();

// The longest local name the host takes from a string resource.
inline constexpr std::size_t kKrmMaxLocalName = 132;

// The local name of an entry: its text, or the text of its string id cut to 132
// characters when it has none.
std::wstring KrmLocalNameOf(const KrmCommandEntry& entry);

// Content for the sample cards: the machining process cards of two parts of the sample
// assembly (the output shaft, whose long operation texts run over three pages, and the
// gear), each as rows per block class, keyed by column show name.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace tabulon::samples {

using SampleRow = std::map<std::wstring, std::wstring>;

struct SampleCardContent {
  std::wstring card;                                      // template file (stem)
  std::wstring part;                                      // what the card is about
  std::vector<std::pair<std::wstring, std::vector<SampleRow>>> blocks;  // class -> rows
};

std::vector<SampleCardContent> SampleProcessCards();

}  // namespace tabulon::samples

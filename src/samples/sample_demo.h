// The guided tour of the product, without a window: the sample library, an assembly
// drawing whose bill of materials becomes a parts list card, and a batch of machining
// process cards with wrapped operation texts, all in one drawing. The command-line
// program's `demo` runs it and adds pictures.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "samples/sample_cards.h"

namespace tabulon::samples {

// Where the batch of process cards starts in the demo's drawing, below the assembly sheets.
inline constexpr double kProcessCardsX = 0.0;
inline constexpr double kProcessCardsY = -220.0;

struct DemoOptions {
  std::filesystem::path folder;  // holds library/, config/, assembly.dxf and demo.dxf afterwards
  // Told about each step as it starts (a line of text, no line end).
  std::function<void(const std::string&)> progress;
};

struct DemoCard {
  std::wstring name;      // card template
  std::wstring part;      // what it describes
  int rows = 0;           // records written
  int pages = 0;          // pages in the drawing
};

struct DemoResult {
  std::filesystem::path library;
  std::filesystem::path drawing;
  std::filesystem::path options;
  std::filesystem::path assembly;  // two assembly sheets alone, to try the BOM export on
  std::vector<DemoCard> cards;  // in the order made
  int batchPages = 0;           // pages of the process card batch
  int bomFrames = 0;            // frames whose bills of materials were read
  int bomRows = 0;              // rows the bills of materials delivered
  int entities = 0;             // entities of model space in the saved drawing
};

// Runs the tour. The process's configuration is pointed at `folder`: the card library
// override and TABULON_HOME (for options.ini) are set for the rest of the process.
// Throws std::runtime_error with a message naming what failed.
DemoResult RunSampleDemo(const DemoOptions& options);

// The rows of block class `block` of the card `card` in `library` as the editor leaves
// them: with the calculated columns worked out. Throws std::runtime_error when the card
// does not load.
std::vector<SampleRow> SampleRowsWithCalculatedColumns(const std::filesystem::path& library, const std::wstring& card,
                                                       const std::wstring& block, const std::vector<SampleRow>& rows);

}  // namespace tabulon::samples

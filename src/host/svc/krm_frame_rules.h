// How drawing frames, title blocks and bill-of-materials rows are recognised in a
// drawing: block names listed in options.ini section [KrmFrame], or extended data of
// the applications KRM_FRAME, KRM_TITLE and KRM_BOMROW on the block reference.
//
//   [KrmFrame]
//   FrameBlocks=A3;A4_FRAME        block names of frames, ';'-separated
//   TitleBlocks=TITLE              block names of title blocks
//   TitleMap=DWGNO=图号;NAME=名称   title fields that get a second key (from=to;...)
//   BomRowBlocks=BOMROW            block names of BOM rows
//   BomOrderKey=序号                the column that orders the rows (this is the default)
#pragma once

#include <string>
#include <utility>
#include <vector>

class QaDbBlockReference;

struct KrmFrameRules {
  std::vector<std::wstring> frameBlocks;
  std::vector<std::wstring> titleBlocks;
  std::vector<std::pair<std::wstring, std::wstring>> titleMap;
  std::vector<std::wstring> bomRowBlocks;
  std::wstring bomOrderKey = L"序号";

  // The rules of options.ini; the defaults above when the file or section is missing.
  // Throws tabulon::svc::IniError when options.ini cannot be parsed.
  static KrmFrameRules load();
  // The rules of an options text (for tests and tools).
  static KrmFrameRules parse(const std::string& optionsText);

  // Whether a block reference is a frame, title block or BOM row by these rules.
  bool isFrame(const QaDbBlockReference& ref) const;
  bool isTitleBlock(const QaDbBlockReference& ref) const;
  bool isBomRow(const QaDbBlockReference& ref) const;
};

inline constexpr wchar_t kKrmFrameApp[] = L"KRM_FRAME";
inline constexpr wchar_t kKrmTitleApp[] = L"KRM_TITLE";
inline constexpr wchar_t kKrmBomRowApp[] = L"KRM_BOMROW";

// The name of a reference's block; empty when the block does not open.
std::wstring KrmBlockNameOf(const QaDbBlockReference& ref);

// Splits "a;b; c" into trimmed, non-empty parts.
std::vector<std::wstring> KrmSplitList(const std::wstring& text);

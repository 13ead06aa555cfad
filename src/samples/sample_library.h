// The sample card library, made by code: a machining process card (机械加工工艺过程卡片)
// and a parts list card (零件明细表) that the bill-of-materials export fills, each a
// `.crd` naming a first-page and a continuation table (`.tbl`) with its side drawing
// (`.dxf`) beside it, all in one folder. Also the options that connect the parts list
// card to the frames of a drawing.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tabulon::samples {

// Card and table files (stems) of the library.
inline constexpr wchar_t kProcessCard[] = L"机械加工工艺过程卡片";
inline constexpr wchar_t kProcessFirstTable[] = L"工艺过程卡首页";
inline constexpr wchar_t kProcessNextTable[] = L"工艺过程卡续页";
inline constexpr wchar_t kPartsListCard[] = L"零件明细表";
inline constexpr wchar_t kPartsListFirstTable[] = L"明细表首页";
inline constexpr wchar_t kPartsListNextTable[] = L"明细表续页";

// Block classes. Names hold no "_": side drawings prefix them with "<table id>_".
inline constexpr wchar_t kHeadBlock[] = L"HEAD";          // part data of the process card
inline constexpr wchar_t kRowBlock[] = L"ROW";            // one operation per row
inline constexpr wchar_t kSignBlock[] = L"SIGN";          // sign-off band
inline constexpr wchar_t kPageNoBlock[] = L"PAGENO";      // page of the card, and its total
inline constexpr wchar_t kBatchNoBlock[] = L"BATCHNO";    // page within the batch
inline constexpr wchar_t kBatchSumBlock[] = L"BATCHSUM";  // pages of the batch
inline constexpr wchar_t kBomHeadBlock[] = L"BOMHEAD";    // title data of the parts list
inline constexpr wchar_t kBomLineBlock[] = L"BOMLINE";    // one part per row

// Attributes of the page numbers.
inline constexpr wchar_t kClassCurTag[] = L"页码";
inline constexpr wchar_t kClassSumTag[] = L"总页数";
inline constexpr wchar_t kBatchCurTag[] = L"批页码";
inline constexpr wchar_t kBatchSumTag[] = L"批总页数";

// Rows of the tables.
inline constexpr int kProcessFirstRows = 18;
inline constexpr int kProcessNextRows = 19;
inline constexpr int kPartsListFirstRows = 29;
inline constexpr int kPartsListNextRows = 30;

struct SampleLibrary {
  std::filesystem::path folder;
  std::vector<std::filesystem::path> files;  // every file written, in order
};

// Writes the library into `folder`, which is made when missing; files of the same names
// are replaced. Throws std::runtime_error naming the file that could not be written.
SampleLibrary WriteSampleLibrary(const std::filesystem::path& folder);

// The options.ini text that makes frames, title blocks and BOM rows of the sample
// assembly known ([KrmFrame]) and sends the bill of materials into the parts list card
// ([KrmcadTabulon_List]).
std::string SampleOptionsText();

}  // namespace tabulon::samples

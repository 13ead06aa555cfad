// The command KrmBomCardExp: the bill of materials of the drawing's frames becomes a
// card. Frames, title data and BOM rows come from the frame rules of the drawing; the
// option store (options.ini, section "KrmcadTabulon_List" and the sections numbered
// after it) names the card template and the blocks that take the title and the rows;
// the card is made by KrmCardEngine at a point the user gives.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/ge/qage_point3d.h"

class QaDbDatabase;

// One entry of the option store: the card template (.crd file name) and the names of
// the block that takes the title data and of the block that takes the rows.
struct KrmBomExportEntry {
  std::wstring card;
  std::wstring title;
  std::wstring list;
  bool operator==(const KrmBomExportEntry&) const = default;
};

inline constexpr wchar_t kKrmBomOptionSection[] = L"KrmcadTabulon_List";
inline constexpr wchar_t kKrmBomOptionCard[] = L"LISTEXP_DATA_CARD";
inline constexpr wchar_t kKrmBomOptionTitle[] = L"LISTEXP_DATA_TITLE";
inline constexpr wchar_t kKrmBomOptionList[] = L"LISTEXP_DATA_LIST";

using KrmBomRow = std::map<std::wstring, std::wstring>;

// Reads the entries: the base section, then "KrmcadTabulon_List1", "…2" and so on up
// to the first section that lacks any of the three keys. Keys missing from the base
// section are given as (section, key) in `missing`, and then no entry is read.
void KrmReadBomExportEntries(std::vector<KrmBomExportEntry>& entries,
                             std::vector<std::pair<std::wstring, std::wstring>>& missing);

// The BOM dictionary names of the frames to export, in frame order: all frames of the
// drawing, or, with two or more, the frames the user selects (selecting nothing keeps
// them all). False when the command ends here: the selection was cancelled, it held no
// frame ("\n没有选择到图框！"), or the drawing has no frame at all (the suite's
// "not initialised" message).
bool KrmCollectBomFrames(QaDbDatabase* db, std::vector<std::wstring>& names);

// The title data of the first frame, each mapped field also under its second name, and
// the BOM rows of all frames in frame order (a pair of empty key and empty value is
// dropped). Each read of the drawing runs under the document lock.
void KrmCollectBomData(const std::vector<std::wstring>& names, QaDbDatabase* db, KrmBomRow& title,
                       std::vector<KrmBomRow>& rows);

// Asks for the insertion point; with several entries the prompt offers them as
// keywords " 1", " 2", ... with the current choice in angle brackets, and a keyword
// changes the choice and asks again. Enter gives the origin. `chosen` is the index of
// the entry. False when the user cancelled.
bool KrmChooseBomEntry(const std::vector<KrmBomExportEntry>& entries, int& chosen, QaGePoint3d& point);

// The entry chosen last since the plug-in was loaded (0 at first).
int& KrmBomLastEntry();

// The prompt of the point request for several entries, with `current` marked.
std::wstring KrmBomEntryPrompt(const std::vector<KrmBomExportEntry>& entries, int current);

// The command after its framing (the card root resolved): collects, asks and creates.
// Returns 1 when a card was created, else 0.
int KrmBomCardExpRun();

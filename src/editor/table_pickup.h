// Text taken in from the drawing: texts picked by the user, grouped into rows by their
// height in the drawing and ordered left to right, for the rows of a table or the open
// cell. The user is asked through the host's input channel; the drawing is read, never
// changed.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/db/qadb_object_id.h"

// One text of the drawing with the point it stands at and its height.
struct KrmPickedText {
  std::wstring text;
  double x = 0.0;
  double y = 0.0;
  double height = 0.0;
};

// Rows of texts, the top row first: a text joins a row when its y lies within half the
// larger of the two heights of the row's first text's y; each row ordered by x.
std::vector<std::vector<std::wstring>> GroupTextsIntoRows(std::vector<KrmPickedText> texts);

// The texts (single-line and multi-line) among `ids`, others skipped.
std::vector<KrmPickedText> TextsOfEntities(const std::vector<QaDbObjectId>& ids);

// The user selects the texts of a table: row i's texts go to names[0], names[1], ...
// in order into maps[i]. 1 on success, 0 when nothing was selected or it was cancelled.
int MakeMapDataFromTabPickup(const std::vector<std::wstring>& names, std::vector<std::map<std::wstring, std::wstring>>& maps);
// The same for one row: its texts under the names.
int MakeMapDataFromTabPickup(const std::vector<std::wstring>& names, std::map<std::wstring, std::wstring>& map);
// The user picks one text of the drawing; true with its text.
bool MakeSingleDataFromPickText(std::wstring& text);

class QaDbDatabase;

// The drawing's own data for the columns `names`: the attributes of the title block of
// the drawing's first frame, taken by tag and by the title map's pairs. `type` is kept
// for the callers' sake (the editor passes 2). 1 when any column got a text.
int KrmGetDwgDataFromFile(std::map<std::wstring, std::wstring>& map, const std::vector<std::wstring>& names, int type,
                          QaDbDatabase* db);

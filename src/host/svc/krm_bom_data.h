// The bill of materials and the title data of a drawing frame, read from the drawing:
// the attributes (tag to text) of the title block and of the BOM row blocks that stand
// inside the frame (by their insertion point), by the rules of krm_frame_rules.h.
// The frame is named by its BOM dictionary name, KrmFrame::getDicName().
#pragma once

#include <map>
#include <string>
#include <vector>

class QaDbDatabase;

using KrmStringMap = std::map<std::wstring, std::wstring>;

// Fills `title` with the attributes of the first title block inside the frame, and
// `a`, `b` with the field pairs of the rules' TitleMap (from, to). Non-zero on success;
// 0 when the frame or a title block in it is not found (`title` then stays empty).
int GetMultiTitle(KrmStringMap& title, std::vector<std::wstring>& a, std::vector<std::wstring>& b,
                  const std::wstring& dicName, QaDbDatabase* db);

// Fills `rows` with one map per BOM row block inside the frame, ordered by the number in
// the rules' BomOrderKey column, rows without a number after those with one, ties and
// the rows without a number by position (lower first, then left first). `filter`, when
// not empty, keeps only the rows whose block has that name. When given, `columns`
// receives the tags in order of first appearance and `rowHandles` the handle of each
// row's block reference. Non-zero when the frame exists (also with no rows).
int GetMultiBomData(std::vector<std::wstring>* columns, std::vector<std::wstring>* rowHandles,
                    std::vector<KrmStringMap>& rows, const std::wstring& dicName, const std::wstring& filter,
                    QaDbDatabase* db);

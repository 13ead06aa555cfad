// Turning picked entities into attribute block classes (one KrmDataAttTR per class,
// with its cells read from the attribute definitions), and the conversions between
// those working records and the records of a table template.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "authoring/data_att_tr.h"
#include "card/block_set.h"
#include "card/table_attributes.h"
#include "host/db/qadb_object_id.h"

class QaDbEntity;

// False when `selection` is empty (then `out` stays as it was); else `out` is emptied
// and refilled with the classes of the block references among `selection`, in the
// order of their first reference. Ids that do not open, other entities and blocks
// without attribute definitions make no class.
bool CollectBlockClasses(const std::vector<QaDbObjectId>& selection, std::vector<KrmDataAttTR>& out);

// Fills `record.atts` from the attribute definitions among the exploded entities of one
// reference (the first definition of a tag wins), sorted by their order. The entities
// are consumed.
void ReadCellsOfBlock(std::vector<std::unique_ptr<QaDbEntity>> exploded, KrmDataAttTR& record);

// True when the block definition `block` belongs to a class of `classes`: the first
// whose name matches counts one more reference and takes the shorter name.
bool AddBlockClassHit(QaDbObjectId block, std::vector<KrmDataAttTR>& classes);

// Stable sort by the order (show type) read as a decimal integer, non-numbers as 0.
void SortCellsByOrder(std::vector<KrmAttSet>& atts);

std::vector<KrmBlockSet> ToBlockSets(const std::vector<KrmDataAttTR>& records);
std::vector<KrmDataAttTR> FromBlockSets(const std::vector<KrmBlockSet>& sets);

// Block name to {fillOrder, refCount} as decimal texts.
KrmTextListMap BuildFillMap(const std::vector<KrmDataAttTR>& records);
// Sets fillOrder and refCount of every record whose name has an entry of two texts.
void ApplyFillMap(std::vector<KrmDataAttTR>& records, const KrmTextListMap& map);

// The five page attribute keys in the order in which they are always handled.
inline constexpr std::array<const wchar_t*, 5> kKrmPageAttKeys = {kKrmClassCur, kKrmClassSum, kKrmBatchCur,
                                                                 kKrmBatchSum, kKrmAutoNum};

// Page attribute key to {block name, attribute name}, from the five lines of the table
// dialog in key order. A line that does not split into exactly two parts at "," leaves
// its key unbound, and the map then holds an entry with an empty key and no texts.
// `blockLabel` and `attLabel` are the leading words cut from the parts.
KrmTextListMap BuildPageAttMap(const std::array<std::wstring, 5>& lines, const std::wstring& blockLabel,
                               const std::wstring& attLabel);

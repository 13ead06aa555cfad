#include "authoring/block_scanning.h"

#include <cwchar>
#include <utility>

#include "card/card_template.h"
#include "drawing/block_names.h"
#include "drawing/cell_descriptor.h"
#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_open.h"

namespace {

int OrderOf(const KrmAttSet& att) {
  return static_cast<int>(std::wcstol(att.GetShowType().c_str(), nullptr, 10));
}

std::wstring CutLeading(const std::wstring& text, const std::wstring& word) {
  if (!word.empty() && text.compare(0, word.size(), word) == 0) return text.substr(word.size());
  return text;
}

}  // namespace

bool CollectBlockClasses(const std::vector<QaDbObjectId>& selection, std::vector<KrmDataAttTR>& out) {
  if (selection.empty()) return false;
  out.clear();
  for (QaDbObjectId id : selection) {
    QaDbObjectPointer<QaDbBlockReference> reference(id, QaDb::kForRead);
    if (!reference) continue;
    const QaDbObjectId block = reference->blockTableRecord();
    if (AddBlockClassHit(block, out)) continue;
    std::vector<std::unique_ptr<QaDbEntity>> exploded;
    if (reference->explode(exploded) != Qa::eOk) continue;
    KrmDataAttTR record;
    record.blockId = block;
    record.blockName = GetBlockName(block);
    ReadCellsOfBlock(std::move(exploded), record);
    if (record.atts.empty()) continue;
    record.refCount = 1;
    out.push_back(std::move(record));
  }
  return true;
}

void ReadCellsOfBlock(std::vector<std::unique_ptr<QaDbEntity>> exploded, KrmDataAttTR& record) {
  std::vector<KrmAttSet> atts;
  for (auto& entity : exploded) {
    const auto* definition = QaDbAttributeDefinition::cast(entity.get());
    if (definition == nullptr) continue;
    const std::wstring tag = definition->tag();
    bool seen = false;
    for (const KrmAttSet& att : atts) seen = seen || att.GetShowName() == tag;
    if (seen) continue;
    KrmAttSet att;
    ReadCellDefinition(*definition, att);
    att.SetWidth(definition->position().distanceTo(definition->alignmentPoint()));
    att.SetHeight(definition->height());
    atts.push_back(std::move(att));
  }
  SortCellsByOrder(atts);
  record.atts = std::move(atts);
}

bool AddBlockClassHit(QaDbObjectId block, std::vector<KrmDataAttTR>& classes) {
  const std::wstring name = GetBlockName(block);
  for (KrmDataAttTR& record : classes) {
    if (!BlockNamesMatch(record.blockName, name)) continue;
    if (name.size() < record.blockName.size()) record.blockName = name;
    ++record.refCount;
    return true;
  }
  return false;
}

void SortCellsByOrder(std::vector<KrmAttSet>& atts) {
  // An exchange sort that swaps only strictly greater neighbours keeps equal orders
  // in the order of the definition.
  for (std::size_t pass = 0; pass + 1 < atts.size(); ++pass) {
    bool swapped = false;
    for (std::size_t i = 0; i + 1 < atts.size() - pass; ++i) {
      if (OrderOf(atts[i]) > OrderOf(atts[i + 1])) {
        std::swap(atts[i], atts[i + 1]);
        swapped = true;
      }
    }
    if (!swapped) break;
  }
}

std::vector<KrmBlockSet> ToBlockSets(const std::vector<KrmDataAttTR>& records) {
  std::vector<KrmBlockSet> sets;
  sets.reserve(records.size());
  for (const auto& record : records) sets.emplace_back(record.blockName, record.atts);
  return sets;
}

std::vector<KrmDataAttTR> FromBlockSets(const std::vector<KrmBlockSet>& sets) {
  std::vector<KrmDataAttTR> records;
  records.reserve(sets.size());
  for (const auto& set : sets) {
    KrmDataAttTR record;
    record.blockName = set.GetBlockName();
    set.GetAtt(record.atts);
    records.push_back(std::move(record));
  }
  return records;
}

KrmTextListMap BuildFillMap(const std::vector<KrmDataAttTR>& records) {
  KrmTextListMap map;
  for (const auto& record : records)
    map[record.blockName] = {std::to_wstring(record.fillOrder), std::to_wstring(record.refCount)};
  return map;
}

void ApplyFillMap(std::vector<KrmDataAttTR>& records, const KrmTextListMap& map) {
  for (auto& record : records) {
    const auto entry = map.find(record.blockName);
    if (entry == map.end() || entry->second.size() != 2) continue;
    record.fillOrder = static_cast<int>(std::wcstol(entry->second[0].c_str(), nullptr, 10));
    record.refCount = static_cast<int>(std::wcstol(entry->second[1].c_str(), nullptr, 10));
  }
}

KrmTextListMap BuildPageAttMap(const std::array<std::wstring, 5>& lines, const std::wstring& blockLabel,
                               const std::wstring& attLabel) {
  KrmTextListMap map;
  for (std::size_t k = 0; k < kKrmPageAttKeys.size(); ++k) {
    std::vector<std::wstring> parts;
    std::size_t start = 0;
    for (;;) {
      const std::size_t comma = lines[k].find(L',', start);
      std::wstring part = lines[k].substr(start, comma == std::wstring::npos ? std::wstring::npos : comma - start);
      part = CutLeading(CutLeading(part, blockLabel), attLabel);
      parts.push_back(std::move(part));
      if (comma == std::wstring::npos) break;
      start = comma + 1;
    }
    if (parts.size() == 2) map[kKrmPageAttKeys[k]] = parts;
    else map[L""] = {};
  }
  return map;
}

#include "host/svc/krm_bom_data.h"

#include "host/db/qadb_attribute.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_open.h"
#include "host/svc/krm_frame.h"
#include "host/svc/utf8.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace {

struct Candidate {
  QaDbObjectId id;
  QaGePoint3d position;
  std::wstring blockName;
  KrmStringMap attributes;
  std::vector<std::wstring> tagOrder;
};

std::optional<KrmFrame> frameByName(const std::wstring& dicName, QaDbDatabase* db, const KrmFrameRules& rules) {
  if (!db) return std::nullopt;
  const auto handle = QaDbHandle::fromHex(dicName);
  if (!handle) return std::nullopt;
  KrmFrame frame;
  if (KrmFrame::open(db->objectIdFromHandle(*handle), rules, frame) != Qa::eOk) return std::nullopt;
  return frame;
}

// Block references of model space inside the frame that `accept` takes, in drawing order.
template <class Accept>
std::vector<Candidate> blocksInside(const KrmFrame& frame, QaDbDatabase* db, Accept accept) {
  std::vector<Candidate> out;
  QaDbObjectPointer<QaDbBlockTableRecord> space(db->modelSpaceId(), QaDb::kForRead);
  if (!space) return out;
  for (auto id : space->liveEntityIds()) {
    if (id == frame.objectId()) continue;
    QaDbObjectPointer<QaDbBlockReference> ref(id, QaDb::kForRead);
    if (!ref || !accept(*ref) || !frame.contains(ref->position())) continue;
    Candidate c{id, ref->position(), KrmBlockNameOf(*ref), {}, {}};
    auto it = ref->attributeIterator();
    for (it->start(); !it->done(); it->step()) {
      const auto* att = QaDbAttribute::cast(it->entity());
      if (!att) continue;
      if (!c.attributes.count(att->tag())) c.tagOrder.push_back(att->tag());
      c.attributes[att->tag()] = att->textString();
    }
    out.push_back(std::move(c));
  }
  return out;
}

std::optional<double> numberIn(const KrmStringMap& row, const std::wstring& key) {
  auto it = row.find(key);
  if (it == row.end()) return std::nullopt;
  auto text = tabulon::svc::toUtf8(it->second);
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string::npos) return std::nullopt;
  text = text.substr(first, text.find_last_not_of(" \t") - first + 1);
  double value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace

int GetMultiTitle(KrmStringMap& title, std::vector<std::wstring>& a, std::vector<std::wstring>& b,
                  const std::wstring& dicName, QaDbDatabase* db) {
  title.clear();
  a.clear();
  b.clear();
  const auto rules = KrmFrameRules::load();
  const auto frame = frameByName(dicName, db, rules);
  if (!frame) return 0;
  auto blocks = blocksInside(*frame, db, [&](const QaDbBlockReference& ref) { return rules.isTitleBlock(ref); });
  if (blocks.empty()) return 0;
  title = std::move(blocks.front().attributes);
  for (const auto& [from, to] : rules.titleMap) {
    a.push_back(from);
    b.push_back(to);
  }
  return 1;
}

int GetMultiBomData(std::vector<std::wstring>* columns, std::vector<std::wstring>* rowHandles,
                    std::vector<KrmStringMap>& rows, const std::wstring& dicName, const std::wstring& filter,
                    QaDbDatabase* db) {
  rows.clear();
  const auto rules = KrmFrameRules::load();
  const auto frame = frameByName(dicName, db, rules);
  if (!frame) return 0;
  auto blocks = blocksInside(*frame, db, [&](const QaDbBlockReference& ref) {
    return rules.isBomRow(ref) && (filter.empty() || KrmBlockNameOf(ref) == filter);
  });
  std::stable_sort(blocks.begin(), blocks.end(), [&](const Candidate& x, const Candidate& y) {
    const auto nx = numberIn(x.attributes, rules.bomOrderKey);
    const auto ny = numberIn(y.attributes, rules.bomOrderKey);
    if (nx.has_value() != ny.has_value()) return nx.has_value();
    if (nx && *nx != *ny) return *nx < *ny;
    if (x.position.y != y.position.y) return x.position.y < y.position.y;
    return x.position.x < y.position.x;
  });
  if (columns) columns->clear();
  if (rowHandles) rowHandles->clear();
  for (auto& block : blocks) {
    if (columns)
      for (const auto& tag : block.tagOrder)
        if (std::find(columns->begin(), columns->end(), tag) == columns->end()) columns->push_back(tag);
    if (rowHandles) rowHandles->push_back(block.id.handle().text());
    rows.push_back(std::move(block.attributes));
  }
  return 1;
}

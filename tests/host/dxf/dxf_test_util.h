// Helpers of the codec tests: load and save in memory, and a summary of a
// drawing (objects by type and handle, texts, extended data) to compare two.
#pragma once

#include "host/db/qadb.h"
#include "host/dxf/dxf_loader.h"
#include "host/dxf/dxf_sink.h"
#include "host/dxf/dxf_writer.h"

#include <map>
#include <memory>
#include <string>

namespace tabulon::dxf::test {

inline std::unique_ptr<QaDbDatabase> loadText(const std::string& text, DxfLoadInfo* info = nullptr,
                                              const std::string& name = "mem.dxf") {
  auto db = std::make_unique<QaDbDatabase>(false);
  dxfLoad(text, name, *db, info);
  return db;
}

inline std::unique_ptr<QaDbDatabase> loadPath(const std::string& path, DxfLoadInfo* info = nullptr) {
  auto db = std::make_unique<QaDbDatabase>(false);
  dxfLoadFile(path, *db, info);
  return db;
}

inline std::string saveText(const QaDbDatabase& db, const DxfWriteOptions& options = {}) {
  std::string out;
  DxfStringSink sink(out);
  dxfWrite(db, sink, options);
  return out;
}

inline std::string asciiOf(const std::wstring& w) {
  std::string s;
  for (wchar_t c : w) s += c < 128 ? static_cast<char>(c) : '?';
  return s;
}

// The text of a TEXT, MTEXT, ATTRIB or ATTDEF; empty for other objects.
inline std::wstring textOf(const QaDbObject* o) {
  if (auto* m = QaDbMText::cast(o)) return m->contents();
  if (auto* t = QaDbText::cast(o)) return t->textString();
  return {};
}

struct DrawingSummary {
  std::map<std::string, int> typeCounts;         // "LINE" -> count
  std::map<std::uint64_t, std::string> handles;  // handle -> type
  std::map<std::uint64_t, std::wstring> texts;   // handle -> text
  std::map<std::uint64_t, QaDbXData> xdata;      // handle -> extended data (non-empty only)
  std::map<std::wstring, int> entitiesPerBlock;  // block name -> live entities
};

inline DrawingSummary summarize(const QaDbDatabase& db) {
  DrawingSummary s;
  for (QaDbObjectId id : db.objectIds()) {
    QaDbObject* o = id.rawObject();
    if (!o) continue;
    std::string type = asciiOf(o->dxfType());
    s.typeCounts[type]++;
    s.handles[o->handle().value()] = type;
    if (QaDbText::cast(o) || QaDbMText::cast(o)) s.texts[o->handle().value()] = textOf(o);
    if (!o->allXData().empty()) s.xdata[o->handle().value()] = o->allXData();
    if (auto* btr = QaDbBlockTableRecord::cast(o))
      s.entitiesPerBlock[btr->name()] = static_cast<int>(btr->liveEntityIds().size());
  }
  return s;
}

// The first text (of TEXT, MTEXT, ATTRIB, ATTDEF) that contains `part`; empty when none.
inline std::wstring findText(const QaDbDatabase& db, const std::wstring& part) {
  for (QaDbObjectId id : db.objectIds()) {
    std::wstring t = textOf(id.rawObject());
    if (!t.empty() && t.find(part) != std::wstring::npos) return t;
  }
  return {};
}

}  // namespace tabulon::dxf::test

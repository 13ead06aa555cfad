#include "host/dxf/dxf_loader.h"

#include "host/db/qadb.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/dxf/dxf_encoding_choice.h"
#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_loader_state.h"
#include "host/dxf/dxf_object_reader.h"
#include "host/dxf/dxf_table_reader.h"
#include "host/dxf/dxf_tag_writer.h"
#include "host/dxf/dxf_xdata.h"

#include <cwctype>
#include <fstream>
#include <iostream>
#include <iterator>

namespace tabulon::dxf {

std::wstring dxfUpperName(const std::wstring& name) {
  std::wstring out = name;
  for (wchar_t& c : out)
    if (c < 128) c = static_cast<wchar_t>(std::towupper(c));
  return out;
}

DxfLoaderState::DxfLoaderState(std::shared_ptr<DxfSource> source)
    : source_(std::move(source)), ctx_(*source_, info_.audit), doc_(std::make_unique<DxfDocumentRecord>()) {}

// ---------------------------------------------------------------- sections

void DxfLoaderState::parse() {
  // Every object read comes from the arena: one carve each instead of an allocation.
  QaDbObjectArena::Use use(*arena_);
  // Objects average about a hundred bytes of text or more; reserving for that many
  // spares the copying of a growing list on large drawings.
  pending_.reserve(source_->bytes().size() / 96 + 16);
  DxfSectionReader sections(*source_, info_.audit);
  while (sections.nextSection()) {
    const std::string name = sections.sectionName();
    if (name == "HEADER") {
      std::vector<DxfTag> tags = sections.readRemainingTags();
      if (sawHeader_) {
        info_.audit.add(sections.sectionLine(), "a second HEADER section was ignored");
      } else {
        readHeader(tags);
      }
    } else {
      if (!encodingChosen_) chooseEncoding(std::nullopt, std::nullopt);
      if (name == "CLASSES") {
        std::vector<DxfTag> tags = sections.readRemainingTags();
        auto converted = toUtf8(tags);
        doc_->classes.insert(doc_->classes.end(), converted.begin(), converted.end());
        doc_->hasClassesSection = true;
      } else if (name == "TABLES") {
        readTables(sections);
      } else if (name == "BLOCKS") {
        readBlocks(sections);
      } else if (name == "ENTITIES") {
        readEntities(sections);
      } else if (name == "OBJECTS") {
        readObjects(sections);
      } else {
        DxfRawSection raw;
        raw.name = name;
        raw.after = previousSection_;
        raw.tags = toUtf8(sections.readRemainingTags());
        doc_->rawSections.push_back(std::move(raw));
      }
    }
    if (!sections.sectionComments().empty()) {
      auto& kept = doc_->sectionComments[name];
      for (const DxfTag& c : sections.sectionComments()) kept.push_back(toUtf8({c}).front().value);
    }
    previousSection_ = name;
  }
  if (!encodingChosen_) chooseEncoding(std::nullopt, std::nullopt);
  if (ownerless_)
    info_.audit.add(firstOwnerless_, std::to_string(ownerless_) + (ownerless_ == 1 ? " object" : " objects") +
                                         " without an owner (group code 330); owners set from where they stand");
  if (misplaced_)
    info_.audit.add(firstMisplaced_, std::to_string(misplaced_) + (misplaced_ == 1 ? " entity" : " entities") +
                                         " of the ENTITIES section named an owner other than model or paper space"
                                         " (the first " + dxfFormatHandle(misplacedOwner_) +
                                         "); put in the layout that group code 67 names");
  for (const DxfTag& c : sections.leadingComments()) doc_->leadingComments.push_back(toUtf8({c}).front().value);
  modelSpace();
  paperSpace();
}

std::vector<DxfHeaderTag> DxfLoaderState::toUtf8(const std::vector<DxfTag>& tags) const {
  static const DxfTextCodec utf8("UTF-8");
  std::vector<DxfHeaderTag> out;
  out.reserve(tags.size());
  for (const DxfTag& t : tags) {
    if (dxfIsTextCode(t.code)) out.push_back({t.code, utf8.transcode(t.value, ctx_.codec())});
    else out.push_back({t.code, std::string(t.value)});
  }
  return out;
}

void DxfLoaderState::chooseEncoding(std::optional<std::string_view> acadver,
                                    std::optional<std::string_view> codePage) {
  std::optional<DxfVersion> version = acadver ? dxfVersionFromCode(*acadver) : std::nullopt;
  if (!version) {
    // Without $ACADVER: subclass markers tell a file of R13 or later.
    bool markers = source_->bytes().find("AcDbEntity") != std::string_view::npos;
    version = markers ? DxfVersion::R2000 : DxfVersion::R12;
    if (acadver)
      info_.audit.add(0, "unknown $ACADVER \"" + std::string(*acadver) + "\"; read as " + dxfVersionName(*version));
    else if (sawHeader_ || markers)
      info_.audit.add(0, "no $ACADVER; read as " + dxfVersionName(*version));
  }
  source_->setVersion(*version);
  DxfEncodingChoice choice = dxfChooseEncoding(*version, codePage, source_->bytes());
  source_->setCodec(std::make_unique<DxfTextCodec>(choice.codePage));
  info_.version = *version;
  info_.encoding = choice.codePage;
  info_.encodingReason = choice.reason;
  encodingChosen_ = true;
}

void DxfLoaderState::readHeader(const std::vector<DxfTag>& tags) {
  sawHeader_ = true;
  std::optional<std::string_view> acadver, codePage;
  for (std::size_t i = 0; i + 1 < tags.size(); ++i) {
    if (tags[i].code != 9) continue;
    std::string_view name = dxfTrim(tags[i].value);
    if (name == "$ACADVER") acadver = dxfTrim(tags[i + 1].value);
    else if (name == "$DWGCODEPAGE") codePage = dxfTrim(tags[i + 1].value);
    else if (name == "$HANDSEED") headerSeed_ = dxfParseHandle(tags[i + 1].value).value_or(0);
  }
  if (!encodingChosen_) chooseEncoding(acadver, codePage);
  std::vector<DxfHeaderTag> utf8 = toUtf8(tags);
  auto& vars = doc_->header.variables();
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    if (utf8[i].code == 9) {
      vars.push_back(DxfHeaderVariable{std::string(dxfTrim(utf8[i].value)), {}});
    } else if (!vars.empty()) {
      vars.back().tags.push_back(std::move(utf8[i]));
    } else if (utf8[i].code == 999) {
      doc_->leadingComments.push_back(utf8[i].value);
    } else {
      ctx_.fail(tags[i], "HEADER value before any variable name (group code 9)");
    }
  }
}

// ---------------------------------------------------------------- pending objects

int DxfLoaderState::internName(std::string_view raw) {
  raw = dxfTrim(raw);
  if (raw.empty()) return -1;
  // Runs of entities name the same style or block: the last answer is kept.
  if (lastNameIndex_ >= 0 && raw == lastName_) return lastNameIndex_;
  lastName_ = raw;
  lastNameIndex_ = internNameSlow(raw);
  return lastNameIndex_;
}

int DxfLoaderState::internNameSlow(std::string_view raw) {
  auto it = nameIndex_.find(raw);
  if (it != nameIndex_.end()) return it->second;
  int index = static_cast<int>(names_.size());
  names_.push_back(ctx_.codec().decode(raw));
  nameIndex_.emplace(raw, index);
  return index;
}

void DxfLoaderState::noteOwnerless(std::size_t line) {
  if (ownerless_++ == 0) firstOwnerless_ = line;
}

void DxfLoaderState::noteHandle(std::span<const DxfTag> tags) {
  for (std::size_t i = 1; i < tags.size() && i < 4; ++i) {
    if (tags[i].code == 5 || tags[i].code == 105) {
      if (auto h = dxfParseHandle(tags[i].value)) maxHandle_ = std::max(maxHandle_, *h);
      return;
    }
  }
}

int DxfLoaderState::addPending(std::unique_ptr<QaDbObject> object, const DxfRawObject& raw,
                               const DxfObjectFrame& frame, DxfRole role, int parent, DxfPendingRefs* refs) {
  DxfPending p;
  p.handle = frame.handle;
  p.owner = frame.owner;
  p.parent = parent;
  p.line = raw.line;
  p.role = role;
  maxHandle_ = std::max(maxHandle_, frame.handle);
  if (frame.hasXData(raw.tags.size())) {
    object->setAllXData(dxfReadXData(ctx_, raw.tags, frame.xdataBegin));
    for (const auto& app : object->allXData()) xdataApps_.insert(app.appName);
  }
  // Noted while the object is at hand, so that checking them later needs no pass
  // over every object.
  if (role == DxfRole::Entity || role == DxfRole::Attribute)
    if (const auto* e = QaDbEntity::cast(object.get())) {
      QaDbSharedName layer = e->sharedLayer();
      if (layer.key() != lastLayerKey_ && layersSeen_.insert(layer.key()).second) layersUsed_.push_back(layer);
      lastLayerKey_ = layer.key();
    }
  bool needRefs = refs != nullptr || !frame.reactors.empty() || frame.xdictionary != 0;
  if (needRefs) {
    DxfPendingRefs r = refs ? std::move(*refs) : DxfPendingRefs{};
    r.reactors = frame.reactors;
    r.xdictionary = frame.xdictionary;
    p.refs = static_cast<int>(refs_.size());
    refs_.push_back(std::move(r));
  }
  p.object = std::move(object);
  pending_.push_back(std::move(p));
  return static_cast<int>(pending_.size() - 1);
}

void DxfLoaderState::noteNameKind(DxfPending& p) {
  if (p.name < 0) return;
  const QaDbObject* o = p.object.get();
  p.namesStyle = QaDbMText::cast(o) || QaDbText::cast(o);
  p.namesBlock = QaDbBlockReference::cast(o) != nullptr;
}

void DxfLoaderState::matchNamesToRecords(std::vector<int>& styles, std::vector<int>& blocks) const {
  styles.assign(names_.size(), -1);
  blocks.assign(names_.size(), -1);
  std::unordered_map<std::wstring, int> styleByName;
  for (int i : styleRecords_)
    if (const auto* rec = QaDbSymbolTableRecord::cast(pending_[static_cast<std::size_t>(i)].object.get()))
      styleByName.emplace(dxfUpperName(rec->name()), i);
  for (std::size_t k = 0; k < names_.size(); ++k) {
    const std::wstring upper = dxfUpperName(names_[k]);
    if (auto it = styleByName.find(upper); it != styleByName.end()) styles[k] = it->second;
    if (auto it = blocksByName_.find(upper); it != blocksByName_.end()) blocks[k] = it->second;
  }
}

int DxfLoaderState::table(std::string_view name, std::size_t line, bool reportMissing) {
  auto it = tables_.find(name);
  if (it != tables_.end()) return it->second;
  auto table = dxfMakeTable(name);
  if (reportMissing)
    info_.audit.add(line, "table " + std::string(name) + " has no TABLE head; one was made");
  DxfPending p;
  p.object = std::move(table);
  p.line = line;
  p.role = DxfRole::Table;
  p.repaired = true;
  pending_.push_back(std::move(p));
  int index = static_cast<int>(pending_.size() - 1);
  tables_.emplace(std::string(name), index);
  return index;
}

int DxfLoaderState::blockRecordNamed(const std::wstring& name) const {
  auto it = blocksByName_.find(dxfUpperName(name));
  return it == blocksByName_.end() ? -1 : it->second;
}

int DxfLoaderState::makeBlockRecord(const std::wstring& name, std::size_t line) {
  int blockTable = table("BLOCK_RECORD", line, false);
  DxfPending p;
  p.object = std::make_unique<QaDbBlockTableRecord>(name);
  p.line = line;
  p.role = DxfRole::TableRecord;
  p.parent = blockTable;
  p.repaired = true;
  pending_.push_back(std::move(p));
  int index = static_cast<int>(pending_.size() - 1);
  blocksByName_.emplace(dxfUpperName(name), index);
  return index;
}

int DxfLoaderState::modelSpace() {
  int i = blockRecordNamed(L"*Model_Space");
  return i >= 0 ? i : makeBlockRecord(L"*Model_Space", 0);
}

int DxfLoaderState::paperSpace() {
  int i = blockRecordNamed(L"*Paper_Space");
  return i >= 0 ? i : makeBlockRecord(L"*Paper_Space", 0);
}

// ---------------------------------------------------------------- TABLES

void DxfLoaderState::readTables(DxfSectionReader& sections) {
  DxfRawObject raw;
  std::string current;   // name of the open table, "" when none
  DxfRawTable* rawTable = nullptr;
  while (sections.nextObject(raw)) {
    noteHandle(raw.tags);
    if (raw.type == "TABLE") {
      std::string name;
      for (const DxfTag& t : raw.tags)
        if (t.code == 2) {
          name = std::string(dxfTrim(t.value));
          break;
        }
      if (name.empty()) ctx_.fail(raw.tags[0], "TABLE without a name (group code 2)");
      rawTable = nullptr;
      current = name;
      if (!dxfIsKnownTable(name)) {
        doc_->rawTables.push_back(DxfRawTable{name, toUtf8({raw.tags.begin(), raw.tags.end()})});
        rawTable = &doc_->rawTables.back();
        continue;
      }
      DxfObjectFrame frame = dxfReadFrame(raw.tags, 2, raw.firstXData);
      if (tables_.count(name)) {
        info_.audit.add(raw.line, "second TABLE " + name + "; its records joined the first");
        continue;
      }
      auto table = dxfMakeTable(name);
      table->setDxfRecord(std::make_unique<DxfObjectRecord>(source_, raw.span));
      int index = addPending(std::move(table), raw, frame, DxfRole::Table, -1, nullptr);
      tables_.emplace(name, index);
      continue;
    }
    if (raw.type == "ENDTAB") {
      current.clear();
      rawTable = nullptr;
      continue;
    }
    if (rawTable) {
      auto tags = toUtf8({raw.tags.begin(), raw.tags.end()});
      rawTable->tags.insert(rawTable->tags.end(), tags.begin(), tags.end());
      continue;
    }
    std::string type(raw.type);
    if (!dxfIsKnownTable(type)) {
      info_.audit.add(raw.line, "unknown table record " + type + " in table " +
                                    (current.empty() ? std::string("(none)") : current) + " dropped");
      continue;
    }
    if (type != current) {
      if (!current.empty())
        info_.audit.add(raw.line, type + " record inside table " + current + "; moved to its own table");
      else if (tables_.count(type))
        info_.audit.add(raw.line, type + " record after the end of its table; moved into it");
    }
    int tableIndex = table(type, raw.line, current.empty() && !tables_.count(type));
    if (current.empty()) current = type;
    DxfObjectFrame frame = dxfReadFrame(raw.tags, 1, raw.firstXData);
    DxfPendingRefs refs;
    auto record = dxfReadTableRecord(ctx_, type, raw.tags, frame, refs);
    bool isBlock = type == "BLOCK_RECORD";
    if (isBlock) record->setDxfRecord(std::make_unique<DxfBlockRecord>(source_, raw.span));
    else record->setDxfRecord(std::make_unique<DxfObjectRecord>(source_, raw.span));
    std::wstring name = record->name();
    bool hasRefs = refs.handle2 != 0;
    int index = addPending(std::move(record), raw, frame, DxfRole::TableRecord, tableIndex, hasRefs ? &refs : nullptr);
    if (type == "STYLE") styleRecords_.push_back(index);
    if (isBlock) {
      if (blocksByName_.count(dxfUpperName(name))) {
        info_.audit.add(raw.line, "second BLOCK_RECORD named \"" + ctx_.codec().encode(name) + "\"");
      } else {
        blocksByName_.emplace(dxfUpperName(name), index);
      }
      if (frame.handle) {
        blocksByHandle_.emplace(frame.handle, index);
        lastOwnerHandle_ = 0;
      }
    }
  }
}

// ---------------------------------------------------------------- BLOCKS

namespace {

// R12 files name the layouts $MODEL_SPACE and $PAPER_SPACE.
std::wstring layoutName(const std::wstring& name) {
  std::wstring upper = dxfUpperName(name);
  if (upper == L"$MODEL_SPACE") return L"*Model_Space";
  if (upper == L"$PAPER_SPACE") return L"*Paper_Space";
  return name;
}

}  // namespace

void DxfLoaderState::readBlocks(DxfSectionReader& sections) {
  DxfRawObject raw;
  int block = -1;
  std::size_t blockLine = 0;
  while (sections.nextObject(raw)) {
    if (raw.type == "BLOCK") {
      closeSequences(raw.line);
      noteHandle(raw.tags);
      if (block >= 0) info_.audit.add(blockLine, "BLOCK without ENDBLK; ended at the next BLOCK");
      DxfObjectFrame frame = dxfReadFrame(raw.tags, 1, raw.firstXData);
      std::wstring name = layoutName(dxfRecordName(ctx_, raw.tags, frame.bodyBegin));
      int index = -1;
      if (frame.owner) index = blockOfHandle(frame.owner);
      if (index < 0) index = blockRecordNamed(name);
      if (index < 0) {
        if (name.empty()) ctx_.fail(raw.tags[0], "BLOCK without a name (group code 2)");
        if (!ctx_.flatFile())
          info_.audit.add(raw.line, "BLOCK \"" + ctx_.codec().encode(name) + "\" has no BLOCK_RECORD; one was made");
        index = makeBlockRecord(name, raw.line);
      }
      auto* btr = QaDbBlockTableRecord::cast(pending_[index].object.get());
      QaGePoint3d origin;
      dxfForEachBodyTag(raw.tags, frame, [&](const DxfTag& t, int sc) {
        if (sc < 0) return;
        switch (t.code) {
          case 70: btr->setFlags(ctx_.integer(t)); break;
          case 10: origin.x = ctx_.real(t); break;
          case 20: origin.y = ctx_.real(t); break;
          case 30: origin.z = ctx_.real(t); break;
          case 4: btr->setComments(ctx_.text(t)); break;
          case 1: btr->setPathName(ctx_.text(t)); break;
          default: break;
        }
      });
      btr->setOrigin(origin);
      auto* record = dynamic_cast<DxfBlockRecord*>(btr->dxfRecord());
      if (!record) {
        auto made = std::make_unique<DxfBlockRecord>(source_, DxfSpan{});
        record = made.get();
        btr->setDxfRecord(std::move(made));
      }
      if (!record->blockBegin.empty()) info_.audit.add(raw.line, "second BLOCK for one block record; its entities joined the first");
      else record->blockBegin = raw.span;
      block = index;
      blockLine = raw.line;
    } else if (raw.type == "ENDBLK") {
      closeSequences(raw.line);
      noteHandle(raw.tags);
      if (block < 0) {
        info_.audit.add(raw.line, "ENDBLK without BLOCK ignored");
        continue;
      }
      if (auto* record = dynamic_cast<DxfBlockRecord*>(pending_[block].object->dxfRecord()))
        if (record->blockEnd.empty()) record->blockEnd = raw.span;
      block = -1;
    } else {
      if (block < 0) {
        info_.audit.add(raw.line, std::string(raw.type) + " outside any BLOCK; put in model space");
        entity(raw, modelSpace());
      } else {
        entity(raw, block);
      }
    }
  }
  closeSequences(0);
  if (block >= 0) info_.audit.add(blockLine, "BLOCK without ENDBLK at the end of the BLOCKS section");
}

// ---------------------------------------------------------------- ENTITIES

void DxfLoaderState::readEntities(DxfSectionReader& sections) {
  DxfRawObject raw;
  while (sections.nextObject(raw)) entity(raw, -1);
  closeSequences(0);
}

void DxfLoaderState::closeSequences(std::size_t line) {
  if (openPolyline_ >= 0) {
    info_.audit.add(pending_[openPolyline_].line, "POLYLINE without SEQEND; one was added");
    if (auto* rec = dynamic_cast<DxfObjectRecord*>(pending_[openPolyline_].object->dxfRecord()))
      rec->setSpan({rec->span().begin, polylineEnd_});
    pending_[openPolyline_].repaired = true;
    openPolyline_ = -1;
  }
  if (openInsert_ >= 0) {
    if (openInsertHasAttributes_ || openInsertExpectsAttributes_) {
      info_.audit.add(pending_[openInsert_].line, "INSERT with attributes but no SEQEND; one was added");
      pending_[openInsert_].repaired = true;
    }
    openInsert_ = -1;
  }
  (void)line;
}

int DxfLoaderState::blockOfHandle(std::uint64_t handle) {
  if (handle != lastOwnerHandle_ || handle == 0) {
    auto it = blocksByHandle_.find(handle);
    lastOwnerBlock_ = it != blocksByHandle_.end() ? it->second : -1;
    lastOwnerHandle_ = handle;
  }
  return lastOwnerBlock_;
}

void DxfLoaderState::entity(const DxfRawObject& raw, int block) {
  const std::string_view type = raw.type;
  if (openPolyline_ >= 0) {
    if (type == "VERTEX") {
      noteHandle(raw.tags);
      DxfObjectFrame frame = dxfReadFrame(raw.tags, 1, raw.firstXData);
      ctx_.markFlatObject(dxfBodyIsFlat(raw.tags, frame));
      dxfReadVertex(ctx_, raw.tags, frame, *static_cast<QaDb2dPolyline*>(pending_[openPolyline_].object.get()));
      ctx_.markFlatObject(false);
      polylineEnd_ = raw.span.end;
      return;
    }
    if (type == "SEQEND") {
      noteHandle(raw.tags);
      auto* rec = static_cast<DxfObjectRecord*>(pending_[openPolyline_].object->dxfRecord());
      rec->setSpan({rec->span().begin, raw.span.end});
      openPolyline_ = -1;
      return;
    }
    closeSequences(raw.line);
  }
  if (openInsert_ >= 0) {
    if (type == "ATTRIB") {
      DxfObjectFrame frame = dxfReadFrame(raw.tags, 1, raw.firstXData);
      const bool flat = dxfBodyIsFlat(raw.tags, frame);
      ctx_.markFlatObject(flat);
      DxfEntityRead read;
      dxfReadEntity(ctx_, raw.tags, frame, read);
      ctx_.markFlatObject(false);
      read.entity->setDxfRecord(std::make_unique<DxfObjectRecord>(source_, raw.span));
      // An attribute in the flat form of a later file is written from its fields.
      bool repaired = read.repaired || (flat && !ctx_.flatFile());
      int name = internName(read.name), name2 = internName(read.name2);
      int index = addPending(std::move(read.entity), raw, frame, DxfRole::Attribute, openInsert_,
                             read.hasRefs ? &read.refs : nullptr);
      pending_[index].repaired = repaired;
      pending_[index].name = name;
      pending_[index].name2 = name2;
      noteNameKind(pending_[index]);
      openInsertHasAttributes_ = true;
      return;
    }
    if (type == "SEQEND") {
      noteHandle(raw.tags);
      static_cast<DxfInsertRecord*>(pending_[openInsert_].object->dxfRecord())->seqend = raw.span;
      openInsert_ = -1;
      return;
    }
    closeSequences(raw.line);
  }
  if (type == "VERTEX" || type == "SEQEND" || type == "ATTRIB") {
    info_.audit.add(raw.line, std::string(type) + " without its POLYLINE or INSERT dropped");
    return;
  }
  if (type == "BLOCK" || type == "ENDBLK") {
    // Block boundaries belong to the BLOCKS section; elsewhere they are debris.
    info_.audit.add(raw.line, std::string(type) + " outside the BLOCKS section dropped");
    return;
  }

  DxfObjectFrame frame = dxfReadFrame(raw.tags, 1, raw.firstXData);
  const bool flat = dxfBodyIsFlat(raw.tags, frame);
  if (flat && frame.handle == 0) {
    // R12 writers put the handle of an entity anywhere among its tags.
    for (std::size_t i = frame.bodyBegin; i < frame.xdataBegin; ++i)
      if (raw.tags[i].code == 5) {
        frame.handle = dxfParseHandle(raw.tags[i].value).value_or(0);
        break;
      }
  }
  DxfEntityRead read;
  ctx_.markFlatObject(flat);
  dxfReadEntity(ctx_, raw.tags, frame, read);
  ctx_.markFlatObject(false);
  if (type == "INSERT") read.entity->setDxfRecord(std::make_unique<DxfInsertRecord>(source_, raw.span));
  else read.entity->setDxfRecord(std::make_unique<DxfObjectRecord>(source_, raw.span));

  // The flat form in a later file is written from the fields, with subclass markers.
  bool repaired = read.repaired || (flat && !ctx_.flatFile());
  int parent = block;
  if (parent < 0) {
    // The ENTITIES section holds model space and the active paper space, told apart
    // by group code 67 whatever block record the owner names.
    parent = read.paperSpace ? paperSpace() : modelSpace();
    if (frame.owner && !ctx_.flatFile() && blockOfHandle(frame.owner) != parent) {
      if (misplaced_++ == 0) {
        firstMisplaced_ = raw.line;
        misplacedOwner_ = frame.owner;
      }
      repaired = true;
    }
  }
  bool paper = read.paperSpace;
  int name = internName(read.name), name2 = internName(read.name2);
  int index = addPending(std::move(read.entity), raw, frame, DxfRole::Entity, parent,
                         read.hasRefs ? &read.refs : nullptr);
  pending_[index].paperSpace = paper;
  pending_[index].repaired = repaired;
  pending_[index].name = name;
  pending_[index].name2 = name2;
  noteNameKind(pending_[index]);
  if (!ctx_.flatFile() && frame.owner == 0) {
    noteOwnerless(raw.line);
    pending_[index].repaired = true;
  }
  if (frame.owner && block >= 0) {
    if (const int named = blockOfHandle(frame.owner); named >= 0 && named != block) {
      info_.audit.add(raw.line, std::string(type) + " names another block as owner; kept in the block it stands in");
      pending_[index].repaired = true;
    }
  }
  if (type == "POLYLINE") {
    openPolyline_ = index;
    polylineEnd_ = raw.span.end;
  } else if (type == "INSERT") {
    openInsert_ = index;
    openInsertHasAttributes_ = false;
    openInsertExpectsAttributes_ = false;
    for (std::size_t i = frame.bodyBegin; i < frame.xdataBegin; ++i)
      if (raw.tags[i].code == 66) openInsertExpectsAttributes_ = dxfParseInt(raw.tags[i].value).value_or(0) != 0;
  }
}

// ---------------------------------------------------------------- OBJECTS

void DxfLoaderState::readObjects(DxfSectionReader& sections) {
  DxfRawObject raw;
  while (sections.nextObject(raw)) {
    DxfObjectFrame frame = dxfReadFrame(raw.tags, 1, raw.firstXData);
    DxfPendingRefs refs;
    auto object = dxfReadObject(ctx_, raw.tags, frame, refs);
    object->setDxfRecord(std::make_unique<DxfObjectRecord>(source_, raw.span));
    bool hasRefs = !refs.handles.empty();
    // An object without owner has no place to take one from: it stays so.
    addPending(std::move(object), raw, frame, DxfRole::Object, -1, hasRefs ? &refs : nullptr);
  }
}

// ---------------------------------------------------------------- entry points

namespace {

// Messages about a binary file name the byte offset of the tag, not the line of
// the text made of it.
DxfError locatedInBinary(const DxfSource& source, const DxfError& e) {
  const std::size_t offset = source.binaryOffsetOfLine(e.line());
  std::string where = offset == std::string::npos ? std::string() : " (at byte offset " + std::to_string(offset) + ")";
  return DxfError(e.file(), 0, e.groupCode(), e.message() + where);
}

void relocateFindings(const DxfSource& source, DxfAuditReport& audit) {
  DxfAuditReport located;
  for (const DxfFinding& f : audit.findings()) {
    const std::size_t offset = source.binaryOffsetOfLine(f.line);
    located.add(0, offset == std::string::npos ? f.message
                                               : f.message + " (at byte offset " + std::to_string(offset) + ")");
  }
  audit = std::move(located);
}

// Reads the whole source into a scratch database, and only when that worked
// makes it the content of `db`.
void loadSource(std::shared_ptr<DxfSource> source, QaDbDatabase& db, DxfLoadInfo* info) {
  const std::string fileName = source->fileName();
  const std::shared_ptr<const DxfSource> keep = source;
  DxfLoaderState state(std::move(source));
  QaDbDatabase scratch(false);
  try {
    state.parse();
    state.commit(scratch);
  } catch (const DxfError& e) {
    if (!keep->isBinary()) throw;
    throw locatedInBinary(*keep, e);
  }
  if (keep->isBinary()) relocateFindings(*keep, state.info().audit);
  scratch.adoptArena(state.takeArena());
  scratch.setFilename(fileName == "-" ? std::filesystem::path() : std::filesystem::path(fileName));
  db.swap(scratch);
  if (info) *info = std::move(state.info());
}

}  // namespace

void dxfLoad(std::string bytes, const std::string& fileName, QaDbDatabase& db, DxfLoadInfo* info) {
  loadSource(std::make_shared<DxfSource>(fileName, std::move(bytes)), db, info);
}

void dxfLoadFile(const std::filesystem::path& path, QaDbDatabase& db, DxfLoadInfo* info) {
  std::string name = path.string();
  if (name == "-") {
    std::string bytes(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>{});
    dxfLoad(std::move(bytes), name, db, info);
    return;
  }
  std::shared_ptr<DxfSource> source;
  {
    DxfFileBuffer file = DxfFileBuffer::read(path);
    // A binary file is held as the text made of it: its bytes go before loading.
    if (dxfIsBinary(file.bytes())) source = std::make_shared<DxfSource>(name, std::string(file.bytes()));
    else source = std::make_shared<DxfSource>(name, std::move(file));
  }
  loadSource(std::move(source), db, info);
}

}  // namespace tabulon::dxf

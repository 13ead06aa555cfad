// The working state of one load (see dxf_loader.h): the objects read so far
// and what is needed to put them into a database. Internal to the codec.
#pragma once

#include "host/dxf/dxf_entity_reader.h"
#include "host/dxf/dxf_loader.h"
#include "host/dxf/dxf_pending.h"
#include "host/dxf/dxf_read_context.h"
#include "host/dxf/dxf_records.h"
#include "host/dxf/dxf_section_reader.h"

#include "host/db/qadb_object_arena.h"
#include "host/db/qadb_page_cache.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <unordered_set>
#include <string>
#include <unordered_map>
#include <vector>

class QaDbDatabase;

namespace tabulon::dxf {

class DxfLoaderState {
 public:
  explicit DxfLoaderState(std::shared_ptr<DxfSource> source);

  // First pass: reads every section. Throws DxfError.
  void parse();
  // Second pass: enters everything into `db` (an empty database) and resolves references.
  void commit(QaDbDatabase& db);

  DxfLoadInfo& info() { return info_; }
  // The memory the objects read live in; the database they went into keeps it.
  std::unique_ptr<QaDbObjectArena> takeArena() { return std::move(arena_); }

 private:
  // --- first pass (dxf_loader.cpp)
  void readHeader(const std::vector<DxfTag>& tags);
  void chooseEncoding(std::optional<std::string_view> acadver, std::optional<std::string_view> codePage);
  void readTables(DxfSectionReader& sections);
  void readBlocks(DxfSectionReader& sections);
  void readEntities(DxfSectionReader& sections);
  void readObjects(DxfSectionReader& sections);
  std::vector<DxfHeaderTag> toUtf8(const std::vector<DxfTag>& tags) const;

  // The index of a name (bytes of the file) in names_; -1 for an empty one.
  int internName(std::string_view raw);
  int internNameSlow(std::string_view raw);
  // Notes what the name of a just-read entity refers to.
  void noteNameKind(DxfPending& p);
  // For each name: the pending record it names in the STYLE table and among the
  // block records (-1 when none), first of equal names winning as in the tables.
  void matchNamesToRecords(std::vector<int>& styles, std::vector<int>& blocks) const;
  int addPending(std::unique_ptr<QaDbObject> object, const DxfRawObject& raw, const DxfObjectFrame& frame,
                 DxfRole role, int parent, DxfPendingRefs* refs);
  int table(std::string_view name, std::size_t line, bool reportMissing);
  int blockRecordNamed(const std::wstring& name) const;
  // The pending block record with this handle, or -1.
  int blockOfHandle(std::uint64_t handle);
  int makeBlockRecord(const std::wstring& name, std::size_t line);
  int modelSpace();
  int paperSpace();
  void entity(const DxfRawObject& raw, int block);
  void closeSequences(std::size_t line);
  void noteHandle(std::span<const DxfTag> tags);
  void noteOwnerless(std::size_t line);

  // --- second pass (dxf_loader_commit.cpp)
  void assignHandles();
  void ensureTables(QaDbDatabase& db);
  // Resolves what could not be resolved as objects entered; `touched` gets every
  // object it changed.
  void resolve(QaDbDatabase& db, std::vector<QaDbObjectId>& ids, std::vector<QaDbObjectId>& touched);
  void completeDatabase(QaDbDatabase& db);

  std::shared_ptr<DxfSource> source_;
  // Before everything that holds objects, so that it goes after them.
  std::unique_ptr<QaDbObjectArena> arena_ = std::make_unique<QaDbObjectArena>();
  DxfLoadInfo info_;
  DxfReadContext ctx_;
  std::unique_ptr<DxfDocumentRecord> doc_;
  bool encodingChosen_ = false;
  bool sawHeader_ = false;
  std::string previousSection_;

  // Hundreds of thousands for a large drawing: in page cache runs.
  std::vector<DxfPending, qadb_page_cache::Allocator<DxfPending>> pending_;
  std::vector<DxfPendingRefs> refs_;
  std::vector<std::wstring> names_;
  std::unordered_map<std::string_view, int> nameIndex_;
  std::vector<int> styleRecords_;  // pending indexes of the STYLE table's records, in order
  std::vector<QaDbSharedName> layersUsed_;  // by entities, each once, in order of use
  std::unordered_set<const void*> layersSeen_;
  const void* lastLayerKey_ = nullptr;
  std::set<std::wstring> xdataApps_;  // application names of extended data
  std::string_view lastName_;  // views the source
  int lastNameIndex_ = -1;
  std::map<std::string, int, std::less<>> tables_;  // table name -> pending index
  std::unordered_map<std::wstring, int> blocksByName_;  // upper-case name -> pending index
  std::unordered_map<std::uint64_t, int> blocksByHandle_;
  // The last lookup in blocksByHandle_: entities come in long runs of one owner.
  std::uint64_t lastOwnerHandle_ = 0;
  int lastOwnerBlock_ = -1;
  std::uint64_t maxHandle_ = 0;
  std::uint64_t headerSeed_ = 0;
  std::uint64_t nextFree_ = 1;  // the next handle for objects that need one
  std::size_t ownerless_ = 0;       // objects of R13+ files without 330
  std::size_t firstOwnerless_ = 0;  // line of the first
  // Entities of the ENTITIES section whose owner is not the layout they were put in.
  std::size_t misplaced_ = 0;
  std::size_t firstMisplaced_ = 0;
  std::uint64_t misplacedOwner_ = 0;  // the owner the first one named

  // Open sequences of the entity stream.
  int openInsert_ = -1;
  bool openInsertHasAttributes_ = false;
  bool openInsertExpectsAttributes_ = false;
  int openPolyline_ = -1;
  std::size_t polylineEnd_ = 0;
};

// Upper-case copy for case-blind name lookups.
std::wstring dxfUpperName(const std::wstring& name);

}  // namespace tabulon::dxf

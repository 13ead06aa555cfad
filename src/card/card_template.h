// One card template in memory: the `.crd` record, the two table templates it
// names (table 0 the first page, table 1 the continuation), and the page
// arrangement and placement options that the editor and generation change.
// Owns its table records; not copyable. Lives for one command or one dialog.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "card/att_set.h"
#include "card/card_attributes.h"
#include "card/card_dir.h"
#include "card/table_attributes.h"
#include "host/ge/qage_point3d.h"
#include "host/svc/result.h"

// Whether two block names name the same template block: equal names of equal
// length (case-sensitive), or the shorter is the prefix of the longer followed
// by '_', or its suffix preceded by '_'.
bool BlockNamesMatch(const std::wstring& a, const std::wstring& b);

class KrmCardTemplate {
 public:
  KrmCardTemplate() = default;
  KrmCardTemplate(const KrmCardTemplate&) = delete;
  KrmCardTemplate& operator=(const KrmCardTemplate&) = delete;

  // Loads the card at `path` and every table it names from the card's folder.
  // A table that fails to load is kept as an empty table. Returns 1, or 0 when
  // the card file cannot be read (the template is then reset, with `path` set).
  int LoadTemplate(const std::wstring& path);
  // The same, saying why a card file cannot be read: the error names the card file and
  // what is wrong with it (the field, for a file that reads but does not parse). Tables
  // that fail to load do not fail the card; LoadProblems lists them.
  tabulon::Status Load(const std::wstring& path);
  // The reason of the last failure of LoadTemplate (file and field), or the
  // reasons of the tables that failed to load; empty after a clean load.
  const std::wstring& LoadProblems() const { return loadProblems_; }

  // Card level.
  const std::wstring& GetPath() const { return path_; }
  const std::wstring& GetCardShowName() const { return card_.getShowName(); }
  const std::wstring& GetCardID() const { return card_.getID(); }
  const KrmCardAttributes& GetCard() const { return card_; }
  // The arrangement stored in the card file.
  int GetCardDir(KrmCardDir& out) const {
    card_.getCardDir(out);
    return 1;
  }
  // The working arrangement (copied from the card on load, changed by the editor).
  int GetDir(KrmCardDir& out) const {
    out = dir_;
    return 1;
  }
  void SetDir(const KrmCardDir& dir) { dir_ = dir; }
  // The directory of `path`, ending with "/"; a path without "/" as it stands.
  std::wstring GetFolder() const;

  // By table index (0 first page, 1 continuation). Each returns 0 when no table
  // is loaded at that index, leaving its outputs unchanged (GetTableFileName
  // then gives ""); otherwise 1.
  // Single-record block names, then multi-record names.
  int GetBlockNames(std::vector<std::wstring>& out, int index = 0) const;
  // Show names of the attributes of `blockName`; empty when the table lacks it.
  int GetAttNames(const std::wstring& blockName, std::vector<std::wstring>& out, int index) const;
  int GetPageBase(int index, std::wstring& out) const;
  // Reference count and fill-order code; both unchanged when the table has no
  // entry for the block.
  int GetBlkNum(const std::wstring& blockName, int& count, int& order, int index) const;
  int GetTableSize(int index, double& width, double& height) const;
  std::wstring GetTableFileName(int index) const;
  // The table record at `index`, or nullptr.
  const KrmTableAttributes* GetTable(int index) const;

  // On table 0 alone.
  // Clears `out`, then gives the attributes of `blockName`. Returns 0 when
  // table 0 is not loaded or lacks the block.
  int GetAtts(const std::wstring& blockName, std::vector<KrmAttSet>& out) const;
  std::wstring GetTableShowName() const;
  // The page size truncated toward zero; 0 when table 0 is not loaded.
  int GetFirstTableWidth() const;
  int GetFirstTableHeight() const;
  // Index of the automatic row-number column of `blockName`, or -1.
  int GetAutoNumColumn(const std::wstring& blockName) const;
  // Clears `out` and appends block and attribute of CLASSCUR, CLASSSUM,
  // BATCHCUR, BATCHSUM (two empty texts for each one absent): 8 texts.
  // Returns 0, with `out` empty, when table 0 is not loaded.
  int GetPageNumberBindings(std::vector<std::wstring>& out) const;

  // Placement options.
  void SetArrangeOptions(int rearrange, int autoArrange) {
    rearrange_ = rearrange;
    autoArrange_ = autoArrange;
  }
  int GetRearrange() const { return rearrange_; }
  int GetAutoArrange() const { return autoArrange_; }
  void SetInsertPoint(const QaGePoint3d& point) { insertPoint_ = point; }
  const QaGePoint3d& GetInsertPoint() const { return insertPoint_; }

 private:
  void Clear();

  std::wstring path_;
  KrmCardAttributes card_;
  // Table file name (as the card gives it) to the table record.
  std::map<std::wstring, std::unique_ptr<KrmTableAttributes>> tables_;
  KrmCardDir dir_;
  int rearrange_ = 0;
  int autoArrange_ = 1;
  QaGePoint3d insertPoint_;
  std::wstring loadProblems_;
};

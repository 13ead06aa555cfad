// One table template (a `.tbl` file): the page's block classes with their
// attributes, the page-base block, the page-number bindings, the fill order and
// reference count of each block, and the page size. Owns all of its content.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/svc/result.h"

#include "card/block_set.h"

// Block name or key to a short list of texts (the containers of the page
// attributes and of the multi-record direction table).
using KrmTextListMap = std::map<std::wstring, std::vector<std::wstring>>;

// Keys of the page attributes; each maps to {block name, attribute show name}.
inline constexpr const wchar_t* kKrmClassCur = L"CLASSCUR";
inline constexpr const wchar_t* kKrmClassSum = L"CLASSSUM";
inline constexpr const wchar_t* kKrmBatchCur = L"BATCHCUR";
inline constexpr const wchar_t* kKrmBatchSum = L"BATCHSUM";
inline constexpr const wchar_t* kKrmAutoNum = L"AUTONUM";
inline constexpr const wchar_t* kKrmTableExtension = L".tbl";

class KrmTableAttributes {
 public:
  // A fresh record carries a new random id.
  KrmTableAttributes();
  virtual ~KrmTableAttributes() = default;
  KrmTableAttributes(const KrmTableAttributes&) = default;
  KrmTableAttributes& operator=(const KrmTableAttributes&) = default;
  KrmTableAttributes(KrmTableAttributes&&) = default;
  KrmTableAttributes& operator=(KrmTableAttributes&&) = default;

  // Reads a `.tbl` file; ".tbl" is appended to a path that does not end with
  // it. Returns 1 on success; 0 when the file is missing, empty or malformed,
  // and then the record is left as it was.
  int InitTable(const std::wstring& path);
  // The same, with an error that names the file and what is wrong (the line, or the field).
  tabulon::Status ReadTable(const std::wstring& path);
  // Writes the record to `path` (".tbl" appended as above) through a temporary
  // file. Returns 1 on success, 0 on failure.
  int OutputTable(const std::wstring& path) const;
  tabulon::Status WriteTable(const std::wstring& path) const;

  // Empties every item except the id.
  void Reset();

  const std::wstring& getID() const { return id_; }
  void setID(const std::wstring& id) { id_ = id; }

  void setTblName(const std::wstring& fileName, const std::wstring& showName) {
    fileName_ = fileName;
    showName_ = showName;
  }
  const std::wstring& getFileName() const { return fileName_; }
  const std::wstring& getShowName() const { return showName_; }

  const std::wstring& getPageBase() const { return pageBase_; }
  void setPageBase(const std::wstring& blockName) { pageBase_ = blockName; }

  // Single-record blocks: the records, or their names alone (replacing `out`).
  void getSCell(std::vector<KrmBlockSet>& out) const { out = sCells_; }
  void getSCell(std::vector<std::wstring>& names) const;
  void setSCell(const std::vector<KrmBlockSet>& cells) { sCells_ = cells; }
  // Multi-record blocks, the same way.
  void getMCell(std::vector<KrmBlockSet>& out) const { out = mCells_; }
  void getMCell(std::vector<std::wstring>& names) const;
  void setMCell(const std::vector<KrmBlockSet>& cells) { mCells_ = cells; }
  const std::vector<KrmBlockSet>& SCells() const { return sCells_; }
  const std::vector<KrmBlockSet>& MCells() const { return mCells_; }

  // Page attributes: key (CLASSCUR ... AUTONUM) to {block name, show name}.
  void getPageAtt(KrmTextListMap& out) const { out = pageAtt_; }
  void setPageAtt(const KrmTextListMap& map) { pageAtt_ = map; }
  const KrmTextListMap& PageAtt() const { return pageAtt_; }
  // Multi-record direction table: block name to {fill-order code, count}, both
  // decimal texts.
  void getMDirType(KrmTextListMap& out) const { out = mDirType_; }
  void setMDirType(const KrmTextListMap& map) { mDirType_ = map; }
  const KrmTextListMap& MDirType() const { return mDirType_; }

  double getWidth() const { return width_; }
  double getHeight() const { return height_; }
  void setWidth(double width) { width_ = width; }
  void setHeight(double height) { height_ = height; }

  // Replaces `out` with the attributes of `blockName`, looked up among the
  // single-record blocks, then the multi-record blocks. Returns 1 when found;
  // 0 when not, with `out` emptied.
  int getAtt(const std::wstring& blockName, std::vector<KrmAttSet>& out) const;

  // Fill-order code and reference count of `blockName` from the direction
  // table. Returns 1 when the block has an entry of two texts; otherwise 0 and
  // `order` and `count` are unchanged.
  int getBlkNum(const std::wstring& blockName, int& order, int& count) const;

  // The page attribute `key` when it has exactly two texts.
  bool PageBinding(const std::wstring& key, std::wstring& blockName, std::wstring& attName) const;

  friend bool operator==(const KrmTableAttributes&, const KrmTableAttributes&) = default;

 private:
  std::wstring id_;
  std::wstring fileName_;
  std::wstring showName_;
  std::wstring pageBase_;
  std::vector<KrmBlockSet> sCells_;
  std::vector<KrmBlockSet> mCells_;
  KrmTextListMap pageAtt_;
  KrmTextListMap mDirType_;
  double width_ = 0.0;
  double height_ = 0.0;
};

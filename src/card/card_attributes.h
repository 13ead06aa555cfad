// One card template (a `.crd` file): its names and id, the table files of the
// first and the continuation page (bare stems, in that order), and the page
// arrangement. Owns all of its content.
#pragma once

#include <string>
#include <vector>

#include "host/svc/result.h"

#include "card/card_dir.h"

inline constexpr const wchar_t* kKrmCardExtension = L".crd";

class KrmCardAttributes {
 public:
  // A fresh record carries a new random id.
  KrmCardAttributes();
  virtual ~KrmCardAttributes() = default;
  KrmCardAttributes(const KrmCardAttributes&) = default;
  KrmCardAttributes& operator=(const KrmCardAttributes&) = default;
  KrmCardAttributes(KrmCardAttributes&&) = default;
  KrmCardAttributes& operator=(KrmCardAttributes&&) = default;

  // Reads a `.crd` file; ".crd" is appended to a path that does not end with
  // it. Returns 1 on success; 0 when the file is missing, empty or malformed,
  // and then the record is left as it was.
  int InitCard(const std::wstring& path);
  // The same, with an error that names the file and what is wrong (the line, or the field).
  tabulon::Status ReadCard(const std::wstring& path);
  // Writes the record to `path` (".crd" appended as above) through a temporary
  // file. Returns 1 on success, 0 on failure.
  int OutputCard(const std::wstring& path) const;
  tabulon::Status WriteCard(const std::wstring& path) const;

  // Empties names and table files and resets the arrangement; keeps the id.
  void Reset();

  void setCardName(const std::wstring& fileName, const std::wstring& showName) {
    fileName_ = fileName;
    showName_ = showName;
  }
  const std::wstring& getFileName() const { return fileName_; }
  const std::wstring& getShowName() const { return showName_; }
  const std::wstring& getID() const { return id_; }
  void setID(const std::wstring& id) { id_ = id; }

  void addTblFile(const std::wstring& fileName) { tblFiles_.push_back(fileName); }
  int getTblCount() const { return static_cast<int>(tblFiles_.size()); }
  // Throws std::out_of_range for an index outside 0..getTblCount()-1.
  const std::wstring& getTblFile(int index) const { return tblFiles_.at(static_cast<size_t>(index)); }
  const std::vector<std::wstring>& TblFiles() const { return tblFiles_; }

  void setCardDir(const KrmCardDir& dir) { dir_ = dir; }
  void getCardDir(KrmCardDir& out) const { out = dir_; }

  friend bool operator==(const KrmCardAttributes&, const KrmCardAttributes&) = default;

 private:
  std::wstring id_;
  std::wstring fileName_;
  std::wstring showName_;
  std::vector<std::wstring> tblFiles_;
  KrmCardDir dir_;
};

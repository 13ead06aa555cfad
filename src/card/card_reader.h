// Scans a card library folder tree and lists its card templates and table
// templates, with every folder, for the library dialog and the card lookup by
// id. Owns its listings.
#pragma once

#include <string>
#include <vector>

#include "card/card_file.h"

class KrmCardReader {
 public:
  KrmCardReader() = default;
  virtual ~KrmCardReader() = default;

  // Scans `folder` and every folder below it. Folders come first within a
  // folder, then files, each sorted by name; a folder's entries are followed by
  // the entries of its sub-folders, depth first. Hidden entries (starting with
  // '.') are skipped. An entry's path is `folder` (without trailing '/')
  // joined by '/' to the sub-folder names. A template's show name and id come
  // from its file; a file that does not read is listed with its stem as show
  // name and an empty id; so is one whose show name is empty
  // (then with its id). Returns 1, or 0 when `folder` is not a directory
  // (the listings are then empty).
  int Load(const std::wstring& folder);

  // Replace `out` with the folders and the `.crd` entries, or the folders and
  // the `.tbl` entries, in the order described above.
  void GetCardTree(std::vector<KrmCardFile>& out) const { out = cards_; }
  void GetTblTree(std::vector<KrmCardFile>& out) const { out = tables_; }

 private:
  void ScanFolder(const std::wstring& path, int depth);

  std::vector<KrmCardFile> cards_;
  std::vector<KrmCardFile> tables_;
};

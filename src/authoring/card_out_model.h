// The model of the transfer dialog KrmDlgCardOut: card templates of one library folder
// are copied, with the tables and side drawings they name, into another folder, byte
// for byte, so that their identities stay. A copy never leaves the target folder.
#pragma once

#include <string>
#include <vector>

#include "card/card_file.h"
#include "host/svc/result.h"

class KrmCardOutModel {
 public:
  // Both paths take `path`; an empty `path` means the root. `root` has no trailing
  // separator.
  KrmCardOutModel(std::wstring root, const std::wstring& path);

  const std::wstring& SourcePath() const { return sourcePath_; }
  const std::wstring& TargetPath() const { return targetPath_; }
  // A chosen source ends with a separator and the list is rebuilt.
  void SetSourcePath(const std::wstring& path);
  void SetTargetPath(const std::wstring& path) { targetPath_ = path; }

  // The cards of the source folder itself (no sub-folders), all selected.
  void RefreshList();
  const std::vector<KrmCardFile>& CardList() const { return cardList_; }
  std::vector<std::wstring> ListNames() const;
  const std::vector<int>& Selection() const { return selection_; }
  void SetSelection(std::vector<int> indexes) { selection_ = std::move(indexes); }
  // Selects the listed cards of these file names only; false when one is not listed.
  bool SelectByFileNames(const std::vector<std::wstring>& fileNames);

  // Checks the paths, collects the files of the selected cards and copies them; ok
  // when the dialog may close. The copied target files are listed in Copied().
  tabulon::Status OnOK();
  const std::vector<std::wstring>& Copied() const { return copied_; }

  // Appends the tables and side drawings of `card` (found beside it) to `list`.
  static void CollectFiles(const KrmCardFile& card, std::vector<KrmCardFile>& list);
  // The copying loop over `list`; true when it ran to its end. The answer given for a
  // card rules every later file that exists, until the next question; a file copied
  // earlier in the run is not copied or asked about again.
  bool CopyFiles(const std::vector<KrmCardFile>& list);

 private:
  std::wstring root_;
  std::wstring sourcePath_;
  std::wstring targetPath_;
  std::vector<KrmCardFile> cardList_;
  std::vector<int> selection_;
  std::vector<std::wstring> copied_;
};

// Copies one file in blocks. False when either file does not open.
bool CopyWholeFile(const std::wstring& source, const std::wstring& target);

// Whether `name`, a file name to be joined to `folder`, stays inside it: no separator,
// no "..", not absolute, and no existing link there that points elsewhere.
bool StaysInFolder(const std::wstring& folder, const std::wstring& name);

// One entry of a card library listing: a template file or a folder.
// A plain copyable value.
#pragma once

#include <string>

class KrmCardFile {
 public:
  KrmCardFile() = default;
  KrmCardFile(const std::wstring& path, const std::wstring& fileName, const std::wstring& showName,
              const std::wstring& type, const std::wstring& id)
      : path_(path), fileName_(fileName), showName_(showName), type_(type), id_(id) {}

  // Folder that holds the entry, without a trailing separator.
  const std::wstring& GetPath() const { return path_; }
  // Stem of a template; the folder's own name for a folder.
  const std::wstring& GetFileName() const { return fileName_; }
  // The template's show name; the folder's own name for a folder.
  const std::wstring& GetShowName() const { return showName_; }
  // ".crd", ".tbl", ".dwg", or empty for a folder.
  const std::wstring& GetType() const { return type_; }
  const std::wstring& GetID() const { return id_; }

  bool IsFolder() const { return type_.empty(); }

  friend bool operator==(const KrmCardFile&, const KrmCardFile&) = default;

 private:
  std::wstring path_;
  std::wstring fileName_;
  std::wstring showName_;
  std::wstring type_;
  std::wstring id_;
};

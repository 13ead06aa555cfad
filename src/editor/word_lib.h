// CKrmWordLib: the phrase library, a UTF-8 text file of one phrase a line, grouped by
// "[category]" lines (phrases before the first one are in a category named ""). Blank
// lines are skipped. The chooser that lets the user pick a phrase is the window's; it
// is handed in.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/svc/result.h"

struct KrmWordCategory {
  std::wstring name;
  std::vector<std::wstring> phrases;
};

class CKrmWordLib {
 public:
  // Shows the categories and returns true with the chosen phrase.
  using Chooser = std::function<bool(const std::vector<KrmWordCategory>&, std::wstring&)>;

  void SetLibPath(const std::wstring& path) { path_ = path; }
  const std::wstring& GetLibPath() const { return path_; }
  // Reads the library file.
  tabulon::Status Load();
  const std::vector<KrmWordCategory>& Categories() const { return categories_; }
  // Loads the library and runs the chooser; true when a phrase was chosen.
  bool GetWord(std::wstring& out, const Chooser& chooser);

  // The categories of a library's text.
  static std::vector<KrmWordCategory> Parse(const std::wstring& text);

 private:
  std::wstring path_;
  std::vector<KrmWordCategory> categories_;
};

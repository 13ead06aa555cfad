// CMyExcelOperate: one spreadsheet file, .xlsx or .xls, read or written a row at a time.
// Writing collects the rows and writes the file at CloseExcelFile; reading loads the
// first sheet at OpenExcelFile. Results are 1 on success and 0 on failure, and the
// failure's details stay in LastError(). The object owns everything it read.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "editor/sheet_table.h"
#include "host/svc/result.h"

class CMyExcelOperate {
 public:
  // true for an .xlsx file, false for .xls.
  explicit CMyExcelOperate(bool xlsx) : xlsx_(xlsx) {}

  // Starts a new, empty workbook to be written to `path`.
  int CreateExcelFile(const std::wstring& path);
  // After CreateExcelFile on the same path: ready to write. Else reads the file's
  // first sheet; 0 when it is no spreadsheet of the kind or cannot be read.
  int OpenExcelFile(const std::wstring& path);
  // Writes row `row` (zero-based) of the workbook being written.
  int WriteExcelDataA(int row, const std::vector<std::wstring>& cells);
  // Size of the sheet read (or written so far).
  int GetColumnCount() const;
  int GetRowCount() const;
  // Decimal places of the next column, in column order: numeric cells of that column
  // are rounded to them when read (0 or less: as they are).
  int SetDigitNum(int digits);
  // `out` := `columns` cell texts of row `row`, "" for empty or missing cells; 0 when
  // nothing was read or the row is past the end.
  int ReadData(int row, int columns, std::vector<std::wstring>& out) const;
  // Writes the file of a workbook being written; ends the work on the file.
  int CloseExcelFile();

  const tabulon::Error& LastError() const { return error_; }

 private:
  int Fail(tabulon::Error error);

  bool xlsx_;
  enum class Mode { kNone, kCreated, kWriting, kReading } mode_ = Mode::kNone;
  std::wstring path_;
  std::map<int, std::vector<std::wstring>> written_;
  tabulon::editor::SheetTable read_;
  std::vector<int> digits_;
  tabulon::Error error_;
};

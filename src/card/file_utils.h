// File and folder helpers of the card library: name checks, folder creation,
// existence tests, whole-file reading and safe writing, and template ids.
// Paths are wide texts with '/' as separator.
#pragma once

#include <string>

#include "host/svc/result.h"

// False when `text` holds any of the nine characters \ / : * ? " < > |.
// An empty text is valid.
bool IsValidFileName(const std::wstring& text);

// True at once when the folder exists; otherwise creates that one level (a
// missing parent is not created) and answers whether the folder now exists.
bool EnsureFolder(const std::wstring& path);

// Removes one trailing '/' and asks whether a directory of that name exists.
bool DirectoryExists(const std::wstring& path);

// True when anything (file or folder) exists at `path`.
bool FileExists(const std::wstring& path);

// Reads a whole file as bytes; an error naming the file when it cannot be opened or read.
tabulon::Result<std::string> KrmReadWholeFile(const std::wstring& path);

// Writes bytes to a temporary file beside `path` and renames it over `path`, so that a
// failed write never destroys the old file; an error naming the file on failure.
tabulon::Status KrmWriteWholeFile(const std::wstring& path, const std::string& bytes);

// `path` with `extension` appended unless it already ends with it.
std::wstring KrmWithExtension(const std::wstring& path, const std::wstring& extension);

// A fresh random 128-bit identity as 32 lower-case hex digits.
std::wstring KrmNewTemplateId();

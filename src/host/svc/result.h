// The one result of our own fallible operations (reading and writing files, parsing,
// loading templates, generation): a value, or an error that names what is wrong and
// where (file, line, field). Callers branch on ok() and never read printed text back.
// The design's own 1/0/-1 and Qa::ErrorStatus results wrap this at their boundary.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace tabulon {

// What went wrong and where. Texts are UTF-8; `message` is meant for a person and comes
// from the string tables when a user sees it.
struct Error {
  std::string message;
  std::string file;      // the file concerned, empty when none
  std::size_t line = 0;  // 1-based line in `file`, 0 when not tied to a line
  std::string field;     // the field, column, key or group code concerned, empty when none

  // "file:line: field: message", leaving out the parts that are empty.
  std::string describe() const;

  Error& inFile(std::string path) & { file = std::move(path); return *this; }
  Error&& inFile(std::string path) && { file = std::move(path); return std::move(*this); }
  Error& atLine(std::size_t n) & { line = n; return *this; }
  Error&& atLine(std::size_t n) && { line = n; return std::move(*this); }
  Error& inField(std::string name) & { field = std::move(name); return *this; }
  Error&& inField(std::string name) && { field = std::move(name); return std::move(*this); }
};

inline Error MakeError(std::string message) { return Error{std::move(message), {}, 0, {}}; }

// Success without a value, or an Error.
class [[nodiscard]] Status {
 public:
  Status() = default;
  Status(Error error) : error_(std::move(error)) {}  // NOLINT: an Error converts implicitly

  static Status Ok() { return Status(); }

  bool ok() const { return !error_; }
  explicit operator bool() const { return ok(); }
  // Precondition: !ok().
  const Error& error() const { return *error_; }
  std::string describe() const { return error_ ? error_->describe() : std::string(); }

 private:
  std::optional<Error> error_;
};

// A value of type T, or an Error.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}  // NOLINT
  Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}  // NOLINT
  Result(Status status) : state_(std::in_place_index<1>, status.error()) {}  // precondition: !status.ok()

  bool ok() const { return state_.index() == 0; }
  explicit operator bool() const { return ok(); }

  // Preconditions: ok() for value(), !ok() for error().
  T& value() & { return std::get<0>(state_); }
  const T& value() const& { return std::get<0>(state_); }
  T&& value() && { return std::get<0>(std::move(state_)); }
  T* operator->() { return &value(); }
  const T* operator->() const { return &value(); }
  T& operator*() & { return value(); }
  const T& operator*() const& { return value(); }

  const Error& error() const { return std::get<1>(state_); }
  std::string describe() const { return ok() ? std::string() : error().describe(); }
  // The error as a Status (ok when there is a value), to pass a failure upwards.
  Status status() const { return ok() ? Status() : Status(error()); }

  T valueOr(T fallback) const& { return ok() ? value() : std::move(fallback); }

 private:
  std::variant<T, Error> state_;
};

}  // namespace tabulon

// The persistent name of an object inside one drawing: a 64-bit number written as
// upper-case hexadecimal. Zero means "no handle". A plain value.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

class QaDbHandle {
 public:
  constexpr QaDbHandle() = default;
  constexpr explicit QaDbHandle(std::uint64_t value) : value_(value) {}

  // Parses hexadecimal digits ("1F", "  1f "); nullopt for empty, non-hex or too long text.
  static std::optional<QaDbHandle> fromHex(std::string_view text);
  static std::optional<QaDbHandle> fromHex(std::wstring_view text);

  constexpr bool isNull() const { return value_ == 0; }
  constexpr std::uint64_t value() const { return value_; }
  // Upper-case hexadecimal without leading zeros; "0" for the null handle.
  std::string ascii() const;
  std::wstring text() const;
  QaDbHandle next() const { return QaDbHandle(value_ + 1); }

  constexpr auto operator<=>(const QaDbHandle&) const = default;

 private:
  std::uint64_t value_ = 0;
};

template <>
struct std::hash<QaDbHandle> {
  std::size_t operator()(const QaDbHandle& h) const noexcept { return std::hash<std::uint64_t>()(h.value()); }
};

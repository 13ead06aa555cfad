#include "host/ed/qaed_input.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cwctype>

namespace {

std::wstring_view trim(std::wstring_view s) {
  const auto first = s.find_first_not_of(L" \t\r\n");
  if (first == std::wstring_view::npos) return {};
  const auto last = s.find_last_not_of(L" \t\r\n");
  return s.substr(first, last - first + 1);
}

std::wstring lower(std::wstring_view s) {
  std::wstring out(s);
  for (auto& c : out) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return out;
}

std::optional<double> parseNumber(std::wstring_view text) {
  text = trim(text);
  if (text.starts_with(L'+')) text.remove_prefix(1);
  if (text.empty()) return std::nullopt;
  std::string ascii;
  for (wchar_t c : text) {
    if (c > 0x7F) return std::nullopt;
    ascii += static_cast<char>(c);
  }
  double value = 0;
  const auto [end, ec] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
  if (ec != std::errc() || end != ascii.data() + ascii.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<QaDbHandle> parseHandle(std::wstring_view token) {
  token = trim(token);
  if (!token.starts_with(L'#') || token.size() < 2 || token.size() > 17) return std::nullopt;
  std::uint64_t value = 0;
  for (wchar_t c : token.substr(1)) {
    int digit;
    if (c >= L'0' && c <= L'9') digit = c - L'0';
    else if (c >= L'a' && c <= L'f') digit = c - L'a' + 10;
    else if (c >= L'A' && c <= L'F') digit = c - L'A' + 10;
    else return std::nullopt;
    value = value * 16 + static_cast<std::uint64_t>(digit);
  }
  if (value == 0) return std::nullopt;
  return QaDbHandle(value);
}

// "#1A,#2B" or "#1A #2B": every token must be a handle.
std::optional<std::vector<QaDbHandle>> parseHandles(std::wstring_view text) {
  std::vector<QaDbHandle> handles;
  std::size_t pos = 0;
  while (pos < text.size()) {
    auto end = text.find_first_of(L", \t", pos);
    if (end == std::wstring_view::npos) end = text.size();
    if (end > pos) {
      auto handle = parseHandle(text.substr(pos, end - pos));
      if (!handle) return std::nullopt;
      handles.push_back(*handle);
    }
    pos = end + 1;
  }
  if (handles.empty()) return std::nullopt;
  return handles;
}

}  // namespace

std::optional<QaGePoint3d> qaedParsePoint(std::wstring_view text) {
  std::vector<double> parts;
  std::size_t pos = 0;
  text = trim(text);
  if (text.empty()) return std::nullopt;
  while (true) {
    auto comma = text.find(L',', pos);
    auto number = parseNumber(text.substr(pos, comma == std::wstring_view::npos ? std::wstring_view::npos : comma - pos));
    if (!number) return std::nullopt;
    parts.push_back(*number);
    if (comma == std::wstring_view::npos) break;
    pos = comma + 1;
  }
  if (parts.size() < 2 || parts.size() > 3) return std::nullopt;
  return QaGePoint3d(parts[0], parts[1], parts.size() == 3 ? parts[2] : 0.0);
}

QaEdInput qaedParseInput(std::wstring_view raw, QaEdRequest::Kind kind) {
  using Kind = QaEdRequest::Kind;
  const auto text = trim(raw);
  if (text.empty()) return QaEdInput::enter();
  const auto word = lower(text);
  if (word == L"cancel" || word == L"esc") return QaEdInput::cancel();
  if (kind != Kind::Text) {
    if (auto point = qaedParsePoint(text); point && kind != Kind::Selection) return QaEdInput::ofPoint(*point);
    if (auto handles = parseHandles(text); handles && (kind == Kind::Selection || handles->size() == 1)) {
      QaEdInput in = QaEdInput::of(QaEdInput::Kind::Handles);
      in.handles = std::move(*handles);
      return in;
    }
  }
  if (kind == Kind::Selection) {
    if (word == L"all") return QaEdInput::of(QaEdInput::Kind::All);
    if (word.starts_with(L"window ")) {
      auto corners = trim(text.substr(7));
      auto blank = corners.find_first_of(L" \t");
      if (blank != std::wstring_view::npos) {
        auto a = qaedParsePoint(corners.substr(0, blank));
        auto b = qaedParsePoint(corners.substr(blank + 1));
        if (a && b) {
          QaEdInput in = QaEdInput::of(QaEdInput::Kind::Window);
          in.point = *a;
          in.corner = *b;
          return in;
        }
      }
    }
  }
  return QaEdInput::ofText(std::wstring(text));
}

std::optional<std::wstring> qaedMatchKeyword(std::wstring_view text, const std::vector<std::wstring>& keywords) {
  const auto wanted = lower(trim(text));
  if (wanted.empty()) return std::nullopt;
  std::optional<std::wstring> found;
  int prefixMatches = 0;
  for (const auto& keyword : keywords) {
    const auto candidate = lower(keyword);
    if (candidate == wanted) return keyword;
    if (candidate.starts_with(wanted)) {
      found = keyword;
      ++prefixMatches;
    }
  }
  if (prefixMatches == 1) return found;
  return std::nullopt;
}

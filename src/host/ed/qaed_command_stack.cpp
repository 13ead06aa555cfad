#include "host/ed/qaed_command_stack.h"

#include "host/ed/qaut_printf.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/utf8.h"

#include <algorithm>
#include <cwctype>
#include <exception>

namespace {

bool sameName(std::wstring_view a, std::wstring_view b) {
  auto lower = [](wchar_t c) { return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c - L'A' + L'a') : c; };
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [&](wchar_t x, wchar_t y) { return lower(x) == lower(y); });
}

// Restores the running command's name when a run ends, however it ends.
class ActiveCommand {
 public:
  ActiveCommand(std::wstring& slot, const std::wstring& name) : slot_(slot), previous_(slot) { slot_ = name; }
  ~ActiveCommand() { slot_ = previous_; }
  ActiveCommand(const ActiveCommand&) = delete;
  ActiveCommand& operator=(const ActiveCommand&) = delete;

 private:
  std::wstring& slot_;
  std::wstring previous_;
};

}  // namespace

Qa::ErrorStatus QaEdCommandStack::addCommand(const std::wstring& group, const std::wstring& globalName,
                                             const std::wstring& localName, int flags, QaEdCommandFunction handler,
                                             const QaLangResource* resource) {
  if (group.empty() || globalName.empty() || localName.empty() || !handler) return Qa::eInvalidInput;
  if (lookupGlobalCmd(globalName) || lookupLocalCmd(localName)) return Qa::eDuplicateKey;
  commands_.push_back(QaEdCommand{group, globalName, localName, flags, std::move(handler), resource});
  return Qa::eOk;
}

Qa::ErrorStatus QaEdCommandStack::removeCmd(const std::wstring& group, const std::wstring& globalName) {
  auto it = std::find_if(commands_.begin(), commands_.end(), [&](const QaEdCommand& c) {
    return sameName(c.group, group) && sameName(c.globalName, globalName);
  });
  if (it == commands_.end()) return Qa::eKeyNotFound;
  commands_.erase(it);
  return Qa::eOk;
}

Qa::ErrorStatus QaEdCommandStack::removeGroup(const std::wstring& group) {
  const auto before = commands_.size();
  std::erase_if(commands_, [&](const QaEdCommand& c) { return sameName(c.group, group); });
  return commands_.size() == before ? Qa::eKeyNotFound : Qa::eOk;
}

const QaEdCommand* QaEdCommandStack::lookupGlobalCmd(std::wstring_view name) const {
  for (const auto& c : commands_)
    if (sameName(c.globalName, name)) return &c;
  return nullptr;
}

const QaEdCommand* QaEdCommandStack::lookupLocalCmd(std::wstring_view name) const {
  for (const auto& c : commands_)
    if (sameName(c.localName, name)) return &c;
  return nullptr;
}

const QaEdCommand* QaEdCommandStack::lookupCmd(std::wstring_view typed) const {
  if (typed.starts_with(L'_')) {
    // "_name" is the language-independent spelling; a global name may itself begin
    // with "_", so both forms are tried.
    if (const auto* c = lookupGlobalCmd(typed)) return c;
    return lookupGlobalCmd(typed.substr(1));
  }
  if (const auto* c = lookupLocalCmd(typed)) return c;
  return lookupGlobalCmd(typed);
}

std::vector<const QaEdCommand*> QaEdCommandStack::commandsOfGroup(std::wstring_view group) const {
  std::vector<const QaEdCommand*> out;
  for (const auto& c : commands_)
    if (sameName(c.group, group)) out.push_back(&c);
  return out;
}

std::vector<std::wstring> QaEdCommandStack::groups() const {
  std::vector<std::wstring> out;
  for (const auto& c : commands_)
    if (std::none_of(out.begin(), out.end(), [&](const std::wstring& g) { return sameName(g, c.group); }))
      out.push_back(c.group);
  return out;
}

std::optional<int> QaEdCommandStack::invoke(std::wstring_view typed) {
  const QaEdCommand* found = lookupCmd(typed);
  if (!found) {
    qautPrintf(L"%ls", KrmLoadString(9505, L"\n未知命令\"%1\"。", {typed}).c_str());
    return std::nullopt;
  }
  if (!active_.empty() && !(found->flags & QA_CMD_TRANSPARENT)) {
    qautPrintf(L"%ls", KrmLoadString(9506, L"\n命令 %1 正在运行, 不能启动 %2。", {active_, found->localName}).c_str());
    return std::nullopt;
  }
  // A copy: the handler may change the command table (unloading its own module).
  const QaEdCommand command = *found;
  ActiveCommand running(active_, command.globalName);
  QaResourceScope resource(command.resource ? command.resource : qaResourceHandle());
  try {
    return command.handler();
  } catch (const std::exception& e) {
    qautPrintf(L"%ls", KrmLoadString(9507, L"\n命令 %1 异常结束: %2", {command.localName, tabulon::svc::fromUtf8(e.what())}).c_str());
    return std::nullopt;
  }
}

QaEdCommandStack& qaedCommandStack() {
  static QaEdCommandStack stack;
  return stack;
}

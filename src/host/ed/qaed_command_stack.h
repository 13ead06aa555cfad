// The host's command stack: commands registered by group with a global name (typed
// with a leading "_" in any language) and a local name, flags and a handler. Invoking
// a command makes the module's language resource current for its run and ends it
// cleanly when it fails: an exception that leaves a handler is reported on the command
// line and the command ends there.
#pragma once

#include "host/db/qa_error_status.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QaLangResource;

// Command flags with the host's numbers.
constexpr int QA_CMD_MODAL = 0x1;              // runs only when no other command runs
constexpr int QA_CMD_TRANSPARENT = 0x2;        // may run inside another command
constexpr int QA_CMD_NO_RESOURCE = 0x200000;   // the command does not carry its module's resource

// A command's handler answers 1 when it did its work, 0 otherwise.
using QaEdCommandFunction = std::function<int()>;

struct QaEdCommand {
  std::wstring group;
  std::wstring globalName;
  std::wstring localName;
  int flags = 0;
  QaEdCommandFunction handler;
  const QaLangResource* resource = nullptr;  // made current while the command runs; not owned
};

class QaEdCommandStack {
 public:
  QaEdCommandStack() = default;
  QaEdCommandStack(const QaEdCommandStack&) = delete;
  QaEdCommandStack& operator=(const QaEdCommandStack&) = delete;

  // eDuplicateKey when a command of that global or local name exists (in any group),
  // eInvalidInput for an empty group or name or a missing handler.
  Qa::ErrorStatus addCommand(const std::wstring& group, const std::wstring& globalName, const std::wstring& localName,
                             int flags, QaEdCommandFunction handler, const QaLangResource* resource = nullptr);
  // eKeyNotFound when the group has no command of that global name.
  Qa::ErrorStatus removeCmd(const std::wstring& group, const std::wstring& globalName);
  // Removes every command of the group; eKeyNotFound when it had none.
  Qa::ErrorStatus removeGroup(const std::wstring& group);

  // Names compare without regard to ASCII case. Null when not found.
  const QaEdCommand* lookupGlobalCmd(std::wstring_view name) const;
  const QaEdCommand* lookupLocalCmd(std::wstring_view name) const;
  // What a user types: "_name" looks up global names only, otherwise local names first,
  // then global ones.
  const QaEdCommand* lookupCmd(std::wstring_view typed) const;
  std::vector<const QaEdCommand*> commandsOfGroup(std::wstring_view group) const;
  std::vector<std::wstring> groups() const;

  // Runs a command by what a user types. The handler's answer; nothing when no command
  // has that name, when a modal command is asked for while another runs (a line says
  // so), or when the handler failed with an exception (a line names the failure).
  std::optional<int> invoke(std::wstring_view typed);
  // The global name of the command running now; empty when none runs.
  const std::wstring& activeCommand() const { return active_; }

 private:
  std::vector<QaEdCommand> commands_;
  std::wstring active_;
};

QaEdCommandStack& qaedCommandStack();

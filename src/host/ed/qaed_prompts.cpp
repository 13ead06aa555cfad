#include "host/ed/qaed_prompts.h"

#include "host/ed/qaed_state.h"
#include "host/ed/qaed_user_io.h"
#include "host/rx/qa_lang_resource.h"

#include <sstream>

QaEdState& qaedState() {
  static QaEdState state;
  return state;
}

QaEdInitGet qaedTakeInitGet() {
  auto& state = qaedState();
  QaEdInitGet taken{state.initFlags, std::move(state.keywords)};
  state.initFlags = 0;
  state.keywords.clear();
  return taken;
}

int qaedInitGet(int flags, const wchar_t* keywords) {
  auto& state = qaedState();
  state.initFlags = flags;
  state.keywords.clear();
  if (keywords) {
    std::wistringstream words(keywords);
    std::wstring word;
    while (words >> word) state.keywords.push_back(word);
  }
  return RTNORM;
}

int qaedGetPoint(const QaGePoint3d* base, const wchar_t* prompt, QaGePoint3d& result) {
  const auto init = qaedTakeInitGet();
  QaEdRequest request{QaEdRequest::Kind::Point, prompt ? prompt : L"", std::nullopt, init.keywords};
  if (base) request.base = *base;
  auto& io = qaedUserIO();
  while (true) {
    const QaEdInput input = io.request(request);
    switch (input.kind) {
      case QaEdInput::Kind::Point:
        result = input.point;
        return RTNORM;
      case QaEdInput::Kind::Enter:
        if (init.flags & RSG_NONULL) {
          io.print(KrmLoadString(9502, L"\n需要点或选项关键字。"));
          continue;
        }
        return RTNONE;
      case QaEdInput::Kind::Cancel:
        return RTCAN;
      case QaEdInput::Kind::Text:
        if (auto keyword = qaedMatchKeyword(input.text, init.keywords)) {
          qaedState().lastInput = *keyword;
          return RTKWORD;
        }
        if (init.flags & RSG_OTHER) {
          qaedState().lastInput = input.text;
          return RTKWORD;
        }
        break;
      default:
        break;
    }
    io.print(KrmLoadString(9502, L"\n需要点或选项关键字。"));
  }
}

int qaedGetString(const wchar_t* prompt, std::wstring& result) {
  const auto init = qaedTakeInitGet();
  QaEdRequest request{QaEdRequest::Kind::Text, prompt ? prompt : L"", std::nullopt, init.keywords};
  auto& io = qaedUserIO();
  while (true) {
    const QaEdInput input = io.request(request);
    if (input.kind == QaEdInput::Kind::Cancel) return RTCAN;
    if (input.kind == QaEdInput::Kind::Enter && (init.flags & RSG_NONULL)) {
      io.print(KrmLoadString(9503, L"\n需要输入文字。"));
      continue;
    }
    const std::wstring text = input.kind == QaEdInput::Kind::Text ? input.text : std::wstring();
    if (auto keyword = qaedMatchKeyword(text, init.keywords)) {
      qaedState().lastInput = *keyword;
      return RTKWORD;
    }
    result = text;
    return RTNORM;
  }
}

int qaedGetInput(std::wstring& result) {
  result = qaedState().lastInput;
  return RTNORM;
}

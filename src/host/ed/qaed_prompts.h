// The host's prompts on the command line: qaedInitGet sets keywords and flags for the
// next request; qaedGetPoint asks for a point (with a rubber band from a base point);
// qaedGetString asks for text; after an RTKWORD result qaedGetInput gives the keyword
// or text that was entered. Results are the RT codes of qaed_result_codes.h.
#pragma once

#include "host/ed/qaed_result_codes.h"
#include "host/ge/qage_point3d.h"

#include <string>

// `keywords`: words separated by blanks (null or empty for none). Holds for the next
// request only. Returns RTNORM.
int qaedInitGet(int flags, const wchar_t* keywords);

// RTNORM with the point in `result`; RTNONE on Enter (unless RSG_NONULL); RTKWORD on a
// keyword (or on any text with RSG_OTHER); RTCAN on cancel. Another answer is refused
// with a line on the command line and the question is asked again. `base` may be null.
int qaedGetPoint(const QaGePoint3d* base, const wchar_t* prompt, QaGePoint3d& result);

// RTNORM with the text (Enter gives an empty text unless RSG_NONULL); RTKWORD when the
// text is one of the keywords; RTCAN on cancel.
int qaedGetString(const wchar_t* prompt, std::wstring& result);

// The keyword or text of the last RTKWORD answer. RTNORM.
int qaedGetInput(std::wstring& result);

// Result codes of the host's user-input functions and the flags of qaedInitGet, with
// the host's own numbers.
#pragma once

constexpr int RTNORM = 5100;   // the request was answered
constexpr int RTNONE = 5000;   // plain Enter
constexpr int RTERROR = -5001; // nothing usable (an empty selection, a miss)
constexpr int RTCAN = -5002;   // cancelled (Esc, end of input)
constexpr int RTREJ = -5003;   // the request itself was invalid
constexpr int RTFAIL = -5004;  // the host could not serve the request
constexpr int RTKWORD = -5005; // a keyword or other text; read it with qaedGetInput

// qaedInitGet flags that the input functions honour.
constexpr int RSG_NONULL = 1;   // Enter is not an answer: ask again
constexpr int RSG_OTHER = 128;  // any text is returned as RTKWORD, not only keywords

// How the authoring dialogs refuse an input: the user reads the reason in a warning
// box, and the caller gets it as an error on the field that was refused.
#pragma once

#include <string>

#include "host/svc/result.h"

tabulon::Error KrmRefuse(const std::wstring& text, const std::string& field);

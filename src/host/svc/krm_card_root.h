// The card root folder of the running plug-in: a process-wide text, "Cards" until the
// plug-in initialises it and resolved afresh by every command, so that the folder of
// the current drawing takes effect at once. Stored without a trailing separator; users
// add one.
#pragma once

#include <string>

// The card root as last resolved.
const std::wstring& KrmCardRoot();
void KrmSetCardRoot(const std::wstring& root);

// Asks KRM_STD_SERVICE for the library folder of the working database, removes all
// trailing separators ('/' and '\'), stores the result as the card root and answers
// whether it is non-empty. Throws std::runtime_error when the service is missing.
bool KrmResolveCardRoot();

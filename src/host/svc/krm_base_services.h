// The suite's base services in the host's "ServiceDictionary": the host puts them there
// when it starts (before any plug-in loads) and takes them out when it stops.
#pragma once

inline constexpr wchar_t KRM_STD_SERVICE[] = L"KRM_STD_SERVICE";
inline constexpr wchar_t KRM_REG_SERVICE[] = L"KRM_REG_SERVICE";
inline constexpr wchar_t KRM_FRM_SERVICE[] = L"KRM_FRM_SERVICE";

// Registers KrmStdService, KrmRegService and KrmFrmService under their names; a service
// already there stays (so a program or test may put its own first).
void KrmRegisterBaseServices();
// Removes the three names from the dictionary.
void KrmUnregisterBaseServices();

// Pictures of the studio's dialogs: each dialog opened on the card library and the
// drawing open in the window, shown, drawn into DIR/<dialog>.png and closed again. For
// the documentation and for looking at the texts of each language. The window and
// strings belong to the caller.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/svc/result.h"

namespace tabulon::ui {

class StudioWindow;
class UiStrings;

// Saves one picture per dialog into `dir` (made when missing) and answers the names of
// the files written. The library is the card root the commands use; the current
// drawing of `window` is the one the drawing-bound dialogs work on. An error names the
// picture that could not be written.
Result<std::vector<std::string>> SaveDialogGallery(StudioWindow &window, const UiStrings &strings,
                                                   const std::filesystem::path &dir);

}  // namespace tabulon::ui

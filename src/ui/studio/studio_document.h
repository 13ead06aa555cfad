// What the studio keeps for one open drawing besides the host's document: its view,
// the rendered scene with its index, whether it changed since it was last saved, and
// its undo history. Owned by the studio window; the document is the document
// manager's and outlives this record.
#pragma once

#include <memory>

#include "ui/studio/drawing_history.h"

class QaApDocument;

namespace tabulon::ui {

class DrawingView;
class SceneIndex;

struct StudioDocument {
  QaApDocument *document = nullptr;
  DrawingView *view = nullptr;  // owned by the window's tab widget
  std::shared_ptr<const SceneIndex> index;
  bool changed = false;
  DrawingHistory history;
};

// Renders model space of the document's drawing and indexes it.
std::shared_ptr<const SceneIndex> IndexDrawing(QaApDocument &document);

}  // namespace tabulon::ui

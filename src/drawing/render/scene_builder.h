// Builds the RenderScene of a drawing's model space: each visible entity in drawing
// order, block references expanded with their transforms (nested ones too) and their
// attributes, colours resolved through ByLayer and ByBlock, layers that are off or
// frozen left out. Reads the database only; objects that do not open are skipped.
#pragma once

#include <string>

#include "drawing/render/render_scene.h"

class QaDbDatabase;

namespace tabulon::render {

struct RenderOptions {
  // Font family named on every text (the font that measures CJK text here).
  std::wstring fontFamily = L"WenQuanYi Micro Hei";
};

RenderScene BuildModelSpaceScene(QaDbDatabase& db, const RenderOptions& options = {});

}  // namespace tabulon::render

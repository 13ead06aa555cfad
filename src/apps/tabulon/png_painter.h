// Paints a RenderScene into a PNG file with Qt's raster painter, using the same frame
// as the SVG writer (white sheet, view on the extents). Text is set in the scene's
// font family. Needs no display: Qt runs on its offscreen platform when no
// application object exists yet.
#pragma once

#include <filesystem>
#include <string>

#include "drawing/render/render_scene.h"
#include "drawing/render/svg_writer.h"

namespace tabulon::cli {

// False, with a reason in `error`, when the image cannot be made or saved.
bool PaintPng(const tabulon::render::RenderScene& scene, const tabulon::render::SvgOptions& options,
              const std::filesystem::path& path, std::string& error);

}  // namespace tabulon::cli

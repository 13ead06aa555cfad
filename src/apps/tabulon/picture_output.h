// Writing a picture of a drawing for the `tabulon` program: an SVG through the core's
// writer, or a PNG painted with Qt from the same scene. The kind follows the file's
// extension.
#pragma once

#include <filesystem>

class QaDbDatabase;

namespace tabulon::render {
struct RenderScene;
}

namespace tabulon::cli {

// True for the extensions WritePicture knows (".svg", ".png", any case).
bool IsPictureFile(const std::filesystem::path& path);

// Draws model space of `db` into `path`; the longer side has `pixelSize` pixels.
// Throws CliError for another extension or when the file cannot be written.
void WritePicture(QaDbDatabase& db, const std::filesystem::path& path, int pixelSize = 1600);
void WritePicture(const tabulon::render::RenderScene& scene, const std::filesystem::path& path, int pixelSize = 1600);

}  // namespace tabulon::cli

#include "picture_output.h"

#include <algorithm>
#include <cctype>
#include <fstream>

#include "cli_command.h"
#include "drawing/render/scene_builder.h"
#include "drawing/render/svg_writer.h"
#include "png_painter.h"

namespace tabulon::cli {

namespace {

std::string lowerExtension(const std::filesystem::path& path) {
  std::string ext = path.extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
  return ext;
}

}  // namespace

bool IsPictureFile(const std::filesystem::path& path) {
  const std::string ext = lowerExtension(path);
  return ext == ".svg" || ext == ".png";
}

void WritePicture(const tabulon::render::RenderScene& scene, const std::filesystem::path& path, int pixelSize) {
  tabulon::render::SvgOptions options;
  options.pixelSize = std::max(16, pixelSize);
  const std::string ext = lowerExtension(path);
  if (ext == ".svg") {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) throw CliError("cannot write " + path.string());
    tabulon::render::WriteSvg(scene, out, options);
    out.close();
    if (!out) throw CliError("cannot write " + path.string());
    return;
  }
  if (ext == ".png") {
    std::string error;
    if (!PaintPng(scene, options, path, error)) throw CliError(error);
    return;
  }
  throw CliError("the picture " + path.string() + " must end in .svg or .png");
}

void WritePicture(QaDbDatabase& db, const std::filesystem::path& path, int pixelSize) {
  WritePicture(tabulon::render::BuildModelSpaceScene(db), path, pixelSize);
}

}  // namespace tabulon::cli

// `tabulon render DRAWING -o FILE.svg|.png`: a picture of a drawing's model space.
#include <cstdio>
#include <memory>

#include "cli_command.h"
#include "drawing/render/scene_builder.h"
#include "host/db/qadb_database.h"
#include "host/ap/qa_host_session.h"
#include "host/ed/qaed_scripted_io.h"
#include "picture_output.h"

namespace tabulon::cli {
namespace {

struct RenderArgs {
  std::string drawing;
  std::string output;
  int size = 1600;
  std::string window;  // "x0,y0,x1,y1": only this part of the drawing
};

// The box of a window given as four numbers.
QaDbExtents parseWindow(const std::string& text) {
  double v[4];
  char tail = 0;
  if (std::sscanf(text.c_str(), "%lf,%lf,%lf,%lf%c", &v[0], &v[1], &v[2], &v[3], &tail) != 4 || v[0] == v[2] ||
      v[1] == v[3])
    throw CliError("--window takes x0,y0,x1,y1 with two different corners, not \"" + text + "\"");
  return QaDbExtents(QaGePoint3d(v[0], v[1], 0), QaGePoint3d(v[2], v[3], 0));
}

void runRender(const RenderArgs& args) {
  if (!IsPictureFile(args.output)) throw CliError("the picture " + args.output + " must end in .svg or .png");
  QaEdScriptedIO io;
  QaHostSession session(io);
  QaDbDatabase db(false);
  std::string error;
  if (db.readDwgFile(args.drawing, 0, &error) != Qa::eOk)
    throw CliError(error.empty() ? "cannot read " + args.drawing : error);
  tabulon::render::RenderScene scene = tabulon::render::BuildModelSpaceScene(db);
  if (!args.window.empty()) scene.extents = parseWindow(args.window);
  WritePicture(scene, args.output, args.size);
}

const CliCommand registration(70, [](CLI::App& app, GlobalOptions&) {
  auto args = std::make_shared<RenderArgs>();
  auto* sub = app.add_subcommand("render", "draw the model space of a drawing as an SVG or PNG picture");
  sub->add_option("drawing", args->drawing, "the DXF drawing")->required()->check(CLI::ExistingFile);
  sub->add_option("-o,--output", args->output, "the picture, ending in .svg or .png")->required();
  sub->add_option("--size", args->size, "pixels of the picture's longer side (default 1600)")
      ->check(CLI::Range(16, 20000));
  sub->add_option("--window", args->window, "draw only the box x0,y0,x1,y1 of the drawing");
  sub->callback([args] { runRender(*args); });
});

}  // namespace
}  // namespace tabulon::cli

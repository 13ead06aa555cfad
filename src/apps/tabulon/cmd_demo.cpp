// `tabulon demo [DIR]`: the sample library, an assembly drawing, a batch of process
// cards and a parts list card from the bill of materials, saved as DIR/demo.dxf with
// pictures beside it.
#include <unistd.h>

#include <chrono>
#include <iomanip>
#include <iostream>
#include <memory>

#include "cli_command.h"
#include "host/ap/qa_host_session.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/db/qadb_database.h"
#include "host/svc/utf8.h"
#include "picture_output.h"
#include "samples/sample_demo.h"

namespace tabulon::cli {
namespace {

struct DemoArgs {
  std::string folder = "tabulon-demo";
  int size = 4000;
  bool png = true;
};

void runDemo(const DemoArgs& args) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  const bool terminal = isatty(STDERR_FILENO) != 0;
  tabulon::samples::DemoOptions options;
  options.folder = std::filesystem::absolute(args.folder);
  if (terminal) {
    options.progress = [start](const std::string& step) {
      const double s = std::chrono::duration<double>(Clock::now() - start).count();
      std::cerr << "\r\033[K[" << std::fixed << std::setprecision(1) << s << " s] " << step << "..." << std::flush;
    };
  }
  tabulon::samples::DemoResult result;
  try {
    result = tabulon::samples::RunSampleDemo(options);
  } catch (const std::exception& e) {
    if (terminal) std::cerr << "\r\033[K";
    throw CliError(e.what());
  }
  if (options.progress) options.progress("drawing the pictures");
  QaEdScriptedIO io;
  QaHostSession session(io);
  QaDbDatabase db(false);
  std::string error;
  if (db.readDwgFile(result.drawing, 0, &error) != Qa::eOk) throw CliError(error);
  const auto svg = options.folder / "demo.svg";
  WritePicture(db, svg, 1600);
  std::filesystem::path png;
  if (args.png) {
    png = options.folder / "demo.png";
    WritePicture(db, png, args.size);
  }
  if (terminal) std::cerr << "\r\033[K";

  std::cout << "Sample card library: " << result.library.string() << "\n";
  std::cout << "Options (frames, BOM): " << result.options.string() << "\n";
  for (const auto& card : result.cards)
    std::cout << "  " << tabulon::svc::toUtf8(card.name) << " — " << tabulon::svc::toUtf8(card.part) << ": "
              << card.rows << " rows on " << card.pages << (card.pages == 1 ? " page\n" : " pages\n");
  if (result.batchPages > 0) std::cout << "Process card batch: " << result.batchPages << " pages numbered in one run\n";
  if (result.bomRows > 0)
    std::cout << "Bills of materials of " << result.bomFrames << " frames: " << result.bomRows
              << " rows into the parts list card\n";
  std::cout << "Drawing: " << result.drawing.string() << " (" << result.entities << " entities)\n";
  std::cout << "Picture: " << svg.string() << (png.empty() ? "" : " and " + png.string()) << "\n";
  std::cout << "Try the export on two frames:\n  TABULON_HOME=" << result.options.parent_path().string()
            << " tabulon --library " << result.library.string() << " bom " << result.assembly.string()
            << " --answer '' --answer 0,-310 -o " << (options.folder / "assembly-bom.dxf").string() << "\n";
}

const CliCommand registration(10, [](CLI::App& app, GlobalOptions&) {
  auto args = std::make_shared<DemoArgs>();
  auto* sub = app.add_subcommand("demo", "build the sample library and a drawing full of cards, with pictures");
  sub->add_option("dir", args->folder, "folder for the library, the drawing and the pictures (default ./tabulon-demo)");
  sub->add_option("--size", args->size, "pixels of the PNG picture's longer side (default 4000)")
      ->check(CLI::Range(200, 20000));
  sub->add_flag("!--no-png", args->png, "write the SVG picture only");
  sub->callback([args] { runDemo(*args); });
});

}  // namespace
}  // namespace tabulon::cli

// The studio's drawing view on the large drawing, offscreen, with the view's own
// rendering: the time to the first complete picture (reading the file, rendering the
// scene, indexing it and painting the window), and one pan step and one zoom step,
// both at the whole drawing and zoomed in on a part of it.
#include <QApplication>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>

#include "drawing/render/scene_builder.h"
#include "host/db/qadb_database.h"
#include "large_drawing.h"
#include "ui/view/drawing_view.h"
#include "ui/view/scene_index.h"

namespace {

const std::filesystem::path& drawingPath() {
  static const std::filesystem::path path = [] {
    auto p = std::filesystem::temp_directory_path() / "tabulon_studio_view_bench.dxf";
    tabulon::bench::WriteLargeDrawing(p);
    return p;
  }();
  return path;
}

std::shared_ptr<const tabulon::ui::SceneIndex> loadAndIndex(QaDbDatabase& db) {
  std::string error;
  if (db.readDwgFile(drawingPath(), 0, &error) != Qa::eOk) std::abort();
  return std::make_shared<tabulon::ui::SceneIndex>(tabulon::render::BuildModelSpaceScene(db));
}

constexpr int kWidth = 1600, kHeight = 900;

void BM_FirstPicture(benchmark::State& state) {
  drawingPath();
  for (auto _ : state) {
    QaDbDatabase db(false);
    tabulon::ui::DrawingView view;
    view.resize(kWidth, kHeight);
    view.setIndex(loadAndIndex(db));
    view.renderNow();
    benchmark::DoNotOptimize(view.picture().constBits());
  }
}
BENCHMARK(BM_FirstPicture)->Unit(benchmark::kMillisecond)->Iterations(3);

// The same road in its four stages, as counters in milliseconds.
void BM_FirstPictureStages(benchmark::State& state) {
  drawingPath();
  using Clock = std::chrono::steady_clock;
  auto ms = [](Clock::time_point a, Clock::time_point b) { return std::chrono::duration<double, std::milli>(b - a).count(); };
  double load = 0, scene = 0, index = 0, paint = 0;
  for (auto _ : state) {
    const auto t0 = Clock::now();
    QaDbDatabase db(false);
    std::string error;
    if (db.readDwgFile(drawingPath(), 0, &error) != Qa::eOk) std::abort();
    const auto t1 = Clock::now();
    auto built = tabulon::render::BuildModelSpaceScene(db);
    const auto t2 = Clock::now();
    auto indexed = std::make_shared<tabulon::ui::SceneIndex>(std::move(built));
    const auto t3 = Clock::now();
    tabulon::ui::DrawingView view;
    view.resize(kWidth, kHeight);
    view.setIndex(indexed);
    view.renderNow();
    const auto t4 = Clock::now();
    load += ms(t0, t1);
    scene += ms(t1, t2);
    index += ms(t2, t3);
    paint += ms(t3, t4);
  }
  const double n = static_cast<double>(state.iterations());
  state.counters["load_ms"] = load / n;
  state.counters["scene_ms"] = scene / n;
  state.counters["index_ms"] = index / n;
  state.counters["paint_ms"] = paint / n;
}
BENCHMARK(BM_FirstPictureStages)->Unit(benchmark::kMillisecond)->Iterations(2);

// One view on the drawing for the step benchmarks; `zoom` > 1 zooms in about the centre.
struct StepFixture {
  QaDbDatabase db{false};
  tabulon::ui::DrawingView view;
  explicit StepFixture(double zoom) {
    view.resize(kWidth, kHeight);
    view.setIndex(loadAndIndex(db));
    view.renderNow();
    view.zoomAbout(QPointF(kWidth / 2.0, kHeight / 2.0), zoom);
    view.renderNow();
  }
};

void BM_PanStep(benchmark::State& state) {
  StepFixture f(static_cast<double>(state.range(0)));
  double direction = 1.0;
  for (auto _ : state) {
    f.view.panBy(QPointF(40.0 * direction, 25.0 * direction));
    direction = -direction;
    benchmark::DoNotOptimize(f.view.picture().constBits());
  }
}
BENCHMARK(BM_PanStep)->Arg(1)->Arg(8)->Unit(benchmark::kMillisecond);

void BM_ZoomStep(benchmark::State& state) {
  StepFixture f(static_cast<double>(state.range(0)));
  double factor = 1.25;
  for (auto _ : state) {
    f.view.zoomAbout(QPointF(kWidth / 3.0, kHeight / 3.0), factor);
    f.view.renderNow();
    factor = 1.0 / factor;
    benchmark::DoNotOptimize(f.view.picture().constBits());
  }
}
BENCHMARK(BM_ZoomStep)->Arg(1)->Arg(8)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  if (std::getenv("QT_QPA_PLATFORM") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

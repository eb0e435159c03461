// The window with as many items as it takes. Run by tests/window/with_display.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/init.h>

#include <cmath>

#include "apps/system_clock.h"
#include "ui/wx/list_frame.h"
#include "ui/wx/list_view.h"
#include "ui/wx/main_frame.h"
#include "ui/wx/map_frame.h"

namespace {

constexpr int kItems = 100000;

// Of this process, in MB.
double most_memory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

void handle_events() {
  wxTheApp->Yield(true);
  wxTheApp->ProcessPendingEvents();
  wxTheApp->ProcessIdle();
  wxTheApp->Yield(true);
}

// A main window whose store is full of waypoints and track points, as they lie about in the real world.
class FullWindow {
 public:
  FullWindow() {
    for (int i = 0; i < kItems; ++i) {
      const double angle = i * 0.0005;
      store::ItemStore& items = session.items;
      items.start_item();
      items.CurrentItem.position = {51 + std::sin(angle * 1.3) * (i % 97) * 0.01, 7 + std::cos(angle) * 0.9};
      items.CurrentItem.ident = "W" + std::to_string(i * 7 % kItems);
      items.CurrentItem.symbol = 18;
      (void)items.push_waypoint(0);
      items.start_item();
      items.CurrentItem.position = {51 + std::sin(angle) + std::sin(i * 0.1) * 0.01, 7 + std::cos(angle * 0.7)};
      (void)items.push_track();
    }
    frame = new ui::wx::MainFrame(session, display, screen);
    frame->Show();
    handle_events();
  }
  ~FullWindow() {
    session.settings.ExitPrompt = 0;
    frame->Close(true);
    handle_events();
  }

  apps::SystemClock clock;
  ui::wx::WindowScreen screen{clock};
  ui::Display display{screen};
  session::Session session{clock, display, {}};
  ui::wx::MainFrame* frame;
};

void open_a_list(benchmark::State& state) {
  FullWindow window;
  for (auto _ : state) {
    window.frame->show_in_list({'W', 1, 0});
    handle_events();
    state.PauseTiming();
    window.frame->list_frame('W')->Close(true);
    handle_events();
    state.ResumeTiming();
  }
  state.counters["MB"] = most_memory();
}
BENCHMARK(open_a_list)->Unit(benchmark::kMillisecond)->UseRealTime();

void sort_a_list(benchmark::State& state) {
  FullWindow window;
  window.frame->show_in_list({'W', 1, 0});
  handle_events();
  auto& list = dynamic_cast<ui::wx::ListView&>(window.frame->list_frame('W')->pane());
  for (auto _ : state) {
    list.sort(0);
    handle_events();
  }
}
BENCHMARK(sort_a_list)->Unit(benchmark::kMillisecond)->UseRealTime();

void draw_the_map(benchmark::State& state) {
  FullWindow window;
  window.frame->show_on_map({});
  handle_events();
  ui::wx::MapCanvas& canvas = window.frame->map_frame()->canvas();
  canvas.show_all();
  if (state.range(0) != 1) canvas.zoom(static_cast<double>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(ui::wx::bitmap_of(canvas.drawing(), canvas.GetClientSize(), 1));
  state.counters["MB"] = most_memory();
}
BENCHMARK(draw_the_map)->Arg(1)->Arg(20)->Unit(benchmark::kMillisecond)->UseRealTime();

class BenchProgram : public wxApp {
 public:
  bool OnInit() override { return true; }
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  wxApp::SetInstance(new BenchProgram);
  if (!wxEntryStart(argc, argv) || !wxTheApp->CallOnInit()) return 1;
  wxTheApp->SetExitOnFrameDelete(false);
  {
    wxEventLoop loop;
    const wxEventLoopActivator active(&loop);
    benchmark::RunSpecifiedBenchmarks();
  }
  wxTheApp->OnExit();
  wxEntryCleanup();
  return 0;
}

#include "ui/small_windows.h"

#include <QShortcut>

#include "forms/form.h"
#include "ui/widgets/focus_ring.h"

namespace quorvane {
namespace {

constexpr Look kText = Look::Left | Look::Top;
constexpr Look kButton = Look::Bold | Look::White;

}  // namespace

FormDesign TimerDesign() {
  FormDesign design;
  design.width = 420;
  design.height = 286;
  design.home = "cmdClose";
  design.texts = {{"Stopwatch resolution", {16, 14, 190, 30}, 12},
                  {"Stopwatch frequency", {16, 48, 190, 30}, 12}};
  design.places = {
      {"lblResolution", {212, 14, 192, 30}, 13, Look::Bold | Look::Border | Look::White, "Resolution"},
      {"lblFrequency", {212, 48, 192, 30}, 13, Look::Bold | Look::Border | Look::White, "Frequency"},
      {"fraGranularity", {12, 92, 396, 66}, 12, Look::Bold, "Display timer"}};
  for (int i = 0; i < 4; ++i) {
    design.places.push_back({IndexedName("optGranularity", i), {24 + 95 * i, 118, 90, 30}, 13, Look::Left});
  }
  design.places.push_back({"lblExplained", {16, 166, 388, 66}, 11, kText});
  design.places.push_back({"cmdClose", {152, 238, 116, 36}, 13, kButton, {}, {}, 'C'});
  return design;
}

FormDesign KeyboardDesign() {
  FormDesign design;
  design.width = 560;
  design.height = 400;
  design.home = "cmdClose";
  for (int lane = 1; lane <= 4; ++lane) {
    design.places.push_back(
        {IndexedName("lblLane", lane), {170 + 96 * (lane - 1), 10, 90, 32}, 13, Look::Bold});
  }
  for (int row = 0; row < 4; ++row) {
    const int top = 46 + 40 * row;
    design.places.push_back({IndexedName("lblAction", row), {16, top, 150, 36}, 12, Look::Left | Look::Bold});
    for (int lane = 0; lane < 4; ++lane) {
      design.places.push_back({IndexedName("lblKey", 4 * row + lane),
                               {170 + 96 * lane, top, 90, 36},
                               16,
                               Look::Bold | Look::Border | Look::White,
                               "Key of lane " + std::to_string(lane + 1)});
    }
  }
  design.places.push_back({"lblNotes", {16, 214, 528, 132}, 11, kText});
  design.places.push_back({"cmdClose", {222, 354, 116, 36}, 13, kButton, {}, {}, 'C'});
  return design;
}

FormDesign AboutDesign() {
  FormDesign design;
  design.width = 460;
  design.height = 296;
  design.home = "cmdClose";
  design.places = {{"lblName", {20, 14, 420, 50}, 30, Look::Bold},
                   {"lblVersion", {20, 66, 420, 28}, 13, Look::Bold},
                   {"lblPurpose", {20, 98, 420, 28}, 12},
                   {"lblCredits", {20, 138, 420, 60}, 11, Look::Top},
                   {"lblBuiltWith", {20, 202, 420, 28}, 11},
                   {"cmdClose", {172, 246, 116, 36}, 13, kButton, {}, {}, 'C'}};
  return design;
}

void AddSmallWindows(Program& program, Windows& windows, FormWindow& console) {
  program.about().SetLibraries(std::string("Qt ") + qVersion());
  const auto add = [&](Form& form, FormDesign design) {
    const QSize least(design.width * 3 / 4, design.height * 3 / 4);
    FormWindow& window = windows.AddWindow(form, std::move(design), least, &console);
    new FocusRing(&window);
    QObject::connect(new QShortcut(Qt::Key_Escape, &window), &QShortcut::activated, &window,
                     [&window] { window.close(); });
  };
  add(program.timer(), TimerDesign());
  add(program.keyboard(), KeyboardDesign());
  add(program.about(), AboutDesign());
  windows.ChainTabs();
}

}  // namespace quorvane

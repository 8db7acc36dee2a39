#include "ui/widgets/scheme.h"

#include <algorithm>
#include <array>

#include "ui/widgets/look.h"

namespace quorvane {
namespace {

Scheme current = Scheme::Light;

using Rgb = std::uint32_t;

struct Shade {
  Rgb logic;
  std::array<Rgb, 3> shown;  // light, dark, outdoor
};

constexpr std::array kShades = {
    Shade{0xFFFFFF, {0xFFFFFF, 0x101010, 0xFFFFFF}},
    Shade{0x000000, {0x000000, 0xF2F2F2, 0x000000}},
    Shade{0xC0C0C0, {0xCCCCCC, 0x484848, 0xD4D4D4}},
    Shade{0x404040, {0x404040, 0xC8C8C8, 0x202020}},
    Shade{0xFF0000, {0xD80000, 0xFF7464, 0xA80000}},
    Shade{0x00FF00, {0x30E09C, 0x008C70, 0x20E0A0}},  // a turn, bytes on the radio
    // The clock, the finish and its lap.
    Shade{0xFFFFD0, {0xFFEE66, 0x857200, 0xFFF000}},
    Shade{0xFFC0C0, {0xFFA69C, 0x78002C, 0xFF948C}},
    Shade{0xC0FFC0, {0x30DCA8, 0x007C70, 0x30DCA8}},
    Shade{0x80FF80, {0x30DCA8, 0x007C70, 0x30DCA8}},
    Shade{0xFFC840, {0xFFC840, 0x8A5800, 0xFFB000}},  // the console controls the race
    // The lanes; the blue one is a lap's light as well.
    Shade{0xFF6060, {0xF0402C, 0xD8402C, 0xFF6850}},
    Shade{0x60FF60, {0x30D090, 0x20B890, 0x20D8A0}},
    Shade{0x8080FF, {0x6C8CFF, 0x3F5FE0, 0x80A8FF}},
    Shade{0xFFFF60, {0xFFF27A, 0xF5E860, 0xFFFF50}},
    Shade{0xFF8000, {0xFFA020, 0xF09010, 0xFFA820}},
};

constexpr std::array kButtonFaces = {QColor(0xEE, 0xEE, 0xEE), QColor(0x26, 0x26, 0x26),
                                     QColor(0xF6, 0xF6, 0xF6)};

std::size_t Index() {
  return static_cast<std::size_t>(current);
}

}  // namespace

Scheme CurrentScheme() {
  return current;
}

void SetScheme(Scheme scheme) {
  current = scheme;
}

const SchemeColors& Colors() {
  static const std::array<SchemeColors, 3> kColors = {{{.edge = {0x30, 0x30, 0x30},
                                                        .faintEdge = {0x88, 0x88, 0x88},
                                                        .faintText = {0x66, 0x66, 0x66},
                                                        .focus = {0x10, 0x4E, 0xB4},
                                                        .blue = {0xDB, 0xE9, 0xFF},
                                                        .peach = {0xFF, 0xE3, 0xD6},
                                                        .warning = {0xB0, 0, 0},
                                                        .line = 1,
                                                        .contrast = 4.5},
                                                       {.edge = {0xA8, 0xA8, 0xA8},
                                                        .faintEdge = {0x70, 0x70, 0x70},
                                                        .faintText = {0xA8, 0xA8, 0xA8},
                                                        .focus = {0x7C, 0xB4, 0xFF},
                                                        .blue = {0x1C, 0x3C, 0x70},
                                                        .peach = {0x5C, 0x2C, 0x14},
                                                        .warning = {0xFF, 0x90, 0x80},
                                                        .line = 1,
                                                        .contrast = 4.5},
                                                       {.edge = {0, 0, 0},
                                                        .faintEdge = {0x60, 0x60, 0x60},
                                                        .faintText = {0x48, 0x48, 0x48},
                                                        .focus = {0x00, 0x38, 0xA0},
                                                        .blue = {0xB8, 0xD4, 0xFF},
                                                        .peach = {0xFF, 0xCC, 0xA8},
                                                        .warning = {0x98, 0, 0},
                                                        .line = 2,
                                                        .contrast = 7}}};
  return kColors[Index()];
}

QColor Shown(Color color) {
  if (color == kButtonFace) return kButtonFaces[Index()];
  if (color.SystemColor() != Color::System::None) color = color == kWindow ? kWhite : kBlack;
  const auto* shade = std::find_if(kShades.begin(), kShades.end(),
                                   [&](const Shade& known) { return known.logic == color.Rgb(); });
  return shade == kShades.end() ? ToQColor(color) : QColor(QRgb{shade->shown[Index()]});
}

}  // namespace quorvane

#pragma once

#include <QFlags>
#include <QRect>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {

// How a control is drawn besides what it says itself.
enum class Look : unsigned {
  Plain = 0,
  Bold = 1U << 0,
  Left = 1U << 1,        // text at the left edge instead of in the middle
  Top = 1U << 2,         // text at the upper edge, several lines
  Border = 1U << 3,      // a thin line around it
  Heavy = 1U << 4,       // a thick line around it
  Lamp = 1U << 5,        // thick line and bold while its background is not the plain one
  Words = 1U << 6,       // text that does not fit is cut at a word, not made smaller
  Fixed = 1U << 7,       // letters of one width
  Bare = 1U << 9,        // a frame without a caption
  White = 1U << 10,      // white while the background is the plain one
  Blue = 1U << 11,       // pale blue instead
  Peach = 1U << 12,      // pale orange instead
  Numeric = 1U << 13,    // a text box that takes a number
  Lines = 1U << 14,      // a text box of several lines
  Late = 1U << 15,       // a text box whose change counts when the operator has finished it
  Row = 1U << 17,        // letters as large as those of the others in the row
  RedLine = 1U << 18,    // underlined while its letters are red, where nothing else would say so
  Focusable = 1U << 16,  // a label that can have the focus though it cannot be clicked
};
Q_DECLARE_FLAGS(LookFlags, Look)
Q_DECLARE_OPERATORS_FOR_FLAGS(LookFlags)

// What a control does with the control that it is anchored to.
enum class Anchoring : unsigned char {
  None,
  Stack,   // shares the room under it with the others anchored there
  Beside,  // pops up next to it, above everything
  Cover,   // lies over it
};

// Where and how one control stands in its form as designed. Rectangles are in the form's own design pixels,
// whatever frame the control lies in; font sizes are points at 96 dots per inch in the designed size.
struct Place {
  std::string name;
  QRect rect;
  double points = 12;
  LookFlags look = Look::Plain;
  std::string spoken = {};  // accessible name; a label's caption is added to it
  char mnemonic = 0;        // the letter of the caption that works with Alt
  std::string key = {};     // the console key that does the same, shown on a button
  std::string word = {};    // what a label says while its caption is empty
  Anchoring anchoring = Anchoring::None;
  std::string over = {};  // has the room of the control of this name, too, while that is hidden
};

// A word on the form that is no control.
struct StaticText {
  std::string text;  // & marks the mnemonic of the control named by buddy
  QRect rect;
  double points = 12;
  LookFlags look = Look::Left;
  std::string buddy = {};
  std::string unless = {};  // shown only while the control of this name is hidden
};

// A form as designed. The places are in the order of the Tab key, a frame before what lies in it.
struct FormDesign {
  int width = 0;
  int height = 0;
  std::vector<Place> places = {};
  std::vector<StaticText> texts = {};
  // Menu entries, by name, with the keys that choose them: "Ctrl+Z".
  std::vector<std::pair<std::string, std::string>> shortcuts = {};
  // What the button or menu entry of that name is for, told where the pointer rests on it.
  std::map<std::string, std::string> tips = {};
  std::string home = {};  // the control that has the focus when none of the others can have it
  // Controls stack under their anchor from stackTop down to stackBottom, or to what is shown there.
  int stackTop = 0;
  int stackBottom = 0;
};

}  // namespace quorvane

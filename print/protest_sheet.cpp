#include "print/protest_sheet.h"

#include <fmt/format.h>

#include <array>
#include <functional>
#include <vector>

#include "base/text.h"
#include "print/race_page.h"
#include "print/sheet.h"
#include "records/project.h"
#include "records/race_story.h"

namespace quorvane {
namespace {

constexpr double kRowHeight = 2.3;
constexpr double kRowText = 1.5;
constexpr double kLaneHeight = 4.4;
constexpr double kGap = 2.0;
constexpr double kCommentsHeight = 7.0;
constexpr std::size_t kShortText = 70;
constexpr double kNoteLabel = 14.0;
constexpr Color kDoubtShade = Color::Rgb(0xCCCCCC);

// The columns of the table: left edge, width, how they are set.
struct Column {
  const char* head;
  double left, width;
  Align align;
};
constexpr std::array kColumns = {Column{"Time", 5, 8, Align::Right}, Column{"Entry", 15, 16, Align::Left},
                                 Column{"Split", 31, 7, Align::Right}, Column{"From", 40, 14, Align::Left},
                                 Column{"Remark", 55, 40, Align::Left}};

// A piece of the sheet that no page break divides.
struct Piece {
  double height = 0;
  std::function<void(Sheet&, double top)> draw = {};
  const LaneRecord* lane = nullptr;  // in whose table it stands: its head is repeated on the next page
  bool stays = false;                // on one page with what follows
};

void DrawRow(Sheet& sheet, double top, const std::array<std::string, kColumns.size()>& texts, bool bold) {
  for (std::size_t i = 0; i < kColumns.size(); ++i) {
    const Column& column = kColumns[i];
    sheet.Text({column.left, top + 0.15, column.width, kRowHeight - 0.3}, texts[i], {kRowText, bold},
               column.align);
  }
}

void DrawStoryRow(Sheet& sheet, double top, const StoryRow& row) {
  const Box box{Sheet::kLeft, top, Sheet::kInner, kRowHeight};
  if (row.doubtful) sheet.Rectangle(box, kDoubtShade, Sheet::kThin);
  if (row.correction) sheet.Rectangle({Sheet::kLeft, top + 0.2, 0.5, kRowHeight - 0.4}, kBlack, 0);
  DrawRow(sheet, top, {row.time, row.what, row.split, row.from, row.remark}, row.doubtful);
  sheet.HorizontalRule(Sheet::kLeft, Sheet::kRight, box.Bottom(), Sheet::kHair);
}

std::string LaneResult(const LaneRecord& lane) {
  const std::string time = HasResult(lane) ? "   " + FormatMinutes(FormatSeconds(lane.final)) : "";
  const std::size_t laps = FlownLaps(lane).size();
  return fmt::format("{}{}   {} of {} laps   {} cut{}", lane.placing, time, laps,
                     lane.lapTarget - (lane.novice ? 1 : 0), lane.cuts.size(),
                     lane.cuts.size() == 1 ? "" : "s");
}

// The lane's marking and result, and the heads of the columns.
void DrawLaneHead(Sheet& sheet, double top, const LaneRecord& lane, bool continued) {
  const std::string title = fmt::format("Lane {}", lane.lane);
  DrawMark(sheet, lane, {Sheet::kLeft, top + 0.2, 2.0, 2.2});
  sheet.Text({8, top, 37, 2.5},
             title + (lane.name == title ? "" : "   " + lane.name) + (lane.novice ? "   9 Laps" : "") +
                 (continued ? "   (continued)" : ""),
             {1.8, true});
  sheet.Text({46, top, Sheet::kRight - 46, 2.5}, LaneResult(lane), {1.6, true}, Align::Right);
  for (const Column& column : kColumns) {
    sheet.Caption({column.left, top + 2.5, column.width, 1.8}, column.head, column.align);
  }
  sheet.HorizontalRule(Sheet::kLeft, Sheet::kRight, top + kLaneHeight, Sheet::kThin);
}

// ---- The sheet as pieces from top to bottom.
class ProtestSheet {
 public:
  explicit ProtestSheet(const RaceRecord& race) : race_(race) {
    AddNotes();
    for (const LaneRecord& lane : FlyingLanes(race_)) AddLane(lane);
  }

  // The pieces of each page.
  std::vector<std::vector<Piece>> Pages(double height) const {
    std::vector<std::vector<Piece>> pages(1);
    const double bottom = height - kRaceFootHeight - 1;
    double top = kRaceHeadBottom;
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
      double needed = pieces_[i].height;
      for (std::size_t next = i; pieces_[next].stays; ++next) needed += pieces_[next + 1].height;
      if (top + needed > bottom) {
        pages.emplace_back();
        top = kRaceHeadBottom;
        if (pieces_[i].lane != nullptr) Put(pages.back(), LaneHead(*pieces_[i].lane, true), top);
      }
      Put(pages.back(), pieces_[i], top);
    }
    return pages;
  }

 private:
  static void Put(std::vector<Piece>& page, const Piece& piece, double& top) {
    page.push_back(piece);
    top += piece.height;
  }

  // most: the height that a longer text gets.
  void AddNote(const char* label, const std::string& text, double most) {
    if (text.empty()) return;
    const bool oneLine = text.size() < kShortText && text.find_first_of("\r\n") == std::string::npos;
    const double height = oneLine ? kRowHeight : most;
    pieces_.push_back(
        {height + 0.4, [label, text, height](Sheet& sheet, double top) {
           const double left = Sheet::kLeft + kNoteLabel;
           sheet.Text({Sheet::kLeft, top, kNoteLabel - 1, kRowHeight}, label, {kRowText, true});
           sheet.Wrapped({left, top + 0.2, Sheet::kRight - left, height}, text, {kRowText, false});
         }});
  }

  void AddNotes() {
    AddNote("Unusual", UnusualNote(race_), 2 * kRowHeight);
    AddNote("Radio", race_.radio ? RadioText(*race_.radio) : "no disturbance recorded", 2 * kRowHeight);
    AddNote("Turns", TurnsWereWatched(race_) ? "" : "None was recorded on any lane.", kRowHeight);
    AddNote("Comments", race_.comments, kCommentsHeight);
    for (const AmendedText& comments : race_.amendedComments) {
      AddNote("Until then",
              ProjectDate(comments.when) + " " + TimeOfDay(comments.when) + ": " + comments.before,
              kCommentsHeight);
    }
  }

  static Piece LaneHead(const LaneRecord& lane, bool continued) {
    return {kLaneHeight,
            [&lane, continued](Sheet& sheet, double top) { DrawLaneHead(sheet, top, lane, continued); },
            nullptr, true};
  }

  void AddLane(const LaneRecord& lane) {
    pieces_.push_back({kGap, [](Sheet&, double) {}, nullptr, true});
    pieces_.push_back(LaneHead(lane, false));
    std::vector<StoryRow> rows = StoryOf(race_, lane);
    if (rows.empty()) rows.push_back({.what = "Nothing recorded"});
    for (const StoryRow& row : rows) {
      pieces_.push_back(
          {kRowHeight, [row](Sheet& sheet, double top) { DrawStoryRow(sheet, top, row); }, &lane});
    }
  }

  const RaceRecord& race_;
  std::vector<Piece> pieces_;
};

}  // namespace

int frmProtest::Pages(const Box& page, const RaceRecord& race) {
  if (page.width <= 0 || page.height <= 0) return 1;
  return static_cast<int>(ProtestSheet(race).Pages(Sheet::HeightOf(page)).size());
}

void frmProtest::PrintPage(Surface& surface, const RaceRecord& race, int page, const std::string& program,
                           const LocalDateTime& printed) {
  if (surface.Page().width <= 0 || surface.Page().height <= 0) return;
  Sheet sheet(surface);
  const ProtestSheet protest(race);
  const auto pages = protest.Pages(sheet.Height());
  DrawRaceHead(sheet, race, "Protest Sheet", 28);
  sheet.Text({34, Sheet::kMargin, 45, 4.6}, race.eventName, {2.2, true});
  sheet.Text({80, Sheet::kMargin, Sheet::kRight - 80, 4.6}, fmt::format("page {} of {}", page, pages.size()),
             {1.7, false}, Align::Right);
  double top = kRaceHeadBottom;
  for (const Piece& piece : pages.at(static_cast<std::size_t>(page - 1))) {
    piece.draw(sheet, top);
    top += piece.height;
  }
  DrawRaceFoot(sheet, race, program, printed);
}

}  // namespace quorvane

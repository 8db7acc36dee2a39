#include "console/frm_log.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace quorvane {
namespace {

constexpr double kLongestRace = 3600;  // s, of a lap that is inserted

// "Lap 5", "Cut P2", "Cut withdrawn P2", "Turn". A novice's free lap is not counted, as on the panel.
std::string EntryName(const LaneLog& log, const LaneEvent& event) {
  if (event.Kind == "L") {
    const int free = log.FreeLap();
    if (free >= 0 && &event == &log[free]) return "Free lap";
    return fmt::format("Lap {}", event.Count - (free >= 0 ? 1 : 0));
  }
  if (event.Kind == "T") return "Turn";
  return (event.Kind == "C" ? "Cut " : "Cut withdrawn ") + event.SourceName;
}

// "12.34" or "1:12.34" as ms, also with a decimal comma; 0 for anything else.
std::int32_t TimeIn(const std::string& text) {
  double seconds = 0;
  for (const std::string& part : Split(Replaced(Trimmed(text), ",", "."), ':')) {
    if (part.empty() || part.find_first_not_of("0123456789.") != std::string::npos) return 0;
    if (part.find('.') != part.rfind('.')) return 0;
    seconds = seconds * 60 + LeadingNumber(part);
  }
  return seconds <= kLongestRace ? static_cast<std::int32_t>(std::lround(seconds * 1000)) : 0;
}

}  // namespace

frmLog::frmLog(Door& door, const LanePanels& lanes, UndoStack& undo)
    : Form(door.AllForms(), "frmLog"), door_(door), lanes_(lanes), undo_(undo) {
  SetCaption("Laps and Cuts");
  cboLane.SetItems({"Lane 1", "Lane 2", "Lane 3", "Lane 4"});
  cboLane.SetListIndex(0);
  cboLane.onChange = [this] { ShowLane(cboLane.ListIndex() + 1); };
  lstEntries.onChange = [this] {
    const auto entries = Lane().Events().Entries();
    chosen_ = entries[static_cast<std::size_t>(lstEntries.ListIndex())].Serial;
    refused_.clear();
  };
  cmdStrike.onClick = [this] { cmdStrike_Click(); };
  cmdInsert.onClick = [this] { cmdInsert_Click(); };
  cmdMove.onClick = [this] { cmdMove_Click(); };
  cmdClose.onClick = [this] { CloseRequested(); };
}

void frmLog::ShowLane(int lane) {
  lane_ = lane;
  refused_.clear();
  cboLane.SetListIndex(lane - 1);
}

const LaneEvent* frmLog::Chosen() const {
  const int at = Lane().Events().Find(chosen_);
  return at < 0 ? nullptr : &Lane().Events()[at];
}

void frmLog::Follow(const std::string& locked) {
  if (!Visible()) return;
  const LaneLog& log = Lane().Events();
  const bool sameLog = shownLane_ == lane_ && race_ == Lane().RaceSerial();
  if (!sameLog || revision_ != log.Revision()) {
    const int row = sameLog ? lstEntries.ListIndex() : -1;
    shownLane_ = lane_;
    revision_ = log.Revision();
    race_ = Lane().RaceSerial();
    std::vector<std::string> items;
    for (const LaneEvent& event : log.Entries()) {
      items.push_back(fmt::format("{}\t{}\t{}\t{}", items.size() + 1, FormatSeconds(event.EventTime),
                                  EntryName(log, event), log.MadeBy(event)));
    }
    lstEntries.SetItems(std::move(items));
    // The chosen entry wherever it stands now, or the one in its place; in a log not shown before the last
    // one.
    const int at = sameLog ? log.Find(chosen_) : -1;
    const int last = log.EventCount() - 1;
    lstEntries.SetListIndex(at >= 0 ? at : row >= 0 ? std::min(row, last) : last);
    chosen_ = log.EventCount() == 0 ? 0 : log[lstEntries.ListIndex()].Serial;
  }
  const LaneEvent* chosen = Chosen();
  const auto offer = [&](Control& button, bool fits, const char* unfit) {
    button.Lock(!locked.empty() ? locked : fits ? "" : unfit);
  };
  offer(cmdStrike, chosen != nullptr, "There is no entry to strike");
  offer(cmdMove, chosen != nullptr && chosen->Kind == "C", "Choose a cut that counts");
  offer(cmdInsert, true, "");
  const std::size_t corrections = log.Corrections().size();
  const std::string told = corrections == 0 ? "" : fmt::format("Corrections on this lane: {}", corrections);
  lblTold.SetCaption(!locked.empty() ? locked : !refused_.empty() ? refused_ : told);
}

void frmLog::cmdStrike_Click() {
  if (const auto taken = Lane().Strike(chosen_)) undo_.Struck(lane_, *taken);
}

std::string frmLog::AskText(const std::string& title, const std::string& prompt) {
  const unsigned race = Lane().RaceSerial();
  const std::string text = door_.AskText(title, prompt);
  return race == Lane().RaceSerial() ? text : "";
}

// The lane and the entry are those for which the question was asked: behind it only stations and timers act.
void frmLog::cmdInsert_Click() {
  const std::string text =
      AskText("Insert Lap", fmt::format("Race time in seconds at which lane {} completed the lap:", lane_));
  if (text.empty()) return;
  const std::int32_t time = TimeIn(text);
  const auto serial = time > 0 ? Lane().InsertLap(time) : std::nullopt;
  refused_ = serial ? "" : "No lap of this lane can be at " + text;
  if (!serial) return;
  chosen_ = *serial;
  undo_.Entered(lane_, {*serial});
}

void frmLog::cmdMove_Click() {
  const unsigned cut = chosen_;
  const std::string text = AskText("Move Cut", "The pylon at which it was (1, 2 or 3):");
  if (text.empty()) return;
  const int pylon = text.size() == 1 ? text[0] - '0' : 0;
  refused_ = pylon >= 1 && pylon <= 3 ? "" : "There is no pylon " + text;
  if (refused_.empty()) Lane().MoveCut(cut, pylon);
}

}  // namespace quorvane

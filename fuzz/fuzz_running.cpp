// Any bytes as the file in which a running race is kept: the console starts, takes up whatever can be meant,
// puts it right, flies it to its end, saves it, and what it keeps meanwhile can be taken up again. Where
// nothing can be meant the bytes stay, under another name.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/changes_told.h"
#include "tests/support/console_rig.h"

namespace {

using namespace quorvane;

constexpr const char* kNotBegun = "Race recovered: it had not begun, start it again";

// Returns what is kept of the race a moment later.
std::optional<std::string> TakeUp(const std::string& bytes, std::int64_t later) {
  ConsoleRig rig;
  const std::string path = BesideProject(rig.file, kRunningEnding);
  rig.program.keeper().Keep(path, bytes);
  const ChangesTold changes(rig.program.door().AllForms());
  for (const char* answer : {"4", "Cup"}) rig.Answer(DialogAnswer::Word::Text, answer);
  rig.Answer(DialogAnswer::Word::Yes);
  rig.program.door().Enter({EventKind::Load});
  Require(rig.judge().Visible() && !rig.program.door().DialogOpen());
  const bool taken =
      rig.race().AtStake() || rig.race().Amending || rig.judge().lblNotice.Caption() == kNotBegun;
  Require(taken || bytes.empty() || rig.program.keeper().Read(path + "-1") == bytes);
  if (rig.judge().cmdReset.Enabled()) rig.Key("F1");
  for (const char* hand : {"Judge.mnuUndo", "Judge.mnuUndo", "Judge.mnuRedo", "Lane1.mnuLog", "Log.cmdStrike",
                           "Log.cmdInsert", "Log.cmdMove", "Judge.mnuUndo"}) {
    rig.Answer(DialogAnswer::Word::Text, "2");
    rig.Click(std::string("frm") + hand);
    rig.platform.answers.clear();
  }
  auto kept = rig.program.keeper().Read(path);
  rig.At(later);
  rig.Click("frmJudge.cmdSave");
  rig.At(later + 60000);
  // Times that nobody has flown may keep a lane in the air for ever; the operator can always end it.
  rig.Answer(DialogAnswer::Word::Yes);
  rig.Click("frmJudge.cmdReset");
  Require(!rig.race().AtStake() && !rig.program.keeper().Read(path));
  rig.Click("frmJudge.mnuBringBack");
  for (const auto& [ms, box, answer] : rig.platform.shown) Tell(box.title + " | " + box.text);
  Tell(kept.value_or("not kept") + FileBytes(rig.file));
  return kept;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // The first byte says how long the race goes on.
  if (size == 0) return 0;
  const auto kept = TakeUp(std::string(data + 1, data + size), 1000 + data[0] * std::int64_t{2000});
  if (kept) TakeUp(*kept, 5000);
  return 0;
}

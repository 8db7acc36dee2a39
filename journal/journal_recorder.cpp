#include "journal/journal_recorder.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <fstream>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "base/text.h"
#include "files/background_files.h"
#include "files/file_ops.h"

namespace quorvane {
namespace {

using Kind = JournalRecord::Kind;

constexpr std::string_view kProjectExtension = ".ini";  // what the boxes that ask for a project offer
constexpr std::size_t kMostProjectBytes = std::size_t{64} << 20;
constexpr std::size_t kBlock = std::size_t{64} << 10;  // bytes of the session that are kept together

template <typename Records>
std::string Joined(const Records& records) {
  return fmt::format("{}", fmt::join(records, ""));
}

std::string Reason() {
  return errno == 0 ? "The file cannot be written" : std::strerror(errno);
}

}  // namespace

// A text file that is only added to, by a thread of its own, so that a slow or full disk never delays the
// caller. Text is with the operating system a moment later: a killed program loses its last moment, a power
// failure perhaps the last seconds. The first error ends the writing, and Problem() says why.
class JournalFile {
 public:
  // Makes a new file, or writes to `out`. One that cannot be made, or has contents, is such an error.
  JournalFile(const std::filesystem::path& path, std::unique_ptr<std::ostream> out) : out_(std::move(out)) {
    if (const auto reason = out_ ? std::nullopt : WhyNotWrite(Utf8Of(path), FileKind::Journal)) {
      problem_ = "the file may not be replaced, " + *reason;
      return;
    }
    errno = 0;
    if (!out_) out_ = std::make_unique<std::ofstream>(path, std::ios::binary | std::ios::trunc);
    if (*out_) {
      thread_ = std::thread([this] { Work(); });
    } else {
      problem_ = Reason();
    }
  }
  ~JournalFile() { Close(); }
  JournalFile(const JournalFile&) = delete;
  JournalFile& operator=(const JournalFile&) = delete;

  void Append(std::string text) { Add({0, std::move(text)}); }
  // Puts the text in front of the last `tail` bytes appended, which must be what was appended last.
  void InsertBefore(const std::string& tail, const std::string& text) { Add({tail.size(), text + tail}); }

  // Writes what is left and closes the file. Nothing may be appended any more.
  void Close() {
    {
      const std::lock_guard lock(mutex_);
      closing_ = true;
    }
    wake_.notify_one();
    if (thread_.joinable()) thread_.join();
  }

  // Empty while all is well. From any thread.
  std::string Problem() const {
    const std::lock_guard lock(mutex_);
    return problem_;
  }

 private:
  struct Piece {
    std::size_t back = 0;  // bytes at the end of the file that it replaces
    std::string text;
  };

  void Add(Piece piece) {
    {
      const std::lock_guard lock(mutex_);
      if (!problem_.empty()) return;
      waiting_.push_back(std::move(piece));
    }
    wake_.notify_one();
  }

  void Work() {
    for (;;) {
      std::deque<Piece> pieces;
      {
        std::unique_lock lock(mutex_);
        wake_.wait(lock, [this] { return closing_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        pieces.swap(waiting_);
      }
      errno = 0;
      if (std::ranges::all_of(pieces, [this](const Piece& piece) { return Write(piece); }) && out_->flush()) {
        continue;
      }
      const std::lock_guard lock(mutex_);
      problem_ = Reason();
      waiting_.clear();
      return;
    }
  }

  bool Write(const Piece& piece) {
    if (piece.back > 0) out_->seekp(-static_cast<std::ostream::off_type>(piece.back), std::ios::end);
    out_->write(piece.text.data(), static_cast<std::streamsize>(piece.text.size()));
    return static_cast<bool>(*out_);
  }

  std::unique_ptr<std::ostream> out_;  // the thread's, once it runs
  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<Piece> waiting_;
  std::string problem_;
  bool closing_ = false;
  std::thread thread_;
};

SessionRecorder::SessionRecorder(std::size_t mostBytes) : mostBytes_(mostBytes) {}

SessionRecorder::~SessionRecorder() = default;

void SessionRecorder::Begin(const SessionStart& start) {
  begun_ = true;
  Add(StartRecords(start.start, true));
  for (const JournalSetting& setting : start.settings) {
    const bool replaced =
        !start.project.empty() && setting.section == "DiskFile" && setting.key == "FileName";
    if (!replaced) Add(SettingRecord(setting));
  }
  if (!start.project.empty()) {
    Add(SettingRecord({"DiskFile", "FileName", start.project}));
    KeepProject(start.project);
    // A replay is asked about a project that exists, whoever named it.
    const bool asked = start.projectUnasked && ContentOf(start.project, kMostProjectBytes).has_value();
    if (asked) AddInput({.kind = Kind::Answer, .answer = {DialogAnswer::Word::Yes}});
  }
  AddInput({.event = {.kind = EventKind::Ports, .numbers = start.ports}});
}

// What a project held before the session touched it; the session is about what became of it.
void SessionRecorder::KeepProject(const std::string& path) {
  if (projectsKept_.contains(path)) return;
  std::error_code error;
  const auto same = std::find_if(projectsKept_.begin(), projectsKept_.end(), [&](const std::string& before) {
    return std::filesystem::equivalent(PathOf(path), PathOf(before), error) && !error;
  });
  if (same != projectsKept_.end()) {
    return Add(fmt::format("{}{} {}\n", kSameComment, JsonString(path), JsonString(*same)));
  }
  projectsKept_.insert(path);
  KeepFile(path);
  for (const char* ending : kKeptRaces) KeepFile(BesideProject(path, ending));
}

void SessionRecorder::KeepFile(const std::string& path) {
  if (const auto content = ContentOf(path, kMostProjectBytes)) Add(ProjectComments(path, *content));
}

bool SessionRecorder::Record(const std::filesystem::path& path, std::unique_ptr<std::ostream> out) {
  problem_ = tooLong_ ? "The session is too long by now to be recorded from its start." : "";
  file_.reset();
  if (tooLong_) return false;
  file_ = std::make_unique<JournalFile>(path, std::move(out));
  file_->Append(Joined(session_) + Joined(latest_));
  return true;
}

void SessionRecorder::Stop() {
  if (file_ != nullptr) file_->Append(fmt::format("{}{}\n", kStoppedComment, latestMs_));
  Close();
}

void SessionRecorder::Close() {
  if (file_ == nullptr) return;
  file_->Close();
  problem_ = file_->Problem();
  file_.reset();
}

std::string SessionRecorder::Problem() const {
  return file_ != nullptr ? file_->Problem() : problem_;
}

void SessionRecorder::End(std::int64_t ms) {
  Add(RecordText({.kind = Kind::End, .ms = std::max(ms, latestMs_)}));
  Close();
}

void SessionRecorder::Add(const std::string& text) {
  latest_.push_back(text);
  if (file_ != nullptr) file_->Append(text);
  Count(text);
}

void SessionRecorder::Count(const std::string& text) {
  bytes_ += text.size();
  if (bytes_ <= mostBytes_) return;
  tooLong_ = true;
  session_.clear();
}

void SessionRecorder::Keep(const std::string& text) {
  if (tooLong_) return;
  if (session_.empty() || session_.back().size() + text.size() > kBlock)
    session_.emplace_back().reserve(kBlock);
  session_.back() += text;
}

void SessionRecorder::AddInput(const JournalRecord& record) {
  for (const std::string& text : latest_) Keep(text);
  latest_.clear();
  latestMs_ = record.ms;
  Add(RecordText(record));
}

// The failure belongs in front of the record that led to it: a replay has to know before it tries.
void SessionRecorder::NoteOpened(int port, int number, const std::string& description) {
  const auto known = busyPorts_.find(port);
  const std::pair now(number, number == 0 ? std::string() : description);
  const bool unchanged = known == busyPorts_.end() ? number == 0 : known->second == now;
  if (!begun_ || unchanged) return;
  busyPorts_[port] = now;
  InsertBeforeLatest({.kind = Kind::Busy, .event = {.text = now.second, .number = number}, .port = port});
}

void SessionRecorder::InsertBeforeLatest(JournalRecord record) {
  record.ms = latestMs_;
  const std::string text = RecordText(record);
  if (file_ != nullptr) file_->InsertBefore(Joined(latest_), text);
  Keep(text);
  Count(text);
}

void SessionRecorder::ProjectOpened(std::int64_t /*ms*/, const std::string& path, bool taken) {
  const bool news = taken ? heldProjects_.erase(path) > 0 : heldProjects_.insert(path).second;
  if (news) InsertBeforeLatest({.kind = taken ? Kind::Free : Kind::Held, .event = {.text = path}});
}

void SessionRecorder::Failed(std::int64_t ms, const std::string& error) {
  Add(fmt::format("# error {} {}\n", ms, JsonString(error)));
}

void SessionRecorder::Corrected(std::int64_t ms, const std::string& what) {
  Add(fmt::format("# corrected {} {}\n", ms, JsonString(what)));
}

void SessionRecorder::ClockSet(std::int64_t ms, const LocalDateTime& shown) {
  AddInput({.kind = Kind::Clock, .ms = ms, .moment = shown});
}

// What the record in hand led to depends on it.
void SessionRecorder::ComputerLooked(std::int64_t /*ms*/, const ComputerTime& time) {
  InsertBeforeLatest({.kind = Kind::Computer, .computer = time});
}

void SessionRecorder::Entered(std::int64_t ms, const Event& event) {
  AddInput({.ms = ms, .event = event});
}

void SessionRecorder::Answered(std::int64_t ms, const DialogBox& box, const DialogAnswer& answer) {
  const bool project = answer.word == DialogAnswer::Word::File && box.defaultExtension == kProjectExtension;
  if (project) KeepProject(answer.text);
  AddInput({.kind = Kind::Answer, .ms = ms, .answer = answer});
}

void SessionRecorder::Sent(std::int64_t ms, const std::vector<std::uint8_t>& frame) {
  Add(RecordText({.kind = Kind::Sent, .ms = ms, .event = {.bytes = frame}}));
}

}  // namespace quorvane

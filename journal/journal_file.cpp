#include "journal/journal_file.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <utility>

#include "files/output_guard.h"

namespace quorvane {
namespace {

std::string Reason() {
  return errno == 0 ? "The file cannot be written" : std::strerror(errno);
}

}  // namespace

JournalFile::JournalFile(const std::filesystem::path& path) {
  if (const auto reason = WhyNotWrite(path, FileKind::Journal)) {
    problem_ = "the file may not be replaced, " + *reason;
    return;
  }
  errno = 0;
  out_ = std::make_unique<std::ofstream>(path, std::ios::binary | std::ios::trunc);
  Begin();
}

JournalFile::JournalFile(std::unique_ptr<std::ostream> out) : out_(std::move(out)) {
  Begin();
}

void JournalFile::Begin() {
  if (*out_) {
    thread_ = std::thread([this] { Work(); });
  } else {
    problem_ = Reason();
  }
}

JournalFile::~JournalFile() {
  Close();
}

void JournalFile::Close() {
  {
    const std::lock_guard lock(mutex_);
    closing_ = true;
  }
  wake_.notify_one();
  if (thread_.joinable()) thread_.join();
}

void JournalFile::Append(std::string text) {
  Add({0, std::move(text)});
}

void JournalFile::InsertBefore(const std::string& tail, const std::string& text) {
  const std::size_t back = tail.size();
  Add({back, text + tail});
}

void JournalFile::Add(Piece piece) {
  {
    const std::lock_guard lock(mutex_);
    if (!problem_.empty()) return;
    waiting_.push_back(std::move(piece));
  }
  wake_.notify_one();
}

std::string JournalFile::Problem() const {
  const std::lock_guard lock(mutex_);
  return problem_;
}

void JournalFile::Work() {
  for (;;) {
    std::deque<Piece> pieces;
    {
      std::unique_lock lock(mutex_);
      wake_.wait(lock, [this] { return closing_ || !waiting_.empty(); });
      if (waiting_.empty()) return;
      pieces.swap(waiting_);
    }
    errno = 0;
    bool written = true;
    for (const Piece& piece : pieces) written = written && Write(piece);
    if (written && out_->flush()) continue;
    const std::lock_guard lock(mutex_);
    problem_ = Reason();
    waiting_.clear();
    return;
  }
}

bool JournalFile::Write(const Piece& piece) {
  if (piece.back > 0) out_->seekp(-static_cast<std::ostream::off_type>(piece.back), std::ios::end);
  out_->write(piece.text.data(), static_cast<std::streamsize>(piece.text.size()));
  return static_cast<bool>(*out_);
}

}  // namespace quorvane

#pragma once

#include <gtest/gtest.h>

#include "field/pseudo_terminal.h"

namespace quorvane {

// The far side of a pseudo-terminal that has a path of its own, as a modem has.
class Modem {
 public:
  explicit Modem(const std::string& link) : terminal_(field::PseudoTerminal::Open(link, error_)) {
    EXPECT_NE(terminal_, nullptr) << error_;
  }

  void Send(const std::string& bytes) {
    terminal_->Write(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
  }
  std::string Receive() {
    const std::vector<std::uint8_t> bytes = terminal_->Read();
    return {bytes.begin(), bytes.end()};
  }

 private:
  std::string error_;
  std::unique_ptr<field::PseudoTerminal> terminal_;
};

}  // namespace quorvane

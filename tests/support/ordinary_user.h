#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

namespace quorvane {

// Root may do anything, so a test of missing rights run by root goes on as somebody else.
class AsOrdinaryUser {
 public:
  AsOrdinaryUser() {
    if (user_ == 0 && seteuid(65534) != 0) ADD_FAILURE() << "cannot become another user";
  }
  ~AsOrdinaryUser() {
    if (user_ == 0 && seteuid(0) != 0) ADD_FAILURE() << "cannot become root again";
  }
  AsOrdinaryUser(const AsOrdinaryUser&) = delete;
  AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

 private:
  uid_t user_ = geteuid();
};

}  // namespace quorvane

#pragma once

#include <cstdint>
#include <string>

namespace quorvane {

// ms as seconds with two decimals, "nt" (no time) below 1 ms.
std::string FormatSeconds(std::int32_t ms);

// ms as seconds with one decimal, for running times.
std::string FormatTenths(std::int32_t ms);

// A text of seconds above 60 as minutes, ":" and seconds with two decimals; any other text as it is.
std::string FormatMinutes(const std::string& text);

}  // namespace quorvane

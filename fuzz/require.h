#pragma once

#include <cstdlib>

// What a fuzzer says must hold; otherwise the input is kept as one that has crashed it.
inline void Require(bool condition) {
  if (!condition) std::abort();
}

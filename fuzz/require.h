#pragma once

#include <cstdlib>
#include <string>

// What a fuzzer says must hold; otherwise the input is kept as one that has crashed it.
inline void Require(bool condition) {
  if (!condition) std::abort();
}

// Where a test collects what comes of an input.
inline std::string* told = nullptr;

inline void Tell(const std::string& text) {
  if (told != nullptr) *told += text + '\n';
}

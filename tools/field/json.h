#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quorvane::field {

class JsonValue;
using JsonArray = std::vector<JsonValue>;
using JsonObject = std::vector<std::pair<std::string, JsonValue>>;

// A value read from JSON text.
class JsonValue {
 public:
  using Data = std::variant<std::nullptr_t, bool, double, std::string, JsonArray, JsonObject>;

  JsonValue() = default;
  explicit JsonValue(Data data) : data_(std::move(data)) {}

  // The member of an object; null when this is no object or has no such member. The first of equal names
  // counts.
  const JsonValue* Find(std::string_view name) const;

  // Null when the value is of another kind.
  template <typename T>
  const T* As() const {
    return std::get_if<T>(&data_);
  }

 private:
  Data data_ = nullptr;
};

// Reads one JSON text. Strict: nothing but blanks around it, no comments, no trailing commas. Gives nothing
// for anything else, for text nested more than 32 deep, and for numbers that a double cannot hold.
std::optional<JsonValue> ParseJson(std::string_view text);

}  // namespace quorvane::field

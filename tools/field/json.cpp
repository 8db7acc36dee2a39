#include "tools/field/json.h"

#include <charconv>
#include <cmath>
#include <cstdint>

namespace quorvane::field {
namespace {

constexpr int kMaxDepth = 32;

// Reads from the front of a text. Every function gives nothing, or false, at the first fault; the reading is
// then over.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  std::optional<JsonValue> Whole() {
    std::optional<JsonValue> value = Value(0);
    SkipBlanks();
    if (!rest_.empty()) return std::nullopt;
    return value;
  }

 private:
  void SkipBlanks() {
    while (!rest_.empty() && std::string_view(" \t\r\n").find(rest_.front()) != std::string_view::npos) {
      rest_.remove_prefix(1);
    }
  }

  bool Take(std::string_view token) {
    if (!rest_.starts_with(token)) return false;
    rest_.remove_prefix(token.size());
    return true;
  }

  bool TakeAfterBlanks(std::string_view token) {
    SkipBlanks();
    return Take(token);
  }

  std::optional<JsonValue> Value(int depth) {
    if (depth > kMaxDepth) return std::nullopt;
    SkipBlanks();
    if (Take("null")) return JsonValue(nullptr);
    if (Take("true")) return JsonValue(true);
    if (Take("false")) return JsonValue(false);
    if (Take("[")) return Array(depth);
    if (Take("{")) return Object(depth);
    if (rest_.starts_with('"')) {
      std::optional<std::string> text = String();
      if (!text) return std::nullopt;
      return JsonValue(std::move(*text));
    }
    return Number();
  }

  std::optional<JsonValue> Array(int depth) {
    JsonArray items;
    if (TakeAfterBlanks("]")) return JsonValue(std::move(items));
    do {
      std::optional<JsonValue> item = Value(depth + 1);
      if (!item) return std::nullopt;
      items.push_back(std::move(*item));
    } while (TakeAfterBlanks(","));
    if (!TakeAfterBlanks("]")) return std::nullopt;
    return JsonValue(std::move(items));
  }

  std::optional<JsonValue> Object(int depth) {
    JsonObject members;
    if (TakeAfterBlanks("}")) return JsonValue(std::move(members));
    do {
      SkipBlanks();
      std::optional<std::string> name = String();
      if (!name || !TakeAfterBlanks(":")) return std::nullopt;
      std::optional<JsonValue> value = Value(depth + 1);
      if (!value) return std::nullopt;
      members.emplace_back(std::move(*name), std::move(*value));
    } while (TakeAfterBlanks(","));
    if (!TakeAfterBlanks("}")) return std::nullopt;
    return JsonValue(std::move(members));
  }

  std::optional<std::string> String() {
    if (!Take("\"")) return std::nullopt;
    std::string text;
    while (!rest_.empty()) {
      const char c = rest_.front();
      rest_.remove_prefix(1);
      if (c == '"') return text;
      if (static_cast<unsigned char>(c) < 0x20) return std::nullopt;
      if (c != '\\') {
        text += c;
      } else if (!Escape(text)) {
        return std::nullopt;
      }
    }
    return std::nullopt;
  }

  bool Escape(std::string& text) {
    static constexpr std::string_view kNames = "\"\\/bfnrt";
    static constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    if (rest_.empty()) return false;
    const char name = rest_.front();
    rest_.remove_prefix(1);
    if (name == 'u') return UnicodeEscape(text);
    const std::size_t i = kNames.find(name);
    if (i == std::string_view::npos) return false;
    text += kMeanings[i];
    return true;
  }

  bool UnicodeEscape(std::string& text) {
    std::optional<std::uint32_t> code = FourHexDigits();
    if (!code) return false;
    if (*code >= 0xD800 && *code < 0xDC00) {  // the first half of a pair
      if (!Take("\\u")) return false;
      const std::optional<std::uint32_t> second = FourHexDigits();
      if (!second || *second < 0xDC00 || *second > 0xDFFF) return false;
      code = 0x10000 + ((*code - 0xD800) << 10) + (*second - 0xDC00);
    } else if (*code >= 0xDC00 && *code <= 0xDFFF) {
      return false;
    }
    AppendUtf8(text, *code);
    return true;
  }

  std::optional<std::uint32_t> FourHexDigits() {
    std::uint32_t code = 0;
    if (rest_.size() < 4) return std::nullopt;
    const char* end = rest_.data() + 4;
    if (std::from_chars(rest_.data(), end, code, 16).ptr != end) return std::nullopt;
    rest_.remove_prefix(4);
    return code;
  }

  static void AppendUtf8(std::string& text, std::uint32_t code) {
    const auto add = [&text](std::uint32_t byte) {
      text += static_cast<char>(static_cast<unsigned char>(byte));
    };
    if (code < 0x80) {
      add(code);
    } else if (code < 0x800) {
      add(0xC0 | (code >> 6));
      add(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
      add(0xE0 | (code >> 12));
      add(0x80 | ((code >> 6) & 0x3F));
      add(0x80 | (code & 0x3F));
    } else {
      add(0xF0 | (code >> 18));
      add(0x80 | ((code >> 12) & 0x3F));
      add(0x80 | ((code >> 6) & 0x3F));
      add(0x80 | (code & 0x3F));
    }
  }

  std::size_t DigitsAt(std::size_t at) const {
    std::size_t end = at;
    while (end < rest_.size() && rest_[end] >= '0' && rest_[end] <= '9') ++end;
    return end - at;
  }

  std::optional<JsonValue> Number() {
    std::size_t end = rest_.starts_with('-') ? 1 : 0;
    const std::size_t whole = DigitsAt(end);
    if (whole == 0 || (whole > 1 && rest_[end] == '0')) return std::nullopt;
    end += whole;
    if (end < rest_.size() && rest_[end] == '.') {
      const std::size_t fraction = DigitsAt(end + 1);
      if (fraction == 0) return std::nullopt;
      end += 1 + fraction;
    }
    if (end < rest_.size() && (rest_[end] == 'e' || rest_[end] == 'E')) {
      ++end;
      if (end < rest_.size() && (rest_[end] == '+' || rest_[end] == '-')) ++end;
      const std::size_t exponent = DigitsAt(end);
      if (exponent == 0) return std::nullopt;
      end += exponent;
    }
    double value = 0;
    if (std::from_chars(rest_.data(), rest_.data() + end, value).ec != std::errc()) return std::nullopt;
    rest_.remove_prefix(end);
    return JsonValue(value);
  }

  std::string_view rest_;
};

}  // namespace

const JsonValue* JsonValue::Find(std::string_view name) const {
  const JsonObject* members = As<JsonObject>();
  if (members == nullptr) return nullptr;
  for (const auto& [key, value] : *members) {
    if (key == name) return &value;
  }
  return nullptr;
}

std::optional<JsonValue> ParseJson(std::string_view text) {
  return Reader(text).Whole();
}

}  // namespace quorvane::field

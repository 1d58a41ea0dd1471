#include "output/Json.h"

#include <array>
#include <charconv>

#include "core/EightBytes.h"
#include "core/Utf8.h"

namespace vendrel {
namespace {

constexpr char kHex[] = "0123456789abcdef";

void AppendEscape(std::string& out, char c) {
  switch (c) {
    case '"': out += "\\\""; return;
    case '\\': out += "\\\\"; return;
    case '\n': out += "\\n"; return;
    case '\r': out += "\\r"; return;
    case '\t': out += "\\t"; return;
    default: break;
  }
  out += "\\u00";
  out += kHex[(static_cast<unsigned char>(c) >> 4) & 15];
  out += kHex[static_cast<unsigned char>(c) & 15];
}

// 1: to be escaped; 2: beyond ASCII, to be looked at.
constexpr std::array<std::uint8_t, 256> kCare = [] {
  std::array<std::uint8_t, 256> care{};
  for (std::size_t i = 0; i < 0x20; ++i) care[i] = 1;
  care['"'] = care['\\'] = 1;
  for (std::size_t i = 0x80; i < 256; ++i) care[i] = 2;
  return care;
}();

// Whether the text stands as it is: ASCII without anything to escape, which most texts are.
bool IsPlain(std::string_view text) {
  std::size_t at = 0;
  for (; at + 8 <= text.size(); at += 8) {
    const std::uint64_t eight = EightAt(text, at);
    const std::uint64_t controls = eight - kOnes * 0x20;
    if (((eight | controls | MayBe(eight, '"') | MayBe(eight, '\\')) & kHighBits) != 0) break;
  }
  while (at < text.size() && kCare[static_cast<unsigned char>(text[at])] == 0) ++at;
  return at == text.size();
}

void AppendEscaped(std::string& out, std::string_view text) {
  std::size_t plain = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (kCare[static_cast<unsigned char>(text[i])] != 1) continue;
    out.append(text, plain, i - plain);
    AppendEscape(out, text[i]);
    plain = i + 1;
  }
  out.append(text, plain);
}

}  // namespace

void AppendJsonString(std::string& out, std::string_view text) {
  out += '"';
  if (IsPlain(text)) {
    out.append(text);
  } else if (IsValidUtf8(text)) {
    AppendEscaped(out, text);
  } else {
    std::string valid;
    AppendSanitised(valid, text);
    AppendEscaped(out, valid);
  }
  out += '"';
}

void JsonWriter::Key(std::string_view name) {
  BeforeValue();
  AppendJsonString(mBuffer, name);
  mBuffer += mIndented ? ": " : ":";
  mAfterKey = true;
}

void JsonWriter::String(std::string_view text) {
  BeforeValue();
  AppendJsonString(mBuffer, text);
  FlushIfFull();
}

void JsonWriter::Number(std::int64_t number) {
  BeforeValue();
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  mBuffer.append(digits, end);
}

void JsonWriter::Truth(bool value) {
  BeforeValue();
  mBuffer += value ? "true" : "false";
}

void JsonWriter::Null() {
  BeforeValue();
  mBuffer += "null";
}

void JsonWriter::NewLine() { mBuffer += '\n'; }

void JsonWriter::Flush() {
  mOut.write(mBuffer.data(), static_cast<std::streamsize>(mBuffer.size()));
  mBuffer.clear();
}

void JsonWriter::Begin(char bracket) {
  BeforeValue();
  mBuffer += bracket;
  mFilled.push_back(false);
}

void JsonWriter::End(char bracket) {
  const bool filled = mFilled.back();
  mFilled.pop_back();
  if (filled) Break();
  mBuffer += bracket;
  FlushIfFull();
}

void JsonWriter::BeforeValue() {
  if (mAfterKey) {
    mAfterKey = false;
    return;
  }
  if (mFilled.empty()) return;
  if (mFilled.back()) mBuffer += ',';
  mFilled.back() = true;
  Break();
}

void JsonWriter::Break() {
  if (!mIndented) return;
  mBuffer += '\n';
  mBuffer.append(std::min(mFilled.size(), kDeepestIndent), ' ');
}

}  // namespace vendrel

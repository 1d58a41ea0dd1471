#pragma once
// Writes JSON as a stream: nothing is kept but how deep the text is.

#include <cstdint>
#include <exception>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace vendrel {

/// Appends `text` as a JSON string with its quotes. Valid UTF-8 whatever comes in: a byte that is
/// none becomes U+FFFD.
void AppendJsonString(std::string& out, std::string_view text);

/// Writes one JSON text, or several behind each other (`NewLine` between them). The caller opens
/// and closes in order.
class JsonWriter {
 public:
  /// `indented`: a line for each member; else all on one line.
  explicit JsonWriter(std::ostream& out, bool indented = true) : mOut(out), mIndented(indented) {}
  /// Writes the rest; raises what the stream raises, but not while another failure passes.
  ~JsonWriter() noexcept(false) {
    if (std::uncaught_exceptions() == mPassing) Flush();
  }
  JsonWriter(const JsonWriter&) = delete;
  JsonWriter& operator=(const JsonWriter&) = delete;

  void BeginObject() { Begin('{'); }
  void EndObject() { End('}'); }
  void BeginArray() { Begin('['); }
  void EndArray() { End(']'); }
  /// Name of the next value.
  void Key(std::string_view name);
  void String(std::string_view text);
  void Number(std::int64_t number);
  void Truth(bool value);
  void Null();
  /// Ends a text with a line feed.
  void NewLine();
  /// Hands everything on to the stream.
  void Flush();

 private:
  void Begin(char bracket);
  void End(char bracket);
  void BeforeValue();
  void Break();
  void FlushIfFull() {
    if (mBuffer.size() >= kFlushAt) Flush();
  }

  static constexpr std::size_t kFlushAt = std::size_t{1} << 16;
  /// Input can nest deeper than any reader wants its text moved to the right.
  static constexpr std::size_t kDeepestIndent = 32;

  std::ostream& mOut;
  bool mIndented;
  bool mAfterKey = false;
  std::string mBuffer;
  const int mPassing = std::uncaught_exceptions();
  /// One entry for each open bracket: whether it has a member already.
  std::vector<bool> mFilled;
};

}  // namespace vendrel

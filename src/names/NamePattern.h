#pragma once
// What a person asks for by name: one name, or a pattern of names.

#include <string>
#include <string_view>

namespace vendrel {

/// A name, or with one of "*?[#" a pattern as `Like` has them; letter case does not count. With "~"
/// it is held against qualified names.
class NamePattern {
 public:
  /// Raises 5 for a pattern with a list that does not end.
  explicit NamePattern(std::string text);

  const std::string& Text() const { return mText; }
  bool IsPattern() const { return mIsPattern; }
  bool IsQualified() const { return mIsQualified; }
  /// Whether a name, qualified or not as this is, is the one that is meant or fits the pattern.
  bool Fits(std::string_view name) const;

 private:
  std::string mText;
  bool mIsPattern;
  bool mIsQualified;
};

}  // namespace vendrel

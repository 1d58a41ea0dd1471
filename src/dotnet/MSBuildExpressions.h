#pragma once
// Properties, conditions and patterns of paths of MSBuild, as far as project files of VB.NET lean
// on them.

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace vendrel {

/// Properties by name, case ignored.
class MSBuildProperties {
 public:
  void Set(std::string_view name, std::string value);
  /// The value; empty for a property that was never set.
  const std::string& Get(std::string_view name) const;
  /// A text with "$(Name)" replaced; calls of functions become empty.
  std::string Expand(std::string_view text) const;

 private:
  std::map<std::string, std::string> mValues;  // by folded names
};

/// The truth of a condition: comparisons of quoted or plain texts by "==" and "!=",
/// `Exists('...')`,
/// "!", "And", "Or" and parentheses. An empty one is true, one that is not understood false.
bool MSBuildCondition(std::string_view condition, const MSBuildProperties& properties,
                      const std::function<bool(const std::string& path)>& exists);

/// Whether a relative path ("Forms\Main.vb") matches a pattern, case ignored: "*" and "?" within a
/// folder, "**" for any folders.
bool MatchesGlob(std::string_view path, std::string_view pattern);

}  // namespace vendrel

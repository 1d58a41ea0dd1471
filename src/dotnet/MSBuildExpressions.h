#pragma once
// Properties, conditions and patterns of paths of MSBuild, as far as project files of VB.NET lean
// on them.

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vendrel {

/// Properties by name, case ignored.
class MSBuildProperties {
 public:
  void Set(std::string_view name, std::string value);
  /// The value; empty for a property that was never set.
  const std::string& Get(std::string_view name) const;
  /// A text with "$(Name)" replaced. Of functions `Replace`, `ToLower`, `ToUpper` and `Trim` are
  /// known ("$(Name.Replace('a', 'b'))"); others become empty.
  std::string Expand(std::string_view text) const;
  /// Notes an expression that is not understood.
  void NoteNotUnderstood(std::string_view expression) const;
  /// Each of them once, in the order of their first use; the first 64.
  const std::vector<std::string>& NotUnderstood() const { return mNotUnderstood; }

 private:
  std::string ValueOf(std::string_view expression) const;

  std::map<std::string, std::string> mValues;  // by folded names
  mutable std::vector<std::string> mNotUnderstood;
};

/// The truth of a condition: comparisons of quoted or plain texts by "==" and "!=", of numbers and
/// versions by "<", "<=", ">" and ">=", `Exists('...')`, `HasTrailingSlash('...')`, "!", "And",
/// "Or" and parentheses. An empty one is true; one that is not understood is false and noted in
/// `properties`.
bool MSBuildCondition(std::string_view condition, const MSBuildProperties& properties,
                      const std::function<bool(const std::string& path)>& exists);

/// Whether a relative path ("Forms\Main.vb") matches a pattern, case ignored: "*" and "?" within a
/// folder, "**" for any folders.
bool MatchesGlob(std::string_view path, std::string_view pattern);

}  // namespace vendrel

#pragma once
// Names of types, as documentation files write them.

#include <string>
#include <string_view>
#include <vector>

#include "dotnet/metadata/Image.h"

namespace vendrel::metadata {

/// The names of the types that one file defines or refers to: namespace and names of nested types
/// joined by ".", each with its count of generic parameters ("Shop.List`1.Node"). Made at the first
/// question and kept.
class TypeNames {
 public:
  explicit TypeNames(const Image& image);
  /// Of a row of TypeDef or TypeRef; empty for anything else.
  const std::string& Of(Token type) const;

 private:
  std::string Build(Token type, int depth) const;

  const Image& mImage;
  mutable std::vector<std::string> mDefined, mReferred;
  mutable std::size_t mRoom;
};

/// A name from the file as text of a tree: well-formed, nothing that is no character.
std::string CleanName(std::string_view name);

/// The name of a member as documentation files write it: "." becomes "#", "<" "{", ">" "}" and ","
/// "@"; an alias with "::" in front goes.
std::string DocumentedName(std::string_view name);

/// Whether a compiler made the name up: nobody wrote it, nobody can use it.
bool IsCompilerMade(std::string_view name);

}  // namespace vendrel::metadata

#include "dotnet/metadata/TypeNames.h"

#include <algorithm>

#include "core/Utf8.h"
#include "dotnet/metadata/MetadataLimits.h"

namespace vendrel::metadata {

TypeNames::TypeNames(const Image& image)
    : mImage(image),
      mDefined(image.Tables().Rows(tTypeDef) + std::size_t{1}),
      mReferred(image.Tables().Rows(tTypeRef) + std::size_t{1}),
      mRoom(kTextBase + kTextShare * image.Size()) {}

const std::string& TypeNames::Of(Token type) const {
  static const std::string none;
  if (!type || (type.Of != tTypeDef && type.Of != tTypeRef)) return none;
  std::string& name = (type.Of == tTypeDef ? mDefined : mReferred)[type.Row];
  if (!name.empty()) return name;
  name = Build(type, 0);
  if (name.size() > mRoom) throw DataError("the names of the types are too long");
  mRoom -= name.size();
  return name;
}

std::string TypeNames::Build(Token type, int depth) const {
  const std::string name = CleanName(mImage.Text(type.Of, 1, type.Row));
  Token around;
  if (type.Of == tTypeDef)
    around = {tTypeDef, mImage.Encloser(type.Row)};
  else if (const Token scope = mImage.Tables().Coded(tTypeRef, 0, type.Row, cResolutionScope);
           scope.Of == tTypeRef)
    around = scope;
  std::string outer;
  if (around && depth < kMaxNesting)
    outer = around.Of == tTypeDef ? Of(around) : Build(around, depth + 1);
  else
    outer = CleanName(mImage.Text(type.Of, 2, type.Row));
  if (outer.size() + name.size() > kMaxTypeText) throw DataError("the name of a type is too long");
  return outer.empty() ? name : outer + "." + name;
}

std::string CleanName(std::string_view name) {
  const bool isPlain = std::all_of(name.begin(), name.end(), [](char c) {
    return static_cast<unsigned char>(c) >= 0x20 && static_cast<unsigned char>(c) < 0x7F;
  });
  if (isPlain) return std::string(name);
  std::string clean;
  AppendSanitised(clean, name);
  // What cannot be shown and what lists and files are cut by would make two names of one.
  for (char& c : clean)
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
  return clean;
}

std::string DocumentedName(std::string_view name) {
  if (const std::size_t alias = name.find("::"); alias != std::string_view::npos)
    name.remove_prefix(alias + 2);
  std::string documented = CleanName(name);
  for (char& c : documented) switch (c) {
      case '.': c = '#'; break;
      case '<': c = '{'; break;
      case '>': c = '}'; break;
      case ',': c = '@'; break;
      default: break;
    }
  return documented;
}

bool IsCompilerMade(std::string_view name) {
  static constexpr std::string_view kStarts[] = {"VB$", "_Closure$__", "$VB$", "$STATIC$", "$I"};
  if (name.starts_with('<')) return true;
  return std::any_of(std::begin(kStarts), std::end(kStarts),
                     [&](std::string_view start) { return name.starts_with(start); });
}

}  // namespace vendrel::metadata

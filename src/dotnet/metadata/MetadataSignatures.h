#pragma once
// Signatures as text: types in the form of documentation files.

#include <string>
#include <vector>

#include "dotnet/metadata/TypeNames.h"

namespace vendrel::metadata {

/// What stands for the generic parameters of a type, by number; beyond its end they keep their own
/// form (`0).
using TypeArguments = std::vector<std::string>;

/// The type of one parameter, field or result.
struct TypeText {
  /// "System.Collections.Generic.List{`0}[]"
  std::string Name;
  bool IsByRef = false;
};

/// The signature of a method or property.
struct MethodText {
  TypeText Result;
  std::vector<TypeText> Parameters;
  std::uint32_t Arity = 0;
  bool HasThis = false;
  /// Takes further arguments that its declaration does not name.
  bool IsOpen = false;
  /// The parameters in parentheses, as they stand behind a name: "(System.Int32@)"; empty if none.
  std::string Arguments() const;
};

/// Reads the signatures of one file. Whatever is damaged raises DataError.
class Signatures {
 public:
  explicit Signatures(const Image& image) : mImage(image), mNames(image) {}
  const Image& Of() const { return mImage; }
  const TypeNames& Names() const { return mNames; }

  /// Of methods (also by a reference) and properties.
  MethodText Method(ByteStream blob, const TypeArguments& arguments = {}) const;
  TypeText Field(ByteStream blob, const TypeArguments& arguments = {}) const;
  /// A type by its token; the plain name of a defined one.
  std::string Type(Token type, const TypeArguments& arguments = {}) const;
  /// A type by its token, taken apart: the row that defines or refers to it and its arguments.
  struct Instance {
    Token Definition;
    TypeArguments Arguments;
  };
  Instance Open(Token type, const TypeArguments& arguments = {}) const;

 private:
  class Writer;
  const Image& mImage;
  TypeNames mNames;
};

/// The name of a generic type with arguments handed out level by level: "A`1.B`2" becomes
/// "A{x}.B{y,z}".
void AppendInstance(std::string& out, std::string_view name, const TypeArguments& arguments);

/// Takes a compressed number: one, two or four bytes.
std::uint32_t TakeCompressed(ByteStream& blob);

}  // namespace vendrel::metadata

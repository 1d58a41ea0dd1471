#pragma once
// What a type declares, one entry a field, method, event or property, in the order of the tables.

#include <string>
#include <vector>

#include "dotnet/metadata/MetadataSignatures.h"

namespace vendrel::metadata {

enum class TypeKind { Class, Structure, Interface, Enumeration, Delegate, Module };
enum class MemberKind { Field, Method, Event, Property };

/// From the narrowest to the widest.
enum class Access { Private, FriendAndProtected, Friend, Protected, ProtectedFriend, Public };

/// "PUBLIC", "PROTECTED", "FRIEND", "PROTECTED FRIEND" or "PRIVATE".
std::string_view AccessWord(Access access);
/// Whether code of another assembly can come to it.
inline bool IsVisible(Access access) { return access >= Access::Protected; }

TypeKind KindOfType(const Image& image, std::uint32_t type);
Access AccessOfType(const Image& image, std::uint32_t type);
/// Whether code of another assembly can come to the type and to every type around it.
bool IsVisibleType(const Image& image, std::uint32_t type);
/// Whether the type, or one around it, was made by a compiler, or is the holder of what belongs to
/// no type.
bool IsHiddenType(const Image& image, std::uint32_t type);

/// One member.
struct Member {
  MemberKind Kind = MemberKind::Field;
  std::uint32_t Row = 0;
  metadata::Access Access = metadata::Access::Private;
  bool IsStatic = false;
  bool IsVirtual = false;
  bool IsFinal = false;
  bool IsAbstract = false;
  /// Hides what it does not override.
  bool IsNew = false;
  bool IsConstructor = false;
  /// A field that is a constant.
  bool IsConstant = false;
  /// Its only purpose is to implement a member of an interface.
  bool IsExplicit = false;
  /// As the file has it.
  std::string_view Name;
  /// Of a property or event.
  vendrel::metadata::Accessors Accessors;

  Token Place() const;
};

/// Which members of a type are listed.
struct MemberFilter {
  /// Those that only the assembly itself can use, static constructors too.
  bool Private = false;
};

/// The members of a type. Accessors, the parts of a delegate and what a compiler made up are none.
std::vector<Member> MembersOf(const Image& image, std::uint32_t type, const MemberFilter& filter);

/// Name of a member behind that of its type, as documentation files write it: "#ctor",
/// "Convert``1", "System#IDisposable#Dispose".
std::string DocumentedNameOf(const Member& member, std::uint32_t arity);

/// What stands behind the name: arguments, and the result of a conversion. `signature` may be null
/// for fields and events.
std::string DocumentedArgumentsOf(const Member& member, const MethodText* signature);

/// The signature of a method or property.
MethodText SignatureOf(const Signatures& signatures, const Member& member,
                       const TypeArguments& arguments = {});

/// The method that stands for a delegate; 0 if there is none.
std::uint32_t InvokeOf(const Image& image, std::uint32_t type);

/// Rows of the parameters of a method, by number: 0 is the result, 0 where a parameter has no row.
std::vector<std::uint32_t> ParameterRows(const Image& image, std::uint32_t method,
                                         std::size_t count);

}  // namespace vendrel::metadata

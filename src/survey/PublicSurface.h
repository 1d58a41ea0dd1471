#pragma once
// What of a project its callers see: the types, their members and what these take and give, as
// plain data that outlives the tree.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "output/Difference.h"
#include "project/VBProject.h"
#include "survey/CodeContent.h"

namespace vendrel {

/// By whose rules callers are bound.
enum class SurfaceWorld : std::uint8_t { Com, Net };

enum class SurfaceTypeKind : std::uint8_t {
  Class,
  Interface,
  Structure,
  Enumeration,
  Module,
  Delegate
};

enum class SurfaceMemberKind : std::uint8_t {
  Method,
  Getter,
  Letter,
  Setter,
  /// A property of VB.NET, read or written.
  Property,
  Field,
  Constant,
  Event,
  EnumMember,
};

struct SurfaceParameter {
  std::string Name;
  /// As written, "Variant" where nothing is, with "()" behind it for an array.
  std::string Type;
  /// As written, and what that comes to where it is a constant of the project.
  std::string Default, DefaultValue;
  bool ByRef = false;
  bool Optional = false;
  bool ParamArray = false;
};

struct SurfaceMember {
  SurfaceMemberKind Kind = SurfaceMemberKind::Method;
  std::string Name;
  /// Of what it gives; empty where it gives nothing.
  std::string Type;
  /// Of a constant or member of an enumeration.
  std::string Value;
  std::vector<SurfaceParameter> Parameters;
  bool IsStatic = false;
  bool IsVirtual = false;
  bool IsAbstract = false;
  bool IsReadOnly = false;
  bool IsProtected = false;
  /// Its qualified name.
  std::string Element;
  ChangePlace Place;
  /// Of a procedure, where its lines are there.
  CodeContent Content;
};

struct SurfaceType {
  SurfaceTypeKind Kind = SurfaceTypeKind::Class;
  /// As callers spell it: with its namespace in VB.NET.
  std::string Name;
  std::string Base, DefaultMember;
  std::vector<std::string> Interfaces;
  /// In the order of the source; fields first.
  std::vector<SurfaceMember> Members;
  bool IsCreatable = false;
  /// Its members need no name in front of them.
  bool IsGlobal = false;
  bool IsAbstract = false;
  bool IsSealed = false;
  std::string Element;
  ChangePlace Place;
};

struct PublicSurface {
  SurfaceWorld World = SurfaceWorld::Com;
  /// The name by which callers refer to the whole.
  std::string Library;
  ChangePlace Place;
  /// The compiler takes ids and the order of members from an earlier build.
  bool KeepsBinaryCompatibility = false;
  /// It is a type library or an assembly, not source.
  bool IsCompiled = false;
  /// Callers take its source in, and are compiled with it.
  bool IsShared = false;
  std::vector<SurfaceType> Types;
};

struct SurfaceOptions {
  /// Public members of every module, exposed to other programs or not: for source that several
  /// projects share. Always so for modules without a project.
  bool AllModules = false;
};

/// The surface of a project whose modules are loaded. Of Visual Basic 5/6: exposed classes and
/// controls of libraries and servers, none of a program; of VB.NET what is public or protected.
PublicSurface SurfaceOf(const VBProject& project, const SurfaceOptions& options = {});

/// What a kind is called: "class", "method", "property-get".
std::string_view WordOf(SurfaceTypeKind kind);
std::string_view WordOf(SurfaceMemberKind kind);

/// A member as callers read it: "Post(ByVal Amount As Currency, [Note As String]) As Boolean".
std::string SignatureOf(const SurfaceMember& member);
/// One of its parameters in the same form.
std::string SignatureOf(const SurfaceParameter& parameter);

}  // namespace vendrel

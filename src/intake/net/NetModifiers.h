#pragma once
// Modifiers of procedures, fields and events of VB.NET.

#include <string_view>

#include "core/Ascii.h"
#include "model/Component.h"

namespace vendrel {

inline void SetInheritedFrom(Block& o, std::string_view base) { o.SetInheritedFrom(base); }
template <typename Element>
void SetInheritedFrom(Element& o, std::string_view base) {
  o.InheritedFrom = base;
}

/// What a modifier does that any of the three classes has; false for another word.
template <typename Element>
bool TakeCommonModifier(Element& o, std::string_view word, std::string_view base) {
  const auto is = [&](std::string_view keyword) { return EqualsNoCaseAscii(word, keyword); };
  if (is("OVERLOADS")) {
    o.Implemented = true;
  } else if (is("OVERRIDES")) {
    o.Implemented = true;
    SetInheritedFrom(o, base);
  } else if (is("OVERRIDABLE")) {
    o.IsVirtual = true;
  } else if (is("MUSTOVERRIDE")) {
    o.IsAbstract = true;
  } else if (is("SHADOWS")) {
    o.IsShadow = true;
  } else if (is("SHARED")) {
    o.IsStatic = true;
  } else if (is("PUBLIC") || is("PROTECTED") || is("PRIVATE")) {
    o.Access = UpperAscii(word);
  } else if (is("FRIEND")) {
    o.Access = o.Access == "PROTECTED" ? "PROTECTED FRIEND" : "FRIEND";
  } else {
    return false;
  }
  return true;
}

/// What one does that only procedures have.
inline void TakeBlockModifier(Block& o, std::string_view word) {
  if (EqualsNoCaseAscii(word, "NOTOVERRIDABLE")) o.IsSealed = true;
  if (EqualsNoCaseAscii(word, "READONLY")) o.PropertyType = ptRead;
  if (EqualsNoCaseAscii(word, "WRITEONLY")) o.PropertyType = ptWrite;
  if (EqualsNoCaseAscii(word, "DELEGATE")) o.SetIsDelegate(true);
  if (EqualsNoCaseAscii(word, "DEFAULT") && o.Component) o.Component->DefaultMemberName = o.Name();
}

}  // namespace vendrel

#pragma once
// What changed of a public surface, and whom each change breaks.

#include <string>
#include <string_view>
#include <vector>

#include "survey/ApiRules.h"
#include "survey/PublicSurface.h"

namespace vendrel {

struct ApiChange {
  ApiRuleId Rule;
  /// By the column of the rule that holds for the surface.
  ApiBreak Breaks = ApiBreak::No;
  /// What changed: "class", "method", "library".
  std::string_view Word;
  /// Its qualified name; the one it had where it is gone.
  std::string Element;
  /// What it was and is, as callers read it; empty where it was not there.
  std::string Before, After;
  ChangePlace PlaceBefore, PlaceAfter;
};

/// Compares two surfaces of one world, type by type in the order of the first. Types are paired by
/// name, members by name, kind and parameters; what is left over of one kind is the same under
/// another name where four fifths of its members, or of its lines, are. Raises 13 for two worlds.
std::vector<ApiChange> CompareSurfaces(const PublicSurface& before, const PublicSurface& after);

}  // namespace vendrel

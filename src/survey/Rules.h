#pragma once
// What a check may find: rules, each with a stable id, a level and a title. One table holds them
// all (Rules.cpp); docs/rules.md shows each with an example and how to mend it.

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace vendrel {

/// How much a finding matters. What is off is not told.
enum class RuleLevel : std::uint8_t { Off, Note, Warning, Error };

/// What a finding says of the whole, as long as nobody sets the level of its rule; then the level
/// alone counts.
enum class RuleWeight : std::uint8_t {
  /// As much as its level says: an error fails.
  ByLevel,
  /// Something that is listed cannot be had. Fails at every level.
  Incomplete,
  /// Part of the input could not be read at all.
  Unread
};

/// One rule. The id is what users write; it never changes.
struct Rule {
  std::string_view Id;
  /// Its level where nobody sets one.
  RuleLevel Level = RuleLevel::Warning;
  RuleWeight Weight = RuleWeight::ByLevel;
  /// One line, without a full stop.
  std::string_view Title;
};

/// Every rule: those of the diagnostics in their order, then those that only a check looks for.
std::span<const Rule> AllRules();
/// The rule of that id; null if there is none.
const Rule* FindRule(std::string_view id);
/// The id that is nearest to a mistyped one; empty where none is near.
std::string_view NearestRule(std::string_view id);

/// "off", "note", "warning" or "error".
std::string_view LevelName(RuleLevel level);
/// The level of that name; nothing for another text.
std::optional<RuleLevel> LevelNamed(std::string_view name);

}  // namespace vendrel

#include "core/ReadingRules.h"

#include "core/Ascii.h"

namespace vendrel {

const ReadingRules& ReadingRules::Classic() {
  static const ReadingRules rules;
  return rules;
}

const ReadingRules& ReadingRules::Complete() {
  static const ReadingRules rules = [] {
    ReadingRules all;
    ForEachReadingRule([&](const ReadingRule& rule) { all.*rule.Flag = true; });
    return all;
  }();
  return rules;
}

bool ReadingRules::Set(std::string_view name, bool value) {
  bool found = false;
  ForEachReadingRule([&](const ReadingRule& rule) {
    if (!EqualsNoCaseAscii(rule.Name, name)) return;
    this->*rule.Flag = value;
    found = true;
  });
  return found;
}

}  // namespace vendrel

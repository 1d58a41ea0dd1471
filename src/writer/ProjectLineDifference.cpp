#include "writer/ProjectLineDifference.h"

#include <algorithm>
#include <map>
#include <unordered_map>

#include "core/Ascii.h"
#include "model/ModuleKinds.h"
#include "services/SourceText.h"

namespace vendrel {
namespace {

// How the lines of a key are written.
enum class Rebuilt {
  Never,   // kept as read
  Each,    // one for each that was read
  Always,  // one, whether it was read or not; of several that were read, the last counts
};

struct Rule {
  std::string_view Key;
  Rebuilt How;
};
// Beside those of modules.
constexpr Rule kRules[] = {
    {"REFERENCE", Rebuilt::Each},
    {"OBJECT", Rebuilt::Each},
    {"RELATEDDOC", Rebuilt::Each},
    {"RESFILE32", Rebuilt::Each},
    {"NAME", Rebuilt::Each},
    {"HELPFILE", Rebuilt::Always},
    {"HELPCONTEXTID", Rebuilt::Always},
    {"ICONFORM", Rebuilt::Always},
    {"STARTUP", Rebuilt::Always},
    {"COMPATIBLEMODE", Rebuilt::Always},
    {"COMPATIBLEEXE32", Rebuilt::Always},
    {"EXENAME32", Rebuilt::Always},
    {"PATH32", Rebuilt::Always},
    {"AUTOINCREMENTVER", Rebuilt::Always},
};

std::string KeyOf(std::string_view line) {
  return UpperAscii(Trim(line.substr(0, line.find('='))));
}

Rebuilt RuleOf(std::string_view key) {
  for (const Rule& rule : kRules)
    if (rule.Key == key) return rule.How;
  return ModuleKindOfKey(key) ? Rebuilt::Each : Rebuilt::Never;
}

// A document is written under the one key or the other by its extension.
std::string GroupOf(std::string_view line) {
  const std::string key = KeyOf(line);
  return key == "RESFILE32" ? "RELATEDDOC" : key;
}

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) lines.push_back(TakeLine(text));
  return lines;
}

// Adds the lines that `text` has more often than `other`.
void AddSurplus(std::string_view text, std::string_view other, bool isWritten,
                std::vector<ProjectLineChange>& changes) {
  std::unordered_map<std::string_view, std::size_t> counts;
  for (const std::string_view line : LinesOf(other)) ++counts[line];
  std::int32_t number = 0;
  for (const std::string_view line : LinesOf(text)) {
    ++number;
    if (std::size_t& count = counts[line]; count > 0)
      --count;
    else
      changes.push_back({isWritten, false, number, std::string(line)});
  }
}

// Keys whose lines tell no path.
bool IsSettingAlone(std::string_view key) {
  for (const std::string_view setting :
       {"NAME", "HELPFILE", "HELPCONTEXTID", "ICONFORM", "STARTUP", "COMPATIBLEMODE", "EXENAME32",
        "PATH32", "AUTOINCREMENTVER"})
    if (key == setting) return true;
  return false;
}

}  // namespace

bool IsSamePathLine(std::string_view before, std::string_view after) {
  const std::string key = KeyOf(before);
  return key == KeyOf(after) && RuleOf(key) != Rebuilt::Never && !IsSettingAlone(key);
}

std::vector<ProjectLineChange> CompareProjectLines(std::string_view before,
                                                   std::string_view after) {
  std::vector<ProjectLineChange> changes;
  AddSurplus(before, after, false, changes);
  AddSurplus(after, before, true, changes);
  // A line that was read and one that was written for it belong together, in the order of each key.
  std::map<std::string, std::ptrdiff_t> written, read;
  for (const ProjectLineChange& change : changes)
    ++(change.IsWritten ? written : read)[GroupOf(change.Text)];
  for (ProjectLineChange& change : changes) {
    const Rebuilt rule = RuleOf(KeyOf(change.Text));
    std::ptrdiff_t& partners = (change.IsWritten ? read : written)[GroupOf(change.Text)];
    change.ByRule = rule == Rebuilt::Always || (rule == Rebuilt::Each && partners-- > 0);
  }
  return changes;
}

}  // namespace vendrel

#include "survey/Rules.h"

#include <algorithm>
#include <array>

#include "diagnostics/Diagnostic.h"
#include "text/EditDistance.h"

namespace vendrel {
namespace {

using enum RuleLevel;
using enum RuleWeight;

// Behind the rules of the diagnostics a new rule is a row here, a function in ProjectRules.cpp,
// EstateRules.cpp or UseRules.cpp, and an entry in docs/rules.md.
constexpr Rule kRules[] = {
    {"duplicate-name", Warning, ByLevel, "a name is given twice where it must be one of its kind"},
    {"missing-module", Warning, Incomplete, "a project lists a module file that is not there"},
    {"module-case", Note, ByLevel, "the disk spells the name of a module file otherwise"},
    {"unreadable-file", Error, Incomplete, "a file is there and cannot be read"},
    {"not-a-file", Error, Incomplete, "a folder or a device stands where a file is named"},
    {"binary-module", Warning, Incomplete, "a module file holds binary data"},
    {"empty-module", Warning, ByLevel, "a module file is empty"},
    {"other-kind", Warning, ByLevel, "a module file looks like one of another kind"},
    {"nul-characters", Warning, ByLevel, "source holds NUL characters"},
    {"direction-control", Warning, ByLevel, "a character changes the direction of the line"},
    {"line-not-understood", Warning, ByLevel, "a line is no statement of the language"},
    {"condition-failed", Warning, ByLevel, "a condition of #If cannot be computed"},
    {"unbalanced-directive", Warning, ByLevel, "#Else or #End If without an #If"},
    {"odd-name", Warning, ByLevel, "an element has a name or type that no declaration gives"},
    {"unended-declaration", Warning, ByLevel, "a declaration or procedure has no end"},
    {"lost-line", Warning, ByLevel, "a line behind a statement separator is lost"},
    {"project-line", Warning, ByLevel, "a line of a project file is not understood"},
    {"missing-reference", Note, ByLevel, "the file of a reference is not there"},
    {"code-page", Note, ByLevel, "files are read with a code page that was guessed"},
    {"characters-not-held", Error, ByLevel, "the code page of a file lacks characters"},
    {"control-tree-open", Warning, ByLevel, "the description of a control has no End"},
    {"companion-file", Note, ByLevel, "a text of a control is not in its companion file"},
    {"missing-project", Warning, Unread, "a group lists a project that is not there"},
    {"project-repeated", Warning, ByLevel, "a group names a project more than once"},
    {"group-line", Warning, ByLevel, "a line of a group is not understood"},
    {"folder-skipped", Error, Unread, "a folder cannot be read"},
    {"example-parameter", Warning, ByLevel, "an example lacks a parameter"},
    {"comment-unplaced", Note, ByLevel, "a tagged comment found no element"},
    {"element-not-found", Warning, ByLevel, "a comment file names an element that is not there"},
    {"typelib-member", Warning, ByLevel, "a member of a type library is odd"},
    {"assembly-part", Warning, ByLevel, "part of an assembly or of its project cannot be read"},
    {"missing-assembly", Note, ByLevel, "an assembly is not found"},
    {"assembly-dropped", Warning, ByLevel, "an assembly of a set is not there"},
    {"documentation-unread", Warning, ByLevel, "a documentation file cannot be read"},
    {"documentation-part", Warning, ByLevel, "part of a documentation file fits nothing"},
    {"write-refused", Error, ByLevel, "a file is not written"},
    {"told", Warning, ByLevel, "something else that is told on the way"},
    {"unread-project", Error, Unread, "a project cannot be read, or is none"},
    {"missing-references", Note, ByLevel, "how many references have no file here"},
    {"unknown-tag", Warning, ByLevel, "a comment begins like a tag, with a word that is none"},
    {"missing-library", Warning, ByLevel, "a type library is not found"},

    {"unlisted-module", Note, ByLevel, "no project lists a module file"},
    {"duplicate-module", Note, ByLevel, "two module files hold the same text"},
    {"module-listed-twice", Warning, ByLevel, "a project lists a module file twice"},
    {"mixed-line-ends", Note, ByLevel, "the lines of a file end in different ways"},
    {"declare-signatures", Note, ByLevel, "two Declares of one name differ"},
    {"option-explicit", Note, ByLevel, "a module with code lacks Option Explicit"},
    {"undocumented", Off, ByLevel, "a public member has no description"},
    {"interface-member", Warning, ByLevel, "a class lacks a member of an interface"},
    {"event-source", Note, ByLevel, "a handler of an event has nothing that raises it"},
    {"argument-count", Warning, ByLevel, "a call passes too few arguments, or too many"},
    {"unknown-name", Off, ByLevel, "no declaration gives a name"},
    {"implicit-constant", Note, ByLevel, "a name like that of a constant is none"},
    {"never-read", Off, ByLevel, "a variable is assigned and never read"},
    {"own-module-only", Off, ByLevel, "a public member is used by its own module alone"},
};

constexpr std::string_view kDiagnosticCodes[] = {
#define VENDREL_CODE_TEXT(id, code, severity, text) code,
    VENDREL_DIAGNOSTICS(VENDREL_CODE_TEXT)
#undef VENDREL_CODE_TEXT
};

constexpr bool EachDiagnosticIsARule() {
  for (std::size_t i = 0; i < std::size(kDiagnosticCodes); ++i)
    if (i >= std::size(kRules) || kRules[i].Id != kDiagnosticCodes[i]) return false;
  return true;
}
static_assert(EachDiagnosticIsARule(), "each row of VENDREL_DIAGNOSTICS needs its row here");

constexpr std::array<std::string_view, 4> kLevelNames{"off", "note", "warning", "error"};

}  // namespace

std::span<const Rule> AllRules() { return kRules; }

const Rule* FindRule(std::string_view id) {
  const auto* found = std::find_if(std::begin(kRules), std::end(kRules),
                                   [&](const Rule& rule) { return rule.Id == id; });
  return found == std::end(kRules) ? nullptr : found;
}

std::string_view NearestRule(std::string_view id) {
  std::string_view nearest;
  std::size_t least = 4;  // further away it is another word
  if (id.size() > kLongestCompared) return nearest;
  for (const Rule& rule : kRules) {
    const std::size_t distance = EditDistance(id, rule.Id);
    if (distance >= least) continue;
    least = distance;
    nearest = rule.Id;
  }
  return nearest;
}

std::string_view LevelName(RuleLevel level) { return kLevelNames[static_cast<std::size_t>(level)]; }

std::optional<RuleLevel> LevelNamed(std::string_view name) {
  const auto found = std::find(kLevelNames.begin(), kLevelNames.end(), name);
  if (found == kLevelNames.end()) return std::nullopt;
  return static_cast<RuleLevel>(found - kLevelNames.begin());
}

}  // namespace vendrel

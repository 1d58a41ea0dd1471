// The built-in tags, as data. docs/tags.md lists them for people; a test holds both together.
//
// Bare tags take their element from where they stand. Members of enumerations and structures, and
// modules, take them too without being named in the scope: a scope that names a member would ask
// for its name as the first word. A command has the kind of its element as well: where comments are
// kept as they are, it is stored there like any other.

#include "comments/TagDefinitions.h"

namespace vendrel {
namespace {

enum Use : bool { Kept = false, Describes = true };
enum Waiting : bool { Joined = false, Separate = true };

constexpr std::string_view kNone;
constexpr std::string_view kAny =
    "FZ:Method,FZ:Property,FZ:Variable,FZ:Event,FZ:Enumeration,FZ:Structure,FZ:DeclareStatement,"
    "FZ:ImplementedInterface";
constexpr std::string_view kCallable = "FZ:Method,FZ:Property,FZ:DeclareStatement";

// In the order in which the table reads, not in that of the sizes.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct Row {
  std::string_view Tag;
  ElementTypeEnum Kind;
  std::string_view Scope;
  Use Text;
  WrapTypeEnum Wrap;
  Waiting InBuffer = Joined;
  std::string_view UpgradeTo = {};
};

constexpr Row kRows[] = {
    {"##", etNone, kAny, Describes, wrapLineBreak},
    {"##SUMMARY", etNone, kAny, Describes, wrapLineBreak},
    {"##DESCRIPTION", etNone, kAny, Describes, wrapLineBreak, Joined, "##SUMMARY"},
    {"##REMARKS", etNone, kAny, Kept, wrapParagraph},
    {"##RETURNS", etNone, kCallable, Kept, wrapSpace},
    {"##TYPEPARAM", etNone, kAny, Kept, wrapLineBreak},
    {"##PARAM", etNone, "FZ:Parameter", Describes, wrapLineBreak},
    {"##SEEALSO", etNone, kAny, Kept, wrapLineBreak, Separate},
    {"##EXAMPLE", etNone, kAny, Kept, wrapLineBreak, Separate},
    {"##EXAMPLEINTRO", etNone, kAny, Kept, wrapSpace},
    {"##EXAMPLECODE", etNone, kAny, Kept, wrapLineBreak},
    {"##EXAMPLE_CS", etNone, kAny, Kept, wrapLineBreak},
    {"##OBJECTBROWSER", etNone, kAny, Kept, wrapSpace},
    {"##MODULE_OBJECTBROWSER", etModule, kNone, Kept, wrapSpace},
    // Applied at once in a declarations section: the event just declared, and its parameters.
    {"##ED", etEvent, kNone, Describes, wrapLineBreak},
    {"##PD", etParameter, kNone, Describes, wrapLineBreak},
    {"##EXCLUDE", etNone, kAny, Kept, wrapSpace},
    // Looked at where it is found out what nobody uses.
    {"##USED", etNone, kAny, Kept, wrapSpace},
    {"##EXCLUDE_REFERENCE", etProject, kNone, Kept, wrapSpace, Separate},
    {"##REFERENCE_EXCLUDE", etProject, kNone, Kept, wrapSpace, Separate, "##EXCLUDE_REFERENCE"},
    {"##IS_NEW", etNone, kAny, Kept, wrapSpace},
    {"##ISNEW", etNone, kAny, Kept, wrapSpace, Joined, "##IS_NEW"},
    {"##MODULE_IS_NEW", etModule, kNone, Kept, wrapSpace},
    {"##MODULE_ISNEW", etModule, kNone, Kept, wrapSpace, Joined, "##MODULE_IS_NEW"},
    {"##BLOCK_IS_NEW", etMethod, kNone, Kept, wrapSpace},
    {"##EVENT_IS_NEW", etEvent, kNone, Kept, wrapSpace},
    {"##VARIABLE_IS_NEW", etVariable, kNone, Kept, wrapSpace},
    {"##IS_EXAMPLE", etMethod, kNone, Kept, wrapSpace, Separate},
    {"##BLOCK_IS_EXAMPLE", etMethod, kNone, Kept, wrapSpace, Separate, "##IS_EXAMPLE"},
    {"##MODULE_IS_EXAMPLE", etModule, kNone, Kept, wrapSpace, Separate},
    {"##IGNORE_REFERENCES", etModule, kNone, Kept, wrapSpace, Separate},
    {"##IGNORE_REFERENCE", etModule, kNone, Kept, wrapSpace, Separate, "##IGNORE_REFERENCES"},
    {"##RELATIONSHIP_LEVELS", etModule, kNone, Kept, wrapSpace, Separate},
    {"##MODULE_IS_COLLECTION", etModule, kNone, Kept, wrapSpace},
    {"##MODULE_IS_INTERFACE", etModule, kNone, Kept, wrapSpace},
    {"##RETAIN_CONTEXT_IDS", etProject, kNone, Kept, wrapSpace},
    // By scope, not by kind: its first word is no qualifier but part of the text.
    {"##INTERFACE_ALIAS", etNone, "FZ:ImplementedInterface", Kept, wrapSpace, Separate},
};

// The families of element-prefixed tags: ##BLOCK_SUMMARY, ##VARIABLE_REMARKS and so on. Kind 7 is
// placed on nothing: such a comment is known as one, and told as unplaced.
struct Family {
  std::string_view Prefix;
  ElementTypeEnum Kind;
  std::string_view SummaryUpgradesTo;  // empty where the bare form would miss the element
};

constexpr Family kFamilies[] = {
    {"PROJECT_GROUP", etProjectGroup, {}},
    {"PROJECT", etProject, {}},
    {"MODULE", etModule, {}},
    {"BLOCK", etMethod, "##SUMMARY"},
    {"METHOD", etMethod, "##SUMMARY"},
    {"PROPERTY", etMethod, "##SUMMARY"},
    {"VARIABLE", etVariable, "##SUMMARY"},
    {"PARAMETER", etParameter, "##PARAM"},
    {"EVENT", etEvent, "##SUMMARY"},
    {"ENUMERATION", etEnumeration, "##SUMMARY"},
    {"ENUMERATION_MEMBER", etEnumerationMember, "##SUMMARY"},
    {"STRUCTURE", etStructure, "##SUMMARY"},
    {"STRUCTURE_MEMBER", etStructureMember, "##SUMMARY"},
    {"DECLARE", etDeclareStatement, "##SUMMARY"},
    {"INTERFACE", etImplementedInterface, "##SUMMARY"},
    {"LIBRARY", etReserved, {}},
};

TaggedCommentDef Definition(const Row& row) {
  return {std::string(row.Tag),     row.Kind,
          row.Text == Describes,    row.Wrap,
          row.InBuffer == Separate, std::string(row.UpgradeTo),
          std::string(row.Scope),   {}};
}

// The upgrade of these waits until the comment is stored ("p"): the bare form that replaces one
// could find another element.
void AddFamily(TaggedCommentDefs& definitions, const Family& family) {
  const std::string stem = "##" + std::string(family.Prefix);
  const auto add = [&](std::string_view suffix, const Row& meaning) {
    TaggedCommentDef definition = Definition(meaning);
    definition.TagIdentifier = stem + std::string(suffix);
    if (!meaning.UpgradeTo.empty()) definition.UpgradeFlags.push_back('p');
    definitions.Add(std::move(definition));
  };
  const ElementTypeEnum kind = family.Kind;
  const std::string summary = stem + "_SUMMARY";
  add("_SUMMARY", {{}, kind, {}, Describes, wrapLineBreak, Joined, family.SummaryUpgradesTo});
  add("_DESCRIPTION", {{}, kind, {}, Describes, wrapLineBreak, Joined, summary});
  add("_REMARKS", {{}, kind, {}, Kept, wrapParagraph, Joined, "##REMARKS"});
  if (kind == etMethod || kind == etDeclareStatement)
    add("_RETURNS", {{}, kind, {}, Kept, wrapSpace, Joined, "##RETURNS"});
  add("_SEEALSO", {{}, kind, {}, Kept, wrapLineBreak, Separate, "##SEEALSO"});
  add("_EXAMPLE", {{}, kind, {}, Kept, wrapLineBreak, Separate, "##EXAMPLE"});
  const std::string exclude = "##EXCLUDE_" + std::string(family.Prefix);
  definitions.Add(Definition({exclude, kind, {}, Kept, wrapSpace}));
}

TaggedCommentDefs BuildTable() {
  TaggedCommentDefs definitions;
  for (const Row& row : kRows) definitions.Add(Definition(row));
  for (const Family& family : kFamilies) AddFamily(definitions, family);
  return definitions;
}

}  // namespace

const TaggedCommentDefs& BuiltinTagDefinitions() {
  static const TaggedCommentDefs definitions = BuildTable();
  return definitions;
}

}  // namespace vendrel

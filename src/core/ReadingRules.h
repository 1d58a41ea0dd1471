#pragma once
// The two readings of source. Every flag is off in the classic reading, the library's default, and
// on in the complete one, the tool's default. One list makes the struct, its presets, the look-up
// by name and the table of docs/reading.md.

#include <string_view>

namespace vendrel {

// X(name, what the complete reading does)
#define VENDREL_READING_RULES(X)                                                                   \
  X(KeepLinesBehindSeparators,                                                                     \
    "The physical line behind a line with \" : \" waits until the remainders are done.")           \
  X(EverySeparator, "Every \":\" outside strings, comments, brackets and dates parts statements.") \
  X(KeepDirectives, "Directives and false branches stay as they stand in the source.")             \
  X(ConstantExpressions,                                                                           \
    "#Const values are expressions; constants are whole words; Win16, Win32, VBA6 are known.")     \
  X(LeadingComments, "A run of comment lines directly above a declaration belongs to it.")         \
  X(CommentsBehindEnd, "A tagged comment behind the end of a procedure is for what follows it.")   \
  X(ConstantComments, "A tagged comment that stands at a constant belongs to it.")                 \
  X(RemComments, "A Rem line is a comment.")                                                       \
  X(WholeCharacters, "Whole characters are compared; doubled quotes are understood.")              \
  X(QuotedCompanions, "Only \"file\":offset is a reference into the companion file of a form.")    \
  X(ControlIndexes, "Each member of a control array carries its own index.")                       \
  X(ControlProperties, "All properties of a control can be asked for, in their order.")            \
  X(CompanionTexts, "A text in a companion file has the length that its record states.")           \
  X(UnderscoredSources, "The longest name that is known is the source of an event procedure.")     \
  X(KeepHelpAttributes, "Help ID attribute lines stay where they stood.")                          \
  X(KeepAttributePlaces, "Attribute lines of a property stay under their procedure.")              \
  X(LocalStatics, "Static x As Long in a procedure makes a variable.")                             \
  X(EarlyDeclarations, "Event, Declare, Implements, Def... and directives open the declarations.") \
  X(KeywordStatic, "IsStatic of a procedure needs the keyword.")                                   \
  X(ReturnTypes, "The return type stands behind the parameter list; a Sub has none.")              \
  X(MemberNames, "A member of an open Type or Enum may have the name of a keyword.")               \
  X(BracketedNames, "Names in brackets are read whole; blanks of every kind are blanks.")          \
  X(OneLineProcedures, "Header, body and end of a one-line procedure are taken apart.")            \
  X(WholeDefaults,                                                                                 \
    "Default values, fixed-length strings and lists without blanks are read whole.")               \
  X(InitialiseProcedures, "Form_Load, Class_Initialize and their kin are read as any procedure.")  \
  X(DefaultAccess, "Event and Declare without an access word get the access the language gives.")  \
  X(NumberableLines, "Line numbers keep away from labels and places the compiler refuses.")        \
  X(KeepAbsentReferences, "A reference path that names no file stays as it was read.")             \
  X(KeepLineEnds, "A written module has the line ends of the file it was read from.")              \
  X(KeepBlockOrder, "A written module has its blocks in the order in which they were read.")       \
  X(SharedLibraries, "Every Declare has its library, repeated names too.")                         \
  X(EnumerationValues, "Every enumeration member gets its number.")                                \
  X(CompleteNames, "Declares, libraries, controls and local variables are found by name.")         \
  X(KeepProjectLines, "Lines of a project file whose value did not change stay as they stand.")    \
  X(WholeHelpDescriptions, "No description is lost by writing help descriptions.")                 \
  X(DistinctBackups, "A backup holds what stood before the run.")                                  \
  X(KeepBackups, "Backups of two modules of one name do not overwrite each other.")                \
  X(ClosedQuotes, "The compiler command closes the quotation mark behind the project path.")       \
  X(KeepUnreadable, "A library member of an unreadable type stays, without the type.")             \
  X(ModuleConstants, "Constants of a library module are constants of its component.")              \
  X(HideComMembers, "The members of IUnknown and IDispatch are left out.")                         \
  X(ByRefObjects, "Pointer level 2 is by reference, for objects too.")                             \
  X(LibraryTypeNames, "Types of library members carry the element's name.")                        \
  X(LibraryParamArrays, "ParamArray and _NewEnum are known in libraries.")                         \
  X(NetLines,                                                                                      \
    "Lines of VB.NET source are read and kept as they stand, continued by the language.")          \
  X(NetKeepSource, "Every line of a VB.NET file has its place in it and is written there.")        \
  X(NetKeepPlaces, "A VB.NET file is written where it was read, or at its path in the project.")   \
  X(NetProjectItems, "Source files in capitals, HintPath and ReferencePath of VB.NET count.")      \
  X(NetTypeStatements, "Statements of types and namespaces of VB.NET are read word by word.")      \
  X(NetMembers, "Members of VB.NET types are read as the language has them.")                      \
  X(NetEnumerations, "Fields of VB.NET enumerations keep value, type, access and comments.")       \
  X(NetOverloads, "Every overload of a VB.NET method is in its family.")                           \
  X(NetConditions, "Constants of VB.NET projects and files decide what exists.")                   \
  X(NetTypeNames, "Type names of VB.NET are looked up in every scope that the language has.")      \
  X(NetInheritance, "Members of VB.NET are inherited bases first, as the language has it.")        \
  X(NetNames, ".NET names are those of documentation files; delegates are found by them.")         \
  X(AssemblyNesting, "A type nested in a class of an assembly is marked as nested.")               \
  X(NetXmlComments, "The ''' lines of VB.NET source are documentation of what follows them.")      \
  X(DocumentationElements, "All that documentation files say is kept; inheritdoc is followed.")

/// One named flag for each place where the described behaviour loses text or misreads everyday
/// code. A plain value: copy it, change a flag, hand it to a project before `Load`.
struct ReadingRules {
#define VENDREL_RULE(name, sentence) bool name = false;
  VENDREL_READING_RULES(VENDREL_RULE)
#undef VENDREL_RULE

  /// All flags off: the described behaviour.
  static const ReadingRules& Classic();
  /// All flags on: nothing is lost, everyday code is understood.
  static const ReadingRules& Complete();
  /// Sets the flag of that name (ASCII case ignored); false if there is none.
  bool Set(std::string_view name, bool value);

  bool operator==(const ReadingRules&) const = default;
};

/// Name, place and meaning of one flag.
struct ReadingRule {
  std::string_view Name;
  bool ReadingRules::*Flag;
  std::string_view Sentence;
};

/// Calls `visit(const ReadingRule&)` for each flag, in the order of the list.
template <typename Visitor>
void ForEachReadingRule(Visitor&& visit) {
#define VENDREL_RULE(name, sentence) visit(ReadingRule{#name, &ReadingRules::name, sentence});
  VENDREL_READING_RULES(VENDREL_RULE)
#undef VENDREL_RULE
}

}  // namespace vendrel

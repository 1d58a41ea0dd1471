#pragma once
// What was stepped over, missing, ambiguous or not understood, told to whoever asks: a list on the
// project, whether message boxes are shown or not. All texts stand in one table (Diagnostic.cpp).

#include <cstdint>
#include <deque>
#include <initializer_list>
#include <string>
#include <string_view>

namespace vendrel {

enum class Severity : std::uint8_t { Note, Warning, Error };

// X(identifier, stable code, severity, text with %1 %2 %3 for the arguments; %p1 for one that is
// the path of a file)
#define VENDREL_DIAGNOSTICS(X)                                                                     \
  X(DuplicateName, "duplicate-name", Warning, "duplicate %1 '%2'; the first one stays")            \
  X(MissingModule, "missing-module", Warning, "module file not found: %p1")                        \
  X(ModuleUnderOtherCase, "module-case", Note, "module file '%1' is spelled '%2' on the disk")     \
  X(UnreadableFile, "unreadable-file", Error, "%p1 cannot be read (%2)")                           \
  X(NotAFile, "not-a-file", Error, "%p1 is not a regular file")                                    \
  X(BinaryModule, "binary-module", Warning, "%p1 holds binary data, not source; it is not read")   \
  X(EmptyModule, "empty-module", Warning, "%p1 is empty")                                          \
  X(OtherKind, "other-kind", Warning,                                                              \
    "%p1 does not look like a %2; it is read as one all the same")                                 \
  X(NulCharacters, "nul-characters", Warning, "%p1 holds NUL characters; they are kept")           \
  X(DirectionControl, "direction-control", Warning,                                                \
    "%1 changes the order in which this line is shown; what is read may not be what runs")         \
  X(LineNotUnderstood, "line-not-understood", Warning,                                             \
    "line kept as it stands, not interpreted: %1")                                                 \
  X(ConditionFailed, "condition-failed", Warning, "condition taken as false (%2): %1")             \
  X(UnbalancedDirective, "unbalanced-directive", Warning, "%1 without an open #If")                \
  X(OddName, "odd-name", Warning,                                                                  \
    "%1 '%2' has a name or a type that no declaration gives; look at the line")                    \
  X(UnendedDeclaration, "unended-declaration", Warning,                                            \
    "%1 '%2' has no end in front of this line; it ends here")                                      \
  X(LostLine, "lost-line", Warning, "line behind a statement separator is lost: %1")               \
  X(ProjectLineSkipped, "project-line", Warning, "project line kept, but not understood: %1")      \
  X(MissingReference, "missing-reference", Note, "file of the reference not found: %p1")           \
  X(CodePageGuessed, "code-page", Note, "read with code page %1 (%2)")                             \
  X(CharactersNotHeld, "characters-not-held", Error,                                               \
    "%p1 holds characters that code page %2 lacks")                                                \
  X(ControlTreeOpen, "control-tree-open", Warning, "the description of control '%1' has no End")   \
  X(CompanionUnreadable, "companion-file", Note, "text of control '%1' not read from %2")          \
  X(MissingProject, "missing-project", Warning, "project of the group not found: %p1")             \
  X(ProjectRepeated, "project-repeated", Warning, "project named more than once: %p1")             \
  X(GroupLineSkipped, "group-line", Warning, "group line not understood: %1")                      \
  X(FolderSkipped, "folder-skipped", Error, "folder not read: %p1 (%2)")                           \
  X(MissingExampleParameter, "example-parameter", Warning, "%1")                                   \
  X(CommentUnplaced, "comment-unplaced", Note, "tagged comment %1 found no element")               \
  X(ElementNotFound, "element-not-found", Warning, "no element of this name: %1")                  \
  X(TypeLibraryMember, "typelib-member", Warning, "%1")                                            \
  X(AssemblyPart, "assembly-part", Warning, "%1")                                                  \
  X(MissingAssembly, "missing-assembly", Note,                                                     \
    "assembly %1 not found; --reference-path names folders to look in")                            \
  X(AssemblyDropped, "assembly-dropped", Warning,                                                  \
    "%p1 not found; the assembly is left out of the set")                                          \
  X(DocumentationUnread, "documentation-unread", Warning, "documentation is not read: %1")         \
  X(DocumentationPart, "documentation-part", Warning, "%1")                                        \
  X(WriteRefused, "write-refused", Error, "%1")                                                    \
  X(Told, "told", Warning, "%1")                                                                   \
  X(UnreadProject, "unread-project", Error, "%1")                                                  \
  X(MissingReferences, "missing-references", Note, "%1 not on this machine; --verbose tells each") \
  X(UnknownTag, "unknown-tag", Warning,                                                            \
    "%1 is no tag, the line stays an ordinary comment; did you mean %2?")                          \
  X(MissingLibrary, "missing-library", Warning,                                                    \
    "type library %1 not found, needed in %2; --typelib-path names folders to search")

enum class DiagnosticCode : std::uint8_t {
#define VENDREL_CODE(id, code, severity, text) id,
  VENDREL_DIAGNOSTICS(VENDREL_CODE)
#undef VENDREL_CODE
};

/// The stable text code, e.g. "missing-module".
std::string_view CodeName(DiagnosticCode code);
Severity SeverityOf(DiagnosticCode code);
/// "note", "warning" or "error".
std::string_view SeverityName(Severity severity);

/// One thing told.
struct Diagnostic {
  DiagnosticCode Code;
  /// Windows form of the file it concerns; empty if none.
  std::string File;
  /// 1-based physical line in that file; 0: the file as a whole.
  std::int32_t Line = 0;
  std::string Text;
  /// The path that the text names, as it stands there; empty if none.
  std::string Path = {};
};

/// The diagnostics of one project, in the order in which they were told.
class Diagnostics {
 public:
  void Add(Diagnostic diagnostic) { mItems.push_back(std::move(diagnostic)); }
  std::size_t Count() const { return mItems.size(); }
  std::size_t CountOf(DiagnosticCode code) const;
  void Clear() { mItems.clear(); }
  auto begin() const { return mItems.begin(); }
  auto end() const { return mItems.end(); }

 private:
  std::deque<Diagnostic> mItems;
};

/// Where the readers stand: everything told inside a scope goes to its list, with its file and the
/// line that the reader keeps up to date. Scopes nest; leaving one restores the outer one. Outside
/// every scope nothing is recorded.
class DiagnosticScope {
 public:
  /// `line` may be null: the file as a whole. It must outlive the scope.
  DiagnosticScope(Diagnostics* list, std::string file, const std::int32_t* line = nullptr);
  ~DiagnosticScope();
  DiagnosticScope(const DiagnosticScope&) = delete;
  DiagnosticScope& operator=(const DiagnosticScope&) = delete;

  /// The innermost scope, or nullptr.
  static const DiagnosticScope* Current();
  Diagnostics* List() const { return mList; }
  const std::string& File() const { return mFile; }
  std::int32_t Line() const { return mLine ? *mLine : 0; }

 private:
  Diagnostics* mList;
  std::string mFile;
  const std::int32_t* mLine;
  const DiagnosticScope*& mInnermost;  // of the workspace in which the scope was opened
  const DiagnosticScope* mOuter;
};

/// The line at which the readers stand: that of the current scope; 0 outside every scope. Contexts
/// of failures give it, so that the input at fault can be found.
std::int32_t LineReached();

/// Records a diagnostic at the place of the current scope.
void Report(DiagnosticCode code, std::initializer_list<std::string_view> arguments);
/// The same with a place of its own.
void ReportAt(DiagnosticCode code, std::string_view file, std::int32_t line,
              std::initializer_list<std::string_view> arguments);

/// A problem that the design tells in a message box: recorded as `code` with `arguments`, and shown
/// in the box while `Silent` is false.
void ReportBox(DiagnosticCode code, std::initializer_list<std::string_view> arguments,
               std::string_view boxText, std::string_view caption, int style);

}  // namespace vendrel

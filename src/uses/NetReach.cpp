// Where programs of VB.NET are entered, and what runs in their types without being named.

#include <algorithm>
#include <unordered_set>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "model/Component.h"
#include "project/ProjectFile.h"
#include "project/VBProject.h"
#include "services/FileSource.h"
#include "services/SourceText.h"
#include "uses/Entries.h"
#include "uses/Reach.h"
#include "uses/WrittenName.h"

namespace vendrel {
namespace {

// A declaration has fewer lines of attributes in front of it.
constexpr int kMostAttributeLines = 12;

// What markup stands beside the code of, "Page.xaml.vb" for "Page.xaml".
constexpr std::string_view kMarkupExtensions[] = {".xaml", ".aspx", ".ascx", ".asax",
                                                  ".asmx", ".ashx", ".svc",  ".master"};

// Attributes that tell something to a compiler, debugger or designer, and call nothing.
constexpr std::string_view kPassiveAttributes[] = {"obsolete",
                                                   "debuggerstepthrough",
                                                   "debuggernonusercode",
                                                   "clscompliant",
                                                   "methodimpl",
                                                   "extension",
                                                   "editorbrowsable",
                                                   "suppressmessage",
                                                   "generatedcode",
                                                   "compilergenerated",
                                                   "browsable",
                                                   "category",
                                                   "description",
                                                   "debuggerhidden",
                                                   "debuggerdisplay",
                                                   "hidemodulename",
                                                   "conditional",
                                                   "vbfixedstring",
                                                   "flags",
                                                   "defaultvalue"};

// Whether a word stands among those of a declaration, in front of its name and parameters.
bool HasModifier(std::string_view declaration, std::string_view word) {
  const std::string_view front = declaration.substr(0, declaration.find('('));
  for (std::size_t at = FindNoCaseAscii(front, word); at != kNotFound;
       at = FindNoCaseAscii(front, word, at + 1)) {
    const std::size_t end = at + word.size();
    if ((at == 0 || !IsNameLetter(front[at - 1])) &&
        (end == front.size() || !IsNameLetter(front[end])))
      return true;
  }
  return false;
}

// "Test" of "<Test()> _", folded and without its last word; empty for what is none.
std::string AttributeName(std::string_view line) {
  line = Trim(line);
  if (line.size() < 2 || line[0] != '<' || (!IsLetterAscii(line[1]) && line[1] != '_')) return {};
  line.remove_prefix(1);
  std::size_t end = 0;
  while (end < line.size() && (IsNameLetter(line[end]) || line[end] == '.')) ++end;
  if (end < line.size() && line[end] == ':') return {};  // of the assembly
  std::string_view name = line.substr(0, end);
  name.remove_prefix(std::min(name.rfind('.') + 1, name.size()));
  std::string folded = LowerAscii(name);
  if (folded.ends_with("attribute")) folded.resize(folded.size() - 9);
  return folded;
}

// The lines of a file on which attributes stand that may have what follows them called.
class AttributeLines {
 public:
  explicit AttributeLines(std::string_view text) {
    while (!text.empty()) mLines.push_back(TakeLine(text));
  }

  // Whether attributes stand on the line of a declaration or on those above it.
  bool Has(std::int32_t line) const {
    for (int i = 0; i < kMostAttributeLines && line > 0; ++i, --line) {
      if (static_cast<std::size_t>(line) > mLines.size()) return false;
      const std::string_view text = Trim(mLines[static_cast<std::size_t>(line) - 1]);
      const std::string name = AttributeName(text);
      const bool isPassive = std::find(std::begin(kPassiveAttributes), std::end(kPassiveAttributes),
                                       name) != std::end(kPassiveAttributes);
      if (!name.empty() && !isPassive) return true;
      if (i > 0 && name.empty() && !text.ends_with('_') && !text.ends_with(',')) return false;
    }
    return false;
  }

 private:
  std::vector<std::string_view> mLines;
};

// All words inside of quotation marks: handlers, names of controls, paths of bindings.
std::unordered_set<std::string> NamesInMarkup(std::string_view text) {
  std::unordered_set<std::string> names;
  for (std::size_t open = text.find('"'); open != text.npos; open = text.find('"', open + 1)) {
    const std::size_t close = std::min(text.find('"', open + 1), text.size());
    std::size_t at = open + 1;
    while (at < close) {
      std::size_t end = at;
      while (end < close && IsNameLetter(text[end])) ++end;
      if (end > at) names.insert(FoldKey(text.substr(at, end - at)));
      at = end + 1;
    }
    open = close;
    if (open >= text.size()) break;
  }
  return names;
}

// The path of the markup beside a source; empty for a source that has none.
std::string MarkupPathOf(const ProjectFile& file) {
  std::string path = file.FileName.NativePath();
  if (!EndsWithNoCaseAscii(path, ".vb")) return {};
  path.resize(path.size() - 3);
  for (const std::string_view extension : kMarkupExtensions)
    if (EndsWithNoCaseAscii(path, extension)) return path;
  return {};
}

// Pages of the web are tied to such names without a Handles.
bool IsNamedForPage(const Block& procedure) {
  for (const std::string_view prefix : {"Page_", "Application_", "Session_"})
    if (StartsWithNoCaseAscii(procedure.Name(), prefix)) return true;
  return false;
}

// A form without a constructor gets one from the compiler, which calls this.
bool IsMadeByDesigner(const Block& block) {
  return EqualsNoCaseAscii(block.Name(), "InitializeComponent");
}

bool IsSeenByHeirs(const SharedText& access) {
  return EqualsNoCaseAscii(access, "PUBLIC") || ContainsNoCaseAscii(access, "PROTECTED");
}

}  // namespace

bool IsNetProject(const VBProject& project) {
  return project.LanguageVersion() == lvVisualBasicDotNet;
}

bool IsNetModule(const Component& module) {
  const VBProject* project = module.VBProject();
  return project && IsNetProject(*project);
}

bool IsFoundByDesigner(const CodeElement& element) {
  const Component* home = element.OwnComponent();
  if (!home || !IsNetModule(*home)) return false;
  if (IsA<Variable>(&element))
    return EqualsNoCaseAscii(element.ElementName(), "designerPlaceholderDeclaration");
  const auto* block = As<Block>(&element);
  if (!block) return false;
  if (StartsWithNoCaseAscii(block->Name(), "ShouldSerialize")) return true;
  if (!StartsWithNoCaseAscii(block->Name(), "Reset")) return false;
  for (const Block* one : home->Blocks.Named(std::string_view(block->Name()).substr(5)))
    if (one->IsPropertyType()) return true;
  return false;
}

// The module or form that the project names; where it names none, each Main, or what the project
// system makes of a form: MyApplication.
void Reach::EnterNetStartup(VBProject& project) {
  EnterMarkup(project);
  EnterAttributed(project);
  const std::string_view startup = project.Startup;
  const std::string_view last = startup.substr(startup.rfind('.') + 1);
  bool found = false;
  const auto enterMain = [&](const Component& module) {
    for (const Block* block : module.Blocks.Named("Main")) {
      Enter(*block, ReachCause::Startup);
      found = true;
    }
  };
  for (const Component& module : project.Components.Listed()) {
    const bool isNamed =
        EqualsNoCase(module.FullName(), startup) || EqualsNoCase(module.Name, last);
    if (!isNamed && !EqualsNoCaseAscii(module.Name, "MyApplication")) continue;
    Enter(module, ReachCause::Startup);
    found |= isNamed;
    if (isNamed) enterMain(module);
  }
  if (found || IsLibraryProject(project)) return;
  for (const Component& module : project.Components.Listed()) enterMain(module);
  if (found) return;
  // Nothing tells it: whatever shows itself is taken for the startup object.
  for (const Component& module : project.Components.Listed())
    if (EndsWithNoCaseAscii(module.InheritsFrom, "Form") ||
        EndsWithNoCaseAscii(module.InheritsFrom, "Window"))
      Enter(module, ReachCause::Startup);
}

// Pages and windows, which are made by their markup, and what the markup names.
void Reach::EnterMarkup(VBProject& project) {
  const Workspace::Use use(project.Workspace());
  for (const ProjectFile& file : project.ProjectFiles) {
    const std::string path = MarkupPathOf(file);
    if (path.empty()) continue;
    std::string text;
    try {
      text = ReadWholeFile(path);
    } catch (const VendrelError&) {
      continue;  // only the code of it is there
    }
    const std::unordered_set<std::string> names = NamesInMarkup(text);
    for (const Component& module : file.Components) {
      Enter(module, ReachCause::Designer);
      for (const Block& block : module.Blocks)
        if (names.contains(FoldKey(block.Name()))) Enter(block, ReachCause::Designer);
    }
  }
}

// What has attributes may be found and called by them: tests, services, commands.
void Reach::EnterAttributed(VBProject& project) {
  for (const ProjectFile& file : project.ProjectFiles) {
    if (!file.SourceForm) continue;
    const AttributeLines lines(file.SourceForm->Text);
    for (const Component& module : file.Components) {
      const bool isMarked = lines.Has(module.SourceLine());
      if (isMarked) Enter(module, ReachCause::Attribute);
      for (const Block& block : module.Blocks) {
        if (block.BlockType() == btDeclarations && block.Variables.IfAny())
          for (const Variable& field : *block.Variables)
            if ((isMarked && module.IsStructure) || lines.Has(field.SourceLine()))
              Enter(field, ReachCause::Attribute);
        if (block.Name().empty() || !IsOwnMemberOf(block)) continue;
        if (lines.Has(block.SourceLine())) Enter(block, ReachCause::Attribute);
        if (const Blocks* overloads = block.OverloadBlocks().IfAny())
          for (const Block& overload : *overloads)
            if (lines.Has(overload.SourceLine())) Enter(overload, ReachCause::Attribute);
      }
    }
  }
}

void Reach::EnterNetPublic(const Component& module) {
  constexpr auto cause = ReachCause::PublicOfLibrary;
  Enter(module, cause);
  for (const Block& block : module.Blocks) {
    if (block.BlockType() == btDeclarations) {
      if (block.Variables.IfAny())
        for (const Variable& field : *block.Variables)
          if (IsSeenByHeirs(field.Access) || module.IsEnumeration) Enter(field, cause);
      if (block.Constants.IfAny())
        for (const Constant& constant : *block.Constants)
          if (IsSeenByHeirs(constant.Access)) Enter(constant, cause);
      continue;
    }
    if (!block.Name().empty() && IsOwnMemberOf(block) && IsSeenByHeirs(block.Access))
      Enter(block, cause);
  }
  for (const EventDeclaration& event : module.EventDeclarations) Enter(event, cause);
}

// Constructors, initialisers of fields, handlers, what overrides or implements, operators, partial
// procedures.
void Reach::MarkNetModule(const Component& module) {
  const auto look = [&](const Block& block) {
    const std::string_view head = block.DefinitionLine;
    if (block.IsEventProcedure || IsNamedForPage(block))
      Enter(block, ReachCause::EventProcedure);
    else if (module.IsInterface || !block.ImplementsName().empty() || !block.Interface.empty() ||
             HasModifier(head, "Overrides") || HasModifier(head, "Operator") ||
             HasModifier(head, "Partial"))        // for others to fill in
      Enter(block, ReachCause::InterfaceMember);  // its parameters are given
    else if (block.IsConstructor || HasModifier(head, "Default") || IsMadeByDesigner(block))
      Enter(block, ReachCause::DefaultMember);
  };
  for (const Block& block : module.Blocks) {
    if (block.BlockType() == btDeclarations && block.Variables.IfAny())
      for (const Variable& field : *block.Variables) FollowFrom(field);
    if (block.Name().empty() || !IsOwnMemberOf(block)) continue;
    look(block);
    if (const Blocks* overloads = block.OverloadBlocks().IfAny())
      for (const Block& overload : *overloads) look(overload);
  }
  MarkWaiting(module);
}

// Which overload a call means is not certain, and the procedures of a property are one. Overloads
// are called "Name(types)", and gathered under a block of their name.
void Reach::MarkFamily(const Block& block, const Component& home) {
  const SharedText& name = block.Name();
  for (const Block* one : home.Blocks.Named(name.substr(0, name.find('(')))) {
    const Blocks* overloads = one->OverloadBlocks().IfAny();
    if (!overloads && !block.IsPropertyType()) continue;
    Mark(mGraph.NodeOf(*one));
    if (!overloads) continue;
    for (const Block& overload : *overloads) Mark(mGraph.NodeOf(overload));
  }
}

}  // namespace vendrel

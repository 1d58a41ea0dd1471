#include "survey/ProjectRules.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "model/ModuleKinds.h"
#include "output/Places.h"
#include "services/SourceText.h"
#include "survey/Wording.h"
#include "text/CodeLines.h"

namespace vendrel {
namespace {

// What a rule hands its findings to.
class FindingList {
 public:
  FindingList(std::string_view id, std::vector<Finding>& found)
      : mRule(FindRule(id)), mFound(found) {}
  void Add(const std::string& file, std::int32_t line, std::string text, std::string path = {}) {
    mFound.push_back({mRule, file, line, 0, std::move(text), std::move(path), {}});
  }

 private:
  const Rule* mRule;
  std::vector<Finding>& mFound;
};

// The path that a line of a project file gives a module; empty for any other line.
std::string_view ModulePathOf(std::string_view line) {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return {};
  const ModuleKind* kind = ModuleKindOfKey(Trim(line.substr(0, equals)));
  std::string_view value = line.substr(equals + 1);
  if (!kind) return {};
  if (const std::size_t semicolon = value.find(';'); semicolon != std::string_view::npos)
    value.remove_prefix(semicolon + 1);
  else if (kind->LineTellsName)
    return {};
  return Trim(value);
}

void FindModulesListedTwice(const VBProject& project, FindingList& list) {
  if (!project.FileLines || !project.FileLines->Source) return;
  std::unordered_map<std::string, std::int32_t> lines;
  std::int32_t number = 0;
  for (const ProjectFileLine& line : project.FileLines->Lines) {
    ++number;
    const std::string_view path = ModulePathOf(project.FileLines->Text(line));
    if (path.empty()) continue;
    FileSystemObject file(project.FileName.FolderPath() + "x");
    FileSystemObject module;
    module.SetBaseFile(&file);
    module.SetFullPath(path);
    const auto [first, isNew] = lines.try_emplace(FoldKey(module.FullPath()), number);
    if (!isNew)
      list.Add(project.FileName.FullPath(), number,
               "line " + std::to_string(first->second) +
                   " lists this file already: " + module.FullPath(),
               module.FullPath());
  }
}

void FindMixedLineEnds(const VBProject& project, FindingList& list) {
  ForEachSource(project, [&](const std::string& file, const SourceText& source, const Component*) {
    if (source.LineEnds.Form != LineEnds::Kind::Mixed) return;
    static constexpr std::array<std::string_view, 3> names{"CR LF", "LF", "CR"};
    std::array<std::size_t, 3> counts{};
    std::size_t first = names.size();
    std::int32_t line = 0, odd = 0;
    for (std::size_t at = 0; (at = source.Text.find_first_of("\r\n", at)) != std::string::npos;) {
      const bool isPair = source.Text.compare(at, 2, "\r\n") == 0;
      const std::size_t kind = isPair ? 0 : source.Text[at] == '\n' ? 1 : 2;
      ++counts[kind];
      ++line;
      if (first == names.size()) first = kind;
      if (kind != first && odd == 0) odd = line;
      at += isPair ? 2 : 1;
    }
    std::string text = "lines end in different ways:";
    for (std::size_t i = 0; i < names.size(); ++i)
      if (counts[i] > 0)
        text.append(text.ends_with(':') ? " " : ", ")
            .append(std::to_string(counts[i]))
            .append(" with ")
            .append(names[i]);
    list.Add(file, odd, text);
  });
}

// What a caller has to know of a Declare; names of parameters are none of it.
std::string SignatureOf(const DeclareDeclaration& declare) {
  std::string signature = declare.IsFunction ? "Function (" : "Sub (";
  for (const Parameter& parameter : *declare.Parameters) {
    if (!signature.ends_with('(')) signature += ", ";
    if (parameter.IsOptional) signature += "Optional ";
    if (parameter.IsParamArray) signature += "ParamArray ";
    signature += parameter.IsByRef ? "ByRef " : "ByVal ";
    signature += FoldKey(parameter.VariableType);
    if (parameter.IsArray) signature += "()";
  }
  return signature + ") As " + FoldKey(declare.ReturnType);
}

// In VB.NET they may be overloaded.
void FindDeclareSignatures(const VBProject& project, FindingList& list) {
  if (project.LanguageVersion() == lvVisualBasicDotNet) return;
  struct First {
    std::string Signature, File;
    std::int32_t Line;
  };
  std::unordered_map<std::string, First> known;
  for (const Component& component : project.Components.Listed()) {
    const std::string file = component.FileName.FullPath();
    for (const DeclareDeclaration& declare : component.Declarations) {
      std::string signature = SignatureOf(declare);
      const auto [entry, isNew] =
          known.try_emplace(FoldKey(declare.Name), First{signature, file, declare.SourceLine()});
      const First& first = entry->second;
      if (isNew || first.Signature == signature) continue;
      const std::string text = "Declare '" + declare.Name + "' differs from the one ";
      if (first.File == file)
        list.Add(file, declare.SourceLine(), text + "on line " + std::to_string(first.Line));
      else
        list.Add(file, declare.SourceLine(),
                 text + "in " + first.File + ", line " + std::to_string(first.Line), first.File);
    }
  }
}

bool IsCode(std::string_view line) {
  line = Trim(line);
  if (line.empty() || line.front() == '\'' || line.front() == '#') return false;
  for (const std::string_view word : {"Rem", "Attribute"})
    if (StartsWithNoCaseAscii(line, word) &&
        (line.size() == word.size() || line[word.size()] == ' '))
      return false;
  return true;
}

// The first physical line that is neither header, comment nor directive; 0 if there is none.
std::int32_t FirstCodeLine(const Component& component) {
  SourceColumns lines;
  const SourcePlace place{&component, nullptr, 1, &component};
  for (const Block& block : component.Blocks) {
    const CodeLines* code = block.CodeLines.IfAny();
    if (!code || code->Unloaded() || block.BlockType() == btAttributes) continue;
    for (std::int32_t i = 1; i <= code->Count(); ++i) {
      if (code->NotInSource(i) || !IsCode(code->LineView(i))) continue;
      const std::int32_t line = lines.LineOf(place, *code, i);
      if (line > 0) return line;
    }
  }
  return 0;
}

// In VB.NET it is on where nothing is said.
void FindNoOptionExplicit(const VBProject& project, FindingList& list) {
  if (project.LanguageVersion() == lvVisualBasicDotNet || project.WasReadFromTypeLibrary) return;
  for (const Component& component : project.Components.Listed()) {
    if (component.OptionExplicit || !component.SourceForm) continue;
    const std::int32_t line = FirstCodeLine(component);
    if (line > 0)
      list.Add(component.FileName.FullPath(), line,
               "Option Explicit is missing; a mistyped name is a new variable");
  }
}

template <typename Elements>
void FindUndocumented(const Elements& elements, std::string_view word, FindingList& list) {
  for (const auto& element : elements) {
    if (element.AccessType() != atPublic || !element.Description().empty()) continue;
    if constexpr (requires { element.InheritedFrom; })
      if (!element.InheritedFrom.empty()) continue;
    const Component* component = element.OwnComponent();
    if (component)
      list.Add(component->FileName.FullPath(), element.SourceLine(),
               std::string(word) + " '" + element.ElementName() + "' has no description");
  }
}

// A property is one member; a handler of an event and what an interface demands are none.
void FindUndocumentedProcedures(const Component& component, FindingList& list) {
  for (const Block& block : component.Blocks) {
    if (block.Name().empty()) {
      FindUndocumented(*block.Variables, "variable", list);
      FindUndocumented(*block.Constants, "constant", list);
      continue;
    }
    if (block.AccessType() != atPublic || block.IsEventProcedure || block.IsHiddenMember ||
        !block.Interface.empty() || !IsOwnMember(block))
      continue;
    const bool isProperty = block.IsPropertyType();
    if (isProperty && !component.IsFirstPropertyBlock(&block)) continue;
    const std::string description =
        isProperty ? component.PropertyDescription(block.Name()) : block.Description();
    if (description.empty())
      list.Add(component.FileName.FullPath(), block.SourceLine(),
               std::string(isProperty ? "property" : "procedure") + " '" + block.Name() +
                   "' has no description");
  }
}

void FindUndocumentedMembers(const VBProject& project, FindingList& list) {
  for (const Component& component : project.Components.Listed()) {
    FindUndocumentedProcedures(component, list);
    FindUndocumented(component.EventDeclarations, "event", list);
    FindUndocumented(component.Enumerations, "enumeration", list);
    FindUndocumented(component.UDTs, "type", list);
    FindUndocumented(component.Declarations, "Declare", list);
  }
}

struct ProjectRule {
  std::string_view Id;
  void (*Find)(const VBProject& project, FindingList& list);
};
constexpr ProjectRule kProjectRules[] = {
    {"module-listed-twice", FindModulesListedTwice}, {"mixed-line-ends", FindMixedLineEnds},
    {"declare-signatures", FindDeclareSignatures},   {"option-explicit", FindNoOptionExplicit},
    {"undocumented", FindUndocumentedMembers},
};

}  // namespace

void FindInProject(const VBProject& project, const RuleFilter& wanted,
                   std::vector<Finding>& found) {
  for (const ProjectRule& rule : kProjectRules) {
    if (!wanted(*FindRule(rule.Id))) continue;
    FindingList list(rule.Id, found);
    rule.Find(project, list);
  }
}

}  // namespace vendrel

#include "cli/Outline.h"

#include <algorithm>
#include <vector>

#include "cli/Elements.h"
#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "dotnet/Sources.h"
#include "model/ModuleKinds.h"
#include "survey/Wording.h"

namespace vendrel::cli {
namespace {

constexpr std::string_view kWordColour = "\033[36m";
constexpr std::string_view kRemarkColour = "\033[33m";
constexpr std::string_view kPlaceColour = "\033[2m";
constexpr int kMemberDepth = 3;
constexpr int kPartDepth = 4;

std::string_view WordOf(const Component& component) {
  if (component.IsMDI()) return "MDI form";
  if (component.IsInterface && component.Options().WasReadFromTypeLibrary) return "interface";
  if (component.Name == kDelegatesModule) return "module";
  if (component.IsStructure) return "structure";
  if (component.IsEnumeration) return "enumeration";
  return KindOfModule(component.FileType).Word;
}

std::string Joined(std::initializer_list<std::string> parts) {
  std::string joined;
  for (const std::string& part : parts) {
    if (part.empty()) continue;
    if (!joined.empty()) joined += ", ";
    joined += part;
  }
  return joined;
}

bool IsProcedure(const Block& block) {
  return block.BlockType() != btDeclarations && block.BlockType() != btAttributes;
}

// What a class of an assembly inherits is not shown, and not made for that.
template <typename Member>
bool IsInherited(const Member& member) {
  return !member.Implemented && !member.InheritedFrom.empty();
}
bool IsInherited(const Block& block) {
  return !block.Implemented && !block.InheritedFrom().empty();
}

std::size_t ProcedureCount(const Component& component) {
  std::size_t count = 0;
  for (const Block& block : component.Blocks.Listed())
    count += IsProcedure(block) && !IsInherited(block) ? 1 : 0;
  return count;
}

const Block* DeclarationsOf(const Component& component) {
  for (const Block& block : component.Blocks.Listed())
    if (block.BlockType() == btDeclarations) return &block;
  return nullptr;
}

std::string StateOf(const Component& component) {
  if (component.LoadState != lsNotLoaded || component.LinesAlreadyRead > 0) return {};
  return component.FileName.Exists() ? "not read" : "missing";
}

std::string TypedName(std::string_view access, std::string_view name, bool isArray,
                      std::string_view subscript, std::string_view type) {
  std::string text = AccessWords(access);
  if (!text.empty()) text += ' ';
  text += name;
  if (isArray) text.append("(").append(subscript).append(")");
  if (!type.empty()) text.append(" As ").append(type);
  return text;
}

std::string AccessAndName(std::string_view access, std::string_view name) {
  return TypedName(access, name, false, {}, {});
}

std::string VariableWords(const Variable& variable, bool withAccess) {
  const std::string events = variable.IsWithEvents ? "WithEvents " : "";
  return TypedName(withAccess ? variable.Access : SharedText(), events + variable.Name,
                   variable.IsArray, variable.ArraySubscript, TypeWords(variable));
}

// VB.NET source: one file holds several types, and several files may hold one.
bool IsOfNetSource(const Component& component) {
  const VBProject* project = component.VBProject();
  return project && project->ProjectFiles.Count() > 0;
}

// What raises the event that a procedure handles.
std::string EventOf(const Block& block) {
  const CodeElement* source = block.EventSource.Get();
  return block.IsEventProcedure && source ? "event of " + source->ElementName() : std::string();
}

}  // namespace

bool Outline::Write(const VBProject& project) {
  if (mOptions.Module.empty()) WriteProject(project);
  bool found = mOptions.Module.empty();
  for (const Component& component : project.Components.Listed()) {
    if (!mOptions.Module.empty() && !EqualsNoCase(component.Name, mOptions.Module)) continue;
    found = true;
    if (Shows(2)) WriteModule(component);
  }
  return found;
}

void Outline::WriteProject(const VBProject& project) {
  mFile = project.FileName.FullPath();
  std::size_t procedures = 0;
  for (const Component& component : project.Components.Listed())
    procedures += ProcedureCount(component);
  Line(1, "project", project.ProjectName,
       Joined({std::string(project.ProjectTypeDescription()),
               CountOf(project.Components.Count(), "module"), CountOf(procedures, "procedure"),
               CountOf(project.References.Count(), "reference")}),
       project.WasReadFromTypeLibrary ? 0 : 1);
  if (!Shows(2)) return;
  for (const Reference& reference : project.References)
    Line(2, reference.ReferenceType == "Object" ? "object" : "reference",
         ReferenceNameOf(reference), reference.Version, reference.SourceLine());
}

void Outline::WriteModule(const Component& component) {
  const bool isOfLibrary = component.Options().WasReadFromTypeLibrary;
  mFile = isOfLibrary ? std::string() : component.FileName.FullPath();
  const auto lines = static_cast<std::size_t>(std::max(component.LinesAlreadyRead, 0));
  Line(2, WordOf(component), component.Name,
       Joined({StateOf(component), CountOf(lines, "line"),
               CountOf(ProcedureCount(component), "procedure"),
               CountOf(component.AllVBControls.Count(), "control")}),
       std::max(1, IsOfNetSource(component) ? component.SourceLine() : 1));
  if (!Shows(kMemberDepth)) return;
  WriteControls(component);
  WriteDeclarations(component);
  for (const Block& block : component.Blocks.Listed())
    if (IsProcedure(block) && !IsInherited(block)) WriteBlock(block);
}

void Outline::WriteDeclarations(const Component& component) {
  for (const Interface& item : component.Interfaces)
    Line(kMemberDepth, "implements", item.Name.view(), {}, item.SourceLine());
  for (const EventDeclaration& item : component.EventDeclarations.Listed()) {
    if (IsInherited(item)) continue;
    const Parameters* parameters = item.Parameters.IfAny();
    Line(kMemberDepth, "event", item.Name.view(),
         CountOf(parameters ? parameters->Count() : 0, "parameter"), item.SourceLine());
    WriteParameters(parameters);
  }
  for (const Enumeration& item : component.Enumerations) {
    Line(kMemberDepth, "enum", AccessAndName(item.Access, item.Name),
         CountOf(item.Members().Count(), "member"), item.SourceLine());
    if (!Shows(kPartDepth)) continue;
    for (const EnumMember& member : item.Members())
      Line(kPartDepth, "member", member.Name.view(), member.Value.view(), member.SourceLine());
  }
  for (const UDT& item : component.UDTs) {
    Line(kMemberDepth, "type", AccessAndName(item.Access, item.Name),
         CountOf(item.Members.Count(), "member"), item.SourceLine());
    WriteVariables(kPartDepth, &item.Members, "member");
  }
  const Block* declarations = DeclarationsOf(component);
  const Constants* constants = declarations ? declarations->Constants.IfAny() : nullptr;
  for (std::size_t i = 1; constants && i <= constants->Count(); ++i) {
    const Constant& item = *constants->Item(i);
    Line(kMemberDepth, "constant", AccessAndName(item.Access, item.Name), item.Value,
         item.SourceLine());
  }
  WriteVariables(kMemberDepth, declarations ? declarations->Variables.IfAny() : nullptr,
                 "variable");
  for (const DeclareDeclaration& item : component.Declarations) {
    const std::string words = ShownSource(AccessAndName(item.Access, DeclareWords(item)));
    Line(kMemberDepth, "declare", {words, true}, {}, item.SourceLine());
    WriteParameters(item.Parameters.IfAny());
  }
}

void Outline::WriteBlock(const Block& block) {
  const Blocks* overloads = block.OverloadBlocks().IfAny();
  const Component* component = block.Component.Get();
  const bool isNet = component && IsOfNetSource(*component);
  if (overloads && overloads->Count() > 0 && (isNet || block.Options().WasReadFromTypeLibrary)) {
    for (const Block& overload : *overloads)
      if (!IsInherited(overload)) WriteBlock(overload);
    return;
  }
  const Variables* variables = block.Variables.IfAny();
  const bool isSignature = !block.DefinitionLine.empty() || block.Options().WasReadFromTypeLibrary;
  const std::string words =
      isSignature ? SignatureOf(block) : AccessAndName(block.Access, block.Name());
  if (isNet) mFile = SourceFileOf(*component, block).FullPath();
  Line(kMemberDepth, block.IsPropertyType() ? "property" : "procedure", {words, isSignature},
       Joined({EventOf(block), CountOf(variables ? variables->Count() : 0, "variable")}),
       block.SourceLine());
  WriteParameters(block.Parameters.IfAny());
  WriteVariables(kPartDepth, variables, "variable");
}

template <typename Collection>
void Outline::WriteVariables(int depth, const Collection* variables, std::string_view word) {
  if (!variables || !Shows(depth)) return;
  for (const Variable& item : *variables) {
    if (IsInherited(item)) continue;
    if (const Component* component = item.Component.Get(); component && IsOfNetSource(*component))
      mFile = SourceFileOf(*component, item).FullPath();
    Line(depth, item.Value.empty() ? word : "constant", VariableWords(item, depth == kMemberDepth),
         item.Value, item.SourceLine());
  }
}

void Outline::WriteParameters(const Parameters* parameters) {
  if (!parameters || !Shows(kPartDepth)) return;
  for (const Parameter& item : *parameters)
    Line(kPartDepth, "parameter", TypedName({}, item.Name(), item.IsArray, {}, item.VariableType),
         item.DefaultValue, item.SourceLine());
}

// From the root down, siblings in order: with a stack of its own.
void Outline::WriteControls(const Component& component) {
  struct Open {
    const VBControls* Children;
    std::size_t Next;
  };
  if (!component.VBControl || !Shows(kPartDepth)) return;
  std::vector<Open> stack{{&component.VBControl->VBControls, 1}};
  while (!stack.empty()) {
    Open& open = stack.back();
    if (open.Next > open.Children->Count()) {
      stack.pop_back();
      continue;
    }
    const VBControl& control = *open.Children->Item(open.Next++);
    Line(kMemberDepth + static_cast<int>(stack.size()) - 1, "control", control.Name.view(),
         control.ProgID.view(), control.SourceLine());
    stack.push_back({&control.VBControls, 1});
  }
}

void Outline::Line(int depth, std::string_view word, const Cell& text, std::string_view remark,
                   std::int32_t line) {
  mLine.assign(IndentOf(depth - 1), ' ');
  Paint(kWordColour, word);
  mLine += ' ';
  text.AppendTo(mLine);
  if (!remark.empty()) {
    mLine += "  (";
    Paint(kRemarkColour, remark);
    mLine += ')';
  }
  if (!mFile.empty()) {
    mLine += "  ";
    Paint(kPlaceColour, mPaths.Place(mFile, line));
  }
  mLine += '\n';
  mOut << mLine;
}

void Outline::Paint(std::string_view colour, std::string_view text) {
  if (!mOptions.Coloured) {
    AppendShown(mLine, text);
    return;
  }
  mLine += colour;
  AppendShown(mLine, text);
  mLine += "\033[0m";
}

}  // namespace vendrel::cli

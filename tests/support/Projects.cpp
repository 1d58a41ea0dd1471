#include "support/Projects.h"

#include <gtest/gtest.h>

#include <sstream>

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "project/ModuleNames.h"
#include "text/StatementKeywords.h"

namespace vendrel::test {

std::string WithCrLf(std::string_view text) { return ReplaceAll(text, "\n", "\r\n"); }

Prepare Reading(std::string_view flags) {
  return [flags](VBProject& project) {
    std::string_view rest = flags;
    while (!rest.empty()) {
      const std::string_view flag = TakeField(rest, ' ');
      EXPECT_TRUE(project.Reading.Set(flag, true)) << flag;
    }
  };
}

Prepare Complete() {
  return [](VBProject& project) { project.Reading = ReadingRules::Complete(); };
}

std::string Header(FileTypeEnum type, std::string_view name) {
  const std::string attribute = "Attribute VB_Name = \"" + std::string(name) + "\"\n";
  switch (type) {
    case ftModule: return attribute;
    case ftClass: return "VERSION 1.0 CLASS\nBEGIN\n  MultiUse = -1  'True\nEND\n" + attribute;
    case ftForm: return "VERSION 5.00\nBegin VB.Form " + std::string(name) + "\nEnd\n" + attribute;
    case ftUserControl:
      return "VERSION 5.00\nBegin VB.UserControl " + std::string(name) + "\nEnd\n" + attribute;
    case ftUserDocument:
      return "VERSION 5.00\nBegin VB.UserDocument " + std::string(name) + "\nEnd\n" + attribute;
    default: return {};
  }
}

namespace {

std::string ProjectLineOf(FileTypeEnum type, const std::string& name, const std::string& file) {
  switch (type) {
    case ftModule: return "Module=" + name + "; " + file + "\n";
    case ftClass: return "Class=" + name + "; " + file + "\n";
    case ftForm: return "Form=" + file + "\n";
    case ftUserControl: return "UserControl=" + file + "\n";
    case ftUserDocument: return "UserDocument=" + file + "\n";
    case ftDesigner: return "Designer=" + file + "\n";
    default: return "PropertyPage=" + file + "\n";
  }
}

// " word" where the condition holds.
std::string If(bool condition, std::string_view word) {
  return condition ? " " + std::string(word) : std::string();
}

template <typename Collection>
std::string List(const Collection& collection) {
  std::string list;
  for (const auto& item : collection) list += (list.empty() ? "" : ", ") + Describe(item);
  return list;
}

std::string About(const CodeElement& element) {
  const auto* untagged = const_cast<CodeElement&>(element).UnTaggedDescriptionField();
  const auto* tagged = element.TaggedDescriptionField();
  std::string text;
  if (untagged && !untagged->empty()) text += " '" + untagged->str() + "'";
  if (tagged && !tagged->empty()) text += " ##'" + tagged->str() + "'";
  return text;
}

std::string At(const CodeElement& element, std::int32_t lineIndex) {
  return " @" + std::to_string(lineIndex) + "/" + std::to_string(element.SourceLine());
}

std::string BlockKind(BlockTypeEnum type) {
  static const char* const kNames[] = {
      "",           "sub",        "function",  "get",  "let",    "set",          "declarations",
      "attributes", "initialize", "terminate", "load", "unload", "unrecognised", "ucinit",
      "ucterm",     "udinit",     "udterm"};
  return kNames[type];
}

std::string Declarations(const Component& c) {
  std::string text;
  for (const Interface& item : c.Interfaces)
    text += " implements " + item.Name + At(item, item.LineIndex) + About(item) + "\n";
  for (const EventDeclaration& item : c.EventDeclarations) {
    text += " event" + If(!item.Access.empty(), item.Access) + " " + item.Name + "(" +
            List(*item.Parameters) + ")" + If(item.IsHiddenMember, "hidden") +
            If(item.HelpContextID != 0, "help=" + std::to_string(item.HelpContextID)) +
            At(item, item.LineIndex) + About(item) + "\n";
  }
  for (const Enumeration& item : c.Enumerations)
    text += " enum " + item.Access.str() + " " + item.Name + " {" + List(item.Members()) + "}" +
            If(item.IsHiddenMember, "hidden") + At(item, item.LineIndex) + About(item) + "\n";
  for (const UDT& item : c.UDTs)
    text += " type " + item.Access.str() + " " + item.Name + " {" + List(item.Members) + "}" +
            If(item.IsHiddenMember, "hidden") + At(item, item.LineIndex) + About(item) + "\n";
  for (const DeclareDeclaration& item : c.Declarations) {
    text += " declare" + If(!item.Access.empty(), item.Access) +
            (item.IsFunction ? " function " : " sub ") + item.Name + " lib " + item.Library.str() +
            If(!item.Alias.empty(), "alias " + item.Alias.str()) + "(" + List(*item.Parameters) +
            ")" + If(!item.ReturnType.empty(), "As " + item.ReturnType.str()) +
            (item.ReturnTypeIsArray ? "()" : "") + If(!item.LibraryObject, "unlinked") +
            At(item, item.LineIndex) + About(item) + "\n";
  }
  for (const PropertyGroup& item : c.PropertyGroups)
    text += " property " + item.Access() + " " + item.Name + If(item.PropertyGetBlock(), "get") +
            If(item.PropertyLetBlock(), "let") + If(item.PropertySetBlock(), "set") + "\n";
  return text;
}

}  // namespace

TestProject::TestProject(Modules modules, const Prepare& prepare) {
  std::string lines = "Type=Exe\n";
  for (const auto& [file, body] : modules) {
    const std::string base = file.substr(0, file.find('.'));
    const FileTypeEnum type = FileTypeOfExtension(file.substr(file.find('.') + 1));
    lines += ProjectLineOf(type, base, file);
    const std::string header = body.starts_with("VERSION ") ? "" : Header(type, base);
    Files.Add("/p/" + file, WithCrLf(header + body));
  }
  Files.Add("/p/P.vbp", WithCrLf(lines + "Name=\"P\"\n"));
  Project = std::make_shared<VBProject>();
  if (prepare) prepare(*Project);
  EXPECT_TRUE(Project->Load("/p/P.vbp"));
}

Component& TestProject::Module(std::string_view name) {
  Project->Components.Populate();
  return *Project->Components.Item(name);
}

TestModule::TestModule(const std::string& file, const std::string& body, const Prepare& prepare)
    : TestProject({{file, body}}, prepare), mComponent(&Module(file.substr(0, file.find('.')))) {}

std::string Describe(const EnumMember& member) {
  std::string text = member.Name;
  if (!member.Value.empty()) text += "=" + member.Value;
  if (!member.ValueAsWritten.empty()) text += "(" + member.ValueAsWritten.str() + ")";
  return text + About(member);
}

std::string Describe(const Constant& constant) {
  std::string text = constant.Access.str() + " " + constant.Name + "=" + constant.Value;
  if (!constant.TypeName.empty()) text += " As " + constant.TypeName.str();
  return text + About(constant);
}

std::string Show(const CodeLine& line) {
  std::string text(LineTypeName(line.LineType));
  if (!line.StatementPart.empty()) text += " [" + line.StatementPart + "]";
  if (!line.CommentPart.empty()) text += " '" + line.CommentPart;
  if (line.MoreLines) text += " more(" + line.Remainder + ")";
  if (line.Continued) text += " continued(" + line.Remainder + ")";
  text += If(line.Continuation, "continuation") + If(line.NotInSource, "notinsource");
  text += If(line.EventIndex != 0, "event=" + std::to_string(line.EventIndex));
  return text;
}

std::string ShowLines(const Block& block) {
  std::string text;
  for (std::int32_t i = 1; block.CodeLines.IfAny() && i <= block.CodeLines->Count(); ++i)
    text += block.CodeLines->LineText(i) + " | " + Show(block.CodeLines->Item(i)) + "\n";
  return text;
}

std::string Describe(const Variable& v) {
  std::string text = If(!v.Access.empty(), v.Access) + " " + v.Name;
  if (v.IsArray) text += "(" + v.ArraySubscript.str() + ")";
  text += " As " + v.TypeName.str();
  text += If(v.ImplicitType, "implicit") + If(v.FixedLengthString, "fixed") +
          If(v.IsStatic, "static") + If(v.IsShadow, "shadow") + If(v.IsWithEvents, "events") +
          If(v.IsHiddenMember, "hidden") +
          If(v.HelpContextID != 0, "help=" + std::to_string(v.HelpContextID));
  return text.substr(1) + About(v);
}

std::string Describe(const Parameter& p) {
  std::string text = p.IsOptional && !p.IsParamArray ? "Optional "
                     : p.IsParamArray                ? "ParamArray "
                                                     : "";
  if (!p.IsByRef) text += "ByVal ";
  text += p.Name() + (p.IsArray ? "() As " : " As ") + p.VariableType.str();
  if (p.ImplicitType) text += " implicit";
  if (!p.DefaultValue.empty()) text += " = " + p.DefaultValue.str();
  return text;
}

std::string Describe(const Block& b) {
  std::string text = " " + BlockKind(b.BlockType());
  const bool procedure = !b.Name().empty();
  if (procedure) {
    text += " " + b.Access.str() + " " + b.Name();
    text += b.Parameters.IfAny() ? "(" + List(*b.Parameters) + ")" : "";
    if (!b.ReturnType.empty()) text += " As " + b.ReturnType.str();
    if (b.ReturnTypeIsArray) text += "()";
  }
  text += If(!b.Interface.empty(), "of " + b.Interface.str());
  if (b.IsEventProcedure)
    text += " on " + (b.EventSource ? b.EventSource->ElementName() : std::string("?"));
  text += If(b.IsHiddenMember, "hidden") + If(b.IsConstructor, "constructor") +
          If(b.IsVirtual, "virtual") + If(b.IsAbstract, "abstract") + If(b.IsSealed, "sealed") +
          If(b.IsShadow, "shadow") + If(b.Overloaded(), "overloaded") +
          If(b.HelpContextID != 0, "help=" + std::to_string(b.HelpContextID)) +
          If(b.PropertyType != ptNone, "access=" + std::to_string(b.PropertyType));
  if (procedure) text += " @" + std::to_string(b.SourceLine());
  text += About(b) + "\n";
  if (b.Constants.IfAny())
    for (const Constant& item : *b.Constants) text += "  const " + Describe(item) + "\n";
  if (b.Variables.IfAny())
    for (const Variable& item : *b.Variables)
      text += "  var " + Describe(item) + At(item, item.LineIndex) + "\n";
  if (b.OverloadBlocks().IfAny())
    for (const Block& item : *b.OverloadBlocks()) text += " " + Describe(item);
  return text;
}

std::string Describe(const Component& c) {
  std::string text = c.Name + If(c.Access != "PRIVATE", c.Access) +
                     If(c.OptionExplicit, "explicit") + If(c.OptionPrivate, "private") +
                     If(!c.OptionCompare.empty(), "compare=" + c.OptionCompare.str()) +
                     If(c.OptionBase != 0, "base=" + std::to_string(c.OptionBase)) +
                     If(!c.DefaultMemberName.empty(), "default=" + c.DefaultMemberName) +
                     If(c.IsCollection(), "collection") + If(c.IsMDI(), "mdi") +
                     If(c.InheritsFrom != "System.Object", "inherits=" + c.InheritsFrom.str()) +
                     If(c.HelpContextID != 0, "help=" + std::to_string(c.HelpContextID)) +
                     About(c) + "\n" + Declarations(c);
  for (const Block& block : c.Blocks) text += Describe(block);
  return text;
}

std::string FirstDifference(const std::string& expected, const std::string& actual) {
  std::istringstream a(expected), b(actual);
  std::string lineA, lineB;
  for (int number = 1;; ++number) {
    const bool moreA = static_cast<bool>(std::getline(a, lineA));
    const bool moreB = static_cast<bool>(std::getline(b, lineB));
    if (!moreA && !moreB) return {};
    if (moreA != moreB || lineA != lineB)
      return "line " + std::to_string(number) + "\n  expected: " + lineA + "\n  now:      " + lineB;
  }
}

std::string Told(const Diagnostics& diagnostics) {
  std::string text;
  for (const Diagnostic& item : diagnostics)
    text += std::to_string(item.Line) + " " + std::string(CodeName(item.Code)) + "\n";
  return text;
}

}  // namespace vendrel::test

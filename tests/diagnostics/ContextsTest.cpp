// The contexts of a failure: which procedures it passed, from the innermost outwards, and what they
// tell of the input at fault.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "comments/TagDefinitions.h"
#include "diagnostics/ErrorReport.h"
#include "output/TraceElement.h"
#include "output/Xml.h"
#include "project/VBProject.h"
#include "support/MemoryFiles.h"

namespace vendrel {
namespace {

using testing::AllOf;
using testing::ElementsAreArray;
using testing::HasSubstr;

// The failure of a piece of work.
VendrelError FailureOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const VendrelError& failure) {
    return failure;
  }
  ADD_FAILURE() << "nothing failed";
  return VendrelError(0);
}

std::vector<std::string> Procedures(const VendrelError& failure) {
  std::vector<std::string> names;
  for (const ErrorContext& context : failure.Contexts()) names.push_back(context.Procedure);
  return names;
}

std::string Shown(const ErrorContext& context) {
  std::string text;
  for (const auto* values : {&context.Parameters, &context.Locals, &context.Fields})
    for (const auto& [name, value] : *values) text += DumpValue(name, value);
  return text;
}

// Loads a project with this line, its fourth, and a module with these lines.
void LoadProject(const std::string& projectLine, const std::string& moduleLines = {}) {
  const test::MemoryFiles files{
      {"/p/P.vbp", "Type=Exe\r\nName=\"P\"\r\nModule=M; M.bas\r\n" + projectLine + "\r\n"},
      {"/p/M.bas", "Attribute VB_Name = \"M\"\r\n" + moduleLines}};
  VBProject project;
  project.Reading = ReadingRules::Classic();
  project.Load("/p/P.vbp");
  project.Components.Populate();
}

void ApplyComments(const std::string& xml) {
  const test::MemoryFiles files{{"/p/C.xml", xml}};
  VBProject project;
  project.CommentFile.SetFullPath("/p/C.xml");
  project.ApplyCommentFile();
}

// A block of a module, written to a file that is not open.
void WriteToClosedFile() {
  VBProject project;
  Component component;
  component.SetVBProject(&project);
  component.Name = "M";
  Block* block = component.NewBlock(btSub);
  for (const std::string_view line : {"Sub A()", "End Sub"}) block->AddLine(line);
  FileSystemObject file("/p/Out.bas");
  block->WriteOut(file);
}

void OpenPipe() {
  test::MemoryFiles files;
  files.AddPipe("/p/A.bas");
  FileSystemObject("/p/A.bas").OpenFile(omRead);
}

struct Row {
  std::string Name;
  std::function<void()> Work;
  std::vector<std::string> Chain;
  /// The context that is looked at: its procedure, its line, and a part of its values.
  std::string Procedure;
  long Line;
  std::string Value;
};

TEST(Contexts, TellTheProceduresThatAFailurePassedAndTheInputAtFault) {
  const Row rows[] = {
      {"condition",
       [] { LoadProject("", "Sub A()\r\nEnd Sub\r\n#If (1 Then\r\n"); },
       {"ScriptProgram.AddCode", "Eval", "CompilerConstants.Evaluate", "UpdateConditions",
        "TakeStatement", "Component.AddLineOfCode", "ModuleReader.AddLineOfCode", "Component.Load",
        "Components.LoadAt", "Components.Populate"},
       "ModuleReader.AddLineOfCode",
       4,
       "<Line>#If (1 Then</Line>"},
      {"attribute",
       [] { LoadProject("", "Public A\r\nAttribute A.VB_VarHelpID\r\n"); },
       {"TakeHelpIDs", "TakeAttribute", "Block.AddParsedLine", "AddParsedCode", "TakeStatement",
        "Component.AddLineOfCode", "ModuleReader.AddLineOfCode", "Component.Load",
        "Components.LoadAt", "Components.Populate"},
       "TakeHelpIDs",
       3,
       "<statement>Attribute A.VB_VarHelpID</statement>"},
      {"project line",
       [] { LoadProject("Class=Nameless"); },
       {"ProjectReader.TakeLine", "VBProject.Load"},
       "ProjectReader.TakeLine",
       4,
       "<Line>Class=Nameless</Line>"},
      {"reference",
       [] { LoadProject("Object={A}#1.0#0"); },
       {"Reference.LoadObject", "Reference.Load", "ProjectReader.TakeReference",
        "ProjectReader.TakeLine", "VBProject.Load"},
       "Reference.Load",
       4,
       "<Source>Object={A}#1.0#0</Source>"},
      {"comment file",
       [] { ApplyComments("<TaggedComments>&</TaggedComments>"); },
       {"ParseXml", "VBProject.ApplyCommentFile"},
       "VBProject.ApplyCommentFile",
       0,
       "<CommentFile>Z:\\p\\C.xml</CommentFile>"},
      {"tag table",
       [] { ReadTagDefinitions(R"({"tags": [{"TagIdentifier": "##A", "Scope": 1}]})", "t.json"); },
       {"ReadEntry", "ReadTagDefinitions"},
       "ReadEntry",
       0,
       "<where>entry 1 (##A)</where>"},
      {"writing",
       WriteToClosedFile,
       {"FileSystemObject.WriteBytes", "BlockWriter.Line", "Block.WriteOut"},
       "BlockWriter.Line",
       1,
       "<Me>{Block ~M~A}</Me>"},
      {"file",
       OpenPipe,
       {"OpenRegularFile", "ReadWholeFile", "SourceText.Read", "FileSystemObject.OpenFile"},
       "FileSystemObject.OpenFile",
       0,
       "<FullPath>Z:\\p\\A.bas</FullPath>"},
      {"collection",
       [] { Variables().Remove(3); },
       {"ElementCollection.Remove"},
       "ElementCollection.Remove",
       0,
       "<index>3</index>"},
      {"page",
       [] { XmlDocument().LoadXml("<a"); },
       {"XmlDocument.LoadXml"},
       "XmlDocument.LoadXml",
       0,
       "<text><a</text>"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.Name);
    const VendrelError failure = FailureOf(row.Work);
    EXPECT_THAT(Procedures(failure), ElementsAreArray(row.Chain));
    for (const ErrorContext& context : failure.Contexts()) {
      if (context.Procedure != row.Procedure) continue;
      EXPECT_EQ(context.Line, row.Line);
      EXPECT_THAT(Shown(context), HasSubstr(row.Value));
    }
  }
}

TEST(Contexts, ShowElementsWholeOnRequestAndLoadNoModule) {
  const test::MemoryFiles files{
      {"/p/P.vbp", "Type=Exe\r\nName=\"P\"\r\nModule=M; M.bas\r\nClass=Nameless\r\n"},
      {"/p/M.bas", "Sub A()\r\nEnd Sub\r\n"}};
  VBProject project;
  project.Reading = ReadingRules::Classic();
  TraceElementsWhole(true);
  const VendrelError failure = FailureOf([&] { project.Load("/p/P.vbp"); });
  EXPECT_THAT(RenderError(failure), AllOf(HasSubstr("<ProjectName>\"P\"</ProjectName>"),
                                          HasSubstr("<Components>{1 elements}</Components>")));
  TraceElementsWhole(false);
  for (const Component& component : project.Components.Listed())
    EXPECT_EQ(component.LoadState, lsNotLoaded);
}

}  // namespace
}  // namespace vendrel

// From the physical lines of a file to statements in blocks: header, continuation, separators,
// conditional compilation, loads in two steps, odd files, odd lines.

#include <gtest/gtest.h>

#include "core/Ascii.h"
#include "diagnostics/VendrelError.h"
#include "names/NameWalk.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::Describe;
using test::ShowLines;
using test::TestModule;
using test::TestProject;
using test::Told;

constexpr char kMessage[] =
    "' Commented by vbTrapline (#IF or #ELSEIF statement evaluates to false)  ";
constexpr char kDirective[] =
    "' Commented by vbTrapline (Directives are parsed out as part of build)  ";

std::string AllLines(const Component& component) {
  std::string text;
  for (const Block& block : component.Blocks) text += "- " + block.Name() + "\n" + ShowLines(block);
  return text;
}

std::string AllTexts(const Component& component) {
  std::string text;
  for (const Block& block : component.Blocks)
    for (std::int32_t i = 1; block.CodeLines.IfAny() && i <= block.CodeLines->Count(); ++i)
      if (!block.CodeLines->NotInSource(i)) text += block.CodeLines->LineText(i) + "\n";
  return text;
}

TEST(ModuleLoadTest, TheHeaderOfAClassIsStoredNotInterpreted) {
  TestModule module("C.cls", "Attribute VB_Exposed = True\nDim a\n");
  EXPECT_EQ(AllLines(*module),
            "- \n"
            "VERSION 1.0 CLASS | OTHER [VERSION 1.0 CLASS]\n"
            "BEGIN | OTHER [BEGIN]\n"
            "  MultiUse = -1  'True | OTHER [MultiUse = -1 ] 'True\n"
            "END | OTHER [END]\n"
            "Attribute VB_Name = \"C\" | ATTRIBUTE_LINE [Attribute VB_Name = \"C\"]\n"
            "Attribute VB_Exposed = True | ATTRIBUTE_LINE [Attribute VB_Exposed = True]\n"
            "- \n"
            "Dim a | VAR_DECLARATION [Dim a]\n");
  EXPECT_EQ(module->Blocks.Item(1)->Attributes(),
            std::vector<std::string>{"Attribute VB_Exposed = True"});
  TestModule standard("M.bas", "Dim a\n");
  EXPECT_EQ(standard->Blocks.Item(1)->Attributes(),
            std::vector<std::string>{"Attribute VB_Name = \"M\""});
}

TEST(ModuleLoadTest, AStatementOfSeveralLinesHasARecordForEach) {
  TestModule module("M.bas", "Dim z\nSub S(a, _\n  b, _\n\tc)\n  x = 1 _\n + 2 ' why\nEnd Sub\n");
  EXPECT_EQ(ShowLines(*module->Blocks.Item("S")),
            "Sub S(a, _ | OTHER [Sub S(a, _] continued(Sub S(a, )\n"
            "  b, _ | OTHER [Sub S(a, b, _] continued(Sub S(a, b, ) continuation\n"
            "\tc) | START_SUB [Sub S(a, b, c)] continuation\n"
            "  x = 1 _ | OTHER [x = 1 _] continued(x = 1 )\n"
            " + 2 ' why | OTHER [x = 1 + 2 ] 'why continuation\n"
            "End Sub | END_SUB [End Sub]\n");
  EXPECT_EQ(module->Blocks.Item("S")->CodeLines->ContinuationCount(), 3);
  EXPECT_EQ(module->Blocks.Item("S")->DefinitionLine, "Sub S(a, b, c)");
}

TEST(ModuleLoadTest, ALineBehindASeparatorIsLostOrWaits) {
  const char* const body =
      "Sub S()\na = 1 : b = 2\nc = 3\nd = 4 : e = 5 : f = 6\ng = 7\nh = 8\nEnd Sub\n";
  TestModule classic("M.bas", body);
  EXPECT_EQ(ShowLines(*classic->Blocks.Item("S")),
            "Sub S() | START_SUB [Sub S()]\n"
            "a = 1 : b = 2 | OTHER [a = 1 ] more( b = 2)\n"
            " b = 2 | OTHER [b = 2] notinsource\n"
            "d = 4 : e = 5 : f = 6 | OTHER [d = 4 ] more( e = 5 : f = 6)\n"
            " e = 5 : f = 6 | OTHER [e = 5 ] more( f = 6) notinsource\n"
            " f = 6 | OTHER [f = 6] notinsource\n"
            "End Sub | END_SUB [End Sub]\n");
  EXPECT_EQ(Told(classic.Project->Diagnostics), "4 lost-line\n6 lost-line\n7 lost-line\n");
  TestModule kept("M.bas", body, test::Reading("KeepLinesBehindSeparators"));
  EXPECT_EQ(AllTexts(*kept), "Attribute VB_Name = \"M\"\n" + std::string(body));
  EXPECT_EQ(Told(kept.Project->Diagnostics), "");
}

TEST(ModuleLoadTest, AStatementLeftOpenAtTheEndOfTheFileIsNotLost) {
  const std::string body = "Sub S()\nEnd Sub\n' goes on _\nand on _\n";
  TestModule module("M.bas", body, test::Complete());
  EXPECT_EQ(AllTexts(*module), "Attribute VB_Name = \"M\"\n" + body);
}

TEST(ModuleLoadTest, OneLineProceduresAreTakenApartInTheCompleteReading) {
  const char* const body =
      "Sub A(): x = 1: End Sub\nFunction F() As Long: F = 2: End Function\nSub B()\nEnd Sub\n";
  TestModule classic("M.bas", body);
  EXPECT_EQ(classic->Blocks.Item("A")->EndLine(), 1);
  TestModule module("M.bas", body, test::Complete());
  EXPECT_EQ(
      Describe(*module),
      "M\n attributes\n sub PUBLIC A() @2\n function PUBLIC F() As Long @3\n sub PUBLIC B() @4\n");
  EXPECT_EQ(ShowLines(*module->Blocks.Item("A")),
            "Sub A(): x = 1: End Sub | START_SUB [Sub A()] more( x = 1: End Sub)\n"
            " x = 1: End Sub | OTHER [x = 1] more( End Sub) notinsource\n"
            " End Sub | END_SUB [End Sub] notinsource\n");
}

TEST(ModuleLoadTest, ALoadInTwoStepsGivesTheTreeOfOne) {
  const std::string bodies[] = {
      ("Option Explicit\nDim a ' note\n' above\nSub S(x, _\n y)\n  Dim q\nEnd Sub\n' "
       "two\n\nFunction F()\nEnd Function\n"),
      "Dim a\nSub S() : x = 1 : y = 2\nz = 3\nEnd Sub\n", "Dim a\n",
      ("#If False Then\nDim b\n#End If\nPrivate Sub S()\n#If True Then\nDim c\n#End If\nEnd "
       "Sub\nSub T()\nEnd Sub\n"),
      ""};
  for (const std::string& body : bodies) {
    for (const test::Prepare& reading : {test::Prepare(), test::Complete()}) {
      TestModule whole("M.bas", body, reading);
      const std::string tree = Describe(*whole) + AllLines(*whole);
      TestProject steps({{"M.bas", body}}, [&](VBProject& project) {
        if (reading) reading(project);
        project.SetDoNotPopulateComponents(true);
      });
      Component& module = steps.Module("M");
      const bool procedure = body.find("Sub") != std::string::npos;
      EXPECT_EQ(module.LoadState, procedure ? lsLoadedHeader : lsFullyLoaded) << body;
      EXPECT_LE(module.Blocks.Count(), 3u);
      steps.Project->SetDoNotPopulateComponents(false);
      steps.Project->Components.Populate();
      EXPECT_EQ(module.LoadState, lsFullyLoaded);
      EXPECT_EQ(Describe(module) + AllLines(module), tree) << body;
      EXPECT_EQ(module.LinesAlreadyRead, whole->LinesAlreadyRead);
      module.Load(false);
      EXPECT_EQ(Describe(module) + AllLines(module), tree) << body;
    }
  }
}

TEST(ModuleLoadTest, BranchesOfConditionalCompilationAreResolved) {
  const std::pair<const char*, const char*> cases[] = {
      {"#If True Then\nDim a\n#Else\nDim b\n#End If\n", "a "},
      {"#If False Then\nDim a\n#Else\nDim b\n#End If\n", "b "},
      {"#If False Then\nDim a\n#ElseIf True Then\nDim b\n#ElseIf True Then\nDim c\n#Else\n"
       "Dim d\n#End If\n",
       "b "},
      {"#If False Then\nDim a\n#ElseIf False Then\nDim b\n#Else\nDim c\n#End If\n", "c "},
      {"#If True Then\nDim a\n#If False Then\nDim b\n#Else\nDim c\n#End If\n#Else\nDim d\n#End "
       "If\n",
       "a c "},
      // The true branch of an inner #If in a false one stays false, its #Else too.
      {"#If False Then\n#If True Then\nDim a\n#Else\nDim b\n#End If\nDim c\n#End If\n", ""},
      {"#If False Then\n#If False Then\nDim a\n#Else\nDim b\n#End If\nDim c\n#Else\nDim d\n#End "
       "If\n",
       "d "},
      {"#Const A = 1\n#Const A = 0\n#If A Then\nDim a\n#End If\n", "a "},
      {"#If False Then\n#Const A = 1\n#End If\n#If A Then\nDim a\n#End If\n", "a "},
      {"#if true then\nDim a\n#elseif true then\nDim b\n#end if\n", "a "},
      {"#If False _\n Or True Then\nDim a\n#End If\n", "a "},
      {"#If False Then\nDim a As Long, _\n  b\n#End If\n", ""}};
  for (const auto& [body, variables] : cases) {
    for (const char* flags : {"", "KeepDirectives", "ConstantExpressions"}) {
      SCOPED_TRACE(std::string(flags) + "\n" + body);
      TestModule module("M.bas", "Dim first\n" + std::string(body) + "Dim z\n",
                        test::Reading(flags));
      EXPECT_EQ(test::Names(*module->Blocks.Item(2)->Variables),
                "first " + std::string(variables) + "z ");
      EXPECT_FALSE(module->Ignore());
    }
  }
}

TEST(ModuleLoadTest, DirectivesAndFalseBranchesBecomeCommentsUnlessTheyAreKept) {
  const std::string body =
      "Dim a\n#Const X = 1\n#If X = 0 Then\n  Dim first As Long, _\n\tsecond As String, _\n  third "
      "' t\n"
      "' note\n#If True Then\n#End If\n#ElseIf X _\n  = 1 Then\nDim b\n#End If\n";
  TestModule module("M.bas", body);
  const std::string lines = ReplaceAll(ShowLines(*module->Blocks.Item(2)), kDirective, "(D)");
  EXPECT_EQ(ReplaceAll(lines, kMessage, "(M)"),
            "Dim a | VAR_DECLARATION [Dim a]\n"
            "(D)#Const X = 1 | COMPILER_DIRECTIVE [#Const X = 1]\n"
            "(D)#If X = 0 Then | COMPILER_DIRECTIVE [#If X = 0 Then]\n"
            "(M)  Dim first As Long, _ | Comment [Dim first As Long, _] "
            "continued(Dim first As Long, )\n"
            "(M)\tsecond As String, _ | Comment [Dim first As Long,     second As String, _] "
            "continued(Dim first As Long,     second As String, ) continuation\n"
            "(M)  third ' t | Comment [Dim first As Long, second As String, third ] 't "
            "continuation\n"
            "(M)' note | Comment 'note\n"
            "(D)#If True Then | COMPILER_DIRECTIVE [#If True Then]\n"
            "(D)#End If | COMPILER_DIRECTIVE [#End If]\n"
            "(D)#ElseIf X _ | Comment [#ElseIf X _] continued(#ElseIf X )\n"
            "(D)  = 1 Then | COMPILER_DIRECTIVE [#ElseIf X = 1 Then] continuation\n"
            "Dim b | VAR_DECLARATION [Dim b]\n"
            "(D)#End If | COMPILER_DIRECTIVE [#End If]\n");
  for (const test::Prepare& keeps :
       {test::Reading("KeepDirectives"),
        test::Prepare([](VBProject& p) { p.OutputConditionalCompilationBlocks = true; })}) {
    TestModule kept("M.bas", body, keeps);
    EXPECT_EQ(AllTexts(*kept), "Attribute VB_Name = \"M\"\n" + body);
    EXPECT_EQ(kept->Blocks.Item(2)->Variables->Count(), 2u);
  }
}

TEST(ModuleLoadTest, ALineThatFailsEndsTheLoadOrIsSteppedOver) {
  const auto keepDirectives = [](VBProject& p) { p.OutputConditionalCompilationBlocks = true; };
  std::string asked;
  const auto stepOver = [&](VBProject& project) {
    keepDirectives(project);
    project.OnLineFailure = [&](const VendrelError& e, std::string_view file, std::int32_t line) {
      asked +=
          std::string(file) + ":" + std::to_string(line) + ":" + std::to_string(e.Number()) + "\n";
      return StepOver::SkipLine;
    };
  };
  struct Case {
    const char* Body;
    const char* Tree;
    const char* Diagnostics;
    bool Written = true;  // every line is kept
  };
  for (const Case& c :
       std::vector<Case>{{"Dim a\nPublic\nDim b\n", "a b ", "3 line-not-understood\n"},
                         {"Dim a\nPublic _\n\nDim b\n", "a b ", "4 line-not-understood\n"},
                         {"Dim a\n#End If\nDim b\n", "a b ", "3 line-not-understood\n"},
                         {"Dim a\n#Else\nDim b\n", "a b ", "3 line-not-understood\n"},
                         {"Dim a\n#If ) Then\nDim c\n#End If\nDim b\n", "a c b ",
                          "3 line-not-understood\n5 line-not-understood\n"},
                         {"Dim a : Private\nDim c\nDim b\n", "a b ",
                          "3 lost-line\n3 line-not-understood\n", false}}) {
    EXPECT_THROW(TestModule("M.bas", c.Body, keepDirectives), VendrelError) << c.Body;
    TestModule module("M.bas", c.Body, stepOver);
    EXPECT_EQ(test::Names(*module->Blocks.Item(2)->Variables), c.Tree) << c.Body;
    EXPECT_EQ(Told(module.Project->Diagnostics), c.Diagnostics) << c.Body;
    if (c.Written) {
      EXPECT_EQ(AllTexts(*module), "Attribute VB_Name = \"M\"\n" + std::string(c.Body));
    }
    EXPECT_EQ(module->LoadState, lsFullyLoaded);
  }
  asked.clear();
  TestModule kept("M.bas", "Dim a\n  Public\n", stepOver);
  EXPECT_EQ(test::Show(kept->Blocks.Item(2)->CodeLines->Item(2)), "OTHER [Public]");
  EXPECT_EQ(asked, "Z:\\p\\M.bas:3:9\n");
}

TEST(ModuleLoadTest, OddFilesGiveOneDiagnosticAndTheRestOfTheTree) {
  struct Case {
    const char* What;
    std::string Bytes;
    const char* Code;
    LoadStateEnum State;
  };
  const std::string nul("Attribute VB_Name = \"M\"\r\nDim a\0b\r\n", 34);
  std::string binary(2000, '\x01');
  binary[0] = '\xFE';
  for (const Case& c :
       std::vector<Case>{{"empty", "", "0 empty-module\n", lsFullyLoaded},
                         {"binary", binary, "0 binary-module\n", lsNotLoaded},
                         {"other kind", "VERSION 5.00\r\nBegin VB.Form F\r\nEnd\r\n",
                          "0 other-kind\n", lsFullyLoaded},
                         {"nul", nul, "0 nul-characters\n", lsFullyLoaded},
                         {"missing", "-", "1 missing-module\n", lsNotLoaded},
                         {"folder", "/", "0 not-a-file\n", lsNotLoaded}}) {
    for (const test::Prepare& reading : {test::Prepare(), test::Complete()}) {
      test::MemoryFiles files{{"/p/P.vbp", "Module=M; M.bas\r\nModule=N; N.bas\r\nName=\"P\"\r\n"},
                              {"/p/N.bas", "Attribute VB_Name = \"N\"\r\nDim a\r\n"}};
      if (c.Bytes == "/")
        files.AddFolder("/p/M.bas");
      else if (c.Bytes != "-")
        files.Add("/p/M.bas", c.Bytes);
      VBProject project;
      if (reading) reading(project);
      ASSERT_TRUE(project.Load("/p/P.vbp"));
      for (int walk = 0; walk < 2; ++walk) {  // told once
        EXPECT_EQ(std::distance(project.Components.begin(), project.Components.end()), 2);
      }
      EXPECT_EQ(Told(project.Diagnostics), c.Code) << c.What;
      const Component& odd = *project.Components.Item("M");
      EXPECT_EQ(odd.LoadState, c.State) << c.What;
      if (c.Bytes.empty()) {
        EXPECT_EQ(Describe(odd) + AllLines(odd), "M\n attributes\n- \n | BLANK_LINE\n");
      }
      EXPECT_EQ(project.Components.Item("N")->Blocks.Count(), 2u);
    }
  }
}

TEST(ModuleLoadTest, SourceCodeCanBeUnloaded) {
  TestModule module("C.cls",
                    "' about\n\nPublic a ' note\nEvent E(x)\nDeclare Sub D Lib \"k\" (x)\n"
                    "'##SUMMARY stays\nSub S(p)\n' in\n  Const K = 1\n  Dim q\nEnd Sub\n");
  module->UnloadSourceCode();
  EXPECT_EQ(module->LoadState, lsFullyLoadedNoCode);
  EXPECT_EQ(
      Describe(*module),
      "C 'about'\n event E() @4/9\n declare sub D lib k.dll() @5/10\n attributes\n declarations\n"
      "  var PUBLIC a As Variant implicit @3/8\n sub PUBLIC S As Variant @12 ##'stays'\n");
  const Block& block = *module->Blocks.Item("S");
  EXPECT_EQ(block.DefinitionLine, "");
  EXPECT_EQ(block.CodeLines.IfAny(), nullptr);
  EXPECT_EQ(block.EndLine(), 0);
  module.Project->UnloadSourceCode();
  EXPECT_EQ(module->LoadState, lsFullyLoadedNoCode);
}

TEST(ModuleLoadTest, CodeCanBeAddedByAClient) {
  VBProject project;
  auto component = std::make_shared<Component>();
  component->SetVBProject(&project);
  component->FileType = ftClass;
  project.Components.Add(component, "Made");
  for (const char* line : {"a = 1 : b = 2", "lost", "Private Sub S(x, _", " y)", "End Sub"})
    component->AddLineOfCode(line);
  EXPECT_EQ(AllLines(*component),
            "- \n"
            "a = 1 : b = 2 | OTHER [a = 1 ] more( b = 2)\n"
            " b = 2 | OTHER [b = 2] notinsource\n"
            "- S\n"
            "Private Sub S(x, _ | OTHER [Private Sub S(x, _] continued(Private Sub S(x, )\n"
            " y) | START_SUB [Private Sub S(x, y)] continuation\n"
            "End Sub | END_SUB [End Sub]\n");
  component->AddCode("Public Function F() As Long");
  component->AddCode("End Function");
  component->AddCode("Sub NotAdded()", false);
  EXPECT_EQ(component->Blocks.Count(), 4u);
  EXPECT_EQ(component->Blocks.Item("F")->ReturnType, "Long");
  component->AddCode("Sub V(a, _\r\n  b)\n  x = 1 : y = 2\rEnd Sub\nSub W()\r\nEnd Sub\r\n");
  ASSERT_TRUE(component->Blocks.Item("V") && component->Blocks.Item("W"));
  EXPECT_EQ(component->Blocks.Item("V")->CodeLines->Count(), 4);
  EXPECT_EQ(component->Blocks.Item("V")->Parameters->Count(), 2u);
  EXPECT_EQ(component->Blocks.Item("W")->CodeLines->Count(), 2);
  project.DetectNewBlocksOnAddCode = false;
  component->AddCode("Sub T()");
  EXPECT_EQ(component->Blocks.Count(), 6u);
}

TEST(ModuleLoadTest, DroppingTheRootFreesTheTree) {
  std::vector<WeakHandle<CodeElement>> elements;
  {
    TestProject project(
        {{"C.cls",
          "Implements I\nEvent E(x)\nEnum N\n  a\nEnd Enum\nType T\n  x As Long\nEnd Type\n"
          "Declare Sub D Lib \"k\" ()\nPrivate WithEvents v As C\nConst K = 1\n"
          "Private Sub v_E(p)\n  Dim q\nEnd Sub\nProperty Get P()\nEnd Property\n"},
         {"F.frm", "Private Sub Form_Load()\nEnd Sub\nSub Form_Click()\nEnd Sub\n"}});
    const auto note = [&](CodeElement& element) { elements.emplace_back(&element); };
    project.Project->Components.Populate();
    ForEachNamedElement(*project.Project, note);
    for (Component& component : project.Project->Components) {
      for (Block& block : component.Blocks) note(block);
      for (PropertyGroup& group : component.PropertyGroups) note(group);
    }
    EXPECT_GT(elements.size(), 15u);
    for (const auto& element : elements) EXPECT_TRUE(element);
  }
  for (const auto& element : elements) EXPECT_FALSE(element);
}

}  // namespace
}  // namespace vendrel

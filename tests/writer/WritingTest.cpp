#include <gtest/gtest.h>

#include "core/Workspace.h"
#include "support/Projects.h"

namespace vendrel::test {
namespace {

// Loads "/p/P.vbp" of these files by the complete reading, writes it to "/out" and gives its bytes.
std::string Rewritten(const std::string& file, const std::string& bytes,
                      const Prepare& prepare = Complete(),
                      const std::function<void(VBProject&)>& change = {}) {
  const std::string name = file.substr(0, file.find('.'));
  const std::string key = file.ends_with(".frm")   ? "Form="
                          : file.ends_with(".cls") ? "Class=" + name + "; "
                                                   : "Module=" + name + "; ";
  MemoryFiles files{{"/p/P.vbp", "Type=Exe\r\n" + key + file + "\r\nName=\"P\"\r\n"},
                    {"/p/" + file, bytes}};
  VBProject project;
  if (prepare) prepare(project);
  project.OnLineFailure = [](const VendrelError&, std::string_view, std::int32_t) {
    return StepOver::SkipLine;
  };
  EXPECT_TRUE(project.Load("/p/P.vbp"));
  project.OutputFileName.SetFolderPath("/out");
  if (change) {
    project.Components.Populate();
    change(project);
  }
  project.WriteOut();
  return files["/out/" + file];
}

TEST(WritingModules, EveryByteOfUntouchedSourceComesOutAgain) {
  using namespace std::string_literals;
  const std::string name = "Attribute VB_Name = \"M\"";
  const std::string bodies[] = {
      "",
      "\r\nSub A()\r\nEnd Sub\r\n",
      "\nSub A()\n\tx = 1\nEnd Sub\n",
      "\rSub A()\rEnd Sub",
      "\r\nSub A()\n  x = 1 \r  y = 2\r\n\r\n\nEnd Sub\n\r",
      "\r\nSub A()\r\nEnd Sub",
      "\r\nx = 1 : y = 2\r\nSub A(): x = 1: End Sub\r\nSub B(a, _\r\n  b) ' c : d\r\nEnd Sub",
      "\r\nSub A()\r\n x = 1 : y = _\r\n 2 : z = 3\r\nEnd Sub\r\nDim a As Long, _\r\n",
      "\r\n#If Win32 Then\r\nDeclare Sub S Lib \"k\" ()\r\n#Else\r\n  Sub \xC4()\r\n#End If\r\n",
      "\r\nPublic\r\nSub\r\nEnd Sub : Sub B() : End Sub\r\n",
      "\r\nSub A()\r\nEnd Sub\r\nPublic Property Gte B()\r\nAttribute B.VB_UserMemId = 0\r\n",
      "\r\nAttribute VB_HelpID = 1\r\nPublic Property Gte B()\r\nAttribute VB_HelpID = 2\r\n",
      "\r\nProperty Let B(v)\r\nEvent E()\r\nAttribute E.VB_HelpID = 5\r\n",
      "\r\n' caf\xE9 \x81\r\nSub A()\r\nEnd Sub\r\n",
      "\r\n\x1A\f\v\0\r\n"s,
  };
  for (const std::string& body : bodies) EXPECT_EQ(Rewritten("M.bas", name + body), name + body);
  for (const std::string& bytes :
       {"\xEF\xBB\xBF" + name + "\r\n' \xC3\xA9\r\n", ""s, "\r\n"s, "x"s})
    EXPECT_EQ(Rewritten("M.bas", bytes), bytes);
}

TEST(WritingModules, FormsAndClassesKeepTheirHeadersAndAttributes) {
  const std::string form =
      "VERSION 5.00\r\nObject = \"{A}#1.0#0\"; \"X.ocx\"\r\nBegin VB.Form F \r\n   Caption =   "
      "\"a:b\"\r\n   BeginProperty Font \r\n      Name = \"x\"\r\n   EndProperty\r\n   Begin "
      "VB.Label L \r\n   End\r\nEnd\r\nAttribute VB_Name = \"F\"\r\nAttribute VB_HelpID = 7\r\n"
      "Option Explicit\r\nDim WithEvents t As Timer\r\nAttribute t.VB_VarHelpID = -1\r\n"
      "Attribute gone.VB_VarHelpID = 4\r\nEvent E()\r\nAttribute E.VB_HelpID = 3\r\n"
      "Property Let P(v)\r\nAttribute P.VB_HelpID = 9\r\nEnd Property\r\n"
      "Property Get P()\r\nAttribute P.VB_UserMemId = 0\r\nEnd Property\r\n";
  EXPECT_EQ(Rewritten("F.frm", form), form);
  const std::string bare = "VERSION 1.0 CLASS\nBEGIN\n  MultiUse = -1\nEND\n";
  EXPECT_EQ(Rewritten("C.cls", bare), bare);
}

TEST(WritingModules, Utf16KeepsItsFormAndBrokenHalves) {
  std::string bytes = "\xFF\xFE";
  for (const char c : std::string("Attribute VB_Name = \"M\"\r\n' x\n")) bytes += {c, '\0'};
  bytes += std::string("'\0\x00\xD8\r\0\n\0", 8) + "z";
  EXPECT_EQ(Rewritten("M.bas", bytes), bytes);
}

TEST(WritingModules, ClassicEndsEveryLineAndGathersWhatItTakesApart) {
  EXPECT_EQ(Rewritten("M.bas", "Attribute VB_Name = \"M\"\nSub A()\nEnd Sub", {}),
            "Attribute VB_Name = \"M\"\r\nSub A()\r\nEnd Sub\r\n");
  EXPECT_EQ(
      Rewritten("M.bas",
                "Attribute VB_Name = \"M\"\r\n"
                "Property Get P()\r\nAttribute P.VB_UserMemId = 0\r\nEnd Property\r\n"
                "Property Let P(v)\r\nAttribute P.VB_UserMemId = 0\r\n"
                "Attribute P.VB_HelpID = 5\r\nEnd Property\r\n"
                "#If False Then\r\nx\r\n#End If\r\n",
                {}),
      "Attribute VB_Name = \"M\"\r\n"
      "Property Get P()\r\nAttribute P.VB_UserMemId = 0\r\nAttribute P.VB_UserMemId = 0\r\n"
      "End Property\r\nProperty Let P(v)\r\nEnd Property\r\n"
      "' Commented by vbTrapline (Directives are parsed out as part of build)  #If False Then\r\n"
      "' Commented by vbTrapline (#IF or #ELSEIF statement evaluates to false)  x\r\n"
      "' Commented by vbTrapline (Directives are parsed out as part of build)  #End If\r\n");
  const std::string name = "Attribute VB_Name = \"M\"\r\n";
  const std::string procedure = "Sub A()\r\nEnd Sub\r\n";
  const std::string damaged = "Public Property Gte B()\r\nAttribute B.VB_UserMemId = 0\r\n";
  EXPECT_EQ(Rewritten("M.bas", name + procedure + damaged, {}), name + damaged + procedure);
}

// The lines of module M once one of its procedures is changed.
std::string Changed(const std::string& body, const std::function<void(CodeLines&)>& change) {
  return Rewritten("M.bas", "Attribute VB_Name = \"M\"\n" + body, Complete(),
                   [&](VBProject& project) {
                     change(*project.Components.Item("M")->Blocks.Item("A")->CodeLines);
                   })
      .substr(24);
}

TEST(WritingModules, DescriptionsOfCommentsTakeThePlaceOfThoseOfTheSource) {
  const std::string head = "VERSION 1.0 CLASS\nBEGIN\nEND\nAttribute VB_Name = \"C\"\n";
  const std::string source =
      head +
      "Attribute VB_HelpID = 5\nAttribute VB_Description = \"old\"\n"
      "'##MODULE_SUMMARY What\n'##SUMMARY Counted\nPublic n As Long\n"
      "Attribute n.VB_VarHelpID = 7\nAttribute n.VB_VarDescription = \"old\"\n"
      "'##SUMMARY Raised\nEvent E()\nAttribute E.VB_Description = \"old\"\n\n"
      "'##SUMMARY Does\nSub S()\nAttribute S.VB_Description = \"old\"\nEnd Sub\n"
      "'##OBJECTBROWSER As it <B>is</B>\nSub T()\nEnd Sub\n"
      "'##SUMMARY Reads\nProperty Get P()\nEnd Property\n"
      "Property Let P(v)\nAttribute P.VB_HelpID = 9\nEnd Property\n"
      "Sub U()\nAttribute U.VB_Description = \"none\"\nEnd Sub\n";
  const std::string module = "Attribute VB_Description=\"What\"\n'##MODULE_SUMMARY What\n";
  const std::string counted = "'##SUMMARY Counted\nPublic n As Long\n";
  const std::string varID = "Attribute n.VB_VarHelpID = 7\n";
  const std::string varText = "Attribute n.VB_VarDescription = \"Counted\"\n";
  const std::string raised =
      "'##SUMMARY Raised\nEvent E()\nAttribute E.VB_Description = \"Raised\"\n\n";
  const std::string procedures =
      "Sub S()\nAttribute S.VB_Description = \"Does\"\nEnd Sub\n"
      "'##OBJECTBROWSER As it <B>is</B>\nSub T()\n"
      "Attribute T.VB_Description = \"As it <B>is</B>\"\nEnd Sub\n"
      "'##SUMMARY Reads\nProperty Get P()\nAttribute P.VB_Description = \"Reads\"\n";
  const auto write = [&](const Prepare& reading) {
    return Rewritten("C.cls", source, [&](VBProject& project) {
      reading(project);
      project.WriteHelpDescriptions = true;
    });
  };
  EXPECT_EQ(write(Complete()),
            head + "Attribute VB_HelpID = 5\n" + module + counted + varID + raised +
                "'##SUMMARY Does\n" + varText + procedures +
                "End Property\nProperty Let P(v)\nAttribute P.VB_HelpID = 9\nEnd Property\n"
                "Sub U()\nAttribute U.VB_Description = \"none\"\nEnd Sub\n");
  // Classic: the attributes of a property gather in its first procedure; no old description stays.
  EXPECT_EQ(write([](VBProject&) {}),
            WithCrLf(head + "Attribute VB_HelpID = 5\n" + module + counted + raised +
                     "'##SUMMARY Does\n" + varID + varText + procedures +
                     "Attribute P.VB_HelpID = 9\nEnd Property\nProperty Let P(v)\n"
                     "End Property\nSub U()\nEnd Sub\n"));
}

TEST(WritingModules, ChangedAndAddedLinesTakeTheEndsAroundThem) {
  const auto amend = [](CodeLines& lines) {
    lines.SetLineText(2, "y = 2");
    lines.Add(InitialiseCodeLine("z = 3", lvVisualBasic5or6), 0, 2);
    lines.Add(InitialiseCodeLine("' last", lvVisualBasic5or6));
  };
  EXPECT_EQ(Changed("Sub A()\r\nx = 1\nEnd Sub", amend),
            "Sub A()\r\ny = 2\nz = 3\nEnd Sub\n' last");
  EXPECT_EQ(Changed("Sub A()\nx = 1\r\nEnd Sub\n", amend),
            "Sub A()\ny = 2\r\nz = 3\r\nEnd Sub\n' last\n");
  EXPECT_EQ(Changed("Sub A()\nx = 1\nEnd Sub", [](CodeLines& lines) { lines.Remove(3); }),
            "Sub A()\nx = 1");
}

TEST(WritingModules, ALineThatTheCodePageLacksIsToldAndTheFileStays) {
  TestModule module("M.bas", "Sub A()\n'\xE9\nEnd Sub\n");
  const MemoryFiles& files = module.Files;
  VBProject& project = *module.Project;
  project.OutputFileName.SetFolderPath("/p");
  const std::string before = files["/p/M.bas"];
  CodeLines& lines = *module->Blocks.Item("A")->CodeLines;
  lines.SetLineText(2, "' \xC5\x82");
  project.WriteOut();
  EXPECT_EQ(files["/p/M.bas"], before);
  EXPECT_EQ(Told(project.Diagnostics), "3 characters-not-held\n");
  lines.SetLineText(2, "' \xE2\x82\xAC");
  project.WriteOut();
  EXPECT_EQ(files["/p/M.bas"], "Attribute VB_Name = \"M\"\r\nSub A()\r\n' \x80\r\nEnd Sub\r\n");
}

TEST(WritingModules, AModuleReadInTwoPartsIsWrittenWhole) {
  const std::string source =
      "Attribute VB_Name = \"M\"\nDim a\nSub A()\nx = 1 : y = 2\nEnd Sub\nSub B()\nEnd Sub";
  const auto prepare = [](VBProject& project) {
    project.Reading = ReadingRules::Complete();
    project.SetDoNotPopulateComponents(true);
  };
  EXPECT_EQ(Rewritten("M.bas", source, prepare,
                      [](VBProject& project) { project.SetDoNotPopulateComponents(false); }),
            source);
}

TEST(WritingModules, NewSectionsGoToTheTop) {
  const std::string name = "Attribute VB_Name = \"M\"\r\n";
  const std::string procedure = "Sub A()\r\nEnd Sub\r\n";
  const auto declare = [](VBProject& project) {
    Block* section = project.Components.Item("M")->NewBlock(btDeclarations);
    section->CodeLines->Add(InitialiseCodeLine("Dim v", project.LanguageVersion()));
  };
  for (const auto& reading : {Prepare(), Complete()})
    EXPECT_EQ(Rewritten("M.bas", name + procedure, reading, declare),
              name + "Dim v\r\n" + procedure);
}

TEST(WritingModules, OnlyAHelpIDThatWasChangedIsWrittenAnewWhereItStood) {
  const std::string source =
      "Attribute VB_Name = \"M\"\r\nAttribute VB_HelpID = 1\r\nDim v\r\n"
      "Attribute v.VB_VarHelpID = -1\r\nDim w\r\n"
      "#If 0 Then\r\nDim v\r\nAttribute v.VB_VarHelpID = 8\r\n#End If\r\n"
      "Sub A()\r\nAttribute A.VB_HelpID =  2\r\nx = 1\r\nEnd Sub\r\nSub B()\r\nEnd Sub\r\n";
  const auto change = [](int module, int variable, int other, int a, int b) {
    return [=](VBProject& project) {
      Component& m = *project.Components.Item("M");
      m.HelpContextID = module;
      Variables& variables = *m.BlockOfType(btDeclarations)->Variables;
      variables.Item("v")->HelpContextID = variable;
      variables.Item("w")->HelpContextID = other;
      m.Blocks.Item("A")->HelpContextID = a;
      m.Blocks.Item("B")->HelpContextID = b;
    };
  };
  EXPECT_EQ(Rewritten("M.bas", source, Complete(), change(1, -1, 0, 2, 0)), source);
  EXPECT_EQ(Rewritten("M.bas", source, Complete(), change(5, 6, 7, 0, 3)),
            "Attribute VB_Name = \"M\"\r\nAttribute VB_HelpID = 5\r\nDim v\r\n"
            "Attribute v.VB_VarHelpID = 6\r\nDim w\r\n"
            "#If 0 Then\r\nDim v\r\nAttribute v.VB_VarHelpID = 8\r\n#End If\r\n"
            "Attribute w.VB_VarHelpID = 7\r\n"
            "Sub A()\r\nx = 1\r\nEnd Sub\r\nSub B()\r\nAttribute B.VB_HelpID = 3\r\nEnd Sub\r\n");
  EXPECT_EQ(Rewritten("M.bas", source, {}, change(5, 6, 7, 0, 3)),
            "Attribute VB_Name = \"M\"\r\nAttribute VB_HelpID = 5\r\nDim v\r\nDim w\r\n"
            "' Commented by vbTrapline (Directives are parsed out as part of build)  #If 0 Then\r\n"
            "' Commented by vbTrapline (#IF or #ELSEIF statement evaluates to false)  Dim v\r\n"
            "' Commented by vbTrapline (#IF or #ELSEIF statement evaluates to false)  Attribute "
            "v.VB_VarHelpID = 8\r\n"
            "' Commented by vbTrapline (Directives are parsed out as part of build)  #End If\r\n"
            "Attribute v.VB_VarHelpID = 6\r\nAttribute w.VB_VarHelpID = 7\r\n"
            "Sub A()\r\nx = 1\r\nEnd Sub\r\nSub B()\r\nAttribute B.VB_HelpID = 3\r\nEnd Sub\r\n");
}

}  // namespace
}  // namespace vendrel::test

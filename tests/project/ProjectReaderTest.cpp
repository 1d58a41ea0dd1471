// Project files, good and bad: what each line means and which lines are kept.

#include <gtest/gtest.h>

#include "core/Workspace.h"
#include "diagnostics/VendrelError.h"
#include "support/Boxes.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::MemoryFiles;
using test::Told;
using test::WithCrLf;

// A project file of these lines.
struct File {
  explicit File(const std::string& lines, const test::Prepare& prepare = {})
      : Files{{"/p/P.vbp", WithCrLf(lines)}} {
    if (prepare) prepare(Project);
    EXPECT_TRUE(Project.Load("/p/P.vbp"));
  }
  MemoryFiles Files;
  VBProject Project;
};

std::string Kept(const VBProject& project) {
  std::string text;
  for (const std::string& line : project.ProjectLines) text += line + "|";
  return text;
}

TEST(ProjectReaderTest, EachKeySetsItsPropertyAndIsKeptOrNot) {
  struct Case {
    const char* Line;
    std::function<std::string(const VBProject&)> Value;
    const char* Expected;
    bool IsKept;
  };
  for (const Case& c : std::vector<Case>{
           {"Type=OleDll", [](auto& p) { return p.TypeName + std::to_string(p.ProjectType); }, "OleDll3", true},
           {"Type=EXE", [](auto& p) { return std::string(p.ProjectTypeDescription()); }, "EXE", true},
           {"type=OleExe", [](auto& p) { return std::string(p.ProjectTypeDescription()); }, "ActiveX EXE", true},
           {"Type=Control", [](auto& p) { return std::string(p.ProjectTypeDescription()); }, "ActiveX Control", true},
           {"Type=Other", [](auto& p) { return p.TypeName + std::to_string(p.ProjectType); }, "Other0", true},
           {"AutoIncrementVer=1", [](auto& p) { return std::to_string(p.AutoIncrement); }, "1", false},
           {"AutoIncrementVer=0", [](auto& p) { return std::to_string(p.AutoIncrement); }, "0", false},
           {"AutoIncrementVer= 1", [](auto& p) { return std::to_string(p.AutoIncrement); }, "0", false},
           {"MajorVer=01", [](auto& p) { return p.MajorVersion(); }, "01", true},
           {"MinorVer=2", [](auto& p) { return p.MinorVersion(); }, "2", true},
           {"RevisionVer=345", [](auto& p) { return p.Increment(); }, "345", true},
           {"Startup=\"Sub Main\"", [](auto& p) { return p.Startup; }, "Sub Main", false},
           {"CompatibleMode=\"2\"", [](auto& p) { return std::to_string(p.CompatibleMode); }, "2", false},
           {"CompatibleMode=2", [](auto& p) { return std::to_string(p.CompatibleMode); }, "0", false},
           {"Description=\"About it\"", [](auto& p) { return p.Description(); }, "About it", true},
           {"Description=\"a;b\"", [](auto& p) { return p.Description(); }, "b", true},
           {"Description=\"a=b\"", [](auto& p) { return p.Description(); }, "a=b", true},
           {"CompatibleEXE32=\"bin\\Old.dll\"", [](auto& p) { return p.CompatibleFileName.FullPath(); },
            "Z:\\p\\bin\\Old.dll", false},
           {"ExeName32=\"foo.exe\"", [](auto& p) { return p.EXEName32; }, "foo.exe", false},
           {"ExeName32=foo.exe", [](auto& p) { return p.EXEName32; }, "oo.exe", false},
           {"Path32=\"..\\bin\"", [](auto& p) { return p.Path32; }, "..\\bin", false},
           {"Path32=bin", [](auto& p) { return p.Path32; }, "bin", false},
           {" Path32=\"bin\"", [](auto& p) { return p.Path32; }, "=\"bin", false},  // positions are fixed
           {"CondComp=\"A = 1 : B = 0\"",
            [](auto& p) { return std::to_string(p.CompilerConstants.Count()) + p.CompilerConstants.Item(2)->Name; },
            "2B", true},
           {"RelatedDoc=readme.txt", [](auto& p) { return p.RelatedDocuments.at(0); }, "readme.txt", false},
           {"ResFile32=\"a.res\"", [](auto& p) { return p.RelatedDocuments.at(0); }, "a.res", false},
           {"HelpFile=\"h.chm\"", [](auto& p) { return p.HelpFile; }, "h.chm", false},
           {"HelpContextID=\"77\"",
            [](auto& p) { return std::to_string(p.HelpContextID) + " " + std::to_string(p.CurrentHelpContextID); },
            "77 78", false},
           {"IconForm=\"frmMain\"", [](auto& p) { return p.IconForm; }, "frmMain", false},
           {"Command32=\"x\"", [](auto& p) { return p.Name(); }, "P", true},
           {"STARTUP = \"(None)\"", [](auto& p) { return p.Startup; }, " \"(None)", false},
           {"Startup=", [](auto& p) { return p.Startup; }, "", true},
           {"=x", [](auto& p) { return p.Startup; }, "", true}}) {
    File file(std::string(c.Line) + "\nName=\"P\"\n");
    EXPECT_EQ(c.Value(file.Project), c.Expected) << c.Line;
    EXPECT_EQ(Kept(file.Project), (c.IsKept ? std::string(c.Line) + "|" : "") + "Name=\"P\"|")
        << c.Line;
  }
}

TEST(ProjectReaderTest, ModulesAreListedByTheirLines) {
  // Name, type and file.
  const std::pair<std::string, std::string> cases[] = {
      {"Module=Mod; src\\Mod.bas", "Mod 2 Z:\\p\\src\\Mod.bas"},
      {"Class=Foo;foo.cls", "Foo 1 Z:\\p\\foo.cls"},
      {"Class=Foo; foo.cls; more", "Foo 1 Z:\\p\\foo.cls"},
      {"Class=A.B; foo.cls", "A 1 Z:\\p\\foo.cls"},
      {"Class= Foo; foo.cls", " Foo 1 Z:\\p\\foo.cls"},
      {"Form=F.frm", "frmMain 3 Z:\\p\\F.frm"},
      {"Form= F.frm ", " 3 Z:\\p\\F.frm"},  // the name is looked for as written
      {"Form=gone.frm", " 3 Z:\\p\\gone.frm"},
      {"UserControl=U.ctl", "ctlBox 4 Z:\\p\\U.ctl"},
      {"UserDocument=U.dob", " 5 Z:\\p\\U.dob"},
      {"Designer=D.dsr", " 6 Z:\\p\\D.dsr"},
      {"PropertyPage=P.pag", " 10 Z:\\p\\P.pag"},
      {"Form=plain", "plain 3 Z:\\p\\plain"},
      {"UserControl=..\\q\\U.ctl", " 4 Z:\\q\\U.ctl"}};
  for (const auto& [line, listed] : cases) {
    const MemoryFiles files{
        {"/p/P.vbp", line + "\r\nName=\"P\"\r\n"},
        {"/p/F.frm",
         WithCrLf("VERSION 5.00\nBegin VB.Form frmOther\nEnd\nAttribute VB_Name = \"frmMain\"\n")},
        {"/p/plain", WithCrLf("VERSION 5.00\nBegin VB.Form plain\nEnd\n")},
        {"/p/U.ctl",
         WithCrLf("VERSION 5.00\nBegin VB.UserControl x\nEnd\nAttribute VB_Name = \"ctlBox\"\n")}};
    VBProject project;
    ASSERT_TRUE(project.Load("/p/P.vbp"));
    ASSERT_EQ(project.Components.Count(), 1u) << line;
    const Component& component = *project.Components.Item(1);
    EXPECT_EQ(component.Name + " " + std::to_string(component.FileType) + " " +
                  component.FileName.FullPath(),
              listed)
        << line;
    EXPECT_EQ(component.LoadState, lsNotLoaded);
    EXPECT_EQ(component.ProjectLineRaw, line);
    EXPECT_EQ(project.Components.HasKey(component.Name), !component.Name.empty());
    EXPECT_EQ(Kept(project), "Name=\"P\"|");
    if (!component.Name.empty()) {
      ASSERT_NE(project.TypeCache.Find(component.Name), nullptr);
      EXPECT_EQ(project.TypeCache.Find(component.Name)->Number, 1);
    }
  }
}

TEST(ProjectReaderTest, ALineWithoutItsSemicolonFailsOrIsSteppedOver) {
  for (const char* line : {"Class=Foo", "Module=Foo", "CLASS = Foo"}) {
    const MemoryFiles files{
        {"/p/P.vbp", std::string(line) + "\r\nModule=M; M.bas\r\nName=\"P\"\r\n"}};
    VBProject strict;
    EXPECT_THROW(strict.Load("/p/P.vbp"), VendrelError) << line;
    VBProject project;
    project.OnLineFailure = [](const VendrelError&, std::string_view, std::int32_t) {
      return StepOver::SkipLine;
    };
    ASSERT_TRUE(project.Load("/p/P.vbp"));
    EXPECT_EQ(project.Components.Count(), 1u);
    EXPECT_EQ(Kept(project), std::string(line) + "|Name=\"P\"|");
    EXPECT_EQ(Told(project.Diagnostics), "1 project-line\n");
  }
}

TEST(ProjectReaderTest, TheLastNormalLineStandsBeforeTheFirstGap) {
  const std::pair<const char*, const char*> cases[] = {
      {"Type=Exe\nStartup=\"x\"\n\nName=\"P\"\n[MS]\nA=1\n", "Type=Exe"},
      {"Type=Exe\nName=\"P\"\n[MS Transaction Server]\nAutoRefresh=1\n", "Name=\"P\""},
      {"Type=Exe\nName=\"P\"\n", ""},
      {"\nType=Exe\n\nName=\"P\"\n", "Type=Exe"},  // nothing stood before the first one
      {"Startup=\"x\"\n   \nName=\"P\"\n", ""},
      {"Type=Exe\n\nMajorVer=1\n[x]\nName=\"P\"\n", "Type=Exe"}};
  for (const auto& [lines, last] : cases) {
    File file(lines);
    EXPECT_EQ(file.Project.LastNormalProjectLineText, last) << lines;
    EXPECT_EQ(file.Project.ProjectName, "P");
  }
}

// A class id comes from the file of the reference: where there is none, nothing can be held against
// it.
TEST(ProjectReaderTest, ReferenceLinesAreConsumed) {
  File file(
      "Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#..\\stdole2.tlb#OLE Automation\n"
      "Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#again.tlb#Twice\n"
      "Object={831FDD16-0C5C-11D2-A9FC-0000F8754DA1}#2.0#0; MSCOMCTL.OCX\n"
      "Name=\"P\"\n");
  ASSERT_EQ(file.Project.References.Count(), 3u);
  EXPECT_EQ(file.Project.References.Item(3)->StoredCLSID, "{831FDD16-0C5C-11D2-A9FC-0000F8754DA1}");
  EXPECT_EQ(file.Project.References.Item(3)->SourceLine(), 3);
  EXPECT_EQ(Kept(file.Project), "Name=\"P\"|");
  EXPECT_EQ(file.Project.Diagnostics.CountOf(DiagnosticCode::DuplicateName), 0u);
}

TEST(ProjectReaderTest, LoadSetsTheStartStateAndTheResult) {
  ProcessState& state = State();
  state.LineID = state.BlockID = 40;
  state.CurrentLineNumber = state.LineNumberIncrement = 40;
  state.FileCopy_LastError = "x";
  state.CurrentLanguageVersion = lvVisualBasicDotNet;
  File file("Type=Exe\nName=\"Own\"\n", [](VBProject& p) {
    p.AddLineNumbers = true;
    p.SetLanguageVersion(lvVisualBasicDotNet);
  });
  EXPECT_EQ(state.LineID, 1);
  EXPECT_EQ(state.BlockID, 1);
  EXPECT_EQ(state.lLineNumber, 5);
  EXPECT_EQ(state.CurrentLineNumber + state.LineNumberIncrement, 0);
  EXPECT_EQ(state.FileCopy_LastError, "");
  EXPECT_EQ(state.CurrentLanguageVersion, lvVisualBasic5or6);
  const VBProject& p = file.Project;
  EXPECT_FALSE(p.AddLineNumbers);
  EXPECT_EQ(p.LanguageVersion(), lvVisualBasic5or6);
  EXPECT_EQ(p.ProjectSourceType, ptsVisualBasicProject);
  EXPECT_EQ(p.ProjectSourceAccess, psaReadWrite);
  EXPECT_EQ(p.QualifiedName(), "Own");
  EXPECT_EQ(p.OutputFileName.LeafName(), "P.vbp");
  EXPECT_EQ(p.CurrentHelpContextID, 1);
  EXPECT_EQ(p.FileName.FullPath(), "Z:\\p\\P.vbp");
}

TEST(ProjectReaderTest, AMissingFileGivesFalseAndTheReason) {
  const MemoryFiles files;
  VBProject project;
  EXPECT_FALSE(project.Load("/p/gone.vbp"));
  EXPECT_EQ(project.LastErrorString, "Passed filename was invalid / did not exist");
  EXPECT_EQ(project.Components.Count(), 0u);
  EXPECT_FALSE(project.Load("/p/x.VbProj"));  // the other loader says the same
  EXPECT_EQ(project.LastErrorString, "Passed filename was invalid / did not exist");
}

TEST(ProjectReaderTest, ADuplicateModuleIsToldAndDropped) {
  const std::string lines =
      "Module=M; A.bas\nModule=m; B.bas\nForm=gone.frm\nForm=gone2.frm\nName=\"P\"\n";
  for (const bool silent : {true, false}) {
    const auto boxes = test::InstallBoxes();
    File file(lines, [&](VBProject& p) {
      EXPECT_TRUE(p.Silent());
      p.SetSilent(silent);
    });
    EXPECT_EQ(file.Project.Components.Count(), 3u);
    EXPECT_EQ(file.Project.Components.Item("M")->FileName.LeafName(), "A.bas");
    EXPECT_EQ(Kept(file.Project), "Name=\"P\"|");
    EXPECT_EQ(Told(file.Project.Diagnostics), "2 duplicate-name\n");
    EXPECT_EQ(boxes->Said, silent ? ""
                                  : "Duplicate Components|Duplicate Components, 'm'.  Processing "
                                    "will continue.|48\n");
    const VBProject another;  // a new project silences the whole process
    EXPECT_TRUE(file.Project.Silent());
  }
}

TEST(ProjectReaderTest, LineEndsAndEncodingsOfTheFileDoNotMatter) {
  for (const std::string& bytes :
       {std::string("Type=Exe\nStartup=\"\xC3\x9C\"\nName=\"P\""),
        std::string("Type=Exe\rStartup=\"\xDC\"\rName=\"P\"\r"),
        std::string("\xEF\xBB\xBFType=Exe\r\nStartup=\"\xC3\x9C\"\r\nName=\"P\"\r\n")}) {
    const MemoryFiles files{{"/p/P.vbp", bytes}};
    VBProject project;
    ASSERT_TRUE(project.Load("/p/P.vbp"));
    EXPECT_EQ(project.Startup, "\xC3\x9C");
    EXPECT_EQ(project.ProjectName, "P");
    EXPECT_EQ(project.ProjectType, ptEXE);
    EXPECT_EQ(project.ProjectLines.size(), 2u);
  }
}

TEST(ProjectReaderTest, ASingleModuleIsAProjectOfItsName) {
  const MemoryFiles files{{"/p/x.cls", WithCrLf(test::Header(ftClass, "Named") + "Dim a\n")},
                          {"/p/y.bas", "Dim a\r\n"}};
  VBProject named, plain;
  ASSERT_TRUE(named.LoadModule("/p/x.cls"));
  EXPECT_EQ(named.ProjectName, "Named");
  EXPECT_EQ(named.ProjectSourceType, ptsVisualBasicFiles);
  EXPECT_EQ(named.Components.Item("Named")->FileType, ftClass);
  ASSERT_TRUE(plain.LoadModule("/p/y.bas"));
  EXPECT_EQ(plain.ProjectName, "y");
  EXPECT_FALSE(plain.LoadModule("/p/gone.bas"));
}

}  // namespace
}  // namespace vendrel

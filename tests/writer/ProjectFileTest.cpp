#include <gtest/gtest.h>

#include "support/Projects.h"

namespace vendrel::test {
namespace {

struct WrittenFile {
  std::string Text;  // of the project file, LF
  std::string LastNormal;
};

WrittenFile WriteProject(const std::string& lines, const std::string& folder,
                         const Prepare& prepare = {}) {
  MemoryFiles files{
      {"/p/A.vbp", WithCrLf(lines)},
      {"/p/sub/M.bas", "Attribute VB_Name = \"M\"\r\n"},
      {"/p/F.frm", "VERSION 5.00\r\nBegin VB.Form F\r\nEnd\r\nAttribute VB_Name = \"F\"\r\n"},
      {"/p/lib/here.tlb", ""}};
  files.AddFolder("/q");
  VBProject project;
  if (prepare) prepare(project);
  EXPECT_TRUE(project.Load("/p/A.vbp"));
  project.OutputFileName.SetFolderPath(folder);
  project.WriteOut(true);
  std::string text = files[folder + "/A.vbp"];
  std::erase(text, '\r');
  return {text, project.LastNormalProjectLineText};
}

constexpr const char* kSettings =
    "HelpFile=\"\"\nHelpContextID=\"0\"\n%IconForm=\"\"\nStartup=\"Sub "
    "Main\"\nCompatibleMode=\"0\"\n"
    "CompatibleEXE32=\"\"\nEXEName32=\"\"\nPath32=\"\"\nAutoIncrementVer=0\n";

// The settings that are always written, with `kept` in the middle.
std::string Settings(const std::string& kept) {
  std::string text = kSettings;
  return text.replace(text.find('%'), 1, kept);
}

TEST(WritingTheProjectFile, EachRowComesBackInItsPlace) {
  const std::string lines =
      "Type=OleDll\nReference=*\\G{A}#1.0#0#C:\\a.tlb#A\nForm=F.frm\nModule=M; sub\\M.bas\n"
      "RelatedDoc=doc\\r.txt\nResFile32=\"x.RES\"\nName=\"Old\"\nHelpFile=\"h.hlp\"\n"
      "HelpContextID=\"12\"\nIconForm=\"F\"\nStartup=\"F\"\nCompatibleMode=\"2\"\n"
      "CompatibleEXE32=\"bin\\c.dll\"\nExeName32=\"a.dll\"\nPath32=\"..\\Bin\"\n"
      "AutoIncrementVer=1\nMajorVer=1\nDescription=\"a;b\"\n\n[MS Transaction Server]\nAuto=1\n";
  const std::string head =
      "Type=OleDll\nReference=*\\G{A}#1.0#0#C:\\a.tlb#A\nForm=F.frm\nModule=M;";
  const std::string middle =
      "HelpFile=\"h.hlp\"\nHelpContextID=\"12\"\nName=\"Old\"\nMajorVer=1\nDescription=\"a;b\"\n"
      "Startup=\"F\"\nCompatibleMode=\"2\"\n";
  const std::string tail =
      "EXEName32=\"a.dll\"\nPath32=\"..\\Bin\"\nAutoIncrementVer=1\n\n"
      "[MS Transaction Server]\nAuto=1\n";
  EXPECT_EQ(WriteProject(lines, "/p").Text,
            head + "sub\\M.bas\nRelatedDoc=doc\\r.txt\nResFile32=\"x.RES\"\n" + middle +
                "CompatibleEXE32=\"bin\\c.dll\"\n" + tail);
  EXPECT_EQ(WriteProject(lines, "/q").Text,
            "Type=OleDll\nReference=*\\G{A}#1.0#0#C:\\a.tlb#A\nForm=F.frm\nModule=M;M.bas\n"
            "RelatedDoc=r.txt\nResFile32=\"x.RES\"\n" +
                middle + "CompatibleEXE32=\"..\\p\\bin\\c.dll\"\n" + tail);
}

TEST(WritingTheProjectFile, OddOrdersOfKeptLinesFollowTheRule) {
  const std::string start = "Startup=\"Sub Main\"\n";
  struct Case {
    std::string Lines, Written;
  } const cases[] = {
      {start, Settings("")},
      {start + "Type=Exe\nName=\"P\"\n", "Type=Exe\n" + Settings("Name=\"P\"\n")},
      {start + "MajorVer=1\nType=Exe\nTitle=\"t\"\n",
       "MajorVer=1\n" + Settings("MajorVer=1\nTitle=\"t\"\n")},
      {start + "Name=\"P\"\nMajorVer=2\n", "Name=\"P\"\n" + Settings("Name=\"P\"\nMajorVer=2\n")},
      {start + "Type=Exe\nX=1\n\nY=2\nX=1\nZ=3\n",
       "Type=Exe\n" + Settings("X=1\n") + "\nY=2\nX=1\nZ=3\n"},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(WriteProject(test.Lines, "/p").Text, test.Written) << test.Lines;
  }
  EXPECT_EQ(WriteProject("Type=Exe\nMajorVer=1\n", "/p").LastNormal, "MajorVer=1");
}

TEST(WritingTheProjectFile, ReferencesAreRebuiltForAnotherFolderIfTheirFilesAreThere) {
  const std::string lines =
      "Type=Exe\nReference=*\\G{A}#1.0#0#lib\\here.tlb#A\n"
      "Reference=*\\G{B}#1.0#0#lib\\gone.tlb#B\nObject={C}#1.0#0; x.ocx\nReference=*\\AX.vbp\n";
  const std::string rest = "Object={C}#1.0#0; x.ocx\nReference=*\\AX.vbp\n";
  const auto references = [](const WrittenFile& written) {
    return written.Text.substr(9, written.Text.find("HelpFile") - 9);
  };
  EXPECT_EQ(references(WriteProject(lines, "/p")), lines.substr(9));
  EXPECT_EQ(references(WriteProject(lines, "/q")),
            "Reference=*\\G{A}#1.0#0#..\\p\\lib\\here.tlb#A\n"
            "Reference=*\\G{B}#1.0#0#..\\p\\lib\\gone.tlb#B\n" +
                rest);
  EXPECT_EQ(references(WriteProject(lines, "/q", Complete())),
            "Reference=*\\G{A}#1.0#0#..\\p\\lib\\here.tlb#A\n"
            "Reference=*\\G{B}#1.0#0#lib\\gone.tlb#B\n" +
                rest);
}

TEST(WritingTheProjectFile, KeepsEncodingAndInTheCompleteReadingLineEnds) {
  MemoryFiles files{{"/p/A.vbp", "Type=Exe\nTitle=\"caf\xE9 \x81\"\nName=\"A\""}};
  for (const bool complete : {false, true}) {
    VBProject project;
    if (complete) project.Reading = ReadingRules::Complete();
    ASSERT_TRUE(project.Load("/p/A.vbp"));
    project.OutputFileName.SetFolderPath("/q");
    files.AddFolder("/q");
    project.WriteOut();
    const std::string end = complete ? "\n" : "\r\n";
    const std::string text = files["/q/A.vbp"];
    EXPECT_NE(text.find(end + "Title=\"caf\xE9 \x81\"" + end + "Name=\"A\""), std::string::npos)
        << text;
    EXPECT_EQ(text.ends_with(complete ? "\nName=\"A\"" : "AutoIncrementVer=0\r\n"), true);
  }
}

TEST(WritingAProjectElsewhere, FlattensItAndTakesFilesAlong) {
  const std::string module = "Attribute VB_Name = \"M\"\r\n";
  MemoryFiles files{
      {"/p/A.vbp",
       "Type=Exe\r\nForm=f\\F.frm\r\nModule=M; a\\M.bas\r\nModule=N; b\\m.bas\r\nModule=O; "
       "c\\M.bas\r\nRelatedDoc=d\\r.txt\r\nCompatibleEXE32=\"bin\\c.dll\"\r\nName=\"A\"\r\n"},
      {"/p/f/F.frm", "VERSION 5.00\r\nBegin VB.Form F\r\nEnd\r\nAttribute VB_Name = \"F\"\r\n"},
      {"/p/f/F.frx", "binary"},
      {"/p/f/F.log", "log"},
      {"/p/f/F.vbp", "no"},
      {"/p/f/F2.frx", "other"},
      {"/p/a/M.bas", module + "' 1\r\n"},
      {"/p/b/m.bas", module + "' 2\r\n"},
      {"/p/c/M.bas", module + "' 3\r\n"},
      {"/p/d/r.txt", "doc"},
      {"/p/bin/c.dll", "MZ"}};
  VBProject project;
  ASSERT_TRUE(project.Load("/p/A.vbp"));
  project.OutputFileName.SetFolderPath("/q");
  std::string progress;
  project.WriteProgress.Add([&](Component& component) { progress += component.Name; });
  project.WriteOut();
  EXPECT_EQ(progress, "FMNO");
  const std::vector<std::string> expected{"/q/A.vbp", "/q/F.frm",   "/q/F.frx",
                                          "/q/F.log", "/q/M.bas",   "/q/M_3.bas",
                                          "/q/c.dll", "/q/m_2.bas", "/q/r.txt"};
  std::vector<std::string> found;
  for (const std::string& path : files.Paths())
    if (path.starts_with("/q/")) found.push_back(path);
  EXPECT_EQ(found, expected);
  EXPECT_EQ(files["/q/m_2.bas"], module + "' 2\r\n");
  EXPECT_EQ(files["/q/M_3.bas"], module + "' 3\r\n");
  EXPECT_NE(files["/q/A.vbp"].find("Module=N;m_2.bas\r\nModule=O;M_3.bas\r\n"), std::string::npos);
  const Component& form = *project.Components.Item("F");
  EXPECT_TRUE(form.IsOtherFileName("Z:\\P\\F\\f.FRM"));
  EXPECT_FALSE(form.IsOtherFileName("Z:\\p\\f\\F.frx"));
  EXPECT_TRUE(form.IsComponentOutputFileName("z:\\q\\f.frm"));
  EXPECT_FALSE(form.IsComponentOutputFileName("Z:\\p\\f\\F.frm"));
}

}  // namespace
}  // namespace vendrel::test

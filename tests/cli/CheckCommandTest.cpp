// check, and what every command says of inputs that cannot be read or are none.

#include "project/VBProject.h"
#include "support/MemoryFiles.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

const std::string kModule = "Attribute VB_Name = \"M\"\r\nSub Main()\r\nEnd Sub\r\n";

// Bytes like those of a compressed file: each value as often as any other.
std::string Noise(std::size_t size) {
  std::string bytes;
  std::uint32_t state = 1;
  while (bytes.size() < size) {
    state = state * 1664525u + 1013904223u;
    bytes.push_back(static_cast<char>(state >> 24));
  }
  return bytes;
}

class CheckCommand : public testing::Test {
 protected:
  std::string Check(const std::vector<std::string>& more, int code) {
    std::vector<std::string> arguments{"check"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return ToolEnding(code, arguments).Out;
  }

  test::MemoryFiles mFiles;
};

TEST_F(CheckCommand, AnOddLineIsTheSameInAProjectAloneAndInAGroup) {
  mFiles.Add("/p/A.vbp", "Type=Exe\r\nClass=Item\r\nModule=M; m.bas\r\nName=\"A\"\r\n");
  mFiles.Add("/p/m.bas", kModule);
  mFiles.Add("/p/G.vbg", "VBGROUP 5.0\r\nProject=A.vbp\r\n");
  for (const char* path : {"/p/A.vbp", "/p/G.vbg"}) {
    const std::string told = Check({path}, exDone);
    EXPECT_THAT(told, HasSubstr("/p/A.vbp:2: warning: project line kept, but not understood: "
                                "Class=Item [project-line]\n"))
        << path;
    EXPECT_THAT(told, HasSubstr("1 project, 0 projects not read, 1 module listed, 1 found, "))
        << path;
  }
}

TEST_F(CheckCommand, TwoModulesOfOneNameAreToldWithTheirFiles) {
  mFiles.Add("/p/P.vbp", "Type=Exe\r\nModule=M; m.bas\r\nModule=m; n.bas\r\nName=\"P\"\r\n");
  mFiles.Add("/p/m.bas", kModule);
  mFiles.Add("/p/n.bas", kModule);
  EXPECT_THAT(Check({"/p/P.vbp"}, exDone),
              HasSubstr("/p/P.vbp:3: warning: duplicate name of two modules, m.bas and n.bas: 'm'; "
                        "the first one stays [duplicate-name]\n"));
}

TEST_F(CheckCommand, TellsWhatIsWrongWithTheListOfModulesWhereItStands) {
  mFiles.Add("/p/P.vbp",
             "Type=Exe\r\nModule=M; m.bas\r\nModule=G; gone.bas\r\nClass=C; SUB\\ITEM.cls\r\n"
             "Module=S; shut.bas\r\nModule=Q; pipe.bas\r\nModule=D; folder\r\nForm=noise.frm\r\n"
             "Module=H; hidden\\h.bas\r\nModule=E; empty.bas\r\nModule=M; m.bas\r\n");
  mFiles.Add("/p/m.bas", kModule);
  mFiles.Add("/p/sub/Item.cls", "VERSION 1.0 CLASS\r\nAttribute VB_Name = \"C\"\r\n");
  mFiles.Add("/p/shut.bas", kModule);
  mFiles.FailOn("/p/shut.bas", EACCES);
  mFiles.AddPipe("/p/pipe.bas");
  mFiles.AddFolder("/p/folder");
  mFiles.Add("/p/noise.frm", Noise(3000));
  mFiles.Add("/p/hidden/h.bas", kModule);
  mFiles.FailOn("/p/hidden", EACCES);
  mFiles.FailOn("/p/hidden/h.bas", EACCES);
  mFiles.Add("/p/empty.bas", "");
  const std::string told = Check({"/p/P.vbp"}, exNo);
  EXPECT_THAT(told, StartsWith("/p/P.vbp:3: warning: module file not found: /p/gone.bas "
                               "[missing-module]\n"
                               "/p/P.vbp:4: note: module file 'SUB\\ITEM.cls' is spelled "
                               "'sub\\Item.cls' on the disk [module-case]\n"));
  EXPECT_THAT(told, HasSubstr("10 modules listed, 3 found, 1 found under another case, 1 missing, "
                              "5 unreadable, 1 duplicate name, "));
  for (const char* file : {"shut.bas", "pipe.bas", "folder", "noise.frm", "hidden/h.bas"})
    EXPECT_THAT(told, HasSubstr("/p/" + std::string(file) + ": ")) << told;
  // Named in another case as a whole, the project is not told of each of its modules.
  mFiles.Add("/q/Q.vbp", "Module=M; m.bas\r\n");
  mFiles.Add("/q/m.bas", kModule);
  EXPECT_THAT(Check({"/Q/q.VBP"}, exDone), HasSubstr("1 found, 0 found under another case"));
}

TEST_F(CheckCommand, AFileThatIsNoInputAtAllIsToldByEveryCommand) {
  mFiles.Add("/p/noise.vbp", Noise(3000));
  mFiles.Add("/p/noise.bas", Noise(3000));
  mFiles.Add("/p/small.cls", Noise(200));
  mFiles.Add("/p/noise.vbg", Noise(3000));
  mFiles.Add("/p/elf.frm", std::string("\x7f"
                                       "ELF\2\1\1\0\0\0\0\0\0\0\0\0\3\0\x3e\0\1\0\0\0",
                                       24));
  mFiles.Add("/p/empty.vbp", "");
  mFiles.Add("/p/empty.vbg", "");
  mFiles.Add("/p/words.vbp", "A letter.\r\nYours = x\r\n");
  mFiles.Add("/p/shut.bas", kModule);
  mFiles.FailOn("/p/shut.bas", EACCES);
  mFiles.AddPipe("/p/pipe.bas");
  mFiles.AddPipe("/p/pipe.vbp");
  mFiles.Add("/p/empty.bas", "");
  mFiles.Add("/p/empty.frm", "");
  mFiles.Add("/p/least.vbp", "Type=Exe\r\n");
  mFiles.Add("/p/least.vbg", "VBGROUP 5.0\r\n");
  const struct {
    const char* File;
    int Code;
    const char* Part;
  } cases[] = {
      {"noise.vbp", exFailed, "no project: the file holds binary data"},
      {"noise.bas", exFailed, "no module: the file holds binary data"},
      {"small.cls", exFailed, "no module: the file holds binary data"},
      {"noise.vbg", exFailed, "no project group: the file holds binary data"},
      {"elf.frm", exFailed, "no module: the file holds binary data"},
      {"empty.vbp", exFailed, "no project: the file is empty"},
      {"empty.vbg", exFailed, "no project group: the file is empty"},
      {"words.vbp", exFailed, "none of its lines is one of a project file"},
      {"shut.bas", exFailed, "cannot be read: "},
      {"pipe.bas", exFailed, "not a regular file"},
      {"pipe.vbp", exFailed, "not a regular file"},
      {"empty.bas", exDone, "[empty-module]"},
      {"empty.frm", exDone, "[empty-module]"},
      {"least.vbp", exDone, ""},
      {"least.vbg", exDone, ""},
  };
  for (const auto& sample : cases) {
    const std::string path = "/p/" + std::string(sample.File);
    const std::string told = ToolEnding(sample.Code, {"tree", path}).Err;
    if (!*sample.Part) continue;
    EXPECT_THAT(told, AllOf(HasSubstr(path), HasSubstr(sample.Part)));
    if (!path.ends_with("vbg")) ToolEnding(sample.Code, {"check", path});
  }
  // The library takes them all.
  for (const char* path : {"/p/noise.vbp", "/p/empty.vbp", "/p/words.vbp"})
    EXPECT_TRUE(VBProject().Load(path)) << path;
}

TEST_F(CheckCommand, OfManyProjectsTheReadableAreDone) {
  for (const char* folder : {"/a/", "/b/"}) {
    const std::string at = folder;
    mFiles.Add(at + "A.vbp", "Type=Exe\r\nModule=M; M.bas\r\nName=\"A\"\r\n");
    mFiles.Add(at + "Bad.vbp", Noise(3000));
    mFiles.Add(at + "Shut.vbp", "Type=Exe\r\nName=\"Shut\"\r\n");
    mFiles.FailOn(at + "Shut.vbp", EACCES);
    mFiles.Add(at + "shut/S.vbp", "Type=Exe\r\nName=\"S\"\r\n");
    mFiles.FailOn(at + "shut", EACCES);
    mFiles.Add(at + "Z.vbp", "Type=Exe\r\nModule=G; gone.bas\r\nName=\"Z\"\r\n");
    mFiles.Add(at + "M.bas", kModule);
    mFiles.Add(at + "G.vbg", "VBGROUP 5.0\r\nProject=Bad.vbp\r\nProject=A.vbp\r\n");
  }
  mFiles.Add("/b/M.bas", kModule + "Sub More()\r\nEnd Sub\r\n");
  mFiles.Add("/none/Bad.vbp", Noise(3000));
  const struct {
    std::vector<std::string> Arguments;
    const char* Done;
  } cases[] = {
      {{"structure", "/a"}, "ProjectName=\"Z\""},
      {{"structure", "/a/G.vbg"}, "ProjectName=\"A\""},
      {{"tree", "/a"}, "project Z "},
      {{"tree", "/a/G.vbg"}, "project A "},
      {{"diff", "/a", "/b"}, "added\tprocedure\tA~M~More\t"},
      {{"diff", "/a/G.vbg", "/b/G.vbg"}, "More"},
      {{"find", "/a", "Main"}, "Main"},
      {{"check", "/a"}, "2 projects, 2 projects not read, 2 modules listed, 1 found"},
      {{"structure", "/none"}, ""},
      {{"find", "/none", "Main"}, ""},
  };
  for (const auto& sample : cases) {
    const ToolRun run = ToolEnding(exFailed, sample.Arguments);
    EXPECT_THAT(run.Out, HasSubstr(sample.Done)) << testing::PrintToString(sample.Arguments);
    EXPECT_THAT(run.Out + run.Err, HasSubstr("Bad.vbp: error: no project: the "
                                             "file holds binary data [unread-project]"));
    EXPECT_EQ((run.Out + run.Err).find("[folder-skipped]") != std::string::npos,
              sample.Arguments[1] == "/a");
  }
}

TEST_F(CheckCommand, SumsUpReferencesWithoutFile) {
  const std::string lines =
      "Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#C:\\x\\one.tlb#One\r\n"
      "Object={00020430-0000-0000-C000-000000000047}#2.0#0; TWO.OCX\r\n";
  mFiles.Add("/p/A.vbp", lines + "Name=\"A\"\r\n");
  mFiles.Add("/p/B.vbp", lines + "Name=\"B\"\r\n");
  const std::string sum = Check({"/p"}, exDone);
  EXPECT_THAT(sum, StartsWith("note: 4 references name files that are not on this machine; "
                              "--verbose tells each [missing-references]\n"));
  EXPECT_THAT(sum, HasSubstr("4 references without a file\n"));
  const std::string each = Check({"/p", "--verbose"}, exDone);
  EXPECT_THAT(each, AllOf(HasSubstr("/p/B.vbp:2: note: file of the reference not found: "),
                          Not(HasSubstr("[missing-references]"))));
  EXPECT_EQ(JsonLines({"check", "/p", "--json"}).size(), 2u);
}

TEST_F(CheckCommand, OfVBNetItCountsFilesAndNoReferenceThatNamesNone) {
  mFiles.Add("/n/N.vbproj",
             "<Project><PropertyGroup><AssemblyName>N</AssemblyName></PropertyGroup><ItemGroup>"
             "<Compile Include=\"A.vb\" /><Compile Include=\"Gone.vb\" /><Reference "
             "Include=\"System.Far\" /><PackageReference Include=\"Pack\" Version=\"2.0\" />"
             "<ProjectReference Include=\"..\\none\\None.vbproj\" /></ItemGroup></Project>");
  mFiles.Add("/n/A.vb",
             "Class A\nSub S()\nEnd Sub\nSub S(a As Long)\nEnd Sub\nEnd "
             "Class\nClass B\nEnd Class\n");
  mFiles.Add("/n/old/Old.vb", "Class C\nEnd Class\n");
  const std::string told = Check({"/n"}, exNo);
  EXPECT_THAT(told, HasSubstr("2 modules listed, 1 found, 0 found under another case, 1 missing, 0 "
                              "unreadable, 0 duplicate names, 1 reference without a file\n"));
  EXPECT_THAT(told, AllOf(HasSubstr("/n/old/Old.vb: note: no project lists this module"),
                          HasSubstr("module file not found: /n/Gone.vb"),
                          Not(HasSubstr("[option-explicit]"))));
  EXPECT_THAT(RunFor({"tree", "/n/N.vbproj", "--depth", "2"}),
              AllOf(HasSubstr("reference System.Far "), HasSubstr("reference Pack  (2.0)")));
}

TEST_F(CheckCommand, TellsMistypedTagsAndCommentsWithoutElementOncePerModule) {
  mFiles.Add("/p/M.bas",
             "Attribute VB_Name = \"M\"\r\nOption Explicit\r\n"
             "'##SUMARY Posts.\r\n'##RETURN x\r\n'##Summary: y\r\n'##desc z\r\n'##PARAMETER a\r\n"
             "Dim x  '##REMARKSS behind\r\n"
             "'########\r\n'##########T\r\n'##Begin##\r\n'##END of it\r\n'##TODO\r\n'## go on\r\n"
             "'#SUMMARY one\r\n'##a\r\n'##### REMARK\r\n'##===\r\n"
             "'##SUMMARY Does it.\r\n'##PARAM none of these\r\nSub Main()\r\nEnd Sub\r\n");
  mFiles.Add("/p/A.vbp", "Module=M; M.bas\r\nName=\"A\"\r\n");
  mFiles.Add("/p/B.vbp", "Module=M; M.bas\r\nName=\"B\"\r\n");
  std::string told;
  for (const json& line : JsonLines({"check", "/p", "--json"}))
    if (line.contains("Code"))
      told +=
          std::to_string(line["Line"].get<int>()) + " " + line["Text"].get<std::string>() + "\n";
  const std::string kept = " is no tag, the line stays an ordinary comment; did you mean ##";
  EXPECT_EQ(told, "3 ##SUMARY" + kept + "SUMMARY?\n4 ##RETURN" + kept +
                      "RETURNS?\n5 ##Summary:" + kept + "SUMMARY?\n6 ##desc" + kept +
                      "DESCRIPTION?\n7 ##PARAMETER" + kept + "PARAM?\n8 ##REMARKSS" + kept +
                      "REMARKS?\n20 tagged comment ##PARAM none found no element\n");
}

}  // namespace
}  // namespace vendrel::cli

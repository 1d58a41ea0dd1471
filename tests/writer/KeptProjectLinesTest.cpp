// Project files in the reading that keeps their lines: the same bytes but for what changed.

#include <gtest/gtest.h>

#include "support/Projects.h"
#include "support/Raised.h"

namespace vendrel::test {
namespace {

// A file that is written by no rule: order, blanks, keys, quotation marks, and bytes without
// meaning.
const std::string kLines =
    "Type=OleDll\r\nstartup= Sub Main \r\nReference=*\\G{A}#1.0#0#lib\\here.tlb#A\r\n"
    "Object={B}#1.0#0; here.ocx\r\nClass = C; a.cls\r\nClass=C;  sub\\C.cls\nMODULE=M; M.bas;x\r\n"
    "Module=M; other.bas\r\nForm=f\\F.frm\r\nRelatedDoc=d\\r.txt\r\nResFile32=\"r.RES\"\r\n"
    "Name=\"A\"\r\nTitle=\"caf\xE9 \x81\"\r\nHelpContextID=7\r\nExeName32=\"a.dll\"\r\n"
    "CompatibleEXE32=\"bin\\c.dll\"\r\nAutoIncrementVer=0\r\nMajorVer=1\r\n\r\n[Others]\r\nx=1";

using Pairs = std::vector<std::pair<std::string, std::string>>;

std::string With(std::string text, const Pairs& replacements) {
  for (const auto& [from, to] : replacements) {
    EXPECT_NE(text.find(from), std::string::npos) << from;
    text.replace(text.find(from), from.size(), to);
  }
  return text;
}

// The project file once it is loaded, changed and written to a folder.
std::string Written(const std::string& lines, const std::string& folder,
                    const std::function<void(VBProject&)>& change = {},
                    const char* codePage = "1252") {
  MemoryFiles files{{"/p/A.vbp", lines},
                    {"/p/sub/C.cls", "VERSION 1.0 CLASS\r\nAttribute VB_Name = \"C\"\r\n"},
                    {"/p/M.bas", "Attribute VB_Name = \"M\"\r\n"},
                    {"/p/f/F.frm", "VERSION 5.00\r\nBegin VB.Form F\r\nEnd\r\n"},
                    {"/p/lib/here.tlb", ""},
                    {"/p/here.ocx", ""}};
  files.AddFolder("/q");
  FileOptions::Current().CodePage = codePage;
  VBProject project;
  project.Reading = ReadingRules::Complete();
  project.OnLineFailure = [](const VendrelError&, std::string_view, std::int32_t) {
    return StepOver::SkipLine;
  };
  EXPECT_TRUE(project.Load("/p/A.vbp"));
  project.OutputFileName.SetFolderPath(folder);
  if (change) change(project);
  project.WriteOut(true);
  FileOptions::Current().CodePage.clear();
  return files[folder + "/A.vbp"];
}

TEST(KeptProjectLines, AnUntouchedFileIsTheSameBytes) {
  const std::string files[] = {kLines,
                               kLines + "\r\n",
                               "",
                               "\n",
                               "Type=Exe",
                               "Type=Exe\rStartup=\"x\"\r\r\n",
                               "\xEF\xBB\xBFType=Exe\r\nTitle=\"\xC3\xA9\x81\"\r\n",
                               "Class=no semicolon\r\nModule\r\n",
                               std::string("\xFF\xFET\0y\0p\0e\0=\0x\0\n\0\x00\xD8=\0", 18)};
  for (const std::string& file : files)
    for (const char* codePage : {"1252", "1250", "1251", "1253", "932", "936", "949", "UTF-8"}) {
      EXPECT_EQ(Written(file, "/p", {}, codePage), file) << codePage;
      const bool hasPaths = file.find("Class=C") != file.npos;
      EXPECT_EQ(hasPaths || Written(file, "/q", {}, codePage) == file, true) << codePage;
    }
}

TEST(KeptProjectLines, ElsewhereOnlyPathsThatWouldLeadNowhereAreOthers) {
  const std::string odd = "Type=OleDll\r\nCompatibleEXE32=\"caf\xE9.dll\"\r\n";
  EXPECT_EQ(Written(odd, "/q", {}, "UTF-8"), With(odd, {{"=\"", "=\"..\\p\\"}}));
  EXPECT_EQ(Written(kLines, "/q"), With(kLines, {{"#lib\\here.tlb", "#..\\p\\lib\\here.tlb"},
                                                 {"  sub\\C.cls", "  C.cls"},
                                                 {"=f\\F.frm", "=F.frm"},
                                                 {"=d\\r.txt", "=r.txt"},
                                                 {"\"bin\\c.dll", "\"..\\p\\bin\\c.dll"}}));
  // The bytes of a path may mean nothing, and the name behind it goes with them.
  for (const char* codePage : {"1252", "1253", "932", "936", "949", "UTF-8"})
    EXPECT_EQ(Written("Form=x\xFF\\\x81\xFF.frm\nForm=\x81\n", "/q", {}, codePage),
              "Form=\x81\xFF.frm\nForm=\x81\n")
        << codePage;
}

TEST(KeptProjectLines, APathThroughAFolderThatTheCodePageLacksStaysAndIsTold) {
  const std::string lines = "Type=Exe\r\nCompatibleEXE32=\"c.dll\"\r\n";
  MemoryFiles files{{"/\xE6\xB5\x8B/A.vbp", lines}};
  files.AddFolder("/q");
  VBProject project;
  project.Reading = ReadingRules::Complete();
  ASSERT_TRUE(project.Load("/\xE6\xB5\x8B/A.vbp"));
  project.OutputFileName.SetFolderPath("/q");
  project.WriteOut();
  EXPECT_EQ(files["/q/A.vbp"], lines);
  EXPECT_EQ(Told(project.Diagnostics), "2 told\n");
}

TEST(KeptProjectLines, WhatChangedIsRewrittenInItsPlace) {
  const struct {
    std::function<void(VBProject&)> Change;
    Pairs Replaced;
  } cases[] = {
      {[](VBProject& p) { p.Startup = "F"; }, {{"startup= Sub Main ", "startup= F "}}},
      {[](VBProject& p) { p.ProjectName = "B"; }, {{"Name=\"A\"", "Name=\"B\""}}},
      {[](VBProject& p) { p.HelpContextID = 8; }, {{"HelpContextID=7", "HelpContextID=8"}}},
      {[](VBProject& p) { p.EXEName32 = "b.dll"; }, {{"\"a.dll\"", "\"b.dll\""}}},
      {[](VBProject& p) { p.AutoIncrement = true; }, {{"Ver=0", "Ver=1"}}},
      {[](VBProject& p) { p.CompatibleFileName.SetFullPath("Z:\\p\\d.dll"); },
       {{"bin\\c.dll", "d.dll"}}},
      {[](VBProject& p) { p.HelpFile = "h.hlp"; },
       {{"MajorVer=1\r\n", "MajorVer=1\r\nHelpFile=\"h.hlp\"\r\n"}}},
      {[](VBProject& p) { p.Components.Item("M")->Name = "N"; }, {{"MODULE=M", "MODULE=N"}}},
      {[](VBProject& p) { p.Components.Item("F")->FileName.SetFullPath("Z:\\p\\G.frm"); },
       {{"f\\F.frm", "G.frm"}}},
      {[](VBProject& p) { p.Components.Remove("M"); }, {{"MODULE=M; M.bas;x\r\n", ""}}},
      {[](VBProject& p) { p.NewComponent(ftClass, "New", "Z:\\p\\New"); },
       {{"Form=f\\F.frm\r\n", "Form=f\\F.frm\r\nClass=New;New.cls\r\n"}}},
      {[](VBProject& p) { p.References.Remove(2); }, {{"Object={B}#1.0#0; here.ocx\r\n", ""}}},
      {[](VBProject& p) { p.References.Item(1)->SourceString = "Reference=*\\G{D}#1.0#0#d#D"; },
       {{"{A}#1.0#0#lib\\here.tlb#A", "{D}#1.0#0#d#D"}}},
      {[](VBProject& p) { p.RelatedDocuments[0] = "n.txt"; }, {{"d\\r.txt", "n.txt"}}},
      {[](VBProject& p) {
         p.RelatedDocuments = {"r.RES", "n.txt"};
       },
       {{"RelatedDoc=d\\r.txt\r\n", ""},
        {"ResFile32=\"r.RES\"\r\n", "ResFile32=\"r.RES\"\r\nRelatedDoc=n.txt\r\n"}}},
      {[](VBProject& p) { p.ProjectLines[3] = "MajorVer=2"; }, {{"MajorVer=1", "MajorVer=2"}}},
      {[](VBProject& p) { p.ProjectLines.erase(p.ProjectLines.begin() + 2); },
       {{"Title=\"caf\xE9 \x81\"\r\n", ""}}},
      {[](VBProject& p) { p.ProjectLines.push_back("y=2"); }, {{"x=1", "x=1\r\ny=2"}}},
  };
  for (const auto& c : cases) {
    // A line that cannot be read is kept, and so is a second module of one name.
    const std::string expected = With(kLines, c.Replaced);
    EXPECT_EQ(Written(kLines, "/p", c.Change), expected) << c.Replaced.front().first;
  }
}

TEST(KeptProjectLines, AnAmendedLineThatTheCodePageLacksIsToldWithItsPlace) {
  std::string text;
  EXPECT_NE(
      Raised([&] { Written(kLines, "/p", [](VBProject& p) { p.Startup = "\xC5\x82"; }); }, &text),
      0);
  EXPECT_NE(text.find("Z:\\p\\A.vbp, line 2: a character that code page windows-1252 lacks"),
            std::string::npos)
      << text;
  FileOptions::Current().CodePage.clear();
}

}  // namespace
}  // namespace vendrel::test

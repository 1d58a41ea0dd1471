// Every call on files may fail, at any time, with any error: each load ends as documented, what was
// read is a sound tree, and the next load is as if nothing had happened.

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <sstream>

#include "core/Workspace.h"
#include "names/NameWalk.h"
#include "output/Dump.h"
#include "project/VBProjectGroup.h"
#include "services/SettingsReader.h"
#include "support/MemoryFiles.h"

namespace vendrel {
namespace {

class Faults : public testing::Test {
 protected:
  Faults()
      : mFiles{
            {"/p/G.vbg", "VBGROUP 5.0\r\nStartupProject=P.vbp\r\nProject=Lib/L.vbp\r\n"},
            {"/p/P.vbp",
             "Type=Exe\r\nReference=*\\ALib\\L.vbp\r\nForm=F.frm\r\nClass=C; SUB\\c.cls\r\n"
             "Module=M; m.bas\r\nName=\"P\"\r\n"},
            {"/p/Lib/L.vbp", "Type=OleDll\r\nModule=N; N.bas\r\nName=\"L\"\r\n"},
            {"/p/Lib/N.bas", "Attribute VB_Name = \"N\"\r\nPublic Enum E\r\n  a\r\nEnd Enum\r\n"},
            {"/p/F.frm",
             "VERSION 5.00\r\nBegin VB.Form F\r\n  Caption = $\"F.frx\":0003\r\n"
             "  Begin VB.Menu m\r\n  End\r\nEnd\r\nAttribute VB_Name = \"F\"\r\n"
             "Private Sub m_Click()\r\nEnd Sub\r\n"},
            {"/p/F.frx", std::string("\1\2\3\5\0\0\0hello", 12)},
            {"/p/sub/C.cls",
             "VERSION 1.0 CLASS\r\nBEGIN\r\nEND\r\nAttribute VB_Name = \"C\"\r\n"
             "'##SUMMARY a class\r\nPublic Sub S(ByVal x As E)\r\nEnd Sub\r\n"},
            {"/p/M.bas",
             "Attribute VB_Name = \"M\"\r\nSub Main()\r\n  Dim a As C\r\nEnd Sub\r\n"}} {}

  // Everything that a load gives, as text.
  std::string Load() {
    State().Reset();
    State().Silent = true;
    std::ostringstream out;
    VBProjectGroup group;
    group.BeforeLoad = [](VBProject& project) { project.Reading = ReadingRules::Complete(); };
    try {
      if (!group.Load("/p/G.vbg")) return "no group";
      for (VBProject& project : group.VBProjects()) {
        project.Components.Populate();
        Dump(out, Describe(project), {.Lines = true, .Identity = false, .Places = false});
        ForEachNamedElement(project, [&](const CodeElement& element) {
          project.GetObjectByName(element.QualifiedName());
        });
        project.UnloadSourceCode();
      }
    } catch (const VendrelError& failure) {
      return failure.Text();
    }
    return out.str();
  }

  test::MemoryFiles mFiles;
};

TEST_F(Faults, OfTheNthCallLeaveASoundTreeAndASoundProcess) {
  const std::string whole = Load();
  ASSERT_NE(whole.find("\"hello\""), std::string::npos) << whole;
  for (const int error : test::kFileErrors) {
    int n = 1;
    for (;; ++n) {
      mFiles.ForgetCalls();
      mFiles.FailAt(n, error);
      const std::string text = Load();
      const auto calls = mFiles.Calls().size();
      mFiles.FailAt(0, 0);
      ASSERT_FALSE(text.empty()) << "call " << n;
      ASSERT_EQ(Load(), whole) << "behind a failure " << error << " of call " << n;
      if (calls < static_cast<std::size_t>(n)) break;
    }
    EXPECT_GT(n, 20);
  }
}

TEST_F(Faults, OfOneFileCostThatFileAlone) {
  const std::string whole = Load();
  const struct {
    const char* File;
    const char* Lost;
    const char* Kept;
  } rows[] = {{"/p/M.bas", "\"Name\": \"Main\"", "\"Name\": \"S\""},
              {"/p/sub/C.cls", "\"Name\": \"S\"", "\"Name\": \"Main\""},
              {"/p/sub", "\"Name\": \"S\"", "\"Name\": \"Main\""},  // names in other case
              {"/p/F.frx", "\"hello\"", "\"Name\": \"m_Click\""},
              {"/p/Lib/L.vbp", "\"ProjectName\": \"L\"", "\"Name\": \"Main\""}};
  for (const auto& row : rows) {
    for (const int error : test::kFileErrors) {
      mFiles.FailOn(row.File, error);
      const std::string text = Load();
      EXPECT_NE(whole.find(row.Lost), std::string::npos);
      EXPECT_EQ(text.find(row.Lost), std::string::npos) << row.File << " " << error;
      EXPECT_NE(text.find(row.Kept), std::string::npos) << row.File << " " << error;
      mFiles.FailOn(row.File, 0);
    }
  }
  EXPECT_EQ(Load(), whole);
}

struct Change {
  const char* Name;
  void (*Of)(test::MemoryFiles&, const std::string& path);
};

const Change kChanges[] = {
    {"shrinks",
     [](auto& files, auto& path) {
       files.Change(path, [](std::string& bytes) { bytes.resize(bytes.size() / 2); });
     }},
    {"is emptied",
     [](auto& files, auto& path) {
       files.Change(path, [](std::string& bytes) { bytes.clear(); });
     }},
    {"grows", [](auto& files,
                 auto& path) { files.Change(path, [](std::string& bytes) { bytes += bytes; }); }},
    {"is replaced", [](auto& files, auto& path) { files.Add(path, "Sub S()\r\nEnd Sub\r\n"); }},
    {"is deleted", [](auto& files, auto& path) { files.Remove(path); }},
    {"becomes a folder",
     [](auto& files, auto& path) {
       files.Remove(path);
       files.AddFolder(path);
     }},
};

TEST_F(Faults, OfFilesThatChangeDuringTheNthCallLeaveASoundTree) {
  const std::string whole = Load();
  std::map<std::string, std::string> contents;
  for (const std::string& path : mFiles.Paths()) contents[path] = mFiles[path];
  for (const Change& change : kChanges) {
    std::size_t calls = 1;
    for (std::size_t n = 1; n <= calls; ++n) {
      mFiles.ForgetCalls();
      mFiles.ActAt(static_cast<int>(n), [&] {
        for (const auto& file : contents) change.Of(mFiles, file.first);
      });
      Load();
      calls = mFiles.Calls().size();
      mFiles.ActAt(0, {});
      for (const auto& [path, bytes] : contents) {
        mFiles.Remove(path);
        mFiles.Add(path, bytes);
      }
      ASSERT_EQ(Load(), whole) << "behind call " << n << ", before which each file " << change.Name;
    }
  }
}

TEST_F(Faults, OfAnEarlierLoadAreForgotten) {
  const std::string whole = Load();
  mFiles.Remove("/p/M.bas");
  const std::string without = Load();
  EXPECT_NE(without, whole);
  mFiles.Add("/p/M.BAS", "Attribute VB_Name = \"M\"\r\nSub Main()\r\n  Dim a As C\r\nEnd Sub\r\n");
  EXPECT_EQ(Load(), whole) << "under another name";

  setenv("VENDRELMODEL_REGISTRY", "/p/none.reg:/p/s.reg", 1);
  mFiles.Add("/p/s.reg", "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\K]\r\n\"V\"=\"x\"\r\n");
  mFiles.FailOn("/p/s.reg", EMFILE);
  SettingsReader settings;
  EXPECT_EQ(settings.ReadValue(HKEY_CURRENT_USER, "K", "V"), "");
  mFiles.FailOn("/p/s.reg", 0);
  EXPECT_EQ(settings.ReadValue(HKEY_CURRENT_USER, "K", "V"), "x");
  unsetenv("VENDRELMODEL_REGISTRY");
}

}  // namespace
}  // namespace vendrel

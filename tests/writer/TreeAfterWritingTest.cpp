// Writing leaves the tree as it was, but for what its rules say.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>

#include "output/Dump.h"
#include "project/VBProjectGroup.h"
#include "services/FileSource.h"
#include "support/Projects.h"
#include "support/SourceRoot.h"

namespace vendrel::test {
namespace {

std::string DumpOf(VBProject& project) {
  std::ostringstream out;
  Dump(out, Describe(project), {.Lines = true});
  return out.str();
}

std::map<std::string, std::string> BytesBelow(const MemoryFiles& files, const std::string& folder) {
  std::map<std::string, std::string> bytes;
  for (const std::string& path : files.Paths())
    if (path.starts_with(folder) && path.find("SourceBackup") == path.npos &&
        !path.ends_with(".bak"))
      bytes[path] = files[path];
  return bytes;
}

std::map<std::string, std::string> ReadSamples() {
  std::map<std::string, std::string> samples;
  const std::filesystem::path root = test::SourceRoot() + "/samples";
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
    if (entry.is_regular_file())
      samples["/s/" + entry.path().lexically_relative(root).string()] =
          ReadWholeFile(entry.path().string());
  return samples;
}

// A member whose help ID is new, a reference without a version to a member of the group, and one
// whose path no one has asked for yet.
void Amend(VBProjectGroup& group, bool helpIDs) {
  VBProject& ledger = *group.AllVBProjects().Item("Ledger");
  if (helpIDs) ledger.Components.Item("modRates")->HelpContextID = 77;
  VBProject& reports = *group.AllVBProjects().Item("Reports");
  reports.CompatibleFileName.SetFullPath("/s/Reports/Reports.vbp");  // any file has a class id here
  const auto reference = std::make_shared<Reference>();
  reference->ReferenceType = "Object";
  reference->CompiledReference = true;
  reference->FileName.SetFullPath("..\\Reports\\Reports.dll");
  reference->SetParentProject(&ledger);
  reference->SetReferencedProject(&reports);
  ledger.References.Add(reference);
}

TEST(TreeAfterWriting, DumpsAsBefore) {
  const auto samples = ReadSamples();
  const struct {
    const char* Folder;
    const char* Numbers;
    bool Complete;
  } cases[] = {{"", "", true},        {"/out", "", true},      {"", "100:10", true},
               {"/out", "5:5", true}, {"", "100:10.5", false}, {"/out", "", false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.Folder) + " " + c.Numbers + (c.Complete ? "" : " classic"));
    MemoryFiles files;
    for (const auto& [path, bytes] : samples) files.Add(path, bytes);
    VBProjectGroup group;
    group.BeforeLoad = [&](VBProject& project) {
      if (c.Complete) project.Reading = ReadingRules::Complete();
    };
    ASSERT_TRUE(group.Load("/s/Ledger.vbg"));
    for (VBProject& project : group.AllVBProjects()) {
      project.Components.Populate();
      project.OutputFileName.SetFullPath(project.FileName.FullPath());
      if (*c.Folder)
        project.OutputFileName.SetFolderPath(std::string(c.Folder) + "/" +
                                             project.FileName.BaseName());
      if (*c.Numbers) project.Tags["fvbOutputLineNumbers"] = c.Numbers;
      project.AddLineNumbers = *c.Numbers;
    }
    FileSystemObject::SetClassIdReader([](const std::string&) { return std::string("{1}"); });
    Amend(group, c.Complete);
    for (VBProject& project : group.AllVBProjects()) {
      SCOPED_TRACE(project.ProjectName);
      if (!c.Complete) project.WriteOut();  // gives help IDs their lines, as documented
      const std::string before = DumpOf(project);
      project.WriteOut();
      EXPECT_EQ(project.Diagnostics.CountOf(DiagnosticCode::WriteRefused), 0u);
      EXPECT_EQ(FirstDifference(before, DumpOf(project)), "");
    }
    if (*c.Numbers) continue;
    const auto written = [&] { return BytesBelow(files, *c.Folder ? c.Folder : "/s"); };
    const auto first = written();
    for (VBProject& project : group.AllVBProjects()) project.WriteOut();
    EXPECT_EQ(written(), first);
  }
  FileSystemObject::SetClassIdReader(nullptr);
}

}  // namespace
}  // namespace vendrel::test

// What a client adds to a project, and where source control keeps it.

#include <gtest/gtest.h>

#include "core/ObjectRegistry.h"
#include "diagnostics/VendrelError.h"
#include "support/Projects.h"
#include "writer/SourceControl.h"

namespace vendrel {
namespace {

using test::MemoryFiles;
using test::TestProject;

TEST(NewComponent, HasItsHeaderAndStandsInTheProject) {
  TestProject files({}, [](VBProject& project) { project.BuildTypeCache = true; });
  const auto added = files.Project->NewComponent(ftClass, "A", "sub\\b");
  EXPECT_EQ(added->FileName.FullPath(), "Z:\\p\\sub\\b.cls");
  EXPECT_EQ(added->ProjectLine(), "Class=A;sub\\b.cls");
  EXPECT_EQ(test::ShowLines(*added->BlockOfType(btAttributes)).substr(0, 17), "VERSION 1.0 CLASS");
  EXPECT_NE(files.Project->TypeCache.Find("a"), nullptr);
  EXPECT_EQ(files.Project->Components.Item("A"), nullptr);
  EXPECT_EQ(files.Project->Components.Item(1), added.get());
  const std::pair<FileTypeEnum, const char*> others[] = {
      {ftModule, "N.bas"},      {ftDesigner, "N.bas"},    {ftOther, "N.bas"},
      {ftForm, "N.frm"},        {ftUserControl, "N.ctl"}, {ftUserDocument, "N.dob"},
      {ftPropertyPage, "N.pag"}};
  for (const auto& [type, leaf] : others)
    EXPECT_EQ(files.Project->NewComponent(type, "N")->FileName.LeafName(), leaf);
}

TEST(StartupBlock, IsFoundOrMade) {
  TestProject found({{"M.bas", "Function main()\r\nEnd Function\r\n"},
                     {"N.bas", "Public Sub MAIN()\r\nEnd Sub\r\n"}});
  EXPECT_EQ(found.Project->StartupBlock(), found.Module("N").Blocks.Item("Main"));

  TestProject made({{"C.cls", ""}});
  made.Project->Startup = "Form1";
  Block* block = made.Project->StartupBlock();
  EXPECT_EQ(block->OwnComponent()->Name, "modStartup");
  EXPECT_EQ(block->Name(), "Main");
  EXPECT_EQ(block->CodeLines->Count(), 3);
  EXPECT_EQ(made.Project->Startup, "Sub Main");
  EXPECT_EQ(made.Project->IconForm, "Form1");
  EXPECT_EQ(made.Project->StartupBlock(), block);
}

TEST(Version, HasAsManyPartsAsAskedFor) {
  MemoryFiles files{
      {"/p/P.vbp", "Type=OleDll\r\nMajorVer=1\r\nMinorVer=2\r\nRevisionVer=3\r\nName=\"P\"\r\n"}};
  VBProject project;
  ASSERT_TRUE(project.Load("/p/P.vbp"));
  EXPECT_EQ(project.Version(), "1.2.3");
  EXPECT_EQ(project.Version("-", 1), "1-2");
  EXPECT_EQ(project.Version(".", 0), "1");
  const std::pair<ProjectTypeEnum, const char*> names[] = {
      {ptEXE, "P.exe"}, {ptOleExe, "P.exe"}, {ptControl, "P.ocx"}, {ptOleDLL, "P.dll"}};
  for (const auto& [type, name] : names) {
    project.ProjectType = type;
    EXPECT_EQ(project.DefaultComponentFileName(), name);
  }
}

// The item of a project beside which that file stands; "none" without one.
std::string SpecOf(const std::string& scc) {
  MemoryFiles files{{"/p/P.vbp", "Type=Exe\r\nName=\"P\"\r\n"},
                    {"/vss/srcsafe.ini", ""},
                    {"/vss/Shop/Ledger/a.bas", ""}};
  if (!scc.empty()) files.Add("/p/mssccprj.scc", scc);
  VBProject project;
  project.Load("/p/P.vbp");
  try {
    const auto item = project.SourceSafeItem();
    return item ? item->Path() : "none";
  } catch (const VendrelError& error) {
    return std::to_string(error.Number());
  }
}

TEST(SourceSafeItem, IsLookedUpByTheFileBesideTheProject) {
  ObjectRegistry::Register<VSSDatabase>(VSSDatabase::kProgID,
                                        [] { return std::make_shared<FolderDatabase>(); });
  const std::string head = "SCC = x\r\n[Other.vbp]\r\nSCC_Project_Name=\"$/No\"\r\n[p.VBP]\r\n";
  const std::string project = "SCC_Project_Name = \"$/Shop/Ledger\", XAAAA\r\n";
  const std::pair<std::string, std::string> cases[] = {
      {"", "none"},
      {head, "none"},
      {head + "SCC_Project_Name=this project is not under source code control\r\n", "none"},
      {head + project + "SCC_Aux_Path=\"Z:\\vss\"\r\n", "$/Shop/Ledger"},
      {head + project + "SCC_Aux_Path=x,\"Z:\\vss\\\"\r\n", "$/Shop/Ledger"},
      {head + project + "SCC_Aux_Path = Z:\\vss\\SrcSafe.ini\r\n", "$/Shop/Ledger"},
      {head + project + "SCC_Aux_Path = Z:\\none\r\n", "53"},
      {head + "SCC_Project_Name = \"$/\", X\r\nSCC_Aux_Path=Z:\\vss\r\n", "$"},
      {head + "SCC_Project_Name = \"$/../p\", X\r\nSCC_Aux_Path=Z:\\vss\r\n", "5"},
      {head + "SCC_Project_Name = \"$/" + std::string(2000, 'x') + "\r\nSCC_Aux_Path=Z:\\vss\r\n",
       "53"},
  };
  for (const auto& [scc, path] : cases) EXPECT_EQ(SpecOf(scc), path) << scc.substr(0, 200);
}

}  // namespace
}  // namespace vendrel

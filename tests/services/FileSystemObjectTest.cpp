#include "services/FileSystemObject.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "diagnostics/Diagnostic.h"
#include "services/Paths.h"
#include "support/DiskFolder.h"
#include "support/MemoryFiles.h"
#include "support/Raised.h"

namespace vendrel {
namespace {

using test::MemoryFiles;
using test::Raised;

TEST(FileSystemObject, GivesThePartsOfItsPathAndChangesEachAlone) {
  FileSystemObject file("Z:\\src\\My.Project.vbp");
  EXPECT_EQ(file.BaseName(), "My.Project");
  EXPECT_EQ(file.Extension(), "vbp");
  EXPECT_EQ(file.LeafName(), "My.Project.vbp");
  EXPECT_EQ(file.FolderPath(), "Z:\\src\\");
  file.SetBaseName("Other");
  EXPECT_EQ(file.FullPath(), "Z:\\src\\Other.vbp");
  file.SetExtension("exe");
  EXPECT_EQ(file.FullPath(), "Z:\\src\\Other.exe");
  file.SetExtension("");
  EXPECT_EQ(file.FullPath(), "Z:\\src\\Other");
  file.SetFolderPath("/lib");
  EXPECT_EQ(file.FullPath(), "Z:\\lib\\Other");
  FileSystemObject folder;
  folder.SetFolderPath("Z:\\x\\y");
  EXPECT_EQ(folder.FolderPath(), "Z:\\x\\y\\");
  EXPECT_EQ(folder.LeafName(), "");
}

TEST(FileSystemObject, WithoutAPathIsEmptyAndStaysUsable) {
  FileSystemObject file;
  EXPECT_FALSE(file.Exists());
  EXPECT_FALSE(file.IsFolder());
  EXPECT_EQ(file.FullPath(), "");
  EXPECT_EQ(file.FolderPath(), "");
  EXPECT_EQ(file.RelativePath(), "");
  EXPECT_EQ(Raised([&] { file.OpenFile(); }), errFileNotFound);
  file.DeleteFile();
  file.SetFullPath("/nowhere/at/all.bas");
  EXPECT_FALSE(file.Exists());
  EXPECT_EQ(file.Match(), PathMatch::None);
}

TEST(FileSystemObject, ResolvesRelativePathsAgainstItsBaseFile) {
  const MemoryFiles files;
  FileSystemObject project("/src/p/A.vbp"), module, late;
  module.SetBaseFile(&project);
  module.SetFullPath("..\\lib\\m.bas");
  EXPECT_EQ(module.FullPath(), "Z:\\src\\lib\\m.bas");
  EXPECT_TRUE(module.IsRelocatable());
  EXPECT_EQ(module.RelativePath(), "..\\lib\\m.bas");
  project.SetFullPath("/elsewhere/B.vbp");
  EXPECT_EQ(module.FullPath(), "Z:\\src\\lib\\m.bas");
  EXPECT_EQ(module.RelativePath(), "..\\src\\lib\\m.bas");

  late.SetFullPath("x.res");
  EXPECT_EQ(late.FullPath(), "Z:\\current\\x.res");
  late.SetBaseFile(&project);
  EXPECT_EQ(late.FullPath(), "Z:\\elsewhere\\x.res");
  late.SetFullPath(late.FullPath());
  EXPECT_EQ(late.FullPath(), "Z:\\elsewhere\\x.res");
  EXPECT_FALSE(late.IsRelocatable());
}

TEST(FileSystemObject, SurvivesBaseFilesInARingAndOnesThatAreGone) {
  FileSystemObject a, b;
  a.SetFullPath("a.bas");
  b.SetFullPath("b.bas");
  a.SetBaseFile(&b);
  b.SetBaseFile(&a);
  EXPECT_FALSE(a.FullPath().empty());
  {
    const FileSystemObject gone("/x/y.vbp");
    a.SetBaseFile(const_cast<FileSystemObject*>(&gone));
  }
  EXPECT_EQ(a.BaseFile(), nullptr);
  EXPECT_FALSE(a.FullPath().empty());
}

TEST(FileSystemObject, FindsNamesThatDifferInCaseOrAreShort) {
  MemoryFiles files{{"/Src/Module Main.bas", "1"},   {"/Src/Long Name One.cls", "2"},
                    {"/Src/Long Name Two.cls", "3"}, {"/Src/same.bas", "4"},
                    {"/Src/Same.bas", "5"},          {"/Src/Tama\xF1o.bas", "6"}};
  const struct {
    std::string_view Path, Native;
    PathMatch Match;
  } cases[] = {
      {"Z:\\Src\\Module Main.bas", "/Src/Module Main.bas", PathMatch::Exact},
      {"Z:\\SRC\\module main.BAS", "/Src/Module Main.bas", PathMatch::OtherCase},
      {"Z:\\src\\MODULE~1.BAS", "/Src/Module Main.bas", PathMatch::ShortName},
      {"Z:\\Src\\LONGNA~1.CLS", "/Src/LONGNA~1.CLS", PathMatch::None},
      {"Z:\\Src\\same.bas", "/Src/same.bas", PathMatch::Exact},
      {"Z:\\Src\\SAME.BAS", "/Src/Same.bas", PathMatch::OtherCase},
      {"Z:\\Src\\Tamaño.bas", "/Src/Tama\xF1o.bas", PathMatch::OtherCase},
      {"Z:\\src\\none.bas", "/Src/none.bas", PathMatch::None},
      {"Z:\\no\\none.bas", "/no/none.bas", PathMatch::None},
      {"Q:\\none.bas", "", PathMatch::None},
  };
  for (const auto& c : cases) {
    const FileSystemObject file(c.Path);
    EXPECT_EQ(file.NativePath(), c.Native) << c.Path;
    EXPECT_EQ(file.Match(), c.Match) << c.Path;
    EXPECT_EQ(file.Exists(), c.Match != PathMatch::None) << c.Path;
  }
}

TEST(FileSystemObject, ListsAFolderOnceHoweverManyNamesAreMissed) {
  MemoryFiles files;
  for (int i = 0; i < 50; ++i) files.Add("/p/Mod" + std::to_string(i) + ".bas", "x");
  EXPECT_TRUE(FileSystemObject("/p/Mod1.bas").Exists());
  EXPECT_EQ(files.Calls().size(), 1u);
  files.ForgetCalls();
  for (int i = 0; i < 50; ++i)
    EXPECT_TRUE(FileSystemObject("/p/mod" + std::to_string(i) + ".bas").Exists());
  EXPECT_LE(files.Calls().size(), 101u);
  files.Add("/p/new.bas", "");
  EXPECT_FALSE(FileSystemObject("/p/NEW.bas").Exists());
  ForgetFolders();
  EXPECT_TRUE(FileSystemObject("/p/NEW.bas").Exists());
}

TEST(FileSystemObject, ReadsLinesWhateverEndsThem) {
  const struct {
    std::string_view Bytes;
    LineEnds::Kind Form;
    bool LastEnds;
    std::vector<std::string> Lines;
  } cases[] = {
      {"", LineEnds::Kind::None, true, {}},
      {"a", LineEnds::Kind::None, false, {"a"}},
      {"a\r\n\r\nb\r\n", LineEnds::Kind::CrLf, true, {"a", "", "b"}},
      {"a\nb", LineEnds::Kind::Lf, false, {"a", "b"}},
      {"a\rb\r", LineEnds::Kind::Cr, true, {"a", "b"}},
      {"a\r\nb\nc\rd\n\re", LineEnds::Kind::Mixed, false, {"a", "b", "c", "d", "", "e"}},
      {"\r\r\n\n", LineEnds::Kind::Mixed, true, {"", "", ""}},
  };
  for (const auto& c : cases) {
    const MemoryFiles files{{"/a.bas", std::string(c.Bytes)}};
    FileSystemObject file("/a.bas");
    file.OpenFile(3, 1, 1);
    EXPECT_EQ(file.Source()->LineEnds.Form, c.Form) << c.Bytes;
    EXPECT_EQ(file.Source()->LineEnds.LastLineEnds, c.LastEnds) << c.Bytes;
    std::vector<std::string> lines;
    while (!file.AtEnd()) lines.push_back(file.ReadLine());
    EXPECT_EQ(lines, c.Lines) << c.Bytes;
    EXPECT_EQ(file.ReadLine(), "");
    file.CloseFile();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(Raised([&] { file.ReadLine(); }), errPathAccess);
  }
}

TEST(FileSystemObject, ReadAllGivesWhatIsLeft) {
  const MemoryFiles files{{"/a.bas", "one\r\ntwo\r\nthree"}};
  FileSystemObject file("/a.bas");
  file.OpenFile();
  EXPECT_EQ(file.NextLine(), "one");
  const FileSystemObject copy(file);
  EXPECT_FALSE(copy.IsOpen());
  EXPECT_EQ(file.ReadAll(), "two\r\nthree");
  EXPECT_TRUE(file.AtEnd());
}

TEST(FileSystemObject, RefusesWhatIsNoFile) {
  MemoryFiles files{{"/d/a.bas", "x"}, {"/locked.bas", "x"}};
  files.AddPipe("/pipe");
  files.FailOn("/locked.bas", EACCES);
  const std::pair<std::string_view, int> cases[] = {
      {"/d", errPathAccess},
      {"/pipe", errPathAccess},
      {"/d/none.bas", errFileNotFound},
      {"Q:\\a.bas", errFileNotFound},
      {"/locked.bas", errPermissionDenied},
  };
  for (const auto& [path, number] : cases) {
    FileSystemObject file(path);
    EXPECT_EQ(Raised([&] { file.OpenFile(); }), number) << path;
    EXPECT_FALSE(file.IsOpen());
  }
  EXPECT_EQ(Raised([&] { FileSystemObject("/d").OpenFile(4, 2, 1); }), errPathAccess);
  EXPECT_EQ(Raised([&] { FileSystemObject("/none/a.bas").OpenFile(4, 2, 1); }), errPathAccess);
  EXPECT_EQ(Raised([&] { FileSystemObject("/d/a.bas").OpenFile(1); }), errInvalidArgument);
}

void WriteTwoLines(const std::string& path) {
  FileSystemObject file(path);
  file.OpenFile(4, 2, 1);
  file.WriteLine("new one");
  file.WriteLine("");
  file.WriteBytes("raw\n");
  file.CloseFile();
}

TEST(FileSystemObject, WritesBesideAndRenames) {
  MemoryFiles files;
  files.Add("/p/Old.bas", "old", 0600);
  WriteTwoLines("/p/old.bas");
  EXPECT_EQ(files["/p/Old.bas"], "new one\r\n\r\nraw\n");
  EXPECT_EQ(files.Paths(), std::vector<std::string>{"/p/Old.bas"});
  FileStatus status;
  FileSource::Current().Status("/p/Old.bas", status);
  EXPECT_EQ(status.Mode, 0600u);

  files.Add("/p/locked.bas", "old", 0444);
  EXPECT_TRUE(FileSystemObject("/p/locked.bas").IsReadOnly());
  EXPECT_EQ(Raised([] { WriteTwoLines("/p/locked.bas"); }), errPathAccess);
  {
    FileSystemObject file("/p/Old.bas");
    file.OpenFile(4, 2, 1);
    file.WriteLine("never closed");
  }
  EXPECT_EQ(files["/p/Old.bas"], "new one\r\n\r\nraw\n");
  EXPECT_EQ(files.Paths().size(), 2u);
}

TEST(FileSystemObject, WritesInTheEncodingAskedFor) {
  MemoryFiles files;
  Diagnostics told;
  const DiagnosticScope scope(&told, "x");
  FileSystemObject file("/a.bas");
  file.OpenFile(4, 2, 1);
  file.WriteLine("Größe €");
  file.CloseFile();
  EXPECT_EQ(files["/a.bas"],
            "Gr\xF6\xDF"
            "e \x80\r\n");

  file.SetWriteForm({TextEncoding::Utf16LE, ""});
  file.OpenFile(4, 2, 1);
  file.WriteLine("ß");
  file.CloseFile();
  EXPECT_EQ(files["/a.bas"], std::string("\xFF\xFE\xDF\0\r\0\n\0", 8));

  file.SetWriteForm({TextEncoding::CodePage, "1251"});
  file.OpenFile(4, 2, 1);
  EXPECT_EQ(Raised([&] { file.WriteLine("Größe"); }), errInvalidArgument);
  EXPECT_EQ(Raised([&] { file.CloseFile(); }), errPathAccess);
  EXPECT_EQ(files["/a.bas"].size(), 8u);
  EXPECT_EQ(told.CountOf(DiagnosticCode::CharactersNotHeld), 1u);
}

TEST(FileSystemObject, MakesFoldersAndDeletesFiles) {
  MemoryFiles files{{"/Out/x", "1"}};
  FileSystemObject file("/out/a/b/c.bas");
  file.CreateFolderPath();
  EXPECT_TRUE(files.Has("/Out/a/b"));
  file.CreateFolderPath();
  EXPECT_TRUE(FileSystemObject("/out/a/b").IsFolder());
  EXPECT_EQ(Raised([] { FileSystemObject("/out/x/y/c.bas").CreateFolderPath(); }), errPathAccess);
  FileSystemObject gone("/OUT/X");
  gone.DeleteFile();
  EXPECT_FALSE(files.Has("/Out/x"));
  gone.DeleteFile();
}

std::vector<std::string> Found(const std::string& folder, int flag = 0) {
  std::vector<FileSystemObject> result;
  FileSystemObject(folder).FindFiles("*.vbp", flag, result);
  std::vector<std::string> paths;
  for (const FileSystemObject& file : result) paths.push_back(file.FullPath());
  return paths;
}

TEST(FileSystemObject, FindsFilesBelowInOneOrderWhateverLinksThereAre) {
  MemoryFiles files{{"/r/b.vbp", ""},     {"/r/A.VBP", ""},      {"/r/c.bas", ""},
                    {"/r/sub/d.vbp", ""}, {"/r/shut/e.vbp", ""}, {"/other/f.vbp", ""}};
  files.Link("/r/aloop", "/r");
  files.Link("/r/sub/up", "/r/sub");
  files.Link("/r/far", "/other");
  files.FailOn("/r/shut", EACCES);
  Diagnostics told;
  const DiagnosticScope scope(&told, "");
  EXPECT_EQ(Found("/r"), (std::vector<std::string>{"Z:\\r\\A.VBP", "Z:\\r\\b.vbp",
                                                   "Z:\\r\\far\\f.vbp", "Z:\\r\\sub\\d.vbp"}));
  EXPECT_EQ(told.CountOf(DiagnosticCode::FolderSkipped), 1u);
  EXPECT_EQ(Found("/R/", 1), (std::vector<std::string>{"Z:\\r\\A.VBP", "Z:\\r\\b.vbp"}));
  EXPECT_EQ(Raised([] { Found("/none"); }), errPathAccess);
}

TEST(FileSystemObject, FoldersAreKeptForTheLoadsOfARunAndNoLonger) {
  test::MemoryFiles files{{"/p/Form.frm", "x"}};
  const auto exists = [](const char* path) { return FileSystemObject(path).Exists(); };
  const auto look = [&] {
    ForgetFoldersOfLoad();
    EXPECT_FALSE(exists("/win/system/a.tlb"));
    EXPECT_FALSE(exists("/none/a.tlb"));
    EXPECT_TRUE(exists("/p/FORM.frm"));
  };
  const auto lists = [&] {
    const auto& calls = files.Calls();
    return std::count_if(calls.begin(), calls.end(),
                         [](const std::string& call) { return call.starts_with("List"); });
  };
  {
    const KeptFolders run;
    look();
    files.ForgetCalls();
    look();
    EXPECT_EQ(lists(), 0);
    // What the library itself makes is there.
    FileSystemObject("/win/system/").CreateFolderPath();
    FileSystemObject made("/win/system/a.tlb");
    made.OpenFile(omWrite);
    made.CloseFile();
    EXPECT_TRUE(exists("/win/system/A.TLB"));
    made.DeleteFile();
    EXPECT_FALSE(exists("/win/system/A.TLB"));
  }
  look();
  EXPECT_GT(lists(), 0);
  files.Add("/none/a.tlb", "made by others");
  EXPECT_TRUE(exists("/none/a.tlb"));
}

TEST(FileSystemObject, AsksTheReaderOfClassIds) {
  const MemoryFiles files{{"/a.dll", "x"}};
  EXPECT_EQ(FileSystemObject("/a.dll").ClassID(), "");
  FileSystemObject::SetClassIdReader([](const std::string& path) { return "{" + path + "}"; });
  EXPECT_EQ(FileSystemObject("/A.DLL").ClassID(), "{/a.dll}");
  EXPECT_EQ(FileSystemObject("/b.dll").ClassID(), "");
  FileSystemObject::SetClassIdReader(nullptr);
}

// The same on the machine's own disk.
class OnDisk : public testing::Test, public test::DiskFolder {
 protected:
  OnDisk() { ForgetFolders(); }
};

TEST_F(OnDisk, WritingKeepsModeAndLinksAndLeavesNothingBeside) {
  Write("real.bas", "old");
  chmod(Path("real.bas").c_str(), 0640);
  std::filesystem::create_symlink("real.bas", Path("link.bas"));
  WriteTwoLines(Path("link.bas"));
  EXPECT_TRUE(std::filesystem::is_symlink(Path("link.bas")));
  struct stat status;
  stat(Path("real.bas").c_str(), &status);
  EXPECT_EQ(status.st_mode & 0777, 0640u);
  EXPECT_EQ(status.st_size, 15);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(Path()), {}), 2);
  EXPECT_EQ(ReadWholeFile(Path("real.bas")), "new one\r\n\r\nraw\n");
}

TEST_F(OnDisk, FilesWithoutASizeAreReadAndTooLargeOnesRefused) {
  Write("huge", "");
  std::filesystem::resize_file(Path("huge"), FileSizeLimit);
  EXPECT_EQ(Raised([&] { ReadWholeFile(Path("huge")); }), errPathAccess);
  EXPECT_FALSE(ReadWholeFile("/proc/self/status").empty());
}

TEST_F(OnDisk, FindsFilesThroughLoopsAndOddNames) {
  Write("a/b/x.vbp", "");
  Write("a/\xF1.vbp", "");
  std::filesystem::create_directory_symlink("..", Path("a/b/loop"));
  std::filesystem::create_symlink("nowhere", Path("dead.vbp"));
  std::vector<FileSystemObject> result;
  FileSystemObject(Path()).FindFiles("*.vbp", 0, result);
  ASSERT_EQ(result.size(), 2u);
  for (const FileSystemObject& file : result) EXPECT_TRUE(file.Exists()) << file.FullPath();
  EXPECT_EQ(result[0].FullPath(), WindowsPath(Path("a/b/x.vbp")));
}

}  // namespace
}  // namespace vendrel

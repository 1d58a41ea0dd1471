#include "project/Reference.h"

#include <gtest/gtest.h>

#include "core/Ascii.h"
#include "project/VBProjects.h"
#include "services/SettingsReader.h"
#include "support/MemoryFiles.h"
#include "support/Raised.h"

namespace vendrel {
namespace {

using test::MemoryFiles;

/// A registry of one default value.
class OneSetting : public SettingsReader {
 public:
  OneSetting(std::string key, std::string value) : mKey(std::move(key)), mValue(std::move(value)) {}
  std::string ReadValue(HiveEnum, std::string_view keyPath, std::string_view) override {
    return LowerAscii(keyPath) == mKey ? mValue : std::string();
  }
  std::vector<std::string> SubKeys(HiveEnum, std::string_view keyPath) override {
    const std::string prefix = LowerAscii(keyPath) + "\\";
    if (!mKey.starts_with(prefix)) return {};
    return {mKey.substr(prefix.size(), mKey.find('\\', prefix.size()) - prefix.size())};
  }

 private:
  std::string mKey, mValue;
};

class ReferenceTest : public testing::Test {
 protected:
  void SetUp() override {
    mProject.FileName.SetFullPath("Z:\\p\\A.vbp");
    mProject.OutputFileName.SetFullPath("Z:\\p\\A.vbp");
    mReference.SetParentProject(&mProject);
  }
  void TearDown() override {
    SettingsReader::Install(nullptr);
    Reference::SetLibraryNameReader(nullptr);
  }
  void Register(const std::string& version, std::string file) {
    SettingsReader::Install(
        std::make_shared<OneSetting>("typelib\\{x}\\" + version + "\\0\\win32", std::move(file)));
  }
  Reference Loaded(std::string_view line) {
    Reference reference;
    reference.SetParentProject(&mProject);
    reference.Load(line);
    return reference;
  }
  /// The fields of a line that was read, in one text.
  std::string Dump(std::string_view line) {
    mReference.Load(line);
    const Reference& r = mReference;
    return r.ReferenceType + (r.CompiledReference ? " compiled" : "") + " [" + r.StoredCLSID + "|" +
           r.Version + "|" + r.Locale + "] " + r.FileName.FullPath() + " (" + r.Name() + ")";
  }

  VBProject mProject;
  Reference mReference;
};

TEST_F(ReferenceTest, EveryLineFormIsRead) {
  const struct {
    const char *Line, *Expected;
  } cases[] = {
      {"Reference=*\\G{X}#2.0#0#C:\\a.tlb#A Lib",
       "Reference compiled [{X}|2.0|0] C:\\a.tlb (A Lib)"},
      {"Reference=*\\G{X}#2.0#0#C:\\a.tlb", "Reference compiled [{X}|2.0|0] C:\\a.tlb (a.tlb)"},
      {"Reference=*\\G{X}#2.0#0#..\\a#b.tlb#A", "Reference compiled [{X}|2.0|0] Z:\\a (b.tlb)"},
      {"Reference=*\\G{X}#2.0##C:\\a.tlb#A", "Reference compiled [||]  ()"},
      {"Reference=*\\A..\\x\\x.vbp", "Reference [||] Z:\\x\\x.vbp (x.vbp)"},
      {"Object={Y}#1.1#0; y.ocx", "Object compiled [{Y}|1.1|0] Z:\\p\\y.ocx (y.ocx)"},
      {"Object={Y}#1.1;y.ocx", "Object compiled [||]  ()"},
      {"Object={Y}#1.1#0;y.ocx", "Object compiled [{Y}|1.1|0] Z:\\p\\.ocx (.ocx)"},
      {"Object=*\\Ac\\C.vbp", "Object [||] Z:\\p\\c\\C.vbp (C.vbp)"},
      {"Elsewhere=1", "Line [||]  ()"},
      {"Object", "raises 5"},
      {"Object={Y}#1.1#0 y.ocx", "raises 5"}};
  for (const auto& c : cases) {
    mReference = Reference();
    mReference.SetParentProject(&mProject);
    std::string got;
    const int raised = test::Raised([&] { got = Dump(c.Line); });
    EXPECT_EQ(raised ? "raises " + std::to_string(raised) : got, c.Expected) << c.Line;
    EXPECT_EQ(mReference.SourceString, c.Line);
  }
}

TEST_F(ReferenceTest, ALineOfTwoHundredFieldsIsReadLikeOneOfFive) {
  std::string line = "Reference=*\\G{X}#2.0#0#C:\\a.tlb#A Lib";
  for (int i = 0; i < 200; ++i) line += "#more";
  EXPECT_EQ(Dump(line), "Reference compiled [{X}|2.0|0] C:\\a.tlb (A Lib)");
}

TEST_F(ReferenceTest, WhatIsRegisteredGoesBeforeThePathOfTheLine) {
  Register("2.0", "C:\\new\\a.tlb");
  EXPECT_EQ(Dump("Reference=*\\G{X}#2.0#0#C:\\a.tlb#A Lib"),
            "Reference compiled [{X}|2.0|0] C:\\new\\a.tlb (A Lib)");
}

TEST_F(ReferenceTest, NewerMinorVersionsAreSearchedUpwardInHexadecimal) {
  struct Case {
    const char* Line;
    const char* Registered;
    bool Found;
  };
  const Case cases[] = {{"Reference=*\\G{X}#1.0#0#C:\\a.tlb", "1.a", true},
                        {"Reference=*\\G{X}#1.0#0#C:\\a.tlb", "1.3e7", true},
                        {"Reference=*\\G{X}#1.0#0#C:\\a.tlb", "1.3e8", false},
                        {"Reference=*\\G{X}#1.a#0#C:\\a.tlb", "1.9", false},
                        {"Reference=*\\G{X}#1.a#0#C:\\a.tlb", "1.b", true},
                        // 10 is hexadecimal in a reference and decimal in a control.
                        {"Reference=*\\G{X}#1.10#0#C:\\a.tlb", "1.b", false},
                        {"Object={X}#1.10#0; C:\\a.tlb", "1.b", true},
                        {"Object={X}#1.10#0; C:\\a.tlb", "1.10", true},  // as it stands
                        {"Reference=*\\G{X}#1.0#0#C:\\a.tlb", "2.1", false}};
  for (const Case& c : cases) {
    Register(c.Registered, "C:\\found.tlb");
    EXPECT_EQ(Loaded(c.Line).FileName.FullPath(), c.Found ? "C:\\found.tlb" : "C:\\a.tlb")
        << c.Line << " with " << c.Registered;
  }
}

TEST_F(ReferenceTest, ALibraryTellsItsNameWhereTheLineHasNone) {
  const MemoryFiles files{{"/p/a.tlb", "library"}, {"/p/b.tlb", "no library"}};
  Reference::SetLibraryNameReader([](const std::string& path) {
    if (path == "/p/b.tlb") throw VendrelError(errInvalidArgument);
    return std::string("TheLibrary");
  });
  EXPECT_EQ(Loaded("Object={Y}#1.1#0; a.tlb").Name(), "TheLibrary");
  EXPECT_EQ(Loaded("Object={Y}#1.1#0; a.tlb").Description(), "TheLibrary");
  EXPECT_EQ(Loaded("Object={Y}#1.1#0; b.tlb").Name(), "b.tlb");
  EXPECT_EQ(Loaded("Reference=*\\G{X}#2.0#0#a.tlb#A Lib").Name(), "A Lib");
}

TEST_F(ReferenceTest, ALineIsRebuiltWhereTheProjectIsWrittenElsewhere) {
  const MemoryFiles files{{"/lib/a.tlb", ""}, {"/p/y.ocx", ""}};
  const auto compiled = [&](std::string_view line) { return Loaded(line).CompiledLine(); };
  const char* const reference = "Reference=*\\G{X}#2.0#0#..\\p\\..\\lib\\a.tlb#A Lib";
  EXPECT_EQ(compiled(reference), reference);
  mProject.OutputFileName.SetFullPath("Z:\\q\\A.vbp");
  EXPECT_EQ(compiled(reference), "Reference=*\\G{X}#2.0#0#..\\lib\\a.tlb#A Lib");
  EXPECT_EQ(compiled("Object={Y}#1.1#0; ..\\p\\y.ocx"), "Object={Y}#1.1#0; y.ocx");
  EXPECT_EQ(compiled("Object={Y}#1.1#0; y.ocx"), "Object={Y}#1.1#0; y.ocx");  // no backslash
  EXPECT_EQ(compiled("Reference=*\\A..\\x\\x.vbp"), "");
}

TEST_F(ReferenceTest, APathThatNamesNoFileStaysInTheCompleteReading) {
  const MemoryFiles files{{"/p/A.vbp", ""}};
  mProject.OutputFileName.SetFullPath("Z:\\q\\A.vbp");
  mReference.Load("Object={Y}#1.1#0; x\\..\\y.ocx");
  EXPECT_EQ(mReference.CompiledLine(), "Object={Y}#1.1#0; y.ocx");
  mProject.Reading.KeepAbsentReferences = true;
  EXPECT_EQ(mReference.CompiledLine(), "Object={Y}#1.1#0; x\\..\\y.ocx");
}

TEST_F(ReferenceTest, AReferencedProjectGivesBothForms) {
  const auto lib = std::make_shared<VBProject>();
  lib->FileName.SetFullPath("Z:\\lib\\Lib.vbp");
  lib->mDescription = "The library project";
  mReference.Load("Reference=*\\G{X}#2.0#0#..\\lib\\Lib.dll#Lib");
  EXPECT_EQ(mReference.CodeLine(), "");
  mReference.SetReferencedProject(lib.get());
  EXPECT_EQ(mReference.CompiledLine(), "");  // no library id: the project form is to be used
  EXPECT_EQ(mReference.CodeLine(), "Reference=*\\A..\\lib\\Lib.vbp");
  EXPECT_EQ(mReference.Description(), "The library project");
  lib->mCLSID = "{L}";
  EXPECT_EQ(mReference.CompiledLine(), "Reference=*\\G{L}#2.0#0#Z:\\lib\\Lib.dll#Lib");
  Reference byProject = Loaded("Reference=*\\A..\\lib\\Lib.vbp");
  byProject.SetReferencedProject(lib.get());
  EXPECT_EQ(byProject.CompiledLine(), "Reference=*\\G{L}#1.0#0#Z:\\lib\\Lib.vbp#Lib.vbp");
  EXPECT_EQ(byProject.CodeLine(), "Reference=*\\A..\\lib\\Lib.vbp");
}

TEST_F(ReferenceTest, ReferencesAreTiedToProjectsByTheirFile) {
  VBProjects projects;
  const auto lib = std::make_shared<VBProject>(), twin = std::make_shared<VBProject>();
  for (const auto& project : {lib, twin}) project->FileName.SetFullPath("Z:\\lib\\LIB.vbp");
  const auto user = std::make_shared<VBProject>();
  user->FileName.SetFullPath("Z:\\p\\User.vbp");
  for (const char* line : {"Reference=*\\A..\\lib\\Lib.vbp", "Reference=*\\Aother.vbp"}) {
    const auto reference = std::make_shared<Reference>();
    reference->SetParentProject(user.get());
    reference->Load(line);
    user->References.Add(reference);
  }
  projects.Add(lib, "Lib");
  projects.Add(twin, "Twin");
  projects.Add(user, "User");
  projects.CementReferences();
  EXPECT_EQ(user->References.Item(1)->ReferencedProject(), lib.get());
  EXPECT_EQ(user->References.Item(2)->ReferencedProject(), nullptr);
}

}  // namespace
}  // namespace vendrel

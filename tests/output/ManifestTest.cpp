#include "output/Manifest.h"

#include <gtest/gtest.h>

#include <sstream>

#include "output/Xml.h"
#include "project/VBProject.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

std::string TextOf(const XmlElement& element) {
  std::ostringstream out;
  element.Node().print(out, "", pugi::format_raw);
  return out.str();
}

// The element as its class writes it into an element "e", nothing stripped.
template <typename Class>
std::string ManifestOf(const Class& element, bool comments = false) {
  XmlDocument document;
  XmlElement root = document.Root();
  root.SetName("e");
  element.Manifest(root, comments);
  return TextOf(root);
}

std::shared_ptr<TaggedComment> Comment(const char* tag, const char* qualifier, const char* text) {
  auto comment = std::make_shared<TaggedComment>();
  comment->TagIdentifier = tag;
  comment->Qualifier = qualifier;
  comment->Text = text;
  return comment;
}

TEST(Manifest, OfAnEventHasItsDescriptionsTwice) {
  EventDeclaration event;
  event.Name = "Posted";
  event.TaggedDescription = "t";
  EXPECT_EQ(ManifestOf(event),
            "<e Name=\"Posted\" HelpContextID=\"0\" IsHiddenMember=\"False\" IsNew=\"False\" "
            "ExcludeFlag=\"False\"><UnTaggedDescription/><TaggedDescription>t</TaggedDescription>"
            "<UnTaggedDescription/><TaggedDescription>t</TaggedDescription></e>");
}

TEST(Manifest, OfEachDeclarationHasItsNamesInOrder) {
  Parameter parameter;
  parameter.SetName("Amount");
  parameter.VariableType = "Currency";
  parameter.IsByRef = true;
  EXPECT_EQ(ManifestOf(parameter),
            "<e VariableType=\"Currency\" Name=\"Amount\" IsOptional=\"False\" IsByRef=\"True\" "
            "IsParamArray=\"False\" IsArray=\"False\" DefaultValue=\"\" ImplicitType=\"False\">"
            "<Description/></e>");

  DeclareDeclaration declare;
  declare.Name = "Sleep";
  declare.Library = "kernel32.dll";
  declare.Access = "PRIVATE";
  EXPECT_EQ(
      ManifestOf(declare),
      "<e Name=\"Sleep\" Alias=\"\" Library=\"kernel32.dll\" Access=\"PRIVATE\" "
      "IsFunction=\"False\" ReturnType=\"\" ReturnTypeIsArray=\"False\" ExcludeFlag=\"False\">"
      "<UnTaggedDescription/><TaggedDescription/></e>");

  Constant constant;
  constant.Name = "Rate";
  constant.Value = "\"a<b\"";
  EXPECT_EQ(ManifestOf(constant),
            "<e Name=\"Rate\" Value=\"&quot;a&lt;b&quot;\" Access=\"\"><Description/>"
            "<UnTaggedDescription/><TaggedDescription/></e>");

  Library library;
  library.Name = "user32.dll";
  auto member = std::make_shared<DeclareDeclaration>();
  member->Name = "Beep";
  library.DeclareDeclarations.Add(member, "Beep");
  EXPECT_EQ(ManifestOf(library),
            "<e Name=\"user32.dll\"><TaggedDescription/><Declaration>Beep</Declaration></e>");
}

TEST(Manifest, OfStructuresAndEnumerationsCallsTheirPartsMembers) {
  Enumeration enumeration;
  enumeration.Name = "Colour";
  auto member = std::make_shared<EnumMember>();
  member->Name = "Red";
  member->Value = "1";
  enumeration.Members().Add(member, "Red");
  EXPECT_EQ(ManifestOf(enumeration),
            "<e Name=\"Colour\" Access=\"\" HelpContextID=\"0\" IsHiddenMember=\"False\" "
            "ExcludeFlag=\"False\"><Member Name=\"Red\" Value=\"1\" ExcludeFlag=\"False\">"
            "<UnTaggedDescription/><TaggedDescription/></Member>"
            "<UnTaggedDescription/><TaggedDescription/></e>");

  UDT type;
  type.Name = "Point";
  auto field = std::make_shared<Variable>();
  field->Name = "x";
  field->TypeName = "Long";
  type.Members.Add(field, "x");
  EXPECT_EQ(ManifestOf(type),
            "<e Name=\"Point\" Access=\"\" HelpContextID=\"0\" ExcludeFlag=\"False\" "
            "IsHiddenMember=\"False\"><Member Name=\"x\" Access=\"\" TypeName=\"Long\" "
            "HelpContextID=\"0\" IsArray=\"False\" ArraySubscript=\"\" FixedLengthString=\"False\" "
            "ImplicitType=\"False\" IsStatic=\"False\" IsNew=\"False\" ExcludeFlag=\"False\" "
            "IsHiddenMember=\"False\"><UnTaggedDescription/><TaggedDescription/></Member>"
            "<UnTaggedDescription/><TaggedDescription/></e>");
}

TEST(Manifest, OfAModuleSpellsOneNameDifferentlyAndWritesItsCommentsAlways) {
  Component module;
  module.Name = "modMain";
  module.FileType = ftModule;
  module.DefaultTypes().push_back({"Int", {"A:C", "X:Z"}});
  module.TaggedComments->Add(Comment("##AUTHOR", "q", "who"));
  auto block = std::make_shared<Block>();
  block->TaggedComments->Add(Comment("##REMARKS", "", "why"));
  module.Blocks.Add(block);
  const std::string text = ManifestOf(module);
  EXPECT_NE(text.find("<TaggedDescription/><UntaggedDescription/><CommentBuffer/><ProjectLine"),
            std::string::npos);
  EXPECT_NE(text.find("<DefaultType>A:C</DefaultType><DefaultType>X:Z</DefaultType><Block "),
            std::string::npos);
  EXPECT_NE(text.find("<TaggedComment tid=\"##AUTHOR\" q=\"q\">who</TaggedComment></e>"),
            std::string::npos);
  EXPECT_EQ(text.find("##REMARKS"), std::string::npos);
  EXPECT_NE(ManifestOf(module, true).find("##REMARKS"), std::string::npos);
}

TEST(Manifest, OfAnUnloadedBlockCountsNoLines) {
  Block block;
  CodeLine line;
  line.Text = "x = 1";
  block.CodeLines->Add(line);
  EXPECT_NE(ManifestOf(block).find(" LineCount=\"1\" "), std::string::npos);
  block.UnloadSourceCode();
  EXPECT_NE(ManifestOf(block).find(" LineCount=\"0\" "), std::string::npos);
}

TEST(StripElement, DropsWhatHasNoAttributesWhateverItsText) {
  XmlDocument document;
  document.LoadXml("<r><a>text</a><b><c/><d x=''/><e><f>text</f></e></b><g/><h y='1'>kept</h></r>");
  XmlElement root = document.Root();
  EXPECT_FALSE(VBProject::StripElement(root));
  EXPECT_EQ(TextOf(root), "<r><b><d x=\"\"/></b><h y=\"1\">kept</h></r>");

  document.LoadXml("<r><a><b>text</b></a></r>");
  root = document.Root();
  EXPECT_TRUE(VBProject::StripElement(root));
}

TEST(ProjectManifest, OfTheProjectAloneIsItsRoot) {
  VBProject project;
  project.ProjectName = "Ledger";
  project.TaggedDescription = "dropped, as it has no attributes";
  project.ProjectType = ptOleDLL;
  project.TaggedComments->Add(Comment("##AUTHOR", "", "who"));
  project.RelatedDocuments = {"ReadMe.txt"};
  const auto module = std::make_shared<Component>();
  project.Components.Add(module, "m");

  const auto bare = project.Manifest(true, false);
  const XmlElement root = bare->Root();
  EXPECT_EQ(root.Name(), "VendrelModel_V2_Manfest");
  EXPECT_EQ(root.Elements().Count(), 0u);
  EXPECT_EQ(root.Attributes().Count(), 19u);
  EXPECT_EQ(root.Attributes().Item("Version").Value(), "100");
  EXPECT_EQ(root.Attributes().Item("ProjectType").Value(), "3");
  EXPECT_EQ(module->LoadState, lsNotLoaded);
  const auto commented = project.Manifest(true, true);
  EXPECT_EQ(commented->Root().Elements().Item(1).Text(), "who");
}

TEST(ProjectManifest, IsWrittenAsUtf8WhateverTheCodePage) {
  test::MemoryFiles files;
  files.AddFolder("/out");
  VBProject project;
  project.ProjectName = "Счёт \x01";
  project.WriteManifestToFile("Z:\\out\\m.xml", true, false);
  const std::string text = files["/out/m.xml"];
  EXPECT_NE(text.find("ProjectName=\"Счёт \xEF\xBF\xBD\""), std::string::npos);
  XmlDocument document;
  document.LoadXml(text);
  EXPECT_EQ(document.Root().Attributes().Item("ProjectName").Value(), "Счёт \xEF\xBF\xBD");
}

// Drafts leave out what would be stripped, and modules are written one by one.
TEST(ProjectManifest, InPiecesIsTheDocument) {
  const test::TestProject full(
      {{"M.bas",
        "'##MD Books & \"more\"\n'##AUTHOR who <x>\nPrivate Const A = 1\nPublic Enum E\n  One = 1 "
        "'##PD first\nEnd Enum\nType T\n  X As Long\nEnd Type\nDeclare Sub S Lib \"k\" (ByVal a As "
        "Long)\n'##SUMMARY posts\nSub Post(Optional a As Long = 2)\n  Dim b(3) As String * 4\nEnd "
        "Sub\n"},
       {"C.cls", "Event Posted(a As Long)\nProperty Get P()\nEnd Property\n"}},
      test::Complete());
  const test::TestProject empty({}, test::Complete());
  for (const test::TestProject* one : {&full, &empty}) {
    VBProject& project = *one->Project;
    project.RelatedDocuments = {"ReadMe.txt"};
    project.TaggedComments->Add(Comment("##AUTHOR", "", "<Component />"));
    for (const bool justProject : {false, true})
      for (const bool comments : {false, true}) {
        std::string text;
        WriteManifest(project, justProject, comments, [&](std::string_view part) { text += part; });
        EXPECT_EQ(text, project.Manifest(justProject, comments)->Xml());
      }
  }
}

TEST(Xml, PositionsAreOneBasedAndFaultsSayWhere) {
  XmlDocument document;
  document.LoadXml("<r>text<a/><b>two</b></r>");
  XmlElements elements = document.Root().Elements();
  EXPECT_EQ(elements.Item(2).Text(), "two");
  EXPECT_FALSE(elements.Item(0));
  EXPECT_FALSE(elements.Item(3));
  elements.Remove(1);
  EXPECT_EQ(elements.Count(), 1u);
  EXPECT_THROW(elements.Remove(2), VendrelError);
  try {
    document.LoadXml("<r><a></r>");
    FAIL() << "no failure";
  } catch (const VendrelError& error) {
    EXPECT_EQ(error.Number(), errInvalidArgument);
    EXPECT_NE(error.Text().find("at byte"), std::string::npos);
  }
}

}  // namespace
}  // namespace vendrel

// Documentation as tagged comments: mark-up, tags, import modes.
#include "dotnet/XmlComments.h"

#include <gmock/gmock.h>

#include "dotnet/DocumentationFile.h"
#include "dotnet/Documented.h"

namespace vendrel {
namespace {

using test::CommentsOf;
using test::DocumentedTree;

struct MarkUpRow {
  const char* Xml;  // within summary
  const char* Classic;
  const char* Complete = nullptr;  // null: the same
};

TEST(XmlComments, MarkUpIsRewritten) {
  const MarkUpRow rows[] = {
      {"  Text.  ", "Text."},
      {"a\n  b", "a  b", "a   b"},
      {"a &lt; b &gt; \"c\"", "a &lt; b &gt; \"c\""},
      {"<br></br>", "<br/>"},
      {"<para>One</para><para>Two <b>x</b></para>", "<p>One</p><p>Two <b>x</b></p>"},
      {"<para><para>In</para></para>", "<p><p>In</p></p>"},
      {"<see langword=\"null\"/>", "<strong>null</strong>"},
      {"<see>Plain <c>x</c></see>", "<see>Plain <code lang=\"\"><![CDATA[x]]></code></see>"},
      {"<paramref name=\"what\"/>", "<i>what</i>"},
      {"<SEE CREF=\"T:Ns.Oops\"/>", "<SEE CREF=\"T:Ns.Oops\"/>"},
      {"<See cref=\"T:Ns.Oops\"/>", "<a href=\"P~Ns.Oops.html\">Oops</a>"},
      {"<see cref=\"T:Ns.Oops\">it <b>is</b></see>", "<a href=\"P~Ns.Oops.html\">it <b>is</b></a>"},
      {"<see cref=\"M:Ns.Cls.Go\"/>", "<strong>Go</strong>"},
      {"<see cref=\"T:Home.X\"/>", "<a href=\"http://home/Home.X\">Home.X</a>"},
      {"<see cref=\"!:Else.X\"/>", "<strong>Else.X</strong>"},
      {"<see cref=\"T:Else.X\">e</see>", "<strong>e</strong>"},
      {"<see href=\"http://x/?a=1&amp;b=2\"/>", "<see href=\"http://x/?a=1&amp;b=2\"/>",
       "<a href=\"http://x/?a=1&amp;b=2\">http://x/?a=1&amp;b=2</a>"},
      {"<c lang=\"VB\">a &lt; b</c>", "<code lang=\"VB\"><![CDATA[a &lt; b]]></code>"},
      {"<code><![CDATA[a < b]]></code>", "<code lang=\"\"><![CDATA[a < b]]></code>"},
      {"<list type=\"bullet\"><item><term>t</term><description>d</description></item>"
       "<item>bare</item></list>",
       "<ul class=\"xmldocbulletlist\"><li class=\"xmldocbulletlist\">t</li>"
       "<li class=\"xmldocbulletlist\">bare</li></ul>",
       "<ul class=\"xmldocbulletlist\"><li class=\"xmldocbulletlist\">t d</li>"
       "<li class=\"xmldocbulletlist\">bare</li></ul>"},
      {"<list type=\"number\"><item><description>d</description></item></list>",
       "<ol class=\"xmldocnumberedlist\"><li class=\"xmldocnumberedlist\">"
       "<description>d</description></li></ol>",
       "<ol class=\"xmldocnumberedlist\"><li class=\"xmldocnumberedlist\">d</li></ol>"},
      {"<list type=\"Table\"><listheader><term>h</term><description>i</description></listheader>"
       "<item><term>t</term><description><see langword=\"x\"/></description></item></list>",
       "<table class=\"xmldoctable\" CellSpacing=\"0\"><tr><th>h</th><th>i</th></tr>"
       "<tr><td class=\"xmldoctable\">t</td><td class=\"xmldoctable\"><strong>x</strong></td></tr>"
       "</table>"},
      {"<list type=\"termdef\"><item><term>t</term><description>d</description></item></list>",
       "<dl><dt>t</dt><dd>d</dd></dl>"},
      {"<list type=\"definition\"><item><term>t</term><description>d</description></item></list>",
       "t", "<dl><dt>t</dt><dd>d</dd></dl>"},
      {"<list><item>a</item><ITEM>b</ITEM></list>", "a"},
      {"<see langword=\"a &lt; b\"/>", "<see langword=\"a &lt; b\"/>"},
  };
  for (const bool classic : {true, false})
    for (const MarkUpRow& row : rows) {
      const DocumentedTree tree(classic);
      const std::string expected = classic || !row.Complete ? row.Classic : row.Complete;
      EXPECT_EQ(tree.Put(*tree.Go, std::string("<summary>") + row.Xml + "</summary>"), expected)
          << (classic ? "classic " : "complete ") << row.Xml;
    }
}

TEST(XmlComments, CodeLosesTheIndentationOfItsFirstLine) {
  const DocumentedTree tree;
  tree.Put(*tree.Go,
           "<example>Shows <b>it</b>.\n<code lang=\"C#\">\n    [Mark]\n    int x = \"a\";\n"
           "      y;\n  z;\n</code></example>");
  EXPECT_EQ(CommentsOf(*tree.Go),
            "##EXAMPLEINTRO=Shows <b>it</b> .\n"
            "##EXAMPLECODE=Type=\"Source\", Source=\"[Mark]\nint x = &quot;a&quot;;\n  y;\n"
            "  z;\n\", Language=\"C#\", InLine=\"True\", Description=\"\"\n");
}

TEST(XmlComments, SeveralExamplesDescribeTheirCode) {
  const DocumentedTree tree;
  tree.Put(*tree.Go, "<example>One \"1\"<code>a</code></example><example>\n<c>b</c> two</example>");
  const std::string comments = CommentsOf(*tree.Go);
  EXPECT_THAT(comments, testing::HasSubstr("Description=\"One &quot;1&quot;\""));
  EXPECT_THAT(comments, testing::HasSubstr("Source=\"b\""));
  EXPECT_THAT(comments, testing::HasSubstr("Description=\"two\""));
  EXPECT_THAT(comments, testing::Not(testing::HasSubstr("INTRO")));
  const DocumentedTree blank;
  blank.Put(*blank.Go, "<example>\n  <code>a</code>\n</example>");
  EXPECT_THAT(CommentsOf(*blank.Go), testing::Not(testing::HasSubstr("INTRO")));
}

TEST(XmlComments, ElementsBecomeTags) {
  const std::string content =
      "<summary>s</summary><remarks>r</remarks><returns>a</returns><value>v</value>"
      "<param name=\" What \">p</param><param name=\"none\">q</param>"
      "<typeparam name=\"T\">t</typeparam><seealso cref=\"T:Ns.Oops\"/>"
      "<seealso cref=\"T:None\"/><exception cref=\"T:Ns.Oops\">e</exception>"
      "<exception cref=\"T:Else.E\">f</exception><exception cref=\"T:Home.E\">g</exception>"
      "<permission cref=\"T:Ns.Oops\">m</permission><platnote>n</platnote>";
  for (const bool classic : {true, false}) {
    const DocumentedTree tree(classic);
    EXPECT_EQ(tree.Put(*tree.Go, content), "s");
    EXPECT_EQ(CommentsOf(*tree.Go), std::string("##REMARKS=r\n##RETURNS=a v\n") +
                                        (classic ? "" : "##TYPEPARAM=<i>T</i> t\n") +
                                        "##SEEALSO=Target=\"P~Ns.Oops\", Caption=\"Oops\"\n");
    EXPECT_EQ(tree.Go->Parameters->Item(1)->Description(), "p");
    EXPECT_EQ(tree.Go->TaggedComments->Item(1)->Tag, "n");
    std::string exceptions;
    for (const Exception& each : *tree.Go->Exceptions())
      exceptions += each.Name + "|" + each.mDescription + "|" + each.TargetQualifiedName + ";";
    EXPECT_EQ(exceptions, std::string("Ns.Oops|e|P~Ns.Oops;") + (classic ? "" : "Else.E|f|;") +
                              "Home.E|g|http://home/Home.E;");
    EXPECT_EQ(tree.Go->Permissions()->Count(), 1u);
  }
}

TEST(XmlComments, EveryClassOfElementsTakesThem) {
  const DocumentedTree tree;
  const std::string content = "<summary>s</summary><remarks>r</remarks>";
  for (CodeElement* element :
       {static_cast<CodeElement*>(tree.Class.get()), static_cast<CodeElement*>(tree.Go),
        static_cast<CodeElement*>(tree.Field.get()), static_cast<CodeElement*>(tree.Event)}) {
    EXPECT_EQ(tree.Put(*element, content), "s") << element->ClassName();
    EXPECT_EQ(CommentsOf(*element), "##REMARKS=r\n") << element->ClassName();
  }
  // Nothing of that kind belongs to a declarations section.
  tree.Put(*tree.Event, "<param name=\"sender\">x</param>");
  EXPECT_EQ(tree.Event->Parameters->Item(1)->Description(), "");
}

TEST(XmlComments, ModesKeepAddAndReplace) {
  struct Row {
    int Mode;
    const char* Description;
    const char* Remarks;
  };
  const Row rows[] = {{imKeep, "old", "##REMARKS=of source\n"},
                      {imAppend, "old<br>new", "##REMARKS=of source<p>r</p>\n"},
                      {imReplace, "new", "##REMARKS=r\n"},
                      {imAdd, "old<br>new", "##REMARKS=of source<p>r</p>\n"}};
  for (const Row& row : rows) {
    const DocumentedTree tree;
    tree.Go->TaggedDescription = "old";
    auto comment = std::make_shared<TaggedComment>();
    comment->TagIdentifier = "##REMARKS";
    comment->Text = "of source";
    tree.Project->AddTaggedComment(*tree.Go->TaggedComments, comment, false);
    EXPECT_EQ(tree.Put(*tree.Go, "<summary>new</summary><remarks>r</remarks>", row.Mode),
              row.Description);
    EXPECT_EQ(CommentsOf(*tree.Go), row.Remarks) << row.Mode;
  }
}

TEST(XmlComments, OverloadsAreChosenAndTheirFamilyDescribed) {
  const DocumentedTree tree;
  XmlComments comments(*tree.Project, nullptr, imAppend);
  EXPECT_EQ(comments.ElementOf("M:Ns.Cls.Run"), tree.RunForms[0].get());
  EXPECT_EQ(comments.ElementOf("M:Ns.Cls.Run(System.Int32)"), tree.RunForms[1].get());
  EXPECT_EQ(comments.ElementOf("M:Ns.Cls.None"), nullptr);
  tree.Put(*tree.RunForms[1], "<overload>All forms.</overload>");
  EXPECT_EQ(tree.Run->TaggedDescription, "All forms.");
  tree.Put(*tree.RunForms[1], "<overloads>More.</overloads>");
  EXPECT_EQ(tree.Run->TaggedDescription, "All forms.<br>More.");
}

// ---- Files -------------------------------------------------------------------------------------

std::string FileOf(const std::string& members) {
  return "<?xml version=\"1.0\"?>\r\n<doc><assembly><name>A</name></assembly>\n<members>\n" +
         members + "</members></doc>";
}

TEST(DocumentationFile, IsCutIntoItsMembers) {
  const auto file = DocumentationFile::Parse(
      std::string("\0\0", 2) +
          FileOf("<member name=\"T:A\"><summary><member name='x'/></summary></member>\n"
                 "<!-- <member name=\"T:No\"/> --><other><member name=\"T:Deep\"/></other>\n"
                 "<member  tag=\"name='T:>'\" name = ' T:B ' /><member/>"),
      "a.xml");
  std::string names;
  for (const auto& member : file->Members())
    names += std::string(member.Name) + "@" + std::to_string(member.Line) + ";";
  EXPECT_EQ(names, "T:A@4;T:B@6;@6;");
  ASSERT_NE(file->Find("T:B"), nullptr);
  EXPECT_EQ(file->TextOf(*file->Find("T:B")), "<member  tag=\"name='T:>'\" name = ' T:B ' />");
  EXPECT_EQ(file->Find("T:Deep"), nullptr);
}

TEST(DocumentationFile, WhatIsNotWellFormedIsRefused) {
  const std::string rows[] = {
      FileOf("<member name=\"T:A\"><summary></member>"),
      FileOf("<member name=\"T:A\">"),
      FileOf("<member name=\"T:A\"></member></member>"),
      FileOf("<member name=\"T:A\">&lol;</member>"),
      "<!DOCTYPE d [<!ENTITY lol \"x\">]>" + FileOf("&lol;"),
      "<doc/><doc/>",
      "no XML at all",
  };
  for (const std::string& text : rows)
    EXPECT_THROW(DocumentationFile::Parse(text, "a.xml"), VendrelError) << text;
  EXPECT_EQ(DocumentationFile::Parse("<doc/>", "a.xml")->Members().size(), 0u);
}

TEST(DocumentationFile, DepthTakesNoStack) {
  std::string deep;
  constexpr int kDepth = 100000;
  for (int i = 0; i < kDepth; ++i) deep += "<para>";
  for (int i = 0; i < kDepth; ++i) deep += "</para>";
  const auto file = DocumentationFile::Parse(
      FileOf("<member name=\"T:A\"><summary>" + deep + "</summary></member>" +
             "<member name=\"T:B\"><summary>b</summary></member>"),
      "a.xml");
  pugi::xml_document document;
  EXPECT_TRUE(file->Members()[0].IsTooDeep);
  EXPECT_FALSE(file->Open(file->Members()[0], document));
  EXPECT_TRUE(file->Open(file->Members()[1], document));
  std::string nested = "<summary>";
  for (int i = 0; i < kDeepestDocumentation - 2; ++i) nested += "<para>";
  nested += "x";
  for (int i = 0; i < kDeepestDocumentation - 2; ++i) nested += "</para>";
  const DocumentedTree tree;
  EXPECT_THAT(tree.Put(*tree.Go, nested + "</summary>"), testing::StartsWith("<p><p><p>"));
}

}  // namespace
}  // namespace vendrel

// Documentation in VB.NET source: where it ends, and what becomes of it.

#include <gtest/gtest.h>

#include "dotnet/Documented.h"
#include "dotnet/NetProjects.h"
#include "dotnet/Sources.h"
#include "model/Permission.h"

namespace vendrel {
namespace {

using test::CommentsOf;
using test::Complete;
using test::NetProject;
using Sources = NetProject::Sources;

// "name=description" of all that has one, in the order of the tree.
std::string Described(NetProject& n) {
  std::string text;
  const auto add = [&](const CodeElement& element) {
    std::string description = element.Description();
    const LateText* plain = const_cast<CodeElement&>(element).UnTaggedDescriptionField();
    for (const LateText* other : {element.TaggedDescriptionField(), plain})
      if (description.empty() && other) description = other->str();
    if (description.empty()) return;
    text += (text.empty() ? "" : "; ") + element.ElementName() + "=" + description;
  };
  const auto parameters = [&](const Parameters* all) {
    if (!all) return;
    for (const Parameter& parameter : *all) add(parameter);
  };
  for (Component& type : n.Project->Components) {
    add(type);
    for (Block& block : type.Blocks) {
      if (const Variables* fields = block.Variables.IfAny())
        for (const Variable& field : *fields) add(field);
      if (const Constants* constants = block.Constants.IfAny())
        for (const Constant& constant : *constants) add(constant);
      add(block);
      parameters(block.Parameters.IfAny());
      if (const Blocks* overloads = block.OverloadBlocks().IfAny())
        for (const Block& overload : *overloads) add(overload);
    }
    for (const EventDeclaration& event : type.EventDeclarations) {
      add(event);
      parameters(event.Parameters.IfAny());
    }
    for (const DeclareDeclaration& declare : type.Declarations) add(declare);
  }
  for (Namespace& space : n.Project->Assembly()->Namespaces)
    for (const Block& block : space.Delegates) add(block);
  return text;
}

struct PlacedRow {
  const char* What;
  const char* Source;
  const char* Described;
};

TEST(SourceDocumentation, StandsAtWhatFollows) {
  const PlacedRow rows[] = {
      {"a type and a member behind attributes, blanks and comments",
       "''' <summary>The c.</summary>\n\n<Serializable()>\n' plain\nPublic Class C\n"
       "  ''' <summary>\n  ''' Sells\n  ''' some.\n  ''' </summary>\n"
       "  ''' <param name=\"count\">How many.</param>\n"
       "  <Obsolete(\"x\")>\n  <Other()> ' why\n  Public Sub Sell(count As Integer)\n  End Sub\n"
       "End Class\n",
       "C=The c.; Sell=Sells  some.; count=How many."},
      {"fields that are declared together, constants, events, declares, delegates",
       "Class C\n ''' <summary>both</summary>\n Public A, B As Integer\n"
       " ''' <summary>const</summary>\n Const K = 1\n"
       " ''' <summary>event</summary>\n ''' <param name=\"x\">of it</param>\n"
       " Event E(x As Integer)\n"
       " ''' <summary>declare</summary>\n Declare Sub D Lib \"k\" ()\n"
       " ''' <summary>delegate</summary>\n Delegate Sub G()\nEnd Class\n",
       "A=both; B=both; K=const; E=event; x=of it; D=declare; G=delegate"},
      {"a property once, its accessors not",
       "Class C\n ''' <summary>p</summary>\n Property P As Integer\n  ''' <summary>no</summary>\n"
       "  Get\n  End Get\n  Set\n  End Set\n End Property\nEnd Class\n",
       "P=p"},
      {"each overload, each member of an enumeration",
       "Class C\n ''' <summary>1</summary>\n Sub F()\n End Sub\n ''' <summary>2</summary>\n"
       " Sub F(a As Byte)\n End Sub\nEnd Class\n"
       "''' <summary>e</summary>\nEnum E\n ''' <summary>x</summary>\n X\n Y\nEnd Enum\n",
       "F()=1; F(Byte)=2; E=e; X=x"},
      {"a statement over several lines",
       "Class C\n ''' <summary>f</summary>\n Function F(\n   a As Integer,\n   b As Integer)\n"
       " End Function\nEnd Class\n",
       "F=f"},
      {"four apostrophes are a comment",
       "Class C\n '''' <summary>no</summary>\n Sub F()\n End Sub\nEnd Class\n",
       "F=''' <summary>no</summary>"},
      {"a body takes nothing, and nothing passes the end of its type",
       "Class C\n Sub F()\n  ''' <summary>no</summary>\n  x = 1\n End Sub\n"
       " ''' <summary>no</summary>\nEnd Class\nClass D\nEnd Class\n",
       ""},
      {"a false branch has none",
       "Class C\n#If No Then\n ''' <summary>no</summary>\n#Else\n#End If\n Sub F()\n End Sub\n"
       "End Class\n",
       ""},
      {"without mark-up, and with some that is none, it is a plain description",
       "Class C\n ''' Adds\n ''' two.\n Sub F()\n End Sub\n ''' <summary>R&D\n Sub G()\n"
       " End Sub\nEnd Class\n",
       "F=Adds<crlf>two.; G=<summary>R&D"},
      {"a part of a type, whatever file it is in",
       "Partial Class C\n ''' <summary>one</summary>\n Public A As Byte\nEnd Class\n"
       "Partial Class C\n\n ''' <summary>two</summary>\n Public B As Byte\n"
       " ''' <summary>three</summary>\n Sub S()\n End Sub\nEnd Class\n",
       "A=one; B=two; S=three"},
  };
  for (const PlacedRow& row : rows) {
    NetProject n(Sources{{"a.vb", row.Source}}, Complete());
    EXPECT_EQ(Described(n), row.Described) << row.What;
  }
}

TEST(SourceDocumentation, OfLaterPartsInOtherFiles) {
  NetProject n(Sources{{"a.vb", "Partial Class C\n Public A As Byte\n Event E()\nEnd Class\n"},
                       {"b.vb",
                        "Class C\n ''' <summary>b</summary>\n Public B As Byte\n\n"
                        " ''' <summary>s</summary>\n Sub S(p As Byte)\n  Dim l As Byte\n End Sub\n"
                        " ''' <summary>f</summary>\n Event F()\n Public D As Byte\n"
                        " Const K = 1\nEnd Class\n"}},
               Complete());
  EXPECT_EQ(Described(n), "B=b; S=s; F=f");
  Component& type = n["R.C"];
  const auto file = [&](const CodeElement& element) {
    return SourceFileOf(type, element).LeafName();
  };
  const Variables& fields = *type.BlockOfType(btDeclarations)->Variables;
  Block& procedure = *type.Blocks.Item("S");
  EXPECT_EQ(file(*fields.Item("A")), "a.vb");
  EXPECT_EQ(file(*fields.Item("B")), "b.vb");
  EXPECT_EQ(file(*fields.Item("D")), "b.vb");
  EXPECT_EQ(file(*type.BlockOfType(btDeclarations)->Constants->Item("K")), "b.vb");
  EXPECT_EQ(file(*type.EventDeclarations.Item("E")), "a.vb");
  EXPECT_EQ(file(*type.EventDeclarations.Item("F")), "b.vb");
  EXPECT_EQ(file(procedure), "b.vb");
  EXPECT_EQ(file(*procedure.Parameters->Item(1)), "b.vb");
  EXPECT_EQ(file(*procedure.Variables->Item(1)), "b.vb");
}

TEST(SourceDocumentation, NamesAreThoseOfTheSource) {
  const std::pair<const char*, const char*> rows[] = {
      {"Total", "<a href=\"N~R.Shop.C~Total.html\">Total</a>"},
      {"C.Total", "<a href=\"N~R.Shop.C~Total.html\">Total</a>"},
      {"Sell(Integer)", "<a href=\"N~R.Shop.C~Sell(Int32).html\">Sell</a>"},
      {"Sell(String, ByRef C())", "<a href=\"N~R.Shop.C~Sell(String,C[]).html\">Sell</a>"},
      {"Goods(Of T).Find", "<a href=\"N~R.Other.Goods`1~Find.html\">Find</a>"},
      {"Other.Goods(Of Integer)", "<a href=\"N~R.Other.Goods`1.html\">Goods`1</a>"},
      {"T:R.Shop.C", "<strong>C</strong>"},
      {"Nothing.There", "<strong>Nothing.There</strong>"},
      {"T:System.Text", "<strong>System.Text</strong>"},
  };
  for (const auto& [name, link] : rows) {
    NetProject n(Sources{{"a.vb", "Imports R.Other\nNamespace Shop\n ''' <summary><see cref=\"" +
                                      std::string(name) +
                                      "\"/></summary>\n Class C\n  Public Total As Integer\n"
                                      "  Sub Sell(a As Integer)\n  End Sub\n"
                                      "  Sub Sell(a As String, ByRef b As C())\n  End Sub\n"
                                      " End Class\nEnd Namespace\n"},
                         {"b.vb",
                          "Namespace Other\n Class Goods(Of T)\n  Sub Find()\n  End Sub\n"
                          " End Class\nEnd Namespace\n"}},
                 Complete());
    EXPECT_EQ(n["R.Shop.C"].TaggedDescription.str(), link) << name;
  }
}

TEST(SourceDocumentation, IsWhatADocumentationFileWouldBe) {
  const Sources sources = {
      {"a.vb",
       "Class Base\n ''' <summary>Does it.</summary>\n ''' <returns>It.</returns>\n"
       " ''' <exception cref=\"Oops\">Never.</exception>\n"
       " Overridable Function Go() As Integer\n End Function\nEnd Class\n"
       "Class Own\n Inherits Base\n ''' <inheritdoc/>\n Overrides Function Go() As Integer\n"
       " End Function\n ''' <inheritdoc cref=\"Base.Go\"/>\n"
       " ''' <param name=\"gone\">No.</param>\n Sub Other()\n End Sub\nEnd Class\n"
       "Class Oops\nEnd Class\n"}};
  NetProject n(sources, Complete());
  Block& go = *n["R.Base"].Blocks.Item("Go");
  EXPECT_EQ(CommentsOf(go), "##RETURNS=It.\n");
  EXPECT_EQ(go.TaggedComments->Item(1)->SourceLine, 2);
  EXPECT_EQ(go.TaggedComments->Item(1)->Tag, "");
  EXPECT_EQ(go.Exceptions()->Item(1)->Name, "Oops");
  EXPECT_EQ(n.Project->Diagnostics.CountOf(DiagnosticCode::DocumentationPart), 1u);
  ResolveSourceTypes(*n.Project);
  EXPECT_EQ(n["R.Own"].Blocks.Item("Go")->Description(), "Does it.");
  EXPECT_EQ(n["R.Own"].Blocks.Item("Other")->Description(), "Does it.");

  NetProject classic(sources);
  EXPECT_EQ(classic["R.Base"].Blocks.Item("Go")->TaggedComments.IfAny(), nullptr);
}

}  // namespace
}  // namespace vendrel

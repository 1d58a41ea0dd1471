// VB.NET members in the complete reading: what each line of real-looking source becomes.

#include <gtest/gtest.h>

#include "core/Ascii.h"
#include "intake/LineIntake.h"
#include "model/Namespace.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::Describe;

struct NetType {
  explicit NetType(std::string_view lines, bool isInterface = false) {
    Project.Reading = ReadingRules::Complete();
    Project.SetLanguageVersion(lvVisualBasicDotNet);
    Space.Name = "N";
    auto component = std::make_shared<Component>();
    component->Name = "C";
    component->SetVBProject(&Project);
    component->Namespace = &Space;
    component->IsInterface = isInterface;
    component->CurrentBlock = component->NewBlock(btDeclarations);
    Module = component.get();
    Project.Components.Add(component, "C");
    while (!lines.empty()) component->AddLineOfCode(TakeField(lines, '\n'));
    FinishLines(*component);
  }
  // Every member in a line, without places.
  std::string Tree() const {
    std::string text = Describe(*Module);
    text = ReplaceAll(text, " @0\n", "\n");
    return text.substr(text.find('\n') + 1);
  }
  VBProject Project;
  Namespace Space;
  Component* Module;
};

struct Case {
  const char* Lines;
  const char* Tree;
};

void Expect(std::initializer_list<Case> cases, bool isInterface = false) {
  for (const Case& c : cases) EXPECT_EQ(NetType(c.Lines, isInterface).Tree(), c.Tree) << c.Lines;
}

TEST(NetReadingTest, Fields) {
  Expect({
      {"Private a, b As Integer\n", ""},
      {"Dim WithEvents t As Timer, u As New Timer(5, \"x,y\")\n", ""},
      {"Shared ReadOnly cache As New Dictionary(Of String, List(Of Integer)) From {{\"a\", x}}\n",
       ""},
      {"Friend Const Limit As Integer = 4, Name = \"a,b\"\nConst Low = 1\n", ""},
      {"Protected Friend x? As Integer, y(5) As Byte, z As Integer()(,)\n", ""},
      {"WithEvents button As Button\n<NonSerialized()> Private [stop] As Boolean\n", ""},
  });
}

TEST(NetReadingTest, Procedures) {
  Expect({
      {"Public Async Function Load(Of T As {Class, New})(ByVal key As String,\n"
       "    Optional ByVal all As Boolean = True) As Task(Of List(Of T))\n"
       "  Dim x = Await Read()\nEnd Function\nPrivate after As Integer\n",
       ""},
      {"Private Sub Tick(sender As Object, e As EventArgs) _\n   Handles a.Tick, b.Tick\nEnd Sub\n",
       ""},
      {"Private Sub Shown() Handles Me.Load\nEnd Sub\n", ""},
      {"Public Function Compare(x As [Object], y()() As T) As Integer Implements "
       "IComparer(Of T).Compare, IFoo.Bar\nEnd Function\n",
       ""},
      {"Public Shared Operator -(a As V, b As V) As V\nEnd Operator\n"
       "Public Shared Operator -(a As V) As V\nEnd Operator\n"
       "Public Shared Narrowing Operator CType(a As V) As Integer\nEnd Operator\n",
       ""},
      {"Sub New()\nMyBase.New()\nEnd Sub\nShared Sub New()\nEnd Sub\n", ""},
      {"Private Declare Auto Function Beep Lib \"kernel32\" (ByVal f As Integer) As Boolean\n", ""},
      {"Public Delegate Function Pick(Of T)(item As T) As Boolean\nPrivate x As Integer\n", ""},
      {"<Obsolete(\"a > b\")>\n<Browsable(False), _\n Category(\"x\")>\nFriend Sub S(\n"
       "  <Out()> ByRef a As Integer, ' the first\n  ParamArray rest() As String\n)\nEnd Sub\n",
       ""},
      {"Protected MustOverride Sub Draw(g As Graphics)\nPrivate x As Integer\n", ""},
  });
}

TEST(NetReadingTest, Properties) {
  Expect({
      {"Public Property Total As Integer = 5\nPrivate a As Integer\n", ""},
      {"Public Property Items As New List(Of String) From {\"a\",\n  \"b\"}\nPrivate a As "
       "Integer\n",
       ""},
      {"Public ReadOnly Property Name As String\n''' after\nPrivate a As Integer\n", ""},
      {"Public Property A As Integer\nPublic Property B As Integer\n", ""},
      {"Default Public Overridable Property Item(i As Integer) As String Implements IList.Item\n"
       "  <DebuggerStepThrough()>\n  Get\n    Dim x = 1\n    Return x\n  End Get\n"
       "  Private Set(value As String)\n  End Set\nEnd Property\nPrivate z As Integer\n",
       ""},
  });
}

TEST(NetReadingTest, Events) {
  Expect({
      {"Public Event Changed As EventHandler(Of ChangedEventArgs)\n", ""},
      {"Public Event Done(ByVal sender As Object)\n", ""},
      {"Public Custom Event Click As EventHandler Implements IB.Click\n"
       "  AddHandler(ByVal value As EventHandler)\n    Dim x As Integer\n  End AddHandler\n"
       "  RemoveHandler(ByVal value As EventHandler)\n  End RemoveHandler\n"
       "  RaiseEvent(sender As Object, e As EventArgs)\n  End RaiseEvent\nEnd Event\n"
       "Private a As Integer\n",
       ""},
  });
}

TEST(NetReadingTest, InterfaceMembersHaveNoBodies) {
  Expect({{"Inherits IA, IB(Of T, U)\nSub Draw()\nFunction Area() As Double\n"
           "ReadOnly Property Name As String\nProperty Size As Integer\nEvent Done()\n",
           ""}},
         true);
}

TEST(NetReadingTest, Lambdas) {
  Expect({
      {"Sub A()\n  Run(Sub(x)\n        Dim y = 1\n      End Sub, 5)\n  Dim z As Integer\nEnd Sub\n"
       "Private after As Integer\n",
       ""},
      {"Function B() As Integer\n  Dim f = Function(x As Integer) As List(Of Integer)\n"
       "            Return Nothing\n          End Function\n  Dim g = Sub() Go()\n  Return 1\n"
       "End Function\nPrivate after As Integer\n",
       ""},
      {"Sub C()\n  AddHandler x.Click, Async Sub(s, e)\n    Await Go()\n  End Sub\nEnd Sub\n"
       "Private after As Integer\n",
       ""},
  });
}

TEST(NetReadingTest, WhatStandsInTextsAndLiteralsDeclaresNothing) {
  Expect({
      {"Sub A()\n  Dim s = $\"Public Sub {If(x, \"a\", \"b\")} ' no\" ' comment\n"
       "  Dim x = <a b=\"'\">End Sub : Dim q</a>\n  If a <b Then c = 1\n  Dim d = #1/2/2003#\n"
       "  y = 1& _ ' goes on\n   + 2\nEnd Sub\nPrivate after As Integer\n",
       ""},
  });
}

// What is not understood stays a line.
TEST(NetReadingTest, AnOpenListSwallowsNoMember) {
  Expect({
      {"Sub A()\n  Run(1,\n  2\nEnd Sub\nPublic Sub B()\nEnd Sub\n", ""},
      {"Sub A()\n  Run(Sub()\n  x = 1\nPublic Function B() As Integer\nEnd Function\n"
       "Private after As Integer\n",
       ""},
      {"Public Property \nPublic ) x\nSub B()\nEnd Sub\n", ""},
  });
}

TEST(NetReadingTest, DeclaredTypes) {
  const NetType net("Inherits Base(Of T)\nImplements IA, IB(Of T, U)\n");
  EXPECT_EQ(net.Module->InheritsFrom, "Base(Of T)");
  std::string names;
  for (const Interface& one : net.Module->Interfaces) names += one.Name + ";";
  EXPECT_EQ(names, "IA;IB(Of T, U);");
}

}  // namespace
}  // namespace vendrel

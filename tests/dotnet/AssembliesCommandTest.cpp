#include <cstdlib>

#include "dotnet/SampleAssemblies.h"
#include "support/DiskFolder.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using test::DataPath;

TEST(AssembliesCommand, ASetIsShownSavedAndLoadedAgain) {
  const test::DiskFolder folder;
  const std::string saved = folder.Path("set.xml");
  const std::vector<std::string> files{DataPath("Shop.dll"), DataPath("ShopBase.dll")};
  const ToolRun first =
      ToolEnding(exDone, {"assemblies", files[0], files[1], "--xml-docs", "--root-assembly", "Shop",
                          "--root-module", "Shop.Price", "--save", saved});
  EXPECT_THAT(first.Out, AllOf(HasSubstr("assembly Shop (root)"), HasSubstr("  namespace Shop\n"),
                               HasSubstr("    structure Price (root): A price.\n"),
                               HasSubstr("    delegate Call`2: Calls.\n"),
                               HasSubstr("documented members placed")));
  const ToolRun again = ToolEnding(exDone, {"assemblies", saved, "--xml-docs"});
  EXPECT_EQ(again.Out, first.Out);
  const ToolRun json = ToolEnding(exDone, {"assemblies", saved, "--json", "--xml-docs"});
  const auto set = nlohmann::json::parse(json.Out);
  EXPECT_EQ(set[0]["Assembly"]["Name"], "Shop");
  EXPECT_EQ(set[1]["VBProject"]["ProjectName"], "ShopBase");
}

TEST(AssembliesCommand, WhatIsMissingIsToldAndDropped) {
  const ToolRun run =
      ToolEnding(exWarnings, {"assemblies", "/none/A.dll", DataPath("ShopBase.dll"), "--strict"});
  EXPECT_THAT(run.Err, HasSubstr("[assembly-dropped]"));
  EXPECT_THAT(run.Out, StartsWith("assembly ShopBase  "));
  EXPECT_THAT(RunFor({"assemblies", "/none/A.dll"}, exFailed), HasSubstr("no assembly could be"));
  const test::DiskFolder folder;
  EXPECT_THAT(RunFor({"assemblies", folder.Write("a.xml", "<x/>")}, exFailed),
              HasSubstr("no saved set"));
  EXPECT_THAT(RunFor({"assemblies", folder.Write("b.xml", "<x>")}, exFailed),
              HasSubstr("cannot be read"));
  RunFor({"assemblies", DataPath("Shop.dll"), "--root-module", "None"}, exUsage);
}

TEST(AssembliesCommand, DocumentationIsHeldAgainstTheElements) {
  const test::DiskFolder folder;
  const std::string file = folder.Write("ShopBase.dll", test::DataBytes("ShopBase.dll"));
  folder.Write("ShopBase.xml",
               "<doc><members><member name='T:Shop.Base.None'/>\n"
               "<member name='M:Shop.Base.Store`1.Find(System.String)'><param name='x'/>"
               "<exception cref='T:Sys.E'/><see cref='T:Sys.E'/></member></members></doc>");
  const std::string out = ToolEnding(exNo, {"assemblies", file, "--xml-docs", "--check"}).Out;
  EXPECT_THAT(out, HasSubstr("not placed: T:Shop.Base.None (line 1, no element of that name)"));
  EXPECT_THAT(out, HasSubstr("Find(System.String) (line 2, no parameter x)"));
  EXPECT_THAT(out, HasSubstr("undocumented: P:Shop.Base.Store`1.Size"));
  EXPECT_THAT(out, Not(HasSubstr("Dispose#")));
}

TEST(AssembliesCommand, CommentsAreTakenByMode) {
  const test::DiskFolder folder;
  const std::string comments =
      folder.Write("c.xml", "<c><x eid='Shop~Shop.Price' tid='##SUMMARY'>Mine.</x></c>");
  const auto shown = [&](const char* mode) {
    return RunFor({"assemblies", DataPath("Shop.dll"), "--xml-docs", "--comment-file",
                   "Shop=" + comments, "--import-mode", mode});
  };
  EXPECT_THAT(shown("keep"), HasSubstr("structure Price: Mine.\n"));
  EXPECT_THAT(shown("add"), HasSubstr("structure Price: Mine.<br>A price.\n"));
  EXPECT_THAT(shown("replace"), HasSubstr("structure Price: A price.\n"));
}

TEST(AssembliesCommand, DocumentationOutsideIsLinkedAndDrilled) {
  const test::DiskFolder folder;
  const std::string file = folder.Write("Shop.dll", test::DataBytes("Shop.dll"));
  folder.Write("Shop.xml",
               "<doc><members><member name='T:Shop.Price'><summary><see cref='T:Sys.A'/>"
               "</summary></member></members></doc>");
  folder.Write("docs/ShopBase.xml",
               "<doc><members><member name='M:Shop.Base.Store`1.Close'><summary>Closes.</summary>"
               "</member></members></doc>");
  const std::vector<std::string> arguments{"assemblies",
                                           file,
                                           "--xml-docs",
                                           "--reference-path",
                                           DataPath(""),
                                           "--external-docs",
                                           "Sys.=http://sys/{name}.html",
                                           "--drill",
                                           "--doc-location",
                                           "shopbase*=" + folder.Path("docs")};
  EXPECT_THAT(RunFor(arguments), HasSubstr("<a href=\"http://sys/Sys.A.html\">Sys.A</a>"));
  std::vector<std::string> json = arguments;
  json.push_back("--json");
  EXPECT_THAT(RunFor(json), HasSubstr("\"Closes.\""));
}

constexpr const char* kLibrary = R"cs(
using System;
namespace Lib {
  /// <summary>Holds <typeparamref name="T"/>, see <see cref="Run(int)"/>.</summary>
  /// <typeparam name="T">What.</typeparam>
  public class Box<T> {
    /// <summary>Makes it.</summary>
    public Box() { }
    /// <summary>Runs <paramref name="count"/> times.</summary>
    /// <param name="count">How often.</param>
    /// <returns>Done or <see langword="null"/>.</returns>
    /// <exception cref="ArgumentException">Never.</exception>
    /// <example>So: <code>
    ///   box.Run(1);
    /// </code></example>
    public string Run(int count) { return null; }
    /// <summary>Runs once.</summary>
    public string Run() { return null; }
    /// <summary>Holds.</summary>
    /// <value>The item.</value>
    public T this[Place index] { get { return default(T); } }
    /// <summary>Happened.</summary>
    public event EventHandler<EventArgs> Happened { add { } remove { } }
    /// <summary>Kept.</summary>
    public const int Kept = 1;
  }
  /// <summary>An index.</summary>
  public struct Place { }
}
)cs";

TEST(AssembliesCommand, WhatACompilerWritesReachesEveryElement) {
  const test::DiskFolder folder;
  const std::string source = folder.Write("Lib.cs", kLibrary), file = folder.Path("Lib.dll");
  const std::string command = "mcs -nologo -target:library -doc:" + folder.Path("Lib.xml") +
                              " -out:" + file + " " + source + " >/dev/null 2>&1";
  if (std::system(command.c_str()) != 0) GTEST_SKIP() << "needs mcs (package mono-mcs)";
  EXPECT_THAT(RunFor({"assemblies", file, "--xml-docs", "--check"}), Not(HasSubstr("not placed")));
  EXPECT_THAT(RunFor({"assemblies", file, "--xml-docs"}),
              AllOf(HasSubstr("8 of 8 documented members"),
                    HasSubstr("class Box`1: Holds <i>T</i>, see <a href=\"Lib~Lib.Box`1~Run(")));
}

TEST(AssembliesCommand, OtherCommandsShowDocumentation) {
  EXPECT_THAT(RunFor({"dump", "--xml-docs", DataPath("Shop.dll")}), HasSubstr("\"A price.\""));
  EXPECT_THAT(RunFor({"dump", DataPath("Shop.dll")}), Not(HasSubstr("\"A price.\"")));
  const test::DiskFolder folder;
  const std::string saved = folder.Path("set.xml");
  RunFor({"assemblies", DataPath("Shop.dll"), DataPath("ShopBase.dll"), "--save", saved});
  EXPECT_THAT(RunFor({"find", saved, "Goods`1", "--kind", "module", "--xml-docs"}),
              EndsWith("\tA list.\n"));
  EXPECT_THAT(RunFor({"members", saved, "Shop~Shop.Price", "--xml-docs"}),
              HasSubstr("\tHighest.\n"));
}

}  // namespace
}  // namespace vendrel::cli

#include <memory>
#include <unordered_set>

#include "cli/CallDrawing.h"
#include "cli/Commands.h"
#include "cli/Elements.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/ReferencedLibraries.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
#include "cli/UseSets.h"
#include "core/CaseFold.h"
#include "names/NameWalk.h"
#include "uses/CallGraph.h"

namespace vendrel::cli {
namespace {

struct CallsArguments {
  CommonOptions Common;
  Inputs File;
  std::string Name;
  std::string Reaches;
  bool Callers = false;
  bool Callees = false;
  int Depth = 1;
  bool Libraries = false;
  bool Modules = false;
  bool Fan = false;
  bool Dot = false;
  bool Mermaid = false;
  bool Json = false;
};

// The calls of the projects that belong together, shown as the arguments want it.
class CallsShown {
 public:
  CallsShown(const CallsArguments& arguments, std::ostream& out)
      : mArguments(arguments), mOut(out), mJson(out, "calls", arguments.Common, arguments.Json) {}

  std::size_t Count() const { return mCount; }
  bool KnowsName() const { return mKnowsName; }

  void Show(VBProject& project) {
    const std::vector<VBProject*> projects = ProjectsTogether(project);
    for (const VBProject* one : projects) RefuseWithoutStatements(*one);
    mFrom = nullptr;  // another element may stand where one of the project before stood
    CallGraph graph;
    graph.WithLibraries = mArguments.Libraries;
    for (VBProject* one : projects) {
      mLibraries.Load(*one);
      graph.Add(*one);
    }
    mDrawn.clear();
    mKnown.clear();
    std::vector<CallEdge> between;
    if (mArguments.Fan) {
      ShowFans(projects, graph);
    } else if (mArguments.Modules) {
      between = CallsBetweenModules(graph);
      for (const CallEdge& edge : between) Take(edge);
    } else if (mArguments.Name.empty()) {
      for (const CallEdge& edge : graph.Edges()) Take(edge);
    } else {
      const auto starts = Named(projects, mArguments.Name);
      mKnowsName = mKnowsName || !starts.empty();
      if (!mArguments.Reaches.empty())
        ShowPath(graph, starts, Named(projects, mArguments.Reaches));
      else
        for (const CodeElement* start : starts) ShowAround(graph, *start);
    }
    if (mArguments.Dot && !mDrawn.empty()) WriteCallsAsDot(mOut, mDrawn);
    if (mArguments.Mermaid && !mDrawn.empty()) WriteCallsAsMermaid(mOut, mDrawn);
  }

 private:
  bool IsList() const { return !mArguments.Dot && !mArguments.Mermaid; }

  // Whatever can be called by that name; all procedures of a module of that name.
  static std::vector<const CodeElement*> Named(const std::vector<VBProject*>& projects,
                                               const std::string& name) {
    std::vector<const CodeElement*> found;
    const bool qualified = name.find('~') != std::string::npos;
    const auto matches = [&](const CodeElement& element) {
      return EqualsNoCase(qualified ? element.QualifiedName() : element.ElementName(), name);
    };
    for (VBProject* project : projects)
      for (const Component& module : project->Components.Listed()) {
        const bool whole = matches(module);
        const auto take = [&](const CodeElement& element) {
          if (IsCallable(&element) && (whole || matches(element))) found.push_back(&element);
        };
        for (const Block& block : module.Blocks)
          if (!block.Name().empty()) take(block);
        for (const DeclareDeclaration& declare : module.Declarations) take(declare);
        for (const EventDeclaration& event : module.EventDeclarations) take(event);
      }
    return found;
  }

  void ShowFans(const std::vector<VBProject*>& projects, const CallGraph& graph) {
    for (const VBProject* project : projects)
      for (const Component& module : project->Components.Listed())
        for (const Block& block : module.Blocks)
          if (!block.Name().empty() && IsCallable(&block)) ShowFan(block, FanOf(graph, block));
  }

  void ShowFan(const Block& block, CallFan fan) {
    ++mCount;
    if (!mArguments.Json)
      return WriteRow(mOut, {CallName(block), std::to_string(fan.In), std::to_string(fan.Out),
                             PlaceOf(block, mPaths)});
    mJson.Begin();
    mJson.Text("QualifiedName", CallName(block));
    mJson.Number("FanIn", static_cast<std::int64_t>(fan.In));
    mJson.Number("FanOut", static_cast<std::int64_t>(fan.Out));
    mJson.Place(block);
    mJson.End();
  }

  void ShowPath(const CallGraph& graph, const std::vector<const CodeElement*>& from,
                const std::vector<const CodeElement*>& to) {
    if (to.empty())
      throw ToolError(exNo, mArguments.File.Shown() + ": nothing is called '" + mArguments.Reaches +
                                "'; names lists every qualified name");
    const auto path = graph.PathBetween(from, to);
    int depth = 0;
    for (const CallEdge* edge : path) Take(*edge, "path", ++depth);
  }

  void ShowAround(const CallGraph& graph, const CodeElement& start) {
    const bool both = mArguments.Callers == mArguments.Callees;
    if (IsList() && !mArguments.Json) WriteRow(mOut, {CallName(start), PlaceOf(start, mPaths)});
    if (both || mArguments.Callers) ShowSide(graph, start, CallDirection::Callers);
    if (both || mArguments.Callees) ShowSide(graph, start, CallDirection::Callees);
  }

  void ShowSide(const CallGraph& graph, const CodeElement& start, CallDirection direction) {
    const bool callers = direction == CallDirection::Callers;
    for (const CallStep& step : graph.Walk(start, direction, mArguments.Depth)) {
      ++mCount;
      if (!IsList()) {
        Draw(*step.Edge);
      } else if (mArguments.Json) {
        WriteEdge(*step.Edge, callers ? "callers" : "callees", step.Depth, step.Repeated);
      } else {
        std::string line(IndentOf(step.Depth), ' ');
        line += (callers ? "<- " : "-> ") + CallName(*step.Element);
        WriteRow(mOut, {line, KindOfEdge(*step.Edge), PlaceOfEdge(*step.Edge)},
                 step.Repeated ? "as above" : "");
      }
    }
  }

  void Take(const CallEdge& edge, const char* direction = nullptr, int depth = 0) {
    ++mCount;
    if (!IsList()) return Draw(edge);
    if (mArguments.Json) return WriteEdge(edge, direction, depth, false);
    if (mFrom != edge.From) {  // the calls of one procedure come together
      mFrom = edge.From;
      mFromName = CallName(*edge.From);
    }
    WriteRow(mOut, {mFromName, KindOfEdge(edge), CallName(*edge.To), PlaceOfEdge(edge)});
  }

  void Draw(const CallEdge& edge) {
    if (mKnown.insert(&edge).second) mDrawn.push_back(&edge);
  }

  // "call", "read 3 times", "perhaps call".
  static std::string KindOfEdge(const CallEdge& edge) {
    std::string kind = edge.IsSure ? "" : "perhaps ";
    kind += WordOf(edge.Kind);
    if (edge.Count > 1) kind += " " + std::to_string(edge.Count) + " times";
    return kind;
  }

  std::string PlaceOfEdge(const CallEdge& edge) {
    return edge.File ? mPaths.Place(edge.File->FullPath(), edge.Line) : std::string();
  }

  void WriteEdge(const CallEdge& edge, const char* direction, int depth, bool repeated) {
    mJson.Begin();
    mJson.Text("Caller", CallName(*edge.From));
    mJson.Text("Callee", CallName(*edge.To));
    mJson.Text("Kind", WordOf(edge.Kind));
    mJson.Truth("Sure", edge.IsSure);
    mJson.Number("Count", edge.Count);
    mJson.Place(edge.File ? edge.File->FullPath() : std::string(), edge.Line, edge.Column);
    if (direction) {
      mJson.Text("Direction", direction);
      mJson.Number("Depth", depth);
      mJson.Truth("Repeated", repeated);
    }
    mJson.End();
  }

  const CallsArguments& mArguments;
  std::ostream& mOut;
  JsonLines mJson;
  ReferencedLibraries mLibraries;
  ShownPaths mPaths;
  std::vector<const CallEdge*> mDrawn;
  std::unordered_set<const CallEdge*> mKnown;  // those that are drawn
  std::size_t mCount = 0;
  bool mKnowsName = false;
  const CodeElement* mFrom = nullptr;  // the caller named last
  std::string mFromName;
};

[[noreturn]] void TellNothingFound(const CallsArguments& arguments, bool knowsName, int code) {
  const std::string where = arguments.File.Shown() + ": ";
  if (arguments.Name.empty())
    throw ToolError(Worse(code, exNo), where + "no procedure calls another");
  if (!knowsName)
    throw ToolError(Worse(code, exNo), where +
                                           "no procedure, Declare, event or module is called '" +
                                           arguments.Name + "'; names lists every qualified name");
  if (!arguments.Reaches.empty())
    throw ToolError(Worse(code, exNo), where + "no chain of calls leads from '" + arguments.Name +
                                           "' to '" + arguments.Reaches + "'");
  throw ToolError(Worse(code, exNo), where + "'" + arguments.Name +
                                         "' calls nothing, or is not called; unused tells what "
                                         "nothing reaches");
}

int RunCalls(const CallsArguments& arguments, const Streams& streams) {
  int code = exDone;
  std::size_t count = 0;
  bool knowsName = false;
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    CallsShown shown(arguments, out);
    code = ForEachProject(arguments.File, arguments.Common, streams,
                          [&](VBProject& project) { shown.Show(project); });
    count = shown.Count();
    knowsName = shown.KnowsName();
  });
  if (count > 0) return code;
  TellNothingFound(arguments, knowsName, code);
}

}  // namespace

void AddCallsCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("calls", "Who calls whom in the code of procedures");
  const auto arguments = std::make_shared<CallsArguments>();
  AddInputsAndName(
      *command, arguments->File,
      "NAME: a procedure, Declare, event or module, bare or qualified (P~M~F); without "
      "one, every call");
  command->add_flag("--callers", arguments->Callers, "Only who calls it");
  command->add_flag("--callees", arguments->Callees, "Only what it calls");
  command->add_option("--depth", arguments->Depth, "How many calls away, 0: without end")
      ->check(CLI::NonNegativeNumber)
      ->capture_default_str();
  command
      ->add_option("--reaches", arguments->Reaches, "A shortest chain of calls from NAME to this")
      ->type_name("NAME");
  command->add_flag("--libraries", arguments->Libraries,
                    "With members of libraries and assemblies that could be read");
  auto* modules = command->add_flag("--modules", arguments->Modules, "Calls between modules");
  auto* fan = command->add_flag("--fan", arguments->Fan,
                                "Each procedure with how many call it, and how many it calls");
  fan->excludes(modules);
  auto* dot = command->add_flag("--dot", arguments->Dot, "As a graph for Graphviz");
  auto* mermaid = command->add_flag("--mermaid", arguments->Mermaid, "As a flowchart of Mermaid")
                      ->excludes(dot);
  dot->excludes(fan);
  mermaid->excludes(fan);
  command->add_flag("--json", arguments->Json, "As JSON, a call a line")
      ->excludes(dot)
      ->excludes(mermaid);
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] {
      arguments->Name = TakeNameIfAny(arguments->File);
      if (arguments->Name.empty() &&
          (!arguments->Reaches.empty() || arguments->Callers || arguments->Callees))
        throw ToolError(exUsage, "--callers, --callees and --reaches want a NAME behind the file");
      if (!arguments->Name.empty() && (arguments->Modules || arguments->Fan))
        throw ToolError(exUsage, "--modules and --fan show all of a program; they take no NAME");
      return RunCalls(*arguments, streams);
    };
  });
}

}  // namespace vendrel::cli

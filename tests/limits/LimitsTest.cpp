// The worst input for each walk: four times the input takes about four times the time, memory stays
// a multiple of the input, and the stack is never the limit. A build with optimisation takes the
// full sizes and prints what each costs, any other a part of them.

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/resource.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <ostream>
#include <streambuf>

#include "names/NameWalk.h"
#include "output/Dump.h"
#include "output/Xml.h"
#include "project/VBProject.h"
#include "support/MemoryFiles.h"

namespace vendrel {
namespace {

#if defined(NDEBUG) && !defined(VENDREL_SANITIZED)
constexpr std::size_t kPart = 1;
#else
constexpr std::size_t kPart = 25;
#endif

class Nowhere final : public std::streambuf {
 protected:
  int overflow(int c) override { return c; }
  std::streamsize xsputn(const char*, std::streamsize size) override { return size; }
};

double ProcessorSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

std::size_t Allocated() {
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

// The highest resident size since the last reset, of the whole process.
void ResetPeak() {
  malloc_trim(0);
  std::ofstream("/proc/self/clear_refs") << "5";
}

std::size_t PeakMegabytes() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;)
    if (word == "VmHWM:") {
      std::size_t kilobytes = 0;
      status >> kilobytes;
      return kilobytes / 1024;
    }
  return 0;
}

struct Cost {
  std::size_t Input = 0;
  double Seconds = 0;
  /// Allocated by the tree.
  std::size_t Bytes = 0;
};

// `run(count, complete)` is to cost about four times as much for four times the input.
template <typename Run>
void ExpectProportion(const char* name, std::size_t fullSize, std::size_t bytesAPart, Run run) {
  const std::size_t size = fullSize / kPart;
  for (const bool complete : {false, true}) {
    const Cost small = run(size / 4, complete);
    ResetPeak();
    Cost large = run(size, complete);
    const std::size_t peak = PeakMegabytes();
    const double base = std::max(small.Seconds, 0.05);
    // A second look where the machine was busy with something else.
    if (large.Seconds > 10 * base) large = run(size, complete);
    const char* reading = complete ? "complete" : "classic";
    EXPECT_LE(large.Seconds, 10 * base) << reading << ", " << large.Input << " bytes";
    EXPECT_LE(large.Bytes, 100 * large.Input + bytesAPart * size + 1'000'000) << reading;
    if (kPart > 1) continue;
    std::cout << "[ figures  ] " << name << ' ' << reading << ": " << large.Input << " bytes, "
              << large.Seconds << " s, " << large.Bytes / 1'000'000 << " MB allocated, peak "
              << peak << " MB" << std::endl;
  }
}

// `part` once for each number from 1 to `count`, with "%" replaced by it.
void Append(std::string& text, std::string_view part, std::size_t count) {
  for (std::size_t i = 1; i <= count; ++i) {
    std::size_t from = 0;
    for (std::size_t at; (at = part.find('%', from)) != std::string_view::npos; from = at + 1)
      text.append(part.substr(from, at - from)).append(std::to_string(i));
    text.append(part.substr(from));
  }
}

struct WorstCase {
  const char* Name;
  const char* File;
  std::size_t FullSize;
  /// `Head`, all of `Part`, as many of `Closing`, `Tail`.
  std::string_view Head, Part, Tail, Closing = {};
  /// Read as VB.NET.
  bool DotNet = false;
};

std::ostream& operator<<(std::ostream& out, const WorstCase& worst) { return out << worst.Name; }

constexpr std::string_view kClass = "Attribute VB_Name = \"M\"\r\n";

const WorstCase kCases[] = {
    {"OneLine", "M.bas", 50'000'000, "x = ", "a", "\r\n"},
    {"OneLineOfQuotes", "M.bas", 50'000'000, "x = ", "\"", "\r\n"},
    {"BlankLines", "M.bas", 1'000'000, "", "\r\n", ""},
    {"NamesOnOneLine", "M.bas", 1'000'000, "Dim a", ", a%", "\r\n"},
    {"BlocksOfOneName", "M.bas", 1'000'000, "", "Sub A()\r\nEnd Sub\r\n", ""},
    {"PropertiesOfOneName", "M.cls", 200'000, kClass,
     "Property Get A(ByVal a%)\r\nEnd Property\r\nProperty Let A(ByVal a%, v)\r\nEnd Property\r\n",
     ""},
    {"Overloads", "M.bas", 200'000, "", "Overloads Sub A(ByVal a As T%)\r\nEnd Sub\r\n", "", "",
     true},
    {"Parameters", "M.bas", 100'000, "Sub A(z", ", a%", ")\r\nEnd Sub\r\n"},
    {"Conditions", "M.bas", 100'000, "", "#If 1 Then\r\n", "x = 1\r\n", "#End If\r\n"},
    {"OpenConditions", "M.bas", 100'000, "", "#If 0 Then\r\n", "x = 1\r\n"},
    {"ConditionsInTurn", "M.bas", 100'000, "#If 0 Then\r\n", "#ElseIf 0 Then\r\nx\r\n",
     "#End If\r\n"},
    {"Constants", "M.bas", 20'000, "", "#Const a% = 1\r\n", "#If a1 Then\r\n#End If\r\n"},
    {"Continuations", "M.bas", 100'000, "Attribute VB_Name = \"M\"\r\nx = 1 _\r\n", "  + % _\r\n",
     "  + 1\r\n"},
    {"ContinuedParameters", "M.bas", 100'000, "Attribute VB_Name = \"M\"\r\nSub A(z _\r\n",
     "  , a% _\r\n", ")\r\nEnd Sub\r\n"},
    {"Separators", "M.bas", 200'000, "Sub A()\r\n", "x = % : ", "\r\nEnd Sub\r\n"},
    {"SeparatorsBehindTabs", "M.bas", 200'000, "Sub A()\r\n", "x = %\t: ", "\r\nEnd Sub\r\n"},
    {"OneLineProcedure", "M.bas", 200'000, "", "Sub A(): Dim a%: ", "End Sub\r\n"},
    {"BodyOnOneLine", "M.bas", 200'000,
     "Attribute VB_Name = \"M\"\r\nSub A(): ", "Dim a%: ", "End Sub\r\n"},
    {"NestedControls", "M.frm", 100'000, "VERSION 5.00\r\nBegin VB.Form M\r\n",
     "Begin VB.Frame f%\r\n", "End\r\nAttribute VB_Name = \"M\"\r\nSub A()\r\nEnd Sub\r\n",
     "End\r\n"},
    {"OpenControls", "M.frm", 100'000, "VERSION 5.00\r\nBegin VB.Form M\r\n",
     "Begin VB.Frame f%\r\n", "Attribute VB_Name = \"M\"\r\n"},
    {"ControlArray", "M.frm", 100'000, "VERSION 5.00\r\nBegin VB.Form M\r\n",
     "Begin VB.Frame f\r\nIndex = %\r\nEnd\r\n", "End\r\nAttribute VB_Name = \"M\"\r\n"},
    {"WaitingComments", "M.cls", 1'000'000, kClass, "'##PARAM p% text\r\n",
     "Sub A()\r\nEnd Sub\r\n"},
    {"CommentsOfOneElement", "M.cls", 1'000'000, kClass, "'##SUMMARY text\r\n",
     "Sub A()\r\nEnd Sub\r\n"},
    {"LongComment", "M.cls", 100'000'000, "Attribute VB_Name = \"M\"\r\n'##SUMMARY ", "x",
     "\r\nSub A()\r\nEnd Sub\r\n"},
    {"CommentOfManyLines", "M.cls", 1'000'000, "Attribute VB_Name = \"M\"\r\n'##SUMMARY text\r\n",
     "' more of it\r\n", "Sub A()\r\nEnd Sub\r\n"},
    {"PlainComments", "M.cls", 1'000'000, "Sub A()\r\nEnd Sub\r\n", "' text\r\n",
     "Sub B()\r\nEnd Sub\r\n"},
    {"EnumMembers", "M.bas", 500'000, "Enum E\r\n", "  m%\r\n", "End Enum\r\n"},
    {"TypeMembers", "M.bas", 500'000, "Type T\r\n", "  m% As Long\r\n", "End Type\r\n"},
    {"Enumerations", "M.bas", 200'000, "", "Enum E%\r\n  m%\r\nEnd Enum\r\n", ""},
    {"ConstantChain", "M.bas", 200'000, "Const c0 = 1\r\n", "Const c% = c1 + %\r\n",
     "Enum E\r\n  m = c9\r\nEnd Enum\r\n"},
    {"Declares", "M.bas", 200'000, "", "Declare Sub S% Lib \"k\" (ByVal a As Long)\r\n", ""},
    {"Events", "M.cls", 200'000, kClass, "Event E%(ByVal a As Long)\r\n", ""},
    {"Interfaces", "M.cls", 200'000, kClass, "Implements I%\r\n", ""},
    {"Attributes", "M.cls", 200'000, kClass, "Attribute VB_X% = 1\r\n", "Sub A()\r\nEnd Sub\r\n"},
    {"MemberAttributes", "M.cls", 200'000, "Sub A()\r\n", "Attribute A.VB_X% = 1\r\n",
     "End Sub\r\n"},
    {"Examples", "M.cls", 100'000, kClass, "'##EXAMPLE code %\r\n", "Sub A()\r\nEnd Sub\r\n"},
};

// Loads what the host would, walks the whole tree, and drops it.
Cost CostOf(VBProject& project, std::size_t input) {
  const std::size_t before = Allocated();
  const double start = ProcessorSeconds();
  project.Components.Populate();
  const std::size_t bytes = Allocated() - before;
  Nowhere nowhere;
  std::ostream out(&nowhere);
  Dump(out, Describe(project));
  ForEachNamedElement(project, [](const CodeElement& element) { element.QualifiedName(); });
  project.Manifest(false, true);
  project.UnloadSourceCode();
  return {input, ProcessorSeconds() - start, bytes};
}

class Worst : public testing::TestWithParam<WorstCase> {
 protected:
  static Cost Run(const WorstCase& worst, std::size_t count, bool complete) {
    std::string text(worst.Head);
    Append(text, worst.Part, count);
    Append(text, worst.Closing, worst.Closing.empty() ? 0 : count);
    text += worst.Tail;
    const std::size_t input = text.size();
    const std::string path = std::string("/p/") + worst.File;
    test::MemoryFiles files{};
    files.Add(path, std::move(text));
    VBProject project;
    if (complete) project.Reading = ReadingRules::Complete();
    project.OnLineFailure = [](const VendrelError&, std::string_view, std::int32_t) {
      return StepOver::SkipLine;
    };
    EXPECT_TRUE(project.LoadModule(path)) << project.LastErrorString;
    if (worst.DotNet) project.SetLanguageVersion(lvVisualBasicDotNet);
    const Cost cost = CostOf(project, input);
    if (worst.DotNet) {
      EXPECT_EQ(project.Components.Item(1)->Blocks.Item("A")->OverloadBlocks()->Count(), count);
    }
    return cost;
  }
};

TEST_P(Worst, TakesTimeAndMemoryInProportion) {
  const WorstCase& worst = GetParam();
  ExpectProportion(worst.Name, worst.FullSize, 0,
                   [&](std::size_t count, bool complete) { return Run(worst, count, complete); });
}

INSTANTIATE_TEST_SUITE_P(Input, Worst, testing::ValuesIn(kCases),
                         [](const auto& each) { return std::string(each.param.Name); });

// A project of so many modules, with their files or without; its cost with that of writing it.
Cost RunProject(std::size_t count, bool complete, bool present) {
  test::MemoryFiles files{};
  std::string text = "Type=Exe\r\n";
  Append(text, "Module=M%; M%.bas\r\n", count);
  std::size_t input = text.size();
  files.Add("/p/P.vbp", text + "Name=\"P\"\r\n");
  for (std::size_t i = 1; present && i <= count; ++i) {
    std::string name = "M" + std::to_string(i);
    std::string module = "Attribute VB_Name = \"" + name + "\"\r\nSub A()\r\nEnd Sub\r\n";
    input += module.size();
    files.Add("/p/" + name + ".bas", std::move(module));
  }
  VBProject project;
  if (complete) project.Reading = ReadingRules::Complete();
  const double start = ProcessorSeconds();
  EXPECT_TRUE(project.Load("/p/P.vbp"));
  const double listed = ProcessorSeconds() - start;
  Cost cost = CostOf(project, input);
  EXPECT_EQ(project.Diagnostics.CountOf(DiagnosticCode::MissingModule), present ? 0 : count);
  cost.Seconds += listed;
  return cost;
}

TEST(WorstProject, OfManyMissingModulesIsListedInProportion) {
  ExpectProportion("MissingModules", 100'000, 5000, [](std::size_t count, bool complete) {
    return RunProject(count, complete, false);
  });
}

TEST(WorstProject, OfManyModulesIsLoadedInProportion) {
  ExpectProportion("Modules", 100'000, 10'000, [](std::size_t count, bool complete) {
    return RunProject(count, complete, true);
  });
}

}  // namespace
}  // namespace vendrel

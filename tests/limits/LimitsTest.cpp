// The worst input for each walk: four times the input takes about four times the time, memory stays
// a multiple of the input, and the stack is never the limit. A build with optimisation takes the
// full sizes, any other a part of them.

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/resource.h>

#include <algorithm>
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

// `head`, then `part` once for each number from 1 to `count` with "%" replaced by it, then `tail`.
std::string Repeat(std::string_view head, std::string_view part, std::string_view tail,
                   std::size_t count) {
  std::string text(head);
  for (std::size_t i = 1; i <= count; ++i) {
    std::size_t from = 0;
    for (std::size_t at; (at = part.find('%', from)) != std::string_view::npos; from = at + 1)
      text.append(part.substr(from, at - from)).append(std::to_string(i));
    text.append(part.substr(from));
  }
  return text.append(tail);
}

struct WorstCase {
  const char* Name;
  const char* File;
  std::size_t FullSize;
  std::string_view Head, Part, Tail;
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
    {"Overloads", "M.bas", 200'000, "Class C\r\n", "Overloads Sub A(ByVal a As T%)\r\nEnd Sub\r\n",
     "End Class\r\n", true},
    {"Parameters", "M.bas", 100'000, "Sub A(z", ", a%", ")\r\nEnd Sub\r\n"},
    {"Conditions", "M.bas", 100'000, "", "#If 1 Then\r\n", "x = 1\r\n"},
    {"ConditionsInTurn", "M.bas", 100'000, "#If 0 Then\r\n", "#ElseIf 0 Then\r\nx\r\n",
     "#End If\r\n"},
    {"Constants", "M.bas", 20'000, "", "#Const a% = 1\r\n", "#If a1 Then\r\n#End If\r\n"},
    {"Continuations", "M.bas", 100'000, "x = 1 _\r\n", "  + % _\r\n", "  + 1\r\n"},
    {"ContinuedParameters", "M.bas", 100'000, "Sub A(z _\r\n", "  , a% _\r\n", ")\r\nEnd Sub\r\n"},
    {"Separators", "M.bas", 200'000, "Sub A()\r\n", "x = % : ", "\r\nEnd Sub\r\n"},
    {"NestedControls", "M.frm", 100'000, "VERSION 5.00\r\nBegin VB.Form M\r\n",
     "Begin VB.Frame f%\r\n", "Attribute VB_Name = \"M\"\r\n"},
    {"ControlArray", "M.frm", 100'000, "VERSION 5.00\r\nBegin VB.Form M\r\n",
     "Begin VB.Frame f\r\nIndex = %\r\nEnd\r\n", "End\r\nAttribute VB_Name = \"M\"\r\n"},
    {"WaitingComments", "M.cls", 1'000'000, kClass, "'##PARAM p% text\r\n",
     "Sub A()\r\nEnd Sub\r\n"},
    {"CommentsOfOneElement", "M.cls", 1'000'000, kClass, "'##SUMMARY text\r\n",
     "Sub A()\r\nEnd Sub\r\n"},
    {"LongComment", "M.cls", 100'000'000, "Attribute VB_Name = \"M\"\r\n'##SUMMARY ", "x",
     "\r\nSub A()\r\nEnd Sub\r\n"},
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

class Worst : public testing::TestWithParam<WorstCase> {
 protected:
  struct Cost {
    double Seconds = 0;
    std::size_t Bytes = 0;
    std::size_t Input = 0;
  };

  static Cost Run(const WorstCase& worst, std::size_t count, bool complete) {
    std::string text = Repeat(worst.Head, worst.Part, worst.Tail, count);
    Cost cost;
    cost.Input = text.size();
    const std::string path = std::string("/p/") + worst.File;
    test::MemoryFiles files{{path, std::move(text)}};
    const std::size_t before = Allocated();
    const double start = ProcessorSeconds();
    {
      VBProject project;
      if (complete) project.Reading = ReadingRules::Complete();
      if (worst.DotNet) project.SetLanguageVersion(lvVisualBasicDotNet);
      project.OnLineFailure = [](const VendrelError&, std::string_view, std::int32_t) {
        return StepOver::SkipLine;
      };
      EXPECT_TRUE(project.LoadModule(path)) << project.LastErrorString;
      project.Components.Populate();
      cost.Bytes = Allocated() - before;
      Nowhere nowhere;
      std::ostream out(&nowhere);
      Dump(out, Describe(project));
      ForEachNamedElement(project, [](const CodeElement& element) { element.QualifiedName(); });
      project.Manifest(false, true);
      project.UnloadSourceCode();
    }
    cost.Seconds = ProcessorSeconds() - start;
    return cost;
  }
};

TEST_P(Worst, TakesTimeAndMemoryInProportion) {
  const WorstCase& worst = GetParam();
  const std::size_t size = worst.FullSize / kPart;
  for (const bool complete : {false, true}) {
    const Cost small = Run(worst, size / 4, complete);
    const Cost large = Run(worst, size, complete);
    // A second look where the machine was busy with something else.
    const double base = std::max(small.Seconds, 0.05);
    const double seconds =
        large.Seconds <= 10 * base ? large.Seconds : Run(worst, size, complete).Seconds;
    EXPECT_LE(seconds, 10 * base) << (complete ? "complete" : "classic") << ", " << size
                                  << " parts, " << large.Input << " bytes";
    EXPECT_LE(large.Bytes, 100 * large.Input + 1'000'000) << (complete ? "complete" : "classic");
    RecordProperty(complete ? "CompleteMilliseconds" : "ClassicMilliseconds",
                   static_cast<int>(seconds * 1000));
  }
}

INSTANTIATE_TEST_SUITE_P(Input, Worst, testing::ValuesIn(kCases),
                         [](const auto& each) { return std::string(each.param.Name); });

TEST(WorstProject, OfManyModulesIsListedInProportion) {
  const std::size_t size = 100'000 / kPart;
  double seconds[2];
  for (const int run : {0, 1}) {
    test::MemoryFiles files{{"/p/P.vbp", Repeat("Type=Exe\r\n", "Module=M%; M%.bas\r\n",
                                                "Name=\"P\"\r\n", run == 0 ? size / 4 : size)}};
    const double start = ProcessorSeconds();
    VBProject project;
    project.Reading = ReadingRules::Complete();
    ASSERT_TRUE(project.Load("/p/P.vbp"));
    project.Components.Populate();
    EXPECT_EQ(project.Diagnostics.CountOf(DiagnosticCode::MissingModule),
              run == 0 ? size / 4 : size);
    seconds[run] = ProcessorSeconds() - start;
  }
  EXPECT_LE(seconds[1], 10 * std::max(seconds[0], 0.05));
}

}  // namespace
}  // namespace vendrel

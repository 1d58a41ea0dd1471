#include <array>
#include <iomanip>
#include <memory>
#include <set>

#include "cli/Commands.h"
#include "cli/Elements.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/ReferencedLibraries.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
#include "model/PropertyGroup.h"
#include "uses/UseBinder.h"
#include "uses/WrittenName.h"

namespace vendrel::cli {
namespace {

struct UsesArguments {
  CommonOptions Common;
  Inputs File;
  std::string Name;
  std::string Kind;
  std::string Answer;
  bool Declarations = false;
  bool AllBranches = false;
  bool Summary = false;
  bool Json = false;
};

// A statement on one line: what its continuations part is parted by a blank.
std::string OnOneLine(std::string_view statement) {
  if (statement.find_first_of("_\t") == std::string_view::npos) return ShownSource(statement);
  std::string line;
  for (std::size_t i = 0; i < statement.size(); ++i) {
    const char c = statement[i];
    if (c == '_' && !line.empty() && line.back() == ' ') {
      const std::size_t next = statement.find_first_not_of(" \t", i + 1);
      if (next != std::string_view::npos && (statement[next] == '\r' || statement[next] == '\n')) {
        i = std::min(statement.find_first_not_of(" \t\r\n", next), statement.size()) - 1;
        continue;
      }
    }
    line += c == '\t' ? ' ' : c;
  }
  return ShownSource(line);
}

// What a person asks for, held against uses.
class WantedUses {
 public:
  explicit WantedUses(const UsesArguments& arguments)
      : mName(WantedName(arguments.Name)), mKind(arguments.Kind), mAnswer(arguments.Answer) {}

  void Enter(VBProject& project) {
    const bool isOne = mName.IsQualified() && !mName.IsPattern();
    mElement = isOne ? project.GetObjectByName(mName.Text()) : nullptr;
    const auto* block = As<Block>(mElement);
    if (!block || !block->IsPropertyType() || !block->OwnComponent()) return;
    const PropertyGroup* group = block->OwnComponent()->PropertyGroups.Item(block->Name());
    if (group) mElement = group;
  }

  bool Has(const NameUse& use) const {
    if (!mKind.empty() && WordOf(use.Kind) != mKind) return false;
    if (!mAnswer.empty() && WordOf(use.Answer) != mAnswer) return false;
    if (mName.Text().empty()) return true;
    if (mName.IsQualified()) return HasQualified(use);
    return (!use.Secondary && mName.Fits(BareName(use.Text))) ||
           (use.Element && mName.Fits(NameOf(*use.Element)));
  }

 private:
  static std::string NameOf(const CodeElement& element) {
    const auto* control = As<VBControl>(&element);
    return control ? control->ShortName() : element.ElementName();
  }
  bool HasQualified(const NameUse& use) const {
    if (mElement) {
      if (use.Element == mElement && !use.WholeArray) return true;
      for (const CodeElement* candidate : use.Candidates)
        if (candidate == mElement) return true;
      return false;
    }
    return (use.Element || use.Member || use.Type) && mName.Fits(MeaningOf(use));
  }

  NamePattern mName;
  const std::string& mKind;
  const std::string& mAnswer;
  const CodeElement* mElement = nullptr;
};

class UsesWriter {
 public:
  UsesWriter(const UsesArguments& arguments, std::ostream& out)
      : mArguments(arguments),
        mOut(out),
        mJson(out, "uses", arguments.Common, arguments.Json),
        mWanted(arguments) {}

  std::size_t Count() const { return mCount; }

  void Write(VBProject& project) {
    mHolder = nullptr;  // another element may stand where one of the project before stood
    mHolderName.clear();
    mStatement = {};
    mLibraries.Load(project);
    UseBinder binder(project, {mArguments.Declarations, mArguments.AllBranches});
    mWanted.Enter(project);
    if (mArguments.Summary) {
      binder.BindAll({});
    } else {
      binder.BindAll([this](const NameUse& use) {
        if (mWanted.Has(use)) Show(use);
      });
    }
    mCounts.Add(binder.Counts());
    mMissing |= binder.MissesReferences();
  }

  void WriteSummary() {
    for (std::size_t i = 0; i < kUseAnswerWords.size(); ++i) {
      const auto answer = static_cast<UseAnswer>(i);
      const bool counts = answer != UseAnswer::Key && answer != UseAnswer::Label;
      WriteCount(kUseAnswerWords[i], mCounts.Answers[i], counts);
    }
    WriteCount("declarations", mCounts.Declarations, false);
    WriteCount("secondary", mCounts.Secondary, false);
    WriteCount("in false branches", mCounts.InFalseBranches, false);
    WriteCount("statements not read whole", mCounts.Unread, false);
    if (mMissing && !mArguments.Json)
      mOut << "References are missing: what is external or unknown may stand in them.\n";
  }

 private:
  void Show(const NameUse& use) {
    ++mCount;
    const std::string file = use.File->FullPath();
    std::string kind(WordOf(use.Kind));
    if (use.Accessor != UseAccessor::None && use.Kind != UseKind::Declare)
      kind.append(" ").append(WordOf(use.Accessor));
    if (mArguments.Json) return ShowAsJson(use, file);
    if (!use.Element && !use.Member && !use.Type) kind.append(", ").append(WordOf(use.Answer));
    WriteRow(mOut, {mPaths.Place(file, use.Line) + ":" + std::to_string(use.Column),
                    kind,
                    HolderOf(use),
                    {StatementOf(use), true}});
  }

  // Neighbours mostly stand in one statement.
  const std::string& StatementOf(const NameUse& use) {
    if (use.Statement.data() != mStatement.data() || use.Statement.size() != mStatement.size())
      mShownStatement = OnOneLine(use.Statement);
    mStatement = use.Statement;
    return mShownStatement;
  }

  void ShowAsJson(const NameUse& use, const std::string& file) {
    mJson.Begin();
    mJson.Place(file, use.Line, use.Column);
    mJson.Number("EndColumn", use.EndColumn);
    mJson.Text("Name", use.Text);
    mJson.Text("Kind", WordOf(use.Kind));
    mJson.Text("Answer", WordOf(use.Answer));
    mJson.Text("Meaning", MeaningOf(use));
    if (use.Accessor != UseAccessor::None) mJson.Text("Accessor", WordOf(use.Accessor));
    mJson.Truth("Reads", use.Reads);
    mJson.Truth("Writes", use.Writes);
    mJson.Truth("Secondary", use.Secondary);
    mJson.Truth("InFalseBranch", use.InFalseBranch);
    mJson.Text("Holder", HolderOf(use));
    mJson.Number("StatementLine", use.StatementLine);
    mJson.Text("Statement", use.Statement);
    if (use.CandidateCount > 0) {
      mJson.Number("CandidateCount", static_cast<std::int64_t>(use.CandidateCount));
      mJson.Writer().Key("Candidates");
      mJson.Writer().BeginArray();
      for (const CodeElement* candidate : use.Candidates)
        mJson.Writer().String(candidate->QualifiedName());
      mJson.Writer().EndArray();
    }
    mJson.End();
  }

  const std::string& HolderOf(const NameUse& use) {
    if (use.Holder != mHolder) {
      mHolder = use.Holder;
      mHolderName = use.Holder ? use.Holder->QualifiedName() : std::string();
    }
    return mHolderName;
  }

  void WriteCount(std::string_view what, std::int64_t count, bool hasShare) {
    if (mArguments.Json) {
      mJson.Begin();
      mJson.Text("Answer", what);
      mJson.Number("Count", count);
      return mJson.End();
    }
    std::ostringstream share;
    const std::int64_t all = mCounts.InShares();
    if (hasShare && all > 0)
      share << std::fixed << std::setprecision(2)
            << 100.0 * static_cast<double>(count) / static_cast<double>(all) << '%';
    WriteRow(mOut, {what, std::to_string(count)}, share.str());
  }

  const UsesArguments& mArguments;
  std::ostream& mOut;
  JsonLines mJson;
  WantedUses mWanted;
  ReferencedLibraries mLibraries;
  ShownPaths mPaths;
  UseCounts mCounts;
  bool mMissing = false;
  std::size_t mCount = 0;
  const CodeElement* mHolder = nullptr;
  std::string mHolderName;
  std::string_view mStatement;  // the last one
  std::string mShownStatement;
};

int RunUses(const UsesArguments& arguments, const Streams& streams) {
  int code = exDone;
  std::size_t count = 0;
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    UsesWriter writer(arguments, out);
    code = ForEachProject(arguments.File, arguments.Common, streams,
                          [&](VBProject& project) { writer.Write(project); });
    if (arguments.Summary) writer.WriteSummary();
    count = writer.Count();
  });
  if (count > 0 || arguments.Summary) return code;
  const std::string what =
      arguments.Name.empty() ? "no name is used so" : "nothing uses '" + arguments.Name + "'";
  throw ToolError(Worse(code, exNo),
                  arguments.File.Shown() + ": " + what + "; names lists every qualified name");
}

template <std::size_t Size>
std::vector<std::string> ListOf(const std::array<std::string_view, Size>& words) {
  return {words.begin(), words.end()};
}

}  // namespace

void AddUsesCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("uses", "Where a name is used: place, kind, what holds it, the statement");
  const auto arguments = std::make_shared<UsesArguments>();
  AddInputsAndName(
      *command, arguments->File,
      "NAME: A qualified name (P~M~F), a bare name, or a pattern; left out, all names");
  command->add_option("--kind", arguments->Kind, "Only uses of this kind")
      ->type_name("KIND")
      ->check(CLI::IsMember(ListOf(kUseKindWords)));
  command->add_option("--answer", arguments->Answer, "Only names that turned out to be this")
      ->type_name("ANSWER")
      ->check(CLI::IsMember(ListOf(kUseAnswerWords)));
  command->add_flag("--declarations", arguments->Declarations, "Declarations, too");
  command->add_flag("--all-branches", arguments->AllBranches,
                    "Names in false branches of #If, too");
  command->add_flag("--summary", arguments->Summary, "How many names there are, by answer");
  command->add_flag("--json", arguments->Json, "One JSON object a line");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] {
      arguments->Name = TakeNameIfAny(arguments->File);
      if (arguments->Kind == WordOf(UseKind::Declare)) arguments->Declarations = true;
      return RunUses(*arguments, streams);
    };
  });
}

}  // namespace vendrel::cli

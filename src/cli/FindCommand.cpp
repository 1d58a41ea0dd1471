#include <memory>

#include "cli/ClosestName.h"
#include "cli/Commands.h"
#include "cli/Elements.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
#include "core/CaseFold.h"
#include "names/NameWalk.h"
#include "output/Dump.h"
#include "output/UniqueNames.h"

namespace vendrel::cli {
namespace {

struct FindArguments {
  CommonOptions Common;
  Inputs File;
  std::string Name;
  std::string Kind;
  bool Json = false;
};

// Looks for one name or pattern in one project after the other.
class Finder {
 public:
  Finder(const FindArguments& arguments, std::ostream& out)
      : mArguments(arguments),
        mOut(out),
        mJson(out, "find", arguments.Common, arguments.Json),
        mName(WantedName(arguments.Name)) {}

  std::size_t Count() const { return mCount; }
  /// What may have been meant where nothing was found.
  std::string Hint() const { return HintOr(mClosest, "; names lists every qualified name"); }

  void Search(VBProject& project) {
    if (mArguments.Json) mNames.Add(vendrel::Describe(project));
    if (!mName.IsPattern() && mName.IsQualified()) {
      const CodeElement* found = project.GetObjectByName(mArguments.Name);
      // In a group every member would find it: the one it stands in tells it.
      if (found && IsWanted(*found) && StandsIn(*found, project)) Show(*found);
      if (mCount == 0) OfferNames(project);
      return;
    }
    ForEachNamedElement(project, [&](CodeElement& element) {
      if (Matches(element) && IsWanted(element)) Show(element);
    });
    if (mCount == 0) OfferNames(project);
  }

 private:
  void OfferNames(VBProject& project) {
    if (mName.IsPattern()) return;
    ForEachNamedElement(project, [&](CodeElement& element) {
      mClosest.Offer(mName.IsQualified() ? element.QualifiedName() : element.ElementName());
    });
  }
  bool Matches(const CodeElement& element) const {
    return mName.Fits(mName.IsQualified() ? element.QualifiedName() : element.ElementName());
  }
  bool IsWanted(const CodeElement& element) const {
    return mArguments.Kind.empty() || KindOf(element) == mArguments.Kind;
  }
  static bool StandsIn(const CodeElement& element, const VBProject& project) {
    const std::string name = element.QualifiedName();
    return EqualsNoCase(std::string_view(name).substr(0, name.find('~')), project.ProjectName);
  }

  void Show(const CodeElement& element) {
    ++mCount;
    if (mArguments.Json) {
      DumpOptions shown;
      shown.Indented = false;
      shown.NativeRoot = NativeRootOf(mArguments.Common);
      shown.Names = &mNames;
      return Dump(mOut, DescribeElement(element), shown);
    }
    WriteRow(mOut,
             {element.QualifiedName(),
              KindOf(element),
              {SignatureOf(element), true},
              PlaceOf(element, mPaths)},
             mArguments.Common.XmlDocs ? element.Description() : std::string());
  }

  const FindArguments& mArguments;
  std::ostream& mOut;
  JsonLines mJson;
  UniqueNames mNames;
  NamePattern mName;
  ShownPaths mPaths;
  std::size_t mCount = 0;
  ClosestName mClosest{mArguments.Name};
};

int RunFind(const FindArguments& arguments, const Streams& streams) {
  int code = exDone;
  std::size_t count = 0;
  std::string hint;
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    Finder finder(arguments, out);
    code = ForEachProject(arguments.File, arguments.Common, streams,
                          [&](VBProject& project) { finder.Search(project); });
    count = finder.Count();
    hint = finder.Hint();
  });
  if (count > 0) return code;
  throw ToolError(Worse(code, exNo),
                  arguments.File.Shown() + ": nothing is called '" + arguments.Name + "'" + hint);
}

}  // namespace

void AddFindCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("find", "Elements by name or pattern");
  const auto arguments = std::make_shared<FindArguments>();
  AddInputsAndName(*command, arguments->File,
                   "NAME: A qualified name (P~M~F), a bare name, or a pattern with * ? # [a-z]");
  command->add_option("--kind", arguments->Kind, "Only elements of this kind")
      ->type_name("KIND")
      ->check(CLI::IsMember(std::vector<std::string>(AllKinds().begin(), AllKinds().end())));
  command->add_flag("--json", arguments->Json, "Each element whole, as JSON");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] {
      arguments->Name = TakeName(arguments->File, "the name to look for");
      return RunFind(*arguments, streams);
    };
  });
}

}  // namespace vendrel::cli

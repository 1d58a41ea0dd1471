#include <map>
#include <memory>
#include <set>
#include <utility>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
#include "comments/CommentFile.h"
#include "dotnet/Sources.h"
#include "model/Block.h"
#include "output/UniqueNames.h"
#include "survey/Findings.h"

namespace vendrel::cli {
namespace {

struct CommentsArguments {
  CommonOptions Common;
  Inputs File;
  bool AsCommentFile = false;
  bool UnplacedOnly = false;
  bool Json = false;
};

// A comment with the file it was read from.
struct FoundComment {
  std::shared_ptr<TaggedComment> Comment;
  std::string File;
};

// Gathers comments as they are read, also those that no element keeps.
class Gatherer {
 public:
  void Watch(VBProject& project) {
    // Apart, a comment has an element of its own, or none.
    project.PreserveOriginalTaggedComments = true;
    project.NewTaggedComment.Add([this](Block& block, TaggedComment&, const CodeLine&) {
      const Component* component = block.Component.Get();
      Keep(block.LastTaggedComment(), component ? component->FileName.FullPath() : std::string());
    });
  }
  void AddFromFile(VBProject& project) {
    const std::string file = project.CommentFile.FullPath();
    ForEachCommentedElement(project, [&](CodeElement& element) {
      if (const auto* made = std::as_const(element).TaggedCommentsField(); !made || !made->IfAny())
        return;
      OnDemand<TaggedComments>* comments = element.TaggedCommentsField();
      for (std::size_t i = 1; i <= (*comments)->Count(); ++i) {
        const std::shared_ptr<TaggedComment> comment = (*comments)->Share(i);
        const Component* component = element.OwnComponent();
        // What has a line is documentation in source.
        Keep(comment, comment->SourceLine > 0 && component
                          ? SourceFileOf(*component, element).FullPath()
                          : file);
      }
    });
  }
  const std::vector<FoundComment>& All() const { return mFound; }

 private:
  void Keep(const std::shared_ptr<TaggedComment>& comment, const std::string& file) {
    if (comment && mKnown.insert(comment.get()).second) mFound.push_back({comment, file});
  }

  std::vector<FoundComment> mFound;
  std::set<const TaggedComment*> mKnown;
};

void WriteAsText(std::ostream& out, const FoundComment& found, ShownPaths& paths) {
  const TaggedComment& comment = *found.Comment;
  const CodeElement* element = comment.CodeElement.Get();
  out << Shown(paths.Place(found.File, comment.SourceLine)) << ": " << Shown(comment.TagIdentifier);
  if (!comment.Qualifier.empty()) out << ' ' << Shown(comment.Qualifier);
  out << " -> " << (element ? Shown(element->QualifiedName()) : "unplaced") << ": "
      << Shown(comment.Text) << '\n';
}

void WriteAsJson(JsonLines& json, const UniqueNames& names, ProjectSources& sources,
                 const FoundComment& found) {
  const TaggedComment& comment = *found.Comment;
  const CodeElement* element = comment.CodeElement.Get();
  json.Begin();
  json.Text("TagIdentifier", comment.TagIdentifier);
  json.Text("Qualifier", comment.Qualifier);
  json.Text("Text", comment.Text);
  json.Place(found.File, comment.SourceLine,
             sources.ColumnOf(found.File, comment.SourceLine, comment.TagIdentifier));
  json.Writer().Key("CodeElement");
  if (element)
    json.Writer().String(names.Of(*element));
  else
    json.Writer().Null();
  json.End();
}

// One list, whatever number of projects it comes from.
class ListWriter {
 public:
  ListWriter(const CommentsArguments& arguments, std::ostream& out)
      : mArguments(arguments),
        mOut(out),
        mJson(out, "comments", arguments.Common, arguments.Json) {}
  void Write(const VBProject& project, const Gatherer& comments) {
    if (mArguments.Json) mNames.Add(Describe(project));
    ProjectSources sources(project);
    for (const FoundComment& found : comments.All()) {
      if (mArguments.UnplacedOnly && found.Comment->CodeElement) continue;
      if (mArguments.Json)
        WriteAsJson(mJson, mNames, sources, found);
      else
        WriteAsText(mOut, found, mPaths);
    }
  }

 private:
  const CommentsArguments& mArguments;
  std::ostream& mOut;
  JsonLines mJson;
  UniqueNames mNames;
  ShownPaths mPaths;
};

int RunComments(const CommentsArguments& arguments, const Streams& streams) {
  int code = exDone;
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    std::map<const VBProject*, Gatherer> gathered;
    const auto watch = [&](VBProject& project) { (gathered[&project] = {}).Watch(project); };
    if (arguments.AsCommentFile) {
      CommentFileOfSeveral file;
      code = ForEachProject(
          arguments.File, arguments.Common, streams, [&](VBProject& project) { file.Add(project); },
          LoadDepth::Modules, watch);
      return file.Write(out);
    }
    ListWriter list(arguments, out);
    const auto write = [&](VBProject& project) {
      Gatherer& comments = gathered[&project];
      comments.AddFromFile(project);
      list.Write(project, comments);
      gathered.erase(&project);
    };
    code =
        ForEachProject(arguments.File, arguments.Common, streams, write, LoadDepth::Modules, watch);
  });
  return code;
}

}  // namespace

void AddCommentsCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("comments", "Every tagged comment and where it was applied");
  const auto arguments = std::make_shared<CommentsArguments>();
  AddInputs(*command, arguments->File);
  command->add_flag("--unplaced", arguments->UnplacedOnly, "Only those that found no element");
  auto* asFile = command->add_flag("--as-comment-file", arguments->AsCommentFile,
                                   "As a comment file (XML), to be applied by --comment-file");
  command->add_flag("--json", arguments->Json, "One JSON object a line")->excludes(asFile);
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunComments(*arguments, streams); };
  });
}

}  // namespace vendrel::cli

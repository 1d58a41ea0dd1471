#include <memory>
#include <set>

#include "cli/Commands.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/Session.h"
#include "comments/CommentFile.h"
#include "model/Block.h"
#include "output/Json.h"

namespace vendrel::cli {
namespace {

struct CommentsArguments {
  CommonOptions Common;
  std::string File;
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
      OnDemand<TaggedComments>* comments = element.TaggedCommentsField();
      if (!comments || !comments->IfAny()) return;
      for (std::size_t i = 1; i <= (*comments)->Count(); ++i) Keep((*comments)->Share(i), file);
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

std::string OnOneLine(std::string text) {
  for (char& c : text)
    if (c == '\n' || c == '\r') c = ' ';
  return text;
}

void WriteAsText(std::ostream& out, const FoundComment& found, ShownPaths& paths) {
  const TaggedComment& comment = *found.Comment;
  const CodeElement* element = comment.CodeElement.Get();
  out << paths.Place(found.File, comment.SourceLine) << ": " << comment.TagIdentifier;
  if (!comment.Qualifier.empty()) out << ' ' << comment.Qualifier;
  out << " -> " << (element ? element->QualifiedName() : "unplaced") << ": "
      << OnOneLine(comment.Text) << '\n';
}

void WriteAsJson(JsonWriter& json, const FoundComment& found) {
  const TaggedComment& comment = *found.Comment;
  const CodeElement* element = comment.CodeElement.Get();
  json.BeginObject();
  const auto member = [&](std::string_view name, std::string_view text) {
    json.Key(name);
    json.String(text);
  };
  member("TagIdentifier", comment.TagIdentifier);
  member("Qualifier", comment.Qualifier);
  member("Text", comment.Text);
  member("File", found.File);
  json.Key("SourceLine");
  json.Number(comment.SourceLine);
  json.Key("CodeElement");
  if (element)
    json.String(element->QualifiedName());
  else
    json.Null();
  json.EndObject();
}

void WriteList(std::ostream& out, const Gatherer& comments, const CommentsArguments& arguments) {
  ShownPaths paths;
  JsonWriter json(out);
  if (arguments.Json) json.BeginArray();
  for (const FoundComment& found : comments.All()) {
    if (arguments.UnplacedOnly && found.Comment->CodeElement) continue;
    if (arguments.Json)
      WriteAsJson(json, found);
    else
      WriteAsText(out, found, paths);
  }
  if (!arguments.Json) return;
  json.EndArray();
  json.NewLine();
}

int RunComments(const CommentsArguments& arguments, const Streams& streams) {
  Gatherer comments;
  const auto project = LoadInput(arguments.File, arguments.Common, streams, LoadDepth::Modules,
                                 [&](VBProject& loaded) { comments.Watch(loaded); });
  comments.AddFromFile(*project);
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    if (arguments.AsCommentFile)
      WriteCommentFile(*project, out);
    else
      WriteList(out, comments, arguments);
  });
  return ReportDiagnostics(*project, arguments.Common, streams.Err);
}

}  // namespace

void AddCommentsCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("comments", "Every tagged comment and where it was applied");
  const auto arguments = std::make_shared<CommentsArguments>();
  command->add_option("file", arguments->File, "A project or a module")->required();
  command->add_flag("--unplaced", arguments->UnplacedOnly, "Only those that found no element");
  auto* asFile = command->add_flag("--as-comment-file", arguments->AsCommentFile,
                                   "As a comment file (XML), to be applied by --comment-file");
  command->add_flag("--json", arguments->Json, "As JSON")->excludes(asFile);
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunComments(*arguments, streams); };
  });
}

}  // namespace vendrel::cli

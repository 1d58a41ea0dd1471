#include <memory>

#include "cli/ClosestName.h"
#include "cli/Commands.h"
#include "cli/Elements.h"
#include "cli/Inputs.h"
#include "cli/Results.h"
#include "core/CaseFold.h"
#include "output/CodeHtml.h"
#include "output/HtmlPage.h"

namespace vendrel::cli {
namespace {

struct HtmlArguments {
  CommonOptions Common;
  Inputs File;
  std::string Name;
  bool Page = false;
};

// The name that was asked for, or that of the file.
std::string TitleOf(const HtmlArguments& arguments) {
  if (!arguments.Name.empty()) return arguments.Name;
  const std::string shown = arguments.File.Shown();
  if (arguments.File.AreSeveral()) return shown;
  const std::string leaf = shown.substr(shown.find_last_of("/\\") + 1);
  return leaf.empty() ? shown : leaf;
}

// Colours what a name stands for, or every module.
class HtmlWriter {
 public:
  HtmlWriter(const HtmlArguments& arguments, std::ostream& out) : mArguments(arguments), mOut(out) {
    if (arguments.Page) mPage = std::make_unique<HtmlPage>(out, TitleOf(arguments));
  }

  std::size_t Count() const { return mCount; }

  void Write(VBProject& project) {
    if (mPage && mArguments.Name.empty()) WriteIndex(project);
    for (const Component& component : project.Components.Listed()) {
      if (!component.SourceForm) continue;  // a missing module has been told
      if (mArguments.Name.empty() || IsNamed(component))
        Show(component);
      else
        WriteProcedures(component);
    }
  }
  void Finish() {
    if (mPage) mPage->Finish();
  }

 private:
  void WriteIndex(const VBProject& project) {
    std::vector<std::string> names;
    for (const Component& component : project.Components.Listed())
      if (component.SourceForm) names.push_back(component.QualifiedName());
    if (names.size() > 1) mPage->AddIndex(names);
  }
  // "P~M~F", "M~F" and "F" all name the procedure F of M in P.
  bool IsNamed(const CodeElement& element) const {
    std::string name = element.QualifiedName();
    for (;;) {
      if (EqualsNoCase(name, mArguments.Name)) return true;
      const std::size_t cut = name.find('~');
      if (cut == std::string::npos) return false;
      name.erase(0, cut + 1);
    }
  }
  void WriteProcedures(const Component& component) {
    for (const Block& block : component.Blocks)
      if (!block.Name().empty() && (IsNamed(block) || EqualsNoCase(block.Name(), mArguments.Name)))
        Show(block);
  }

  void Show(const Component& component) {
    ++mCount;
    if (mPage)
      mPage->Add(ListingOf(component, mPaths.Of(component.FileName.FullPath())));
    else
      mOut << ModuleAsHTML(component, true);
  }
  void Show(const Block& block) {
    ++mCount;
    std::string text;
    if (mPage)
      mPage->Add(ListingOf(block, PlaceOf(block, mPaths), text));
    else
      mOut << block.CodeAsHTML(true, true);
  }

  const HtmlArguments& mArguments;
  std::ostream& mOut;
  std::unique_ptr<HtmlPage> mPage;
  ShownPaths mPaths;
  std::size_t mCount = 0;
};

int RunHtml(const HtmlArguments& arguments, const Streams& streams) {
  int code = exDone;
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    HtmlWriter writer(arguments, out);
    ClosestName closest(arguments.Name);
    code = ForEachProject(arguments.File, arguments.Common, streams, [&](VBProject& project) {
      closest.OfferModulesOf(project);
      writer.Write(project);
    });
    if (writer.Count() == 0)
      throw ToolError(
          Worse(code, exNo),
          arguments.File.Shown() + ": " +
              (arguments.Name.empty() ? "no module could be read"
                                      : "no module and no procedure is called '" + arguments.Name +
                                            "'" + HintOr(closest, "; names lists every name")));
    writer.Finish();
  });
  return code;
}

}  // namespace

void AddHtmlCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("html", "Source as coloured HTML");
  const auto arguments = std::make_shared<HtmlArguments>();
  AddInputsAndName(
      *command, arguments->File,
      "NAME, a module or procedure, bare or qualified (P~M~F); without it every module");
  command->add_option("name", arguments->Name,
                      "A module or procedure, bare or qualified (P~M~F); without it every module");
  command->add_flag("--page", arguments->Page, "A complete page, dark and light");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] {
      arguments->Name = TakeNameIfAny(arguments->File);
      return RunHtml(*arguments, streams);
    };
  });
}

}  // namespace vendrel::cli

// Code examples: read from the comment that marks a module or procedure as one, and handed to the
// element they are for once every module has been read.

#include <algorithm>

#include "core/CaseFold.h"
#include "core/MessageService.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "model/Block.h"
#include "model/Component.h"
#include "model/Example.h"
#include "project/VBProject.h"
#include "text/Words.h"

namespace vendrel {
namespace {

using ExampleParameters = std::vector<std::pair<std::string, std::string>>;

const std::string* Find(const ExampleParameters& parameters, std::string_view name) {
  const auto found = std::find_if(parameters.begin(), parameters.end(), [&](const auto& parameter) {
    return EqualsNoCase(parameter.first, name);
  });
  return found == parameters.end() ? nullptr : &found->second;
}

void ReportMissing(std::string_view parameter, std::string_view source) {
  const std::string text = "Missing example parameter '" + std::string(parameter) +
                           "' in the tagged comment '" + std::string(source) +
                           "'.  Processing will continue.";
  ReportBox(DiagnosticCode::MissingExampleParameter, {text}, text, "Missing parameter",
            msExclamation);
}

void ReportWrongFormat(std::string_view source) {
  const std::string text =
      "Example tagged comment format is incorrect, processing will continue : '" +
      std::string(source) + "'";
  ReportBox(DiagnosticCode::MissingExampleParameter, {text}, text, "Invalid tagged comment",
            msExclamation);
}

void ReadParameters(Example& example, std::string_view source) {
  const ExampleParameters parameters = GetParameters(source);
  if (const std::string* key = Find(parameters, "key")) example.Key = *key;
  if (const std::string* related = Find(parameters, "for"))
    example.RelatedElement = *related;
  else
    ReportMissing("for", source);
  if (const std::string* caption = Find(parameters, "caption"))
    example.Caption = *caption;
  else
    ReportMissing("caption", source);
  if (const std::string* inLine = Find(parameters, "InLine"))
    example.InLine = EqualsNoCase(*inLine, "True");
  const std::string* language = Find(parameters, "Language");
  example.Language = language ? *language : "Visual Basic";
  if (const std::string* page = Find(parameters, "template")) example.Template = *page;
}

}  // namespace

void Example::Load(std::string_view Source) try {
  try {
    ReadParameters(*this, Source);
  } catch (const std::exception&) {
    ReportWrongFormat(Source);
  }
}
VENDREL_CONTEXT(Source, *this)

void Example::SetRelatedItem(CodeElement* item) {
  mRelatedItem = item;
  mDescription = item ? item->Description() : std::string();
}

vendrel::TaggedComments* Example::TaggedComments() const {
  CodeElement* item = mRelatedItem.Get();
  OnDemand<vendrel::TaggedComments>* comments = item ? item->TaggedCommentsField() : nullptr;
  return comments ? &**comments : nullptr;
}

void VBProject::ResolveExamples() try {
  const Workspace::Use use(Workspace());
  if (!Examples.IfAny()) return;
  OnDemand<vendrel::Examples> waiting = std::move(Examples);
  Examples.Renew();
  for (std::size_t i = 1; i <= waiting->Count(); ++i) {
    const std::shared_ptr<Example> example = waiting->Share(i);
    const CodeElement* item = example->RelatedItem();
    if (item && item->TaggedDescriptionField())
      example->mDescription = item->TaggedDescriptionField()->str();
    CodeElement* target = GetObjectByName(example->RelatedElement);
    // A target that takes no examples drops the example.
    OnDemand<vendrel::Examples>* examples = target ? target->ExamplesField() : &Examples;
    if (examples) (*examples)->Add(example);
  }
}
VENDREL_CONTEXT(*this)

}  // namespace vendrel

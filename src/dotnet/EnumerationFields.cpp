// Enumerations as types with fields, and comments that move to namespaces.

#include "comments/TagDefinitions.h"
#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "dotnet/SourceScan.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

constexpr std::string_view kNamespaceScope = "FZ.Net:Namespace";

void AddCopies(const VBProject& project, const TaggedComments* from, OnDemand<TaggedComments>& to) {
  if (!from) return;
  for (const TaggedComment& comment : *from) project.AddTaggedComment(*to, comment.Clone(), false);
}

}  // namespace

void TurnEnumerationIntoFields(Component& component, std::string_view underlying) try {
  VBProject* project = component.VBProject();
  const std::shared_ptr<Enumeration> read = component.Enumerations.Share(std::size_t{1});
  if (!read || !project) return;
  const bool keeps = project->Reading.NetEnumerations;
  const TaggedComments* comments = read->TaggedComments.IfAny();
  component.TaggedDescription = read->TaggedDescription;
  if (!keeps || !read->UnTaggedDescription.empty())
    component.UnTaggedDescription = read->UnTaggedDescription;
  AddCopies(*project, comments, component.TaggedComments);
  const std::string type =
      keeps && !underlying.empty() ? std::string(DotNetType(underlying)) : "System.Int32";
  for (const EnumMember& member : read->Members()) {
    const auto field = component.netCreateField(
        member.Name, type, keeps ? std::string_view("PUBLIC") : read->Access.view(), true, true, {},
        true);
    field->TaggedDescription = member.TaggedDescription;
    field->UnTaggedDescription = member.UnTaggedDescription;
    field->SetSourceLine(member.SourceLine());
    if (keeps) {
      field->Value =
          member.ValueAsWritten.empty() ? member.Value.view() : member.ValueAsWritten.view();
      AddCopies(*project, member.TaggedComments.IfAny(), field->TaggedComments);
    } else {
      AddCopies(*project, comments, field->TaggedComments);
    }
  }
  component.Enumerations.Clear();
}
VENDREL_CONTEXT(component)

void TakeNamespaceComments(Component& from, Namespace& space) try {
  VBProject* project = from.VBProject();
  TaggedComments* waiting = from.TaggedCommentBuffer.IfAny();
  if (!waiting || !project) return;
  for (std::size_t i = 1; i <= waiting->Count(); ++i) {
    const std::shared_ptr<TaggedComment> comment = waiting->Share(i);
    const TaggedCommentDef* definition = comment->TaggedCommentDef();
    if (!definition || !ContainsNoCaseAscii(definition->Scope, kNamespaceScope)) continue;
    if (definition->IsDescription) {
      std::string text = space.TaggedDescription.str();
      int wrap = definition->WrapType;
      project->AppendDescription(text, comment->Text, wrap);
      space.TaggedDescription = text;
    } else {
      project->AddTaggedComment(*space.TaggedComments, comment, false);
    }
  }
  from.TaggedCommentBuffer.Renew();
}
VENDREL_CONTEXT(from)

}  // namespace vendrel

#include "comments/AppendDescription.h"

#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "model/Block.h"
#include "model/Component.h"
#include "project/VBProject.h"

namespace vendrel {

std::string& AppendDescription(std::string& Description, std::string& NewText, int& WrapType) {
  // A text that is its own continuation: the views below must not move under the append.
  if (&Description == &NewText) return AppendDescription(Description, NewText, int(WrapType));
  WrapTypeEnum wrap = static_cast<WrapTypeEnum>(WrapType);
  std::string_view appended = NewText;
  AppendDescription(Description, appended, wrap, State().CurrentLanguageVersion);
  if (appended.size() != NewText.size() || appended != NewText) NewText = std::string(appended);
  WrapType = wrap;
  return Description;
}

std::string& AppendDescription(std::string& Description, std::string_view NewText, int WrapType) {
  WrapTypeEnum wrap = static_cast<WrapTypeEnum>(WrapType);
  const bool ownText = NewText.data() >= Description.data() &&
                       NewText.data() <= Description.data() + Description.size();
  if (!ownText) return AppendDescription(Description, NewText, wrap);
  const std::string copy(NewText);
  return AppendDescription(Description, std::string_view(copy), wrap);
}

void AddObjectDescription(CodeElement& obj, std::string_view Text, bool IsTagged) {
  LateText* field = IsTagged ? obj.TaggedDescriptionField() : obj.UnTaggedDescriptionField();
  if (field) AppendDescription(field->Edit(), Text, wrapLineBreak);
}

void AddObjectDescription(CodeElement& obj, std::string_view Text, LanguageVersionEnum language) {
  WrapTypeEnum wrap = wrapLineBreak;
  if (LateText* field = obj.UnTaggedDescriptionField())
    AppendDescription(field->Edit(), Text, wrap, language);
}

std::string MergedTaggedDescription(std::string_view TaggedDescription,
                                    const TaggedComments& comments, std::string_view TagID,
                                    bool OnlyUseIfBlank, bool Overwrite) {
  std::string result(TaggedDescription);
  if (OnlyUseIfBlank && !result.empty()) return result;
  std::string merged;
  for (const TaggedComment& comment : comments)
    if (EqualsNoCase(comment.TagIdentifier, TagID))
      AppendDescription(merged, comment.Text, wrapSpace);
  if (merged.empty()) return result;
  if (Overwrite) return merged;
  return AppendDescription(merged, TaggedDescription, wrapSpace);
}

std::string& VBProject::AppendDescription(std::string& Description, std::string& NewText,
                                          int& WrapType) const {
  return vendrel::AppendDescription(Description, NewText, WrapType);
}

}  // namespace vendrel

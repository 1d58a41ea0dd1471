// The properties of a control, read anew from its description when they are asked for.

#include "model/ControlProperty.h"

#include <algorithm>
#include <optional>

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "intake/CompanionFile.h"
#include "model/Component.h"
#include "services/SourceText.h"
#include "text/Masking.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// The text between the quotation marks of a value; nothing if there is more to it.
std::optional<std::string> QuotedText(std::string_view value) {
  if (value.size() < 2 || !value.starts_with('"') || !value.ends_with('"')) return std::nullopt;
  value = value.substr(1, value.size() - 2);
  std::string text;
  while (!value.empty()) {
    const std::size_t quote = value.find('"');
    text.append(value.substr(0, quote));
    if (quote == std::string_view::npos) break;
    if (!value.substr(quote + 1).starts_with('"')) return std::nullopt;
    text += '"';
    value.remove_prefix(quote + 2);
  }
  return text;
}

// Reads the lines of one control; those of the controls in it are stepped over by their spans.
class PropertyReader {
 public:
  PropertyReader(const Component& component, const VBControl& control)
      : mControl(control),
        mText(component.SourceForm->Text),
        mEnds(component.SourceForm->LineEnds.Form),
        mCompanion(component),
        mTexts(component.Options().Reading.CompanionTexts) {}

  std::vector<ControlProperty> Read() {
    GoTo(mControl.Span.Begin, mControl.SourceLine());
    NextLine();  // its `Begin`
    while (Offset() < mControl.Span.End && !mRest.empty()) {
      const std::size_t offset = Offset();
      const std::string_view line = Trim(NextLine());
      if (!line.starts_with("Begin ") || !StepOver(offset)) TakeLine(line);
    }
    return std::move(mProperties);
  }

 private:
  std::size_t Offset() const { return mText.size() - mRest.size(); }

  void GoTo(std::size_t offset, std::int32_t line) {
    mRest = mText.substr(std::min(offset, mText.size()));
    mLine = line - 1;
  }

  std::string_view NextLine() {
    ++mLine;
    return vendrel::TakeLine(mRest, mEnds);
  }

  // Goes behind the control in this one whose description begins at `offset`. Controls stand in the
  // order of the text, unless someone amended them.
  bool StepOver(std::size_t offset) {
    for (; mChild <= mControl.VBControls.Count(); ++mChild) {
      const VBControl& child = *mControl.VBControls.Item(mChild);
      if (child.Span.Begin > offset) break;
      if (child.Span.Begin < offset || child.Span.End <= offset) continue;
      GoTo(child.Span.End, child.Span.EndLine);
      NextLine();
      return true;
    }
    return SkipUnknown();
  }

  // A control that was taken out of the tree; inside a property group the line is any other.
  bool SkipUnknown() {
    if (mDepth > 0) return false;
    for (int open = 1; open > 0 && Offset() < mControl.Span.End;) {
      const std::string_view line = Trim(NextLine());
      if (line.starts_with("Begin ")) ++open;
      if (line == "End") --open;
    }
    return true;
  }

  void TakeLine(std::string_view line) {
    if (line.starts_with("BeginProperty ")) {
      std::string_view classId = TrimLeft(line.substr(line.find(' ')));
      const std::string_view name = TakeField(classId, ' ');
      Add(name, Trim(classId), ControlValue::Group);
      ++mDepth;
    } else if (line == "EndProperty") {
      if (mDepth > 0) --mDepth;
    } else if (const std::size_t equals = line.find('='); equals != std::string_view::npos) {
      std::string_view value = Trim(line.substr(equals + 1));
      if (const std::size_t comment = InStrEx(1, value, "'"); comment > 0)
        value = TrimRight(value.substr(0, comment - 1));
      TakeValue(Trim(line.substr(0, equals)), value);
    }
  }

  void TakeValue(std::string_view name, std::string_view value) {
    if (const auto place = CompanionPlaceOf(value))
      TakePlace(*place, Add(name, value, ControlValue::Companion));
    else if (const auto text = QuotedText(value))
      Add(name, *text, ControlValue::Text);
    else
      Add(name, value, ControlValue::Plain);
  }

  // Puts what stands in the companion file in the place of what names it.
  void TakePlace(const CompanionPlace& place, ControlProperty& property) {
    if (!mTexts) return;
    if (HoldsText(place, mControl.ProgID, property.Name)) {
      auto text = mCompanion.Text(place);
      if (!text) return;
      property.Value = std::move(*text);
      property.Kind = ControlValue::Text;
    } else if (property.Name == "List" || property.Name == "ItemData") {
      auto items = mCompanion.List(place);
      if (!items) return;
      property.Items = std::move(*items);
      property.Kind = ControlValue::List;
    }
  }

  ControlProperty& Add(std::string_view name, std::string_view value, ControlValue kind) {
    ControlProperty& added = mProperties.emplace_back();
    added.Name = name;
    added.Value = value;
    added.Kind = kind;
    added.Depth = mDepth;
    added.SourceLine = mLine;
    return added;
  }

  const VBControl& mControl;
  const std::string_view mText;
  const LineEnds::Kind mEnds;
  CompanionFile mCompanion;
  const bool mTexts;
  std::string_view mRest;
  std::int32_t mLine = 0;
  std::int32_t mDepth = 0;
  std::size_t mChild = 1;
  std::vector<ControlProperty> mProperties;
};

}  // namespace

std::vector<ControlProperty> VBControl::ControlProperties() const try {
  const vendrel::Component* component = Component.Get();
  if (!component || !component->SourceForm || Span.End == 0) return {};
  if (!component->Options().Reading.ControlProperties) return {};
  return PropertyReader(*component, *this).Read();
}
VENDREL_CONTEXT(*this)

std::string_view ControlValueName(ControlValue kind) {
  switch (kind) {
    case ControlValue::Text: return "text";
    case ControlValue::List: return "list";
    case ControlValue::Companion: return "companion";
    case ControlValue::Group: return "group";
    default: return "plain";
  }
}

}  // namespace vendrel

#include "output/Dump.h"

#include <vector>

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "model/CodeElement.h"
#include "model/VBControl.h"
#include "output/Json.h"
#include "text/CodeLines.h"

namespace vendrel {
namespace {

constexpr std::string_view kRootText = "Z:\\root";

// An element of which some properties have been written.
struct Frame {
  ElementRef Element;
  std::size_t Property = 0;
  // Within a collection: its elements written so far, and all of them.
  std::size_t Done = 0;
  std::size_t Count = 0;
  bool InArray = false;
};

class Dumper {
 public:
  Dumper(std::ostream& out, const DumpOptions& options)
      : mJson(out, options.Indented), mOptions(options) {}

  void Run(ElementRef root) {
    Open(root);
    while (!mStack.empty()) Step();
    mJson.NewLine();
  }

 private:
  void Open(ElementRef element) {
    mJson.BeginObject();
    mJson.Key("Class");
    mJson.String(element.Class->Name);
    mStack.push_back({element});
  }

  // One child or one property of the innermost element.
  void Step() {
    Frame& frame = mStack.back();
    if (frame.Done < frame.Count) return OpenNextChild(frame);
    if (frame.InArray) mJson.EndArray();
    frame.InArray = false;
    if (frame.Property == frame.Element.Class->Properties.size()) {
      if (mOptions.ControlProperties && frame.Element.Class->Kind == ElementKind::VBControl)
        WriteControlProperties(*static_cast<const VBControl*>(frame.Element.Object));
      mJson.EndObject();
      mStack.pop_back();
      return;
    }
    Write(frame, frame.Element.Class->Properties[frame.Property++]);
  }

  void OpenNextChild(Frame& frame) {
    const PropertyDescription& property = frame.Element.Class->Properties[frame.Property - 1];
    const ElementRef child = property.At(frame.Element.Object, ++frame.Done);
    if (child) Open(child);  // the frame may move
  }

  bool Wanted(const PropertyDescription& property) const {
    switch (property.Kind) {
      case PropertyKind::Identity: return mOptions.Identity;
      case PropertyKind::Source: return mOptions.Lines;
      default: return mOptions.SourceLines || property.Name != "SourceLine";
    }
  }

  void Write(Frame& frame, const PropertyDescription& property) {
    if (!Wanted(property)) return;
    if (property.Count) return StartChildren(frame, property);
    property.Read(frame.Element.Object, mValue);
    if ((!mOptions.Empty || property.IsRare) && IsEmpty(property.Shape)) return;
    mJson.Key(property.Name);
    WriteValue(property.Shape);
  }

  void StartChildren(Frame& frame, const PropertyDescription& property) {
    frame.Done = 0;
    frame.Count = property.Count(frame.Element.Object);
    if (frame.Count == 0 && (!mOptions.Empty || property.IsRare)) return;
    mJson.Key(property.Name);
    frame.InArray = property.Shape == PropertyShape::Elements;
    if (frame.InArray)
      mJson.BeginArray();
    else if (frame.Count == 0)
      mJson.Null();
  }

  bool IsEmpty(PropertyShape shape) const {
    switch (shape) {
      case PropertyShape::Text:
      case PropertyShape::Path: return mValue.Text.empty();
      case PropertyShape::Number: return mValue.Number == 0;
      case PropertyShape::Truth: return !mValue.Truth;
      case PropertyShape::Texts: return mValue.Texts.empty();
      case PropertyShape::Link: return !mValue.Link;
      default: return LineCount() == 0;
    }
  }

  std::int32_t LineCount() const {
    const CodeLines* lines = mValue.Lines;
    return lines && !lines->Unloaded() ? lines->Count() : 0;
  }

  void WriteValue(PropertyShape shape) {
    switch (shape) {
      case PropertyShape::Text: return mJson.String(mValue.Text);
      case PropertyShape::Path: return WritePath(mValue.Text);
      case PropertyShape::Number: return mJson.Number(mValue.Number);
      case PropertyShape::Truth: return mJson.Truth(mValue.Truth);
      case PropertyShape::Texts: return WriteTexts();
      case PropertyShape::Link:
        return mValue.Link ? mJson.String(mValue.Link->QualifiedName()) : mJson.Null();
      case PropertyShape::Lines: return WriteLines();
      case PropertyShape::Element:
      case PropertyShape::Elements: return;  // written by the steps
    }
  }

  void WritePath(std::string_view path) {
    const std::string& root = mOptions.Root;
    const bool below = !root.empty() && StartsWithNoCaseAscii(path, root) &&
                       (path.size() == root.size() || path[root.size()] == '\\');
    if (!below) return mJson.String(path);
    mJson.String(std::string(kRootText).append(path.substr(root.size())));
  }

  void WriteControlProperties(const VBControl& control) {
    mJson.Key("Properties");
    DumpControlProperties(mJson, control.ControlProperties());
  }

  void WriteTexts() {
    mJson.BeginArray();
    for (const std::string& text : mValue.Texts) mJson.String(text);
    mJson.EndArray();
  }

  void WriteLines() {
    mJson.BeginArray();
    for (std::int32_t i = 1; i <= LineCount(); ++i) {
      mJson.BeginObject();
      DumpLineMembers(mJson, mValue.Lines->Item(i));
      mJson.EndObject();
    }
    mJson.EndArray();
  }

  JsonWriter mJson;
  const DumpOptions& mOptions;
  std::vector<Frame> mStack;
  PropertyValue mValue;
};

}  // namespace

void DumpLineMembers(JsonWriter& json, const CodeLine& line) {
  const auto text = [&](std::string_view name, std::string_view value) {
    json.Key(name);
    json.String(value);
  };
  const auto truth = [&](std::string_view name, bool value) {
    json.Key(name);
    json.Truth(value);
  };
  const auto number = [&](std::string_view name, std::int64_t value) {
    json.Key(name);
    json.Number(value);
  };
  number("LineType", line.LineType);
  text("LineTypeName", LineTypeName(line.LineType));
  truth("Continued", line.Continued);
  truth("Continuation", line.Continuation);
  text("Text", line.Text);
  text("StatementPart", line.StatementPart);
  text("CommentPart", line.CommentPart);
  number("LineID", line.LineID);
  truth("MoreLines", line.MoreLines);
  text("Remainder", line.Remainder);
  truth("NotInSource", line.NotInSource);
  number("EventIndex", line.EventIndex);
}

void Dump(std::ostream& out, ElementRef element, const DumpOptions& options) try {
  if (element) Dumper(out, options).Run(element);
}
VENDREL_CONTEXT()

}  // namespace vendrel

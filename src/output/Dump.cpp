#include "output/Dump.h"

#include <unordered_map>
#include <vector>

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "model/CodeElement.h"
#include "model/VBControl.h"
#include "output/Json.h"
#include "output/Places.h"
#include "output/UniqueNames.h"
#include "services/FileSystemObject.h"
#include "text/CodeLines.h"

namespace vendrel {
namespace {

constexpr std::string_view kRootText = "Z:\\root";

struct LeftOut {
  std::string_view Property, Why;
};

// Hidden properties that no dump shows.
constexpr std::string_view kAround = "the objects around it tell";
constexpr std::string_view kPassing = "a state on the way";
constexpr LeftOut kLeftOut[] = {
    {"Component", kAround},        {"VBProject", kAround},     {"VBProjectGroup", kAround},
    {"Parent", kAround},           {"ParentProject", kAround}, {"Enumeration", kAround},
    {"Procedure", kAround},        {"CancelLoad", kPassing},   {"CommentBuffer", kPassing},
    {"CurrentBlock", kPassing},    {"LastElement", kPassing},  {"LastError", kPassing},
    {"PersistSource", kPassing},   {"Silent", kPassing},       {"VMCommentBuffer", kPassing},
    {"CompletelyLoaded", kPassing}};

// Properties of a class that a dump asks for by name.
struct Handles {
  const PropertyDescription* Name = nullptr;
  explicit Handles(const ClassDescription& description) {
    for (const PropertyDescription& property : description.AllProperties)
      if (property.Name == "Name" && property.Shape == PropertyShape::Text) Name = &property;
  }
};

// An element of which some properties have been written.
struct Frame {
  ElementRef Element;
  std::size_t Property = 0;
  // Within a collection: its elements written so far, and all of them.
  std::size_t Done = 0;
  std::size_t Count = 0;
  bool InArray = false;
  std::string Name = {};
  SourcePlace Place = {};
};

class Dumper {
 public:
  Dumper(std::ostream& out, const DumpOptions& options)
      : mJson(out, options.Indented), mOptions(options) {}

  void Run(ElementRef root) {
    if (!mOptions.Names) mOwnNames.Add(root);
    Open(root);
    while (!mStack.empty()) Step();
    mJson.NewLine();
  }

 private:
  void Open(ElementRef element) {
    Frame frame{element};
    const CodeElement* named = AsCodeElement(element);
    if (named) {
      frame.Name = Names().Of(*named);
      frame.Place = PlaceOf(*named);
    }
    if (!mStack.empty()) Inherit(frame, mStack.back());
    mJson.BeginObject();
    if (mStack.empty() && !mOptions.Tool.empty()) WriteFormat();
    mJson.Key("Class");
    mJson.String(element.Class->Name);
    mJson.Key("UniqueName");
    mJson.String(frame.Name);
    if (mOptions.Places) WritePlace(frame);
    mStack.push_back(std::move(frame));
  }

  void WriteFormat() {
    mJson.Key("FormatVersion");
    mJson.Number(kJsonFormat);
    mJson.Key("Tool");
    mJson.String(mOptions.Tool);
  }

  // What has no name or place of its own has that of what it stands in.
  static void Inherit(Frame& frame, const Frame& around) {
    if (frame.Name.empty()) {
      frame.Name = around.Name;
      frame.Name.append("/").append(around.Element.Class->AllProperties[around.Property - 1].Name);
      if (around.InArray) frame.Name.append("/").append(std::to_string(around.Done));
    }
    if (!frame.Place.Component && !frame.Place.VBProject) frame.Place = around.Place;
  }

  const UniqueNames& Names() const { return mOptions.Names ? *mOptions.Names : mOwnNames; }

  void WritePlace(const Frame& frame) {
    mJson.Key("File");
    mJson.String(FileOf(frame.Place));
    mJson.Key("Line");
    mJson.Number(frame.Place.Line);
    mJson.Key("Column");
    const PropertyDescription* name = HandlesOf(*frame.Element.Class).Name;
    mNameOfElement.Text = {};
    if (name) name->Read(frame.Element.Object, mNameOfElement);
    mJson.Number(mColumns.Of(frame.Place, mNameOfElement.Text));
  }

  const Handles& HandlesOf(const ClassDescription& description) {
    return mHandles.try_emplace(&description, description).first->second;
  }

  const std::string& FileOf(const SourcePlace& place) {
    const void* key = place.Component ? static_cast<const void*>(place.Component)
                                      : static_cast<const void*>(place.VBProject);
    const auto [file, isNew] = mFiles.try_emplace(key);
    if (isNew) file->second = ShownFile(place.File(), mOptions.NativeRoot);
    return file->second;
  }

  // One child or one property of the innermost element.
  void Step() {
    Frame& frame = mStack.back();
    if (frame.Done < frame.Count) return OpenNextChild(frame);
    if (frame.InArray) mJson.EndArray();
    frame.InArray = false;
    if (frame.Property == frame.Element.Class->AllProperties.size()) {
      if (mOptions.ControlProperties && frame.Element.Class->Kind == ElementKind::VBControl)
        WriteControlProperties(*static_cast<const VBControl*>(frame.Element.Object));
      DumpFurtherMembers(mJson, frame.Element, Names());
      mJson.EndObject();
      mStack.pop_back();
      return;
    }
    Write(frame, frame.Element.Class->AllProperties[frame.Property++]);
  }

  void OpenNextChild(Frame& frame) {
    const PropertyDescription& property = frame.Element.Class->AllProperties[frame.Property - 1];
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

  // What is hidden from comparisons is shown where it says something.
  bool WantsEmpty(const Frame& frame, const PropertyDescription& property) const {
    return mOptions.Empty && !property.IsRare &&
           !IsHidden(*frame.Element.Class, frame.Property - 1);
  }

  void Write(Frame& frame, const PropertyDescription& property) {
    if (!Wanted(property) || !WhyNotDumped(*frame.Element.Class, frame.Property - 1).empty())
      return;
    if (property.Count) return StartChildren(frame, property);
    property.Read(frame.Element.Object, mValue);
    if (!WantsEmpty(frame, property) && IsEmpty(property.Shape)) return;
    mJson.Key(property.Name);
    WriteValue(property.Shape);
    if (property.Names.empty()) return;
    mJson.Key(std::string(property.Name) + "Name");
    const EnumName* word = FindName(property.Names, mValue.Number);
    mJson.String(word ? word->Name : std::string_view());
  }

  void StartChildren(Frame& frame, const PropertyDescription& property) {
    frame.Done = frame.Count = 0;
    const std::size_t count = property.Count(frame.Element.Object);
    if (count == 0 && !WantsEmpty(frame, property)) return;
    mJson.Key(property.Name);
    if (!OwnsElements(property)) return WriteNames(frame, property, count);
    frame.Count = count;
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
        return mValue.Link ? mJson.String(Names().Of(*mValue.Link)) : mJson.Null();
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

  // Elements that stand elsewhere.
  void WriteNames(const Frame& frame, const PropertyDescription& property, std::size_t count) {
    mJson.BeginArray();
    for (std::size_t i = 1; i <= count; ++i)
      if (const CodeElement* element = AsCodeElement(property.At(frame.Element.Object, i)))
        mJson.String(Names().Of(*element));
    mJson.EndArray();
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
    const SourcePlace& place = mStack.back().Place;
    for (std::int32_t i = 1; i <= LineCount(); ++i) {
      mJson.BeginObject();
      if (mOptions.Places) {
        mJson.Key("Line");
        mJson.Number(mColumns.LineOf(place, *mValue.Lines, i));
      }
      DumpLineMembers(mJson, mValue.Lines->Item(i));
      mJson.EndObject();
    }
    mJson.EndArray();
  }

  JsonWriter mJson;
  const DumpOptions& mOptions;
  std::vector<Frame> mStack;
  PropertyValue mValue, mNameOfElement;
  UniqueNames mOwnNames;
  SourceColumns mColumns;
  std::unordered_map<const ClassDescription*, Handles> mHandles;
  /// Files by the module or project whose they are.
  std::unordered_map<const void*, std::string> mFiles;
};

}  // namespace

bool IsHidden(const ClassDescription& description, std::size_t index) {
  return index >= description.Properties.size();
}

bool OwnsElements(const PropertyDescription& property) {
  return property.Count && property.Kind != PropertyKind::Derived;
}

std::string_view WhyNotDumped(const ClassDescription& description, std::size_t index) {
  if (!IsHidden(description, index)) return {};
  for (const LeftOut& entry : kLeftOut)
    if (entry.Property == description.AllProperties[index].Name) return entry.Why;
  return {};
}

std::string ShownFile(const std::string& windowsPath, std::string_view nativeRoot) {
  std::string native = FileSystemObject(windowsPath).NativePath();
  if (native.empty()) return windowsPath;
  const bool below = !nativeRoot.empty() && native.size() > nativeRoot.size() &&
                     native.starts_with(nativeRoot) && native[nativeRoot.size()] == '/';
  return below ? native.substr(nativeRoot.size() + 1) : native;
}

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

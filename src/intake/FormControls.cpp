#include "intake/FormControls.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/LineIntake.h"
#include "services/FileSource.h"
#include "services/SourceText.h"
#include "text/Masking.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// A caption in a companion file runs on until a byte that may never come.
constexpr std::size_t kLongestCaption = 64 * 1024;
constexpr unsigned char kCaptionEnd = 235;

// Whether a value refers into the companion file: "file":offset, with the colon behind the quotes.
bool IsQuotedReference(std::string_view value) {
  if (!value.starts_with('"')) return false;
  const std::size_t close = value.find('"', 1);
  return close != std::string_view::npos && value.substr(close + 1).starts_with(':');
}

// A number of a description may have an exponent: "1.00110e5".
std::int32_t FormNumber(std::string_view text) {
  double number = 0;
  const bool hasExponent =
      text.find('e') != std::string_view::npos || text.find('E') != std::string_view::npos;
  if (!hasExponent) return NumericValue(text);
  const auto error = std::from_chars(text.data(), text.data() + text.size(), number).ec;
  const bool fits = number > -2147483649.0 && number < 2147483648.0;
  return error == std::errc() && fits ? static_cast<std::int32_t>(number) : NumericValue(text);
}

// The properties of which a control keeps something; any other is read when it is asked for. Their
// first letters are those that `TakeLine` looks for.
bool IsTaken(std::string_view property) {
  constexpr std::string_view kTaken[] = {"Caption", "Text", "Left", "Top", "Index"};
  return std::find(std::begin(kTaken), std::end(kTaken), property) != std::end(kTaken);
}

std::size_t HexValue(std::string_view text) {
  std::size_t value = 0;
  text = Trim(text);
  std::from_chars(text.data(), text.data() + text.size(), value, 16);
  return value;
}

}  // namespace

ControlReader::ControlReader(Component& component, Block& block, ModuleIntake& intake)
    : mComponent(component),
      mBlock(block),
      mIntake(intake),
      mRules(intake.Reading),
      mMayBePlain(intake.TakesPlainLines && intake.Language.Language() == lvVisualBasic5or6 &&
                  block.CodeLines.IfAny()),
      mTakesGlances(mMayBePlain && component.FileName.Source()->LineEnds.AreAlike()),
      mCompanion(component) {}

std::shared_ptr<VBControl> ControlReader::Read(std::string_view beginLine) try {
  mLine = beginLine;
  Open(beginLine);
  while (!mOpen.empty() && !mComponent.FileName.AtEnd()) TakeLine(Trim(NextLine()));
  if (!mOpen.empty()) Report(DiagnosticCode::ControlTreeOpen, {mOpen.back().Control->Name});
  while (!mOpen.empty()) Close(false);
  return mRoot;
}
VENDREL_CONTEXT_AT(LineReached(), beginLine, trace::Me(mComponent))

// Every line of the description stays part of the source. Most are plain, and go the short way of
// plain lines (vb6/PlainLines.h).
std::string_view ControlReader::NextLine() {
  ++mIntake.PhysicalLine;
  mIntake.StatementLine = mIntake.PhysicalLine;
  ++mComponent.LinesAlreadyRead;
  FileSystemObject& file = mComponent.FileName;
  std::optional<PlainLine> plain;
  GlancedLine glanced;
  if (mTakesGlances && GlanceAtLine(file.Rest(), glanced)) {
    mLine = glanced.Line;
    file.Skip(glanced.Bytes);
    plain = PlainLineOf(mLine, glanced.Glance, mRules, mPlainBuffer);
  } else {
    mLine = file.NextLine();
    if (mMayBePlain) plain = PlainLineOf(mLine, mRules, mPlainBuffer);
  }
  if (plain) {
    mBlock.CodeLines->AppendPlain(mLine, plain->Type);
    return mLine;
  }
  ParsedLine line;
  mIntake.Classifier.PartLines = false;
  mIntake.Classifier.First(mLine, line);
  StoreLine(mBlock, line);
  return mLine;
}

// 0-based place of a line in the text of the module.
std::uint32_t ControlReader::OffsetOf(std::string_view line) const {
  return mIntake.InText(line) ? static_cast<std::uint32_t>(line.data() - mIntake.Text->data()) : 0;
}

void ControlReader::Open(std::string_view beginLine) {
  OpenControl open;
  open.Control = std::make_shared<VBControl>();
  WordCursor words(Trim(beginLine));
  std::string_view word;
  words.Next(word);
  if (words.Next(word)) open.Control->ProgID = word;
  if (words.Next(word)) open.Control->Name = word;
  open.Control->Component = &mComponent;
  open.Control->SetSourceLine(mIntake.PhysicalLine);
  open.Control->Span.Begin = OffsetOf(mLine);
  if (!mOpen.empty()) open.Control->Parent = mOpen.back().Control.get();
  mOpen.push_back(std::move(open));
}

// By its first letter, which is that of nothing of import in most lines.
void ControlReader::TakeLine(std::string_view line) try {
  switch (line.empty() ? '\0' : line.front()) {
    case 'E':
      if (line == "End") Close(true);
      return;
    case 'B':
      if (line.starts_with("Begin "))
        Open(line);
      else if (line.starts_with("BeginProperty "))
        SkipProperty();
      return;
    case 'C':
    case 'I':
    case 'L':
    case 'T':
      if (line.find('=') != std::string_view::npos) TakeProperty(line);
      return;
    default: return;
  }
}
VENDREL_CONTEXT_AT(LineReached(), line, trace::Local("OpenControls", mOpen.size()),
                   trace::Me(mComponent))

void ControlReader::Close(bool atEndLine) {
  OpenControl closed = std::move(mOpen.back());
  mOpen.pop_back();
  VBControl& control = *closed.Control;
  KeepEnd(control, atEndLine);
  if (atEndLine && closed.Indexed) {
    const std::string number = mIntake.Reading.ControlIndexes
                                   ? std::to_string(control.Index)
                                   : std::to_string(closed.CaptionPosition);
    control.Name = control.Name + "(" + number + ")";
  }
  if (mOpen.empty()) {
    mRoot = std::move(closed.Control);
    return;
  }
  const std::string key = control.ShortName();
  mOpen.back().Control->VBControls.Add(closed.Control, key);
  mComponent.AllVBControls.Add(std::move(closed.Control), key);
}

void ControlReader::KeepEnd(VBControl& control, bool atEndLine) const {
  const std::size_t size = mIntake.Text ? mIntake.Text->size() : 0;
  control.Span.End = atEndLine ? OffsetOf(mLine) : static_cast<std::uint32_t>(size);
  control.Span.EndLine = mIntake.PhysicalLine + (atEndLine ? 0 : 1);
}

void ControlReader::SkipProperty() {
  while (!mComponent.FileName.AtEnd() && Trim(NextLine()) != "EndProperty") {
  }
}

void ControlReader::TakeProperty(std::string_view line) {
  const std::size_t equals = line.find('=');
  const std::string_view name = Trim(line.substr(0, equals));
  if (!IsTaken(name)) return;
  std::string_view value = Trim(line.substr(equals + 1));
  const bool mayHoldComment = value.find('\'') != std::string_view::npos;
  if (const std::size_t comment = mayHoldComment ? InStrEx(1, value, "'") : 0; comment > 0)
    value = TrimRight(value.substr(0, comment - 1));
  OpenControl& open = mOpen.back();
  VBControl& control = *open.Control;
  if (name == "Caption") return TakeCaption(value);
  if (name == "Text" && TakeCompanionText(name, value, control.Text)) return;
  if (value.find('"') != std::string_view::npos) value = StripQuotes(value);
  if (name == "Left") {
    control.x = FormNumber(value);
  } else if (name == "Top") {
    control.y = FormNumber(value);
  } else if (name == "Text") {
    control.Text = value;
  } else if (name == "Index") {
    control.Index = NumericValue(value);
    if (control.Property("Index").empty())
      control.Properties_.emplace_back(
          "Index", std::to_string(open.CaptionPosition) + ":" + std::string(value));
    open.Indexed = true;
  }
}

// False if the value is no place in the companion file, or its texts are read by the old rule. What
// is no text by its kind is not missed.
bool ControlReader::TakeCompanionText(std::string_view property, std::string_view value,
                                      SharedText& text) {
  if (!mIntake.Reading.CompanionTexts) return false;
  const auto place = CompanionPlaceOf(value);
  if (!place) return false;
  const VBControl& control = *mOpen.back().Control;
  text.clear();
  if (!HoldsText(*place, control.ProgID, property)) return true;
  auto read = mCompanion.Text(*place);
  if (!read) Report(DiagnosticCode::CompanionUnreadable, {control.Name, value});
  if (read) text = *read;
  return true;
}

void ControlReader::TakeCaption(std::string_view value) {
  if (TakeCompanionText("Caption", value, mOpen.back().Control->Caption)) return;
  if (value.starts_with('$')) value.remove_prefix(1);
  const bool reference = mIntake.Reading.QuotedCompanions
                             ? IsQuotedReference(value)
                             : value.find(':') != std::string_view::npos;
  if (!reference) {
    mOpen.back().Control->Caption = StripQuotes(value);
    return;
  }
  mOpen.back().Control->Caption.clear();
  if (!ReadCompanion(value))
    Report(DiagnosticCode::CompanionUnreadable, {mOpen.back().Control->Name, value});
}

// A caption in the binary companion: characters behind two zero bytes, up to the end mark. False if
// the file could not be read.
bool ControlReader::ReadCompanion(std::string_view value) {
  const std::size_t colon = mIntake.Reading.QuotedCompanions ? value.rfind(':') : value.find(':');
  const std::string_view file = StripQuotes(Trim(value.substr(0, colon)));
  const std::size_t offset = HexValue(value.substr(colon + 1));
  if (file.empty()) return false;
  if (mCompanionName != file) {
    mCompanionName = file;
    mCompanionBytes.clear();
    FileSystemObject companion(mComponent.FileName.FolderPath() + std::string(file));
    try {
      if (companion.Exists()) mCompanionBytes = ReadWholeFile(companion.NativePath());
    } catch (const VendrelError&) {
      return false;  // told by the caller, with the control
    }
  }
  if (mCompanionBytes.empty()) return false;
  OpenControl& open = mOpen.back();
  std::string bytes;
  int zeros = 0;
  std::size_t at = offset;
  for (; at < mCompanionBytes.size() && bytes.size() < kLongestCaption; ++at) {
    const auto byte = static_cast<unsigned char>(mCompanionBytes[at]);
    if (byte == 0) {
      ++zeros;
    } else if (zeros >= 2) {
      if (byte == kCaptionEnd) break;
      bytes += static_cast<char>(byte);
    }
  }
  open.CaptionPosition = at;
  open.Control->Caption = SourceText::Decode(bytes, FileOptions::Current().Page())->Text;
  return true;
}

}  // namespace vendrel

#include "dotnet/FileLayout.h"

#include <algorithm>

#include "services/SourceText.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

const CodeLines* LinesIn(const Block& block) {
  const CodeLines* lines = block.CodeLines.IfAny();
  return lines && !lines->Unloaded() ? lines : nullptr;
}

// The block of the line that closes a type.
bool ClosesType(const Block& block) {
  const CodeLines* lines = LinesIn(block);
  return block.Name().empty() && lines && lines->Count() > 0 && lines->LineType(1) == END_CLASS;
}

}  // namespace

FileLayout::FileLayout(ProjectFile& file)
    : mText(file.SourceForm ? &file.SourceForm->Text : nullptr), mScanned(file.Scanned()) {
  for (const auto& part : mScanned.Parts) Add(*part);
  for (const auto& block : mScanned.Delegates) Add(*block);
  const auto isEarlier = [](const PlacedLine& a, const PlacedLine& b) { return a.Place < b.Place; };
  if (!std::is_sorted(mLines.begin(), mLines.end(), isEarlier))
    std::stable_sort(mLines.begin(), mLines.end(), isEarlier);
}

const std::string* FileLayout::NewText(const PlacedLine& line) const {
  const auto found = mNewTexts.find({line.Lines, line.Index});
  return found == mNewTexts.end() ? nullptr : &found->second;
}

// What closes the type comes last, so that nothing is put behind it.
void FileLayout::Add(const Component& component) {
  mBehind = 0;
  mHere = true;
  NoteNewName(component);
  for (const bool closing : {false, true})
    for (const Block& block : component.Blocks.Listed())
      if (ClosesType(block) == closing) Add(block);
}

void FileLayout::Add(const Block& block) {
  if (const CodeLines* lines = LinesIn(block)) Add(*lines);
  if (const Blocks* overloads = block.OverloadBlocks().IfAny())
    for (const Block& overload : *overloads) Add(overload);
}

void FileLayout::Add(const CodeLines& lines) {
  if (lines.SourceText()) mHere = lines.SourceText() == mText;
  if (!mHere) return;  // in another part of the type
  std::size_t place = FirstPlace(lines);
  for (std::int32_t i = 1; i <= lines.Count(); ++i) {
    if (lines.NotInSource(i)) continue;
    if (const auto offset = lines.SourceOffset(i)) place = *offset;
    mLines.push_back({place, &lines, i});
    mBehind = std::max(mBehind, place);
  }
}

// Where the first line that was read stands; a list without one goes behind what is in front.
std::size_t FileLayout::FirstPlace(const CodeLines& lines) const {
  for (std::int32_t i = 1; i <= lines.Count(); ++i)
    if (const auto offset = lines.SourceOffset(i)) return *offset;
  return mBehind;
}

// A type that was given another name has it in the line that opens it, too.
void FileLayout::NoteNewName(const Component& component) {
  const auto read = mScanned.NamesRead.find(&component);
  if (read == mScanned.NamesRead.end() || read->second == component.Name) return;
  const std::string name = component.Name.substr(component.Name.rfind('.') + 1);
  const std::string plain = name.substr(0, name.find('`'));
  if (plain.empty()) return;
  for (const Block& block : component.Blocks.Listed()) {
    const CodeLines* lines = LinesIn(block);
    if (!lines || !block.Name().empty() || ClosesType(block)) continue;
    for (std::int32_t i = 1; i <= lines->Count(); ++i) {
      const std::string_view text = lines->LineView(i);
      const auto [at, size] = PlaceOfTypeName(text);
      const std::string_view written = text.substr(at, size);
      if (size == 0 || written == "_") continue;
      mNewTexts[{lines, i}] = std::string(text.substr(0, at))
                                  .append(written.front() == '[' ? "[" + plain + "]" : plain)
                                  .append(text.substr(at + size));
      break;
    }
  }
}

}  // namespace vendrel

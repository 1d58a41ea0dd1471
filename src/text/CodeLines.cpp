#include "text/CodeLines.h"

#include <algorithm>
#include <bit>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "text/Like.h"
#include "text/StartLine.h"

namespace vendrel {
namespace {
constexpr std::uint32_t kFirstGroups = 2;  // an everyday procedure; the rest is given back

unsigned FlagIf(bool holds, unsigned flag) { return holds ? flag : 0; }

bool IsPart(std::string_view text, const std::string& whole) {
  return text.data() >= whole.data() && text.data() + text.size() <= whole.data() + whole.size();
}

// A statement whose lines the language joins without an underscore.
std::string JoinedStatements(const CodeLines& lines, std::int32_t first, std::int32_t index,
                             LineClassifier& classifier) {
  std::string joined;
  ParsedLine parsed;
  for (std::int32_t i = first; i < index; ++i) {
    classifier.First(lines.LineView(i), parsed);
    std::string_view statement = Trim(parsed.StatementPart);
    if (parsed.Continued && statement.ends_with('_')) statement.remove_suffix(1);
    joined.append(Trim(statement)).append(" ");
  }
  return joined.append(Trim(lines.LineView(index)));
}
}  // namespace

CodeLines::CodeLines(std::shared_ptr<const std::string> text, LanguageVersionEnum language,
                     const ClassifierRules& rules)
    : mText(std::move(text)), mRules(rules), mLanguage(static_cast<std::uint8_t>(language)) {}

CodeLines::Line CodeLines::At(std::int32_t index) const {
  if (mUnloaded) throw VendrelError(errObjectNotSet, "the source lines have been unloaded");
  const auto line = static_cast<std::uint32_t>(index - 1);
  if (index < 1 || line >= Size())
    throw VendrelError(errSubscript, "line " + std::to_string(index));
  return IsWide() ? mOdd->Lines[line] : Unpacked(line);
}

CodeLines::Line CodeLines::Unpacked(std::uint32_t line) const {
  const std::uint32_t* group = &mWords[WordOf(line / kGroup * kGroup) - 1];
  std::uint32_t offset = group[0];
  const std::uint32_t inGroup = line % kGroup;
  for (std::uint32_t i = 0; i < inGroup; ++i)
    offset += std::bit_cast<Step>(group[1 + i]).Length + mGap;
  const auto step = std::bit_cast<Step>(group[1 + inGroup]);
  return {offset, step.Length, step.Type, step.Flags};
}

// For another line: whole groups, whose number doubles.
void CodeLines::MakeRoom() {
  const std::uint32_t groups = (mCount + kGroup - 1) / kGroup;
  const std::uint32_t room = std::max(kFirstGroups, std::bit_ceil(mCount / kGroup + 1));
  if (!mShrunk && groups > 0 && std::max(kFirstGroups, std::bit_ceil(groups)) == room) return;
  std::unique_ptr<std::uint32_t[]> words(new std::uint32_t[room * (kGroup + 1)]);
  std::copy_n(mWords.get(), WordsOf(mCount), words.get());
  mWords = std::move(words);
  mShrunk = false;
}

// Whether the line goes into the groups: it begins where the one above it lets expect.
bool CodeLines::Steps(const Line& line) {
  if (line.Length == kFar || line.Flags & (kWhole | kHeld)) return false;
  if (mCount == 0) return true;
  if (mGap == kNoGap) {
    const std::uint32_t gap = line.Offset - mNext;
    if (line.Offset < mNext || gap >= kNoGap) return false;
    mGap = static_cast<std::uint8_t>(gap);
    mNext = line.Offset;
  }
  return line.Offset == mNext;
}

void CodeLines::PushOther(const Line& line) {
  if (IsWide() || !Steps(line)) {
    Widen().push_back(line);
    return;
  }
  MakeRoom();
  const std::uint32_t word = WordOf(mCount);
  if (mCount++ % kGroup == 0) mWords[word - 1] = line.Offset;
  mWords[word] = std::bit_cast<std::uint32_t>(Step{line.Length, line.Type, line.Flags});
  mNext = line.Offset + line.Length + (mGap == kNoGap ? 0 : mGap);
}

// All lines with their places, from now on.
std::vector<CodeLines::Line>& CodeLines::Widen() {
  OddLines& odd = Odd();
  if (odd.HasLines) return odd.Lines;
  odd.Lines.reserve(mCount + kGroup);
  for (std::uint32_t i = 0; i < mCount; ++i) odd.Lines.push_back(Unpacked(i));
  odd.HasLines = true;
  mWords.reset();
  mCount = 0;
  mNext = kNowhere;
  return odd.Lines;
}

void CodeLines::Shrink() {
  if (IsWide()) return mOdd->Lines.shrink_to_fit();
  const std::uint32_t used = WordsOf(mCount);
  if (mShrunk || used == 0) return;
  std::unique_ptr<std::uint32_t[]> words(new std::uint32_t[used]);
  std::copy_n(mWords.get(), used, words.get());
  mWords = std::move(words);
  mShrunk = true;
}

std::string_view CodeLines::Definition() const {
  if (mDefinitionLength > 0) return std::string_view(*mText).substr(mDefinition, mDefinitionLength);
  return mOdd ? std::string_view(mOdd->Definition) : std::string_view();
}

void CodeLines::SetDefinition(std::string_view text) {
  const bool isPart = !text.empty() && text.size() < kFar && InText(text);
  mDefinition = isPart ? static_cast<std::uint32_t>(text.data() - mText->data()) : 0;
  mDefinitionLength = isPart ? static_cast<std::uint16_t>(text.size()) : 0;
  if (mOdd || (!isPart && !text.empty())) Odd().Definition = isPart ? std::string_view() : text;
}

std::int32_t CodeLines::Count() const {
  if (mUnloaded) throw VendrelError(errObjectNotSet, "the source lines have been unloaded");
  return static_cast<std::int32_t>(Size());
}

CodeLine CodeLines::Item(std::int32_t Key) const try {
  const Line line = At(Key);
  if (line.Flags & kWhole) return mOdd->Whole[PlaceOf(line).Offset];
  return Classified(Key);
}
VENDREL_CONTEXT(Key)

// The record again from the text. The stored type is put over the judged one: the intake may have
// changed it (tagged comments, members of an enumeration).
CodeLine CodeLines::Classified(std::int32_t index) const {
  const Line line = At(index);
  LineClassifier classifier = ClassifierFor(At(FirstOf(index)).Flags);
  ParsedLine parsed;
  std::string logical;
  if (line.Flags & kContinuation) {
    logical = LogicalText(index);
    classifier.First(logical, parsed);
  } else {
    classifier.SplitAtEveryColon = line.Flags & kEveryColon;
    classifier.First(LineView(index), parsed);
  }
  CodeLine record = parsed.Record();
  record.Text = LineView(index);
  record.LineType = static_cast<LineTypeEnum>(line.Type);
  record.Continued = line.Flags & kContinued;
  record.Continuation = line.Flags & kContinuation;
  record.NotInSource = line.Flags & kNotInSource;
  record.EventIndex = PlaceOf(line).EventIndex;
  return record;
}

LineClassifier CodeLines::ClassifierFor(std::uint8_t flags) const {
  LineClassifier classifier(static_cast<LanguageVersionEnum>(mLanguage), mRules);
  classifier.RaiseLineNumber = false;
  classifier.PartLines = !(flags & kUnparted);
  classifier.MayBeginWithLabel = !(flags & (kNotInSource | kNoLabel));
  return classifier;
}

// The first physical line of the statement that a line belongs to.
std::int32_t CodeLines::FirstOf(std::int32_t index) const {
  while (index > 1 && (At(index).Flags & kContinuation)) --index;
  return index;
}

// The statement up to this line, as the classifier saw it: joined from its first physical line on.
std::string CodeLines::LogicalText(std::int32_t index) const {
  const std::int32_t first = FirstOf(index);
  LineClassifier classifier = ClassifierFor(At(first).Flags);
  ParsedLine parsed;
  classifier.First(LineView(first), parsed);
  if (!parsed.Continued) return JoinedStatements(*this, first, index, classifier);
  for (std::int32_t i = first + 1; i < index && parsed.Continued; ++i)
    classifier.Next(LineView(i), parsed);
  return JoinContinuation(classifier.LogicalText(), LineView(index));
}

std::string_view CodeLines::LineView(std::int32_t Index) const {
  const Line line = At(Index);
  const Place place = PlaceOf(line);
  if (line.Flags & kWhole) return mOdd->Whole[place.Offset].Text;
  if (line.Flags & kHeld) {
    const HeldText& held = mOdd->Held[place.Offset];
    return std::string_view(*held.Of).substr(held.Offset, place.Length);
  }
  return std::string_view(*mText).substr(place.Offset, place.Length);
}

std::string CodeLines::LineText(std::int32_t Index) const { return std::string(LineView(Index)); }

void CodeLines::SetLineText(std::int32_t Index, std::string_view text) try {
  CodeLine record = Item(Index);
  record.Text = text;
  Line& line = Widen()[static_cast<std::size_t>(Index - 1)];
  const Place place = PlaceOf(line);
  const std::uint32_t began = line.Flags & kWhole  ? place.Length
                              : line.Flags & kHeld ? 0
                                                   : place.Offset + 1;
  line = KeepWhole(std::move(record), began);
}
VENDREL_CONTEXT(Index, text)

std::optional<std::size_t> CodeLines::SourceOffset(std::int32_t Index) const {
  const Line line = At(Index);
  if (line.Flags & kHeld) return std::nullopt;
  const Place place = PlaceOf(line);
  if (!(line.Flags & kWhole)) return place.Offset;
  if (place.Length == 0) return std::nullopt;
  return place.Length - 1;
}

bool CodeLines::AsRead(std::int32_t Index) const { return !(At(Index).Flags & (kWhole | kHeld)); }

bool CodeLines::Continued(std::int32_t Index) const { return At(Index).Flags & kContinued; }
bool CodeLines::Continuation(std::int32_t Index) const { return At(Index).Flags & kContinuation; }
bool CodeLines::NotInSource(std::int32_t Index) const { return At(Index).Flags & kNotInSource; }
std::int16_t CodeLines::EventIndex(std::int32_t Index) const {
  return PlaceOf(At(Index)).EventIndex;
}
LineTypeEnum CodeLines::LineType(std::int32_t Index) const {
  return static_cast<LineTypeEnum>(At(Index).Type);
}

std::string CodeLines::EventName(std::int32_t Index) const {
  return std::string(GetName(LineView(Index)));
}

std::vector<CodeLine> CodeLines::LinesOfType(LineTypeEnum type) const try {
  std::vector<CodeLine> found;
  for (std::int32_t i = 1; i <= Count(); ++i)
    if (LineType(i) == type) found.push_back(Item(i));
  return found;
}
VENDREL_CONTEXT(type)

std::vector<CodeLine> CodeLines::LinesMatchingPattern(std::string_view Pattern) const try {
  const std::string lowered = LowerCase(Pattern);
  std::vector<CodeLine> found;
  for (std::int32_t i = 1; i <= Count(); ++i) {
    const std::string text = LowerCase(ReplaceAll(LineView(i), "\t", "    "));
    if (Like(Trim(text), lowered)) found.push_back(Item(i));
  }
  return found;
}
VENDREL_CONTEXT(Pattern)

bool CodeLines::InText(std::string_view text) const { return mText && IsPart(text, *mText); }

CodeLines::OddLines& CodeLines::Odd() {
  if (!mOdd) mOdd = std::make_unique<OddLines>();
  return *mOdd;
}

CodeLines::Line CodeLines::Far(const Place& place, Line line) {
  std::vector<Place>& far = Odd().Far;
  line.Offset = static_cast<std::uint32_t>(far.size());
  line.Length = kFar;
  far.push_back(place);
  return line;
}

CodeLines::Line CodeLines::KeepWhole(CodeLine record, std::uint32_t began) {
  std::vector<CodeLine>& whole = Odd().Whole;
  const Place place{static_cast<std::uint32_t>(whole.size()), began, record.EventIndex};
  const Line line =
      Packed(place, record.LineType,
             FlagIf(record.Continued, kContinued) | FlagIf(record.Continuation, kContinuation) |
                 FlagIf(record.NotInSource, kNotInSource) | kWhole);
  whole.push_back(std::move(record));
  return line;
}

// The remainders of a line share one text: each kept for itself would take room by the square.
CodeLines::Line CodeLines::KeepText(const ParsedLine& line,
                                    const std::shared_ptr<const std::string>& held) {
  const std::string_view text = line.Text;
  unsigned flags = FlagIf(line.Continued, kContinued) | FlagIf(line.Continuation, kContinuation) |
                   FlagIf(line.NotInSource, kNotInSource) | FlagIf(line.EveryColon, kEveryColon) |
                   FlagIf(line.Unparted, kUnparted) | FlagIf(line.NoLabel, kNoLabel);
  Place place{0, static_cast<std::uint32_t>(text.size()), line.EventIndex};
  if (InText(text)) {
    place.Offset = static_cast<std::uint32_t>(text.data() - mText->data());
  } else {
    std::vector<HeldText>& texts = Odd().Held;
    place.Offset = static_cast<std::uint32_t>(texts.size());
    flags |= kHeld;
    texts.push_back({held, static_cast<std::uint32_t>(text.data() - held->data())});
  }
  return Packed(place, line.LineType, flags);
}

void CodeLines::AddParsed(const ParsedLine& parsed, std::int32_t before, std::int32_t after,
                          const std::shared_ptr<const std::string>& held) try {
  if (mUnloaded) throw VendrelError(errObjectNotSet, "the source lines have been unloaded");
  const bool isKept = InText(parsed.Text) || (held && IsPart(parsed.Text, *held));
  Insert(parsed.OwnText || !isKept ? KeepWhole(parsed.Record()) : KeepText(parsed, held), before,
         after);
}
VENDREL_CONTEXT(before, after)

void CodeLines::Add(const CodeLine& Item, std::int32_t Before, std::int32_t After) try {
  if (mUnloaded) throw VendrelError(errObjectNotSet, "the source lines have been unloaded");
  Insert(KeepWhole(Item), Before, After);
}
VENDREL_CONTEXT(trace::Parameter("Line", Item.Text), Before, After)

void CodeLines::Insert(const Line& line, std::int32_t before, std::int32_t after) {
  const std::int32_t place = before != 0 ? before : after;
  if (place != 0) At(place);  // raises for a position outside
  if (line.Flags & kContinuation) ++mContinuations;
  if (place == 0) return Push(line);
  std::vector<Line>& lines = Widen();
  lines.insert(lines.begin() + place - (before != 0 ? 1 : 0), line);
}

void CodeLines::Remove(std::int32_t Index) try {
  if (At(Index).Flags & kContinuation) --mContinuations;
  std::vector<Line>& lines = Widen();
  lines.erase(lines.begin() + Index - 1);
}
VENDREL_CONTEXT(Index)

void CodeLines::UnloadSourceCode() {
  if (mUnloaded) return;
  mWords.reset();
  mCount = 0;
  mDefinitionLength = 0;
  mOdd.reset();
  mText.reset();
  mUnloaded = true;
}

std::int32_t CodeLines::ContinuationCount() const {
  Count();  // raises once unloaded
  return mContinuations;
}

}  // namespace vendrel

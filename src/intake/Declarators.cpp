#include "intake/Declarators.h"

#include <algorithm>

#include "comments/AppendDescription.h"
#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "model/Component.h"
#include "model/ProjectOptions.h"
#include "text/Blanks.h"
#include "text/CodeLine.h"
#include "text/Identifiers.h"
#include "text/StartLine.h"
#include "text/StopBytes.h"
#include "text/Words.h"

namespace vendrel {

DeclaratorWords::DeclaratorWords(std::string_view statement, bool cutAtCommas, bool wholeNames)
    : mRest(statement),
      mCutAtCommas(cutAtCommas),
      mWholeNames(wholeNames && statement.find('[') != std::string_view::npos) {
  Advance();
}

std::string_view DeclaratorWords::Take() {
  const std::string_view word = mNext;
  mRest.remove_prefix(word.size());
  Advance();
  return word;
}

void DeclaratorWords::Advance() {
  mRest = TrimLeft(mRest);
  if (!mCutAtCommas) {
    mNext = mRest.substr(0, mWholeNames ? WordEnd(mRest) : mRest.find(' '));
    return;
  }
  static constexpr StopBytes kStops(" [(),");
  int depth = 0;
  std::size_t i = kStops.Next(mRest, 0);
  for (; i < mRest.size() && mRest[i] != ' '; i = kStops.Next(mRest, i + 1)) {
    if (mWholeNames && mRest[i] == '[') {
      if (const std::size_t end = BracketEnd(mRest, i); end > i) i = end - 1;
      continue;
    }
    if (mRest[i] == '(') ++depth;
    if (mRest[i] == ')') --depth;
    if (mRest[i] == ',' && depth <= 0) {
      ++i;
      break;
    }
  }
  mNext = mRest.substr(0, i);
}

DeclaratorReader::DeclaratorReader(std::string_view statement, const SourceRules& rules,
                                   bool isMember)
    : mLanguage(rules.Language),
      mSpaced(rules.Reading.BracketedNames ? SpacedOut(statement) : std::string()),
      mWords(Trim(mSpaced.empty() ? statement : mSpaced), rules.Reading.WholeDefaults,
             rules.Reading.BracketedNames),
      mWholeLists(rules.Reading.WholeDefaults),
      mWholeNames(rules.Reading.BracketedNames),
      mPlainName(isMember && rules.Reading.MemberNames) {
  mKeyword = mWords.Take();
}

std::string DeclaratorReader::Remainder() const {
  if (AtEnd()) return {};
  std::string rest(mKeyword);
  DeclaratorWords words = mWords;
  while (!words.AtEnd()) rest.append(" ").append(words.Take());
  return rest + " ";
}

void DeclaratorReader::Read(Variable& variable) {
  mSubscript.clear();
  mInSubscript = mFoundAs = mFoundType = false;
  const std::string_view name = mLanguage.ReadModifiers(mKeyword, mWords, variable, mPlainName);
  if (ReadName(variable, name)) ReadBehindName(variable);
  variable.ArraySubscript = TrimRight(mSubscript);
  if (mWholeNames && variable.TypeName.view().find('[') != std::string_view::npos)
    variable.TypeName = TypeWithoutBrackets(variable.TypeName.view());
  if (variable.TypeName.empty())
    variable.ImplicitType = true;
  else
    mLanguage.SettleTypeName(variable.TypeName);
}

// Cleans the name; false when the next declarator follows at once.
bool DeclaratorReader::ReadName(Variable& variable, std::string_view name) {
  bool more = true;
  const std::size_t behindBracket =
      mWholeNames && name.starts_with('[') ? BracketEnd(name, 0) : std::size_t{0};
  const std::size_t parenthesis = name.find('(', behindBracket);
  if (parenthesis == std::string_view::npos) {
    if (name.ends_with(',')) {
      name.remove_suffix(1);
      more = false;
    }
  } else {
    variable.IsArray = true;
    const std::string_view behind = name.substr(parenthesis + 1);
    const std::size_t close = behind.find(')');
    mSubscript = behind.substr(0, close);
    if (close == std::string_view::npos) {
      mInSubscript = true;
      if (!mSubscript.empty()) mSubscript += ' ';
    } else if (behind.ends_with(',')) {
      more = false;
    }
    name = name.substr(0, parenthesis);
  }
  variable.TypeName = TypeFromName(name);
  if (!variable.TypeName.empty()) name.remove_suffix(1);
  variable.Name = mWholeNames ? WithoutBrackets(name) : name;
  return more;
}

void DeclaratorReader::ReadBehindName(Variable& variable) {
  while (!mWords.AtEnd()) {
    const std::string_view word = mWords.Take();
    if (mWholeLists && word == "," && !mInSubscript) return;
    bool goesOn = true;
    if (mInSubscript)
      goesOn = TakeSubscriptWord(word);
    else if (mFoundAs && !mFoundType && !EqualsNoCaseAscii(word, "new"))
      goesOn = TakeTypeWord(variable, word);
    else
      goesOn = TakeOtherWord(variable, word);
    if (!goesOn) return;
  }
}

// These three give whether the declarator goes on behind the word.
bool DeclaratorReader::TakeSubscriptWord(std::string_view word) {
  const std::size_t close = word.find(')');
  if (close == std::string_view::npos) {
    mSubscript.append(word).append(" ");
    return true;
  }
  mSubscript.append(word.substr(0, close));
  mInSubscript = false;
  return !word.ends_with(',');
}

bool DeclaratorReader::TakeTypeWord(Variable& variable, std::string_view word) {
  std::string_view type = word;
  if (mLanguage.SkipArguments(type, mWords)) {
    variable.TypeName = type;
    return false;
  }
  if (type.ends_with(',')) {
    type.remove_suffix(1);
    variable.TypeName = type;
    return false;
  }
  mFoundType = true;
  if (mWholeLists && StartsWithNoCaseAscii(type, "String*")) {
    variable.TypeName = type.substr(0, 6);
    variable.FixedLengthString = true;
    return true;
  }
  variable.TypeName = type;
  if (type == "String" && mWords.Peek() == "*") variable.FixedLengthString = true;
  if (mWholeLists && EqualsNoCaseAscii(type, "String") && mWords.Peek().starts_with('*'))
    return TakeLength(variable);
  return true;
}

// "* 10, t As Long": the length ends in the comma.
bool DeclaratorReader::TakeLength(Variable& variable) {
  variable.FixedLengthString = true;
  std::string_view word = mWords.Take();
  if (word == "*") word = mWords.Take();
  return !word.ends_with(',');
}

bool DeclaratorReader::TakeOtherWord(Variable& variable, std::string_view word) {
  if (EqualsNoCaseAscii(word, "AS")) {
    mFoundAs = true;
    return true;
  }
  if (word.starts_with('\'')) {
    std::string comment(word.substr(1));
    if (!comment.empty()) comment += ' ';
    while (!mWords.AtEnd()) comment.append(mWords.Take()).append(" ");
    const ProjectOptions* options = variable.Options();
    if (!comment.empty() && options && options->UnTaggedVariables)
      AddObjectDescription(variable, comment, mLanguage.Language());
    return false;
  }
  if (word.starts_with('(') && mWholeLists && word.ends_with(')')) {
    variable.IsArray = true;
    mSubscript = word.substr(1, word.size() - 2);
    return true;
  }
  if (!word.starts_with('(') || word.ends_with(')')) {
    return !(mWholeLists && word.ends_with(','));
  }
  variable.IsArray = true;
  if (word.ends_with("),")) {
    mSubscript = word.substr(1, word.size() - 3);
    return false;
  }
  mInSubscript = true;
  if (word.size() > 1) mSubscript.append(" ").append(word.substr(1)).append(" ");
  return true;
}

void Variable::Initialise(std::string& s) try {
  const std::string statement(Trim(s));
  s.clear();
  if (statement.empty()) return;
  const ProjectOptions* options = Options();
  DeclaratorReader reader(statement, SourceRules::InForce(options));
  reader.Read(*this);
  s = reader.Remainder();
}
VENDREL_CONTEXT_AT(LineReached(), s, *this)

ConstantReader::ConstantReader(std::string_view statement, bool wholeLists)
    : mRest(Trim(statement)), mWholeLists(wholeLists) {}

std::string ConstantReader::Remainder() const {
  if (mAtEnd) return {};
  return std::string(Trim(mHeading)).append(" ").append(Trim(mRest));
}

void ConstantReader::Read(Constant& constant) {
  constant.Access = mAccess;
  ReadHead(constant);
  std::string_view name = mName;
  if (constant.TypeName.empty()) {
    constant.TypeName = TypeFromName(name);
    if (!constant.TypeName.empty()) name.remove_suffix(1);
  }
  if (name.starts_with('[')) name.remove_prefix(1);
  if (name.ends_with(']')) name.remove_suffix(1);
  constant.Name = name;
  ReadValue(constant);
}

// The word that is next: up to a blank, and where lists are read whole up to "=", which is one.
std::string_view ConstantReader::HeadWord() const {
  std::size_t end = 0;
  for (; end < mRest.size() && mRest[end] != ' '; ++end)
    if (mWholeLists && mRest[end] == '=') return mRest.substr(0, std::max<std::size_t>(end, 1));
  return mRest.substr(0, end);
}

// A word in front of the name of the first constant, which goes for all of them.
bool ConstantReader::TakeHeading(std::string_view word) {
  if (word.size() < 5 || word.size() > 7) return false;
  if (EqualsNoCaseAscii(word, "PRIVATE"))
    mAccess = "PRIVATE";
  else if (EqualsNoCaseAscii(word, "PUBLIC") || EqualsNoCaseAscii(word, "GLOBAL"))
    mAccess = "PUBLIC";
  else if (!EqualsNoCaseAscii(word, "CONST"))
    return false;
  mHeading.append(word).push_back(' ');
  return true;
}

// Heading, name and type: the words in front of "=".
void ConstantReader::ReadHead(Constant& constant) {
  bool foundAs = false;
  mName = constant.Name;
  while (!(mRest = TrimLeft(mRest)).empty()) {
    const std::string_view word = HeadWord();
    mRest.remove_prefix(word.size());
    if (word == "=") return;
    const auto is = [&](std::string_view keyword) { return EqualsNoCaseAscii(word, keyword); };
    if (foundAs) {
      const bool endsList = word.ends_with(',');
      if (constant.TypeName.empty())
        constant.TypeName = word.substr(0, word.size() - (endsList ? 1 : 0));
    } else if (is("AS")) {
      foundAs = true;
    } else if (TakeHeading(word)) {
      constant.Access = mAccess;
    } else {
      if (!mName.empty()) mName += ' ';
      mName += word;
    }
  }
}

// The words behind "=", joined by single blanks, up to a comma outside of strings.
void ConstantReader::ReadValue(Constant& constant) {
  static constexpr StopBytes kStops("\"(), ");
  bool inString = false, hasTwoBlanks = false;
  int depth = 0;
  mRest = TrimLeft(mRest);
  std::size_t end = kStops.Next(mRest, 0);
  for (; end < mRest.size(); end = kStops.Next(mRest, end + 1)) {
    const char c = mRest[end];
    if (c == '"') inString = !inString;
    if (c == '(' && !inString) ++depth;
    if (c == ')' && !inString) --depth;
    if (c == ',' && !inString && !(mWholeLists && depth > 0)) break;
    hasTwoBlanks |= c == ' ' && end > 0 && mRest[end - 1] == ' ';
  }
  std::string_view value = mRest.substr(0, end);
  std::string joined;
  if (hasTwoBlanks) value = Collapsed(value, joined);
  if (!constant.Value.empty()) value = joined = constant.Value + value;
  constant.Value = TrimRight(value);
  mAtEnd = end >= mRest.size();
  mRest.remove_prefix(mAtEnd ? end : end + 1);
}

void Constant::Initialise(std::string_view Source, std::string& Remainder) try {
  const SourceRules rules = SourceRules::InForce(Component ? &Component->Options() : nullptr);
  const CodeLine line = InitialiseCodeLine(Source, rules.Language.Language(), rules.Reading);
  mDescription = line.CommentPart;
  ConstantReader reader(line.StatementPart, rules.Reading.WholeDefaults);
  reader.Read(*this);
  Remainder = reader.Remainder();
}
VENDREL_CONTEXT_AT(LineReached(), Source, Remainder, *this)

}  // namespace vendrel

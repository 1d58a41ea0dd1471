#include "site/SourceTokens.h"

#include <algorithm>
#include <array>

#include "core/Ascii.h"
#include "site/SiteHtml.h"
#include "text/Separators.h"
#include "text/WordList.h"

namespace vendrel::site {
namespace {

// In alphabetical order.
constexpr std::string_view kClassicText =
    "AddressOf Alias And Any As Attribute Base Binary Boolean ByRef Byte ByVal Call Case Close "
    "Compare Const Currency Date Decimal Declare DefBool DefByte DefCur DefDate DefDbl DefDec "
    "DefInt DefLng DefObj DefSng DefStr DefVar Dim Do Double Each Else ElseIf Empty End EndIf Enum "
    "Eqv Erase Error Event Exit Explicit False For Friend Function Get Global GoSub GoTo If Imp "
    "Implements In Input Integer Is Let Lib Like Line Lock Long Loop LSet Me Mod Module New Next "
    "Not Nothing Null Object On Open Option Optional Or Output ParamArray Preserve Print Private "
    "Property Public Put RaiseEvent Random ReDim Rem Resume Return RSet Seek Select Set Single "
    "Static Step Stop String Sub Text Then To True Type TypeOf Unlock Until Variant Wend While "
    "With WithEvents Write Xor";
constexpr std::string_view kNetText =
    "AddHandler AddressOf Aggregate Alias And AndAlso Ansi As Assembly Async Auto Await Boolean "
    "ByRef Byte ByVal Call Case Catch CBool CByte CChar CDate CDbl CDec Char CInt Class CLng CObj "
    "Compare Const Continue CSByte CShort CSng CStr CType CUInt CULng CUShort Custom Date Decimal "
    "Declare Default Delegate Dim DirectCast Distinct Do Double Each Else ElseIf End EndIf Enum "
    "Equals Erase Error Event Exit Explicit False Finally For Friend From Function Get GetType "
    "GetXMLNamespace Global GoSub GoTo Group Handles If Implements Imports In Inherits Integer "
    "Interface Into Is IsFalse IsNot IsTrue Iterator Join Key Let Lib Like Long Loop Me Mod Module "
    "MustInherit MustOverride MyBase MyClass NameOf Namespace Narrowing New Next Not Nothing "
    "NotInheritable NotOverridable Object Of Off On Operator Option Optional Or Order OrElse Out "
    "Overloads Overridable Overrides ParamArray Partial Preserve Private Property Protected Public "
    "RaiseEvent ReadOnly ReDim REM RemoveHandler Resume Return SByte Select Set Shadows Shared "
    "Short Single Skip Static Step Stop Strict String Structure Sub SyncLock Take Then Throw To "
    "True Try TryCast TypeOf UInteger ULong Unicode Until UShort Using Variant Wend When Where "
    "While Widening With WithEvents WriteOnly Xor Yield";
constexpr auto kClassic = WordsOf<CountWords(kClassicText)>(kClassicText);
constexpr auto kNet = WordsOf<CountWords(kNetText)>(kNetText);

constexpr bool IsBefore(std::string_view a, std::string_view b) {
  for (std::size_t i = 0; i < a.size() && i < b.size(); ++i)
    if (UpperAscii(a[i]) != UpperAscii(b[i])) return UpperAscii(a[i]) < UpperAscii(b[i]);
  return a.size() < b.size();
}

template <typename Words>
constexpr bool AreInOrder(const Words& words) {
  for (std::size_t i = 1; i < std::size(words); ++i)
    if (!IsBefore(words[i - 1], words[i])) return false;
  return true;
}
static_assert(AreInOrder(kClassic) && AreInOrder(kNet));

template <typename Words>
bool Holds(const Words& words, std::string_view word) {
  return std::binary_search(std::begin(words), std::end(words), word, IsBefore);
}

// Words that belong to the language beside other words only, and are names as often: colouring them
// would be wrong more often than right.
constexpr std::string_view kShared[] = {"Text", "Key",   "Custom", "Auto", "Out",  "Take",
                                        "Skip", "Group", "Order",  "Base", "From", "Assembly"};

// The class of a kind of token; empty for none.
std::string_view ColourClass(TokenKind kind) {
  switch (kind) {
    case TokenKind::Keyword:
    case TokenKind::Directive: return "k";
    case TokenKind::Comment: return "c";
    case TokenKind::String: return "s";
    case TokenKind::Number:
    case TokenKind::Date: return "n";
    default: return {};
  }
}

// Beyond Latin, Greek and Cyrillic: a look at each character would cost more than the element.
bool MayTurn(std::string_view text) {
  for (const char c : text)
    if (static_cast<unsigned char>(c) >= 0xD6) return true;
  return false;
}

}  // namespace

void AppendCodeName(std::string& html, std::string_view name) {
  if (!MayTurn(name)) return AppendText(html, name);
  html.append("<bdi>");
  AppendText(html, name);
  html.append("</bdi>");
}

void AppendColoured(std::string& html, TokenKind kind, std::string_view text) {
  const std::string_view colour = ColourClass(kind);
  if (colour.empty())
    return kind == TokenKind::Name ? AppendCodeName(html, text) : AppendText(html, text);
  html.append("<span class=\"").append(colour).append("\">");
  AppendText(html, text);
  html.append("</span>");
}

bool IsLanguageWord(std::string_view word, bool isNet) {
  for (const std::string_view shared : kShared)
    if (EqualsNoCaseAscii(shared, word)) return false;
  return isNet ? Holds(kNet, word) : Holds(kClassic, word);
}

std::string_view AsWritten(std::string_view word, bool isNet) {
  const auto find = [&](const auto& words) {
    const auto found = std::lower_bound(std::begin(words), std::end(words), word, IsBefore);
    return found != std::end(words) && EqualsNoCaseAscii(*found, word) ? *found : word;
  };
  return isNet ? find(kNet) : find(kClassic);
}

bool SourceTokens::Next(SourceToken& token) {
  if (mAt >= mLine.size()) {
    if (mLine.empty()) mState.CommentGoesOn = false;
    return false;
  }
  const char c = mLine[mAt];
  if (mState.InString)
    token = TakeString(mAt);
  else if (mState.CommentGoesOn || c == '\'')
    token = TakeComment();
  else if (IsGap(c))
    token = Take(TokenKind::Space, std::min(mLine.find_first_not_of(" \t", mAt), mLine.size()));
  else if (c == '"' || (mIsNet && c == '$' && mLine.substr(mAt + 1).starts_with('"')))
    token = TakeString(mAt + (c == '$' ? 2 : 1));
  else if (IsDigitAscii(c) || (c == '&' && mAt + 2 < mLine.size() &&
                               std::string_view("hHoObB").find(mLine[mAt + 1]) != kNotFound &&
                               IsWordByte(mLine[mAt + 2])))
    token = TakeNumber();
  else if (IsWordByte(c))
    token = TakeWord();
  else if (c == '#')
    token = TakeHash();
  else if (c == '[' && mLine.find(']', mAt) != kNotFound)
    token = Take(TokenKind::Name, mLine.find(']', mAt) + 1);
  else
    token = Take(TokenKind::Other, mAt + 1);
  if (token.Kind == TokenKind::Space) return true;
  mBehindDot = token.Text == "." || token.Text == "!";
  const bool isLabel = token.Kind == TokenKind::Number;
  mAtStatement = token.Text == ":" || (mAtStatement && isLabel);
  return true;
}

SourceToken SourceTokens::Take(TokenKind kind, std::size_t end) {
  const std::string_view text = mLine.substr(mAt, end - mAt);
  mAt = end;
  return {kind, text};
}

SourceToken SourceTokens::TakeComment() {
  const std::string_view rest = mLine.substr(mAt);
  mState.CommentGoesOn =
      !mIsNet && rest.size() > 1 && rest.ends_with('_') && IsGap(rest[rest.size() - 2]);
  return Take(TokenKind::Comment, mLine.size());
}

// Doubled quotation marks are one. In VB.NET a string may end on a later line.
SourceToken SourceTokens::TakeString(std::size_t from) {
  mState.InString = false;
  for (std::size_t at = mLine.find('"', from); at != kNotFound; at = mLine.find('"', at + 2))
    if (!mLine.substr(at + 1).starts_with('"')) return Take(TokenKind::String, at + 1);
  mState.InString = mIsNet;
  return Take(TokenKind::String, mLine.size());
}

SourceToken SourceTokens::TakeNumber() {
  std::size_t end = mAt + 1;
  while (end < mLine.size() &&
         (IsWordByte(mLine[end]) ||
          (mLine[end] == '.' && end + 1 < mLine.size() && IsDigitAscii(mLine[end + 1]))))
    ++end;
  return Take(TokenKind::Number, end);
}

// "#If", "#12/31/1999#", or the mark of a file number.
SourceToken SourceTokens::TakeHash() {
  const std::string_view rest = mLine.substr(mAt);
  if (mAtStatement && rest.size() > 1 && IsLetterAscii(rest[1])) {
    std::size_t end = mAt + 1;
    while (end < mLine.size() && IsLetterAscii(mLine[end])) ++end;
    return Take(TokenKind::Directive, end);
  }
  const std::size_t close = rest.find('#', 1);
  const bool isDate = close != kNotFound && close < 40 &&
                      rest.substr(1, close - 1).find_first_of("/:-") != kNotFound &&
                      rest.substr(0, close).find_first_not_of("#0123456789/:- AaPpMm") == kNotFound;
  return isDate ? Take(TokenKind::Date, mAt + close + 1) : Take(TokenKind::Other, mAt + 1);
}

SourceToken SourceTokens::TakeWord() {
  std::size_t end = mAt;
  while (end < mLine.size() && IsWordByte(mLine[end])) ++end;
  const std::string_view word = mLine.substr(mAt, end - mAt);
  if (mAtStatement && EqualsNoCaseAscii(word, "Rem")) return TakeComment();
  const std::string_view behind = mLine.substr(end);
  const bool isName = mBehindDot || behind.starts_with('$') || behind.starts_with(":=");
  return Take(!isName && IsLanguageWord(word, mIsNet) ? TokenKind::Keyword : TokenKind::Name, end);
}

}  // namespace vendrel::site

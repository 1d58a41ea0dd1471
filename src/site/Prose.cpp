#include "site/Prose.h"

#include <algorithm>

#include "core/Ascii.h"
#include "site/SiteHtml.h"

namespace vendrel::site {
namespace {

constexpr std::size_t kDeepest = 24;

// A tag and the element it becomes. `Inside` names the element that it must stand in.
struct KnownTag {
  std::string_view Tag, Element;
  bool IsBlock = false;
  std::string_view Inside = {};
};
constexpr KnownTag kTags[] = {{"b", "strong"},
                              {"strong", "strong"},
                              {"i", "em"},
                              {"em", "em"},
                              {"u", "u"},
                              {"tt", "code"},
                              {"c", "code"},
                              {"sub", "sub"},
                              {"sup", "sup"},
                              {"ul", "ul", true},
                              {"ol", "ol", true},
                              {"dl", "dl", true},
                              {"table", "table", true},
                              {"li", "li", true, "list"},
                              {"dt", "dt", true, "dl"},
                              {"dd", "dd", true, "dl"},
                              {"tr", "tr", true, "table"},
                              {"td", "td", true, "tr"},
                              {"th", "th", true, "tr"}};

const KnownTag* KnownTagOf(std::string_view name) {
  for (const KnownTag& known : kTags)
    if (known.Tag == name) return &known;
  return nullptr;
}

// What holds nothing but items of its own.
bool IsHolder(std::string_view element) {
  return element == "ul" || element == "ol" || element == "dl" || element == "table" ||
         element == "tr";
}

bool IsItem(std::string_view element) {
  return element == "li" || element == "td" || element == "th" || element == "dd" ||
         element == "dt";
}

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

class ProseWriter {
 public:
  ProseWriter(std::string& html, const ProseLinks& links) : mHtml(html), mLinks(links) {}

  void Write(std::string_view text) {
    std::size_t from = 0;
    for (std::size_t at = text.find('<'); at != kNotFound; at = text.find('<', at)) {
      std::size_t behind = at;
      ProseTag tag;
      if (text.substr(at).starts_with("<![CDATA[")) {
        WriteText(text.substr(from, at - from));
        const std::size_t end = std::min(text.find("]]>", at), text.size());
        WriteRaw(text.substr(at + 9, end - at - 9));
        from = at = std::min(end + 3, text.size());
      } else if (!TakeTag(text, behind, tag) || !IsKnown(tag)) {
        ++at;
      } else {
        WriteText(text.substr(from, at - from));
        if (tag.Name == "code" && !tag.IsEnd && !tag.IsEmpty)
          behind = WriteCode(text, behind);
        else
          WriteTag(tag);
        from = at = behind;
      }
    }
    WriteText(text.substr(from));
    CloseTo(0);
  }

 private:
  static bool IsKnown(const ProseTag& tag) {
    for (const std::string_view known :
         {"crlf", "br",      "p",          "para",    "div",         "span",
          "font", "a",       "see",        "seealso", "paramref",    "typeparamref",
          "list", "item",    "listheader", "term",    "description", "code",
          "pre",  "summary", "value",      "remarks", "returns"})
      if (tag.Name == known) return true;
    return KnownTagOf(tag.Name) != nullptr;
  }

  std::string_view Holder() const {
    for (auto open = mOpen.rbegin(); open != mOpen.rend(); ++open)
      if (IsHolder(*open) || IsItem(*open)) return *open;
    return {};
  }

  void Open(std::string_view element, std::string_view attributes = {}) {
    mHtml.append("<").append(element).append(attributes).append(">");
    mOpen.push_back(element);
  }
  void CloseTo(std::size_t depth) {
    while (mOpen.size() > depth) {
      mHtml.append("</").append(mOpen.back()).append(">");
      mOpen.pop_back();
    }
  }
  // Closes the innermost element of that name, with all in it.
  void Close(std::string_view element) {
    const auto found = std::find(mOpen.rbegin(), mOpen.rend(), element);
    if (found != mOpen.rend()) CloseTo(static_cast<std::size_t>(mOpen.rend() - found) - 1);
  }
  // Text stands in a paragraph, or in an item.
  void BeginText() {
    const std::string_view holder = Holder();
    if (holder == "ul" || holder == "ol") Open("li");
    if (holder == "dl") Open("dd");
    if (holder == "table") Open("tr");
    if (holder == "table" || holder == "tr") Open("td");
    if (holder.empty() && mOpen.empty()) Open("p");
  }

  void WriteText(std::string_view text) {
    if (text.empty() || (IsBlank(text) && (mOpen.empty() || IsHolder(mOpen.back())))) return;
    std::string decoded;
    AppendDecoded(decoded, text);
    WriteRaw(decoded);
  }
  void WriteRaw(std::string_view text) {
    if (text.empty()) return;
    BeginText();
    AppendText(mHtml, ReplaceAll(text, "\r", ""));
    mLine += text.size();
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    if (last != kNotFound) mLast = text[last];
  }

  void WriteTag(const ProseTag& tag) {
    const std::string& name = tag.Name;
    if (name == "crlf") return EndLine();
    if (name == "br") return BreakLine();
    if (name == "p" || name == "para" || name == "div") return BreakParagraph();
    if (name == "a" || name == "see" || name == "seealso") return WriteLink(tag);
    if (name == "paramref" || name == "typeparamref") return WriteName(tag.Attribute("name"));
    if (name == "list") return WriteList(tag);
    if (name == "item" || name == "listheader") return WriteItem(tag);
    if (name == "term" || name == "description") return WritePart(tag);
    if (const KnownTag* known = KnownTagOf(name)) WriteKnown(tag, *known);
  }

  void BreakLine() {
    if (!mOpen.empty() && !IsHolder(mOpen.back())) mHtml.append("<br/>");
    mLine = 0;
  }
  // The end of a line of comments. Where the line was full its author wrapped it, and a reader's
  // window wraps elsewhere.
  void EndLine() {
    const bool isWrapped = mLine > 45 && std::string_view(".:;!?").find(mLast) == kNotFound;
    if (!isWrapped) return BreakLine();
    mHtml += ' ';
    mLine = 0;
  }
  void BreakParagraph() {
    if (Holder().empty())
      CloseTo(0);
    else
      BreakLine();
  }
  void WriteName(std::string_view name) {
    if (name.empty()) return;
    BeginText();
    mHtml.append("<code>").append(Text(name)).append("</code>");
  }

  void WriteLink(const ProseTag& tag) {
    if (tag.IsEnd) return Close("a");
    std::string_view target = tag.Attribute("href");
    if (target.empty()) target = tag.Attribute("cref");
    if (target.ends_with(".html") && target.find('~') != kNotFound) target.remove_suffix(5);
    std::string href = SafeAddress(target);
    if (href.empty() && !target.empty()) href = mLinks.Element(target);
    // A link within a link is none.
    if (std::find(mOpen.begin(), mOpen.end(), "a") != mOpen.end()) href.clear();
    if (tag.IsEmpty) {
      if (!tag.Attribute("langword").empty()) return WriteName(tag.Attribute("langword"));
      if (target.empty()) return;
      BeginText();
      const std::string_view shown =
          target.size() > 2 && target[1] == ':' ? target.substr(2) : target;
      if (href.empty()) return WriteName(shown);
      mHtml.append(Link(href, shown));
      return;
    }
    if (href.empty() || mOpen.size() >= kDeepest) return;
    BeginText();
    Open("a", " href=\"" + href + "\"");
  }

  void WriteList(const ProseTag& tag) {
    const std::string type = LowerAscii(tag.Attribute("type"));
    if (tag.IsEnd) {
      for (auto open = mOpen.rbegin(); open != mOpen.rend(); ++open)
        if (IsHolder(*open) && *open != "tr") return Close(*open);
      return;
    }
    BeginBlock(type == "number" ? "ol" : type == "table" ? "table" : "ul");
  }
  void BeginBlock(std::string_view element) {
    if (mOpen.size() >= kDeepest) return;
    EndInline();
    if (!mOpen.empty() && IsHolder(mOpen.back())) BeginText();
    Open(element);
  }
  // Inline elements and paragraphs do not reach into a block.
  void EndInline() {
    while (!mOpen.empty() && !IsHolder(mOpen.back()) && !IsItem(mOpen.back()))
      CloseTo(mOpen.size() - 1);
  }
  void CloseInline() {
    while (!mOpen.empty() && !IsHolder(mOpen.back())) CloseTo(mOpen.size() - 1);
  }
  void WriteItem(const ProseTag& tag) {
    if (Holder().empty()) return BreakParagraph();
    CloseInline();
    if (tag.IsEnd || tag.IsEmpty) {
      if (!mOpen.empty() && mOpen.back() == "tr") CloseTo(mOpen.size() - 1);
      return;
    }
    if (mOpen.empty()) return;
    if (mOpen.back() == "tr") CloseTo(mOpen.size() - 1);
    Open(mOpen.back() == "table" ? "tr" : mOpen.back() == "dl" ? "dd" : "li");
  }
  void WritePart(const ProseTag& tag) {
    const std::string_view holder = Holder();
    if (holder == "tr" || holder == "td") {
      if (holder == "td") Close("td");
      if (!tag.IsEnd && !tag.IsEmpty) Open("td");
    } else if (tag.Name == "term" && !tag.IsEmpty) {
      if (tag.IsEnd) return Close("strong");
      BeginText();
      if (mOpen.size() < kDeepest) Open("strong");
    } else if (!tag.IsEnd) {
      WriteRaw(" ");
    }
  }

  void WriteKnown(const ProseTag& tag, const KnownTag& known) {
    if (tag.IsEnd) {
      if (!known.IsBlock || !known.Inside.empty() || IsHolder(known.Element)) Close(known.Element);
      return;
    }
    if (tag.IsEmpty || (mOpen.size() >= kDeepest && known.Inside.empty())) return;
    if (known.Inside.empty() && known.IsBlock) return BeginBlock(known.Element);
    if (known.Inside.empty()) {
      BeginText();
      return Open(known.Element);
    }
    const std::string_view holder = HolderFor(known);
    if (holder.empty()) return BreakParagraph();
    Close(holder == "table" && known.Element == "tr" ? std::string_view("tr") : known.Element);
    if (mOpen.empty() || mOpen.back() != holder) CloseInside(holder);
    Open(known.Element);
  }
  // The open element in which an item may stand; one of an outer list does not count.
  std::string_view HolderFor(const KnownTag& known) const {
    for (auto open = mOpen.rbegin(); open != mOpen.rend(); ++open) {
      if (!IsHolder(*open)) continue;
      const bool fits =
          known.Inside == *open || (known.Inside == "list" && (*open == "ul" || *open == "ol"));
      if (fits) return *open;
      if (*open != "tr") return {};
    }
    return {};
  }
  void CloseInside(std::string_view holder) {
    while (!mOpen.empty() && mOpen.back() != holder) CloseTo(mOpen.size() - 1);
  }

  // What stands up to "</code>": of one line in its place, longer as a block.
  std::size_t WriteCode(std::string_view text, std::size_t at) {
    const std::size_t end = std::min(FindNoCaseAscii(text, "</code>", at), text.size());
    std::string_view inner = text.substr(at, end - at);
    std::string code;
    if (inner.starts_with("<![CDATA[")) {
      inner.remove_prefix(9);
      if (inner.ends_with("]]>")) inner.remove_suffix(3);
      code = inner;
    } else {
      AppendDecoded(code, ReplaceAll(inner, "<crlf>", "\n"));
    }
    const std::string_view shown = TrimLines(code);
    if (shown.find('\n') == kNotFound) {
      WriteName(shown);
    } else {
      EndInline();
      if (!mOpen.empty() && IsHolder(mOpen.back())) BeginText();
      AppendCodeBlock(mHtml, shown, true);
    }
    return std::min(end + 7, text.size());
  }
  static std::string_view TrimLines(std::string_view code) {
    while (!code.empty() && (code.back() == '\n' || code.back() == '\r' || IsGap(code.back())))
      code.remove_suffix(1);
    // Blank lines in front go, the indentation of the first line stays.
    for (std::size_t end = code.find('\n'); end != kNotFound && IsBlank(code.substr(0, end));
         end = code.find('\n'))
      code.remove_prefix(end + 1);
    return code;
  }

  std::string& mHtml;
  const ProseLinks& mLinks;
  std::vector<std::string_view> mOpen;
  /// Bytes of the line so far, and its last character.
  std::size_t mLine = 0;
  char mLast = ' ';
};

}  // namespace

void AppendProse(std::string& html, std::string_view text, const ProseLinks& links) {
  if (IsBlank(text)) return;
  const std::string shown = Shortened(text, kLongestProse);
  ProseWriter(html, links).Write(shown);
  html += '\n';
  if (shown.size() != text.size() && text.size() > kLongestProse)
    html.append("<p class=\"note\">The text goes on in the source.</p>\n");
}

}  // namespace vendrel::site

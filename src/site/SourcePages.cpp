// Source in colours, in pieces that a browser takes easily.

#include <unordered_map>

#include "core/Ascii.h"
#include "core/Utf8.h"
#include "services/SourceText.h"
#include "site/FileNames.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"
#include "site/SourceTokens.h"

namespace vendrel::site {
namespace {

// Beyond the first a page gets no more links, beyond the second no more colours: what is left of
// its piece then fits whatever it holds.
constexpr std::size_t kLinkedUpTo = 1200 << 10;
constexpr std::size_t kColouredUpTo = 1500 << 10;
constexpr std::size_t kLongestLine = 64 << 10;

std::int32_t CharactersOf(std::string_view text) {
  std::int32_t count = 0;
  for (const char c : text) count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return count;
}

class SourceWriter {
 public:
  SourceWriter(const SiteRun& run, const SourceEntry& source, std::span<const BoundName> names)
      : mRun(run), mSource(source), mNames(names), mOwn(run, source, names) {}

  void Write() {
    const std::string name = mSource.Path.substr(mSource.Path.rfind('/') + 1);
    for (std::size_t piece = 0; piece < mSource.Pieces.size(); ++piece) {
      Page page;
      page.Folder = mSource.Folder;
      page.Leaf = mSource.LeafOf(piece);
      page.Title = name;
      page.Crumbs = {
          {mSource.Project->Name, "../index.html"}, {"Source", "index.html"}, {name, ""}};
      if (piece > 0) page.Title.append(", part ").append(std::to_string(piece + 1));
      mPiece = piece;
      AppendTop(page, piece);
      AppendPiece(page.Content, piece);
      AppendPieces(page.Content, piece);
      mOwn.Append(page.Content, piece);
      mRun.Pages.Put(page);
    }
  }

 private:
  void AppendTop(Page& page, std::size_t piece) {
    std::string kind = "source of " + mSource.Project->Name;
    if (mSource.Pieces.size() > 1)
      kind.append(", part ")
          .append(std::to_string(piece + 1))
          .append(" of ")
          .append(std::to_string(mSource.Pieces.size()));
    AppendHeading(page, kind, mSource.Path);
    if (const ModuleEntry* module = mRun.Map.ModuleOf(mSource.Module))
      page.Content.append("<p class=\"path\">")
          .append(Link(HrefFrom(page.Folder, {module->Folder, "index.html"}), module->Name))
          .append(" <span>")
          .append(Text(module->Kind))
          .append("</span></p>\n");
    AppendPieces(page.Content, piece);
  }

  void AppendPieces(std::string& html, std::size_t piece) {
    if (mSource.Pieces.size() == 1) return;
    html.append("<nav class=\"pages\" aria-label=\"Parts of this file\">");
    // Of many parts those nearby, the first and the last.
    for (std::size_t i = 0; i < mSource.Pieces.size(); ++i) {
      const bool isNear = i + 6 > piece && i < piece + 6;
      if (!isNear && i > 0 && i + 1 < mSource.Pieces.size()) continue;
      const std::string lines = "from line " + std::to_string(mSource.Pieces[i].first);
      if (i == piece)
        html.append("<span aria-current=\"page\">").append(lines).append("</span> ");
      else
        html.append("<a href=\"")
            .append(mSource.LeafOf(i))
            .append("\">")
            .append(lines)
            .append("</a> ");
    }
    html.append("</nav>\n");
  }

  void AppendPiece(std::string& html, std::size_t piece) {
    const bool isLast = piece + 1 == mSource.Pieces.size();
    const auto [first, begin] = mSource.Pieces[piece];
    const std::size_t end = isLast ? mSource.Text.size() : mSource.Pieces[piece + 1].second;
    std::string_view rest = mSource.Text.substr(begin, end - begin);
    const std::int32_t folded = mSource.DesignerLines;
    std::int32_t line = first;
    const bool isFolded = line <= folded;
    if (isFolded)
      html.append("<details>\n<summary>What the designer wrote, ")
          .append(Count(static_cast<std::size_t>(folded), "line"))
          .append("</summary>\n");
    html.append("<pre class=\"source\"><code>");
    for (; !rest.empty(); ++line) {
      if (isFolded && line == folded + 1)
        html.append("</code></pre>\n</details>\n<pre class=\"source\"><code>");
      AppendLine(html, TakeLine(rest), line);
    }
    html.append("</code></pre>\n");
    if (isFolded && line <= folded + 1) html.append("</details>\n");
  }

  void AppendLine(std::string& html, std::string_view text, std::int32_t line) {
    const std::string number = std::to_string(line);
    html.append("<span class=\"l\" id=\"L").append(number).append("\"><a href=\"#L");
    html.append(number).append("\">").append(number).append("</a>");
    std::string_view shown = text;
    if (shown.size() > kLongestLine) {
      std::size_t size = kLongestLine;
      while ((static_cast<unsigned char>(shown[size]) & 0xC0) == 0x80) --size;
      shown = shown.substr(0, size);
    }
    if (shown.empty()) mState.CommentGoesOn = false;
    std::int32_t column = 1;
    SourceToken token;
    for (SourceTokens tokens(shown, mSource.Project->IsNet(), mState); tokens.Next(token);) {
      AppendToken(html, token, line, column);
      column += CharactersOf(token.Text);
    }
    if (shown.size() < text.size())
      html.append("<span class=\"note\"> … ")
          .append(Number(text.size() - shown.size()))
          .append(" more bytes</span>");
    html.append("</span>\n");
  }

  void AppendToken(std::string& html, const SourceToken& token, std::int32_t line,
                   std::int32_t column) {
    const bool mayLink = html.size() < kLinkedUpTo &&
                         (token.Kind == TokenKind::Name || token.Kind == TokenKind::Keyword);
    if (mayLink)
      if (const BoundName* name = NameAt(line, column)) {
        const std::string href = HrefOf(*name);
        if (!href.empty()) {
          html.append("<a class=\"u\" href=\"").append(href).append("\">");
          AppendCodeName(html, token.Text);
          html.append("</a>");
          return;
        }
      }
    if (html.size() > kColouredUpTo) return AppendText(html, token.Text);
    AppendColoured(html, token.Kind, token.Text);
  }

  // The name that begins at that place; null if none is bound. Places are asked for in their order.
  const BoundName* NameAt(std::int32_t line, std::int32_t column) {
    while (mAt < mNames.size() &&
           (mNames[mAt].Line < line || (mNames[mAt].Line == line && mNames[mAt].Column < column)))
      ++mAt;
    const bool isHere =
        mAt < mNames.size() && mNames[mAt].Line == line && mNames[mAt].Column == column;
    return isHere ? &mNames[mAt] : nullptr;
  }

  // A name leads to its page; what has none, a local variable, to its line, and its declaration to
  // the list of its uses.
  std::string HrefOf(const BoundName& name) {
    const auto [entry, isNew] = mHrefs.try_emplace(name.Element);
    if (isNew) {
      const Address page = mRun.Map.Of(name.Element);
      const Address address = page ? page : mRun.Map.SourceOf(*name.Element);
      entry->second.IsLine = !page;
      if (address) entry->second.Href = HrefFrom(mSource.Folder, address);
    }
    if (!entry->second.IsLine) return entry->second.Href;
    if (name.IsDeclaration) return mOwn.HrefOf(*name.Element, mPiece);
    // What leads to its own line leads nowhere.
    if (entry->second.Href.ends_with("#L" + std::to_string(name.Line))) return {};
    return entry->second.Href;
  }

  struct Target {
    std::string Href;
    bool IsLine = false;
  };

  const SiteRun& mRun;
  const SourceEntry& mSource;
  std::span<const BoundName> mNames;
  std::size_t mAt = 0;
  FileNames mOwn;
  std::size_t mPiece = 0;
  TokenState mState;
  std::unordered_map<const CodeElement*, Target> mHrefs;
};

}  // namespace

void WriteSourceList(const SiteRun& run, const ProjectEntry& project) {
  if (project.Sources.empty()) return;
  Page page;
  page.Folder = project.Folder + "source/";
  page.Leaf = "index.html";
  page.Title = "Source of " + project.Name;
  page.Crumbs = {{project.Name, "../index.html"}, {"Source", ""}};
  AppendHeading(page, project.Name, "Source files");
  PagedList list(run, std::move(page), "<ul class=\"rows\">\n", "</ul>\n");
  for (const SourceEntry& source : project.Sources)
    list.Add("<li>" + Link(source.LeafOf(0), source.Path) + " <span class=\"of\">" +
             Count(static_cast<std::size_t>(source.Lines), "line") + "</span></li>\n");
  list.Finish();
}

void WriteSource(const SiteRun& run, const SourceEntry& source, std::span<const BoundName> names) {
  SourceWriter(run, source, names).Write();
}

}  // namespace vendrel::site

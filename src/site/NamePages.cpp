// All names by letter, what search looks through, and what nobody has described.

#include <algorithm>
#include <deque>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Utf8.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

constexpr std::size_t kSearchPiece = 400 << 10;

/// A name of the site. There may be millions: texts are those of the map, or of the pool.
struct NameRow {
  std::string_view Key;  // folded
  std::string_view Name;
  std::string_view Kind;
  std::string_view Leaf;
  const ProjectEntry* Project = nullptr;
  /// Null for projects and namespaces.
  const ModuleEntry* Module = nullptr;
  std::string_view Folder() const { return Module ? Module->Folder : Project->Folder; }
};

/// All names, by their keys.
class NameRows {
 public:
  explicit NameRows(const SiteRun& run) : mRun(run) {
    for (const ProjectEntry& project : run.Map.Projects()) {
      mProject = &project;
      mModule = nullptr;
      Add(project.Name, project.Kind, "index.html");
      for (const NamespaceEntry& space : project.Namespaces)
        Add(space.Name, "namespace", space.Leaf);
      for (const ModuleEntry& module : project.Modules) AddAll(module);
    }
    std::stable_sort(mRows.begin(), mRows.end(),
                     [](const NameRow& a, const NameRow& b) { return a.Key < b.Key; });
  }
  NameRows(const NameRows&) = delete;
  NameRows& operator=(const NameRows&) = delete;
  const std::deque<NameRow>& All() const { return mRows; }

 private:
  void Add(std::string_view name, std::string_view kind, std::string_view leaf) {
    if (name.empty()) return;
    const std::string key = FoldKey(name);
    mRows.push_back({key == name ? name : mTexts.Add(key), name, kind, leaf, mProject, mModule});
  }
  void AddElement(const CodeElement& element, std::string_view kind, std::string_view leaf) {
    Add(mTexts.Add(element.ElementName()), kind, leaf);
  }

  void AddAll(const ModuleEntry& module) {
    mModule = &module;
    Add(module.Name, module.Kind, "index.html");
    for (const MemberEntry& member : module.Members) Add(member.Name, member.Kind, member.Leaf);
    for (const FieldEntry& field : module.Constants)
      AddElement(*field.Element, "Const", field.Leaf);
    for (const FieldEntry& field : module.Variables)
      AddElement(*field.Element, "Variable", field.Leaf);
    for (const MemberEntry& type : module.Types) {
      Add(type.Name, type.Kind, type.Leaf);
      if (const auto* enumeration = As<Enumeration>(&type.First()))
        for (const EnumMember& member : enumeration->Members())
          AddElement(member, "Value", mRun.Map.LeafOf(member));
    }
    if (!module.HasForm) return;
    for (const VBControl& control : module.Module->AllVBControls)
      AddElement(control, "Control", mRun.Map.LeafOf(control));
  }

  const SiteRun& mRun;
  const ProjectEntry* mProject = nullptr;
  const ModuleEntry* mModule = nullptr;
  TextPool mTexts;
  std::deque<NameRow> mRows;
};

// ---- Search ------------------------------------------------------------------------------------

// A text as a script has it; nothing in it can end the literal or the script.
void AppendLiteral(std::string& script, std::string_view text) {
  script += '"';
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F || std::string_view("\"\\<>&'").find(c) != kNotFound) {
      script.append("\\x");
      script += "0123456789abcdef"[byte >> 4];
      script += "0123456789abcdef"[byte & 15];
    } else {
      script += c;
    }
  }
  script += '"';
}

class SearchPieces {
 public:
  explicit SearchPieces(const SiteRun& run) : mRun(run) {}
  void Add(const NameRow& row) {
    if (mRows.empty()) mFirst = row.Key;
    mRows.append(mRows.empty() ? "" : ",\n").append("[");
    AppendLiteral(mRows, row.Key);
    mRows += ',';
    if (row.Key == row.Name)
      mRows += '0';
    else
      AppendLiteral(mRows, row.Name);
    mRows += ',';
    AppendLiteral(mRows, row.Kind);
    mRows.append(",").append(std::to_string(NumberOf(row.Folder()))).append(",");
    AppendLiteral(mRows, row.Leaf);
    mRows += ']';
    if (mRows.size() >= kSearchPiece) Put();
  }
  void Finish() {
    if (!mRows.empty()) Put();
    std::string folders;
    for (const std::string_view folder : mFolders) {
      folders.append(folders.empty() ? "" : ",\n");
      AppendLiteral(folders, folder);
    }
    mRun.Pages.PutFile("search/pieces.js",
                       "siteSearch.pieces([" + mStarts + "], [" + folders + "]);\n");
  }

 private:
  std::size_t NumberOf(std::string_view folder) {
    const auto [entry, isNew] = mNumbers.try_emplace(std::string(folder), mFolders.size());
    if (isNew) mFolders.push_back(folder);
    return entry->second;
  }
  void Put() {
    const std::string number = std::to_string(mCount++);
    mRun.Pages.PutFile("search/" + number + ".js",
                       "siteSearch.piece(" + number + ", [\n" + mRows + "]);\n");
    mStarts.append(mStarts.empty() ? "" : ",\n");
    AppendLiteral(mStarts, mFirst);
    mRows.clear();
  }

  const SiteRun& mRun;
  std::string mRows, mFirst, mStarts;
  std::vector<std::string_view> mFolders;
  std::unordered_map<std::string, std::size_t> mNumbers;
  std::size_t mCount = 0;
};

// ---- Letters -----------------------------------------------------------------------------------

// What a name is filed under, and the file of that: "A" and "a", "Ж" and "u0416".
std::pair<std::string, std::string> LetterOf(std::string_view key) {
  while (!key.empty() && (key.front() == '_' || key.front() == '.')) key.remove_prefix(1);
  if (key.empty()) return {"other", "other"};
  std::size_t behind = 0;
  const char32_t c = TakeCharacter(key, behind);
  if (c < 0x80) {
    const char letter = static_cast<char>(c);
    if (IsLetterAscii(letter))
      return {std::string(1, UpperAscii(letter)), std::string(1, LowerAscii(letter))};
    return {"other", "other"};
  }
  return {UpperCase(key.substr(0, behind)), "u" + CodePointName(c).substr(2)};
}

std::string IndexRow(const NameRow& row) {
  std::string html =
      "<li>" + Link(HrefFrom("names/", {row.Folder(), std::string(row.Leaf)}), row.Name);
  html.append(" <span class=\"of\">").append(Text(row.Kind));
  if (row.Module && row.Kind != row.Module->Kind)
    html.append(" of ").append(Text(row.Module->Name));
  if (row.Module) html.append(", ").append(Text(row.Project->Name));
  return html.append("</span></li>\n");
}

struct Letter {
  std::string Shown, File;
  std::vector<const NameRow*> Rows;
};

std::vector<Letter> LettersOf(const std::deque<NameRow>& rows) {
  std::vector<Letter> letters;
  std::unordered_map<std::string, std::size_t> places;
  for (const NameRow& row : rows) {
    auto [shown, file] = LetterOf(row.Key);
    const auto [entry, isNew] = places.try_emplace(file, letters.size());
    if (isNew) letters.push_back({std::move(shown), std::move(file), {}});
    letters[entry->second].Rows.push_back(&row);
  }
  std::stable_sort(letters.begin(), letters.end(), [](const Letter& a, const Letter& b) {
    const bool aIsOther = a.File == "other", bIsOther = b.File == "other";
    return aIsOther != bIsOther             ? bIsOther
           : a.File.size() != b.File.size() ? a.File.size() < b.File.size()
                                            : a.File < b.File;
  });
  return letters;
}

std::string LetterLinks(const std::vector<Letter>& letters) {
  constexpr std::size_t kMostLetters = 3000;
  std::string html = "<nav class=\"letters\" aria-label=\"Letters\">\n";
  for (std::size_t i = 0; i < letters.size() && i < kMostLetters; ++i)
    html.append(Link("letter-" + letters[i].File + ".html", letters[i].Shown)).append("\n");
  return html.append("</nav>\n");
}

Page NamesPage(std::string leaf, std::string title) {
  Page page;
  page.Folder = "names/";
  page.Leaf = std::move(leaf);
  page.Title = std::move(title);
  if (page.Leaf != "index.html") page.Crumbs.push_back({"Names", "index.html"});
  page.Crumbs.push_back({page.Title, ""});
  return page;
}

void WriteLetters(const SiteRun& run, const std::deque<NameRow>& rows) {
  const std::vector<Letter> letters = LettersOf(rows);
  const std::string links = LetterLinks(letters);
  Page index = NamesPage("index.html", "Names");
  AppendHeading(index, "index", "Names");
  index.Content.append("<p class=\"note\">").append(Count(rows.size(), "name"));
  index.Content.append(", by their first letter.</p>\n").append(links);
  run.Pages.Put(index);
  for (const Letter& letter : letters) {
    Page page = NamesPage("letter-" + letter.File + ".html", letter.Shown);
    AppendHeading(page, Count(letter.Rows.size(), "name"), letter.Shown);
    if (letters.size() < 200) page.Content.append(links);
    PagedList list(run, std::move(page), "<ul class=\"rows\">\n", "</ul>\n");
    for (const NameRow* row : letter.Rows) list.Add(IndexRow(*row));
    list.Finish();
  }
}

// ---- What is undocumented ----------------------------------------------------------------------

/// What a module has without a description.
struct Undocumented {
  const ModuleEntry* Module;
  bool ItselfToo = false;
  std::size_t Count = 0;
  /// The first of them.
  std::vector<const MemberEntry*> Members;
};

// `count` gets how many could have a description.
Undocumented UndocumentedOf(const SiteRun& run, const ModuleEntry& module, std::size_t& count) {
  Undocumented found{&module, SummaryOf(*module.Module).empty(), 0, {}};
  found.Count = found.ItselfToo;
  ++count;
  for (const auto* all : {&module.Members, &module.Types})
    for (const MemberEntry& member : *all) {
      const auto* block = As<Block>(&member.First());
      const bool isOfEvent = block && block->IsEventProcedure;
      if (isOfEvent || run.Relations.Implements(member.First())) continue;
      ++count;
      const bool isDescribed =
          std::any_of(member.Elements.begin(), member.Elements.end(),
                      [](const CodeElement* element) { return !SummaryOf(*element).empty(); });
      if (isDescribed) continue;
      if (++found.Count <= kListedAtMost * 4) found.Members.push_back(&member);
    }
  return found;
}

std::string UndocumentedRow(const Undocumented& found) {
  const std::string folder = HrefFrom("names/", {found.Module->Folder, ""});
  std::string row = "<li>" + Link(folder + "index.html", found.Module->Name);
  row.append(" <span class=\"of\">").append(Number(found.Count)).append("</span><br/>");
  if (found.ItselfToo) row.append("the ").append(found.Module->Kind).append(" itself");
  bool isFirst = !found.ItselfToo;
  for (const MemberEntry* member : found.Members) {
    row.append(isFirst ? "" : ", ").append(Link(folder + std::string(member->Leaf), member->Name));
    isFirst = false;
  }
  return row.append("</li>\n");
}

}  // namespace

void WriteUndocumentedPages(const SiteRun& run) {
  Page page = NamesPage("undocumented.html", "Undocumented");
  AppendHeading(page, "index", "What is undocumented");
  page.Content.append(
      "<p class=\"note\">Modules, members and types without a description. "
      "Procedures that handle events or implement something need none.</p>\n");
  PagedList list(run, std::move(page), "<ul class=\"rows\">\n", "</ul>\n");
  std::size_t number = 0;
  for (const ProjectEntry& project : run.Map.Projects()) {
    std::vector<Undocumented> modules;
    std::size_t count = 0, missing = 0;
    for (const ModuleEntry& module : project.Modules) {
      Undocumented found = UndocumentedOf(run, module, count);
      missing += found.Count;
      if (found.Count > 0) modules.push_back(std::move(found));
    }
    std::string heading;
    AppendSection(heading, "project-" + std::to_string(++number), project.Name);
    const std::size_t share = count == 0 ? 100 : (count - missing) * 100 / count;
    heading.append("<p class=\"note\">").append(std::to_string(share)).append("% described: ");
    heading.append(Number(count - missing)).append(" of ").append(Number(count)).append("</p>\n");
    list.Section(heading);
    if (modules.empty()) list.Add("<li>All is described.</li>\n");
    for (const Undocumented& found : modules) list.Add(UndocumentedRow(found));
  }
  list.Finish();
}

void WriteNamePages(const SiteRun& run) {
  const NameRows rows(run);
  SearchPieces pieces(run);
  for (const NameRow& row : rows.All()) pieces.Add(row);
  pieces.Finish();
  WriteLetters(run, rows.All());
}

}  // namespace vendrel::site

#pragma once
// What the writers of pages share while a site is made, and the pages that there are.

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "site/Documentation.h"
#include "site/EstateUses.h"
#include "site/PageFrame.h"
#include "site/Prose.h"
#include "site/Relations.h"
#include "site/Site.h"
#include "site/SiteMap.h"
#include "site/TypeLinks.h"

namespace vendrel::site {

class SiteChanges;
class GraphDrawer;

struct SiteRun {
  const SiteOptions& Options;
  const SiteMap& Map;
  const TypeLinks& Types;
  const vendrel::site::Relations& Relations;
  const EstateUses& Uses;
  PageWriter& Pages;
  /// Null without comparison.
  const SiteChanges* Changes;
  /// Null without graphs.
  GraphDrawer* Graphs;
};

/// Rows of a list on one page.
inline constexpr std::size_t kRowsOnPage = 800;
/// Entries of other lists within a page: users, inherited names.
inline constexpr std::size_t kListedAtMost = 500;

// ---- Pages ----
void WriteEstatePages(const SiteRun& run);
void WriteProjectPages(const SiteRun& run, const ProjectEntry& project);
void WriteModulePages(const SiteRun& run, const ModuleEntry& module);
void WriteMemberPages(const SiteRun& run, const ModuleEntry& module);
void WriteTypePages(const SiteRun& run, const ModuleEntry& module);
void WriteFormPage(const SiteRun& run, const ModuleEntry& module);
void WriteSourceList(const SiteRun& run, const ProjectEntry& project);
/// The pages of a file; `names` are in the order of their places.
void WriteSource(const SiteRun& run, const SourceEntry& source, std::span<const BoundName> names);
void WriteHierarchyPages(const SiteRun& run, const ProjectEntry& project);
void WriteUndocumentedPages(const SiteRun& run);
void WriteNamePages(const SiteRun& run);
void WriteChangePages(const SiteRun& run);

// ---- Parts of pages ----
/// A page of a project, or in it of a module, with the way to it.
Page PageIn(const ProjectEntry& project, std::string_view leaf, std::string_view title);
Page PageIn(const ModuleEntry& module, std::string_view leaf, std::string_view title);
/// A member as it stands among its neighbours.
PageLink NeighbourOf(const MemberEntry& member);
/// Gives the page neighbours: some entries around `at` of a list with `count` of them, which
/// `entry` makes; the one at `at` is the page itself.
void AddNeighbours(Page& page, std::string barTitle, std::size_t count, std::size_t at,
                   const std::function<PageLink(std::size_t)>& entry);

void AppendHeading(Page& page, std::string_view kind, std::string_view name,
                   std::string_view tags = {});
/// A heading of a section; `id` must be unique on the page.
void AppendSection(std::string& html, std::string_view id, std::string_view title,
                   std::size_t count = 0);
/// A term and what it stands for, in a list of facts; nothing for an empty one.
void AppendFact(std::string& html, std::string_view term, std::string_view valueHtml);
/// Facts gathered so as a list; nothing without any.
void AppendFactList(std::string& html, std::string_view facts);
/// The full name with its button, and the link to the source of an element.
void AppendPath(const SiteRun& run, Page& page, const CodeElement& element);
/// A link to the page of an element with what it belongs to, or its name alone.
std::string LinkTo(const SiteRun& run, std::string_view folder, const CodeElement& element);
/// "Account.Post": the name with that of its module.
std::string NameWithModule(const CodeElement& element);
/// One line of a description, in its own direction; nothing for none.
std::string Summary(std::string_view line);
/// Marks: new, changed; "since the release before" of a comparison too.
std::string TagsOf(const SiteRun& run, const CodeElement& element, bool isNew);
/// The links that texts of an element use.
ProseLinks LinksFor(const SiteRun& run, std::string_view folder, const CodeElement& element);
/// The description; behind it remarks, exceptions, examples, see also; both.
void AppendSummary(const SiteRun& run, Page& page, const CodeElement& element,
                   const Documentation& found);
void AppendDetails(const SiteRun& run, Page& page, const CodeElement& element,
                   const Documentation& found);
void AppendDocumentation(const SiteRun& run, Page& page, const CodeElement& element,
                         const Documentation& found);
/// Users, and what is used; nothing where nothing is bound.
void AppendUses(const SiteRun& run, Page& page, const std::vector<const CodeElement*>& elements);
void AppendUses(const SiteRun& run, Page& page, const CodeElement& element);
/// Links to those who use an element, each once, and how many more there are than `most`; empty
/// where nobody does.
std::string UserLinks(const SiteRun& run, std::string_view folder, const CodeElement& element,
                      std::size_t most);

/// A list that goes over as many pages as it needs: rows are added, and whenever a page is full it
/// is put and the next one begun. Further pages are called "stem--2.html".
class PagedList {
 public:
  /// `first` is begun already; its content so far stays in front of the rows.
  PagedList(const SiteRun& run, Page first, std::string_view open, std::string_view close);
  /// Adds a row; a `heading` stands in front of it, and again at the top of each further page.
  void Add(std::string_view row);
  /// Ends the rows that are open, adds a heading and begins anew.
  void Section(std::string_view heading);
  /// Content behind all rows, on the last page.
  std::string& Behind() { return mBehind; }
  void Finish();

 private:
  void OpenRows();
  void CloseRows();
  void Put(bool isLast);

  const SiteRun& mRun;
  Page mPage;
  std::string mOpen, mClose, mHeading, mBehind, mStem, mTitle;
  std::size_t mRows = 0;
  std::size_t mNumber = 1;
  bool mIsOpen = false;
};

}  // namespace vendrel::site

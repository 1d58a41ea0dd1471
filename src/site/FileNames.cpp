#include "site/FileNames.h"

#include <algorithm>

#include "site/SiteHtml.h"

namespace vendrel::site {
namespace {

// Of a page that is full of declarations the first ones are listed, as near as can be told.
constexpr std::size_t kBytesOfUses = 300 << 10;

const CodeElement* OwnerOf(const CodeElement& element) {
  if (const auto* variable = As<Variable>(&element)) return variable->Procedure.Get();
  if (const auto* constant = As<Constant>(&element)) return constant->Procedure.Get();
  if (const auto* parameter = As<Parameter>(&element)) return parameter->Parent.Get();
  return nullptr;
}

std::string AnchorOf(std::int32_t line, std::int32_t column) {
  return "d" + std::to_string(line) + "-" + std::to_string(column);
}

}  // namespace

FileNames::FileNames(const SiteRun& run, const SourceEntry& source,
                     std::span<const BoundName> names)
    : mSource(source) {
  for (const BoundName& name : names)
    if (name.IsDeclaration && !run.Map.Has(name.Element) &&
        mPlaces.try_emplace(name.Element, mEntries.size()).second)
      mEntries.push_back({name.Element, name.Line, name.Column, {}, false});
  for (const BoundName& name : names) {
    const auto place = name.IsDeclaration ? mPlaces.end() : mPlaces.find(name.Element);
    if (place == mPlaces.end()) continue;
    std::vector<std::int32_t>& lines = mEntries[place->second].Lines;
    if (lines.empty() || lines.back() != name.Line) lines.push_back(name.Line);
  }
  std::size_t piece = 0, bytes = 0;
  for (Entry& entry : mEntries) {
    const std::size_t own = source.PieceOf(entry.Line);
    if (own != piece) bytes = 0;
    piece = own;
    entry.IsListed = !entry.Lines.empty() && bytes < kBytesOfUses;
    if (entry.IsListed) bytes += 200 + 40 * std::min(entry.Lines.size(), kListedAtMost);
  }
}

std::string FileNames::HrefTo(std::int32_t line, const std::string& anchor,
                              std::size_t piece) const {
  const std::size_t own = mSource.PieceOf(line);
  return (own == piece ? "#" : mSource.LeafOf(own) + "#") + anchor;
}

std::string FileNames::HrefOf(const CodeElement& element, std::size_t piece) const {
  const auto place = mPlaces.find(&element);
  if (place == mPlaces.end() || !mEntries[place->second].IsListed) return {};
  const Entry& entry = mEntries[place->second];
  return HrefTo(entry.Line, AnchorOf(entry.Line, entry.Column), piece);
}

std::string FileNames::RowOf(const Entry& entry) const {
  std::string row = "<li id=\"" + AnchorOf(entry.Line, entry.Column) + "\">";
  const std::size_t piece = mSource.PieceOf(entry.Line);
  const auto hrefOf = [&](std::int32_t line) {
    return HrefTo(line, "L" + std::to_string(line), piece);
  };
  row.append(Link(hrefOf(entry.Line), entry.Element->ElementName()));
  row.append(" <span class=\"of\">");
  if (const CodeElement* owner = OwnerOf(*entry.Element))
    row.append("of ").append(Name(owner->ElementName())).append(", ");
  row.append(entry.Lines.size() == 1 ? "used in line" : "used in lines");
  for (std::size_t i = 0; i < entry.Lines.size() && i < kListedAtMost; ++i)
    row.append(i > 0 ? ", <a href=\"" : " <a href=\"")
        .append(hrefOf(entry.Lines[i]))
        .append("\">")
        .append(std::to_string(entry.Lines[i]))
        .append("</a>");
  if (entry.Lines.size() > kListedAtMost)
    row.append(" and ").append(Number(entry.Lines.size() - kListedAtMost)).append(" more");
  return row.append("</span></li>\n");
}

void FileNames::Append(std::string& html, std::size_t piece) const {
  std::string rows;
  auto entry = std::partition_point(mEntries.begin(), mEntries.end(), [&](const Entry& each) {
    return mSource.PieceOf(each.Line) < piece;
  });
  for (; entry != mEntries.end() && mSource.PieceOf(entry->Line) == piece; ++entry)
    if (entry->IsListed) rows.append(RowOf(*entry));
  if (rows.empty()) return;
  AppendSection(html, "within", "Names of this file alone");
  html.append(
      "<p class=\"note\">Local names, parameters and what else has no page of its own, with the "
      "lines that use them.</p>\n<ul class=\"rows\">\n");
  html.append(rows).append("</ul>\n");
}

}  // namespace vendrel::site

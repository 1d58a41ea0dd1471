#include "site/PageNames.h"

#include <algorithm>

#include "core/Ascii.h"

namespace vendrel::site {
namespace {

constexpr std::size_t kLongestName = 80;
constexpr std::size_t kBytesOfBlock = 64 << 10;

bool IsPlain(char c) { return IsLetterAscii(c) || IsDigitAscii(c) || c == '_'; }

// Devices of Windows, whatever follows behind a dot.
bool IsDevice(std::string_view name) {
  const std::string stem = LowerAscii(name.substr(0, name.find('.')));
  for (const std::string_view device : {"con", "prn", "aux", "nul"})
    if (stem == device) return true;
  return stem.size() == 4 && (stem.starts_with("com") || stem.starts_with("lpt")) &&
         IsDigitAscii(stem[3]);
}

std::string Cleaned(std::string_view name) {
  std::string clean;
  for (const char c : name) {
    if (clean.size() == kLongestName) break;
    if (IsPlain(c) || (c == '.' && !clean.empty() && clean.back() != '.'))
      clean += c;
    else if (!clean.empty() && clean.back() != '-')
      clean += '-';
  }
  while (!clean.empty() && (clean.back() == '-' || clean.back() == '.')) clean.pop_back();
  if (!clean.empty() && !IsLetterAscii(clean.front()) && clean.front() != '_') clean.insert(0, "n");
  return clean.empty() ? "name" : clean;
}

}  // namespace

std::string LeafOfPage(std::string_view stem, std::size_t page) {
  std::string leaf(stem);
  if (page > 0) leaf.append("--").append(std::to_string(page + 1));
  return leaf.append(".html");
}

std::string_view PageOfLeaf(std::string_view leaf) { return leaf.substr(0, leaf.find('#')); }
std::string_view AnchorOfLeaf(std::string_view leaf) {
  const std::size_t mark = leaf.find('#');
  return mark == kNotFound ? std::string_view() : leaf.substr(mark + 1);
}

std::string_view TextPool::Add(std::string_view text) {
  if (mBlocks.empty() || mBlocks.back().capacity() - mBlocks.back().size() < text.size())
    mBlocks.emplace_back().reserve(std::max(kBytesOfBlock, text.size()));
  std::string& block = mBlocks.back();
  block.append(text);
  return std::string_view(block).substr(block.size() - text.size());
}

std::uint64_t HashOf(std::string_view bytes) {
  ContentHash hash;
  hash.Add(bytes);
  return hash.Value();
}

PageNames::PageNames(std::initializer_list<std::string_view> taken) {
  for (const std::string_view name : taken) mTaken.emplace(name, 1);
}

std::string PageNames::Take(std::string_view name) {
  std::string clean = Cleaned(name);
  if (clean != name || IsDevice(clean)) clean.append("-").append(HexOf(HashOf(name)).substr(0, 8));
  // "Total" and "total": the second becomes "total-2", which a third one may be called as well.
  std::string given = clean;
  for (std::uint32_t& count = mTaken[LowerAscii(clean)];
       ++count > 1 || (given != clean && mTaken.contains(LowerAscii(given)));) {
    given = clean + "-" + std::to_string(count);
    if (!mTaken.contains(LowerAscii(given))) break;
  }
  if (given != clean) mTaken.emplace(LowerAscii(given), 1);
  return given;
}

}  // namespace vendrel::site

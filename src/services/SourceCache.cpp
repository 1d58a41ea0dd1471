#include "services/SourceCache.h"

#include "core/Workspace.h"

namespace vendrel {

SourceCache& SourceCache::Current() { return InUse<SourceCache>(); }

SourceCache::Scope::Scope() : mCache(Current()) { ++mCache.mScopes; }

SourceCache::Scope::~Scope() {
  if (--mCache.mScopes > 0) return;
  mCache.mFiles.clear();
  mCache.mSeen.clear();
}

bool SourceCache::Keeps() { return Current().mScopes > 0; }

const FoundPath* SourceCache::Seen(const std::string& nativePath) {
  const SourceCache& cache = Current();
  if (cache.mScopes == 0) return nullptr;
  const auto seen = cache.mSeen.find(nativePath);
  return seen == cache.mSeen.end() ? nullptr : &seen->second;
}

void SourceCache::Saw(const std::string& nativePath, const FoundPath& found) {
  SourceCache& cache = Current();
  if (cache.mScopes > 0 && found.Failure == 0) cache.mSeen.insert_or_assign(nativePath, found);
}

void SourceCache::ForgetLost() {
  std::erase_if(Current().mSeen,
                [](const auto& seen) { return seen.second.Match != PathMatch::Exact; });
}

std::string_view SourceCache::Bytes(const std::string& nativePath) {
  SourceCache& cache = Current();
  if (cache.mScopes == 0) return cache.mUnkept = ReadWholeFile(nativePath);
  const auto kept = cache.mFiles.find(nativePath);
  if (kept != cache.mFiles.end() && !kept->second.Text) return kept->second.Bytes;
  std::string bytes = ReadWholeFile(nativePath);
  File& file = cache.mFiles[nativePath];
  file = {std::move(bytes), nullptr};
  return file.Bytes;
}

std::optional<std::string> SourceCache::TakeBytes(const std::string& nativePath) {
  auto& files = Current().mFiles;
  const auto found = files.find(nativePath);
  if (found == files.end() || found->second.Text) return std::nullopt;
  std::optional<std::string> bytes(std::move(found->second.Bytes));
  files.erase(found);
  return bytes;
}

void SourceCache::Put(const std::string& nativePath, std::string bytes) {
  Current().mFiles[nativePath] = {std::move(bytes), nullptr};
}

std::shared_ptr<const SourceText> SourceCache::Text(const std::string& nativePath,
                                                    const CodePage& page) {
  SourceCache& cache = Current();
  if (cache.mScopes == 0) return SourceText::Decode(ReadWholeFile(nativePath), page);
  auto [found, isNew] = cache.mFiles.try_emplace(nativePath);
  File& file = found->second;
  if (file.Text && file.Text->CodePageName == page.Name()) return file.Text;
  if (isNew || file.Text) try {
      file.Bytes = ReadWholeFile(nativePath);
    } catch (...) {
      cache.mFiles.erase(found);
      throw;
    }
  file.Text = SourceText::Decode(std::move(file.Bytes), page);
  file.Bytes.clear();
  return file.Text;
}

}  // namespace vendrel

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

bool SourceCache::WasSeen(const std::string& nativePath, FileStatus& status) {
  const SourceCache& cache = Current();
  if (cache.mScopes == 0) return false;
  const auto seen = cache.mSeen.find(nativePath);
  if (seen == cache.mSeen.end()) return false;
  status = seen->second;
  return true;
}

void SourceCache::Saw(const std::string& nativePath, const FileStatus& status) {
  SourceCache& cache = Current();
  if (cache.mScopes > 0) cache.mSeen.insert_or_assign(nativePath, status);
}

std::string_view SourceCache::Bytes(const std::string& nativePath) {
  SourceCache& cache = Current();
  std::string bytes = ReadWholeFile(nativePath);
  if (cache.mScopes == 0) return cache.mUnkept = std::move(bytes);
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

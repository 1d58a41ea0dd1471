#include "services/FileSystemObject.h"

#include <cerrno>

#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "services/AtomicFile.h"
#include "services/FileSource.h"
#include "services/Paths.h"

namespace vendrel {
namespace {

// Real chains have two files; more than this is a ring, which has no folder.
constexpr std::size_t LongestBaseChain = 16;
struct ClassIds {
  FileSystemObject::ClassIdReader Reader = nullptr;
};

VendrelError NotOpen(const std::string& path) {
  return VendrelError(errPathAccess, path + " (not open)");
}

// Position of the dot before the extension; the size if there is none.
std::size_t DotOf(std::string_view leaf) {
  const std::size_t dot = leaf.rfind('.');
  return dot == std::string_view::npos ? leaf.size() : dot;
}

std::string CurrentFolder() {
  std::string folder = WindowsPath(FileSource::Current().CurrentFolder());
  if (folder.empty() || folder.back() != '\\') folder.push_back('\\');
  return folder;
}

}  // namespace

FileSystemObject::FileSystemObject() = default;

FileSystemObject::FileSystemObject(std::string_view path) { SetFullPath(path); }

FileSystemObject::FileSystemObject(const FileSystemObject& other)
    : HandleTarget(other),
      mPath(other.mPath),
      mNative(other.mNative),
      mMatch(other.mMatch),
      mIsRelative(other.mIsRelative),
      mBaseFile(other.mBaseFile),
      mWriteForm(other.mWriteForm) {}

FileSystemObject::FileSystemObject(FileSystemObject&& other) noexcept = default;

FileSystemObject& FileSystemObject::operator=(const FileSystemObject& other) {
  if (this != &other) *this = FileSystemObject(other);
  return *this;
}

FileSystemObject& FileSystemObject::operator=(FileSystemObject&& other) noexcept = default;

FileSystemObject::~FileSystemObject() = default;

void FileSystemObject::StorePath(std::string path) {
  Discard();
  mPath = std::move(path);
  mNative.clear();
  mMatch = PathMatch::None;
}

void FileSystemObject::SetFullPath(std::string_view path) {
  const bool native = !path.empty() && path[0] == '/';
  StorePath(native                 ? WindowsPath(path)
            : IsAbsolutePath(path) ? NormalPath(path)
                                   : std::string(path));
  mIsRelative = !path.empty() && !IsAbsolutePath(mPath);
  Freeze();
}

// A base may itself be relative to another file: up to the first that is not, then down again.
void FileSystemObject::Freeze() const {
  if (mPath.empty() || IsAbsolutePath(mPath)) return;
  std::vector<const FileSystemObject*> chain = {this};
  while (!IsAbsolutePath(chain.back()->mPath)) {
    const FileSystemObject* base = chain.back()->mBaseFile.Get();
    if (!base || base->mPath.empty()) break;
    if (chain.size() > LongestBaseChain) return;
    chain.push_back(base);
  }
  for (std::size_t i = chain.size() - 1; i-- > 0;)
    chain[i]->mPath = ResolvePath(FolderPart(chain[i + 1]->AbsolutePath()), chain[i]->mPath);
}

std::string FileSystemObject::AbsolutePath() const {
  if (mPath.empty() || IsAbsolutePath(mPath)) return mPath;
  return ResolvePath(CurrentFolder(), mPath);
}

std::string FileSystemObject::FullPath() const {
  Freeze();
  return AbsolutePath();
}

std::string FileSystemObject::LeafName() const { return std::string(LeafPart(mPath)); }

std::string FileSystemObject::BaseName() const {
  const std::string_view leaf = LeafPart(mPath);
  return std::string(leaf.substr(0, DotOf(leaf)));
}

void FileSystemObject::SetBaseName(std::string_view name) {
  const std::string_view leaf = LeafPart(mPath);
  std::string path(FolderPart(mPath));
  path.append(name).append(leaf.substr(DotOf(leaf)));
  StorePath(std::move(path));
}

std::string FileSystemObject::Extension() const {
  const std::string_view leaf = LeafPart(mPath);
  const std::size_t dot = DotOf(leaf);
  return dot < leaf.size() ? std::string(leaf.substr(dot + 1)) : std::string();
}

void FileSystemObject::SetExtension(std::string_view extension) {
  const std::string_view leaf = LeafPart(mPath);
  std::string path = mPath.substr(0, mPath.size() - leaf.size() + DotOf(leaf));
  if (!extension.empty()) path.append(".").append(extension);
  StorePath(std::move(path));
}

std::string FileSystemObject::FolderPath() const { return std::string(FolderPart(FullPath())); }

void FileSystemObject::SetFolderPath(std::string_view folder) {
  const std::string leaf = LeafName();
  std::string path(folder);
  const bool native = !path.empty() && path[0] == '/';
  if (!path.empty() && path.back() != '/' && (native || path.back() != '\\'))
    path.push_back(native ? '/' : '\\');
  SetFullPath(path);
  StorePath(mPath + leaf);
}

std::string FileSystemObject::RelativePath() const {
  const FileSystemObject* base = mBaseFile.Get();
  const std::string path = FullPath();
  return base ? vendrel::RelativePath(base->FolderPath(), path) : path;
}

FoundPath FileSystemObject::Find() const {
  FoundPath found = FindPath(vendrel::NativePath(FullPath()));
  mNative = found.Path;
  mMatch = found.Match;
  return found;
}

bool FileSystemObject::Exists() const {
  const FoundPath found = Find();
  return found.Match != PathMatch::None && found.Status.Type != FileStatus::Kind::Folder;
}

bool FileSystemObject::IsFolder() const {
  const FoundPath found = Find();
  return found.Match != PathMatch::None && found.Status.Type == FileStatus::Kind::Folder;
}

bool FileSystemObject::IsReadOnly() const {
  const FoundPath found = Find();
  return found.Match != PathMatch::None && found.Status.IsReadOnly();
}

std::string FileSystemObject::NativePath() const {
  if (mMatch == PathMatch::None) Find();
  return mNative;
}

PathMatch FileSystemObject::Match() const {
  if (mMatch == PathMatch::None) Find();
  return mMatch;
}

void FileSystemObject::OpenFile(int mode, int, int) try {
  Discard();
  if (mode == omRead) return OpenForReading();
  if (mode != omWrite) throw VendrelError(errInvalidArgument, "mode of OpenFile");
  const FoundPath found = Find();
  const std::string& native = found.Path;
  if (native.empty()) throw VendrelError(errPathAccess, FullPath());
  if (found.Failure) throw FileError(found.Failure, native);
  mWriter = std::make_unique<AtomicFile>(native);
  mWriter->Write(ByteOrderMark(mWriteForm));
}
VENDREL_CONTEXT(mode, trace::Field("FullPath", FullPath()))

void FileSystemObject::OpenForReading() {
  const std::string native = NativePath();
  if (mMatch == PathMatch::None) {
    FileStatus status;
    const int result = native.empty() ? -ENOENT : FileSource::Current().Status(native, status);
    if (result < 0) throw FileError(-result, native.empty() ? FullPath() : native);
  }
  mSource = SourceText::Read(native);
  mRest = mSource->Text;
}

void FileSystemObject::OpenDecoded(std::shared_ptr<const SourceText> source) {
  Discard();
  mSource = std::move(source);
  mRest = mSource->Text;
}

void FileSystemObject::CloseFile() try {
  const std::unique_ptr<AtomicFile> writer = std::move(mWriter);
  Discard();
  if (writer) writer->Commit();
}
VENDREL_CONTEXT(trace::Field("FullPath", FullPath()))

void FileSystemObject::Discard() {
  mRest = {};
  mSource.reset();
  mWriter.reset();
}

std::string_view FileSystemObject::NextLine() try {
  if (!mSource) throw NotOpen(FullPath());
  return TakeLine(mRest, mSource->LineEnds.Form);
}
VENDREL_CONTEXT(trace::Field("FullPath", FullPath()))

std::string FileSystemObject::ReadAll() try {
  if (!mSource) throw NotOpen(FullPath());
  std::string text(mRest);
  mRest = {};
  return text;
}
VENDREL_CONTEXT(trace::Field("FullPath", FullPath()))

void FileSystemObject::WriteLine(std::string_view text) try {
  if (!mWriter) throw NotOpen(FullPath());
  const auto bytes = Encode(text, mWriteForm);
  if (bytes) {
    mWriter->Write(*bytes);
    return mWriter->Write(*Encode("\r\n", mWriteForm));
  }
  const std::string& page = PageOf(mWriteForm).Name();
  Report(DiagnosticCode::CharactersNotHeld, {FullPath(), page});
  mWriter->Spoil();
  throw VendrelError(errInvalidArgument, "a character that code page " + page + " lacks");
}
VENDREL_CONTEXT(text, trace::Field("FullPath", FullPath()))

void FileSystemObject::WriteBytes(std::string_view bytes) try {
  if (!mWriter) throw NotOpen(FullPath());
  mWriter->Write(bytes);
}
VENDREL_CONTEXT(trace::Local("Size", bytes.size()), trace::Field("FullPath", FullPath()))

void FileSystemObject::DeleteFile() try {
  Discard();
  const FoundPath found = Find();
  if (found.Match == PathMatch::None) return;
  const int result = FileSource::Current().Unlink(found.Path);
  ForgetFolderOf(found.Path);
  mMatch = PathMatch::None;
  if (result < 0 && result != -ENOENT) throw FileError(-result, found.Path);
}
VENDREL_CONTEXT(trace::Field("FullPath", FullPath()))

std::string FileSystemObject::ClassID() const {
  const ClassIdReader read = InUse<ClassIds>().Reader;
  return read && Exists() ? read(mNative) : std::string();
}

void FileSystemObject::SetClassIdReader(ClassIdReader reader) { InUse<ClassIds>().Reader = reader; }

}  // namespace vendrel

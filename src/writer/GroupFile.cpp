#include "writer/GroupFile.h"

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "services/Paths.h"
#include "services/SourceText.h"
#include "text/Words.h"

namespace vendrel {
namespace {

class GroupFile {
 public:
  GroupFile(const VBProjectGroup& group, std::string_view path,
            const std::function<std::string(const std::string&)>& targetOf)
      : mGroup(group.FileName()),
        mTarget(path),
        mTargetOf(targetOf),
        mSource(SourceText::Read(mGroup.NativePath(), CodePage::Default())) {}

  void Write();

 private:
  std::string Moved(std::string_view line) const;
  std::string BytesOf(std::string_view text) const;

  FileSystemObject mGroup;
  FileSystemObject mTarget;
  const std::function<std::string(const std::string&)>& mTargetOf;
  std::shared_ptr<const SourceText> mSource;
};

std::string GroupFile::BytesOf(std::string_view text) const {
  if (auto bytes = Encode(text, *mSource)) return *std::move(bytes);
  throw VendrelError(errInvalidArgument, "a name in " + mTarget.FullPath() + " that code page " +
                                             PageOf(*mSource).Name() + " lacks");
}

// The line of a member with the path of its copy; empty for any other line.
std::string GroupFile::Moved(std::string_view line) const {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return {};
  const std::string_view path = StripQuotes(Trim(line.substr(equals + 1)));
  if (path.empty()) return {};
  const std::string target = mTargetOf(ResolvePath(mGroup.FolderPath(), path));
  if (target.empty()) return {};
  const std::size_t at = static_cast<std::size_t>(path.data() - line.data());
  std::string moved(line.substr(0, at));
  moved += RelativePath(mTarget.FolderPath(), target);
  return moved.append(line.substr(at + path.size()));
}

void GroupFile::Write() {
  std::string bytes;
  const std::string_view text = mSource->Text;
  for (std::string_view rest = text; !rest.empty();) {
    const std::size_t offset = text.size() - rest.size();
    const std::string_view line = TakeLine(rest);
    const std::size_t behind = offset + line.size();
    const std::string* raw = mSource->RawLine(offset);
    if (const std::string moved = Moved(line); !moved.empty())
      bytes += BytesOf(moved);
    else
      bytes += raw ? *raw : BytesOf(line);
    bytes += BytesOf(text.substr(behind, text.size() - rest.size() - behind));
  }
  mTarget.SetWriteForm(*mSource);
  mTarget.OpenFile(omWrite, 2);
  mTarget.WriteBytes(bytes);
  mTarget.CloseFile();
}

}  // namespace

void WriteGroupFile(const VBProjectGroup& group, std::string_view path,
                    const std::function<std::string(const std::string&)>& targetOf) try {
  GroupFile(group, path, targetOf).Write();
}
VENDREL_CONTEXT(path, trace::Me(group))

}  // namespace vendrel

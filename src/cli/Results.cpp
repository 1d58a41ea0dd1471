#include "cli/Results.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <optional>
#include <streambuf>

#include "cli/Interrupts.h"
#include "cli/Report.h"
#include "cli/ShownText.h"
#include "cli/WatchedFiles.h"
#include "diagnostics/VendrelError.h"
#include "services/AtomicFile.h"
#include "services/FileSource.h"
#include "services/Paths.h"

namespace vendrel::cli {
namespace {

// The file of the result failed. Of no type that is caught on the way out of a command: to whoever
// writes a result every other failure is one of the input or of another output.
struct ResultFailure {
  VendrelError Error;
};

template <typename Step>
void OnResult(Step step) {
  try {
    step();
  } catch (const VendrelError& error) {
    throw ResultFailure{error};
  }
}

class FileBuffer final : public std::streambuf {
 public:
  explicit FileBuffer(AtomicFile& file) : mFile(file) { Reset(); }
  ~FileBuffer() override = default;

 private:
  void Reset() { setp(mBuffer.data(), mBuffer.data() + mBuffer.size()); }
  int sync() override {
    LookForSignal();
    OnResult([&] { mFile.Write({pbase(), static_cast<std::size_t>(pptr() - pbase())}); });
    Reset();
    return 0;
  }
  int_type overflow(int_type c) override {
    sync();
    return c == traits_type::eof() ? traits_type::not_eof(c) : sputc(traits_type::to_char_type(c));
  }
  std::streamsize xsputn(const char* text, std::streamsize size) override {
    sync();  // looks for a signal
    OnResult([&] { mFile.Write({text, static_cast<std::size_t>(size)}); });
    return size;
  }

  AtomicFile& mFile;
  std::array<char, 4096> mBuffer;
};

std::string NativeTarget(const std::string& path) {
  const std::string absolute = AbsolutePath(path);
  return IsAbsolutePath(absolute) ? NativePath(absolute) : absolute;
}

bool AreOneFile(const std::string& a, const std::string& b) {
  FileStatus first, second;
  FileSource& source = FileSource::Current();
  return source.Status(a, first) >= 0 && source.Status(b, second) >= 0 &&
         first.Device == second.Device && first.Number == second.Number;
}

void WriteToTerminal(std::ostream& terminal, const std::function<void(std::ostream&)>& write) {
  TerminalFilter filter(terminal);
  std::ostream out(&filter);
  try {
    write(out);
  } catch (...) {
    out.flush();  // what was shown before a failure is no less true
    throw;
  }
  out.flush();
}

// A device or a pipe, which cannot be put in the place of anything and takes what it is given.
bool IsNoFile(const std::string& path) {
  FileStatus status;
  return FileSource::Current().Status(NativeTarget(path), status) >= 0 &&
         status.Type == FileStatus::Kind::Other;
}

// Whoever read the result has heard enough; where SIGPIPE is ignored a call says so.
bool IsClosedPipe() {
  pollfd output{STDOUT_FILENO, POLLOUT, 0};
  return errno == EPIPE || (poll(&output, 1, 0) > 0 && (output.revents & POLLERR) != 0);
}

// A pipe that nobody reads is told, and not waited for.
void RefuseUnread(const std::string& path) {
  const int handle = open(NativeTarget(path).c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
  if (handle < 0 && errno == ENXIO)
    throw ToolError(exFailed, path + ": cannot be written: a pipe that nobody reads");
  if (handle >= 0) close(handle);
}

void WriteToDevice(const std::string& path, const std::function<void(std::ostream&)>& write) {
  RefuseUnread(path);
  errno = 0;
  std::ofstream out(NativeTarget(path), std::ios::binary);
  if (out) write(out);
  out.flush();
  const int reason = out ? 0 : errno;
  out.close();
  if (out) return;
  if (reason == EPIPE) throw Interrupted{SIGPIPE};
  throw ToolError(exFailed, CannotBeWritten(path, reason != 0 ? reason : errno));
}

void WriteToFile(const CommonOptions& options, const std::function<void(std::ostream&)>& write) {
  const std::string& path = options.Output;
  const InterruptHold hold;
  try {
    std::optional<AtomicFile> file;
    OnResult([&] { file.emplace(NativeTarget(path)); });
    FileBuffer buffer(*file);
    std::ostream out(&buffer);
    out.exceptions(std::ios::badbit);  // a failure of the file passes through the stream
    write(out);
    out.flush();
    RefuseSourceAsResult(options);
    OnResult([&] { file->Commit(); });
  } catch (const ResultFailure& failure) {
    throw ToolError(exFailed, path + ": cannot be written: " + ReasonOf(failure.Error, path));
  }
}

}  // namespace

void RefuseSourceAsResult(const CommonOptions& options) {
  const WatchedFiles* files = WatchedFiles::Current();
  if (options.Output.empty() || !files) return;
  const std::string target = NativeTarget(options.Output);
  if (const std::string* source = files->SourceAt(target))
    throw ToolError(exUsage, "-o: '" + options.Output + "' was read for this result" +
                                 (*source == target ? "" : ", as '" + *source + "'") +
                                 "; name another file");
  for (const std::string& written : files->Written())
    if (AreOneFile(written, target))
      throw ToolError(exUsage, "-o: '" + options.Output +
                                   "' is among the files just written, and stays so; name another");
}

void RefuseAsResult(const CommonOptions& options, const std::string& input) {
  if (!options.Output.empty() && AreOneFile(NativeTarget(options.Output), NativeTarget(input)))
    throw ToolError(exUsage, "-o: '" + options.Output + "' is the input; name another file");
}

void WriteResult(const CommonOptions& options, const Streams& streams, const std::string& input,
                 const std::function<void(std::ostream&)>& write, ResultForm form) {
  RefuseAsResult(options, input);
  if (!options.Output.empty() && IsNoFile(options.Output))
    return WriteToDevice(options.Output, write);
  if (!options.Output.empty()) return WriteToFile(options, write);
  errno = 0;
  if (streams.OutIsTerminal && form == ResultForm::Plain)
    WriteToTerminal(streams.Out, write);
  else
    write(streams.Out);
  streams.Out.flush();
  if (!streams.Out && IsClosedPipe()) throw Interrupted{SIGPIPE};
  if (!streams.Out) throw ToolError(exFailed, "the result could not be written to standard output");
}

}  // namespace vendrel::cli

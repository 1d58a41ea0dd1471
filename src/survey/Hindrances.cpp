#include "survey/Hindrances.h"

#include <algorithm>

namespace vendrel {
namespace {

// clang-format off
constexpr RuntimeName kRuntimeNames[] = {
    {"addressof", Hindrance::Pointer, RuntimeUse::Function, "a delegate"},
    {"chdir", Hindrance::FileAccess, RuntimeUse::Statement, "System.IO.Directory.SetCurrentDirectory"},
    {"chdrive", Hindrance::FileAccess, RuntimeUse::Statement, "System.IO.Directory.SetCurrentDirectory"},
    {"close", Hindrance::FileAccess, RuntimeUse::Statement, "System.IO.FileStream.Close"},
    {"createobject", Hindrance::LateBinding, RuntimeUse::Function, "a class of the new platform, made with New"},
    {"curdir", Hindrance::FileAccess, RuntimeUse::Function, "System.IO.Directory.GetCurrentDirectory"},
    {"curdir$", Hindrance::FileAccess, RuntimeUse::Function, "System.IO.Directory.GetCurrentDirectory"},
    {"deletesetting", Hindrance::RegistryAccess, RuntimeUse::Statement, "a file of settings"},
    {"dir", Hindrance::FileAccess, RuntimeUse::Function, "System.IO.Directory.GetFiles"},
    {"dir$", Hindrance::FileAccess, RuntimeUse::Function, "System.IO.Directory.GetFiles"},
    {"doevents", Hindrance::DoEvents, RuntimeUse::Function, "a task or thread of its own, with await"},
    {"eof", Hindrance::FileAccess, RuntimeUse::Function, "System.IO.StreamReader.EndOfStream"},
    {"fileattr", Hindrance::FileAccess, RuntimeUse::Function, "System.IO.FileStream.CanRead"},
    {"filecopy", Hindrance::FileAccess, RuntimeUse::Statement, "System.IO.File.Copy"},
    {"filedatetime", Hindrance::FileAccess, RuntimeUse::Function, "System.IO.File.GetLastWriteTime"},
    {"filelen", Hindrance::FileAccess, RuntimeUse::Function, "System.IO.FileInfo.Length"},
    {"freefile", Hindrance::FileAccess, RuntimeUse::Function, "none needed: a stream is an object"},
    {"get", Hindrance::FileAccess, RuntimeUse::FileStatement, "System.IO.BinaryReader"},
    {"getallsettings", Hindrance::RegistryAccess, RuntimeUse::Function, "a file of settings"},
    {"getattr", Hindrance::FileAccess, RuntimeUse::Function, "System.IO.File.GetAttributes"},
    {"getobject", Hindrance::LateBinding, RuntimeUse::Function, "a class of the new platform, made with New"},
    {"getsetting", Hindrance::RegistryAccess, RuntimeUse::Function, "a file of settings"},
    {"input", Hindrance::FileAccess, RuntimeUse::FileStatement, "System.IO.StreamReader.ReadLine"},
    {"kill", Hindrance::FileAccess, RuntimeUse::Statement, "System.IO.File.Delete"},
    {"loc", Hindrance::FileAccess, RuntimeUse::Function, "System.IO.FileStream.Position"},
    {"lock", Hindrance::FileAccess, RuntimeUse::FileStatement, "System.IO.FileStream.Lock"},
    {"lof", Hindrance::FileAccess, RuntimeUse::Function, "System.IO.FileStream.Length"},
    {"mkdir", Hindrance::FileAccess, RuntimeUse::Statement, "System.IO.Directory.CreateDirectory"},
    {"name", Hindrance::FileAccess, RuntimeUse::Statement, "System.IO.File.Move"},
    {"objptr", Hindrance::Pointer, RuntimeUse::Function, "System.Object.ReferenceEquals, or none"},
    {"open", Hindrance::FileAccess, RuntimeUse::Statement, "System.IO.FileStream"},
    {"print", Hindrance::FileAccess, RuntimeUse::FileStatement, "System.IO.StreamWriter.WriteLine"},
    {"printer", Hindrance::Printing, RuntimeUse::Function, "System.Drawing.Printing.PrintDocument"},
    {"printers", Hindrance::Printing, RuntimeUse::Function, "System.Drawing.Printing.PrinterSettings.InstalledPrinters"},
    {"printform", Hindrance::Printing, RuntimeUse::Statement, "System.Drawing.Printing.PrintDocument"},
    {"put", Hindrance::FileAccess, RuntimeUse::FileStatement, "System.IO.BinaryWriter"},
    {"reset", Hindrance::FileAccess, RuntimeUse::Statement, "System.IO.FileStream.Close"},
    {"rmdir", Hindrance::FileAccess, RuntimeUse::Statement, "System.IO.Directory.Delete"},
    {"savesetting", Hindrance::RegistryAccess, RuntimeUse::Statement, "a file of settings"},
    {"seek", Hindrance::FileAccess, RuntimeUse::FileStatement, "System.IO.FileStream.Seek"},
    {"setattr", Hindrance::FileAccess, RuntimeUse::Statement, "System.IO.File.SetAttributes"},
    {"strptr", Hindrance::Pointer, RuntimeUse::Function, "System.Runtime.InteropServices.Marshal.StringToHGlobalUni"},
    {"unlock", Hindrance::FileAccess, RuntimeUse::FileStatement, "System.IO.FileStream.Unlock"},
    {"varptr", Hindrance::Pointer, RuntimeUse::Function, "System.Runtime.InteropServices.GCHandle"},
    {"varptrarray", Hindrance::Pointer, RuntimeUse::Function, "System.Runtime.InteropServices.GCHandle"},
    {"varptrstringarray", Hindrance::Pointer, RuntimeUse::Function, "System.Runtime.InteropServices.GCHandle"},
    {"width", Hindrance::FileAccess, RuntimeUse::FileStatement, "none needed"},
    {"write", Hindrance::FileAccess, RuntimeUse::FileStatement, "System.IO.StreamWriter.WriteLine"},
};
// clang-format on

struct ApiReplacement {
  std::string_view Library, Function, Replacement;
};

// clang-format off
constexpr ApiReplacement kApiReplacements[] = {
    {"advapi32", "getusername", "System.Environment.UserName"},
    {"advapi32", "regclosekey", "a file of settings"},
    {"advapi32", "regcreatekey", "a file of settings"},
    {"advapi32", "regcreatekeyex", "a file of settings"},
    {"advapi32", "regdeletekey", "a file of settings"},
    {"advapi32", "regdeletevalue", "a file of settings"},
    {"advapi32", "regenumkey", "a file of settings"},
    {"advapi32", "regenumkeyex", "a file of settings"},
    {"advapi32", "regenumvalue", "a file of settings"},
    {"advapi32", "regopenkey", "a file of settings"},
    {"advapi32", "regopenkeyex", "a file of settings"},
    {"advapi32", "regqueryvalue", "a file of settings"},
    {"advapi32", "regqueryvalueex", "a file of settings"},
    {"advapi32", "regsetvalue", "a file of settings"},
    {"advapi32", "regsetvalueex", "a file of settings"},
    {"comdlg32", "choosecolor", "System.Windows.Forms.ColorDialog"},
    {"comdlg32", "getopenfilename", "System.Windows.Forms.OpenFileDialog"},
    {"comdlg32", "getsavefilename", "System.Windows.Forms.SaveFileDialog"},
    {"gdi32", "bitblt", "System.Drawing.Graphics.DrawImage"},
    {"gdi32", "createcompatiblebitmap", "System.Drawing.Bitmap"},
    {"gdi32", "createcompatibledc", "System.Drawing.Graphics.FromImage"},
    {"gdi32", "createfont", "System.Drawing.Font"},
    {"gdi32", "createfontindirect", "System.Drawing.Font"},
    {"gdi32", "createpen", "System.Drawing.Pen"},
    {"gdi32", "createsolidbrush", "System.Drawing.SolidBrush"},
    {"gdi32", "deletedc", "none needed: Dispose"},
    {"gdi32", "deleteobject", "none needed: Dispose"},
    {"gdi32", "ellipse", "System.Drawing.Graphics.DrawEllipse"},
    {"gdi32", "getpixel", "System.Drawing.Bitmap.GetPixel"},
    {"gdi32", "gettextextentpoint32", "System.Drawing.Graphics.MeasureString"},
    {"gdi32", "lineto", "System.Drawing.Graphics.DrawLine"},
    {"gdi32", "movetoex", "System.Drawing.Graphics.DrawLine"},
    {"gdi32", "rectangle", "System.Drawing.Graphics.DrawRectangle"},
    {"gdi32", "selectobject", "none needed: drawing takes pen, brush and font"},
    {"gdi32", "setpixel", "System.Drawing.Bitmap.SetPixel"},
    {"gdi32", "stretchblt", "System.Drawing.Graphics.DrawImage"},
    {"gdi32", "textout", "System.Drawing.Graphics.DrawString"},
    {"kernel32", "closehandle", "none needed: Dispose"},
    {"kernel32", "copyfile", "System.IO.File.Copy"},
    {"kernel32", "copymemory", "System.Buffer.BlockCopy"},
    {"kernel32", "createdirectory", "System.IO.Directory.CreateDirectory"},
    {"kernel32", "createfile", "System.IO.FileStream"},
    {"kernel32", "createmutex", "System.Threading.Mutex"},
    {"kernel32", "createprocess", "System.Diagnostics.Process.Start"},
    {"kernel32", "createthread", "System.Threading.Thread"},
    {"kernel32", "deletefile", "System.IO.File.Delete"},
    {"kernel32", "exitprocess", "System.Environment.Exit"},
    {"kernel32", "findclose", "none needed: Dispose"},
    {"kernel32", "findfirstfile", "System.IO.Directory.EnumerateFiles"},
    {"kernel32", "findnextfile", "System.IO.Directory.EnumerateFiles"},
    {"kernel32", "formatmessage", "System.ComponentModel.Win32Exception.Message"},
    {"kernel32", "getcomputername", "System.Environment.MachineName"},
    {"kernel32", "getcurrentprocess", "System.Diagnostics.Process.GetCurrentProcess"},
    {"kernel32", "getcurrentprocessid", "System.Environment.ProcessId"},
    {"kernel32", "getcurrentthreadid", "System.Environment.CurrentManagedThreadId"},
    {"kernel32", "getdiskfreespace", "System.IO.DriveInfo.AvailableFreeSpace"},
    {"kernel32", "getdiskfreespaceex", "System.IO.DriveInfo.AvailableFreeSpace"},
    {"kernel32", "getdrivetype", "System.IO.DriveInfo.DriveType"},
    {"kernel32", "getenvironmentvariable", "System.Environment.GetEnvironmentVariable"},
    {"kernel32", "getexitcodeprocess", "System.Diagnostics.Process.ExitCode"},
    {"kernel32", "getfileattributes", "System.IO.File.GetAttributes"},
    {"kernel32", "getfilesize", "System.IO.FileInfo.Length"},
    {"kernel32", "getlasterror", "System.Runtime.InteropServices.Marshal.GetLastWin32Error"},
    {"kernel32", "getlocaltime", "System.DateTime.Now"},
    {"kernel32", "getmodulefilename", "System.Environment.ProcessPath"},
    {"kernel32", "getprivateprofilestring", "a file of settings"},
    {"kernel32", "getsystemdirectory", "System.Environment.SystemDirectory"},
    {"kernel32", "getsystemtime", "System.DateTime.UtcNow"},
    {"kernel32", "gettempfilename", "System.IO.Path.GetTempFileName"},
    {"kernel32", "gettemppath", "System.IO.Path.GetTempPath"},
    {"kernel32", "gettickcount", "System.Environment.TickCount64"},
    {"kernel32", "gettimezoneinformation", "System.TimeZoneInfo.Local"},
    {"kernel32", "getversion", "System.Environment.OSVersion"},
    {"kernel32", "getversionex", "System.Environment.OSVersion"},
    {"kernel32", "getvolumeinformation", "System.IO.DriveInfo"},
    {"kernel32", "getwindowsdirectory", "System.Environment.GetFolderPath"},
    {"kernel32", "globalalloc", "a byte array"},
    {"kernel32", "globalfree", "none needed"},
    {"kernel32", "globallock", "a byte array"},
    {"kernel32", "globalunlock", "none needed"},
    {"kernel32", "lstrcpy", "System.String"},
    {"kernel32", "lstrlen", "System.String.Length"},
    {"kernel32", "movefile", "System.IO.File.Move"},
    {"kernel32", "multibytetowidechar", "System.Text.Encoding.GetString"},
    {"kernel32", "openprocess", "System.Diagnostics.Process.GetProcessById"},
    {"kernel32", "outputdebugstring", "System.Diagnostics.Debug.WriteLine"},
    {"kernel32", "queryperformancecounter", "System.Diagnostics.Stopwatch"},
    {"kernel32", "queryperformancefrequency", "System.Diagnostics.Stopwatch"},
    {"kernel32", "readfile", "System.IO.FileStream.Read"},
    {"kernel32", "rtlmovememory", "System.Buffer.BlockCopy"},
    {"kernel32", "rtlzeromemory", "System.Array.Clear"},
    {"kernel32", "setlasterror", "none needed: exceptions"},
    {"kernel32", "sleep", "System.Threading.Thread.Sleep"},
    {"kernel32", "terminateprocess", "System.Diagnostics.Process.Kill"},
    {"kernel32", "waitforsingleobject", "System.Threading.WaitHandle.WaitOne"},
    {"kernel32", "widechartomultibyte", "System.Text.Encoding.GetBytes"},
    {"kernel32", "writefile", "System.IO.FileStream.Write"},
    {"kernel32", "writeprivateprofilestring", "a file of settings"},
    {"ole32", "cocreateguid", "System.Guid.NewGuid"},
    {"ole32", "stringfromguid2", "System.Guid.ToString"},
    {"shell32", "dragqueryfile", "System.Windows.Forms.DataObject.GetFileDropList"},
    {"shell32", "shbrowseforfolder", "System.Windows.Forms.FolderBrowserDialog"},
    {"shell32", "shell_notifyicon", "System.Windows.Forms.NotifyIcon"},
    {"shell32", "shellexecute", "System.Diagnostics.Process.Start"},
    {"shell32", "shellexecuteex", "System.Diagnostics.Process.Start"},
    {"shell32", "shfileoperation", "System.IO.File and System.IO.Directory"},
    {"shell32", "shgetfolderpath", "System.Environment.GetFolderPath"},
    {"shell32", "shgetpathfromidlist", "System.Environment.GetFolderPath"},
    {"shell32", "shgetspecialfolderlocation", "System.Environment.GetFolderPath"},
    {"shell32", "shgetspecialfolderpath", "System.Environment.GetFolderPath"},
    {"urlmon", "urldownloadtofile", "System.Net.Http.HttpClient"},
    {"user32", "callnexthookex", "an event of the form"},
    {"user32", "callwindowproc", "System.Windows.Forms.Control.WndProc"},
    {"user32", "drawtext", "System.Drawing.Graphics.DrawString"},
    {"user32", "enablewindow", "System.Windows.Forms.Control.Enabled"},
    {"user32", "fillrect", "System.Drawing.Graphics.FillRectangle"},
    {"user32", "findwindow", "System.Diagnostics.Process.GetProcessesByName"},
    {"user32", "getasynckeystate", "events of the keyboard"},
    {"user32", "getclientrect", "System.Windows.Forms.Control.ClientRectangle"},
    {"user32", "getcursorpos", "System.Windows.Forms.Cursor.Position"},
    {"user32", "getdc", "System.Windows.Forms.Control.CreateGraphics"},
    {"user32", "getfocus", "System.Windows.Forms.Form.ActiveControl"},
    {"user32", "getforegroundwindow", "System.Windows.Forms.Form.ActiveForm"},
    {"user32", "getkeystate", "System.Windows.Forms.Control.ModifierKeys"},
    {"user32", "getparent", "System.Windows.Forms.Control.Parent"},
    {"user32", "getsyscolor", "System.Drawing.SystemColors"},
    {"user32", "getsystemmetrics", "System.Windows.Forms.SystemInformation"},
    {"user32", "getwindowlong", "System.Windows.Forms.Control.CreateParams"},
    {"user32", "getwindowrect", "System.Windows.Forms.Control.Bounds"},
    {"user32", "getwindowtext", "System.Windows.Forms.Control.Text"},
    {"user32", "invalidaterect", "System.Windows.Forms.Control.Invalidate"},
    {"user32", "keybd_event", "System.Windows.Forms.SendKeys"},
    {"user32", "killtimer", "System.Windows.Forms.Timer"},
    {"user32", "lockwindowupdate", "System.Windows.Forms.Control.SuspendLayout"},
    {"user32", "messagebox", "System.Windows.Forms.MessageBox.Show"},
    {"user32", "movewindow", "System.Windows.Forms.Control.Bounds"},
    {"user32", "postmessage", "System.Windows.Forms.Control.BeginInvoke"},
    {"user32", "redrawwindow", "System.Windows.Forms.Control.Refresh"},
    {"user32", "releasecapture", "System.Windows.Forms.Control.Capture"},
    {"user32", "releasedc", "none needed: Dispose"},
    {"user32", "screentoclient", "System.Windows.Forms.Control.PointToClient"},
    {"user32", "sendmessage", "the member of the control that does the same"},
    {"user32", "setcapture", "System.Windows.Forms.Control.Capture"},
    {"user32", "setcursorpos", "System.Windows.Forms.Cursor.Position"},
    {"user32", "setfocus", "System.Windows.Forms.Control.Focus"},
    {"user32", "setforegroundwindow", "System.Windows.Forms.Form.Activate"},
    {"user32", "setlayeredwindowattributes", "System.Windows.Forms.Form.Opacity"},
    {"user32", "setparent", "System.Windows.Forms.Control.Parent"},
    {"user32", "settimer", "System.Windows.Forms.Timer"},
    {"user32", "setwindowlong", "System.Windows.Forms.Control.CreateParams and WndProc"},
    {"user32", "setwindowpos", "System.Windows.Forms.Form.TopMost"},
    {"user32", "setwindowshookex", "an event of the form"},
    {"user32", "setwindowtext", "System.Windows.Forms.Control.Text"},
    {"user32", "showwindow", "System.Windows.Forms.Form.WindowState"},
    {"user32", "unhookwindowshookex", "an event of the form"},
    {"user32", "updatewindow", "System.Windows.Forms.Control.Update"},
    {"user32", "windowfrompoint", "System.Windows.Forms.Control.GetChildAtPoint"},
    {"winmm", "mcisendstring", "a media player of the new platform"},
    {"winmm", "playsound", "System.Media.SoundPlayer"},
    {"winmm", "sndplaysound", "System.Media.SoundPlayer"},
    {"winmm", "timegettime", "System.Environment.TickCount64"},
};
// clang-format on

constexpr std::string_view kSixteenBitLibraries[] = {
    "commdlg", "gdi",      "kernel", "keyboard", "lzexpand", "mmsystem", "shell",
    "sound",   "toolhelp", "user",   "vbrun300", "ver",      "win87em"};

constexpr auto ByName = [](const RuntimeName& a, const RuntimeName& b) { return a.Name < b.Name; };
constexpr auto ByFunction = [](const ApiReplacement& a, const ApiReplacement& b) {
  return a.Library != b.Library ? a.Library < b.Library : a.Function < b.Function;
};
static_assert(std::is_sorted(std::begin(kRuntimeNames), std::end(kRuntimeNames), ByName));
static_assert(std::is_sorted(std::begin(kApiReplacements), std::end(kApiReplacements), ByFunction));

}  // namespace

std::span<const RuntimeName> RuntimeNames() { return kRuntimeNames; }

const RuntimeName* FindRuntimeName(std::string_view lowerName) {
  const RuntimeName sought{lowerName, Hindrance::GoSub, RuntimeUse::Function, {}};
  const auto* found =
      std::lower_bound(std::begin(kRuntimeNames), std::end(kRuntimeNames), sought, ByName);
  return found != std::end(kRuntimeNames) && found->Name == lowerName ? found : nullptr;
}

std::string_view ApiReplacementOf(std::string_view library, std::string_view function) {
  const ApiReplacement sought{library, function, {}};
  const auto* found = std::lower_bound(std::begin(kApiReplacements), std::end(kApiReplacements),
                                       sought, ByFunction);
  const bool isFound = found != std::end(kApiReplacements) && found->Library == library &&
                       found->Function == function;
  return isFound ? found->Replacement : std::string_view();
}

bool IsSixteenBitLibrary(std::string_view library) {
  return std::find(std::begin(kSixteenBitLibraries), std::end(kSixteenBitLibraries), library) !=
         std::end(kSixteenBitLibraries);
}

}  // namespace vendrel

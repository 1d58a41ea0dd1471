// References of a project, and the libraries that its code names.
#include <algorithm>
#include <string>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/Component.h"
#include "project/VBProject.h"
#include "uses/Unused.h"

namespace vendrel {
namespace {

constexpr std::string_view kNoLibrary =
    "names are used of which nothing tells the library that they are from";
constexpr std::string_view kUnknownFile = "the library is not at hand, and its name not known";

struct KnownLibrary {
  std::string_view File;     // leaf name in lower case
  std::string_view Library;  // as source names it
};

// What the files of well-known libraries and controls are called in source. Sorted by file.
constexpr KnownLibrary kKnownLibraries[] = {{"acrobat.tlb", "Acrobat"},
                                            {"actskn43.ocx", "ACTIVESKINLibCtl"},
                                            {"activeds.tlb", "ActiveDs"},
                                            {"adoxx.dll", "ADOX"},
                                            {"cdosys.dll", "CDO"},
                                            {"comct232.ocx", "ComCtl2"},
                                            {"comct332.ocx", "ComCtl3"},
                                            {"comctl32.ocx", "ComctlLib"},
                                            {"comdlg32.ocx", "MSComDlg"},
                                            {"comsvcs.dll", "COMSVCSLib"},
                                            {"crystl32.ocx", "Crystal"},
                                            {"dao2535.tlb", "DAO"},
                                            {"dao350.dll", "DAO"},
                                            {"dao360.dll", "DAO"},
                                            {"dbgrid32.ocx", "MSDBGrid"},
                                            {"dblist32.ocx", "MSDBCtls"},
                                            {"dx7vb.dll", "DxVBLib"},
                                            {"dx8vb.dll", "DxVBLibA"},
                                            {"excel.exe", "Excel"},
                                            {"excel9.olb", "Excel"},
                                            {"fm20.dll", "MSForms"},
                                            {"grid32.ocx", "MSGrid"},
                                            {"ieframe.dll", "SHDocVw"},
                                            {"jro.dll", "JRO"},
                                            {"mci32.ocx", "MCI"},
                                            {"mscal.ocx", "MSACAL"},
                                            {"mschrt20.ocx", "MSChart20Lib"},
                                            {"mscomct2.ocx", "MSComCtl2"},
                                            {"mscomctl.ocx", "MSComctlLib"},
                                            {"mscomm32.ocx", "MSCommLib"},
                                            {"msadodc.ocx", "MSAdodcLib"},
                                            {"msado15.dll", "ADODB"},
                                            {"msado20.tlb", "ADODB"},
                                            {"msado21.tlb", "ADODB"},
                                            {"msado25.tlb", "ADODB"},
                                            {"msado26.tlb", "ADODB"},
                                            {"msado27.tlb", "ADODB"},
                                            {"msado28.tlb", "ADODB"},
                                            {"msadox.dll", "ADOX"},
                                            {"msdatgrd.ocx", "MSDataGridLib"},
                                            {"msdatlst.ocx", "MSDataListLib"},
                                            {"msdatrep.ocx", "MSDataRepeaterLib"},
                                            {"msdatsrc.tlb", "MSDATASRC"},
                                            {"msdbrptr.dll", "MSDataReportLib"},
                                            {"msderun.dll", "MSDataEnvironment"},
                                            {"msflxgrd.ocx", "MSFlexGridLib"},
                                            {"mshflxgd.ocx", "MSHierarchicalFlexGridLib"},
                                            {"mshtml.tlb", "MSHTML"},
                                            {"msinet.ocx", "InetCtlsObjects"},
                                            {"msjro.dll", "JRO"},
                                            {"msmapi32.ocx", "MSMAPI"},
                                            {"msmask32.ocx", "MSMask"},
                                            {"msoutl.olb", "Outlook"},
                                            {"msrdo20.dll", "RDO"},
                                            {"msscript.ocx", "MSScriptControl"},
                                            {"msstdfmt.dll", "StdFormat"},
                                            {"mstext35.dll", "MSText"},
                                            {"msvidctl.dll", "MSVidCtlLib"},
                                            {"mswinsck.ocx", "MSWinsockLib"},
                                            {"msword.olb", "Word"},
                                            {"msword8.olb", "Word"},
                                            {"msword9.olb", "Word"},
                                            {"msxml.dll", "MSXML"},
                                            {"msxml2.dll", "MSXML2"},
                                            {"msxml3.dll", "MSXML2"},
                                            {"msxml4.dll", "MSXML2"},
                                            {"msxml6.dll", "MSXML2"},
                                            {"outlctl.dll", "OLXLib"},
                                            {"picclp32.ocx", "PicClip"},
                                            {"quartz.dll", "QuartzTypeLib"},
                                            {"richtx32.ocx", "RichTextLib"},
                                            {"sapi.dll", "SpeechLib"},
                                            {"scrrun.dll", "Scripting"},
                                            {"shdocvw.dll", "SHDocVw"},
                                            {"shell32.dll", "Shell32"},
                                            {"ss32x25.ocx", "FPSpread"},
                                            {"sysinfo.ocx", "SysInfoLib"},
                                            {"tabctl32.ocx", "TabDlg"},
                                            {"taskschd.dll", "TaskScheduler"},
                                            {"threed32.ocx", "Threed"},
                                            {"tlbinf32.dll", "TLI"},
                                            {"vbscript.dll", "VBScript_RegExp_55"},
                                            {"wbemdisp.tlb", "WbemScripting"},
                                            {"wiaaut.dll", "WIA"},
                                            {"winhttp.dll", "WinHttp"},
                                            {"wmp.dll", "WMPLib"},
                                            {"wmp.ocx", "WMPLib"},
                                            {"wshom.ocx", "IWshRuntimeLibrary"},
                                            {"xenroll.dll", "CERTENROLLLib"}};

// The last part of a path that is a file: "C:\W\vbscript.dll\3" names the third library of a file.
std::string LeafNameOf(std::string_view path) {
  const auto leaf = [](std::string_view text) { return text.substr(text.find_last_of("\\/") + 1); };
  std::string_view name = leaf(path);
  if (!name.empty() && name.find_first_not_of("0123456789") == name.npos &&
      name.size() < path.size())
    name = leaf(path.substr(0, path.size() - name.size() - 1));
  return LowerAscii(name);
}

// Every project refers to it from its first day, and it holds what the language needs itself.
bool IsOfTheLanguage(std::string_view file) {
  return file == "stdole2.tlb" || file == "stdole32.tlb" || file == "olepro32.dll" ||
         file.starts_with("msvbvm") || file.starts_with("vba6") || file == "vb6.olb";
}

class ReferenceJudge {
 public:
  explicit ReferenceJudge(const Reach& reach) : mReach(reach) {
    const ReachGraph& graph = reach.Graph();
    mNamed = graph.Libraries();
    for (const ReachEdge& edge : graph.Edges()) {
      const VBProject* from = ProjectOf(*graph.Nodes()[edge.From]);
      const VBProject* to = ProjectOf(*graph.Nodes()[edge.To]);
      if (to && from != to) mNamed.insert(FoldKey(to->ProjectName));
    }
  }

  void Look(const VBProject& project, const std::function<void(const UnusedFinding&)>& take) {
    TakeControlTypes(project);
    for (const Reference& reference : project.References) {
      const bool isControl = reference.ReferenceType == "Object";
      if (!isControl && reference.ReferenceType != "Reference") continue;
      const std::string file = LeafNameOf(reference.FileName.FullPath());
      if (IsOfTheLanguage(file)) continue;
      UnusedFinding finding;
      finding.Element = &reference;
      finding.Kind = isControl ? "control-reference" : "reference";
      finding.Reason = UnusedReason::NoneOfLibrary;
      const std::string name = LibraryNameOf(reference);
      if (!name.empty() && mNamed.contains(FoldKey(name))) continue;
      if (mReach.Graph().HasUnnamedLibrary() || name.empty()) {
        finding.How = Sureness::Possible;
        finding.Doubt = name.empty() ? kUnknownFile : kNoLibrary;
      }
      // Nothing is known of the library, and something is used of which the library is not known.
      if (name.empty() && (mReach.Graph().HasUnnamedLibrary() || mHasForeignControl)) continue;
      take(finding);
    }
  }

 private:
  static const VBProject* ProjectOf(const CodeElement& element) {
    const Component* home = element.OwnComponent();
    return home ? home->VBProject() : As<VBProject>(&element);
  }

  // "MSComctlLib.ListView" is a use of its library.
  void TakeControlTypes(const VBProject& project) {
    mHasForeignControl = false;
    for (const Component& module : project.Components.Listed())
      for (const VBControl& control : module.AllVBControls) {
        const std::string_view library =
            std::string_view(control.ProgID).substr(0, control.ProgID.find('.'));
        mNamed.insert(FoldKey(library));
        if (!EqualsNoCaseAscii(library, "VB")) mHasForeignControl = true;
      }
  }

  const Reach& mReach;
  std::unordered_set<std::string> mNamed;
  bool mHasForeignControl = false;
};

}  // namespace

std::string_view LibraryNameOfFile(std::string_view leafName) {
  for (const KnownLibrary& known : kKnownLibraries)
    if (EqualsNoCaseAscii(known.File, leafName)) return known.Library;
  return {};
}

std::string LibraryNameOf(const Reference& reference) {
  if (const VBProject* project = reference.ReferencedProject()) return project->ProjectName;
  return std::string(LibraryNameOfFile(LeafNameOf(reference.FileName.FullPath())));
}

void FindUnusedReferences(const Reach& reach,
                          const std::function<void(const UnusedFinding&)>& take) try {
  ReferenceJudge judge(reach);
  for (const VBProject* project : reach.Projects())
    if (!IsNetProject(*project)) judge.Look(*project, take);
}
VENDREL_CONTEXT()

}  // namespace vendrel

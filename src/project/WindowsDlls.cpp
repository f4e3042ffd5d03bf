#include "project/WindowsDlls.h"

#include <string_view>

#include "text/Text.h"

namespace bxvbwiz {
namespace {

// Declare statements name these because Windows documents their functions, or because samples of its
// undocumented ones go round; no setup may install them. Names without an extension are DLLs. The third group
// are the modules of 16-bit Windows: old declarations are left over in programs, which cannot call them. The
// last one is what the run-time component installs, and what only the development environment has.
constexpr std::string_view kNames =
    " activeds adsldpc advapi32 advpack apphelp authz avicap32 avifil32 avrt bcrypt bluetoothapis browseui "
    "bthprops.cpl"
    " cabinet cards certcli cfgmgr32 clusapi comctl32 comdlg32 comsvcs credui crypt32 cryptdll cryptnet "
    "cryptui d2d1"
    " d3d10 d3d11 d3d8 d3d9 d3dim d3drm d3dxof dbghelp dbnetlib dciman32 ddraw devmgr dhcpcsvc dinput "
    "dinput8 dnsapi"
    " dplayx dsound dssenh dsuiext dwmapi dwrite dxgi esent evr faultrep fltlib fontsub gdi32 gdiplus glu32 "
    "gpedit"
    " hhctrl.ocx hid hlink httpapi icm32 icmp icmui imagehlp imgutil imm32 inetcomm inetmib1 iphlpapi "
    "joy.cpl kernel32"
    " kernelbase ksuser loadperf localspl lz32 mapi32 mf mfplat mgmtapi mlang mmdevapi mpr mprapi msacm32 "
    "mscat32"
    " mscms msctf msftedit mshtml msi msimg32 msls31 msorcl32 mspatcha msrating mssip32 msvcirt "
    "msvcrt msvcrt40"
    " msvfw32 mswsock ncrypt nddeapi netapi32 normaliz npptools ntdll ntdsapi ntlanman ntmarta ntoskrnl.exe "
    "ntshrui"
    " objsel odbc32 odbccp32 ole32 oleacc oledlg olepro32 oleprn olethk32 opengl32 pdh penwin32 powrprof "
    "printui"
    " propsys psapi pstorec quartz query qutil rasapi32 rasdlg rasman rasser riched20 riched32 rnr20 rpcns4 "
    "rpcrt4"
    " rsaenh rstrtmgr rtm rtutils samlib schannel scrobj secur32 security sensapi setupapi sfc sfc_os "
    "sfcfiles shdocvw"
    " shell32 shfolder shimgvw shlwapi shscrap slc snmpapi softpub srclient srvsvc sti strmiids svrapi"
    " synceng syssetup t2embed tapi32 tdh traffic twain_32 umpnpmgr url urlmon user32 userenv usp10"
    " uxtheme vdmdbg version virtdisk w32topl webcheck wdi wer wevtapi wiaservc winbio windowscodecs winfax"
    " winhttp wininet winmm winscard winspool winspool.drv winsta winstrm wintrust winusb wlanapi wldap32 "
    "wmi wow32"
    " ws2_32 ws2help wscapi wshtcpip wsnmp32 wsock32 wtsapi32 xinput1_3 xinput1_4 xinput9_1_0 xmllite"
    " xolehlp"
    // 16-bit Windows
    " commdlg ddeml gdi gdi.exe kernel krnl386.exe keyboard lzexpand mmsystem ole2 olecli olesvr shell sound "
    "toolhelp"
    " user user.exe ver win87em"
    // Visual Basic
    " asycfilt comcat msvbvm50 msvbvm60 oleaut32 stdole2.tlb vb4016 vb40032 vb5 vba5 vba6 vbe6 vbe7 ";

}  // namespace

bool IsWindowsDll(const std::string& name) {
  constexpr std::string_view kExtension = ".dll";
  std::string wanted = LowerCase(name);
  if (EndsWith(wanted, kExtension)) wanted.resize(wanted.size() - kExtension.size());
  return kNames.find(" " + wanted + " ") != std::string_view::npos;
}

}  // namespace bxvbwiz

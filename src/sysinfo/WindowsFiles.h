#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "text/Text.h"

namespace bxvbwiz {

// What a setup may do with a file that many programs share.
enum class WindowsFileUse {
  Never,     // it belongs to Windows, or comes with a component of its own
  Shared,    // it may be installed, if it is counted as shared
  Debug,     // it may not be handed on, and only a debug build needs it
  Declared,  // it belongs to Windows, and programs that name it hardly bring it
};

// Files of one use, their names between blanks. Those without an extension are DLLs.
struct WindowsFiles {
  WindowsFileUse use;
  std::string_view names;
};

constexpr WindowsFiles kWindowsFiles[] = {
    // The core of Windows and what every program calls.
    {WindowsFileUse::Never,
     " KERNEL32 USER32 GDI32 ADVAPI32 NTDLL RPCRT4 SHELL32 SHLWAPI COMCTL32 COMDLG32 IMM32 LZ32 MPR"
     " NETAPI32 PSAPI SECUR32 SETUPAPI USERENV VERSION WINSPOOL.DRV MSIMG32 USP10 UXTHEME OLEACC IMAGEHLP"
     " DBGHELP CFGMGR32 POWRPROF HID WTSAPI32 ACTIVEDS MSI MSCMS CRTDLL "},
    // The system's own C run time since Windows 2000, which protects it.
    {WindowsFileUse::Never, " MSVCRT "},
    // Automation, which Windows has and which the run-time component of Visual Basic updates.
    {WindowsFileUse::Never, " OLE32 OLEAUT32 OLEPRO32 ASYCFILT STDOLE2.TLB OLEDLG "},
    // The run time of Visual Basic, which has its own component.
    {WindowsFileUse::Never, " MSVBVM50 MSVBVM60 "},
    // The network: each works only with the services of the Windows that it came with.
    {WindowsFileUse::Never,
     " WS2_32 WSOCK32 MSWSOCK IPHLPAPI RASAPI32 TAPI32 RASDLG RTUTILS WS2HELP ICMP DNSAPI SNMPAPI MAPI32 "},
    // The Internet programs install these together, and Windows protects them.
    {WindowsFileUse::Never,
     " WININET URLMON INETCOMM WEBIO CRYPT32 MSHTML MSHTML.TLB SHDOCVW MLANG HLINK BROWSEUI WINTRUST"
     " CRYPTUI WINHTTP HHCTRL.OCX "},
    // Sound and pictures: parts of Windows that talk to its drivers.
    {WindowsFileUse::Never, " WINMM MSACM32 MSVFW32 AVIFIL32 AVICAP32 OPENGL32 GLU32 "},
    // DirectX is installed as a whole, by its own setup.
    {WindowsFileUse::Never,
     " DDRAW DSOUND DINPUT DINPUT8 D3D8 D3D9 D3DIM DPLAYX DX7VB DX8VB D3DRM D3DXOF QUARTZ "},
    // Data access is installed as a whole, by its own setup.
    {WindowsFileUse::Never, " MSDART ODBC32 ODBCCP32 ODBCINT OLEDB32 "},
    // Run times of Visual C++. Windows has them too, and other programs use the same copy.
    {WindowsFileUse::Shared, " MFC40 MFC42 MFC42U MSVCRT20 MSVCRT40 MSVCIRT MSVCP60 ATL "},
    // Their debug versions come with the compiler and stay with it.
    {WindowsFileUse::Debug, " MFC42D MFCO42D MSVCRTD MSVCP60D "},
    // Declare statements name these, because Windows documents their functions, or because samples of its
    // undocumented ones go round.
    {WindowsFileUse::Declared,
     " ADSLDPC ADVPACK APPHELP AUTHZ AVRT BCRYPT BLUETOOTHAPIS BTHPROPS.CPL CABINET CARDS CERTCLI CLUSAPI"
     " COMSVCS CREDUI CRYPTDLL CRYPTNET D2D1 D3D10 D3D11 DBNETLIB DCIMAN32 DEVMGR DHCPCSVC DSSENH DSUIEXT"
     " DWMAPI DWRITE DXGI ESENT EVR FAULTREP FLTLIB FONTSUB GDIPLUS GPEDIT HTTPAPI ICM32 ICMUI IMGUTIL"
     " INETMIB1 JOY.CPL KERNELBASE KSUSER LOADPERF LOCALSPL MF MFPLAT MGMTAPI MMDEVAPI MPRAPI MSCAT32"
     " MSCTF MSFTEDIT MSLS31 MSORCL32 MSPATCHA MSRATING MSSIP32 NCRYPT NDDEAPI NORMALIZ NPPTOOLS NTDSAPI"
     " NTLANMAN NTMARTA NTOSKRNL.EXE NTSHRUI OBJSEL OLEPRN OLETHK32 PDH PENWIN32 PRINTUI PROPSYS PSTOREC"
     " QUERY QUTIL RASMAN RASSER RICHED20 RICHED32 RNR20 RPCNS4 RSAENH RSTRTMGR RTM SAMLIB SCHANNEL"
     " SCROBJ SECURITY SENSAPI SFC SFC_OS SFCFILES SHFOLDER SHIMGVW SHSCRAP SLC SOFTPUB SRCLIENT SRVSVC"
     " STI STRMIIDS SVRAPI SYNCENG SYSSETUP T2EMBED TDH TRAFFIC TWAIN_32 UMPNPMGR URL VDMDBG VIRTDISK"
     " W32TOPL WEBCHECK WDI WER WEVTAPI WIASERVC WINBIO WINDOWSCODECS WINFAX WINSCARD WINSPOOL WINSTA"
     " WINSTRM WINUSB WLANAPI WLDAP32 WMI WOW32 WSCAPI WSHTCPIP WSNMP32 XINPUT1_3 XINPUT1_4 XINPUT9_1_0"
     " XMLLITE XOLEHLP "},
    // 16-bit Windows: old declarations are left over in programs, which cannot call them.
    {WindowsFileUse::Declared,
     " COMMDLG DDEML GDI GDI.EXE KERNEL KRNL386.EXE KEYBOARD LZEXPAND MMSYSTEM OLE2 OLECLI OLESVR SHELL"
     " SOUND TOOLHELP USER USER.EXE VER WIN87EM "},
    // Visual Basic itself, besides its run time.
    {WindowsFileUse::Declared, " COMCAT VB4016 VB40032 VB5 VBA5 VBA6 VBE6 VBE7 "},
};

// The use of the file of a name; nothing for an unknown one.
inline std::optional<WindowsFileUse> UseOfWindowsFile(std::string_view name) {
  constexpr std::string_view kExtension = ".DLL";
  std::string wanted = " " + UpperCase(name);
  if (EndsWith(wanted, kExtension)) wanted.resize(wanted.size() - kExtension.size());
  wanted += ' ';
  for (const WindowsFiles& files : kWindowsFiles) {
    if (files.names.find(wanted) != std::string_view::npos) return files.use;
  }
  return std::nullopt;
}

}  // namespace bxvbwiz

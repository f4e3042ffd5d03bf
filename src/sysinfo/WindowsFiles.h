#pragma once

#include <string>
#include <string_view>

#include "text/Text.h"

namespace bxvbwiz {

// What a setup may do with a file that many programs share.
enum class WindowsFileUse {
  Never,   // it belongs to Windows, or comes with a component of its own
  Shared,  // it may be installed, if it is counted as shared
  Debug,   // it may not be handed on, and only a debug build needs it
};

struct WindowsFile {
  std::string_view name;  // upper case
  WindowsFileUse use = WindowsFileUse::Never;
};

constexpr WindowsFile kWindowsFiles[] = {
    // The core of Windows and what every program calls.
    {"KERNEL32.DLL"},
    {"USER32.DLL"},
    {"GDI32.DLL"},
    {"ADVAPI32.DLL"},
    {"NTDLL.DLL"},
    {"RPCRT4.DLL"},
    {"SHELL32.DLL"},
    {"SHLWAPI.DLL"},
    {"COMCTL32.DLL"},
    {"COMDLG32.DLL"},
    {"IMM32.DLL"},
    {"LZ32.DLL"},
    {"MPR.DLL"},
    {"NETAPI32.DLL"},
    {"PSAPI.DLL"},
    {"SECUR32.DLL"},
    {"SETUPAPI.DLL"},
    {"USERENV.DLL"},
    {"VERSION.DLL"},
    {"WINSPOOL.DRV"},
    {"MSIMG32.DLL"},
    {"USP10.DLL"},
    {"UXTHEME.DLL"},
    {"OLEACC.DLL"},
    {"IMAGEHLP.DLL"},
    {"DBGHELP.DLL"},
    {"CFGMGR32.DLL"},
    {"POWRPROF.DLL"},
    {"HID.DLL"},
    {"WTSAPI32.DLL"},
    {"ACTIVEDS.DLL"},
    {"MSI.DLL"},
    {"MSCMS.DLL"},
    {"CRTDLL.DLL"},
    // The system's own C run time since Windows 2000, which protects it.
    {"MSVCRT.DLL"},
    // Automation, which Windows has and which the run-time component of Visual Basic updates.
    {"OLE32.DLL"},
    {"OLEAUT32.DLL"},
    {"OLEPRO32.DLL"},
    {"ASYCFILT.DLL"},
    {"STDOLE2.TLB"},
    {"OLEDLG.DLL"},
    // The run time of Visual Basic, which has its own component.
    {"MSVBVM50.DLL"},
    {"MSVBVM60.DLL"},
    // The network: each works only with the services of the Windows that it came with.
    {"WS2_32.DLL"},
    {"WSOCK32.DLL"},
    {"MSWSOCK.DLL"},
    {"IPHLPAPI.DLL"},
    {"RASAPI32.DLL"},
    {"TAPI32.DLL"},
    {"RASDLG.DLL"},
    {"RTUTILS.DLL"},
    {"WS2HELP.DLL"},
    {"ICMP.DLL"},
    {"DNSAPI.DLL"},
    {"SNMPAPI.DLL"},
    {"MAPI32.DLL"},
    // The Internet programs install these together, and Windows protects them.
    {"WININET.DLL"},
    {"URLMON.DLL"},
    {"INETCOMM.DLL"},
    {"WEBIO.DLL"},
    {"CRYPT32.DLL"},
    {"MSHTML.DLL"},
    {"MSHTML.TLB"},
    {"SHDOCVW.DLL"},
    {"MLANG.DLL"},
    {"HLINK.DLL"},
    {"BROWSEUI.DLL"},
    {"WINTRUST.DLL"},
    {"CRYPTUI.DLL"},
    {"WINHTTP.DLL"},
    {"HHCTRL.OCX"},
    // Sound and pictures: parts of Windows that talk to its drivers.
    {"WINMM.DLL"},
    {"MSACM32.DLL"},
    {"MSVFW32.DLL"},
    {"AVIFIL32.DLL"},
    {"AVICAP32.DLL"},
    {"OPENGL32.DLL"},
    {"GLU32.DLL"},
    // DirectX is installed as a whole, by its own setup.
    {"DDRAW.DLL"},
    {"DSOUND.DLL"},
    {"DINPUT.DLL"},
    {"DINPUT8.DLL"},
    {"D3D8.DLL"},
    {"D3D9.DLL"},
    {"D3DIM.DLL"},
    {"DPLAYX.DLL"},
    {"DX7VB.DLL"},
    {"DX8VB.DLL"},
    {"D3DRM.DLL"},
    {"D3DXOF.DLL"},
    {"QUARTZ.DLL"},
    // Data access is installed as a whole, by its own setup.
    {"MSDART.DLL"},
    {"ODBC32.DLL"},
    {"ODBCCP32.DLL"},
    {"ODBCINT.DLL"},
    {"OLEDB32.DLL"},
    // Run times of Visual C++. Windows has them too, and other programs use the same copy.
    {"MFC40.DLL", WindowsFileUse::Shared},
    {"MFC42.DLL", WindowsFileUse::Shared},
    {"MFC42U.DLL", WindowsFileUse::Shared},
    {"MSVCRT20.DLL", WindowsFileUse::Shared},
    {"MSVCRT40.DLL", WindowsFileUse::Shared},
    {"MSVCIRT.DLL", WindowsFileUse::Shared},
    {"MSVCP60.DLL", WindowsFileUse::Shared},
    {"ATL.DLL", WindowsFileUse::Shared},
    // Their debug versions come with the compiler and stay with it.
    {"MFC42D.DLL", WindowsFileUse::Debug},
    {"MFCO42D.DLL", WindowsFileUse::Debug},
    {"MSVCRTD.DLL", WindowsFileUse::Debug},
    {"MSVCP60D.DLL", WindowsFileUse::Debug},
};

// The row of a file name; null for an unknown one.
inline const WindowsFile* FindWindowsFile(std::string_view name) {
  const std::string upper = UpperCase(name);
  for (const WindowsFile& file : kWindowsFiles) {
    if (file.name == upper) return &file;
  }
  return nullptr;
}

}  // namespace bxvbwiz

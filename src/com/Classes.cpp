#include "com/Classes.h"

#include "com/BX6VBWiz.h"

namespace bxvbwiz {

const ServerClass kServerClasses[kServerClassCount] = {
    {&CLSID_Application, L"BX6VBWiz.Application", L"Borvex 6 VB Project Wizard", &MakeApplication},
    {&CLSID_CSystemInfo, L"BX6VBWiz.CSystemInfo", L"Borvex 6 VB Project Wizard: system information",
     &MakeSystemInfo},
    {&CLSID_CFileGroups, L"BX6VBWiz.CFileGroups", L"Borvex 6 VB Project Wizard: file groups",
     &MakeFileGroups},
    {&CLSID_CComponents, L"BX6VBWiz.CComponents", L"Borvex 6 VB Project Wizard: components", &MakeComponents},
};

}  // namespace bxvbwiz

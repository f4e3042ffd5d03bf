' A host in VBScript: calls every member of the public classes. usage: host.vbs FOLDER, with the folders "Src" and
' "Setups" of an installed product. Quits with 42 when all is as expected, because a script that stops at an error
' quits with 0.
Option Explicit
Dim failures
failures = 0

Sub Check(what, got, wanted)
  If CStr(got) <> CStr(wanted) Then
    WScript.Echo what & " is """ & got & """ instead of """ & wanted & """"
    failures = failures + 1
  End If
End Sub

' The error that the last statement left, and none for the next.
Sub CheckError(what, number, part)
  If Err.Number <> number Or InStr(Err.Description, part) = 0 Then
    WScript.Echo what & " fails with " & Err.Number & ", """ & Err.Description & """"
    failures = failures + 1
  End If
  Err.Clear
End Sub

Class FileRecord
  Public FileName
  Public Destination
  Public SharedFile
  Public SelfRegister
  Public FileLinkPath
  Public LinkResolves
  Public FileGroup
End Class

Class NoRecord
  Public FileName
End Class

Dim files, folder, setup, name
Set files = CreateObject("Scripting.FileSystemObject")
folder = WScript.Arguments(0)
setup = folder & "Setup"
For Each name In Array("", "\File Groups", "\Component Definitions", "\Text Substitutions")
  files.CreateFolder setup & name
Next

Function Contains(path, text)
  Contains = InStr(files.OpenTextFile(path).ReadAll, text) > 0
End Function

Sub TestApplication()
  Dim app
  Set app = CreateObject("BX6VBWiz.Application")
  Check "ID", app.ID, "0000"
  Check "ShowPage2", app.ShowPage2, True
  Check "VBScript", app.VBScript, False
  app.ID = "ABCD"
  app.Project = folder & "Src\App.vbp"
  app.ShowPage2 = False
  app.AppName = "Orders"
  app.VBScript = True
  Check "set", app.ID & app.ShowPage2 & app.AppName & app.VBScript, "ABCDFalseOrdersTrue"
  app.AppName = String(3000000, "x")
  Check "a long text", Len(app.AppName), 3000000
  app.AppName = "a" & Chr(0) & "b"
  Check "a text", app.AppName, "a" & Chr(0) & "b"
  app.AppName = 12
  Check "a number as text", app.AppName, "12"
  app.AppName = "Orders"
  On Error Resume Next
  app.Missing = 0
  CheckError "a missing member", 438, ""
  app.ShowPage2 = "much"
  CheckError "a wrong value", 13, "ShowPage2"
  app.ReturnCode = 0
  CheckError "writing ReturnCode", 438, ""
  app.StillExecuting = False
  CheckError "writing StillExecuting", 438, ""
  app.ProjectFile = "x"
  CheckError "writing ProjectFile", 438, ""
  On Error Goto 0
  Check "StillExecuting", app.sTILLeXECUTING, True
  app.Run
  Check "StillExecuting", app.StillExecuting, False
  Check "ReturnCode", app.ReturnCode, -1
  Check "ProjectFile", app.ProjectFile, folder & "Setups\Orders\Orders.bxp"
  Check "its file", files.FileExists(app.ProjectFile), True
End Sub

Sub TestSystemInfo()
  Dim info
  Set info = CreateObject("BX6VBWiz.CSystemInfo")
  Check "WinDir", LCase(info.WinDir), "c:\windows\"
  Check "WinSysDir", LCase(info.WinSysDir), "c:\windows\system32\"
  Check "CommonFilesPath", Right(info.CommonFilesPath, 14), "\Common Files\"
  Check "CommonFilesSysPath", info.CommonFilesSysPath, info.CommonFilesPath & "System\"
  Check "MSDAOPath", info.MSDAOPath, info.CommonFilesPath & "Microsoft Shared\DAO\"
  Check "ProgramFilesPath", Left(info.ProgramFilesPath, 16), "C:\Program Files"
  Check "flags", info.IsWindows95 Or info.IsWindows98 Or info.IsWindowsNT351 Or info.IsWindowsNT4, False
  Check "IsWindowsNT5", info.IsWindowsNT5, info.WinVerMajor = 5
  Check "WinPlatformId", info.WinPlatformId, 2
  Check "numbers", info.WinVerMajor > 4 And info.WinVerMinor >= 0 And info.WinBuildNumber > 0, True
  Dim number
  On Error Resume Next
  number = info.WinCSDVersion
  CheckError "WinCSDVersion", 13, "Type mismatch"
End Sub

Sub TestTranslations(groups)
  Dim macro, resolves
  macro = "$(winsyspath)\Sub"
  Check "macro to symbol", groups.ConvertDestMacroToBXDestSymbol(macro), "<WINSYSDIR>\Sub\"
  Check "macro", macro, "$(winsyspath)\Sub"
  Check "symbol to path", LCase(groups.ConvertBXDestSymbolToPath("<WINDIR>")), "c:\windows\"
  Check "path to symbol", groups.ConvertPathToBXDestSymbol("C:\windows\a.dll"), "<WINDIR>\a.dll"
  Check "register code", groups.ConvertRegisterMacro("$(DLLSelfRegister)"), 1
  Check "link path", groups.ResolveLinkPath(folder & "Src", "App.exe", resolves) & resolves, folder & "Src\True"
  Check "link path", groups.ResolveLinkPath(folder, "none.exe", resolves) & resolves, folder & "False"
  Check "source", groups.SearchForSourceFile(folder & "Src", "App.exe"), folder & "Src\"
  Check "destination", groups.SearchForDestPath(folder, "none.exe"), ""
  Check "AppPath", groups.AppPath, "\"
  Check "GetAppPath", groups.GetAppPath(folder & "Src\App.vbp"), folder & "Src\"
  Check "index entry", groups.CheckCoreCompIni("a.dll"), ""
  Check "self-registration", groups.CheckSelfRegister("a.TLB"), 3
End Sub

Sub TestRecords(groups)
  Dim file, known, none, nothingThere
  Set file = New FileRecord
  Set known = New FileRecord
  groups.GetFileGroupInfo "", folder & "Src\App.exe", "", Nothing, file
  Check "facts", file.Destination & file.LinkResolves & file.FileLinkPath, "$(APPPATH)True" & folder & "Src\"
  Check "flags", TypeName(file.SharedFile) & file.SharedFile & TypeName(file.SelfRegister) & file.SelfRegister, "BooleanFalseLong0"
  For Each none In Array(Nothing, Empty, Null)
    Set known = New FileRecord
    groups.GetFileGroupInfo "", folder & "Src\App.exe", "", none, known
    Check "facts without others", known.FileLinkPath, file.FileLinkPath
  Next
  Set known = New FileRecord
  groups.GetFileGroupInfo "", folder & "Src\App.exe", "", , known
  Check "facts with others left out", known.FileLinkPath, file.FileLinkPath
  groups.GetFileGroupInfo "", "x", "", file, known
  Check "copied facts", known.Destination & known.FileLinkPath & known.FileGroup, file.Destination & file.FileLinkPath & file.FileGroup
  file.FileName = "App.exe"
  file.Destination = "$(APPPATH)"
  file.FileGroup = groups.CreateFileGroupName("App.exe", file)
  Check "group", file.FileGroup, "Program Files"
  Check "shared", groups.IsSharedFile(file, "App.exe"), False
  Check "created", groups.CreateFileGroup(setup, file), True
  Check "entry", Contains(setup & "\File Groups\Program Files.fgl", "file0=" & folder & "Src\App.exe"), True
  file.FileGroup = "Other Files"
  Check "to project", groups.AddFileGroupToProject(setup & "\", file), True
  Check "to component", groups.AddFileGroupToComponent(setup & "\", file), True
  Check "component", Contains(setup & "\Component Definitions\Default.cdf", "filegroup1=Other Files"), True
  On Error Resume Next
  groups.CreateFileGroup setup, Nothing
  CheckError "no record", 91, "argument file "
  groups.CreateFileGroup setup, nothingThere
  CheckError "an unset record", 91, "argument file "
  groups.CreateFileGroup setup, New NoRecord
  CheckError "a poor record", 438, "argument file has no property Destination"
  groups.CreateFileGroup folder & "missing", file
  CheckError "a missing folder", 76, "argument projectDir "
  groups.CreateFileGroup setup & Chr(0) & "x", file
  CheckError "a cut folder", 76, "argument projectDir "
  groups.SearchForDestPath setup
  CheckError "a missing argument", 450, ""
  groups.CreateFileGroup setup, 5
  CheckError "a number", 13, "argument file "
  file.SelfRegister = "much"
  groups.CreateFileGroup setup, file
  CheckError "a wrong property", 13, "property SelfRegister of the argument file"
End Sub

Sub TestComponents()
  Dim components, file
  Set components = CreateObject("BX6VBWiz.CComponents")
  Set file = New FileRecord
  file.Destination = "$(WINSYSPATH)"
  Check "component name", components.CreateComponentName("a.dll", file), "Windows System Files"
  file.Destination = "D:\Tools"
  Check "component", components.CreateComponent(setup, "Tools", file), True
  Check "its target", Contains(setup & "\Component Definitions\Default.cdf", "TARGET=<VBWizVar-0>"), True
  Check "variable", components.AddScriptDefinedVariable(setup, "Tools", file), "<VBWizVar-1>"
  Check "its text", Contains(setup & "\Text Substitutions\Setup.tsb", "Key1=<VBWizVar-1>"), True
End Sub

TestApplication
TestSystemInfo
TestTranslations CreateObject("BX6VBWiz.CFileGroups")
TestRecords CreateObject("BX6VBWiz.CFileGroups")
TestComponents
If failures = 0 Then WScript.Quit 42
WScript.Quit 1

Attribute VB_Name = "basMain"
Declare Function First Lib "beside" Alias "#1" (ByVal Number As Long) As Long
Declare Function Second Lib "elsewhere" () As Long
Public Declare Function Third Lib "missing.dll" () As Long
Declare Function Fourth Lib "C:\Tools\tools" () As Long
Declare Function Fifth Lib "GRIDCORE.DLL" () As Long
Sub Main()
  Dim Files As Object
  Set Files = CreateObject("Scripting.FileSystemObject")
  Set Files = GetObject(, "Unknown.Thing")
  Set Files = CreateObject("Demo.Helper")
End Sub

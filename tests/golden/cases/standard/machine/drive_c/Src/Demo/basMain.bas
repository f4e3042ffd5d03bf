Attribute VB_Name = "basMain"
Option Explicit

#If Win16 Then
Declare Function sndPlaySound Lib "oldsound.dll" (ByVal Name As String, ByVal Flags As Integer) As Integer
#ElseIf Win32 Then
Public Declare Function sndPlaySound Lib "winmm.dll" Alias "sndPlaySoundA" (ByVal Name As String, ByVal Flags As Long) As Long
#Else
Declare Function sndPlaySound Lib "othersound.dll" (ByVal Name As String, ByVal Flags As Long) As Long
#End If
Private Declare Function GetTickCount _
    Lib "kernel32" () As Long
' Declare Sub Gone Lib "gone.dll" ()
Rem Set Gone = CreateObject("Gone.Object")

Sub Main()
  Debug.Print "Declare Sub Gone Lib ""gone.dll"" ()"; "CreateObject("; "Gone.Object"
  Debug.Print CreateObject("Word." & "Application")
  frmMain.Show
End Sub

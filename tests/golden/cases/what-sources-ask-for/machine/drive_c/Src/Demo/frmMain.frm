VERSION 5.00
Object = "{831FDD16-0C5C-11D2-A9FC-0000F8754DA1}#2.1#0"; "MSCOMCTL.OCX"
Object = "{AAAAAAAA-0000-4000-8000-000000000002}#1.0#0"; "DIALS.OCX"
Begin VB.Form frmMain
   Caption         =   "frmMain"
End
Attribute VB_Name = "frmMain"
Private Declare Sub Beep Lib "BESIDE.DLL" ()
Private Sub Form_Load()
  Set Letters = CreateObject("Letters.Application")
End Sub

VERSION 5.00
Begin VB.Form frmMain
End
Attribute VB_Name = "frmMain"

VERSION 5.00
Object = "{AAAAAAAA-0000-4000-8000-000000000004}#1.0#0"; "FORM.OCX"
Begin VB.Form frmMain
   Caption         =   "frmMain"
End
Attribute VB_Name = "frmMain"
Option Explicit

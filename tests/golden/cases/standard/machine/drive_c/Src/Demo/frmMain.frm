VERSION 5.00
Object = "{831FDD16-0C5C-11D2-A9FC-0000F8754DA1}#2.0#0"; "MSCOMCTL.OCX"
Object = "{3F4A2D10-77B1-4C5E-9D2E-1A2B3C4D5E6F}#1.0#0"; "GRID6.OCX"
Begin VB.Form frmMain
   Caption         =   "frmMain"
End
Attribute VB_Name = "frmMain"
Option Explicit

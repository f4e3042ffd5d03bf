VERSION 5.00
Object = "{3F4A2D10-77B1-4C5E-9D2E-1A2B3C4D5E6F}#1.0#0"; "GRID6.OCX"
Object = "{3F4A2D10-77B1-4C5E-9D2E-1A2B3C4D5E70}#1.0#0"; "Chart.ocx"
Begin VB.Form frmMain
End
Attribute VB_Name = "frmMain"

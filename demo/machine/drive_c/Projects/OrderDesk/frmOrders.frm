VERSION 5.00
Object = "{831FDD16-0C5C-11D2-A9FC-0000F8754DA1}#2.0#0"; "MSCOMCTL.OCX"
Object = "{6A1B0C42-9E37-4B61-8D55-2F7A90C1E301}#2.0#0"; "Chart.ocx"
Begin VB.Form frmOrders
   Caption         =   "Orders"
   ClientHeight    =   4080
   ClientWidth     =   6240
End
Attribute VB_Name = "frmOrders"
Option Explicit

Private Sub Form_Load()
    Chart1.Refresh
End Sub

VERSION 5.00
Object = "{3C1D5F20-7A4E-4B0B-9D61-5E0F2A9B7C02}#2.1#0"; "StockGrid.ocx"
Begin VB.Form frmStock 
   Caption         =   "Stock"
   Begin StockGridCtl.StockGrid grdStock 
      Height          =   2895
   End
End
Attribute VB_Name = "frmStock"

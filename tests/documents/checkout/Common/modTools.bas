Attribute VB_Name = "modTools"
Option Explicit

Public Function PriceOf(ByVal name As String) As Currency
   Dim list As New Prices.List
   PriceOf = list.Item(name)
End Function

Attribute VB_Name = "modMain"
Option Explicit

Public Declare Function GetTickCount Lib "kernel32" () As Long
